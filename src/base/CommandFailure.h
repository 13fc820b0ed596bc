// How a command ends when it cannot go on: the user reads why.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace quoril {

/// What the user reads for an exception: a failure's own text; plain words where memory ran out.
[[nodiscard]] std::string FailureText(const std::exception& What);
void ShowFailure(const std::exception& What, const std::string& Title);

/// Runs `Body`, the work of a command. False when it failed: then the user has been told why, under
/// `Title`. What the body holds (progress window, open files, switches) has been given up by
/// destructors before the message appears.
template <class BodyType>
bool RunCommand(const std::string& Title, BodyType&& Body) {
    try {
        std::forward<BodyType>(Body)();
        return true;
    } catch (const std::exception& What) {
        ShowFailure(What, Title);
        return false;
    }
}

} // namespace quoril

#include "base/CommandFailure.h"

#include "base/MsgBoxMod.h"

#include <new>
#include <stdexcept>

namespace quoril {

std::string FailureText(const std::exception& What) {
    // A container that is asked for more than it could ever hold is out of memory, too.
    if (dynamic_cast<const std::bad_alloc*>(&What) != nullptr ||
        dynamic_cast<const std::length_error*>(&What) != nullptr)
        return "Out of memory";
    return What.what();
}

void ShowFailure(const std::exception& What, const std::string& Title) {
    MsgBox(FailureText(What), Title);
}

} // namespace quoril

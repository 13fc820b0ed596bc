// Texts and file names on their way between the core (bytes) and Qt (UTF-16).
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace quoril {

/// A text of the core for the eye: UTF-8, or Windows-1252 when its bytes are no valid UTF-8.
[[nodiscard]] QString ShownText(std::string_view Text);
/// What the user typed, for the core: UTF-8.
[[nodiscard]] std::string CoreText(const QString& Text);

} // namespace quoril

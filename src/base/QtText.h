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

/// A text whose words of more than 40 letters, such as the paths of files, may be broken where a
/// label wraps its lines.
[[nodiscard]] QString Breakable(const QString& Text);
/// A caption with an access key: the first place of that letter, small or capital, is marked. A
/// caption without the letter stays as it is.
[[nodiscard]] QString WithAccessKey(const char* Caption, char Letter);

} // namespace quoril

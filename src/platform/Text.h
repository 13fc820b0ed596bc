// Small operations on text bytes that do not depend on the language of the system.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quoril {

/// Letters A to Z in lower or upper case; all other bytes as they are.
[[nodiscard]] std::string LowerCase(std::string_view Text);
[[nodiscard]] std::string UpperCase(std::string_view Text);
/// Equal without regard to the case of the letters A to Z.
[[nodiscard]] bool EqualIgnoringCase(std::string_view A, std::string_view B) noexcept;
/// Without blanks and tabs at both ends.
[[nodiscard]] std::string Trim(std::string_view Text);
/// The leading decimal number of a text, such as "12.5abc" or " -3"; 0 for anything else.
/// The decimal mark is always the point. Never infinite, never NaN.
[[nodiscard]] double LeadingNumber(std::string_view Text) noexcept;
/// The decimal number that the whole text is, blanks at both ends aside; nothing for anything else,
/// and for a number beyond the range of double. The decimal mark is always the point.
[[nodiscard]] std::optional<double> NumberAlone(std::string_view Text) noexcept;
/// The shortest text that is read as the same number: digits, with a point where there are
/// decimals.
[[nodiscard]] std::string NumberText(float Value);
[[nodiscard]] std::string NumberText(double Value);
/// The parts of a text between the marks: one more than there are marks, or `Most` and one that has
/// what is left, where there are more. A text of any length then costs no more than these.
[[nodiscard]] std::vector<std::string> TextParts(std::string_view Text, char Mark,
                                                 std::size_t Most = std::string_view::npos);
/// A folder's name without separators at its end.
[[nodiscard]] std::string WithoutEndSeparators(std::string Folder);

} // namespace quoril

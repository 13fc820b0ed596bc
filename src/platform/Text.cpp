#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace quoril {

namespace {

constexpr char Lower(char Letter) noexcept {
    return Letter >= 'A' && Letter <= 'Z' ? static_cast<char>(Letter + ('a' - 'A')) : Letter;
}

constexpr char Upper(char Letter) noexcept {
    return Letter >= 'a' && Letter <= 'z' ? static_cast<char>(Letter - ('a' - 'A')) : Letter;
}

constexpr bool IsDigit(char Letter) noexcept {
    return Letter >= '0' && Letter <= '9';
}

constexpr std::string_view Blanks = " \t";

/// Reads the decimal number at the start of a text, after blanks. The letters that it takes with
/// the blanks; 0 when there is none, or none that a double holds.
std::size_t NumberAtStart(std::string_view Text, double& Value) noexcept {
    const char* const Begin = Text.data();
    const std::size_t First = Text.find_first_not_of(Blanks);
    if (First == std::string_view::npos)
        return 0;
    Text.remove_prefix(First);
    const bool Negative = Text.front() == '-';
    if (Negative || Text.front() == '+')
        Text.remove_prefix(1);
    // Only a digit may begin the number, after a point or at once: the library also knows words
    // such as "inf" and "nan".
    const std::size_t Digit = !Text.empty() && Text.front() == '.' ? 1 : 0;
    if (Text.size() <= Digit || !IsDigit(Text[Digit]))
        return 0;
    double Read = 0.0;
    const auto Parsed = std::from_chars(Text.data(), Text.data() + Text.size(), Read);
    if (Parsed.ec != std::errc() || !std::isfinite(Read))
        return 0;
    Value = Negative ? -Read : Read;
    return static_cast<std::size_t>(Parsed.ptr - Begin);
}

template <class Number>
std::string ShortestText(Number Value) {
    std::array<char, 400>
        Letters; // the smallest double has 1 and 324 decimals, the largest 309 digits
    const auto Written = std::to_chars(Letters.data(), Letters.data() + Letters.size(), Value,
                                       std::chars_format::fixed);
    return {Letters.data(), Written.ptr};
}

} // namespace

std::string LowerCase(std::string_view Text) {
    std::string Result(Text);
    std::transform(Result.begin(), Result.end(), Result.begin(), Lower);
    return Result;
}

std::string UpperCase(std::string_view Text) {
    std::string Result(Text);
    std::transform(Result.begin(), Result.end(), Result.begin(), Upper);
    return Result;
}

bool EqualIgnoringCase(std::string_view A, std::string_view B) noexcept {
    return std::equal(A.begin(), A.end(), B.begin(), B.end(),
                      [](char One, char Other) { return Lower(One) == Lower(Other); });
}

std::string Trim(std::string_view Text) {
    const std::size_t First = Text.find_first_not_of(Blanks);
    if (First == std::string_view::npos)
        return {};
    return std::string(Text.substr(First, Text.find_last_not_of(Blanks) - First + 1));
}

double LeadingNumber(std::string_view Text) noexcept {
    double Value = 0.0;
    return NumberAtStart(Text, Value) == 0 ? 0.0 : Value;
}

std::optional<double> NumberAlone(std::string_view Text) noexcept {
    double Value = 0.0;
    const std::size_t Length = NumberAtStart(Text, Value);
    if (Length == 0 || Text.find_first_not_of(Blanks, Length) != std::string_view::npos)
        return std::nullopt;
    return Value;
}

std::string NumberText(float Value) {
    return ShortestText(Value);
}

std::string NumberText(double Value) {
    return ShortestText(Value);
}

std::vector<std::string> TextParts(std::string_view Text, char Mark, std::size_t Most) {
    std::vector<std::string> Parts;
    for (;;) {
        const std::size_t End = Parts.size() < Most ? Text.find(Mark) : std::string_view::npos;
        Parts.emplace_back(Text.substr(0, End));
        if (End == std::string_view::npos)
            return Parts;
        Text.remove_prefix(End + 1);
    }
}

std::string WithoutEndSeparators(std::string Folder) {
    while (Folder.ends_with('/'))
        Folder.pop_back();
    return Folder;
}

} // namespace quoril

#include "selection/DurationText.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <vector>

namespace quoril {
namespace {

constexpr std::int64_t HundredthsOfMinute = 6000;
constexpr std::int64_t HundredthsOfHour = 360000;
constexpr double MostHundredths = 2147483648.0 * HundredthsOfHour;

std::string SecondsText(std::int64_t Hundredths) {
    const std::int64_t Rest = Hundredths % 100;
    return Rest == 0 ? fmt::format("{:02}", Hundredths / 100)
                     : fmt::format("{:02}.{:02}", Hundredths / 100, Rest);
}

} // namespace

std::string FormatDuration(float Seconds) {
    // Single times a hundred is exact in double, so that ties are real ties.
    const double Rounded = RoundEven(static_cast<double>(Seconds) * 100.0);
    if (!(Rounded > -MostHundredths && Rounded < MostHundredths))
        FailOverflow();
    const auto Hundredths = static_cast<std::int64_t>(Rounded);
    if (Hundredths < 0)
        return fmt::format("-{}", SecondsText(-Hundredths));
    const std::int64_t Hours = Hundredths / HundredthsOfHour;
    const std::int64_t Minutes = Hundredths % HundredthsOfHour / HundredthsOfMinute;
    std::string Text;
    if (Hours >= 1)
        Text = fmt::format("{}:", Hours);
    if (Minutes > 0 || Hours >= 1)
        Text += fmt::format("{:02}:", Minutes);
    return Text + SecondsText(Hundredths % HundredthsOfMinute);
}

float ParseDuration(std::string_view Text) {
    std::vector<double> Parts;
    for (std::size_t From = 0; Parts.size() < 3;) {
        const std::size_t Colon = Text.find(':', From);
        Parts.push_back(LeadingNumber(Text.substr(From, Colon - From)));
        if (Colon == std::string_view::npos)
            break;
        From = Colon + 1;
    }
    double Sum = 0;
    for (const double Part : Parts)
        Sum = Sum * 60.0 + Part;
    if (!(std::abs(Sum) <= static_cast<double>(std::numeric_limits<float>::max())))
        FailOverflow();
    return Single(Sum);
}

std::string FormatSamples(std::int64_t Samples, std::int32_t Freq) {
    return FormatDuration(Single(static_cast<double>(Samples) / static_cast<double>(Freq)));
}

} // namespace quoril

#include "view/ColorSettings.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "platform/PrivateProfile.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <utility>
#include <vector>

namespace quoril {
namespace {

constexpr const char* Section = "Color";
constexpr const char* StyleKey = "WaveFormDrawStyle";
constexpr std::int32_t HighestColor = 0xFFFFFF;
constexpr std::int32_t DefaultStyle = 3;

std::array<std::int32_t, WaveColorCount> Defaults() {
    std::array<std::int32_t, WaveColorCount> Colors{};
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        Colors[i] = WaveColorTable[i].Default;
    return Colors;
}

/// The number under a key, or `Fallback` when it does not lie from `Low` to `High`.
std::int32_t NumberRead(const char* Key, std::int32_t Low, std::int32_t High,
                        std::int32_t Fallback) {
    const double Number = RoundEven(LeadingNumber(IniGet(Section, Key, "-1")));
    return Low <= Number && Number <= High ? static_cast<std::int32_t>(Number) : Fallback;
}

struct ColorClash {
    WaveColor A;
    WaveColor B;
    const char* Lines;
};
constexpr std::array<ColorClash, 5> Clashes = {{
    {WaveColor::WaveFormNormalColor, WaveColor::NormalBackColor,
     "Waveform Color and the Back color are the same\nYou may not see the wave correctly"},
    {WaveColor::WaveFormNormalColor, WaveColor::SelectBackColor,
     "Waveform Color and the Selected area back color are the same\n"
     "You may not see the wave correctly in selected area"},
    {WaveColor::SelectBackColor, WaveColor::NormalBackColor,
     "Normal back Color and the Selected area back color are the same\n"
     "You may not see the selected area differently"},
    {WaveColor::PlayPosIndiColor, WaveColor::NormalBackColor,
     "Play position indicator Color and the Back color are the same\n"
     "You may not see the play indicator"},
    {WaveColor::PlayPosIndiColor, WaveColor::SelectBackColor,
     "Play position indicator Color and Selected area back color are the same\n"
     "You may not see the play indicator in Selected area"},
}};

} // namespace

const std::array<WaveColorInfo, WaveColorCount> WaveColorTable = {{
    {"WaveFormNormalColor", 0x8000FF, "Waveform Bars"},
    {"WaveFormBetweenColor", 0x00FFFF, "Waveform Lines"},
    {"WaveFormDrawColor", 0xFFFFFF, "Pen/Hand Draw Waveform"},
    {"WaveFormSampleColor", 0xFFFF80, "Sample Waveform (not in use)"},
    {"CenterLineColor", 0x808080, "Center Line"},
    {"NormalBackColor", 0xA00000, "Normal Background"},
    {"SelectBackColor", 0x006400, "Selected Background"},
    {"LineCursorColor", 0xFFFFFF, "Line Cursor"},
    {"SecPtSelLineCursorColor", 0x00FF00, "Line Cursor2 (for 2nd pt. select)"},
    {"OnePtSelLineColor", 0x00FFFF, "One Pt. Select Line"},
    {"BookMarkColor", 0xC0C0C0, "Bookmark"},
    {"ScaleBackColor", 0xFFC0C0, "Scale Background"},
    {"PlayPosIndiColor", 0xFF00FF, "Play Position Indicator"},
}};

const std::array<const char*, WaveDrawStyleCount> WaveDrawStyleNames = {
    "Line Graph", "Bar Graph", "Bar and Line Graph", "Uniform Bar Graph",
    "Uniform Bar and Line Graph"};

std::array<std::int32_t, WaveColorCount> WaveColors = Defaults();
std::int32_t WaveFormDrawStyle = DefaultStyle;

void ColorSettingsRead() {
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        WaveColors[i] =
            NumberRead(WaveColorTable[i].Key, 0, HighestColor, WaveColorTable[i].Default);
    // The last style holds for a session only.
    constexpr std::int32_t LastStoredStyle = static_cast<std::int32_t>(WaveDrawStyleCount) - 1;
    WaveFormDrawStyle = NumberRead(StyleKey, 1, LastStoredStyle, DefaultStyle);
    for (const ColorClash& Clash : Clashes)
        if (ColorOf(Clash.A) == ColorOf(Clash.B))
            MsgBox(std::string(Clash.Lines) + "\nPlease go to Options and change the colors");
}

void ColorSettingsWrite() {
    std::vector<std::pair<std::string, std::string>> Values = {
        {StyleKey, std::to_string(WaveFormDrawStyle)}};
    for (std::size_t i = 0; i < WaveColorCount; ++i)
        Values.emplace_back(WaveColorTable[i].Key, std::to_string(WaveColors[i]));
    // A file that cannot be written is no error: the settings of this session are not kept.
    (void)WritePrivateProfileStrings(Section, Values, SettingsFileName());
}

} // namespace quoril

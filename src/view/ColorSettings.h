// The colours and the drawing style of the wave view.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quoril {

/// Indexes into ColorSettings, in the order of the options list.
enum class WaveColor : std::uint8_t {
    WaveFormNormalColor,
    WaveFormBetweenColor,
    WaveFormDrawColor,
    WaveFormSampleColor,
    CenterLineColor,
    NormalBackColor,
    SelectBackColor,
    LineCursorColor,
    SecPtSelLineCursorColor,
    OnePtSelLineColor,
    BookMarkColor,
    ScaleBackColor,
    PlayPosIndiColor
};
inline constexpr std::size_t WaveColorCount = 13;

/// What the table of colours says of one entry. Colours are 0x00BBGGRR.
struct WaveColorInfo {
    const char* Key; ///< in section "Color" of the settings file
    std::int32_t Default;
    const char* ListEntry; ///< in the options window
};
extern const std::array<WaveColorInfo, WaveColorCount> WaveColorTable;

/// The colours in use. Start with the defaults.
extern std::array<std::int32_t, WaveColorCount> WaveColors;
[[nodiscard]] inline std::int32_t ColorOf(WaveColor Which) noexcept {
    return WaveColors[static_cast<std::size_t>(Which)];
}
/// Names of the drawing styles in the options list; style 1 is at index 0.
inline constexpr std::size_t WaveDrawStyleCount = 5;
extern const std::array<const char*, WaveDrawStyleCount> WaveDrawStyleNames;

/// 1 line graph, 2 bar graph, 3 bar and line graph, 4 uniform bar graph, 5 uniform bar and line.
extern std::int32_t WaveFormDrawStyle;

/// Reads colours and style from the settings file; what is out of range takes its default (a
/// colour) or 3 (a style outside 1 to 4). Then warns of colours that hide something.
void ColorSettingsRead();
/// Writes colours and style to the settings file, in one change of it.
void ColorSettingsWrite();

} // namespace quoril

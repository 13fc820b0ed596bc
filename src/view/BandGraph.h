// The numbers of the bar graph of the sound around the mouse.
#pragma once

#include <cstdint>

namespace quoril {

inline constexpr std::int32_t BandBarCount = 10;

/// The samples that are looked at around a position: a fortieth of a second, 512 to 4096 of them.
/// The first one may lie before the document.
struct BandWindow {
    std::int32_t From = 1;
    std::int32_t Count = 0;
    friend bool operator==(const BandWindow&, const BandWindow&) = default;
};
[[nodiscard]] BandWindow BandWindowAt(std::int32_t Pos, std::int32_t WavFmtFreq);

/// A bar of a picture, in its pixels: columns `Left` to before `Right`, from row `Top` down.
struct BandBar {
    std::int32_t Left = 0;
    std::int32_t Right = 0;
    std::int32_t Top = 0;
    friend bool operator==(const BandBar&, const BandBar&) = default;
};
/// Bar 1 to BandBarCount in a picture of that size: a quarter of full scale fills the height.
[[nodiscard]] BandBar BandBarOf(std::int32_t Bar, std::int32_t Level, std::int32_t WavFmtBits,
                                std::int32_t Width, std::int32_t Height);

} // namespace quoril

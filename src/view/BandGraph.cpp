#include "view/BandGraph.h"

#include "base/Arithmetic.h"

#include <algorithm>
#include <limits>

namespace quoril {

namespace {

constexpr double WindowsASecond = 40;
constexpr std::int32_t LeastWindow = 512;
constexpr std::int32_t MostWindow = 4096;
constexpr double Gain = 4;

} // namespace

BandWindow BandWindowAt(std::int32_t Pos, std::int32_t WavFmtFreq) {
    const std::int32_t Count =
        std::clamp(RoundToLong(WavFmtFreq / WindowsASecond), LeastWindow, MostWindow);
    // At the end of the longest document the window's own end must have room.
    const std::int32_t Last = std::numeric_limits<std::int32_t>::max() - Count;
    return {std::min(RoundToLong(Pos - Count / 2.0), Last), Count};
}

BandBar BandBarOf(std::int32_t Bar, std::int32_t Level, std::int32_t WavFmtBits, std::int32_t Width,
                  std::int32_t Height) {
    const double BarWidth = static_cast<double>(Width) / BandBarCount;
    const double FullScale = WavFmtBits == 8 ? 128 : 32768;
    const double Top = Height - Level / FullScale * Height * Gain;
    return {RoundToLong(BarWidth * (Bar - 1)), RoundToLong(BarWidth * Bar),
            RoundToLong(std::max(Top, 0.0))};
}

} // namespace quoril

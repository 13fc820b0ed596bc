#include "effects/BandPicture.h"

#include "base/Arithmetic.h"
#include "effects/BandLevels.h"
#include "effects/BandSet.h"

#include <algorithm>

namespace quoril {

namespace {

/// Steps of the picture's height: all band values, and a margin above and below.
constexpr double Steps = 103;
constexpr double TopStep = 51;

double BandPixels(const BandPicture& Picture) {
    return static_cast<double>(Single(static_cast<double>(Picture.Width) / Picture.NoOfBands));
}

} // namespace

std::int32_t BandPicture::BandAt(std::int32_t X) const {
    return std::clamp(RoundToLong(X / BandPixels(*this) + 0.5), 1, NoOfBands);
}

std::int32_t BandPicture::Left(std::int32_t Band) const {
    return std::min(RoundToLong(BandPixels(*this) * (Band - 1)), Width);
}

std::int32_t BandPicture::ValueAt(std::int32_t Y) const {
    return ClampedBandValue(RoundToLong(TopStep - static_cast<double>(Y) / (Height + 1) * Steps));
}

std::int32_t BandPicture::RowOf(std::int32_t Value) const {
    return RoundToLong((Height + 1) / Steps * (TopStep - Value));
}

std::vector<std::int32_t> ShownFrequencies(std::int32_t NoOfBands) {
    constexpr std::int32_t Highest = 20000;
    std::vector<std::int32_t> Freqs = BandFrequencies(NoOfBands);
    Freqs.back() = Highest;
    return Freqs;
}

} // namespace quoril

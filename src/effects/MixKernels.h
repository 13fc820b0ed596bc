// Making one channel out of two, sample by sample.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// What a new channel is made of.
enum MixSources : std::int32_t {
    MixLeft = 0,
    MixRight = 1,
    MixAverage = 2,       ///< (L + R) / 2 to the nearest whole number, ties to even
    MixSum = 3,           ///< L + R
    MixLeftLessRight = 4, ///< L - R
    MixRightLessLeft = 5, ///< R - L
    MixSilence = 6
};

/// Out[k] = the sample that `Source` makes of L[k] and R[k], clipped to the range of a depth of 8
/// or 16 bits. All three have the same length. `Out` overlaps neither of the others.
void MixRun(std::int32_t Source, std::span<const std::int16_t> L, std::span<const std::int16_t> R,
            std::span<std::int16_t> Out, std::int32_t Bits) noexcept;

} // namespace quoril

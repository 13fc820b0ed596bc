// How loud a stretch of sound is in each of a number of frequency bands.
//
// The bands come from a cascade of centred moving averages, from the highest band to the lowest: at
// each band the average over one period of the band's frequency is what the next lower band gets,
// and the signal less its average is the band's own content.
#pragma once

#include <cstdint>
#include <vector>

namespace quoril {

/// The frequencies of 1 to `NoOfBands` bands from 20 to 20000 Hz in equal ratios, each cut down to
/// a multiple of 4, from index 1; index 0 is unused. A single band has 20 Hz.
[[nodiscard]] std::vector<std::int32_t> BandFrequencies(std::int32_t NoOfBands);

/// Half the length of a band's moving average, in samples; 0 for a frequency above the rate.
[[nodiscard]] std::int32_t BandHalfWindow(std::int32_t WavFmtFreq, std::int32_t BandFreq);

/// The centred moving average over 2 x `Half` values, walked from the first value to the last.
/// Before the first value stands the first one, behind the last the last one.
class BandAverage {
  public:
    /// `Half` is at least 1. The first `Half` values, from `First` on, must be there. Sums of
    /// 2 x `Half` values must fit 32 bits.
    BandAverage(const std::int32_t* First, std::int32_t Half);

    /// One step on: `Ahead` is the value half a window later. While there is one the centre moves
    /// along; at the end of the signal the last value is given over and over, and the centre stays.
    void Step(std::int32_t Ahead, bool CentreMoves) noexcept;
    /// The average around the present place, rounded.
    [[nodiscard]] std::int32_t Mean() const;
    /// The value at the centre.
    [[nodiscard]] std::int32_t Centre() const noexcept { return Ring[CentreAt]; }

  private:
    void Advance(std::size_t& Index) const noexcept { Index = Index + 1 == Size ? 0 : Index + 1; }

    std::size_t Size;
    std::vector<std::int32_t> Ring;
    std::int32_t Sum;
    std::size_t Tail;
    std::size_t CentreAt;
};

/// Adds to `Levels`[i] the mean absolute level of band i in the samples `Wave`[1..], for i from 1
/// to `NoOfBands`; the levels must be 0 before. A band whose period is longer than the samples last
/// tells the level of the samples themselves, and one above the sampling rate adds nothing. The
/// depth plays no part: nothing is clipped on the way. The first call in the process fixes the
/// frequencies for the number of bands that it asks for, and a later one takes of these; it fails
/// when it asks for more. `Levels` needs indexes up to `NoOfBands`.
void BandLevels(const std::vector<std::int32_t>& Wave, std::int32_t NoOfBands,
                std::int32_t WavFmtFreq, std::int32_t WavFmtBits,
                std::vector<std::int32_t>& Levels);

} // namespace quoril

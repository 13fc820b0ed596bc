#include "effects/BandLevels.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quoril {

namespace {

constexpr double LowestFreq = 20;
constexpr double FreqDecades = 3; // from the lowest band to the highest
constexpr std::int32_t FreqUnit = 4;
constexpr std::int32_t LeastMeasured = 10;

std::int32_t RoundedShare(std::int64_t Sum, std::int32_t Count) {
    return RoundToLong(static_cast<double>(Sum) / Count);
}

/// The samples from `From` to `To`, indexes from 1.
std::int32_t MeanLevel(const std::vector<std::int32_t>& Wave, std::int32_t From, std::int32_t To,
                       std::int32_t Before) {
    std::int64_t Sum = Before;
    for (std::int32_t Index = From; Index <= To; ++Index)
        Sum += std::abs(std::int64_t{Wave[static_cast<std::size_t>(Index)]});
    return RoundedShare(Sum, To - From + 1);
}

/// One band of the cascade: the signal becomes its moving average, and the rest is its content.
void SplitBand(std::vector<std::int32_t>& Signal, std::int32_t Half,
               std::vector<std::int32_t>& Content) {
    const std::size_t Count = Signal.size() - 1;
    const auto Ahead = static_cast<std::size_t>(Half);
    const std::int32_t Last = Signal[Count];
    BandAverage Average(&Signal[1], Half);
    for (std::size_t Index = 1; Index <= Count; ++Index) {
        const bool Inside = Index + Ahead <= Count;
        Average.Step(Inside ? Signal[Index + Ahead] : Last, Inside);
        const std::int32_t Mean = Average.Mean();
        Content[Index] = SubLong(Average.Centre(), Mean);
        Signal[Index] = Mean;
    }
}

} // namespace

std::vector<std::int32_t> BandFrequencies(std::int32_t NoOfBands) {
    std::vector<std::int32_t> Freqs(static_cast<std::size_t>(std::max(NoOfBands, 0)) + 1, 0);
    // Of decades, so that ratios of a whole number of them are exact.
    const double Ratio = NoOfBands > 1 ? std::pow(10.0, FreqDecades / (NoOfBands - 1)) : 1.0;
    double Freq = LowestFreq;
    for (std::size_t Band = 1; Band < Freqs.size(); ++Band, Freq *= Ratio)
        Freqs[Band] = static_cast<std::int32_t>(std::floor(Freq / FreqUnit)) * FreqUnit;
    return Freqs;
}

std::int32_t BandHalfWindow(std::int32_t WavFmtFreq, std::int32_t BandFreq) {
    return RoundToLong(static_cast<double>(WavFmtFreq) / BandFreq / 2);
}

BandAverage::BandAverage(const std::int32_t* First, std::int32_t Half)
    : Size(2 * static_cast<std::size_t>(Half)), Ring(Size, *First), Sum(MulLong(*First, Half)),
      Tail(Size - 1), CentreAt(static_cast<std::size_t>(Half) - 1) {
    std::copy_n(First, Half, Ring.begin() + Half);
    for (std::int32_t Index = 0; Index < Half; ++Index)
        Sum = AddLong(Sum, First[Index]);
}

void BandAverage::Step(std::int32_t Ahead, bool CentreMoves) noexcept {
    Advance(Tail);
    if (CentreMoves)
        Advance(CentreAt);
    Sum += Ahead - Ring[Tail];
    Ring[Tail] = Ahead;
}

std::int32_t BandAverage::Mean() const {
    return RoundedLow(static_cast<double>(Sum) / static_cast<double>(Size));
}

void BandLevels(const std::vector<std::int32_t>& Wave, std::int32_t NoOfBands,
                std::int32_t WavFmtFreq, std::int32_t /*WavFmtBits*/,
                std::vector<std::int32_t>& Levels) {
    static const std::vector<std::int32_t> Freqs = BandFrequencies(NoOfBands);
    const auto Count = static_cast<std::int32_t>(Wave.size()) - 1;
    std::vector<std::int32_t> Signal = Wave;
    std::vector<std::int32_t> Content(Wave.size());
    for (std::int32_t Band = NoOfBands; Band >= 1; --Band) {
        const auto Index = static_cast<std::size_t>(Band);
        if (Index >= Freqs.size())
            throw Failure("Subscript out of range");
        const std::int32_t Half = BandHalfWindow(WavFmtFreq, Freqs[Index]);
        if (Count <= Half) {
            Levels[Index] = Count < 1 ? 0 : MeanLevel(Wave, 1, Count, 0);
            continue;
        }
        if (Half <= 0)
            continue;
        SplitBand(Signal, Half, Content);
        const std::int32_t Measured = std::min(std::max(2 * Half, LeastMeasured), Count);
        const std::int32_t From = std::max(RoundedShare(Count - Measured, 2), 1);
        const std::int32_t To = std::min(RoundedShare(std::int64_t{Count} + Measured, 2), Count);
        Levels[Index] = MeanLevel(Content, From, To, Levels[Index]);
    }
}

} // namespace quoril

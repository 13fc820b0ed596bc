#include "edit/PasteKernels.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>

namespace quoril {

namespace {

QUORIL_VECTORISED
void MixLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
             std::size_t Count, std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        std::int32_t Sum = Clip[i] + Doc[i];
        Sum = Sum > Max ? Max : Sum;
        Sum = Sum < -Max ? -Max : Sum;
        Out[i] = static_cast<std::int16_t>(Sum);
    }
}

QUORIL_VECTORISED
void ModulateLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                  std::size_t Count, double Factor, std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        const double Product = Factor * Clip[i];
        Out[i] = LimitedSample(RoundedLow((Product < 0 ? -Product : Product) * Doc[i]), Max);
    }
}

/// Adding and taking off 1.5 x 2^28 rounds a number of at most 1 to a multiple of 2^-24, ties to
/// even, which is what single precision does with one of at least 0.5.
constexpr double SingleShift = 402653184.0;

/// `Count` is at most MostRunSteps. `Shift` rounds the shares of the whole stretch to single
/// precision. A share of less than 0.5 leaves more than that for the clip; of a larger one the rest
/// is a multiple of 2^-24 as it is. So the clip's share is rounded by the same sum in both cases.
QUORIL_VECTORISED
void CrossFadeLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                   std::size_t Count, double First, double Total, double Shift,
                   std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        const double OfDoc = ((First + RunSteps[i]) / Total + Shift) - Shift;
        const double OfClip = ((SingleShift + 1.0) - OfDoc) - SingleShift;
        Out[i] = LimitedSample(RoundedLow(OfDoc * Doc[i] + OfClip * Clip[i]), Max);
    }
}

/// The numbers of which i / `Total` lies between the same powers of two as `First` / `Total`.
struct EqualScale {
    std::int64_t End; ///< the first number beyond
    double Shift;     ///< added and taken off, it rounds these shares to single precision
};

EqualScale ScaleAt(std::int64_t First, std::int64_t Total) noexcept {
    constexpr int MostHalvings = 32;
    int Halvings = 0;
    while (Halvings < MostHalvings && (First << Halvings) < Total)
        ++Halvings;
    // Single precision has 24 bits, so the last one of a double between 2^29 and 2^30 times the
    // share stands where its last one is.
    const double Shift = std::ldexp(1.5, 29 - Halvings);
    if (Halvings == 0)
        return {std::numeric_limits<std::int64_t>::max(), Shift};
    const std::int64_t Half = std::int64_t{1} << (Halvings - 1);
    return {(Total + Half - 1) / Half, Shift};
}

} // namespace

std::int32_t PasteMaxSample(std::int32_t Bits) {
    return RoundToLong(std::pow(256.0, Bits / 8.0) / 2 - 1);
}

void MixRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
            std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept {
    MixLoop(Clip.data(), Doc.data(), Out.data(), Out.size(), MaxSample);
}

void ModulateRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                 std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept {
    ModulateLoop(Clip.data(), Doc.data(), Out.data(), Out.size(), 0.95 / MaxSample, MaxSample);
}

void CrossFadeRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Total,
                  std::int32_t MaxSample) noexcept {
    EqualScale Scale{0, 0};
    for (std::size_t Done = 0; Done < Out.size();) {
        const std::int64_t Number = std::int64_t{First} + static_cast<std::int64_t>(Done);
        if (Number >= Scale.End)
            Scale = ScaleAt(Number, Total);
        std::size_t Count = std::min(MostRunSteps, Out.size() - Done);
        if (Scale.End - Number < static_cast<std::int64_t>(Count))
            Count = static_cast<std::size_t>(Scale.End - Number);
        CrossFadeLoop(Clip.data() + Done, Doc.data() + Done, Out.data() + Done, Count,
                      static_cast<double>(Number), Total, Scale.Shift, MaxSample);
        Done += Count;
    }
}

std::int32_t PeakOfRun(std::span<const std::int16_t> In) noexcept {
    std::int32_t Peak = 0;
    for (const std::int16_t Sample : In)
        Peak = std::max(Peak, std::abs(std::int32_t{Sample}));
    return Peak;
}

} // namespace quoril

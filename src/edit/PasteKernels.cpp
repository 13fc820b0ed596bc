#include "edit/PasteKernels.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quoril {

namespace {

QUORIL_VECTORISED
void ModulateLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                  std::size_t Count, double Factor, std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        const double Product = Factor * Clip[i];
        Out[i] = LimitedSample(RoundedLow((Product < 0 ? -Product : Product) * Doc[i]), Max);
    }
}

/// `Count` is at most MostRunSteps. The shares are kept in single precision.
QUORIL_VECTORISED
void CrossFadeLoop(const std::int16_t* Clip, const std::int16_t* Doc, std::int16_t* Out,
                   std::size_t Count, double First, double Total, std::int32_t Max) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        const auto OfDoc = static_cast<float>((First + RunSteps[i]) / Total);
        const auto OfClip = static_cast<float>(1.0 - static_cast<double>(OfDoc));
        Out[i] = LimitedSample(
            RoundedLow(static_cast<double>(OfDoc) * Doc[i] + static_cast<double>(OfClip) * Clip[i]),
            Max);
    }
}

} // namespace

std::int32_t PasteMaxSample(std::int32_t Bits) {
    return RoundToLong(std::pow(256.0, Bits / 8.0) / 2 - 1);
}

void ModulateRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                 std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept {
    ModulateLoop(Clip.data(), Doc.data(), Out.data(), Out.size(), 0.95 / MaxSample, MaxSample);
}

void CrossFadeRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Total,
                  std::int32_t MaxSample) noexcept {
    for (std::size_t Done = 0; Done < Out.size(); Done += MostRunSteps)
        CrossFadeLoop(Clip.data() + Done, Doc.data() + Done, Out.data() + Done,
                      std::min(MostRunSteps, Out.size() - Done),
                      static_cast<double>(First) + static_cast<double>(Done),
                      static_cast<double>(Total), MaxSample);
}

} // namespace quoril

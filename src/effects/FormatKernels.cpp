#include "effects/FormatKernels.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <cstddef>

namespace quoril {

namespace {

/// Equal channels at full scale come out a third too loud, and are clipped.
constexpr double MergeFactor = 0.666;

// The loops take plain pointers and limits and call nothing, so that they are vectorised.

[[gnu::always_inline]] inline std::int16_t Limited(std::int32_t Value, std::int32_t Low,
                                                   std::int32_t High) noexcept {
    Value = Value < Low ? Low : Value;
    return static_cast<std::int16_t>(Value > High ? High : Value);
}

QUORIL_VECTORISED
void WidenLoop(const std::int16_t* In, std::int16_t* Out, std::size_t Count, std::int32_t Low,
               std::int32_t High) noexcept {
    for (std::size_t k = 0; k < Count; ++k)
        Out[k] = Limited(In[k] * 256, Low, High);
}

QUORIL_VECTORISED
void NarrowLoop(const std::int16_t* In, std::int16_t* Out, std::size_t Count, std::int32_t Low,
                std::int32_t High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        // Half a step less one goes up beyond a half; the half itself only where the floor is odd.
        const std::int32_t Odd = (In[k] >> 8) & 1;
        Out[k] = Limited((In[k] + 127 + Odd) >> 8, Low, High);
    }
}

QUORIL_VECTORISED
void MergeLoop(const std::int16_t* __restrict L, const std::int16_t* __restrict R,
               std::int16_t* __restrict Out, std::size_t Count, std::int32_t Low,
               std::int32_t High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        const double Sum = static_cast<double>(L[k] + R[k]);
        const auto Value = static_cast<std::int32_t>(RoundedWhole(Sum * MergeFactor));
        Out[k] = Limited(Value, Low, High);
    }
}

} // namespace

void WidenRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept {
    WidenLoop(In.data(), Out.data(), Out.size(), SampleLow(16), SampleHigh(16));
}

void NarrowRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept {
    NarrowLoop(In.data(), Out.data(), Out.size(), SampleLow(8), SampleHigh(8));
}

void MergeRun(std::span<const std::int16_t> L, std::span<const std::int16_t> R,
              std::span<std::int16_t> Out, std::int32_t Bits) noexcept {
    MergeLoop(L.data(), R.data(), Out.data(), Out.size(), SampleLow(Bits), SampleHigh(Bits));
}

} // namespace quoril

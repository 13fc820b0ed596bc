#include "effects/SampleKernels.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cstddef>

namespace quoril {

namespace {

// The loops take plain pointers and limits and call nothing, so that they are vectorised.

QUORIL_VECTORISED
void RampLoop(const std::int16_t* In, std::int16_t* Out, std::int32_t Count, double Start,
              double Step, std::int32_t Before, double Low, double High) noexcept {
    for (std::int32_t k = 0; k < Count; ++k) {
        double Value =
            (Start + Step * static_cast<double>(Before + k)) * static_cast<double>(In[k]);
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Out[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(RoundedWhole(Value)));
    }
}

QUORIL_VECTORISED
void ReverseLoop(const std::int16_t* __restrict In, std::int16_t* __restrict Out,
                 std::size_t Count) noexcept {
    for (std::size_t k = 0; k < Count; ++k)
        Out[k] = In[Count - 1 - k];
}

/// Out[k] = Offset + Sign x In[k].
QUORIL_VECTORISED
void LinearLoop(const std::int16_t* In, std::int16_t* Out, std::size_t Count, std::int32_t Sign,
                std::int32_t Offset, std::int32_t Low, std::int32_t High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        std::int32_t Value = Offset + Sign * In[k];
        Value = Value < Low ? Low : Value;
        Out[k] = static_cast<std::int16_t>(Value > High ? High : Value);
    }
}

} // namespace

void RampRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, double Start,
             double Step, std::int32_t Before, std::int32_t Bits) noexcept {
    RampLoop(In.data(), Out.data(), static_cast<std::int32_t>(In.size()), Start, Step, Before,
             SampleLow(Bits), SampleHigh(Bits));
}

void ReverseRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept {
    ReverseLoop(In.data(), Out.data(), In.size());
}

void InvertRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out,
               std::int32_t Bits) noexcept {
    LinearLoop(In.data(), Out.data(), In.size(), -1, 0, SampleLow(Bits), SampleHigh(Bits));
}

void OffsetRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, std::int32_t Offset,
               std::int32_t Bits) noexcept {
    LinearLoop(In.data(), Out.data(), In.size(), 1, Offset, SampleLow(Bits), SampleHigh(Bits));
}

} // namespace quoril

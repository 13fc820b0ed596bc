#include "effects/GainKernel.h"

#include "base/Arithmetic.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <cstddef>

namespace quoril {

namespace {

// The loop has no call in it, so it is vectorised on every instruction set.
QUORIL_VECTORISED
void GainLoop(const std::int16_t* In, std::int16_t* Out, std::size_t Count, double Factor,
              double Low, double High) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        double Value = static_cast<double>(In[i]) * Factor;
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Out[i] = static_cast<std::int16_t>(static_cast<std::int32_t>(RoundedWhole(Value)));
    }
}

} // namespace

void GainRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, double Factor,
             std::int32_t Bits) noexcept {
    GainLoop(In.data(), Out.data(), In.size(), Factor, SampleLow(Bits), SampleHigh(Bits));
}

} // namespace quoril

#include "base/SampleRuns.h"

#include "base/Vectorised.h"

#include <algorithm>
#include <cstddef>

namespace quoril {

namespace {

// The loops take plain pointers and limits and call nothing, so that they are vectorised.

QUORIL_VECTORISED
void SumLoop(const std::int16_t* A, const std::int16_t* B, std::int16_t* Out, std::size_t Count,
             std::int32_t Sign, std::int32_t Low, std::int32_t High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        std::int32_t Value = A[k] + Sign * B[k];
        Value = Value < Low ? Low : Value;
        Out[k] = static_cast<std::int16_t>(Value > High ? High : Value);
    }
}

QUORIL_VECTORISED
void RangeLoop(const std::int16_t* In, std::size_t Count, std::int16_t& Low,
               std::int16_t& High) noexcept {
    std::int16_t Least = 0;
    std::int16_t Most = 0;
    for (std::size_t k = 0; k < Count; ++k) {
        Least = In[k] < Least ? In[k] : Least;
        Most = In[k] > Most ? In[k] : Most;
    }
    Low = Least;
    High = Most;
}

} // namespace

void SumRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
            std::span<std::int16_t> Out, std::int32_t Sign, std::int32_t Low,
            std::int32_t High) noexcept {
    SumLoop(A.data(), B.data(), Out.data(), Out.size(), Sign, Low, High);
}

std::int32_t PeakOf(std::span<const std::int16_t> In) noexcept {
    std::int16_t Low = 0;
    std::int16_t High = 0;
    RangeLoop(In.data(), In.size(), Low, High);
    return std::max<std::int32_t>(High, -std::int32_t{Low});
}

} // namespace quoril

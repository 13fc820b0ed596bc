#include "edit/LapKernel.h"

#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cstddef>

namespace quoril {

namespace {

/// `Length` is at most MostRunSteps.
QUORIL_VECTORISED
void SmoothLoop(const std::int16_t* A, const std::int16_t* B, std::int16_t* Out, std::size_t Length,
                double First, double Count, std::int32_t Max) noexcept {
    for (std::size_t k = 0; k < Length; ++k) {
        const double T = (First + RunSteps[k]) / Count;
        const double U = 1.0 - T;
        const double FromA = RoundedWhole(static_cast<double>(A[k]) * U);
        Out[k] = LimitedSample(RoundedLow(static_cast<double>(B[k]) * T + FromA), Max);
    }
}

} // namespace

void LapSmoothRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Count,
                  std::int32_t Max) noexcept {
    for (std::size_t Done = 0; Done < Out.size(); Done += MostRunSteps)
        SmoothLoop(A.data() + Done, B.data() + Done, Out.data() + Done,
                   std::min(MostRunSteps, Out.size() - Done),
                   static_cast<double>(First) + static_cast<double>(Done),
                   static_cast<double>(Count), Max);
}

} // namespace quoril

#include "effects/MixKernels.h"

#include "base/Arithmetic.h"
#include "base/SampleRuns.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cstddef>

namespace quoril {

namespace {

QUORIL_VECTORISED
void AverageLoop(const std::int16_t* __restrict A, const std::int16_t* __restrict B,
                 std::int16_t* __restrict Out, std::size_t Count) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        const std::int32_t Sum = A[k] + B[k];
        const std::int32_t Floor = Sum >> 1;
        // A half goes up only where the floor is odd.
        Out[k] = static_cast<std::int16_t>(Floor + (Sum & Floor & 1));
    }
}

} // namespace

void MixRun(std::int32_t Source, std::span<const std::int16_t> L, std::span<const std::int16_t> R,
            std::span<std::int16_t> Out, std::int32_t Bits) noexcept {
    const auto Sum = [&](std::span<const std::int16_t> A, std::span<const std::int16_t> B,
                         std::int32_t Sign) {
        SumRun(A, B, Out, Sign, SampleLow(Bits), SampleHigh(Bits));
    };
    switch (Source) {
    case MixLeft:
        std::ranges::copy(L, Out.begin());
        return;
    case MixRight:
        std::ranges::copy(R, Out.begin());
        return;
    case MixAverage:
        AverageLoop(L.data(), R.data(), Out.data(), Out.size());
        return;
    case MixSum:
        Sum(L, R, 1);
        return;
    case MixLeftLessRight:
        Sum(L, R, -1);
        return;
    case MixRightLessLeft:
        Sum(R, L, -1);
        return;
    default:
        std::ranges::fill(Out, std::int16_t{0});
        return;
    }
}

} // namespace quoril

#include "edit/LapKernel.h"

#include "base/Vectorised.h"

#include <algorithm>
#include <cstddef>

namespace quoril {

namespace {

/// Adding and taking off 1.5 x 2^52 rounds a double of less than 2^51 to the nearest whole number,
/// ties to even: the sum has no room for a fraction.
constexpr double RoundingShift = 6755399441055744.0;

QUORIL_VECTORISED
void SmoothLoop(const std::int16_t* A, const std::int16_t* B, std::int16_t* Out,
                std::int32_t Length, std::int32_t First, double Count, double Max) noexcept {
    for (std::int32_t k = 0; k < Length; ++k) {
        const double T = static_cast<double>(First + k) / Count;
        const double U = 1.0 - T;
        double Value = (static_cast<double>(A[k]) * U + RoundingShift) - RoundingShift;
        Value = static_cast<double>(B[k]) * T + Value;
        Value = (Value + RoundingShift) - RoundingShift;
        Value = Value < -Max ? -Max : Value;
        Value = Value > Max ? Max : Value;
        Out[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(Value));
    }
}

} // namespace

void LapSmoothRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Count,
                  std::int32_t Max) noexcept {
    SmoothLoop(A.data(), B.data(), Out.data(), static_cast<std::int32_t>(Out.size()), First,
               static_cast<double>(Count), static_cast<double>(Max));
}

void LapSimpleRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
                  std::span<std::int16_t> Out, std::int32_t Max) noexcept {
    for (std::size_t k = 0; k < Out.size(); ++k)
        Out[k] = static_cast<std::int16_t>(std::clamp(A[k] + B[k], -Max, Max));
}

} // namespace quoril

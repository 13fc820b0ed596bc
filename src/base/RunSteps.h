// Places inside a run as doubles, and the rounding that loops over samples do without a call.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace quoril {

/// 0, 1, 2 and so on: what loops add to the place of a run's first sample. Loading them is faster
/// than converting a counter, and loops that count in doubles are not vectorised.
inline constexpr std::size_t MostRunSteps = 1024;
inline constexpr std::array<double, MostRunSteps> RunSteps = [] {
    std::array<double, MostRunSteps> Steps{};
    for (std::size_t i = 0; i < MostRunSteps; ++i)
        Steps[i] = static_cast<double>(i);
    return Steps;
}();

/// Adding and taking off 1.5 x 2^52 rounds a double of less than 2^51 to the nearest whole number,
/// ties to even: the sum has no room for a fraction.
inline constexpr double RoundingShift = 6755399441055744.0;

[[gnu::always_inline]] inline double RoundedWhole(double Value) noexcept {
    return (Value + RoundingShift) - RoundingShift;
}

/// A double of less than 2^31 to the nearest whole number, ties to even: the low bits of its sum
/// with 1.5 x 2^52 are that number.
[[gnu::always_inline]] inline std::int32_t RoundedLow(double Value) noexcept {
    return static_cast<std::int32_t>(std::bit_cast<std::int64_t>(Value + RoundingShift));
}

[[gnu::always_inline]] inline std::int16_t LimitedSample(std::int32_t Value,
                                                         std::int32_t Max) noexcept {
    Value = Value < -Max ? -Max : Value;
    Value = Value > Max ? Max : Value;
    return static_cast<std::int16_t>(Value);
}

} // namespace quoril

// The rules by which the program rounds, adds and clips. Nothing else rounds or overflows by
// itself.
#pragma once

#include "base/Failure.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace quoril {

[[noreturn]] inline void FailOverflow() {
    throw Failure("Overflow");
}

/// Rounds to the nearest whole number, ties to even, whatever rounding mode the thread is in.
/// Exact for every double; infinities and NaN pass through.
[[nodiscard]] inline double RoundEven(double Value) noexcept {
    const double Floor = std::floor(Value);
    const double Rest = Value - Floor;
    if (Rest < 0.5)
        return Floor;
    if (Rest > 0.5)
        return Floor + 1.0;
    return std::fmod(Floor, 2.0) == 0.0 ? Floor : Floor + 1.0;
}

/// A floating value that goes to a 32-bit field: nearest, ties to even.
/// Fails with "Overflow" outside the 32-bit range and for NaN.
[[nodiscard]] inline std::int32_t RoundToLong(double Value) {
    const double Rounded = RoundEven(Value);
    if (!(Rounded >= -2147483648.0 && Rounded <= 2147483647.0))
        FailOverflow();
    return static_cast<std::int32_t>(Rounded);
}

/// A floating value that goes to a sample: nearest, ties to even; fails outside 16 bits.
[[nodiscard]] inline std::int16_t RoundToInteger(double Value) {
    const double Rounded = RoundEven(Value);
    if (!(Rounded >= -32768.0 && Rounded <= 32767.0))
        FailOverflow();
    return static_cast<std::int16_t>(Rounded);
}

/// Stores in single precision, where single precision is what a formula states, and nowhere else.
[[nodiscard]] inline float Single(double Value) noexcept {
    return static_cast<float>(Value);
}

[[nodiscard]] inline std::int32_t AddLong(std::int32_t A, std::int32_t B) {
    std::int32_t Result;
    if (__builtin_add_overflow(A, B, &Result))
        FailOverflow();
    return Result;
}

[[nodiscard]] inline std::int32_t SubLong(std::int32_t A, std::int32_t B) {
    std::int32_t Result;
    if (__builtin_sub_overflow(A, B, &Result))
        FailOverflow();
    return Result;
}

[[nodiscard]] inline std::int32_t MulLong(std::int32_t A, std::int32_t B) {
    std::int32_t Result;
    if (__builtin_mul_overflow(A, B, &Result))
        FailOverflow();
    return Result;
}

/// How far apart two positions are.
[[nodiscard]] inline std::int64_t Distance(std::int32_t A, std::int32_t B) noexcept {
    return std::abs(std::int64_t{A} - B);
}

/// A 64-bit sum that goes to a 32-bit field; fails with "Overflow" when it does not fit.
[[nodiscard]] inline std::int32_t ToLong(std::int64_t Value) {
    if (Value < std::numeric_limits<std::int32_t>::min() ||
        Value > std::numeric_limits<std::int32_t>::max())
        FailOverflow();
    return static_cast<std::int32_t>(Value);
}

/// Lowest and highest sample of a depth of 8 or 16 bits.
[[nodiscard]] constexpr std::int32_t SampleLow(std::int32_t Bits) noexcept {
    return Bits == 8 ? -128 : -32768;
}
[[nodiscard]] constexpr std::int32_t SampleHigh(std::int32_t Bits) noexcept {
    return Bits == 8 ? 127 : 32767;
}

/// Limits a sample to the range of a depth of 8 or 16 bits.
[[nodiscard]] inline std::int16_t ClipSample(std::int32_t Value, std::int32_t Bits) noexcept {
    return static_cast<std::int16_t>(std::clamp(Value, SampleLow(Bits), SampleHigh(Bits)));
}

} // namespace quoril

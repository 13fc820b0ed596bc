// A radix-2 transform of 16-bit samples in single precision, and the noise profile that is learnt
// with it.
//
// Forward, bin k is the sum of x(n) e^(+i 2 pi n k / N), without scaling. The inverse takes a real
// spectrum, works in whole numbers and divides by N; so what goes forward and back is the even part
// (x(n) + x(N - n)) / 2 of the signal.
#pragma once

#include "effects/FFTButterflies.h"

#include <cstdint>
#include <vector>

namespace quoril {

// The tables of the last size. They come with the first transform.
extern std::int32_t FFTSize; ///< 0 before
extern std::uint8_t FFTBits; ///< FFTSize is 2 to that power
extern std::vector<std::int32_t> ReversedBits;
extern std::vector<float> ImagOut; ///< imaginary part of the last forward transform
/// The factors of the stage with blocks of 2 x b places stand from index b on.
extern std::vector<Twiddle> FFTFactors;

/// Makes the tables for a number of samples that is a power of two from 2 on; otherwise tells the
/// user, leaves the tables as they were, and gives false.
bool FFTPrepare(std::int32_t Samples);
/// The lowest `Bits` bits of `Index` in reverse order.
[[nodiscard]] std::int32_t ReverseBits(std::int32_t Index, std::uint8_t Bits) noexcept;

/// The real part of the spectrum of the first `Samples` of `RealIn`; all arrays hold at least
/// `Samples`. Without tables for that size nothing is written.
void FFTForward(const std::vector<std::int16_t>& RealIn, std::vector<float>& RealOut,
                std::int32_t Samples);
/// The signal of a real spectrum. Fails with "Overflow" beyond 32 bits.
void FFTInverse(const std::vector<float>& RealIn, std::vector<std::int32_t>& RealOut,
                std::int32_t Samples);

} // namespace quoril

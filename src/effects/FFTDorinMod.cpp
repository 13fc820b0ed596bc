#include "effects/FFTDorinMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"

#include <cmath>
#include <cstddef>

namespace quoril {

namespace {

using Plain = Butterflies<float, double>;

/// The power of two that `Samples` is; 0 for none.
std::uint8_t PowerOf(std::int32_t Samples) {
    constexpr std::uint8_t MostBits = 100;
    for (std::uint8_t Bits = 1; Bits <= MostBits; ++Bits)
        if (std::ldexp(1.0, Bits) == static_cast<double>(Samples))
            return Bits;
    return 0;
}

/// The factors of a stage, each from the one before by turning on.
void AddFactors(std::vector<Twiddle>& Factors, std::int32_t BlockEnd) {
    constexpr double FullTurn = 6.283185;
    const auto DeltaAngle = static_cast<double>(Single(FullTurn / (2.0 * BlockEnd)));
    const auto HalfSine = static_cast<double>(Single(std::sin(0.5 * DeltaAngle)));
    const auto Alpha = static_cast<double>(Single(2 * HalfSine * HalfSine));
    const auto Beta = static_cast<double>(Single(std::sin(DeltaAngle)));
    // In fields of single precision: what is narrowed and widened again in one go is not rounded by
    // every compiler.
    Twiddle W = {1, 0};
    for (std::int32_t j = 0; j < BlockEnd; ++j) {
        Factors.push_back(W);
        const auto AR = static_cast<double>(W.Real);
        const auto AI = static_cast<double>(W.Imag);
        const float DeltaAR = Single(Alpha * AR + Beta * AI);
        W.Imag = Single(AI - (Alpha * AI - Beta * AR));
        W.Real -= DeltaAR;
    }
}

std::size_t Reversed(std::size_t Index) {
    return static_cast<std::size_t>(ReversedBits[Index]);
}

} // namespace

std::int32_t FFTSize = 0;
std::uint8_t FFTBits = 0;
std::vector<std::int32_t> ReversedBits;
std::vector<float> ImagOut;
std::vector<Twiddle> FFTFactors;

bool FFTPrepare(std::int32_t Samples) {
    const std::uint8_t Bits = PowerOf(Samples);
    if (Bits == 0) {
        MsgBox("Failed to FFT");
        return false;
    }
    FFTBits = Bits;
    FFTSize = Samples;
    ReversedBits.clear();
    for (std::int32_t Index = 0; Index < Samples; ++Index)
        ReversedBits.push_back(ReverseBits(Index, Bits));
    ImagOut.assign(static_cast<std::size_t>(Samples), 0.0F);
    FFTFactors.assign(1, {});
    for (std::int32_t BlockEnd = 1; BlockEnd < Samples; BlockEnd *= 2)
        AddFactors(FFTFactors, BlockEnd);
    return true;
}

std::int32_t ReverseBits(std::int32_t Index, std::uint8_t Bits) noexcept {
    std::int32_t Result = 0;
    for (std::uint8_t Bit = 0; Bit < Bits; ++Bit) {
        Result = Result * 2 | (Index & 1);
        Index /= 2;
    }
    return Result;
}

void FFTForward(const std::vector<std::int16_t>& RealIn, std::vector<float>& RealOut,
                std::int32_t Samples) {
    if (Samples != FFTSize && !FFTPrepare(Samples))
        return;
    const auto Size = static_cast<std::size_t>(FFTSize);
    for (std::size_t i = 0; i < Size; ++i) {
        RealOut[Reversed(i)] = RealIn[i];
        ImagOut[i] = 0;
    }
    for (std::size_t BlockEnd = 1; BlockEnd < Size; BlockEnd *= 2)
        Plain::ForwardStage(RealOut.data(), ImagOut.data(), Size, BlockEnd, &FFTFactors[BlockEnd]);
}

void FFTInverse(const std::vector<float>& RealIn, std::vector<std::int32_t>& RealOut,
                std::int32_t Samples) {
    if (Samples != FFTSize && !FFTPrepare(Samples))
        return;
    const auto Size = static_cast<std::size_t>(FFTSize);
    std::vector<double> Real(Size);
    for (std::size_t i = 0; i < Size; ++i) {
        Real[Reversed(i)] = RoundToLong(static_cast<double>(RealIn[i]));
        ImagOut[i] = 0;
    }
    for (std::size_t BlockEnd = 1; BlockEnd < Size; BlockEnd *= 2) {
        Plain::InverseStage(Real.data(), ImagOut.data(), Size, BlockEnd, &FFTFactors[BlockEnd]);
        for (const double Value : Real)
            (void)RoundToLong(Value);
    }
    for (std::size_t i = 0; i < Size; ++i)
        RealOut[i] = RoundToLong(Real[i] / FFTSize);
}

} // namespace quoril

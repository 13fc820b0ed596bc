// The stages of the transform, for one signal or for several side by side: what a number is, is
// left open. `Singles` is float or a vector of floats, `Doubles` the same in double precision.
//
// A stage takes blocks of twice `BlockEnd` places. The inverse keeps its real part in whole
// numbers, which lie in doubles because these hold them exactly, and rounds them at every
// butterfly.
//
// Vectors are passed by reference: in which registers they would travel depends on the instruction
// set.
#pragma once

#include "base/RunSteps.h"

#include <cstddef>
#include <type_traits>

namespace quoril {

/// A twiddle factor of the forward transform. The inverse takes its conjugate.
struct Twiddle {
    float Real;
    float Imag;
};

template <typename Singles, typename Doubles>
struct Butterflies {
    [[gnu::always_inline]] static inline void Widen(const Singles& Value, Doubles& Wide) noexcept {
        if constexpr (std::is_floating_point_v<Singles>)
            Wide = static_cast<Doubles>(Value);
        else
            Wide = __builtin_convertvector(Value, Doubles);
    }
    [[gnu::always_inline]] static inline void Narrow(const Doubles& Value,
                                                     Singles& Narrowed) noexcept {
        if constexpr (std::is_floating_point_v<Singles>)
            Narrowed = static_cast<Singles>(Value);
        else
            Narrowed = __builtin_convertvector(Value, Singles);
    }
    [[gnu::always_inline]] static inline void Round(Doubles& Value) noexcept {
        Value = (Value + RoundingShift) - RoundingShift;
    }

    /// The two places of a butterfly: A + T and A - T.
    [[gnu::always_inline]] static inline void Cross(Singles& A, Singles& B,
                                                    const Singles& T) noexcept {
        B = A - T;
        A = A + T;
    }
    [[gnu::always_inline]] static inline void CrossWhole(Doubles& A, Doubles& B,
                                                         const Singles& T) noexcept {
        Doubles Wide;
        Widen(T, Wide);
        B = A - Wide;
        Round(B);
        A = A + Wide;
        Round(A);
    }

    /// `Factors` are those of this stage; the first one of each stage is 1.
    [[gnu::always_inline]] static inline void ForwardStage(Singles* Real, Singles* Imag,
                                                           std::size_t Size, std::size_t BlockEnd,
                                                           const Twiddle* Factors) noexcept {
        Singles TR;
        Singles TI;
        for (std::size_t J = 0; J < Size; J += 2 * BlockEnd) {
            TR = Real[J + BlockEnd];
            TI = Imag[J + BlockEnd];
            Cross(Real[J], Real[J + BlockEnd], TR);
            Cross(Imag[J], Imag[J + BlockEnd], TI);
        }
        for (std::size_t j = 1; j < BlockEnd; ++j) {
            const auto WR = static_cast<double>(Factors[j].Real);
            const auto WI = static_cast<double>(Factors[j].Imag);
            for (std::size_t J = j; J < Size; J += 2 * BlockEnd) {
                const std::size_t K = J + BlockEnd;
                Doubles RealK;
                Doubles ImagK;
                Widen(Real[K], RealK);
                Widen(Imag[K], ImagK);
                Narrow(WR * RealK - WI * ImagK, TR);
                Narrow(WI * RealK + WR * ImagK, TI);
                Cross(Real[J], Real[K], TR);
                Cross(Imag[J], Imag[K], TI);
            }
        }
    }

    /// The same with the factors' conjugates, on whole numbers.
    [[gnu::always_inline]] static inline void InverseStage(Doubles* Real, Singles* Imag,
                                                           std::size_t Size, std::size_t BlockEnd,
                                                           const Twiddle* Factors) noexcept {
        Singles TR;
        Singles TI;
        for (std::size_t J = 0; J < Size; J += 2 * BlockEnd) {
            Narrow(Real[J + BlockEnd], TR);
            TI = Imag[J + BlockEnd];
            CrossWhole(Real[J], Real[J + BlockEnd], TR);
            Cross(Imag[J], Imag[J + BlockEnd], TI);
        }
        for (std::size_t j = 1; j < BlockEnd; ++j) {
            const auto WR = static_cast<double>(Factors[j].Real);
            const auto WI = static_cast<double>(Factors[j].Imag);
            for (std::size_t J = j; J < Size; J += 2 * BlockEnd) {
                const std::size_t K = J + BlockEnd;
                Doubles ImagK;
                Widen(Imag[K], ImagK);
                Narrow(WR * Real[K] + WI * ImagK, TR);
                Narrow(WR * ImagK - WI * Real[K], TI);
                CrossWhole(Real[J], Real[K], TR);
                Cross(Imag[J], Imag[K], TI);
            }
        }
    }
};

} // namespace quoril

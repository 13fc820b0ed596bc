// The stages of the transform, for one signal or for several side by side: what a number is, is
// left open. `Singles` is float or a vector of floats, `Doubles` the same in double precision.
//
// A stage takes blocks of twice `BlockEnd` places. The inverse keeps its real part in whole
// numbers, which lie in doubles because these hold them exactly, and rounds them at every
// butterfly.
//
// All of this is inlined, so that vectors are never passed; a source that takes vectors says so to
// its compiler by leaving out -Wpsabi.
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
    [[gnu::always_inline]] static inline Doubles Widened(Singles Value) noexcept {
        if constexpr (std::is_floating_point_v<Singles>)
            return static_cast<Doubles>(Value);
        else
            return __builtin_convertvector(Value, Doubles);
    }
    [[gnu::always_inline]] static inline Singles Narrowed(Doubles Value) noexcept {
        if constexpr (std::is_floating_point_v<Singles>)
            return static_cast<Singles>(Value);
        else
            return __builtin_convertvector(Value, Singles);
    }
    [[gnu::always_inline]] static inline Doubles Rounded(Doubles Value) noexcept {
        return (Value + RoundingShift) - RoundingShift;
    }

    /// `Factors` are those of this stage.
    [[gnu::always_inline]] static inline void ForwardStage(Singles* Real, Singles* Imag,
                                                           std::size_t Size, std::size_t BlockEnd,
                                                           const Twiddle* Factors) noexcept {
        for (std::size_t j = 0; j < BlockEnd; ++j) {
            const auto WR = static_cast<double>(Factors[j].Real);
            const auto WI = static_cast<double>(Factors[j].Imag);
            for (std::size_t J = j; J < Size; J += 2 * BlockEnd) {
                const std::size_t K = J + BlockEnd;
                const Doubles RealK = Widened(Real[K]);
                const Doubles ImagK = Widened(Imag[K]);
                const Singles TR = Narrowed(WR * RealK - WI * ImagK);
                const Singles TI = Narrowed(WI * RealK + WR * ImagK);
                Real[K] = Real[J] - TR;
                Imag[K] = Imag[J] - TI;
                Real[J] = Real[J] + TR;
                Imag[J] = Imag[J] + TI;
            }
        }
    }

    [[gnu::always_inline]] static inline void InverseStage(Doubles* Real, Singles* Imag,
                                                           std::size_t Size, std::size_t BlockEnd,
                                                           const Twiddle* Factors) noexcept {
        for (std::size_t j = 0; j < BlockEnd; ++j) {
            const auto WR = static_cast<double>(Factors[j].Real);
            const auto WI = static_cast<double>(Factors[j].Imag);
            for (std::size_t J = j; J < Size; J += 2 * BlockEnd) {
                const std::size_t K = J + BlockEnd;
                const Doubles RealK = Real[K];
                const Doubles ImagK = Widened(Imag[K]);
                const Singles TR = Narrowed(WR * RealK + WI * ImagK);
                const Singles TI = Narrowed(WR * ImagK - WI * RealK);
                const Doubles Share = Widened(TR);
                Real[K] = Rounded(Real[J] - Share);
                Imag[K] = Imag[J] - TI;
                Real[J] = Rounded(Real[J] + Share);
                Imag[J] = Imag[J] + TI;
            }
        }
    }
};

} // namespace quoril

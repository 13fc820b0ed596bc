// What is chosen in the dialog of the bands until it is accepted.
#pragma once

#include "effects/BandSet.h"

#include <cstdint>
#include <vector>

namespace quoril {

inline constexpr std::int32_t EqualizerMode = 0;
inline constexpr std::int32_t BandPassMode = 1;

struct BandChoice {
    std::int32_t WorkingMode = EqualizerMode;
    BandSet EqBands;            ///< what is set in the mode of the equalizer
    std::vector<bool> BandStop; ///< from index 1: which bands are stopped in the other mode

    /// The choice of the last time in that mode.
    [[nodiscard]] static BandChoice Read(std::int32_t WorkingMode);

    [[nodiscard]] std::int32_t NoOfBands() const noexcept { return EqBands.NoOfBands; }
    /// Takes another number of bands. False for the present one, and for one that is not from
    /// `FewestBands` to `MostBands`; then nothing is changed.
    bool SetNoOfBands(std::int32_t Count);
    /// Sets the value of a band, held within its range; whether it is another one.
    bool SetValue(std::int32_t Band, std::int32_t Value);
    [[nodiscard]] std::int32_t Value(std::int32_t Band) const;
    [[nodiscard]] bool Stopped(std::int32_t Band) const;
    void Toggle(std::int32_t Band);

    /// Hands the choice to the command, and remembers it.
    void Accept() const;
};

} // namespace quoril

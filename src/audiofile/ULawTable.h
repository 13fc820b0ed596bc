// The u-law code of 8 bits (ITU-T G.711), as tables.
#pragma once

#include <array>
#include <cstdint>

namespace quoril {

/// The sample of each of the 256 codes.
[[nodiscard]] const std::array<std::int16_t, 256>& ULawDecodeTable();

/// Codes by nearest value. Of two codes equally near, the lower one stands.
struct ULawEncodeTables {
    std::array<std::uint8_t, 32768> ULawPos; ///< for the samples 0 to 32767
    std::array<std::uint8_t, 32769> ULawNeg; ///< for the samples -1 to -32768, by their size
};

/// Built at the first call, which takes some milliseconds.
[[nodiscard]] const ULawEncodeTables& ULawEncodeTable();

/// The code of a sample.
[[nodiscard]] inline std::uint8_t ULawCode(const ULawEncodeTables& Tables,
                                           std::int16_t Sample) noexcept {
    const std::int32_t Value = Sample;
    return Value >= 0 ? Tables.ULawPos[static_cast<std::size_t>(Value)]
                      : Tables.ULawNeg[static_cast<std::size_t>(-Value)];
}

} // namespace quoril

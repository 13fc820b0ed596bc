// The u-law code of 8 bits (ITU-T G.711), as tables.
#pragma once

#include <array>
#include <cstdint>

namespace quoril {

/// The sample of each of the 256 codes.
[[nodiscard]] const std::array<std::int16_t, 256>& ULawDecodeTable();

} // namespace quoril

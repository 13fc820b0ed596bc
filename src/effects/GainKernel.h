// Multiplying samples by a factor, exactly.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// Out[i] = In[i] x Factor, formed in double precision, rounded to nearest with ties to even, and
/// clipped to the range of a depth of 8 or 16 bits. `In` and `Out` have the same length and are
/// the same place or do not overlap.
void GainRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, double Factor,
             std::int32_t Bits) noexcept;

} // namespace quoril

// Arithmetic on runs of samples. `In` and `Out` have the same length; they are the same place or do
// not overlap. Results are clipped to the range of a depth of 8 or 16 bits.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// Out[k] = In[k] x (`Start` + `Step` x (`Before` + k)), formed in double precision and rounded to
/// nearest with ties to even.
void RampRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, double Start,
             double Step, std::int32_t Before, std::int32_t Bits) noexcept;

/// The samples of `In`, last first. The two must not overlap.
void ReverseRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept;
/// Out[k] = -In[k]; the lowest value of the depth becomes the highest.
void InvertRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out,
               std::int32_t Bits) noexcept;
/// Out[k] = In[k] + `Offset`, which lies between -65536 and 65536.
void OffsetRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out, std::int32_t Offset,
               std::int32_t Bits) noexcept;

} // namespace quoril

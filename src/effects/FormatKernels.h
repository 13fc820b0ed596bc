// Arithmetic of format changes on runs of samples. All runs of a call have the same length.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// 8 to 16 bits: Out[k] = In[k] x 256, limited to 16 bits. `Out` is the place of `In` or does not
/// overlap it.
void WidenRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept;
/// 16 to 8 bits: Out[k] = In[k] / 256, rounded to nearest with ties to even; 128 becomes 127. `Out`
/// is the place of `In` or does not overlap it.
void NarrowRun(std::span<const std::int16_t> In, std::span<std::int16_t> Out) noexcept;
/// One channel of two: Out[k] = (L[k] + R[k]) x 0.666, formed in double precision, rounded to
/// nearest with ties to even and limited to the range of a depth of 8 or 16 bits. `Out` overlaps
/// neither of the others.
void MergeRun(std::span<const std::int16_t> L, std::span<const std::int16_t> R,
              std::span<std::int16_t> Out, std::int32_t Bits) noexcept;

} // namespace quoril

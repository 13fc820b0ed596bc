// The arithmetic of the pastes that compute: runs of the clip and of the document give a run.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

// All spans of a call have the same length; `Out` and `Clip` are the same place or do not overlap.
// Results are limited to -`MaxSample` to `MaxSample`, so the lowest value of the bits never comes.

/// 127 or 32767 for 8 or 16 bits.
[[nodiscard]] std::int32_t PasteMaxSample(std::int32_t Bits);

/// |0.95 / MaxSample x clip| x document, to nearest, ties to even.
void ModulateRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                 std::span<std::int16_t> Out, std::int32_t MaxSample) noexcept;
/// x times the document and 1 - x times the clip, to nearest, ties to even; x = i / `Total` in
/// single precision, where i counts from `First` for the run's first sample.
void CrossFadeRun(std::span<const std::int16_t> Clip, std::span<const std::int16_t> Doc,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Total,
                  std::int32_t MaxSample) noexcept;

} // namespace quoril

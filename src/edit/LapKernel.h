// Letting one stretch run into another one.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// Sample First + k of a fade of `Count` samples, for every k of the run: with t = (First + k) /
/// Count, what A x (1 - t) gives, rounded, is added to B x t, and the sum rounded, ties to even.
/// The result is limited to -`Max` to `Max`. The three runs have the same length.
void LapSmoothRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
                  std::span<std::int16_t> Out, std::int32_t First, std::int32_t Count,
                  std::int32_t Max) noexcept;

} // namespace quoril

// Arithmetic on runs of samples that more than one folder needs.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// Out[k] = A[k] + `Sign` x B[k] with a sign of 1 or -1, limited to `Low` to `High`. All three have
/// the same length; `Out` is the place of one of the others or overlaps none.
void SumRun(std::span<const std::int16_t> A, std::span<const std::int16_t> B,
            std::span<std::int16_t> Out, std::int32_t Sign, std::int32_t Low,
            std::int32_t High) noexcept;
/// The largest absolute value; 0 for an empty run, 32768 when -32768 occurs.
[[nodiscard]] std::int32_t PeakOf(std::span<const std::int16_t> In) noexcept;

} // namespace quoril

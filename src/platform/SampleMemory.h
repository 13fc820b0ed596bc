// Memory for runs of samples. Large runs come straight from the system in large pages and go back
// to it; a few are kept for the next use, whole or in parts, since fresh pages cost more than
// copying into them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quoril {

/// Room for `Count` samples, aligned to 64 bytes; all zero if `Zeroed`. Count 0 gives a pointer
/// that may not be read. Throws Failure when there is no memory, and for a negative count.
[[nodiscard]] std::int16_t* SampleMemoryTake(std::int32_t Count, bool Zeroed);
/// Gives back what SampleMemoryTake gave for the same `Count`.
void SampleMemoryGive(std::int16_t* Samples, std::int32_t Count) noexcept;
/// Bytes handed out and not given back.
[[nodiscard]] std::int64_t SampleMemoryInUse() noexcept;
/// Gives the kept spare runs back to the system.
void SampleMemoryTrim() noexcept;

} // namespace quoril

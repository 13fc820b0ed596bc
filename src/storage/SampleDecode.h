// From the bytes of a file to samples: the inner loops of reading.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quoril {

/// Unsigned bytes to samples: byte - 128. `Stride` is the bytes from one sample to the next, 1
/// or 2.
void DecodeBytes(const std::uint8_t* Source, std::size_t Stride, std::int16_t* Target,
                 std::size_t Count) noexcept;
/// Every second 16-bit sample, beginning with the first.
void DecodeEverySecond(const std::int16_t* Source, std::int16_t* Target,
                       std::size_t Count) noexcept;
/// Frames of two 16-bit samples, dealt out to two places.
void DecodeFrames(const std::int16_t* Source, std::int16_t* Left, std::int16_t* Right,
                  std::size_t Count) noexcept;

} // namespace quoril

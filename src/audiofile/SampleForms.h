// Samples in the forms that audio files have: 8-bit bytes, and frames of two channels.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quoril {

// In and Out never overlap. A sample of 8-bit audio is its unsigned byte less 128.

/// Left and right in turn, left first: `Frames` samples of each channel give 2 x `Frames` samples.
/// `Out` needs no alignment.
void InterleaveSamples(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                       std::uint8_t* Out) noexcept;

/// One byte for each sample. False when a sample lies outside -128 to 127; the bytes are then
/// worthless.
[[nodiscard]] bool BytesFromSamples(const std::int16_t* In, std::size_t Count,
                                    std::uint8_t* Out) noexcept;

/// The same for two channels, left and right in turn.
[[nodiscard]] bool InterleaveBytes(const std::int16_t* Left, const std::int16_t* Right,
                                   std::size_t Frames, std::uint8_t* Out) noexcept;

/// One sample for each byte.
void SamplesFromBytes(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept;

// The other byte order, the high byte of a sample first. Bytes need no alignment.

void SwapSamples(const std::int16_t* In, std::size_t Count, std::uint8_t* Out) noexcept;
void InterleaveSwapped(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                       std::uint8_t* Out) noexcept;
void SamplesFromSwapped(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept;
void DealSwapped(const std::uint8_t* In, std::size_t Frames, std::int16_t* Left,
                 std::int16_t* Right) noexcept;

/// A value with its bytes in the other order.
[[nodiscard]] constexpr std::uint16_t SwapInteger(std::uint16_t Value) noexcept {
    return static_cast<std::uint16_t>((Value << 8) | (Value >> 8));
}
[[nodiscard]] constexpr std::uint32_t SwapLong(std::uint32_t Value) noexcept {
    return (std::uint32_t{SwapInteger(static_cast<std::uint16_t>(Value))} << 16) |
           SwapInteger(static_cast<std::uint16_t>(Value >> 16));
}

} // namespace quoril

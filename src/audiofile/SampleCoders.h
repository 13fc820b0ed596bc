// The codes in which audio files hold their samples.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace quoril {

enum class SampleCode {
    Bytes,        ///< 8 bits, unsigned: the sample and 128
    LittleEndian, ///< 16 bits, the low byte first
    BigEndian,    ///< 16 bits, the high byte first
    ULaw          ///< 8 bits for a sample of 16
};

/// The code of samples of that depth, 8 or 16 bits, in WAV and raw files.
[[nodiscard]] constexpr SampleCode PlainCode(std::int32_t Bits) noexcept {
    return Bits == 8 ? SampleCode::Bytes : SampleCode::LittleEndian;
}

/// Bits that a sample takes in the file, 8 or 16.
[[nodiscard]] std::int32_t BitsInFile(SampleCode Code) noexcept;

/// Turns frames into the file's bytes. `Right` is empty for a file of one channel. `Out` has room
/// for exactly the bytes of `Left.size()` frames. May throw.
using FrameCoder = std::function<void(std::span<const std::int16_t> Left,
                                      std::span<const std::int16_t> Right, std::uint8_t* Out)>;
/// That of a code. Bytes throws "Overflow" for a sample outside -128 to 127.
[[nodiscard]] FrameCoder FrameCoderFor(SampleCode Code);

/// Turns the bytes of `Frames` frames, which begin at an even address, into samples. `Right` is
/// null for a file of one channel.
using FrameDecoder = std::function<void(const std::uint8_t* Bytes, std::size_t Frames,
                                        std::int16_t* Left, std::int16_t* Right)>;
[[nodiscard]] FrameDecoder FrameDecoderFor(SampleCode Code);

} // namespace quoril

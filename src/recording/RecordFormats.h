// The formats that the capture engines know by name, and what a take and its blocks look like.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// What is captured: channels 1 or 2, bits 8 or 16, rate in Hz.
struct CaptureFormat {
    std::int32_t RecChannels = 1;
    std::int32_t RecBits = 16;
    std::int32_t RecFreq = 22050;
    friend bool operator==(const CaptureFormat&, const CaptureFormat&) = default;

    /// Bytes of one frame.
    [[nodiscard]] std::size_t BlockAlign() const noexcept {
        return static_cast<std::size_t>(RecChannels * RecBits / 8);
    }
    /// Frames in a half, one tenth of a second: rounded, ties to even, at least one.
    [[nodiscard]] std::int32_t HalfFrames() const;
    [[nodiscard]] std::size_t HalfBytes() const {
        return static_cast<std::size_t>(HalfFrames()) * BlockAlign();
    }
};

/// The capture engines by the numbers of `RecEngine`.
enum RecEngines : std::int32_t { RecEngineNone = 0, RecEngineDx7 = 1, RecEngineApi = 2 };

/// A format of a device's list: "11025,1,8" and "11.025 kHz, mono, 8-bit".
struct RecordFormatName {
    std::string Key;
    std::string Name;
};

/// Every one of the formats that have a name.
inline constexpr std::uint32_t AllFormatBits = 0xFFF;

/// The list for a device with these capability bits. The engine of the sound server names no 8-bit
/// format.
[[nodiscard]] std::vector<RecordFormatName> RecordFormatList(std::uint32_t FormatBits,
                                                             std::int32_t RecEngine);
/// The text "rate,channels,bits".
[[nodiscard]] std::string RecordFormatKey(const CaptureFormat& Format);
/// The capability bit of a format; 0 for a rate or a depth that has none.
[[nodiscard]] std::uint32_t RecordFormatBit(const CaptureFormat& Format);
/// What a bit stands for: the reverse of RecordFormatBit, for bits 0 to 11.
[[nodiscard]] CaptureFormat RecordFormatOfBit(int BitNo);

/// The text of `Fmt_Lbl`: "(Mono,22050 Hz, 16 Bits)".
[[nodiscard]] std::string Fmt_LblText(const CaptureFormat& Format);
/// The text of `InsertLbl`: "Sample:1 (00.01)" and the like.
[[nodiscard]] std::string InsertLblText(std::int32_t InsertPos, std::int32_t Freq);

/// Splits interleaved frames into channels: index 1 is the first sample, index 0 is 0. Bytes of 8
/// bits lose their offset of 128. `RecBuffR` of a mono format becomes empty. A frame that is not
/// whole is left out. How many frames there were.
std::int32_t SplitFrames(const std::vector<std::byte>& Frames, std::size_t Bytes,
                         const CaptureFormat& Format, std::vector<std::int16_t>& RecBuffL,
                         std::vector<std::int16_t>& RecBuffR);

} // namespace quoril

// The header of a WAV file as bytes: the fixed places that are read, and the 44 bytes written.
#pragma once

#include "base/DocumentState.h"
#include "platform/FileHandle.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

inline constexpr std::int16_t WavTagPcm = 1;
inline constexpr std::int16_t WavTagAdpcm = 2;
inline constexpr std::int16_t WavTagULaw = 7;
inline constexpr std::int16_t WavTagMp3 = 85;

/// A file of fewer bytes holds no audio.
inline constexpr std::int64_t WavShortestFile = 45;
inline constexpr std::int32_t WavHeaderBytes = 44;

/// The beginning of a WAV file, read once: everything that is asked of a header, and the letters of
/// the data chunk, stand in its first 100011 bytes. It is not a walk over the chunks: format fields
/// have fixed places, and the data chunk is where its name is found first.
class WavHead {
  public:
    /// `Length`: bytes of the file that count, at least WavShortestFile. Throws like
    /// FileForReading::Read.
    WavHead(const FileForReading& File, std::int64_t Length);

    [[nodiscard]] std::int16_t FormatTag() const;
    /// Only the low byte of the field is looked at.
    [[nodiscard]] std::int32_t Channels() const;
    [[nodiscard]] std::int32_t Rate() const;
    [[nodiscard]] std::int16_t Bits() const;

    /// Looks for "data" in any case, from offset 35 to offset 99999. False when it is not there.
    [[nodiscard]] bool FindData();
    /// The data chunk's size field; what writes into a pipe leaves 0xFFFFFFFF there. FindData must
    /// have found it. Throws Failure when the file ends within the field.
    [[nodiscard]] std::uint32_t DataSize() const;
    /// Offset of the first sample, from 0.
    [[nodiscard]] std::int32_t DataStart() const { return DataName + 8; }

  private:
    [[nodiscard]] std::uint32_t LittleEndian(std::size_t Offset, std::size_t Bytes) const;

    std::string FileName;
    std::vector<std::uint8_t> Head;
    std::int32_t DataName = 0;
};

/// The header of a file with this many frames. Throws Failure when the file would be longer than a
/// size of 32 bits with a sign can tell.
[[nodiscard]] std::array<std::uint8_t, WavHeaderBytes> WavHeaderMake(const WaveFormat& Format,
                                                                     std::int32_t Frames);

} // namespace quoril

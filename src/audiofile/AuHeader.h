// The header of a Sun/NeXT sound file as bytes. Its numbers have the high byte first.
#pragma once

#include "platform/FileHandle.h"

#include <cstdint>
#include <vector>

namespace quoril {

/// What the samples are in, as the header tells it. These three can be read and written.
enum AuEncodings : std::int32_t { AuULaw = 1, AuLinear8 = 2, AuLinear16 = 3 };

/// A file of fewer bytes holds no audio.
inline constexpr std::int64_t AuShortestFile = 45;
inline constexpr std::int32_t AuHeaderBytes = 24;

/// The fields at the beginning of a file, as they stand there.
struct AuHead {
    bool IsSoundClip = false;    ///< it begins with ".snd", in any case
    std::int32_t DataOffset = 0; ///< of the first sample, from 0
    std::uint32_t DataSize = 0;  ///< bytes; what writes into a pipe leaves 0xFFFFFFFF there
    std::int32_t Encoding = 0;
    std::int32_t Rate = 0;
    std::int32_t Channels = 0;
};

/// Of a file of at least AuShortestFile bytes. Throws like FileForReading::Read.
[[nodiscard]] AuHead AuHeadRead(const FileForReading& File);

/// The header of a file that begins with its samples right behind it. `DataBytes` from 0.
[[nodiscard]] std::vector<std::uint8_t> AuHeaderMake(std::int32_t Encoding, std::int32_t Rate,
                                                     std::int32_t Channels, std::int32_t DataBytes);

} // namespace quoril

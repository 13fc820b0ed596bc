// Sun/NeXT files made byte by byte, for the tests of this folder.
#pragma once

#include "audiofile/WavMaker.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quoril::test {

/// Bytes of a number, the high one first.
[[nodiscard]] Bytes HighFirst(std::int64_t Value, int Count);
/// 16-bit samples with the high byte first.
[[nodiscard]] Bytes SwappedBytes(const Samples& Interleaved);

/// A file as its header says; every field may lie.
struct AuFile {
    std::string Name = ".snd";
    std::int64_t Offset = 24; ///< what the header says of it
    std::int32_t Encoding = 3;
    std::int64_t Rate = 44100;
    std::int64_t Channels = 1;
    Bytes Notes = {};                          ///< between the fields and the samples
    Bytes Data = {};                           ///< the audio
    std::optional<std::int64_t> DataSize = {}; ///< what the header says of it, if not the truth

    [[nodiscard]] Bytes Whole() const;
};

} // namespace quoril::test

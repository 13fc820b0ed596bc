// How a document goes into a file, whatever the format: chunk by chunk, never as a whole.
#pragma once

#include "platform/FileHandle.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace quoril {

/// Frames in one chunk of a file: FileBlockLength is a chunk's length in 16-bit words.
[[nodiscard]] std::int32_t FramesPerChunk(std::int32_t FileBlockLength, std::int32_t Bits,
                                          std::int32_t Channels) noexcept;

/// Which frames of the document go into a file.
struct WriteRange {
    std::int32_t FromPos = 1;     ///< first frame
    std::int32_t ToPos = 0;       ///< last frame, included
    std::int32_t OutChannels = 1; ///< channels of the file
    std::int32_t StoreChn = 1;    ///< what is asked of the store: 0 both, 1 left, 2 right
    [[nodiscard]] std::int32_t Frames() const noexcept { return ToPos - FromPos + 1; }
};

/// The range for a part; `WorkChn` 0 both, 1 left, 2 right, of which a mono document has only the
/// left one.
[[nodiscard]] WriteRange PartRange(const FileMemoClass& Store, std::int32_t FromPos,
                                   std::int32_t ToPos, std::int32_t WorkChn) noexcept;

/// Turns frames into the file's bytes. `Right` is empty for a file of one channel. `Out` has room
/// for exactly the bytes of `Left.size()` frames. May throw.
using FrameCoder = std::function<void(std::span<const std::int16_t> Left,
                                      std::span<const std::int16_t> Right, std::uint8_t* Out)>;

/// Writes the frames of a range at `FirstByte` (from 0) on, showing the progress at each chunk.
/// Moves no block: what lies in files is read there, both channels in one pass, and a document
/// whose memory cannot be pushed out, for want of disk space, is written all the same.
void WriteFrames(FileMemoClass& Store, const WriteRange& Range, std::int32_t ChunkFrames,
                 std::int32_t FrameBytes, const FrameCoder& Coder, FileForWriting& File,
                 std::int64_t FirstByte);

/// Brings every sample that the document reads from this file out of it, by whatever name it was
/// opened, so that it may be overwritten. Throws when the name stands for a device or a pipe, and
/// when the samples cannot be held elsewhere: then the file must not be touched.
void ReleaseFileToWrite(const std::string& FileName);

/// Deletes a file that is to be written anew. False when it is still there: protected against
/// writing, or held by another program. The rights of its folder alone would let it be deleted.
[[nodiscard]] bool DeleteFileToWrite(const std::string& FileName) noexcept;

/// Runs at the end of each `ReleaseFileToWrite`, for whoever has told others where blocks lie; null
/// for nothing. Must not throw.
void SetFileReleasedRoutine(void (*Routine)()) noexcept;

} // namespace quoril

// How a document goes into a file, whatever the format: chunk by chunk, never as a whole.
#pragma once

#include "audiofile/SampleCoders.h"
#include "platform/FileReplacement.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <functional>
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

/// False for a file that is protected against writing or held by another program.
[[nodiscard]] bool CanBeReplaced(const std::string& FileName);
/// Throws SystemFailure for such a file, for a command that would find it only after long work.
void CheckCanBeReplaced(const std::string& FileName);

/// Writes an audio file anew by `Write`, and puts it in place when it is complete; until then the
/// document may go on reading from the file that was there. False, with nothing done, when that one
/// is protected against writing or held by another program: the rights of its folder alone would
/// let it be replaced. Throws when the file cannot be written, or when the samples that the
/// document has in the old one can be held nowhere else; the old one is as it was then, and the
/// words say so.
[[nodiscard]] bool WriteAudioFile(const std::string& FileName,
                                  const std::function<void(FileReplacement&)>& Write);

/// Writes the frames of a range at `FirstByte` (from 0) on, the last thing that goes into the file,
/// and puts it in place. Shows the progress at each chunk; a process that must end within it
/// completes the file. Moves no block: what lies in files is read there, both channels in one pass,
/// and a document whose memory cannot be pushed out, for want of disk space, is written all the
/// same.
void WriteFrames(FileMemoClass& Store, const WriteRange& Range, std::int32_t ChunkFrames,
                 std::int32_t FrameBytes, const FrameCoder& Coder, FileReplacement& File,
                 std::int64_t FirstByte);

/// Runs when samples have left a file that is about to get other contents, for whoever has told
/// others where blocks lie; null for nothing. Must not throw.
void SetFileReleasedRoutine(void (*Routine)()) noexcept;

} // namespace quoril

// What the writers of all formats share: the checks, the words, the way of the document's frames
// into the file.
#pragma once

#include "audiofile/FrameWriter.h"
#include "audiofile/SampleCoders.h"
#include "storage/FileMemoClass.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quoril {

/// What the user reads instead of a written file; an empty text means that it was written.
struct WriteRefusal {
    std::string Text;
    std::string Title;
};

/// Whether the document has a depth that files can have.
[[nodiscard]] bool WriteBitsKnown(const FileMemoClass& Store);
[[nodiscard]] WriteRefusal UnknownWriteFormat();
/// Why a part of the document cannot be written, whatever the format; empty when it can.
[[nodiscard]] WriteRefusal PartWriteRefusal(const FileMemoClass& Store, std::int32_t FromPos,
                                            std::int32_t ToPos, const std::string& FileName);

/// Makes what a file begins with, when the writing begins. May throw.
using HeaderMaker = std::function<std::vector<std::uint8_t>()>;

/// Writes a header and the frames of a range behind it. `FileBlockLength` as that of
/// OpenSaveClass. False when another program holds the file, or it is protected; throws like
/// WriteAudioFile.
[[nodiscard]] bool WriteSoundFile(FileMemoClass& Store, const WriteRange& Range,
                                  std::int32_t FileBlockLength, SampleCode Code,
                                  const HeaderMaker& Header, const std::string& FileName);
/// The same for a part: throws SystemFailure instead of giving false.
void WriteSoundPart(FileMemoClass& Store, const WriteRange& Range, std::int32_t FileBlockLength,
                    SampleCode Code, const HeaderMaker& Header, const std::string& FileName);

/// The frame of a writer: with the progress window on; what fails is told under `Title`. True when
/// the file was written.
[[nodiscard]] bool RunWriter(const char* Title, const std::function<WriteRefusal()>& Write);

} // namespace quoril

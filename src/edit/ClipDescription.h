// The files that describe a clip to other processes, as words: a block list for each channel, and
// the original files as they were.
#pragma once

#include "storage/PortableBlock.h"
#include "storage/WoroFileBlockMod.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// "InfoLeft.dat" (channel 1) or "InfoRight.dat" (channel 2) in a folder.
[[nodiscard]] std::string ClipDescriptionName(const std::string& Folder, std::int32_t Channel);
/// "InfoFiles.dat" in a folder.
[[nodiscard]] std::string ClipFilesName(const std::string& Folder);

/// Makes the file new out of little-endian words. Throws SystemFailure.
void ClipDescriptionWrite(const std::string& FileName, const std::vector<std::int32_t>& Words);
/// The words of a file: as many as its first one tells. Throws Failure when the file holds fewer.
[[nodiscard]] std::vector<std::int32_t> ClipDescriptionRead(const std::string& FileName);

/// Makes the file new that tells which files the original blocks of a clip lie in, so that a reader
/// can tell a file that was replaced from one whose rights or names have changed. Throws
/// SystemFailure.
void ClipFilesWrite(const std::string& FileName, const std::vector<EnteredFile>& Files);

/// What a reader knows of the moment of a copy.
struct ClipMoment {
    std::int64_t WrittenNs = 0;     ///< when the left channel was described
    std::vector<EnteredFile> Files; ///< the original files as they were; empty when nobody told
};
/// Of the clip that is described in a folder. Throws Failure where there is none.
[[nodiscard]] ClipMoment ClipMomentRead(const std::string& Folder);

/// Throws Failure unless a channel is described, every block lies in its file, the blocks stand end
/// to end from 1 on, and add up to `Length` samples; `Length` 0 for any sum that a channel can
/// have. An original file must be as it was at the moment of the copy; of one that was not told
/// about it is only known that it must not have been written since.
/// Nothing is read but the sizes and times of the files, so that a damaged description costs
/// neither time nor memory.
void ClipDescriptionCheck(const std::vector<std::int32_t>& Words, std::int32_t Length,
                          const ClipMoment& Copied);

/// Checked descriptions as blocks of this process; `WordsR` is empty for a clip of one channel. The
/// samples of files that only the other process uses are read at once, and its files are never
/// deleted here. Throws Failure, and then leaves nothing behind.
void ClipDescriptionImport(const std::vector<std::int32_t>& WordsL,
                           const std::vector<std::int32_t>& WordsR, BlockSet& BlocksL,
                           BlockSet& BlocksR);

} // namespace quoril

// The files that describe a clip to other processes: one block list each, as words.
#pragma once

#include "platform/FileSystem.h"
#include "storage/WoroFileBlockMod.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// "InfoLeft.dat" (channel 1) or "InfoRight.dat" (channel 2) in a folder.
[[nodiscard]] std::string ClipDescriptionName(const std::string& Folder, std::int32_t Channel);

/// Makes the file new out of little-endian words. Throws SystemFailure.
void ClipDescriptionWrite(const std::string& FileName, const std::vector<std::int32_t>& Words);
/// The words of a file: as many as its first one tells. Throws Failure when the file holds fewer.
[[nodiscard]] std::vector<std::int32_t> ClipDescriptionRead(const std::string& FileName);

/// Throws Failure unless a channel is described, every block lies in its file, the blocks stand end
/// to end from 1 on, and add up to `Length` samples; `Length` 0 for any sum that a channel can
/// have. An original file must not have been written or brought there since the description was
/// written, whose times are `Described`.
/// Nothing is read but the sizes and times of the files, so that a damaged description costs
/// neither time nor memory.
void ClipDescriptionCheck(const std::vector<std::int32_t>& Words, std::int32_t Length,
                          const FileTimes& Described);

/// Checked descriptions as blocks of this process; `WordsR` is empty for a clip of one channel. The
/// samples of files that only the other process uses are read at once, and its files are never
/// deleted here. Throws Failure, and then leaves nothing behind.
void ClipDescriptionImport(const std::vector<std::int32_t>& WordsL,
                           const std::vector<std::int32_t>& WordsR, BlockSet& BlocksL,
                           BlockSet& BlocksR);

} // namespace quoril

// What the parts of the block table share among themselves and with nobody else.
#pragma once

#include "storage/WoroFileBlockMod.h"

namespace quoril {

[[nodiscard]] inline BlockRec& BlockAt(std::int32_t BlockNo) noexcept {
    return BlockTable[static_cast<std::size_t>(BlockNo)];
}
[[nodiscard]] inline WorkFileRec& WorkFileAt(std::int32_t WorkNo) noexcept {
    return WorkFileTable[static_cast<std::size_t>(WorkNo)];
}
[[nodiscard]] inline OrgFileRec& OrgFileAt(std::int32_t OrgNo) noexcept {
    return OrgFileTable[static_cast<std::size_t>(OrgNo)];
}
[[nodiscard]] inline bool BlockInMemory(const BlockRec& Block) noexcept {
    return Block.BlockKind == BlockMemoryAndFile || Block.BlockKind == BlockMemory;
}

/// Empties every window on a block whose samples move, are shared, or go.
void BlockWindowsEmpty(std::int32_t BlockNo) noexcept;
/// Counts the samples that a block has just got in memory, or is about to leave. Samples that other
/// blocks hold as well are counted already, and stay so.
void MemoryEnter(const BlockRec& Block);
void MemoryLeave(const BlockRec& Block) noexcept;
/// Fails before anything is changed when that many more samples cannot be counted.
void MemoryRoomCheck(std::int32_t Samples);
/// Ends the sharing of a memory block's samples: what is written to it is then its own, and counts.
void BlockSamplesAlone(std::int32_t BlockNo);
/// The samples of a memory block in a new work file, to which the block is then tied: kind 1.
void BlockWriteToNewFile(std::int32_t BlockNo);
/// Gives up memory blocks that share samples: each gets a place in a work file unless it has one,
/// samples that several hold one place for all, and the memory is dropped: kind 3. `BlockNos` stand
/// in the order of their samples, of those that begin together the longest first. When a file
/// cannot be written the blocks stay in memory.
void BlocksToFile(const BlockSet& BlockNos);
/// BudgetEnforce that leaves a block in memory which is just being written.
void BudgetEnforceBut(std::int32_t KeptNo);
/// BudgetEnforce; if that fails, the block just made is freed before the failure goes on.
void BudgetEnforceOrFree(std::int32_t NewNo);
/// The first pair that holds a block, or the table's end.
[[nodiscard]] std::vector<BlockPairRec>::const_iterator BlockPairOf(std::int32_t BlockNo) noexcept;
/// Removes the first pair that holds a block, if any.
void BlockPairRemove(std::int32_t BlockNo) noexcept;
/// Brings every block out of an original file into memory: both channels of a stretch in one pass,
/// and what several blocks have of it once.
void BlocksLeaveOrgFile(std::int32_t OrgNo);
/// Makes the file of a work file slot out of `Length` samples. When that fails no file is left.
void WorkFileFill(std::int32_t WorkNo, const std::int16_t* Samples, std::int32_t Length);
/// Reads samples of a work file or an original file, from the byte `FilePos` (from 1) on, in the
/// file's own form; opens it if needed. Fails when the file is no longer the one that was entered.
void WorkFileRead(std::int32_t WorkNo, std::int32_t FilePos, std::int16_t* Target,
                  std::int32_t Length);
/// One channel of an original file.
void OrgFileReadChannel(std::int32_t OrgNo, std::int32_t FilePos, std::int16_t* Target,
                        std::int32_t Length);
/// Both channels of a stereo original file, beginning at a left sample.
void OrgFileReadFrames(std::int32_t OrgNo, std::int32_t FilePos, std::int16_t* Left,
                       std::int16_t* Right, std::int32_t Length);
/// The same stretch of two blocks that both lie in files, which is in neither's memory then: in one
/// pass when they are the two channels of one stretch of a file, whichever comes first there.
void BlockPairReadTo(std::int32_t LeftNo, std::int32_t RightNo, std::int32_t FromPos,
                     std::int32_t ToPos, std::int16_t* TargetL, std::int16_t* TargetR);
/// While one lives, reads of original files do not each end with a look at the file's identity; it
/// is looked at when the file is left and by Finish, so before any of the samples is used.
class OrgChecksJoined {
  public:
    OrgChecksJoined() noexcept;
    ~OrgChecksJoined();
    OrgChecksJoined(const OrgChecksJoined&) = delete;
    OrgChecksJoined& operator=(const OrgChecksJoined&) = delete;
    /// Fails when the file has changed.
    void Finish();
};

/// The handle of a block's file, opened if needed; null for a block that is in no file, and when
/// the file cannot be opened, which the reading that follows will tell.
[[nodiscard]] const FileForReading* BlockHandle(const BlockRec& Block) noexcept;

} // namespace quoril

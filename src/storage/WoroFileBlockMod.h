// The block table: the memory manager under the whole sample storage.
//
// A piece of one channel of audio is a block. Its samples live in memory, in a work file, in both,
// in the audio file that the user opened, or nowhere (silence). A block number stands in exactly
// one list: a channel of the document, a carrier, or an undo record. Files are shared, and a use
// count keeps each one until its last block has gone. No routine here copies the samples of a
// block that lies in a file, except where it says so.
//
// Misuse is told by a message, and the routine returns having done nothing. A file that cannot be
// read or written throws Failure; the table is then as before the call, unless a routine says
// otherwise. User-interface thread only; no event may be processed inside these routines.
#pragma once

#include "platform/FileHandle.h"
#include "storage/SampleRun.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoril {

class BlockCarrBuffClass;
class FileCarrBuffClass;

/// Where the samples of a block are. The numbers also stand in the portable form.
enum BlockKinds : std::int32_t {
    BlockFreeSlot = 0,      ///< the slot is unused
    BlockMemoryAndFile = 1, ///< in memory, and the same in a work file
    BlockMemory = 2,        ///< only in memory
    BlockWorkFile = 3,      ///< only in a work file
    BlockOrgFile = 4,       ///< only in an original file, in that file's format
    BlockSilence = 5        ///< nowhere: every sample is 0
};

struct BlockRec {
    std::int32_t FileNo = 0;     ///< kinds 1, 3: work file; kind 4: original file; otherwise 0
    std::int32_t FilePos = 0;    ///< first sample's place in the file, in bytes from 1
    std::int32_t BlockStart = 0; ///< first sample's position in the list that holds the block
    std::int32_t BlockKind = BlockFreeSlot;
    SampleRun BlockData;         ///< kinds 1 and 2
    std::int32_t BlockLen = 0;   ///< samples
    std::int32_t BlockStamp = 0; ///< the use counter at the last use
};

/// A work file: signed 16-bit little-endian samples without a header.
struct WorkFileRec {
    std::string WorkFileName;     ///< full path; empty when the slot has no file
    std::int32_t WorkFileUse = 0; ///< blocks of kinds 1 and 3 that name it
};

/// A file that the user opened. It is never written here.
struct OrgFileRec {
    std::string OrgFileName;
    std::int32_t OrgFileChannels = 1; ///< 1 or 2
    std::int32_t OrgFileBits = 16;    ///< 8 or 16
    std::int32_t OrgFileUse = 0;      ///< blocks of kind 4 that name it
    FileIdentity OrgFileIdentity;     ///< as it was when it was entered
};

/// The left and right block of one stretch of an interleaved file, to be read in one pass.
struct BlockPairRec {
    std::int32_t LeftNo = 0;
    std::int32_t RightNo = 0;
};

/// Block numbers that belong to one list.
using BlockSet = std::vector<std::int32_t>;

// The tables. Numbers count from 1; index 0 exists and stands for nothing.
extern std::vector<BlockRec> BlockTable;
extern std::vector<WorkFileRec> WorkFileTable;
extern std::vector<OrgFileRec> OrgFileTable;
extern std::vector<BlockPairRec> BlockPairTable; ///< counts from 0

extern std::int32_t MemoryBudget;     ///< bytes that blocks may hold, at least 10000000
extern std::int32_t MemoryUsed;       ///< bytes held: twice the samples of kinds 1 and 2, each once
extern std::int32_t BlockUseCounter;  ///< last stamp given
extern std::int32_t BudgetCheckCount; ///< enforcement runs, up to 100
extern std::int32_t OrgFileOpenNo;    ///< number of the open original file, 0 for none
extern std::int32_t WorkFileOpenNo;   ///< number of the open work file, 0 for none

inline constexpr std::int32_t LowestMemoryBudget = 10000000;

/// MemoryBudget / 20 rounded, rounded down to a multiple of 4, at least `Lowest`.
[[nodiscard]] std::int32_t BudgetShare(std::int32_t Lowest);
/// The usual length of a block in samples: BudgetShare(524288).
[[nodiscard]] std::int32_t DefaultBlockLen();

// ---- Making, copying and giving up blocks

/// A new block of `Length` samples in the first free slot, BlockStart 0. Kinds 2, 3 and 5 only.
[[nodiscard]] std::int32_t BlockNew(std::int32_t Length, std::int32_t Kind);
/// A new memory block (kind 2) that takes `Samples`, which hold `Length` samples.
[[nodiscard]] std::int32_t BlockNewFilled(std::int32_t Length, SampleRun Samples);
/// An independent copy with the same BlockStart. The copy of a block in memory shares its samples,
/// and costs no memory, until one of the two is written.
[[nodiscard]] std::int32_t BlockClone(std::int32_t BlockNo);
/// Gives up the block's memory and its use of a file. A work file stays until FilesSweep.
void BlockFree(std::int32_t BlockNo);
/// Frees every block of a list and empties the list.
void BlockSetFree(BlockSet& Set);
/// Makes two blocks out of one, the second beginning at `Position`. The source stays; the caller
/// replaces it in its list and frees it. Reads the source if it lies in an original file.
void BlockBrake(std::int32_t BlockNo, std::int32_t Position, std::int32_t& FirstNo,
                std::int32_t& SecondNo);
/// The overlap of a block with an inclusive range: false when there is none.
[[nodiscard]] bool BlockOverlap(const BlockRec& Block, std::int32_t FromPos, std::int32_t ToPos,
                                std::int32_t& OverlapFrom, std::int32_t& OverlapLen);
/// A new block of the part that lies in the range, placed as in a list that begins at `FromPos`;
/// 0 when no part does.
[[nodiscard]] std::int32_t BlockCutRange(std::int32_t BlockNo, std::int32_t FromPos,
                                         std::int32_t ToPos);

// ---- Moving samples

/// Makes the samples present in BlockData.
void BlockToMemory(std::int32_t BlockNo);
/// BlockToMemory, then ends any tie to a file: kind 2.
void BlockToPrivateMemory(std::int32_t BlockNo);
/// BlockToPrivateMemory, then ends any sharing of the samples, and gives where to write them.
[[nodiscard]] std::int16_t* BlockToWrite(std::int32_t BlockNo);
/// Gives a block other samples as its private memory, whatever it was: kind 2. For a change that
/// was made beside the block, which the budget may have pushed out in the meantime.
void BlockTakeSamples(std::int32_t BlockNo, SampleRun Samples);
/// Writes a memory block out and drops its hold on the memory: kind 3.
void BlockToFile(std::int32_t BlockNo);
/// Writes a memory block out and keeps the memory: kind 1.
void BlockWriteThrough(std::int32_t BlockNo);
/// One sample, leaving kind and stamp alone; 0 outside the block.
[[nodiscard]] std::int16_t BlockSample(std::int32_t BlockNo, std::int32_t Position);
/// A stretch that lies in the block, leaving kind and stamp alone. `Buff` gets exactly its samples.
void BlockRangeRead(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos,
                    std::vector<std::int16_t>& Buff);
/// The same into memory of the caller's.
void BlockRangeReadTo(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos,
                      std::int16_t* Target);
/// Whether the sample at a position can be read without waiting for the disk.
[[nodiscard]] bool BlockSampleIsNear(std::int32_t BlockNo, std::int32_t Position) noexcept;
/// Tells the system that the sample at a position will be read soon; for blocks in files.
void BlockSampleWillNeed(std::int32_t BlockNo, std::int32_t Position) noexcept;
/// Pushes the oldest blocks out until the budget holds. Blocks that share samples go together, at
/// the time of the one used last, since no memory is free before; the samples are then written
/// once.
void BudgetEnforce();
/// Adds 1 to BlockUseCounter and returns it.
std::int32_t NextBlockStamp();

// ---- Files

/// Enters a file in the original file table with use count 0. Throws when it cannot be looked at.
[[nodiscard]] std::int32_t OrgFileAdd(const std::string& FileName, std::int32_t Channels,
                                      std::int32_t Bits);
void OrgPairAdd(std::int32_t LeftNo, std::int32_t RightNo);
/// Makes a pair of two blocks that are the two channels of one stretch of an original file,
/// whichever of them comes first there. False when they are not.
bool OrgPairMake(std::int32_t OneNo, std::int32_t OtherNo);
/// Bytes from one sample of a channel to the next: 1, 2 or 4.
[[nodiscard]] std::int32_t OrgFileStep(const OrgFileRec& File) noexcept;
/// Brings every block out of a named file (compared without case) into memory, for a writer that
/// is about to overwrite it.
void OrgFileReleaseByName(const std::string& FileName);
void OrgFileRelease(std::int32_t OrgNo);
/// Takes a slot and gives it a fresh file name; the file itself does not exist yet.
[[nodiscard]] std::int32_t WorkFileNew();
/// Deletes every file that no block uses, never a file outside the session folder.
void FilesSweep();

/// One read handle is kept open for each table. Opening throws when the file is gone or is no
/// longer the one that was entered.
void OrgFileOpen(std::int32_t OrgNo);
void OrgFileClose(std::int32_t OrgNo) noexcept;
/// Whether somebody else has locked the original file that is open; false when none is.
[[nodiscard]] bool OrgFileOpenIsHeldByOthers() noexcept;
void WorkFileOpen(std::int32_t WorkNo);
void WorkFileClose(std::int32_t WorkNo) noexcept;

// ---- Other forms

/// Hands a file carrier's file over to a new block carrier, without copying.
void FileCarrToBlockCarr(FileCarrBuffClass& FileCarr, BlockCarrBuffClass& BlockCarr);
/// The portable form of a block list: word 0 is the index of the last word, word 1 the number of
/// blocks, then for each block its file's name, BlockLen, kind, BlockStart, FilePos, channels,
/// bits.
void BlockSetToLongs(const BlockSet& BlkSet, std::vector<std::int32_t>& Longs);
/// The way back. `Foreign`: files of another process are read at once, and never deleted. Throws
/// Failure on words that make no block list; nothing is then left behind.
void LongsToBlockSet(const std::vector<std::int32_t>& Longs, BlockSet& BlkSet, bool Foreign);

// ---- Watching

/// A window on the samples of one block, kept by whoever reads or writes sample by sample. The
/// table empties it as soon as the block's samples move, are shared, or go.
struct BlockWindow {
    std::int32_t BlockNo = 0;
    std::uint32_t First = 0;    ///< position of the block's first sample
    std::uint32_t ReadLen = 0;  ///< samples that may be read through ReadFrom
    std::uint32_t WriteLen = 0; ///< samples that may be written through WriteTo
    const std::int16_t* ReadFrom = nullptr;
    std::int16_t* WriteTo = nullptr;

    BlockWindow();
    ~BlockWindow();
    BlockWindow(const BlockWindow&) = delete;
    BlockWindow& operator=(const BlockWindow&) = delete;
    void Empty() noexcept { ReadLen = WriteLen = 0; }
};

/// Ends all use of the tables, deletes the work files, and sets every number back to its start.
void BlockTableReset();

} // namespace quoril

// Moving samples between memory and files, and reading them in place.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "storage/BlockTableInner.h"

#include <cstring>
#include <utility>

namespace quoril {

namespace {

/// Gives a block its samples and counts them.
void MemoryGive(BlockRec& Block, SampleRun Samples, std::int32_t Kind) {
    Block.BlockData = std::move(Samples);
    MemoryEnter(Block);
    Block.BlockKind = Kind;
}

void LeaveOrgFile(BlockRec& Block) {
    --OrgFileAt(Block.FileNo).OrgFileUse;
    Block.FileNo = 0;
    Block.FilePos = 0;
}

/// Both blocks of a pair, in one pass. The right one is as long as the left one.
void PairToMemory(const BlockPairRec& Pair) {
    BlockRec& Left = BlockAt(Pair.LeftNo);
    BlockRec& Right = BlockAt(Pair.RightNo);
    const std::int32_t Length = Left.BlockLen;
    MemoryRoomCheck(AddLong(Length, Length));
    SampleRun LeftSamples = SampleRun::Unfilled(Length);
    SampleRun RightSamples = SampleRun::Unfilled(Length);
    OrgFileReadFrames(Left.FileNo, Left.FilePos, LeftSamples.Write(), RightSamples.Write(), Length);
    MemoryGive(Left, std::move(LeftSamples), BlockMemory);
    LeaveOrgFile(Left);
    MemoryGive(Right, std::move(RightSamples), BlockMemory);
    LeaveOrgFile(Right);
}

void OrgBlockToMemory(std::int32_t BlockNo) {
    if (const auto Pair = BlockPairOf(BlockNo); Pair != BlockPairTable.end()) {
        PairToMemory(BlockPairRec(*Pair));
        BlockPairRemove(BlockNo);
        return;
    }
    BlockRec& Block = BlockAt(BlockNo);
    MemoryRoomCheck(Block.BlockLen);
    SampleRun Samples = SampleRun::Unfilled(Block.BlockLen);
    OrgFileReadChannel(Block.FileNo, Block.FilePos, Samples.Write(), Block.BlockLen);
    MemoryGive(Block, std::move(Samples), BlockMemory);
    LeaveOrgFile(Block);
}

void SilenceToMemory(BlockRec& Block) {
    MemoryRoomCheck(Block.BlockLen);
    MemoryGive(Block, SampleRun::Zeros(Block.BlockLen), BlockMemory);
}

/// Writes samples to a new work file and ties the block to it; kind and memory stay.
void WriteToNewFile(BlockRec& Block, const SampleRun& Samples) {
    const std::int32_t FileNo = WorkFileNew();
    WorkFileFill(FileNo, Samples.Read(), Block.BlockLen);
    WorkFileAt(FileNo).WorkFileUse = 1;
    Block.FileNo = FileNo;
    Block.FilePos = 1;
}

} // namespace

void MemoryEnter(const BlockRec& Block) {
    MemoryUsed += 2 * Block.BlockData.Hold(Block.BlockLen);
}

void MemoryLeave(const BlockRec& Block) noexcept {
    MemoryUsed -= 2 * Block.BlockData.Release(Block.BlockLen);
}

void MemoryRoomCheck(std::int32_t Samples) {
    (void)AddLong(MemoryUsed, MulLong(2, Samples));
}

void BlockToMemory(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    switch (Block.BlockKind) {
    case BlockFreeSlot:
        MsgBox("Error - Free block can not be copied to buffer");
        return;
    case BlockMemoryAndFile:
    case BlockMemory:
        Block.BlockStamp = NextBlockStamp();
        return;
    case BlockWorkFile: {
        MemoryRoomCheck(Block.BlockLen);
        SampleRun Samples = SampleRun::Unfilled(Block.BlockLen);
        WorkFileRead(Block.FileNo, Block.FilePos, Samples.Write(), Block.BlockLen);
        MemoryGive(Block, std::move(Samples), BlockMemoryAndFile);
        break;
    }
    case BlockOrgFile:
        OrgBlockToMemory(BlockNo);
        break;
    default:
        SilenceToMemory(Block);
        break;
    }
    Block.BlockStamp = NextBlockStamp();
    BudgetEnforce();
}

void BlockToPrivateMemory(std::int32_t BlockNo) {
    BlockToMemory(BlockNo);
    BlockRec& Block = BlockAt(BlockNo);
    switch (Block.BlockKind) {
    case BlockMemoryAndFile:
        --WorkFileAt(Block.FileNo).WorkFileUse;
        Block.FileNo = 0;
        Block.FilePos = 0;
        Block.BlockKind = BlockMemory;
        break;
    case BlockMemory:
        break;
    case BlockSilence:
        SilenceToMemory(Block);
        break;
    default:
        MsgBox("Error - Block type has a problem in moving to buff");
        break;
    }
}

void BlockSamplesAlone(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    if (Block.BlockData.Alone())
        return;
    MemoryRoomCheck(Block.BlockLen);
    SampleRun Own = Block.BlockData;
    Own.CopyOut(Block.BlockLen);
    BlockWindowsEmpty(BlockNo);
    MemoryLeave(Block);
    Block.BlockData = std::move(Own);
    MemoryEnter(Block);
    BudgetEnforceBut(BlockNo);
}

std::int16_t* BlockToWrite(std::int32_t BlockNo) {
    BlockToPrivateMemory(BlockNo);
    BlockSamplesAlone(BlockNo);
    return BlockAt(BlockNo).BlockData.Write();
}

void BlockTakeSamples(std::int32_t BlockNo, SampleRun Samples) {
    BlockRec& Block = BlockAt(BlockNo);
    const std::int32_t Kind = Block.BlockKind;
    MemoryRoomCheck(Block.BlockLen);
    BlockWindowsEmpty(BlockNo);
    if (BlockInMemory(Block))
        MemoryLeave(Block);
    MemoryGive(Block, std::move(Samples), BlockMemory);
    if (Kind == BlockMemoryAndFile || Kind == BlockWorkFile) {
        --WorkFileAt(Block.FileNo).WorkFileUse;
        Block.FileNo = 0;
        Block.FilePos = 0;
    } else if (Kind == BlockOrgFile) {
        BlockPairRemove(BlockNo);
        LeaveOrgFile(Block);
    }
    if (Kind != BlockMemory)
        Block.BlockStamp = NextBlockStamp();
    BudgetEnforce();
}

void BlockToFile(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    switch (Block.BlockKind) {
    case BlockFreeSlot:
        MsgBox("Error - Free block can not be written to file");
        return;
    case BlockMemoryAndFile:
    case BlockMemory:
        BlocksToFile({BlockNo});
        return;
    case BlockSilence:
        // The zeros are never counted in MemoryUsed, but dropping them is: the recount of the
        // budget check mends that.
        WriteToNewFile(Block, SampleRun::Zeros(Block.BlockLen));
        BlockWindowsEmpty(BlockNo);
        Block.BlockKind = BlockWorkFile;
        MemoryUsed -= 2 * Block.BlockLen;
        return;
    default:
        return;
    }
}

void BlockWriteToNewFile(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    WriteToNewFile(Block, Block.BlockData);
    BlockWindowsEmpty(BlockNo); // a write would leave the file behind
    Block.BlockKind = BlockMemoryAndFile;
}

void BlockWriteThrough(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    switch (Block.BlockKind) {
    case BlockFreeSlot:
        MsgBox("Error - Free block can not be written to file");
        return;
    case BlockMemory:
        BlockWriteToNewFile(BlockNo);
        return;
    case BlockSilence: {
        MemoryRoomCheck(Block.BlockLen);
        SampleRun Zeros = SampleRun::Zeros(Block.BlockLen);
        WriteToNewFile(Block, Zeros);
        MemoryGive(Block, std::move(Zeros), BlockMemoryAndFile);
        return;
    }
    default:
        return;
    }
}

std::int16_t BlockSample(std::int32_t BlockNo, std::int32_t Position) {
    const BlockRec& Block = BlockAt(BlockNo);
    std::int32_t From = 0;
    std::int32_t Length = 0;
    if (!BlockOverlap(Block, Position, Position, From, Length))
        return 0;
    std::int16_t Sample = 0;
    if (BlockInMemory(Block))
        Sample = Block.BlockData.Read()[Position - Block.BlockStart];
    else if (Block.BlockKind == BlockWorkFile || Block.BlockKind == BlockOrgFile)
        BlockRangeReadTo(BlockNo, Position, Position, &Sample);
    return Sample;
}

void BlockRangeReadTo(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos,
                      std::int16_t* Target) {
    const BlockRec& Block = BlockAt(BlockNo);
    const std::int32_t Offset = FromPos - Block.BlockStart;
    const std::int32_t Length = ToPos - FromPos + 1;
    const std::size_t Bytes = static_cast<std::size_t>(Length) * sizeof(std::int16_t);
    switch (Block.BlockKind) {
    case BlockFreeSlot:
        MsgBox("Error - A block can not be read for quick buffer");
        return;
    case BlockMemoryAndFile:
    case BlockMemory:
        std::memcpy(Target, Block.BlockData.Read() + Offset, Bytes);
        return;
    case BlockWorkFile:
        WorkFileRead(Block.FileNo, AddLong(Block.FilePos, MulLong(2, Offset)), Target, Length);
        return;
    case BlockOrgFile: {
        const std::int32_t Step = OrgFileStep(OrgFileAt(Block.FileNo));
        OrgFileReadChannel(Block.FileNo, AddLong(Block.FilePos, MulLong(Step, Offset)), Target,
                           Length);
        return;
    }
    default:
        std::memset(Target, 0, Bytes);
        return;
    }
}

void BlockPairReadTo(std::int32_t LeftNo, std::int32_t RightNo, std::int32_t FromPos,
                     std::int32_t ToPos, std::int16_t* TargetL, std::int16_t* TargetR) {
    const BlockRec& Left = BlockAt(LeftNo);
    const BlockRec& Right = BlockAt(RightNo);
    if (Left.BlockKind == BlockOrgFile && Right.BlockKind == BlockOrgFile &&
        Left.FileNo == Right.FileNo && OrgFileAt(Left.FileNo).OrgFileChannels == 2) {
        const OrgFileRec& File = OrgFileAt(Left.FileNo);
        const auto PlaceOf = [&](const BlockRec& Block) {
            return AddLong(Block.FilePos, MulLong(OrgFileStep(File), FromPos - Block.BlockStart));
        };
        const std::int32_t Apart = PlaceOf(Right) - PlaceOf(Left);
        const std::int32_t Length = ToPos - FromPos + 1;
        if (Apart == File.OrgFileBits / 8)
            return OrgFileReadFrames(Left.FileNo, PlaceOf(Left), TargetL, TargetR, Length);
        if (-Apart == File.OrgFileBits / 8)
            return OrgFileReadFrames(Left.FileNo, PlaceOf(Right), TargetR, TargetL, Length);
    }
    BlockRangeReadTo(LeftNo, FromPos, ToPos, TargetL);
    BlockRangeReadTo(RightNo, FromPos, ToPos, TargetR);
}

void BlockRangeRead(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos,
                    std::vector<std::int16_t>& Buff) {
    Buff.assign(static_cast<std::size_t>(ToPos) - static_cast<std::size_t>(FromPos) + 1, 0);
    BlockRangeReadTo(BlockNo, FromPos, ToPos, Buff.data());
}

namespace {

/// Where a sample lies in its block's file, from 0; -1 when the block is in no file or does not
/// hold the position.
std::int64_t OffsetInFile(const BlockRec& Block, std::int32_t Position) {
    const std::int64_t Index = std::int64_t{Position} - Block.BlockStart;
    const bool InOrgFile = Block.BlockKind == BlockOrgFile;
    if ((!InOrgFile && Block.BlockKind != BlockWorkFile) || Index < 0 || Index >= Block.BlockLen)
        return -1;
    return Block.FilePos - 1 + Index * (InOrgFile ? OrgFileStep(OrgFileAt(Block.FileNo)) : 2);
}

} // namespace

bool BlockSampleIsNear(std::int32_t BlockNo, std::int32_t Position) noexcept {
    const std::int64_t Offset = OffsetInFile(BlockAt(BlockNo), Position);
    const FileForReading* const File = Offset < 0 ? nullptr : BlockHandle(BlockAt(BlockNo));
    return File == nullptr || File->IsNear(Offset);
}

void BlockSampleWillNeed(std::int32_t BlockNo, std::int32_t Position) noexcept {
    const std::int64_t Offset = OffsetInFile(BlockAt(BlockNo), Position);
    if (const FileForReading* const File = Offset < 0 ? nullptr : BlockHandle(BlockAt(BlockNo)))
        File->WillNeed(Offset, sizeof(std::int16_t));
}

} // namespace quoril

// The tables, and making, copying, splitting and giving up blocks.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "settings/STD1.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <utility>

namespace quoril {

std::vector<BlockRec> BlockTable(1);
std::vector<WorkFileRec> WorkFileTable(1);
std::vector<OrgFileRec> OrgFileTable(1);
std::vector<BlockPairRec> BlockPairTable;

std::int32_t MemoryBudget = LowestMemoryBudget;
std::int32_t MemoryUsed = 0;
std::int32_t BlockUseCounter = 0;
std::int32_t BudgetCheckCount = 0;
std::int32_t OrgFileOpenNo = 0;
std::int32_t WorkFileOpenNo = 0;

namespace {

/// No slot below this one is free.
std::int32_t FirstSlotMaybeFree = 1;

/// Never destroyed, so that a carrier may end at the very end of the process.
std::vector<BlockWindow*>& Windows = *new std::vector<BlockWindow*>;

std::int32_t SlotTake() {
    const auto Count = static_cast<std::int32_t>(BlockTable.size());
    for (std::int32_t No = FirstSlotMaybeFree; No < Count; ++No) {
        if (BlockAt(No).BlockKind == BlockFreeSlot) {
            FirstSlotMaybeFree = No;
            return No;
        }
    }
    BlockTable.emplace_back();
    FirstSlotMaybeFree = Count;
    return Count;
}

/// A block of kind 3 or 4 that has the source's file, beginning at the byte `FilePos`.
std::int32_t FileBlockPart(const BlockRec& Source, std::int32_t Length, std::int32_t FilePos) {
    const std::int32_t FileNo = Source.FileNo;
    const std::int32_t Kind = Source.BlockKind;
    const std::int32_t NewNo = BlockNew(Length, BlockSilence);
    BlockRec& Part = BlockAt(NewNo);
    Part.BlockKind = Kind;
    Part.FileNo = FileNo;
    Part.FilePos = FilePos;
    ++(Kind == BlockWorkFile ? WorkFileAt(FileNo).WorkFileUse : OrgFileAt(FileNo).OrgFileUse);
    return NewNo;
}

/// A memory block that views a stretch of a memory block's samples.
std::int32_t MemoryBlockPart(std::int32_t BlockNo, std::int32_t Offset, std::int32_t Length) {
    BlockWindowsEmpty(BlockNo); // the source is no longer alone with its samples
    return BlockNewFilled(Length, BlockAt(BlockNo).BlockData.From(Offset));
}

/// Ties a memory block to the stretch of a work file that holds the same samples: kind 1.
void TieToWorkFile(std::int32_t BlockNo, std::int32_t FileNo, std::int32_t FilePos) {
    BlockRec& Block = BlockAt(BlockNo);
    Block.FileNo = FileNo;
    Block.FilePos = FilePos;
    Block.BlockKind = BlockMemoryAndFile;
    ++WorkFileAt(FileNo).WorkFileUse;
}

} // namespace

BlockWindow::BlockWindow() {
    Windows.push_back(this);
}

BlockWindow::~BlockWindow() {
    std::erase(Windows, this);
}

void BlockWindowsEmpty(std::int32_t BlockNo) noexcept {
    for (BlockWindow* const One : Windows)
        if (One->BlockNo == BlockNo)
            One->Empty();
}

std::int32_t BudgetShare(std::int32_t Lowest) {
    return std::max(RoundToLong(MemoryBudget / 20.0) / 4 * 4, Lowest);
}

std::int32_t DefaultBlockLen() {
    return BudgetShare(524288);
}

std::int32_t NextBlockStamp() {
    BlockUseCounter = AddLong(BlockUseCounter, 1);
    return BlockUseCounter;
}

std::int32_t BlockNewFilled(std::int32_t Length, SampleRun Samples) {
    MemoryRoomCheck(Length);
    const std::int32_t Stamp = NextBlockStamp();
    const std::int32_t NewNo = SlotTake();
    const BlockRec Filled = {0, 0, 0, BlockMemory, std::move(Samples), Length, Stamp};
    MemoryEnter(Filled);
    BlockAt(NewNo) = Filled;
    BudgetEnforceOrFree(NewNo);
    return NewNo;
}

std::int32_t BlockNew(std::int32_t Length, std::int32_t Kind) {
    switch (Kind) {
    case BlockFreeSlot:
        MsgBox("Error - can not make free block");
        return SlotTake();
    case BlockMemory:
        return BlockNewFilled(Length, SampleRun::Zeros(Length));
    case BlockWorkFile: {
        const std::int32_t FileNo = WorkFileNew();
        WorkFileFill(FileNo, SampleRun::Zeros(Length).Read(), Length);
        const std::int32_t NewNo = SlotTake();
        BlockAt(NewNo) = {FileNo, 0, 0, BlockWorkFile, {}, Length, 0};
        WorkFileAt(FileNo).WorkFileUse = 1;
        return NewNo;
    }
    case BlockSilence: {
        const std::int32_t NewNo = SlotTake();
        BlockAt(NewNo) = {0, 0, 0, BlockSilence, {}, Length, 0};
        return NewNo;
    }
    default:
        MsgBox("Error - Can not create buffer block in both (memory and file) or in Orgfile");
        return SlotTake();
    }
}

std::int32_t BlockClone(std::int32_t BlockNo) {
    const std::int32_t NewNo = SlotTake();
    const std::int32_t Kind = BlockAt(BlockNo).BlockKind;
    if (Kind == BlockFreeSlot) {
        MsgBox("Error - free block can not be copied");
        return NewNo;
    }
    const std::int32_t Stamp =
        Kind == BlockSilence ? BlockAt(BlockNo).BlockStamp : NextBlockStamp();
    if (BlockInMemory(BlockAt(BlockNo))) {
        MemoryEnter(BlockAt(BlockNo));
        BlockWindowsEmpty(BlockNo); // it is no longer alone with its samples
    }
    BlockRec& Copy = BlockAt(NewNo);
    Copy = BlockAt(BlockNo);
    Copy.BlockStamp = Stamp;
    if (Kind == BlockMemoryAndFile || Kind == BlockWorkFile)
        ++WorkFileAt(Copy.FileNo).WorkFileUse;
    else if (Kind == BlockOrgFile)
        ++OrgFileAt(Copy.FileNo).OrgFileUse;
    return NewNo;
}

void BlockFree(std::int32_t BlockNo) {
    BlockRec& Block = BlockAt(BlockNo);
    const std::int32_t Kind = Block.BlockKind;
    const std::int32_t FileNo = Block.FileNo;
    BlockWindowsEmpty(BlockNo);
    if (BlockInMemory(Block))
        MemoryLeave(Block);
    if (Kind == BlockMemoryAndFile || Kind == BlockWorkFile)
        --WorkFileAt(FileNo).WorkFileUse;
    else if (Kind == BlockOrgFile) {
        --OrgFileAt(FileNo).OrgFileUse;
        BlockPairRemove(BlockNo);
    }
    Block = {};
    FirstSlotMaybeFree = std::min(FirstSlotMaybeFree, BlockNo);
    if (Kind == BlockOrgFile && OrgFileAt(FileNo).OrgFileUse == 0)
        OrgFileRelease(FileNo);
}

void BlockSetFree(BlockSet& Set) {
    for (const std::int32_t BlockNo : Set)
        BlockFree(BlockNo);
    Set.clear();
}

void BlockBrake(std::int32_t BlockNo, std::int32_t Position, std::int32_t& FirstNo,
                std::int32_t& SecondNo) {
    const std::int32_t Start = BlockAt(BlockNo).BlockStart;
    const std::int32_t FirstLen = SubLong(Position, Start);
    const std::int32_t SecondLen = SubLong(BlockAt(BlockNo).BlockLen, FirstLen);
    if (FirstLen < 1 || SecondLen < 1) {
        MsgBox("Error - Could not brake a block");
        return;
    }
    std::int32_t New1 = 0;
    std::int32_t New2 = 0;
    if (BlockAt(BlockNo).BlockKind == BlockWorkFile) {
        const BlockRec Source = BlockAt(BlockNo);
        const std::int32_t SecondPos = AddLong(Source.FilePos, MulLong(2, FirstLen));
        New1 = FileBlockPart(Source, FirstLen, Source.FilePos);
        New2 = FileBlockPart(Source, SecondLen, SecondPos);
    } else {
        if (!BlockInMemory(BlockAt(BlockNo)))
            BlockToMemory(BlockNo);
        // The newest stamps are the source's and the pieces', so the budget leaves them alone.
        BlockAt(BlockNo).BlockStamp = NextBlockStamp();
        New1 = MemoryBlockPart(BlockNo, 0, FirstLen);
        try {
            New2 = MemoryBlockPart(BlockNo, FirstLen, SecondLen);
        } catch (...) {
            BlockFree(New1);
            throw;
        }
        if (BlockAt(BlockNo).BlockKind == BlockMemoryAndFile) {
            const std::int32_t FileNo = BlockAt(BlockNo).FileNo;
            const std::int32_t FilePos = BlockAt(BlockNo).FilePos;
            TieToWorkFile(New1, FileNo, FilePos);
            TieToWorkFile(New2, FileNo, AddLong(FilePos, MulLong(2, FirstLen)));
        }
    }
    BlockAt(New1).BlockStart = Start;
    BlockAt(New2).BlockStart = Position;
    FirstNo = New1;
    SecondNo = New2;
}

bool BlockOverlap(const BlockRec& Block, std::int32_t FromPos, std::int32_t ToPos,
                  std::int32_t& OverlapFrom, std::int32_t& OverlapLen) {
    const std::int64_t First = std::max<std::int64_t>(Block.BlockStart, FromPos);
    const std::int64_t Last =
        std::min<std::int64_t>(std::int64_t{Block.BlockStart} + Block.BlockLen - 1, ToPos);
    if (Last < First)
        return false;
    OverlapFrom = static_cast<std::int32_t>(First);
    OverlapLen = static_cast<std::int32_t>(Last - First + 1);
    return true;
}

std::int32_t BlockCutRange(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos) {
    std::int32_t From = 0;
    std::int32_t Length = 0;
    if (BlockAt(BlockNo).BlockKind == BlockFreeSlot ||
        !BlockOverlap(BlockAt(BlockNo), FromPos, ToPos, From, Length))
        return 0;
    const std::int32_t Offset = From - BlockAt(BlockNo).BlockStart;
    std::int32_t NewNo = 0;
    switch (BlockAt(BlockNo).BlockKind) {
    case BlockMemoryAndFile: {
        BlockAt(BlockNo).BlockStamp = NextBlockStamp();
        const std::int32_t FileNo = BlockAt(BlockNo).FileNo;
        const std::int32_t FilePos = AddLong(BlockAt(BlockNo).FilePos, MulLong(2, Offset));
        NewNo = MemoryBlockPart(BlockNo, Offset, Length);
        TieToWorkFile(NewNo, FileNo, FilePos);
        break;
    }
    case BlockMemory:
        BlockAt(BlockNo).BlockStamp = NextBlockStamp();
        NewNo = MemoryBlockPart(BlockNo, Offset, Length);
        break;
    case BlockSilence:
        NewNo = BlockNew(Length, BlockSilence);
        break;
    default: { // in a file
        const BlockRec Source = BlockAt(BlockNo);
        const std::int32_t Step =
            Source.BlockKind == BlockWorkFile ? 2 : OrgFileStep(OrgFileAt(Source.FileNo));
        NewNo = FileBlockPart(Source, Length, AddLong(Source.FilePos, MulLong(Step, Offset)));
        break;
    }
    }
    BlockAt(NewNo).BlockStart = From - FromPos + 1;
    return NewNo;
}

void BlockTableReset() {
    for (auto No = static_cast<std::int32_t>(BlockTable.size()) - 1; No > 0; --No)
        BlockFree(No);
    FilesSweep();
    BlockTable.assign(1, {});
    WorkFileTable.assign(1, {});
    OrgFileTable.assign(1, {});
    BlockPairTable.clear();
    MemoryUsed = BlockUseCounter = BudgetCheckCount = 0;
    FirstSlotMaybeFree = 1;
}

} // namespace quoril

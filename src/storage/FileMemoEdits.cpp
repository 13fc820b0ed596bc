// The document: inserting, deleting, replacing, and changing the format.
#include "storage/FileMemoClass.h"

#include "base/Arithmetic.h"
#include "base/DocumentState.h"
#include "base/ViewState.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace quoril {

void FileMemoClass::BlocksInsert(BlockListClass& List, std::int32_t& Length, std::int32_t PosStart,
                                 std::int32_t FreshLen, const std::function<BlockSet()>& Fresh) {
    const std::int32_t NewLength = AddLong(Length, FreshLen);
    (void)AddLong(PosStart, FreshLen);
    List.MakeBorder(PosStart);
    const BlockSet Blocks = Fresh();
    List.Shift(PosStart, FreshLen);
    for (const std::int32_t BlockNo : Blocks) {
        BlockAt(BlockNo).BlockStart += PosStart - 1;
        List.Append(BlockNo);
    }
    Length = NewLength;
}

void FileMemoClass::InsertInto(BlockListClass& List, std::int32_t& Length, std::int32_t PosStart,
                               const BlockCarrBuffClass& Carrier) {
    BlocksInsert(List, Length, PosStart, Carrier.WaveINos, [&] {
        BlockSet Fresh;
        Carrier.BuffBlocksGetCopy(Fresh);
        return Fresh;
    });
}

bool FileMemoClass::WaveDataInsert(std::int32_t PosStart, std::int32_t WorkChn,
                                   const BlockCarrBuffClass* FileObL,
                                   const BlockCarrBuffClass* FileObR, const std::string& UndoName,
                                   bool IsLastOperation) {
    if (WorkChn == 0 || WorkChn == 1)
        InsertInto(ListL, LengthL, PosStart, *FileObL);
    try {
        if (WorkChn == 0 || WorkChn == 2)
            InsertInto(ListR, LengthR, PosStart, *FileObR);
    } catch (...) {
        if (WorkChn == 0) // the left channel has its samples, and undo must know of them
            InsertEnd(PosStart, 1, FileObL->WaveINos, UndoName, IsLastOperation);
        throw;
    }
    std::int32_t Chn = WorkChn;
    if (WorkChn == 0 && FileObL->WaveINos != FileObR->WaveINos) {
        // One record tells one length.
        if (JournalOn())
            JournalAdd(UndoInsert, PosStart, 1, FileObL->WaveINos, UndoName, false);
        Chn = 2;
    }
    InsertEnd(PosStart, Chn, (Chn == 2 ? FileObR : FileObL)->WaveINos, UndoName, IsLastOperation);
    return true;
}

void FileMemoClass::InsertEnd(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t Length,
                              const std::string& UndoName, bool IsLastOperation) {
    if (JournalOn())
        JournalAdd(UndoInsert, PosStart, WorkChn, Length, UndoName, IsLastOperation);
    EditEnd(UndoName, IsLastOperation);
}

BlockSet FileMemoClass::DeleteFrom(BlockListClass& List, std::int32_t& Length,
                                   std::int32_t PosStart, std::int32_t DeleteLen) {
    const std::int32_t End = AddLong(PosStart, DeleteLen);
    const std::int32_t NewLength = SubLong(Length, DeleteLen);
    List.MakeBorder(PosStart);
    List.MakeBorder(End);
    BlockSet Removed;
    BlockSet Kept;
    for (const std::int32_t BlockNo : List.Take()) {
        BlockRec& Block = BlockAt(BlockNo);
        if (PosStart <= Block.BlockStart && Block.BlockStart < End) {
            Block.BlockStart = Block.BlockStart - PosStart + 1;
            Removed.push_back(BlockNo);
        } else {
            Kept.push_back(BlockNo);
        }
    }
    List.Assign(std::move(Kept));
    List.Shift(End, -DeleteLen);
    Length = NewLength;
    return Removed;
}

bool FileMemoClass::WaveDataDelete(std::int32_t PosStart, std::int32_t WorkChn,
                                   std::int32_t DeleteLen, const std::string& UndoName,
                                   bool IsLastOperation) {
    BlockSet RemovedL;
    BlockSet RemovedR;
    if (WorkChn == 0 || WorkChn == 1)
        RemovedL = DeleteFrom(ListL, LengthL, PosStart, DeleteLen);
    try {
        if (WorkChn == 0 || WorkChn == 2)
            RemovedR = DeleteFrom(ListR, LengthR, PosStart, DeleteLen);
    } catch (...) {
        if (WorkChn == 0) // the left channel is cut, and undo must find what was cut
            DeleteEnd(PosStart, 1, DeleteLen, std::move(RemovedL), {}, UndoName, IsLastOperation);
        throw;
    }
    DeleteEnd(PosStart, WorkChn, DeleteLen, std::move(RemovedL), std::move(RemovedR), UndoName,
              IsLastOperation);
    return true;
}

void FileMemoClass::DeleteEnd(std::int32_t PosStart, std::int32_t WorkChn, std::int32_t DeleteLen,
                              BlockSet RemovedL, BlockSet RemovedR, const std::string& UndoName,
                              bool IsLastOperation) {
    if (JournalOn()) {
        UndoRec& Record =
            JournalAdd(UndoDelete, PosStart, WorkChn, DeleteLen, UndoName, IsLastOperation);
        Record.BlocksL = std::move(RemovedL);
        Record.BlocksR = std::move(RemovedR);
    } else {
        BlockSetFree(RemovedL);
        BlockSetFree(RemovedR);
    }
    EditEnd(UndoName, IsLastOperation);
}

bool FileMemoClass::WaveDataReplace(std::int32_t PosStart, std::int32_t WorkChn,
                                    const BlockCarrBuffClass* FileObL,
                                    const BlockCarrBuffClass* FileObR, const std::string& UndoName,
                                    bool IsLastOperation) {
    const auto Cut = [&](std::int32_t Chn, const BlockCarrBuffClass& Carrier, std::int32_t Length) {
        // Nothing stands behind the channel's end that could be replaced.
        const std::int32_t Rest = std::max(0, AddLong(SubLong(Length, PosStart), 1));
        WaveDataDelete(PosStart, Chn, std::min(Carrier.WaveINos, Rest), UndoName, false);
    };
    if (WorkChn == 0 || WorkChn == 1)
        Cut(1, *FileObL, LengthL);
    if (WorkChn == 0 || WorkChn == 2)
        Cut(2, *FileObR, LengthR);
    return WaveDataInsert(PosStart, WorkChn, FileObL, FileObR, UndoName, IsLastOperation);
}

void FileMemoClass::EditEnd(const std::string& UndoName, bool IsLastOperation) {
    if (IsLastOperation && WavFmtChannel == 2)
        PadChannels(UndoName);
    if (IsLastOperation)
        UndoInfoUpdateMenu();
    WavWaveINos = std::max(LengthL, LengthR);
    WaveChanged = true;
}

void FileMemoClass::PadChannels(const std::string& UndoName) {
    if (LengthL == LengthR)
        return;
    const bool LeftShorter = LengthL < LengthR;
    BlockListClass& List = LeftShorter ? ListL : ListR;
    std::int32_t& Length = LeftShorter ? LengthL : LengthR;
    const std::int32_t OldLength = Length;
    const std::int32_t Target = LeftShorter ? LengthR : LengthL;
    while (Length < Target) {
        const std::int32_t PadLen = std::min(NewBlockLen, Target - Length);
        const std::int32_t BlockNo = BlockNew(PadLen, BlockSilence);
        // In both cases behind the left channel's end: the gap that this leaves in a shorter
        // right channel reads as the silence that it stands for.
        BlockAt(BlockNo).BlockStart = AddLong(LengthL, 1);
        List.Append(BlockNo);
        Length += PadLen;
    }
    if (JournalOn()) {
        UndoRec& Record = JournalAdd(UndoPadding, OldLength + 1, LeftShorter ? 1 : 2,
                                     Target - OldLength, UndoName, true);
        Record.UndoSelStart = Record.UndoSelEnd = 0;
        Record.UndoViewFrom = Record.UndoViewTotal = 0;
    }
}

bool FileMemoClass::WaveDataChangeFmt(std::int32_t NewChn, std::int32_t NewBits,
                                      std::int32_t NewFreq, const std::string& UndoName) {
    if (JournalOn()) {
        UndoRec& Record =
            JournalAdd(UndoFormat, WavFmtBits, WavFmtChannel, WavFmtFreq, UndoName, false);
        Record.UndoName = UndoName;
        Record.UndoSelStart = Record.UndoSelEnd = 0;
        Record.UndoViewFrom = Record.UndoViewTotal = 0;
    }
    if (NewChn != 0)
        WavFmtChannel = NewChn;
    if (NewBits != 0)
        WavFmtBits = NewBits;
    if (NewFreq != 0)
        WavFmtFreq = NewFreq;
    return false;
}

bool FileMemoClass::JournalOn() const noexcept {
    return UndoOptionON && !SwitchUndoOff;
}

UndoRec& FileMemoClass::JournalAdd(std::int32_t Kind, std::int32_t Pos, std::int32_t Chn,
                                   std::int32_t Len, const std::string& UndoName,
                                   bool IsLastOperation) {
    UndoRec Record;
    Record.UndoName = IsLastOperation ? UndoName : std::string();
    Record.UndoKind = Kind;
    Record.UndoIsLast = IsLastOperation;
    Record.UndoPos = Pos;
    Record.UndoChn = Chn;
    Record.UndoLen = Len;
    Record.UndoSelStart = SelStart;
    Record.UndoSelEnd = SelEnd;
    Record.UndoViewFrom = ViewFrom;
    Record.UndoViewTotal = ViewTotal;
    Journal.push_back(std::move(Record));
    return Journal.back();
}

} // namespace quoril

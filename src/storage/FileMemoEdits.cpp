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

FileMemoClass::EditClones::~EditClones() {
    BlockSetFree(L);
    BlockSetFree(R);
}

void FileMemoClass::EditPrepare(BlockListClass& List, std::int32_t Length, std::int32_t PosStart,
                                std::int32_t DeleteLen, const BlockCarrBuffClass* Carrier,
                                BlockSet& Clones) {
    const std::int32_t End = AddLong(PosStart, DeleteLen);
    const std::int32_t Rest = SubLong(Length, DeleteLen);
    if (Carrier != nullptr) {
        (void)AddLong(Rest, Carrier->WaveINos);
        (void)AddLong(PosStart, Carrier->WaveINos);
    }
    List.MakeBorder(PosStart);
    List.MakeBorder(End);
    if (Carrier != nullptr)
        Carrier->BuffBlocksGetCopy(Clones);
}

void FileMemoClass::EditPrepareChannels(std::int32_t PosStart, std::int32_t WorkChn,
                                        std::int32_t DeleteLen, const BlockCarrBuffClass* FileObL,
                                        const BlockCarrBuffClass* FileObR, EditClones& Clones) {
    if (WorkChn == 0 || WorkChn == 1)
        EditPrepare(ListL, LengthL, PosStart, DeleteLen, FileObL, Clones.L);
    if (WorkChn == 0 || WorkChn == 2)
        EditPrepare(ListR, LengthR, PosStart, DeleteLen, FileObR, Clones.R);
}

bool FileMemoClass::WaveDataInsert(std::int32_t PosStart, std::int32_t WorkChn,
                                   const BlockCarrBuffClass* FileObL,
                                   const BlockCarrBuffClass* FileObR, const std::string& UndoName,
                                   bool IsLastOperation) {
    EditClones Clones;
    EditPrepareChannels(PosStart, WorkChn, 0, FileObL, FileObR, Clones);
    InsertPrepared(PosStart, WorkChn, FileObL, FileObR, Clones, UndoName, IsLastOperation);
    return true;
}

void FileMemoClass::InsertPrepared(std::int32_t PosStart, std::int32_t WorkChn,
                                   const BlockCarrBuffClass* FileObL,
                                   const BlockCarrBuffClass* FileObR, EditClones& Clones,
                                   const std::string& UndoName, bool IsLastOperation) {
    if (WorkChn == 0 || WorkChn == 1)
        BlocksInsert(ListL, LengthL, PosStart, FileObL->WaveINos,
                     [&] { return std::exchange(Clones.L, {}); });
    if (WorkChn == 0 || WorkChn == 2)
        BlocksInsert(ListR, LengthR, PosStart, FileObR->WaveINos,
                     [&] { return std::exchange(Clones.R, {}); });
    std::int32_t Chn = WorkChn;
    if (WorkChn == 0 && FileObL->WaveINos != FileObR->WaveINos) {
        // One record tells one length.
        if (JournalOn())
            JournalAdd(UndoInsert, PosStart, 1, FileObL->WaveINos, UndoName, false);
        Chn = 2;
    }
    if (JournalOn())
        JournalAdd(UndoInsert, PosStart, Chn, (Chn == 2 ? FileObR : FileObL)->WaveINos, UndoName,
                   IsLastOperation);
    EditEnd(UndoName, IsLastOperation);
}

BlockSet FileMemoClass::DeleteFrom(BlockListClass& List, std::int32_t& Length,
                                   std::int32_t PosStart, std::int32_t DeleteLen) {
    const std::int32_t End = PosStart + DeleteLen;
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
    Length -= DeleteLen;
    return Removed;
}

bool FileMemoClass::WaveDataDelete(std::int32_t PosStart, std::int32_t WorkChn,
                                   std::int32_t DeleteLen, const std::string& UndoName,
                                   bool IsLastOperation) {
    EditClones None;
    EditPrepareChannels(PosStart, WorkChn, DeleteLen, nullptr, nullptr, None);
    DeletePrepared(PosStart, WorkChn, DeleteLen, UndoName, IsLastOperation);
    return true;
}

void FileMemoClass::DeletePrepared(std::int32_t PosStart, std::int32_t WorkChn,
                                   std::int32_t DeleteLen, const std::string& UndoName,
                                   bool IsLastOperation) {
    BlockSet RemovedL;
    BlockSet RemovedR;
    if (WorkChn == 0 || WorkChn == 1)
        RemovedL = DeleteFrom(ListL, LengthL, PosStart, DeleteLen);
    if (WorkChn == 0 || WorkChn == 2)
        RemovedR = DeleteFrom(ListR, LengthR, PosStart, DeleteLen);
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
    const auto CutLen = [&](const BlockCarrBuffClass& Carrier, std::int32_t Length) {
        // Nothing stands behind the channel's end that could be replaced.
        const std::int32_t Rest = std::max(0, AddLong(SubLong(Length, PosStart), 1));
        return std::min(Carrier.WaveINos, Rest);
    };
    const bool Left = WorkChn == 0 || WorkChn == 1;
    const bool Right = WorkChn == 0 || WorkChn == 2;
    const std::int32_t CutL = Left ? CutLen(*FileObL, LengthL) : 0;
    const std::int32_t CutR = Right ? CutLen(*FileObR, LengthR) : 0;
    EditClones Clones;
    if (Left)
        EditPrepare(ListL, LengthL, PosStart, CutL, FileObL, Clones.L);
    if (Right)
        EditPrepare(ListR, LengthR, PosStart, CutR, FileObR, Clones.R);
    if (Left)
        DeletePrepared(PosStart, 1, CutL, UndoName, false);
    if (Right)
        DeletePrepared(PosStart, 2, CutR, UndoName, false);
    InsertPrepared(PosStart, WorkChn, FileObL, FileObR, Clones, UndoName, IsLastOperation);
    return true;
}

void FileMemoClass::WaveDataExchange(std::int32_t PosStart, std::int32_t WorkChn,
                                     std::int32_t DeleteLen, const BlockCarrBuffClass* FileObL,
                                     const BlockCarrBuffClass* FileObR, const std::string& UndoName,
                                     bool IsLastOperation) {
    EditClones Clones;
    EditPrepareChannels(PosStart, WorkChn, DeleteLen, FileObL, FileObR, Clones);
    DeletePrepared(PosStart, WorkChn, DeleteLen, UndoName, false);
    InsertPrepared(PosStart, WorkChn, FileObL, FileObR, Clones, UndoName, IsLastOperation);
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
    return (UndoOptionON || EditingAsOne) && !SwitchUndoOff;
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

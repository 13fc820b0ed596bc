// The journal: taking edits back, dropping records, and what the Undo menu says.
#include "storage/FileMemoClass.h"

#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "base/ViewState.h"
#include "storage/BlockTableInner.h"
#include "storage/UndoListener.h"
#include "storage/UndoOffScope.h"

#include <algorithm>
#include <utility>

namespace quoril {

std::int32_t FileMemoClass::UndoCount() const noexcept {
    return static_cast<std::int32_t>(Journal.size()) - 1;
}

std::int32_t FileMemoClass::UndoStepFirst() const {
    const auto At = [this](std::int32_t No) -> const UndoRec& {
        return Journal[static_cast<std::size_t>(No)];
    };
    std::int32_t First = UndoCount();
    while (First > Released + 1 && At(First).UndoKind == UndoPadding)
        --First; // padding belongs to the step under it
    while (First > Released + 1 && !At(First - 1).UndoIsLast)
        --First;
    return First;
}

void FileMemoClass::Undo() {
    if (Released >= UndoCount()) {
        MsgBox("Undo Failed");
        UndoInfoReset();
        SelStart = SelEnd = 0;
    } else {
        try {
            UndoStep();
        } catch (const std::exception& Error) {
            ShowFailure(Error, "Undo Error");
            UndoInfoReset();
        }
    }
    UndoInfoUpdateMenu();
    WaveChanged = true;
}

void FileMemoClass::UndoStep() {
    const ProgressScope Progress(BarColorUndo);
    const std::int32_t Top = UndoCount();
    const std::int32_t First = UndoStepFirst();
    for (std::int32_t No = Top; No >= First; --No) {
        UndoOne(Journal[static_cast<std::size_t>(No)]);
        ProgressFrm->SetCurrentProgress(
            Single(static_cast<double>(Top - No + 1) / (Top - First + 1)));
    }
    SelectionReturn(First);
    Journal.resize(static_cast<std::size_t>(First));
}

void FileMemoClass::SelectionReturn(std::int32_t FirstNo) const {
    // Records of padding and of the format hold none.
    const auto Holder =
        std::find_if(Journal.begin() + FirstNo, Journal.end(), [](const UndoRec& Record) {
            return Record.UndoKind == UndoInsert || Record.UndoKind == UndoDelete;
        });
    if (Holder == Journal.end())
        return;
    SelStart = Holder->UndoSelStart;
    SelEnd = Holder->UndoSelEnd;
    ViewFrom = Holder->UndoViewFrom;
    ViewTotal = Holder->UndoViewTotal;
}

void FileMemoClass::UndoOne(UndoRec& Record) {
    const UndoOffScope Off(*this);
    switch (Record.UndoKind) {
    case UndoInsert:
        WaveDataDelete(Record.UndoPos, Record.UndoChn, Record.UndoLen, {}, false);
        break;
    case UndoPadding:
        WaveDataDelete(Record.UndoPos, Record.UndoChn, Record.UndoLen, {}, false);
        if (Record.UndoChn == 1)
            BlocksBehindFree(ListL, LengthL);
        else
            BlocksBehindFree(ListR, LengthR);
        break;
    case UndoDelete:
        if (Record.UndoChn == 0 || Record.UndoChn == 1)
            BlocksReturn(ListL, LengthL, Record, Record.BlocksL);
        if (Record.UndoChn == 0 || Record.UndoChn == 2)
            BlocksReturn(ListR, LengthR, Record, Record.BlocksR);
        EditEnd({}, false);
        break;
    default:
        WavFmtBits = Record.UndoPos;
        WavFmtChannel = Record.UndoChn;
        WavFmtFreq = Record.UndoLen;
        CurrentFormat = {WavFmtChannel, WavFmtFreq, WavFmtBits};
        SetMenu_To_DefaultFormat();
        break;
    }
}

void FileMemoClass::EditAsOne(const std::function<void()>& Edits) {
    const std::int32_t Before = UndoCount();
    const bool WasChanged = WaveChanged;
    const bool WithinAnother = std::exchange(EditingAsOne, true);
    try {
        Edits();
    } catch (...) {
        EditingAsOne = WithinAnother;
        EditsTakeBack(Before);
        WaveChanged = WasChanged;
        throw;
    }
    EditingAsOne = WithinAnother;
    if (!JournalOn())
        RecordsDrop(Before);
}

void FileMemoClass::EditsTakeBack(std::int32_t UpToNo) {
    // All that is done here is to put blocks back that are still there, at borders that are still
    // there: it needs neither memory nor disk.
    try {
        for (std::int32_t No = UndoCount(); No > UpToNo; --No)
            UndoOne(Journal[static_cast<std::size_t>(No)]);
        RecordsDrop(UpToNo);
    } catch (const std::exception& Error) {
        ShowFailure(Error, "Undo Error");
        UndoInfoReset();
    }
    UndoInfoUpdateMenu();
}

void FileMemoClass::RecordsDrop(std::int32_t UpToNo) {
    for (std::int32_t No = UndoCount(); No > UpToNo; --No)
        UndoRecordFree(Journal[static_cast<std::size_t>(No)]);
    // One that has been reset meanwhile has fewer.
    Journal.resize(std::min(Journal.size(), static_cast<std::size_t>(UpToNo) + 1));
    FilesSweep();
}

void FileMemoClass::BlocksReturn(BlockListClass& List, std::int32_t& Length, const UndoRec& Record,
                                 BlockSet& Removed) {
    // The removed blocks themselves go back: unlike clones of them this needs no room.
    BlocksInsert(List, Length, Record.UndoPos, Record.UndoLen, [&] {
        for (const std::int32_t BlockNo : Removed)
            if (BlockAt(BlockNo).BlockKind != BlockSilence)
                BlockAt(BlockNo).BlockStamp = NextBlockStamp();
        return std::exchange(Removed, {});
    });
}

void FileMemoClass::BlocksBehindFree(BlockListClass& List, std::int32_t Length) {
    BlockSet Kept;
    for (const std::int32_t BlockNo : List.Take()) {
        if (BlockAt(BlockNo).BlockStart > Length)
            BlockFree(BlockNo);
        else
            Kept.push_back(BlockNo);
    }
    List.Assign(std::move(Kept));
}

UndoMenuState FileMemoClass::UndoMenu() const {
    UndoMenuState State;
    State.OptionChecked = UndoOptionON;
    State.Enabled = UndoOptionON && UndoCount() > Released;
    if (!UndoOptionON)
        State.Caption = "Undo [Off]";
    else if (State.Enabled)
        State.Caption = "Undo [" + Journal.back().UndoName + "]";
    return State;
}

void FileMemoClass::UndoInfoUpdateMenu() {
    if (UndoListener* const Listener = CurrentUndoListener())
        Listener->UndoMenuChanged(UndoMenu());
}

void FileMemoClass::UndoRecordFree(UndoRec& Record) {
    BlockSetFree(Record.BlocksL);
    BlockSetFree(Record.BlocksR);
}

void FileMemoClass::UndoInfoReset() {
    for (std::int32_t No = Released + 1; No <= UndoCount(); ++No)
        UndoRecordFree(Journal[static_cast<std::size_t>(No)]);
    Journal.resize(1);
    Released = 0;
    FilesSweep();
    UndoInfoUpdateMenu();
}

void FileMemoClass::UndoInfoReleaseUpto(std::int32_t UpToNo) {
    const std::int32_t Last = std::min(UpToNo, UndoCount());
    for (std::int32_t No = Released + 1; No <= Last; ++No)
        UndoRecordFree(Journal[static_cast<std::size_t>(No)]);
    Released = std::max(Released, Last);
    while (Released < UndoCount() &&
           Journal[static_cast<std::size_t>(Released) + 1].UndoKind == UndoPadding) {
        ++Released;
        UndoRecordFree(Journal[static_cast<std::size_t>(Released)]);
    }
    if (Released == UndoCount()) {
        Journal.resize(1);
        Released = 0;
    }
    FilesSweep();
    UndoInfoUpdateMenu();
}

} // namespace quoril

#include "edit/CopyPasteCommands.h"

#include "audiofile/AudioFileNames.h"
#include "audiofile/AudioFileTypes.h"
#include "audiofile/DocumentFile.h"
#include "audiofile/RecentFiles.h"
#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "edit/PasteMixing.h"
#include "edit/PrivateClipboard.h"
#include "platform/Text.h"
#include "selection/DurationText.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "settings/UserGuideMod.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace quoril {

namespace {

constexpr const char* CopiedNote =
    "Note: You can paste it anywhere in this wave file or in another instance of Wave Editor. (You "
    "can run multiple Editors windows at the same time, to edit multiple files).";
constexpr const char* CopyTip = "If you want to copy part of the file to a new file use \"Save "
                                "Selected\" command (under File menu / Tool button)";
constexpr std::int32_t FirstPasteTimes = 5;

constexpr std::array<const char*, 7> PasteOperationName = {
    "",          "Paste Replace",  "Paste Insert",    "Multi-Paste Insert",
    "Paste Mix", "Paste Modulate", "Paste Cross Fade"};

/// Work on another document than that of the window leaves the window's flags and its menu alone.
class OtherDocumentScope {
  public:
    OtherDocumentScope() = default;
    ~OtherDocumentScope() {
        WaveChanged = WaveWasChanged;
        BookmarkChanged = BookmarkWasChanged;
        WaveStore->UndoInfoUpdateMenu();
    }
    OtherDocumentScope(const OtherDocumentScope&) = delete;
    OtherDocumentScope& operator=(const OtherDocumentScope&) = delete;

  private:
    bool WaveWasChanged = WaveChanged;
    bool BookmarkWasChanged = BookmarkChanged;
};

std::string TimeOf(std::int64_t Samples) {
    return FormatSamples(Samples, WaveStore->WavFmtFreq);
}

/// The carrier with its blocks so many times, one after the other. The samples are shared.
std::unique_ptr<BlockCarrBuffClass> Repeated(const BlockCarrBuffClass& Once, std::int32_t Times) {
    (void)MulLong(Once.WaveINos, Times);
    auto Result = std::make_unique<BlockCarrBuffClass>();
    BlockSet All;
    try {
        for (std::int32_t Round = 0; Round < Times; ++Round) {
            BlockSet Blocks;
            Once.BuffBlocksGetCopy(Blocks);
            for (const std::int32_t BlockNo : Blocks)
                BlockTable[static_cast<std::size_t>(BlockNo)].BlockStart += Round * Once.WaveINos;
            All.insert(All.end(), Blocks.begin(), Blocks.end());
        }
    } catch (...) {
        BlockSetFree(All);
        throw;
    }
    Result->BuffBlocksPutFresh(std::move(All));
    return Result;
}

bool PutRange(FileMemoClass& Store, std::int32_t From, std::int32_t To, std::int32_t WorkChn) {
    std::unique_ptr<BlockCarrBuffClass> Left;
    std::unique_ptr<BlockCarrBuffClass> Right;
    Store.WaveCollectData(From, To, WorkChn, Left, Right);
    return PutClipboard(WorkChn, Store.WavFmtBits, Store.WavFmtFreq, Left.get(), Right.get());
}

PasteMixMode MixModeOf(std::int32_t Mode) {
    if (Mode == PasteMix)
        return PasteMixMode::Mix;
    return Mode == PasteModulate ? PasteMixMode::Modulate : PasteMixMode::CrossFade;
}

} // namespace

// ---- Copy, Cut, Delete

bool CopyPasteClass::CopyRange(std::int32_t From, std::int32_t To, std::int32_t WorkChn) {
    bool Copied = false;
    RunCommand({}, [&] {
        const BusyPointer Busy;
        Copied = PutRange(*WaveStore, From, To, WorkChn);
    });
    return Copied;
}

void CopyPasteClass::Copy() {
    RunCommand("Copy", [this] {
        std::int32_t From = 0;
        std::int32_t To = 0;
        std::int32_t WorkChn = 0;
        if (!ConfirmSelection(From, To, WorkChn, NeedTwoPoints, "Copy"))
            return;
        if (!CopyRange(From, To, WorkChn)) {
            MsgBox("Copying failed");
            return;
        }
        const std::int32_t Length = To - From + 1;
        View.ShowCopied(
            {fmt::format("Samples: {} (From {} to {})", Length, From, To),
             fmt::format("Duration: {} (From {} to {})", TimeOf(Length), TimeOf(From), TimeOf(To)),
             CopiedNote});
        UserGuide(CopyTip);
    });
}

void CopyPasteClass::CopyFile() {
    RunCommand("Copy", [this] {
        FileDialogRequest Request;
        Request.Title = "Select a Wave file to Copy";
        Request.Folder = WaveDir;
        Request.Filter = AudioFileFilter;
        Request.DefaultExtension = "wav";
        Request.FileMustExist = true;
        const auto Chosen = Dialogs.OpenFile(Request);
        if (Chosen && CanBeOpened(*Chosen))
            CopyNamedFile(*Chosen);
    });
}

void CopyPasteClass::CopyNamedFile(const std::string& FileName) {
    // Begins before the other document and ends after it: the end of a document, too, tells the
    // menu that there is nothing to undo.
    const OtherDocumentScope DocumentStays;
    FileMemoClass Other;
    bool Copied = false;
    RunCommand({}, [&] {
        const BusyPointer Busy;
        bool Loaded = false;
        OpenSaveClass Files;
        (Files.*AudioFileTypeOf(FileName)->Load)(Other, FileName, Loaded);
        Copied = Loaded && Other.WavWaveINos > 0 &&
                 PutRange(Other, 1, Other.WavWaveINos, Other.WavFmtChannel == 2 ? 0 : 1);
    });
    if (!Copied) {
        MsgBox("Copying failed");
        return;
    }
    View.ShowCopied(
        {RecentFileCaption(FileName) + " is copied",
         fmt::format("Duration: {}, Samples: {}",
                     FormatSamples(Other.WavWaveINos, Other.WavFmtFreq), Other.WavWaveINos),
         CopiedNote});
}

void CopyPasteClass::Cut() {
    RunCommand("Cut", [this] {
        std::int32_t From = 0;
        std::int32_t To = 0;
        std::int32_t WorkChn = 0;
        if (!ConfirmSelection(From, To, WorkChn, NeedTwoPoints, "Copy"))
            return;
        const std::int32_t Length = To - From + 1;
        if (!CopyRange(From, To, WorkChn)) {
            MsgBox("Copying failed,\nDeleting not done.");
            return;
        }
        WaveStore->WaveDataDelete(From, WorkChn, Length, "Cut", true);
        Refresh_Wave_View();
        View.ShowCopied({fmt::format("Samples: {} ({} to {})", Length, From, To),
                         fmt::format("Duration: {:.3f} Seconds",
                                     static_cast<double>(Length) / WaveStore->WavFmtFreq),
                         CopiedNote});
    });
}

void CopyPasteClass::Delete() {
    RunCommand("Delete", [] {
        std::int32_t From = 0;
        std::int32_t To = 0;
        std::int32_t WorkChn = 0;
        if (!ConfirmSelection(From, To, WorkChn, NeedTwoPoints, "Delete"))
            return;
        WaveStore->WaveDataDelete(From, WorkChn, To - From + 1, "Delete", true);
        Refresh_Wave_View();
    });
}

// ---- Paste

void CopyPasteClass::Paste(std::int32_t Mode) {
    const std::string Name = PasteOperationName.at(static_cast<std::size_t>(Mode));
    RunCommand(Name, [this, Mode, &Name] {
        std::int32_t From = 0;
        std::int32_t To = 0;
        std::int32_t WorkChn = 0;
        if (!ConfirmSelection(From, To, WorkChn, NeedOnePoint, Name))
            return;
        PasteAt(Mode, From, WorkChn);
    });
}

void CopyPasteClass::PasteAt(std::int32_t Mode, std::int32_t Pos, std::int32_t WorkChn) {
    const std::string Name = PasteOperationName.at(static_cast<std::size_t>(Mode));
    Carrier ClipL;
    Carrier ClipR;
    {
        const BusyPointer Busy;
        if (!GetClipboard(ClipL, ClipR, WorkChn))
            return;
    }
    const std::int32_t Length = (WorkChn == 2 ? ClipR : ClipL)->WaveINos;
    std::int32_t Times = 1;
    if (Mode == PasteMultiInsert) {
        Times = AskTimes(Length);
        if (Times == 0)
            return;
    }
    {
        const BusyPointer Busy;
        if (Mode == PasteMultiInsert) {
            // Inserted at once: as many single ones at the same place leave the same.
            if (WorkChn != 2)
                ClipL = Repeated(*ClipL, Times);
            if (WorkChn != 1)
                ClipR = Repeated(*ClipR, Times);
        } else if (Mode >= PasteMix) {
            const std::int32_t To = static_cast<std::int32_t>(
                std::min<std::int64_t>(std::int64_t{Pos} + Length - 1, WaveStore->WavWaveINos));
            Carrier DocL;
            Carrier DocR;
            WaveStore->WaveCollectData(Pos, To, WorkChn, DocL, DocR);
            if (!DiskSpaceGuard(std::int64_t{Length} * (WorkChn == 0 ? 8 : 4)))
                return;
            PasteMixing(MixModeOf(Mode), WorkChn, WaveStore->WavFmtBits, ClipL.get(), ClipR.get(),
                        DocL.get(), DocR.get());
        }
        if (Mode == PasteInsert || Mode == PasteMultiInsert)
            WaveStore->WaveDataInsert(Pos, WorkChn, ClipL.get(), ClipR.get(), Name, true);
        else
            WaveStore->WaveDataReplace(Pos, WorkChn, ClipL.get(), ClipR.get(), Name, true);
    }
    Refresh_Wave_View();
}

std::int32_t CopyPasteClass::AskTimes(std::int32_t ClipLength) {
    if (MultiPasteTimes < 1)
        MultiPasteTimes = FirstPasteTimes;
    const InputBoxAnswer Answer = InputBox(
        fmt::format("Enter no of times for Multi-paste.\nWave found in clipboard is {}, {} samples",
                    TimeOf(ClipLength), ClipLength),
        "Multi-Paste Insert", std::to_string(MultiPasteTimes));
    if (!Answer.Accepted || Answer.Text.empty())
        return 0;
    const double Times = RoundEven(LeadingNumber(Answer.Text));
    if (!(Times >= 1 && Times <= MostPasteTimes)) {
        MsgBox("Invalid entry Enter between 1 to 10000", "No of times not valid");
        return 0;
    }
    MultiPasteTimes = RoundToLong(Times);
    return MultiPasteTimes;
}

} // namespace quoril

#include "edit/LengthCommands.h"

#include "selection/DurationEntry.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <optional>
#include <string>

namespace quoril {

std::int32_t LastSilenceLen = 0;

namespace {

/// The length that the user enters, the present one being shown beside it; nothing when it was
/// cancelled or is below 1.
std::optional<std::int32_t> AskLength(const std::string& Caption, const std::string& Prompt,
                                      std::int32_t Proposed) {
    EntDurRequest Request = EntDurFor(WaveStore->WavWaveINos, Proposed, WaveStore->WavFmtFreq);
    Request.Caption = Caption;
    Request.Prompt = Prompt;
    const EntDurAnswer Answer = EntDurAsk(Request);
    if (!Answer.OkClicked)
        return std::nullopt;
    const std::int32_t Length = EntDurSamples(Answer.EnterSmp);
    return Length < 1 ? std::nullopt : std::optional(Length);
}

/// Puts silence of `Length` samples at `Position`, if the disk has room for it or the user wants it
/// all the same.
void InsertSilenceAt(std::int32_t Position, std::int32_t WorkChn, std::int32_t Length,
                     const std::string& UndoName) {
    const std::int64_t BytesPerSample = WorkChn == 0 ? 4 : 2;
    if (!DiskSpaceGuard(Length * BytesPerSample))
        return;
    BlockCarrBuffClass Left;
    BlockCarrBuffClass Right;
    if (WorkChn != 2)
        Left.ReDimSize(Length);
    if (WorkChn != 1)
        Right.ReDimSize(Length);
    WaveStore->WaveDataInsert(Position, WorkChn, &Left, &Right, UndoName, true);
    Refresh_Wave_View();
}

} // namespace

void EditTrim() {
    const std::string Name = "Trim";
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    if (!ConfirmSelection(From, To, WorkChn, 2, Name))
        return;
    const std::int32_t FrontLen = From - 1;
    const std::int32_t TailLen = WaveStore->WavWaveINos - To;
    WaveStore->EditAsOne([&] {
        // The tail goes first, so that the front's going does not move it.
        if (TailLen > 0)
            WaveStore->WaveDataDelete(To + 1, WorkChn, TailLen, Name, FrontLen <= 0);
        if (FrontLen > 0)
            WaveStore->WaveDataDelete(1, WorkChn, FrontLen, Name, true);
    });
    Refresh_Wave_View();
}

void InsertSilence() {
    const std::string Name = "Insert Silence";
    if (LastSilenceLen <= 0)
        LastSilenceLen = WaveStore->WavFmtFreq;
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    if (!ConfirmSelection(From, To, WorkChn, 3, Name))
        return;
    std::optional<std::int32_t> Length = To - From + 1;
    if (From == To)
        Length = AskLength(" Insert Silence (Duration)",
                           "Enter Length of Silence to insert:", LastSilenceLen);
    if (!Length || *Length < 1)
        return;
    LastSilenceLen = *Length;
    InsertSilenceAt(From, WorkChn, *Length, Name);
}

void ChangeSize() {
    const std::string Name = "Change Size";
    const std::int32_t OldLen = WaveStore->WavWaveINos;
    const auto NewLen = AskLength(" Change Size (Duration)", "Enter New Size:", OldLen);
    if (!NewLen)
        return;
    const std::int32_t WorkChn = WaveStore->WavFmtChannel == 2 ? 0 : 1;
    if (*NewLen < OldLen) {
        WaveStore->WaveDataDelete(*NewLen + 1, WorkChn, OldLen - *NewLen, Name, true);
        Refresh_Wave_View();
    } else if (*NewLen > OldLen) {
        InsertSilenceAt(OldLen + 1, WorkChn, *NewLen - OldLen, Name);
    }
}

} // namespace quoril

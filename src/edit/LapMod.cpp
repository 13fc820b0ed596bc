#include "edit/LapMod.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
#include "base/SampleRuns.h"
#include "edit/LapKernel.h"
#include "platform/Text.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "settings/STD1.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

namespace {

constexpr std::uint32_t BarColorLap = 0x808000;
constexpr std::int32_t RunLength = 32768;    ///< small enough for the processor's cache
constexpr std::int32_t ReportEvery = 100000; ///< samples between two moves of the bar
constexpr const char* FailedTitle = " Lap failed";

LapDialog* Dialog = nullptr;

/// Two stretches of `Length` samples, the first one beginning at `Start`.
struct LapPlace {
    std::int32_t Start = 0;
    std::int32_t Length = 0;
};

/// Where the stretches are; nothing, after a message, when they do not lie in the document.
std::optional<LapPlace> PlaceOf(std::int32_t SelcOpn, std::int32_t From, std::int32_t To) {
    const std::int32_t Length = To - From + 1;
    if (SelcOpn == LapSelectionFirst) {
        if (From - 1 + std::int64_t{Length} * 2 > WaveStore->WavWaveINos) {
            MsgBox("If the current selection is the first part:\n"
                   "Available duration after the selection is smaller then this selection\n"
                   "(not sufficient to lap on this selection).\n"
                   "Make smaller selection or add silence at the end and try again.",
                   FailedTitle);
            return std::nullopt;
        }
        return LapPlace{From, Length};
    }
    if (SelcOpn == LapSelectionSecond) {
        if (From - Length < 0) {
            MsgBox("If the current selection is the second part:\n"
                   "Available duration before the selection is smaller then this selection\n"
                   "(not sufficient to lap this selection).\n"
                   "Make smaller selection or add silence at the starting and try again.",
                   FailedTitle);
            return std::nullopt;
        }
        return LapPlace{From - Length, Length};
    }
    return LapPlace{From, Length / 2};
}

/// Lets one stretch of a channel run into another one, run by run.
class LapRuns {
  public:
    LapRuns(const LapPlace& Where, std::int32_t Transition, std::int32_t Bits)
        // The first stretch may begin one place before the document. What would come to lie there
        // is not made.
        : Count(Where.Length), Before(std::max(1 - Where.Start, 0)), TransOpn(Transition),
          Max(SampleHigh(Bits)) {}

    /// Makes `A`, which is the first stretch as far as it lies in the document, the overlap with
    /// `B`.
    void Make(BlockCarrBuffClass& A, BlockCarrBuffClass& B, PassProgress& Progress) const {
        A.WaveRunsChange(
            1, Count - Before, RunLength,
            [&](std::int32_t Position, std::span<const std::int16_t> In,
                std::span<std::int16_t> Out) {
                const std::int32_t First = Position + Before;
                const std::int32_t Last = First + static_cast<std::int32_t>(In.size()) - 1;
                B.WaveRunsRead(First, Last, RunLength,
                               [&](std::int32_t Place, std::span<const std::int16_t> OfB) {
                                   const auto Offset = static_cast<std::size_t>(Place - First);
                                   Overlap(Place, In.subspan(Offset, OfB.size()), OfB,
                                           Out.subspan(Offset, OfB.size()));
                               });
                Progress.Reached(Last, Count);
            });
        Progress.NextPass();
    }

  private:
    void Overlap(std::int32_t Place, std::span<const std::int16_t> A,
                 std::span<const std::int16_t> B, std::span<std::int16_t> Out) const {
        if (TransOpn == LapSmooth)
            LapSmoothRun(A, B, Out, Place, Count, Max);
        else
            SumRun(A, B, Out, 1, -Max, Max);
    }

    std::int32_t Count;
    std::int32_t Before; ///< samples of the first stretch that do not lie in the document
    std::int32_t TransOpn;
    std::int32_t Max;
};

/// Takes the two stretches out of the document and puts the overlap in their place.
void Lap(const LapPlace& Where, std::int32_t WorkChn, std::int32_t TransOpn) {
    const std::string Name = TransOpn == LapSmooth ? "Lap - Smooth" : "Lap - Simple";
    const std::int32_t Length = Where.Length;
    const BusyPointer Busy;
    std::unique_ptr<BlockCarrBuffClass> AL;
    std::unique_ptr<BlockCarrBuffClass> AR;
    std::unique_ptr<BlockCarrBuffClass> BL;
    std::unique_ptr<BlockCarrBuffClass> BR;
    const std::int32_t Middle = AddLong(Where.Start, Length);
    const std::int32_t Start = std::max(Where.Start, 1);
    WaveStore->WaveCollectData(Start, Middle - 1, WorkChn, AL, AR);
    WaveStore->WaveCollectData(Middle, AddLong(Middle, Length) - 1, WorkChn, BL, BR);
    if (!DiskSpaceGuard(std::int64_t{Length} * (WorkChn == 0 ? 4 : 2)))
        return;

    const ProgressScope Window(BarColorLap);
    PassProgress Progress(WorkChn == 0 ? 0.5 : 1.0, ReportEvery);
    const LapRuns Runs(Where, TransOpn, WaveStore->WavFmtBits);
    if (WorkChn != 2)
        Runs.Make(*AL, *BL, Progress);
    if (WorkChn != 1)
        Runs.Make(*AR, *BR, Progress);
    WaveStore->WaveDataExchange(Start, WorkChn, Middle + Length - Start, AL.get(), AR.get(), Name,
                                true);
    Refresh_Wave_View();
}

std::int32_t OptionRead(const char* Key, std::size_t Options) {
    const double Value = RoundEven(LeadingNumber(IniGet("Lap", Key, "0")));
    return Value >= 0.0 && Value < static_cast<double>(Options) ? static_cast<std::int32_t>(Value)
                                                                : 0;
}

} // namespace

void SetLapDialog(LapDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void EditLap() {
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
    if (!ConfirmSelection(From, To, WorkChn, 2, "Lap"))
        return;
    const LapAnswer Answer = Dialog == nullptr ? LapAnswer{} : Dialog->ShowLap();
    if (!Answer.OkClicked)
        return;
    const std::optional<LapPlace> Where = PlaceOf(Answer.Choice.SelcOpn, From, To);
    if (!Where)
        return;
    if (Where->Length < 2) {
        MsgBox("Current selection is too small to lap.", FailedTitle);
        return;
    }
    Lap(*Where, WorkChn, Answer.Choice.TransOpn);
}

LapChoice LapSettingsRead() {
    return {OptionRead("SelOpn", LapSelcCaptions.size()),
            OptionRead("TransOpn", LapTransCaptions.size())};
}

void LapSettingsWrite(const LapChoice& Choice) {
    IniPut("Lap", "SelOpn", std::to_string(Choice.SelcOpn));
    IniPut("Lap", "TransOpn", std::to_string(Choice.TransOpn));
}

} // namespace quoril

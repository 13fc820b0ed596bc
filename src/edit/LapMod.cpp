#include "edit/LapMod.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/MsgBoxMod.h"
#include "base/ProgressReport.h"
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
constexpr std::int32_t ReportEvery = 100000; ///< samples between two reports
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
        if (std::int64_t{From} + std::int64_t{Length} * 2 > WaveStore->WavWaveINos) {
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

/// The overlap of two stretches of one channel, computed run by run.
class LapRuns {
  public:
    LapRuns(const LapPlace& Where, std::int32_t Transition, std::int32_t Bits)
        // The first stretch may begin one place before the document. What would come to lie there
        // is not made.
        : Count(Where.Length), First(Where.Start < 1 ? 2 : 1), TransOpn(Transition),
          Max(SampleHigh(Bits)) {}

    /// Fills `Target`, which is empty. `Done` is the share of the bar that is full, `Share` that of
    /// this channel.
    void Make(BlockCarrBuffClass& A, BlockCarrBuffClass& B, BlockCarrBuffClass& Target, double Done,
              double Share) {
        Target.ReDimSize(Count - First + 1);
        for (std::int64_t Begin = 1; Begin <= Count; Begin += ReportEvery) {
            const auto From = static_cast<std::int32_t>(std::max<std::int64_t>(Begin, First));
            const auto To =
                static_cast<std::int32_t>(std::min<std::int64_t>(Begin + ReportEvery - 1, Count));
            Read(A, From, To, RunA);
            Read(B, From, To, RunB);
            Target.WaveRunsChange(
                From - First + 1, To - First + 1, ReportEvery,
                [&](std::int32_t Position, std::span<const std::int16_t>,
                    std::span<std::int16_t> Out) { Overlap(Position + First - 1, From, Out); });
            if (To % ReportEvery == 0)
                ProgressFrm->SetCurrentProgress(
                    Single(Done + Share * static_cast<double>(To) / static_cast<double>(Count)));
        }
    }

  private:
    static void Read(BlockCarrBuffClass& Source, std::int32_t From, std::int32_t To,
                     std::vector<std::int16_t>& Run) {
        Run.resize(static_cast<std::size_t>(To - From) + 1);
        Source.WaveRunsRead(From, To, ReportEvery,
                            [&](std::int32_t Position, std::span<const std::int16_t> In) {
                                std::copy(In.begin(), In.end(), Run.begin() + (Position - From));
                            });
    }
    /// Sample `Position` of the overlap and those after it; the runs begin at `From`.
    void Overlap(std::int32_t Position, std::int32_t From, std::span<std::int16_t> Out) const {
        const auto Offset = static_cast<std::size_t>(Position - From);
        const auto A = std::span(RunA).subspan(Offset, Out.size());
        const auto B = std::span(RunB).subspan(Offset, Out.size());
        if (TransOpn == LapSmooth)
            LapSmoothRun(A, B, Out, Position, Count, Max);
        else
            LapSimpleRun(A, B, Out, Max);
    }

    std::int32_t Count;
    std::int32_t First; ///< first sample of the overlap that the document gets
    std::int32_t TransOpn;
    std::int32_t Max;
    std::vector<std::int16_t> RunA;
    std::vector<std::int16_t> RunB;
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
    WaveStore->WaveCollectData(Where.Start, Middle - 1, WorkChn, AL, AR);
    WaveStore->WaveCollectData(Middle, AddLong(Middle, Length) - 1, WorkChn, BL, BR);
    if (!DiskSpaceGuard(MulLong(Length, WorkChn == 0 ? 4 : 2)))
        return;

    const ProgressScope Progress(BarColorLap);
    const double Share = WorkChn == 0 ? 0.5 : 1.0;
    BlockCarrBuffClass NewL;
    BlockCarrBuffClass NewR;
    LapRuns Runs(Where, TransOpn, WaveStore->WavFmtBits);
    if (WorkChn != 2)
        Runs.Make(*AL, *BL, NewL, 0.0, Share);
    if (WorkChn != 1)
        Runs.Make(*AR, *BR, NewR, 1.0 - Share, Share);
    const std::int32_t Start = std::max(Where.Start, 1);
    WaveStore->WaveDataExchange(Start, WorkChn, Middle + Length - Start, &NewL, &NewR, Name, true);
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

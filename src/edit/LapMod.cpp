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
#include "storage/CarrierWalk.h"
#include "storage/DiskSpaceGuardMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

namespace {

using RunIn = std::span<const std::int16_t>;

constexpr std::uint32_t BarColorLap = 0x808000;
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

/// How the overlap of two stretches of `Count` samples is made, from the first stretch without its
/// `Before` first samples.
RunMerge OverlapOf(std::int32_t TransOpn, std::int32_t Count, std::int32_t Before,
                   std::int32_t Bits) {
    const std::int32_t Max = SampleHigh(Bits);
    if (TransOpn == LapSmooth)
        return [=](std::int32_t First, RunIn A, RunIn B, std::span<std::int16_t> Out) {
            LapSmoothRun(A, B, Out, First + Before, Count, Max);
        };
    return [=](std::int32_t, RunIn A, RunIn B, std::span<std::int16_t> Out) {
        SumRun(A, B, Out, 1, -Max, Max);
    };
}

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
    PassProgress Progress(1.0, ReportEvery);
    // What would come to lie before the document is not made.
    const std::int32_t Before = Start - Where.Start;
    const RunMerge Overlap = OverlapOf(TransOpn, Length, Before, WaveStore->WavFmtBits);
    std::vector<ChannelMerge> Channels;
    if (WorkChn != 2)
        Channels.push_back({AL.get(), BL.get(), Overlap});
    if (WorkChn != 1)
        Channels.push_back({AR.get(), BR.get(), Overlap});
    MergeSideBySide(Channels, Before,
                    [&](std::int32_t Position) { Progress.Reached(Position + Before, Length); });
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

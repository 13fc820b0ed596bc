#include "edit/PasteMixing.h"

#include "base/ProgressReport.h"
#include "base/SampleRuns.h"
#include "edit/PasteKernels.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr std::int32_t RunLength = 32768;        ///< small enough for the processor's cache
constexpr std::int32_t ReportEvery = 100000;     ///< samples between two moves of the bar
constexpr std::uint32_t BarColorPaste = 8421376; // dark cyan

class Mixer {
  public:
    Mixer(PasteMixMode UsedMode, double UsedStep, std::int32_t Bits)
        : Mode(UsedMode), Progress(UsedStep, ReportEvery), MaxSample(PasteMaxSample(Bits)) {}

    void FindPeak(BlockCarrBuffClass& Clip) {
        const std::int32_t Total = Clip.WaveINos;
        Clip.WaveRunsRead(
            1, Total, RunLength, [&](std::int32_t First, std::span<const std::int16_t> In) {
                Peak = std::max(Peak, PeakOf(In));
                Progress.Reached(First + static_cast<std::int32_t>(In.size()) - 1, Total);
            });
        Progress.NextPass();
    }

    void Change(BlockCarrBuffClass& Clip, BlockCarrBuffClass& Doc) {
        const std::int32_t Total = std::min(Clip.WaveINos, Doc.WaveINos);
        Clip.WaveRunsChange(
            1, Total, RunLength,
            [&](std::int32_t First, std::span<const std::int16_t> In, std::span<std::int16_t> Out) {
                ChangeRun(Doc, Total, First, In, Out);
                Progress.Reached(First + static_cast<std::int32_t>(In.size()) - 1, Total);
            });
        Progress.NextPass();
    }

  private:
    void ChangeRun(BlockCarrBuffClass& Doc, std::int32_t Total, std::int32_t First,
                   std::span<const std::int16_t> In, std::span<std::int16_t> Out) const {
        const auto Count = static_cast<std::int32_t>(In.size());
        Doc.WaveRunsRead(First, First + Count - 1, Count,
                         [&](std::int32_t Pos, std::span<const std::int16_t> DocRun) {
                             const auto Offset = static_cast<std::size_t>(Pos - First);
                             const auto ClipPart = In.subspan(Offset, DocRun.size());
                             const auto OutPart = Out.subspan(Offset, DocRun.size());
                             switch (Mode) {
                             case PasteMixMode::Mix:
                                 SumRun(ClipPart, DocRun, OutPart, 1, -MaxSample, MaxSample);
                                 break;
                             case PasteMixMode::Modulate:
                                 ModulateRun(ClipPart, DocRun, OutPart, MaxSample);
                                 break;
                             case PasteMixMode::CrossFade:
                                 CrossFadeRun(ClipPart, DocRun, OutPart, Pos, Total, MaxSample);
                                 break;
                             }
                         });
    }

    PasteMixMode Mode;
    PassProgress Progress;
    std::int32_t MaxSample;
    std::int32_t Peak = 0;
};

} // namespace

void PasteMixing(PasteMixMode Mode, std::int32_t WorkChn, std::int32_t Bits,
                 BlockCarrBuffClass* ClipL, BlockCarrBuffClass* ClipR, BlockCarrBuffClass* DocL,
                 BlockCarrBuffClass* DocR) {
    const ProgressScope Progress(BarColorPaste);
    const bool Left = WorkChn != 2;
    const bool Right = WorkChn != 1;
    const double WholeStep = WorkChn == 0 ? 0.5 : 1.0;
    Mixer Work(Mode, Mode == PasteMixMode::Modulate ? WholeStep / 2 : WholeStep, Bits);
    if (Mode == PasteMixMode::Modulate) {
        if (Left)
            Work.FindPeak(*ClipL);
        if (Right)
            Work.FindPeak(*ClipR);
    }
    if (Left)
        Work.Change(*ClipL, *DocL);
    if (Right)
        Work.Change(*ClipR, *DocR);
}

} // namespace quoril

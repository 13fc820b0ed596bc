#include "edit/PasteMixing.h"

#include "base/Arithmetic.h"
#include "base/ProgressReport.h"
#include "edit/PasteKernels.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr std::int32_t RunLength = 100000;
constexpr std::uint32_t BarColorPaste = 8421376; // dark cyan

class Mixer {
  public:
    Mixer(PasteMixMode UsedMode, double UsedStep, std::int32_t Bits)
        : Mode(UsedMode), Step(UsedStep), MaxSample(PasteMaxSample(Bits)) {}

    void FindPeak(BlockCarrBuffClass& Clip) {
        const std::int32_t Total = Clip.WaveINos;
        InRuns(Total, [&](std::int32_t From, std::int32_t To) {
            Clip.WaveRunsRead(From, To, RunLength,
                              [this](std::int32_t, std::span<const std::int16_t> In) {
                                  Peak = std::max(Peak, PeakOfRun(In));
                              });
        });
    }

    void Change(BlockCarrBuffClass& Clip, BlockCarrBuffClass& Doc) {
        const std::int32_t Total = std::min(Clip.WaveINos, Doc.WaveINos);
        InRuns(Total, [&](std::int32_t From, std::int32_t To) {
            Clip.WaveRunsChange(
                From, To, RunLength,
                [&](std::int32_t First, std::span<const std::int16_t> In,
                    std::span<std::int16_t> Out) { ChangeRun(Doc, Total, First, In, Out); });
        });
    }

  private:
    /// Events are processed between the runs only.
    template <class WorkType>
    void InRuns(std::int32_t Total, const WorkType& Work) {
        for (std::int64_t From = 1; From <= Total; From += RunLength) {
            const std::int64_t To = std::min<std::int64_t>(From + RunLength - 1, Total);
            Work(static_cast<std::int32_t>(From), static_cast<std::int32_t>(To));
            if (To % RunLength == 0)
                ProgressFrm->SetCurrentProgress(
                    Single(Running + Step * static_cast<double>(To) / Total));
        }
        Running += Step;
    }

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
                                 MixRun(ClipPart, DocRun, OutPart, MaxSample);
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
    double Step;
    std::int32_t MaxSample;
    double Running = 0;
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

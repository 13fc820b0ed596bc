#include "edit/PasteMixing.h"

#include "base/ProgressReport.h"
#include "base/SampleRuns.h"
#include "edit/PasteKernels.h"
#include "storage/CarrierWalk.h"

#include <algorithm>
#include <vector>

namespace quoril {

namespace {

constexpr std::int32_t ReportEvery = 100000;     ///< samples between two moves of the bar
constexpr std::uint32_t BarColorPaste = 8421376; // dark cyan

using RunIn = std::span<const std::int16_t>;
using RunOut = std::span<std::int16_t>;

/// What is made of a clip's run and the document's, in a channel of `Total` samples.
RunMerge MergeOf(PasteMixMode Mode, std::int32_t Total, std::int32_t MaxSample) {
    switch (Mode) {
    case PasteMixMode::Mix:
        return [=](std::int32_t, RunIn Clip, RunIn Doc, RunOut Out) {
            SumRun(Clip, Doc, Out, 1, -MaxSample, MaxSample);
        };
    case PasteMixMode::Modulate:
        return [=](std::int32_t, RunIn Clip, RunIn Doc, RunOut Out) {
            ModulateRun(Clip, Doc, Out, MaxSample);
        };
    default:
        return [=](std::int32_t First, RunIn Clip, RunIn Doc, RunOut Out) {
            CrossFadeRun(Clip, Doc, Out, First, Total, MaxSample);
        };
    }
}

} // namespace

void PasteMixing(PasteMixMode Mode, std::int32_t WorkChn, std::int32_t Bits,
                 BlockCarrBuffClass* ClipL, BlockCarrBuffClass* ClipR,
                 const BlockCarrBuffClass* DocL, const BlockCarrBuffClass* DocR) {
    const ProgressScope Window(BarColorPaste);
    PassProgress Progress(1.0, ReportEvery);
    std::vector<ChannelMerge> Channels;
    std::int32_t Longest = 0;
    const auto Add = [&](BlockCarrBuffClass* Clip, const BlockCarrBuffClass* Doc) {
        const std::int32_t Total = std::min(Clip->WaveINos, Doc->WaveINos);
        Channels.push_back({Clip, Doc, MergeOf(Mode, Total, PasteMaxSample(Bits))});
        Longest = std::max(Longest, Total);
    };
    if (WorkChn != 2)
        Add(ClipL, DocL);
    if (WorkChn != 1)
        Add(ClipR, DocR);
    MergeSideBySide(Channels, 0,
                    [&](std::int32_t Position) { Progress.Reached(Position, Longest); });
}

} // namespace quoril

#include "effects/BandPreview.h"

#include "effects/BandFilter.h"
#include "playback/PlayMod.h"
#include "selection/SelectionMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <cstddef>
#include <exception>

namespace quoril {

namespace {

constexpr std::int32_t PreviewSeconds = 2;

void StopPlaying() noexcept {
    try {
        if (PlayIsOn())
            PlayCommand(PlayCodeStop, 0);
    } catch (const std::exception&) {
        // A player that does not answer plays nothing.
        return;
    }
}

} // namespace

BandPreview::~BandPreview() {
    StopPlaying();
}

bool BandPreview::Collect() {
    StopPlaying();
    if (PreviewReady)
        return true;
    if (!ConfirmSelection(From, To, WorkChn, NeedTwoPoints, "Band split preview"))
        return false;
    To = static_cast<std::int32_t>(std::min<std::int64_t>(
        To, From + std::int64_t{PreviewSeconds} * WaveStore->WavFmtFreq - 1));
    WaveStore->WaveCollectData(From, To, WorkChn, PreviewL, PreviewR);
    PreviewReady = true;
    return true;
}

void BandPreview::Split(std::int32_t NoOfBands) {
    const auto Bands = [&](BlockCarrBuffClass& Source) {
        return BandSplit(Source, WaveStore->WavFmtFreq, WaveStore->WavFmtBits, NoOfBands);
    };
    BandCarrL = WorkChn == 2 ? Carriers() : Bands(*PreviewL);
    BandCarrR = WorkChn == 1 ? Carriers() : Bands(*PreviewR);
    BandsReady = true;
}

void BandPreview::Audition(std::int32_t Band, std::int32_t NoOfBands) {
    if (!Collect())
        return;
    if (!BandsReady)
        Split(NoOfBands);
    const auto Index = static_cast<std::size_t>(Band) - 1;
    // One channel alone is played from the left place, whichever it is.
    PlayBuffL = CarrierCopy(*(WorkChn == 2 ? BandCarrR : BandCarrL)[Index]);
    PlayBuffR.reset();
    if (WorkChn == 0)
        PlayBuffR = CarrierCopy(*BandCarrR[Index]);
    PlayBaseSample = From;
    PlayEndSample = To;
    PlayBits = WaveStore->WavFmtBits;
    PlayFreq = WaveStore->WavFmtFreq;
    PlayChannels = WorkChn == 0 ? WaveStore->WavFmtChannel : 1;
    PlayWorkChn = WorkChn;
    PlayCommand(PlayPrepared, 0);
}

} // namespace quoril

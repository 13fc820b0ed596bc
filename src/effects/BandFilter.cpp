#include "effects/BandFilter.h"

#include "base/Arithmetic.h"
#include "effects/BandLevels.h"

#include <algorithm>
#include <utility>

namespace quoril {

std::vector<BandCascade::Band> CascadeBands(const BandSet& Set, std::int32_t WavFmtFreq) {
    const std::vector<std::int32_t> Freqs = BandFrequencies(Set.NoOfBands);
    std::vector<BandCascade::Band> Bands;
    for (std::size_t Band = 1; Band < Set.Bands.size(); ++Band)
        Bands.push_back({BandHalfWindow(WavFmtFreq, Freqs[Band]), BandGain(Set.Bands[Band])});
    return Bands;
}

RunStream BandEqualize(const BandSet& Set, std::int32_t WavFmtFreq, std::int32_t WavFmtBits,
                       std::int32_t Length) {
    auto Cascade = std::make_shared<BandCascade>(CascadeBands(Set, WavFmtFreq), Length,
                                                 SampleHigh(WavFmtBits));
    return [Cascade](RunIn In, CarrierWriter& Out) {
        Cascade->Push(In, [&Out](RunIn Mixed) { Out.Put(Mixed); });
    };
}

std::vector<std::unique_ptr<BlockCarrBuffClass>> BandSplit(BlockCarrBuffClass& Source,
                                                           std::int32_t WavFmtFreq,
                                                           std::int32_t WavFmtBits,
                                                           std::int32_t NoOfBands) {
    const std::int32_t Length = Source.WaveINos;
    std::vector<std::int16_t> Signal;
    Signal.reserve(static_cast<std::size_t>(Length));
    Source.WaveRunsRead(1, Length, std::max(Length, 1), [&Signal](std::int32_t, RunIn In) {
        Signal.insert(Signal.end(), In.begin(), In.end());
    });
    BandSet Set;
    BandSetResize(Set, NoOfBands);
    std::vector<std::unique_ptr<BlockCarrBuffClass>> BandCarr;
    for (std::int32_t Band = 1; Band <= NoOfBands; ++Band)
        BandCarr.push_back(SilentCarrier(Length));
    const std::vector<BandCascade::Band> Bands = CascadeBands(Set, WavFmtFreq);
    for (std::size_t Band = Bands.size(); Band-- > 0;) {
        const std::int32_t Half = Bands[Band].Half;
        if (Half <= 0 || Half >= Length)
            continue;
        // What is added to silence at full gain is the band's content.
        std::vector<std::int16_t> Content(Signal.size(), 0);
        BandStage(Half, Length, 1.0F, SampleHigh(WavFmtBits)).Pass(Signal, Content.data());
        CarrierWriter Out(Length);
        Out.Put(Content);
        BandCarr[Band] = Out.Finish();
    }
    return BandCarr;
}

} // namespace quoril

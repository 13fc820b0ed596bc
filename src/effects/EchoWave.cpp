#include "effects/EchoWave.h"

#include "base/Arithmetic.h"
#include "base/Random.h"
#include "effects/EchoStream.h"

#include <algorithm>
#include <memory>

namespace quoril {

namespace {

/// By how much the repeat `i` comes later than the first one, without what varies.
double LaterThanFirst(const EchoParamsRec& Params, std::int32_t i) {
    return static_cast<double>(Params.NextDelays) * (i - 1);
}

double Sign(double Value) {
    return Value > 0 ? 1 : Value < 0 ? -1 : 0;
}

} // namespace

std::vector<EchoTap> EchoTaps(const EchoParamsRec& Params, std::int32_t WavFmtFreq) {
    const auto First = static_cast<double>(Params.FirstDelay);
    const auto Next = static_cast<double>(Params.NextDelays);
    std::vector<EchoTap> Taps;
    float Gain = 1;
    for (std::int32_t i = 1; i <= Params.Repeats; ++i) {
        float Delay = Params.FirstDelay;
        if (i > 1) {
            const double Side = Sign(RandomDraw() - 0.5);
            const double Part = RandomDraw();
            Delay = Single(First + LaterThanFirst(Params, i) +
                           Side * Part * (Params.DelayVariation / 100.0) * Next);
        }
        Gain = Single(static_cast<double>(Gain) * (Params.VolReduceAll / 100.0));
        Taps.push_back({std::max(RoundToLong(static_cast<double>(Delay) * WavFmtFreq), 0), Gain});
    }
    return Taps;
}

std::int32_t EchoLength(const std::vector<EchoTap>& Taps, std::int32_t Length) {
    std::int32_t Longest = 0;
    for (const EchoTap& Each : Taps)
        Longest = std::max(Longest, AddLong(Length, Each.Offset));
    return Longest;
}

std::int64_t EchoSpace(const EchoParamsRec& Params, std::int32_t WavFmtFreq, std::int32_t Length) {
    double Delay = static_cast<double>(Params.FirstDelay);
    if (Params.Repeats > 1)
        Delay += LaterThanFirst(Params, Params.Repeats) +
                 Params.DelayVariation / 100.0 * 0.5 * static_cast<double>(Params.NextDelays);
    return Length + static_cast<std::int64_t>(RoundEven(Delay * WavFmtFreq));
}

BandSet EchoBandSet(std::int32_t VolReduceHiFi) {
    const std::int32_t Highest =
        RoundToLong(VolReduceHiFi < 100 ? VolReduceHiFi / 2.0 - 50 : (VolReduceHiFi - 100) / 6.0);
    return {{0, 0, RoundToLong(Highest / 4.0), RoundToLong(Highest / 2.0), Highest}, 4};
}

RunStream EchoWave(const EchoParamsRec& Params, const std::vector<EchoTap>& Taps,
                   std::int32_t WavFmtFreq, std::int32_t WavFmtBits, std::int32_t Length) {
    std::vector<BandCascade::Band> Bands;
    if (Params.VolReduceHiFi != 100)
        Bands = CascadeBands(EchoBandSet(Params.VolReduceHiFi), WavFmtFreq);
    auto Echo = std::make_shared<EchoStream>(Taps, Bands, WavFmtBits, Length);
    return [Echo](RunIn In, CarrierWriter& Out) {
        Out.Make(Echo->Take(In), [&](std::size_t, RunOut Piece) { Echo->Fill(Piece); });
    };
}

} // namespace quoril

#include "effects/LiteralEcho.h"

#include <algorithm>
#include <cmath>

namespace quoril::test {

namespace {

double Limited(double Value, std::int32_t WavFmtBits) {
    const double Low = WavFmtBits == 8 ? -128 : -32768;
    const double High = WavFmtBits == 8 ? 127 : 32767;
    if (Value > High)
        return High;
    if (Value < Low)
        return Low;
    return Value;
}

} // namespace

LiteralWave LiteralEcho(const LiteralWave& Source, std::int32_t WavFmtFreq, std::int32_t WavFmtBits,
                        const LiteralEchoParams& Params, const std::function<double()>& Draw) {
    const std::size_t L = Source.size();
    std::size_t M = 0;
    float g = 1.0F;
    std::vector<std::size_t> EchoOffset{0};
    std::vector<float> EchoGain{0};
    for (int i = 1; i <= Params.Repeats; ++i) {
        float Delay = Params.FirstDelay;
        if (i > 1) {
            const double r1 = Draw();
            const double r2 = Draw();
            const double s = r1 - 0.5;
            const int Sign = s > 0 ? 1 : s < 0 ? -1 : 0;
            const double Next = static_cast<double>(Params.NextDelays);
            Delay = static_cast<float>(static_cast<double>(Params.FirstDelay) + Next * (i - 1) +
                                       Sign * r2 * (Params.DelayVariation / 100.0) * Next);
        }
        const double Offset = std::nearbyint(static_cast<double>(Delay) * WavFmtFreq);
        EchoOffset.push_back(Offset < 0 ? 0 : static_cast<std::size_t>(Offset));
        M = std::max(M, L + EchoOffset.back());
        g = static_cast<float>(static_cast<double>(g) * (Params.VolReduceAll / 100.0));
        EchoGain.push_back(g);
    }
    LiteralWave Result(M, 0);
    std::vector<std::int32_t> Bands(5, 0);
    const auto Rounded = [](double Value) {
        return static_cast<std::int32_t>(std::nearbyint(Value));
    };
    if (Params.VolReduceHiFi < 100)
        Bands[4] = Rounded(Params.VolReduceHiFi / 2.0 - 50);
    else
        Bands[4] = Rounded((Params.VolReduceHiFi - 100) / 6.0);
    Bands[3] = Rounded(Bands[4] / 2.0);
    Bands[2] = Rounded(Bands[4] / 4.0);
    LiteralWave Repeat = Source;
    for (int i = 1; i <= Params.Repeats; ++i) {
        const auto n = static_cast<std::size_t>(i);
        if (Params.VolReduceHiFi != 100)
            Repeat = LiteralEqualize(Repeat, WavFmtFreq, WavFmtBits, Bands);
        for (std::size_t j = 0; j < L; ++j) {
            const std::size_t p = j + EchoOffset[n];
            const double v =
                std::nearbyint(static_cast<double>(EchoGain[n]) * Repeat[j] + Result[p]);
            Result[p] = static_cast<std::int16_t>(Limited(v, WavFmtBits));
        }
    }
    return Result;
}

LiteralWave LiteralDryMix(const LiteralWave& Wet, const LiteralWave& Dry, std::int32_t WavFmtBits) {
    LiteralWave Result = Wet;
    if (Result.size() < Dry.size())
        Result.resize(Dry.size(), 0);
    for (std::size_t j = 0; j < Dry.size(); ++j)
        Result[j] = static_cast<std::int16_t>(
            Limited(static_cast<double>(std::int32_t{Dry[j]} + Result[j]), WavFmtBits));
    return Result;
}

} // namespace quoril::test

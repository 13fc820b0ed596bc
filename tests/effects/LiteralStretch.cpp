#include "effects/LiteralStretch.h"

#include <cmath>

namespace quoril::test {

PlainWave LiteralStretch(const PlainWave& Source, std::int32_t WavFmtBits, double StartPercent,
                         double EndPercent) {
    if (Source.size() < 3)
        return Source;
    const double Low = WavFmtBits == 8 ? -128 : -32768;
    const double High = WavFmtBits == 8 ? 127 : 32767;
    const auto L = static_cast<std::int64_t>(Source.size());
    const auto s = [&](std::int64_t Position) {
        return static_cast<double>(Source.at(static_cast<std::size_t>(Position - 1)));
    };
    const double StepStart = 1 / (StartPercent / 100);
    const double StepEnd = 1 / (EndPercent / 100);
    const double Slope = (StepEnd - StepStart) / static_cast<double>(L);

    double W0[101];
    double W1[101];
    double W2[101];
    double W3[101];
    for (int j = 0; j <= 100; ++j) {
        const double t = (100 - j) / 100.0;
        W0[j] = std::pow(t, 3);
        W1[j] = 3 * std::pow(t, 2) * (1 - t);
        W2[j] = 3 * t * std::pow(1 - t, 2);
        W3[j] = std::pow(1 - t, 3);
    }

    PlainWave Result;
    double P = 1.0;
    double a = 0;
    double b = s(1);
    double c = s(1);
    double d = s(2);
    const auto Segment = [&](std::int64_t k, double New) {
        const double Step = Slope * static_cast<double>(k) + StepStart;
        a = b;
        b = c;
        c = d;
        d = New;
        const double C1 = b + (c - a) / 5;
        const double C2 = c + (b - d) / 5;
        do {
            double j = std::nearbyint((P - static_cast<double>(k)) * 100);
            if (j < 0)
                j = 0;
            if (j > 100)
                j = 100;
            const int i = static_cast<int>(j);
            double v = std::nearbyint(b * W0[i] + C1 * W1[i] + C2 * W2[i] + c * W3[i]);
            if (v > High)
                v = High;
            if (v < Low)
                v = Low;
            Result.push_back(static_cast<std::int16_t>(v));
            P = P + Step;
        } while (P <= static_cast<double>(k + 1));
    };
    for (std::int64_t k = 1; k <= L - 2; ++k) {
        Segment(k, s(k + 2));
        if (P > static_cast<double>(k + 2))
            k = static_cast<std::int64_t>(std::floor(P)) - 1;
    }
    if (P < static_cast<double>(L))
        Segment(L - 1, s(L));
    Result.push_back(0);
    return Result;
}

} // namespace quoril::test

#include "effects/LiteralFormats.h"

#include <cmath>

namespace quoril::test {

namespace {

using Channel = std::vector<std::int16_t>;

/// The nearest whole number within a range, and of two the even one.
std::int16_t Rounded(double Value, double Low, double High) {
    Value = std::nearbyint(Value);
    if (Value < Low)
        Value = Low;
    if (Value > High)
        Value = High;
    return static_cast<std::int16_t>(Value);
}

double LowOf(std::int32_t Bits) {
    return Bits == 8 ? -128 : -32768;
}
double HighOf(std::int32_t Bits) {
    return Bits == 8 ? 127 : 32767;
}

/// What a read position that goes through a channel in equal steps makes of it.
Channel Resampled(const Channel& Source, std::int32_t Bits, double Percent) {
    const auto L = static_cast<std::int32_t>(Source.size());
    if (L < 3)
        return Source;
    const auto s = [&](std::int32_t Position) {
        return static_cast<double>(Source.at(static_cast<std::size_t>(Position) - 1));
    };
    const double Step = 1 / (Percent / 100);
    Channel Result;
    double P = 1;
    double a = 0;
    double b = s(1);
    double c = s(1);
    double d = s(2);
    const auto Segment = [&](std::int32_t k, double Newest) {
        a = b;
        b = c;
        c = d;
        d = Newest;
        const double C1 = b + (c - a) / 5;
        const double C2 = c + (b - d) / 5;
        do {
            double j = std::nearbyint((P - k) * 100);
            j = j < 0 ? 0 : j > 100 ? 100 : j;
            const double t = (100 - j) / 100;
            const double W0 = t * t * t;
            const double W1 = 3 * (t * t) * (1 - t);
            const double W2 = 3 * t * ((1 - t) * (1 - t));
            const double W3 = (1 - t) * (1 - t) * (1 - t);
            Result.push_back(
                Rounded(b * W0 + C1 * W1 + C2 * W2 + c * W3, LowOf(Bits), HighOf(Bits)));
            P += Step;
        } while (P <= k + 1);
    };
    for (std::int32_t k = 1; k <= L - 2; ++k) {
        Segment(k, s(k + 2));
        if (P > k + 2)
            k = P > L ? L : static_cast<std::int32_t>(std::floor(P)) - 1;
    }
    if (P < L)
        Segment(L - 1, s(L));
    Result.push_back(0);
    return Result;
}

} // namespace

PlainSound InBits(const PlainSound& Sound, std::int32_t Bits) {
    PlainSound Made = Sound;
    Made.Format.Bits = Bits;
    for (Channel& Each : Made.Channels)
        for (std::int16_t& Sample : Each)
            if (Sound.Format.Bits == 16 && Bits == 8)
                Sample = Rounded(Sample / 256.0, -1000, 127);
            else if (Sound.Format.Bits == 8 && Bits == 16)
                Sample = Rounded(Sample * 256.0, -32768, 32767);
    return Made;
}

PlainSound InStereo(const PlainSound& Sound) {
    PlainSound Made = Sound;
    Made.Format.Channel = 2;
    Made.Channels[1] = Sound.Channels[0];
    return Made;
}

PlainSound InMono(const PlainSound& Sound, std::int32_t Way) {
    PlainSound Made = Sound;
    Made.Format.Channel = 1;
    Made.Channels[1].clear();
    if (Way == 1)
        Made.Channels[0] = Sound.Channels[1];
    if (Way == 2)
        for (std::size_t i = 0; i < Made.Channels[0].size(); ++i)
            Made.Channels[0][i] = Rounded((Sound.Channels[0][i] + Sound.Channels[1].at(i)) * 0.666,
                                          LowOf(Sound.Format.Bits), HighOf(Sound.Format.Bits));
    return Made;
}

PlainSound AtRate(const PlainSound& Sound, std::int32_t Rate) {
    PlainSound Made = Sound;
    Made.Format.Freq = Rate;
    for (Channel& Each : Made.Channels)
        Each =
            Resampled(Each, Sound.Format.Bits, static_cast<double>(Rate) * 100 / Sound.Format.Freq);
    return Made;
}

} // namespace quoril::test

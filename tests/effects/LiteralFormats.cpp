#include "effects/LiteralFormats.h"

#include "effects/LiteralStretch.h"

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
    const double Percent = static_cast<double>(Rate) * 100 / Sound.Format.Freq;
    for (Channel& Each : Made.Channels)
        Each = LiteralStretch(Each, Sound.Format.Bits, Percent, Percent);
    return Made;
}

} // namespace quoril::test

// The generators, the modulation by a tone and the shortening of silence, written down step by step
// on whole arrays: what the fast routines are compared with. They share no code with these.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace quoril::test {

/// Samples of one channel; the first one has the index 0.
using LiteralWave = std::vector<std::int16_t>;

LiteralWave LiteralSine(std::int32_t Samples, std::int32_t Amplitude, std::int32_t StartHz,
                        std::int32_t EndHz, std::int32_t Rate);
/// `Draw` gives the next random number.
LiteralWave LiteralNoise(std::int32_t Samples, std::int32_t Bits,
                         const std::function<double()>& Draw);
LiteralWave LiteralModulate(const LiteralWave& Source, const LiteralWave& Tone, std::int32_t Bits);

struct LiteralSilenceRule {
    std::int32_t Rate = 44100;
    double SilenVol = 0.01; ///< a fraction
    double SilenDur = 0.1;
    std::int32_t SilenDelStyl = 1;
    double BalDur = 1;
    double BalPer = 0.3; ///< a fraction
    double BalMin = 0;
    double BalMax = 100;
};
LiteralWave LiteralDeleteSilence(const LiteralWave& Source, const LiteralSilenceRule& Rule);
/// Both sources have the same length.
void LiteralDeleteSilence(const LiteralWave& SourceL, const LiteralWave& SourceR,
                          const LiteralSilenceRule& Rule, LiteralWave& ResultL,
                          LiteralWave& ResultR);

} // namespace quoril::test

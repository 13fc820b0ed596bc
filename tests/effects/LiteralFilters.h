// The transform, the noise reduction and the equalizer, written down step by step on whole arrays,
// one sample at a time and without any thought of speed: what the fast routines are compared with.
// They share no code with these.
#pragma once

#include <cstdint>
#include <vector>

namespace quoril::test {

/// Samples of one channel; the first one has the index 0.
using LiteralWave = std::vector<std::int16_t>;

/// The real and the imaginary part of the unscaled spectrum, and the inverse of a real spectrum.
struct LiteralSpectrum {
    std::vector<float> Real;
    std::vector<float> Imag;
};
LiteralSpectrum LiteralForward(const std::vector<std::int16_t>& RealIn);
std::vector<std::int32_t> LiteralInverse(const std::vector<float>& RealIn);

/// The mean magnitude of the real part in each bin over whole frames.
std::vector<float> LiteralNoiseProfile(std::int32_t Frame, const LiteralWave& Source);
LiteralWave LiteralNoiseFilter(const std::vector<float>& Profile, std::int32_t Bits,
                               const LiteralWave& Source);

/// Band frequencies, from index 1.
std::vector<std::int32_t> LiteralFrequencies(std::int32_t NoOfBands);
/// `Bands` from index 1.
LiteralWave LiteralEqualize(const LiteralWave& Source, std::int32_t WavFmtFreq, std::int32_t Bits,
                            const std::vector<std::int32_t>& Bands);
/// One wave for each band, from index 1.
std::vector<LiteralWave> LiteralSplit(const LiteralWave& Source, std::int32_t WavFmtFreq,
                                      std::int32_t Bits, std::int32_t NoOfBands);

} // namespace quoril::test

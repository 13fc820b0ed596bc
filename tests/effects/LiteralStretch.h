// Stretching and the echo, written down step by step on whole arrays and without any thought of
// speed: what the fast routines are compared with. They share no code with these.
#pragma once

#include <cstdint>
#include <vector>

namespace quoril::test {

/// Samples of one channel; the first one has the index 0.
using PlainWave = std::vector<std::int16_t>;

PlainWave LiteralStretch(const PlainWave& Source, std::int32_t WavFmtBits, double StartPercent,
                         double EndPercent);

} // namespace quoril::test

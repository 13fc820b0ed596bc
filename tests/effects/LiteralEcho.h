// The echo, written down step by step on whole arrays and without any thought of speed: what the
// fast routines are compared with. It shares no code with these.
#pragma once

#include "effects/LiteralFilters.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace quoril::test {

struct LiteralEchoParams {
    float FirstDelay;
    float NextDelays;
    std::int32_t Repeats;
    std::int32_t VolReduceAll;
    std::int32_t DelayVariation;
    std::int32_t VolReduceHiFi;
};

/// The echo alone. `Draw` gives numbers from 0 to below 1.
LiteralWave LiteralEcho(const LiteralWave& Source, std::int32_t WavFmtFreq, std::int32_t WavFmtBits,
                        const LiteralEchoParams& Params, const std::function<double()>& Draw);
/// The echo and what it is added to: as many samples as the longer of the two.
LiteralWave LiteralDryMix(const LiteralWave& Wet, const LiteralWave& Dry, std::int32_t WavFmtBits);

} // namespace quoril::test

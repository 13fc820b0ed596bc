// Ever quieter copies of a signal, added to it later and later.
#pragma once

#include "effects/BandSet.h"
#include "effects/EchoParams.h"
#include "effects/EffectFrame.h"

#include <cstdint>
#include <vector>

namespace quoril {

/// One repeat: how many samples it comes later, and its volume.
struct EchoTap {
    std::int32_t Offset = 0;
    float Gain = 1;
};

/// The repeats of one channel. Their delays vary by numbers of the one random generator, two for
/// each repeat but the first. Fails with "Overflow" when a delay is beyond 32 bits.
[[nodiscard]] std::vector<EchoTap> EchoTaps(const EchoParamsRec& Params, std::int32_t WavFmtFreq);
/// How long a signal of `Length` samples is with its repeats; fails with "Overflow" beyond 32 bits.
[[nodiscard]] std::int32_t EchoLength(const std::vector<EchoTap>& Taps, std::int32_t Length);
/// Samples that are asked of the disk for a channel of `Length` samples with repeats that vary by
/// half of what they may.
[[nodiscard]] std::int64_t EchoSpace(const EchoParamsRec& Params, std::int32_t WavFmtFreq,
                                     std::int32_t Length);

/// The bands of the filter that each repeat passes once more than the one before, for a volume
/// reduction "Hi Fi" other than 100 percent.
[[nodiscard]] BandSet EchoBandSet(std::int32_t VolReduceHiFi);

/// What puts the repeats of the first `Length` samples of a channel onto it, run by run. As many
/// samples come out as go in; what the repeats take behind the end must go in as silence.
[[nodiscard]] RunStream EchoWave(const EchoParamsRec& Params, const std::vector<EchoTap>& Taps,
                                 std::int32_t WavFmtFreq, std::int32_t WavFmtBits,
                                 std::int32_t Length);

} // namespace quoril

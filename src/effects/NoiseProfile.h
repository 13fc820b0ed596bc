// What was learnt about a noise: how loud it is in each bin of the transform.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <vector>

namespace quoril {

inline constexpr std::int32_t NoiseFrameLength = 1024;

// The profile of the process.
extern std::int32_t NoiseFrame;         ///< samples of a frame; 0 until a profile is finished
extern std::int32_t NoiseBits;          ///< depth of the noise
extern std::int32_t NoiseFreq;          ///< its rate in Hz
extern std::vector<float> NoiseProfile; ///< mean magnitude of the real part of each bin; bin 0 is 0

/// Learns the noise from all whole frames of `Source`, of `Frame` samples each, a power of two.
/// Fails without a whole frame; after a failure there is no profile.
void NoiseDefine(std::int32_t Frame, BlockCarrBuffClass& Source, std::int32_t WavFmtBits,
                 std::int32_t WavFmtFreq);
/// Whether there is a profile of that format and frame.
[[nodiscard]] bool NoiseDefined(std::int32_t WavFmtBits, std::int32_t WavFmtFreq,
                                std::int32_t Frame) noexcept;

} // namespace quoril

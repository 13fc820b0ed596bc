// A signal made longer or shorter: a read position walks through it in steps that may grow or
// shrink on the way, and a curve between neighbouring samples tells what stands there. Length and
// pitch change together; nothing is filtered.
#pragma once

#include "effects/EffectFrame.h"

#include <cstdint>

namespace quoril {

/// What stretches a channel of `Length` samples, for a StreamPass. 100 percent leave the length as
/// it is, 200 make it twice as long; between the two ends the step, their reciprocal, changes
/// evenly. One silent sample more than was computed comes out. Fewer than 3 samples come out as
/// they are. Fails with words when a percentage is not above 0.
[[nodiscard]] RunStream StretchWave(std::int32_t Length, std::int32_t WavFmtBits,
                                    double StartPercent, double EndPercent);

} // namespace quoril

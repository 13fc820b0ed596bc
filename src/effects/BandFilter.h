// The equalizer's arithmetic on channels: all bands mixed anew, or each for itself.
#pragma once

#include "effects/BandCascade.h"
#include "effects/BandSet.h"
#include "effects/EffectFrame.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quoril {

/// The bands of a set at a rate, lowest first.
[[nodiscard]] std::vector<BandCascade::Band> CascadeBands(const BandSet& Set,
                                                          std::int32_t WavFmtFreq);

/// What equalizes a channel of `Length` samples, run by run.
[[nodiscard]] RunStream BandEqualize(const BandSet& Set, std::int32_t WavFmtFreq,
                                     std::int32_t WavFmtBits, std::int32_t Length);

/// One carrier for each band of the samples of `Source`, lowest first, all as long as it. For short
/// stretches: all samples are held in memory.
[[nodiscard]] std::vector<std::unique_ptr<BlockCarrBuffClass>> BandSplit(BlockCarrBuffClass& Source,
                                                                         std::int32_t WavFmtFreq,
                                                                         std::int32_t WavFmtBits,
                                                                         std::int32_t NoOfBands);

} // namespace quoril

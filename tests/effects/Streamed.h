// A stream fed from an array.
#pragma once

#include "effects/EffectFrame.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace quoril::test {

/// All that comes out when `In` goes in, in runs of `Run` samples.
inline std::vector<std::int16_t> Streamed(const RunStream& Stream,
                                          const std::vector<std::int16_t>& In, std::size_t Run) {
    CarrierWriter Out(static_cast<std::int32_t>(In.size()));
    for (std::size_t At = 0; At < In.size(); At += Run)
        Stream(std::span(In).subspan(At, std::min(Run, In.size() - At)), Out);
    Stream({}, Out);
    const auto Made = Out.Finish();
    std::vector<std::int16_t> All(static_cast<std::size_t>(Made->WaveINos));
    for (std::size_t i = 0; i < All.size(); ++i)
        All[i] = Made->WaveLR(static_cast<std::int32_t>(i) + 1);
    return All;
}

} // namespace quoril::test

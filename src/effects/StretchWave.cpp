#include "effects/StretchWave.h"

#include "base/Failure.h"
#include "effects/StretchWalk.h"

#include <cmath>
#include <memory>

namespace quoril {

namespace {

constexpr std::int32_t FewestStretched = 3;

double StepOf(double Percent) {
    const double Step = 1 / (Percent / 100);
    if (!(Percent > 0) || !std::isfinite(Step))
        throw Failure("The length would not be greater than 0.");
    return Step;
}

} // namespace

RunStream StretchWave(std::int32_t Length, std::int32_t WavFmtBits, double StartPercent,
                      double EndPercent) {
    const double StepStart = StepOf(StartPercent);
    const double StepEnd = StepOf(EndPercent);
    if (Length < FewestStretched)
        return [](RunIn In, CarrierWriter& Out) { Out.Put(In); };
    auto Walk = std::make_shared<StretchWalk>(Length, WavFmtBits, StepStart, StepEnd);
    return [Walk](RunIn In, CarrierWriter& Out) {
        constexpr std::int16_t Silent = 0;
        if (In.empty())
            Out.Put({&Silent, 1});
        Walk->Push(In, [&Out](std::size_t Count, const StretchWalk::Fill& Make) {
            Out.Make(Count, Make);
        });
    };
}

} // namespace quoril

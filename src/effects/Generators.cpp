#include "effects/Generators.h"

#include "base/Arithmetic.h"
#include "base/Random.h"
#include "base/RunSteps.h"
#include "base/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quoril {

namespace {

constexpr double Turn = 6.28318530717958; ///< of the phase, in radians

double RadiansPerSample(std::int32_t Hz, std::int32_t WavFmtFreq) noexcept {
    return Turn / (static_cast<double>(WavFmtFreq) / Hz);
}

// The loop takes plain pointers and limits and calls nothing, so that it is vectorised.
QUORIL_VECTORISED
void ToneLoop(const std::int16_t* In, const std::int16_t* Tone, std::int16_t* Out,
              std::size_t Count, double Full, double Low, double High) noexcept {
    for (std::size_t k = 0; k < Count; ++k) {
        double Value = static_cast<double>(Tone[k]) / Full * static_cast<double>(In[k]);
        Value = Value < Low ? Low : Value;
        Value = Value > High ? High : Value;
        Out[k] = static_cast<std::int16_t>(static_cast<std::int32_t>(RoundedWhole(Value)));
    }
}

} // namespace

SineMake::SineMake(std::int32_t Samples, std::int32_t Amplitude, std::int32_t StartHz,
                   std::int32_t EndHz, std::int32_t WavFmtFreq) noexcept
    : Height(Samples > 2 ? Amplitude : 0), Step(RadiansPerSample(StartHz, WavFmtFreq)),
      Ratio(std::pow(RadiansPerSample(EndHz, WavFmtFreq) / Step, 1.0 / std::max(Samples, 1))) {}

void SineMake::Fill(std::span<std::int16_t> Out) noexcept {
    for (std::int16_t& Sample : Out) {
        Sample = static_cast<std::int16_t>(RoundedLow(std::sin(Phase) * Height));
        Step *= Ratio;
        Phase += Step;
        if (Phase > Turn)
            Phase -= Turn;
    }
}

NoiseWalk::NoiseWalk(std::int32_t Bits) noexcept {
    constexpr double Part = static_cast<double>(0.3F);
    High = static_cast<std::int32_t>(RoundEven(SampleHigh(Bits) * Part));
    Low = static_cast<std::int32_t>(RoundEven(SampleLow(Bits) * Part));
}

void NoiseWalk::Fill(std::span<std::int16_t> Out) noexcept {
    for (std::int16_t& Sample : Out) {
        Value = std::clamp(RoundedLow((RandomDraw() - 0.5) * High * 2 + Value), Low, High);
        Sample = static_cast<std::int16_t>(Value);
    }
}

void ModulateByTone(std::span<const std::int16_t> In, std::span<const std::int16_t> Tone,
                    std::span<std::int16_t> Out, std::int32_t Bits) noexcept {
    ToneLoop(In.data(), Tone.data(), Out.data(), In.size(), FullTone, SampleLow(Bits),
             SampleHigh(Bits));
}

} // namespace quoril

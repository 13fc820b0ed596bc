// The arithmetic of the generators: a tone that sweeps from one frequency to another, a random
// walk, and the product of a tone and a sound.
#pragma once

#include <cstdint>
#include <span>

namespace quoril {

/// A sine whose frequency rises or falls by the same factor from each sample to the next, from
/// `StartHz` to `EndHz`. The phase is a running sum, so samples come only in their order.
class SineMake {
  public:
    /// The tone of `Samples` samples with values up to `Amplitude`, at most 32767. One of two
    /// samples or fewer is silent.
    SineMake(std::int32_t Samples, std::int32_t Amplitude, std::int32_t StartHz, std::int32_t EndHz,
             std::int32_t WavFmtFreq) noexcept;
    /// The next samples: round(sin(phase) x amplitude), ties to even.
    void Fill(std::span<std::int16_t> Out) noexcept;

  private:
    double Height;
    double Phase = 0; ///< radians
    double Step;      ///< to the phase of the next sample, before it is multiplied by Ratio
    double Ratio;
};

/// A walk of random steps from 0, each up to 0.3 of the full scale of a depth of 8 or 16 bits, that
/// stays within 0.3 of it. Draws from the generator of the process.
class NoiseWalk {
  public:
    explicit NoiseWalk(std::int32_t Bits) noexcept;
    /// The next samples.
    void Fill(std::span<std::int16_t> Out) noexcept;

  private:
    std::int32_t High;
    std::int32_t Low;
    std::int32_t Value = 0;
};

/// What the tone that a sound is multiplied by reaches at full strength.
inline constexpr std::int32_t FullTone = 15000;

/// Out[k] = round(Tone[k] / FullTone x In[k]) in double precision, limited to a depth of 8 or 16
/// bits. Tones lie within FullTone on both sides. `In` and `Out` are the same place or do not
/// overlap.
void ModulateByTone(std::span<const std::int16_t> In, std::span<const std::int16_t> Tone,
                    std::span<std::int16_t> Out, std::int32_t Bits) noexcept;

} // namespace quoril

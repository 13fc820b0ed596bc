#include "effects/NoiseProfile.h"

#include "base/Arithmetic.h"
#include "effects/FFTDorinMod.h"

#include <cmath>
#include <cstddef>

namespace quoril {

std::int32_t NoiseFrame = 0;
std::int32_t NoiseBits = 0;
std::int32_t NoiseFreq = 0;
std::vector<float> NoiseProfile;

namespace {

/// The magnitudes of all frames, bin by bin.
class Magnitudes {
  public:
    explicit Magnitudes(std::int32_t Frame)
        : Sums(static_cast<std::size_t>(Frame), 0.0), Real(Sums.size()) {}

    void Add(const std::vector<std::int16_t>& Samples) {
        FFTForward(Samples, Real, static_cast<std::int32_t>(Sums.size()));
        for (std::size_t Bin = 1; Bin < Sums.size(); ++Bin)
            Sums[Bin] += static_cast<double>(std::abs(Real[Bin]));
    }
    [[nodiscard]] std::vector<float> Mean(std::int32_t Frames) const {
        std::vector<float> Means(Sums.size(), 0.0F);
        for (std::size_t Bin = 1; Bin < Sums.size(); ++Bin)
            Means[Bin] = Single(Sums[Bin] / Frames);
        return Means;
    }

  private:
    std::vector<double> Sums;
    std::vector<float> Real;
};

} // namespace

void NoiseDefine(std::int32_t Frame, BlockCarrBuffClass& Source, std::int32_t WavFmtBits,
                 std::int32_t WavFmtFreq) {
    NoiseFrame = 0;
    NoiseBits = WavFmtBits;
    NoiseFreq = WavFmtFreq;
    const std::int32_t Frames = Source.WaveINos / Frame;
    if (Frames < 1)
        throw Failure("Division by zero");
    Magnitudes Learnt(Frame);
    std::vector<std::int16_t> Samples;
    Source.WaveRunsRead(1, Frames * Frame, Frame,
                        [&](std::int32_t, std::span<const std::int16_t> In) {
                            Samples.insert(Samples.end(), In.begin(), In.end());
                            const auto Length = static_cast<std::size_t>(Frame);
                            if (Samples.size() < Length)
                                return;
                            Learnt.Add(Samples);
                            Samples.erase(Samples.begin(), Samples.begin() + Frame);
                        });
    NoiseProfile = Learnt.Mean(Frames);
    NoiseFrame = Frame;
}

bool NoiseDefined(std::int32_t WavFmtBits, std::int32_t WavFmtFreq, std::int32_t Frame) noexcept {
    return NoiseFrame != 0 && NoiseBits == WavFmtBits && NoiseFreq == WavFmtFreq &&
           NoiseFrame == Frame;
}

} // namespace quoril

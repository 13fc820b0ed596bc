// The mix of a signal with its repeats, made while the signal passes by.
#pragma once

#include "effects/BandFilter.h"
#include "effects/DelayLine.h"
#include "effects/EchoWave.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quoril {

/// Of one channel. Each place of the mix gets the repeats in their order, each rounded and limited
/// to the depth's range, and then the signal itself.
class EchoStream {
  public:
    /// The first `Length` samples of the signal are repeated. With `Bands` each repeat is what
    /// these make of the one before.
    EchoStream(const std::vector<EchoTap>& Taps, std::span<const BandCascade::Band> Bands,
               std::int32_t Bits, std::int32_t Length);

    /// Takes the next samples of the signal, and tells how many of the mix are ready then. With the
    /// last one that is repeated all that were taken are.
    std::size_t Take(std::span<const std::int16_t> In);
    /// Makes the next samples of the mix, which must be ready.
    void Fill(std::span<std::int16_t> Out);

  private:
    struct Repeat {
        EchoTap Tap;
        BandCascade Cascade;
        DelayLine Line;        ///< what comes out of the cascade
        std::int64_t Fed = 0;  ///< samples that went into it
        std::int64_t Feed = 0; ///< samples that must have gone into it next
    };

    /// Has the repeats' lines reach as far as the mix up to the place `End` needs them.
    void Filter(std::int64_t End);
    void MixPiece(std::span<std::int16_t> Out);
    /// Gives up what no repeat needs any more.
    void Forget();

    bool Filtered;
    double Low;
    double High;
    std::int64_t Length;
    std::int64_t Behind = 0; ///< samples by which the mix stays behind what was taken
    std::vector<Repeat> Repeats;
    DelayLine Source;              ///< what is repeated
    std::vector<std::int16_t> Dry; ///< taken, and not yet mixed
    std::int64_t Taken = 0;
    std::int64_t Made = 0;
};

} // namespace quoril

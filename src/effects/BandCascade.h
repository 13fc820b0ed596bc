// The cascade of bands behind the equalizer, run on a signal that passes by piece by piece.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace quoril {

/// One band: takes the moving average out of a signal and hands it on, and adds the rest to a mix.
class BandStage {
  public:
    /// `Half` is half the window, at least 1 and less than `Length`, the samples of the signal.
    BandStage(std::int32_t Half, std::int32_t Length, float Gain, std::int32_t Limit);

    /// Takes the next samples of the signal, and leaves in their stead those of the average that
    /// can be told by then. The content of the same samples times the gain goes to `Mix`, which
    /// begins at the sample after `Done`. With the last sample all that is left is told.
    void Pass(std::vector<std::int16_t>& Samples, std::int16_t* Mix);

    /// Samples of the average that were told.
    [[nodiscard]] std::int32_t Done() const noexcept { return Computed; }

  private:
    /// Appends the samples, and what stands before the first and behind the last one.
    void Take(const std::vector<std::int16_t>& Samples);

    std::int32_t Half;
    std::int32_t Length;
    float Gain;
    std::int32_t Limit;
    std::int32_t Taken = 0;
    std::int32_t Computed = 0;
    std::int32_t Sum = 0;             ///< of the window before the next sample
    std::vector<std::int16_t> Signal; ///< from half a window before the next sample on
};

/// All bands of a signal, highest first. What goes in comes out later by the halves of all windows.
class BandCascade {
  public:
    /// A band is left out when half its window is not positive, or not less than the length of the
    /// signal.
    struct Band {
        std::int32_t Half;
        float Gain;
    };
    /// What takes the mix: samples in order, without a gap.
    using Sink = std::function<void(std::span<const std::int16_t>)>;

    /// `Bands` begins with the lowest. `Length` are the samples that will come. Values are limited
    /// to `Limit` on both sides.
    BandCascade(std::span<const Band> Bands, std::int32_t Length, std::int32_t Limit);

    /// Takes the next samples of the signal, and gives what is mixed by then. With the last sample
    /// all that is left is given.
    void Push(std::span<const std::int16_t> Samples, const Sink& Give);

    /// How far what is given stays behind what was taken, at most.
    [[nodiscard]] std::int32_t Delay() const noexcept { return Behind; }

  private:
    void PushPiece(std::span<const std::int16_t> Samples, const Sink& Give);

    std::vector<BandStage> Stages;
    std::int32_t Behind = 0;
    std::int32_t Given = 0;
    std::vector<std::int16_t> Mix;   ///< from the sample after `Given` on
    std::vector<std::int16_t> Piece; ///< what passes from band to band
};

} // namespace quoril

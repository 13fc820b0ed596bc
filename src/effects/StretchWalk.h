// The walk of the read position behind StretchWave, and what is computed at its places.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace quoril {

/// Walks through a signal that passes by piece by piece, from its first sample to its last. Gives
/// all samples but the silent one at the end.
class StretchWalk {
  public:
    /// `Length` are the samples that will come, at least 3. The step from place to place begins
    /// with `StepStart`, and would reach `StepEnd` behind the last sample; both are above 0.
    StretchWalk(std::int32_t Length, std::int32_t Bits, double StepStart, double StepEnd);

    /// Fills a piece of `Count` samples of what comes out, or several that make up as many. `At`
    /// are the samples before the piece.
    using Fill = std::function<void(std::size_t At, std::span<std::int16_t> Out)>;
    using Sink = std::function<void(std::size_t Count, const Fill& Make)>;

    /// Takes the next samples, and gives what can be computed by then.
    void Push(std::span<const std::int16_t> In, const Sink& Give);

  private:
    /// Places that are computed at once: what they need stays in the processor's cache.
    static constexpr std::size_t MostPlaces = 1024;

    /// Puts the places that follow into the batch, as far as there is room and the samples of `In`,
    /// the last of which is `Taken`, reach. False when the batch is full.
    bool Walk(std::span<const std::int16_t> In);
    /// Gives what stands at the places of the batch, and begins another one.
    void Finish(const Sink& Give);

    double Length;
    double Low;
    double High;
    double StepStart;
    double Slope;

    std::int32_t Taken = 0;
    double P = 1;           ///< the read position
    double k = 1;           ///< the sample at which the segment of the position begins
    bool InSegment = false; ///< the newest sample of this segment is read

    // The batch. Segment m has the samples Reads[m] to Reads[m + 3]: one more is read for each,
    // however far the position jumped. Three of the segment before come first.
    std::array<std::int16_t, MostPlaces + 3> Reads{};
    std::size_t ReadCount = 0;
    std::array<double, MostPlaces> Fractions{}; ///< of the places, behind their segments' begin
    std::array<std::int32_t, MostPlaces> Segments{}; ///< of the places
    std::size_t Places = 0;
};

} // namespace quoril

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

    /// Fills the batch with the places that follow, as far as there is room and the samples of
    /// `In`, the last of which is `Taken`, reach. `Step` tells by how much the position moves on in
    /// a segment.
    template <class StepOf>
    void Walk(std::span<const std::int16_t> In, const StepOf& Step);
    /// Gives what stands at the places of the batch. False when it was not full.
    bool Finish(const Sink& Give);

    std::int32_t Length;
    double Low;
    double High;
    double StepStart;
    double Slope;

    std::int32_t Taken = 0;
    double Position = 1;      ///< where the next place lies
    std::int64_t Segment = 1; ///< the sample at which the segment of the next place begins

    // The batch. Its segment m has the samples Reads[m] to Reads[m + 3]: one more is read for each,
    // however far the position jumped. Three of the segment before come first.
    std::array<std::int16_t, MostPlaces + 3> Reads{};
    std::size_t NextRead = 0;                   ///< the segment of the next place
    std::array<double, MostPlaces> Fractions{}; ///< of the places, behind their segments' begin
    std::array<std::int32_t, MostPlaces> Segments{}; ///< of the places
    std::size_t Places = 0;
};

} // namespace quoril

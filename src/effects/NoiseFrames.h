// Taking a learnt noise out of a signal that passes by piece by piece.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace quoril {

/// Two passes of whole frames, half a frame apart, under a window. Each frame comes out as the part
/// of it that is even about its start, less the noise. What is behind the last whole frame is
/// silent.
class NoiseFrames {
  public:
    /// What takes the result: samples in order, without a gap.
    using Sink = std::function<void(std::span<const std::int16_t>)>;

    /// `Profile` has as many bins as a frame has samples, a power of two from 4 on. `Length` are
    /// the samples that will come.
    NoiseFrames(const std::vector<float>& Profile, std::int32_t Bits, std::int32_t Length);
    ~NoiseFrames();
    NoiseFrames(const NoiseFrames&) = delete;
    NoiseFrames& operator=(const NoiseFrames&) = delete;

    /// Takes the next samples, and gives what is ready by then. With the last sample all that is
    /// left is given.
    void Push(std::span<const std::int16_t> Samples, const Sink& Give);

    /// How far what is given stays behind what was taken, at most.
    [[nodiscard]] std::int32_t Delay() const noexcept;

  private:
    struct Lanes;

    void FilterFrames(std::int32_t Count, const Sink& Give);
    /// Adds half a frame to the result of its place.
    void AddHalf(std::span<const std::int32_t> Frame, std::size_t From);
    void GiveSilence(std::int32_t Count, const Sink& Give) const;

    std::vector<float> Window;
    std::int32_t Bits;
    std::int32_t Length;
    std::int32_t Frames; ///< of both passes
    std::int32_t Filtered = 0;
    std::int32_t Taken = 0;
    std::vector<std::int16_t> Signal;    ///< from the first frame that is not filtered on
    std::vector<std::int32_t> LastFrame; ///< the last one that was filtered
    std::vector<std::int16_t> Half;      ///< result of half a frame
    std::unique_ptr<Lanes> SideBySide;
};

} // namespace quoril

// The queue of frames between the thread that reads files and the sound callback.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quoril {

/// One thread puts frames in, another takes them out, and neither ever waits for the other. A frame
/// is one 16-bit sample of each channel. The indices count frames without end.
// The padding keeps what each side writes on a cache line of its own.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
class SampleRing {
  public:
    /// Room for at least `LeastFrames` (a power of two is taken); empty, both indices at 0. While
    /// neither side is at work.
    void SetUp(std::int32_t Channels, std::size_t LeastFrames);
    /// Forgets what was put in and not taken out, and counts `TakenBack` frames as not taken out.
    /// While neither side is at work.
    void Discard(std::uint64_t TakenBack = 0) noexcept;

    [[nodiscard]] std::size_t Capacity() const noexcept { return Frames; }

    // The side that puts in.
    [[nodiscard]] std::size_t Room() const noexcept;
    /// At most Room() frames.
    void Push(const std::int16_t* Source, std::size_t Count) noexcept;
    /// Frames put in since SetUp.
    [[nodiscard]] std::uint64_t Given() const noexcept {
        // Only the putting side writes it, and the putting side asks.
        return WriteIndex.load(std::memory_order_relaxed);
    }

    // The side that takes out.
    [[nodiscard]] std::size_t Fill() const noexcept;
    /// Takes out at most `Most` frames; how many there were.
    std::size_t Pop(std::int16_t* Target, std::size_t Most) noexcept;

    /// Frames taken out since SetUp, less those taken back. Any thread.
    [[nodiscard]] std::uint64_t Taken() const noexcept {
        return ReadIndex.load(std::memory_order_acquire);
    }

  private:
    void Copy(std::uint64_t From, std::size_t Count, std::int16_t* Target) const noexcept;

    std::vector<std::int16_t> Samples;
    std::size_t Frames = 0;
    std::size_t Width = 1;
    // Each index has a cache line of its own, so that the two threads do not slow each other down.
    alignas(64) std::atomic<std::uint64_t> WriteIndex{0};
    alignas(64) std::atomic<std::uint64_t> ReadIndex{0};
};

} // namespace quoril

// The halves of captured sound on their way from the capture callback to the window.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace quoril {

/// A row of halves of one tenth of a second. One thread fills them, another takes them out, in
/// order; neither waits for the other, and neither asks for memory. While the window is busy the
/// halves pile up, for as long as `Seconds` says; what comes after that stays with the sound
/// system.
class CaptureQueue {
  public:
    static constexpr std::size_t Halves = 100;
    static constexpr int Seconds = 10;

    /// Empties the queue and makes room. While neither side is at work.
    void SetUp(std::size_t HalfBytes);

    // ---- The side that fills

    /// Bytes that the half at hand still takes; 0 when all halves are full.
    [[nodiscard]] std::size_t Room() const noexcept;
    /// Copies at most Room() bytes, or zeros without a source, into the half at hand; the half is
    /// handed over when it is full. True when it was.
    bool Fill(const std::byte* Source, std::size_t Bytes) noexcept;
    /// Hands the half at hand over as short as it is; an empty one stays. True when it was.
    bool HandOver() noexcept;
    /// Sound was lost before what is filled next.
    void NoteLoss() noexcept { LossNoted = true; }

    // ---- The side that takes out

    struct Half {
        std::vector<std::byte> Frames; ///< as long as a full half
        std::size_t Bytes = 0;         ///< how much of it there is
        bool AfterLoss = false;        ///< sound was lost before it, or within
    };
    /// The oldest half, or null. Valid until Drop.
    [[nodiscard]] const Half* Oldest() const noexcept;
    void Drop() noexcept;
    [[nodiscard]] std::size_t Waiting() const noexcept;

  private:
    [[nodiscard]] bool AllFull(std::uint64_t Index) const noexcept;
    [[nodiscard]] Half& At(std::uint64_t Index) noexcept { return Row[Index % Halves]; }

    std::array<Half, Halves> Row;
    std::size_t HalfBytes = 1;
    bool LossNoted = false; // by the side that fills, for the next half that it fills
    // Written with release by the side that owns each, so that who sees it sees the half, too.
    std::atomic<std::uint64_t> Filled{0};
    std::atomic<std::uint64_t> TakenOut{0};
};

} // namespace quoril

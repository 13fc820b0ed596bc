// A snapshot as a stream of frames: forward or in reverse, over and over, turning anywhere.
#pragma once

#include "player/ChannelBlocks.h"
#include "player/PlayFiles.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoril {

/// Offsets count frames of the snapshot from 0. One thread at a time.
class PlaySource {
  public:
    /// What Player.Load is given. Throws Failure on numbers that make no snapshot. `Bits` 8 or 16,
    /// `Channels` 1 or 2, `Freq` in Hz, `Length` in samples of one channel. Files in `Entered` are
    /// read only as they were then; others as they are when they are first read.
    PlaySource(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq, std::int32_t Length,
               std::span<const std::int32_t> LeftList, std::span<const std::int32_t> RightList,
               std::span<const EnteredFile> Entered = {});

    [[nodiscard]] std::int32_t Channels() const noexcept { return ChannelCount; }
    [[nodiscard]] std::int32_t Freq() const noexcept { return Rate; }
    [[nodiscard]] std::int32_t Length() const noexcept { return Frames; }

    /// The next frame to come, and the direction from there: 1 or -1. An offset before the first or
    /// behind the last frame is where a walk in that direction ends, or begins anew in a loop; in
    /// the other direction it is the nearest frame.
    void PlaceAt(std::int64_t Offset, std::int32_t Direction);

    /// Frames that follow each other in the snapshot.
    struct Stretch {
        std::int64_t First = 0;     ///< offset of the first of them
        std::int32_t Direction = 1; ///< from one to the next
        std::size_t Count = 0;      ///< 0 at the end
    };
    /// The next frames, at most `Most`, interleaved 16-bit samples whatever the depth.
    [[nodiscard]] Stretch Next(std::size_t Most, bool Loop, std::int16_t* Target);
    /// Has the system read ahead of the place by about this many frames.
    void ReadAhead(std::size_t Count);

    /// Why something was silent that should not have been; empty when nothing was.
    [[nodiscard]] std::string TakeFailure();
    /// From here on the opened audio file may lose its name: it is read to the end as it is now.
    void HoldOriginal() noexcept;
    void CloseFiles() noexcept { Files.Close(); }
    [[nodiscard]] std::size_t OpenFiles() const noexcept { return Files.OpenCount(); }

  private:
    [[nodiscard]] bool Begin(bool Loop);
    void ToFullScale(std::int16_t* Target, std::size_t Count) const noexcept;
    void Reverse(std::int16_t* Target, std::size_t Count) const noexcept;

    std::int32_t Depth;
    std::int32_t ChannelCount;
    std::int32_t Rate;
    std::int32_t Frames;
    PlayFiles Files;
    std::vector<ChannelBlocks> Lists;
    std::int64_t At = 0;
    std::int32_t Way = 1;
};

} // namespace quoril

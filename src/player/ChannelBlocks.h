// One channel of a snapshot: its block list, and the samples behind it.
#pragma once

#include "player/PlayFiles.h"
#include "storage/PortableBlock.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace quoril {

/// Positions are samples from 1, as in the block list. One thread at a time.
class ChannelBlocks {
  public:
    /// Throws Failure on words that make no block list. No file is opened. `Files` must outlive it.
    ChannelBlocks(std::span<const std::int32_t> Words, PlayFiles& Files);
    /// Writes `Count` samples from `First` on to Target[0], Target[Stride], and so on, in rising
    /// positions. What no block covers is silent, and so is what cannot be read.
    void Read(std::int64_t First, std::size_t Count, std::int16_t* Target, std::size_t Stride);
    /// Keeps the opened audio file open, which others may delete or write anew under its name.
    /// Work files are deleted by nobody as long as the snapshot lasts. Never fails.
    void HoldOriginal() noexcept;
    /// Tells the system that the samples from a position on will be read soon. Never fails.
    void WillNeed(std::int64_t First, std::size_t Count);
    /// Why something could not be read: the first reason since the last call, empty without one.
    [[nodiscard]] std::string TakeFailure();

  private:
    struct Block {
        std::int32_t Start = 0;
        std::int32_t Length = 0;
        std::int64_t Offset = 0; ///< first sample in its file, in bytes from 0
        std::size_t FileNo = 0;
        std::int32_t Bits = 16;
        std::int32_t Step = 2; ///< bytes from one sample to the next
        bool Silent = false;
        bool Original = false; ///< in the opened audio file
    };
    [[nodiscard]] std::size_t FirstReaching(std::int64_t Position) const;
    void ReadBlock(const Block& From, std::int64_t First, std::size_t Count);

    std::vector<Block> Blocks; ///< by their start
    PlayFiles* Files;
    std::vector<std::uint8_t> Bytes;
    std::vector<std::int16_t> Samples;
    std::string FailureSeen;
};

} // namespace quoril

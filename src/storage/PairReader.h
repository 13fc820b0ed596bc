// Reading the samples of one or two channels in place, run by run, leaving memory and age order
// alone. What both have of one stretch of an interleaved file is read in one pass.
#pragma once

#include "storage/BlockListClass.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace quoril {

class PairReader {
  public:
    /// The lists must outlive the reader; a channel that is not read has none.
    PairReader(const BlockListClass* Left, const BlockListClass* Right);

    /// How many samples, at most `Most`, one reading from `Pos` on gives: fewer where a block ends,
    /// at least one for a `Most` of one.
    [[nodiscard]] std::int32_t RunAt(std::int32_t Pos, std::int32_t Most) const;
    /// Reads what stands from `Pos` on, as many samples as RunAt tells, and gives how many. Silence
    /// and places without a block are zeros.
    std::int32_t Read(std::int32_t Pos, std::int32_t Most);
    /// What was read last, until the next reading; empty for a channel without a list.
    [[nodiscard]] std::span<const std::int16_t> Left() const noexcept {
        return Channels[0].Samples;
    }
    [[nodiscard]] std::span<const std::int16_t> Right() const noexcept {
        return Channels[1].Samples;
    }
    /// Reads a whole range into memory of the caller's; nothing goes to a channel without a list.
    void Fill(std::int32_t FromPos, std::int32_t ToPos, std::int16_t* TargetL,
              std::int16_t* TargetR);

  private:
    struct Channel {
        const BlockListClass* List = nullptr;
        std::int32_t BlockNo = 0;
        SampleRun Held; ///< keeps samples in memory that the budget pushes out meanwhile
        std::vector<std::int16_t> Buffer;
        std::span<const std::int16_t> Samples;
    };
    /// Gives what needs no reading; false for a block that lies in a file.
    [[nodiscard]] static bool Near(Channel& One, std::int32_t Pos, std::size_t Count);

    std::array<Channel, 2> Channels;
};

} // namespace quoril

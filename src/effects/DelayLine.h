// A signal that waits for being read again later.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace quoril {

/// Takes a signal piece by piece, and gives stretches of it until they are given up. What waits for
/// long lies in blocks, under the budget for memory.
class DelayLine {
  public:
    void Put(std::span<const std::int16_t> Samples);
    /// Samples put so far.
    [[nodiscard]] std::int64_t End() const noexcept {
        return NearStart + static_cast<std::int64_t>(Near.size());
    }
    /// `Count` samples from the place `From` on, until the next call of any kind. The first sample
    /// that was put has the place 0; before it and behind the end there is silence. Nothing that
    /// was given up may be asked for.
    [[nodiscard]] std::span<const std::int16_t> Get(std::int64_t From, std::size_t Count);
    /// Gives up what stands before a place.
    void Forget(std::int64_t Before);

  private:
    /// Copies what blocks hold of a stretch that begins at a place not below 0.
    void ReadBlocks(std::int64_t From, std::span<std::int16_t> Out) const;

    /// One after the other, all of the same length; the last one ends where `Near` begins.
    std::vector<std::unique_ptr<BlockCarrBuffClass>> Far;
    std::vector<std::int16_t> Near; ///< the newest samples
    std::int64_t NearStart = 0;
    std::int64_t Forgotten = 0;
    std::vector<std::int16_t> Joined; ///< what stands in several places, or nowhere
};

} // namespace quoril

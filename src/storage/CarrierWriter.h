// Making a carrier from its first sample to its last, when its length shows only at the end.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace quoril {

/// Takes samples one run after another and gives a carrier of them. Blocks have the usual length,
/// and are under the budget's rule as soon as they are full.
class CarrierWriter {
  public:
    /// `Expected` is about how many samples will come; it only decides how much memory is taken
    /// for the last block.
    explicit CarrierWriter(std::int32_t Expected);
    ~CarrierWriter();
    CarrierWriter(const CarrierWriter&) = delete;
    CarrierWriter& operator=(const CarrierWriter&) = delete;

    /// Fills a piece of what is being made. `At` counts the samples before the piece from where
    /// the call began, from 0; every sample of `Out` must be set.
    using PieceFill = std::function<void(std::size_t At, std::span<std::int16_t> Out)>;

    /// Appends copies of the samples. Fails with "Overflow" beyond 32 bits.
    void Put(std::span<const std::int16_t> Samples);
    /// Appends `Count` samples that `Fill` makes in their place, in one piece or more.
    void Make(std::size_t Count, const PieceFill& Fill);
    /// Appends a stretch of a carrier, first and last position, without copying its samples. What
    /// was put before it ends its block there, so this is for stretches of some length. The writer
    /// is of no use after a failure.
    void Append(const BlockCarrBuffClass& Source, std::int32_t FromPos, std::int32_t ToPos);
    /// Samples put so far.
    [[nodiscard]] std::int32_t Length() const noexcept { return Total; }
    /// What was put, as a carrier; the writer is then empty.
    [[nodiscard]] std::unique_ptr<BlockCarrBuffClass> Finish();

  private:
    void BlockEnd();
    /// Ends the block that is being filled where it stands.
    void FillingEnd();

    std::int32_t BlockLen;
    std::int32_t ExpectedTotal;
    std::int32_t Total = 0;
    BlockSet Blocks;
    SampleRun Filling;           ///< of the block that is being filled; without samples between two
    std::int32_t FillingLen = 0; ///< room of it
    std::int32_t Filled = 0;
};

} // namespace quoril

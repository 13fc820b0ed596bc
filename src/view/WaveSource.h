// Where the drawing gets its samples.
#pragma once

#include "selection/DocumentFacts.h"

#include <cstdint>
#include <vector>

namespace quoril {

/// A document as the drawing sees it.
class WaveSource {
  public:
    virtual ~WaveSource() = default;
    [[nodiscard]] virtual DocumentFacts Facts() const = 0;
    /// These positions will be asked for, in every channel.
    virtual void WillNeed(const std::vector<std::int32_t>& Positions) const = 0;
    /// The samples of a channel, 1 or 2, at these positions, in their order.
    virtual void SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                           std::vector<std::int16_t>& Samples) const = 0;
    /// `Count` samples of a channel from `From` on, at the indexes from 1; index 0 is unused.
    /// Places beside the document give 0.
    virtual void StretchAt(std::int32_t Channel, std::int32_t From, std::int32_t Count,
                           std::vector<std::int16_t>& Samples) const = 0;
};

/// The document of the process. Leaves memory and age order alone.
class StoreSource final : public WaveSource {
  public:
    [[nodiscard]] DocumentFacts Facts() const override { return CurrentDocument(); }
    void WillNeed(const std::vector<std::int32_t>& Positions) const override;
    void SamplesAt(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                   std::vector<std::int16_t>& Samples) const override;
    void StretchAt(std::int32_t Channel, std::int32_t From, std::int32_t Count,
                   std::vector<std::int16_t>& Samples) const override;
};

} // namespace quoril

// The carrier that owns a list of blocks: how samples travel between a command and the store.
#pragma once

#include "storage/BlockListClass.h"
#include "storage/WoroFileBlockMod.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace quoril {

/// One channel's worth of samples, positions from 1. A new carrier is empty. At its end its blocks
/// are freed and unused files are swept.
class BlockCarrBuffClass {
  public:
    BlockCarrBuffClass();
    ~BlockCarrBuffClass();
    BlockCarrBuffClass(const BlockCarrBuffClass&) = delete;
    BlockCarrBuffClass& operator=(const BlockCarrBuffClass&) = delete;

    std::int32_t WaveINos = 0;          ///< samples in the carrier
    std::int32_t QuickBufferLength = 0; ///< scratch value of the caller's

    /// Copies the block numbers; the blocks stay the carrier's.
    void BuffBlocksGet(BlockSet& BlkSetOut) const;
    /// Clones of the blocks in the same order, owned by the caller. On failure nothing is left.
    void BuffBlocksGetCopy(BlockSet& BlkSetOut) const;
    /// Frees the present blocks and takes over the given list with its blocks.
    void BuffBlocksPutFresh(BlockSet NewBlkSet);
    /// Fills QBuff[1] to its last index from `FromPos` on, leaving memory and age order alone.
    /// Places that no block covers keep what they held.
    void QuickBuffGet(std::int32_t FromPos, std::vector<std::int16_t>& QBuff) const;
    /// Changes the length: grows by silent blocks, which cost only records; shrinks by freeing.
    /// Size 0 shows an error and changes nothing.
    void ReDimSize(std::int32_t NewSz);

    /// One sample; 0 where no block is. Brings the block into memory.
    [[nodiscard]] std::int16_t WaveLR(std::int32_t WavPos) {
        const std::uint32_t Offset = static_cast<std::uint32_t>(WavPos) - Window.First;
        return Offset < Window.ReadLen ? Window.ReadFrom[Offset] : ReadSlowly(WavPos);
    }
    /// Stores a sample, making its block private memory; nothing happens where no block is.
    void WaveLR(std::int32_t WavPos, std::int16_t Sample) {
        const std::uint32_t Offset = static_cast<std::uint32_t>(WavPos) - Window.First;
        if (Offset < Window.WriteLen)
            Window.WriteTo[Offset] = Sample;
        else
            WriteSlowly(WavPos, Sample);
    }

    /// Work on runs: what a change of a run gets and gives. `In` and `Out` have the same length;
    /// they are the same place, or they do not overlap.
    using RunChange = std::function<void(std::int32_t FirstPos, std::span<const std::int16_t> In,
                                         std::span<std::int16_t> Out)>;
    using RunVisit = std::function<void(std::int32_t FirstPos, std::span<const std::int16_t> In)>;

    /// Calls `Visit` for the samples from `FromPos` to `ToPos`, in rising positions, in runs of at
    /// most `MostRun` samples, leaving the same as reading each one with WaveLR. Silence and places
    /// without a block come as zeros.
    void WaveRunsRead(std::int32_t FromPos, std::int32_t ToPos, std::int32_t MostRun,
                      const RunVisit& Visit);

    [[nodiscard]] const BlockListClass& Blocks() const noexcept { return BlkSet; }
    [[nodiscard]] std::int32_t BlkCount() const noexcept { return BlkSet.Count(); }
    [[nodiscard]] std::int32_t CurrentBlock() const noexcept { return Window.BlockNo; }

  private:
    [[nodiscard]] std::int16_t ReadSlowly(std::int32_t WavPos);
    void WriteSlowly(std::int32_t WavPos, std::int16_t Sample);
    /// Makes the block that holds the position current; false without one.
    bool FindCurrent(std::int32_t WavPos);
    void FirstBlockCurrent();

    BlockListClass BlkSet;
    std::int32_t NewBlockLen;
    BlockWindow Window;
};

/// A new carrier of the same samples, which cost memory only where one of the two changes.
[[nodiscard]] std::unique_ptr<BlockCarrBuffClass> CarrierCopy(const BlockCarrBuffClass& Source);

} // namespace quoril

// A list of blocks that make up one channel of a document or of a carrier.
#pragma once

#include "storage/WoroFileBlockMod.h"

#include <cstdint>
#include <vector>

namespace quoril {

/// A bag of block numbers, in no particular order; each block's BlockStart places it. What asks
/// for a position is told in terms of a scan of the list from its first entry; while the blocks do
/// not overlap, a sorted index, made when it is first needed, finds the same block at once.
/// The list does not own its blocks.
class BlockListClass {
  public:
    [[nodiscard]] std::int32_t Count() const noexcept {
        return static_cast<std::int32_t>(Items.size());
    }
    /// Block number of entry `Index`, from 0.
    [[nodiscard]] std::int32_t At(std::int32_t Index) const noexcept {
        return Items[static_cast<std::size_t>(Index)];
    }
    [[nodiscard]] const BlockSet& Numbers() const noexcept { return Items; }

    void Append(std::int32_t BlockNo);
    void Replace(std::int32_t Index, std::int32_t BlockNo);
    void Assign(BlockSet NewItems);
    /// Empties the list and gives what it held.
    [[nodiscard]] BlockSet Take();
    /// Adds `Delta` to the start of every block that begins at `FromPos` or later.
    void Shift(std::int32_t FromPos, std::int32_t Delta);

    /// Index of the first entry whose block holds the position; -1 without one.
    [[nodiscard]] std::int32_t FirstHolding(std::int32_t Position) const;
    /// Index of the last entry whose block holds the position; -1 without one.
    [[nodiscard]] std::int32_t LastHolding(std::int32_t Position) const;
    /// Indexes of the entries whose blocks overlap an inclusive range, in list order.
    [[nodiscard]] std::vector<std::int32_t> Overlapping(std::int32_t FromPos,
                                                        std::int32_t ToPos) const;

    /// The lowest position above the given one at which a block begins; 2^31 without one.
    [[nodiscard]] std::int64_t NextStart(std::int32_t Position) const;

    /// What stands at a position: the last entry that holds it, and how far that stays so.
    struct Stretch {
        std::int32_t BlockNo = 0; ///< 0 where no block is
        std::int64_t Last = 0;    ///< the last position of which the same is true
    };
    [[nodiscard]] Stretch StretchAt(std::int32_t Position) const;

    /// Makes a block border at a position: every block that holds it strictly inside is split,
    /// the first piece in its place, the second at the list's end. The content stays as it is.
    void MakeBorder(std::int32_t Position);

  private:
    struct Place {
        std::int32_t Start;
        std::int32_t Len;
        std::int32_t Index;
    };
    void IndexMake() const;
    [[nodiscard]] std::int32_t Find(std::int32_t Position, bool Last) const;

    BlockSet Items;
    mutable std::vector<Place> Sorted;
    mutable bool IndexValid = false;
    mutable bool Disjoint = false;
};

} // namespace quoril

// Blocks on their way from a file into the document.
#pragma once

#include "storage/BlockCarrBuffClass.h"
#include "storage/WoroFileBlockMod.h"

#include <utility>

namespace quoril {

/// Blocks that no list holds yet; those that are still here at the end are freed.
class LooseBlocks {
  public:
    LooseBlocks() = default;
    ~LooseBlocks() { BlockSetFree(Set); }
    LooseBlocks(const LooseBlocks&) = delete;
    LooseBlocks& operator=(const LooseBlocks&) = delete;

    /// Takes what `Make` gives; a block that has no place here is never made.
    template <class MakeType>
    std::int32_t Add(MakeType&& Make) {
        Set.reserve(Set.size() + 1);
        Set.push_back(Make());
        return Set.back();
    }
    void GiveTo(BlockCarrBuffClass& Carrier) { Carrier.BuffBlocksPutFresh(std::exchange(Set, {})); }

  private:
    BlockSet Set;
};

} // namespace quoril

// Keeping memory within the budget: which blocks go to work files, and what that really frees.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace quoril {

namespace {

constexpr std::size_t GroupsAlwaysInMemory = 4;
constexpr std::int32_t ChecksBetweenRecounts = 100;

std::int32_t FirstOf(std::int32_t BlockNo) {
    return BlockAt(BlockNo).BlockData.Offset();
}

std::int32_t EndOf(std::int32_t BlockNo) {
    return FirstOf(BlockNo) + BlockAt(BlockNo).BlockLen;
}

/// Memory blocks whose samples hang together: each shares some with another one, so that no memory
/// is free before all of them have gone. Nearly always that is one block.
struct SharingGroup {
    BlockSet BlockNos; ///< in the order of their samples, the longest first
    std::int32_t Newest = 0;
    std::int32_t First = 0; ///< of the buffer's samples
    std::int32_t End = 0;

    [[nodiscard]] const void* BufferId() const {
        return BlockAt(BlockNos.front()).BlockData.BufferId();
    }
};

/// All blocks in memory, in groups that stand in the order of their buffers and samples.
std::vector<SharingGroup> GroupsInMemory() {
    BlockSet List;
    for (std::size_t No = 1; No < BlockTable.size(); ++No)
        if (BlockInMemory(BlockTable[No]))
            List.push_back(static_cast<std::int32_t>(No));
    std::sort(List.begin(), List.end(), [](std::int32_t A, std::int32_t B) {
        const auto Key = [](std::int32_t No) {
            return std::tuple(BlockAt(No).BlockData.BufferId(), FirstOf(No), -EndOf(No), No);
        };
        return Key(A) < Key(B);
    });
    std::vector<SharingGroup> Groups;
    for (const std::int32_t No : List) {
        if (Groups.empty() || Groups.back().BufferId() != BlockAt(No).BlockData.BufferId() ||
            Groups.back().End <= FirstOf(No))
            Groups.push_back({{}, 0, FirstOf(No), 0});
        SharingGroup& Last = Groups.back();
        Last.BlockNos.push_back(No);
        Last.Newest = std::max(Last.Newest, BlockAt(No).BlockStamp);
        Last.End = std::max(Last.End, EndOf(No));
    }
    return Groups;
}

/// Whether a work file still holds what a block that is in memory as well relies on.
bool WorkFileStillHolds(const BlockRec& Block) {
    try {
        const std::int64_t Bytes = IdentityOfFile(WorkFileAt(Block.FileNo).WorkFileName).Bytes;
        return Bytes >= std::int64_t{Block.FilePos} - 1 + std::int64_t{Block.BlockLen} * 2;
    } catch (const SystemFailure&) {
        return false;
    }
}

/// Ties a memory block to a work file: to that of another one which holds its samples as well, or,
/// with 0, to a new one. A file that it had was taken away by somebody.
void GetPlaceInFile(std::int32_t BlockNo, std::int32_t HolderNo) {
    BlockRec& Block = BlockAt(BlockNo);
    const std::int32_t LostNo = Block.BlockKind == BlockMemoryAndFile ? Block.FileNo : 0;
    if (HolderNo == 0) {
        BlockWriteToNewFile(BlockNo);
    } else {
        const BlockRec& Holder = BlockAt(HolderNo);
        Block.FilePos = AddLong(Holder.FilePos, MulLong(2, FirstOf(BlockNo) - FirstOf(HolderNo)));
        Block.FileNo = Holder.FileNo;
        Block.BlockKind = BlockMemoryAndFile;
        ++WorkFileAt(Block.FileNo).WorkFileUse;
    }
    if (LostNo != 0)
        --WorkFileAt(LostNo).WorkFileUse;
}

/// Pushes the groups used longest ago out, but that of `KeptNo`.
void OldestGroupsToFile(std::int32_t KeptNo) {
    std::vector<SharingGroup> Groups = GroupsInMemory();
    if (++BudgetCheckCount == ChecksBetweenRecounts) {
        BudgetCheckCount = 0;
        std::int64_t Samples = 0;
        for (const SharingGroup& One : Groups)
            Samples += One.End - One.First;
        MemoryUsed = ToLong(2 * Samples);
    }
    for (SharingGroup& One : Groups)
        if (std::ranges::find(One.BlockNos, KeptNo) != One.BlockNos.end())
            One.Newest = std::numeric_limits<std::int32_t>::max();
    // Oldest last; of equal stamps the highest number last.
    std::sort(Groups.begin(), Groups.end(), [](const SharingGroup& A, const SharingGroup& B) {
        return A.Newest != B.Newest ? A.Newest > B.Newest : A.BlockNos.front() < B.BlockNos.front();
    });
    while (Groups.size() > GroupsAlwaysInMemory) {
        BlocksToFile(Groups.back().BlockNos);
        Groups.pop_back();
        if (MemoryUsed < MemoryBudget)
            break;
    }
}

/// Samples are shared and cut without copying, so a small block may keep a large buffer alive, of
/// which only what blocks hold is counted. While buffers hold more than the budget, groups that
/// view only parts of theirs get own copies.
void SharedRemaindersGiveBack() {
    if (SampleRun::BytesOfHeldBuffers() <= std::max(MemoryBudget, MemoryUsed))
        return;
    const std::vector<SharingGroup> Groups = GroupsInMemory();
    for (auto First = Groups.begin(); First != Groups.end();) {
        const auto Behind = std::find_if(First, Groups.end(), [First](const SharingGroup& One) {
            return One.BufferId() != First->BufferId();
        });
        std::int64_t Viewed = 0;
        for (auto One = First; One != Behind; ++One)
            Viewed += One->End - One->First;
        if (Viewed < BlockAt(First->BlockNos.front()).BlockData.BufferLength())
            for (auto One = First; One != Behind; ++One) {
                SampleRun Own = BlockAt(One->BlockNos.front()).BlockData;
                Own.CopyOut(One->End - One->First);
                for (const std::int32_t BlockNo : One->BlockNos) {
                    BlockRec& Block = BlockAt(BlockNo);
                    const SampleRun Part = Own.From(FirstOf(BlockNo) - One->First);
                    BlockWindowsEmpty(BlockNo);
                    MemoryLeave(Block);
                    Block.BlockData = Part;
                    MemoryEnter(Block);
                }
            }
        First = Behind;
        if (SampleRun::BytesOfHeldBuffers() <= MemoryBudget)
            return;
    }
}

} // namespace

void BlocksToFile(const BlockSet& BlockNos) {
    std::int32_t FurthestNo = 0; // of those before; what ends no later than it lies within it
    for (const std::int32_t BlockNo : BlockNos) {
        const BlockRec& Block = BlockAt(BlockNo);
        const bool Within = FurthestNo != 0 && EndOf(BlockNo) <= EndOf(FurthestNo);
        if (Block.BlockKind != BlockMemoryAndFile || !WorkFileStillHolds(Block))
            GetPlaceInFile(BlockNo, Within ? FurthestNo : 0);
        if (!Within)
            FurthestNo = BlockNo;
    }
    for (const std::int32_t BlockNo : BlockNos) {
        BlockRec& Block = BlockAt(BlockNo);
        BlockWindowsEmpty(BlockNo);
        MemoryLeave(Block);
        Block.BlockData = {};
        Block.BlockKind = BlockWorkFile;
    }
}

void BudgetEnforceBut(std::int32_t KeptNo) {
    if (MemoryUsed > MemoryBudget)
        OldestGroupsToFile(KeptNo);
    SharedRemaindersGiveBack();
}

void BudgetEnforce() {
    BudgetEnforceBut(0);
}

void BudgetEnforceOrFree(std::int32_t NewNo) {
    try {
        BudgetEnforce();
    } catch (...) {
        BlockFree(NewNo);
        throw;
    }
}

} // namespace quoril

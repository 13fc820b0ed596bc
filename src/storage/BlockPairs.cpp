// The two channels of one stretch of an original file: read in one pass, and out of it together.
#include "storage/WoroFileBlockMod.h"

#include "base/Arithmetic.h"
#include "storage/BlockTableInner.h"

#include <algorithm>

namespace quoril {

namespace {

/// A block of an original file, and where in it its samples begin.
struct PlacedBlock {
    std::int32_t FilePos;
    std::int32_t BlockNo;
};

/// All of them, in the order of their places.
std::vector<PlacedBlock> BlocksOfOrgFile(std::int32_t OrgNo) {
    std::vector<PlacedBlock> Blocks;
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(BlockTable.size()); ++No)
        if (BlockAt(No).BlockKind == BlockOrgFile && BlockAt(No).FileNo == OrgNo)
            Blocks.push_back({BlockAt(No).FilePos, No});
    std::ranges::stable_sort(Blocks, {}, &PlacedBlock::FilePos);
    return Blocks;
}

bool InPair(const PlacedBlock& Block) {
    return BlockPairOf(Block.BlockNo) != BlockPairTable.cend();
}

/// Makes pairs of the blocks that are the two channels of one stretch.
void OrgPairsMake(const std::vector<PlacedBlock>& InOrder) {
    constexpr std::int64_t MostBytes = 2; // of a sample
    for (auto One = InOrder.begin(); One != InOrder.end(); ++One)
        for (auto Other = One + 1; Other != InOrder.end() && !InPair(*One) &&
                                   Distance(One->FilePos, Other->FilePos) <= MostBytes;
             ++Other)
            if (!InPair(*Other))
                (void)OrgPairMake(One->BlockNo, Other->BlockNo);
}

} // namespace

void OrgPairAdd(std::int32_t LeftNo, std::int32_t RightNo) {
    BlockPairTable.push_back({LeftNo, RightNo});
}

bool OrgPairMake(std::int32_t OneNo, std::int32_t OtherNo) {
    const BlockRec& One = BlockAt(OneNo);
    const BlockRec& Other = BlockAt(OtherNo);
    if (One.BlockKind != BlockOrgFile || Other.BlockKind != BlockOrgFile ||
        One.FileNo != Other.FileNo || One.BlockLen != Other.BlockLen)
        return false;
    const OrgFileRec& File = OrgFileAt(One.FileNo);
    if (File.OrgFileChannels != 2 || Distance(One.FilePos, Other.FilePos) != File.OrgFileBits / 8)
        return false;
    const bool InOrder = One.FilePos < Other.FilePos;
    OrgPairAdd(InOrder ? OneNo : OtherNo, InOrder ? OtherNo : OneNo);
    return true;
}

std::vector<BlockPairRec>::const_iterator BlockPairOf(std::int32_t BlockNo) noexcept {
    return std::find_if(BlockPairTable.cbegin(), BlockPairTable.cend(),
                        [BlockNo](const BlockPairRec& Pair) {
                            return Pair.LeftNo == BlockNo || Pair.RightNo == BlockNo;
                        });
}

void BlockPairRemove(std::int32_t BlockNo) noexcept {
    if (const auto Found = BlockPairOf(BlockNo); Found != BlockPairTable.cend())
        BlockPairTable.erase(Found);
}

void BlocksLeaveOrgFile(std::int32_t OrgNo) {
    const std::vector<PlacedBlock> Blocks = BlocksOfOrgFile(OrgNo);
    OrgPairsMake(Blocks);
    PlacedBlock Before = {};
    for (const PlacedBlock& Each : Blocks) {
        if (const BlockRec& Block = BlockAt(Each.BlockNo); Block.BlockKind == BlockOrgFile) {
            const BlockRec& Same = BlockAt(Before.BlockNo);
            if (BlockInMemory(Same) && Before.FilePos == Each.FilePos &&
                Same.BlockLen == Block.BlockLen)
                BlockTakeSamples(Each.BlockNo, Same.BlockData);
            else
                BlockToMemory(Each.BlockNo);
        }
        Before = Each;
    }
}

} // namespace quoril

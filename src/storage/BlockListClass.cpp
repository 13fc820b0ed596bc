#include "storage/BlockListClass.h"

#include "base/Arithmetic.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <utility>

namespace quoril {

namespace {

/// Splitting a block of an original file reads it. Of a long block only so many samples on either
/// side of the border are read; the rest stays as it is.
constexpr std::int64_t MostBesideBorder = 32768;

/// How many of them for a block of this kind. Taking an edit back may split padding that lies on
/// top of other silence: silence needs neither memory nor disk for that.
std::int64_t BesideBorder(std::int32_t Kind) {
    return Kind == BlockSilence ? 0 : MostBesideBorder;
}

/// The pieces of a block with a border at `Position`, which lies strictly inside. The block stays.
/// On failure nothing is left.
BlockSet PiecesWithBorder(std::int32_t BlockNo, std::int32_t Position) {
    const std::int32_t Kind = BlockAt(BlockNo).BlockKind;
    const std::int64_t Start = BlockAt(BlockNo).BlockStart;
    const std::int64_t Last = Start + BlockAt(BlockNo).BlockLen - 1;
    std::int32_t FirstNo = 0;
    std::int32_t SecondNo = 0;
    const std::int64_t From = std::max(Start, Position - BesideBorder(Kind));
    const std::int64_t To = std::min(Last, Position + BesideBorder(Kind) - 1);
    if ((Kind != BlockOrgFile && Kind != BlockSilence) || (From == Start && To == Last)) {
        BlockBrake(BlockNo, Position, FirstNo, SecondNo);
        return {FirstNo, SecondNo};
    }
    BlockSet Pieces;
    const auto Cut = [&](std::int64_t First, std::int64_t Until) {
        Pieces.push_back(BlockCutRange(BlockNo, static_cast<std::int32_t>(First),
                                       static_cast<std::int32_t>(Until)));
        BlockAt(Pieces.back()).BlockStart = static_cast<std::int32_t>(First);
    };
    try {
        if (Start < From)
            Cut(Start, From - 1);
        if (To < Last)
            Cut(To + 1, Last);
        if (To < From)
            return Pieces;
        Cut(From, To);
        BlockBrake(Pieces.back(), Position, FirstNo, SecondNo);
    } catch (...) {
        BlockSetFree(Pieces);
        throw;
    }
    BlockFree(Pieces.back());
    Pieces.back() = FirstNo;
    Pieces.push_back(SecondNo);
    return Pieces;
}

} // namespace

void BlockListClass::Append(std::int32_t BlockNo) {
    Items.push_back(BlockNo);
    IndexValid = false;
}

void BlockListClass::Replace(std::int32_t Index, std::int32_t BlockNo) {
    Items[static_cast<std::size_t>(Index)] = BlockNo;
    IndexValid = false;
}

void BlockListClass::Assign(BlockSet NewItems) {
    Items = std::move(NewItems);
    IndexValid = false;
}

BlockSet BlockListClass::Take() {
    IndexValid = false;
    return std::exchange(Items, {});
}

void BlockListClass::Shift(std::int32_t FromPos, std::int32_t Delta) {
    for (const std::int32_t BlockNo : Items)
        if (BlockAt(BlockNo).BlockStart >= FromPos)
            (void)AddLong(BlockAt(BlockNo).BlockStart, Delta);
    for (const std::int32_t BlockNo : Items)
        if (BlockAt(BlockNo).BlockStart >= FromPos)
            BlockAt(BlockNo).BlockStart += Delta;
    IndexValid = false;
}

void BlockListClass::IndexMake() const {
    Sorted.clear();
    Sorted.reserve(Items.size());
    for (std::size_t i = 0; i < Items.size(); ++i) {
        const BlockRec& Block = BlockAt(Items[i]);
        if (Block.BlockLen > 0)
            Sorted.push_back({Block.BlockStart, Block.BlockLen, static_cast<std::int32_t>(i)});
    }
    std::sort(Sorted.begin(), Sorted.end(),
              [](const Place& A, const Place& B) { return A.Start < B.Start; });
    const auto Clash =
        std::adjacent_find(Sorted.begin(), Sorted.end(), [](const Place& A, const Place& B) {
            return std::int64_t{A.Start} + A.Len > B.Start;
        });
    Disjoint = Clash == Sorted.end();
    IndexValid = true;
}

std::int32_t BlockListClass::Find(std::int32_t Position, bool Last) const {
    if (!IndexValid)
        IndexMake();
    const auto Holds = [&](const Place& One) {
        return Position >= One.Start && Position - One.Start < One.Len;
    };
    if (Disjoint) {
        auto After =
            std::upper_bound(Sorted.begin(), Sorted.end(), Position,
                             [](std::int32_t Pos, const Place& One) { return Pos < One.Start; });
        return After != Sorted.begin() && Holds(*--After) ? After->Index : -1;
    }
    std::int32_t Found = -1;
    for (const Place& One : Sorted)
        if (Holds(One) && (Found < 0 || (Last ? One.Index > Found : One.Index < Found)))
            Found = One.Index;
    return Found;
}

std::int32_t BlockListClass::FirstHolding(std::int32_t Position) const {
    return Find(Position, false);
}

std::int32_t BlockListClass::LastHolding(std::int32_t Position) const {
    return Find(Position, true);
}

std::vector<std::int32_t> BlockListClass::Overlapping(std::int32_t FromPos,
                                                      std::int32_t ToPos) const {
    if (!IndexValid)
        IndexMake();
    std::vector<std::int32_t> Result;
    // With disjoint blocks at most one begins before the range and reaches into it.
    auto Begin = Sorted.begin();
    if (Disjoint) {
        Begin =
            std::upper_bound(Sorted.begin(), Sorted.end(), FromPos,
                             [](std::int32_t Pos, const Place& One) { return Pos < One.Start; });
        if (Begin != Sorted.begin())
            --Begin;
    }
    for (auto One = Begin; One != Sorted.end() && One->Start <= ToPos; ++One)
        if (std::int64_t{One->Start} + One->Len > FromPos)
            Result.push_back(One->Index);
    std::sort(Result.begin(), Result.end());
    return Result;
}

std::int64_t BlockListClass::NextStart(std::int32_t Position) const {
    if (!IndexValid)
        IndexMake();
    const auto After =
        std::upper_bound(Sorted.begin(), Sorted.end(), Position,
                         [](std::int32_t Pos, const Place& One) { return Pos < One.Start; });
    return After == Sorted.end() ? std::int64_t{1} << 31 : After->Start;
}

BlockListClass::Stretch BlockListClass::StretchAt(std::int32_t Position) const {
    const std::int64_t BeforeNext = NextStart(Position) - 1;
    const std::int32_t Index = LastHolding(Position);
    if (Index < 0)
        return {0, BeforeNext};
    const BlockRec& Block = BlockAt(At(Index));
    return {At(Index), std::min(BeforeNext, std::int64_t{Block.BlockStart} + Block.BlockLen - 1)};
}

void BlockListClass::MakeBorder(std::int32_t Position) {
    const auto StrictlyInside = [&](std::int32_t BlockNo) {
        const BlockRec& Block = BlockAt(BlockNo);
        return Block.BlockStart < Position &&
               Position < std::int64_t{Block.BlockStart} + Block.BlockLen;
    };
    // Silent padding may lie on top of other silence; then more than one block is split.
    for (std::size_t i = 0; i < Items.size(); ++i) {
        const std::int32_t OldNo = Items[i];
        if (!StrictlyInside(OldNo))
            continue;
        const BlockSet Pieces = PiecesWithBorder(OldNo, Position);
        Items[i] = Pieces.front();
        Items.insert(Items.end(), Pieces.begin() + 1, Pieces.end());
        IndexValid = false;
        BlockFree(OldNo);
    }
}

} // namespace quoril

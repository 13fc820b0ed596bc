#include "storage/PairReader.h"

#include "storage/BlockTableInner.h"

#include <algorithm>

namespace quoril {

namespace {

/// Samples of a run: with both channels and what is decoded, little enough for the processor's
/// cache.
constexpr std::int32_t LongestRun = 32768;

} // namespace

PairReader::PairReader(const BlockListClass* Left, const BlockListClass* Right) {
    Channels[0].List = Left;
    Channels[1].List = Right;
}

std::int32_t PairReader::RunAt(std::int32_t Pos, std::int32_t Most) const {
    std::int64_t Run = std::min(Most, LongestRun);
    for (const Channel& Each : Channels)
        if (Each.List != nullptr)
            Run = std::min(Run, Each.List->StretchAt(Pos).Last - Pos + 1);
    return static_cast<std::int32_t>(Run);
}

std::int32_t PairReader::Read(std::int32_t Pos, std::int32_t Most) {
    const std::int32_t Count = RunAt(Pos, Most);
    std::array<std::int16_t*, 2> Targets{};
    for (std::size_t c = 0; c < 2; ++c) {
        Channel& One = Channels[c];
        if (One.List == nullptr)
            continue;
        One.BlockNo = One.List->StretchAt(Pos).BlockNo;
        if (Near(One, Pos, static_cast<std::size_t>(Count)))
            continue;
        One.Buffer.resize(LongestRun);
        Targets[c] = One.Buffer.data();
        One.Samples = std::span(One.Buffer).first(static_cast<std::size_t>(Count));
    }
    const std::int32_t Last = Pos + (Count - 1);
    if (Targets[0] != nullptr && Targets[1] != nullptr)
        BlockPairReadTo(Channels[0].BlockNo, Channels[1].BlockNo, Pos, Last, Targets[0],
                        Targets[1]);
    else
        for (std::size_t c = 0; c < 2; ++c)
            if (Targets[c] != nullptr)
                BlockRangeReadTo(Channels[c].BlockNo, Pos, Last, Targets[c]);
    return Count;
}

bool PairReader::Near(Channel& One, std::int32_t Pos, std::size_t Count) {
    static const std::vector<std::int16_t> Zeros(LongestRun);
    const BlockRec& Block = BlockAt(One.BlockNo);
    One.Held = {}; // what was read before need not stay
    if (One.BlockNo == 0 || Block.BlockKind == BlockSilence) {
        One.Samples = std::span(Zeros).first(Count);
        return true;
    }
    if (!BlockInMemory(Block))
        return false;
    One.Held = Block.BlockData;
    One.Samples = {One.Held.Read() + (Pos - Block.BlockStart), Count};
    return true;
}

void PairReader::Fill(std::int32_t FromPos, std::int32_t ToPos, std::int16_t* TargetL,
                      std::int16_t* TargetR) {
    for (std::int64_t Pos = FromPos; Pos <= ToPos;) {
        const std::int64_t Most = std::min<std::int64_t>(ToPos - Pos + 1, LongestRun);
        const std::int32_t Count =
            Read(static_cast<std::int32_t>(Pos), static_cast<std::int32_t>(Most));
        if (!Left().empty())
            std::ranges::copy(Left(), TargetL + (Pos - FromPos));
        if (!Right().empty())
            std::ranges::copy(Right(), TargetR + (Pos - FromPos));
        Pos += Count;
    }
}

} // namespace quoril

#include "storage/CarrierWalk.h"

#include "storage/BlockTableInner.h"
#include "storage/PairReader.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace quoril {

namespace {

using RunIn = std::span<const std::int16_t>;

/// Samples of a run: small enough for the processor's cache.
constexpr std::int32_t RunLength = 32768;

const BlockListClass* ListOf(const BlockCarrBuffClass* Carrier) {
    return Carrier == nullptr ? nullptr : &Carrier->Blocks();
}

/// What of a run from `First` on lies before the end of a channel of `Length` samples.
RunIn Part(RunIn Samples, std::int32_t First, std::int32_t Length) {
    const auto There = static_cast<std::size_t>(std::max(Length - First + 1, 0));
    return Samples.first(std::min(Samples.size(), There));
}

/// A channel that is being changed, block by block.
class ChangedChannel {
  public:
    ChangedChannel(const ChannelMerge& Merged, std::int32_t Ahead)
        : Channel(Merged), Length(Merged.Carrier->WaveINos) {
        if (Channel.Other != nullptr)
            Length = std::min(Length, Channel.Other->WaveINos - Ahead);
    }

    /// Samples from the first on that are to be changed.
    [[nodiscard]] std::int32_t ChangedLength() const noexcept { return Length; }

    /// Makes ready for what stands at a position.
    void Reach(std::int32_t Pos) {
        if (BlockNo == 0 && Pos <= Length)
            Open(Pos);
    }
    /// `Other` is empty for a channel that is changed by itself.
    void Run(std::int32_t Pos, RunIn Samples, RunIn Other) {
        if (BlockNo == 0)
            return; // no block, or behind the end
        const RunIn In = Part(Samples, Pos, Length);
        Channel.Merge(Pos, In, Part(Other, Pos, Length),
                      {Target.Write() + (Pos - Start), In.size()});
        const std::int32_t Next = Pos + static_cast<std::int32_t>(In.size());
        if (Next > Last || Next > Length)
            Close(Next);
    }

  private:
    void Open(std::int32_t Pos) {
        const BlockListClass& List = Channel.Carrier->Blocks();
        const std::int32_t Index = List.FirstHolding(Pos);
        if (Index < 0)
            return;
        BlockNo = List.At(Index);
        BlockRec& Block = BlockAt(BlockNo);
        Block.BlockStamp = NextBlockStamp();
        Start = Block.BlockStart;
        Last = Start + (Block.BlockLen - 1);
        // Samples that nobody else has are changed where they are. Others are not brought into
        // memory first and then changed: the change itself makes the copy.
        InPlace = BlockInMemory(Block) && Block.BlockData.Alone();
        if (InPlace)
            BlockToPrivateMemory(BlockNo);
        Target = InPlace ? Block.BlockData : SampleRun::Unfilled(Block.BlockLen);
    }
    /// What is not to be changed, from `Next` on, stays as it is.
    void Close(std::int32_t Next) {
        if (!InPlace && Next <= Last)
            BlockRangeReadTo(BlockNo, Next, Last, Target.Write() + (Next - Start));
        BlockTakeSamples(std::exchange(BlockNo, 0), std::move(Target));
    }

    const ChannelMerge& Channel;
    std::int32_t Length;
    std::int32_t BlockNo = 0; ///< of the block in work
    std::int32_t Start = 0;
    std::int32_t Last = 0;
    bool InPlace = false;
    SampleRun Target;
};

/// Brings the blocks of some channels at a position into memory as far as they find room there, in
/// one pass when they are one stretch of an interleaved file.
void BringNear(std::span<const ChannelVisit> Channels, std::int32_t Pos) {
    std::array<std::int32_t, 2> Nos{};
    std::int64_t Fresh = 0;
    for (std::size_t c = 0; c < Channels.size(); ++c) {
        Nos[c] = Channels[c].Carrier->Blocks().StretchAt(Pos).BlockNo;
        const BlockRec& Block = BlockAt(Nos[c]);
        if (Block.BlockKind == BlockWorkFile || Block.BlockKind == BlockOrgFile)
            Fresh += std::int64_t{2} * Block.BlockLen;
    }
    if (MemoryUsed + Fresh > MemoryBudget && Fresh > 0)
        return;
    (void)OrgPairMake(Nos[0], Nos[1]);
    for (const std::int32_t No : Nos)
        if (No != 0 && BlockAt(No).BlockKind != BlockSilence)
            BlockToMemory(No);
}

} // namespace

void ChangeSideBySide(std::span<const ChannelChange> Channels, const WalkReached& Reached) {
    std::vector<ChannelMerge> Alone;
    for (const ChannelChange& Each : Channels)
        Alone.push_back({Each.Carrier, nullptr,
                         [&Each](std::int32_t First, RunIn In, RunIn, std::span<std::int16_t> Out) {
                             Each.Change(First, In, Out);
                         }});
    MergeSideBySide(Alone, 0, Reached);
}

void MergeSideBySide(std::span<const ChannelMerge> Channels, std::int32_t Ahead,
                     const WalkReached& Reached) {
    std::vector<ChangedChannel> Changed;
    std::array<const BlockListClass*, 2> Own{};
    std::array<const BlockListClass*, 2> Others{};
    std::int32_t Longest = 0;
    for (std::size_t c = 0; c < Channels.size(); ++c) {
        Longest = std::max(Longest, Changed.emplace_back(Channels[c], Ahead).ChangedLength());
        Own[c] = ListOf(Channels[c].Carrier);
        Others[c] = ListOf(Channels[c].Other);
    }
    PairReader Reader(Own[0], Own[1]);
    PairReader Beside(Others[0], Others[1]);
    for (std::int32_t Done = 0; Done < Longest;) {
        const std::int32_t Pos = Done + 1;
        for (ChangedChannel& Each : Changed)
            Each.Reach(Pos);
        const std::int32_t Run = Reader.RunAt(Pos, std::min(RunLength, Longest - Done));
        const std::int32_t Count = Beside.Read(Pos + Ahead, Run);
        (void)Reader.Read(Pos, Count);
        Changed[0].Run(Pos, Reader.Left(), Beside.Left());
        if (Changed.size() > 1)
            Changed[1].Run(Pos, Reader.Right(), Beside.Right());
        Done += Count;
        Reached(Done);
    }
}

void VisitSideBySide(std::span<const ChannelVisit> Channels, const WalkReached& Reached) {
    std::array<const BlockListClass*, 2> Lists{};
    std::int32_t Longest = 0;
    for (std::size_t c = 0; c < Channels.size(); ++c) {
        Lists[c] = ListOf(Channels[c].Carrier);
        Longest = std::max(Longest, Channels[c].Carrier->WaveINos);
    }
    PairReader Reader(Lists[0], Lists[1]);
    for (std::int32_t Done = 0; Done < Longest;) {
        BringNear(Channels, Done + 1);
        const std::int32_t Count = Reader.Read(Done + 1, std::min(RunLength, Longest - Done));
        for (std::size_t c = 0; c < Channels.size(); ++c)
            if (const RunIn In = Part(c == 0 ? Reader.Left() : Reader.Right(), Done + 1,
                                      Channels[c].Carrier->WaveINos);
                !In.empty())
                Channels[c].Visit(Done + 1, In);
        Done += Count;
        Reached(Done);
    }
}

void ReadSideBySide(const BlockCarrBuffClass* Left, const BlockCarrBuffClass* Right,
                    WalkOrder Order, const PairVisit& Visit) {
    const std::int32_t LengthL = Left == nullptr ? 0 : Left->WaveINos;
    const std::int32_t LengthR = Right == nullptr ? 0 : Right->WaveINos;
    const std::int32_t Longest = std::max(LengthL, LengthR);
    PairReader Reader(ListOf(Left), ListOf(Right));
    if (Order == WalkOrder::Rising) {
        for (std::int32_t Done = 0; Done < Longest;) {
            const std::int32_t Count = Reader.Read(Done + 1, std::min(RunLength, Longest - Done));
            Visit(Done + 1, Part(Reader.Left(), Done + 1, LengthL),
                  Part(Reader.Right(), Done + 1, LengthR));
            Done += Count;
        }
        return;
    }
    std::vector<std::int16_t> SamplesL(Left == nullptr ? 0 : RunLength);
    std::vector<std::int16_t> SamplesR(Right == nullptr ? 0 : RunLength);
    for (std::int32_t Rest = Longest; Rest > 0;) {
        const std::int32_t First = std::max(Rest - RunLength, 0) + 1;
        Reader.Fill(First, Rest, SamplesL.data(), SamplesR.data());
        const std::int32_t Samples = Rest - First + 1;
        const auto Count = static_cast<std::size_t>(Samples);
        Visit(First, Part(RunIn(SamplesL).first(std::min(Count, SamplesL.size())), First, LengthL),
              Part(RunIn(SamplesR).first(std::min(Count, SamplesR.size())), First, LengthR));
        Rest = First - 1;
    }
}

} // namespace quoril

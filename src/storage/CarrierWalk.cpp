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

template <class ChannelType>
std::int32_t LongestOf(std::span<const ChannelType> Channels) {
    std::int32_t Longest = 0;
    for (const ChannelType& Each : Channels)
        Longest = std::max(Longest, Each.Carrier->WaveINos);
    return Longest;
}

/// A channel that is being changed, block by block.
class ChangedChannel {
  public:
    explicit ChangedChannel(const ChannelChange& One) : Channel(One) {}

    /// Makes ready for what stands at a position.
    void Reach(std::int32_t Pos) {
        if (BlockNo == 0 && Pos <= Channel.Carrier->WaveINos)
            Open(Pos);
    }
    void Run(std::int32_t Pos, RunIn Samples) {
        if (BlockNo == 0)
            return; // no block, or behind the end
        const RunIn In = Samples.first(std::min(
            Samples.size(), static_cast<std::size_t>(Channel.Carrier->WaveINos - Pos + 1)));
        Channel.Change(Pos, In, {Target.Write() + (Pos - Start), In.size()});
        const std::int32_t Next = Pos + static_cast<std::int32_t>(In.size());
        if (Next > Last || Next > Channel.Carrier->WaveINos)
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
        if (Block.BlockKind == BlockMemoryAndFile)
            BlockToPrivateMemory(BlockNo);
        Start = Block.BlockStart;
        Last = Start + (Block.BlockLen - 1);
        // Samples that nobody else has are changed where they are. Others are not brought into
        // memory first and then changed: the change itself makes the copy.
        InPlace = Block.BlockKind == BlockMemory && Block.BlockData.Alone();
        Target = InPlace ? Block.BlockData : SampleRun::Unfilled(Block.BlockLen);
        Keep(Start, Pos - 1);
    }
    void Close(std::int32_t Next) {
        Keep(Next, Last);
        BlockTakeSamples(std::exchange(BlockNo, 0), std::move(Target));
    }
    /// What lies outside the range stays as it is.
    void Keep(std::int32_t From, std::int32_t To) {
        if (!InPlace && From <= To)
            BlockRangeReadTo(BlockNo, From, To, Target.Write() + (From - Start));
    }

    const ChannelChange& Channel;
    std::int32_t BlockNo = 0; ///< of the block in work
    std::int32_t Start = 0;
    std::int32_t Last = 0;
    bool InPlace = false;
    SampleRun Target;
};

/// The blocks of both channels at a position come into memory in one pass when they are one stretch
/// of an interleaved file.
void JoinAt(std::span<const ChannelVisit> Channels, std::int32_t Pos) {
    std::array<std::int32_t, 2> Nos{};
    for (std::size_t c = 0; c < 2; ++c) {
        const BlockListClass& List = Channels[c].Carrier->Blocks();
        const std::int32_t Index = List.FirstHolding(Pos);
        Nos[c] = Index < 0 ? 0 : List.At(Index);
    }
    if (OrgPairMake(Nos[0], Nos[1]))
        BlockAt(Nos[1]).BlockStamp = NextBlockStamp(); // it is not to leave before its turn
}

const BlockListClass* ListOf(const BlockCarrBuffClass* Carrier) {
    return Carrier == nullptr ? nullptr : &Carrier->Blocks();
}

} // namespace

void ChangeSideBySide(std::span<const ChannelChange> Channels, const WalkReached& Reached) {
    const std::int32_t Longest = LongestOf(Channels);
    std::vector<ChangedChannel> Changed(Channels.begin(), Channels.end());
    PairReader Reader(ListOf(Channels[0].Carrier),
                      ListOf(Channels.size() < 2 ? nullptr : Channels[1].Carrier));
    for (std::int32_t Done = 0; Done < Longest;) {
        for (ChangedChannel& Each : Changed)
            Each.Reach(Done + 1);
        const std::int32_t Count = Reader.Read(Done + 1, std::min(RunLength, Longest - Done));
        Changed[0].Run(Done + 1, Reader.Left());
        if (Changed.size() > 1)
            Changed[1].Run(Done + 1, Reader.Right());
        Done += Count;
        Reached(Done);
    }
}

void VisitSideBySide(std::span<const ChannelVisit> Channels, const WalkReached& Reached) {
    const std::int32_t Longest = LongestOf(Channels);
    for (std::int32_t Done = 0; Done < Longest;) {
        std::int64_t End = std::int64_t{Done} + std::min(RunLength, Longest - Done);
        for (const ChannelVisit& Each : Channels)
            End = std::min(End, Each.Carrier->Blocks().StretchAt(Done + 1).Last);
        const auto Last = static_cast<std::int32_t>(End);
        if (Channels.size() == 2)
            JoinAt(Channels, Done + 1);
        for (const ChannelVisit& Each : Channels)
            if (Done < Each.Carrier->WaveINos)
                Each.Carrier->WaveRunsRead(Done + 1, std::min(Last, Each.Carrier->WaveINos),
                                           RunLength, Each.Visit);
        Done = Last;
        Reached(Done);
    }
}

void ReadSideBySide(const BlockCarrBuffClass* Left, const BlockCarrBuffClass* Right,
                    WalkOrder Order, const PairVisit& Visit) {
    const std::int32_t LengthL = Left == nullptr ? 0 : Left->WaveINos;
    const std::int32_t LengthR = Right == nullptr ? 0 : Right->WaveINos;
    const std::int32_t Longest = std::max(LengthL, LengthR);
    PairReader Reader(ListOf(Left), ListOf(Right));
    const auto Part = [](RunIn Samples, std::int32_t First, std::int32_t Length) {
        const auto There = static_cast<std::size_t>(std::max(Length - First + 1, 0));
        return Samples.first(std::min(Samples.size(), There));
    };
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

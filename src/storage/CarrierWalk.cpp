#include "storage/CarrierWalk.h"

#include "storage/BlockTableInner.h"
#include "storage/PairReader.h"

#include <algorithm>
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

/// Blocks of both channels that are one stretch of an interleaved file are read in one pass.
void JoinInterleaved(const BlockCarrBuffClass& Left, const BlockCarrBuffClass& Right) {
    const BlockSet& NumbersL = Left.Blocks().Numbers();
    const BlockSet& NumbersR = Right.Blocks().Numbers();
    for (std::size_t i = 0; i < std::min(NumbersL.size(), NumbersR.size()); ++i)
        if (BlocksInterleave(BlockAt(NumbersL[i]), BlockAt(NumbersR[i])))
            OrgPairAdd(NumbersL[i], NumbersR[i]);
}

/// Calls `Walk(Channel, From, To)` for run after run of all channels.
template <class ChannelType, class WalkType>
void SideBySide(std::span<const ChannelType> Channels, const WalkReached& Reached,
                const WalkType& Walk) {
    if (Channels.size() == 2)
        JoinInterleaved(*Channels[0].Carrier, *Channels[1].Carrier);
    const std::int32_t Longest = LongestOf(Channels);
    for (std::int32_t Done = 0; Done < Longest;) {
        const std::int32_t Last = Done + std::min(RunLength, Longest - Done);
        for (const ChannelType& Each : Channels)
            if (Done < Each.Carrier->WaveINos)
                Walk(Each, Done + 1, std::min(Last, Each.Carrier->WaveINos));
        Done = Last;
        Reached(Done);
    }
}

} // namespace

void ChangeSideBySide(std::span<const ChannelChange> Channels, const WalkReached& Reached) {
    SideBySide(Channels, Reached,
               [](const ChannelChange& Each, std::int32_t From, std::int32_t To) {
                   Each.Carrier->WaveRunsChange(From, To, RunLength, Each.Change);
               });
}

void VisitSideBySide(std::span<const ChannelVisit> Channels, const WalkReached& Reached) {
    SideBySide(Channels, Reached, [](const ChannelVisit& Each, std::int32_t From, std::int32_t To) {
        Each.Carrier->WaveRunsRead(From, To, RunLength, Each.Visit);
    });
}

void ReadSideBySide(const BlockCarrBuffClass* Left, const BlockCarrBuffClass* Right,
                    WalkOrder Order, const PairVisit& Visit) {
    const auto ListOf = [](const BlockCarrBuffClass* Carrier) {
        return Carrier == nullptr ? nullptr : &Carrier->Blocks();
    };
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
        const auto Count = static_cast<std::size_t>(Rest - First + 1);
        Visit(First, Part(RunIn(SamplesL).first(std::min(Count, SamplesL.size())), First, LengthL),
              Part(RunIn(SamplesR).first(std::min(Count, SamplesR.size())), First, LengthR));
        Rest = First - 1;
    }
}

} // namespace quoril

#include "StorageChecks.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>
#include <set>

namespace quoril::test {

namespace {

/// Bytes of the samples that blocks hold in memory; samples that several hold count once.
std::int64_t BytesHeld() {
    std::map<const void*, std::vector<std::pair<std::int32_t, std::int32_t>>> Buffers;
    for (const BlockRec& One : BlockTable)
        if (One.BlockKind == 1 || One.BlockKind == 2)
            Buffers[One.BlockData.BufferId()].emplace_back(One.BlockData.Offset(),
                                                           One.BlockData.Offset() + One.BlockLen);
    std::int64_t Held = 0;
    for (auto& [Id, Stretches] : Buffers) {
        std::sort(Stretches.begin(), Stretches.end());
        std::int32_t Done = 0;
        for (const auto& [From, To] : Stretches) {
            Held += std::max(0, To - std::max(From, Done));
            Done = std::max(Done, To);
        }
    }
    return 2 * Held;
}

std::string BrokenCounts() {
    std::map<std::int32_t, std::int32_t> WorkUse;
    std::map<std::int32_t, std::int32_t> OrgUse;
    for (std::size_t No = 1; No < BlockTable.size(); ++No) {
        const BlockRec& One = BlockTable[No];
        const bool InMemory = One.BlockKind == 1 || One.BlockKind == 2;
        if (InMemory && One.BlockData.Read() == nullptr)
            return fmt::format("block {} has no samples", No);
        if (One.BlockKind == 1 || One.BlockKind == 3)
            ++WorkUse[One.FileNo];
        if (One.BlockKind == 4)
            ++OrgUse[One.FileNo];
    }
    const std::int64_t Bytes = BytesHeld();
    if (Bytes != MemoryUsed)
        return fmt::format("MemoryUsed is {} and should be {}", MemoryUsed, Bytes);
    for (std::size_t No = 1; No < WorkFileTable.size(); ++No)
        if (WorkFileTable[No].WorkFileUse != WorkUse[static_cast<std::int32_t>(No)])
            return fmt::format("work file {} has use {} and should have {}", No,
                               WorkFileTable[No].WorkFileUse,
                               WorkUse[static_cast<std::int32_t>(No)]);
    for (std::size_t No = 1; No < OrgFileTable.size(); ++No)
        if (OrgFileTable[No].OrgFileUse != OrgUse[static_cast<std::int32_t>(No)])
            return fmt::format("original file {} has use {} and should have {}", No,
                               OrgFileTable[No].OrgFileUse, OrgUse[static_cast<std::int32_t>(No)]);
    return {};
}

/// Samples that lie in memory and in a work file are the same.
std::string BrokenTwins() {
    for (std::size_t No = 1; No < BlockTable.size(); ++No) {
        const BlockRec& One = BlockTable[No];
        if (One.BlockKind != 1)
            continue;
        std::vector<std::int16_t> InFile(static_cast<std::size_t>(One.BlockLen));
        FileForReading(WorkFileTable[static_cast<std::size_t>(One.FileNo)].WorkFileName)
            .Read(One.FilePos - 1, InFile.data(), InFile.size() * 2);
        if (!std::equal(InFile.begin(), InFile.end(), One.BlockData.Read()))
            return fmt::format("block {} differs from its work file", No);
    }
    return {};
}

} // namespace

std::string BrokenRule(const std::vector<const BlockSet*>& Lists) {
    std::set<std::int32_t> Seen;
    for (const BlockSet* const List : Lists)
        for (const std::int32_t BlockNo : *List) {
            if (!Seen.insert(BlockNo).second)
                return fmt::format("block {} stands in two lists", BlockNo);
            if (Block(BlockNo).BlockKind == 0)
                return fmt::format("block {} stands in a list and is free", BlockNo);
        }
    for (std::size_t No = 1; No < BlockTable.size(); ++No)
        if (BlockTable[No].BlockKind != 0 && !Seen.contains(static_cast<std::int32_t>(No)))
            return fmt::format("block {} stands in no list", No);
    for (const BlockPairRec& Pair : BlockPairTable)
        if (Block(Pair.LeftNo).BlockKind != 4 || Block(Pair.RightNo).BlockKind != 4)
            return "a pair holds a block that is not in an original file";
    if (std::string Words = BrokenCounts(); !Words.empty())
        return Words;
    return BrokenTwins();
}

std::string BrokenRule(const FileMemoClass& Store,
                       const std::vector<const BlockCarrBuffClass*>& Carriers) {
    std::vector<const BlockSet*> Lists{&Store.BlocksL().Numbers(), &Store.BlocksR().Numbers()};
    for (const BlockCarrBuffClass* const Carrier : Carriers)
        Lists.push_back(&Carrier->Blocks().Numbers());
    for (const UndoRec& Record : Store.UndoRecords()) {
        Lists.push_back(&Record.BlocksL);
        Lists.push_back(&Record.BlocksR);
    }
    return BrokenRule(Lists);
}

std::int16_t TestSample(std::int32_t Position, std::int32_t Channel) {
    const auto Mixed = static_cast<std::uint32_t>(Position) * 2654435761U +
                       static_cast<std::uint32_t>(Channel) * 4050300U;
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(Mixed >> 13));
}

std::vector<std::int16_t> TestSamples(std::int32_t From, std::int32_t To, std::int32_t Channel) {
    std::vector<std::int16_t> Result;
    for (std::int32_t p = From; p <= To; ++p)
        Result.push_back(TestSample(p, Channel));
    return Result;
}

std::int32_t MemoryBlock(std::int32_t Length, std::int32_t Start) {
    const std::int32_t No = BlockNew(Length, 2);
    std::int16_t* const Where = BlockToWrite(No);
    for (std::int32_t i = 0; i < Length; ++i)
        Where[i] = TestSample(Start + i);
    BlockTable[static_cast<std::size_t>(No)].BlockStart = Start;
    return No;
}

std::int32_t WorkFileBlock(std::int32_t Length, std::int32_t Start) {
    const std::int32_t No = MemoryBlock(Length, Start);
    BlockToFile(No);
    return No;
}

std::string RawFile(const TestSession& Session, const std::string& Name, std::int32_t Frames,
                    std::int32_t Channels, std::int32_t Bits) {
    std::vector<std::uint8_t> Bytes;
    for (std::int32_t p = 1; p <= Frames; ++p)
        for (std::int32_t c = 1; c <= Channels; ++c) {
            const auto Value = static_cast<std::uint16_t>(TestSample(p, c));
            Bytes.push_back(static_cast<std::uint8_t>(Value & 255));
            if (Bits == 16)
                Bytes.push_back(static_cast<std::uint8_t>(Value >> 8));
        }
    return Session.WriteFile(Name, Bytes);
}

std::int32_t OrgBlock(std::int32_t OrgNo, std::int32_t Frames, std::int32_t Channel,
                      std::int32_t Start) {
    OrgFileRec& File = OrgFileTable.at(static_cast<std::size_t>(OrgNo));
    const std::int32_t No = BlockNew(Frames, 5);
    BlockRec& One = BlockTable[static_cast<std::size_t>(No)];
    One.BlockKind = 4;
    One.FileNo = OrgNo;
    One.FilePos = 1 + (Channel - 1) * File.OrgFileBits / 8;
    One.BlockStart = Start;
    ++File.OrgFileUse;
    return No;
}

void CarrierFill(BlockCarrBuffClass& Carrier, std::int32_t Length, std::int32_t Channel) {
    Carrier.ReDimSize(Length);
    for (std::int32_t p = 1; p <= Length; ++p)
        Carrier.WaveLR(p, TestSample(p, Channel));
}

std::vector<std::int16_t> BlockSamples(std::int32_t BlockNo) {
    std::vector<std::int16_t> Result;
    const BlockRec& One = Block(BlockNo);
    BlockRangeRead(BlockNo, One.BlockStart, One.BlockStart + One.BlockLen - 1, Result);
    return Result;
}

std::vector<std::int16_t> ChannelSamples(const FileMemoClass& Store, std::int32_t Channel) {
    SampleArray Left;
    SampleArray Right;
    const std::int32_t Length = Channel == 1 ? Store.WaveNosL() : Store.WaveNosR();
    if (Length == 0)
        return {};
    Store.QuickBuffGet(1, Length, Channel, Left, Right);
    const SampleArray& Which = Channel == 1 ? Left : Right;
    return {Which.begin() + 1, Which.end()};
}

} // namespace quoril::test

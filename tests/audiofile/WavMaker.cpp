#include "WavMaker.h"

#include "storage/WoroFileBlockMod.h"

#include <fmt/format.h>

#include <map>
#include <ostream>
#include <random>

namespace quoril::test {

void PrintTo(const SampleForm& Form, std::ostream* Out) {
    *Out << Form.Bits << " bits, " << Form.Channels << " channels";
}

std::string NameOf(const SampleForm& Form) {
    return std::to_string(Form.Bits) + (Form.Channels == 2 ? "Stereo" : "Mono");
}

namespace {

void PutNumber(Bytes& To, std::int64_t Value, int Count) {
    for (int i = 0; i < Count; ++i)
        To.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(Value) >> (8 * i)));
}

} // namespace

Bytes TextBytes(const std::string& Text) {
    return {Text.begin(), Text.end()};
}

Bytes Joined(const std::vector<Bytes>& Parts) {
    Bytes All;
    for (const Bytes& Part : Parts)
        All.insert(All.end(), Part.begin(), Part.end());
    return All;
}

Bytes Chunk(const std::string& Name, const Bytes& Contents) {
    Bytes All = TextBytes(Name);
    PutNumber(All, static_cast<std::int64_t>(Contents.size()), 4);
    All = Joined({All, Contents});
    if (All.size() % 2 != 0)
        All.push_back(0);
    return All;
}

Bytes WavFile::Header() const {
    Bytes All = TextBytes("RIFF");
    const auto Size = static_cast<std::int64_t>(Data.size());
    PutNumber(All, Size + 36 + static_cast<std::int64_t>(Before.size() + FormatTail.size()), 4);
    All = Joined({All, TextBytes("WAVEfmt ")});
    PutNumber(All, 16 + static_cast<std::int64_t>(FormatTail.size()), 4);
    PutNumber(All, Tag, 2);
    PutNumber(All, Channels, 2);
    PutNumber(All, Rate, 4);
    PutNumber(All, std::int64_t{Rate} * Channels * Bits / 8, 4);
    PutNumber(All, Channels * Bits / 8, 2);
    PutNumber(All, Bits, 2);
    All = Joined({All, FormatTail, Before, TextBytes(DataName)});
    PutNumber(All, DataSize.value_or(Size), 4);
    return All;
}

Bytes WavFile::Whole() const {
    return Joined({Header(), Data, After});
}

Samples Noise(std::int32_t Count, std::int32_t Bits, std::uint32_t Seed) {
    std::mt19937 Random(Seed);
    Samples All(static_cast<std::size_t>(Count));
    for (std::int16_t& Sample : All)
        Sample = Bits == 8
                     ? static_cast<std::int16_t>(static_cast<std::int32_t>(Random() % 256) - 128)
                     : static_cast<std::int16_t>(Random());
    return All;
}

Bytes AudioBytes(const Samples& Interleaved, std::int32_t Bits) {
    Bytes All;
    All.reserve(Interleaved.size() * 2);
    for (const std::int16_t Sample : Interleaved) {
        if (Bits == 8)
            All.push_back(static_cast<std::uint8_t>(Sample + 128));
        else
            PutNumber(All, Sample, 2);
    }
    return All;
}

Samples EveryOther(const Samples& Interleaved, std::size_t First) {
    Samples Half;
    for (std::size_t i = First; i < Interleaved.size(); i += 2)
        Half.push_back(Interleaved[i]);
    return Half;
}

namespace {

Samples ChannelOf(const FileMemoClass& Store, std::int32_t Length, bool Right) {
    SampleArray L;
    SampleArray R;
    if (Length == 0)
        return {};
    Store.QuickBuffGet(1, Length, Right ? 2 : 1, L, R);
    const SampleArray& Array = Right ? R : L;
    return {Array.begin() + 1, Array.end()};
}

std::int32_t BlockOf(const Samples& From) {
    const auto Count = static_cast<std::int32_t>(From.size());
    SampleRun Run = SampleRun::Unfilled(Count);
    std::copy(From.begin(), From.end(), Run.Write());
    const std::int32_t BlockNo = BlockNewFilled(Count, std::move(Run));
    BlockTable[static_cast<std::size_t>(BlockNo)].BlockStart = 1;
    return BlockNo;
}

} // namespace

Samples LeftOf(const FileMemoClass& Store) {
    return ChannelOf(Store, Store.WaveNosL(), false);
}
Samples RightOf(const FileMemoClass& Store) {
    return ChannelOf(Store, Store.WaveNosR(), true);
}

void FillStore(FileMemoClass& Store, const WaveFormat& Format, const Samples& Left,
               const Samples& Right) {
    Store.WavFmtChannel = Format.Channel;
    Store.WavFmtFreq = Format.Freq;
    Store.WavFmtBits = Format.Bits;
    BlockCarrBuffClass CarrierL;
    BlockCarrBuffClass CarrierR;
    CarrierL.BuffBlocksPutFresh({BlockOf(Left)});
    if (Format.Channel == 2)
        CarrierR.BuffBlocksPutFresh({BlockOf(Right)});
    Store.SwitchUndoOff = true;
    Store.WaveDataInsert(1, Format.Channel == 2 ? 0 : 1, &CarrierL, &CarrierR, {}, true);
    Store.SwitchUndoOff = false;
}

TableUse TablesInUse() {
    TableUse Use;
    for (const BlockRec& Block : BlockTable)
        Use.Blocks += Block.BlockKind != BlockFreeSlot ? 1 : 0;
    for (const WorkFileRec& File : WorkFileTable)
        Use.WorkFiles += !File.WorkFileName.empty() ? 1 : 0;
    for (const OrgFileRec& File : OrgFileTable)
        Use.OrgFiles += !File.OrgFileName.empty() ? 1 : 0;
    Use.Pairs = static_cast<int>(BlockPairTable.size());
    return Use;
}

void PrintTo(const TableUse& Use, std::ostream* Out) {
    *Out << fmt::format("blocks {}, work files {}, original files {}, pairs {}", Use.Blocks,
                        Use.WorkFiles, Use.OrgFiles, Use.Pairs);
}

bool CountsHold() {
    std::map<std::int32_t, std::int32_t> Work;
    std::map<std::int32_t, std::int32_t> Org;
    std::int64_t Memory = 0;
    for (const BlockRec& Block : BlockTable) {
        if (Block.BlockKind == BlockMemoryAndFile || Block.BlockKind == BlockWorkFile)
            ++Work[Block.FileNo];
        if (Block.BlockKind == BlockOrgFile)
            ++Org[Block.FileNo];
        if (Block.BlockKind == BlockMemoryAndFile || Block.BlockKind == BlockMemory)
            Memory += 2 * std::int64_t{Block.BlockLen};
    }
    bool Hold = Memory == MemoryUsed;
    for (std::size_t i = 1; i < WorkFileTable.size(); ++i)
        Hold = Hold && WorkFileTable[i].WorkFileUse == Work[static_cast<std::int32_t>(i)];
    for (std::size_t i = 1; i < OrgFileTable.size(); ++i)
        Hold = Hold && OrgFileTable[i].OrgFileUse == Org[static_cast<std::int32_t>(i)];
    return Hold;
}

} // namespace quoril::test

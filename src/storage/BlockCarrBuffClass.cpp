#include "storage/BlockCarrBuffClass.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <utility>

namespace quoril {

BlockCarrBuffClass::BlockCarrBuffClass() : NewBlockLen(DefaultBlockLen()) {}

BlockCarrBuffClass::~BlockCarrBuffClass() {
    BlockSet Mine = BlkSet.Take();
    BlockSetFree(Mine);
    FilesSweep();
}

void BlockCarrBuffClass::BuffBlocksGet(BlockSet& BlkSetOut) const {
    BlkSetOut = BlkSet.Numbers();
}

void BlockCarrBuffClass::BuffBlocksGetCopy(BlockSet& BlkSetOut) const {
    BlockSet Copies;
    Copies.reserve(BlkSet.Numbers().size());
    try {
        for (const std::int32_t BlockNo : BlkSet.Numbers())
            Copies.push_back(BlockClone(BlockNo));
    } catch (...) {
        BlockSetFree(Copies);
        throw;
    }
    BlkSetOut = std::move(Copies);
}

std::unique_ptr<BlockCarrBuffClass> CarrierCopy(const BlockCarrBuffClass& Source) {
    auto Carrier = std::make_unique<BlockCarrBuffClass>();
    BlockSet Blocks;
    Source.BuffBlocksGetCopy(Blocks);
    Carrier->BuffBlocksPutFresh(std::move(Blocks));
    return Carrier;
}

void BlockCarrBuffClass::BuffBlocksPutFresh(BlockSet NewBlkSet) {
    std::int64_t Sum = 0;
    for (const std::int32_t BlockNo : NewBlkSet)
        Sum += BlockAt(BlockNo).BlockLen;
    BlockSet Old = BlkSet.Take();
    BlockSetFree(Old);
    BlkSet.Assign(std::move(NewBlkSet));
    WaveINos = ToLong(Sum);
    FirstBlockCurrent();
}

void BlockCarrBuffClass::QuickBuffGet(std::int32_t FromPos,
                                      std::vector<std::int16_t>& QBuff) const {
    if (QBuff.size() < 2)
        return;
    const std::int32_t ToPos =
        ToLong(std::int64_t{FromPos} + static_cast<std::int64_t>(QBuff.size()) - 2);
    for (const std::int32_t Index : BlkSet.Overlapping(FromPos, ToPos)) {
        std::int32_t From = 0;
        std::int32_t Length = 0;
        (void)BlockOverlap(BlockAt(BlkSet.At(Index)), FromPos, ToPos, From, Length);
        BlockRangeReadTo(BlkSet.At(Index), From, From + Length - 1,
                         QBuff.data() + (From - FromPos + 1));
    }
}

void BlockCarrBuffClass::ReDimSize(std::int32_t NewSz) {
    if (NewSz <= 0) {
        MsgBox("Error:\nCan not create buffer with zero size");
        return;
    }
    if (WaveINos < NewSz) {
        while (WaveINos < NewSz) {
            const std::int32_t Length = std::min(NewBlockLen, NewSz - WaveINos);
            const std::int32_t BlockNo = BlockNew(Length, BlockSilence);
            BlockAt(BlockNo).BlockStart = WaveINos + 1;
            BlkSet.Append(BlockNo);
            WaveINos += Length;
        }
    } else {
        const std::int64_t Border = std::int64_t{NewSz} + 1;
        if (Border <= WaveINos)
            BlkSet.MakeBorder(static_cast<std::int32_t>(Border));
        BlockSet Kept;
        for (const std::int32_t BlockNo : BlkSet.Take()) {
            if (BlockAt(BlockNo).BlockStart > NewSz)
                BlockFree(BlockNo);
            else
                Kept.push_back(BlockNo);
        }
        BlkSet.Assign(std::move(Kept));
        WaveINos = NewSz;
    }
    FirstBlockCurrent();
}

void BlockCarrBuffClass::FirstBlockCurrent() {
    Window.Empty();
    Window.BlockNo = BlkSet.Count() > 0 ? BlkSet.At(0) : 0;
}

bool BlockCarrBuffClass::FindCurrent(std::int32_t WavPos) {
    const BlockRec& Current = BlockAt(Window.BlockNo);
    const std::int64_t Offset = std::int64_t{WavPos} - Current.BlockStart;
    if (Window.BlockNo != 0 && Offset >= 0 && Offset < Current.BlockLen)
        return true;
    Window.Empty();
    const std::int32_t Index = BlkSet.FirstHolding(WavPos);
    Window.BlockNo = Index < 0 ? 0 : BlkSet.At(Index);
    if (Window.BlockNo == 0)
        return false;
    BlockAt(Window.BlockNo).BlockStamp = NextBlockStamp();
    return true;
}

std::int16_t BlockCarrBuffClass::ReadSlowly(std::int32_t WavPos) {
    if (!FindCurrent(WavPos) || BlockAt(Window.BlockNo).BlockKind == BlockSilence)
        return 0;
    if (!BlockInMemory(BlockAt(Window.BlockNo)))
        BlockToMemory(Window.BlockNo);
    const BlockRec& Block = BlockAt(Window.BlockNo);
    Window.First = static_cast<std::uint32_t>(Block.BlockStart);
    Window.ReadFrom = Block.BlockData.Read();
    Window.ReadLen = static_cast<std::uint32_t>(Block.BlockLen);
    return Window.ReadFrom[WavPos - Block.BlockStart];
}

void BlockCarrBuffClass::WriteSlowly(std::int32_t WavPos, std::int16_t Sample) {
    if (!FindCurrent(WavPos))
        return;
    BlockRec& Block = BlockAt(Window.BlockNo);
    if (Block.BlockKind != BlockMemory)
        BlockToPrivateMemory(Window.BlockNo);
    BlockSamplesAlone(Window.BlockNo);
    Window.First = static_cast<std::uint32_t>(Block.BlockStart);
    Window.ReadFrom = Window.WriteTo = Block.BlockData.Write();
    Window.ReadLen = Window.WriteLen = static_cast<std::uint32_t>(Block.BlockLen);
    Window.WriteTo[WavPos - Block.BlockStart] = Sample;
}

void BlockCarrBuffClass::WaveRunsRead(std::int32_t FromPos, std::int32_t ToPos,
                                      std::int32_t MostRun, const RunVisit& Visit) {
    static const std::vector<std::int16_t> Zeros(65536);
    for (std::int64_t Pos = FromPos; Pos <= ToPos;) {
        const auto At = static_cast<std::int32_t>(Pos);
        (void)ReadSlowly(At);
        std::int64_t Run = std::min<std::int64_t>(MostRun, ToPos - Pos + 1);
        SampleRun Held; // the visitor may touch other blocks, and so push this one out
        const std::int16_t* From = Zeros.data();
        if (Window.BlockNo == 0) {
            Run = std::min({Run, BlkSet.NextStart(At) - Pos, std::int64_t{65536}});
        } else {
            const BlockRec& Block = BlockAt(Window.BlockNo);
            const std::int32_t Offset = At - Block.BlockStart;
            Run = std::min<std::int64_t>(Run, Block.BlockLen - Offset);
            if (Block.BlockKind == BlockSilence) {
                Run = std::min(Run, std::int64_t{65536});
            } else {
                Held = Block.BlockData;
                From = Held.Read() + Offset;
            }
        }
        Visit(At, {From, static_cast<std::size_t>(Run)});
        Pos += Run;
    }
}

} // namespace quoril

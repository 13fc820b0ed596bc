// The document: reading samples out of it.
#include "storage/FileMemoClass.h"

#include "base/Arithmetic.h"
#include "base/ProgressReport.h"
#include "storage/BlockTableInner.h"
#include "storage/PortableBlock.h"

#include <algorithm>
#include <utility>

namespace quoril {

std::unique_ptr<FileMemoClass> WaveStore;

namespace {

/// An array for a stretch, indexes 0 to `Count`; kept as it is where the caller had one that long,
/// since clearing a large one costs as much as filling it.
void ArrayMake(SampleArray& Buff, std::int32_t Count) {
    Buff.resize(static_cast<std::size_t>(Count) + 1);
}

/// What one block gives of a stretch.
struct BlockPart {
    std::int32_t BlockNo = 0;
    std::int32_t From = 0;
    std::int32_t Length = 0;
};

/// Whether every place of a stretch lies in a block. Silent blocks may lie on top of one another,
/// so the sum of the lengths does not tell.
bool Cover(std::vector<BlockPart> Parts, std::int32_t FromPos, std::int32_t ToPos) {
    std::sort(Parts.begin(), Parts.end(),
              [](const BlockPart& A, const BlockPart& B) { return A.From < B.From; });
    std::int64_t Next = FromPos;
    for (const BlockPart& One : Parts) {
        if (One.From > Next)
            return false;
        Next = std::max(Next, std::int64_t{One.From} + One.Length);
    }
    return Next > ToPos;
}

/// Fills an array from the blocks of a list, in list order. Places without a block become 0.
/// `Read(BlockNo, From, To, Target)` gives the samples of one block.
template <typename Reader>
void ArrayFill(const BlockListClass& List, std::int32_t FromPos, std::int32_t ToPos,
               SampleArray& Buff, const Reader& Read) {
    std::vector<BlockPart> Parts;
    for (const std::int32_t Index : List.Overlapping(FromPos, ToPos)) {
        BlockPart One{List.At(Index), 0, 0};
        (void)BlockOverlap(BlockAt(One.BlockNo), FromPos, ToPos, One.From, One.Length);
        Parts.push_back(One);
    }
    Buff[0] = 0;
    if (!Cover(Parts, FromPos, ToPos))
        std::fill(Buff.begin(), Buff.end(), std::int16_t{0});
    for (const BlockPart& One : Parts)
        Read(One.BlockNo, One.From, One.From + One.Length - 1,
             Buff.data() + (One.From - FromPos + 1));
}

void ReadThroughMemory(std::int32_t BlockNo, std::int32_t From, std::int32_t To,
                       std::int16_t* Target) {
    // Silence is as near as memory, and padding stays what an undo can split without room.
    if (BlockAt(BlockNo).BlockKind != BlockSilence)
        BlockToMemory(BlockNo);
    BlockRangeReadTo(BlockNo, From, To, Target);
}

/// Writes a block that has a part in the range through, so that what is cut out of it lies in its
/// file, and playing the same once more writes nothing.
void WriteSourceThrough(std::int32_t BlockNo, std::int32_t FromPos, std::int32_t ToPos) {
    std::int32_t From = 0;
    std::int32_t Length = 0;
    if (BlockAt(BlockNo).BlockKind != BlockSilence &&
        BlockOverlap(BlockAt(BlockNo), FromPos, ToPos, From, Length))
        BlockWriteThrough(BlockNo);
}

void SilenceAppend(BlockSet& Set, std::int64_t From, std::int64_t To) {
    Set.push_back(BlockNew(ToLong(To - From + 1), BlockSilence));
    BlockAt(Set.back()).BlockStart = static_cast<std::int32_t>(From);
}

/// A channel that was padded has places without a block, and may have silent blocks on top of one
/// another. A carrier counts its samples by its blocks, so there every place of 1 to `Length` must
/// be covered once: what overlaps is cut away, and gaps become silence. A list that is whole, which
/// is the rule, stays as it is.
void CoverWithoutGaps(BlockSet& Cut, std::int64_t Length) {
    std::vector<std::int32_t> Order(Cut.begin(), Cut.end());
    std::stable_sort(Order.begin(), Order.end(), [](std::int32_t A, std::int32_t B) {
        return BlockAt(A).BlockStart < BlockAt(B).BlockStart;
    });
    std::int64_t Next = 1;
    for (const std::int32_t BlockNo : Order) {
        const std::int64_t Start = BlockAt(BlockNo).BlockStart;
        const std::int64_t End = Start + BlockAt(BlockNo).BlockLen;
        if (Start < Next) {
            const auto Place = std::find(Cut.begin(), Cut.end(), BlockNo);
            if (End > Next) {
                const std::int32_t RestNo = BlockCutRange(BlockNo, static_cast<std::int32_t>(Next),
                                                          static_cast<std::int32_t>(End - 1));
                BlockAt(RestNo).BlockStart = static_cast<std::int32_t>(Next);
                *Place = RestNo;
            } else {
                Cut.erase(Place);
            }
            BlockFree(BlockNo);
        } else if (Start > Next) {
            SilenceAppend(Cut, Next, Start - 1);
        }
        Next = std::max(Next, End);
    }
    if (Next <= Length)
        SilenceAppend(Cut, Next, Length);
}

} // namespace

FileMemoClass::FileMemoClass() : NewBlockLen(DefaultBlockLen()), Journal(1) {}

FileMemoClass::~FileMemoClass() {
    StorageReset();
}

void FileMemoClass::WaveCollectBuff(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                                    SampleArray& WavBuffL, SampleArray& WavBuffR) {
    const bool Left = WorkChn == 0 || WorkChn == 1;
    const bool Right = (WorkChn == 0 || WorkChn == 2) && WavFmtChannel == 2;
    const std::int32_t Count = std::max(0, AddLong(SubLong(ToPos, FromPos), 1));
    ArrayMake(WavBuffL, Left ? Count : 0);
    ArrayMake(WavBuffR, Right ? Count : 0);
    if (Left)
        ArrayFill(ListL, FromPos, ToPos, WavBuffL, ReadThroughMemory);
    if (Right)
        ArrayFill(ListR, FromPos, ToPos, WavBuffR, ReadThroughMemory);
}

void FileMemoClass::QuickBuffGet(std::int32_t FromPos, std::int32_t BuffSz, std::int32_t WorkChn,
                                 SampleArray& QBuffL, SampleArray& QBuffR) const {
    const std::int32_t ToPos = SubLong(AddLong(FromPos, BuffSz), 1);
    QBuffR.assign(static_cast<std::size_t>(std::max(BuffSz, 0)) + 1, 0);
    if (WorkChn == 0 || WorkChn == 1) {
        ArrayMake(QBuffL, std::max(BuffSz, 0));
        ArrayFill(ListL, FromPos, ToPos, QBuffL, BlockRangeReadTo);
    }
    if (WorkChn == 0 || WorkChn == 2)
        ArrayFill(ListR, FromPos, ToPos, QBuffR, BlockRangeReadTo);
}

void FileMemoClass::WaveCollectData(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                                    std::unique_ptr<BlockCarrBuffClass>& FileObL,
                                    std::unique_ptr<BlockCarrBuffClass>& FileObR) {
    CollectCarriers(FromPos, ToPos, WorkChn, FileObL, FileObR, false);
}

void FileMemoClass::WaveCollectData_ForPlay(std::int32_t FromPos, std::int32_t ToPos,
                                            std::int32_t WorkChn,
                                            std::unique_ptr<BlockCarrBuffClass>& FileObL,
                                            std::unique_ptr<BlockCarrBuffClass>& FileObR) {
    CollectCarriers(FromPos, ToPos, WorkChn, FileObL, FileObR, true);
}

void FileMemoClass::CollectCarriers(std::int32_t FromPos, std::int32_t ToPos, std::int32_t WorkChn,
                                    std::unique_ptr<BlockCarrBuffClass>& FileObL,
                                    std::unique_ptr<BlockCarrBuffClass>& FileObR, bool ForPlay) {
    const ProgressScope Progress(BarColorGather);
    FileObL = std::make_unique<BlockCarrBuffClass>();
    FileObR = std::make_unique<BlockCarrBuffClass>();
    const bool Left = WorkChn == 0 || WorkChn == 1;
    const bool Right = (WorkChn == 0 || WorkChn == 2) && WavFmtChannel == 2;
    const double Scale = WorkChn == 0 ? 0.5 : 1.0;
    if (Left)
        FileObL->BuffBlocksPutFresh(
            CollectBlocks(ListL, LengthL, FromPos, ToPos, ForPlay, 0.0, Scale));
    if (Right)
        FileObR->BuffBlocksPutFresh(
            CollectBlocks(ListR, LengthR, FromPos, ToPos, ForPlay, Left ? 0.5 : 0.0, Scale));
    if (ForPlay)
        (void)OrgFilesEntered(FileObL.get(), FileObR.get());
}

BlockSet FileMemoClass::CollectBlocks(const BlockListClass& List, std::int32_t Length,
                                      std::int32_t FromPos, std::int32_t ToPos, bool ForPlay,
                                      double Base, double Scale) {
    BlockSet Cut;
    try {
        for (std::int32_t i = 0; i < List.Count(); ++i) {
            if (ForPlay)
                WriteSourceThrough(List.At(i), FromPos, ToPos);
            if (const std::int32_t NewNo = BlockCutRange(List.At(i), FromPos, ToPos); NewNo != 0)
                Cut.push_back(NewNo);
            ProgressFrm->SetCurrentProgress(
                Single(Base + static_cast<double>(i + 1) / List.Count() * Scale));
        }
        CoverWithoutGaps(Cut, std::int64_t{std::min(ToPos, Length)} - FromPos + 1);
    } catch (...) {
        BlockSetFree(Cut);
        throw;
    }
    return Cut;
}

std::int16_t FileMemoClass::WaveL(std::int32_t WPosition) const {
    const std::int32_t Index = ListL.LastHolding(WPosition);
    return Index < 0 ? std::int16_t{0} : BlockSample(ListL.At(Index), WPosition);
}

std::int16_t FileMemoClass::WaveR(std::int32_t WPosition) const {
    const std::int32_t Index = WavFmtChannel == 2 ? ListR.LastHolding(WPosition) : -1;
    return Index < 0 ? std::int16_t{0} : BlockSample(ListR.At(Index), WPosition);
}

void FileMemoClass::WaveSamples(std::int32_t Channel, const std::vector<std::int32_t>& Positions,
                                SampleArray& Samples) const {
    OrgChecksJoined Checks;
    Samples.resize(Positions.size());
    for (std::size_t i = 0; i < Positions.size(); ++i)
        Samples[i] = Channel == 2 ? WaveR(Positions[i]) : WaveL(Positions[i]);
    Checks.Finish();
}

void FileMemoClass::WaveWillNeed(const std::vector<std::int32_t>& Positions) const {
    constexpr std::size_t Probe = 16; // asking for every place would cost as much as reading
    for (const BlockListClass* const List : {&ListL, &ListR}) {
        const auto BlockOf = [&](std::int32_t Position) {
            const std::int32_t Index = List->LastHolding(Position);
            return Index < 0 ? 0 : List->At(Index);
        };
        bool AllNear = true;
        for (std::size_t i = 0; i < Positions.size() && AllNear; i += Probe)
            AllNear = BlockSampleIsNear(BlockOf(Positions[i]), Positions[i]);
        for (std::size_t i = 0; i < Positions.size() && !AllNear; ++i)
            BlockSampleWillNeed(BlockOf(Positions[i]), Positions[i]);
    }
}

void FileMemoClass::StorageReset() {
    UndoInfoReset();
    for (BlockListClass* const List : {&ListL, &ListR}) {
        BlockSet Mine = List->Take();
        BlockSetFree(Mine);
    }
    LengthL = LengthR = WavWaveINos = 0;
    FilesSweep();
}

void FileMemoClass::MemoryCheck() {
    BudgetEnforce();
}

} // namespace quoril

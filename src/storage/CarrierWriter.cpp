#include "storage/CarrierWriter.h"

#include "base/Arithmetic.h"
#include "storage/BlockTableInner.h"

#include <algorithm>
#include <utility>

namespace quoril {

CarrierWriter::CarrierWriter(std::int32_t Expected)
    : BlockLen(DefaultBlockLen()), ExpectedTotal(Expected) {}

CarrierWriter::~CarrierWriter() {
    BlockSetFree(Blocks);
}

void CarrierWriter::Put(std::span<const std::int16_t> Samples) {
    Make(Samples.size(), [Samples](std::size_t At, std::span<std::int16_t> Out) {
        std::ranges::copy(Samples.subspan(At, Out.size()), Out.begin());
    });
}

void CarrierWriter::Make(std::size_t Count, const PieceFill& Fill) {
    (void)ToLong(std::int64_t{Total} + static_cast<std::int64_t>(Count));
    for (std::size_t Done = 0; Done < Count;) {
        if (FillingLen == 0) {
            const std::int32_t Rest = ExpectedTotal - Total;
            FillingLen = Rest > 0 ? std::min(Rest, BlockLen) : BlockLen;
            Filling = SampleRun::Unfilled(FillingLen);
        }
        const std::size_t Piece =
            std::min(Count - Done, static_cast<std::size_t>(FillingLen - Filled));
        Fill(Done, {Filling.Write() + Filled, Piece});
        Done += Piece;
        Filled += static_cast<std::int32_t>(Piece);
        Total += static_cast<std::int32_t>(Piece);
        if (Filled == FillingLen)
            BlockEnd();
    }
}

void CarrierWriter::BlockEnd() {
    Blocks.reserve(Blocks.size() + 1);
    const std::int32_t BlockNo = BlockNewFilled(Filled, std::exchange(Filling, {}));
    BlockAt(BlockNo).BlockStart = Total - Filled + 1;
    Blocks.push_back(BlockNo);
    Filled = FillingLen = 0;
}

void CarrierWriter::FillingEnd() {
    if (Filled > 0) {
        Filling.CopyOut(Filled); // no more room than the samples need
        BlockEnd();
    }
    Filling = {};
    FillingLen = 0;
}

void CarrierWriter::Append(const BlockCarrBuffClass& Source, std::int32_t FromPos,
                           std::int32_t ToPos) {
    const std::int32_t After = ToLong(std::int64_t{Total} + ToPos - FromPos + 1);
    FillingEnd();
    for (const std::int32_t Index : Source.Blocks().Overlapping(FromPos, ToPos)) {
        Blocks.reserve(Blocks.size() + 1);
        const std::int32_t BlockNo = BlockCutRange(Source.Blocks().At(Index), FromPos, ToPos);
        BlockAt(BlockNo).BlockStart += Total;
        Blocks.push_back(BlockNo);
    }
    Total = After;
}

std::unique_ptr<BlockCarrBuffClass> CarrierWriter::Finish() {
    FillingEnd();
    auto Carrier = std::make_unique<BlockCarrBuffClass>();
    Carrier->BuffBlocksPutFresh(std::exchange(Blocks, {}));
    Total = 0;
    return Carrier;
}

} // namespace quoril

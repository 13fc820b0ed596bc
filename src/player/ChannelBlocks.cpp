#include "player/ChannelBlocks.h"

#include "base/Failure.h"
#include "storage/SampleDecode.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace quoril {

static_assert(std::endian::native == std::endian::little);

ChannelBlocks::ChannelBlocks(std::span<const std::int32_t> Words, PlayFiles& UsedFiles)
    : Files(&UsedFiles) {
    PortableBlockReader Reader(Words);
    while (!Reader.AtEnd()) {
        const PortableBlock From = Reader.NextBlock();
        if (From.Length == 0)
            continue;
        Block To;
        To.Start = From.Start;
        To.Length = From.Length;
        To.Offset = std::int64_t{From.FilePos} - 1;
        To.Silent = From.Kind != BlockWorkFile && From.Kind != BlockOrgFile;
        To.Original = From.Kind == BlockOrgFile;
        if (To.Original) {
            To.Bits = From.Bits;
            To.Step = From.Bits / 8 * From.Channels;
        }
        if (!To.Silent)
            To.FileNo = Files->Add(From.Name);
        Blocks.push_back(To);
    }
    std::stable_sort(Blocks.begin(), Blocks.end(),
                     [](const Block& A, const Block& B) { return A.Start < B.Start; });
}

std::size_t ChannelBlocks::FirstReaching(std::int64_t Position) const {
    const auto After =
        std::upper_bound(Blocks.begin(), Blocks.end(), Position,
                         [](std::int64_t Value, const Block& Each) { return Value < Each.Start; });
    const auto Index = static_cast<std::size_t>(After - Blocks.begin());
    if (Index > 0 && std::int64_t{Blocks[Index - 1].Start} + Blocks[Index - 1].Length > Position)
        return Index - 1;
    return Index;
}

void ChannelBlocks::Read(std::int64_t First, std::size_t Count, std::int16_t* Target,
                         std::size_t Stride) {
    Samples.assign(Count, 0);
    const std::int64_t End = First + static_cast<std::int64_t>(Count);
    for (std::size_t i = FirstReaching(First); i < Blocks.size() && Blocks[i].Start < End; ++i) {
        const Block& From = Blocks[i];
        const std::int64_t FromPos = std::max<std::int64_t>(First, From.Start);
        const std::int64_t ToPos =
            std::min<std::int64_t>(End, std::int64_t{From.Start} + From.Length);
        if (From.Silent || FromPos >= ToPos)
            continue;
        const auto Length = static_cast<std::size_t>(ToPos - FromPos);
        std::int16_t* const Place = Samples.data() + (FromPos - First);
        try {
            ReadBlock(From, FromPos, Length);
            if (From.Bits == 8)
                DecodeBytes(Bytes.data(), static_cast<std::size_t>(From.Step), Place, Length);
            else if (From.Step == 4)
                DecodeEverySecond(reinterpret_cast<const std::int16_t*>(Bytes.data()), Place,
                                  Length);
            else
                std::copy_n(reinterpret_cast<const std::int16_t*>(Bytes.data()), Length, Place);
        } catch (const Failure& What) {
            if (FailureSeen.empty())
                FailureSeen = What.what();
        }
    }
    for (std::size_t i = 0; i < Count; ++i)
        Target[i * Stride] = Samples[i];
}

void ChannelBlocks::ReadBlock(const Block& From, std::int64_t First, std::size_t Count) {
    // The last sample ends with its own bytes: the other channel's may be missing in the file.
    const auto Step = static_cast<std::size_t>(From.Step);
    const std::size_t Needed = (Count - 1) * Step + static_cast<std::size_t>(From.Bits) / 8;
    // The rows that decode by steps look at whole ones.
    Bytes.resize(Count * Step);
    Files->Read(From.FileNo, From.Offset + (First - From.Start) * From.Step, Bytes.data(), Needed);
}

void ChannelBlocks::WillNeed(std::int64_t First, std::size_t Count) {
    const std::size_t Index = FirstReaching(First);
    if (Index == Blocks.size() || Blocks[Index].Silent || Blocks[Index].Start > First)
        return;
    const Block& From = Blocks[Index];
    const std::int64_t Length = std::min<std::int64_t>(
        static_cast<std::int64_t>(Count), std::int64_t{From.Start} + From.Length - First);
    try {
        Files->Open(From.FileNo)
            .WillNeed(From.Offset + (First - From.Start) * From.Step, Length * From.Step);
    } catch (const Failure&) {
        // The reading that follows tells why.
    }
}

void ChannelBlocks::HoldOriginal() noexcept {
    for (const Block& Each : Blocks)
        if (Each.Original)
            Files->Hold(Each.FileNo);
}

std::string ChannelBlocks::TakeFailure() {
    return std::exchange(FailureSeen, {});
}

} // namespace quoril

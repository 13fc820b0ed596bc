#include "effects/DelayLine.h"

#include "storage/CarrierWriter.h"
#include "storage/PairReader.h"

#include <algorithm>

namespace quoril {

namespace {

/// Samples that go to a block together, or are given up together.
constexpr std::int32_t PieceLength = 65536;

} // namespace

void DelayLine::Put(std::span<const std::int16_t> Samples) {
    Near.insert(Near.end(), Samples.begin(), Samples.end());
    while (std::ssize(Near) >= std::ptrdiff_t{2} * PieceLength) {
        if (NearStart + PieceLength > Forgotten) {
            CarrierWriter Piece(PieceLength);
            Piece.Put(std::span(Near).first(PieceLength));
            Far.push_back(Piece.Finish());
        }
        Near.erase(Near.begin(), Near.begin() + PieceLength);
        NearStart += PieceLength;
    }
}

std::span<const std::int16_t> DelayLine::Get(std::int64_t From, std::size_t Count) {
    const std::int64_t To = From + static_cast<std::int64_t>(Count);
    if (From >= NearStart && To <= End())
        return std::span(Near).subspan(static_cast<std::size_t>(From - NearStart), Count);
    Joined.assign(Count, 0);
    const auto Part = [&](std::int64_t First, std::int64_t Last) {
        return std::span(Joined).subspan(static_cast<std::size_t>(First - From),
                                         static_cast<std::size_t>(Last - First));
    };
    if (const std::int64_t First = std::max<std::int64_t>(From, 0), Last = std::min(To, NearStart);
        First < Last)
        ReadBlocks(First, Part(First, Last));
    if (const std::int64_t First = std::max(From, NearStart), Last = std::min(To, End());
        First < Last)
        std::ranges::copy(std::span(Near).subspan(static_cast<std::size_t>(First - NearStart),
                                                  static_cast<std::size_t>(Last - First)),
                          Part(First, Last).begin());
    return Joined;
}

void DelayLine::ReadBlocks(std::int64_t From, std::span<std::int16_t> Out) const {
    const std::int64_t FarStart = NearStart - std::int64_t{PieceLength} * std::ssize(Far);
    for (std::size_t Done = 0; Done < Out.size();) {
        const std::int64_t Place = From + static_cast<std::int64_t>(Done) - FarStart;
        const auto First = static_cast<std::int32_t>(Place % PieceLength);
        const std::size_t Count =
            std::min(Out.size() - Done, static_cast<std::size_t>(PieceLength - First));
        PairReader(&Far[static_cast<std::size_t>(Place / PieceLength)]->Blocks(), nullptr)
            .Fill(First + 1, First + static_cast<std::int32_t>(Count), Out.data() + Done, nullptr);
        Done += Count;
    }
}

void DelayLine::Forget(std::int64_t Before) {
    Forgotten = std::max(Forgotten, Before);
    while (!Far.empty() && NearStart - PieceLength * (std::ssize(Far) - 1) <= Forgotten)
        Far.erase(Far.begin());
}

} // namespace quoril

#include "player/PlayTrack.h"

#include <algorithm>

namespace quoril {

void PlayTrack::Add(std::uint64_t Index, std::int64_t Offset, std::int32_t Direction) {
    if (!Pieces.empty() && Pieces.back().Direction == Direction && OffsetAt(Index) == Offset)
        return;
    Pieces.push_back({Index, Offset, Direction});
}

void PlayTrack::CutFrom(std::uint64_t Index) {
    while (!Pieces.empty() && Pieces.back().Index >= Index)
        Pieces.pop_back();
}

void PlayTrack::ForgetBefore(std::uint64_t Index) {
    while (Pieces.size() > 1 && Pieces[1].Index <= Index)
        Pieces.pop_front();
}

const PlayTrack::Piece* PlayTrack::PieceAt(std::uint64_t Index) const {
    if (Pieces.empty())
        return nullptr;
    const auto After =
        std::upper_bound(Pieces.begin(), Pieces.end(), Index,
                         [](std::uint64_t Value, const Piece& Each) { return Value < Each.Index; });
    return After == Pieces.begin() ? &Pieces.front() : &*(After - 1);
}

std::int64_t PlayTrack::OffsetAt(std::uint64_t Index) const {
    const Piece* const Found = PieceAt(Index);
    if (Found == nullptr)
        return 0;
    const auto Gone = static_cast<std::int64_t>(Index > Found->Index ? Index - Found->Index : 0);
    return Found->Offset + Found->Direction * Gone;
}

std::int32_t PlayTrack::DirectionAt(std::uint64_t Index) const {
    const Piece* const Found = PieceAt(Index);
    return Found == nullptr ? 1 : Found->Direction;
}

} // namespace quoril

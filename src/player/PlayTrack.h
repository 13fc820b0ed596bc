// Which frame of the snapshot stands at which place of the sound that goes out.
#pragma once

#include <cstdint>
#include <deque>

namespace quoril {

/// The sound that goes out is a row of stretches: each one begins at an index of the outgoing
/// frames and follows the snapshot from an offset on, in one direction. One thread at a time.
class PlayTrack {
  public:
    void Clear() noexcept { Pieces.clear(); }
    /// A stretch of frames begins at `Index`; what just goes on from the last one adds nothing.
    void Add(std::uint64_t Index, std::int64_t Offset, std::int32_t Direction);
    /// The frames from `Index` on will not go out.
    void CutFrom(std::uint64_t Index);
    /// Nobody will ask for a place before `Index` any more.
    void ForgetBefore(std::uint64_t Index);
    /// Offset and direction at an index; before the first stretch its beginning, 0 without any.
    [[nodiscard]] std::int64_t OffsetAt(std::uint64_t Index) const;
    [[nodiscard]] std::int32_t DirectionAt(std::uint64_t Index) const;
    [[nodiscard]] std::size_t Count() const noexcept { return Pieces.size(); }

  private:
    struct Piece {
        std::uint64_t Index;
        std::int64_t Offset;
        std::int32_t Direction;
    };
    [[nodiscard]] const Piece* PieceAt(std::uint64_t Index) const;

    std::deque<Piece> Pieces;
};

} // namespace quoril

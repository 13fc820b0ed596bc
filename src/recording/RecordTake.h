// The samples of a take, on their way from the capture engine into the document.
#pragma once

#include "storage/BlockCarrBuffClass.h"
#include "storage/FileCarrBuffClass.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace quoril {

/// Where the state machine puts blocks. Implemented by RecordTake, and by tests.
class TakeStore {
  public:
    virtual ~TakeStore() = default;
    /// Forgets what was taken so far, and makes ready for a new take. Throws Failure.
    virtual void Empty() = 0;
    /// Appends a block: index 1 to the last one; `RecBuffR` is empty for a mono take. Comes to pass
    /// as a whole, or throws Failure and leaves the take as it was.
    virtual void Put(const std::vector<std::int16_t>& RecBuffL,
                     const std::vector<std::int16_t>& RecBuffR) = 0;
};

/// A take in work files, one for each channel. Nothing of it stays in memory. A take longer than
/// one work file can be goes on in another pair.
class RecordTake final : public TakeStore {
  public:
    /// The longest work file that the block table can point into, in samples.
    static constexpr std::int32_t MostPieceFrames = 1073741823;
    /// `LongestPiece` is for tests, which have no room for the real one.
    explicit RecordTake(std::int32_t LongestPiece = MostPieceFrames);

    void Empty() override;
    void Put(const std::vector<std::int16_t>& RecBuffL,
             const std::vector<std::int16_t>& RecBuffR) override;
    /// Gives up the work files.
    void Drop() noexcept { Pieces.clear(); }

    /// Puts the take into the document at a position, in one undo step; no sample is copied.
    /// `WorkChn` 0 takes a stereo take, or the left one of a mono document; 1 left; 2 right. A take
    /// without samples changes nothing. If it fails, the document is as it was, and the samples
    /// that went over are kept for another try.
    void InsertInto(std::int32_t InsertPos, std::int32_t WorkChn);

  private:
    struct Piece {
        Piece();
        FileCarrBuffClass RecFileL;
        FileCarrBuffClass RecFileR;
        std::int32_t Frames = 0;
        bool Stereo = false;
        // The same samples once they are on their way into the document.
        bool HandedOver = false;
        BlockCarrBuffClass BuffL;
        BlockCarrBuffClass BuffR;

        void Append(const std::vector<std::int16_t>& RecBuffL,
                    const std::vector<std::int16_t>& RecBuffR);
        void HandOver();
    };

    std::int32_t LongestPieceFrames;
    std::vector<std::unique_ptr<Piece>> Pieces;
};

} // namespace quoril

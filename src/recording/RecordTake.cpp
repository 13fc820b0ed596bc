#include "recording/RecordTake.h"

#include "storage/FileMemoClass.h"

namespace quoril {

namespace {

// The longest stretch that is put at once, two seconds at the highest rate.
constexpr std::int32_t WindowFrames = 400000;

void PutAtEnd(FileCarrBuffClass& File, std::int32_t Frames,
              const std::vector<std::int16_t>& Samples) {
    File.BuffPut(Frames + 1, Samples);
    // What is on the disk is kept, whatever comes to pass with the next block.
    (void)File.FileName1();
}

void CutBack(FileCarrBuffClass& File, std::int32_t Frames) {
    if (File.WaveINos > Frames)
        File.ReDimSize(Frames, false);
}

} // namespace

RecordTake::RecordTake(std::int32_t LongestPiece) : LongestPieceFrames(LongestPiece) {}

RecordTake::Piece::Piece() {
    RecFileL.BuffLength(WindowFrames);
    RecFileR.BuffLength(WindowFrames);
}

void RecordTake::Empty() {
    Pieces.clear();
    Pieces.push_back(std::make_unique<Piece>());
}

void RecordTake::Put(const std::vector<std::int16_t>& RecBuffL,
                     const std::vector<std::int16_t>& RecBuffR) {
    const auto Count = static_cast<std::int32_t>(RecBuffL.size()) - 1;
    if (Count < 1)
        return;
    if (Pieces.empty() || Pieces.back()->Frames > LongestPieceFrames - Count)
        Pieces.push_back(std::make_unique<Piece>());
    Pieces.back()->Append(RecBuffL, RecBuffR);
}

void RecordTake::Piece::Append(const std::vector<std::int16_t>& RecBuffL,
                               const std::vector<std::int16_t>& RecBuffR) {
    try {
        PutAtEnd(RecFileL, Frames, RecBuffL);
        if (!RecBuffR.empty())
            PutAtEnd(RecFileR, Frames, RecBuffR);
    } catch (...) {
        CutBack(RecFileL, Frames);
        CutBack(RecFileR, Frames);
        throw;
    }
    Stereo = !RecBuffR.empty();
    Frames += static_cast<std::int32_t>(RecBuffL.size()) - 1;
}

void RecordTake::Piece::HandOver() {
    if (HandedOver)
        return;
    FileCarrToBlockCarr(RecFileL, BuffL);
    if (Stereo)
        FileCarrToBlockCarr(RecFileR, BuffR);
    HandedOver = true;
}

void RecordTake::InsertInto(std::int32_t InsertPos, std::int32_t WorkChn) {
    // A pair of files that nothing was put into holds no samples.
    while (!Pieces.empty() && Pieces.back()->Frames == 0)
        Pieces.pop_back();
    for (const auto& Each : Pieces)
        Each->HandOver();
    WaveStore->EditAsOne([&] {
        std::int32_t Pos = InsertPos;
        for (const auto& Each : Pieces) {
            const BlockCarrBuffClass& Right = Each->Stereo ? Each->BuffR : Each->BuffL;
            WaveStore->WaveDataInsert(Pos, WorkChn, &Each->BuffL, &Right, "Record",
                                      Each == Pieces.back());
            Pos += Each->Frames;
        }
    });
}

} // namespace quoril

// What copying, cutting and pasting cost when the range is long: records, and a little at borders.
#include "edit/CopyPasteFixture.h"
#include "edit/LapMod.h"
#include "platform/SampleMemory.h"
#include "support/LargeFile.h"

#include <array>
#include <functional>
#include <string>

namespace quoril::test {

namespace {

using ::testing::IsEmpty;

constexpr std::int32_t Frames = 140000000; // 560 MB
constexpr std::int32_t Clipped = 112500000;
constexpr std::int64_t Little = std::int64_t{2} << 20;

class LargeRange : public CopyPasteFixture {
  protected:
    LargeRange() {
        MemoryBudget = 536870912;
        MakeLongWav(Session.Path("long.wav"), Frames);
    }
    /// Runs a command and expects that it read and took next to nothing.
    void ExpectCheap(const char* Name, const std::function<void()>& Command,
                     std::int64_t Most = Little) {
        const std::int64_t Memory = SampleMemoryInUse();
        const std::int64_t Before = BytesReadSoFar();
        Command();
        EXPECT_LT(BytesReadSoFar() - Before, Most) << Name;
        EXPECT_LT(SampleMemoryInUse() - Memory, Most) << Name;
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty()) << Name;
    }
    void ExpectCheapUndo(const char* Name) {
        ExpectCheap(
            Name, [] { WaveStore->Undo(); }, 4096);
        EXPECT_EQ(WaveStore->WavWaveINos, Frames) << Name;
    }
};

TEST_F(LargeRange, CopyCutPasteAndUndoReadOnlyAtBorders) {
    OpenAsDocument(Session.Path("long.wav"));
    SelBoth = true;
    Select(10000001, 10000000 + Clipped);
    ExpectCheap(
        "Copy", [this] { Commands.Copy(); }, 65536);
    ExpectCheap("Cut", [this] { Commands.Cut(); });
    EXPECT_EQ(WaveStore->WavWaveINos, Frames - Clipped);
    ExpectCheapUndo("Undo of Cut");
    Select(5000000, 5000000);
    ExpectCheap("Insert", [this] { Commands.Paste(PasteInsert); });
    EXPECT_EQ(WaveStore->WavWaveINos, Frames + Clipped);
    ExpectCheapUndo("Undo of Insert");
    Select(6000000, 6000000);
    ExpectCheap("Replace", [this] { Commands.Paste(PasteReplace); });
    EXPECT_EQ(WaveStore->UndoCount(), 3); // two deletes and an insert
    ExpectCheapUndo("Undo of Replace");
    ClearClipboard();
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

/// Lets the first part run into the second one.
class LapOfTwo final : public LapDialog {
  public:
    LapOfTwo() { SetLapDialog(this); }
    ~LapOfTwo() override { SetLapDialog(nullptr); }
    LapOfTwo(const LapOfTwo&) = delete;
    LapOfTwo& operator=(const LapOfTwo&) = delete;
    LapAnswer ShowLap() override { return {true, {LapSelectionBoth, LapSmooth}}; }
};

TEST_F(LargeRange, WhatComputesReadsBothChannelsOfBothStretchesOnceAndWritesNothing) {
    constexpr std::int32_t Length = 10000000;
    constexpr std::int64_t Bytes = std::int64_t{Length} * 4;
    OpenAsDocument(Session.Path("long.wav"));
    SelBoth = true;
    Select(1000001, 1000000 + Length);
    Commands.Copy();
    const LapOfTwo Lap;
    struct Row {
        const char* Name;
        std::function<void()> Run;
    };
    const std::array<Row, 4> Rows = {{{"Mix", [this] { Commands.Paste(PasteMix); }},
                                      {"Modulate", [this] { Commands.Paste(PasteModulate); }},
                                      {"Cross Fade", [this] { Commands.Paste(PasteCrossFade); }},
                                      {"Lap", [] { EditLap(); }}}};
    for (const Row& Each : Rows) {
        const bool OfRange = Each.Name == std::string("Lap");
        Select(20000001, OfRange ? 20000000 + 2 * Length : 20000001);
        const std::int64_t Read = BytesReadSoFar();
        const std::int64_t Written = BytesWrittenSoFar();
        const std::int64_t Memory = SampleMemoryInUse();
        Each.Run();
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty()) << Each.Name;
        EXPECT_EQ(WaveStore->UndoCount() > 0, true) << Each.Name;
        EXPECT_LE(BytesReadSoFar() - Read, 2 * Bytes * 102 / 100) << Each.Name;
        EXPECT_LT(BytesWrittenSoFar() - Written, 65536) << Each.Name;
        EXPECT_LE(SampleMemoryInUse() - Memory, Bytes + Little) << Each.Name << ": only the result";
        WaveStore->Undo();
        EXPECT_EQ(WaveStore->WavWaveINos, Frames) << Each.Name;
    }
    ClearClipboard();
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

TEST_F(LargeRange, AClipOfOtherBitsIsReadOnce) {
    constexpr std::int32_t Length = 10000000;
    OpenAsDocument(Session.Path("long.wav"));
    SelBoth = true;
    Select(1000001, 1000000 + Length);
    Commands.Copy();
    Document({1, 2}, {3, 4}, 8);
    Select(1, 1);
    const std::int64_t Before = BytesReadSoFar();
    Commands.Paste(PasteInsert);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(WaveStore->WavWaveINos, Length + 2);
    EXPECT_LE(BytesReadSoFar() - Before, std::int64_t{Length} * 4 * 102 / 100);
    ClearClipboard();
}

TEST_F(LargeRange, AStereoClipOfAnotherProcessIsReadOnce) {
    constexpr std::int32_t Length = 10000000;
    OpenAsDocument(Session.Path("long.wav"));
    SelBoth = true;
    Select(1000001, 1000000 + Length);
    Commands.Copy();
    BecomeAnotherProcess();
    Document({1, 2}, {3, 4});
    ASSERT_EQ(OrgFileTable.at(1).OrgFileUse, 0);
    Select(1, 1);
    const std::int64_t Before = BytesReadSoFar();
    Commands.Paste(PasteInsert);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(WaveStore->WavWaveINos, Length + 2);
    EXPECT_LT(BytesReadSoFar() - Before, std::int64_t{Length} * 4 + 65536);
    ClearClipboard();
    EXPECT_EQ(BrokenRule(*WaveStore), "");
}

} // namespace

} // namespace quoril::test

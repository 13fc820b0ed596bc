// What copying, cutting and pasting cost when the range is long: records, and a little at borders.
#include "edit/CopyPasteFixture.h"
#include "platform/SampleMemory.h"
#include "support/LargeFile.h"

#include <functional>

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

// Commands on what a bookmark has selected, whatever numbers the bookmark holds.
#include "CopyPasteFixture.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkListMod.h"
#include "edit/LengthCommands.h"
#include "selection/ScriptedSelConf.h"
#include "storage/UndoListener.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace quoril::test {
namespace {

using Row = std::vector<std::int16_t>;

constexpr std::int32_t Most = 2147483647;
constexpr std::int32_t Length = 2000;

struct Kept {
    std::int32_t From, To;           ///< as typed, or as in a file
    std::int32_t MeantFrom, MeantTo; ///< what it means in a document of 2000 samples
};
constexpr Kept Bookmarked[] = {{1000, 500, 500, 1000},
                               {0, 500, 1, 500},
                               {-5, 500, 1, 500},
                               {1500, 2001, 1500, 2000},
                               {1500, Most, 1500, 2000},
                               {Most, -Most - 1, 1, 2000},
                               {-Most - 1, Most - 1, 1, 2000},
                               {3, 4, 3, 4}};

Row Ramp(std::int16_t First) {
    Row Values(Length);
    std::iota(Values.begin(), Values.end(), First);
    return Values;
}

Row Without(Row Values, const Kept& Range) {
    Values.erase(Values.begin() + Range.MeantFrom - 1, Values.begin() + Range.MeantTo);
    return Values;
}

Row Only(const Row& Values, const Kept& Range) {
    return {Values.begin() + Range.MeantFrom - 1, Values.begin() + Range.MeantTo};
}

class BookmarkedEditTest : public CopyPasteFixture, public BokMrkDialog {
  protected:
    BookmarkedEditTest() { SetBokMrkDialog(this); }
    ~BookmarkedEditTest() override {
        SetBokMrkDialog(nullptr);
        Bookmarks.assign(1, {});
    }
    std::int32_t ShowBokMrk(BokMrkModes) override { return 1; }

    /// Keeps the bookmark in a file beside the sound, as Save does, and reads it back.
    void KeepAndSelect(const Kept& What) {
        Bookmarks.assign(1, {});
        BookmarkAppend({"kept", "", BokRange, What.From, What.To, false});
        const std::string File = Session.Path("sound.bok");
        SaveBookmarks(File);
        Bookmarks.assign(1, {});
        LoadBookmarks(File);
        ASSERT_EQ(BookmarkNos(), 1);
        BookmarkSelect();
    }
    /// Runs a command on each bookmark, in a mono and in a stereo document, and takes it back.
    void OnEach(const std::function<void()>& Command,
                const std::function<Row(const Row&, const Kept&)>& Expected) {
        for (const bool Stereo : {false, true})
            for (const Kept& What : Bookmarked) {
                SCOPED_TRACE(std::to_string(What.From) + " to " + std::to_string(What.To));
                const Row First = Ramp(1);
                const Row Second = Stereo ? Ramp(-9000) : Row();
                Document(First, Second);
                KeepAndSelect(What);
                Command();
                EXPECT_TRUE(Left() == Expected(First, What));
                EXPECT_TRUE(Right() == (Stereo ? Expected(Second, What) : Row()));
                EXPECT_EQ(WaveStore->WavWaveINos,
                          static_cast<std::int32_t>(Expected(First, What).size()));
                // A command that had nothing to take away has made no step.
                if (WaveStore->UndoMenu().Enabled)
                    WaveStore->Undo();
                EXPECT_TRUE(Left() == First);
                EXPECT_TRUE(Right() == Second);
                EXPECT_THAT(Messages.TakeTexts(), ::testing::IsEmpty());
            }
    }
};

TEST_F(BookmarkedEditTest, DeleteTakesAwayTheSamplesThatAreMeant) {
    OnEach([this] { Commands.Delete(); }, Without);
}

TEST_F(BookmarkedEditTest, TrimLeavesTheSamplesThatAreMeant) {
    OnEach(EditTrim, Only);
}

TEST_F(BookmarkedEditTest, CutTellsHowManySamplesItHasTaken) {
    OnEach([this] { Commands.Cut(); }, Without);
    ASSERT_EQ(Windows.Copied.size(), 2 * std::size(Bookmarked));
    EXPECT_EQ(Windows.Copied.front().First, "Samples: 501 (500 to 1000)");
}

TEST_F(BookmarkedEditTest, AfterAllHasGoneSelectAllIsNothingAndAPasteStillGoesIn) {
    Clip({1, 2, 3});
    Document(Ramp(1));
    Select(1, Length);
    Commands.Delete();
    ASSERT_EQ(WaveStore->WavWaveINos, 0);
    SelectAllSamples();
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(SelEnd, 0);
    ScriptedSelConf StartOfTheFile(0);
    Commands.Paste(PasteInsert);
    EXPECT_EQ(Left(), (Row{1, 2, 3}));
}

} // namespace
} // namespace quoril::test

// The commands on the list of bookmarks, without a window.
#include "bookmarks/BookmarkListMod.h"

#include "base/DocumentState.h"
#include "base/ViewState.h"
#include "bookmarks/BookmarkEditMod.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Chooses what the test says, and confirms every edit with another name.
class BookmarkListTest : public ::testing::Test, public BokMrkDialog, public BokMrkEdtDialog {
  protected:
    BookmarkListTest() {
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtFreq = 1000;
        WaveStore->WavFmtChannel = 1;
        BlockCarrBuffClass Silence;
        Silence.ReDimSize(10000);
        WaveStore->WaveDataInsert(1, 1, &Silence, nullptr, "", false);
        Bookmarks.assign(1, {});
        BookmarkChanged = false;
        SelStart = SelEnd = 0;
        SetBokMrkDialog(this);
        SetBokMrkEdtDialog(this);
    }
    ~BookmarkListTest() override {
        SetBokMrkDialog(nullptr);
        SetBokMrkEdtDialog(nullptr);
        WaveStore.reset();
    }
    std::int32_t ShowBokMrk(BokMrkModes WorkingMode) override {
        Modes.push_back(WorkingMode);
        return Choice;
    }
    void ShowBokMrkEdt(BookmarkEditing& Editing) override {
        Edited.push_back(Editing.Name);
        Editing.Name += "!";
        Editing.OkClicked = Confirm;
    }
    static void Add(const char* Name, std::int32_t From, std::int32_t To) {
        Bookmarks.push_back({Name, "", From == To ? BokPoint : BokRange, From, To, false});
    }
    [[nodiscard]] static std::vector<std::string> Names() {
        std::vector<std::string> All;
        for (std::size_t No = 1; No < Bookmarks.size(); ++No)
            All.push_back(Bookmarks[No].Name);
        return All;
    }

    const TestSession Session;
    ScriptedMessages Messages;
    std::int32_t Choice = 0;
    bool Confirm = true;
    std::vector<std::int32_t> Modes;
    std::vector<std::string> Edited;
};

TEST_F(BookmarkListTest, ShowsAPointARangeAndThePromptsWhereNoneIsChosen) {
    Add("point", 1500, 1500);
    Add("range", 1000, 2999);
    Bookmarks[2].Text = "remark";
    const BookmarkShown Point = BookmarkShownOf(1);
    EXPECT_EQ(Point.Name, "point");
    EXPECT_THAT(Point.FromTo, ElementsAre("", "At:", ""));
    EXPECT_THAT(Point.Posi, ElementsAre("1500", "1.500 Sec", "", "", "(One Position)"));
    const BookmarkShown Range = BookmarkShownOf(2);
    EXPECT_EQ(Range.Remark, "remark");
    EXPECT_THAT(Range.FromTo, ElementsAre("", "From:", "To:"));
    EXPECT_THAT(Range.Posi,
                ElementsAre("1000", "1.000 Sec", "2999", "2.999 Sec", "Duration: 2.000 Sec"));
    for (const std::int32_t None : {-1, 0, 3}) {
        const BookmarkShown Prompts = BookmarkShownOf(None);
        EXPECT_EQ(Prompts.Name, "Select an item from list");
        EXPECT_EQ(Prompts.Remark, "to see property here");
        EXPECT_THAT(Prompts.FromTo, ElementsAre("", "", ""));
        EXPECT_THAT(Prompts.Posi, ElementsAre("", "", "", "", ""));
    }
}

TEST_F(BookmarkListTest, WithoutBookmarksEachCommandSaysSoUnderItsTitle) {
    BookmarkDelete(0);
    BookmarkDelete(1);
    BookmarkGoto();
    BookmarkSelect();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Delete bookmark failed|No bookmark exists",
                                                  "Delete bookmark failed|No bookmark exists",
                                                  "Go to bookmark failed|No bookmark exists",
                                                  "Select bookmark failed|No bookmark exists"));
    EXPECT_THAT(Modes, IsEmpty());
    BookmarkManage();
    EXPECT_THAT(Modes, ElementsAre(BokMrkManage));
}

TEST_F(BookmarkListTest, DeletingInTheSelectionKeepsARangeThatSticksOut) {
    Add("before", 99, 99);
    Add("at start", 100, 100);
    Add("sticks out left", 99, 150);
    Add("within", 100, 200);
    Add("sticks out right", 150, 201);
    Add("at end", 200, 200);
    Add("behind", 201, 201);
    SelStart = 100;
    SelEnd = 200;
    BookmarkDelete(0);
    EXPECT_THAT(Names(), ElementsAre("before", "sticks out left", "sticks out right", "behind"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    BookmarkDelete(0);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Delete bookmark failed|No bookmark found with in the selection"));
    EXPECT_FALSE(BookmarkChanged);
}

TEST_F(BookmarkListTest, DeletingInTheSelectionTestsBothEndsOnBothSides) {
    Add("turned, ends in front", 150, 99);
    Add("turned, begins behind", 201, 150);
    Add("turned around it", 300, 50);
    Add("turned within", 180, 120);
    Add("below the first sample", 0, 150);
    SelStart = 100;
    SelEnd = 200;
    BookmarkDelete(0);
    EXPECT_THAT(Names(), ElementsAre("turned, ends in front", "turned, begins behind",
                                     "turned around it", "below the first sample"));
}

TEST_F(BookmarkListTest, APointIsWhereItBeginsWhateverElseItHolds) {
    Bookmarks.push_back({"point", "", BokPoint, 150, 9000, false});
    Choice = 1;
    BookmarkSelect();
    EXPECT_EQ(SelStart, 150);
    EXPECT_EQ(SelEnd, 150);
    SelStart = 100;
    SelEnd = 200;
    BookmarkDelete(0);
    EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(BookmarkListTest, DeletingOneFromTheListClosesTheGap) {
    Add("a", 1, 1);
    Add("b", 2, 2);
    Add("c", 3, 3);
    BookmarkDelete(1);
    EXPECT_EQ(BookmarkNos(), 3) << "nothing was chosen";
    Choice = 2;
    BookmarkDelete(1);
    EXPECT_THAT(Names(), ElementsAre("a", "c"));
    EXPECT_THAT(Modes, ElementsAre(BokMrkChoose, BokMrkChoose));
    Choice = 3;
    BookmarkDelete(1);
    EXPECT_EQ(BookmarkNos(), 2) << "no line of that number";
}

TEST_F(BookmarkListTest, GoToFillsTheViewWithARangeAndKeepsTheZoomAtAPoint) {
    Add("point", 5000, 5000);
    Add("range", 1000, 2999);
    ViewFrom = 1;
    ViewTotal = 3000;
    ViewAll = true;
    Choice = 1;
    BookmarkGoto();
    EXPECT_EQ(ViewFrom, 5000);
    EXPECT_EQ(ViewTotal, 3000);
    EXPECT_FALSE(ViewAll);
    Choice = 2;
    BookmarkGoto();
    EXPECT_EQ(ViewFrom, 1000);
    EXPECT_EQ(ViewTotal, 2000);
}

TEST_F(BookmarkListTest, SelectingTakesOnePointOrBoth) {
    Add("point", 5000, 5000);
    Add("range", 1000, 2999);
    Choice = 2;
    BookmarkSelect();
    EXPECT_EQ(SelStart, 1000);
    EXPECT_EQ(SelEnd, 2999);
    Choice = 1;
    BookmarkSelect();
    EXPECT_EQ(SelStart, 5000);
    EXPECT_EQ(SelEnd, 5000);
    Choice = 0;
    BookmarkSelect();
    EXPECT_EQ(SelStart, 5000);
}

constexpr std::int32_t Most = 2147483647;

/// Positions as they can be typed or stand in a file, and the range that is meant.
struct StrangeBookmark {
    std::int32_t From, To, MeantFrom, MeantTo;
};
constexpr StrangeBookmark StrangeBookmarks[] = {{1000, 500, 500, 1000},
                                                {0, 500, 1, 500},
                                                {-5, 500, 1, 500},
                                                {-5, -9, 1, 1},
                                                {9000, 10001, 9000, 10000},
                                                {9000, Most, 9000, 10000},
                                                {20000, 30000, 10000, 10000},
                                                {Most, -Most - 1, 1, 10000},
                                                {-Most - 1, Most, 1, 10000},
                                                {-Most - 1, -Most - 1, 1, 1},
                                                {Most, Most, 10000, 10000}};

TEST_F(BookmarkListTest, WhateverItsNumbersABookmarkSelectsSamplesOfTheDocumentInOrder) {
    Choice = 1;
    for (const StrangeBookmark& Each : StrangeBookmarks) {
        SCOPED_TRACE(std::to_string(Each.From) + " to " + std::to_string(Each.To));
        Bookmarks.assign(1, {});
        Add("strange", Each.From, Each.To);
        BookmarkSelect();
        EXPECT_EQ(SelStart, Each.MeantFrom);
        EXPECT_EQ(SelEnd, Each.MeantTo);
        ViewTotal = 77;
        BookmarkGoto();
        EXPECT_EQ(ViewFrom, Each.MeantFrom);
        EXPECT_EQ(ViewTotal, Each.From == Each.To ? 77 : Each.MeantTo - Each.MeantFrom + 1);
        EXPECT_EQ(Bookmarks[1].From, Each.From) << "the list keeps what was entered";
        EXPECT_EQ(Bookmarks[1].To, Each.To);
    }
}

TEST_F(BookmarkListTest, InAnEmptyDocumentABookmarkSelectsNothingAndTheViewStays) {
    WaveStore->StorageReset();
    Add("left over", 5, 9);
    Choice = 1;
    ViewFrom = 1;
    ViewTotal = 0;
    BookmarkSelect();
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(SelEnd, 0);
    BookmarkGoto();
    EXPECT_EQ(ViewFrom, 1);
    EXPECT_EQ(ViewTotal, 0);
}

TEST_F(BookmarkListTest, TheButtonsOfTheListMarkTheBookmarksAsChanged) {
    BookmarkListAdd();
    EXPECT_THAT(Names(), ElementsAre("New-1!"));
    EXPECT_TRUE(std::exchange(BookmarkChanged, false));
    BookmarkListEdit(1);
    EXPECT_THAT(Names(), ElementsAre("New-1!!"));
    EXPECT_TRUE(std::exchange(BookmarkChanged, false));
    Confirm = false;
    BookmarkListAdd();
    BookmarkListEdit(1);
    EXPECT_THAT(Names(), ElementsAre("New-1!!"));
    Messages.Answer(MsgBoxAnswer::No);
    BookmarkListDelete(1);
    EXPECT_EQ(BookmarkNos(), 1);
    EXPECT_FALSE(BookmarkChanged);
    Messages.Answer(MsgBoxAnswer::Yes);
    BookmarkListDelete(1);
    EXPECT_EQ(BookmarkNos(), 0);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Delete bookmark New-1!! ?", "Delete bookmark New-1!! ?"));
    BookmarkListEdit(0);
    BookmarkListDelete(0);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Select a bookmark to edit", "Select a bookmark to delete"));
}

} // namespace
} // namespace quoril::test

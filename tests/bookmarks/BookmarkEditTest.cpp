// Editing and adding bookmarks without a window.
#include "bookmarks/BookmarkEditMod.h"

#include "base/DocumentState.h"
#include "base/ViewState.h"
#include "selection/ViewListener.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <fmt/format.h>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A mono document of 100000 samples at 8000 Hz, and a dialog that does what the test says.
class BookmarkEditTest : public ::testing::Test, public BokMrkEdtDialog {
  protected:
    BookmarkEditTest() {
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtFreq = 8000;
        Bookmarks.assign(1, {});
        SelStart = SelEnd = PlaySelStart = PlaySelEnd = 0;
        ViewFrom = 1001;
        ViewTotal = 4000;
        SetBokMrkEdtDialog(this);
    }
    ~BookmarkEditTest() override {
        SetBokMrkEdtDialog(nullptr);
        WaveStore.reset();
    }
    void ShowBokMrkEdt(BookmarkEditing& Editing) override {
        ++Shown;
        if (Act)
            Act(Editing);
    }
    void Confirm() {
        Act = [](BookmarkEditing& Editing) { Editing.OkClicked = true; };
    }
    [[nodiscard]] static std::string Text(const BookmarkRec& Bookmark) {
        return fmt::format("{}|{}|{}|{}|{}", Bookmark.Name, Bookmark.Text, Bookmark.BokType,
                           Bookmark.From, Bookmark.To);
    }
    [[nodiscard]] static BookmarkEditing Open(std::int32_t Type, std::int32_t From, std::int32_t To,
                                              std::int32_t Mode = BookmarkTyped) {
        BookmarkRec Rec;
        Rec.BokType = Type;
        Rec.From = From;
        Rec.To = To;
        return {Mode, Rec, 8000};
    }

    const TestSession Session;
    ScriptedMessages Messages;
    std::function<void(BookmarkEditing&)> Act;
    int Shown = 0;
};

TEST_F(BookmarkEditTest, APointOfTheSelectionHasTheSecondBoxesDisabledWithTheFirstPair) {
    SelStart = SelEnd = 4001;
    Act = [](BookmarkEditing& Editing) {
        EXPECT_EQ(Editing.Caption, " Add New Bookmark");
        EXPECT_EQ(Editing.Name, "New-1");
        EXPECT_EQ(Editing.Type, BokPoint);
        EXPECT_EQ(Editing.Source, SourceSelection);
        EXPECT_THAT(Editing.SourceEnabled, ElementsAre(false, true, false, false, false));
        EXPECT_THAT(Editing.PositionEnabled, ElementsAre(false, false, false));
        EXPECT_THAT(Editing.Samples, ElementsAre("", "4001", "4001"));
        EXPECT_THAT(Editing.Time, ElementsAre("", "0.500", "0.500"));
        Editing.OkClicked = true;
    };
    BookmarkAdd(0);
    ASSERT_EQ(BookmarkNos(), 1);
    EXPECT_EQ(Text(Bookmarks[1]), "New-1||1|4001|4001");
    EXPECT_FALSE(BookmarkChanged) << "a bookmark from the menu raises no question";
}

TEST_F(BookmarkEditTest, EachWayToAddHasItsPositionsAndItsSource) {
    SelStart = 11;
    SelEnd = 20;
    PlaySelStart = 31;
    PlaySelEnd = 40;
    std::vector<std::string> Told;
    Act = [&](BookmarkEditing& Editing) {
        std::string Enabled;
        for (const bool Each : Editing.SourceEnabled)
            Enabled += Each ? '1' : '0';
        Told.push_back(fmt::format("{}|{}|{}|{}|{}|{}", Editing.Caption, Editing.Source, Enabled,
                                   Editing.Type, Editing.PositionFrom, Editing.PositionTo));
        Editing.OkClicked = true;
    };
    for (const std::int32_t Index : {0, 1, 2, 3})
        BookmarkAdd(Index);
    EXPECT_THAT(Told, ElementsAre(" Add New Bookmark|1|01000|2|11|20",
                                  " Add New Bookmark|2|00100|2|1001|5000",
                                  "Edit Bookmark|4|00001|2|31|40",
                                  " Add New Bookmark|3|01111|2|1001|5001"));
    ASSERT_EQ(BookmarkNos(), 4);
    EXPECT_EQ(Bookmarks[4].Name, "New-4");
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(BookmarkEditTest, WithoutASelectionOrAPlaySelectionTheCommandsSaySo) {
    BookmarkAdd(0);
    BookmarkAdd(2);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Add BookMark Failed|No selection found",
                                                  "Add BookMark Failed|No play selection exists"));
    BookmarkRec Rec;
    for (bool Ok : {true, false}) {
        const bool Before = Ok;
        BookmarkEdit(BookmarkOfSelection, Rec, Ok);
        EXPECT_EQ(Ok, Before) << "left as it was";
    }
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No selection found to add Bookmark",
                                                  "No selection found to add Bookmark"));
    EXPECT_EQ(Shown, 0);
    EXPECT_EQ(BookmarkNos(), 0);
}

TEST_F(BookmarkEditTest, WhatIsCancelledChangesNothing) {
    BookmarkAdd(1);
    EXPECT_EQ(Shown, 1);
    EXPECT_EQ(BookmarkNos(), 0);
    BookmarkRec Rec{"Name", "Text", BokRange, 5, 9, false};
    bool Ok = true;
    BookmarkEdit(BookmarkAsItStands, Rec, Ok);
    EXPECT_FALSE(Ok);
    EXPECT_EQ(Text(Rec), "Name|Text|2|5|9");
}

TEST_F(BookmarkEditTest, AnEmptyNameBecomesNewWhereABookmarkIsAdded) {
    SelStart = SelEnd = 5;
    Confirm();
    for (const std::int32_t Mode : {0, 1, 2, 3, 4}) {
        BookmarkRec Rec;
        bool Ok = false;
        BookmarkEdit(Mode, Rec, Ok);
        EXPECT_EQ(Rec.Name, Mode >= 1 && Mode <= 3 ? "New" : "") << Mode;
    }
}

TEST_F(BookmarkEditTest, EditingAsItStandsOffersTheSelectionOnlyWhenThereIsOne) {
    EXPECT_EQ(Open(BokRange, 5, 9, 0).Caption, " Edit Bookmark");
    EXPECT_EQ(Open(BokRange, 5, 9, 0).Source, SourceTyped);
    EXPECT_THAT(Open(BokRange, 5, 9, 0).SourceEnabled, ElementsAre(false, false, true, true, true));
    SelStart = 1;
    EXPECT_FALSE(Open(BokRange, 5, 9, 0).SourceEnabled[SourceSelection]);
    SelEnd = 1;
    EXPECT_TRUE(Open(BokRange, 5, 9, 0).SourceEnabled[SourceSelection]);
}

TEST_F(BookmarkEditTest, GoingBackToTypedValuesBringsThemBack) {
    BookmarkEditing Editing = Open(BokRange, 100, 200);
    Editing.ChooseSource(SourceView);
    EXPECT_EQ(Editing.PositionFrom, 1001);
    EXPECT_EQ(Editing.PositionTo, 5001);
    EXPECT_THAT(Editing.PositionEnabled, ElementsAre(false, false, false));
    Editing.ChooseSource(SourceTyped);
    EXPECT_EQ(Editing.PositionFrom, 100);
    EXPECT_EQ(Editing.PositionTo, 200);
    EXPECT_THAT(Editing.PositionEnabled, ElementsAre(false, true, true));
    Editing.EditSamples(2, "300");
    Editing.EditTime(1, "0.02");
    Editing.ChooseSource(SourceView);
    Editing.ChooseSource(SourceTyped);
    EXPECT_THAT(Editing.Samples, ElementsAre("", "160", "300")) << "typed last";
}

TEST_F(BookmarkEditTest, TheBoxThatIsTypedInStaysAndTheOtherFollows) {
    BookmarkEditing Editing = Open(BokRange, 100, 200);
    Editing.EditSamples(1, " 8000.0");
    EXPECT_THAT(Editing.Samples, ElementsAre("", " 8000.0", "200"));
    EXPECT_EQ(Editing.Time[1], "1.000");
    Editing.EditTime(2, "2");
    EXPECT_EQ(Editing.Time[2], "2");
    EXPECT_EQ(Editing.Samples[2], "16000");
    EXPECT_EQ(Editing.Samples[1], "8000") << "the box that was left is written anew";
    Editing.EditTime(1, "0.0000625");
    EXPECT_EQ(Editing.PositionFrom, 0) << "half of a sample goes to the even one";
    Editing.EditTime(1, "0.0001875");
    EXPECT_EQ(Editing.PositionFrom, 2);
}

TEST_F(BookmarkEditTest, WhatIsNoPositionChangesNone) {
    BookmarkEditing Editing = Open(BokRange, 100, 200);
    for (const char* Absurd : {"", "abc", "1e99", "99999999999", "-3000000000", "nan", "1,5"}) {
        Editing.EditSamples(1, Absurd);
        EXPECT_EQ(Editing.PositionFrom, 100) << Absurd;
        EXPECT_EQ(Editing.PositionFromBak, 100);
        EXPECT_EQ(Editing.Samples[1], Absurd) << "what is typed stays";
        EXPECT_EQ(Editing.Time[1], "0.013");
        Editing.EditTime(2, Absurd);
        EXPECT_EQ(Editing.PositionTo, 200) << Absurd;
    }
    Editing.EditSamples(1, "-5");
    EXPECT_EQ(Editing.PositionFrom, -5) << "positions are not judged here";
}

TEST_F(BookmarkEditTest, APointFollowsItsFirstPair) {
    BookmarkEditing Editing = Open(BokRange, 100, 200);
    Editing.ChooseType(BokPoint);
    EXPECT_THAT(Editing.PositionEnabled, ElementsAre(false, true, false));
    EXPECT_THAT(Editing.Samples, ElementsAre("", "100", "100"));
    Editing.EditSamples(1, "80");
    EXPECT_THAT(Editing.Samples, ElementsAre("", "80", "80"));
    EXPECT_THAT(Editing.Time, ElementsAre("", "0.010", "0.010"));
    Editing.ChooseType(BokRange);
    EXPECT_EQ(Editing.Samples[2], "200") << "To was kept";
}

TEST_F(BookmarkEditTest, ConfirmingAPointOnARangeDropsItsEnd) {
    BookmarkRec Rec{"Name", "Text", BokRange, 100, 200, true};
    Act = [](BookmarkEditing& Editing) {
        Editing.ChooseType(BokPoint);
        Editing.Name = "Other";
        Editing.Remark = "Remark";
        Editing.OkClicked = true;
    };
    bool Ok = false;
    BookmarkEdit(BookmarkAsItStands, Rec, Ok);
    EXPECT_TRUE(Ok);
    EXPECT_EQ(Text(Rec), "Other|Remark|1|100|100");
    EXPECT_TRUE(Rec.Selected);
}

TEST_F(BookmarkEditTest, ASourceThatHasNothingSaysSoAndIsTakenAllTheSame) {
    BookmarkEditing Editing = Open(BokRange, 100, 200);
    Editing.ChooseSource(SourceSelection);
    EXPECT_EQ(Editing.PositionFrom, 0);
    Editing.ChooseSource(SourcePlay);
    EXPECT_EQ(Editing.PositionTo, 0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No selection found to add Bookmark",
                                                  "No play selection exists to add Bookmark"));
    SelStart = PlaySelStart = 7;
    SelEnd = PlaySelEnd = 8;
    Editing.ChooseSource(SourceSelection);
    Editing.ChooseSource(SourcePlay);
    EXPECT_EQ(Editing.PositionFrom, 7);
    EXPECT_EQ(Editing.PositionTo, 8);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

} // namespace
} // namespace quoril::test

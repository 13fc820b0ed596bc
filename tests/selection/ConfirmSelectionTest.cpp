#include "selection/ViewFixture.h"
#include "settings/STD1.h"

#include <set>

namespace quoril {
namespace {

class Confirm : public test::ViewTest {
  protected:
    bool Run(std::int32_t Need, const std::string& Operation = "Echo") {
        From = To = WorkChn = -1;
        return ConfirmSelection(From, To, WorkChn, Need, Operation);
    }
    void ExpectGiven(std::int32_t GivenFrom, std::int32_t GivenTo) const {
        EXPECT_EQ(From, GivenFrom);
        EXPECT_EQ(To, GivenTo);
    }
    void ExpectNothingGiven() const { ExpectGiven(-1, -1); }

    test::ScriptedSelConf Dialog;
    std::int32_t From = -1;
    std::int32_t To = -1;
    std::int32_t WorkChn = -1;
};

TEST_F(Confirm, TheDialogAppearsOnlyWhenTheSelectionDoesNotFit) {
    struct Row {
        std::int32_t Need;
        std::int32_t From;
        std::int32_t To;
        bool Asks;
        bool Result; // when cancelled
    };
    const Row Rows[] = {
        {0, 0, 0, false, false}, {0, 50, 50, false, true}, {0, 50, 60, false, true},
        {1, 0, 0, true, false},  {1, 50, 50, false, true}, {1, 50, 60, true, false},
        {2, 0, 0, true, false},  {2, 50, 50, true, false}, {2, 50, 60, false, true},
        {3, 0, 0, true, false},  {3, 50, 50, false, true}, {3, 50, 60, false, true},
    };
    for (const Row& Each : Rows) {
        SCOPED_TRACE("need " + std::to_string(Each.Need) + ", selection " +
                     std::to_string(Each.From) + " to " + std::to_string(Each.To));
        Select(Each.From, Each.To);
        Dialog.Requests.clear();
        MouseMode = 2;
        EXPECT_EQ(Run(Each.Need), Each.Result);
        EXPECT_EQ(Dialog.Requests.size(), Each.Asks ? 1U : 0U);
        EXPECT_EQ(WorkChn, 0);
        if (Each.Result)
            ExpectGiven(Each.From, Each.To);
        else
            ExpectNothingGiven();
        ExpectSelection(Each.From, Each.To);
        EXPECT_EQ(MouseMode, 2);
        ExpectCalls({});
    }
}

TEST_F(Confirm, AnEmptyDocumentEndsWhereItStarts) {
    Document(0);
    for (const std::int32_t Need : {1, 3})
        for (const std::int32_t Choice : {0, 1}) {
            Select(0, 0);
            Dialog.Choices = {Choice};
            EXPECT_TRUE(Run(Need));
            ExpectGiven(1, 1);
        }
}

TEST_F(Confirm, EveryOptionRewritesTheSelectionAsItSays) {
    struct Row {
        std::int32_t Need;
        std::int32_t From, To;
        const char* Frame;
        const char* Control;
        std::int32_t Index;
        const char* Caption;
        std::int32_t NewFrom, NewTo;
    };
    const Row Rows[] = {
        {1, 0, 0, "OneZeroFrame", "OneZeroOpn", 0, "Use the Start point of the File", 1, 1},
        {1, 0, 0, "OneZeroFrame", "OneZeroOpn", 1, "Use the End point of the File", 1000, 1000},
        {1, 50, 60, "OneTwoFrame", "OneTwoOpn", 0, "Use the Start point of the Selection", 50, 50},
        {1, 50, 60, "OneTwoFrame", "OneTwoOpn", 1, "Use the End point of the Selection", 60, 60},
        {2, 0, 0, "TwoZeroFrame", "TwoZeroOpn", 0,
         "Use the Start and End points of the File (Select All)", 1, 1000},
        {2, 50, 50, "TwoOneFrame", "TwoOneOpn", 0, "Select from this Point to the End of the File",
         50, 1000},
        {2, 50, 50, "TwoOneFrame", "TwoOneOpn", 1, "Select from Start of the File to this Point", 1,
         50},
        {2, 50, 50, "TwoOneFrame", "TwoOneOpn", 2,
         "Use the Start and End points of the File (Select All)", 1, 1000},
        {2, 50, 50, "TwoOneFrame", "TwoOneOpn", 3, "Force to select just one point as Range", 50,
         50},
        {3, 0, 0, "ThreeZeroFrame", "ThreeZeroOpn", 0, "Use the Start point of the File", 1, 1},
        {3, 0, 0, "ThreeZeroFrame", "ThreeZeroOpn", 1, "Use the End point of the File", 1000, 1000},
        {3, 0, 0, "ThreeZeroFrame", "ThreeZeroOpn", 2,
         "Use the Start and End points of the File (Select All)", 1, 1000},
    };
    ASSERT_EQ(std::size(Rows), SelConfOptions.size());
    for (std::size_t i = 0; i < std::size(Rows); ++i) {
        const Row& Each = Rows[i];
        SCOPED_TRACE(std::string(Each.Control) + "_" + std::to_string(Each.Index));
        EXPECT_STREQ(SelConfOptions[i].Frame, Each.Frame);
        EXPECT_STREQ(SelConfOptions[i].Control, Each.Control);
        EXPECT_EQ(SelConfOptions[i].Index, Each.Index);
        EXPECT_STREQ(SelConfOptions[i].Caption, Each.Caption);
        Select(Each.From, Each.To);
        MouseMode = 1;
        ViewMouseMode = 4;
        Dialog.Choices = {Each.Index};
        EXPECT_TRUE(Run(Each.Need));
        ExpectGiven(Each.NewFrom, Each.NewTo);
        ExpectSelection(Each.NewFrom, Each.NewTo);
        EXPECT_EQ(MouseMode, 0);
        EXPECT_EQ(ViewMouseMode, 4);
        ExpectCalls({"Refresh_Wave_View"});
        EXPECT_EQ(Dialog.Requests.back().Need, SelConfOptions[i].Need);
        EXPECT_EQ(Dialog.Requests.back().Available, SelConfOptions[i].Available);
    }
}

TEST_F(Confirm, EachFrameIsOneCaseWithOptionsFromZero) {
    std::set<std::string> Frames;
    std::int32_t Expected = 0;
    for (std::size_t i = 0; i < SelConfOptions.size(); ++i) {
        const bool IsNew = Frames.insert(SelConfOptions[i].Frame).second;
        Expected = IsNew ? 0 : Expected + 1;
        EXPECT_EQ(SelConfOptions[i].Index, Expected);
    }
    EXPECT_EQ(Frames.size(), 5U);
}

TEST_F(Confirm, TheCaptionNamesTheOperation) {
    (void)Run(2, "Insert Silence");
    EXPECT_EQ(Dialog.Requests.back().Caption, " Confirm Selection [Insert Silence]");
    (void)Run(2, "");
    EXPECT_EQ(Dialog.Requests.back().Caption, " Confirm Selection");
}

TEST_F(Confirm, TheLabelsTellNeedAndSelection) {
    EXPECT_STREQ(SelConfPrompt, "How to select ?");
    EXPECT_EQ(NeedLblText(1), "This needs One Point");
    EXPECT_EQ(NeedLblText(2), "This needs Two Points/Range Selection");
    EXPECT_EQ(NeedLblText(3), "This needs One or Two Points Selection");
    EXPECT_EQ(NeedLblText(0), "");
    EXPECT_EQ(AvailLblText(0), "Currently you have not selected any Point/Range");
    EXPECT_EQ(AvailLblText(1), "Currently you selected One Point");
    EXPECT_EQ(AvailLblText(2), "Currently you selected Two Points/Range");
    EXPECT_EQ(AvailLblText(3), "");
}

TEST_F(Confirm, CancelLeavesEverythingAsItWas) {
    Select(50, 50);
    MouseMode = 3;
    EXPECT_FALSE(Run(2));
    ExpectNothingGiven();
    ExpectSelection(50, 50);
    EXPECT_EQ(MouseMode, 3);
    EXPECT_EQ(WorkChn, 0);
    ExpectCalls({});
}

TEST_F(Confirm, AnAnswerThatNoOptionHasCountsAsCancelled) {
    Select(50, 50);
    Dialog.Choices = {7};
    EXPECT_FALSE(Run(2));
    ExpectSelection(50, 50);
}

TEST_F(Confirm, WithoutADialogAQuestionCountsAsCancelled) {
    SetSelConfDialog(nullptr);
    EXPECT_FALSE(Run(2));
    Select(1, 5);
    EXPECT_TRUE(Run(2));
}

TEST_F(Confirm, NoNeedAndNoSelectionIsFalseWithValidChannels) {
    SelBoth = false;
    SelSingle = 2;
    EXPECT_FALSE(Run(0));
    EXPECT_EQ(WorkChn, 2);
    ExpectNothingGiven();
}

TEST_F(Confirm, TheWorkingChannelsFollowTheSelector) {
    struct Row {
        std::int32_t Channel;
        bool Both;
        std::int16_t Single;
        std::int32_t WorkChn;
    };
    const Row Rows[] = {{2, true, 1, 0}, {2, true, 2, 0},  {2, false, 1, 1}, {2, false, 2, 2},
                        {1, true, 1, 1}, {1, false, 2, 1}, {1, true, 2, 1},  {1, false, 1, 1}};
    Select(5, 6);
    for (const Row& Each : Rows) {
        Document(1000, Each.Channel);
        SelBoth = Each.Both;
        SelSingle = Each.Single;
        EXPECT_TRUE(Run(2));
        EXPECT_EQ(WorkChn, Each.WorkChn);
        EXPECT_EQ(WorkChannels(), Each.WorkChn);
        EXPECT_EQ(WorkChannels(Each.Channel), Each.WorkChn);
    }
}

TEST_F(Confirm, ASelectionFromEndToStartIsHandedOutInOrder) {
    for (const std::int32_t Need : {0, 2, 3}) {
        Select(60, 50);
        EXPECT_TRUE(Run(Need));
        ExpectGiven(50, 60);
        ExpectSelection(50, 60);
    }
}

TEST_F(Confirm, WhatDoesNotLieInTheDocumentIsNoSelection) {
    struct Row {
        std::int32_t From, To;
    };
    const Row Rows[] = {{-5, 50},  {50, -5},     {0, 50},   {50, 0},          {-9, -5},
                        {1, 1001}, {1001, 1001}, {Most, 1}, {-Most - 1, Most}};
    for (const std::int32_t Need : {0, 1, 2, 3})
        for (const Row& Each : Rows) {
            SCOPED_TRACE(std::to_string(Need) + ": " + std::to_string(Each.From) + " to " +
                         std::to_string(Each.To));
            Select(Each.From, Each.To);
            Dialog.Requests.clear();
            EXPECT_FALSE(Run(Need));
            ExpectNothingGiven();
            EXPECT_EQ(Dialog.Requests.size(), Need == 0 ? 0U : 1U);
            for (const SelConfRequest& Asked : Dialog.Requests)
                EXPECT_EQ(Asked.Available, 0);
        }
}

TEST_F(Confirm, AllOfAnEmptyDocumentIsNothingAndToldSo) {
    Document(0);
    SelectAllSamples();
    ExpectSelection(0, 0);
    SelectView();
    ExpectSelection(0, 0);
    Dialog.Choices = {0, 2};
    for (const std::int32_t Need : {2, 3}) {
        EXPECT_FALSE(Run(Need));
        ExpectNothingGiven();
        EXPECT_EQ(Messages.TakeTexts(),
                  std::vector<std::string>{"The document is empty: there is nothing to select"});
    }
    EXPECT_FALSE(Run(0));
    ExpectNothingGiven();
}

TEST_F(Confirm, TheLastSelectionHandedOutIsRecordedForSupport) {
    Select(50, 60);
    EXPECT_TRUE(Run(2, "Echo"));
    EXPECT_EQ(IniGet("Debug", "SelStart", ""), "50");
    EXPECT_EQ(IniGet("Debug", "SelEnd", ""), "60");
    EXPECT_EQ(IniGet("Debug", "Operation", ""), "Echo");
    Select(70, 70);
    EXPECT_TRUE(Run(1, "Paste"));
    EXPECT_EQ(IniGet("Debug", "SelStart", ""), "70");
    EXPECT_EQ(IniGet("Debug", "Operation", ""), "Paste");
    EXPECT_FALSE(Run(2, "Trim"));
    EXPECT_EQ(IniGet("Debug", "Operation", ""), "Paste");
}

TEST_F(Confirm, TheLongestDocumentIsSelectedWhole) {
    Document(Most);
    Dialog.Choices = {0};
    EXPECT_TRUE(Run(2));
    ExpectGiven(1, Most);
}

} // namespace
} // namespace quoril

#include "selection/ViewFixture.h"

#include "base/Failure.h"
#include "selection/DocumentFacts.h"

namespace quoril {
namespace {

using Selection = test::ViewTest;

TEST_F(Selection, FactsOfTheDocumentAreThoseOfTheStore) {
    WaveStore->WavFmtBits = 8;
    const DocumentFacts Facts = CurrentDocument();
    EXPECT_EQ(Facts.Total, 1000);
    EXPECT_EQ(Facts.Freq, 1000);
    EXPECT_EQ(Facts.Channel, 2);
    EXPECT_EQ(Facts.Bits, 8);
    WaveStore.reset();
    EXPECT_EQ(CurrentDocument().Total, 0);
    EXPECT_EQ(CurrentDocument().Channel, 1);
}

TEST_F(Selection, ResetClearsItAndEveryTool) {
    Select(5, 9);
    MouseMode = 2;
    ViewMouseMode = 8;
    ResetSelection();
    ExpectSelection(0, 0);
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(ViewMouseMode, 0);
    ExpectCalls({"ClearMouseFlags", "RefreshMousePointer", "Refresh_Wave_View"});
}

TEST_F(Selection, TheMouseToolsAreTakenByIndex) {
    struct Row {
        std::int32_t Index;
        std::int32_t Mode;
    };
    for (const Row& Each : {Row{1, 2}, Row{2, 3}, Row{0, 0}}) {
        ViewMouseMode = 6;
        SelectMouse(Each.Index);
        EXPECT_EQ(MouseMode, Each.Mode);
        EXPECT_EQ(ViewMouseMode, 0);
        ExpectCalls({"RefreshMousePointer"});
    }
    SelectMouse(3);
    SelectMouse(-1);
    EXPECT_EQ(MouseMode, 0);
    ExpectCalls({});
}

TEST_F(Selection, SelectAllTakesTheWholeDocument) {
    MouseMode = 1;
    ViewMouseMode = 4;
    SelectAllSamples();
    ExpectSelection(1, 1000);
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(ViewMouseMode, 0);
    ExpectCalls({"RefreshMousePointer", "Refresh_Wave_View"});
}

TEST_F(Selection, SelectViewTakesTheSamplesAcrossTheView) {
    View(101, 200);
    MouseMode = 3;
    ViewMouseMode = 8;
    SelectView();
    ExpectSelection(101, 300);
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(ViewMouseMode, 0);
    EXPECT_EQ(Window.Calls.back(), "Refresh_Wave_View");
}

TEST_F(Selection, SelectViewReachesTheLastPositionThereIs) {
    Document(Most);
    View(1, Most);
    SelectView();
    ExpectSelection(1, Most);
    View(Most - 9, 10);
    SelectView();
    ExpectSelection(Most - 9, Most);
    View(Most, Most);
    EXPECT_THROW(SelectView(), Failure);
    ExpectSelection(Most - 9, Most);
}

TEST_F(Selection, SelectPlayTakesThePlaySelection) {
    PlaySelStart = 20;
    PlaySelEnd = 30;
    MouseMode = 1;
    SelectPlay();
    ExpectSelection(20, 30);
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(Window.Calls.back(), "Refresh_Wave_View");
    EXPECT_TRUE(Messages.Requests.empty());
}

TEST_F(Selection, SelectPlayWithoutOneTellsHowToMakeIt) {
    Select(5, 6);
    MouseMode = 2;
    SelectPlay();
    EXPECT_EQ(Messages.Texts(),
              std::vector<std::string>{
                  "No play selection exists\nMake a selection on the scale to play,\n"
                  "that can be transfered to waveform selection with this command"});
    ExpectSelection(5, 6);
    EXPECT_EQ(MouseMode, 2);
    ExpectCalls({});
}

TEST_F(Selection, SelectBothInvertsTheCheckMark) {
    SelectBoth(true);
    EXPECT_FALSE(SelBoth);
    ExpectCalls({"RefreshChannelSelector", "Refresh_Wave_View"});
    SelectBoth(false);
    EXPECT_TRUE(SelBoth);
}

TEST_F(Selection, SelectOtherTakesTheOtherChannel) {
    SelBoth = false;
    SelectOther();
    EXPECT_EQ(SelSingle, 2);
    ExpectCalls({"RefreshChannelSelector", "Refresh_Wave_View"});
    SelectOther();
    EXPECT_EQ(SelSingle, 1);
    EXPECT_FALSE(SelBoth);
}

TEST_F(Selection, RepeatedPressesGoBothOneBothTheOther) {
    const std::vector<std::string> Expected = {"SelSingle2", "SelBoth", "SelSingle1", "SelBoth",
                                               "SelSingle2"};
    bool Pressed = true;
    for (const std::string& Key : Expected) {
        Pressed = !Pressed;
        SelChannelButton(Pressed);
        EXPECT_EQ(ChannelSelector().ImageKey, Key);
        EXPECT_EQ(ChannelSelector().Pressed, Pressed);
        ExpectCalls({"RefreshChannelSelector", "Refresh_Wave_View"});
    }
}

TEST_F(Selection, TheChannelControlsFollowTheState) {
    struct Row {
        std::int32_t Channel;
        bool Both;
        std::int16_t Single;
        bool Enabled;
        bool OtherEnabled;
        const char* Image;
    };
    const Row Rows[] = {
        {2, true, 1, true, false, "SelBoth"},    {2, true, 2, true, false, "SelBoth"},
        {2, false, 1, true, true, "SelSingle1"}, {2, false, 2, true, true, "SelSingle2"},
        {1, true, 1, false, false, "SelBoth"},   {1, false, 2, false, false, "SelSingle2"}};
    for (const Row& Each : Rows) {
        Document(1000, Each.Channel);
        SelBoth = Each.Both;
        SelSingle = Each.Single;
        const ChannelSelectorState State = ChannelSelector();
        EXPECT_EQ(State.Enabled, Each.Enabled);
        EXPECT_EQ(State.SelectOtherEnabled, Each.OtherEnabled);
        EXPECT_EQ(State.Pressed, Each.Both);
        EXPECT_EQ(State.SelectBothChecked, Each.Both);
        EXPECT_EQ(State.ImageKey, Each.Image);
    }
}

TEST_F(Selection, OneBeyondTheDocumentDisappears) {
    Select(900, 1000);
    SelectionLimit(1000);
    ExpectSelection(900, 1000);
    SelectionLimit(999);
    ExpectSelection(0, 0);
    Select(1001, 5);
    SelectionLimit(1000);
    ExpectSelection(0, 0);
    Select(Most, Most);
    SelectionLimit(Most);
    ExpectSelection(Most, Most);
}

TEST_F(Selection, OneFromEndToStartIsPutInOrderAndOneBelowTheFirstSampleDisappears) {
    Select(60, 50);
    SelectionLimit(1000);
    ExpectSelection(50, 60);
    Select(5, 0);
    SelectionLimit(1000);
    ExpectSelection(0, 0);
    Select(-5, 20);
    SelectionLimit(1000);
    ExpectSelection(0, 0);
}

TEST_F(Selection, TwoPositionsMeanTheSamplesOfTheDocumentBetweenThem) {
    struct Row {
        std::int32_t A, B, Total, From, To;
    };
    const Row Rows[] = {{10, 20, 1000, 10, 20},
                        {20, 10, 1000, 10, 20},
                        {0, 20, 1000, 1, 20},
                        {-5, -9, 1000, 1, 1},
                        {990, 1001, 1000, 990, 1000},
                        {5000, 4000, 1000, 1000, 1000},
                        {Most, -Most - 1, Most, 1, Most},
                        {7, 7, 7, 7, 7},
                        {1, 1, 0, 0, 0},
                        {0, 0, 0, 0, 0}};
    for (const Row& Each : Rows) {
        SCOPED_TRACE(std::to_string(Each.A) + ", " + std::to_string(Each.B));
        const SampleRange Range = RangeWithin(Each.A, Each.B, Each.Total);
        EXPECT_EQ(Range.From, Each.From);
        EXPECT_EQ(Range.To, Each.To);
    }
}

TEST_F(Selection, ADocumentStartsWithoutOneAndSeenWhole) {
    const auto Disturb = [] {
        Select(5, 6);
        PlaySelStart = 7;
        PlaySelEnd = 8;
        View(50, 20);
        MouseMode = 2;
        ViewMouseMode = 8;
    };
    Disturb();
    ViewStateReset(1000, false);
    ExpectSelection(0, 0);
    ExpectView(1, 1000);
    EXPECT_TRUE(ViewAll);
    EXPECT_EQ(MouseMode, 0);
    EXPECT_EQ(ViewMouseMode, 0);
    EXPECT_EQ(PlaySelStart, 7);
    EXPECT_EQ(PlaySelEnd, 8);
    Disturb();
    ViewStateReset(1000, true);
    EXPECT_EQ(PlaySelStart, 0);
    EXPECT_EQ(PlaySelEnd, 0);
}

TEST_F(Selection, WithoutAWindowTheNumbersChangeAllTheSame) {
    SetViewListener(nullptr);
    SelectAllSamples();
    ExpectSelection(1, 1000);
    ResetSelection();
    ExpectSelection(0, 0);
}

} // namespace
} // namespace quoril

// The mouse over the wave panels, from press to release.
#include "selection/ViewFixture.h"

#include "settings/UserGuideMod.h"
#include "view/MousePointer.h"
#include "view/WaveMouse.h"

#include <algorithm>

namespace quoril::test {
namespace {

constexpr std::int32_t L = MouseButtonLeft;
constexpr std::int32_t R = MouseButtonRight;

/// One pixel for each sample, and sample 1 at pixel 0.
class WaveMouseTest : public ViewTest {
  protected:
    WaveMouseTest() {
        View(1, 1000);
        PixelsPerSample = 1.0;
        ShowNewUserGuide = false;
    }
    static double At(std::int32_t Position) { return Position - ViewFrom; }
    void Press(std::int32_t Position, std::int32_t Button = L, std::int32_t Panel = 1) {
        Mouse.Press(Panel, At(Position), Button);
        Mouse.MoveWait = false; // as after the timer
    }
    bool Move(std::int32_t Position) { return Mouse.Move(At(Position)); }
    void Release(std::int32_t Position, std::int32_t Button = L) {
        Mouse.Release(At(Position), Button);
    }
    void Click(std::int32_t Position, std::int32_t Button = L, std::int32_t Panel = 1) {
        Press(Position, Button, Panel);
        Release(Position, Button);
    }
    void Drag(std::int32_t From, std::int32_t To) {
        Press(From);
        Move((From + To) / 2);
        Move(To);
        Release(To);
    }
    bool Called(const std::string& Name) const {
        return std::count(Window.Calls.begin(), Window.Calls.end(), Name) > 0;
    }
    static void ExpectModes(std::int32_t Mode, std::int32_t ViewMode) {
        EXPECT_EQ(MouseMode, Mode);
        EXPECT_EQ(ViewMouseMode, ViewMode);
    }

    WaveMouseClass Mouse;
};

struct Numbers {
    std::int32_t Start, End, Mode, ViewMode, From, Samples;
};
struct PressCase {
    const char* What;
    Numbers Before;
    std::int32_t Position;
    std::int32_t Button;
    Numbers After; // of a press and a release at one place
};

const PressCase Clicks[] = {
    {"a left click makes a point", {0, 0, 0, 0, 1, 1000}, 300, L, {300, 300, 1, 0, 1, 1000}},
    {"a left click clears a range", {100, 200, 0, 0, 1, 1000}, 300, L, {300, 300, 1, 0, 1, 1000}},
    {"a second click makes a range", {300, 300, 1, 0, 1, 1000}, 400, L, {300, 400, 0, 0, 1, 1000}},
    {"a second click before it", {300, 300, 1, 0, 1, 1000}, 200, L, {200, 300, 0, 0, 1, 1000}},
    {"a second click at the same sample",
     {300, 300, 1, 0, 1, 1000},
     300,
     L,
     {300, 300, 1, 0, 1, 1000}},
    {"a second click without a first point",
     {0, 0, 1, 0, 1, 1000},
     300,
     L,
     {300, 300, 1, 0, 1, 1000}},
    {"a right click without a selection", {0, 0, 0, 0, 1, 1000}, 300, R, {1, 300, 0, 0, 1, 1000}},
    {"a right click moves the start", {400, 600, 0, 0, 1, 1000}, 450, R, {450, 600, 0, 0, 1, 1000}},
    {"a right click moves the end", {400, 600, 0, 0, 1, 1000}, 550, R, {400, 550, 0, 0, 1, 1000}},
    {"in the middle it moves the end",
     {400, 600, 0, 0, 1, 1000},
     500,
     R,
     {400, 500, 0, 0, 1, 1000}},
    {"a point before which it is makes no swap",
     {400, 400, 0, 0, 1, 1000},
     300,
     R,
     {400, 300, 0, 0, 1, 1000}},
    {"a right click for the second point",
     {400, 400, 1, 0, 1, 1000},
     500,
     R,
     {400, 500, 0, 0, 1, 1000}},
    {"start", {0, 0, 2, 0, 1, 1000}, 300, L, {300, 1000, 0, 0, 1, 1000}},
    {"start within a range", {200, 600, 2, 0, 1, 1000}, 300, R, {300, 600, 0, 0, 1, 1000}},
    {"start beyond the end", {200, 250, 2, 0, 1, 1000}, 300, L, {300, 1000, 0, 0, 1, 1000}},
    {"end", {0, 0, 3, 0, 1, 1000}, 300, L, {1, 300, 0, 0, 1, 1000}},
    {"end within a range", {200, 600, 3, 0, 1, 1000}, 300, R, {200, 300, 0, 0, 1, 1000}},
    {"end before the start", {400, 600, 3, 0, 1, 1000}, 300, L, {1, 300, 0, 0, 1, 1000}},
    {"the first click of zoom", {5, 9, 0, 4, 1, 1000}, 300, L, {5, 9, 0, 5, 1, 1000}},
    {"zoom in at mouse", {5, 9, 0, 6, 1, 1000}, 500, L, {5, 9, 0, 6, 200, 600}},
    {"zoom out at mouse", {5, 9, 0, 6, 301, 600}, 600, R, {5, 9, 0, 6, 100, 1000}},
    {"out when all is in view", {5, 9, 0, 6, 1, 1000}, 500, R, {5, 9, 0, 6, 0, 1000}},
    {"in at 20 samples only recentres", {5, 9, 0, 6, 301, 20}, 315, L, {5, 9, 0, 6, 305, 20}},
    {"in at 21 samples", {5, 9, 0, 6, 301, 21}, 315, L, {5, 9, 0, 6, 308, 13}},
    {"pan alone moves nothing", {5, 9, 0, 8, 301, 100}, 315, L, {5, 9, 0, 8, 301, 100}},
    {"another button", {5, 9, 0, 0, 1, 1000}, 300, 0, {5, 9, 0, 0, 1, 1000}},
    {"a tool of the view keeps a pending point",
     {300, 300, 1, 6, 1, 1000},
     500,
     L,
     {300, 300, 1, 6, 200, 600}},
};

TEST_F(WaveMouseTest, AClickDoesWhatTheTableSaysOfModeAndButton) {
    for (const PressCase& Each : Clicks) {
        SCOPED_TRACE(Each.What);
        Select(Each.Before.Start, Each.Before.End);
        View(Each.Before.From, Each.Before.Samples);
        MouseMode = Each.Before.Mode;
        ViewMouseMode = Each.Before.ViewMode;
        Click(Each.Position, Each.Button);
        ExpectSelection(Each.After.Start, Each.After.End);
        ExpectModes(Each.After.Mode, Each.After.ViewMode);
        ExpectView(Each.After.From, Each.After.Samples);
        EXPECT_EQ(Mouse.Hold(), MouseHold::None);
    }
}

TEST_F(WaveMouseTest, ClickAndClickAtTheSameSampleStaysAPoint) {
    Click(300);
    Click(300);
    ExpectSelection(300, 300);
    ExpectModes(1, 0);
    Click(300);
    Click(420);
    ExpectSelection(300, 420);
    ExpectModes(0, 0);
}

TEST_F(WaveMouseTest, ADragSelectsAtOnceInBothDirections) {
    Drag(300, 500);
    ExpectSelection(300, 500);
    ExpectModes(0, 0);
    Drag(700, 200);
    ExpectSelection(200, 700);
    Drag(500, 99999);
    ExpectSelection(500, 1000);
    Drag(500, -99999);
    ExpectSelection(1, 500);
}

TEST_F(WaveMouseTest, ADragAfterAFirstClickIsARangeOfItsOwn) {
    Click(300);
    Drag(500, 600);
    ExpectSelection(500, 600);
    ExpectModes(0, 0);
}

TEST_F(WaveMouseTest, ADragTellsTheLabelsAndRefreshesOnlyAtItsEnd) {
    Press(300);
    EXPECT_EQ(Mouse.Dragging(), false);
    Window.Calls.clear();
    EXPECT_TRUE(Move(400));
    EXPECT_TRUE(Move(250));
    EXPECT_EQ(Mouse.DragFrom, 250);
    EXPECT_EQ(Mouse.DragTo, 300);
    EXPECT_TRUE(Mouse.Dragging());
    ExpectSelection(0, 0);
    ExpectCalls({"RefreshDisplayLabels(drag)", "RefreshDisplayLabels(drag)"});
    Release(250);
    EXPECT_TRUE(Called("Refresh_Wave_View"));
    ExpectSelection(250, 300);
}

TEST_F(WaveMouseTest, APressStartsTheWaitForAShakyHand) {
    Mouse.Press(1, At(300), L);
    EXPECT_TRUE(Mouse.MoveWait);
    Mouse.Release(At(303), L);
    ExpectSelection(300, 300);
    EXPECT_FALSE(Mouse.MoveWait);
}

TEST_F(WaveMouseTest, ZoomTakesTwoClicksInAnyOrder) {
    for (const bool Reversed : {false, true}) {
        View(1, 1000);
        ViewAll = true;
        ViewMouseMode = 4;
        Click(Reversed ? 600 : 200);
        ExpectModes(0, 5);
        EXPECT_FALSE(ViewAll);
        Click(Reversed ? 200 : 600);
        ExpectModes(0, 0);
        ExpectView(200, 400);
        EXPECT_EQ(ZoomFrom, 200);
        EXPECT_EQ(ZoomTo, 600);
    }
}

TEST_F(WaveMouseTest, ZoomOutAtTheMouseOfTheLongestDocumentHasRoom) {
    Document(Most);
    View(1, 2000000000);
    ViewMouseMode = 6;
    PixelsPerSample = 1e-6;
    Mouse.Press(1, 1000, R);
    EXPECT_EQ(ViewTotal, Most);
}

TEST_F(WaveMouseTest, PanDragsTheViewWithinTheDocument) {
    View(301, 200);
    ViewMouseMode = 8;
    Press(400);
    EXPECT_EQ(Mouse.Hold(), MouseHold::Pan);
    Move(390);
    ExpectView(311, 200);
    Mouse.Move(79); // ten pixels more to the left
    ExpectView(321, 200);
    Mouse.Move(-100000);
    Mouse.Move(-100000);
    ExpectView(801, 200);
    Mouse.Move(100000);
    Mouse.Move(100000);
    ExpectView(1, 200);
    Release(1);
    EXPECT_FALSE(Mouse.Move(500));
    ExpectView(1, 200);
    ExpectSelection(0, 0);
    ExpectModes(0, 8);
}

TEST_F(WaveMouseTest, ADoubleClickSelectsAllWithTheLeftButtonOnly) {
    Click(300);
    Mouse.DoubleClick(1, At(300), L);
    ExpectSelection(1, 1000);
    ExpectModes(0, 0);
    Release(300);
    ExpectSelection(1, 1000);

    Select(400, 600);
    Click(550, R);
    Mouse.DoubleClick(1, At(550), R);
    ExpectSelection(400, 550);

    // The button of the press before counts, too: a left click right after a right one is a click.
    Click(580, R);
    Mouse.DoubleClick(1, At(580), L);
    Release(580);
    ExpectSelection(580, 580);
    ExpectModes(1, 0);
}

TEST_F(WaveMouseTest, QuickClicksWithAToolOfTheViewAreClicks) {
    ViewMouseMode = 6;
    Click(500);
    Mouse.DoubleClick(1, At(500), L);
    EXPECT_EQ(ViewTotal, 360);
    ExpectSelection(0, 0);
    View(1, 1000);
    ViewMouseMode = 4;
    Click(500);
    Mouse.DoubleClick(1, At(500), L);
    ExpectModes(0, 0);
}

TEST_F(WaveMouseTest, TheClickedPanelIsTheSingleChannel) {
    SelBoth = false;
    Press(300, L, 2);
    EXPECT_EQ(SelSingle, 2);
    EXPECT_TRUE(Called("RefreshChannelSelector"));
    Release(300);
    ViewMouseMode = 6;
    Click(300, R, 1);
    EXPECT_EQ(SelSingle, 1);
}

TEST_F(WaveMouseTest, OverAnEmptyDocumentNothingHappens) {
    Document(0);
    for (const std::int32_t Mode : {0, 1, 2, 3, 7})
        for (const std::int32_t ViewMode : {0, 4, 5, 6, 8}) {
            MouseMode = Mode;
            ViewMouseMode = ViewMode;
            Select(0, 0);
            Window.Calls.clear();
            Click(5);
            Click(5, R);
            Mouse.DoubleClick(1, 5, L);
            EXPECT_FALSE(Move(7));
            ExpectModes(Mode, ViewMode);
            ExpectSelection(0, 0);
            ExpectCalls({});
        }
}

TEST_F(WaveMouseTest, ASecondButtonDuringADragChangesNothing) {
    Select(10, 20);
    Press(300);
    Move(400);
    Press(350, R);
    Release(350, R);
    EXPECT_EQ(Mouse.Hold(), MouseHold::Select);
    Move(500);
    Release(500);
    ExpectSelection(300, 500);
}

TEST_F(WaveMouseTest, AnAbandonedDragLeavesSelectionAndToolAsTheyWere) {
    Select(10, 20);
    Press(300);
    Move(400);
    Mouse.Abandon();
    ExpectSelection(10, 20);
    ExpectModes(0, 0);
    EXPECT_TRUE(Called("Refresh_Wave_View"));
    Release(450);
    ExpectSelection(10, 20);

    Click(300);
    Press(500);
    Mouse.Abandon();
    ExpectSelection(300, 300);
    ExpectModes(1, 0);
}

TEST_F(WaveMouseTest, ADragEndsWhenTheDocumentBecomesShorter) {
    Press(800);
    Move(900);
    Document(500);
    EXPECT_TRUE(Mouse.Revise());
    ExpectModes(0, 0);
    EXPECT_FALSE(Move(700));
    Release(700);
    ExpectSelection(0, 0);
}

TEST_F(WaveMouseTest, ADragEndsWhenAnotherToolOrSelectionComes) {
    Press(300);
    Move(400);
    ViewMouseMode = 4;
    EXPECT_FALSE(Move(500));
    Release(500);
    ExpectSelection(0, 0);
    ExpectModes(0, 4);

    ViewMouseMode = 0;
    Press(300);
    Move(400);
    Select(1, 1000);
    MouseMode = 0;
    Release(400);
    ExpectSelection(1, 1000);
    ExpectModes(0, 0);

    ViewMouseMode = 8;
    Press(300);
    ViewMouseMode = 0;
    EXPECT_FALSE(Move(400));
    Release(400);
    ExpectSelection(1, 1000);
}

TEST_F(WaveMouseTest, ADragGoesOnWhenTheViewMoves) {
    View(1, 500);
    Press(300);
    Move(400);
    ViewFrom = 201;
    EXPECT_FALSE(Mouse.Revise());
    Move(650);
    Release(650);
    ExpectSelection(300, 650);
}

TEST_F(WaveMouseTest, ASecondClickIsNotWaitedForWhenTheFirstPointIsGone) {
    Click(900);
    ExpectModes(1, 0);
    Document(500);
    SelectionLimit(500);
    EXPECT_TRUE(Mouse.Revise());
    ExpectModes(0, 0);
    EXPECT_FALSE(Mouse.Revise());
}

TEST_F(WaveMouseTest, TheTipsComeWhenTheyShould) {
    struct Tips final : UserGuideWindow {
        bool ShowGuideTip(const GuideTip& Tip) override {
            Shown.push_back(Tip.Message);
            return false;
        }
        void ShowStatusGuide(const std::string&) override {}
        std::vector<std::string> Shown;
    } Guide;
    SetUserGuideWindow(&Guide);
    ShowNewUserGuide = true;
    GuideChanceFix(0.5);
    Click(300);
    Click(400);
    EXPECT_EQ(Guide.Shown.size(), 0U);
    Click(500); // clears the range
    EXPECT_EQ(Guide.Shown.size(), 1U);
    Click(600, R);
    EXPECT_EQ(Guide.Shown.size(), 1U);
    MouseMode = 1;
    GuideChanceFix(0.0);
    Click(700, R);
    EXPECT_EQ(Guide.Shown.size(), 2U);
    SetUserGuideWindow(nullptr);
}

TEST_F(WaveMouseTest, TheBandIsLimitedToThePanel) {
    View(101, 500);
    EXPECT_EQ(BandColumnsOf(111, 121, 500), (BandColumns{10, 20}));
    EXPECT_EQ(BandColumnsOf(1, 121, 500), (BandColumns{0, 20}));
    EXPECT_EQ(BandColumnsOf(111, 1000, 500), (BandColumns{10, 500}));
    EXPECT_EQ(BandColumnsOf(1, 50, 500), (BandColumns{0, 0}));
}

TEST_F(WaveMouseTest, TheReadOutsTellTimeSampleAndHeight) {
    EXPECT_EQ(MouseTimeText(65500, 1000), "01:05.50/65500");
    const std::int16_t Up = 12;
    const std::int16_t Down = -32768;
    EXPECT_EQ(MouseLevelText(&Up, -345), "00012/-345");
    EXPECT_EQ(MouseLevelText(&Down, 7), "-32768/7");
    EXPECT_EQ(MouseLevelText(nullptr, 0), " * /0");
    EXPECT_EQ(WavePositionAt(-50), 1);
    EXPECT_EQ(WavePositionAt(5000), 1000);
    EXPECT_EQ(WavePlaceAt(5000), 5001);
}

TEST(MousePointer, EachToolHasItsPointerAndItsLines) {
    struct Row {
        std::int32_t Mode, ViewMode;
        PointerImage Image;
        bool LineOn;
        WaveColor Color;
    };
    constexpr WaveColor First = WaveColor::LineCursorColor;
    constexpr WaveColor Second = WaveColor::SecPtSelLineCursorColor;
    const Row Rows[] = {
        {0, 4, PointerImage::ZoomStartMouseImg, true, First},
        {0, 5, PointerImage::ZoomEndMouseImg, true, Second},
        {0, 6, PointerImage::ZoomInMouseImg, true, First},
        {0, 8, PointerImage::PanMouseImg, true, First},
        {2, 0, PointerImage::SelStartMouseImg, true, First},
        {3, 0, PointerImage::SelEndMouseImg, true, Second},
        {7, 0, PointerImage::DrawMouseImg, false, First},
        {1, 0, PointerImage::Normal, true, Second},
        {0, 0, PointerImage::Normal, true, First},
        {7, 4, PointerImage::ZoomStartMouseImg, true, First},
        {3, 8, PointerImage::PanMouseImg, true, First},
    };
    for (const Row& Each : Rows) {
        const PointerLook Look = PointerLookOf(Each.Mode, Each.ViewMode);
        EXPECT_EQ(Look.Image, Each.Image) << Each.Mode << ' ' << Each.ViewMode;
        EXPECT_EQ(Look.LineOn, Each.LineOn) << Each.Mode << ' ' << Each.ViewMode;
        if (Each.LineOn) {
            EXPECT_EQ(Look.LineColor, Each.Color) << Each.Mode << ' ' << Each.ViewMode;
        }
    }
}

} // namespace
} // namespace quoril::test

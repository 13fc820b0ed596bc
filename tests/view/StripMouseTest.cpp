// What the mouse does on the time scale and the overview bar, as numbers.
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "playback/PlayMod.h"
#include "view/ScaleMouse.h"
#include "view/ScrollMouse.h"
#include "view/TimeScale.h"
#include "view/ZoomMod.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

constexpr std::int32_t Most = 2147483647;
constexpr std::int32_t Total = 1000;

class ScaleMouse : public ::testing::Test {
  protected:
    ScaleMouse() {
        QuickPlay = true;
        PlayDirection = 1;
        Marks(0, 0);
    }
    static void Marks(std::int32_t From, std::int32_t To) {
        PlaySelStart = From;
        PlaySelEnd = To;
    }
    static void ExpectMarks(std::int32_t From, std::int32_t To) {
        EXPECT_EQ(PlaySelStart, From);
        EXPECT_EQ(PlaySelEnd, To);
    }
    ScaleDeed Click(std::int32_t Position) {
        Mouse.Press(Position);
        return Mouse.Release(Position, Total);
    }
    static ScaleDeed Play(std::int32_t Code, std::int32_t Arg = 0) { return {Code, Arg, {}}; }
    static ScaleDeed Tip(std::string_view Text) { return {0, 0, Text}; }
    const ScaleDeed Nothing;
    ScaleMouseClass Mouse;
};

TEST_F(ScaleMouse, ADragToTheRightMakesARangeAndPlaysIt) {
    Mouse.Press(100);
    EXPECT_TRUE(Mouse.Drag(150, Total));
    ExpectMarks(100, 150);
    EXPECT_TRUE(Mouse.Drag(300, Total));
    ExpectMarks(100, 300);
    EXPECT_EQ(Mouse.Release(320, Total), Play(PlaySelection));
    ExpectMarks(100, 320);
    EXPECT_FALSE(Mouse.IsDown());
}

TEST_F(ScaleMouse, ADragToTheLeftEndsWithStartBelowEndAndPlaysInReverse) {
    Mouse.Press(300);
    EXPECT_TRUE(Mouse.Drag(120, Total));
    ExpectMarks(120, 300);
    EXPECT_EQ(Mouse.Release(100, Total), Play(PlaySelectionRev));
    ExpectMarks(100, 300);
}

TEST_F(ScaleMouse, TheDirectionOfADragCountsNotThatOfTheLastPlay) {
    PlayDirection = -1;
    Mouse.Press(100);
    Mouse.Drag(200, Total);
    EXPECT_EQ(Mouse.Release(200, Total), Play(PlaySelection));
}

TEST_F(ScaleMouse, ADragThatComesBackMakesAPointAndPlaysForward) {
    Mouse.Press(300);
    Mouse.Drag(200, Total);
    EXPECT_EQ(Mouse.Release(300, Total), Play(PlaySelection));
    ExpectMarks(300, 300);
}

TEST_F(ScaleMouse, ADragIsLimitedToTheDocument) {
    Mouse.Press(300);
    Mouse.Drag(Total + 500, Total);
    ExpectMarks(300, Total);
    Mouse.Drag(-7, Total);
    ExpectMarks(1, 300);
    // The document has become shorter under the drag.
    EXPECT_EQ(Mouse.Release(150, 200), Play(PlaySelectionRev));
    ExpectMarks(150, 200);
}

TEST_F(ScaleMouse, ADragWithoutQuickPlayOnlySelects) {
    QuickPlay = false;
    Mouse.Press(100);
    Mouse.Drag(200, Total);
    EXPECT_EQ(Mouse.Release(200, Total), Nothing);
    ExpectMarks(100, 200);
}

TEST_F(ScaleMouse, AClickOutsideMakesAPointAndPlaysInTheLastDirection) {
    Marks(100, 200);
    EXPECT_EQ(Click(201), Play(PlaySelection));
    ExpectMarks(201, 201);
    Marks(100, 200);
    PlayDirection = -1;
    EXPECT_EQ(Click(99), Play(PlaySelectionRev));
    ExpectMarks(99, 99);
}

TEST_F(ScaleMouse, AClickWithoutAPlaySelectionMakesAPoint) {
    EXPECT_EQ(Click(1), Play(PlaySelection));
    ExpectMarks(1, 1);
}

TEST_F(ScaleMouse, AClickInsidePlaysFromThere) {
    Marks(100, 200);
    EXPECT_EQ(Click(150), Play(PlayFrom, 50));
    EXPECT_EQ(Click(100), Play(PlayFrom, 0));
    EXPECT_EQ(Click(200), Play(PlayFrom, 100));
    PlayDirection = -1;
    EXPECT_EQ(Click(150), Play(PlayFromRev, 50));
    ExpectMarks(100, 200);
}

TEST_F(ScaleMouse, TheCodesAreThoseOfThePlayControls) {
    Marks(100, 200);
    EXPECT_EQ(Click(150).PlayCode, 13);
    PlayDirection = -1;
    EXPECT_EQ(Click(150).PlayCode, 14);
    EXPECT_EQ(Click(300).PlayCode, 12);
    PlayDirection = 1;
    EXPECT_EQ(Click(400).PlayCode, 11);
}

TEST_F(ScaleMouse, AClickWithoutQuickPlaySelectsAndMayTellOfIt) {
    QuickPlay = false;
    EXPECT_EQ(Click(500), Tip(ScaleClickTip));
    ExpectMarks(500, 500);
    Marks(100, 200);
    EXPECT_EQ(Click(150), Tip(ScaleClickTip));
    ExpectMarks(100, 200);
}

TEST_F(ScaleMouse, AReleaseWithoutAPressDoesNothing) {
    Marks(100, 200);
    EXPECT_EQ(Mouse.Release(500, Total), Nothing);
    EXPECT_FALSE(Mouse.Drag(500, Total));
    Mouse.Press(300);
    Mouse.Forget();
    EXPECT_FALSE(Mouse.Drag(500, Total));
    EXPECT_EQ(Mouse.Release(500, Total), Nothing);
    ExpectMarks(100, 200);
}

TEST_F(ScaleMouse, AGestureEndsWhenTheDocumentHasGone) {
    Mouse.Press(300);
    EXPECT_FALSE(Mouse.Drag(300, 0));
    EXPECT_EQ(Mouse.Release(300, 0), Nothing);
    ExpectMarks(0, 0);
    EXPECT_FALSE(Mouse.IsDown());
}

TEST_F(ScaleMouse, TheSecondGestureKnowsNothingOfTheFirst) {
    Mouse.Press(100);
    Mouse.Drag(200, Total);
    (void)Mouse.Release(200, Total);
    EXPECT_EQ(Click(150), Play(PlayFrom, 50));
}

TEST_F(ScaleMouse, ARightClickWithoutAPlaySelectionMakesARangeToTheEnd) {
    EXPECT_EQ(ScaleAdjust(400, Total), Play(PlaySelection));
    ExpectMarks(400, Total);
}

TEST_F(ScaleMouse, ARightClickMovesTheNearerEnd) {
    Marks(100, 200);
    (void)ScaleAdjust(140, Total);
    ExpectMarks(140, 200);
    (void)ScaleAdjust(900, Total);
    ExpectMarks(140, 900);
    (void)ScaleAdjust(1, Total);
    ExpectMarks(1, 900);
}

TEST_F(ScaleMouse, ARightClickInTheMiddleMovesTheEnd) {
    Marks(100, 200);
    (void)ScaleAdjust(150, Total);
    ExpectMarks(100, 150);
}

TEST_F(ScaleMouse, ARightClickLeftOfAPointSwapsTheEnds) {
    Marks(100, 100);
    (void)ScaleAdjust(30, Total);
    ExpectMarks(30, 100);
}

TEST_F(ScaleMouse, ARightClickMeasuresTheLongestDistances) {
    Marks(1, Most);
    (void)ScaleAdjust(Most - 1, Most);
    ExpectMarks(1, Most - 1);
}

TEST_F(ScaleMouse, ARightClickPlaysInTheLastDirection) {
    PlayDirection = -1;
    EXPECT_EQ(ScaleAdjust(400, Total), Play(PlaySelectionRev));
    QuickPlay = false;
    EXPECT_EQ(ScaleAdjust(400, Total), Tip(ScaleAdjustTip));
}

/// A bar of 1000 pixels for 100000 samples, seen from 25000 to 74999: pixels 250 to 750.
class ScrollMouse : public ::testing::Test {
  protected:
    ScrollMouse() {
        ViewAll = false;
        ViewFrom = 25000;
        ViewTotal = 50000;
    }
    ScrollBar Bar() { return {Edge, 1000, Length}; }
    void Limit() const { ViewLimitsApply(Length); }

    std::array<std::int32_t, 3> Edge = {0, 250, 750};
    std::int32_t Length = 100000;
    ScrollMouseClass Mouse;
};

TEST_F(ScrollMouse, APressBesideTheViewShiftsItByItsLength) {
    EXPECT_TRUE(Mouse.Press(Bar(), 249));
    EXPECT_EQ(ViewFrom, -25000);
    EXPECT_FALSE(Mouse.IsDragging());
    ViewFrom = 25000;
    EXPECT_TRUE(Mouse.Press(Bar(), 751));
    EXPECT_EQ(ViewFrom, 75000);
    EXPECT_FALSE(Mouse.IsDragging());
}

TEST_F(ScrollMouse, APressLeftOfTheViewAtTheStartLeavesItWhereItIs) {
    ViewFrom = 1;
    Edge = {0, 5, 500};
    EXPECT_TRUE(Mouse.Press(Bar(), 2));
    Limit();
    EXPECT_EQ(ViewFrom, 1);
    EXPECT_EQ(ViewTotal, 50000);
}

TEST_F(ScrollMouse, PagesEndAtTheEndOfTheDocument) {
    ViewTotal = 30000;
    EXPECT_TRUE(Mouse.Press(Bar(), 900));
    Limit();
    EXPECT_EQ(ViewFrom, 55000);
    EXPECT_TRUE(Mouse.Press(Bar(), 900));
    Limit();
    EXPECT_EQ(ViewFrom, 70001);
}

TEST_F(ScrollMouse, PagesOfTheLongestDocumentStayInRange) {
    Length = Most;
    ViewFrom = Most - 10;
    ViewTotal = Most - 1;
    EXPECT_TRUE(Mouse.Press(Bar(), 900));
    EXPECT_EQ(ViewFrom, Most);
    Limit();
    EXPECT_EQ(ViewFrom, 2);
}

TEST_F(ScrollMouse, ADragMovesTheViewWithTheMouse) {
    EXPECT_FALSE(Mouse.Press(Bar(), 250));
    EXPECT_TRUE(Mouse.IsDragging());
    EXPECT_EQ(Edge[0], 250);
    EXPECT_TRUE(Mouse.Move(Bar(), 260)); // ten pixels of a hundred samples each
    EXPECT_EQ(ViewFrom, 26000);
    EXPECT_EQ(Edge[0], 260);
    EXPECT_TRUE(Mouse.Move(Bar(), 255));
    EXPECT_EQ(ViewFrom, 25500);
    Mouse.Release();
    EXPECT_FALSE(Mouse.Move(Bar(), 400));
    EXPECT_EQ(ViewFrom, 25500);
}

TEST_F(ScrollMouse, BothEdgesBelongToTheView) {
    EXPECT_FALSE(Mouse.Press(Bar(), 750));
    EXPECT_TRUE(Mouse.IsDragging());
    EXPECT_TRUE(Bar().OnView(250));
    EXPECT_TRUE(Bar().OnView(750));
    EXPECT_FALSE(Bar().OnView(249));
    EXPECT_FALSE(Bar().OnView(751));
}

TEST_F(ScrollMouse, ADragBeyondTheStartIsDropped) {
    ViewFrom = 1;
    Mouse.Press(Bar(), 300);
    EXPECT_FALSE(Mouse.Move(Bar(), 200));
    EXPECT_EQ(ViewFrom, 1);
    EXPECT_EQ(Edge[0], 300) << "the drag still stands where it was";
    EXPECT_TRUE(Mouse.Move(Bar(), 310));
    EXPECT_EQ(ViewFrom, 1001);
}

TEST_F(ScrollMouse, ADragBeyondTheEndIsDropped) {
    ViewFrom = 50001;
    Mouse.Press(Bar(), 700);
    EXPECT_FALSE(Mouse.Move(Bar(), 800));
    EXPECT_EQ(ViewFrom, 50001);
    EXPECT_TRUE(Mouse.Move(Bar(), 690));
    EXPECT_EQ(ViewFrom, 49001);
}

TEST_F(ScrollMouse, ADragFarOutOfTheWindowStaysInRange) {
    Length = Most;
    ViewTotal = 1000;
    Mouse.Press(Bar(), 300);
    EXPECT_TRUE(Mouse.Move(Bar(), 30000));
    EXPECT_EQ(ViewFrom, Most);
    EXPECT_TRUE(Mouse.Move(Bar(), -30000));
    Limit();
    EXPECT_EQ(ViewFrom, 1);
}

TEST_F(ScrollMouse, OverAnEmptyDocumentNothingHappens) {
    Length = 0;
    EXPECT_FALSE(Mouse.Press(Bar(), 0));
    EXPECT_FALSE(Mouse.IsDragging());
    EXPECT_FALSE(Mouse.Move(Bar(), 900));
    EXPECT_EQ(ViewFrom, 25000);
}

TEST_F(ScrollMouse, APlaceOnTheBarIsAPlaceInTheViewOrItsNearerEdge) {
    const ScrollBar Strip{Edge, 1001, Length};
    EXPECT_DOUBLE_EQ(BarAcross(Strip, 250), 0.0);
    EXPECT_DOUBLE_EQ(BarAcross(Strip, 500), 0.5);
    EXPECT_DOUBLE_EQ(BarAcross(Strip, 750), 1.0);
    EXPECT_DOUBLE_EQ(BarAcross(Strip, 0), 0.0);
    EXPECT_DOUBLE_EQ(BarAcross(Strip, 1000), 1.0);
    EXPECT_DOUBLE_EQ(BarAcross({Edge, 0, Length}, 0), 0.0);
}

TEST_F(ScrollMouse, TheRightArrowMovesByTheDistanceFromItsOuterEnd) {
    ArrowShift(0, 47, 48);
    EXPECT_EQ(ViewFrom, 25001);
    ArrowShift(0, 0, 48);
    EXPECT_EQ(ViewFrom, 25049);
    ArrowShift(0, 48, 48); // at least one
    EXPECT_EQ(ViewFrom, 25050);
}

TEST_F(ScrollMouse, TheLeftArrowMovesByTheDistanceFromItsOuterEnd) {
    ArrowShift(1, 47, 48);
    EXPECT_EQ(ViewFrom, 24953);
    ArrowShift(1, 1, 48);
    EXPECT_EQ(ViewFrom, 24952);
    ArrowShift(1, 0, 48); // at least one
    EXPECT_EQ(ViewFrom, 24951);
}

TEST_F(ScrollMouse, AnArrowAtTheEndOfTheLongestDocumentStaysInRange) {
    Length = Most;
    ViewFrom = Most - 5;
    ArrowShift(0, 10, 48);
    EXPECT_EQ(ViewFrom, Most);
}

} // namespace
} // namespace quoril

#include "view/WaveGeometry.h"

#include "base/ViewState.h"
#include "view/ZoomMod.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

constexpr std::int32_t Most = 2147483647;

TEST(Layout, MonoHasTheScaleAboveOnePanel) {
    const WaveLayout Layout = WaveLayoutOf(60, 561, 20, false);
    EXPECT_EQ(Layout.ScaleTop, 60);
    EXPECT_EQ(Layout.Top1, 80);
    EXPECT_EQ(Layout.Height1, 481);
    EXPECT_FALSE(Layout.Visible2);
    EXPECT_EQ(Layout.Height2, 0);
}

TEST(Layout, StereoHasTheScaleBetweenThePanels) {
    const WaveLayout Layout = WaveLayoutOf(60, 561, 20, true);
    EXPECT_EQ(Layout.Top1, 60);
    EXPECT_EQ(Layout.Height1, 240);
    EXPECT_EQ(Layout.ScaleTop, 300);
    EXPECT_EQ(Layout.Top2, 320);
    EXPECT_EQ(Layout.Height2, 241);
    EXPECT_TRUE(Layout.Visible2);
}

TEST(Layout, AWindowWithoutRoomHasPanelsWithoutHeight) {
    for (const bool Stereo : {false, true}) {
        const WaveLayout Layout = WaveLayoutOf(60, 70, 20, Stereo);
        EXPECT_EQ(Layout.Height1, 0);
        EXPECT_EQ(Layout.Height2, 0);
    }
}

TEST(Scales, PixelsPerSampleIsTheWidthLessOneOverTheView) {
    EXPECT_DOUBLE_EQ(PixelsPerSampleOf(1001, 1000), 1.0);
    EXPECT_DOUBLE_EQ(PixelsPerSampleOf(801, 100), 8.0);
    EXPECT_DOUBLE_EQ(PixelsPerSampleOf(1001, 100000), 0.01);
    EXPECT_GT(PixelsPerSampleOf(2, Most), 0.0);
}

TEST(Scales, PixelsPerSampleIsNeverNothing) {
    EXPECT_GT(PixelsPerSampleOf(1, 1000), 0.0);
    EXPECT_GT(PixelsPerSampleOf(0, 0), 0.0);
    EXPECT_GT(PixelsPerSampleOf(-5, Most), 0.0);
}

TEST(Scales, PixelsPerUnitFollowsTheDepthAndStaysAboveNothing) {
    EXPECT_DOUBLE_EQ(PixelsPerUnitOf(257, 8), 1.0);
    EXPECT_DOUBLE_EQ(PixelsPerUnitOf(257, 16), 1.0 / 256.0);
    EXPECT_DOUBLE_EQ(PixelsPerUnitOf(1, 16), 0.000001);
    EXPECT_DOUBLE_EQ(PixelsPerUnitOf(0, 8), 0.000001);
}

TEST(Scales, TheZeroLineIsNotRounded) {
    EXPECT_DOUBLE_EQ(ZeroLineYOf(241), 120.5);
    EXPECT_DOUBLE_EQ(ZeroLineYOf(240), 120.0);
}

TEST(Scales, SamplesGoRightAndPositiveValuesUp) {
    const WaveScale Scale{101, 2.5, 0.125, 120.5};
    EXPECT_DOUBLE_EQ(Scale.XOf(101), 0.0);
    EXPECT_DOUBLE_EQ(Scale.XOf(111), 25.0);
    EXPECT_DOUBLE_EQ(Scale.XOf(99), -5.0);
    EXPECT_DOUBLE_EQ(Scale.YOf(0), 120.5);
    EXPECT_DOUBLE_EQ(Scale.YOf(100), 108.0);
    EXPECT_DOUBLE_EQ(Scale.YOf(-100), 133.0);
}

TEST(Scales, APixelGivesTheNearestSampleOfTheDocument) {
    const WaveScale Scale{101, 2.0, 1.0, 100.0};
    EXPECT_EQ(Scale.PositionAt(0, 1000), 101);
    EXPECT_EQ(Scale.PositionAt(1, 1000), 102); // 101.5, to even
    EXPECT_EQ(Scale.PositionAt(3, 1000), 102); // 102.5, to even
    EXPECT_EQ(Scale.PositionAt(4, 1000), 103);
    EXPECT_EQ(Scale.PositionAt(-400, 1000), 1);
    EXPECT_EQ(Scale.PositionAt(1e12, 1000), 1000);
    EXPECT_EQ(Scale.PositionAt(10, 0), 0);
    const WaveScale Wide{Most, 0.000001, 1.0, 100.0};
    EXPECT_EQ(Wide.PositionAt(5000, Most), Most);
}

TEST(Scales, APixelGivesTheNearestValue) {
    const WaveScale Scale{1, 1.0, 0.5, 100.0};
    EXPECT_EQ(Scale.ValueAt(100), 0);
    EXPECT_EQ(Scale.ValueAt(90), 20);
    EXPECT_EQ(Scale.ValueAt(110), -20);
    const WaveScale Flat{1, 1.0, 0.000001, 0.5};
    EXPECT_EQ(Flat.ValueAt(-1e9), Most);
}

TEST(Scales, TheScaleOfAPanelFollowsTheView) {
    ViewFrom = 7;
    ViewTotal = 400;
    const WaveScale Scale = WaveScaleOf(801, 257, 8);
    EXPECT_EQ(Scale.ViewFrom, 7);
    EXPECT_DOUBLE_EQ(Scale.PixelsPerSample, 2.0);
    EXPECT_DOUBLE_EQ(Scale.PixelsPerUnit, 1.0);
    EXPECT_DOUBLE_EQ(Scale.ZeroLineY, 128.5);
}

TEST(Visited, TheStepIsMostOfAPixelRoundedToEven) {
    struct Row {
        double PixelsPerSample;
        std::int32_t Step;
    };
    const Row Rows[] = {{0.01, 85}, {0.5, 2}, {1.0, 1},     {130.0, 1},
                        {0.85, 1},  {0.6, 1}, {0.4, 2},     {0.25, 3},
                        {0.2, 4},   {0.1, 8}, {0.001, 850}, {1.0 / 2147483647.0, 1825361100}};
    for (const Row& Each : Rows)
        EXPECT_EQ(StepOf(Each.PixelsPerSample), Each.Step) << Each.PixelsPerSample;
    // 0.85 / 0.34 and 0.85 / 0.068 are ties: 2.5 and 12.5.
    EXPECT_EQ(StepOf(0.34), 2);
    EXPECT_EQ(StepOf(0.068), 12);
    EXPECT_EQ(StepOf(0.0), Most);
}

TEST(Visited, EveryStepFromTheLeftEdgeUpToTheEnd) {
    EXPECT_EQ(VisitedPositions(1, 10, 3), (std::vector<std::int32_t>{1, 4, 7, 10}));
    EXPECT_EQ(VisitedPositions(2, 10, 3), (std::vector<std::int32_t>{2, 5, 8}));
    EXPECT_EQ(VisitedPositions(5, 5, 1), (std::vector<std::int32_t>{5}));
    EXPECT_EQ(VisitedPositions(-3, 2, 1), (std::vector<std::int32_t>{1, 2}));
    EXPECT_TRUE(VisitedPositions(6, 5, 1).empty());
    EXPECT_EQ(VisitedPositions(Most - 1, Most, 1), (std::vector<std::int32_t>{Most - 1, Most}));
    EXPECT_EQ(VisitedPositions(1, Most, 1825361100), (std::vector<std::int32_t>{1, 1825361101}));
}

TEST(Visited, AWideViewReadsAboutAnEighteenthMoreThanItHasPixels) {
    const std::int32_t Step = StepOf(PixelsPerSampleOf(1001, 100000));
    EXPECT_EQ(Step, 85);
    const auto Positions = VisitedPositions(1, 100000, Step);
    EXPECT_EQ(Positions.size(), 1177U);
    EXPECT_EQ(Positions[1], 86);
    EXPECT_EQ(Positions.back(), 99961);
}

TEST(Visited, ACloseViewReadsEverySample) {
    const std::int32_t Step = StepOf(PixelsPerSampleOf(1001, 10));
    EXPECT_EQ(Step, 1);
    EXPECT_EQ(VisitedPositions(41, 51, Step).size(), 11U);
}

TEST(Styles, BarsLinesAndFormFollowTheTable) {
    struct Row {
        std::int32_t Style;
        bool Bars;
        bool Uniform;
        bool Lines;
    };
    for (const Row& Each :
         {Row{1, false, false, true}, Row{2, true, false, false}, Row{3, true, false, true},
          Row{4, true, true, false}, Row{5, true, true, true}, Row{0, false, false, false},
          Row{6, false, false, false}}) {
        EXPECT_EQ(StyleHasBars(Each.Style), Each.Bars) << Each.Style;
        EXPECT_EQ(StyleIsUniform(Each.Style), Each.Uniform) << Each.Style;
        EXPECT_EQ(StyleHasLines(Each.Style), Each.Lines) << Each.Style;
    }
}

TEST(Styles, DotsNeedTheLineGraphAndMoreThanAPixelForASample) {
    EXPECT_TRUE(StyleHasDots(1, 1.01));
    EXPECT_FALSE(StyleHasDots(1, 1.0));
    EXPECT_FALSE(StyleHasDots(1, 0.5));
    EXPECT_FALSE(StyleHasDots(3, 8.0));
    EXPECT_FALSE(StyleHasDots(5, 8.0));
}

/// A view from 101 to 201 at two pixels a sample.
class Mark : public ::testing::Test {
  protected:
    SelectionMark Of(std::int32_t From, std::int32_t To, std::int32_t Panel = 1,
                     std::int32_t WorkChn = 0) {
        SelStart = From;
        SelEnd = To;
        return SelectionMarkOf(Panel, WorkChn, Scale, ViewEnd);
    }
    void ExpectBox(const SelectionMark& What, double X1, double X2) {
        EXPECT_EQ(What.Kind, MarkKind::Box);
        EXPECT_DOUBLE_EQ(What.X1, X1);
        EXPECT_DOUBLE_EQ(What.X2, X2);
    }
    const WaveScale Scale{101, 2.0, 1.0, 50.0};
    const std::int32_t ViewEnd = 201;
};

TEST_F(Mark, NoSelectionDrawsNothing) {
    EXPECT_EQ(Of(0, 0).Kind, MarkKind::None);
}

TEST_F(Mark, ARangeInTheViewIsABoxBetweenItsEnds) {
    ExpectBox(Of(111, 121), 20.0, 40.0);
}

TEST_F(Mark, AnEndOutsideTheViewIsTakenToItsEdge) {
    ExpectBox(Of(50, 121), 0.0, 40.0);
    ExpectBox(Of(111, 900), 20.0, 200.0);
    ExpectBox(Of(101, 201), 0.0, 200.0);
}

TEST_F(Mark, ARangeAroundTheViewFillsThePanel) {
    ExpectBox(Of(50, 900), 0.0, 200.0);
}

TEST_F(Mark, ARangeOutsideTheViewDrawsNothing) {
    EXPECT_EQ(Of(10, 100).Kind, MarkKind::None);
    EXPECT_EQ(Of(202, 900).Kind, MarkKind::None);
    ExpectBox(Of(10, 101), 0.0, 0.0);
}

TEST_F(Mark, AReversedRangeIsDrawnBetweenItsEnds) {
    ExpectBox(Of(121, 111), 20.0, 40.0);
}

TEST_F(Mark, APointIsALineIfItIsInTheView) {
    const SelectionMark What = Of(106, 106);
    EXPECT_EQ(What.Kind, MarkKind::Point);
    EXPECT_DOUBLE_EQ(What.X1, 10.0);
    EXPECT_EQ(Of(101, 101).Kind, MarkKind::Point);
    EXPECT_EQ(Of(201, 201).Kind, MarkKind::Point);
    EXPECT_EQ(Of(100, 100).Kind, MarkKind::None);
    EXPECT_EQ(Of(202, 202).Kind, MarkKind::None);
}

TEST_F(Mark, TheSelectionShowsOnTheSelectedChannelsOnly) {
    struct Row {
        std::int32_t WorkChn;
        bool OnPanel1;
        bool OnPanel2;
    };
    for (const Row& Each : {Row{0, true, true}, Row{1, true, false}, Row{2, false, true}}) {
        EXPECT_EQ(Of(111, 121, 1, Each.WorkChn).Kind == MarkKind::Box, Each.OnPanel1);
        EXPECT_EQ(Of(111, 121, 2, Each.WorkChn).Kind == MarkKind::Box, Each.OnPanel2);
        EXPECT_EQ(Of(111, 111, 1, Each.WorkChn).Kind == MarkKind::Point, Each.OnPanel1);
        EXPECT_EQ(Of(111, 111, 2, Each.WorkChn).Kind == MarkKind::Point, Each.OnPanel2);
    }
}

TEST_F(Mark, AbsurdSelectionsDoNoHarm) {
    EXPECT_EQ(Of(Most, Most).Kind, MarkKind::None);
    ExpectBox(Of(1, Most), 0.0, 200.0);
    EXPECT_EQ(Of(-Most, -5).Kind, MarkKind::None);
}

void ExpectLine(const WaveLine& Line, double X1, double Y1, double X2, double Y2) {
    EXPECT_DOUBLE_EQ(Line.X1, X1);
    EXPECT_DOUBLE_EQ(Line.Y1, Y1);
    EXPECT_DOUBLE_EQ(Line.X2, X2);
    EXPECT_DOUBLE_EQ(Line.Y2, Y2);
}

TEST(Bookmarks, APointIsAFlagOfTenPixels) {
    const WaveScale Scale{101, 2.0, 1.0, 50.0};
    for (const std::int32_t To : {0, 105, 106}) {
        const BookmarkShape Shape = BookmarkShapeOf(106, To, Scale, 100);
        EXPECT_DOUBLE_EQ(Shape.TextX, 11.0);
        EXPECT_DOUBLE_EQ(Shape.TextY, 8.0);
        ASSERT_EQ(Shape.Lines.size(), 3U);
        ExpectLine(Shape.Lines[0], 10, 0, 10, 100);
        ExpectLine(Shape.Lines[1], 10, 0, 20, 10);
        ExpectLine(Shape.Lines[2], 10, 100, 20, 90);
    }
}

TEST(Bookmarks, ARangeReachesToItsEnd) {
    const WaveScale Scale{101, 2.0, 1.0, 50.0};
    const BookmarkShape Shape = BookmarkShapeOf(106, 126, Scale, 200);
    ASSERT_EQ(Shape.Lines.size(), 4U);
    ExpectLine(Shape.Lines[0], 10, 0, 10, 200);
    ExpectLine(Shape.Lines[1], 50, 20, 50, 180);
    ExpectLine(Shape.Lines[2], 10, 0, 50, 20);
    ExpectLine(Shape.Lines[3], 10, 200, 50, 180);
}

TEST(Bookmarks, OneLeftOfTheViewHasItsLinesThere) {
    const WaveScale Scale{101, 2.0, 1.0, 50.0};
    const BookmarkShape Shape = BookmarkShapeOf(51, 111, Scale, 100);
    ExpectLine(Shape.Lines[0], -100, 0, -100, 100);
    ExpectLine(Shape.Lines[1], 20, 10, 20, 90);
}

} // namespace
} // namespace quoril

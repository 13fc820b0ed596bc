#include "view/TimeScale.h"

#include "base/ViewState.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

constexpr std::int32_t Most = 2147483647;

ScaleView ViewOf(std::int32_t From, std::int32_t Samples, std::int32_t Total, std::int32_t Freq,
                 std::int32_t Width) {
    return {From, Samples, Total, Freq, Width, (Width - 1.0) / Samples};
}

void ExpectTicks(const ScaleView& View, float Step, const std::vector<ScaleTick>& Expected) {
    const ScaleTicks Ticks = ScaleTicksOf(View);
    EXPECT_FLOAT_EQ(Ticks.Step, Step);
    ASSERT_EQ(Ticks.Ticks.size(), Expected.size());
    for (std::size_t i = 0; i < Expected.size(); ++i) {
        EXPECT_NEAR(Ticks.Ticks[i].X, Expected[i].X, 1e-6) << i;
        EXPECT_EQ(Ticks.Ticks[i].Text, Expected[i].Text) << i;
    }
    EXPECT_EQ(Ticks.StartText.empty(), !Expected.empty());
}

TEST(ScaleSteps, FallFromAnHourAndAHalfToAHundredth) {
    const std::array<float, 36> Expected = {
        5400,  3600, 2400, 1800, 1200,  900,  600,    480,   300,   180,   120,    90,
        60,    40,   30,   20,   15,    10,   8,      5,     3,     2,     1.5F,   1,
        0.75F, 0.5F, 0.3F, 0.2F, 0.15F, 0.1F, 0.075F, 0.05F, 0.03F, 0.02F, 0.015F, 0.01F};
    EXPECT_EQ(ScaleSteps, Expected);
}

TEST(ScaleSteps, TheSmallestOneAboveTheWishIsTaken) {
    struct Row {
        std::int32_t Milliseconds; // for each of ten labels
        float Step;
    };
    const Row Rows[] = {
        {0, 0.01F},         {9, 0.01F},         {11, 0.015F},       {16, 0.02F},
        {25, 0.03F},        {40, 0.05F},        {60, 0.075F},       {80, 0.1F},
        {120, 0.15F},       {160, 0.2F},        {250, 0.3F},        {499, 0.5F},
        {500, 0.75F},       {800, 1.0F},        {1000, 1.5F},       {1500, 2.0F},
        {2000, 3.0F},       {4999, 5.0F},       {5000, 8.0F},       {9000, 10.0F},
        {12000, 15.0F},     {16000, 20.0F},     {25000, 30.0F},     {35000, 40.0F},
        {59000, 60.0F},     {60000, 90.0F},     {100000, 120.0F},   {150000, 180.0F},
        {200000, 300.0F},   {400000, 480.0F},   {500000, 600.0F},   {700000, 900.0F},
        {1000000, 1200.0F}, {1500000, 1800.0F}, {2000000, 2400.0F}, {3000000, 3600.0F},
        {3600000, 5400.0F}, {5400000, 5400.0F}, {20000000, 5400.0F}};
    for (const Row& Each : Rows)
        EXPECT_FLOAT_EQ(ScaleStepOf(Each.Milliseconds * 10, 1000, 651), Each.Step)
            << Each.Milliseconds;
}

TEST(ScaleSteps, TheNumberOfLabelsIsTheWidthOver65WithoutRest) {
    // 10 s on 649 pixels: nine labels, a wish of 1.11; on 650: ten labels, a wish of 1.
    EXPECT_FLOAT_EQ(ScaleStepOf(10000, 1000, 649), 1.5F);
    EXPECT_FLOAT_EQ(ScaleStepOf(9990, 1000, 650), 1.0F);
    EXPECT_FLOAT_EQ(ScaleStepOf(9990, 1000, 649), 1.5F);
    // A strip narrower than one label has one.
    EXPECT_FLOAT_EQ(ScaleStepOf(1000, 1000, 64), 1.5F);
    EXPECT_FLOAT_EQ(ScaleStepOf(1000, 1000, 0), 1.5F);
}

TEST(Ticks, OfAWholeDocumentInSeconds) {
    ExpectTicks(ViewOf(1, 65000, 65000, 1000, 651), 8.0F,
                {{-0.01, "00"},
                 {79.99, "08"},
                 {159.99, "16"},
                 {239.99, "24"},
                 {319.99, "32"},
                 {399.99, "40"},
                 {479.99, "48"},
                 {559.99, "56"}}); // 01:04 at 639.99 is too near to the edge
}

TEST(Ticks, OfAViewThatStartsBetweenTwoTicks) {
    ExpectTicks(ViewOf(10001, 65000, 200000, 1000, 651), 8.0F,
                {{59.99, "16"},
                 {139.99, "24"},
                 {219.99, "32"},
                 {299.99, "40"},
                 {379.99, "48"},
                 {459.99, "56"},
                 {539.99, "01:04"},
                 {619.99, "01:12"}});
}

TEST(Ticks, OneJustLeftOfTheViewIsStillShown) {
    const ScaleTicks Ticks = ScaleTicksOf(ViewOf(16401, 65000, 200000, 1000, 651));
    ASSERT_FALSE(Ticks.Ticks.empty());
    EXPECT_NEAR(Ticks.Ticks[0].X, -4.01, 1e-9);
    EXPECT_EQ(Ticks.Ticks[0].Text, "16");
}

TEST(Ticks, OfAHundredthOfASecondOnAWidePanel) {
    ExpectTicks(ViewOf(1, 441, 44100, 44100, 1301), 0.01F, {{-1300.0 / 441.0, "00"}});
}

TEST(Ticks, WithoutOneInTheViewTheStartIsPrinted) {
    const ScaleTicks Ticks = ScaleTicksOf(ViewOf(88700, 50, 100000, 44100, 1301));
    EXPECT_FLOAT_EQ(Ticks.Step, 0.01F);
    EXPECT_TRUE(Ticks.Ticks.empty());
    EXPECT_EQ(Ticks.StartText, "02.01");
}

TEST(Ticks, OfHours) {
    ExpectTicks(ViewOf(1, 20000000, 20000000, 1000, 651), 2400.0F,
                {{-0.0000325, "00"},
                 {77.9999675, "40:00"},
                 {155.9999675, "1:20:00"},
                 {233.9999675, "2:00:00"},
                 {311.9999675, "2:40:00"},
                 {389.9999675, "3:20:00"},
                 {467.9999675, "4:00:00"},
                 {545.9999675, "4:40:00"}});
}

TEST(Ticks, OfTheLongestDocumentStandAnHourAndAHalfApart) {
    const ScaleTicks Ticks = ScaleTicksOf(ViewOf(1, Most, Most, 1000, 1301));
    EXPECT_FLOAT_EQ(Ticks.Step, 5400.0F);
    ASSERT_EQ(Ticks.Ticks.size(), 389U);
    EXPECT_NEAR(Ticks.Ticks[388].X, 1268.349664, 1e-4);
    EXPECT_EQ(Ticks.Ticks[388].Text, "582:00:00");
}

TEST(Ticks, AtTheEndOfTheLongestDocument) {
    const ScaleTicks Ticks = ScaleTicksOf(ViewOf(Most - 999, 1000, Most, 1000, 651));
    // In single precision the step of a tenth lies just above the wish of a tenth.
    EXPECT_FLOAT_EQ(Ticks.Step, 0.1F);
    ASSERT_FALSE(Ticks.Ticks.empty());
    EXPECT_EQ(Ticks.Ticks[0].Text.substr(0, 6), "596:31");
}

TEST(Ticks, OfAPanelNarrowerThanALabel) {
    ExpectTicks(ViewOf(1, 1000, 1000, 1000, 60), 1.5F, {{-0.059, "00"}});
}

TEST(Ticks, OfAPanelWithoutRoomForOne) {
    const ScaleTicks Ticks = ScaleTicksOf(ViewOf(1, 1000, 1000, 1000, 20));
    EXPECT_TRUE(Ticks.Ticks.empty());
    EXPECT_EQ(Ticks.StartText, "00");
}

TEST(Ticks, InTenthsOfASecond) {
    ExpectTicks(ViewOf(1, 2500, 2500, 1000, 651), 0.3F,
                {{-0.26, "00"},
                 {77.74, "00.30"},
                 {155.74, "00.60"},
                 {233.74, "00.90"},
                 {311.74, "01.20"},
                 {389.74, "01.50"},
                 {467.74, "01.80"},
                 {545.74, "02.10"}});
}

TEST(Ticks, ASecondAndAHalfApart) {
    ExpectTicks(ViewOf(8001, 96000, 200000, 8000, 651), 1.5F,
                {{27.0765625, "01.50"},
                 {108.3265625, "03"},
                 {189.5765625, "04.50"},
                 {270.8265625, "06"},
                 {352.0765625, "07.50"},
                 {433.3265625, "09"},
                 {514.5765625, "10.50"},
                 {595.8265625, "12"}});
}

TEST(Ticks, OfMinutes) {
    ExpectTicks(ViewOf(1, 500000, 500000, 1000, 651), 60.0F,
                {{-0.0013, "00"},
                 {77.9987, "01:00"},
                 {155.9987, "02:00"},
                 {233.9987, "03:00"},
                 {311.9987, "04:00"},
                 {389.9987, "05:00"},
                 {467.9987, "06:00"},
                 {545.9987, "07:00"}});
}

TEST(Ticks, OfAViewInTheMidstOfHours) {
    // From 1:06:40 on, 300 s across: a wish of 30, a step of 40, 90 pixels apart less rounding.
    ExpectTicks(ViewOf(4000001, 300000, 20000000, 1000, 651), 40.0F,
                {{-13.0 / 6000.0, "1:06:40"},
                 {39999.0 * 13.0 / 6000.0, "1:07:20"},
                 {79999.0 * 13.0 / 6000.0, "1:08:00"},
                 {119999.0 * 13.0 / 6000.0, "1:08:40"},
                 {159999.0 * 13.0 / 6000.0, "1:09:20"},
                 {199999.0 * 13.0 / 6000.0, "1:10:00"},
                 {239999.0 * 13.0 / 6000.0, "1:10:40"},
                 {279999.0 * 13.0 / 6000.0, "1:11:20"}});
}

TEST(Ticks, ThirtyPixelsFromTheRightEdgeAreTooNear) {
    ScaleView View = ViewOf(1000, 3200, 100000, 1000, 530);
    View.PixelsPerSample = 0.25;
    ExpectTicks(View, 0.5F, {{0.0, "01"}, {125.0, "01.50"}, {250.0, "02"}, {375.0, "02.50"}});
    View.Width = 531;
    EXPECT_EQ(ScaleTicksOf(View).Ticks.size(), 5U);
}

TEST(Ticks, FivePixelsLeftOfTheEdgeAreTooFar) {
    ScaleView View = ViewOf(1020, 3200, 100000, 1000, 530);
    View.PixelsPerSample = 0.25;
    EXPECT_EQ(ScaleTicksOf(View).Ticks[0].Text, "01.50");
    View.ViewFrom = 1019;
    EXPECT_EQ(ScaleTicksOf(View).Ticks[0].Text, "01");
}

TEST(Ticks, AnEmptyDocumentHasNone) {
    const ScaleTicks Ticks = ScaleTicksOf({1, 0, 0, 44100, 651, 1.0});
    EXPECT_TRUE(Ticks.Ticks.empty());
    EXPECT_TRUE(Ticks.StartText.empty());
}

/// A view from 101 to 201 of 1000 samples, two pixels a sample.
class PlaySelection : public ::testing::Test {
  protected:
    PlaySelectionShape Of(std::int32_t From, std::int32_t To, std::int32_t Height = 20) {
        PlaySelStart = From;
        PlaySelEnd = To;
        return PlaySelectionShapeOf(View, Height);
    }
    void ExpectBox(const PlaySelectionShape& Shape, double X1, double X2) {
        EXPECT_EQ(Shape.Kind, MarkKind::Box);
        EXPECT_DOUBLE_EQ(Shape.X1, X1);
        EXPECT_DOUBLE_EQ(Shape.X2, X2);
    }
    ScaleView View{101, 100, 1000, 1000, 201, 2.0};
};

TEST_F(PlaySelection, NoneDrawsNothing) {
    EXPECT_EQ(Of(0, 0).Kind, MarkKind::None);
}

TEST_F(PlaySelection, APointIsATriangleThatPointsRight) {
    const PlaySelectionShape Shape = Of(106, 106, 5);
    EXPECT_EQ(Shape.Kind, MarkKind::Point);
    ASSERT_EQ(Shape.Lines.size(), 3U);
    for (int k = 0; k < 3; ++k) {
        const WaveLine& Line = Shape.Lines[static_cast<std::size_t>(k)];
        EXPECT_DOUBLE_EQ(Line.X1, 10.0 + k);
        EXPECT_DOUBLE_EQ(Line.X2, 10.0 + k);
        EXPECT_DOUBLE_EQ(Line.Y1, k);
        EXPECT_DOUBLE_EQ(Line.Y2, 5.0 - k);
    }
}

TEST_F(PlaySelection, APointOutsideTheViewDrawsNothingOnTheScale) {
    EXPECT_EQ(Of(100, 100).Kind, MarkKind::None);
    EXPECT_EQ(Of(202, 202).Kind, MarkKind::None);
    EXPECT_EQ(Of(201, 201).Kind, MarkKind::Point);
}

TEST_F(PlaySelection, APointOutsideTheViewIsStillSeenOnTheOverviewBar) {
    (void)Of(900, 900);
    EXPECT_EQ(ScrollScaleOf(View, 501, 20).PlaySelection.Kind, MarkKind::Point);
}

TEST_F(PlaySelection, ARangeIsLimitedToTheView) {
    ExpectBox(Of(111, 121), 20.0, 40.0);
    ExpectBox(Of(1, 121), 0.0, 40.0);
    ExpectBox(Of(111, 1000), 20.0, 200.0);
    ExpectBox(Of(1, 1000), 0.0, 200.0);
    EXPECT_EQ(Of(1, 100).Kind, MarkKind::None);
    EXPECT_EQ(Of(202, 1000).Kind, MarkKind::None);
}

TEST_F(PlaySelection, ANarrowRangeIsAPixelWide) {
    View.PixelsPerSample = 0.5;
    ExpectBox(Of(111, 112), 5.0, 6.0);
    ExpectBox(Of(111, 114), 5.0, 6.0);
    ExpectBox(Of(111, 115), 5.0, 7.0);
}

TEST_F(PlaySelection, OneBeyondTheEndIsTakenBack) {
    PlaySelStart = 900;
    PlaySelEnd = 1000;
    PlaySelectionLimit(1000);
    EXPECT_EQ(PlaySelStart, 900);
    PlaySelectionLimit(999);
    EXPECT_EQ(PlaySelStart, 0);
    EXPECT_EQ(PlaySelEnd, 0);
    PlaySelStart = 1001;
    PlaySelEnd = 5;
    PlaySelectionLimit(1000);
    EXPECT_EQ(PlaySelEnd, 0);
}

/// A bar of 1001 pixels inside, so that a thousandth of the document is a pixel.
class Overview : public ::testing::Test {
  protected:
    [[nodiscard]] ScrollScale Of() const { return ScrollScaleOf(View, 1001.0, 20.0); }
    static void ExpectBox(const ScrollBox& Box, double X1, double Y1, double X2, double Y2) {
        EXPECT_EQ(Box.Kind, MarkKind::Box);
        EXPECT_DOUBLE_EQ(Box.X1, X1);
        EXPECT_DOUBLE_EQ(Box.Y1, Y1);
        EXPECT_DOUBLE_EQ(Box.X2, X2);
        EXPECT_DOUBLE_EQ(Box.Y2, Y2);
    }
    ScaleView View{25000, 50000, 100000, 44100, 800, 1.0};
};

TEST_F(Overview, TheViewIsABoxWithItsEdgesRounded) {
    const ScrollScale Scale = Of();
    ExpectBox(Scale.View, 250.0, 0.0, 750.0, 19.0);
    EXPECT_EQ(Scale.Edge1, 250);
    EXPECT_EQ(Scale.Edge2, 750);
    EXPECT_EQ(Scale.Selection.Kind, MarkKind::None);
    EXPECT_EQ(Scale.PlaySelection.Kind, MarkKind::None);
}

TEST_F(Overview, EdgesRoundToEven) {
    View.ViewFrom = 25050; // 250.5
    View.ViewTotal = 100;  // 251.5
    EXPECT_EQ(Of().Edge1, 250);
    EXPECT_EQ(Of().Edge2, 252);
}

TEST_F(Overview, InnerSizesAreRounded) {
    const ScrollScale Scale = ScrollScaleOf(View, 1001.4, 19.6);
    ExpectBox(Scale.View, 250.0, 0.0, 750.0, 19.0);
}

TEST_F(Overview, TheSelectionIsABoxOrALine) {
    SelStart = 10000;
    SelEnd = 30000;
    ExpectBox(Of().Selection, 100.0, 2.0, 300.0, 17.0);
    SelEnd = 10000;
    EXPECT_EQ(Of().Selection.Kind, MarkKind::Point);
    EXPECT_DOUBLE_EQ(Of().Selection.X1, 100.0);
    EXPECT_DOUBLE_EQ(Of().Selection.Y2, 20.0);
    SelEnd = 5000; // reversed by a right click
    ExpectBox(Of().Selection, 50.0, 2.0, 100.0, 17.0);
}

TEST_F(Overview, ThePlaySelectionIsABoxOrALine) {
    PlaySelStart = 40000;
    PlaySelEnd = 100000;
    ExpectBox(Of().PlaySelection, 400.0, 2.0, 1000.0, 17.0);
    PlaySelEnd = 40000;
    EXPECT_EQ(Of().PlaySelection.Kind, MarkKind::Point);
    EXPECT_DOUBLE_EQ(Of().PlaySelection.X1, 400.0);
}

TEST_F(Overview, OfAnEmptyDocumentIsEmpty) {
    View.Total = 0;
    SelStart = SelEnd = 5;
    EXPECT_EQ(Of().View.Kind, MarkKind::None);
    EXPECT_EQ(Of().Selection.Kind, MarkKind::None);
}

TEST_F(Overview, OfTheLongestDocument) {
    View = {1, Most, Most, 1000, 800, 1.0};
    SelStart = 1;
    SelEnd = Most;
    const ScrollScale Scale = Of();
    EXPECT_EQ(Scale.Edge1, 0);
    EXPECT_EQ(Scale.Edge2, 1000);
    EXPECT_NEAR(Scale.Selection.X2, 1000.0, 1e-6);
}

} // namespace
} // namespace quoril

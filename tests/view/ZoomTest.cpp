#include "view/ZoomMod.h"

#include "base/Failure.h"
#include "selection/ViewFixture.h"

#include <random>

namespace quoril {
namespace {

class Zoom : public test::ViewTest {
  protected:
    void Run(std::int16_t Code, std::int32_t PanelWidth = 800) {
        ZoomCommand(Code, PanelWidth);
        ExpectCalls({"Refresh_Wave_View"});
    }
};

TEST_F(Zoom, InTakesTheMiddleThreeFifths) {
    View(101, 500, true);
    Run(ZoomCodeIn);
    ExpectView(201, 300);
    EXPECT_FALSE(ViewAll);
}

TEST_F(Zoom, InRoundsToEven) {
    View(1, 25); // from 6, total 15
    Run(ZoomCodeIn);
    ExpectView(6, 15);
    View(100, 33); // from 106.6, total 19.8
    Run(ZoomCodeIn);
    ExpectView(107, 20);
}

TEST_F(Zoom, InAt21Gives13AndAt20DoesNothing) {
    View(100, 21);
    Run(ZoomCodeIn);
    ExpectView(104, 13);
    View(100, 20, true);
    Run(ZoomCodeIn);
    ExpectView(100, 20);
    EXPECT_FALSE(ViewAll);
}

TEST_F(Zoom, InFromTheWholeDocument) {
    View(1, 1000, true);
    Run(ZoomCodeIn);
    ExpectView(201, 600);
}

TEST_F(Zoom, InOnAViewBeyondTheEndIsBroughtBack) {
    View(900, 500);
    Run(ZoomCodeIn); // 1000 and 300: the sum passes the end
    ExpectView(700, 300);
    View(601, 500);
    Run(ZoomCodeIn); // 701 and 300: one too many
    ExpectView(700, 300);
    View(600, 500);
    Run(ZoomCodeIn); // 700 and 300: as far as it goes
    ExpectView(700, 300);
    View(-500, 400);
    Run(ZoomCodeIn);
    ExpectView(1, 240);
}

TEST_F(Zoom, OutTakesFiveThirdsAroundTheMiddle) {
    View(401, 300);
    Run(ZoomCodeOut);
    ExpectView(301, 500);
}

TEST_F(Zoom, OutAtTheLeftEdgeStaysThereAndGrows) {
    View(1, 300);
    Run(ZoomCodeOut);
    ExpectView(1, 500);
}

TEST_F(Zoom, OutAtTheRightEdgeStaysInTheDocument) {
    View(701, 300);
    Run(ZoomCodeOut); // 601 and 500
    ExpectView(500, 500);
}

TEST_F(Zoom, OutBeyondTheDocumentShowsItWhole) {
    View(201, 700);
    Run(ZoomCodeOut); // 1 (from -32) and 1167
    ExpectView(1, 1000);
    View(301, 650);
    Run(ZoomCodeOut); // 84 and 1083: 1000 - 1083 is below 1
    ExpectView(1, 1000);
}

TEST_F(Zoom, OutToOneLessThanTheWholeStaysThere) {
    Document(1001);
    View(1, 600);
    Run(ZoomCodeOut);
    ExpectView(1, 1000);
}

TEST_F(Zoom, OutOfTheWholeDocumentDoesNothing) {
    View(1, 1000, true);
    Run(ZoomCodeOut);
    ExpectView(1, 1000);
    View(5, 2000);
    Run(ZoomCodeOut);
    ExpectView(5, 2000);
    View(5, 1000);
    Run(ZoomCodeOut);
    ExpectView(5, 1000);
}

TEST_F(Zoom, OneToOneShowsASamplePerPixel) {
    Document(5000);
    View(1001, 3000, true);
    Run(ZoomCodeOneToOne, 800);
    ExpectView(1001, 800);
    EXPECT_FALSE(ViewAll);
    View(4500, 100);
    Run(ZoomCodeOneToOne, 800);
    ExpectView(4200, 800);
    View(4200, 100);
    Run(ZoomCodeOneToOne, 800);
    ExpectView(4200, 800);
}

TEST_F(Zoom, OneToOneOnAShortDocumentStartsAtItsStart) {
    Document(500);
    View(100, 50);
    Run(ZoomCodeOneToOne, 800);
    ExpectView(1, 800);
    ViewLimitsApply(500);
    ExpectView(1, 500);
    EXPECT_TRUE(ViewAll);
}

TEST_F(Zoom, AllAsksTheRefreshToShowTheWhole) {
    View(100, 50);
    Run(ZoomCodeAll);
    EXPECT_TRUE(ViewAll);
    ExpectView(100, 50);
    ViewLimitsApply(1000);
    ExpectView(1, 1000);
    View(1, 1000, true);
    Run(ZoomCodeAll);
    EXPECT_FALSE(ViewAll); // until the refresh finds that the whole is shown
    ViewLimitsApply(1000);
    EXPECT_TRUE(ViewAll);
}

TEST_F(Zoom, SelectedOnARangeIsOneLessThanTheSamplesSelected) {
    Select(101, 300);
    View(1, 1000, true);
    Run(ZoomCodeSelected);
    ExpectView(101, 199);
    EXPECT_FALSE(ViewAll);
}

TEST_F(Zoom, SelectedOnAPointRunsToTheEnd) {
    Select(101, 101);
    Run(ZoomCodeSelected);
    ExpectView(101, 899);
}

TEST_F(Zoom, SelectedWithoutASelectionSaysSo) {
    View(1, 1000, true);
    ZoomCommand(ZoomCodeSelected, 800);
    EXPECT_EQ(Messages.Texts(), std::vector<std::string>{"No selection found"});
    ViewLimitsApply(1000);
    ExpectView(1, 1000);
    EXPECT_TRUE(ViewAll);
}

TEST_F(Zoom, UnknownCodesDoNothing) {
    View(100, 500, true);
    for (const std::int16_t Code : std::initializer_list<std::int16_t>{0, 6, -1, 32767}) {
        ZoomCommand(Code, 800);
        EXPECT_TRUE(ViewAll);
    }
    ExpectView(100, 500);
    ExpectCalls({});
}

TEST_F(Zoom, TheMenuTakesToolsAndRunsCommands) {
    View(101, 500);
    ZoomMenu(0, 800);
    EXPECT_EQ(ViewMouseMode, 4);
    ExpectCalls({"RefreshMousePointer"});
    ZoomMenu(1, 800);
    EXPECT_EQ(ViewMouseMode, 6);
    ExpectCalls({"RefreshMousePointer"});
    ZoomMenu(2, 800);
    ExpectView(201, 300);
    ZoomMenu(3, 800);
    ExpectView(101, 500);
    ZoomMenu(4, 200);
    ExpectView(101, 200);
    ExpectCalls({"Refresh_Wave_View", "Refresh_Wave_View", "Refresh_Wave_View"});
    ZoomMenu(5, 800);
    ZoomMenu(-1, 800);
    ExpectCalls({});
    ViewTool(ViewToolPan);
    EXPECT_EQ(ViewMouseMode, 8);
}

TEST_F(Zoom, AbsurdNumbersFailOrStayInTheDocument) {
    Document(Most);
    const std::int32_t Numbers[] = {-Most - 1, -Most, -1, 0, 1, 10, 21, Most - 1, Most};
    for (const std::int32_t From : Numbers)
        for (const std::int32_t Samples : Numbers)
            for (const std::int16_t Code : std::initializer_list<std::int16_t>{1, 2, 3, 4, 5})
                for (const std::int32_t Width : Numbers) {
                    View(From, Samples);
                    Select(From, Samples);
                    try {
                        ZoomCommand(Code, Width);
                    } catch (const Failure& Told) {
                        EXPECT_STREQ(Told.what(), "Overflow");
                    }
                    ViewLimitsApply(Most);
                    ASSERT_GE(ViewFrom, 1);
                    ASSERT_GE(ViewTotal, 10);
                    ASSERT_LE(static_cast<std::int64_t>(ViewFrom) + ViewTotal,
                              static_cast<std::int64_t>(Most) + 1);
                }
}

TEST_F(Zoom, AllTheWayInAndOutOnTheLongestDocument) {
    Document(Most);
    View(1, Most, true);
    for (int i = 0; i < 60; ++i) {
        ZoomCommand(ZoomCodeIn, 800);
        ViewLimitsApply(Most);
    }
    EXPECT_LE(ViewTotal, 20);
    EXPECT_GE(ViewTotal, 10);
    for (int i = 0; i < 60; ++i) {
        ZoomCommand(ZoomCodeOut, 800);
        ViewLimitsApply(Most);
    }
    ExpectView(1, Most);
    EXPECT_TRUE(ViewAll);
}

class Limits : public test::ViewTest {};

TEST_F(Limits, ApplyInTheirOrder) {
    struct Row {
        std::int32_t From, Samples;
        bool All;
        std::int32_t Total;
        std::int32_t NewFrom, NewSamples;
        bool NewAll;
    };
    const Row Rows[] = {
        {50, 20, true, 1000, 1, 1000, true},      // all
        {50, 1000, false, 1000, 1, 1000, true},   // as much as there is
        {50, 5000, false, 1000, 1, 1000, true},   // more than there is
        {50, 3, false, 1000, 50, 10, false},      // closer than the closest
        {50, 0, false, 1000, 50, 10, false},      //
        {50, -7, false, 1000, 50, 10, false},     //
        {50, 10, false, 1000, 50, 10, false},     //
        {901, 100, false, 1000, 901, 100, false}, // touches the end
        {902, 100, false, 1000, 901, 100, false}, // one beyond the end
        {5000, 100, false, 1000, 901, 100, false},
        {0, 100, false, 1000, 1, 100, false},
        {-50, 100, false, 1000, 1, 100, false},
        {1, 999, false, 1000, 1, 999, false},
        {2, 999, false, 1000, 2, 999, false},
        {3, 999, false, 1000, 2, 999, false},
        {1, 8, false, 8, 1, 8, true},
        {3, 3, false, 8, 1, 10, false}, // the next refresh takes it back to 8
        {4, 4, false, 10, 1, 10, true},
        {5, 6, false, 1, 1, 1, true},
    };
    for (const Row& Each : Rows) {
        SCOPED_TRACE(std::to_string(Each.From) + "+" + std::to_string(Each.Samples) + " of " +
                     std::to_string(Each.Total));
        View(Each.From, Each.Samples, Each.All);
        ViewLimitsApply(Each.Total);
        ExpectView(Each.NewFrom, Each.NewSamples);
        EXPECT_EQ(ViewAll, Each.NewAll);
    }
}

TEST_F(Limits, AnEmptyDocumentChangesNothing) {
    View(7, 3, false);
    ViewLimitsApply(0);
    ExpectView(7, 3);
    EXPECT_FALSE(ViewAll);
}

TEST_F(Limits, HoldForAnyNumbers) {
    std::mt19937 Random(20240511); // printed by the trace below when it fails
    std::uniform_int_distribution<std::int32_t> Any(-Most - 1, Most);
    std::uniform_int_distribution<std::int32_t> Length(10, Most);
    for (int i = 0; i < 20000; ++i) {
        const std::int32_t Total = Length(Random) >> (i % 22);
        View(Any(Random) >> (i % 19), Any(Random) >> (i % 23), i % 5 == 0);
        SCOPED_TRACE("seed 20240511, round " + std::to_string(i));
        ViewLimitsApply(Total);
        if (Total < 10)
            continue;
        ASSERT_GE(ViewFrom, 1);
        ASSERT_GE(ViewTotal, 10);
        ASSERT_LE(static_cast<std::int64_t>(ViewFrom) + ViewTotal,
                  static_cast<std::int64_t>(Total) + 1);
        ASSERT_EQ(ViewAll, ViewFrom == 1 && ViewTotal == Total);
    }
}

TEST_F(Limits, TheLoopsRunToOnePastTheViewOrTheLastSample) {
    View(101, 200);
    EXPECT_EQ(ViewEndOf(1000), 301);
    EXPECT_EQ(ViewEndOf(300), 300);
    View(1, 1000);
    EXPECT_EQ(ViewEndOf(1000), 1000);
    View(Most, Most);
    EXPECT_EQ(ViewEndOf(Most), Most);
}

TEST_F(Limits, TheDrawToolNeedsASecondOrLess) {
    struct Row {
        std::int32_t Mode;
        std::int32_t Samples;
        std::int32_t NewMode;
    };
    for (const Row& Each : {Row{7, 44100, 7}, Row{7, 44101, 0}, Row{2, 44101, 2}, Row{3, 44101, 3},
                            Row{7, Most, 0}}) {
        MouseMode = Each.Mode;
        ViewTotal = Each.Samples;
        DrawToolLimit(44100);
        EXPECT_EQ(MouseMode, Each.NewMode);
    }
}

} // namespace
} // namespace quoril

// Which pixels bars and lines cover, against the same worked out pixel by pixel.
#include "view/WaveColumns.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <utility>

namespace quoril {
namespace {

/// A whole number from 0 to `Below` - 1.
double Pick(std::mt19937& Random, std::uint32_t Below) {
    return static_cast<double>(static_cast<std::uint32_t>(Random()) % Below);
}

using PixelSet = std::set<std::pair<int, int>>; // column, row

PixelSet Covered(const WaveColumns& Columns, int Width) {
    PixelSet Result;
    for (int Column = 0; Column < Width; ++Column)
        for (int Row = Columns.First(Column); Row <= Columns.Last(Column); ++Row)
            Result.emplace(Column, Row);
    return Result;
}

TEST(WaveColumns, ABarCoversTheRowsBetweenItsEndsInOneColumn) {
    WaveColumns Columns(10, 20);
    Columns.AddBar(3.4, 12.0, 5.6);
    PixelSet Expected;
    for (int Row = 6; Row <= 12; ++Row)
        Expected.emplace(3, Row);
    EXPECT_EQ(Covered(Columns, 10), Expected);
}

TEST(WaveColumns, ACoordinateHalfWayGoesToTheEvenPixel) {
    WaveColumns Columns(10, 20);
    Columns.AddBar(2.5, 4.5, 4.5);
    Columns.AddBar(5.5, 7.5, 7.5);
    EXPECT_EQ(Covered(Columns, 10), (PixelSet{{2, 4}, {6, 8}}));
}

TEST(WaveColumns, AFullScaleSampleStaysOnThePanel) {
    WaveColumns Columns(4, 10);
    Columns.AddBar(0, 5.0, 9.9);
    Columns.AddBar(1, -3.0, -3.0);
    EXPECT_EQ(Columns.Last(0), 9);
    EXPECT_EQ(Columns.First(1), 0);
    EXPECT_EQ(Columns.Last(1), 0);
}

TEST(WaveColumns, ABarBesideThePanelIsLeftOut) {
    WaveColumns Columns(4, 10);
    Columns.AddBar(-0.6, 2, 5);
    Columns.AddBar(3.6, 2, 5);
    Columns.AddBar(1e12, 2, 5);
    EXPECT_TRUE(Covered(Columns, 4).empty());
}

TEST(WaveColumns, AFlatLineHasOneRowAColumn) {
    WaveColumns Columns(11, 20);
    Columns.AddLine(0, 10, 10, 5);
    for (int Column = 0; Column <= 10; ++Column) {
        const int Row = static_cast<int>(std::nearbyint(10 - Column * 0.5));
        EXPECT_EQ(Columns.First(Column), Row) << Column;
        EXPECT_EQ(Columns.Last(Column), Row) << Column;
    }
}

TEST(WaveColumns, ASteepLineHasOneColumnARow) {
    for (const bool Down : {false, true}) {
        WaveColumns Columns(8, 40);
        const double Y1 = Down ? 2 : 37;
        const double Y2 = Down ? 37 : 2;
        Columns.AddLine(1.2, Y1, 6.3, Y2);
        const PixelSet Pixels = Covered(Columns, 8);
        for (int Row = 2; Row <= 37; ++Row) {
            const double X = 1.2 + (Row - Y1) / (Y2 - Y1) * (6.3 - 1.2);
            EXPECT_TRUE(Pixels.contains({static_cast<int>(std::nearbyint(X)), Row}))
                << Down << " row " << Row;
        }
        EXPECT_EQ(Pixels.size(), 36U) << Down;
    }
}

TEST(WaveColumns, ALineFromAPointToItselfIsThatPoint) {
    WaveColumns Columns(8, 8);
    Columns.AddLine(3, 4, 3, 4);
    EXPECT_EQ(Covered(Columns, 8), (PixelSet{{3, 4}}));
}

TEST(WaveColumns, LinesInARowLeaveNoGap) {
    std::mt19937 Random(20240607);
    for (int Round = 0; Round < 200; ++Round) {
        const int Width = 1 + static_cast<int>(Random() % 60);
        const int Height = 1 + static_cast<int>(Random() % 60);
        WaveColumns Columns(Width, Height);
        const int Points = 2 + static_cast<int>(Random() % 90);
        double LastX = 0;
        double LastY = Pick(Random, 60);
        for (int Point = 0; Point < Points; ++Point) {
            const double X = (Width - 1.0) * Point / (Points - 1.0);
            const double Y = Pick(Random, 6000) / 100.0;
            Columns.AddLine(LastX, LastY, X, Y);
            LastX = X;
            LastY = Y;
        }
        for (int Column = 0; Column < Width; ++Column) {
            ASSERT_LE(Columns.First(Column), Columns.Last(Column))
                << "round " << Round << " column " << Column;
            if (Column > 0) {
                ASSERT_LE(Columns.First(Column), Columns.Last(Column - 1) + 1) << Round;
                ASSERT_GE(Columns.Last(Column) + 1, Columns.First(Column - 1)) << Round;
            }
        }
    }
}

TEST(WaveColumns, ThickerMeansTheSamePixelsToTheRightAndBelow) {
    WaveColumns Columns(8, 10);
    Columns.AddBar(2, 3, 5);
    Columns.Thicken(2);
    PixelSet Expected;
    for (const int Column : {2, 3})
        for (int Row = 3; Row <= 6; ++Row)
            Expected.emplace(Column, Row);
    EXPECT_EQ(Covered(Columns, 8), Expected);
    Columns.Thicken(1);
    EXPECT_EQ(Covered(Columns, 8), Expected);
}

TEST(WaveColumns, ThickeningStopsAtTheEdges) {
    WaveColumns Columns(4, 6);
    Columns.AddBar(3, 2, 5);
    Columns.Thicken(3);
    EXPECT_EQ(Columns.Last(3), 5);
    EXPECT_EQ(Columns.First(3), 2);
}

TEST(WaveColumns, FillingColoursTheCoveredPixelsAndNoOther) {
    std::mt19937 Random(7);
    constexpr int Width = 37;
    constexpr int Height = 23;
    constexpr int Stride = 41;
    WaveColumns Columns(Width, Height);
    for (int Bar = 0; Bar < 20; ++Bar)
        Columns.AddBar(Pick(Random, Width), Pick(Random, Height), Pick(Random, Height));
    std::vector<std::uint32_t> Image(std::size_t{Stride} * Height, 0xFF000001);
    WaveColumns::Fill({{Columns, 0xFF123456}}, Image.data(), Stride);
    const PixelSet Pixels = Covered(Columns, Width);
    for (int Row = 0; Row < Height; ++Row)
        for (int Column = 0; Column < Stride; ++Column)
            ASSERT_EQ(Image[static_cast<std::size_t>(Row * Stride + Column)],
                      Pixels.contains({Column, Row}) ? 0xFF123456 : 0xFF000001)
                << Column << "," << Row;
}

TEST(WaveColumns, FillingWithNothingCoveredChangesNothing) {
    const WaveColumns Columns(3, 3);
    std::vector<std::uint32_t> Image(9, 5);
    WaveColumns::Fill({{Columns, 7}}, Image.data(), 3);
    WaveColumns::Fill({}, Image.data(), 3);
    EXPECT_EQ(Image, std::vector<std::uint32_t>(9, 5));
}

TEST(WaveColumns, ALaterLayerLiesOverAnEarlierOne) {
    WaveColumns Under(2, 6);
    Under.AddBar(0, 0, 4);
    Under.AddBar(1, 0, 4);
    WaveColumns Over(2, 6);
    Over.AddBar(1, 2, 5);
    std::vector<std::uint32_t> Image(12, 1);
    WaveColumns::Fill({{Under, 2}, {Over, 3}}, Image.data(), 2);
    EXPECT_EQ(Image, (std::vector<std::uint32_t>{2, 2, 2, 2, 2, 3, 2, 3, 2, 3, 1, 3}));
}

} // namespace
} // namespace quoril

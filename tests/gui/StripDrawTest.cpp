// The pictures of the time scale and the overview bar.
#include "WindowFixture.h"

#include "view/StripDraw.h"

#include <cmath>

namespace quoril::test {
namespace {

constexpr std::int32_t Back = 0xE6E6E6;
constexpr std::int32_t Red = 0x0000FF;

class StripDrawTest : public ::testing::Test {
  protected:
    StripDrawTest() { ViewStart(); }

    static std::int32_t At(const QImage& Picture, int X, int Y) {
        const QRgb Pixel = Picture.pixel(X, Y);
        return qBlue(Pixel) << 16 | qGreen(Pixel) << 8 | qRed(Pixel);
    }
    static QImage Strip(int Width, int Height) {
        QImage Picture(Width, Height, QImage::Format_RGB32);
        Picture.fill(ColorFromBgr(Back));
        return Picture;
    }
    /// 1000 samples at 1000 Hz, seen whole on 1001 pixels: a pixel a sample.
    static ScaleView Whole(double Ratio = 1.0) {
        const int Width = static_cast<int>(std::lround(1001 * Ratio));
        return {1, 1000, 1000, 1000, Width, (Width - 1) / 1000.0};
    }
    static bool BlackColumn(const QImage& Picture, int X) {
        for (int Y = 0; Y < Picture.height(); ++Y)
            if (At(Picture, X, Y) != 0)
                return false;
        return true;
    }
};

TEST_F(StripDrawTest, TicksAreBlackLinesOverTheHeight) {
    QImage Picture = Strip(1001, 20);
    DrawPlayScale(Picture, Whole(), 1.0, QApplication::font());
    // A second over 15 labels of 65 pixels: 0.0667 wanted, so 0.075 second steps.
    for (const int X : {74, 149, 224, 899})
        EXPECT_TRUE(BlackColumn(Picture, X)) << X;
    EXPECT_FALSE(BlackColumn(Picture, 974)) << "less than 30 pixels from the right edge";
    EXPECT_FALSE(BlackColumn(Picture, 100));
}

TEST_F(StripDrawTest, LabelsKeepTheirDistanceAtAScaleOfTwo) {
    QImage Picture = Strip(2002, 40);
    DrawPlayScale(Picture, Whole(2.0), 2.0, QApplication::font());
    const double PixelsASample = Whole(2.0).PixelsPerSample;
    for (const int Sample : {75, 150, 900}) {
        const int X = static_cast<int>(std::nearbyint((Sample - 1) * PixelsASample));
        EXPECT_TRUE(BlackColumn(Picture, X)) << Sample;
        EXPECT_TRUE(BlackColumn(Picture, X + 1)) << "as thick as the scale, at " << Sample;
    }
}

TEST_F(StripDrawTest, APlayRangeIsAGrayBoxWithARedEdge) {
    PlaySelStart = 201;
    PlaySelEnd = 401;
    QImage Picture = Strip(1001, 20);
    DrawPlayScale(Picture, Whole(), 1.0, QApplication::font());
    EXPECT_EQ(At(Picture, 200, 18), Red);
    EXPECT_EQ(At(Picture, 400, 18), Red);
    EXPECT_EQ(At(Picture, 270, 0), Red);
    EXPECT_EQ(At(Picture, 270, 19), Red);
    EXPECT_EQ(At(Picture, 270, 17), 0x808080);
    EXPECT_EQ(At(Picture, 195, 10), Back);
    EXPECT_EQ(At(Picture, 410, 18), Back);
}

TEST_F(StripDrawTest, APlayPointIsATriangleThatPointsRight) {
    PlaySelStart = PlaySelEnd = 201;
    QImage Picture = Strip(1001, 20);
    DrawPlayScale(Picture, Whole(), 1.0, QApplication::font());
    for (int K = 0; K <= 10; ++K)
        for (int Y = 0; Y < 20; ++Y)
            EXPECT_EQ(At(Picture, 200 + K, Y) == Red, Y >= K && Y <= 20 - K) << K << "," << Y;
    EXPECT_NE(At(Picture, 211, 10), Red);
}

TEST_F(StripDrawTest, APlayPointOutsideTheViewIsOnTheOverviewAlone) {
    PlaySelStart = PlaySelEnd = 900;
    ScaleView View = Whole();
    View.ViewTotal = 500;
    View.PixelsPerSample = 2.0;
    QImage Scale = Strip(1001, 20);
    DrawPlayScale(Scale, View, 1.0, QApplication::font());
    for (int X = 0; X < 1001; ++X)
        ASSERT_NE(At(Scale, X, 10), Red) << X;
    QImage Scroll = Strip(1001, 20);
    DrawScrollScale(Scroll, ScrollScaleOf(View, 1001, 20), 1.0);
    EXPECT_EQ(At(Scroll, 900, 0), Red);
    EXPECT_EQ(At(Scroll, 900, 19), Red);
}

TEST_F(StripDrawTest, WithoutATickTheStartTimeIsPrinted) {
    ScaleView View{1003, 3, 100000, 1000, 101, 100.0 / 3};
    QImage Picture = Strip(101, 20);
    DrawPlayScale(Picture, View, 1.0, QApplication::font());
    int Ink = 0;
    for (int X = 0; X < 60; ++X)
        for (int Y = 0; Y < 20; ++Y)
            Ink += At(Picture, X, Y) != Back ? 1 : 0;
    EXPECT_GT(Ink, 20);
    for (int X = 0; X < 101; ++X)
        EXPECT_FALSE(BlackColumn(Picture, X)) << X;
}

TEST_F(StripDrawTest, TheOverviewShowsViewSelectionAndPlayRange) {
    ScaleView View = Whole();
    View.ViewFrom = 101;
    View.ViewTotal = 400;
    SelStart = 200;
    SelEnd = 300;
    PlaySelStart = 600;
    PlaySelEnd = 700;
    QImage Picture = Strip(1001, 24);
    DrawScrollScale(Picture, ScrollScaleOf(View, 1001, 24), 1.0);
    const std::int32_t ViewColor = ColorOf(WaveColor::NormalBackColor);
    const std::int32_t SelColor = ColorOf(WaveColor::SelectBackColor);
    EXPECT_EQ(At(Picture, 100, 12), Back);
    EXPECT_EQ(At(Picture, 101, 12), ViewColor);
    EXPECT_EQ(At(Picture, 501, 12), ViewColor);
    EXPECT_EQ(At(Picture, 502, 12), Back);
    EXPECT_EQ(At(Picture, 120, 23), ViewColor);
    EXPECT_EQ(At(Picture, 250, 1), ViewColor);
    for (const int Y : {2, 12, 21})
        EXPECT_EQ(At(Picture, 250, Y), SelColor) << Y;
    EXPECT_EQ(At(Picture, 250, 22), ViewColor);
    for (const int Y : {2, 21})
        EXPECT_EQ(At(Picture, 650, Y), Red) << Y;
    EXPECT_EQ(At(Picture, 650, 12), Back);
    EXPECT_EQ(At(Picture, 600, 12), Red);
    EXPECT_EQ(At(Picture, 700, 12), Red);
}

TEST_F(StripDrawTest, ASelectedPointIsADottedLineOnTheOverview) {
    SelStart = SelEnd = 500;
    QImage Picture = Strip(1001, 24);
    DrawScrollScale(Picture, ScrollScaleOf(Whole(), 1001, 24), 1.0);
    int Dots = 0;
    for (int Y = 0; Y < 24; ++Y)
        Dots += At(Picture, 500, Y) == ColorOf(WaveColor::OnePtSelLineColor) ? 1 : 0;
    EXPECT_GE(Dots, 6);
    EXPECT_LE(Dots, 16);
}

} // namespace
} // namespace quoril::test

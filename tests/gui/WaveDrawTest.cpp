// The picture of the waveform, pixel by pixel, against positions worked out here by themselves.
#include "WindowFixture.h"

#include "selection/SelectionMod.h"
#include "view/WaveDraw.h"

#include <cmath>
#include <functional>
#include <map>

namespace quoril::test {
namespace {

constexpr int W = 101;
constexpr int H = 64;

/// The colours of these tests, each on its own, by role.
constexpr std::int32_t Bar = 0x0000FF;
constexpr std::int32_t Between = 0x00FF00;
constexpr std::int32_t Center = 0x808080;
constexpr std::int32_t Back = 0x200000;
constexpr std::int32_t Selected = 0x004000;
constexpr std::int32_t OnePoint = 0x00FFFF;
constexpr std::int32_t Mark = 0xC0C0C0;

class WaveDrawTest : public ::testing::Test {
  protected:
    WaveDrawTest() {
        ViewStart();
        ColorSet(WaveColor::WaveFormNormalColor, Bar);
        ColorSet(WaveColor::WaveFormBetweenColor, Between);
        ColorSet(WaveColor::CenterLineColor, Center);
        ColorSet(WaveColor::NormalBackColor, Back);
        ColorSet(WaveColor::SelectBackColor, Selected);
        ColorSet(WaveColor::OnePtSelLineColor, OnePoint);
        ColorSet(WaveColor::BookMarkColor, Mark);
        Source.Document = {1000, 1000, 1, 16};
        Source.Left.assign(1000, 0);
        Source.Right.assign(1000, 0);
    }
    static void ColorSet(WaveColor Which, std::int32_t Color) {
        WaveColors.at(static_cast<std::size_t>(Which)) = Color;
    }
    static void View(std::int32_t From, std::int32_t Samples) {
        ViewFrom = From;
        ViewTotal = Samples;
    }
    void Total(std::int32_t Samples, std::int32_t Channels = 1) {
        Source.Document.Total = Samples;
        Source.Document.Channel = Channels;
        Source.Left.assign(static_cast<std::size_t>(Samples), 0);
        Source.Right.assign(static_cast<std::size_t>(Samples), 0);
    }
    QImage Draw(int Channel = 1, int Width = W, int Height = H, double Ratio = 1.0) {
        QImage Picture(Width, Height, QImage::Format_RGB32);
        Picture.fill(ColorFromBgr(Back));
        WaveDraw What(Source, Width, Height, Ratio);
        if (Bookmarks.size() > 1)
            What.SetBookmarks(&Bookmarks, QApplication::font());
        What.DrawPanel(Picture, Channel);
        return Picture;
    }
    /// 0x00BBGGRR of a pixel.
    static std::int32_t At(const QImage& Picture, int X, int Y) {
        const QRgb Pixel = Picture.pixel(X, Y);
        return qBlue(Pixel) << 16 | qGreen(Pixel) << 8 | qRed(Pixel);
    }
    static int Count(const QImage& Picture, std::int32_t Color) {
        int Found = 0;
        for (int Y = 0; Y < Picture.height(); ++Y)
            for (int X = 0; X < Picture.width(); ++X)
                Found += At(Picture, X, Y) == Color ? 1 : 0;
        return Found;
    }
    /// The nearest pixel, ties to even.
    static int Near(double Coordinate) { return static_cast<int>(std::nearbyint(Coordinate)); }
    static double YOf(int Value, int Height = H) {
        return Height / 2.0 - Value * ((Height - 1) / 65536.0);
    }

    ArraySource Source;
};

TEST_F(WaveDrawTest, TheZeroLineRunsAcrossTheMiddle) {
    View(1, 100);
    WaveFormDrawStyle = 2;
    Source.Left.assign(1000, 0);
    // At a step of one the bars of silence lie on the line; so look between the samples.
    View(1, 10);
    const QImage Picture = Draw();
    for (int X = 0; X < W; ++X)
        EXPECT_EQ(At(Picture, X, H / 2), X % 10 == 0 ? Bar : Center) << X;
    EXPECT_EQ(Count(Picture, Back), W * (H - 1));
}

TEST_F(WaveDrawTest, BarsGoFromTheZeroLineToTheSample) {
    View(1, 10);
    WaveFormDrawStyle = 2;
    for (int Index = 0; Index < 11; ++Index)
        Source.Left.at(std::size_t(Index)) = std::int16_t(Index % 2 == 0 ? 12000 : -20000);
    const QImage Picture = Draw();
    for (int Index = 0; Index <= 10; ++Index) {
        const int Value = Index % 2 == 0 ? 12000 : -20000;
        const int Top = std::min(Near(YOf(Value)), H / 2);
        const int Bottom = std::max(Near(YOf(Value)), H / 2);
        for (int Y = 0; Y < H; ++Y)
            EXPECT_EQ(At(Picture, Index * 10, Y), Y >= Top && Y <= Bottom ? Bar : Back)
                << "sample " << Index << " row " << Y;
    }
    EXPECT_EQ(Count(Picture, Between), 0);
}

TEST_F(WaveDrawTest, UniformBarsAreMirroredAboutTheZeroLine) {
    View(1, 10);
    WaveFormDrawStyle = 4;
    Source.Left.assign(1000, 16000);
    const QImage Picture = Draw();
    const int Top = Near(YOf(16000));
    const int Bottom = Near(YOf(-16000));
    for (int Y = 0; Y < H; ++Y)
        EXPECT_EQ(At(Picture, 50, Y), Y >= Top && Y <= Bottom ? Bar : Back) << Y;
    EXPECT_EQ(Count(Picture, Between), 0);
}

TEST_F(WaveDrawTest, LinesJoinTheSamplesOverTheBars) {
    View(1, 10);
    WaveFormDrawStyle = 3;
    for (int Index = 0; Index < 11; ++Index)
        Source.Left.at(std::size_t(Index)) = std::int16_t(Index * 1000);
    const QImage Picture = Draw();
    for (int X = 0; X < W; ++X) {
        const double Value = X / 10.0 * 1000;
        const int Y = Near(H / 2.0 - Value * ((H - 1) / 65536.0));
        EXPECT_EQ(At(Picture, X, Y), Between) << X;
    }
    EXPECT_GT(Count(Picture, Bar), 0);
}

TEST_F(WaveDrawTest, EachStyleDrawsWhatItIsMadeOf) {
    struct Parts {
        int Style;
        bool Bars, Mirrored, Lines;
    };
    for (const Parts& What :
         {Parts{1, false, false, true}, Parts{2, true, false, false}, Parts{3, true, false, true},
          Parts{4, true, true, false}, Parts{5, true, true, true}}) {
        WaveFormDrawStyle = What.Style;
        View(1, 10);
        Source.Left.assign(1000, 16000);
        const QImage Picture = Draw(1);
        // Below the zero line, at a sample: mirrored bars alone reach there.
        EXPECT_EQ(At(Picture, 50, H / 2 + 5) == Bar, What.Mirrored) << What.Style;
        // Between zero line and sample, at a sample.
        EXPECT_EQ(At(Picture, 50, H / 2 - 5) == Bar, What.Bars) << What.Style;
        // Between two samples, at their height.
        EXPECT_EQ(At(Picture, 55, Near(YOf(16000))) == Between, What.Lines) << What.Style;
    }
}

TEST_F(WaveDrawTest, TheClosestViewHasLongLinesAndDotsAtTheSamples) {
    View(1, 10);
    WaveFormDrawStyle = 1;
    for (int Index = 0; Index < 11; ++Index)
        Source.Left.at(std::size_t(Index)) = std::int16_t(Index * 1500);
    const QImage Picture = Draw();
    for (int Index = 0; Index < 10; ++Index)
        EXPECT_EQ(At(Picture, Index * 10, Near(YOf(Index * 1500))), Bar) << Index;
    // No line starts from the last sample.
    EXPECT_EQ(At(Picture, 100, Near(YOf(15000))), Between);
    EXPECT_EQ(Count(Picture, Bar), 10);
    EXPECT_EQ(Count(Picture, Between), W - 10);
}

TEST_F(WaveDrawTest, TheOnlySampleOfADocumentHasItsDot) {
    Total(1);
    View(1, 1);
    WaveFormDrawStyle = 1;
    Source.Left.assign(1, 9000);
    const QImage Picture = Draw();
    EXPECT_EQ(At(Picture, 0, Near(YOf(9000))), Bar);
    EXPECT_EQ(Count(Picture, Bar), 1);
}

TEST_F(WaveDrawTest, AtOnePixelASampleThereAreNoDots) {
    View(1, W - 1);
    ASSERT_EQ((W - 1.0) / ViewTotal, 1.0);
    WaveFormDrawStyle = 1;
    Source.Left.assign(1000, 9000);
    EXPECT_EQ(Count(Draw(), Bar), 0);
    View(1, W - 2);
    EXPECT_GT(Count(Draw(), Bar), 0);
}

TEST_F(WaveDrawTest, AWideViewReadsEachStepOnceAndNothingBetween) {
    Total(100000);
    View(1, 100000);
    // 0.85 / (100 / 100000) = 850.
    for (std::size_t Index = 0; Index < Source.Left.size(); ++Index)
        Source.Left.at(Index) = std::int16_t(Index % 850 == 0 ? 100 : 30000);
    WaveFormDrawStyle = 3;
    const QImage Picture = Draw();
    EXPECT_EQ(Source.Asked, 118U); // positions 1, 851, ... 99451
    for (int Y = 0; Y < H / 2 - 2; ++Y)
        for (int X = 0; X < W; ++X)
            ASSERT_EQ(At(Picture, X, Y), Back) << "a peak between the visited samples shows";
}

TEST_F(WaveDrawTest, EightBitSamplesHaveTheirOwnScale) {
    Source.Document.Bits = 8;
    View(1, 10);
    WaveFormDrawStyle = 2;
    Source.Left.assign(1000, 64);
    const QImage Picture = Draw();
    const int Top = Near(H / 2.0 - 64 * ((H - 1) / 256.0));
    EXPECT_EQ(At(Picture, 50, Top), Bar);
    EXPECT_EQ(At(Picture, 50, Top - 1), Back);
}

TEST_F(WaveDrawTest, EachChannelIsOnItsPanel) {
    Total(1000, 2);
    Source.Left.assign(1000, 16000);
    Source.Right.assign(1000, -16000);
    View(1, 10);
    WaveFormDrawStyle = 2;
    const QImage Upper = Draw(1);
    const QImage Lower = Draw(2);
    EXPECT_EQ(At(Upper, 50, H / 2 - 5), Bar);
    EXPECT_EQ(At(Upper, 50, H / 2 + 5), Back);
    EXPECT_EQ(At(Lower, 50, H / 2 - 5), Back);
    EXPECT_EQ(At(Lower, 50, H / 2 + 5), Bar);
}

TEST_F(WaveDrawTest, ASelectedRangeIsFilledFromEndToEndOverTheWholeHeight) {
    View(1, 100);
    SelStart = 21;
    SelEnd = 41;
    WaveFormDrawStyle = 2;
    const QImage Picture = Draw();
    for (int X = 0; X < W; ++X)
        for (const int Y : {0, H - 1})
            EXPECT_EQ(At(Picture, X, Y), X >= 20 && X <= 40 ? Selected : Back) << X << "," << Y;
}

TEST_F(WaveDrawTest, ASelectionBeyondBothEndsFillsThePanel) {
    View(200, 100);
    SelStart = 100;
    SelEnd = 900;
    WaveFormDrawStyle = 2;
    const QImage Picture = Draw();
    for (int X = 0; X < W; ++X)
        EXPECT_EQ(At(Picture, X, 3), Selected) << X;
}

TEST_F(WaveDrawTest, ASelectionOutsideTheViewDrawsNothing) {
    View(200, 100);
    for (const auto& [From, To] : {std::pair{10, 100}, std::pair{400, 900}, std::pair{50, 50}}) {
        SelStart = From;
        SelEnd = To;
        const QImage Picture = Draw();
        EXPECT_EQ(Count(Picture, Selected), 0);
        EXPECT_EQ(Count(Picture, OnePoint), 0);
    }
}

TEST_F(WaveDrawTest, ASelectionShowsOnTheSelectedChannelsAlone) {
    Total(1000, 2);
    View(1, 100);
    SelStart = 21;
    SelEnd = 41;
    SelBoth = true;
    EXPECT_GT(Count(Draw(1), Selected), 0);
    EXPECT_GT(Count(Draw(2), Selected), 0);
    SelBoth = false;
    SelSingle = 2;
    EXPECT_EQ(Count(Draw(1), Selected), 0);
    EXPECT_GT(Count(Draw(2), Selected), 0);
    SelSingle = 1;
    EXPECT_GT(Count(Draw(1), Selected), 0);
    EXPECT_EQ(Count(Draw(2), Selected), 0);
}

TEST_F(WaveDrawTest, AMonoSelectionIsOnTheFirstPanelWhateverSelSingleSays) {
    View(1, 100);
    SelStart = 21;
    SelEnd = 41;
    SelBoth = false;
    SelSingle = 2;
    EXPECT_GT(Count(Draw(1), Selected), 0);
}

TEST_F(WaveDrawTest, ASelectedPointIsADashedLineShortOfTheEdges) {
    View(1, 10);
    SelStart = SelEnd = 6;
    WaveFormDrawStyle = 2;
    Source.Left.assign(1000, 0);
    const QImage Picture = Draw();
    EXPECT_EQ(At(Picture, 50, 0), Back);
    EXPECT_EQ(At(Picture, 50, 1), Back);
    EXPECT_EQ(At(Picture, 50, 2), OnePoint);
    EXPECT_EQ(At(Picture, 50, H - 1), Back);
    int Drawn = 0;
    int Gaps = 0;
    for (int Y = 2; Y <= H - 2; ++Y) {
        Drawn += At(Picture, 50, Y) == OnePoint ? 1 : 0;
        Gaps += At(Picture, 50, Y) == Back ? 1 : 0;
    }
    EXPECT_GT(Drawn, 20);
    EXPECT_GT(Gaps, 10);
    EXPECT_EQ(Count(Picture, OnePoint), Drawn);
}

TEST_F(WaveDrawTest, TheWaveformLiesOverBookmarksAndTheseOverTheSelection) {
    View(1, 10);
    SelStart = 4;
    SelEnd = 9;
    Bookmarks.push_back({"", "", BokPoint, 6, 6, false});
    WaveFormDrawStyle = 2;
    Source.Left.assign(1000, 30000);
    const QImage Over = Draw();
    EXPECT_EQ(At(Over, 50, H / 2 - 6), Bar);
    Source.Left.assign(1000, 0);
    const QImage Under = Draw();
    EXPECT_EQ(At(Under, 50, 0), Mark);
    EXPECT_EQ(At(Under, 50, 1), Selected);
    // The zero line lies over the bookmark: beside a sample, a dot of the bookmark would show.
    Bookmarks.at(1).From = Bookmarks.at(1).To = 6;
    View(1, 10);
    for (int X = 41; X < 49; ++X)
        EXPECT_EQ(At(Under, X, H / 2), Center) << X;
}

TEST_F(WaveDrawTest, APointBookmarkIsAFlagAndARangeATrapeze) {
    View(1, 100);
    WaveFormDrawStyle = 2;
    Bookmarks.push_back({"", "", BokPoint, 11, 11, false});
    Bookmarks.push_back({"", "", BokRange, 41, 81, false});
    const QImage Picture = Draw();
    const auto OnColumn = [&](int X) {
        int Found = 0;
        for (int Y = 0; Y < H; ++Y)
            Found += At(Picture, X, Y) == Mark ? 1 : 0;
        return Found;
    };
    EXPECT_GT(OnColumn(10), H / 4); // start of the point
    EXPECT_GT(OnColumn(40), H / 4); // start of the range
    EXPECT_GT(OnColumn(80), H / 5); // end of the range, from a tenth to nine tenths
    EXPECT_EQ(OnColumn(25), 0);
    for (int Y = 0; Y < Near(H * 0.1) - 1; ++Y)
        EXPECT_NE(At(Picture, 80, Y), Mark) << Y;
    // The flag ends ten pixels to the right, ten from the edges.
    for (int X = 21; X < 40; ++X)
        EXPECT_EQ(OnColumn(X), 0) << X;
}

TEST_F(WaveDrawTest, TheNameStandsRightOfTheStartBelowTheTopEdge) {
    View(1, 100);
    WaveFormDrawStyle = 2;
    Bookmarks.push_back({"HHHH", "", BokPoint, 31, 31, false});
    const QImage Picture = Draw();
    int Left = W;
    int Top = H;
    for (int Y = 0; Y < H / 2; ++Y)
        for (int X = 0; X < W; ++X) {
            const std::int32_t Color = At(Picture, X, Y);
            if (Color == Back || Color == Mark)
                continue;
            Left = std::min(Left, X);
            Top = std::min(Top, Y);
        }
    EXPECT_GE(Left, 31);
    EXPECT_LT(Left, 36);
    EXPECT_GE(Top, 8);
    EXPECT_LT(Top, 14);
}

TEST_F(WaveDrawTest, ABookmarkLeftOfTheViewIsClippedAndItsEndStillSeen) {
    View(500, 100);
    WaveFormDrawStyle = 2;
    Bookmarks.push_back({"name", "", BokRange, 100, 550, false});
    const QImage Picture = Draw();
    int Seen = 0;
    for (int Y = 0; Y < H; ++Y)
        Seen += At(Picture, 50, Y) == Mark ? 1 : 0;
    EXPECT_GT(Seen, H / 5);
    EXPECT_EQ(At(Picture, 70, 2), Back);
}

TEST_F(WaveDrawTest, ABookmarkFarOutsideAtTheClosestViewIsDrawnQuickly) {
    Total(2000, 1);
    View(1, 10);
    Bookmarks.push_back({"far", "", BokRange, 5, 2147483647, false});
    Bookmarks.push_back({"gone", "", BokPoint, 2147483647, 2147483647, false});
    const QImage Picture = Draw();
    EXPECT_GT(Count(Picture, Mark), 0);
}

TEST_F(WaveDrawTest, APanelOfOnePixelIsFlat) {
    View(1, 10);
    for (const int Style : {1, 2, 3, 4, 5}) {
        WaveFormDrawStyle = Style;
        Source.Left.assign(1000, 32767);
        const QImage Picture = Draw(1, W, 1);
        ASSERT_EQ(Picture.height(), 1);
        EXPECT_EQ(Count(Picture, Back), 0) << Style;
    }
    EXPECT_DOUBLE_EQ(WaveDraw(Source, W, 1, 1.0).Scale().PixelsPerUnit, 0.000001);
}

TEST_F(WaveDrawTest, TheLoudestSamplesStayOnThePanel) {
    View(1, 10);
    WaveFormDrawStyle = 1;
    Source.Left.assign(1000, -32768);
    EXPECT_GT(Count(Draw(), Between), W / 2);
    Source.Left.assign(1000, 32767);
    EXPECT_GT(Count(Draw(), Between), W / 2);
}

TEST_F(WaveDrawTest, AtEveryScaleASampleFallsOnTheSamePlaceOfThePicture) {
    for (const double Ratio : {1.0, 1.25, 2.0}) {
        const int Width = Near((W - 1) * Ratio) + 1;
        const int Height = Near(H * Ratio);
        View(1, 10);
        WaveFormDrawStyle = 2;
        Source.Left.assign(1000, 0);
        Source.Left.at(5) = 16000;
        const QImage Picture = Draw(1, Width, Height, Ratio);
        const int X = Near(5 * (Width - 1) / 10.0);
        EXPECT_EQ(At(Picture, X, Height / 2 - 4), Bar) << Ratio;
        EXPECT_EQ(At(Picture, X - 1, Height / 2 - 4), Back) << Ratio;
        // As thick as the whole part of the scale.
        EXPECT_EQ(At(Picture, X + 1, Height / 2 - 4), Ratio >= 2.0 ? Bar : Back) << Ratio;
        EXPECT_EQ(At(Picture, X + 2, Height / 2 - 4), Back) << Ratio;
        EXPECT_EQ(At(Picture, X, Near(YOf(16000, Height))), Bar) << Ratio;
        EXPECT_EQ(At(Picture, X, Near(YOf(16000, Height)) - 1), Back) << Ratio;
    }
}

TEST_F(WaveDrawTest, DistancesForTheEyeGrowWithTheScale) {
    for (const double Ratio : {1.0, 1.25, 2.0}) {
        const int Width = Near(W * Ratio);
        const int Height = Near(H * Ratio);
        View(1, 100);
        WaveFormDrawStyle = 2;
        Bookmarks.assign(1, {});
        Bookmarks.push_back({"", "", BokPoint, 11, 11, false});
        const QImage Picture = Draw(1, Width, Height, Ratio);
        const int Start = Near(10 * (Width - 1) / 100.0);
        int Last = 0;
        for (int Y = 0; Y < Height; ++Y)
            for (int X = 0; X < Width; ++X)
                if (At(Picture, X, Y) == Mark)
                    Last = std::max(Last, X);
        EXPECT_NEAR(Last - Start, 10 * Ratio, 3) << Ratio;
    }
}

} // namespace
} // namespace quoril::test

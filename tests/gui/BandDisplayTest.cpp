// The bar graph of the sound around the mouse, in the real window.
#include "MouseEvents.h"
#include "WindowFixture.h"

#include "base/Failure.h"
#include "effects/BandLevels.h"
#include "view/BandDisplay.h"
#include "view/BandGraph.h"
#include "view/StripMouse.h"
#include "view/WavePanel.h"
#include "view/WavePanelMouse.h"

#include <QLabel>
#include <QTimer>
#include <QtTest>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using Stretch = ArraySource::Stretch;

/// A stereo document of two seconds at 8000 Hz: on the left a tone that grows, on the right a
/// steady one.
class BandDisplayTest : public WindowTest {
  protected:
    BandDisplayTest() {
        Source.Document = {16000, 8000, 2, 16};
        for (int Place = 0; Place < 16000; ++Place) {
            Source.Left.push_back(std::int16_t(Place / 8 % 2 == 0 ? Place : -Place));
            Source.Right.push_back(std::int16_t(Place / 100 % 2 == 0 ? 2000 : -2000));
        }
        Document(16000, 2, 8000);
        Window->SetSource(&Source);
        Show();
        Window->Refresh_Wave_View();
    }

    WavePanel* Panel(int Channel = 1) const { return Window->Wave_Pic.at(std::size_t(Channel)); }
    static void Send(QWidget* Where, QEvent::Type Type, double Share,
                     Qt::MouseButtons Held = Qt::NoButton) {
        const QPointF Place(std::round(Share * (Where->width() - 1)), 5);
        SendMouse(Where, Type, Place, Type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                  Held);
    }
    static void Move(QWidget* Where, double Share) { Send(Where, QEvent::MouseMove, Share); }
    static void Leave(QWidget* Where) {
        QEvent Event(QEvent::Leave);
        QApplication::sendEvent(Where, &Event);
    }
    QTimer* Timer() const { return Find<QTimer>("DispDynEqGrpWaitTimer"); }
    void Wait() const {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !Timer()->isActive(); }, 5000));
    }
    /// The sample under a share of a panel's width.
    std::int32_t At(double Share) const {
        return WavePositionAt(std::round(Share * (Panel()->width() - 1)));
    }
    Stretch Around(double Share, std::int32_t Channel) const {
        return {Channel, At(Share) - 256, 512};
    }
    const QImage& Shown() const { return Window->DispFrqVolPic->Picture(); }
    bool IsEmpty() const {
        QImage Empty = Shown().copy();
        Empty.fill(ColorFromBgr(ColorOf(WaveColor::NormalBackColor)));
        return Shown() == Empty;
    }
    /// The picture that the bands around a place must give.
    QImage Expected(double Share, std::int32_t Channel) const {
        std::vector<std::int32_t> Wave(1, 0);
        const std::vector<std::int16_t>& All = Channel == 2 ? Source.Right : Source.Left;
        for (std::int32_t Pos = At(Share) - 256; Pos < At(Share) + 256; ++Pos)
            Wave.push_back(Pos < 1 || Pos > 16000 ? 0 : All.at(std::size_t(Pos - 1)));
        std::vector<std::int32_t> Levels(BandBarCount + 1, 0);
        BandLevels(Wave, BandBarCount, 8000, 16, Levels);
        QImage Picture = Shown().copy();
        const QColor Back = ColorFromBgr(ColorOf(WaveColor::NormalBackColor));
        const QColor Front = ColorFromBgr(ColorOf(WaveColor::WaveFormNormalColor));
        for (int X = 0; X < Picture.width(); ++X)
            for (int Y = 0; Y < Picture.height(); ++Y) {
                bool Inside = false;
                for (int Index = 1; Index <= BandBarCount; ++Index) {
                    const BandBar Bar = BandBarOf(Index, Levels.at(std::size_t(Index)), 16,
                                                  Picture.width(), Picture.height());
                    Inside = Inside || (X >= Bar.Left && X < Bar.Right && Y >= Bar.Top);
                }
                Picture.setPixelColor(X, Y, Inside ? Front : Back);
            }
        return Picture;
    }

    ArraySource Source;
};

TEST_F(BandDisplayTest, ShowsTheBandsOfThePanelUnderTheMouse) {
    EXPECT_TRUE(IsEmpty());
    Move(Panel(1), 0.5);
    EXPECT_THAT(Source.Stretches, ElementsAre(Around(0.5, 1)));
    EXPECT_FALSE(IsEmpty());
    EXPECT_EQ(Shown(), Expected(0.5, 1));
    Wait();
    Move(Panel(2), 0.5);
    EXPECT_EQ(Source.Stretches.back(), Around(0.5, 2));
    EXPECT_EQ(Shown(), Expected(0.5, 2));
    EXPECT_NE(Shown(), Expected(0.5, 1));
}

TEST_F(BandDisplayTest, PlacesBesideTheDocumentAreSilent) {
    Move(Panel(), 0);
    EXPECT_LT(Source.Stretches.back().From, 1);
    EXPECT_EQ(Shown(), Expected(0, 1));
}

TEST_F(BandDisplayTest, SilenceIsAnEmptyPicture) {
    Source.Left.assign(16000, 0);
    Move(Panel(), 0.5);
    EXPECT_EQ(Source.Stretches.size(), 1U);
    EXPECT_TRUE(IsEmpty());
}

TEST_F(BandDisplayTest, ARunKeepsItBusyForATenthOfASecondAndThenShowsTheLastPlace) {
    EXPECT_EQ(Timer()->interval(), 100);
    EXPECT_TRUE(Timer()->isSingleShot());
    Move(Panel(), 0.3);
    EXPECT_TRUE(Timer()->isActive());
    Move(Panel(), 0.5);
    Move(Panel(), 0.8);
    EXPECT_THAT(Source.Stretches, ElementsAre(Around(0.3, 1)));
    EXPECT_EQ(Shown(), Expected(0.3, 1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Source.Stretches.size() > 1; }, 5000));
    EXPECT_THAT(Source.Stretches, ElementsAre(Around(0.3, 1), Around(0.8, 1)));
    EXPECT_EQ(Shown(), Expected(0.8, 1));
    EXPECT_TRUE(Timer()->isActive());
    Wait();
    EXPECT_EQ(Source.Stretches.size(), 2U);
}

TEST_F(BandDisplayTest, IsEmptyWhenTheMouseIsNowhere) {
    Move(Panel(), 0.5);
    Move(Panel(), 0.6);
    Leave(Panel());
    EXPECT_TRUE(IsEmpty());
    Wait();
    EXPECT_TRUE(IsEmpty());
    EXPECT_EQ(Source.Stretches.size(), 1U);
}

TEST_F(BandDisplayTest, FollowsAViewThatMovesUnderTheMouse) {
    ViewAll = false;
    ViewFrom = 1;
    ViewTotal = 4000;
    Window->Refresh_Wave_View();
    Move(Panel(), 0.5);
    Wait();
    ViewFrom = 9001;
    Window->Refresh_Wave_View();
    EXPECT_EQ(Source.Stretches.back(), Around(0.5, 1));
    EXPECT_NEAR(Source.Stretches.back().From, 11001 - 256, 4);
    EXPECT_EQ(Shown(), Expected(0.5, 1));
}

TEST_F(BandDisplayTest, IsEmptyWithoutADocument) {
    Move(Panel(), 0.5);
    Wait();
    Document(0, 2);
    Source.Document.Total = 0;
    Window->Refresh_Wave_View();
    EXPECT_TRUE(IsEmpty());
    Move(Panel(), 0.5);
    EXPECT_TRUE(IsEmpty());
    EXPECT_EQ(Source.Stretches.size(), 1U);
}

TEST_F(BandDisplayTest, OverTheScaleItShowsTheSelectedChannel) {
    Move(Window->ScalePic, 0.5);
    EXPECT_EQ(Source.Stretches.back(), Around(0.5, 1));
    EXPECT_EQ(Shown(), Expected(0.5, 1));
    for (const std::int16_t Channel : {std::int16_t(2), std::int16_t(1)}) {
        Wait();
        SelBoth = false;
        SelSingle = Channel;
        Move(Window->ScalePic, 0.6);
        EXPECT_EQ(Source.Stretches.back(), Around(0.6, Channel));
    }
    Leave(Window->ScalePic);
    EXPECT_TRUE(IsEmpty());
}

TEST_F(BandDisplayTest, AStretchThatCannotBeReadShowsNothingAndSaysNothing) {
    Move(Panel(), 0.5);
    Wait();
    Source.StretchFails = true;
    Move(Panel(), 0.6);
    EXPECT_TRUE(IsEmpty());
    EXPECT_TRUE(Messages.TakeTexts().empty());
}

TEST_F(BandDisplayTest, OtherColoursClearIt) {
    Move(Panel(), 0.5);
    WaveColors.at(std::size_t(WaveColor::NormalBackColor)) = 0x123456;
    Window->ApplyColorSettings();
    EXPECT_TRUE(IsEmpty());
    Wait();
    WaveColors.at(std::size_t(WaveColor::WaveFormNormalColor)) = 0x00FF00;
    Move(Panel(), 0.5);
    EXPECT_EQ(Shown(), Expected(0.5, 1));
}

TEST_F(BandDisplayTest, HasALineInTheStatusBar) {
    QEnterEvent Enter({5, 5}, {5, 5}, {5, 5});
    QApplication::sendEvent(Window->DispFrqVolPic, &Enter);
    EXPECT_EQ(Find<QLabel>("StatusBar1_UserGuide")->text(),
              QStringLiteral("Graphical audio volume of different bands at mouse position."));
}

TEST_F(BandDisplayTest, ReadsTheDocumentOfTheProcess) {
    const StoreSource Real;
    BlockCarrBuffClass Sound;
    Sound.ReDimSize(600);
    BlockCarrBuffClass Other;
    Other.ReDimSize(600);
    for (std::int32_t Pos = 1; Pos <= 600; ++Pos) {
        Sound.WaveLR(Pos, std::int16_t(Pos));
        Other.WaveLR(Pos, std::int16_t(-Pos));
    }
    WaveStore->WaveDataInsert(1, 0, &Sound, &Other, "", true);
    std::vector<std::int16_t> Samples;
    Real.StretchAt(1, -1, 5, Samples);
    EXPECT_THAT(Samples, ElementsAre(0, 0, 0, 1, 2, 3));
    Real.StretchAt(2, 599, 3, Samples);
    EXPECT_THAT(Samples, ElementsAre(0, -599, -600, 0));
}

} // namespace
} // namespace quoril::test

// Panels at a scale of the desktop that is set before the program starts: one pixel of the picture
// is one pixel of the screen.
#include "view/PicturePanel.h"
#include "view/WavePanel.h"

#include <QApplication>
#include <QBackingStore>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPixmap>
#include <QWheelEvent>
#include <QWindow>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace quoril {
namespace {

const bool ScaleIsSet = qputenv("QT_SCALE_FACTOR", PANEL_SCALE);
const double Scale = QByteArray(PANEL_SCALE).toDouble();

/// What the screen would show of a panel that stands by itself.
QImage Shown(QWidget& Panel) {
    Panel.show();
    QApplication::processEvents();
    return Panel.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

TEST(PanelScale, ThePictureHasTheScreensOwnPixels) {
    ASSERT_TRUE(ScaleIsSet);
    WavePanel Panel(1, nullptr);
    Panel.resize(200, 100);
    ASSERT_DOUBLE_EQ(Panel.PixelRatio(), Scale);
    EXPECT_EQ(Panel.ScaleWidth(), static_cast<int>(std::lround(200 * Scale)));
    EXPECT_EQ(Panel.ScaleHeight(), static_cast<int>(std::lround(100 * Scale)));
    EXPECT_EQ(Panel.Picture().size(), QSize(Panel.ScaleWidth(), Panel.ScaleHeight()));
}

TEST(PanelScale, EveryPixelReachesTheScreenUnchanged) {
    PicturePanel Panel("panel", nullptr);
    Panel.resize(120, 64);
    QImage& Picture = Panel.Picture();
    for (int Y = 0; Y < Picture.height(); ++Y)
        for (int X = 0; X < Picture.width(); ++X)
            Picture.setPixel(X, Y, (X + Y) % 2 == 0 ? 0xFFFFFFFF : 0xFF000000 + unsigned(X));
    const QImage Screen = Shown(Panel);
    ASSERT_EQ(Screen.size(), Picture.size());
    EXPECT_EQ(Screen, Picture);
}

TEST(PanelScale, EdgesLieAboveAndBelowThePicture) {
    PicturePanel Panel("panel", nullptr);
    Panel.SetEdges(4, 8);
    Panel.resize(80, 52);
    Panel.SetBackColor(0x0000FF);
    Panel.Clear();
    EXPECT_EQ(Panel.ScaleHeight(), static_cast<int>(std::lround(40 * Scale)));
    const QImage Screen = Shown(Panel);
    const int Top = static_cast<int>(std::lround(4 * Scale));
    EXPECT_NE(QColor(Screen.pixel(5, Top - 1)), QColor(Qt::red));
    EXPECT_EQ(QColor(Screen.pixel(5, Top)), QColor(Qt::red));
    EXPECT_EQ(QColor(Screen.pixel(5, Top + Panel.ScaleHeight() - 1)), QColor(Qt::red));
    EXPECT_NE(QColor(Screen.pixel(5, Screen.height() - 1)), QColor(Qt::red));
    EXPECT_EQ(Panel.PixelAt(QPointF(10, 4)), QPoint(static_cast<int>(std::floor(10 * Scale)), 0));
}

TEST(PanelScale, APlaceOfTheMouseIsExactToThePixelOfTheScreen) {
    QWidget Top;
    PicturePanel Panel("panel", &Top);
    Panel.setGeometry(7, 20, 100, 50);
    Top.resize(200, 100);
    Top.show();
    // As the toolkit tells it: rounded in the widget, exact in the window.
    const QPointF InWindow(7 + 41 / Scale, 20 + 13 / Scale);
    const QPointF InPanel = (InWindow - QPointF(7, 20)).toPoint();
    const QPointF OnScreen = Top.mapToGlobal(InWindow).toPoint();
    QMouseEvent Event(QEvent::MouseMove, InPanel, InWindow, OnScreen, Qt::NoButton, {}, {});
    EXPECT_EQ(Panel.PixelAt(Panel.PlaceOf(Event) + QPointF(1e-6, 1e-6)), QPoint(41, 13));
    // However far the widget that was told lies from it.
    QMouseEvent Elsewhere(QEvent::MouseMove, QPointF(3, 3), InWindow, OnScreen, Qt::NoButton, {},
                          {});
    EXPECT_EQ(Panel.PlaceOf(Elsewhere), Panel.PlaceOf(Event));
    // The end of hovering over another widget has overwritten the place in the window.
    QMouseEvent Overwritten(QEvent::MouseMove, InPanel, QPointF(-1, -1), OnScreen, Qt::NoButton, {},
                            {});
    EXPECT_LT((Panel.PlaceOf(Overwritten) - Panel.PlaceOf(Event)).manhattanLength(), 1.001);
}

/// Where turns of the wheel happened.
class WheelWatch final : public QObject {
  public:
    QPointF Place;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override {
        if (Event->type() == QEvent::Wheel)
            Place = static_cast<QWheelEvent*>(Event)->position();
        return QObject::eventFilter(Watched, Event);
    }
};

TEST(PanelScale, ATurnOfTheWheelIsToldUnroundedOnTheWidget) {
    QWidget Top;
    PicturePanel Panel("panel", &Top);
    Panel.setGeometry(7, 20, 100, 50);
    Top.resize(200, 100);
    Top.show();
    WheelWatch Watch;
    Panel.installEventFilter(&Watch);
    const QPointF InPanel(41 / Scale, 13 / Scale);
    const QPointF InWindow = QPointF(7, 20) + InPanel;
    QWheelEvent Event(InWindow, InWindow, {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(Top.windowHandle(), &Event);
    EXPECT_EQ(Panel.PixelAt(Watch.Place + QPointF(1e-6, 1e-6)), QPoint(41, 13));
}

TEST(PanelScale, ALineCoversItsColumnOfThePicture) {
    WavePanel Panel(2, nullptr);
    Panel.resize(120, 64);
    Panel.SetBackColor(0);
    Panel.Clear();
    Panel.PlayPosShp->SetColor(0x00FF00);
    const int Thick = std::max(1, static_cast<int>(Scale));
    for (const int Column : {0, 1, 2, 3, 50, 51, 52, 53, Panel.ScaleWidth() - Thick}) {
        Panel.PlayPosShp->SetX(Column);
        const QImage Screen = Shown(Panel);
        for (int X = 0; X < Screen.width(); ++X)
            EXPECT_EQ(QColor(Screen.pixel(X, 20)) == QColor(Qt::green),
                      X >= Column && X < Column + Thick)
                << "line at " << Column << ", pixel " << X;
    }
}

TEST(PanelScale, ALineLeftOfThePanelIsOutOfSight) {
    WavePanel Panel(1, nullptr);
    Panel.resize(120, 64);
    Panel.Clear();
    Panel.PlayPosShp->SetColor(0x00FF00);
    Panel.PlayPosShp->SetX(-2);
    const QImage Screen = Shown(Panel);
    for (int X = 0; X < Screen.width(); ++X)
        EXPECT_NE(QColor(Screen.pixel(X, 20)), QColor(Qt::green)) << X;
}

/// Widths of what is painted on a panel, in pixels of the window system.
class PaintWatch final : public QObject {
  public:
    int Width = 0;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override {
        if (Event->type() == QEvent::Paint)
            Width += static_cast<QPaintEvent*>(Event)->rect().width();
        return QObject::eventFilter(Watched, Event);
    }
};

/// A panel on the screen with a picture of many colours.
class BandTest : public ::testing::Test {
  protected:
    BandTest() {
        Panel.resize(120, 64);
        Draw(1);
        Panel.show();
        QApplication::processEvents();
    }
    void Draw(unsigned Seed) {
        QImage& Picture = Panel.Picture();
        for (int Y = 0; Y < Picture.height(); ++Y)
            for (int X = 0; X < Picture.width(); ++X)
                Picture.setPixel(X, Y, 0xFF000000 + Seed * unsigned(X) * 977 + unsigned(Y) * 3);
        Panel.update();
        Panel.TakeSnapshot();
    }
    /// What has been painted on the screen, with nothing painted for the question.
    QImage OnScreen() {
        QApplication::processEvents();
        const auto* Screen = dynamic_cast<QImage*>(Panel.backingStore()->paintDevice());
        return Screen == nullptr ? QImage() : Screen->convertToFormat(QImage::Format_RGB32);
    }
    /// The finished picture with one band in it.
    QImage With(int First, int Past) const {
        QImage Picture = Panel.WaveBak_Pic.copy();
        for (int Y = 0; Y < Picture.height(); ++Y)
            for (int X = std::max(First, 0); X < std::min(Past, Picture.width()); ++X)
                Picture.setPixel(X, Y, Picture.pixel(X, Y) ^ 0x00FFFFFF);
        return Picture;
    }

    WavePanel Panel{1, nullptr};
};

TEST_F(BandTest, IsOnTheScreenWhateverBandWasThereBefore) {
    const int Width = Panel.ScaleWidth();
    std::minstd_rand Random(5);
    for (int Round = 0; Round < 60; ++Round) {
        const int First = int(Random() % unsigned(Width + 20)) - 10;
        const int Past = First + int(Random() % 3) * int(Random() % unsigned(Width));
        SCOPED_TRACE(testing::Message() << "round " << Round << ": " << First << " to " << Past);
        Panel.ShowInverted(First, Past);
        ASSERT_EQ(Panel.Picture(), With(First, Past));
        ASSERT_EQ(OnScreen(), With(First, Past));
        if (Round % 20 == 19) {
            Draw(unsigned(Round));
            ASSERT_EQ(OnScreen(), With(0, 0));
        }
    }
}

TEST_F(BandTest, PaintsOnlyTheColumnsThatChange) {
    Panel.ShowInverted(10, 60);
    QApplication::processEvents();
    PaintWatch Watch;
    Panel.installEventFilter(&Watch);
    Panel.ShowInverted(10, 64);
    QApplication::processEvents();
    EXPECT_GE(Watch.Width, 1);
    EXPECT_LE(Watch.Width, 6);
    Panel.ShowInverted(10, 64);
    Watch.Width = 0;
    QApplication::processEvents();
    EXPECT_EQ(Watch.Width, 0);
}

TEST(PanelScale, AChangedSizeGivesAClearedPictureOfThatSize) {
    PicturePanel Panel("panel", nullptr);
    Panel.SetBackColor(0x00FF00);
    Panel.resize(50, 50);
    Panel.Clear();
    Panel.Picture().fill(Qt::red);
    Panel.resize(60, 50);
    EXPECT_EQ(Panel.Picture().width(), static_cast<int>(std::lround(60 * Scale)));
    EXPECT_EQ(QColor(Panel.Picture().pixel(0, 0)), QColor(Qt::green));
}

} // namespace
} // namespace quoril

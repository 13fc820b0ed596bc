// Panels at a scale of the desktop that is set before the program starts: one pixel of the picture
// is one pixel of the screen.
#include "view/PicturePanel.h"
#include "view/WavePanel.h"

#include <QApplication>
#include <QPixmap>
#include <gtest/gtest.h>

#include <cmath>

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

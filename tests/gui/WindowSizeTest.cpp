// The main window at the sizes and scales of small screens: nothing is cut off, nothing out of
// reach.
#include "WindowFixture.h"

#include "shell/PlayControls.h"
#include "view/ArrowImage.h"
#include "view/BandDisplay.h"
#include "view/ReadOutLabel.h"
#include "view/ValueLabel.h"
#include "view/WavePanel.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <QtTest>

namespace quoril::test {
namespace {

const bool ScaleIsSet = qputenv("QT_SCALE_FACTOR", WINDOW_SCALE);

class WindowSizeTest : public WindowTest {
  protected:
    void SizeTo(int Width, int Height) {
        Show(Width, Height);
        QApplication::processEvents();
        ASSERT_EQ(Window->size(), QSize(Width, Height));
    }
    QRect PlaceOf(const QWidget* Control) const {
        return {Control->mapTo(Window.get(), QPoint()), Control->size()};
    }
    /// What shows something by itself.
    QList<QWidget*> Controls() const {
        QList<QWidget*> Found;
        for (QWidget* Each : Window->findChildren<QWidget*>())
            if (Each->isVisible() && (qobject_cast<QLabel*>(Each) != nullptr ||
                                      qobject_cast<QToolButton*>(Each) != nullptr ||
                                      dynamic_cast<PicturePanel*>(Each) != nullptr ||
                                      dynamic_cast<ArrowImage*>(Each) != nullptr))
                Found.append(Each);
        return Found;
    }
    void ExpectWhole() const {
        for (const QWidget* Control : Controls()) {
            SCOPED_TRACE(Control->objectName().toStdString());
            EXPECT_TRUE(Window->rect().contains(PlaceOf(Control)));
            EXPECT_TRUE(Control->parentWidget()->rect().contains(Control->geometry()));
            EXPECT_GE(Control->width(), Control->minimumSizeHint().width());
            EXPECT_GE(Control->height(), Control->minimumSizeHint().height());
        }
    }
    void ExpectApart() const {
        const QList<QWidget*> All = Controls();
        for (qsizetype A = 0; A < All.size(); ++A)
            for (qsizetype B = A + 1; B < All.size(); ++B)
                EXPECT_TRUE(All[A]->isAncestorOf(All[B]) || All[B]->isAncestorOf(All[A]) ||
                            !PlaceOf(All[A]).intersects(PlaceOf(All[B])))
                    << All[A]->objectName().toStdString() << " lies over "
                    << All[B]->objectName().toStdString();
    }
    /// The longest texts that the labels can come to.
    void FillLabels() const {
        for (const std::size_t Index : {0U, 1U, 2U}) {
            Window->SelectLbl.at(Index)->setText(QStringLiteral("00:00:00.00"));
            Window->ViewLbl.at(Index)->setText(QStringLiteral("2147483647"));
        }
        Window->DisplayPosLbl[1]->setText(QStringLiteral("00:00:00.00/2147483647"));
        Window->DisplayPosLbl[2]->setText(QStringLiteral("-32768/-32768"));
        Window->PlayPosLbl->setText(QStringLiteral("00:00:00.00/2147483647"));
        Window->PlayStatusLbl->setText(QStringLiteral("Playing in reverse"));
        Window->SpeedDispLbl[1]->setText(QStringLiteral("200%"));
        Find<QLabel>("StatusBar1_Size")
            ->setText(QStringLiteral("Samples 2147483647, Duration 13:31:36.42"));
        Find<QLabel>("StatusBar1_Format")->setText(QStringLiteral("200000Hz, 16bits"));
    }
};

TEST_F(WindowSizeTest, NothingIsCutOffAtAnyWidthFromFiveHundredOn) {
    ASSERT_TRUE(ScaleIsSet);
    FillLabels();
    for (const int Width : {500, 501, 640, 800, 940, 1024, 1600, 800, 500}) {
        SCOPED_TRACE(Width);
        SizeTo(Width, 560);
        ExpectWhole();
        ExpectApart();
        for (const QWidget* Control :
             {static_cast<QWidget*>(Window->SpeedDispLbl[1]),
              static_cast<QWidget*>(Window->SpeedDispLbl[2]),
              static_cast<QWidget*>(Window->DispFrqVolPic),
              static_cast<QWidget*>(Window->ArrowImg[0]),
              static_cast<QWidget*>(Find<QLabel>("StatusBar1_Format")),
              static_cast<QWidget*>(Window->ToolButton("DrawToolbar", "DrawDone"))})
            EXPECT_TRUE(Control->isVisible());
        EXPECT_EQ(PlaceOf(Window->ArrowImg[0]).right(), Width - 1);
    }
}

TEST_F(WindowSizeTest, LinesOfTheReadOutsAreLevel) {
    for (const int Width : {500, 800, 1024}) {
        SizeTo(Width, 560);
        const auto Middle = [this](const QWidget* Control) {
            return PlaceOf(Control).center().y();
        };
        EXPECT_EQ(Middle(Window->SelectLbl[0]), Middle(Window->SelectLbl[2]));
        EXPECT_EQ(Middle(Window->SelectLbl[0]), Middle(Window->SpeedDispLbl[1])) << Width;
        EXPECT_EQ(Middle(Window->ViewLbl[0]), Middle(Window->SpeedDispLbl[2])) << Width;
    }
    // Wide enough, all stands in one row.
    EXPECT_EQ(Window->SelectLbl[0]->mapTo(Window.get(), QPoint()).y(),
              Window->DisplayPosLbl[1]->mapTo(Window.get(), QPoint()).y());
    EXPECT_EQ(Window->SelectLbl[0]->mapTo(Window.get(), QPoint()).y(),
              Window->PlayPosLbl->mapTo(Window.get(), QPoint()).y());
    EXPECT_EQ(Window->ViewLbl[0]->mapTo(Window.get(), QPoint()).y(),
              Window->DisplayPosLbl[2]->mapTo(Window.get(), QPoint()).y());
}

TEST_F(WindowSizeTest, TheWaveformKeepsTheBetterPartOfASmallScreen) {
    SizeTo(800, 560);
    EXPECT_GE(Window->Wave_Pic[1]->height() + Window->Wave_Pic[2]->height(), 280);
}

TEST_F(WindowSizeTest, TheBoxesOfTheMouseHaveNoHairlines) {
    for (const int Width : {500, 800, 1024, 1031}) {
        SizeTo(Width, 560);
        const QImage Shown = Window->grab().toImage();
        const double Ratio = Window->devicePixelRatioF();
        for (const std::size_t Index : {1U, 2U}) {
            const QRect Caption = PlaceOf(Window->DisplayPos2Lbl.at(Index));
            const QRect Value = PlaceOf(Window->DisplayPosLbl.at(Index));
            const int Row = int((Value.top() + 1.5) * Ratio);
            const QColor Back = ColorFromBgr(ColorOf(WaveColor::NormalBackColor));
            for (int X = int(Caption.left() * Ratio) + 2; X < int(Value.right() * Ratio) - 1; ++X)
                ASSERT_EQ(Shown.pixelColor(X, Row).name(), Back.name()) << Width << " at " << X;
        }
    }
}

TEST_F(WindowSizeTest, TheFocusOfAValueStandsOut) {
    SizeTo(1024, 560);
    Window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    ValueLabel* const Label = Window->ViewLbl[1];
    const auto EdgeIs = [Label](Qt::GlobalColor Color) {
        const QImage Shown = Label->grab().toImage();
        const int Row = int(1.9 * Label->devicePixelRatioF());
        int Found = 0;
        for (int X = 0; X < Shown.width(); ++X)
            Found += Shown.pixelColor(X, Row) == QColor(Color) ? 1 : 0;
        return Found > Shown.width() * 9 / 10;
    };
    EXPECT_FALSE(EdgeIs(Qt::white));
    Label->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(Label->hasFocus());
    EXPECT_TRUE(EdgeIs(Qt::white));
    // On a bright colour of the user's it is dark.
    Label->SetColors(0xFFE0E0, 0x0000C0);
    EXPECT_TRUE(EdgeIs(Qt::black));
}

TEST_F(WindowSizeTest, TheSpeedBoxLiesWholeInANarrowWindow) {
    const PlayControls Controls(*Window);
    for (const int Channels : {1, 2})
        for (const QSize& Size : {QSize(500, 560), QSize(640, 600), QSize(800, 560)}) {
            Document(10000, Channels, 8000);
            SizeTo(Size.width(), Size.height());
            Window->Commands.Run("SoundTmpoMnu");
            QApplication::processEvents();
            const auto* const Box = Find<QWidget>("SpeedBoxPic");
            ASSERT_TRUE(Box->isVisible());
            EXPECT_TRUE(Window->rect().contains(PlaceOf(Box)))
                << Channels << " at " << Size.width();
            EXPECT_GE(Box->width(), Box->minimumSizeHint().width());
            EXPECT_GE(Box->height(), Box->minimumSizeHint().height());
            // Nothing lies over its button and its sliders.
            for (const char* Name : {"PlaySpeedSlider_1", "PlaySpeedSlider_2", "SpeedCloseBtn"}) {
                const auto* const Part = Find<QWidget>(Name);
                EXPECT_EQ(Window->childAt(PlaceOf(Part).center()), Part) << Name;
            }
            QTest::mouseClick(Find<QToolButton>("SpeedCloseBtn"), Qt::LeftButton);
            EXPECT_FALSE(Box->isVisible());
        }
}

TEST_F(WindowSizeTest, AMenuThatHasNoRoomOpensByItsKey) {
    SizeTo(500, 560);
    Window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    QTest::keyClick(Window.get(), Qt::Key_H, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }, 5000));
    EXPECT_EQ(QApplication::activePopupWidget()->objectName(), "Help_Menu");
    QApplication::activePopupWidget()->close();
}

} // namespace
} // namespace quoril::test

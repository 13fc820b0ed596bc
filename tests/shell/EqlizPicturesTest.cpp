// What the pictures of the bands show besides the values, and what is told beside them.
#include "shell/EqlizFixture.h"

#include <QLineEdit>
#include <QMenu>
#include <QTimer>

#include <algorithm>

namespace quoril::test {
namespace {

class EqlizPicturesTest : public EqlizFixture {
  protected:
    /// Where the status bar of the main window tells what the mouse can do.
    [[nodiscard]] QString Hint() const {
        return Part<QLabel>(&Window(), "StatusBar1_UserGuide")->text();
    }

    /// How many pixels of a band's column, between two shares of the height, are letters.
    static int Letters(BandPanel& Where, std::int32_t NoOfBands, std::int32_t Band, double From,
                       double To) {
        const BandPicture Place = Where.Geometry(NoOfBands);
        const QImage& Picture = Where.Picture();
        int Count = 0;
        // Clear of the frame of the chosen band.
        for (int X = Place.Left(Band) + 6; X < Place.Left(Band + 1) - 6; ++X)
            for (int Y = int(From * Place.Height) + 6; Y < int(To * Place.Height) - 6; ++Y) {
                const QRgb Pixel = Picture.pixel(X, Y);
                Count += Pixel != White && Pixel != Grey && Pixel != Red && Pixel != Line &&
                         Pixel != Black;
            }
        return Count;
    }
    /// How far the letters in the lower half of a column reach up.
    static int LabelLength(BandPanel& Where, std::int32_t NoOfBands, std::int32_t Band) {
        for (double From = 0.5; From < 1; From += 1.0 / Where.Geometry(NoOfBands).Height)
            if (Letters(Where, NoOfBands, Band, From, 1) != Letters(Where, NoOfBands, Band, 0.5, 1))
                return static_cast<int>((1 - From) * Where.Geometry(NoOfBands).Height);
        return 0;
    }
    static bool HasColor(BandPanel& Where, std::int32_t NoOfBands, std::int32_t Band, QRgb Color) {
        const BandPicture Place = Where.Geometry(NoOfBands);
        for (int X = Place.Left(Band); X < Place.Left(Band + 1); ++X)
            if (Where.Picture().pixel(X, Place.Height / 3) == Color)
                return true;
        return false;
    }
};

TEST_F(EqlizPicturesTest, EachColumnBearsItsNumberAndFrequency) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        for (const char* Name : {"EqalizPic", "BandPlayPic"}) {
            BandPanel& Picture = *Panel(Dialog, Name);
            for (std::int32_t Band = 1; Band <= 8; ++Band)
                EXPECT_GT(Letters(Picture, 8, Band, 0.6, 1), 30) << Name << " " << Band;
        }
        // From 20 Hz to 20000 Hz: each digit more makes the label longer.
        BandPanel& Picture = *Panel(Dialog, "EqalizPic");
        const int Digit = Dialog->fontMetrics().horizontalAdvance('0') * 2 / 3;
        EXPECT_GT(LabelLength(Picture, 8, 3), LabelLength(Picture, 8, 2) + Digit);
        EXPECT_GT(LabelLength(Picture, 8, 5), LabelLength(Picture, 8, 4) + Digit);
        EXPECT_GT(LabelLength(Picture, 8, 8), LabelLength(Picture, 8, 7) + Digit);
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, AStoppedColumnStillBearsItsLabel) {
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        BandPanel& Picture = *Panel(Dialog, "BandPassPic");
        for (const std::int32_t Band : {4, 5, 8}) {
            EXPECT_TRUE(HasColor(Picture, 8, Band, Black));
            EXPECT_GT(Letters(Picture, 8, Band, 0.6, 1), 30) << Band;
        }
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, WordsTellWhatAClickDoes) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        for (const char* Name : {"EqalizPic", "BandPlayPic"})
            EXPECT_GT(Letters(*Panel(Dialog, Name), 8, 3, 0, 0.25), 10) << Name;
        Press(Dialog, "Cancel_Btn");
    });
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        EXPECT_EQ(Letters(*Panel(Dialog, "BandPassPic"), 8, 3, 0, 0.25), 0);
        EXPECT_GT(Letters(*Panel(Dialog, "BandPlayPic"), 8, 3, 0, 0.25), 10);
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, ABarIsThreePixelsHighAroundItsRow) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel& Picture = *Panel(Dialog, "EqalizPic");
        const BandPicture Place = Picture.Geometry(8);
        const int X = Place.Left(5) + 3;
        const int Row = Place.RowOf(7);
        for (int Y = Row - 3; Y <= Row + 3; ++Y)
            EXPECT_EQ(Picture.Picture().pixel(X, Y) == Red, std::abs(Y - Row) <= 1) << Y - Row;
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, ThePictureWithTheFocusFramesTheChosenBand) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        Dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return Dialog->isActiveWindow(); }));
        const QRgb Chosen = Dialog->palette().color(QPalette::Highlight).rgb();
        BandPanel& Chooser = *Panel(Dialog, "EqalizPic");
        BandPanel& Sounds = *Panel(Dialog, "BandPlayPic");
        QTest::keyClick(&Chooser, Qt::Key_Right);
        EXPECT_TRUE(HasColor(Chooser, 8, 2, Chosen));
        EXPECT_FALSE(HasColor(Chooser, 8, 1, Chosen));
        EXPECT_FALSE(HasColor(Sounds, 8, 2, Chosen));
        Sounds.setFocus();
        EXPECT_FALSE(HasColor(Chooser, 8, 2, Chosen));
        EXPECT_TRUE(HasColor(Sounds, 8, 2, Chosen));
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, AnotherSizeIsDrawnAnew) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        Dialog->resize(900, 640);
        QCoreApplication::processEvents();
        for (const char* Name : {"EqalizPic", "BandPlayPic"}) {
            BandPanel& Picture = *Panel(Dialog, Name);
            EXPECT_EQ(PixelOf(Picture, 8, 8, 45), Grey) << Name;
            EXPECT_EQ(PixelOf(Picture, 8, 7, 45), White) << Name;
        }
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, TheStatusBarTellsWhatTheMouseCanDo) {
    Window().show();
    With("Equalize_Mnu_0", [this](QWidget* Dialog) {
        MoveTo(Panel(Dialog, "EqalizPic"), 8, 3, 20);
        EXPECT_EQ(Hint(), "Click to set volume value of each band. Right mouse click for menu.");
        Part<QLineEdit>(Dialog, "NoofBand_Txt")->setFocus();
        EXPECT_EQ(Hint(), "Enter No of Equalizing band here");
        Press(Dialog, "Cancel_Btn");
    });
    With("Equalize_Mnu_1", [this](QWidget* Dialog) {
        MoveTo(Panel(Dialog, "BandPassPic"), 8, 3, 20);
        EXPECT_EQ(Hint(), "Click to stop/pass the band.");
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, OnlyTheLeftButtonSetsAndTheRightOneOpensTheMenu) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        const QPoint Place = At(*Picture, 8, 3, 30);
        for (const Qt::MouseButton Button : {Qt::MiddleButton, Qt::RightButton})
            QTest::mouseClick(Picture, Button, {}, Place);
        EXPECT_NE(PixelOf(*Picture, 8, 3, 30), Red);
        QContextMenuEvent Asked(QContextMenuEvent::Mouse, Place, Picture->mapToGlobal(Place));
        QCoreApplication::sendEvent(Picture, &Asked);
        auto* PopUp = Part<QMenu>(Dialog, "EqalizPopUpMnu");
        EXPECT_TRUE(PopUp->isVisible());
        EXPECT_EQ(PopUp->pos(), Picture->mapToGlobal(Place));
        PopUp->close();
        QTest::keyClick(Picture, Qt::Key_F10, Qt::ShiftModifier);
        EXPECT_TRUE(PopUp->isVisible());
        PopUp->close();
        QTest::keyClick(Picture, Qt::Key_F10);
        EXPECT_FALSE(PopUp->isVisible());
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, TheFilterHasNoMenuAndNoTip) {
    ShowNewUserGuide = true;
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        QTest::keyClick(Panel(Dialog, "BandPassPic"), Qt::Key_Menu);
        EXPECT_EQ(Dialog->findChild<QMenu*>("EqalizPopUpMnu"), nullptr);
        auto* Timer = Part<QTimer>(Dialog, "ToolTipTimer");
        Timer->start(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !Timer->isActive(); }));
        EXPECT_EQ(QApplication::activeModalWidget(), Dialog);
        Press(Dialog, "Cancel_Btn");
    });
    ShowNewUserGuide = false;
}

TEST_F(EqlizPicturesTest, TheTipDoesNotComeAfterTheDialog) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        const auto* Timer = Part<QTimer>(Dialog, "ToolTipTimer");
        EXPECT_TRUE(Timer->isActive());
        Press(Dialog, "Cancel_Btn");
        EXPECT_FALSE(Timer->isActive());
    });
}

TEST_F(EqlizPicturesTest, UpLetsABandPassAndDownStopsItHoweverOften) {
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPassPic");
        const auto After = [&](Qt::Key Key) {
            QTest::keyClick(Picture, Key);
            return Shown(Dialog, "DisplayLbl_1");
        };
        EXPECT_EQ(After(Qt::Key_Up), "Pass"); // it did before
        EXPECT_EQ(After(Qt::Key_Down), "Stop");
        EXPECT_EQ(After(Qt::Key_Down), "Stop");
        EXPECT_EQ(After(Qt::Key_Up), "Pass");
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizPicturesTest, AFractionOfABandIsRounded) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        auto* Count = Part<QLineEdit>(Dialog, "NoofBand_Txt");
        Count->setText("9.6");
        QTest::keyClick(Count, Qt::Key_Return);
        EXPECT_EQ(Count->text(), "10");
        Press(Dialog, "Cancel_Btn");
    });
}

} // namespace
} // namespace quoril::test

// The dialog of the equalizer and of the band filter, by mouse and by keys.
#include "effects/BandSet.h"
#include "effects/LiteralFilters.h"
#include "shell/EqlizFixture.h"
#include "storage/FileMemoClass.h"
#include "storage/StorageChecks.h"

#include <QAccessible>
#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

class EqlizFrmTest : public EqlizFixture {};

TEST_F(EqlizFrmTest, EachModeShowsItsOwnControls) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        EXPECT_EQ(Dialog->objectName(), "EqlizFrm");
        EXPECT_EQ(Dialog->windowTitle(), " Equalizer");
        EXPECT_TRUE(Panel(Dialog, "EqalizPic")->isVisible());
        EXPECT_TRUE(Panel(Dialog, "BandPlayPic")->isVisible());
        EXPECT_FALSE(Panel(Dialog, "BandPassPic")->isVisible());
        EXPECT_FALSE(Part<QLabel>(Dialog, "BndPasLbl")->isVisible());
        EXPECT_EQ(Part<QLineEdit>(Dialog, "NoofBand_Txt")->text(), "8");
        EXPECT_TRUE(Part<QPushButton>(Dialog, "OK_Btn")->isDefault());
        EXPECT_EQ(Dialog->focusWidget(), Panel(Dialog, "EqalizPic"));
        Press(Dialog, "Cancel_Btn");
    });
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        EXPECT_EQ(Dialog->windowTitle(), " Band Pass Filter");
        EXPECT_FALSE(Panel(Dialog, "EqalizPic")->isVisible());
        EXPECT_TRUE(Panel(Dialog, "BandPassPic")->isVisible());
        EXPECT_EQ(Shown(Dialog, "BndPasLbl"),
                  "Band Pass or Stop: (Checked is stop. Click on this picture to toggle)");
        EXPECT_TRUE(Part<QLabel>(Dialog, "DisplayLbl_1")->isVisible());
        Press(Dialog, "Cancel_Btn");
    });
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EqlizFrmTest, AClickSetsTheValueOfItsBand) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 7), Red);
        Click(Picture, 8, 3, 30);
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 30), Red);
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 7), Line);
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 40), White);
        EXPECT_EQ(PixelOf(*Picture, 8, 4, 40), Grey);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "140 Hz");
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "220%");
        Press(Dialog, "OK_Btn");
    });
    EXPECT_EQ(IniGet("Effects", "Equalizer", ""), "8,7,7,30,7,7,7,7,7");
}

TEST_F(EqlizFrmTest, TheCommandEqualizesWithWhatIsChosen) {
    const Samples L = ChannelSamples(*WaveStore, 1);
    const Samples R = ChannelSamples(*WaveStore, 2);
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        Click(Panel(Dialog, "EqalizPic"), 8, 8, -50);
        Click(Panel(Dialog, "EqalizPic"), 8, 5, 40);
        Press(Dialog, "OK_Btn");
    });
    const std::vector<std::int32_t> Bands = EqBandSet.Bands;
    EXPECT_THAT(Bands, ElementsAre(0, 7, 7, 7, 7, 40, 7, 7, -50));
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), LiteralEqualize(L, 11025, 16, Bands));
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), LiteralEqualize(R, 11025, 16, Bands));
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Equalize]");
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
}

TEST_F(EqlizFrmTest, KeysChooseABandAndChangeItsValue) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        for (const Qt::Key Key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Up, Qt::Key_Right,
                                  Qt::Key_PageDown, Qt::Key_Down, Qt::Key_End, Qt::Key_Right})
            QTest::keyClick(Picture, Key);
        for (int Times = 0; Times < 6; ++Times)
            QTest::keyClick(Picture, Qt::Key_PageUp);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "20000 Hz");
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "416%");
        EXPECT_EQ(PixelOf(*Picture, 8, 8, 50), Red);
        QTest::keyClick(Picture, Qt::Key_Home);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "20 Hz");
        QTest::keyClick(Dialog, Qt::Key_Return);
    });
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, 9, -4, 7, 7, 7, 7, 7, 50));
}

TEST_F(EqlizFrmTest, AScreenReaderIsToldTheBandAndItsValue) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        QAccessibleInterface* Spoken = QAccessible::queryAccessibleInterface(Picture);
        ASSERT_NE(Spoken, nullptr);
        EXPECT_EQ(Spoken->role(), QAccessible::Slider);
        EXPECT_EQ(Spoken->text(QAccessible::Name), "Volume of each band");
        EXPECT_EQ(Spoken->text(QAccessible::Description), "Band 1 of 8, 20 Hz");
        QAccessibleValueInterface* Value = Spoken->valueInterface();
        ASSERT_NE(Value, nullptr);
        EXPECT_EQ(Value->minimumValue(), 0);
        EXPECT_EQ(Value->currentValue(), 100);
        EXPECT_EQ(Value->maximumValue(), 416);
        EXPECT_EQ(Value->minimumStepSize(), 1);
        QTest::keyClick(Picture, Qt::Key_Right);
        QTest::keyClick(Picture, Qt::Key_Down);
        EXPECT_EQ(Spoken->text(QAccessible::Description), "Band 2 of 8, 52 Hz");
        EXPECT_EQ(Value->currentValue(), 97);
        EXPECT_FALSE(Spoken->state().checkable);
        Press(Dialog, "Cancel_Btn");
    });
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPassPic");
        QAccessibleInterface* Spoken = QAccessible::queryAccessibleInterface(Picture);
        EXPECT_EQ(Spoken->role(), QAccessible::CheckBox);
        EXPECT_EQ(Spoken->text(QAccessible::Name), "Stop this band");
        EXPECT_EQ(Spoken->text(QAccessible::Description), "Band 1 of 8, 20 Hz");
        EXPECT_EQ(Spoken->valueInterface(), nullptr);
        EXPECT_TRUE(Spoken->state().checkable);
        EXPECT_FALSE(Spoken->state().checked);
        QTest::keyClick(Picture, Qt::Key_Space);
        EXPECT_TRUE(Spoken->state().checked);
        QAccessibleInterface* Sound =
            QAccessible::queryAccessibleInterface(Panel(Dialog, "BandPlayPic"));
        EXPECT_EQ(Sound->role(), QAccessible::Button);
        EXPECT_EQ(Sound->text(QAccessible::Name), "Listen to this band");
        EXPECT_EQ(Sound->text(QAccessible::Description), "Band 1 of 8, 20 Hz");
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizFrmTest, AScreenReaderCanWorkTheBands) {
    const auto Act = [](BandPanel* Picture, const QString& Name) {
        QAccessibleActionInterface* Actions =
            QAccessible::queryAccessibleInterface(Picture)->actionInterface();
        EXPECT_TRUE(Actions->actionNames().contains(Name)) << qPrintable(Name);
        Actions->doAction(Name);
    };
    With("Equalize_Mnu_0", [&](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        QAccessible::queryAccessibleInterface(Picture)->valueInterface()->setCurrentValue(200);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "199%");
        Act(Picture, QAccessibleActionInterface::increaseAction());
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "206%");
        Act(Picture, QAccessibleActionInterface::decreaseAction());
        QTest::keyClick(Picture, Qt::Key_Right);
        Act(Picture, QAccessibleActionInterface::decreaseAction());
        Act(Panel(Dialog, "BandPlayPic"), QAccessibleActionInterface::setFocusAction());
        EXPECT_EQ(Dialog->focusWidget(), Panel(Dialog, "BandPlayPic"));
        Press(Dialog, "OK_Btn");
    });
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, 27, 6, 7, 7, 7, 7, 7, 7));
    With("Equalize_Mnu_1", [&](QWidget* Dialog) {
        Act(Panel(Dialog, "BandPassPic"), QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "Stop");
        Act(Panel(Dialog, "BandPlayPic"), QAccessibleActionInterface::pressAction());
        EXPECT_EQ(Panel(Dialog, "BandPlayPic")->Picture().pixel(0, 0), Red);
        (void)Messages->TakeTexts(); // there is no sound here
        Press(Dialog, "OK_Btn");
    });
    EXPECT_EQ(EqBandSet.Bands[1], -50);
}

TEST_F(EqlizFrmTest, TheMouseTellsWhatAClickWouldSet) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        MoveTo(Picture, 8, 5, -50);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "1032 Hz");
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "0%");
        EXPECT_FALSE(Part<QLabel>(Dialog, "DisplayLbl_1")->isVisible());
        MoveTo(Picture, 8, 5, 7);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "100%");
        EXPECT_TRUE(Part<QLabel>(Dialog, "DisplayLbl_1")->isVisible());
        EXPECT_EQ(EqBandSet.NoOfBands, 0);
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizFrmTest, TheMouseThatComesFromAButtonIsAtItsTrueBand) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        for (const char* From : {"OK_Btn", "Cancel_Btn"}) {
            const auto* Button = Part<QPushButton>(Dialog, From);
            QTest::mouseMove(Dialog->windowHandle(),
                             Button->mapTo(Dialog, Button->rect().center()));
            MoveTo(Picture, 8, 5, 7);
            EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "1032 Hz") << From;
        }
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizFrmTest, BandsAreStoppedByClicksAndByKeys) {
    With("Equalize_Mnu_1", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPassPic");
        EXPECT_EQ(PixelOf(*Picture, 8, 4, 45), Black);
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 45), White);
        Click(Picture, 8, 3, 45);
        EXPECT_EQ(PixelOf(*Picture, 8, 3, 45), Black);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "140 Hz");
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "Stop");
        EXPECT_EQ(Part<QLabel>(Dialog, "DisplayLbl_1")->palette().color(QPalette::WindowText),
                  QColor(255, 0, 0));
        Click(Picture, 8, 4, 45);
        EXPECT_EQ(PixelOf(*Picture, 8, 4, 45), Grey);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "Pass");
        EXPECT_EQ(Part<QLabel>(Dialog, "DisplayLbl_1")->palette().color(QPalette::WindowText),
                  QColor(0, 0, 255));
        for (const Qt::Key Key :
             {Qt::Key_Right, Qt::Key_Up, Qt::Key_Up, Qt::Key_Home, Qt::Key_Down, Qt::Key_Down})
            QTest::keyClick(Picture, Key);
        MoveTo(Picture, 8, 8, 0);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_1"), "Stop");
        Press(Dialog, "OK_Btn");
    });
    EXPECT_EQ(IniGet("Effects", "EqBandStop", ""), "8,1,0,1,0,0,0,0,1");
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, -50, 7, -50, 7, 7, 7, 7, -50));
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Band Pass Filter]");
}

TEST_F(EqlizFrmTest, TheNumberOfBandsIsTakenOnEnterAndOnLeaving) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        auto* Count = Part<QLineEdit>(Dialog, "NoofBand_Txt");
        const auto Enter = [&](const char* Text) {
            Count->setFocus();
            Count->setText(QLatin1String(Text));
            QTest::keyClick(Count, Qt::Key_Return);
            EXPECT_TRUE(Dialog->isVisible());
            return Count->text();
        };
        for (const char* Refused : {"1", "51", "0", "-3", "abc", ""})
            EXPECT_EQ(Enter(Refused), "8") << Refused;
        EXPECT_EQ(Enter("10"), "10");
        MoveTo(Panel(Dialog, "EqalizPic"), 10, 7, 7);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "2000 Hz");
        Count->setText("3");
        Panel(Dialog, "EqalizPic")->setFocus();
        MoveTo(Panel(Dialog, "EqalizPic"), 3, 2, 7);
        EXPECT_EQ(Shown(Dialog, "DisplayLbl_0"), "632 Hz");
        EXPECT_EQ(Count->text(), "3");
        Press(Dialog, "OK_Btn");
    });
    EXPECT_EQ(EqBandSet.NoOfBands, 3);
}

TEST_F(EqlizFrmTest, OkByItsKeyTakesTheNumberThatIsStillBeingTyped) {
    for (const char* Command : {"Equalize_Mnu_0", "Equalize_Mnu_1"}) {
        With(Command, [](QWidget* Dialog) {
            auto* Count = Part<QLineEdit>(Dialog, "NoofBand_Txt");
            Count->setFocus();
            Count->setText("20");
            Part<QPushButton>(Dialog, "OK_Btn")
                ->click(); // as by its key: the field keeps the focus
        });
        EXPECT_EQ(EqBandSet.NoOfBands, 20) << Command;
    }
}

TEST_F(EqlizFrmTest, TheStepsStopAt2And50) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        auto* Count = Part<QLineEdit>(Dialog, "NoofBand_Txt");
        const auto Step = [&](const char* Name) {
            QTest::mouseClick(Part<QToolButton>(Dialog, Name), Qt::LeftButton);
            return Count->text();
        };
        EXPECT_EQ(Step("BandChgAroScrol_0"), "9");
        EXPECT_EQ(Step("BandChgAroScrol_1"), "8");
        QTest::keyClick(Count, Qt::Key_Up);
        EXPECT_EQ(Count->text(), "9");
        QTest::keyClick(Count, Qt::Key_Down);
        EXPECT_EQ(Count->text(), "8");
        for (int Times = 0; Times < 50; ++Times)
            (void)Step("BandChgAroScrol_0");
        EXPECT_EQ(Count->text(), "50");
        for (int Times = 0; Times < 60; ++Times)
            (void)Step("BandChgAroScrol_1");
        EXPECT_EQ(Count->text(), "2");
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizFrmTest, TheMenuSetsAllValues) {
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "EqalizPic");
        EXPECT_EQ(Dialog->findChild<QMenu*>("EqalizPopUpMnu"), nullptr);
        QTest::keyClick(Picture, Qt::Key_Menu);
        auto* PopUp = Part<QMenu>(Dialog, "EqalizPopUpMnu");
        EXPECT_TRUE(PopUp->isVisible());
        QStringList Captions;
        for (const QAction* Entry : PopUp->actions())
            Captions << Entry->text().remove('&');
        EXPECT_EQ(Captions, (QStringList{"Set From ...", "Reverse", "Invert", "All 100%"}));
        Captions.clear();
        const auto* Mother = Part<QAction>(Dialog, "EqalizSetFromMotherMnu");
        for (const QAction* Entry : Mother->menu()->actions())
            Captions << Entry->text();
        EXPECT_EQ(Captions, (QStringList{"\"V\" - Middle", "\"A\" - Middle", "Increasing Straight",
                                         "Decreasing Straight"}));
        PopUp->close();
        Part<QAction>(Dialog, "EqalizSetFromMnu_1")->trigger();
        EXPECT_EQ(PixelOf(*Picture, 8, 4, -50), Red);
        EXPECT_EQ(PixelOf(*Picture, 8, 1, 50), Red);
        Part<QAction>(Dialog, "EqalizSetFromMnu_4")->trigger();
        Part<QAction>(Dialog, "EqalizReverseMnu")->trigger();
        EXPECT_EQ(PixelOf(*Picture, 8, 1, -50), Red);
        Part<QAction>(Dialog, "EqalizInvertMnu")->trigger();
        EXPECT_EQ(PixelOf(*Picture, 8, 1, 50), Red);
        Part<QAction>(Dialog, "EqalizAllZeroMnu")->trigger();
        EXPECT_EQ(PixelOf(*Picture, 8, 1, 7), Red);
        Part<QAction>(Dialog, "EqalizSetFromMnu_2")->trigger();
        Press(Dialog, "OK_Btn");
    });
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, -50, -17, 17, 50, 25, 0, -25, -50));
}

TEST_F(EqlizFrmTest, CancelAndEscLeaveDocumentAndSettings) {
    const Samples L = ChannelSamples(*WaveStore, 1);
    for (const char* Command : {"Equalize_Mnu_0", "Equalize_Mnu_1"}) {
        With(Command, [](QWidget* Dialog) {
            Click(Panel(Dialog, "EqalizPic"), 8, 3, 30);
            Press(Dialog, "Cancel_Btn");
        });
        With(Command, [](QWidget* Dialog) { QTest::keyClick(Dialog, Qt::Key_Escape); });
        With(Command, [](QWidget* Dialog) { Dialog->close(); });
    }
    EXPECT_EQ(EqBandSet.NoOfBands, 0);
    EXPECT_EQ(IniGet("Effects", "Equalizer", "none"), "none");
    EXPECT_EQ(IniGet("Effects", "EqBandStop", "none"), "none");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EqlizFrmTest, TheBandThatIsListenedToIsFramedInRed) {
    With("Equalize_Mnu_0", [this](QWidget* Dialog) {
        BandPanel* Picture = Panel(Dialog, "BandPlayPic");
        const auto Corner = [&](std::int32_t Band) {
            return Picture->Picture().pixel(Picture->Geometry(8).Left(Band), 0);
        };
        EXPECT_NE(Corner(6), Red);
        Click(Picture, 8, 6);
        EXPECT_EQ(Corner(6), Red);
        EXPECT_NE(Corner(3), Red);
        QTest::keyClick(Picture, Qt::Key_Left);
        QTest::keyClick(Picture, Qt::Key_Space);
        EXPECT_EQ(Corner(5), Red);
        EXPECT_NE(Corner(6), Red);
        Part<QLineEdit>(Dialog, "NoofBand_Txt")->setText("8");
        (void)Messages->TakeTexts(); // there is no sound here
        Press(Dialog, "Cancel_Btn");
    });
}

TEST_F(EqlizFrmTest, DamagedSettingsGiveADialogThatWorks) {
    for (const char* Text : {"100", "-1,5", "2,999999999999,-99999999999", ",,,,", "3,a,b,c"}) {
        IniPut("Effects", "Equalizer", Text);
        IniPut("Effects", "EqBandStop", Text);
        for (const char* Command : {"Equalize_Mnu_0", "Equalize_Mnu_1"})
            With(Command, [](QWidget* Dialog) {
                EXPECT_GE(Part<QLineEdit>(Dialog, "NoofBand_Txt")->text().toInt(), 2);
                Press(Dialog, "OK_Btn");
            });
        EXPECT_GE(EqBandSet.NoOfBands, 2) << Text;
        EXPECT_THAT(Messages->TakeTexts(), ::testing::IsEmpty());
    }
}

TEST_F(EqlizFrmTest, AfterTenSecondsTheEqualizerTellsOfItsMenu) {
    ShowNewUserGuide = true;
    With("Equalize_Mnu_0", [](QWidget* Dialog) {
        auto* Timer = Part<QTimer>(Dialog, "ToolTipTimer");
        EXPECT_TRUE(Timer->isActive());
        EXPECT_EQ(Timer->interval(), 10000);
        Timer->setInterval(1);
        static QString Told;
        Told.clear();
        {
            const WithDialog Tip([](QWidget* Window) {
                if (Window->objectName() == "UserGuideFrm")
                    Told = Part<QLabel>(Window, "GuideLbl")->text();
                Window->close();
            });
            EXPECT_TRUE(QTest::qWaitFor([] { return !Told.isEmpty(); }));
        }
        EXPECT_EQ(Told,
                  "Right mouse click on the white/gray bands to see a popup menu. There are few "
                  "additional commands to quickly set the Eq values.");
        EXPECT_FALSE(Timer->isActive());
        Press(Dialog, "Cancel_Btn");
    });
    ShowNewUserGuide = false;
}

TEST_F(EqlizFrmTest, TheOtherEntriesRunTheirCommands) {
    Menu("EffectNoisReduMnu_0");
    EXPECT_THAT(Messages->TakeTexts(),
                ElementsAre("Selected length is not sufficient for the sample size 1024"));
    Menu("EffectNoisReduMnu_1");
    EXPECT_THAT(Messages->TakeTexts(), ElementsAre("Please define the noise first. That is :\n"
                                                   "Select a small portion with only noise\n"
                                                   "and use the command 'Choose Pure Noise'"));
    ShowNewUserGuide = true;
    QString Told;
    {
        const WithDialog Tip([&Told](QWidget* Window) {
            Told = Part<QLabel>(Window, "GuideLbl")->text();
            Window->close();
        });
        Menu("EqBandSplit_Mnu");
    }
    ShowNewUserGuide = false;
    EXPECT_EQ(Told, "This will separate audio of each band and save them to multiple files");
}

} // namespace
} // namespace quoril::test

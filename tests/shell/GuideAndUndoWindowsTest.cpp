#include "base/ModalWindow.h"
#include "base/PlayState.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "shell/CheckDx7Frm.h"
#include "shell/UndoClearFrm.h"
#include "shell/UserGuideFrm.h"
#include "shell/WithDialog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTextBrowser>
#include <gmock/gmock.h>

namespace quoril {
namespace {

using test::Part;
using test::Press;
using test::PressByKey;
using test::ScriptedMessages;
using test::TestSession;
using test::WithDialog;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// ---- Guide tips

class GuideWindow : public ::testing::Test {
  protected:
    const TestSession Session;
    ScriptedMessages Messages;
    std::vector<std::string> Status;
    UserGuideWindows Guides{[this](const std::string& Text) { Status.push_back(Text); }};
};

TEST_F(GuideWindow, ShowsTheTipAndRemembersTheTick) {
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "UserGuideFrm");
            EXPECT_EQ(Part<QLabel>(Window, "GuideLbl")->text(), "A <b>tip</b>");
            auto* IKnow = Part<QCheckBox>(Window, "IKnowChk");
            EXPECT_FALSE(IKnow->isChecked());
            EXPECT_TRUE(IKnow->isEnabled());
            IKnow->setChecked(true);
            Press(Window, "OkBtn");
        });
        UserGuide("A <b>tip</b>");
    }
    EXPECT_EQ(ProfileGet("I Know", "A <b>tip</b>", "No", UserGuideFileName()), "Yes");
    UserGuide("A <b>tip</b>"); // a window that came up now would never be closed
}

TEST_F(GuideWindow, ATickedTipThatIsForcedHasItsBoxOnAndLocked) {
    ProfilePut("I Know", "Tip", "Yes", UserGuideFileName());
    const WithDialog Act([](QWidget* Window) {
        auto* IKnow = Part<QCheckBox>(Window, "IKnowChk");
        EXPECT_TRUE(IKnow->isChecked());
        EXPECT_FALSE(IKnow->isEnabled());
        Press(Window, "OkBtn");
    });
    UserGuide("Tip", {}, true);
}

TEST_F(GuideWindow, EscAndEnterCloseIt) {
    for (const Qt::Key Key : {Qt::Key_Escape, Qt::Key_Return}) {
        const WithDialog Act(
            [Key](QWidget* Window) { QTest::keyClick(Part<QPushButton>(Window, "OkBtn"), Key); });
        UserGuide("Tip");
    }
    EXPECT_EQ(ProfileGet("I Know", "Tip", "No", UserGuideFileName()), "No");
}

TEST_F(GuideWindow, TheLinkTellsHowToStopTips) {
    const WithDialog Act([this](QWidget* Window) {
        emit Part<QLabel>(Window, "StopThisLbl")->linkActivated("#stop");
        EXPECT_THAT(Messages.Texts(),
                    ElementsAre("If you dont want to see these user-guide-tips any more\n"
                                "you can put it off, see Menu-Tools-Option-UserGuide"));
        Press(Window, "OkBtn");
    });
    UserGuide("Tip");
}

TEST_F(GuideWindow, HelpLinesFollowThePointerWhileTheMainWindowIsOpen) {
    QWidget Main;
    SetMainWindow(&Main);
    const auto Enter = [](QWidget* Window, const char* Name) {
        QEnterEvent Event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(Part<QWidget>(Window, Name), &Event);
    };
    {
        const WithDialog Act([&](QWidget* Window) {
            Enter(Window, "OkBtn");
            Press(Window, "OkBtn");
        });
        UserGuide("Tip");
    }
    EXPECT_THAT(Status, IsEmpty());
    Main.show();
    {
        const WithDialog Act([&](QWidget* Window) {
            Status.clear();
            Enter(Window, "GuideLbl");
            Enter(Window, "IKnowChk");
            Enter(Window, "OkBtn");
            EXPECT_THAT(
                Status,
                ElementsAre("Optional guide. If you dont want to see any guide message, set that "
                            "in \"Options\".",
                            "Check this ON if you dont want to see this particular message again.",
                            "Click OK to proceed."));
            Press(Window, "OkBtn");
        });
        UserGuide("Tip");
    }
}

TEST_F(GuideWindow, AVeryLongTipStaysOnTheScreen) {
    const WithDialog Act([](QWidget* Window) {
        EXPECT_LE(Window->width(), 800);
        Press(Window, "OkBtn");
    });
    std::string Long;
    for (int I = 0; I < 60; ++I)
        Long += "many words ";
    UserGuide(Long);
}

// ---- Clearing undo data

class UndoClearDialogTest : public ::testing::Test {
  protected:
    ScriptedMessages Messages;
    UndoClearWindow Questions;
};

TEST_F(UndoClearDialogTest, ShowsItsWordsAndTheStepsInOrder) {
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->windowTitle(), "Clear Undo Data");
        EXPECT_EQ(Window->findChild<QLabel*>()->text().remove('&'), "Undo backup data items:");
        EXPECT_EQ(Part<QPushButton>(Window, "ClearBtn_1")->text().remove('&'), "Clear first one");
        EXPECT_EQ(Part<QPushButton>(Window, "ClearBtn_2")->text().remove('&'),
                  "Clear up to selected item");
        EXPECT_EQ(Part<QPushButton>(Window, "ClearBtn_3")->text().remove('&'), "Clear all");
        EXPECT_EQ(Part<QPushButton>(Window, "CloseBtn")->text().remove('&'), "Close");
        auto* List = Part<QListWidget>(Window, "AvailList");
        ASSERT_EQ(List->count(), 2);
        EXPECT_EQ(List->item(0)->text(), "Cut");
        EXPECT_EQ(List->item(1)->text(), "gr\u00FC\u00DF");
        EXPECT_TRUE(List->selectedItems().isEmpty());
        Press(Window, "CloseBtn");
    });
    EXPECT_EQ(Questions.ShowUndoClear({"Cut", "gr\xFC\xDF"}).Result, UndoClearClosed);
}

TEST_F(UndoClearDialogTest, EveryButtonGivesItsResult) {
    for (const auto& [Button, Result] : {std::pair<const char*, std::int32_t>{"ClearBtn_1", 1},
                                         {"ClearBtn_3", 3},
                                         {"CloseBtn", 0}}) {
        for (const auto& By : {Press, PressByKey}) {
            const WithDialog Act([Name = Button, By](QWidget* Window) { By(Window, Name); });
            EXPECT_EQ(Questions.ShowUndoClear({"A", "B"}).Result, Result) << Button;
        }
    }
}

TEST_F(UndoClearDialogTest, UpToTheSelectedItemNeedsOne) {
    const WithDialog Act([this](QWidget* Window) {
        Press(Window, "ClearBtn_2");
        EXPECT_THAT(Messages.Texts(), ElementsAre("Please select an item in the list and\n"
                                                  "click \"Clear up to selected item\""));
        EXPECT_TRUE(Window->isVisible());
        Part<QListWidget>(Window, "AvailList")->setCurrentRow(1);
        Press(Window, "ClearBtn_2");
    });
    const UndoClearAnswer Answer = Questions.ShowUndoClear({"A", "B", "C"});
    EXPECT_EQ(Answer.Result, UndoClearUpToSelected);
    EXPECT_EQ(Answer.Selected, 1U);
}

TEST_F(UndoClearDialogTest, TheSelectedItemCountsAndNotTheOneWithTheFrame) {
    const WithDialog Act([](QWidget* Window) {
        auto* List = Part<QListWidget>(Window, "AvailList");
        List->setCurrentRow(0);
        List->setCurrentRow(2, QItemSelectionModel::NoUpdate); // as Control and the arrows do
        ASSERT_TRUE(List->item(0)->isSelected());
        Press(Window, "ClearBtn_2");
    });
    const UndoClearAnswer Answer = Questions.ShowUndoClear({"A", "B", "C"});
    EXPECT_EQ(Answer.Result, UndoClearUpToSelected);
    EXPECT_EQ(Answer.Selected, 0U);
}

TEST_F(UndoClearDialogTest, EscClosesIt) {
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    EXPECT_EQ(Questions.ShowUndoClear({"A"}).Result, UndoClearClosed);
}

// ---- The check of the sound system

TEST(SoundCheckWindow, TellsWhatIsWrongAndWhereToGo) {
    const TestSession Session;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "CheckDx7Frm");
        EXPECT_EQ(Part<QLabel>(Window, "Msg1Lbl")->text(),
                  "This software requires DirectX7 or higher to run.\n"
                  "Please install DirectX7 (or higher) before running it");
        EXPECT_TRUE(Part<QTextBrowser>(Window, "Dx7LinksTxt")->toHtml().contains("href="));
        Press(Window, "OkBtn");
    });
    SoundDriverState = 2;
    GuideChanceFix(0.09);
    IniPut("General", "Dx7Msg", "2");
    OfferDx7Check();
    EXPECT_EQ(IniGet("General", "Dx7Msg", ""), "1");
}

TEST(SoundCheckWindow, IsOfferedOnlyByChanceToThoseItConcerns) {
    const TestSession Session;
    const auto Offer = [](std::int32_t State, double Draw, const char* Setting) {
        SoundDriverState = State;
        GuideChanceFix(Draw);
        IniPut("General", "Dx7Msg", Setting);
        OfferDx7Check(); // a window that came up would never be closed
    };
    Offer(0, 0.0, "1");
    Offer(1, 0.0, "1");
    Offer(2, 0.1, "1");
    Offer(2, 0.0, "0");
    Offer(2, 0.0, "");
    SoundDriverState = 0;
}

} // namespace
} // namespace quoril

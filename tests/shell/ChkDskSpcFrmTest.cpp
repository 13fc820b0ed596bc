#include "shell/ChkDskSpcFrm.h"

#include "base/ProgressReport.h"
#include "shell/UndoClearFrm.h"
#include "shell/WithDialog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

constexpr std::int64_t Megabyte = 1048576;

class ChkDskSpcTest : public ::testing::Test {
  protected:
    /// 10 megabytes to transfer, 4 for the command.
    std::int32_t Ask() {
        return Asker.ShowChkDskSpc({10 * Megabyte, 4 * Megabyte, 14 * Megabyte, Free},
                                   [this] { return Free; });
    }
    static QString Message(const QWidget* Window) {
        return Part<QLabel>(Window, "Msg1Lbl")->text();
    }
    static QColor MessageColor(const QWidget* Window) {
        return Part<QLabel>(Window, "Msg1Lbl")->palette().color(QPalette::WindowText);
    }

    static bool MessageIsOnDark(const QWidget* Window) {
        const QPalette Colors = Part<QLabel>(Window, "Msg1Lbl")->palette();
        return Colors.color(QPalette::Window).lightness() < 64;
    }

    const TestSession Session;
    ScriptedMessages Messages;
    ChkDskSpcAsker Asker;
    std::int64_t Free = 0;
};

TEST_F(ChkDskSpcTest, ComesUpWithTheNumbersAndNoWayOn) {
    Free = 14 * Megabyte + Megabyte / 2;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "ChkDskSpcFrm");
        EXPECT_EQ(Window->windowTitle(), "Disk Free Space:");
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcNeedLbl0")->text(), "14.00 mb");
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcNeedLbl1")->text(), "10.00 mb");
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcNeedLbl2")->text(), "4.00 mb");
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcAvalLbl")->text(), "14.50 mb");
        EXPECT_EQ(Message(Window),
                  "Disk free space available is not sufficient for this operation.");
        EXPECT_EQ(Part<QPushButton>(Window, "TryAgainBtn")->text().remove('&'), "Can not continue");
        EXPECT_FALSE(Part<QPushButton>(Window, "TryAgainBtn")->isEnabled());
        EXPECT_EQ(Part<QPushButton>(Window, "ClearUndoDataBtn")->text().remove('&'),
                  "Clear undo backup data");
        EXPECT_EQ(Part<QPushButton>(Window, "CancelBtn")->text().remove('&'), "Cancel");
        EXPECT_TRUE(Part<QPushButton>(Window, "CancelBtn")->isDefault());
        EXPECT_EQ(Part<QTimer>(Window, "ChkTimer1")->interval(), 800);
        EXPECT_TRUE(Part<QTimer>(Window, "ChkTimer1")->isActive());
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, ItsNumbersAreThereForWhoeverAsksAndFollowTheDisk) {
    Free = 14 * Megabyte;
    const WithDialog Act([this](QWidget* Window) {
        const auto* Frm = dynamic_cast<const ChkDskSpcFrm*>(Window);
        ASSERT_NE(Frm, nullptr);
        EXPECT_EQ(Frm->ButtonClicked, 0);
        EXPECT_EQ(Frm->DiskSpaceNeeded1, 10 * Megabyte);
        EXPECT_EQ(Frm->DiskSpaceNeeded2, 4 * Megabyte);
        EXPECT_EQ(Frm->DiskSpaceNeeded0, 14 * Megabyte);
        EXPECT_EQ(Frm->DiskSpaceAvailable, 14 * Megabyte);
        Part<QTimer>(Window, "ChkTimer1")->setInterval(1);
        Free = 3 * Megabyte;
        EXPECT_TRUE(QTest::qWaitFor([&] { return Frm->DiskSpaceAvailable == Free; }));
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcAvalLbl")->text(), "3.00 mb");
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcNeedLbl0")->text(), "14.00 mb");
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, ThePointerIsTheOrdinaryOneWhileItIsOpenAndThenTheOneBefore) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(ChkDskSpcTest, ItsWordsAreComplete) {
    const ChkDskSpcFrm Window;
    QStringList Words;
    for (const QLabel* Label : Window.findChildren<QLabel*>())
        Words << Label->text().remove('&');
    for (const char* Expected :
         {"Total Needed:", "Required for transfering memory and original files:",
          "Additional requirement for this operation:", "Actual available:",
          "If you have more then one hard disk, you can change the temp. folder location to a "
          "bigger hard disk. (See menu Tools - Options - Disk Usage.)",
          "If you are editing a large file, you can reduce the disk space requirement by keeping "
          "the Undo \"Off\". (See menu Edit ...)",
          "You can clear undo backup data and try again."})
        EXPECT_TRUE(Words.contains(QLatin1String(Expected))) << Expected;
}

TEST_F(ChkDskSpcTest, FollowsTheDiskThroughTheThreeStates) {
    const WithDialog Act([this](QWidget* Window) {
        auto* Button = Part<QPushButton>(Window, "TryAgainBtn");
        auto* Timer = Part<QTimer>(Window, "ChkTimer1");
        Timer->setInterval(1);
        Free = 14 * Megabyte;
        EXPECT_TRUE(QTest::qWaitFor([&] { return Button->text().remove('&') == "Try again"; }));
        EXPECT_TRUE(Button->isEnabled());
        EXPECT_EQ(Message(Window), "Free space is not enough, trying now is risky.");
        EXPECT_EQ(MessageColor(Window), QColor(255, 0, 0));
        EXPECT_EQ(Part<QLabel>(Window, "DskSpcAvalLbl")->text(), "14.00 mb");
        Free = 4 * Megabyte;
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return Button->text().remove('&') == "Can not continue"; }));
        EXPECT_FALSE(Button->isEnabled());
        EXPECT_EQ(MessageColor(Window), QColor(0, 0, 0));
        EXPECT_FALSE(MessageIsOnDark(Window));
        Free = 14 * Megabyte + 1;
        EXPECT_TRUE(QTest::qWaitFor([&] { return Button->text().remove('&') == "Ok, Continue"; }));
        EXPECT_EQ(Message(Window), "Free space is enough, try again now.");
        EXPECT_EQ(MessageColor(Window), QColor(0, 255, 0));
        EXPECT_TRUE(MessageIsOnDark(Window)) << "bright green can not be read on a light ground";
        Press(Window, "TryAgainBtn");
    });
    EXPECT_EQ(Ask(), 1);
}

TEST_F(ChkDskSpcTest, TheUserMayGoOnAtTheRisk) {
    Free = 5 * Megabyte;
    const WithDialog Act([](QWidget* Window) {
        auto* Button = Part<QPushButton>(Window, "TryAgainBtn");
        EXPECT_TRUE(QTest::qWaitFor([&] { return Button->isEnabled(); }));
        Press(Window, "TryAgainBtn");
    });
    EXPECT_EQ(Ask(), 1);
}

TEST_F(ChkDskSpcTest, ClosingByTheSystemOrEscIsACancel) {
    Free = 20 * Megabyte;
    {
        const WithDialog Act([](QWidget* Window) { Window->close(); });
        EXPECT_EQ(Ask(), 0);
    }
    const WithDialog Act([](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, TheButtonsStandStillWhileTheStatesChange) {
    const WithDialog Act([this](QWidget* Window) {
        const auto* Button = Part<QPushButton>(Window, "TryAgainBtn");
        const auto* Clear = Part<QPushButton>(Window, "ClearUndoDataBtn");
        const QRect Before = Clear->geometry();
        Part<QTimer>(Window, "ChkTimer1")->setInterval(1);
        for (const auto& [Bytes, Caption] :
             {std::pair(14 * Megabyte, "Try again"), std::pair(15 * Megabyte, "Ok, Continue"),
              std::pair(std::int64_t{0}, "Can not continue")}) {
            Free = Bytes;
            const QString Text = QLatin1String(Caption);
            EXPECT_TRUE(QTest::qWaitFor([&] { return Button->text().remove('&') == Text; }));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            EXPECT_EQ(Clear->geometry(), Before) << Caption;
            EXPECT_GE(Button->width(), Button->sizeHint().width()) << Caption;
        }
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, ReturnPressesTheButtonThatHasTheKeyboardAndElseCancels) {
    Free = 20 * Megabyte;
    {
        const WithDialog Act([](QWidget* Window) {
            auto* Button = Part<QPushButton>(Window, "TryAgainBtn");
            Part<QTimer>(Window, "ChkTimer1")->setInterval(1);
            EXPECT_TRUE(QTest::qWaitFor([&] { return Button->isEnabled(); }));
            Button->setFocus();
            QTest::keyClick(Button, Qt::Key_Return);
        });
        EXPECT_EQ(Ask(), 1);
    }
    const WithDialog Act([](QWidget* Window) {
        auto* Button = Part<QPushButton>(Window, "TryAgainBtn");
        Part<QTimer>(Window, "ChkTimer1")->setInterval(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Button->isEnabled(); }));
        QTest::keyClick(Window, Qt::Key_Return);
    });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, TheDisabledButtonDoesNothing) {
    const WithDialog Act([](QWidget* Window) {
        Press(Window, "TryAgainBtn");
        QTest::keyClick(Part<QPushButton>(Window, "TryAgainBtn"), Qt::Key_Space);
        EXPECT_TRUE(Window->isVisible());
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
}

TEST_F(ChkDskSpcTest, ClearingUndoDataStopsTheTimerMeanwhile) {
    UndoClearWindow Questions;
    WaveStore = std::make_unique<FileMemoClass>();
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(10);
    WaveStore->WaveDataInsert(1, 1, &Silence, nullptr, "First", true);
    const WithDialog Act([](QWidget* Window) {
        auto* Timer = Part<QTimer>(Window, "ChkTimer1");
        bool Cleared = false;
        QTimer Poll;
        QObject::connect(&Poll, &QTimer::timeout, &Poll, [&] {
            QWidget* Top = QApplication::activeModalWidget();
            if (Top == nullptr || Top == Window)
                return;
            Poll.stop();
            EXPECT_EQ(Top->objectName(), "UndoClearFrm");
            EXPECT_FALSE(Timer->isActive());
            Cleared = true;
            Press(Top, "ClearBtn_3");
        });
        Poll.start(1);
        Press(Window, "ClearUndoDataBtn");
        EXPECT_TRUE(Cleared);
        EXPECT_TRUE(Timer->isActive());
        EXPECT_EQ(WaveStore->UndoCount(), WaveStore->UndoReleased());
        EXPECT_TRUE(Window->isVisible());
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
    WaveStore.reset();
}

TEST_F(ChkDskSpcTest, WithoutUndoDataItSaysSoAndStaysOpen) {
    WaveStore = std::make_unique<FileMemoClass>();
    const WithDialog Act([this](QWidget* Window) {
        Press(Window, "ClearUndoDataBtn");
        EXPECT_EQ(Messages.TakeTexts().size(), 1U);
        EXPECT_TRUE(Part<QTimer>(Window, "ChkTimer1")->isActive());
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
    WaveStore.reset();
}

TEST_F(ChkDskSpcTest, TheLargestNumbersStayOnTheScreen) {
    Free = 9223372036854775807;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_LE(Window->width(), 800);
        const auto* Label = Part<QLabel>(Window, "DskSpcAvalLbl");
        EXPECT_GE(Label->width(), Label->sizeHint().width());
        Press(Window, "CancelBtn");
    });
    EXPECT_EQ(Ask(), 0);
}

} // namespace
} // namespace quoril::test

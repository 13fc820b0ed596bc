#include "shell/LapFrm.h"

#include "settings/STD1.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"
#include "support/TestSession.h"

#include "base/ViewState.h"
#include "edit/LengthCommands.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace quoril::test {
namespace {

class LapFrmTest : public ::testing::Test {
  protected:
    const TestSession Session;
    LapAsker Asker;
};

TEST_F(LapFrmTest, ShowsItsWordsWithTheFirstOptions) {
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "LapFrm");
        EXPECT_EQ(Window->windowTitle(), "Lap (Cut and overlap)");
        QStringList Headings;
        for (const QGroupBox* Box : Window->findChildren<QGroupBox*>())
            Headings << Box->title();
        EXPECT_EQ(Headings, (QStringList{"Current Selection type:", "Transition style"}));
        const std::pair<const char*, const char*> Rows[] = {
            {"SelcOpn_0", "Current selection is both (cut in the middle)"},
            {"SelcOpn_1", "Current selection is the first part (cut at the end of it)"},
            {"SelcOpn_2", "Current selection is second part  (cut at the start)"},
            {"TransOpn_0", "Smooth transition (fade out and fade in)"},
            {"TransOpn_1", "Simple overlap"}};
        for (const auto& [Name, Caption] : Rows) {
            EXPECT_EQ(Part<QRadioButton>(Window, Name)->text(), Caption);
            EXPECT_EQ(Part<QRadioButton>(Window, Name)->isChecked(), QString(Name).endsWith("_0"));
        }
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
        Press(Window, "OkBtn");
    });
    const LapAnswer Answer = Asker.ShowLap();
    EXPECT_TRUE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, (LapChoice{0, 0}));
}

TEST_F(LapFrmTest, KeepsTheChoiceAlsoAfterCancelAndEsc) {
    {
        const WithDialog Act([](QWidget* Window) {
            Part<QRadioButton>(Window, "SelcOpn_2")->click();
            Part<QRadioButton>(Window, "TransOpn_1")->click();
            Press(Window, "CancelBtn");
        });
        EXPECT_FALSE(Asker.ShowLap().OkClicked);
    }
    EXPECT_EQ(IniGet("Lap", "SelOpn", ""), "2");
    EXPECT_EQ(IniGet("Lap", "TransOpn", ""), "1");
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_TRUE(Part<QRadioButton>(Window, "SelcOpn_2")->isChecked());
            EXPECT_TRUE(Part<QRadioButton>(Window, "TransOpn_1")->isChecked());
            Part<QRadioButton>(Window, "SelcOpn_1")->click();
            QTest::keyClick(Window, Qt::Key_Escape);
        });
        EXPECT_FALSE(Asker.ShowLap().OkClicked);
    }
    EXPECT_EQ(IniGet("Lap", "SelOpn", ""), "1");
}

TEST_F(LapFrmTest, AbsurdSettingsGiveTheFirstOptions) {
    IniPut("Lap", "SelOpn", "-77");
    IniPut("Lap", "TransOpn", "two");
    const WithDialog Act([](QWidget* Window) {
        EXPECT_TRUE(Part<QRadioButton>(Window, "SelcOpn_0")->isChecked());
        EXPECT_TRUE(Part<QRadioButton>(Window, "TransOpn_0")->isChecked());
        QTest::keyClick(Window, Qt::Key_Return);
    });
    EXPECT_TRUE(Asker.ShowLap().OkClicked);
    EXPECT_EQ(IniGet("Lap", "SelOpn", ""), "0");
}

/// The keys go to whatever has the focus, as they do on the screen.
void PressKeys(QWidget* Window, std::initializer_list<Qt::Key> Keys) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
    for (const Qt::Key Key : Keys)
        QTest::keyClick(Window->focusWidget(), Key);
}

TEST_F(LapFrmTest, KeysAloneChooseAndConfirm) {
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->focusWidget(), Part<QRadioButton>(Window, "SelcOpn_0"));
            PressKeys(Window,
                      {Qt::Key_Down, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return});
            EXPECT_FALSE(Window->isVisible());
        });
        const LapAnswer Answer = Asker.ShowLap();
        EXPECT_TRUE(Answer.OkClicked);
        EXPECT_EQ(Answer.Choice, (LapChoice{2, 1}));
    }
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->focusWidget(), Part<QRadioButton>(Window, "SelcOpn_2"));
        PressKeys(Window, {Qt::Key_Up, Qt::Key_Tab});
        EXPECT_EQ(Window->focusWidget(), Part<QRadioButton>(Window, "TransOpn_1"));
        PressKeys(Window, {Qt::Key_Up, Qt::Key_Tab});
        EXPECT_EQ(Window->focusWidget(), Part<QPushButton>(Window, "OkBtn"));
        PressKeys(Window, {Qt::Key_Tab});
        EXPECT_EQ(Window->focusWidget(), Part<QPushButton>(Window, "CancelBtn"));
        PressKeys(Window, {Qt::Key_Space});
        EXPECT_FALSE(Window->isVisible());
    });
    const LapAnswer Answer = Asker.ShowLap();
    EXPECT_FALSE(Answer.OkClicked);
    EXPECT_EQ(Answer.Choice, (LapChoice{1, 0}));
}

// ---- From the menu

class LengthMenuTest : public EditorFixture {
  protected:
    void Open() {
        Start(WriteWav("a.wav", 1000));
        ASSERT_EQ(WaveStore->WavWaveINos, 1000);
    }
    static void Select(std::int32_t From, std::int32_t To) {
        SelStart = From;
        SelEnd = To;
    }
};

TEST_F(LengthMenuTest, EachCommandIsOneStepThatUndoTakesBack) {
    Open();
    Select(101, 300);
    Menu("Edit_Trim_Mnu");
    EXPECT_EQ(WaveStore->WavWaveINos, 200);
    Menu("Undo_Mnu_1");
    Select(101, 300);
    Menu("Insert_Silence_Mnu");
    EXPECT_EQ(WaveStore->WavWaveINos, 1200);
    Menu("Undo_Mnu_1");
    Select(101, 300);
    {
        const WithDialog Act([](QWidget* Window) { Press(Window, "OkBtn"); });
        Menu("Edit_Lap_Mnu");
    }
    EXPECT_EQ(WaveStore->WavWaveINos, 900);
    Menu("Undo_Mnu_1");
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->windowTitle(), " Change Size (Duration)");
            Part<QLineEdit>(Window, "EnterSmpTxt")->setText("2500");
            Press(Window, "OkBtn");
        });
        Menu("Format_Size_Mnu");
    }
    EXPECT_EQ(WaveStore->WavWaveINos, 2500);
    Menu("Undo_Mnu_1");
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    EXPECT_THAT(Messages->Texts(), ::testing::IsEmpty());
}

TEST_F(LengthMenuTest, TheWindowOfADurationHasItsWordsAndGoesByKeys) {
    Open(); // 1000 samples at 11025 Hz
    Select(5, 5);
    LastSilenceLen = 0;
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "EntDurFrm");
            EXPECT_EQ(Window->windowTitle(), " Insert Silence (Duration)");
            const std::pair<const char*, const char*> Labels[] = {
                {"PromptLbl", "Enter Length of Silence to insert:"},
                {"RefSizeLbl", "Current File Size:"},
                {"CurSizeDurLbl", "00.09"},
                {"CurSizeSmpLbl", "1000"}};
            for (const auto& [Name, Text] : Labels)
                EXPECT_EQ(Part<QLabel>(Window, Name)->text(), Text);
            QStringList Texts;
            for (const QLabel* Label : Window->findChildren<QLabel*>())
                Texts << Label->text().remove('&');
            for (const char* Text : {"Duration:", "No of Samples:", "Enter duration or samples",
                                     "(hh:mm:ss or seconds)"})
                EXPECT_TRUE(Texts.contains(Text)) << Text;
            auto* Time = Part<QLineEdit>(Window, "EnterDurTxt");
            auto* Samples = Part<QLineEdit>(Window, "EnterSmpTxt");
            EXPECT_EQ(Time->text(), "01");
            EXPECT_EQ(Samples->text(), "11025");
            EXPECT_EQ(Window->focusWidget(), Time);
            PressKeys(Window, {Qt::Key_2});
            EXPECT_EQ(Samples->text(), "22050");
            PressKeys(Window, {Qt::Key_Tab});
            EXPECT_EQ(Window->focusWidget(), Samples);
            QTest::keyClick(Samples, Qt::Key_A, Qt::ControlModifier);
            PressKeys(Window, {Qt::Key_7, Qt::Key_Return});
            EXPECT_FALSE(Window->isVisible());
        });
        Menu("Insert_Silence_Mnu");
    }
    EXPECT_EQ(WaveStore->WavWaveINos, 1007);
    EXPECT_EQ(LastSilenceLen, 7);
    for (const bool ByEsc : {true, false}) {
        const WithDialog Act([ByEsc](QWidget* Window) {
            PressKeys(Window, {Qt::Key_9});
            if (ByEsc) {
                PressKeys(Window, {Qt::Key_Escape});
            } else {
                PressKeys(Window, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab});
                EXPECT_EQ(Window->focusWidget(), Part<QPushButton>(Window, "CancelBtn"));
                PressKeys(Window, {Qt::Key_Space});
            }
            EXPECT_FALSE(Window->isVisible());
        });
        Menu("Insert_Silence_Mnu");
        EXPECT_EQ(WaveStore->WavWaveINos, 1007);
    }
}

TEST_F(LengthMenuTest, AbsurdLengthsEndInAMessage) {
    Open();
    Select(5, 5);
    // The first is a number of samples, but needs too much room; the others are none.
    constexpr std::pair<const char*, const char*> Rows[] = {
        {"2147483647", "more than 2 GB of work space"},
        {"99999999999999999999", "Overflow"},
        {"1e300", "Overflow"}};
    for (const char* Command : {"Insert_Silence_Mnu", "Format_Size_Mnu"})
        for (const auto& [Text, Words] : Rows) {
            {
                const WithDialog Act([Typed = Text](QWidget* Window) {
                    Part<QLineEdit>(Window, "EnterSmpTxt")->setText(Typed);
                    Press(Window, "OkBtn");
                });
                Menu(Command);
            }
            EXPECT_THAT(Messages->TakeTexts(), ::testing::ElementsAre(::testing::HasSubstr(Words)))
                << Text;
            EXPECT_EQ(WaveStore->WavWaveINos, 1000);
        }
}

TEST_F(LengthMenuTest, JunkInTheBoxDoesNothing) {
    Open();
    Select(5, 5);
    for (const char* Text : {"", "abc", "-1", "0", "\xC3\xA4\xC3\xB6 12"}) {
        const WithDialog Act([Text](QWidget* Window) {
            Part<QLineEdit>(Window, "EnterSmpTxt")->setText(QString::fromUtf8(Text));
            Press(Window, "OkBtn");
        });
        Menu("Insert_Silence_Mnu");
        EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    }
    EXPECT_THAT(Messages->Texts(), ::testing::IsEmpty());
}

} // namespace
} // namespace quoril::test

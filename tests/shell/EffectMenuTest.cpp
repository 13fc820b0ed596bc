// The commands that compute sound, chosen from the menu of the real window.
#include "base/ViewState.h"
#include "effects/LiteralWaves.h"
#include "shell/EditorFixture.h"
#include "shell/MessageBoxes.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"
#include "storage/StorageChecks.h"
#include "storage/UndoListener.h"

#include <QAction>
#include <QComboBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace quoril::test {
namespace {

class EffectMenuTest : public EditorFixture {
  protected:
    using Samples = std::vector<std::int16_t>;

    /// Opens a file with everything selected.
    void Open(std::uint32_t Channels) {
        Start(WriteWav("a.wav", 1000, Channels));
        ASSERT_EQ(WaveStore->WavWaveINos, 1000);
        SelStart = 1;
        SelEnd = 1000;
    }
    /// Types into the input box that a command shows, and gives the words of the message that
    /// follows, "title|text"; empty when none has to follow.
    std::string Enter(const char* Command, const QString& Text, bool MessageFollows) {
        MessageBoxesClass Real;
        std::string Told;
        std::optional<WithDialog> Message;
        {
            const WithDialog Act([&](QWidget* Window) {
                auto* Box = qobject_cast<QInputDialog*>(Window);
                ASSERT_NE(Box, nullptr);
                Box->findChild<QLineEdit*>()->setText(Text);
                QTest::keyClick(Box->findChild<QLineEdit*>(), Qt::Key_Return);
                if (MessageFollows)
                    Message.emplace([&Told](QWidget* Next) {
                        auto* Words = qobject_cast<QMessageBox*>(Next);
                        ASSERT_NE(Words, nullptr);
                        Told = (Words->windowTitle() + "|" + Words->text()).toStdString();
                        QTest::keyClick(Next, Qt::Key_Escape);
                    });
            });
            Menu(Command);
        }
        return Told;
    }
};

TEST_F(EffectMenuTest, EveryEntryRunsItsOwnCommand) {
    Open(2);
    const std::pair<const char*, const char*> Rows[] = {
        {"Edit_VolFadeIn_Mnu", "Fade In"},
        {"Edit_VolFadeOut_Mnu", "Fade Out"},
        {"Edit_VolMaximize_Mnu", "Maximize"},
        {"Edit_AdjVol_Mnu_11", "Chg. Vol. 200%"},
        {"Edit_AdjVol_Mnu_12", "Chg. Vol. 160%"},
        {"Edit_AdjVol_Mnu_13", "Chg. Vol. 120%"},
        {"Edit_AdjVol_Mnu_14", "Chg. Vol. 85%"},
        {"Edit_AdjVol_Mnu_15", "Chg. Vol. 70%"},
        {"Edit_AdjVol_Mnu_16", "Chg. Vol. 50%"},
        {"Edit_AdjVol_Mnu_17", "Chg. Vol. 25%"},
        {"Edit_VolOpt_Mnu_11", "Opti.Vol.200%"},
        {"Edit_VolOpt_Mnu_12", "Opti.Vol.160%"},
        {"Edit_VolOpt_Mnu_13", "Opti.Vol.120%"},
        {"Edit_VolOpt_Mnu_14", "Opti.Vol.85%"},
        {"Edit_VolOpt_Mnu_15", "Opti.Vol.70%"},
        {"Edit_VolOpt_Mnu_16", "Opti.Vol.50%"},
        {"Edit_VolOpt_Mnu_17", "Opti.Vol.25%"},
        {"Edit_VolOpt_Mnu_21", "Opti.Vol.100%"},
        {"Edit_VolSilence_Mnu", "Silence"},
        {"Silence_Mnu", "Silence"},
        {"Wave_Reverse_Mnu", "Reverse"},
        {"Wave_Invert_Mnu", "Invert"},
        {"Interchange_Mnu", "Interchange Left-Right"}};
    const Samples L = ChannelSamples(*WaveStore, 1);
    for (const auto& [Entry, Name] : Rows) {
        Menu(Entry);
        EXPECT_EQ(WaveStore->UndoMenu().Caption, std::string("Undo [") + Name + "]") << Entry;
        EXPECT_NE(ChannelSamples(*WaveStore, 1), L) << Entry;
        Menu("Undo_Mnu_1");
        EXPECT_EQ(ChannelSamples(*WaveStore, 1), L) << Entry;
    }
    const std::tuple<const char*, const char*, const char*> Asking[] = {
        {"Edit_AdjVol_Mnu_0", "30", "Adj. Vol. Enter"},
        {"Edit_VolOpt_Mnu_0", "30", "Opti.Vol.Enter"},
        {"Wave_MoveUpDn_Mnu", "30", "Move Up"},
        {"Wave_MoveUpDn_Mnu", "-30", "Move Down"}};
    for (const auto& [Entry, Text, Name] : Asking) {
        Messages->AnswerInput(Text);
        Menu(Entry);
        EXPECT_EQ(WaveStore->UndoMenu().Caption, std::string("Undo [") + Name + "]") << Entry;
        Menu("Undo_Mnu_1");
        EXPECT_EQ(ChannelSamples(*WaveStore, 1), L) << Entry;
    }
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EffectMenuTest, ChannelMixChangesBothChannelsInOneStep) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    const Samples R = ChannelSamples(*WaveStore, 2);
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Part<QComboBox>(Window, "LeftSrcCmb")->currentIndex(), 2);
            EXPECT_EQ(Part<QComboBox>(Window, "RightSrcCmb")->currentIndex(), 2);
            Part<QComboBox>(Window, "LeftSrcCmb")->setCurrentIndex(1);
            Part<QComboBox>(Window, "RightSrcCmb")->setCurrentIndex(0);
            Press(Window, "OkBtn");
        });
        Menu("ChannelMixMnu");
    }
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), R);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), L);
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Interchange Left-Right]");
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Part<QComboBox>(Window, "LeftSrcCmb")->currentText(), "Right");
        EXPECT_EQ(Part<QComboBox>(Window, "RightSrcCmb")->currentText(), "Left");
        Press(Window, "CancelBtn");
    });
    Menu("ChannelMixMnu");
    EXPECT_THAT(Messages->Texts(), ::testing::IsEmpty());
}

TEST_F(EffectMenuTest, TonesAreMadeFromTheFrequenciesOfTheDialog) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    const Samples R = ChannelSamples(*WaveStore, 2);
    const auto Frequencies = [](const char* Start, bool Returns) {
        return [=](QWidget* Window) {
            Part<QLineEdit>(Window, "EnterFrqTxt_1")->setText(QLatin1String(Start));
            QTest::keyClick(Window, Qt::Key_Return);
            EXPECT_FALSE(Returns && Window->isVisible());
        };
    };
    {
        // The question comes back by itself, with what was entered.
        std::optional<WithDialog> Again;
        const WithDialog Act([&](QWidget* Window) {
            Again.emplace([](QWidget* Next) {
                EXPECT_EQ(Part<QLineEdit>(Next, "EnterFrqTxt_1")->text(), "20001");
                EXPECT_EQ(Part<QLineEdit>(Next, "EnterFrqTxt_2")->text(), "1000");
                Part<QLineEdit>(Next, "EnterFrqTxt_1")->setText(QStringLiteral("500"));
                QTest::keyClick(Next, Qt::Key_Return);
            });
            Frequencies("20001", true)(Window);
        });
        Menu("DrawSine_Mnu");
    }
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Sine]");
    EXPECT_TRUE(ChannelSamples(*WaveStore, 1) ==
                LiteralSine(1000, 22937, 500, 1000, WaveStore->WavFmtFreq));
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), ChannelSamples(*WaveStore, 2));
    Menu("Undo_Mnu_1");
    {
        const WithDialog Act(Frequencies("30", false));
        Menu("Modulate_Mnu");
    }
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Modulate]");
    const Samples Tone = LiteralSine(1000, 15000, 30, 1000, WaveStore->WavFmtFreq);
    EXPECT_TRUE(ChannelSamples(*WaveStore, 2) == LiteralModulate(R, Tone, 16));
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    Menu("DrawNoise_Mnu");
    EXPECT_THAT(Messages->TakeTexts(),
                ::testing::ElementsAre("Noise Generated|Noise Generated with all frequencies.\n"
                                       "Use Equalizer effect on it, to choose as needed."));
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), ChannelSamples(*WaveStore, 2));
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EffectMenuTest, SilenceIsDeletedAsTheDialogSaysAndTheValuesAreKept) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    const Samples R = ChannelSamples(*WaveStore, 2);
    {
        const WithDialog Act([](QWidget* Window) {
            Part<QLineEdit>(Window, "VolTxt")->setText(QStringLiteral("99"));
            Part<QLineEdit>(Window, "DurTxt")->setText(QStringLiteral("0.03"));
            Part<QLineEdit>(Window, "BalDurTxt")->setText(QStringLiteral("0.01"));
            Press(Window, "OkBtn");
        });
        Menu("DeleteSilence_Mnu");
    }
    EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Delete Silence]");
    LiteralSilenceRule Rule;
    Rule.Rate = WaveStore->WavFmtFreq;
    Rule.SilenVol = 0.99;
    Rule.SilenDur = 0.03;
    Rule.BalDur = 0.01;
    LiteralWave NewL;
    LiteralWave NewR;
    LiteralDeleteSilence(L, R, Rule, NewL, NewR);
    EXPECT_LT(NewL.size(), L.size());
    EXPECT_TRUE(ChannelSamples(*WaveStore, 1) == NewL);
    EXPECT_TRUE(ChannelSamples(*WaveStore, 2) == NewR);
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Part<QLineEdit>(Window, "VolTxt")->text(), "99.00");
        EXPECT_EQ(Part<QLineEdit>(Window, "BalDurTxt")->text(), "0.01");
        Press(Window, "CancelBtn");
    });
    Menu("DeleteSilence_Mnu");
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    EXPECT_THAT(Messages->Texts(), ::testing::IsEmpty());
}

TEST_F(EffectMenuTest, ChannelMixCanBeChosenInMonoAndSaysWhyNot) {
    Open(1);
    EXPECT_TRUE(Window().Entry("ChannelMixMnu")->isEnabled());
    Menu("ChannelMixMnu");
    EXPECT_THAT(Messages->TakeTexts(),
                ::testing::ElementsAre("This function works only in Stereo"));
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EffectMenuTest, AbsurdTextInTheVolumeBoxesEndsInAMessageAndChangesNothing) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    const Samples R = ChannelSamples(*WaveStore, 2);
    const std::string Range = "Adjust Volume Failed|Invalid Entry\nEnter values between 0 to 2000";
    const std::pair<QString, std::string> Rows[] = {
        {"2001", Range},
        {"-1", Range},
        {"100~-0.001", Range},
        {"99999999999999999999", Range},
        {"1e308", Range},
        {"abc", "Quoril Wave Editor|\"abc\" is not a number."},
        {"120~", "Quoril Wave Editor|\"\" is not a number."},
        {"~~~", "Quoril Wave Editor|\"\" is not a number."},
        {"1e309", "Quoril Wave Editor|\"1e309\" is not a number."},
        {"nan~inf", "Quoril Wave Editor|\"nan\" is not a number."},
        {"<b>5</b>", "Quoril Wave Editor|\"<b>5</b>\" is not a number."},
        {QString(30000, '9'), "Quoril Wave Editor|The entry is not a number."},
        {QStringLiteral("\u0663\u0665"), "Quoril Wave Editor|\"\u0663\u0665\" is not a number."}};
    for (const char* Command : {"Edit_AdjVol_Mnu_0", "Edit_VolOpt_Mnu_0"})
        for (const auto& [Text, Told] : Rows)
            EXPECT_EQ(Enter(Command, Text, true), Told) << Command;
    for (const char* Command : {"Edit_AdjVol_Mnu_0", "Edit_VolOpt_Mnu_0", "Wave_MoveUpDn_Mnu"})
        EXPECT_EQ(Enter(Command, "", false), "");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_EQ(ChannelSamples(*WaveStore, 2), R);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    // And a sound one does its work.
    EXPECT_EQ(Enter("Edit_AdjVol_Mnu_0", "0~0~", false), "");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), Samples(1000));
    Menu("Undo_Mnu_1");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
}

TEST_F(EffectMenuTest, AbsurdTextForTheHeightEndsInAMessageAndChangesNothing) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    for (const QString& Text :
         {QStringLiteral("0"), QStringLiteral("100.0001"), QStringLiteral("-101"),
          QStringLiteral("up"), QStringLiteral("1e999"), QString(30000, '1')})
        EXPECT_EQ(Enter("Wave_MoveUpDn_Mnu", Text, true), "Move Up/Down Failed|Invalid Entry");
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(EffectMenuTest, AbsurdDistancesChangeNothing) {
    Open(2);
    const Samples L = ChannelSamples(*WaveStore, 1);
    const std::string Beyond = "Failed to move|Unable to move beyond the current wave size.\n"
                               "Add space by inserting silence and try again.";
    const std::pair<const char*, std::string> Rows[] = {
        {"1000", Beyond},
        {"-1", Beyond},
        {"2147483647", Beyond},
        {"-2147483648", Beyond},
        {"99999999999999999999", "Move Forward/Back Error|Overflow"},
        {"abc", ""},
        {"", ""},
        {"0", ""}};
    for (const auto& [Text, Told] : Rows) {
        {
            const WithDialog Act([&Shown = Text](QWidget* Window) {
                EXPECT_EQ(Window->windowTitle(), " Enter distance to move");
                EXPECT_EQ(Part<QLabel>(Window, "PromptLbl")->text(),
                          "(+ to move right, - to move left)");
                EXPECT_EQ(Part<QLabel>(Window, "CurSizeSmpLbl")->text(), "1000");
                Part<QLineEdit>(Window, "EnterSmpTxt")->setText(Shown);
                Press(Window, "OkBtn");
            });
            Menu("Wave_MoveFoBk_Mnu");
        }
        const std::vector<std::string> Texts = Messages->TakeTexts();
        EXPECT_EQ(Texts, Told.empty() ? std::vector<std::string>{} : std::vector{Told}) << Text;
    }
    EXPECT_EQ(ChannelSamples(*WaveStore, 1), L);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

} // namespace
} // namespace quoril::test

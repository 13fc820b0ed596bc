// The dialogs of file types and encoders, by mouse and by keys.
#include "audiofile/DocumentFile.h"
#include "base/QtText.h"
#include "shell/EncChoseAppFrm.h"
#include "shell/EncRunFrm.h"
#include "shell/MessageBoxes.h"
#include "shell/Mp3ParamFrm.h"
#include "shell/PathText.h"
#include "shell/RawLoadFrm.h"
#include "shell/WithDialog.h"
#include "shell/WmaParamFrm.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QRadioButton>
#include <QSlider>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

/// Answers with a name, and notes what it was asked with.
struct ScriptedFiles final : FileDialogs {
    std::optional<std::string> OpenFile(const FileDialogRequest& Request) override {
        Requests.push_back(Request);
        return Chosen;
    }
    std::optional<std::string> SaveFile(const FileDialogRequest& Request) override {
        return OpenFile(Request);
    }
    std::vector<FileDialogRequest> Requests;
    std::optional<std::string> Chosen;
};

class FileTypeFrmTest : public ::testing::Test {
  protected:
    static void ExpectNamed(const QWidget* Window) {
        for (const char* Kind : {"OkBtn", "CancelBtn"})
            EXPECT_NE(Part<QPushButton>(Window, Kind), nullptr);
        EXPECT_TRUE(Part<QPushButton>(Window, "OkBtn")->isDefault());
    }
    static QString TextOf(const QWidget* Window, const char* Name) {
        return Part<QLabel>(Window, Name)->text();
    }
    const TestSession Session;
    ScriptedMessages Messages;
};

// ---- Raw

TEST_F(FileTypeFrmTest, TheRawDialogShowsItsWordsAndTheGivenChoice) {
    RawLoadAsker Asker;
    RawChoice Choice{1, 0, 3, 96000, 2};
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "RawLoadFrm");
            EXPECT_EQ(Window->windowTitle(), "Choose format for loading a Raw/Snd/Binary file");
            const auto Caption = [&](const char* Name) {
                return Part<QRadioButton>(Window, Name)->text().remove('&').toStdString();
            };
            EXPECT_EQ(Caption("FmtChnOpn_0"), "Mono");
            EXPECT_EQ(Caption("FmtChnOpn_1"), "Stereo");
            EXPECT_EQ(Caption("FmtBitsOpn_0"), "8 bits per sample");
            EXPECT_EQ(Caption("FmtBitsOpn_1"), "16 bits per sample");
            EXPECT_EQ(Caption("FmtFreqOpn_0"), "11025 Hz");
            EXPECT_EQ(Caption("FmtFreqOpn_1"), "22050 Hz");
            EXPECT_EQ(Caption("FmtFreqOpn_2"), "44100 Hz");
            EXPECT_EQ(Caption("FmtFreqOpn_3"), "96,000 Hz");
            EXPECT_EQ(Part<QRadioButton>(Window, "FmtFreqOpn_3")->accessibleName(), "96,000 Hz");
            EXPECT_EQ(Part<QRadioButton>(Window, "FmtChnOpn_0")->accessibleName(), "Mono");
            const auto* Offset = Part<QComboBox>(Window, "DataOffsetCmb");
            EXPECT_EQ(Offset->itemText(0), "No Offset");
            EXPECT_EQ(Offset->itemText(1), "Offset 1 byte");
            EXPECT_EQ(Offset->itemText(2), "Offset 2 bytes");
            EXPECT_EQ(Offset->itemText(3), "Offset 3 bytes");
            EXPECT_TRUE(TextOf(Window, "OffsetNoteLbl").contains("zero for normal raw or snd"));
            ExpectNamed(Window);
            Press(Window, "OkBtn");
        });
        EXPECT_TRUE(Asker.ShowRawLoad(Choice));
    }
    EXPECT_EQ(Choice.FmtChnOpn, 1);
    EXPECT_EQ(Choice.FmtBitsOpn, 0);
    EXPECT_EQ(Choice.Freq(), 96000);
    EXPECT_EQ(Choice.DataOffsetCmb, 2);
}

TEST_F(FileTypeFrmTest, TheRawDialogIsWorkedByKeysAlone) {
    RawLoadAsker Asker;
    RawChoice Choice{0, 1, 2, 0, 0};
    {
        const WithDialog Act([](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            EXPECT_TRUE(Part<QRadioButton>(Window, "FmtChnOpn_0")->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            EXPECT_TRUE(Part<QRadioButton>(Window, "FmtBitsOpn_1")->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
            QTest::keyClick(Window, Qt::Key_D, Qt::AltModifier);
            EXPECT_TRUE(Part<QComboBox>(Window, "DataOffsetCmb")->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
            QTest::keyClick(Window, Qt::Key_Return);
        });
        EXPECT_TRUE(Asker.ShowRawLoad(Choice));
    }
    EXPECT_EQ(Choice.FmtChnOpn, 1);
    EXPECT_EQ(Choice.FmtBitsOpn, 0);
    EXPECT_EQ(Choice.FmtFreqOpn, 1);
    EXPECT_EQ(Choice.DataOffsetCmb, 3);
}

TEST_F(FileTypeFrmTest, AnotherRateIsEnteredByTheButtonAndStaysAfterEsc) {
    RawLoadAsker Asker;
    RawChoice Choice{0, 1, 2, 0, 0};
    Messages.AnswerInput("8000");
    {
        const WithDialog Act([](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            PressByKey(Window, "FmtFreqOthBtn");
            EXPECT_TRUE(Part<QRadioButton>(Window, "FmtFreqOpn_3")->isChecked());
            EXPECT_EQ(Part<QRadioButton>(Window, "FmtFreqOpn_3")->text().remove('&'), "8,000 Hz");
            Part<QRadioButton>(Window, "FmtChnOpn_1")->setChecked(true);
            QTest::keyClick(Window, Qt::Key_Escape);
        });
        EXPECT_FALSE(Asker.ShowRawLoad(Choice));
    }
    EXPECT_EQ(Choice.OtherFreq, 8000);
    EXPECT_EQ(Choice.FmtFreqOpn, 2) << "cancelled";
    EXPECT_EQ(Choice.FmtChnOpn, 0);
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("Sampling rate|Enter the other frequency (Hz) for sampling rate"));
}

// ---- The encoder's path

TEST_F(FileTypeFrmTest, TheEncoderDialogSaysWhatItNeeds) {
    ScriptedFiles Files;
    EncChoseAppAsker Asker(Files);
    const struct {
        std::int32_t Which;
        const char* Title;
        const char* Words;
    } Cases[] = {{EncoderMp3, " Need a command line Mp3 encoder",
                  "Enter (or browse) the location of the \"mp3 command line encoder\". Please see "
                  "the help if needed."},
                 {EncoderWma, " Need a command line Wma encoder",
                  "Enter (or browse) the location of the \"Windows Media 8 Encoding Utility "
                  "(WM8EUTIL.exe)\". Please see the help if needed."}};
    for (const auto& Case : Cases) {
        const WithDialog Act([&Case](QWidget* Window) {
            EXPECT_EQ(Window->objectName(), "EncChoseAppFrm");
            EXPECT_EQ(Window->windowTitle(), Case.Title);
            EXPECT_EQ(TextOf(Window, "RemLbl"), Case.Words);
            EXPECT_EQ(CoreText(Part<QLineEdit>(Window, "FileNameTxt")->text()),
                      EncoderToPropose(Case.Which));
            ExpectNamed(Window);
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            EXPECT_TRUE(Part<QLineEdit>(Window, "FileNameTxt")->hasFocus());
            QTest::keyClick(Window, Qt::Key_Escape);
        });
        Asker.ShowEncChoseApp(Case.Which);
        EXPECT_EQ(ChosenEncoder(Case.Which), "") << "nothing is kept";
    }
}

TEST_F(FileTypeFrmTest, AMissingEncoderIsToldWithItsPackage) {
    ScriptedFiles Files;
    EncChoseAppAsker Asker(Files);
    const QByteArray Path = qgetenv("PATH");
    for (const bool There : {false, true}) {
        qputenv("PATH", QByteArray::fromStdString(Session.Path("")));
        if (There)
            Session.WriteFile("lame", {});
        const WithDialog Act([There](QWidget* Window) {
            EXPECT_EQ(Part<QLabel>(Window, "Rem2Lbl")->isVisible(), !There);
            if (!There) {
                EXPECT_EQ(TextOf(Window, "Rem2Lbl"), "lame is not installed. Install the package "
                                                     "\"lame\", or choose another encoder.");
            }
            Window->close();
        });
        Asker.ShowEncChoseApp(EncoderMp3);
    }
    qputenv("PATH", Path);
}

TEST_F(FileTypeFrmTest, BrowseFillsThePathAndOkKeepsItByteForByte) {
    ScriptedFiles Files;
    EncChoseAppAsker Asker(Files);
    Files.Chosen = Session.Path("my \xFF encoder");
    {
        const WithDialog Act([](QWidget* Window) {
            Press(Window, "BrowseBtn");
            Part<QLineEdit>(Window, "FileNameTxt")->setFocus();
            QTest::keyClick(Part<QLineEdit>(Window, "FileNameTxt"), Qt::Key_Return);
        });
        Asker.ShowEncChoseApp(EncoderWma);
    }
    EXPECT_EQ(ChosenEncoder(EncoderWma), *Files.Chosen);
    ASSERT_EQ(Files.Requests.size(), 1U);
    EXPECT_EQ(Files.Requests[0].Title,
              "Select a command line encoder exe (WM8EUTIL.exe) file to use");
    EXPECT_EQ(Files.Requests[0].Filter, "Application file (*.Exe)|*.Exe|All files (*.*)|*.*");
    Files.Chosen.reset();
    {
        const WithDialog Act([](QWidget* Window) {
            Press(Window, "BrowseBtn");
            Part<QLineEdit>(Window, "FileNameTxt")->setText(QStringLiteral("/usr/bin/other"));
            Press(Window, "OkBtn");
        });
        Asker.ShowEncChoseApp(EncoderMp3);
    }
    EXPECT_EQ(Files.Requests[1].Title, "Select a command line encoder exe (Lame.exe) file to use");
    EXPECT_EQ(ChosenEncoder(EncoderMp3), "/usr/bin/other");
}

// ---- Parameters

TEST_F(FileTypeFrmTest, TheMp3DialogHasTheRatesOfTheSamplingRate) {
    Mp3ParamAsker Asker;
    Mp3Params Params{160, 1, 22050};
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->windowTitle(), "Select Mp3 Compressing Parameters");
            const auto* Slider = Part<QSlider>(Window, "BitRateSlider");
            EXPECT_EQ(Slider->minimum(), 0);
            EXPECT_EQ(Slider->maximum(), 13);
            EXPECT_EQ(TextOf(Window, "BitRateLbl"), "160");
            const auto* Modes = Part<QComboBox>(Window, "StereoModeCmb");
            QStringList Shown;
            for (int Index = 0; Index < Modes->count(); ++Index)
                Shown << Modes->itemText(Index);
            EXPECT_EQ(Shown, (QStringList{"Default", "Stereo", "Joint Stereo",
                                          "Forced Joint Stereo", "Mono"}));
            EXPECT_EQ(Modes->currentText(), "Stereo");
            ExpectNamed(Window);
            Press(Window, "OkBtn");
        });
        EXPECT_TRUE(Asker.ShowMp3Param(Params));
    }
    EXPECT_EQ(Params.CurrentBitRate, 160);
    EXPECT_EQ(Params.CurrentStereoMode, 1);
}

TEST_F(FileTypeFrmTest, ARateThatIsNotInTheListBeginsAtTheUsualOne) {
    Mp3ParamAsker Asker;
    for (const auto& [Freq, Begun] : {std::pair(22050, 64), std::pair(25000, 64),
                                      std::pair(25001, 320), std::pair(44100, 320)}) {
        Mp3Params Params{320, 99, Freq};
        const WithDialog Act([](QWidget* Window) { Press(Window, "OkBtn"); });
        EXPECT_TRUE(Asker.ShowMp3Param(Params));
        EXPECT_EQ(Params.CurrentBitRate, Begun) << Freq;
        EXPECT_EQ(Params.CurrentStereoMode, 0) << "99 is no mode";
    }
}

TEST_F(FileTypeFrmTest, TheMp3DialogIsWorkedByKeysAlone) {
    Mp3ParamAsker Asker;
    Mp3Params Params{128, 0, 44100};
    {
        const WithDialog Act([](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            EXPECT_TRUE(Part<QSlider>(Window, "BitRateSlider")->hasFocus());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
            EXPECT_EQ(TextOf(Window, "BitRateLbl"), "320");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
            EXPECT_EQ(TextOf(Window, "BitRateLbl"), "256");
            QTest::keyClick(Window, Qt::Key_S, Qt::AltModifier);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QTest::keyClick(Window, Qt::Key_Return);
        });
        EXPECT_TRUE(Asker.ShowMp3Param(Params));
    }
    EXPECT_EQ(Params.CurrentBitRate, 256);
    EXPECT_EQ(Params.CurrentStereoMode, 1);
    const WithDialog Act([](QWidget* Window) {
        Part<QSlider>(Window, "BitRateSlider")->setValue(0);
        QTest::keyClick(Window, Qt::Key_Escape);
    });
    EXPECT_FALSE(Asker.ShowMp3Param(Params));
    EXPECT_EQ(Params.CurrentBitRate, 256);
}

TEST_F(FileTypeFrmTest, TheWmaDialogListsTheRatesOfTheFormat) {
    WmaParamAsker Asker;
    WmaParams Params{64000, 2, 44100};
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(Window->windowTitle(), "Select Wma Compressing Parameters");
            EXPECT_EQ(TextOf(Window, "CurFreqLbl"), "Current Sampling rate: 44100");
            EXPECT_EQ(TextOf(Window, "CurChnLbl"), "Current Channel: Stereo");
            EXPECT_EQ(TextOf(Window, "NoteLbl"),
                      "Supported bit rate (for the current sampling rate and channel) are shown "
                      "here. Please select one.");
            auto* List = Part<QListWidget>(Window, "BitRateList");
            ASSERT_EQ(List->count(), 8);
            EXPECT_EQ(List->item(0)->text(), "192000bps (192kbps");
            EXPECT_EQ(List->currentItem()->text(), "64000bps (64kbps");
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QTest::keyClick(Window, Qt::Key_Return);
        });
        EXPECT_TRUE(Asker.ShowWmaParam(Params));
    }
    EXPECT_EQ(Params.CurrentBitRate, 48000);
    Params = {64000, 1, 11025};
    {
        const WithDialog Act([](QWidget* Window) {
            EXPECT_EQ(TextOf(Window, "CurChnLbl"), "Current Channel: Mono");
            EXPECT_EQ(Part<QListWidget>(Window, "BitRateList")->currentRow(), 0);
            Press(Window, "OkBtn");
        });
        EXPECT_TRUE(Asker.ShowWmaParam(Params));
    }
    EXPECT_EQ(Params.CurrentBitRate, 10000);
    Params = {64000, 1, 48000};
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Part<QListWidget>(Window, "BitRateList")->count(), 0);
        EXPECT_FALSE(Part<QPushButton>(Window, "OkBtn")->isEnabled());
        QTest::keyClick(Window, Qt::Key_Escape);
    });
    EXPECT_FALSE(Asker.ShowWmaParam(Params));
}

// ---- The wait

TEST_F(FileTypeFrmTest, TheWaitEndsWithTheEncoder) {
    EncoderWaiter Waiter;
    int Looks = 0;
    const WithDialog Act([](QWidget* Window) {
        EXPECT_EQ(Window->objectName(), "EncRunFrm");
        EXPECT_EQ(TextOf(Window, "WorkLbl"), "The encoder is working:");
        EXPECT_EQ(TextOf(Window, "TimeLbl"), "Time passed: 0 seconds");
        EXPECT_EQ(Part<QProgressBar>(Window, "WorkBar")->maximum(), 0) << "it only shows life";
        QTest::keyClick(Window, Qt::Key_Return);
        EXPECT_TRUE(Window->isVisible()) << "Return ends nothing";
    });
    EXPECT_TRUE(Waiter.WaitForEncoder("/usr/bin/lame", [&Looks] { return ++Looks > 5; }));
    EXPECT_GT(Looks, 5);
}

TEST_F(FileTypeFrmTest, TheUserCanEndItByMouseKeyAndEsc) {
    EncoderWaiter Waiter;
    const std::vector<std::function<void(QWidget*)>> Ways = {
        [](QWidget* Window) { Press(Window, "EndBtn"); },
        [](QWidget* Window) { QTest::keyClick(Window, Qt::Key_Escape); },
        [](QWidget* Window) {
            ASSERT_TRUE(QTest::qWaitForWindowActive(Window));
            QTest::keyClick(Window, Qt::Key_E, Qt::AltModifier);
        },
        [](QWidget* Window) { Window->close(); }};
    for (const auto& Way : Ways) {
        const WithDialog Act(Way);
        EXPECT_FALSE(Waiter.WaitForEncoder("/usr/bin/lame", [] { return false; }));
    }
}

} // namespace
} // namespace quoril::test

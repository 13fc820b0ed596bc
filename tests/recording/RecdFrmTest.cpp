#include "recording/Recd_Frm.h"

#include "ScriptedCapture.h"
#include "base/ViewState.h"
#include "recording/MeterPic.h"
#include "settings/STD1.h"
#include "shell/HelpTopics.h"
#include "shell/WithDialog.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoOffScope.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QThread>
#include <cmath>
#include <gmock/gmock.h>
#include <utility>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecdFrmTest : public ::testing::Test {
  protected:
    RecdFrmTest() { WaveStore = std::make_unique<FileMemoClass>(); }
    ~RecdFrmTest() override {
        Window.reset();
        Session.reset();
        WaveStore.reset();
    }

    /// Opens the window at sample 1001 of a document of silent samples.
    void Open(std::int32_t Channels = 1, std::int32_t Bits = 16, std::int32_t Freq = 44100,
              std::int32_t Length = 2000) {
        WaveStore->WavFmtChannel = Channels;
        WaveStore->WavFmtBits = Bits;
        WaveStore->WavFmtFreq = Freq;
        const UndoOffScope Off(*WaveStore);
        BlockCarrBuffClass Silence;
        Silence.ReDimSize(Length);
        WaveStore->WaveDataInsert(1, Channels == 2 ? 0 : 1, &Silence, &Silence, {}, true);
        SelStart = SelEnd = 1001;
        Session = std::make_unique<RecordSession>(
            RecordSurroundings{Dx7, Api, [this] { return Dx7IsThere; }});
        ASSERT_TRUE(Session->InitilizeForm());
        Session->LoadSettings();
        Window = std::make_unique<Recd_Frm>(*Session);
        Window->Leaving = [this] { ++Left; };
        Window->OpenEngine();
        Window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    }
    void Click(const char* Name) const { Press(Window.get(), Name); }
    [[nodiscard]] QString Label(const char* Name) const {
        return Part<QLabel>(Window.get(), Name)->text();
    }
    [[nodiscard]] QString Caption(const char* Name) const {
        return Part<QPushButton>(Window.get(), Name)->text().remove('&');
    }
    [[nodiscard]] bool Enabled(const char* Name) const {
        return Part<QWidget>(Window.get(), Name)->isEnabled();
    }
    /// Blocks come, and the window takes them by its timer.
    void Deliver(int Halves, int Value = 0x20) const {
        const ScriptedCapture& System = Session->Driver.RecEngine == RecEngineApi ? Api : Dx7;
        System.Deliver(Halves, Value);
        EXPECT_TRUE(QTest::qWaitFor([&] { return System.Queue->Oldest() == nullptr; }));
    }
    /// A key of a caption, which shows the button pressed for a moment.
    void Key(Qt::Key What, std::int32_t State) const {
        QTest::keyClick(Window->focusWidget(), What, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Session->Machine.RecState() == State; }));
    }

    const TestSession Folder;
    ScriptedMessages Messages;
    ScriptedCapture Dx7;
    ScriptedCapture Api;
    bool Dx7IsThere = true;
    int Left = 0;
    std::unique_ptr<RecordSession> Session;
    std::unique_ptr<Recd_Frm> Window;
};

TEST_F(RecdFrmTest, ShowsWhereAndWhatIsRecorded) {
    Open(2, 16, 44100);
    EXPECT_EQ(Label("Fmt_Lbl"), "(Stereo,44100 Hz, 16 Bits)");
    EXPECT_EQ(Label("InsertLbl"), "Sample:1001 (00.02)");
    EXPECT_EQ(Label("FmtSup_Lbl"), "Format supported");
    EXPECT_EQ(Part<QLabel>(Window.get(), "FmtSup_Lbl")->palette().color(QPalette::WindowText),
              QColor(Qt::blue));
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "Ready to record");
    EXPECT_TRUE(Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_0")->isChecked());
    auto* Devices = Part<QComboBox>(Window.get(), "DxDivLstCmb");
    EXPECT_EQ(Devices->count(), 2);
    EXPECT_EQ(Devices->currentText(), "first");
    EXPECT_EQ(Caption("Start_Btn_0"), "Start");
    EXPECT_EQ(Caption("Start_Btn_1"), "Pause");
    EXPECT_EQ(Caption("Start_Btn_2"), "Stop");
    EXPECT_TRUE(Part<QWidget>(Window.get(), "RecShowRPic")->isVisible());
    EXPECT_EQ(Dx7.Opened, (CaptureFormat{2, 16, 44100}));
}

TEST_F(RecdFrmTest, OneChannelOfAStereoDocumentIsMono) {
    SelBoth = false;
    SelSingle = 2;
    Open(2, 16, 44100);
    EXPECT_EQ(Label("Fmt_Lbl"), "(Mono,44100 Hz, 16 Bits)");
    EXPECT_FALSE(Part<QWidget>(Window.get(), "RecShowRPic")->isVisible());
    Click("Start_Btn_0");
    Deliver(3, 0x11);
    Click("Start_Btn_2");
    Click("Done_Btn");
    EXPECT_EQ(WaveStore->WaveNosR(), 2000 + 3 * 4410);
    EXPECT_EQ(WaveStore->WaveR(1001), 0x1111);
    EXPECT_EQ(WaveStore->WaveL(1001), 0);
    SelBoth = true;
}

TEST_F(RecdFrmTest, ButtonsFollowTheStates) {
    Open();
    const auto States = [this] {
        std::string Result;
        for (const char* Name : {"Start_Btn_0", "Start_Btn_1", "Start_Btn_2", "Done_Btn",
                                 "Cancel_Btn", "CaptureFrame"})
            Result += Enabled(Name) ? '1' : '0';
        return Result;
    };
    EXPECT_EQ(States(), "100011");
    Click("Start_Btn_0");
    EXPECT_EQ(States(), "011000");
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "Now Recording");
    Deliver(5);
    EXPECT_EQ(Label("Dur_Lbl_0"), "00.50");
    Click("Start_Btn_1");
    EXPECT_EQ(States(), "011000");
    EXPECT_EQ(Caption("Start_Btn_1"), "Continue");
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "Recording Paused");
    EXPECT_EQ(Label("Dur_Lbl_0"), "00.50 [P]");
    Deliver(3);
    EXPECT_EQ(Label("Dur_Lbl_1"), "00.80");
    Click("Start_Btn_2");
    EXPECT_EQ(States(), "100111");
    EXPECT_EQ(Caption("Start_Btn_0"), "Restart");
    EXPECT_EQ(Caption("Start_Btn_1"), "Pause");
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "Recording Done");
    EXPECT_EQ(Label("Dur_Lbl_0"), "00.50");
}

TEST_F(RecdFrmTest, DoneInsertsAndLeaves) {
    Open();
    Click("Start_Btn_0");
    Deliver(10, 0x12);
    Click("Start_Btn_2");
    Click("Done_Btn");
    EXPECT_TRUE(Window->DoneClicked);
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Left, 1);
    EXPECT_EQ(Dx7.OpenNow, 0);
    EXPECT_EQ(WaveStore->WavWaveINos, 2000 + 44100);
    EXPECT_EQ(WaveStore->WaveL(1000), 0);
    EXPECT_EQ(WaveStore->WaveL(1001), 0x1212);
    EXPECT_EQ(WaveStore->WaveL(45100), 0x1212);
    EXPECT_EQ(WaveStore->WaveL(45101), 0);
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->WavWaveINos, 2000);
}

TEST_F(RecdFrmTest, CancelAndEscDropTheTake) {
    for (const bool ByEsc : {false, true}) {
        WaveStore = std::make_unique<FileMemoClass>();
        Open();
        Click("Start_Btn_0");
        Deliver(2);
        QTest::keyClick(Window.get(), Qt::Key_Escape);
        EXPECT_TRUE(Window->isVisible()) << "not while it records";
        Click("Start_Btn_2");
        if (ByEsc)
            QTest::keyClick(Window.get(), Qt::Key_Escape);
        else
            Click("Cancel_Btn");
        EXPECT_FALSE(Window->isVisible());
        EXPECT_FALSE(Window->DoneClicked);
        EXPECT_EQ(WaveStore->WavWaveINos, 2000);
        EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
        EXPECT_EQ(Dx7.OpenNow, 0);
    }
    EXPECT_EQ(Left, 2);
}

TEST_F(RecdFrmTest, ClosingKeepsTheChoicesAndNotTheTake) {
    Open();
    Part<QCheckBox>(Window.get(), "StopIfSilenChk")->click();
    Part<QSlider>(Window.get(), "SilenthresSlider")->setValue(42);
    Click("Start_Btn_0");
    Deliver(2);
    Window->close();
    EXPECT_FALSE(Window->isVisible());
    EXPECT_EQ(Left, 1);
    EXPECT_EQ(WaveStore->WavWaveINos, 2000);
    EXPECT_EQ(IniGet("Record", "StopIfSilentfor", ""), "1");
    EXPECT_EQ(IniGet("Record", "Silenthreshold", ""), "0.42");
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
    Open();
    EXPECT_TRUE(Part<QCheckBox>(Window.get(), "StopIfSilenChk")->isChecked());
    EXPECT_EQ(Part<QSlider>(Window.get(), "SilenthresSlider")->value(), 42);
}

TEST_F(RecdFrmTest, KeysAloneRecordATake) {
    Open();
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Start_Btn_0")->hasFocus());
    Key(Qt::Key_S, RecRecording);
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Start_Btn_2")->hasFocus());
    Deliver(2);
    Key(Qt::Key_P, RecPaused);
    Key(Qt::Key_C, RecRecording);
    QTest::keyClick(Window->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Session->Machine.RecState(), RecReady) << "Return presses what has the focus";
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Done_Btn")->hasFocus());
    Key(Qt::Key_D, RecClosed);
    EXPECT_TRUE(Window->DoneClicked);
}

TEST_F(RecdFrmTest, ReturnInAFieldStartsNothing) {
    Open();
    auto* Field = Part<QLineEdit>(Window.get(), "StopAftRecTxt");
    Field->setFocus();
    Field->setText("2:00:00");
    QTest::keyClick(Field, Qt::Key_Return);
    EXPECT_EQ(Field->text(), "2:00:00");
    EXPECT_EQ(Session->Machine.Choices.RecordTime, 7200);
    EXPECT_EQ(Session->Machine.RecState(), RecReady);
    EXPECT_TRUE(Window->isVisible());
}

TEST_F(RecdFrmTest, FieldsBringAbsurdTimesInside) {
    Open();
    struct Row {
        const char* Typed;
        const char* Record;
        const char* Silence;
    };
    for (const Row& Each : {Row{"0.2", "01", "01"}, Row{"-7", "01", "01"}, Row{"abc", "01", "01"},
                            Row{"99:00:00", "24:00:00", "1:00:00"},
                            Row{"1e300", "24:00:00", "1:00:00"}, Row{"90", "01:30", "01:30"}}) {
        for (const char* Name : {"StopAftRecTxt", "StopIfSilenTxt", "PauseIfSilenTxt"}) {
            auto* Field = Part<QLineEdit>(Window.get(), Name);
            Field->setFocus();
            Field->setText(Each.Typed);
            Part<QWidget>(Window.get(), "StopAftRecChk")->setFocus();
            EXPECT_EQ(Field->text(), QString(Name) == "StopAftRecTxt" ? Each.Record : Each.Silence)
                << Name << " " << Each.Typed;
        }
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(RecdFrmTest, ATimeThatWasTypedCountsWithoutLeavingTheField) {
    Open();
    auto* Field = Part<QLineEdit>(Window.get(), "StopAftRecTxt");
    Field->setFocus();
    Field->selectAll();
    QTest::keyClicks(Field, "1:30");
    Key(Qt::Key_S, RecRecording);
    EXPECT_EQ(Session->Machine.Choices.RecordTime, 90);
    EXPECT_EQ(Field->text(), "01:30");
    Window->close();
    Open();
    Field = Part<QLineEdit>(Window.get(), "PauseIfSilenTxt");
    Field->setFocus();
    Field->selectAll();
    QTest::keyClicks(Field, "45");
    QTest::keyClick(Field, Qt::Key_Escape);
    EXPECT_EQ(IniGet("Record", "PauseTime", ""), "45") << "the choices are kept";
    EXPECT_EQ(IniGet("Record", "RecordTime", ""), "90");
}

TEST_F(RecdFrmTest, EachControlHasItsOwnChoice) {
    Open();
    const RecordChoices& Choices = Session->Machine.Choices;
    const std::vector<std::pair<const char*, const bool*>> Checks = {
        {"StopAftRecChk", &Choices.StopAftRec},
        {"StopIfSilenChk", &Choices.StopIfSilen},
        {"PauseIfSilenChk", &Choices.PauseIfSilen},
        {"ContnIfNoSilenChk", &Choices.ContnIfNoSilen}};
    for (const auto& [Name, Place] : Checks) {
        auto* Box = Part<QCheckBox>(Window.get(), Name);
        EXPECT_FALSE(Box->isChecked()) << Name;
        Box->click();
        EXPECT_TRUE(*Place) << Name;
        Box->click();
        EXPECT_FALSE(*Place) << Name;
        Box->click();
    }
    const std::vector<std::pair<const char*, const float*>> Fields = {
        {"StopAftRecTxt", &Choices.RecordTime},
        {"StopIfSilenTxt", &Choices.StopTime},
        {"PauseIfSilenTxt", &Choices.PauseTime}};
    float Seconds = 40;
    for (const auto& [Name, Place] : Fields) {
        auto* Field = Part<QLineEdit>(Window.get(), Name);
        Field->setText(QString::number(++Seconds));
        QTest::keyClick(Field, Qt::Key_Return);
        EXPECT_EQ(*Place, Seconds) << Name;
    }
    const RecordChoices Chosen = Choices;
    Window->close();
    Open();
    EXPECT_EQ(Session->Machine.Choices, Chosen);
    for (const auto& [Name, Place] : Checks)
        EXPECT_TRUE(Part<QCheckBox>(Window.get(), Name)->isChecked()) << Name;
    for (const auto& [Name, Shown] :
         {std::pair{"StopAftRecTxt", "41"}, {"StopIfSilenTxt", "42"}, {"PauseIfSilenTxt", "43"}})
        EXPECT_EQ(Part<QLineEdit>(Window.get(), Name)->text(), Shown) << Name;
}

TEST_F(RecdFrmTest, AFieldWithTheFocusIsHighlighted) {
    Open();
    auto* Field = Part<QLineEdit>(Window.get(), "StopAftRecTxt");
    const QColor Plain = Field->palette().color(QPalette::Base);
    const QColor Highlight = Window->palette().color(QPalette::Highlight);
    ASSERT_NE(Plain, Highlight);
    Field->setFocus();
    EXPECT_EQ(Field->palette().color(QPalette::Base), Highlight);
    Part<QWidget>(Window.get(), "StopAftRecChk")->setFocus();
    EXPECT_EQ(Field->palette().color(QPalette::Base), Plain);
}

TEST_F(RecdFrmTest, TheStatusLineDescribesTheControls) {
    Open();
    const std::pair<const char*, const char*> Rows[] = {
        {"Start_Btn_0", "Starts fresh recording."},
        {"Start_Btn_1", "Pauses of Continues the recording."},
        {"Start_Btn_2", "Stops the recording."},
        {"Done_Btn", "Inserts recorded wave to main waveform, and closes the recording window."},
        {"Cancel_Btn", "Close ignoring the recording."},
        {"Dur_Lbl_0", "Actual recorded duration."},
        {"Dur_Lbl_1", "Total time passed after the recording was started. (pause time is also "
                      "counted)"},
        {"StopAftRecTxt", "Record stop time. Enter the time in seconds or Hours:Minutes:Seconds."},
        {"StopIfSilenTxt",
         "Silence stop time. Enter the time in seconds or Hours:Minutes:Seconds."},
        {"PauseIfSilenTxt",
         "Silence pause time. Enter the time in seconds or Hours:Minutes:Seconds."}};
    for (const auto& [Name, Text] : Rows) {
        QEnterEvent Enter({1, 1}, {1, 1}, {1, 1});
        QApplication::sendEvent(Part<QWidget>(Window.get(), Name), &Enter);
        EXPECT_EQ(Label("StatusLbl"), Text) << Name;
    }
    Part<QWidget>(Window.get(), "StopIfSilenTxt")->setFocus();
    EXPECT_EQ(Label("StatusLbl"), Rows[8].second) << "also by the focus";
}

TEST_F(RecdFrmTest, EveryControlHasANameForAScreenReader) {
    Open(2);
    for (const QWidget* Each : Window->findChildren<QWidget*>()) {
        const bool Speaks = qobject_cast<const QAbstractButton*>(Each) != nullptr ||
                            qobject_cast<const QGroupBox*>(Each) != nullptr;
        if (Each->objectName().isEmpty() || Each->objectName().startsWith("qt_") || Speaks ||
            Each->objectName() == "DoneBtnFrame")
            continue;
        EXPECT_FALSE(Each->accessibleName().isEmpty()) << qPrintable(Each->objectName());
    }
}

TEST_F(RecdFrmTest, EachMeterShowsItsChannelByTheFullScaleOfTheDepth) {
    Dx7IsThere = false; // the sound server takes no 8 bits
    Open(2, 8);
    // Half of full scale on the left, three quarters on the right.
    std::vector<std::byte> Half;
    for (int Frame = 0; Frame < 4410; ++Frame) {
        Half.push_back(std::byte{128 + 64});
        Half.push_back(std::byte{128 - 96});
    }
    EXPECT_TRUE(Api.Queue->Fill(Half.data(), Half.size()));
    Api.Notice->Raise();
    EXPECT_TRUE(QTest::qWaitFor([&] { return Api.Queue->Oldest() == nullptr; }));
    for (const auto& [Name, Percent] : {std::pair{"RecShowLPic", 50}, {"RecShowRPic", 75}}) {
        const QImage Picture = Part<QWidget>(Window.get(), Name)->grab().toImage();
        const int Edge = Picture.height() - Picture.height() * Percent / 100;
        EXPECT_EQ(Picture.pixelColor(10, Edge - 3), QColor(Qt::white)) << Name;
        EXPECT_EQ(Picture.pixelColor(10, Edge + 3), QColor(Qt::blue)) << Name;
    }
}

TEST_F(RecdFrmTest, MetersAreBlueAndRedAndTheMarkerFollowsTheSlider) {
    Open();
    const auto Colour = [this] {
        const auto* Meter = Part<QWidget>(Window.get(), "RecShowLPic");
        const QImage Picture = const_cast<QWidget*>(Meter)->grab().toImage();
        return Picture.pixelColor(Picture.width() / 2, Picture.height() - 4);
    };
    Deliver(1, 0x40);
    EXPECT_EQ(Colour(), QColor(0, 0, 255));
    Click("Start_Btn_0");
    Deliver(1, 0x41);
    EXPECT_EQ(Colour(), QColor(255, 0, 0));
    auto* Slider = Part<QSlider>(Window.get(), "SilenthresSlider");
    EXPECT_EQ(Slider->minimum(), 1);
    EXPECT_EQ(Slider->maximum(), 100);
    const auto* Arrow = Part<QLabel>(Window.get(), "SilenArrowImg");
    const auto* Meter = Part<QWidget>(Window.get(), "RecShowLPic");
    for (const int Value : {100, 50, 1}) {
        Slider->setValue(Value);
        EXPECT_EQ(Label("SilenthresLbl"), QString("Silence: %1 %").arg(Value));
        EXPECT_EQ(Arrow->y(), SilenArrowTop(static_cast<float>(Value) / 100, Meter->y(),
                                            Meter->height(), Arrow->height()));
    }
}

// ---- Engine and device

TEST_F(RecdFrmTest, ADeviceIsChangedAfterHalfASecondWithTheButtonsDisabled) {
    Open();
    auto* Devices = Part<QComboBox>(Window.get(), "DxDivLstCmb");
    Devices->setFocus();
    QTest::keyClick(Devices, Qt::Key_Down);
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "Please wait..");
    for (const char* Name : {"Start_Btn_0", "CaptureFrame", "SrcFrame", "DoneBtnFrame"})
        EXPECT_FALSE(Enabled(Name)) << Name;
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    const auto* Timer = Part<QTimer>(Window.get(), "DeviceChangeTimer");
    EXPECT_EQ(Timer->interval(), 500);
    EXPECT_TRUE(Timer->isActive());
    EXPECT_THAT(Dx7.Log, ElementsAre("open 0", "close"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return Label("Rec_Stat_Lbl") == "Ready to record"; }));
    EXPECT_THAT(Dx7.Log, ElementsAre("open 0", "close", "open 1"));
    for (const char* Name : {"Start_Btn_0", "CaptureFrame", "SrcFrame", "DoneBtnFrame"})
        EXPECT_TRUE(Enabled(Name)) << Name;
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    Window->close();
    EXPECT_EQ(IniGet("Record", "Dx7Div", ""), "2");
    EXPECT_EQ(IniGet("Record", "ApiDiv", ""), "0");
}

TEST_F(RecdFrmTest, TheFocusComesBackAfterADeviceWasChanged) {
    Open();
    auto* Devices = Part<QComboBox>(Window.get(), "DxDivLstCmb");
    Devices->setFocus();
    QTest::keyClick(Devices, Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Label("Rec_Stat_Lbl") == "Ready to record"; }));
    EXPECT_TRUE(Devices->hasFocus());
    EXPECT_EQ(Devices->currentText(), "second");
    Key(Qt::Key_S, RecRecording);
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Start_Btn_2")->hasFocus())
        << "the list cannot be used now";
}

TEST_F(RecdFrmTest, AWishForAMissingSoundServerIsTold) {
    Dx7IsThere = false;
    Open();
    EXPECT_TRUE(Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_1")->isChecked());
    Dx7IsThere = true; // that is looked at once, when the window opens
    Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_0")->click();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return Label("Rec_Stat_Lbl") == "Need DirectX7 to use this drive"; }));
    EXPECT_FALSE(Enabled("Start_Btn_0"));
    EXPECT_TRUE(Enabled("Cancel_Btn"));
}

TEST_F(RecdFrmTest, ClosingWhileItWaitsGivesThePointerBack) {
    Open();
    Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_1")->click();
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    Window->close();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_THAT(Api.Log, IsEmpty());
}

TEST_F(RecdFrmTest, TheOtherEngineIsTakenAndItsFormatsAreShown) {
    Open();
    Api.Bits = 0;
    Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_1")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Label("Rec_Stat_Lbl") == "Ready to record"; }));
    EXPECT_EQ(Session->Driver.RecEngine, RecEngineApi);
    EXPECT_EQ(Label("FmtSup_Lbl"), "Format not supported");
    EXPECT_EQ(Part<QLabel>(Window.get(), "FmtSup_Lbl")->palette().color(QPalette::WindowText),
              QColor(Qt::red));
    Click("ShowFmtBtn");
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Supported formats:\n[Failed to show]"));
    Click("Start_Btn_0");
    Deliver(4);
    EXPECT_EQ(Session->Machine.RecordedFrames(), 4 * 4410);
}

TEST_F(RecdFrmTest, ARefusedFormatLeavesTheWindowUp) {
    Open(1, 8, 8000);
    EXPECT_EQ(Messages.TakeTexts().size(), 1U);
    EXPECT_FALSE(Enabled("Start_Btn_0"));
    EXPECT_TRUE(Enabled("Cancel_Btn"));
    EXPECT_TRUE(Enabled("CaptureFrame"));
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Dx7OrApiOpn_0")->hasFocus());
}

TEST_F(RecdFrmTest, WithoutADeviceTheFocusIsAtTheEngineThatWasTried) {
    Dx7IsThere = false;
    Api.Names.clear();
    Open();
    EXPECT_TRUE(Part<QWidget>(Window.get(), "Dx7OrApiOpn_1")->hasFocus());
}

TEST_F(RecdFrmTest, ALostDeviceIsToldAndTheTakeCanBeKept) {
    Open();
    Click("Start_Btn_0");
    Deliver(6, 0x33);
    Dx7.LostNow = true;
    Dx7.Notice->Raise();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Enabled("Start_Btn_2"); }));
    EXPECT_EQ(Label("Rec_Stat_Lbl"), "The recording device is gone");
    EXPECT_FALSE(Enabled("Start_Btn_0"));
    Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_0")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Enabled("Start_Btn_0"); })) << "tried again";
    Click("Done_Btn");
    EXPECT_EQ(WaveStore->WavWaveINos, 2000 + 6 * 4410);
}

TEST_F(RecdFrmTest, AFullDiskIsToldAndTheTakeCanBeKept) {
    Open();
    Click("Start_Btn_0");
    Deliver(4);
    {
        const FullDisk Disk;
        Disk.Fill();
        Deliver(1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !Messages.Texts().empty(); }));
        EXPECT_EQ(Session->Machine.RecState(), RecReady);
        Click("Done_Btn");
        Disk.Empty();
    }
    EXPECT_EQ(Messages.Texts().size(), 1U);
    EXPECT_EQ(WaveStore->WavWaveINos, 2000 + 4 * 4410);
}

TEST_F(RecdFrmTest, AFullDiskIsToldAtStartAndAtStop) {
    Open();
    const FullDisk Disk;
    Disk.Fill();
    Click("Start_Btn_0");
    EXPECT_EQ(Messages.TakeTexts().size(), 1U);
    EXPECT_TRUE(Enabled("Start_Btn_0"));
    Disk.Empty();
    Click("Start_Btn_0");
    Dx7.Deliver(3);
    Disk.Fill();
    Click("Start_Btn_2");
    Disk.Empty();
    EXPECT_EQ(Messages.TakeTexts().size(), 1U);
    EXPECT_TRUE(Enabled("Start_Btn_0"));
}

TEST_F(RecdFrmTest, ATakeThatDoesNotGoInStaysInTheWindow) {
    Open();
    Click("Start_Btn_0");
    Deliver(4);
    Click("Start_Btn_2");
    const std::int32_t Place = std::exchange(Session->InsertPos, 2147483647);
    Click("Done_Btn");
    EXPECT_EQ(Messages.TakeTexts().size(), 1U);
    EXPECT_TRUE(Window->isVisible());
    EXPECT_FALSE(Window->DoneClicked);
    EXPECT_EQ(Dx7.OpenNow, 1);
    Session->InsertPos = Place;
    Click("Done_Btn");
    EXPECT_EQ(WaveStore->WavWaveINos, 2000 + 4 * 4410);
}

TEST_F(RecdFrmTest, ATakeStopsWhereTheDocumentHasNoPlaceLeft) {
    Open(1, 16, 44100, 2147483647 - 10000);
    Click("Start_Btn_0");
    Deliver(2);
    EXPECT_EQ(Session->Machine.RecState(), RecRecording);
    Deliver(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Messages.Texts().empty(); }));
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("The recording has become as long as a waveform can be.\nThe recording "
                            "has stopped. Done keeps what was recorded until then."));
    Click("Done_Btn");
    EXPECT_EQ(WaveStore->WavWaveINos, 2147483647 - 10000 + 2 * 4410);
}

TEST_F(RecdFrmTest, TheDevicesOfTheLastTimeAreOpened) {
    IniPut("Record", "Dx7Div", "2");
    IniPut("Record", "ApiDiv", "2");
    for (const bool WithServer : {true, false}) {
        Dx7IsThere = WithServer;
        WaveStore = std::make_unique<FileMemoClass>();
        Open();
        EXPECT_EQ(Part<QComboBox>(Window.get(), "DxDivLstCmb")->currentText(), "second");
        EXPECT_EQ((WithServer ? Dx7 : Api).Log.back(), "open 1");
        Window->close();
    }
}

TEST_F(RecdFrmTest, EachEngineHasItsTimer) {
    for (const bool WithServer : {true, false}) {
        Dx7IsThere = WithServer;
        WaveStore = std::make_unique<FileMemoClass>();
        Open();
        QSignalSpy OfServer(Part<QTimer>(Window.get(), "RecDx7Timer"), &QTimer::timeout);
        QSignalSpy OfPlain(Part<QTimer>(Window.get(), "RecApiTimer"), &QTimer::timeout);
        Deliver(1);
        EXPECT_EQ(OfServer.isEmpty(), !WithServer);
        EXPECT_EQ(OfPlain.isEmpty(), WithServer);
        Window->close();
    }
}

TEST_F(RecdFrmTest, APauseIsLookedAtAfterTheBlocksThatCameBeforeIt) {
    Open();
    Click("Start_Btn_0");
    Dx7.Deliver(20, 0x21);
    Click("Start_Btn_1");
    EXPECT_EQ(Session->Machine.RecordedFrames(), 20 * 4410);
    Dx7.Deliver(10, 0x22);
    Click("Start_Btn_1");
    EXPECT_EQ(Session->Machine.RecordedFrames(), 20 * 4410) << "what came in the pause is not kept";
}

TEST_F(RecdFrmTest, AStopIsLookedAtAfterTheBlocksThatCameBeforeIt) {
    Open();
    Click("Start_Btn_0");
    Dx7.Deliver(30, 0x21); // the window was busy for three seconds
    Click("Start_Btn_2");
    EXPECT_EQ(Session->Machine.RecordedFrames(), 30 * 4410);
    Dx7.Deliver(5, 0x22);
    Click("Start_Btn_0");
    Deliver(1, 0x23);
    EXPECT_EQ(Session->Machine.RecordedFrames(), 4410) << "what came before Start is not kept";
}

TEST_F(RecdFrmTest, ADeviceThatGivesNothingIsTold) {
    Open();
    const QString Nothing = "No sound comes from the device";
    EXPECT_EQ(Label("LossLbl"), "") << "it has just been opened";
    EXPECT_TRUE(QTest::qWaitFor([&] { return Label("LossLbl") == Nothing; }));
    Part<QRadioButton>(Window.get(), "Dx7OrApiOpn_0")->click();
    EXPECT_EQ(Label("LossLbl"), "");
    ASSERT_TRUE(QTest::qWaitFor([&] { return Enabled("Start_Btn_0"); }));
    EXPECT_EQ(Label("LossLbl"), "") << "and again";
    Click("Start_Btn_0");
    Deliver(1);
    EXPECT_EQ(Label("LossLbl"), "");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Label("LossLbl") == Nothing; }));
    Deliver(1);
    EXPECT_EQ(Label("LossLbl"), "");
    Dx7.Queue->NoteLoss();
    Deliver(1);
    EXPECT_EQ(Label("LossLbl"), "Sound was lost at 00.20");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Label("LossLbl") == Nothing; }));
    Deliver(1);
    EXPECT_EQ(Label("LossLbl"), "Sound was lost at 00.20") << "that still holds";
    Dx7.LostNow = true;
    Dx7.Notice->Raise();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !Enabled("Start_Btn_2"); }));
    EXPECT_NE(Label("LossLbl"), Nothing) << "from no device nothing is expected";
}

TEST_F(RecdFrmTest, AWindowThatWasBusyFindsItsSoundBeforeItComplains) {
    Open();
    Deliver(1);
    Dx7.Deliver(3);
    QThread::msleep(1100);
    QSignalSpy Fired(Part<QTimer>(Window.get(), "NoSoundTimer"), &QTimer::timeout);
    ASSERT_TRUE(Fired.wait());
    EXPECT_EQ(Label("LossLbl"), "");
}

/// How well a colour is read on another one, by the formula of the Web Content Accessibility
/// Guidelines, 1 to 21; 4.5 is enough.
double Contrast(const QColor& One, const QColor& Other) {
    const auto Luminance = [](const QColor& Of) {
        const auto Linear = [](double Part) {
            return Part <= 0.03928 ? Part / 12.92 : std::pow((Part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * Linear(Of.redF()) + 0.7152 * Linear(Of.greenF()) +
               0.0722 * Linear(Of.blueF());
    };
    const auto [Darker, Lighter] = std::minmax({Luminance(One), Luminance(Other)});
    return (Lighter + 0.05) / (Darker + 0.05);
}

TEST_F(RecdFrmTest, ColouredWordsCanBeReadOnADarkDesktop) {
    const QPalette Ordinary = QApplication::palette();
    const QColor Ground(42, 46, 50);
    QPalette Dark(Ground);
    Dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(Dark);
    Open();
    for (const char* Name : {"FmtSup_Lbl", "LossLbl"}) {
        const QColor Words =
            Part<QLabel>(Window.get(), Name)->palette().color(QPalette::WindowText);
        EXPECT_GE(Contrast(Words, Ground), 4.5) << Name;
    }
    Window.reset();
    QApplication::setPalette(Ordinary);
}

TEST_F(RecdFrmTest, TheRingShowsFromTheStartWhatReturnPresses) {
    Open();
    const auto Picture = [this] { return Part<QWidget>(Window.get(), "Start_Btn_0")->grab(); };
    const QImage WithRing = Picture().toImage();
    Part<QWidget>(Window.get(), "SilenthresSlider")->setFocus();
    EXPECT_NE(Picture().toImage(), WithRing);
}

TEST_F(RecdFrmTest, TheTimersOfTheEnginesFireOnceAfterTenMilliseconds) {
    Open();
    for (const char* Name : {"RecDx7Timer", "RecApiTimer"}) {
        EXPECT_EQ(Part<QTimer>(Window.get(), Name)->interval(), 10) << Name;
        EXPECT_TRUE(Part<QTimer>(Window.get(), Name)->isSingleShot()) << Name;
    }
}

TEST_F(RecdFrmTest, WithoutAPlaceTheCommandEnds) {
    SelStart = SelEnd = 0;
    RecordSession Asked({Dx7, Api, [] { return true; }});
    EXPECT_FALSE(Asked.InitilizeForm()) << "nobody answers the question";
}

TEST_F(RecdFrmTest, TheHelpKnowsItsControls) {
    Open(2);
    int Seen = 0;
    for (const HelpPlace& Place : HelpPlaces()) {
        if (Place.Number < 372 || Place.Number > 376)
            continue;
        ++Seen;
        const QString Name = QLatin1String(Place.Control);
        EXPECT_TRUE(Window->findChild<QWidget*>(Name) != nullptr ||
                    Window->findChild<QWidget*>(Name + "_0") != nullptr)
            << Place.Control;
    }
    EXPECT_GT(Seen, 10);
}

TEST_F(RecdFrmTest, ItFitsASmallScreen) {
    Open(2);
    EXPECT_LE(Window->frameGeometry().width(), 1000);
    EXPECT_LE(Window->frameGeometry().height(), 640);
}

} // namespace
} // namespace quoril::test

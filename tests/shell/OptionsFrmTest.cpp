#include "shell/OptionsFrm.h"

#include "base/PlayState.h"
#include "settings/STD1.h"
#include "shell/EditorFixture.h"
#include "shell/WithDialog.h"

#include <QAbstractButton>
#include <QColorDialog>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

namespace quoril {
namespace {

namespace fs = std::filesystem;
using test::PressByKey;
using test::WithDialog;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class OptionsWindow : public test::EditorFixture {
  protected:
    OptionsWindow() { Messages = std::make_unique<test::ScriptedMessages>(); }
    template <class Control>
    Control* Find(const char* Name) {
        auto* Found = Window.findChild<Control*>(QString::fromLatin1(Name));
        EXPECT_NE(Found, nullptr) << Name;
        return Found;
    }
    void Press(const char* Name) { Find<QAbstractButton>(Name)->click(); }

    OptionsFrm& MakeWindow() {
        TmpDir0 = Temp();
        return Made.emplace(OptionsEffects{}, nullptr);
    }

    std::optional<OptionsFrm> Made;
    OptionsFrm& Window = MakeWindow();
};

TEST_F(OptionsWindow, HasItsFramesAndTheirWords) {
    EXPECT_EQ(Find<QTabWidget>("TabStrip1")->count(), 5);
    for (int Index = 0; Index < 5; ++Index)
        EXPECT_NE(Window.findChild<QWidget*>(QStringLiteral("TabFrame_%1").arg(Index)), nullptr);
    EXPECT_EQ(Find<QAbstractButton>("ColorBtn")->text().remove('&'), "Click here to change");
    EXPECT_EQ(Find<QAbstractButton>("ColorPresetBtn_0")->text().remove('&'), "Current");
    EXPECT_EQ(Find<QAbstractButton>("ColorPresetBtn_1")->text().remove('&'), "Default");
    EXPECT_EQ(Find<QAbstractButton>("ColorPresetBtn_2")->text().remove('&'), "Default all");
    EXPECT_EQ(Find<QAbstractButton>("Guide_Option_0")->text().remove('&'),
              "I am normal (Show me only that i don't know)");
    EXPECT_EQ(Find<QAbstractButton>("Guide_Option_1")->text().remove('&'),
              "I am experienced / dont like that (Don't show me any guide)");
    EXPECT_EQ(Find<QAbstractButton>("Guide_Option_2")->text().remove('&'),
              "I am new user / learning (Show me all guides once again)");
    EXPECT_EQ(Find<QAbstractButton>("SoundDriverBtn_0")->text().remove('&'), "Check DirectX7");
    EXPECT_EQ(Find<QAbstractButton>("SoundDriverBtn_1")->text().remove('&'), "Put Off");
    EXPECT_EQ(Find<QAbstractButton>("SoundDriverBtn_2")->text().remove('&'), "Put On");
    QStringList Words;
    for (const QLabel* Label : Window.findChildren<QLabel*>())
        Words << Label->text().remove('&');
    for (const char* Note :
         {"Tempo will work if DirectX is used.", "Path for temporary files:",
          "If you have multiple hard disks, choose a path in a fastest hard disk that has largest "
          "free space)",
          "Status: Green = Using DirectX, Gray = Using WinApi, Red = Off / Fail"})
        EXPECT_TRUE(Words.contains(QString::fromLatin1(Note))) << Note;
}

TEST_F(OptionsWindow, ListsColorsAndStyles) {
    auto* List = Find<QListWidget>("ColorNmLst");
    ASSERT_EQ(List->count(), 13);
    EXPECT_EQ(List->item(0)->text(), "Waveform Bars");
    EXPECT_EQ(List->item(12)->text(), "Play Position Indicator");
    auto* Styles = Find<QComboBox>("DispStylCmb");
    ASSERT_EQ(Styles->count(), 5);
    EXPECT_EQ(Styles->currentText(), "Bar and Line Graph");
}

TEST_F(OptionsWindow, EveryControlHasAnAccessibleNameOrWordsOfItsOwn) {
    for (const QWidget* Control : Window.findChildren<QWidget*>()) {
        if (Control->focusPolicy() == Qt::NoFocus || Control->objectName().isEmpty() ||
            Control->objectName().startsWith("qt_"))
            continue;
        const auto* Button = qobject_cast<const QAbstractButton*>(Control);
        EXPECT_TRUE(!Control->accessibleName().isEmpty() ||
                    (Button != nullptr && !Button->text().isEmpty()))
            << qPrintable(Control->objectName());
    }
}

TEST_F(OptionsWindow, TabComesToTheGuideOptionThatIsChosen) {
    auto* Chosen = Find<QAbstractButton>("Guide_Option_1");
    Chosen->setChecked(true);
    EXPECT_TRUE((Chosen->focusPolicy() & Qt::TabFocus) != 0);
    for (const char* Other : {"Guide_Option_0", "Guide_Option_2"})
        EXPECT_TRUE((Find<QAbstractButton>(Other)->focusPolicy() & Qt::TabFocus) == 0) << Other;
}

TEST_F(OptionsWindow, ReturnPressesTheButtonThatHasTheFocus) {
    const bool Loop = LoopOn;
    Window.show();
    Find<QAbstractButton>("LoopPlay_Chk")->setChecked(!Loop);
    PressByKey(&Window, "CancelBtn");
    EXPECT_EQ(Window.result(), QDialog::Rejected);
    EXPECT_EQ(LoopOn, Loop);
}

TEST_F(OptionsWindow, CancelLeavesSettingsAndColorsUnchanged) {
    const auto Colors = WaveColors;
    WaveColors[3] = 5;
    Press("ColorPresetBtn_2");
    Find<QComboBox>("DispStylCmb")->setCurrentIndex(0);
    Find<QDoubleSpinBox>("TempoTxt_1")->setValue(50);
    Find<QAbstractButton>("LoopPlay_Chk")->setChecked(true);
    Find<QLineEdit>("TempPathTxt")->setText(QString::fromStdString(Music()));
    Press("CancelBtn");
    EXPECT_EQ(Window.result(), QDialog::Rejected);
    EXPECT_EQ(WaveColors[3], 5);
    EXPECT_EQ(WaveFormDrawStyle, 3);
    EXPECT_EQ(TempoFor, 1.0F);
    EXPECT_FALSE(LoopOn);
    EXPECT_EQ(IniGet("Color", "WaveFormDrawStyle", "none"), "none");
    EXPECT_EQ(IniGet("General", "TmpDir0", "none"), "none");
    WaveColors = Colors;
}

TEST_F(OptionsWindow, OkPutsTheFieldsInForce) {
    Find<QComboBox>("DispStylCmb")->setCurrentIndex(0);
    Find<QDoubleSpinBox>("TempoTxt_1")->setValue(50);
    Find<QDoubleSpinBox>("TempoTxt_2")->setValue(125);
    Find<QAbstractButton>("LoopPlay_Chk")->setChecked(true);
    Find<QAbstractButton>("QuickPlay_Chk")->setChecked(false);
    Find<QAbstractButton>("Guide_Option_1")->setChecked(true);
    Press("OkBtn");
    EXPECT_EQ(Window.result(), QDialog::Accepted);
    EXPECT_EQ(WaveFormDrawStyle, 1);
    EXPECT_EQ(TempoFor, 0.5F);
    EXPECT_EQ(TempoRev, 1.25F);
    EXPECT_TRUE(LoopOn);
    EXPECT_FALSE(QuickPlay);
    EXPECT_FALSE(ShowNewUserGuide);
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

TEST_F(OptionsWindow, TheTempoFieldsTakeOnlyNumbersInTheirRange) {
    for (const char* Name : {"TempoTxt_1", "TempoTxt_2"}) {
        auto* Field = Find<QDoubleSpinBox>(Name);
        EXPECT_EQ(Field->text(), "100.0");
        for (const char* Typed : {"99999999999", "-5", "abc", "1e9", "", "0"}) {
            Field->selectAll();
            QTest::keyClicks(Field, QString::fromUtf8(Typed));
            Field->interpretText();
            EXPECT_GE(Field->value(), 10) << Typed;
            EXPECT_LE(Field->value(), 200) << Typed;
        }
    }
}

TEST_F(OptionsWindow, ATempoBeyondItsRangeBecomesTheNearerEnd) {
    const std::pair<const char*, double> Rows[] = {{"99999", 200},  {"201", 200}, {"1000.5", 200},
                                                   {"3", 10},       {"0", 10},    {"99", 99},
                                                   {"150.5", 150.5}};
    auto* Field = Find<QDoubleSpinBox>("TempoTxt_1");
    for (const auto& [Typed, Value] : Rows) {
        Field->selectAll();
        QTest::keyClicks(Field, QString::fromUtf8(Typed));
        EXPECT_EQ(Field->cleanText(), Typed);
        Field->interpretText(); // as when the field is left
        EXPECT_EQ(Field->value(), Value) << Typed;
        EXPECT_EQ(Field->text().toDouble(), Value) << Typed;
    }
    // And when OK is pressed by its key.
    Field->selectAll();
    QTest::keyClicks(Field, "99999");
    Window.accept();
    EXPECT_EQ(TempoFor, 2.0F);
}

TEST_F(OptionsWindow, DefaultSetsTheChosenEntryAlone) {
    WaveColors[2] = 1;
    WaveColors[4] = 2;
    OptionsFrm Changed({}, nullptr);
    Changed.findChild<QListWidget*>("ColorNmLst")->setCurrentRow(4);
    Changed.findChild<QAbstractButton*>("ColorPresetBtn_1")->click();
    Changed.accept();
    EXPECT_EQ(WaveColors[2], 1);
    EXPECT_EQ(WaveColors[4], WaveColorTable[4].Default);
}

TEST_F(OptionsWindow, DefaultAllSetsThemAllAndCurrentGoesBack) {
    WaveColors.fill(7);
    OptionsFrm Changed({}, nullptr);
    Changed.findChild<QAbstractButton*>("ColorPresetBtn_2")->click();
    Changed.findChild<QAbstractButton*>("ColorPresetBtn_0")->click();
    Changed.accept();
    EXPECT_EQ(WaveColors[0], 7);
    OptionsFrm Again({}, nullptr);
    Again.findChild<QAbstractButton*>("ColorPresetBtn_2")->click();
    Again.accept();
    for (std::size_t Index = 0; Index < WaveColorCount; ++Index)
        EXPECT_EQ(WaveColors[Index], WaveColorTable[Index].Default);
}

TEST_F(OptionsWindow, AColorIsChosenInItsDialog) {
    Window.show();
    Find<QListWidget>("ColorNmLst")->setCurrentRow(1);
    {
        const WithDialog Act([](QWidget* Dialog) {
            auto* Colors = qobject_cast<QColorDialog*>(Dialog);
            ASSERT_NE(Colors, nullptr);
            EXPECT_EQ(Colors->currentColor(), QColor(255, 255, 0));
            Colors->setCurrentColor(QColor(1, 2, 3));
            Colors->accept();
        });
        Press("ColorBtn");
    }
    Press("OkBtn");
    EXPECT_EQ(WaveColors[1], 0x030201);
    EXPECT_EQ(IniGet("Color", "WaveFormBetweenColor", ""), "197121");
}

TEST_F(OptionsWindow, APathThatDoesNotExistKeepsTheWindowOpenWithTheOldPath) {
    Window.show();
    Find<QLineEdit>("TempPathTxt")->setText("/no/such/folder");
    Press("OkBtn");
    EXPECT_TRUE(Window.isVisible());
    EXPECT_EQ(Find<QLineEdit>("TempPathTxt")->text().toStdString(), TmpDir0);
    EXPECT_THAT(Messages->Texts(),
                ElementsAre("New path for temporary files\n/no/such/folder\ndoes not exists"));
    Press("OkBtn");
    EXPECT_FALSE(Window.isVisible());
}

TEST_F(OptionsWindow, APathThatIsNoTextIsKeptAsItIs) {
    TmpDir0 = Folder / "gr\xFC\xDF";
    fs::create_directory(TmpDir0);
    OptionsFrm Changed({}, nullptr);
    Changed.accept();
    EXPECT_EQ(Changed.result(), QDialog::Accepted);
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

TEST_F(OptionsWindow, TheSoundDriverIsSwitchedWhereThereIsOne) {
    EXPECT_FALSE(Find<QAbstractButton>("SoundDriverBtn_1")->isEnabled());
    EXPECT_FALSE(Find<QAbstractButton>("SoundDriverBtn_2")->isEnabled());
    std::vector<bool> Switched;
    OptionsEffects Effects;
    Effects.SoundDriverSwitch = [&Switched](bool On) {
        Switched.push_back(On);
        SoundDriverState = On ? 1 : 0;
    };
    OptionsFrm WithDriver(Effects, nullptr);
    const auto* Lamp = WithDriver.findChild<QWidget*>("DSoundOnImg");
    EXPECT_EQ(Lamp->accessibleName(), "Off or failed");
    WithDriver.findChild<QAbstractButton*>("SoundDriverBtn_2")->click();
    EXPECT_EQ(Lamp->accessibleName(), "Using DirectX");
    WithDriver.findChild<QAbstractButton*>("SoundDriverBtn_1")->click();
    EXPECT_EQ(Lamp->accessibleName(), "Off or failed");
    EXPECT_THAT(Switched, ElementsAre(true, false));
}

TEST_F(OptionsWindow, TheLampShowsTheState) {
    for (const auto& [State, Color] : std::vector<std::pair<std::int32_t, QColor>>{
             {0, QColor(220, 0, 0)}, {1, QColor(0, 190, 0)}, {2, QColor(150, 150, 150)}}) {
        SoundDriverState = State;
        OptionsFrm Shown({}, nullptr);
        const QImage Lamp = Shown.findChild<QWidget*>("DSoundOnImg")->grab().toImage();
        EXPECT_EQ(Lamp.pixelColor(Lamp.rect().center()), Color) << State;
    }
    SoundDriverState = 0;
}

TEST_F(OptionsWindow, TheCheckTellsItsResult) {
    Press("SoundDriverBtn_0");
    EXPECT_THAT(Messages->Texts(),
                ElementsAre("This software requires DirectX7 or higher to run.\n"
                            "Please install DirectX7 (or higher) before running it"));
}

TEST_F(OptionsWindow, OpensFromTheMenuAndTheViewTakesItsColors) {
    Start();
    const WithDialog Act([](QWidget* Dialog) {
        EXPECT_EQ(Dialog->objectName(), "OptionsFrm");
        Dialog->findChild<QDoubleSpinBox*>("TempoTxt_1")->setValue(40);
        Dialog->findChild<QAbstractButton*>("OkBtn")->click();
    });
    Menu("Options_Mnu");
    EXPECT_EQ(EditorFixture::Window().findChild<QLabel*>("SpeedDispLbl_1")->text(), "40%");
}

} // namespace
} // namespace quoril

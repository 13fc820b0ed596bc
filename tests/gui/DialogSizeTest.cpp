// Every dialog on a screen of 800 x 600: all of it can be seen and reached, by the keyboard, too.
#include "base/ModalWindow.h"
#include "base/QtText.h"
#include "bookmarks/BookmarkEditMod.h"
#include "bookmarks/BookmarkRec.h"
#include "edit/CopyPasteCommands.h"
#include "shell/BokMrkChosFrm.h"
#include "shell/BokMrkEdtFrm.h"
#include "shell/BokMrkFrm.h"
#include "shell/BokMrkSavFrm.h"
#include "shell/CheckDx7Frm.h"
#include "shell/ChkDskSpcFrm.h"
#include "shell/ChnMixFrm.h"
#include "shell/CompMonoFrm.h"
#include "shell/CopiedFrm.h"
#include "shell/DelSilenFrm.h"
#include "shell/EchoFrm.h"
#include "shell/EncChoseAppFrm.h"
#include "shell/EncRunFrm.h"
#include "shell/EntFrqFrm.h"
#include "shell/EntStrchFrm.h"
#include "shell/FileDialogWindows.h"
#include "shell/HelpViewerFrm.h"
#include "shell/LapFrm.h"
#include "shell/MessageBoxes.h"
#include "shell/Mp3ParamFrm.h"
#include "shell/OptionsFrm.h"
#include "shell/RawLoadFrm.h"
#include "shell/UndoClearFrm.h"
#include "shell/UserGuideFrm.h"
#include "shell/WithDialog.h"
#include "shell/WmaParamFrm.h"
#include "storage/FileMemoClass.h"
#include "support/TestSession.h"
#include "view/EntDurFrm.h"
#include "view/SelConfFrm.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <map>
#include <memory>

namespace quoril::test {
namespace {

/// What the frame of the window manager and a panel of the desktop leave of 800 x 600.
constexpr QSize Room(788, 550);
const std::string LongWord(400, 'w');

class DialogSizeTest : public ::testing::Test {
  protected:
    DialogSizeTest() {
        Bookmarks.assign(1, {});
        WaveStore = std::make_unique<FileMemoClass>();
    }
    ~DialogSizeTest() override { WaveStore.reset(); }

    static void ExpectFits(const QWidget* Window) {
        SCOPED_TRACE(Window->objectName().toStdString());
        EXPECT_LE(Window->width(), Room.width());
        EXPECT_LE(Window->height(), Room.height());
        for (const QWidget* Each : Window->findChildren<QWidget*>()) {
            const auto* Label = qobject_cast<const QLabel*>(Each);
            const bool Ours = Label != nullptr || qobject_cast<const QAbstractButton*>(Each) ||
                              qobject_cast<const QLineEdit*>(Each);
            if (!Ours || !Each->isVisible() || Each->objectName().startsWith("qt_"))
                continue;
            SCOPED_TRACE(Each->objectName().toStdString());
            EXPECT_TRUE(
                Window->rect().contains(QRect(Each->mapTo(Window, QPoint()), Each->size())));
            EXPECT_GE(Each->width(), Each->minimumSizeHint().width());
            EXPECT_GE(Each->height(), Each->hasHeightForWidth()
                                          ? Each->heightForWidth(Each->width())
                                          : Each->minimumSizeHint().height());
        }
    }
    static void NoteKey(std::map<char, QString>& Taken, const QString& Text) {
        const QKeySequence Key = QKeySequence::mnemonic(Text);
        if (Key.isEmpty())
            return;
        const char Letter = char(Key[0].key());
        EXPECT_EQ(Taken.count(Letter), 0U)
            << Text.toStdString() << " and " << Taken[Letter].toStdString();
        Taken[Letter] = Text;
    }
    /// Each button has an access key, and no two things have one.
    static void ExpectKeys(const QWidget* Window) {
        SCOPED_TRACE(Window->objectName().toStdString());
        std::map<char, QString> Taken;
        for (const QTabWidget* Tabs : Window->findChildren<QTabWidget*>())
            for (int Page = 0; Page < Tabs->count(); ++Page)
                NoteKey(Taken, Tabs->tabText(Page));
        for (const QAbstractButton* Button : Window->findChildren<QAbstractButton*>()) {
            if (!Button->isVisible() || Button->text().isEmpty())
                continue;
            if (qobject_cast<const QRadioButton*>(Button) == nullptr) {
                EXPECT_TRUE(Button->text().contains(QLatin1Char('&')))
                    << Button->text().toStdString();
            }
            NoteKey(Taken, Button->text());
        }
        for (const QLabel* Label : Window->findChildren<QLabel*>())
            if (Label->isVisible() && Label->buddy() != nullptr)
                NoteKey(Taken, Label->text());
    }
    static void Expect(QDialog& Dialog) {
        const WithDialog Act([](QWidget* Window) {
            ExpectFits(Window);
            ExpectKeys(Window);
            Window->close();
        });
        RunModal(Dialog);
    }

    const TestSession Session;
};

TEST_F(DialogSizeTest, TheOptionsFitOnEachPage) {
    OptionsFrm Dialog({[] {}, [] {}, [](bool) {}}, nullptr);
    for (int Page = 0; Page < 5; ++Page) {
        SCOPED_TRACE(Page);
        Dialog.findChild<QTabWidget*>("TabStrip1")->setCurrentIndex(Page);
        Expect(Dialog);
    }
}

TEST_F(DialogSizeTest, TheWindowsOfBookmarksFitWhateverTheNames) {
    const BookmarkRec Long{LongWord, LongWord + " " + LongWord, BokRange, 1, 2147483647};
    Bookmarks.push_back(Long);
    BookmarkEditing Editing(0, Long, 44100);
    BokMrkEdtFrm Edit(Editing);
    Expect(Edit);
    FileDialogWindows Files;
    for (const BokMrkModes Mode : {BokMrkManage, BokMrkChoose}) {
        BokMrkFrm List(Mode, Files);
        List.findChild<QListWidget*>("BookMarkLst")->setCurrentRow(0);
        Expect(List);
    }
    BokMrkChosFrm Choice("There are 100000 bookmarks in the file");
    Expect(Choice);
}

TEST_F(DialogSizeTest, TheWindowsOfFileTypesFit) {
    RawLoadFrm Raw({0, 1, 3, 123456, 0});
    Expect(Raw);
    FileDialogWindows Files;
    for (const std::int32_t Which : {EncoderMp3, EncoderWma}) {
        ChooseEncoder(Which, "/" + LongWord);
        EncChoseAppFrm Chose(Which, Files);
        Expect(Chose);
    }
    Mp3ParamFrm Mp3({320, 3, 44100});
    Expect(Mp3);
    WmaParamFrm Wma({128000, 2, 44100});
    Expect(Wma);
    EncRunFrm Run("/" + LongWord, [] { return false; });
    Expect(Run);
    BokMrkSaving Saving;
    Saving.Names.assign(500, LongWord);
    Saving.Checked.assign(500, true);
    Saving.Prefix = "/" + LongWord;
    BokMrkSavFrm Save(Saving, Files);
    Expect(Save);
}

TEST_F(DialogSizeTest, TheWindowsOfEditingFit) {
    LapFrm Lap;
    Expect(Lap);
    ChnMixFrm Mix({});
    Expect(Mix);
    CompMonoFrm Mono;
    Expect(Mono);
    CopiedFrm Copied({"Samples: 2147483647, Duration: 596523:14:07.00", "In the file " + LongWord,
                      std::string(300, 'x') + " note of some words"},
                     nullptr);
    Expect(Copied);
    EntDurFrm Duration;
    EntDurRequest Request;
    Request.Prompt = "Enter new value:";
    Request.CurSizeDur = Request.EnterDur = "596523:14:07.00";
    Request.CurSizeSmp = Request.EnterSmp = "2147483647";
    Duration.Fill(Request);
    Expect(Duration);
    for (const auto& [Need, Available] : {std::pair{1, 0}, {1, 2}, {2, 0}, {2, 1}, {3, 0}}) {
        SelConfFrm Confirm;
        Confirm.SelectNeed = Need;
        Confirm.SelectAvailable = Available;
        Confirm.UpdateForm();
        Expect(Confirm);
    }
}

TEST_F(DialogSizeTest, TheWindowsOfMakingAndCleaningFitWithAllTheirErrors) {
    EntFrqFrm Frequency({});
    Expect(Frequency);
    for (const std::int16_t Style : {std::int16_t{1}, std::int16_t{2}}) {
        DelSilenFrm Silence({-1, -1, Style, -1, -1, -1, -1});
        for (QLineEdit* Field : Silence.findChildren<QLineEdit*>())
            Field->setText(QStringLiteral("-1"));
        Expect(Silence);
    }
}

TEST_F(DialogSizeTest, TheWindowsOfEffectsFit) {
    EchoParamsRec Params;
    EchoFrm Echo(Params);
    Expect(Echo);
    for (const std::int32_t Index : {0, 1}) {
        EntStrchFrm Stretch(Index, {"83.33333333333333", "1000", true, false});
        Expect(Stretch);
    }
}

TEST_F(DialogSizeTest, TheWindowsOfTheDiskFit) {
    ChkDskSpcFrm Disk;
    Disk.Fill({2147483647, 2147483647, 4294967294, 0}, [] { return 0; });
    Expect(Disk);
    UndoClearFrm Undo(nullptr);
    Undo.Fill(std::vector<std::string>(500, LongWord));
    Expect(Undo);
}

TEST_F(DialogSizeTest, TheWindowsOfHelpFit) {
    UserGuideFrm Tip({LongWord + " and some more words", false, true}, nullptr);
    Expect(Tip);
    CheckDx7Frm Check(nullptr);
    Expect(Check);
    HelpViewerFrm Help;
    Help.show();
    QApplication::processEvents();
    EXPECT_LE(Help.width(), Room.width());
    EXPECT_LE(Help.height(), Room.height());
}

TEST_F(DialogSizeTest, BoxesFitWhateverTheyAreToSay) {
    MessageBoxesClass Boxes;
    MsgBoxRequest Request;
    Request.Text = "Error in opening\n/" + LongWord + "/" + LongWord + "\nIt is gone";
    Request.Title = "Error in opening a file";
    for (const MsgBoxButtons Buttons : {MsgBoxButtons::OkOnly, MsgBoxButtons::OkCancel,
                                        MsgBoxButtons::YesNo, MsgBoxButtons::YesNoCancel}) {
        Request.Buttons = Buttons;
        const WithDialog Act([](QWidget* Window) {
            ExpectFits(Window);
            ExpectKeys(Window);
            Window->close();
        });
        Boxes.MsgBox(Request);
    }
    const WithDialog Act([](QWidget* Window) {
        ExpectFits(Window);
        ExpectKeys(Window);
        Window->close();
    });
    Boxes.InputBox("Enter the volume in percent:", "Volume", "100");
}

} // namespace
} // namespace quoril::test

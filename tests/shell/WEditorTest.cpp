#include "audiofile/DocumentFile.h"
#include "audiofile/RecentFiles.h"
#include "base/Failure.h"
#include "base/PlayState.h"
#include "base/UserFileWriting.h"
#include "bookmarks/BookmarkRec.h"
#include "shell/EditorFixture.h"
#include "shell/HelpViewer.h"
#include "shell/StartUpMod.h"
#include "shell/WithDialog.h"
#include "view/ReadOutLabel.h"

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>
#include <fstream>
#include <sys/stat.h>

namespace quoril {
namespace {

namespace fs = std::filesystem;
using test::WithDialog;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Types a name into a file dialog and presses its button.
void ChooseFile(QWidget* Dialog, const char* FileName) {
    auto* Field = Dialog->findChild<QLineEdit*>("fileNameEdit");
    Dialog->activateWindow();
    Field->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([Field] { return Field->hasFocus(); }));
    Field->selectAll();
    QTest::keyClicks(Field, QString::fromUtf8(FileName));
    QMetaObject::invokeMethod(Dialog, "accept", Qt::DirectConnection);
}

class WEditor : public test::EditorFixture {
  protected:
    /// An edit that can be undone.
    static void Edit(const std::string& Name = "Delete") {
        WaveStore->WaveDataDelete(1, 1, 10, Name, true);
    }
    static void BookmarkMade() {
        BookmarkRec Here = NewBookmark();
        Here.From = Here.To = 5;
        BookmarkAppend(std::move(Here));
        BookmarkChanged = true;
    }
    static bool IsSessionFolder(const std::string& Path) {
        struct stat Status {};
        return ::stat(Path.c_str(), &Status) == 0 && S_ISDIR(Status.st_mode) &&
               (Status.st_mode & 0777U) == 0700U;
    }
};

// ---- Entry

TEST_F(WEditor, StartsWithANewDocument) {
    Start();
    EXPECT_TRUE(MainWindowOpen);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(Title(), "New.wav [Quoril Wave Editor]");
    EXPECT_EQ(WaveStore->WavWaveINos, 22050);
    EXPECT_FALSE(WaveChanged);
    EXPECT_THAT(Messages->Requests, IsEmpty());
    EXPECT_FALSE(Exit.has_value());
}

TEST_F(WEditor, NotesTheMachineInTheSettings) {
    Start();
    EXPECT_EQ(IniGet("General", "InstalledPath", ""), App());
    EXPECT_NE(IniGet("General", "FreeHardDisk", ""), "");
    EXPECT_NE(IniGet("General", "PhyMemorySz", ""), "");
    EXPECT_NE(IniGet("General", "PhyMemoryLoad", ""), "");
    EXPECT_EQ(IniGet("General", "DirectXInstalled", ""), "DirectX-0-0");
    EXPECT_EQ(IniGet("General", "TwipsX", ""), "15");
    EXPECT_EQ(IniGet("General", "TwipsY", ""), "15");
}

TEST_F(WEditor, MakesItsSessionFolderAndTheWorkFolder) {
    Start();
    EXPECT_TRUE(SessionDir.starts_with(Temp() + "/qw")) << SessionDir;
    EXPECT_TRUE(IsSessionFolder(SessionDir));
    EXPECT_TRUE(fs::is_directory(App() + "/Work"));
}

TEST_F(WEditor, TwoSessionsHaveDifferentFolders) {
    Start();
    const std::string First = SessionDir;
    const std::string Second = SessionDirMake();
    EXPECT_NE(First, Second);
    EXPECT_TRUE(IsSessionFolder(Second));
}

TEST_F(WEditor, TakesTheStoredFormatForItsDocument) {
    IniPut("Format", "Channel", "2");
    IniPut("Format", "Bits", "8");
    IniPut("Format", "SamplingRate", "44100");
    Start();
    EXPECT_EQ(WaveStore->WavFmtChannel, 2);
    EXPECT_EQ(WaveStore->WavFmtBits, 8);
    EXPECT_EQ(WaveStore->WavWaveINos, 44100);
    EXPECT_TRUE(Window().EntryChecked("Format_Channel_Stereo_Menu"));
    EXPECT_TRUE(Window().EntryChecked("Format_Bit_Menu_0"));
    EXPECT_TRUE(Window().EntryChecked("Format_FrQ_Menu_2"));
}

TEST_F(WEditor, AStoredRateOf48000StartsAt22050) {
    IniPut("Format", "SamplingRate", "48000");
    Start();
    EXPECT_EQ(WaveStore->WavFmtFreq, 22050);
}

TEST_F(WEditor, ShowsTheStoredSwitchesAndSpeeds) {
    IniPut("Setting", "LoopOn", "1");
    IniPut("Setting", "TempoFor", "0.5");
    IniPut("Setting", "TempoRev", "2");
    IniPut("General", "UndoOptionON", "0");
    IniPut("General", "ShowHhmmss", "0");
    Start();
    EXPECT_TRUE(Window().ToolButton("PlayToolbar", "Loop")->isChecked());
    EXPECT_EQ(Window().SpeedDispLbl[1]->text(), "50%");
    EXPECT_EQ(Window().SpeedDispLbl[2]->text(), "200%");
    EXPECT_FALSE(Window().EntryChecked("Undo_Mnu_3"));
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Off]");
    EXPECT_TRUE(Window().EntryChecked("DisplayToggleMnu_0"));
    EXPECT_FALSE(Window().EntryChecked("DisplayToggleMnu_1"));
}

TEST_F(WEditor, FillsTheRecentFiles) {
    RecentFilesAdd("/m/a.wav");
    RecentFilesAdd("/m/b & c.wav");
    Start();
    EXPECT_EQ(Window().Entry("FileLastFilesMnu_1")->text(), "&1 /m/b && c.wav");
    EXPECT_EQ(Window().Entry("FileLastFilesMnu_2")->text(), "&2 /m/a.wav");
    EXPECT_FALSE(Window().Entry("FileLastFilesMnu_0")->isVisible());
}

TEST_F(WEditor, WarnsOfClashingColorsBeforeTheWindowExists) {
    IniPut("Color", "WaveFormNormalColor", "255");
    IniPut("Color", "NormalBackColor", "255");
    Start();
    ASSERT_EQ(Messages->Requests.size(), 1U);
    EXPECT_THAT(Messages->Requests[0].Text, HasSubstr("Waveform Color and the Back color"));
}

TEST_F(WEditor, SettingsFullOfRubbishStartIt) {
    std::ofstream Out(SettingsFileName(), std::ios::binary | std::ios::trunc);
    Out << "[Color]\nWaveFormNormalColor=ffff\nWaveFormDrawStyle=99999999999999999999\n"
        << "[Setting]\nTempoFor=nan\nTempoRev=-inf\n[MainWindow]\nWindow Size=x,9e99,nan,,,,7\n"
        << "[General]\nShowNewUserGuide=0\nTmpDir0=\xFF\xFE\n[LastFiles]\n1=\xFF\n2=[\n"
        << "[[[\n=\n===\n[Format\nChannel" << std::string(5000, 'x');
    Out.close();
    Start();
    EXPECT_EQ(TempoFor, 1.0F);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(IsSessionFolder(SessionDir));
}

TEST_F(WEditor, AChosenTemporaryFolderThatIsGoneGivesWayToTheSystems) {
    IniPut("General", "TmpDir0", (Folder / "removed"));
    Start();
    EXPECT_TRUE(SessionDir.starts_with(Temp() + "/qw"));
}

TEST_F(WEditor, AChosenTemporaryFolderIsUsed) {
    fs::create_directory((Folder / "disk2"));
    IniPut("General", "TmpDir0", (Folder / "disk2"));
    Start();
    EXPECT_TRUE(SessionDir.starts_with((Folder / "disk2") + "/qw"));
}

TEST_F(WEditor, AFailureBeforeTheWindowIsToldAndEndsTheProcess) {
    WEditorSurroundings Around;
    Around.InstalledPath = []() -> std::string { throw Failure("No such place"); };
    Around.SystemTempPath = [] { return std::string("/tmp"); };
    Around.ExitProcess = [this](int Code) { Exit = Code; };
    Editor = std::make_unique<WEditorClass>(std::move(Around));
    Messages = std::make_unique<test::ScriptedMessages>();
    Editor->Enter();
    EXPECT_THAT(Messages->Texts(), ElementsAre("No such place"));
    EXPECT_EQ(Exit, 1);
    EXPECT_EQ(Editor->MainWindowFrm(), nullptr);
}

// ---- Command line

TEST_F(WEditor, OpensTheFileOnItsCommandLine) {
    const std::string Path = WriteWav("my song.wav");
    Start(CommandLineText({Path}));
    EXPECT_EQ(Title(), "my song.wav [Quoril Wave Editor]");
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(CurrentFormat.Freq, 11025);
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

TEST_F(WEditor, OpensAFileWhoseNameIsNoText) {
    const std::string Path = WriteWav("gr\xFC\xDF.wav");
    Start(CommandLineText({Path}));
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(Title(), "gr\xC3\xBC\xC3\x9F.wav [Quoril Wave Editor]");
}

TEST_F(WEditor, ABadCommandLineIsToldAsItWasGiven) {
    Start("no such file.wav");
    EXPECT_THAT(
        Messages->Texts(),
        ElementsAre("Command line string is not a wave file name to open\nno such file.wav"));
    EXPECT_EQ(Title(), "New.wav [Quoril Wave Editor]");
}

TEST_F(WEditor, ABlankCommandLineIsNone) {
    Start("   ");
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

// ---- The first tip

TEST_F(WEditor, ShowsItsFirstTip) {
    IniPut("General", "ShowNewUserGuide", "1");
    Make();
    const WithDialog Act([](QWidget* Tip) {
        EXPECT_EQ(Tip->objectName(), "UserGuideFrm");
        EXPECT_TRUE(Tip->parentWidget() != nullptr && Tip->parentWidget()->isVisible());
        EXPECT_EQ(Tip->findChild<QLabel*>("GuideLbl")->text(),
                  "Move the mouse pointer over any button to read a short description in the "
                  "status bar at the bottom of the main window.");
        QTest::mouseClick(Tip->findChild<QPushButton*>("OkBtn"), Qt::LeftButton);
    });
    Editor->Enter();
}

// ---- Exit

TEST_F(WEditor, EndsWithTheSessionFolderGoneAndTheSettingsWritten) {
    Start();
    std::ofstream(App() + "/Work/keep.wav") << "x";
    const std::string Session = SessionDir;
    std::ofstream(Session + "/tm1.tmp") << "work";
    CurrentFormat = {2, 44100, 8};
    TempoFor = 0.5F;
    WaveDir = Music();
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
    EXPECT_FALSE(Window().isVisible());
    EXPECT_FALSE(fs::exists(Session));
    EXPECT_TRUE(fs::exists(App() + "/Work/keep.wav"));
    EXPECT_EQ(WaveStore, nullptr);
    EXPECT_EQ(IniGet("Format", "Channel", ""), "2");
    EXPECT_EQ(IniGet("Format", "Bits", ""), "8");
    EXPECT_EQ(IniGet("Format", "SamplingRate", ""), "44100");
    EXPECT_EQ(IniGet("Setting", "TempoFor", ""), "0.5");
    EXPECT_EQ(IniGet("Setting", "TempoRev", ""), "1.0");
    EXPECT_EQ(IniGet("Path", "Last Wave Dir", ""), Music());
    EXPECT_THAT(IniGet("MainWindow", "Window Size", ""), ::testing::MatchesRegex("0,.*,.*,.*,.*"));
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

TEST_F(WEditor, CloseFromTheMenuEndsIt) {
    Start();
    Menu("Close_Mnu");
    EXPECT_EQ(Exit, 1);
}

TEST_F(WEditor, UnsavedWorkAndCancelLeaveEverythingUntouched) {
    Start(CommandLineText({WriteWav("a.wav")}));
    Edit();
    const std::string Session = SessionDir;
    Messages->Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(Window().close());
    ASSERT_EQ(Messages->Requests.size(), 1U);
    EXPECT_EQ(Messages->Requests[0].Text,
              "The current waveform is changed.\nDo you want to save it?");
    EXPECT_EQ(Messages->Requests[0].Buttons, MsgBoxButtons::YesNoCancel);
    EXPECT_EQ(Messages->Requests[0].Default, MsgBoxAnswer::No);
    EXPECT_FALSE(Exit.has_value());
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(fs::exists(Session));
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(WaveStore->WavWaveINos, 990);
}

TEST_F(WEditor, UnsavedWorkAndNoEndItWithoutSaving) {
    const std::string Path = WriteWav("a.wav");
    Start(CommandLineText({Path}));
    Edit();
    Messages->Answer(MsgBoxAnswer::No);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
    EXPECT_EQ(fs::file_size(Path), 2044U);
}

TEST_F(WEditor, UnsavedWorkAndYesSaveItAndEnd) {
    const std::string Path = WriteWav("a.wav");
    Start(CommandLineText({Path}));
    Edit();
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
    EXPECT_EQ(fs::file_size(Path), 2024U);
}

TEST_F(WEditor, ASaveThatFailsAtTheEndKeepsItOpenAndAsksAgain) {
    const std::string Path = WriteWav("a.wav");
    Start(CommandLineText({Path}));
    Edit();
    // The file is gone, so Save asks for a name; one that cannot be written is given.
    fs::remove(Path);
    Messages->Answer(MsgBoxAnswer::Yes);
    {
        const WithDialog Act([](QWidget* Window) {
            auto* Dialog = qobject_cast<QFileDialog*>(Window);
            ASSERT_NE(Dialog, nullptr);
            ChooseFile(Dialog, "/proc/a.wav");
        });
        EXPECT_FALSE(Window().close());
    }
    EXPECT_FALSE(Exit.has_value());
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(Messages->Requests.size(), 2U);
    Messages->Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(Window().close());
    EXPECT_EQ(Messages->Requests.size(), 3U);
}

TEST_F(WEditor, ASaveThatFailsAtTheEndCostsNeitherTheFileNorTheWork) {
    const std::string Path = WriteWav("a.wav");
    const auto Before = fs::file_size(Path);
    Start(CommandLineText({Path}));
    WaveStore->WavFmtBits = 8; // with samples that no byte can hold
    Edit();
    BookmarkChanged = true;
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_FALSE(Window().close());
    EXPECT_EQ(Messages->Requests.size(), 2U);
    EXPECT_EQ(Messages->Requests.back().Text,
              "Overflow\n\nThe file that was there before is unchanged.");
    EXPECT_FALSE(Exit.has_value());
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(WaveChanged);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_EQ(fs::file_size(Path), Before);
    // The same with the command, without the end.
    Menu("Save_Mnu_0");
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(fs::file_size(Path), Before);
    Messages->Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(Window().close());
    EXPECT_EQ(Messages->Requests.back().Text,
              "The current waveform is changed.\nDo you want to save it?");
}

TEST_F(WEditor, BookmarksThatCannotBeSavedAtTheEndKeepItOpen) {
    const std::string Path = WriteWav("a.wav");
    std::ofstream(fs::path(Path).replace_extension("bok")) << "a book";
    Start(CommandLineText({Path}));
    Edit();
    BookmarkMade();
    Messages->Answer(MsgBoxAnswer::Yes);
    Messages->Answer(MsgBoxAnswer::No); // the other file is not to be replaced
    EXPECT_FALSE(Window().close());
    EXPECT_FALSE(Exit.has_value());
    EXPECT_FALSE(WaveChanged);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_EQ(fs::file_size(Path), 2024U);
    EXPECT_EQ(BookmarkNos(), 1);
}

TEST_F(WEditor, ChangedBookmarksAreAskedAboutAlone) {
    Start();
    BookmarkChanged = true;
    Messages->Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(Window().close());
    EXPECT_THAT(Messages->TakeTexts(),
                ElementsAre("Bookmarks of the current file is changed.\nDo you want to save it?"));
    Messages->Answer(MsgBoxAnswer::No);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
}

TEST_F(WEditor, ChangedBookmarksAndYesWriteTheirFileAndEnd) {
    Start(CommandLineText({WriteWav("a.wav")}));
    BookmarkMade();
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
    EXPECT_TRUE(fs::exists(Music() + "/a.bok"));
}

TEST_F(WEditor, BookmarksThatCannotBeWrittenAreToldAndKeepItOpen) {
    Start(CommandLineText({WriteWav("a.wav")}));
    fs::create_directory(Music() + "/a.bok");
    BookmarkMade();
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_FALSE(Window().close());
    EXPECT_FALSE(Exit.has_value());
    EXPECT_TRUE(BookmarkChanged);
    ASSERT_EQ(Messages->Requests.size(), 2U);
    EXPECT_EQ(Messages->Requests[1].Title, "Save Error");
    EXPECT_THAT(Messages->Requests[1].Text, HasSubstr("a.bok"));
    // The end of the desktop session takes the same way.
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_FALSE(Editor->SessionEndMayGo());
    fs::remove(Music() + "/a.bok");
    Messages->Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(Editor->SessionEndMayGo());
    EXPECT_TRUE(fs::is_regular_file(Music() + "/a.bok"));
    EXPECT_FALSE(BookmarkChanged) << "what is in its file is not asked about again";
}

TEST_F(WEditor, ChangedSamplesHideTheQuestionAboutBookmarks) {
    Start();
    WaveChanged = BookmarkChanged = true;
    Messages->Answer(MsgBoxAnswer::No);
    EXPECT_TRUE(Window().close());
    EXPECT_THAT(Messages->Texts(),
                ElementsAre("The current waveform is changed.\nDo you want to save it?"));
}

TEST_F(WEditor, ASignalEndsItWithoutAQuestion) {
    Start();
    WaveChanged = true;
    const std::string Session = SessionDir;
    Editor->ShutDown();
    EXPECT_EQ(Exit, 1);
    EXPECT_FALSE(fs::exists(Session));
    EXPECT_THAT(Messages->Requests, IsEmpty());
}

TEST_F(WEditor, ASignalWaitsForAFileThatIsHalfWritten) {
    Start();
    {
        const UserFileWriting HalfWritten([] {});
        Editor->ShutDownWhenWritten();
        QTest::qWait(60);
        EXPECT_FALSE(Exit.has_value());
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return Exit.has_value(); }));
}

TEST_F(WEditor, TheEndOfTheDesktopSessionAsksAndClosesNothing) {
    Start();
    WaveChanged = true;
    Messages->Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(Editor->SessionEndMayGo());
    Messages->Answer(MsgBoxAnswer::No);
    EXPECT_TRUE(Editor->SessionEndMayGo());
    EXPECT_TRUE(Window().isVisible());
    EXPECT_FALSE(Exit.has_value());
}

TEST_F(WEditor, ATemporaryFolderThatVanishesDoesNotKeepItFromEnding) {
    Start();
    fs::remove_all(Temp());
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(Exit, 1);
}

TEST_F(WEditor, StoresWhereItWas) {
    Start();
    Window().move(30, 45);
    EXPECT_TRUE(Window().close());
    EXPECT_THAT(IniGet("MainWindow", "Window Size", ""), ::testing::StartsWith("0,450,675,"));
}

TEST_F(WEditor, AMaximisedWindowComesBackMaximisedAndKeepsItsNormalPlace) {
    IniPut("MainWindow", "Window Size", "2,600,450,9000,8400");
    Start();
    EXPECT_TRUE(Window().isMaximized());
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(IniGet("MainWindow", "Window Size", ""), "2,600,450,9000,8400");
}

// ---- Commands from the menu

TEST_F(WEditor, OpenFromTheMenuOpensTheChosenFile) {
    const std::string Path = WriteWav("chosen one.wav");
    IniPut("Path", "Last Wave Dir", Music());
    Start();
    const WithDialog Act([](QWidget* Window) {
        auto* Dialog = qobject_cast<QFileDialog*>(Window);
        ASSERT_NE(Dialog, nullptr);
        EXPECT_EQ(Dialog->windowTitle(), "Select a Wave file to Open");
        ChooseFile(Dialog, "chosen one.wav");
    });
    Menu("Open_Mnu_0");
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(Title(), "chosen one.wav [Quoril Wave Editor]");
    EXPECT_EQ(Window().Entry("FileLastFilesMnu_1")->isEnabled(), true);
}

TEST_F(WEditor, SaveAsFromTheMenuWritesTheFile) {
    Start(CommandLineText({WriteWav("a.wav")}));
    const WithDialog Act([](QWidget* Window) {
        auto* Dialog = qobject_cast<QFileDialog*>(Window);
        ASSERT_NE(Dialog, nullptr);
        EXPECT_EQ(Dialog->windowTitle(), "Choose wave file name to save");
        auto* Name = Dialog->findChild<QLineEdit*>("fileNameEdit");
        EXPECT_EQ(Name->text(), "a.wav");
        ChooseFile(Dialog, "copy");
    });
    Menu("Save_Mnu_1");
    EXPECT_EQ(fs::file_size(Music() + "/copy.wav"), 2044U);
    EXPECT_EQ(Title(), "copy.wav [Quoril Wave Editor]");
}

TEST_F(WEditor, ANameCompletedByItselfAsksBeforeItOverwrites) {
    Start(CommandLineText({WriteWav("a.wav")}));
    const std::string There = WriteWav("copy.wav", 10);
    Messages->Answer(MsgBoxAnswer::Yes);
    const WithDialog Act([](QWidget* Window) { ChooseFile(Window, "copy"); });
    Menu("Save_Mnu_1");
    EXPECT_THAT(Messages->Texts(),
                ElementsAre(There + " already exists.\nDo you want to replace it?"));
    EXPECT_EQ(fs::file_size(There), 2044U);
}

TEST_F(WEditor, ARecentFileOpensFromTheMenu) {
    const std::string Path = WriteWav("a.wav");
    RecentFilesAdd(WriteWav("b.wav"));
    RecentFilesAdd(Path);
    Start();
    Menu("FileLastFilesMnu_2");
    QApplication::processEvents();
    EXPECT_EQ(WaveFileName, "b.wav");
    EXPECT_THAT(Window().Entry("FileLastFilesMnu_1")->text().toStdString(), HasSubstr("b.wav"));
}

TEST_F(WEditor, ADroppedFileOpens) {
    const std::string Path = WriteWav("gr\xFC\xDF drop.wav");
    Start();
    QMimeData Data;
    Data.setUrls({QUrl::fromEncoded(QByteArray("file://") +
                                    QByteArray(Path.c_str()).toPercentEncoding("/"))});
    QDragEnterEvent Enter(QPoint(1, 1), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &Enter);
    EXPECT_TRUE(Enter.isAccepted());
    QDropEvent Drop(QPointF(1, 1), Qt::CopyAction, &Data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &Drop);
    EXPECT_EQ(WaveFilePath, Path);
}

TEST_F(WEditor, ALoadThatFailedHalfWayLeavesTheOldFileWhole) {
    const std::string Path = WriteWav("a.wav");
    const std::string Bad = WriteWav("b.wav");
    {
        std::fstream File(Bad, std::ios::binary | std::ios::in | std::ios::out);
        File.seekp(22).put(3); // channels
    }
    Start(CommandLineText({Path}));
    Edit();
    Window().FileDropped(Bad);
    EXPECT_THAT(Messages->TakeTexts(),
                ElementsAre("Error Loading " + Bad + "|Channel info invalid at byte location 23",
                            "Wave file loading failed"));
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_EQ(WaveStore->WavWaveINos, 0);
    for (const char* Name : {"SelectAll_Mnu", "ViewAll_Mnu", "Undo_Mnu_1"})
        Menu(Name);
    (void)Messages->TakeTexts();
    Menu("Save_Mnu_0");
    EXPECT_THAT(Messages->TakeTexts(), ElementsAre("Writing wave error|Zero size wave found"));
    EXPECT_EQ(fs::file_size(Path), 2044U);
    EXPECT_EQ(fs::file_size(Bad), 2044U);
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(fs::file_size(Path), 2044U);
}

TEST_F(WEditor, ARecentFileOpensFromTheMenuAsItHangsOpen) {
    RecentFilesAdd(WriteWav("a.wav"));
    RecentFilesAdd(WriteWav("b.wav"));
    Start();
    auto* File = Window().findChild<QMenu*>("File_Menu");
    File->popup(QPoint(10, 10));
    File->setActiveAction(Window().Entry("FileLastFilesMnu_2"));
    QTest::keyClick(File, Qt::Key_Return);
    EXPECT_EQ(WaveFileName, "a.wav");
}

TEST_F(WEditor, NoCommandBeginsInTheMidstOfAnother) {
    Start(CommandLineText({WriteWav("a.wav")}));
    {
        const ProgressScope Busy(BarColorGather);
        Menu("New_Mnu");
        EXPECT_EQ(WaveFileName, "a.wav");
    }
    QDialog Dialog;
    Dialog.open();
    Menu("New_Mnu");
    EXPECT_EQ(WaveFileName, "a.wav");
    Dialog.close();
    Menu("New_Mnu");
    EXPECT_EQ(WaveFileName, "New.wav");
}

TEST_F(WEditor, AFileIsNotDroppedPastADialog) {
    const std::string Path = WriteWav("a.wav");
    Start();
    QDialog Dialog;
    Dialog.open();
    Window().FileDropped(Path);
    EXPECT_EQ(WaveFileName, "New.wav");
    Dialog.close();
    Window().FileDropped(Path);
    EXPECT_EQ(WaveFileName, "a.wav");
}

TEST_F(WEditor, UndoFromTheMenuTakesAnEditBack) {
    Start(CommandLineText({WriteWav("a.wav")}));
    Edit("Cut");
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Cut]");
    Menu("Undo_Mnu_1");
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Nothing]");
    EXPECT_FALSE(Window().Entry("Undo_Mnu_1")->isEnabled());
}

TEST_F(WEditor, UndoOffDropsTheJournalAndUndoOnBeginsAnew) {
    Start(CommandLineText({WriteWav("a.wav")}));
    Edit();
    Menu("Undo_Mnu_3");
    EXPECT_FALSE(UndoOptionON);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Off]");
    EXPECT_FALSE(Window().EntryChecked("Undo_Mnu_3"));
    Menu("Undo_Mnu_3");
    EXPECT_EQ(Window().Entry("Undo_Mnu_1")->text().remove('&'), "Undo [Nothing]");
    EXPECT_TRUE(Window().EntryChecked("Undo_Mnu_3"));
    EXPECT_EQ(IniGet("General", "UndoOptionON", "none"), "none") << "the switch is not kept";
}

TEST_F(WEditor, WithoutUndoDataThereIsNothingToClear) {
    Start();
    Window().RunCommand("Undo_Mnu_2");
    EXPECT_THAT(Messages->Texts(), ElementsAre("Nothing to clear"));
}

TEST_F(WEditor, UndoDataIsClearedByTheUsersChoice) {
    Start(CommandLineText({WriteWav("a.wav")}));
    Edit("One");
    Edit("Two");
    Edit("Three");
    const WithDialog Act([](QWidget* Window) {
        auto* List = Window->findChild<QListWidget*>("AvailList");
        ASSERT_NE(List, nullptr);
        EXPECT_EQ(List->count(), 3);
        List->setCurrentRow(1);
        QTest::mouseClick(Window->findChild<QPushButton*>("ClearBtn_2"), Qt::LeftButton);
        QTimer::singleShot(0, Window, [Window, List] {
            EXPECT_EQ(List->count(), 1);
            EXPECT_EQ(List->item(0)->text(), "Three");
            QTest::mouseClick(Window->findChild<QPushButton*>("CloseBtn"), Qt::LeftButton);
        });
    });
    Menu("Undo_Mnu_2");
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->UndoCount(), WaveStore->UndoReleased());
}

TEST_F(WEditor, HelpIsReadyAndItsFileIsForgottenAtTheEnd) {
    Start();
    EXPECT_TRUE(Window().Entry("Help_Mnu_0")->isEnabled());
    EXPECT_FALSE(HelpFileName.empty());
    EXPECT_TRUE(Window().close());
    EXPECT_TRUE(HelpFileName.empty());
}

TEST_F(WEditor, TellsAboutItself) {
    Start();
    EXPECT_EQ(Window().Entry("About_Menu")->text().remove('&'), "About Quoril Wave Editor");
    Menu("About_Menu");
    ASSERT_EQ(Messages->Requests.size(), 1U);
    EXPECT_THAT(Messages->Requests[0].Text, ::testing::StartsWith("Quoril Wave Editor\nVersion "));
}

TEST_F(WEditor, LoopPlayIsKeptByItsButton) {
    Start();
    QTest::mouseClick(Window().ToolButton("PlayToolbar", "Loop"), Qt::LeftButton);
    EXPECT_TRUE(LoopOn);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "1");
    QTest::mouseClick(Window().ToolButton("PlayToolbar", "Loop"), Qt::LeftButton);
    EXPECT_FALSE(LoopOn);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "0");
}

} // namespace
} // namespace quoril

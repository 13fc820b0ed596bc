#include "audiofile/FileCommands.h"

#include "audiofile/AudioFileNames.h"
#include "audiofile/AudioFileTypes.h"
#include "audiofile/FileSurroundings.h"
#include "audiofile/RecentFiles.h"
#include "audiofile/WavMaker.h"
#include "base/DocumentState.h"
#include "base/ViewState.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quoril {
namespace {

namespace fs = std::filesystem;
using test::TestSession;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* CannotOpen = "Can not open this file type\n\n"
                                   "If you know that audio data exists in this file,\n"
                                   "you can rename it to .raw type and try opening it.";

class FileCommands : public test::FileCommandsFixture {};

// ---- Names

TEST(AudioFileNames, AreKnownByTheirEndingInAnyCase) {
    for (const char* Name : {"a.wav", "a.WAV", "a.Mp3", "a.raw", "a.snd", "a.au", "a.AU", ".wav",
                             "/x/y.z/b.wav", "a.b.wav"})
        EXPECT_TRUE(IsFileTypeSupported(Name)) << Name;
    for (const char* Name :
         {"", "a", "wav", "a.txt", "a.wav ", "a.wave", "a.", "/x.wav/b", "awav", "a.wma"})
        EXPECT_FALSE(IsFileTypeSupported(Name)) << Name;
}

TEST(AudioFileNames, TheBookmarkFileBearsTheSameName) {
    EXPECT_EQ(BookmarkFileOf("/m/a.wav"), "/m/a.bok");
    EXPECT_EQ(BookmarkFileOf("/m/a.MP3"), "/m/a.bok");
    EXPECT_EQ(BookmarkFileOf("/m/a.au"), "/m/a.bok");
    EXPECT_EQ(BookmarkFileOf("/m/a.Au"), "/m/a.bok");
    EXPECT_EQ(BookmarkFileOf("/m/a.snd"), "/m/a.bok");
    EXPECT_EQ(BookmarkFileOf("au"), "");
}

TEST(AudioFileTypes, AreChosenByTheLastThreeCharactersInAnyCase) {
    for (const char* Name : {"a.wav", "a.WAV", "x.Wav", "awav"}) {
        const AudioFileType* Type = AudioFileTypeOf(Name);
        ASSERT_NE(Type, nullptr) << Name;
        EXPECT_STREQ(Type->LastThree, "wav");
    }
    for (const char* Name : {"a.au", "a.AU", "x.Au"}) {
        ASSERT_NE(AudioFileTypeOf(Name), nullptr) << Name;
        EXPECT_STREQ(AudioFileTypeOf(Name)->LastThree, ".au");
    }
    for (const char* Name : {"", "a", "av", "a.txt", "a.wav "})
        EXPECT_EQ(AudioFileTypeOf(Name), nullptr) << Name;
}

// ---- Recent files

TEST(RecentFiles, BeginEmptyAndPutTheNewestFirst) {
    const TestSession Session;
    EXPECT_THAT(RecentFilesRead(), ElementsAre("", "", "", "", "", ""));
    for (const char* Name : {"/a.wav", "/b.wav", "/c.wav", "/d.wav", "/e.wav", "/f.wav"})
        RecentFilesAdd(Name);
    EXPECT_THAT(RecentFilesRead(),
                ElementsAre("", "/f.wav", "/e.wav", "/d.wav", "/c.wav", "/b.wav"));
}

TEST(RecentFiles, OneThatIsThereMovesUpAndIsNotDoubled) {
    const TestSession Session;
    for (const char* Name : {"/a.wav", "/b.wav", "/c.wav", "/d.wav", "/e.wav"})
        RecentFilesAdd(Name);
    RecentFilesAdd("/C.WAV");
    EXPECT_THAT(RecentFilesRead(),
                ElementsAre("", "/C.WAV", "/e.wav", "/d.wav", "/b.wav", "/a.wav"));
    RecentFilesAdd("/C.WAV");
    EXPECT_THAT(RecentFilesRead(),
                ElementsAre("", "/C.WAV", "/e.wav", "/d.wav", "/b.wav", "/a.wav"));
    RecentFilesAdd("/a.wav");
    EXPECT_THAT(RecentFilesRead(),
                ElementsAre("", "/a.wav", "/C.WAV", "/e.wav", "/d.wav", "/b.wav"));
}

TEST(RecentFiles, LongPathsAndForeignBytesComeBackWhole) {
    const TestSession Session;
    const std::string Long = "/" + std::string(200, 'x') + "/\xFF gr\xFC\xDF.wav";
    RecentFilesAdd(Long);
    EXPECT_EQ(RecentFilesRead()[1], Long);
}

TEST(RecentFiles, ANameThatTheSettingsFileCannotHoldIsPassedOver) {
    const TestSession Session;
    RecentFilesAdd("/a.wav");
    RecentFilesAdd("/b\n[Path]\nLast Wave Dir=x.wav");
    RecentFilesAdd("");
    EXPECT_THAT(RecentFilesRead(), ElementsAre("", "/a.wav", "", "", "", ""));
    EXPECT_EQ(IniGet("Path", "Last Wave Dir", "none"), "none");
}

TEST(RecentFiles, AreShownWholeBelow38Characters) {
    const std::string Of37 = "/" + std::string(32, 'x') + ".wav";
    EXPECT_EQ(Of37.size(), 37U);
    EXPECT_EQ(RecentFileCaption(Of37), Of37);
    const std::string Of38 = "/ab" + std::string(31, 'x') + ".wav";
    EXPECT_EQ(RecentFileCaption(Of38), "/ab .. " + std::string(26, 'x') + ".wav");
    EXPECT_EQ(RecentFileCaption("/home/me/music/2024/some concert/third piece.wav"),
              "/ho .. 4/some concert/third piece.wav");
}

TEST(RecentFiles, ALetterIsNeverCutInTwo) {
    std::string Name = "/";
    for (int I = 0; I < 40; ++I)
        Name += "\xC3\xBC";
    std::string Tail;
    for (int I = 0; I < 30; ++I)
        Tail += "\xC3\xBC";
    EXPECT_EQ(RecentFileCaption(Name), "/\xC3\xBC\xC3\xBC .. " + Tail);
}

// ---- The unsaved-work question

TEST_F(FileCommands, NothingIsAskedWithoutChanges) {
    EXPECT_TRUE(UnsavedWorkMayGo("Sure?"));
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(FileCommands, ChangedSamplesAskWithNoAsTheDefault) {
    WaveChanged = true;
    EXPECT_FALSE(UnsavedWorkMayGo("Sure?"));
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Text, "The current waveform is changed.\nSure?");
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::YesNo);
    EXPECT_EQ(Messages.Requests[0].Default, MsgBoxAnswer::No);
}

TEST_F(FileCommands, ChangedBookmarksAskToo) {
    BookmarkChanged = true;
    Messages.Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(UnsavedWorkMayGo("Sure?"));
    EXPECT_THAT(Messages.Texts(), ElementsAre("Bookmarks of the current file is changed.\nSure?"));
}

TEST_F(FileCommands, ChangedSamplesHideChangedBookmarks) {
    WaveChanged = BookmarkChanged = true;
    Messages.Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(UnsavedWorkMayGo("Sure?"));
    EXPECT_THAT(Messages.Texts(), ElementsAre("The current waveform is changed.\nSure?"));
}

// ---- New

TEST_F(FileCommands, NewMakesASecondOfSilenceInTheCurrentFormat) {
    CurrentFormat = {2, 44100, 16};
    SelStart = SelEnd = PlaySelStart = PlaySelEnd = 5;
    Mp3ParamsChosen = true;
    Commands.New();
    EXPECT_EQ(WaveStore->WavWaveINos, 44100);
    EXPECT_EQ(WaveStore->WaveNosL(), 44100);
    EXPECT_EQ(WaveStore->WaveNosR(), 44100);
    EXPECT_EQ(WaveStore->WavFmtChannel, 2);
    EXPECT_EQ(WaveStore->WavFmtFreq, 44100);
    EXPECT_EQ(WaveStore->WavFmtBits, 16);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(WaveFileName, "New.wav");
    EXPECT_EQ(WaveFilePath, WaveDir + "/New.wav");
    EXPECT_EQ(PlaySelStart, 0);
    EXPECT_EQ(PlaySelEnd, 0);
    EXPECT_FALSE(Mp3ParamsChosen);
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("release", "empty bookmarks", "title New.wav", "new document 44100",
                            "format 2 44100 16", "refresh"));
    EXPECT_THAT(Session.SessionFiles(), IsEmpty()) << "silence costs no disk";
}

TEST_F(FileCommands, NewHasAtLeast10000Samples) {
    CurrentFormat = {1, 8000, 8};
    Commands.New();
    EXPECT_EQ(WaveStore->WavWaveINos, 10000);
    EXPECT_EQ(WaveStore->WaveNosR(), 0);
}

TEST_F(FileCommands, NewAfterAFileHoldsNothingOfIt) {
    OpenByDialog(WriteWav("a.wav", 50000));
    WaveStore->WaveDataDelete(1, 1, 100, "Delete", true);
    Messages.Answer(MsgBoxAnswer::Yes);
    Commands.New();
    EXPECT_EQ(WaveStore->WavWaveINos, 44100);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(test::LeftOf(*WaveStore), test::Samples(44100, 0));
}

TEST_F(FileCommands, NewAfterAFileIsNotSavedOverAFileNamedNew) {
    OpenByDialog(WriteWav("New.wav"));
    Commands.New();
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_EQ(Around.Requests.back().Title, "Choose wave file name to save");
    EXPECT_EQ(fs::file_size(Session.Path("music/New.wav")), 2044U);
}

TEST_F(FileCommands, NewAsksForUnsavedWorkAndNoKeepsEverything) {
    OpenByDialog(WriteWav("a.wav"));
    WaveChanged = BookmarkChanged = true;
    Around.TakeCalls();
    Commands.New();
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("The current waveform is changed.\nCreate new file with out saving it?"));
    EXPECT_THAT(Around.TakeCalls(), IsEmpty());
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_TRUE(WaveChanged);
    Messages.Answer(MsgBoxAnswer::Yes);
    Commands.New();
    EXPECT_EQ(WaveFileName, "New.wav");
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
}

// ---- Open

TEST_F(FileCommands, OpenShowsItsDialog) {
    WaveFileName = "now.wav";
    Commands.Open(false);
    ASSERT_EQ(Around.Requests.size(), 1U);
    const FileDialogRequest& Request = Around.Requests[0];
    EXPECT_EQ(Request.Title, "Select a Wave file to Open");
    EXPECT_EQ(Request.Folder, WaveDir);
    EXPECT_EQ(Request.FileName, "now.wav");
    EXPECT_EQ(Request.Filter,
              "Audio files (Wav, Mp3, Au, Raw, Snd)|*.wav;*.Mp3;*.au;*.raw;*.snd|"
              "Wave files (Wav)|*.Wav|Mp3 files (Mp3)|*.Mp3|(Sun/Next) Sound Clip (Au)|*.au|"
              "Raw Sound file (Raw, Snd)|*.raw;*.snd|All files (*.*)|*.*");
    EXPECT_EQ(Request.DefaultExtension, "wav");
    EXPECT_TRUE(Request.FileMustExist);
    EXPECT_FALSE(Request.OverwritePrompt);
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("open dialog")) << "cancelled, and silent";
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(FileCommands, OpenLoadsTheFileAndBringsEverythingInLine) {
    const std::string Path = WriteWav("a.wav", 1234, 32000, 2);
    SelStart = SelEnd = PlaySelStart = PlaySelEnd = 5;
    ViewAll = false;
    Mp3ParamsChosen = true;
    OpenByDialog(Path);
    EXPECT_EQ(WaveStore->WavWaveINos, 1234);
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(WaveDir, Session.Path("music"));
    EXPECT_EQ(CurrentFormat, (WaveFormat{2, 32000, 16}));
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(PlaySelEnd, 0);
    EXPECT_TRUE(ViewAll);
    EXPECT_FALSE(Mp3ParamsChosen);
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("open dialog", "release", "title a.wav", "empty bookmarks",
                            "document 1234", "format 2 32000 16", "refresh", "recent"));
    EXPECT_THAT(RecentFilesRead(), Contains(Path));
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(FileCommands, OpenLoadsTheCompanionBookmarksIfTheyAreThere) {
    const std::string Path = WriteWav("a.WAV");
    Session.WriteFile("music/a.bok", {0, 0, 0, 0});
    OpenByDialog(Path);
    EXPECT_THAT(Around.TakeCalls(), Contains("load a.bok"));
}

TEST_F(FileCommands, OpenRefusesAnUnsupportedType) {
    const std::string Text = Session.WriteFile("music/a.txt", {1, 2, 3});
    OpenByDialog(Text);
    EXPECT_THAT(Messages.Texts(), ElementsAre(CannotOpen));
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("open dialog"));
    EXPECT_THAT(RecentFilesRead(), ::testing::Not(Contains(Text)));
}

TEST_F(FileCommands, OpenAsksForUnsavedWorkBeforeItsDialog) {
    WaveChanged = true;
    Commands.Open(false);
    Commands.Open(true);
    EXPECT_THAT(
        Messages.Texts(),
        ElementsAre("The current waveform is changed.\nOpen another file with out saving it?",
                    "The current waveform is changed.\n"
                    "Open another file with out saving it?"));
    EXPECT_THAT(Around.Calls, IsEmpty());
}

TEST_F(FileCommands, AFailedLoadStillClearsTheFlagsAndEntersTheList) {
    OpenByDialog(WriteWav("good.wav"));
    const std::string Bad = Session.WriteFile("music/bad.wav", {1, 2, 3});
    WaveChanged = BookmarkChanged = true;
    Messages.Answer(MsgBoxAnswer::Yes);
    static_cast<void>(Messages.TakeTexts());
    Around.TakeCalls();
    OpenByDialog(Bad);
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("The current waveform is changed.\nOpen another file with out saving it?",
                    "Error Loading " + Bad + "|No wave Data found in file",
                    "Wave file loading failed"));
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_EQ(WaveFileName, "good.wav");
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("open dialog", "release", "format 1 44100 16", "refresh", "recent"));
    EXPECT_EQ(RecentFilesRead()[1], Bad);
}

TEST_F(FileCommands, AFileThatPassedTheRateCheckAndFailedLeavesAnEmptyDocumentUnderTheOldName) {
    OpenByDialog(WriteWav("good.wav"));
    test::WavFile File;
    File.Channels = 3;
    File.Rate = 32000;
    File.Data = test::AudioBytes(test::Noise(300, 16, 1), 16);
    OpenByDialog(Session.WriteFile("music/three.wav", File.Whole()));
    EXPECT_EQ(WaveStore->WavWaveINos, 0);
    EXPECT_EQ(WaveFileName, "good.wav");
    EXPECT_EQ(CurrentFormat.Freq, 32000);
}

TEST_F(FileCommands, OpenInNewWindowStartsAProcessAndLeavesThisOneAlone) {
    OpenByDialog(WriteWav("a.wav"));
    const std::string Other = WriteWav("b b.wav");
    Around.TakeCalls();
    Around.Choices.push_back(Other);
    Commands.Open(true);
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("open dialog", "start " + Other));
    EXPECT_EQ(WaveFileName, "a.wav");
}

TEST_F(FileCommands, AProcessThatDoesNotStartIsTold) {
    Around.ProgramStarts = false;
    Around.Choices.push_back(WriteWav("a.wav"));
    Commands.Open(true);
    Commands.OpenAnother();
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("Open Wave Error|No such program", "Open Wave Error|No such program"));
}

TEST_F(FileCommands, OpenAnotherStartsAProcessWithoutAFile) {
    Commands.OpenAnother();
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("start"));
}

TEST_F(FileCommands, OneOpenInTwentyShowsATip) {
    struct Tips final : UserGuideWindow {
        std::vector<std::string> Shown;
        Tips() { SetUserGuideWindow(this); }
        ~Tips() override { SetUserGuideWindow(nullptr); }
        bool ShowGuideTip(const GuideTip& Tip) override {
            Shown.push_back(Tip.Message);
            return false;
        }
        void ShowStatusGuide(const std::string&) override {}
    } Tips;
    GuideChanceFix(0.05);
    Commands.Open(false);
    EXPECT_THAT(Tips.Shown, IsEmpty());
    GuideChanceFix(0.049);
    Commands.Open(false);
    EXPECT_THAT(Tips.Shown,
                ElementsAre("You can open multiple files by opening additional windows. Use the "
                            "menu command File - Open Another Window. This is useful for "
                            "copying/pasting between files."));
}

// ---- Save

TEST_F(FileCommands, SaveOfANewDocumentShowsItsDialogEvenIfSuchAFileExists) {
    Session.WriteFile("music/New.wav", {1, 2, 3});
    Commands.New();
    EXPECT_FALSE(Commands.Save(false));
    ASSERT_EQ(Around.Requests.size(), 1U);
    const FileDialogRequest& Request = Around.Requests[0];
    EXPECT_EQ(Request.Title, "Choose wave file name to save");
    EXPECT_EQ(Request.Folder, WaveDir);
    EXPECT_EQ(Request.FileName, "New.wav");
    EXPECT_EQ(Request.Filter, AudioFileFilter);
    EXPECT_EQ(Request.DefaultExtension, "wav");
    EXPECT_TRUE(Request.OverwritePrompt);
    EXPECT_TRUE(Request.PathMustExist);
    EXPECT_FALSE(Request.FileMustExist);
    EXPECT_EQ(TestSession::ReadFile(Session.Path("music/New.wav")).size(), 3U);
}

TEST_F(FileCommands, SaveWritesTheFileAndBringsEverythingInLine) {
    CurrentFormat = {1, 8000, 16};
    Commands.New();
    WaveChanged = BookmarkChanged = true;
    Around.TakeCalls();
    fs::create_directory(Session.Path("other"));
    Around.Choices.push_back(Session.Path("other/piece.wav"));
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(TestSession::ReadFile(Session.Path("other/piece.wav")).size(), 44U + 20000U);
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_EQ(WaveFileName, "piece.wav");
    EXPECT_EQ(WaveFilePath, Session.Path("other/piece.wav"));
    EXPECT_EQ(WaveDir, Session.Path("other"));
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("save dialog", "release original", "title piece.wav",
                            "bookmarks [piece.bok]", "format 1 8000 16", "recent"));
    EXPECT_EQ(RecentFilesRead()[1], Session.Path("other/piece.wav"));
}

TEST_F(FileCommands, SaveOfAFileAsksNothing) {
    const std::string Path = WriteWav("a.wav");
    OpenByDialog(Path);
    WaveChanged = true;
    Around.TakeCalls();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("release original", "title a.wav", "bookmarks [a.bok]",
                            "format 1 44100 16", "recent"));
    EXPECT_FALSE(WaveChanged);
    EXPECT_EQ(fs::file_size(Path), 2044U);
}

TEST_F(FileCommands, SaveOfAFileThatWasDeletedAsksForAName) {
    const std::string Path = WriteWav("a.wav");
    OpenByDialog(Path);
    fs::remove(Path);
    Around.TakeCalls();
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("save dialog"));
}

TEST_F(FileCommands, SaveAsAlwaysAsksAndCancelChangesNothing) {
    OpenByDialog(WriteWav("a.wav"));
    WaveChanged = true;
    Around.TakeCalls();
    EXPECT_FALSE(Commands.Save(true));
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("save dialog"));
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(FileCommands, ASecondSaveOfANewDocumentAsksNoMore) {
    Commands.New();
    Around.Choices.push_back(Session.Path("music/x.wav"));
    EXPECT_TRUE(Commands.Save(false));
    Around.TakeCalls();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Around.TakeCalls(), ::testing::Not(Contains("save dialog")));
}

TEST_F(FileCommands, AnUnknownEndingGetsWavAdded) {
    Commands.New();
    Around.Choices.push_back(Session.Path("music/x.txt"));
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(fs::exists(Session.Path("music/x.txt.wav")));
    EXPECT_FALSE(fs::exists(Session.Path("music/x.txt")));
    EXPECT_EQ(WaveFileName, "x.txt.wav");
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(FileCommands, AFileThatOnlyTheAddedEndingHitsIsNotOverwrittenWithoutAQuestion) {
    const std::string There = Session.WriteFile("music/x.txt.wav", {1, 2, 3});
    Commands.New();
    WaveChanged = true;
    Around.Choices.push_back(Session.Path("music/x.txt"));
    EXPECT_FALSE(Commands.Save(false));
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Text, There + " already exists.\nDo you want to replace it?");
    EXPECT_EQ(Messages.Requests[0].Default, MsgBoxAnswer::No);
    EXPECT_EQ(fs::file_size(There), 3U);
    EXPECT_TRUE(WaveChanged);
    Messages.Answer(MsgBoxAnswer::Yes);
    Around.Choices.push_back(Session.Path("music/x.txt"));
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_GT(fs::file_size(There), 44U);
}

TEST_F(FileCommands, ASaveThatFailsIsToldAndGivesFalse) {
    Commands.New();
    WaveChanged = true;
    fs::create_directory(Session.Path("music/folder.wav"));
    Around.Choices.push_back(Session.Path("music/folder.wav"));
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::OkOnly);
}

TEST_F(FileCommands, SavingOverTheOpenedFileKeepsUndoGoing) {
    const std::string Path = WriteWav("a.wav", 5000);
    OpenByDialog(Path);
    const test::Samples Before = test::LeftOf(*WaveStore);
    WaveStore->WaveDataDelete(100, 1, 3000, "Delete", true);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(fs::file_size(Path), 44U + 2 * 2000U);
    WaveStore->Undo();
    EXPECT_EQ(test::LeftOf(*WaveStore), Before);
}

TEST_F(FileCommands, TheBookmarksBesideTheFileBearItsName) {
    OpenByDialog(WriteWav("a.wav"));
    Around.TakeCalls();
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile());
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("bookmarks [a.bok]"));
}

TEST_F(FileCommands, BookmarksThatCouldNotBeWrittenAreToldAndStillCountAsChanged) {
    const std::string Path = WriteWav("a.wav");
    OpenByDialog(Path);
    const std::string Told = "Save Error|No space left\n" + Session.Path("music/a.bok");
    BookmarkChanged = true;
    Around.BookmarksFail = true;
    EXPECT_FALSE(Commands.SaveBookmarksBesideFile());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Told));
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Told));
    EXPECT_TRUE(BookmarkChanged);
    // The sound is saved: its new name counts everywhere.
    const std::string Other = Session.Path("music/b.wav");
    Around.Choices.push_back(Other);
    BookmarkChanged = false;
    EXPECT_FALSE(Commands.Save(true));
    EXPECT_EQ(Messages.TakeTexts().size(), 1U);
    EXPECT_TRUE(BookmarkChanged) << "beside the new name there are none";
    EXPECT_EQ(WaveFilePath, Other);
    EXPECT_EQ(RecentFilesRead()[1], Other);
    Around.BookmarksFail = false;
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_FALSE(BookmarkChanged);
}

// ---- Save Selected

TEST_F(FileCommands, SaveSelectedNeedsARange) {
    OpenByDialog(WriteWav("a.wav"));
    Around.TakeCalls();
    Commands.SaveSelected();
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("confirm 2 Save Selected"));
}

TEST_F(FileCommands, SaveSelectedWritesThePartAndLeavesTheDocumentAlone) {
    const std::string Path = WriteWav("a.wav", 1000, 44100, 2);
    OpenByDialog(Path);
    WaveChanged = BookmarkChanged = true;
    SelectedDir = Session.Path("music");
    fs::create_directory(Session.Path("parts"));
    Around.Selection = {11, 110};
    Around.Channel = 2;
    Around.Choices.push_back(Session.Path("parts/p"));
    Around.TakeCalls();
    Commands.SaveSelected();
    const FileDialogRequest& Request = Around.Requests.back();
    EXPECT_EQ(Request.Title, "Select file name to to save selected");
    EXPECT_EQ(Request.Folder, Session.Path("music"));
    EXPECT_EQ(Request.FileName, "");
    EXPECT_EQ(Request.Filter, AudioFileFilter);
    EXPECT_TRUE(Request.OverwritePrompt);
    EXPECT_THAT(Around.TakeCalls(),
                ElementsAre("confirm 2 Save Selected", "save dialog", "release original"));
    EXPECT_EQ(fs::file_size(Session.Path("parts/p.wav")), 44U + 200U);
    EXPECT_EQ(SelectedDir, Session.Path("parts"));
    EXPECT_EQ(WaveDir, Session.Path("music"));
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_TRUE(WaveChanged);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_EQ(RecentFilesRead()[1], Path);
    const auto Part = TestSession::ReadFile(Session.Path("parts/p.wav"));
    const test::Samples Right = test::RightOf(*WaveStore);
    EXPECT_EQ(static_cast<std::int16_t>(Part[44] | Part[45] << 8U), Right[10]);
}

TEST_F(FileCommands, SaveSelectedCancelledOrWithoutANameDoesNothing) {
    OpenByDialog(WriteWav("a.wav"));
    Around.Selection = {1, 10};
    Around.TakeCalls();
    Commands.SaveSelected();
    Around.Choices.push_back("");
    Commands.SaveSelected();
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("confirm 2 Save Selected", "save dialog",
                                                "confirm 2 Save Selected", "save dialog"));
}

// ---- The list of recent files as commands see it

TEST_F(FileCommands, AnEmptyNameOnlyFillsTheMenu) {
    RecentFilesAdd("/m/a.wav");
    Commands.AddLastFile("");
    EXPECT_THAT(Around.Captions, ElementsAre("/m/a.wav"));
    EXPECT_THAT(RecentFilesRead(), ElementsAre("", "/m/a.wav", "", "", "", ""));
}

TEST_F(FileCommands, ARecentFileOpens) {
    const std::string A = WriteWav("a.wav");
    OpenByDialog(A);
    OpenByDialog(WriteWav("b.wav"));
    Commands.OpenRecent(2);
    EXPECT_EQ(WaveFilePath, A);
    EXPECT_EQ(RecentFilesRead()[1], A);
}

TEST_F(FileCommands, ARecentFileThatIsGoneStaysInTheList) {
    const std::string A = WriteWav("a.wav");
    OpenByDialog(A);
    fs::remove(A);
    Commands.OpenRecent(1);
    EXPECT_THAT(Messages.Texts(), ElementsAre("File not found"));
    EXPECT_EQ(RecentFilesRead()[1], A);
    Commands.OpenRecent(5);
    Commands.OpenRecent(0);
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("File not found", "File not found", "File not found"));
}

TEST_F(FileCommands, ARecentFileOfAnotherTypeIsRefused) {
    const std::string Text = Session.WriteFile("music/a.txt", {1});
    Commands.AddLastFile(Text);
    Commands.OpenRecent(1);
    EXPECT_THAT(Messages.Texts(), ElementsAre(CannotOpen));
}

TEST_F(FileCommands, ARecentFileAsksForUnsavedWorkFirst) {
    OpenByDialog(WriteWav("a.wav"));
    BookmarkChanged = true;
    Around.TakeCalls();
    Commands.OpenRecent(1);
    EXPECT_THAT(Messages.Texts(), ElementsAre("Bookmarks of the current file is changed.\n"
                                              "Open another file with out saving it?"));
    EXPECT_THAT(Around.TakeCalls(), IsEmpty());
}

TEST_F(FileCommands, TheMenuOpensWhatItShowsEvenIfAnotherWindowHasChangedTheList) {
    const std::string A = WriteWav("a.wav");
    OpenByDialog(A);
    RecentFilesAdd(WriteWav("b.wav"));
    Commands.OpenRecent(1);
    EXPECT_EQ(WaveFilePath, A);
}

// ---- Drop

TEST_F(FileCommands, ADroppedFileOpensWithoutAQuestion) {
    WaveChanged = true;
    const std::string Path = WriteWav("a.wav");
    Commands.OpenDropped(Path);
    EXPECT_THAT(Messages.Requests, IsEmpty());
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(RecentFilesRead()[1], Path);
}

TEST_F(FileCommands, ADroppedFileOfAnotherTypeIsRefused) {
    Commands.OpenDropped(Session.WriteFile("music/a.txt", {1}));
    EXPECT_THAT(Messages.Texts(), ElementsAre(CannotOpen));
    EXPECT_THAT(Around.TakeCalls(), IsEmpty());
}

} // namespace
} // namespace quoril

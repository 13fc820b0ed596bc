// A save that fails costs nothing: neither the file that was there nor the word that there is
// unsaved work.
#include "audiofile/DocumentFile.h"
#include "audiofile/FrameWriter.h"
#include "audiofile/OpenSaveClass.h"
#include "audiofile/RecentFiles.h"
#include "audiofile/SaveSafetyFixture.h"
#include "audiofile/WavMaker.h"
#include "base/DocumentState.h"
#include "base/UserFileWriting.h"
#include "bookmarks/BookmarkFileMod.h"
#include "bookmarks/BookmarkRec.h"
#include "platform/FileHandle.h"
#include "platform/FileSystem.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>

namespace quoril::test {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

// ---- What fails

TEST_F(SaveSafetyTest, ALoudClipIn8BitsCostsNeitherTheFileNorTheEdit) {
    const std::string Path = WriteWav8("a.wav", ManyFrames);
    const Bytes Before = TestSession::ReadFile(Path);
    OpenByDialog(Path);
    for (const std::int32_t Position : {1, ManyFrames / 2, ManyFrames + 1}) {
        PutLoudSample(Position);
        ExpectFails(false, "Overflow");
        EXPECT_TRUE(TestSession::ReadFile(Path) == Before) << Position;
        // Closing and opening another file ask.
        EXPECT_FALSE(UnsavedWorkMayGo("Open another file with out saving it?"));
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("waveform is changed")));
        WaveStore->Undo();
    }
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
}

TEST_F(SaveSafetyTest, AFullDiskCostsNeitherTheFileNorTheEdit) {
    const std::string Path = OpenAndEdit("a.wav");
    const Bytes Before = TestSession::ReadFile(Path);
    {
        const FullDisk Disk;
        Disk.Fill();
        ExpectFails(false, "File too large\n" + Path);
    }
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
    EXPECT_TRUE(Commands.Save(false)) << "and it can be saved once there is room";
    EXPECT_EQ(fs::file_size(Path), 44U + 2 * 990U);
    WaveStore->Undo();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
}

TEST_F(SaveSafetyTest, ASourceThatAnotherProgramRewroteCostsNoOtherFile) {
    const std::string Source = WriteWav("source.wav", ManyFrames);
    fs::last_write_time(Source, fs::file_time_type::clock::now() - std::chrono::hours(1));
    const std::string Other = WriteWav("other.wav", 500);
    const Bytes Before = TestSession::ReadFile(Other);
    OpenByDialog(Source);
    const Bytes Foreign = Bytes(fs::file_size(Source), 0x11);
    const auto TryBoth = [&] {
        for (const bool ToNewName : {true, false}) {
            SaveAs(Other);
            Around.Calls.clear();
            WaveChanged = true;
            EXPECT_FALSE(Commands.Save(ToNewName));
            EXPECT_THAT(Messages.TakeTexts(),
                        ElementsAre(AllOf(HasSubstr("changed by another"), HasSubstr(Source),
                                          EndsWith(Unchanged))));
            EXPECT_TRUE(WaveChanged);
            Around.Choices.clear();
        }
        EXPECT_TRUE(TestSession::ReadFile(Other) == Before);
        EXPECT_TRUE(TestSession::ReadFile(Source) == Foreign);
        EXPECT_THAT(MusicFiles(), ElementsAre("other.wav", "source.wav"));
    };
    {
        const AtHalf Rewrite([&] { Session.WriteFile("music/source.wav", Foreign); });
        TryBoth();
    }
}

TEST_F(SaveSafetyTest, ASaveThatFailsLeavesTheNamesAsTheyWere) {
    const std::string Path = OpenAndEdit("a.wav");
    const std::string Other = WriteWav("b.wav", 77);
    const FullDisk Disk;
    Disk.Fill();
    SaveAs(Other);
    ExpectFails(true, "File too large");
    Disk.Empty();
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("save dialog", "release original"));
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_EQ(WaveFilePath, Path);
    EXPECT_EQ(RecentFilesRead()[1], Path);
    EXPECT_EQ(fs::file_size(Other), 44U + 2 * 77U);
}

TEST_F(SaveSafetyTest, WhereThereWasNoFileTheHalfWrittenOneStays) {
    OpenByDialog(WriteWav8("a.wav", ManyFrames));
    PutLoudSample(ManyFrames);
    WaveChanged = true;
    SaveAs(Music("new.wav"));
    EXPECT_FALSE(Commands.Save(true));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Wave file write error|Overflow"));
    EXPECT_TRUE(WaveChanged);
    EXPECT_GT(fs::file_size(Music("new.wav")), 44U);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav", "new.wav"));
    EXPECT_EQ(WaveFileName, "a.wav");
}

TEST_F(SaveSafetyTest, APartThatCannotBeWrittenCostsNoFile) {
    OpenByDialog(WriteWav8("a.wav", 1000));
    PutLoudSample(500);
    const std::string Other = WriteWav("b.wav", 500);
    const Bytes Before = TestSession::ReadFile(Other);
    Around.Selection = {400, 600};
    SaveAs(Other);
    Commands.SaveSelected();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(std::string("Wave file write error|Overflow\n\n") + Unchanged));
    EXPECT_TRUE(TestSession::ReadFile(Other) == Before);
    Around.Selection = {1, 400};
    SaveAs(Other);
    Commands.SaveSelected();
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(fs::file_size(Other), 444U);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav", "b.wav"));
}

TEST_F(SaveSafetyTest, AFolderThatTakesNoNewFileIsToldAndCostsNothing) {
    const std::string Path = OpenAndEdit("a.wav");
    const Bytes Before = TestSession::ReadFile(Path);
    fs::permissions(Path, fs::perms::all);
    ASSERT_EQ(::chmod(Music().c_str(), 0555), 0);
    fs::permissions(Session.Path(""), fs::perms::all);
    fs::permissions(SessionDir, fs::perms::all);
    BeforeFork();
    EXPECT_EQ(AsOrdinaryUser([&] {
                  ExpectFails(false, "Permission denied\nNo new file can be made beside\n" + Path);
                  return HasFailure() ? 1 : 0;
              }),
              0);
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
    fs::permissions(Music(), fs::perms::owner_all);
}

TEST_F(SaveSafetyTest, AFileThatAnotherProgramLocksMeanwhileStays) {
    const std::string Path = OpenAndEdit("a.wav", ManyFrames);
    const std::string Other = WriteWav("b.wav", 500);
    std::unique_ptr<FileForReading> Another;
    {
        const AtHalf Lock([&] { Another = std::make_unique<FileForReading>(Other); });
        SaveAs(Other);
        ExpectFails(true, "This file is held by another program\n" + Other);
    }
    EXPECT_EQ(fs::file_size(Other), 44U + 2 * 500U);
    Another.reset();
    SaveAs(Other);
    EXPECT_TRUE(Commands.Save(true));
}

TEST_F(SaveSafetyTest, ASaveThatIsRefusedStillHoldsTheOpenedFile) {
    const std::string Path = OpenAndEdit("a.wav");
    const Samples Edited = LeftOf(*WaveStore);
    ASSERT_TRUE(IsHeldLocked(Path));
    {
        const FileForReading Another(Path);
        EXPECT_FALSE(Commands.Save(false));
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("is locked")));
    }
    // Another editor would replace it now, and the samples be lost.
    EXPECT_TRUE(IsHeldLocked(Path));
    EXPECT_EQ(LeftOf(*WaveStore), Edited);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_FALSE(IsHeldLocked(Path));
}

TEST_F(SaveSafetyTest, WithoutRoomForWorkFilesTheOpenedFileAndTheDocumentStay) {
    const std::string Path = OpenAndEdit("a.wav", 8000000, 1); // 16 MB, and the budget is 10 MB
    const Bytes Before = TestSession::ReadFile(Path);
    const std::string Kept = SessionDir;
    SessionDir = Session.Path("no such folder");
    ExpectFails(false, "No such file or directory");
    SessionDir = Kept;
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
    EXPECT_TRUE(Commands.Save(false));
    WaveStore->Undo();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
}

// ---- The bookmarks beside it

class BookmarkSafetyTest : public SaveSafetyTest {
  protected:
    BookmarkSafetyTest() {
        Bookmarks.assign(1, {});
        Around.BookmarksLieInFiles = true;
    }
    ~BookmarkSafetyTest() override { Bookmarks.assign(1, {}); }
    static void Add(std::int32_t From) {
        BookmarkRec Bookmark = NewBookmark();
        Bookmark.From = Bookmark.To = From;
        BookmarkAppend(Bookmark);
        BookmarkChanged = true;
    }
    const std::string Bok = Music("a.bok");
};

TEST_F(BookmarkSafetyTest, AFullDiskCostsNoBookmarks) {
    OpenByDialog(WriteWav("a.wav"));
    Add(5);
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile());
    const Bytes Before = TestSession::ReadFile(Bok);
    Add(6);
    const FullDisk Disk;
    Disk.Fill();
    EXPECT_FALSE(Commands.SaveBookmarksBesideFile());
    Disk.Empty();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Save Error|File too large\n" + Bok + "\n\n" + Unchanged));
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_TRUE(TestSession::ReadFile(Bok) == Before);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.bok", "a.wav"));
}

TEST_F(BookmarkSafetyTest, AFirstFileThatCannotBeWrittenLeavesNone) {
    OpenByDialog(WriteWav("a.wav"));
    Add(5);
    const FullDisk Disk;
    Disk.Fill();
    EXPECT_FALSE(Commands.SaveBookmarksBesideFile());
    Disk.Empty();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Save Error|File too large\n" + Bok));
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav"));
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile()) << "with no question about an unreadable file";
}

TEST_F(BookmarkSafetyTest, TheirFileKeepsItsRightsAndLinks) {
    OpenByDialog(WriteWav("a.wav"));
    Add(5);
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile());
    fs::rename(Bok, Session.Path("real.bok"));
    fs::create_symlink("../real.bok", Bok);
    ASSERT_EQ(::chmod(Bok.c_str(), 0640), 0);
    Add(6);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(fs::is_symlink(Bok));
    EXPECT_EQ(StatusOf(Bok).st_mode & 07777U, 0640U);
    Bookmarks.assign(1, {});
    LoadBookmarks(Session.Path("real.bok"));
    EXPECT_EQ(BookmarkNos(), 2);
}

TEST_F(BookmarkSafetyTest, AProtectedFileOfBookmarksStays) {
    OpenByDialog(WriteWav("a.wav"));
    Add(5);
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile());
    const Bytes Before = TestSession::ReadFile(Bok);
    ASSERT_EQ(::chmod(Bok.c_str(), 0444), 0);
    Add(6);
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(StartsWith("Save Error|Permission denied\n")));
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_TRUE(TestSession::ReadFile(Bok) == Before);
}

TEST_F(BookmarkSafetyTest, AFileThatCannotBeReadIsReplacedOnlyWhenTheUserSaysSo) {
    const std::string Path = WriteWav("a.wav");
    const Bytes Foreign = {1, 2, 3, 0x7F, 5};
    Session.WriteFile("music/a.bok", Foreign);
    OpenByDialog(Path);
    EXPECT_EQ(BookmarkNos(), 0);
    // Without bookmarks nothing has to be there, and nothing is asked.
    WaveChanged = BookmarkChanged = true;
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_TRUE(TestSession::ReadFile(Bok) == Foreign);

    Add(5);
    const std::string Question = "This file is there, but it cannot be read as bookmarks\n" + Bok +
                                 "\nDo you want to replace it?";
    WaveChanged = true;
    EXPECT_FALSE(Commands.Save(false));
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Default, MsgBoxAnswer::No);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question));
    EXPECT_FALSE(WaveChanged) << "the sound is saved";
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_TRUE(TestSession::ReadFile(Bok) == Foreign);
    EXPECT_FALSE(Commands.SaveBookmarksBesideFile());
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question));

    Messages.Answer(MsgBoxAnswer::Yes);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question));
    EXPECT_FALSE(BookmarkChanged);
    Bookmarks.assign(1, {});
    LoadBookmarks(Bok);
    EXPECT_EQ(BookmarkNos(), 1);
}

TEST_F(BookmarkSafetyTest, AFileThatCannotBeDeletedIsTold) {
    OpenByDialog(WriteWav("a.wav"));
    Add(5);
    EXPECT_TRUE(Commands.SaveBookmarksBesideFile());
    Bookmarks.assign(1, {});
    BookmarkChanged = true;
    const FileForReading Another(Bok);
    EXPECT_FALSE(Commands.Save(false));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Save Error|This file of bookmarks cannot be deleted\n" + Bok));
    EXPECT_TRUE(BookmarkChanged);
}

// ---- While it is written

TEST_F(SaveSafetyTest, TheOldFileStandsUntilTheNewOneIsComplete) {
    const std::string Path = OpenAndEdit("a.wav", ManyFrames);
    const Bytes Before = TestSession::ReadFile(Path);
    const Samples Edited = LeftOf(*WaveStore);
    const auto Old = StatusOf(Path).st_ino;
    {
        const AtHalf Look([&] {
            EXPECT_TRUE(UserFileWriting::IsOn());
            EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
            EXPECT_EQ(StatusOf(Path).st_ino, Old);
        });
        EXPECT_TRUE(Commands.Save(false));
    }
    EXPECT_FALSE(UserFileWriting::IsOn());
    EXPECT_TRUE(TestSession::ReadFile(Path) == WavFile{.Data = AudioBytes(Edited, 16)}.Whole());
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav"));
    EXPECT_EQ(TablesInUse().OrgFiles, 0) << "the document reads nothing from the new file";
    EXPECT_EQ(LeftOf(*WaveStore), Edited);
    WaveStore->Undo();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
}

TEST_F(SaveSafetyTest, AWriterOfAnyKindTakesTheSamplesOutOfTheOldFileFirst) {
    const std::string Path = WriteWav("a.wav");
    OpenByDialog(Path);
    const Samples Before = LeftOf(*WaveStore);
    EXPECT_TRUE(WriteAudioFile(Path, [](FileReplacement& File) { File.Write(0, "other", 5); }));
    EXPECT_EQ(fs::file_size(Path), 5U);
    EXPECT_EQ(LeftOf(*WaveStore), Before);
}

TEST_F(SaveSafetyTest, AProcessThatMustEndCompletesTheFileAndPutsItInPlace) {
    const std::string Path = OpenAndEdit("a.wav", ManyFrames);
    const Bytes Whole = WavFile{.Data = AudioBytes(LeftOf(*WaveStore), 16)}.Whole();
    const AtHalf End([&] {
        EXPECT_TRUE(UserFileWriting::FinishNow());
        EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
        EXPECT_THAT(MusicFiles(), ElementsAre("a.wav"));
    });
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
}

TEST_F(SaveSafetyTest, WhatCannotBeCompletedAtTheEndOfTheProcessCostsNoFile) {
    const std::string Path = WriteWav8("a.wav", 3 * ManyFrames);
    const Bytes Before = TestSession::ReadFile(Path);
    OpenByDialog(Path);
    PutLoudSample(3 * ManyFrames);
    const AtHalf End([&] {
        EXPECT_FALSE(UserFileWriting::FinishNow());
        EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
        EXPECT_THAT(MusicFiles(), ElementsAre("a.wav")) << "nobody comes to clear it away";
    });
    ExpectFails(false, "Overflow");
}

TEST_F(SaveSafetyTest, WhatAKilledProcessLeftGoesWithTheNextSave) {
    const std::string Path = OpenAndEdit("a.wav", ManyFrames);
    const Bytes Before = TestSession::ReadFile(Path);
    BeforeFork();
    const pid_t Child = ::fork();
    if (Child == 0) {
        const AtHalf Die([] { ::raise(SIGKILL); });
        Commands.Save(false);
        ::_exit(0);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
    ASSERT_TRUE(WIFSIGNALED(Status));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Before);
    EXPECT_EQ(MusicFiles().size(), 2U);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav"));
}

TEST_F(SaveSafetyTest, TwoProgramsThatSaveTheSameFileDoNotMix) {
    const std::string Source = OpenAndEdit("a.wav", ManyFrames);
    const std::string Path = WriteWav("b.wav");
    const Bytes Whole = WavFile{.Data = AudioBytes(LeftOf(*WaveStore), 16)}.Whole();
    const auto InAnotherProcess = [&](std::int32_t Frames) {
        BeforeFork();
        const pid_t Child = ::fork();
        if (Child == 0) {
            SetProgressReport(nullptr);
            ::_exit(OpenSaveClass().FileWriteWavePart(*WaveStore, 1, Frames, 0, Path) ? 0 : 1);
        }
        int Status = 0;
        ::waitpid(Child, &Status, 0);
        EXPECT_EQ(Status, 0);
        EXPECT_EQ(fs::file_size(Path), 44U + 2U * static_cast<unsigned>(Frames));
    };
    const AtHalf Other([&] {
        InAnotherProcess(5);
        InAnotherProcess(6);
    });
    SaveAs(Path);
    EXPECT_TRUE(Commands.Save(true));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav", "b.wav"));
}

} // namespace
} // namespace quoril::test

// What a file is beside its contents, links, rights and notes, outlasts a save.
#include "audiofile/SaveSafetyFixture.h"
#include "audiofile/WavMaker.h"
#include "settings/STD1.h"
#include "support/FullDisk.h"
#include "support/OrdinaryUser.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>

namespace {
/// Runs when one file begins to be copied into another; empty for nothing.
std::function<void()> AtCopy;
} // namespace

/// Stands before the system's own.
extern "C" ssize_t copy_file_range(int From, off64_t* FromAt, int To, off64_t* ToAt,
                                   std::size_t Bytes, unsigned Flags) {
    if (const auto What = std::exchange(AtCopy, nullptr))
        What();
    return ::syscall(SYS_copy_file_range, From, FromAt, To, ToAt, Bytes, Flags);
}

namespace quoril::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using SaveKeepsTest = SaveSafetyTest;

TEST_F(SaveKeepsTest, SymbolicLinksStayAndTheFileBehindThemIsReplaced) {
    fs::create_directory(Session.Path("elsewhere"));
    const std::string Real = Session.Path("elsewhere/real.wav");
    fs::rename(WriteWav("a.wav"), Real);
    fs::create_symlink("../elsewhere/real.wav", Music("relative.wav"));
    fs::create_symlink(Real, Music("absolute.wav"));
    fs::create_symlink("relative.wav", Music("chain.wav"));
    fs::create_directory_symlink("../elsewhere", Music("folder"));
    std::uintmax_t Size = fs::file_size(Real);
    for (const std::string Name :
         {"relative.wav", "absolute.wav", "chain.wav", "folder/real.wav"}) {
        OpenByDialog(Music(Name));
        WaveStore->WaveDataDelete(1, 1, 10, "Delete", true);
        EXPECT_TRUE(Commands.Save(false)) << Name;
        Size -= 20;
        EXPECT_EQ(fs::file_size(Real), Size) << Name;
        EXPECT_FALSE(fs::is_symlink(Real));
    }
    EXPECT_EQ(fs::read_symlink(Music("relative.wav")), "../elsewhere/real.wav");
    EXPECT_EQ(fs::read_symlink(Music("absolute.wav")), Real);
    EXPECT_EQ(fs::read_symlink(Music("chain.wav")), "relative.wav");
    EXPECT_THAT(MusicFiles(), ElementsAre("absolute.wav", "chain.wav", "folder", "relative.wav"));
    EXPECT_EQ(std::distance(fs::directory_iterator(Session.Path("elsewhere")), {}), 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(SaveKeepsTest, ALinkThatLeadsNowhereYetGetsItsFile) {
    OpenByDialog(WriteWav("a.wav"));
    fs::create_symlink("later.wav", Music("link.wav"));
    SaveAs(Music("link.wav"));
    EXPECT_TRUE(Commands.Save(true));
    EXPECT_TRUE(fs::is_symlink(Music("link.wav")));
    EXPECT_EQ(fs::file_size(Music("later.wav")), 2044U);
}

TEST_F(SaveKeepsTest, AFileOfSeveralNamesKeepsThemAll) {
    const std::string Path = OpenAndEdit("a.wav", 5000, 10);
    const Samples Edited = LeftOf(*WaveStore);
    fs::create_hard_link(Path, Music("b.wav"));
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(StatusOf(Path).st_nlink, 2U);
    const Bytes Whole = WavFile{.Data = AudioBytes(Edited, 16)}.Whole();
    EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
    EXPECT_TRUE(TestSession::ReadFile(Music("b.wav")) == Whole);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav", "b.wav"));
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->WavWaveINos, 5000);
    EXPECT_TRUE(Commands.Save(false)) << "a longer one, too";
    EXPECT_EQ(fs::file_size(Music("b.wav")), 10044U);
    PutLoudSample(1);
    WaveStore->WavFmtBits = 8;
    ExpectFails(false, "Overflow");
    EXPECT_EQ(fs::file_size(Music("b.wav")), 10044U);
}

TEST_F(SaveKeepsTest, AKillWhileAFileOfSeveralNamesIsFilledLeavesTheWholeBesideIt) {
    const std::string Path = OpenAndEdit("a.wav", 5000, 10);
    const Bytes Whole = WavFile{.Data = AudioBytes(LeftOf(*WaveStore), 16)}.Whole();
    fs::create_hard_link(Path, Music("b.wav"));
    Session.WriteFile("music/a (complete).wav", {7});
    BeforeFork();
    const pid_t Child = ::fork();
    if (Child == 0) {
        AtCopy = [] { ::raise(SIGKILL); };
        Commands.Save(false);
        ::_exit(0);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
    ASSERT_TRUE(WIFSIGNALED(Status));
    const std::string Beside = Music("a (complete 2).wav");
    EXPECT_TRUE(TestSession::ReadFile(Beside) == Whole);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
    EXPECT_TRUE(TestSession::ReadFile(Beside) == Whole) << "no save takes it away";
    EXPECT_THAT(MusicFiles(),
                ElementsAre("a (complete 2).wav", "a (complete).wav", "a.wav", "b.wav"));
    EXPECT_THAT(TestSession::ReadFile(Music("a (complete).wav")), ElementsAre(7));
}

TEST_F(SaveKeepsTest, AFileOfSeveralNamesThatCannotBeFilledIsToldWithWhereTheWholeLies) {
    const std::string Path = OpenAndEdit("a.wav", 5000, 10);
    const Bytes Whole = WavFile{.Data = AudioBytes(LeftOf(*WaveStore), 16)}.Whole();
    fs::create_hard_link(Path, Music("b.wav"));
    const FullDisk Disk;
    AtCopy = [&Disk] { Disk.Fill(); };
    EXPECT_FALSE(Commands.Save(false));
    Disk.Empty();
    const std::string Beside = Music("a (complete).wav");
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file write error|File too large\n" + Path +
                            "\n\nThe file is written in part only. The whole of it lies in\n" +
                            Beside));
    EXPECT_TRUE(WaveChanged);
    EXPECT_TRUE(TestSession::ReadFile(Beside) == Whole);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_TRUE(TestSession::ReadFile(Music("b.wav")) == Whole);
}

TEST_F(SaveKeepsTest, NobodyGetsRightsByTheFolderThatTheFileDidNotGive) {
    constexpr const char* ForNewFiles = "system.posix_acl_default";
    constexpr const char* OfTheFile = "system.posix_acl_access";
    // Version 2; who, rights and number: the owner, user 12345, the group, the mask, all others.
    const std::array<unsigned char, 44> List = {
        2, 0,  0,   0,   1,   0,   7,  0, 255, 255, 255, 255, 2,   0,  7,
        0, 57, 48,  0,   0,   4,   0,  5, 0,   255, 255, 255, 255, 16, 0,
        7, 0,  255, 255, 255, 255, 32, 0, 5,   0,   255, 255, 255, 255};
    const std::string Path = OpenAndEdit("a.wav");
    ASSERT_EQ(::chmod(Path.c_str(), 0640), 0);
    if (::setxattr(Music().c_str(), ForNewFiles, List.data(), List.size(), 0) != 0) {
        EXPECT_EQ(errno, ENOTSUP); // a file system without lists
        return;
    }
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(::getxattr(Path.c_str(), OfTheFile, nullptr, 0), -1);
    EXPECT_EQ(StatusOf(Path).st_mode & 07777U, 0640U);
    // And a list that the file has itself stays.
    ASSERT_EQ(::setxattr(Path.c_str(), OfTheFile, List.data(), List.size(), 0), 0);
    WaveStore->Undo();
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(::getxattr(Path.c_str(), OfTheFile, nullptr, 0), 44);
    EXPECT_EQ(StatusOf(Path).st_mode & 07777U, 0775U);
}

TEST_F(SaveKeepsTest, RightsAndOwnerAreKept) {
    const std::string Path = OpenAndEdit("a.wav");
    ASSERT_EQ(::chmod(Path.c_str(), 0642), 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(Path.c_str(), 1234, 5678), 0);
    }
    const struct stat Before = StatusOf(Path);
    EXPECT_TRUE(Commands.Save(false));
    const struct stat After = StatusOf(Path);
    EXPECT_NE(After.st_size, Before.st_size);
    EXPECT_EQ(After.st_mode, Before.st_mode);
    EXPECT_EQ(After.st_uid, Before.st_uid);
    EXPECT_EQ(After.st_gid, Before.st_gid);
}

TEST_F(SaveKeepsTest, AFileThatIsDeletedMeanwhileComesBackWithItsRights) {
    const std::string Path = WriteWav("a.wav");
    const std::string Other = WriteWav("b.wav", ManyFrames);
    ASSERT_EQ(::chmod(Path.c_str(), 0642), 0);
    OpenByDialog(Other);
    const AtHalf Delete([&] { fs::remove(Path); });
    SaveAs(Path);
    EXPECT_TRUE(Commands.Save(true));
    EXPECT_TRUE(TestSession::ReadFile(Path) == TestSession::ReadFile(Other));
    EXPECT_EQ(StatusOf(Path).st_mode & 07777U, 0642U);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav", "b.wav"));
}

TEST_F(SaveKeepsTest, AFileOfSomebodyElseThatMayBeWrittenKeepsItsOwner) {
    if (::geteuid() != 0)
        return; // only the superuser makes files of others
    const std::string Path = OpenAndEdit("a.wav");
    ASSERT_EQ(::chmod(Path.c_str(), 0666), 0);
    ASSERT_EQ(::chown(Path.c_str(), 1234, 5678), 0);
    for (const std::string& Folder : {Session.Path(""), Music(), SessionDir, AppPath})
        fs::permissions(Folder, fs::perms::all);
    BeforeFork();
    EXPECT_EQ(AsOrdinaryUser([&] {
                  const bool Saved = Commands.Save(false);
                  EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
                  return Saved ? 0 : 1;
              }),
              0);
    EXPECT_EQ(StatusOf(Path).st_uid, 1234U);
    EXPECT_EQ(StatusOf(Path).st_gid, 5678U);
    EXPECT_EQ(StatusOf(Path).st_mode & 07777U, 0666U);
    EXPECT_EQ(fs::file_size(Path), 44U + 2 * 990U);
    EXPECT_THAT(MusicFiles(), ElementsAre("a.wav"));
}

TEST_F(SaveKeepsTest, WhatIsNotedOnAFileStaysOnIt) {
    const std::string Path = OpenAndEdit("a.wav");
    const std::string Note = "a take of mine";
    if (::setxattr(Path.c_str(), "user.xdg.comment", Note.data(), Note.size(), 0) != 0) {
        EXPECT_EQ(errno, ENOTSUP); // a file system without notes
        return;
    }
    EXPECT_TRUE(Commands.Save(false));
    std::string Read(100, ' ');
    const ssize_t Bytes = ::getxattr(Path.c_str(), "user.xdg.comment", Read.data(), Read.size());
    ASSERT_EQ(Bytes, static_cast<ssize_t>(Note.size()));
    EXPECT_THAT(Read, StartsWith(Note));
}

TEST_F(SaveKeepsTest, ANameOfTheGreatestLengthIsSaved) {
    std::string Letters = "n";
    while (Letters.size() < 251)
        Letters += "\xC3\xBC";
    for (const std::string& Name : {std::string(251, 'n'), Letters}) {
        const std::string Path = OpenAndEdit(Name + ".wav");
        EXPECT_TRUE(Commands.Save(false));
        EXPECT_EQ(fs::file_size(Path), 44U + 2 * 990U);
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(MusicFiles().size(), 2U);
}

TEST_F(SaveKeepsTest, NoLetterIsCutInTheNameOfTheNeighbour) {
    std::string Name = "n";
    std::string Wanted = ".n";
    for (int Letter = 1; Letter <= 60; ++Letter) {
        Name += "\xC3\xBC";
        Wanted += Letter <= 29 ? "\xC3\xBC" : "";
    }
    OpenAndEdit(Name + ".wav", ManyFrames);
    const AtHalf Look(
        [&] { EXPECT_THAT(MusicFiles(), ElementsAre(Wanted + ".quoril-save-1", Name + ".wav")); });
    EXPECT_TRUE(Commands.Save(false));
}

TEST_F(SaveKeepsTest, WhatAnotherUserLeftIsNotOursToClearAway) {
    if (::geteuid() != 0)
        return; // only the superuser makes files of others
    OpenAndEdit("a.wav");
    const std::string Left = Session.WriteFile("music/.a.wav.quoril-save-1", {7});
    ASSERT_EQ(::chown(Left.c_str(), 1234, 5678), 0);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(MusicFiles(), ElementsAre(".a.wav.quoril-save-1", "a.wav"));
}

} // namespace
} // namespace quoril::test

// What a file is beside its contents, links, rights and notes, outlasts a save.
#include "audiofile/SaveSafetyFixture.h"
#include "audiofile/WavMaker.h"
#include "settings/STD1.h"
#include "support/OrdinaryUser.h"

#include <cerrno>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

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

} // namespace
} // namespace quoril::test

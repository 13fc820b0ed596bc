#include "platform/PrivateProfile.h"

#include "platform/FileSystem.h"
#include "support/OrdinaryUser.h"
#include "support/TempFolder.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quoril {
namespace {

using namespace std::string_literals;
using test::TempFolder;

class PrivateProfile : public ::testing::Test {
  protected:
    [[nodiscard]] std::string Get(const std::string& Section, const std::string& Key,
                                  std::size_t Most = 0) const {
        return GetPrivateProfileStringA(Section, Key, "default", File, Most);
    }
    [[nodiscard]] bool Put(const std::string& Section, const std::string& Key,
                           const std::string& Value) const {
        return WritePrivateProfileStringA(Section, Key, Value, File);
    }
    void Hold(const std::string& Text) const { Folder.Write("settings.ini", Text); }
    [[nodiscard]] std::string Text() const { return TempFolder::Read(File); }
    /// Names of all that lies in the folder.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> Result;
        for (const std::string& Name : FilesInFolder(Folder.Path()))
            Result.push_back(NameOfPath(Name));
        return Result;
    }

    const TempFolder Folder;
    const std::string File = Folder / "settings.ini";
};

TEST_F(PrivateProfile, MissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(Get("General", "Key"), "default");
    EXPECT_FALSE(FileExists(File));
    Hold("[General]\nOther=1\n[Else]\nKey=2\n");
    EXPECT_EQ(Get("General", "Key"), "default");
    EXPECT_EQ(Get("Nowhere", "Key"), "default");
    EXPECT_EQ(GetPrivateProfileStringA("General", "Other", "default", ""), "default");
    EXPECT_EQ(
        GetPrivateProfileStringA("General", "Other", "default", File + std::string("\0more", 5)),
        "default");
}

TEST_F(PrivateProfile, KeyWithoutTextIsEmptyAndNotMissing) {
    Hold("[General]\nEmpty=\nQuoted=\"\"\nBlank=  \t\nBare\n");
    EXPECT_EQ(Get("General", "Empty"), "");
    EXPECT_EQ(Get("General", "Quoted"), "");
    EXPECT_EQ(Get("General", "Blank"), "");
    EXPECT_EQ(Get("General", "Bare"), "");
}

TEST_F(PrivateProfile, NamesAreComparedWithoutCase) {
    Hold("[gEnErAl]\ntMPdIR0=/data\n");
    EXPECT_EQ(Get("General", "TmpDir0"), "/data");
    EXPECT_TRUE(Put("GENERAL", "TMPDIR0", "/other"));
    EXPECT_EQ(Get("general", "tmpdir0"), "/other");
    EXPECT_EQ(Text().find("/data"), std::string::npos);
}

TEST_F(PrivateProfile, BlanksAndOnePairOfQuotesAreTakenOff) {
    Hold("[ General ]\n"
         "  Blanks \t = \t a b \t\n"
         "Double = \"  in quotes \"\n"
         "Single='one'\n"
         "Twice=\"\"two\"\"\n"
         "Mixed='\"three\"'\n"
         "Open=\"four\n"
         "Unlike=\"five'\n"
         "Lone=\"\n"
         "Inner=a \"b\" c\n");
    EXPECT_EQ(Get("General", "Blanks"), "a b");
    EXPECT_EQ(Get("General", "Double"), "  in quotes ");
    EXPECT_EQ(Get("General", "Single"), "one");
    EXPECT_EQ(Get("General", "Twice"), "\"two\"");
    EXPECT_EQ(Get("General", "Mixed"), "\"three\"");
    EXPECT_EQ(Get("General", "Open"), "\"four");
    EXPECT_EQ(Get("General", "Unlike"), "\"five'");
    EXPECT_EQ(Get("General", "Lone"), "\"");
    EXPECT_EQ(Get("General", "Inner"), "a \"b\" c");
}

TEST_F(PrivateProfile, FilesOfOtherSystemsAreRead) {
    Hold("\xEF\xBB\xBF; from elsewhere\r\n\r\n[General]\r\nA=1\r\nB=2\rC=3\n");
    EXPECT_EQ(Get("General", "A"), "1");
    EXPECT_EQ(Get("General", "B"), "2");
    EXPECT_EQ(Get("General", "C"), "3");
    EXPECT_TRUE(Put("General", "A", "4"));
    EXPECT_TRUE(Text().starts_with("\xEF\xBB\xBF; from elsewhere"));
    EXPECT_EQ(Get("General", "A"), "4");
    EXPECT_EQ(Get("General", "C"), "3");
}

TEST_F(PrivateProfile, OnlyTheVeryFirstSignatureCounts) {
    for (const char* Start : {"\n", "\xEF\xBB\xBF", "; remark\n", "[None]\n"}) {
        Hold(std::string(Start) + "\xEF\xBB\xBF" + "END=1\n");
        EXPECT_EQ(Get("", "END"), "default") << Start;
        ASSERT_TRUE(Put("A", "k", "v"));
        EXPECT_EQ(Get("", "END"), "default") << Start;
        EXPECT_NE(Text().find("\xEF\xBB\xBF"
                              "END=1\n"),
                  std::string::npos)
            << Start;
    }
}

TEST_F(PrivateProfile, ValueIsCutOnlyOnRequest) {
    ASSERT_TRUE(Put("General", "Long", std::string(5000, 'x')));
    EXPECT_EQ(Get("General", "Long"), std::string(5000, 'x'));
    EXPECT_EQ(Get("General", "Long", 99), std::string(99, 'x'));
    EXPECT_EQ(Get("General", "Missing", 3), "def");
    EXPECT_EQ(Get("General", "Missing", 7), "default");
}

TEST_F(PrivateProfile, EveryValueComesBackAsItWasGiven) {
    for (const std::string& Value :
         {std::string("plain"), std::string(), std::string(" "), std::string(" edge "),
          std::string("\tedge"), std::string("\"quoted\""), std::string("'quoted'"),
          std::string("\""), std::string("''"), std::string("\" \""), std::string("a=b;c#d"),
          std::string("; no comment"), std::string("[no section]"), std::string("<<<END"),
          std::string("caf\xC3\xA9"), std::string("caf\xE9 \xFF\x80\x01"),
          std::string("C:\\Temp\\"), std::string("%s%n"), std::string(3000, '"')}) {
        ASSERT_TRUE(Put("General", "Key", Value)) << Value;
        EXPECT_EQ(Get("General", "Key"), Value);
        ASSERT_TRUE(Put("General", "Other", "1"));
        EXPECT_EQ(Get("General", "Key"), Value);
    }
}

TEST_F(PrivateProfile, ValueKeepsItsBytesInTheFile) {
    ASSERT_TRUE(Put("Path", "Last Wave Dir", "/home/caf\xE9/\xC3\xA9"));
    EXPECT_EQ(Text(), "[Path]\nLast Wave Dir=/home/caf\xE9/\xC3\xA9\n");
}

TEST_F(PrivateProfile, NoValueAndNoNameCanBringInLinesOfItsOwn) {
    ASSERT_TRUE(Put("General", "Key", "a\nUndoOptionON=0\r[Color]\r\nBack=0\n"));
    EXPECT_EQ(Get("General", "UndoOptionON"), "default");
    EXPECT_EQ(Get("Color", "Back"), "default");
    EXPECT_EQ(Get("General", "Key"), "a UndoOptionON=0 [Color]  Back=0 ");
    ASSERT_TRUE(Put("General", "Key", std::string("a\0b", 3)));
    EXPECT_EQ(Get("General", "Key"), "a b");
    ASSERT_TRUE(Put("General", "X\nUndoOptionON", "0"));
    ASSERT_TRUE(Put("S]\n[Color", "Back", "0"));
    EXPECT_EQ(Get("General", "UndoOptionON"), "default");
    EXPECT_EQ(Get("Color", "Back"), "default");
}

TEST_F(PrivateProfile, AnyNameFindsAgainWhatItStored) {
    int Number = 0;
    for (const std::string& Key :
         {std::string("First line\nsecond line of a tip"), std::string("Size = 5"),
          std::string("; remark"), std::string("# remark"), std::string("[bracket]"),
          std::string(" edges "), std::string("\"quotes\""), std::string("caf\xE9"),
          std::string("zero\0byte", 9)}) {
        const std::string Value = std::to_string(++Number);
        ASSERT_TRUE(Put("I Know", Key, Value)) << Key;
        EXPECT_EQ(Get("I Know", Key), Value) << Key;
        ASSERT_TRUE(Put(Key, "Key", Value)) << Key;
        EXPECT_EQ(Get(Key, "Key"), Value) << Key;
    }
    EXPECT_EQ(Get("I Know", "Size = 5"), "2"); // and none was lost on the way
}

TEST_F(PrivateProfile, SeveralValuesAreStoredInOneChange) {
    Hold("[A]\nOne=1\nTwo=2\n");
    EXPECT_TRUE(WritePrivateProfileStrings("A", {{"Two", "zwei"}, {"Three", " 3 "}}, File));
    EXPECT_EQ(Get("A", "One"), "1");
    EXPECT_EQ(Get("A", "Two"), "zwei");
    EXPECT_EQ(Get("A", "Three"), " 3 ");
    // The same again changes nothing, and so does one without a name among them.
    struct stat Before {};
    struct stat After {};
    ASSERT_EQ(::stat(File.c_str(), &Before), 0);
    EXPECT_TRUE(WritePrivateProfileStrings("A", {{"Two", "zwei"}, {"Three", " 3 "}}, File));
    EXPECT_FALSE(WritePrivateProfileStrings("A", {{"Two", "2"}, {"=", "x"}}, File));
    ASSERT_EQ(::stat(File.c_str(), &After), 0);
    EXPECT_EQ(Before.st_ino, After.st_ino);
    EXPECT_EQ(Get("A", "Two"), "zwei");
}

TEST_F(PrivateProfile, KeyWithoutANameIsNotStored) {
    EXPECT_FALSE(Put("General", "", "1"));
    EXPECT_FALSE(Put("General", " \t", "1"));
    EXPECT_FALSE(Put("General", ";", "1"));
    EXPECT_FALSE(FileExists(File));
    EXPECT_EQ(Get("General", ""), "default");
}

TEST_F(PrivateProfile, OrderCommentsAndUnknownKeysAreKept) {
    Hold("; about this file\n"
         "\n"
         "; about the first section\n"
         "[Zebra]\n"
         "z=1\n"
         "\n"
         "; about a\n"
         "# more about a\n"
         "a = kept as it is ; no remark \"\n"
         "Bare line\n"
         "same=first\n"
         "same=second\n"
         "\n"
         "[Apple]\n"
         "Quoted=\" q \"\n"
         "\n"
         "; the last word\n"
         "\n"
         "# the very last\n");
    ASSERT_TRUE(Put("Apple", "New", "n"));
    ASSERT_TRUE(Put("Mango", "m", "1"));
    ASSERT_TRUE(Put("Zebra", "z", "2"));
    EXPECT_EQ(Text(), "; about this file\n"
                      "\n"
                      "\n"
                      "; about the first section\n"
                      "[Zebra]\n"
                      "z=2\n"
                      "\n"
                      "; about a\n"
                      "# more about a\n"
                      "a=kept as it is ; no remark \"\n"
                      "Bare line=\n"
                      "same=first\n"
                      "same=second\n"
                      "\n"
                      "\n"
                      "[Apple]\n"
                      "Quoted=\" q \"\n"
                      "New=n\n"
                      "\n"
                      "\n"
                      "[Mango]\n"
                      "m=1\n"
                      "\n"
                      "; the last word\n"
                      "\n"
                      "# the very last\n");
    EXPECT_EQ(Get("Zebra", "same"), "first");
    EXPECT_EQ(Get("Zebra", "Bare line"), "");
}

TEST_F(PrivateProfile, WritingAgainAndAgainDoesNotLetTheFileGrow) {
    Hold("; file\n\n; section\n[A]\n; key\nk=1\n\n\n[B]\nk=1\n; end\n");
    ASSERT_TRUE(Put("A", "k", "2"));
    const std::string Once = Text();
    for (int Value = 3; Value < 9; ++Value)
        ASSERT_TRUE(Put("A", "k", std::to_string(Value)));
    ASSERT_TRUE(Put("A", "k", "2"));
    EXPECT_EQ(Text(), Once);
}

TEST_F(PrivateProfile, FileOfOnlyCommentsKeepsThem) {
    for (const char* Comments : {"; one", "; one\n", "# one\n\n; two\n\n", "\n\n", " \t\n;"}) {
        Hold(Comments);
        ASSERT_TRUE(Put("A", "k", "v")) << Comments;
        EXPECT_EQ(Get("A", "k"), "v") << Comments;
        EXPECT_NE(Text().find(Comments), std::string::npos) << Comments;
    }
}

TEST_F(PrivateProfile, LastLineWithoutAnEndIsWholeAndStaysWhole) {
    Hold("[A]\nk=v");
    EXPECT_EQ(Get("A", "k"), "v");
    ASSERT_TRUE(Put("A", "x", "y"));
    EXPECT_EQ(Text(), "[A]\nk=v\nx=y\n");
    Hold("[A]");
    ASSERT_TRUE(Put("A", "x", "y"));
    EXPECT_EQ(Text(), "[A]\nx=y\n");
    Hold("k");
    EXPECT_EQ(Get("", "k"), "");
    Hold("=");
    ASSERT_TRUE(Put("A", "x", "y"));
    EXPECT_EQ(Get("A", "x"), "y");
}

TEST_F(PrivateProfile, KeysBeforeTheFirstSectionBelongToTheEmptyName) {
    Hold("k=v\n[A]\nk=w\n");
    EXPECT_EQ(Get("", "k"), "v");
    ASSERT_TRUE(Put("", "n", "x"));
    EXPECT_EQ(Get("", "n"), "x");
    EXPECT_EQ(Get("A", "n"), "default");
    EXPECT_EQ(Get("A", "k"), "w");
}

TEST_F(PrivateProfile, KeyIsTakenOut) {
    Hold("[A]\nk=1\nK=2\nn=3\n[B]\nk=4\n");
    EXPECT_TRUE(DeletePrivateProfileKey("a", "k", File));
    EXPECT_EQ(Get("A", "k"), "default");
    EXPECT_EQ(Get("A", "n"), "3");
    EXPECT_EQ(Get("B", "k"), "4");
    EXPECT_TRUE(DeletePrivateProfileKey("A", "k", File));
    EXPECT_TRUE(DeletePrivateProfileKey("None", "k", File));
    EXPECT_TRUE(DeletePrivateProfileKey("A", "", File));
    EXPECT_EQ(Get("A", "n"), "3");
}

TEST_F(PrivateProfile, DeletingFromAMissingFileMakesNone) {
    EXPECT_TRUE(DeletePrivateProfileKey("A", "k", File));
    EXPECT_FALSE(FileExists(File));
    EXPECT_FALSE(DeletePrivateProfileKey("A", "k", Folder / "missing/settings.ini"));
}

TEST_F(PrivateProfile, ReadsGoToTheFileEachTime) {
    ASSERT_TRUE(Put("A", "k", "1"));
    EXPECT_EQ(Get("A", "k"), "1");
    Hold("[A]\nk=2\n");
    EXPECT_EQ(Get("A", "k"), "2");
    ASSERT_TRUE(DeleteFileIfFree(File));
    EXPECT_EQ(Get("A", "k"), "default");
}

TEST_F(PrivateProfile, WriteLeavesNothingButTheFileAndItsLock) {
    ASSERT_TRUE(Put("A", "k", "1"));
    EXPECT_EQ(Names(), (std::vector<std::string>{"settings.ini", "settings.ini.lock"}));
    EXPECT_EQ(TempFolder::Read(File + ".lock"), "");
}

TEST_F(PrivateProfile, EqualValueIsNotWrittenAgain) {
    ASSERT_TRUE(Put("A", "k", "1"));
    struct stat Before {};
    struct stat After {};
    ASSERT_EQ(::stat(File.c_str(), &Before), 0);
    EXPECT_TRUE(Put("A", "k", "1"));
    ASSERT_EQ(::stat(File.c_str(), &After), 0);
    EXPECT_EQ(Before.st_ino, After.st_ino);
    EXPECT_TRUE(Put("A", "k", "2"));
    ASSERT_EQ(::stat(File.c_str(), &After), 0);
    EXPECT_NE(Before.st_ino, After.st_ino);
}

TEST_F(PrivateProfile, RightsOfTheFileAreKept) {
    Hold("[A]\nk=1\n");
    ASSERT_EQ(::chmod(File.c_str(), 0640), 0);
    ASSERT_TRUE(Put("A", "k", "2"));
    struct stat Status {};
    ASSERT_EQ(::stat(File.c_str(), &Status), 0);
    EXPECT_EQ(Status.st_mode & 07777, 0640U);
}

TEST_F(PrivateProfile, LinkStaysALink) {
    const std::string Real = Folder.Write("real/settings.ini", "[A]\nk=1\n");
    std::filesystem::create_symlink("real/settings.ini", Folder / "second");
    std::filesystem::create_symlink(Folder / "second", File);
    ASSERT_TRUE(Put("A", "k", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(File));
    EXPECT_TRUE(std::filesystem::is_symlink(Folder / "second"));
    EXPECT_FALSE(std::filesystem::is_symlink(Real));
    EXPECT_EQ(TempFolder::Read(Real), "[A]\nk=2\n");
}

TEST_F(PrivateProfile, LinkToAMissingFileMakesThatFile) {
    std::filesystem::create_symlink("real.ini", File);
    ASSERT_TRUE(Put("A", "k", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(File));
    EXPECT_EQ(TempFolder::Read(Folder / "real.ini"), "[A]\nk=2\n");
    std::filesystem::create_symlink("round", Folder / "round");
    EXPECT_FALSE(WritePrivateProfileStringA("A", "k", "v", Folder / "round"));
    EXPECT_EQ(GetPrivateProfileStringA("A", "k", "default", Folder / "round"), "default");
}

TEST_F(PrivateProfile, NamesOfFilesAreBytes) {
    const std::string Odd = Folder / "caf\xE9 \xFF\n.ini";
    ASSERT_TRUE(WritePrivateProfileStringA("A", "k", "v", Odd));
    EXPECT_EQ(GetPrivateProfileStringA("A", "k", "", Odd), "v");
    EXPECT_TRUE(FileExists(Odd));
}

TEST_F(PrivateProfile, RelativeNameWorks) {
    ASSERT_EQ(::chdir(Folder.Path().c_str()), 0);
    ASSERT_TRUE(WritePrivateProfileStringA("A", "k", "v", "settings.ini"));
    EXPECT_EQ(Get("A", "k"), "v");
}

TEST_F(PrivateProfile, WhatIsNoSettingsFileGivesTheDefaultAndIsNotTouched) {
    ASSERT_EQ(::mkdir(File.c_str(), 0700), 0);
    EXPECT_EQ(Get("A", "k"), "default");
    EXPECT_FALSE(Put("A", "k", "v"));
    EXPECT_TRUE(FolderExists(File));
    ASSERT_EQ(::rmdir(File.c_str()), 0);
    ASSERT_EQ(::mkfifo(File.c_str(), 0600), 0);
    EXPECT_EQ(Get("A", "k"), "default"); // and does not wait for a writer
    EXPECT_FALSE(Put("A", "k", "v"));
    struct stat Status {};
    ASSERT_EQ(::stat(File.c_str(), &Status), 0);
    EXPECT_TRUE(S_ISFIFO(Status.st_mode));
    EXPECT_EQ(GetPrivateProfileStringA("A", "k", "default", "/dev/zero"), "default");
}

TEST_F(PrivateProfile, HugeFileGivesTheDefaultAndIsNotTouched) {
    const std::string Huge = "[A]\nk=1\n" + std::string(3 << 20, 'x');
    Hold(Huge);
    EXPECT_EQ(Get("A", "k"), "default");
    EXPECT_FALSE(Put("A", "k", "v"));
    EXPECT_EQ(Text(), Huge);
}

TEST_F(PrivateProfile, ValueThatWouldMakeTheFileHugeIsNotStored) {
    ASSERT_TRUE(Put("A", "k", "1"));
    EXPECT_FALSE(Put("A", "big", std::string(3 << 20, 'x')));
    EXPECT_EQ(Text(), "[A]\nk=1\n");
}

TEST_F(PrivateProfile, RubbishGivesTheDefaultAndTakesNewKeys) {
    unsigned Seed = 1;
    for (int Round = 0; Round < 200; ++Round) {
        std::string Rubbish(2000, '\0');
        for (char& Byte : Rubbish) {
            Seed = Seed * 1664525U + 1013904223U;
            Byte = static_cast<char>(Seed >> 24U);
        }
        Hold(Rubbish);
        EXPECT_EQ(Get("General", "Channel"), "default");
        ASSERT_TRUE(Put("General", "Channel", "2")) << Round;
        ASSERT_EQ(Get("General", "Channel"), "2") << Round;
    }
}

TEST_F(PrivateProfile, ZeroBytesHideNothing) {
    Hold("[A]\nk=1\0\0\0\nn=2\n\0[B]\nk=3\n"s);
    EXPECT_EQ(Get("A", "k"), "1");
    EXPECT_EQ(Get("A", "n"), "2");
    EXPECT_EQ(Get("B", "k"), "3");
}

TEST_F(PrivateProfile, FileInAnUnwritableFolderStaysAsItWas) {
    Hold("[A]\nk=1\n");
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0555), 0);
    EXPECT_EQ(test::AsOrdinaryUser([&] {
                  const bool Refused =
                      !Put("A", "k", "2") && !DeletePrivateProfileKey("A", "k", File);
                  return Refused && Get("A", "k") == "1" ? 0 : 1;
              }),
              0);
    EXPECT_EQ(Text(), "[A]\nk=1\n");
    EXPECT_EQ(Names(), std::vector<std::string>{"settings.ini"});
}

TEST_F(PrivateProfile, FileWithoutTheRightToWriteStaysAsItWas) {
    Hold("[A]\nk=1\n");
    ASSERT_EQ(::chmod(File.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(
        test::AsOrdinaryUser([&] { return !Put("A", "k", "2") && Get("A", "k") == "1" ? 0 : 1; }),
        0);
    EXPECT_EQ(Text(), "[A]\nk=1\n");
}

TEST_F(PrivateProfile, FileWithoutTheRightToReadIsNotReplaced) {
    Hold("[A]\nk=1\n");
    ASSERT_EQ(::chmod(File.c_str(), 0), 0);
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(test::AsOrdinaryUser(
                  [&] { return !Put("A", "k", "2") && Get("A", "k") == "default" ? 0 : 1; }),
              0);
    ASSERT_EQ(::chmod(File.c_str(), 0600), 0);
    EXPECT_EQ(Text(), "[A]\nk=1\n");
}

TEST_F(PrivateProfile, MissingFolderTakesNoSettings) {
    EXPECT_FALSE(WritePrivateProfileStringA("A", "k", "v", Folder / "missing/settings.ini"));
    EXPECT_FALSE(FolderExists(Folder / "missing"));
    EXPECT_FALSE(WritePrivateProfileStringA("A", "k", "v", ""));
    EXPECT_FALSE(WritePrivateProfileStringA("A", "k", "v", File + std::string("\0x", 2)));
    EXPECT_TRUE(Names().empty());
}

TEST_F(PrivateProfile, FullDiskLeavesTheFileAsItWas) {
    Hold("[A]\nk=1\n");
    const pid_t Child = ::fork();
    if (Child == 0) {
        // No file may grow beyond 4096 bytes: the write of the new file fails in its midst.
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit Limit{4096, 4096};
        ::setrlimit(RLIMIT_FSIZE, &Limit);
        ::_exit(Put("A", "big", std::string(10000, 'x')) ? 1 : 0);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
    ASSERT_TRUE(WIFEXITED(Status));
    EXPECT_EQ(WEXITSTATUS(Status), 0);
    EXPECT_EQ(Text(), "[A]\nk=1\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"settings.ini", "settings.ini.lock"}));
}

TEST_F(PrivateProfile, LeftoverOfADeadProcessDoesNotMatter) {
    Hold("[A]\nk=1\n");
    Folder.Write("settings.ini.new", "half a fi");
    Folder.Write("settings.ini.lock", "");
    ASSERT_TRUE(Put("A", "k", "2"));
    EXPECT_EQ(Text(), "[A]\nk=2\n");
    EXPECT_EQ(Names(), (std::vector<std::string>{"settings.ini", "settings.ini.lock"}));
}

TEST_F(PrivateProfile, WriterWaitsForTheLockAndReaderDoesNot) {
    Hold("[A]\nk=1\n");
    const int Lock = ::open((File + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(Lock, LOCK_EX), 0);
    EXPECT_EQ(Get("A", "k"), "1");
    std::array<int, 2> Started{};
    ASSERT_EQ(::pipe(Started.data()), 0);
    const pid_t Writer = ::fork();
    if (Writer == 0) {
        ::close(Lock);
        if (::write(Started[1], "!", 1) != 1)
            ::_exit(2);
        ::_exit(Put("A", "k", "2") ? 0 : 1);
    }
    char Byte;
    ASSERT_EQ(::read(Started[0], &Byte, 1), 1);
    // The holder's own change comes first, and the writer must build upon it.
    Hold("[A]\nk=1\nn=5\n");
    EXPECT_EQ(::waitpid(Writer, nullptr, WNOHANG), 0);
    ::close(Lock);
    int Status = 0;
    ASSERT_EQ(::waitpid(Writer, &Status, 0), Writer);
    EXPECT_EQ(Status, 0);
    EXPECT_EQ(Text(), "[A]\nk=2\nn=5\n");
}

TEST_F(PrivateProfile, ProcessesNeverLoseEachOthersKeys) {
    constexpr int Processes = 4;
    constexpr int Keys = 50;
    std::vector<pid_t> Writers;
    for (int Process = 0; Process < Processes; ++Process) {
        const pid_t Child = ::fork();
        if (Child == 0) {
            for (int Key = 0; Key < Keys; ++Key)
                if (!Put("Shared", std::to_string(Process) + "-" + std::to_string(Key),
                         std::to_string(Key * Process)))
                    ::_exit(1);
            ::_exit(0);
        }
        Writers.push_back(Child);
    }
    // A reader sees a whole file at any time: of a process's keys, all up to some key.
    std::array<int, Processes> Seen{};
    std::size_t Ended = 0;
    while (Ended < Writers.size()) {
        const std::string Process = std::to_string(Ended);
        int& Known = Seen.at(Ended);
        for (int Key = 0; Key < Known; ++Key)
            ASSERT_NE(Get("Shared", Process + "-" + std::to_string(Key)), "default");
        while (Known < Keys && Get("Shared", Process + "-" + std::to_string(Known)) != "default")
            ++Known;
        int Status = 0;
        if (::waitpid(Writers[Ended], &Status, WNOHANG) == Writers[Ended]) {
            EXPECT_EQ(Status, 0);
            ++Ended;
        }
    }
    for (int Process = 0; Process < Processes; ++Process)
        for (int Key = 0; Key < Keys; ++Key)
            EXPECT_EQ(Get("Shared", std::to_string(Process) + "-" + std::to_string(Key)),
                      std::to_string(Key * Process));
}

} // namespace
} // namespace quoril

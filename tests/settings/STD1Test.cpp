#include "settings/STD1.h"

#include "base/Failure.h"
#include "platform/FileHandle.h"
#include "platform/FileSystem.h"
#include "platform/PrivateProfile.h"
#include "platform/SystemStatus.h"
#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quoril {
namespace {

using test::ScriptedMessages;
using namespace std::string_literals;
using test::TempFolder;

class STD1 : public ::testing::Test {
  protected:
    STD1() {
        for (const char* Name : {"app", "temp", "chosen"})
            std::filesystem::create_directory(Folder / Name);
        AppPath = Folder / "app";
        SysTempDir = Folder / "temp";
        TmpDir0 = Folder / "temp";
        SessionDir = Folder / "temp/qw1";
        std::filesystem::create_directory(SessionDir);
        TempNameCounter = 0;
    }
    const TempFolder Folder;
};

TEST_F(STD1, SettingsFileLiesInTheProgramsFolder) {
    EXPECT_EQ(SettingsFileName(), Folder / "app/quoril-wave-editor.ini");
    IniPut("General", "TmpDir0", "/data");
    EXPECT_EQ(TempFolder::Read(Folder / "app/quoril-wave-editor.ini"),
              "[General]\nTmpDir0=/data\n");
}

TEST_F(STD1, EmptySectionAndKeyReadTheKeyEndInGeneral) {
    IniPut("General", "END", "found");
    std::string Section;
    std::string Key;
    EXPECT_EQ(IniGet(Section, Key, "default"), "found");
    EXPECT_EQ(IniGet("", "", "default"), "found");
}

TEST_F(STD1, IniGetChangesItsEmptyArgumentsInPlace) {
    std::string Section;
    std::string Key;
    EXPECT_EQ(IniGet(Section, Key, "default"), "default");
    EXPECT_EQ(Section, "General");
    EXPECT_EQ(Key, "END");
    Section = "Format";
    Key = "Bits";
    EXPECT_EQ(IniGet(Section, Key, "16"), "16");
    EXPECT_EQ(Section, "Format");
    EXPECT_EQ(Key, "Bits");
}

TEST_F(STD1, IniPutWithoutASectionWritesToGeneral) {
    IniPut("", "Key", "1");
    EXPECT_EQ(IniGet("General", "Key", ""), "1");
}

TEST_F(STD1, IniPutWritesAtOnce) {
    IniPut("Format", "Bits", "8");
    EXPECT_EQ(GetPrivateProfileStringA("Format", "Bits", "", SettingsFileName()), "8");
    IniPut("Format", "Bits", "16");
    EXPECT_EQ(GetPrivateProfileStringA("Format", "Bits", "", SettingsFileName()), "16");
}

TEST_F(STD1, IniGetSeesWhatAnotherProcessWrote) {
    IniPut("Format", "Bits", "8");
    EXPECT_EQ(IniGet("Format", "Bits", ""), "8");
    const pid_t Child = ::fork();
    if (Child == 0) {
        IniPut("Format", "Bits", "16");
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(Child, nullptr, 0), Child);
    EXPECT_EQ(IniGet("Format", "Bits", ""), "16");
}

TEST_F(STD1, LongValueIsCutByIniGetAndWholeFromProfileGet) {
    std::string Value;
    while (Value.size() < 120)
        Value += std::to_string(Value.size());
    Value.resize(120);
    IniPut("General", "Long", Value);
    EXPECT_EQ(IniGet("General", "Long", ""), Value.substr(0, 99));
    EXPECT_EQ(ProfileGet("General", "Long", "", SettingsFileName()), Value);
    for (const std::size_t Length : {48U, 49U, 50U, 98U, 99U, 100U}) {
        IniPut("General", "Long", Value.substr(0, Length));
        EXPECT_EQ(IniGet("General", "Long", "").size(), std::min<std::size_t>(Length, 99));
        EXPECT_EQ(ProfileGet("General", "Long", "", SettingsFileName()).size(), Length);
    }
}

TEST_F(STD1, DefaultGoesThroughTheSameRoom) {
    const std::string Default(120, 'd');
    EXPECT_EQ(IniGet("General", "Missing", Default), std::string(99, 'd'));
    EXPECT_EQ(ProfileGet("General", "Missing", Default, SettingsFileName()), Default);
}

TEST_F(STD1, ProfileGetReplacesNoEmptyName) {
    const std::string File = Folder / "UserGuide.ini";
    ProfilePut("General", "END", "found", File);
    EXPECT_EQ(ProfileGet("General", "END", "default", File), "found");
    EXPECT_EQ(ProfileGet("", "END", "default", File), "default");
    EXPECT_EQ(ProfileGet("General", "", "default", File), "default");
}

TEST_F(STD1, ProfilePutWithoutASectionWritesToGeneral) {
    const std::string File = Folder / "UserGuide.ini";
    ProfilePut("", "Key", "Yes", File);
    EXPECT_EQ(ProfileGet("General", "Key", "No", File), "Yes");
    EXPECT_FALSE(FileExists(SettingsFileName()));
}

TEST_F(STD1, WithoutASettingsFileReadsGiveDefaultsAndWritesDoNothing) {
    EXPECT_EQ(IniGet("Format", "Bits", "16"), "16");
    AppPath = Folder / "missing";
    IniPut("Format", "Bits", "8");
    EXPECT_EQ(IniGet("Format", "Bits", "16"), "16");
    EXPECT_FALSE(FolderExists(AppPath));
}

TEST_F(STD1, BrokenSettingsFileGivesDefaults) {
    Folder.Write("app/quoril-wave-editor.ini", "\x7F"
                                               "ELF\0\0[\xFF\n]]=\n=\0[Format"s);
    EXPECT_EQ(IniGet("Format", "Bits", "16"), "16");
    IniPut("Format", "Bits", "8");
    EXPECT_EQ(IniGet("Format", "Bits", "16"), "8");
}

TEST_F(STD1, ProcessesThatWriteAtOnceLoseNoKey) {
    std::array<pid_t, 3> Children{};
    for (std::size_t Process = 0; Process < Children.size(); ++Process) {
        Children.at(Process) = ::fork();
        if (Children.at(Process) == 0) {
            for (int Key = 0; Key < 20; ++Key)
                IniPut("LastFiles", std::to_string(Process) + "." + std::to_string(Key), "x");
            ::_exit(0);
        }
    }
    for (const pid_t Child : Children)
        ASSERT_EQ(::waitpid(Child, nullptr, 0), Child);
    for (std::size_t Process = 0; Process < Children.size(); ++Process)
        for (int Key = 0; Key < 20; ++Key)
            EXPECT_EQ(ProfileGet("LastFiles", std::to_string(Process) + "." + std::to_string(Key),
                                 "lost", SettingsFileName()),
                      "x");
}

TEST_F(STD1, FreeDiskBytesIsThatOfTheTemporaryLocation) {
    TmpDir0 = "/proc"; // a place without room
    EXPECT_EQ(FreeDiskBytes(), 0);
    TmpDir0 = Folder / "temp";
    EXPECT_GT(FreeDiskBytes(), 0);
    TmpDir0 = Folder / "missing";
    EXPECT_EQ(FreeDiskBytes(), 0);
}

TEST_F(STD1, FreeDiskEnoughWithExactlyTheFreeBytesIsFalse) {
    ScriptedMessages Messages;
    // A place whose free bytes do not move under the test: none at all.
    TmpDir0 = "/proc";
    ASSERT_EQ(FreeDiskBytes(), 0);
    EXPECT_FALSE(FreeDiskEnough(0));
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{"Free disk space for this is low."});
    EXPECT_TRUE(FreeDiskEnough(-1));
    EXPECT_TRUE(Messages.TakeTexts().empty());
}

TEST_F(STD1, FreeDiskEnoughSaysThatSpaceIsLow) {
    ScriptedMessages Messages;
    EXPECT_TRUE(FreeDiskEnough(1));
    EXPECT_TRUE(Messages.TakeTexts().empty());
    EXPECT_FALSE(FreeDiskEnough(std::numeric_limits<std::int64_t>::max()));
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Text, "Free disk space for this is low.");
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::OkOnly);
}

TEST_F(STD1, FileThereIsFalseForABlankName) {
    Folder.Write("temp/a.wav", "");
    std::filesystem::current_path(Folder / "temp");
    Folder.Write("temp/ ", "");
    EXPECT_FALSE(FileThere(""));
    EXPECT_FALSE(FileThere(" "));
    EXPECT_FALSE(FileThere(" \t "));
    EXPECT_TRUE(FileThere("a.wav"));
    EXPECT_TRUE(FileThere(Folder / "temp/a.wav"));
    EXPECT_FALSE(FileThere(Folder / "temp/b.wav"));
    EXPECT_FALSE(FileThere(Folder / "temp"));
    EXPECT_TRUE(FileThere(Folder.Write("caf\xE9\xFF.wav", "")));
}

TEST_F(STD1, FileDeleteIsTrueWhenThereIsNoSuchFileAfterwards) {
    EXPECT_TRUE(FileDelete(""));
    EXPECT_TRUE(FileDelete(Folder / "missing"));
    EXPECT_TRUE(FileDelete(Folder / "no/such/folder"));
    const std::string File = Folder.Write("a", "x");
    EXPECT_TRUE(FileDelete(File));
    EXPECT_FALSE(FileExists(File));
}

TEST_F(STD1, FileDeleteDoesNotTouchAFolder) {
    EXPECT_TRUE(FileDelete(Folder / "chosen")); // no file of that name
    EXPECT_TRUE(FolderExists(Folder / "chosen"));
}

TEST_F(STD1, FileDeleteOfAFileThatAnotherProcessHoldsOpenIsFalse) {
    const std::string File = Folder.Write("a", "x");
    std::array<int, 2> Held{};
    std::array<int, 2> End{};
    ASSERT_EQ(::pipe(Held.data()), 0);
    ASSERT_EQ(::pipe(End.data()), 0);
    const pid_t Child = ::fork();
    if (Child == 0) {
        ::close(End[1]);
        const FileForReading Open(File);
        char Byte = 'y';
        if (::write(Held[1], &Byte, 1) == 1)
            (void)!::read(End[0], &Byte, 1);
        ::_exit(0);
    }
    char Byte = 0;
    ASSERT_EQ(::read(Held[0], &Byte, 1), 1);
    EXPECT_FALSE(FileDelete(File));
    EXPECT_TRUE(FileExists(File));
    ::close(End[1]);
    ASSERT_EQ(::waitpid(Child, nullptr, 0), Child);
    EXPECT_TRUE(FileDelete(File));
    EXPECT_FALSE(FileExists(File));
}

TEST_F(STD1, TempFileNameCountsOnAndMakesNoFile) {
    EXPECT_EQ(TempFileName(), SessionDir + "/tm1.tmp");
    EXPECT_EQ(TempFileName(), SessionDir + "/tm2.tmp");
    EXPECT_EQ(TempNameCounter, 2);
    EXPECT_TRUE(FilesInFolder(SessionDir).empty());
}

TEST_F(STD1, TempFileNamePassesOverExistingNames) {
    Folder.Write("temp/qw1/tm1.tmp", "");
    Folder.Write("temp/qw1/tm2.tmp", "");
    std::filesystem::create_directory(SessionDir + "/tm3.tmp");
    EXPECT_EQ(TempFileName(), SessionDir + "/tm4.tmp");
    EXPECT_EQ(TempNameCounter, 4);
}

TEST_F(STD1, TempFileNameFailsWhenTheCounterIsAtItsEnd) {
    TempNameCounter = std::numeric_limits<std::int32_t>::max();
    EXPECT_THROW((void)TempFileName(), Failure);
}

TEST_F(STD1, SecondsSinceMidnightAreLocal) {
    ::setenv("TZ", "XXX-05:30", 1); // 5 hours 30 minutes east, without summer time
    ::tzset();
    std::int64_t Before = 0;
    std::int32_t Seconds = 0;
    do {
        Before = std::time(nullptr);
        Seconds = SecondsSinceMidnight();
    } while (std::time(nullptr) != Before);
    EXPECT_EQ(Seconds, (Before + 19800) % 86400);
}

TEST_F(STD1, SessionFolderIsNewNumberedAndPrivate) {
    const std::int32_t Before = SecondsSinceMidnight();
    const std::string Made = SessionDirMake();
    const std::int32_t After = SecondsSinceMidnight();
    ASSERT_TRUE(Made.starts_with(TmpDir0 + "/qw")) << Made;
    const std::int32_t Number = std::stoi(Made.substr(TmpDir0.size() + 3));
    if (Before <= After) { // not over midnight
        EXPECT_GT(Number, Before);
        EXPECT_LE(Number, After + 1);
    }
    struct stat Status {};
    ASSERT_EQ(::stat(Made.c_str(), &Status), 0);
    EXPECT_TRUE(S_ISDIR(Status.st_mode));
    EXPECT_EQ(Status.st_mode & 07777, 0700U);
    EXPECT_TRUE(FilesInFolder(Made).empty());
}

TEST_F(STD1, SessionFolderPassesOverNamesThatExist) {
    // All names of the next minute are taken, by folders, by files or by links that lead nowhere.
    const std::int32_t Now = SecondsSinceMidnight();
    std::set<std::string> Taken;
    for (std::int32_t Number = Now; Number < Now + 60; ++Number) {
        const std::string Name = TmpDir0 + "/qw" + std::to_string(Number);
        Taken.insert(Name);
        if (Number % 3 == 0)
            std::filesystem::create_directory(Name);
        else if (Number % 3 == 1)
            Folder.Write("temp/qw" + std::to_string(Number), "kept");
        else
            std::filesystem::create_symlink("nowhere", Name);
    }
    const std::string Made = SessionDirMake();
    EXPECT_EQ(Taken.count(Made), 0U);
    EXPECT_TRUE(FolderExists(Made));
    EXPECT_FALSE(FolderExists(TmpDir0 + "/nowhere"));
}

TEST_F(STD1, ProcessesThatStartAtTheSameSecondGetDifferentFolders) {
    constexpr int Processes = 8;
    constexpr int Each = 10;
    std::array<int, 2> Go{};
    ASSERT_EQ(::pipe(Go.data()), 0);
    std::array<pid_t, Processes> Children{};
    for (pid_t& Child : Children) {
        Child = ::fork();
        if (Child == 0) {
            ::close(Go[1]);
            char Byte;
            (void)!::read(Go[0], &Byte, 1); // all start together, when the other side closes
            for (int Count = 0; Count < Each; ++Count) {
                // Whoever believes a folder to be its own puts its mark into it.
                const std::string Mark = SessionDirMake() + "/mark";
                if (FileExists(Mark) || !MakePrivateFolder(Mark))
                    ::_exit(1);
            }
            ::_exit(0);
        }
    }
    ::close(Go[0]);
    ::close(Go[1]);
    for (const pid_t Child : Children) {
        int Status = -1;
        ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
        EXPECT_EQ(Status, 0);
    }
    int Folders = 0;
    for (const auto& Entry : std::filesystem::directory_iterator(TmpDir0))
        Folders += FolderExists(Entry.path().string() + "/mark") ? 1 : 0;
    EXPECT_EQ(Folders, Processes * Each);
}

TEST_F(STD1, SessionFolderThatCannotBeMadeFails) {
    TmpDir0 = Folder / "missing";
    try {
        (void)SessionDirMake();
        ADD_FAILURE();
    } catch (const SystemFailure& Thrown) {
        EXPECT_EQ(Thrown.Code(), ENOENT);
    }
}

TEST_F(STD1, SessionFolderGoesWithItsFiles) {
    for (const char* Name : {"tm1.tmp", "tm2.tmp", ".hidden", "caf\xE9\xFF"})
        Folder.Write(std::string("temp/qw1/") + Name, "x");
    std::filesystem::create_symlink(Folder.Write("temp/kept", "x"), SessionDir + "/link");
    Folder.Write("temp/qw2/tm1.tmp", "of another process");
    SessionDirRemove();
    EXPECT_FALSE(FolderExists(SessionDir));
    EXPECT_TRUE(FileExists(Folder / "temp/kept"));
    EXPECT_TRUE(FileExists(Folder / "temp/qw2/tm1.tmp"));
    EXPECT_TRUE(FolderExists(TmpDir0));
}

TEST_F(STD1, FileThatIsStillHeldGetsASecondTryAndTheFolderGoes) {
    const std::string File = Folder.Write("temp/qw1/tm1.tmp", "x");
    const FileForReading Held(File);
    const auto Start = std::chrono::steady_clock::now();
    SessionDirRemove();
    EXPECT_GE(std::chrono::steady_clock::now() - Start, std::chrono::milliseconds(200));
    EXPECT_FALSE(FolderExists(SessionDir));
    char Byte = 0;
    Held.Read(0, &Byte, 1); // whoever has it open keeps it
    EXPECT_EQ(Byte, 'x');
}

TEST_F(STD1, SessionFolderThatCannotBeRemovedIsIgnored) {
    const std::string Stranger = Folder.Write("temp/qw1/folder/file", "x");
    const std::string File = Folder.Write("temp/qw1/tm1.tmp", "x");
    SessionDirRemove();
    EXPECT_TRUE(FileExists(Stranger));
    EXPECT_FALSE(FileExists(File));
    SessionDir = Folder / "missing";
    SessionDirRemove();
    SessionDir.clear();
    SessionDirRemove();
}

TEST_F(STD1, FileSetLengthSetsTheLengthOfAnExistingFileOnly) {
    const std::string File = Folder.Write("a", "12345");
    FileSetLength(File, 2);
    EXPECT_EQ(TempFolder::Read(File), "12");
    FileSetLength(File, 4);
    EXPECT_EQ(TempFolder::Read(File), std::string("12\0\0", 4));
    FileSetLength(File, -1);
    EXPECT_EQ(TempFolder::Read(File).size(), 4U);
    FileSetLength(Folder / "missing", 5);
    EXPECT_FALSE(FileExists(Folder / "missing"));
    FileSetLength(Folder / "chosen", 5);
    FileSetLength("", 5);
}

class WorkingFiles : public STD1 {
  protected:
    WorkingFiles() {
        TmpDir0.clear();
        SessionDir.clear();
    }
};

TEST_F(WorkingFiles, WithoutAChoiceLieInTheSystemsTemporaryFolder) {
    WorkingFilesSetUp();
    EXPECT_EQ(TmpDir0, SysTempDir);
    EXPECT_TRUE(SessionDir.starts_with(SysTempDir + "/qw")) << SessionDir;
    EXPECT_TRUE(FolderExists(SessionDir));
}

TEST_F(WorkingFiles, LieInTheChosenFolder) {
    IniPut("General", "TmpDir0", Folder / "chosen");
    WorkingFilesSetUp();
    EXPECT_EQ(TmpDir0, Folder / "chosen");
    EXPECT_TRUE(SessionDir.starts_with((Folder / "chosen") + "/qw")) << SessionDir;
    EXPECT_TRUE(FolderExists(SessionDir));
}

TEST_F(WorkingFiles, ChosenFolderWithALongNameIsTaken) {
    const std::string Long = Folder / (std::string(120, 'l') + "/" + std::string(120, 'm'));
    ASSERT_TRUE(MakeFolderPath(Long));
    IniPut("General", "TmpDir0", Long + "/");
    WorkingFilesSetUp();
    EXPECT_EQ(TmpDir0, Long);
    EXPECT_TRUE(FolderExists(SessionDir));
}

TEST_F(WorkingFiles, OnARemovedDriveLieInTheSystemsTemporaryFolder) {
    ScriptedMessages Messages;
    for (const std::string& Gone :
         {Folder / "removed/drive", Folder.Write("file", ""), std::string(), std::string(" ")}) {
        IniPut("General", "TmpDir0", Gone);
        WorkingFilesSetUp();
        EXPECT_EQ(TmpDir0, SysTempDir) << Gone;
        EXPECT_TRUE(SessionDir.starts_with(SysTempDir + "/qw")) << SessionDir;
        EXPECT_TRUE(FolderExists(SessionDir)) << Gone;
    }
    EXPECT_TRUE(Messages.Texts().empty());                                    // without a word
    EXPECT_EQ(ProfileGet("General", "TmpDir0", "", SettingsFileName()), " "); // the choice is kept
}

TEST_F(WorkingFiles, InAFolderThatTakesNoneLieInTheSystemsTemporaryFolder) {
    IniPut("General", "TmpDir0", "/proc");
    WorkingFilesSetUp();
    EXPECT_EQ(TmpDir0, SysTempDir);
    EXPECT_TRUE(FolderExists(SessionDir));
    EXPECT_NE(IniGet("General", "FreeHardDisk", ""), "0");
}

TEST_F(WorkingFiles, WithoutAnyPlaceFail) {
    SysTempDir = Folder / "missing";
    EXPECT_THROW(WorkingFilesSetUp(), SystemFailure);
    SysTempDir = "/proc";
    EXPECT_THROW(WorkingFilesSetUp(), SystemFailure);
}

TEST_F(WorkingFiles, LeaveARecordInTheSettings) {
    InstalledPath = "/usr/bin";
    WorkingFilesSetUp();
    EXPECT_EQ(ProfileGet("General", "InstalledPath", "", SettingsFileName()), "/usr/bin");
    const std::string Free = IniGet("General", "FreeHardDisk", "");
    ASSERT_FALSE(Free.empty());
    EXPECT_EQ(Free.find_first_not_of("0123456789"), std::string::npos) << Free;
    EXPECT_GT(std::stoll(Free), 0);
}

TEST_F(WorkingFiles, NeedNoWritableSettingsFile) {
    AppPath = Folder / "missing";
    WorkingFilesSetUp();
    EXPECT_EQ(TmpDir0, SysTempDir);
    EXPECT_TRUE(FolderExists(SessionDir));
}

} // namespace
} // namespace quoril

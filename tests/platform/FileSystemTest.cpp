#include "platform/FileSystem.h"

#include "base/Failure.h"
#include "platform/FileHandle.h"
#include "support/OrdinaryUser.h"
#include "support/TempFolder.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quoril {
namespace {

using test::TempFolder;

/// A name that is no text in any encoding of today.
constexpr const char* OddName = "caf\xE9 \xFF\x80\n.wav";

/// The code of the SystemFailure that an action throws.
template <typename Action>
std::optional<int> CodeThrownBy(const Action& What) {
    try {
        What();
    } catch (const SystemFailure& Thrown) {
        return Thrown.Code();
    }
    return std::nullopt;
}

TEST(FileSystem, TellsFilesFromFolders) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a.wav", "x");
    EXPECT_TRUE(FileExists(File));
    EXPECT_FALSE(FileExists(Folder.Path()));
    EXPECT_FALSE(FileExists(File + "x"));
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists(File + std::string(1, '\0') + "more"));
    EXPECT_TRUE(FolderExists(Folder.Path()));
    EXPECT_TRUE(FolderExists(Folder.Path() + "/"));
    EXPECT_FALSE(FolderExists(File));
    EXPECT_FALSE(FolderExists(File + "/"));
    EXPECT_FALSE(FolderExists(""));
}

TEST(FileSystem, CaseOfNamesCounts) {
    const TempFolder Folder;
    Folder.Write("a.wav", "x");
    EXPECT_FALSE(FileExists(Folder / "A.wav"));
}

TEST(FileSystem, LinkIsWhatItLeadsTo) {
    const TempFolder Folder;
    Folder.Write("a.wav", "x");
    std::filesystem::create_symlink("a.wav", Folder / "file");
    std::filesystem::create_symlink(".", Folder / "folder");
    std::filesystem::create_symlink("missing", Folder / "nothing");
    EXPECT_TRUE(FileExists(Folder / "file"));
    EXPECT_TRUE(FolderExists(Folder / "folder"));
    EXPECT_FALSE(FileExists(Folder / "folder"));
    EXPECT_FALSE(FileExists(Folder / "nothing"));
}

TEST(FileSystem, AnyBytesAreAName) {
    const TempFolder Folder;
    const std::string File = Folder.Write(OddName, "12345");
    EXPECT_TRUE(FileExists(File));
    EXPECT_EQ(FilesInFolder(Folder.Path()), std::vector<std::string>{File});
    const std::string Copy = Folder / "\xC0\xC1";
    CopyFileContents(File, Copy);
    EXPECT_EQ(TempFolder::Read(Copy), "12345");
    EXPECT_TRUE(SetLengthOfFile(Copy, 2));
    EXPECT_EQ(TempFolder::Read(Copy), "12");
    EXPECT_TRUE(DeleteFileIfFree(File));
    EXPECT_FALSE(FileExists(File));
    EXPECT_TRUE(MakePrivateFolder(File));
    EXPECT_TRUE(MakeFolderPath(File + "/\xFE/deep"));
    EXPECT_TRUE(FolderExists(File + "/\xFE/deep"));
    EXPECT_TRUE(RemoveFolder(File + "/\xFE/deep"));
}

TEST(FileSystem, DeletesAFile) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    EXPECT_TRUE(DeleteFileIfFree(File));
    EXPECT_FALSE(FileExists(File));
}

TEST(FileSystem, NothingToDeleteIsDeleted) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    for (const std::string& Missing : {Folder / "missing", Folder / "no/such/folder", File + "/b",
                                       std::string(), File + std::string(1, '\0')}) {
        EXPECT_TRUE(DeleteFileIfFree(Missing)) << Missing;
        EXPECT_TRUE(DeleteFileAnyway(Missing)) << Missing;
    }
    EXPECT_TRUE(FileExists(File));
}

TEST(FileSystem, FolderIsNotDeletedAsAFile) {
    const TempFolder Folder;
    EXPECT_FALSE(DeleteFileIfFree(Folder.Path()));
    EXPECT_FALSE(DeleteFileAnyway(Folder.Path()));
    EXPECT_TRUE(FolderExists(Folder.Path()));
}

TEST(FileSystem, DeletingALinkLeavesWhatItLeadsTo) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    const FileForReading Open(File);
    std::filesystem::create_symlink("a", Folder / "link");
    std::filesystem::create_symlink("missing", Folder / "dangling");
    EXPECT_TRUE(DeleteFileIfFree(Folder / "link"));
    EXPECT_TRUE(DeleteFileIfFree(Folder / "dangling"));
    EXPECT_FALSE(std::filesystem::is_symlink(Folder / "link"));
    EXPECT_FALSE(std::filesystem::is_symlink(Folder / "dangling"));
    EXPECT_TRUE(FileExists(File));
}

TEST(FileSystem, PipeIsDeletedWithoutWaitingForAnybody) {
    const TempFolder Folder;
    ASSERT_EQ(::mkfifo((Folder / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(DeleteFileIfFree(Folder / "pipe"));
    EXPECT_FALSE(FileExists(Folder / "pipe"));
}

TEST(FileSystem, FileThatWeHaveOpenForReadingIsNotDeleted) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    FileForReading Open(File);
    EXPECT_FALSE(DeleteFileIfFree(File));
    EXPECT_TRUE(FileExists(File));
    // Asking has not taken the lock away.
    EXPECT_FALSE(DeleteFileIfFree(File));
    Open.Close();
    EXPECT_TRUE(DeleteFileIfFree(File));
}

TEST(FileSystem, FileThatAnybodyHasOpenIsDeletedAnywayOnRequest) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    const FileForReading Open(File);
    EXPECT_TRUE(DeleteFileAnyway(File));
    EXPECT_FALSE(FileExists(File));
    char Byte = 0;
    Open.Read(0, &Byte, 1);
    EXPECT_EQ(Byte, 'x');
}

/// Another process that holds a lock on a file until the end of the scope.
class Holder {
  public:
    template <typename Taking>
    Holder(const std::string& FileName, const Taking& Take) {
        int Held[2];
        int End[2];
        if (::pipe(Held) != 0 || ::pipe(End) != 0)
            throw std::runtime_error("no pipe");
        Child = ::fork();
        if (Child == 0) {
            ::close(End[1]);
            const int File = ::open(FileName.c_str(), O_RDWR);
            char Byte = Take(File) ? 'y' : 'n';
            if (::write(Held[1], &Byte, 1) == 1)
                (void)!::read(End[0], &Byte, 1); // ends with the other side
            ::_exit(0);
        }
        char Byte = 'n';
        Good = ::read(Held[0], &Byte, 1) == 1 && Byte == 'y';
        for (const int Used : {Held[0], Held[1], End[0]})
            ::close(Used);
        Until = End[1];
    }
    ~Holder() {
        ::close(Until);
        ::waitpid(Child, nullptr, 0);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    bool Good = false;

  private:
    pid_t Child = -1;
    int Until = -1;
};

bool TakeRecordLock(int File, short Type, int Command) {
    struct flock Lock {};
    Lock.l_type = Type;
    Lock.l_whence = SEEK_SET;
    return ::fcntl(File, Command, &Lock) == 0;
}

TEST(FileSystem, FileThatAnotherProcessHoldsIsNotDeleted) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "xyz");
    const auto CheckHeld = [&](const char* How, const auto& Take) {
        {
            const Holder Other(File, Take);
            ASSERT_TRUE(Other.Good) << How;
            EXPECT_FALSE(DeleteFileIfFree(File)) << How;
            EXPECT_TRUE(FileExists(File)) << How;
        }
        EXPECT_EQ(TempFolder::Read(File), "xyz") << How;
    };
    CheckHeld("read lock of the handle",
              [](int Handle) { return TakeRecordLock(Handle, F_RDLCK, F_OFD_SETLK); });
    CheckHeld("write lock of the handle",
              [](int Handle) { return TakeRecordLock(Handle, F_WRLCK, F_OFD_SETLK); });
    CheckHeld("read lock of the process",
              [](int Handle) { return TakeRecordLock(Handle, F_RDLCK, F_SETLK); });
    CheckHeld("write lock of the process",
              [](int Handle) { return TakeRecordLock(Handle, F_WRLCK, F_SETLK); });
    CheckHeld("shared lock", [](int Handle) { return ::flock(Handle, LOCK_SH) == 0; });
    CheckHeld("exclusive lock", [](int Handle) { return ::flock(Handle, LOCK_EX) == 0; });
    EXPECT_TRUE(DeleteFileIfFree(File));
}

TEST(FileSystem, FileThatIsOnlyOpenIsDeleted) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "xyz");
    const Holder Other(File, [](int Handle) { return Handle >= 0; });
    ASSERT_TRUE(Other.Good);
    EXPECT_TRUE(DeleteFileIfFree(File));
    EXPECT_FALSE(FileExists(File));
}

TEST(FileSystem, WithoutTheRightToDeleteTheFileStays) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0555), 0);
    EXPECT_EQ(test::AsOrdinaryUser(
                  [&] { return !DeleteFileIfFree(File) && !DeleteFileAnyway(File) ? 0 : 1; }),
              0);
    EXPECT_TRUE(FileExists(File));
}

TEST(FileSystem, AFileIsWriteProtectedByItsRights) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0777), 0);
    std::filesystem::create_symlink("a", Folder / "link");
    for (const auto& [Mode, Protected] : {std::pair{0444U, true}, {0U, true}, {0644U, false}}) {
        ASSERT_EQ(::chmod(File.c_str(), Mode), 0);
        EXPECT_EQ(IsWriteProtected(File), Protected) << Mode;
        EXPECT_EQ(IsWriteProtected(Folder / "link"), Protected) << Mode;
    }
    // What others may write, and we may not.
    if (::geteuid() == 0) {
        EXPECT_EQ(test::AsOrdinaryUser([&] { return IsWriteProtected(File) ? 0 : 1; }), 0);
    }
    EXPECT_FALSE(IsWriteProtected(Folder / "missing"));
    EXPECT_FALSE(IsWriteProtected({}));
}

TEST(FileSystem, UnreadableFileCanBeDeleted) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "x");
    ASSERT_EQ(::chmod(File.c_str(), 0), 0);
    ASSERT_EQ(::chmod(Folder.Path().c_str(), 0777), 0);
    EXPECT_EQ(test::AsOrdinaryUser([&] { return DeleteFileIfFree(File) ? 0 : 1; }), 0);
    EXPECT_FALSE(FileExists(File));
}

TEST(FileSystem, CopiesTheContents) {
    const TempFolder Folder;
    std::string Contents(3'000'001, '\0');
    for (std::size_t Index = 0; Index < Contents.size(); ++Index)
        Contents[Index] = static_cast<char>(Index * 7 + (Index >> 11U));
    const std::string From = Folder.Write("from", Contents);
    CopyFileContents(From, Folder / "to");
    EXPECT_EQ(TempFolder::Read(Folder / "to"), Contents);
    EXPECT_EQ(TempFolder::Read(From), Contents);
}

TEST(FileSystem, CopyReplacesLongerContentsWhole) {
    const TempFolder Folder;
    const std::string To = Folder.Write("to", std::string(10000, 'o'));
    CopyFileContents(Folder.Write("from", "new"), To);
    EXPECT_EQ(TempFolder::Read(To), "new");
    CopyFileContents(Folder.Write("empty", ""), To);
    EXPECT_EQ(TempFolder::Read(To), "");
}

TEST(FileSystem, CopiesWhatTheFileSystemCannotCopyByItself) {
    const TempFolder Folder;
    // Such files have no length, and the copy inside the system finds nothing in them.
    CopyFileContents("/proc/version", Folder / "to");
    const std::string Copied = TempFolder::Read(Folder / "to");
    EXPECT_TRUE(Copied.starts_with("Linux version ")) << Copied;
    EXPECT_EQ(Copied, TempFolder::Read("/proc/version"));
}

TEST(FileSystem, CopiesFromOneFileSystemToAnother) {
    const TempFolder Folder;
    const std::string Contents(1'000'000, 'c');
    // Memory, where the system has such a folder; the temporary folder is mostly on a disk.
    const std::string Place = FolderExists("/dev/shm") ? "/dev/shm" : "/var/tmp";
    const std::string Other = Place + "/quoril-test-" + std::to_string(::getpid());
    CopyFileContents(Folder.Write("from", Contents), Other);
    EXPECT_EQ(TempFolder::Read(Other), Contents);
    CopyFileContents(Other, Folder / "back");
    EXPECT_EQ(TempFolder::Read(Folder / "back"), Contents);
    EXPECT_TRUE(DeleteFileIfFree(Other));
}

TEST(FileSystem, CopyUponItselfKeepsTheFile) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "contents");
    std::filesystem::create_hard_link(File, Folder / "hard");
    std::filesystem::create_symlink("a", Folder / "link");
    for (const std::string& Same : {File, Folder / "hard", Folder / "link", Folder / "./a"}) {
        CopyFileContents(File, Same);
        EXPECT_EQ(TempFolder::Read(File), "contents") << Same;
    }
}

TEST(FileSystem, CopyThatFailsNamesTheFile) {
    const TempFolder Folder;
    const std::string From = Folder.Write("from", "x");
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(Folder / "missing", Folder / "to"); }), ENOENT);
    EXPECT_FALSE(FileExists(Folder / "to"));
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(From, Folder / "no/folder"); }), ENOENT);
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(From, Folder.Path()); }), EISDIR);
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(Folder.Path(), Folder / "to"); }), EISDIR);
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents("", Folder / "to"); }), ENOENT);
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(From + std::string(1, '\0'), Folder / "to"); }),
              EINVAL);
    try {
        CopyFileContents(From, Folder / "no/folder");
        ADD_FAILURE();
    } catch (const SystemFailure& Thrown) {
        EXPECT_EQ(Thrown.what(), "No such file or directory\n" + (Folder / "no/folder"));
    }
}

TEST(FileSystem, CopyToAFullDiskFails) {
    const TempFolder Folder;
    const std::string From = Folder.Write("from", std::string(100000, 'x'));
    EXPECT_EQ(CodeThrownBy([&] { CopyFileContents(From, "/dev/full"); }), ENOSPC);
    const pid_t Child = ::fork();
    if (Child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit Limit{50000, 50000};
        ::setrlimit(RLIMIT_FSIZE, &Limit);
        ::_exit(CodeThrownBy([&] { CopyFileContents(From, Folder / "to"); }) == EFBIG ? 0 : 1);
    }
    int Status = -1;
    ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
    EXPECT_EQ(Status, 0);
    EXPECT_EQ(TempFolder::Read(From).size(), 100000U);
}

TEST(FileSystem, SetsTheLengthOfAnExistingFile) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a", "12345");
    EXPECT_TRUE(SetLengthOfFile(File, 3));
    EXPECT_EQ(TempFolder::Read(File), "123");
    EXPECT_TRUE(SetLengthOfFile(File, 5));
    EXPECT_EQ(TempFolder::Read(File), std::string("123\0\0", 5));
    EXPECT_TRUE(SetLengthOfFile(File, 5'000'000'000));
    EXPECT_EQ(std::filesystem::file_size(File), 5'000'000'000U);
    EXPECT_TRUE(SetLengthOfFile(File, 0));
    EXPECT_EQ(TempFolder::Read(File), "");
    EXPECT_FALSE(SetLengthOfFile(File, -1));
    EXPECT_FALSE(SetLengthOfFile(Folder / "missing", 3));
    EXPECT_FALSE(FileExists(Folder / "missing"));
    EXPECT_FALSE(SetLengthOfFile(Folder.Path(), 0));
    EXPECT_FALSE(SetLengthOfFile("", 0));
}

TEST(FileSystem, PrivateFolderIsItsOwnersAlone) {
    const TempFolder Folder;
    ::umask(0);
    EXPECT_TRUE(MakePrivateFolder(Folder / "private"));
    struct stat Status {};
    ASSERT_EQ(::stat((Folder / "private").c_str(), &Status), 0);
    EXPECT_EQ(Status.st_mode & 07777, 0700U);
    EXPECT_TRUE(S_ISDIR(Status.st_mode));
}

TEST(FileSystem, PrivateFolderIsNeverOneThatExists) {
    const TempFolder Folder;
    EXPECT_TRUE(MakePrivateFolder(Folder / "a"));
    EXPECT_FALSE(MakePrivateFolder(Folder / "a"));
    EXPECT_FALSE(MakePrivateFolder(Folder.Write("file", "")));
    std::filesystem::create_symlink("elsewhere", Folder / "link");
    EXPECT_FALSE(MakePrivateFolder(Folder / "link"));
    EXPECT_FALSE(FolderExists(Folder / "elsewhere"));
}

TEST(FileSystem, PrivateFolderThatCannotBeMadeFails) {
    const TempFolder Folder;
    EXPECT_EQ(CodeThrownBy([&] { (void)MakePrivateFolder(Folder / "no/such"); }), ENOENT);
    EXPECT_EQ(CodeThrownBy([&] { (void)MakePrivateFolder(Folder.Write("f", "") + "/a"); }),
              ENOTDIR);
    EXPECT_EQ(CodeThrownBy([] { (void)MakePrivateFolder(""); }), ENOENT);
    EXPECT_EQ(CodeThrownBy([&] { (void)MakePrivateFolder(Folder / std::string("a\0b", 3)); }),
              EINVAL);
    EXPECT_FALSE(FolderExists(Folder / "a"));
}

TEST(FileSystem, FolderPathIsMadeWithItsParents) {
    const TempFolder Folder;
    EXPECT_TRUE(MakeFolderPath(Folder / "a/b/c"));
    EXPECT_TRUE(FolderExists(Folder / "a/b/c"));
    EXPECT_TRUE(MakeFolderPath(Folder / "a/b/c"));
    EXPECT_TRUE(MakeFolderPath(Folder / "d/e/"));
    EXPECT_TRUE(FolderExists(Folder / "d/e"));
    EXPECT_TRUE(MakeFolderPath("/"));
    const std::string File = Folder.Write("file", "");
    EXPECT_FALSE(MakeFolderPath(File));
    EXPECT_FALSE(MakeFolderPath(File + "/a"));
    EXPECT_FALSE(MakeFolderPath(""));
    EXPECT_FALSE(MakeFolderPath(Folder / std::string("x\0y", 3)));
    EXPECT_FALSE(FolderExists(Folder / "x"));
}

TEST(FileSystem, OnlyAnEmptyFolderIsRemoved) {
    const TempFolder Folder;
    const std::string File = Folder.Write("a/file", "x");
    EXPECT_FALSE(RemoveFolder(Folder / "a"));
    EXPECT_TRUE(FileExists(File));
    EXPECT_TRUE(DeleteFileIfFree(File));
    EXPECT_TRUE(RemoveFolder(Folder / "a"));
    EXPECT_FALSE(FolderExists(Folder / "a"));
    EXPECT_TRUE(RemoveFolder(Folder / "a"));
}

TEST(FileSystem, ListsTheFilesOfAFolderButNoFolders) {
    const TempFolder Folder;
    Folder.Write("b", "");
    Folder.Write("a", "");
    Folder.Write(".hidden", "");
    Folder.Write("folder/inside", "");
    std::filesystem::create_symlink("folder", Folder / "link to folder");
    std::filesystem::create_symlink("missing", Folder / "dangling");
    const std::vector<std::string> Expected{Folder / ".hidden", Folder / "a", Folder / "b",
                                            Folder / "dangling"};
    EXPECT_EQ(FilesInFolder(Folder.Path()), Expected);
    EXPECT_EQ(FilesInFolder(Folder.Path() + "/"), Expected);
    EXPECT_TRUE(FilesInFolder(Folder / "missing").empty());
    EXPECT_TRUE(FilesInFolder(Folder / "a").empty());
    EXPECT_TRUE(FilesInFolder("").empty());
}

TEST(FileSystem, PathsAreSplitAtTheLastSeparator) {
    EXPECT_EQ(FolderOfPath("/home/me/a.wav"), "/home/me");
    EXPECT_EQ(NameOfPath("/home/me/a.wav"), "a.wav");
    EXPECT_EQ(FolderOfPath("/a.wav"), "");
    EXPECT_EQ(NameOfPath("/a.wav"), "a.wav");
    EXPECT_EQ(FolderOfPath("a.wav"), "");
    EXPECT_EQ(NameOfPath("a.wav"), "a.wav");
    EXPECT_EQ(FolderOfPath("folder/"), "folder");
    EXPECT_EQ(NameOfPath("folder/"), "");
    EXPECT_EQ(FolderOfPath("a//b"), "a/");
    EXPECT_EQ(FolderOfPath(""), "");
    EXPECT_EQ(NameOfPath(""), "");
    EXPECT_EQ(NameOfPath("C:\\a.wav"), "C:\\a.wav");
}

TEST(FileSystem, EndingIsThatOfTheName) {
    EXPECT_EQ(EndingOfPath("/home/me/a.WaV"), "wav");
    EXPECT_EQ(EndingOfPath("a.b.MP3"), "mp3");
    EXPECT_EQ(EndingOfPath("a.b/c"), "");
    EXPECT_EQ(EndingOfPath("a.b/c.au"), "au");
    EXPECT_EQ(EndingOfPath("name"), "");
    EXPECT_EQ(EndingOfPath("name."), "");
    EXPECT_EQ(EndingOfPath(".hidden"), "hidden");
    EXPECT_EQ(EndingOfPath("/home/.config/name"), "");
    EXPECT_EQ(EndingOfPath("folder.wav/"), "");
    EXPECT_EQ(EndingOfPath("a.\xC4"), "\xC4");
    EXPECT_EQ(EndingOfPath(""), "");
}

} // namespace
} // namespace quoril

#include "platform/FileSystem.h"

#include "base/Failure.h"
#include "platform/Descriptor.h"
#include "platform/FileHandle.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace quoril {

namespace {

/// The system ends a name at its first zero byte: such a name must not stand for a shorter one.
bool IsPossibleName(const std::string& Name) noexcept {
    return !Name.empty() && Name.find('\0') == std::string::npos;
}

bool StatusOf(const std::string& Name, struct stat& Status) noexcept {
    return IsPossibleName(Name) && ::stat(Name.c_str(), &Status) == 0;
}

/// The entry itself, where it is a symbolic link.
bool StatusOfEntry(const std::string& Name, struct stat& Status) noexcept {
    return IsPossibleName(Name) && ::lstat(Name.c_str(), &Status) == 0;
}

Descriptor OpenOrThrow(const std::string& FileName, int Flags) {
    if (!IsPossibleName(FileName))
        throw SystemFailure(FileName.empty() ? ENOENT : EINVAL, FileName);
    Descriptor Opened(::open(FileName.c_str(), Flags | O_CLOEXEC, 0666));
    if (!Opened.IsOpen())
        throw SystemFailure(errno, FileName);
    return Opened;
}

struct FolderCloser {
    void operator()(DIR* Folder) const noexcept { ::closedir(Folder); }
};

/// Copies as much as the file system can copy by itself, from and to the current positions.
void CopyInsideTheSystem(const Descriptor& From, const Descriptor& To) noexcept {
    constexpr std::size_t Most = 1U << 30;
    ssize_t Count;
    do
        Count = ::copy_file_range(From.Get(), nullptr, To.Get(), nullptr, Most, 0);
    while (Count > 0 || (Count < 0 && errno == EINTR));
}

void CopyTheRest(const Descriptor& From, const std::string& FromName, const Descriptor& To,
                 const std::string& ToName) {
    constexpr std::size_t Most = 1U << 18;
    const auto Buffer = std::make_unique<std::array<char, Most>>();
    for (;;) {
        const ssize_t Count = ReadOnce(From, Buffer->data(), Buffer->size());
        if (Count < 0)
            throw SystemFailure(errno, FromName);
        if (Count == 0)
            return;
        if (!WriteAll(To, Buffer->data(), static_cast<std::size_t>(Count)))
            throw SystemFailure(errno, ToName);
    }
}

} // namespace

bool FileExists(const std::string& FileName) noexcept {
    struct stat Status {};
    return StatusOf(FileName, Status) && !S_ISDIR(Status.st_mode);
}

bool FolderExists(const std::string& FolderName) noexcept {
    struct stat Status {};
    return StatusOf(FolderName, Status) && S_ISDIR(Status.st_mode);
}

std::int64_t NowNs() noexcept {
    timespec Now{};
    (void)::clock_gettime(CLOCK_REALTIME, &Now);
    return static_cast<std::int64_t>(Now.tv_sec) * 1000000000 + Now.tv_nsec;
}

bool IsWriteProtected(const std::string& FileName) noexcept {
    // The rights count for the superuser too, to whom the system opens every file.
    constexpr mode_t AnybodyWrites = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat Status {};
    return StatusOf(FileName, Status) &&
           ((Status.st_mode & AnybodyWrites) == 0 || ::access(FileName.c_str(), W_OK) != 0);
}

bool IsSpecialFile(const std::string& FileName) noexcept {
    struct stat Status {};
    return StatusOf(FileName, Status) && !S_ISREG(Status.st_mode) && !S_ISDIR(Status.st_mode);
}

bool IsHeldLocked(const std::string& FileName) noexcept {
    if (IsSpecialFile(FileName)) // to open one may already do something
        return false;
    const Descriptor File(::open(FileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!File.IsOpen())
        // Where the file cannot be read its locks cannot be asked for: the folder's rights decide.
        return errno != EACCES && errno != EPERM && errno != ENOENT;
    return IsLockedByOthers(File.Get());
}

bool DeleteFileIfFree(const std::string& FileName) noexcept {
    struct stat Status {};
    if (!StatusOfEntry(FileName, Status))
        return !IsPossibleName(FileName) || errno == ENOENT || errno == ENOTDIR;
    if (S_ISREG(Status.st_mode) && IsHeldLocked(FileName))
        return false;
    return DeleteFileAnyway(FileName);
}

bool DeleteFileAnyway(const std::string& FileName) noexcept {
    return !IsPossibleName(FileName) || ::unlink(FileName.c_str()) == 0 || errno == ENOENT ||
           errno == ENOTDIR;
}

void CopyFileContents(const std::string& From, const std::string& To) {
    const Descriptor Source = OpenOrThrow(From, O_RDONLY);
    struct stat SourceStatus {};
    if (::fstat(Source.Get(), &SourceStatus) != 0)
        throw SystemFailure(errno, From);
    if (S_ISDIR(SourceStatus.st_mode))
        throw SystemFailure(EISDIR, From);
    // Not emptied by the opening: it may be the same file under another name.
    Descriptor Target = OpenOrThrow(To, O_WRONLY | O_CREAT);
    struct stat TargetStatus {};
    if (::fstat(Target.Get(), &TargetStatus) != 0)
        throw SystemFailure(errno, To);
    if (SourceStatus.st_dev == TargetStatus.st_dev && SourceStatus.st_ino == TargetStatus.st_ino)
        return;
    CopyInsideTheSystem(Source, Target);
    CopyTheRest(Source, From, Target, To);
    // Cut only now: what the file had of room is not given away before it is needed.
    if (S_ISREG(TargetStatus.st_mode) &&
        ::ftruncate(Target.Get(), ::lseek(Target.Get(), 0, SEEK_CUR)) != 0)
        throw SystemFailure(errno, To);
    if (!Target.Close())
        throw SystemFailure(errno, To);
}

bool SetLengthOfFile(const std::string& FileName, std::int64_t Bytes) noexcept {
    if (!IsPossibleName(FileName))
        return false;
    int Result;
    do
        Result = ::truncate(FileName.c_str(), Bytes);
    while (Result != 0 && errno == EINTR);
    return Result == 0;
}

bool MakeNewFile(const std::string& FileName, unsigned Rights) {
    if (!IsPossibleName(FileName))
        throw SystemFailure(FileName.empty() ? ENOENT : EINVAL, FileName);
    const Descriptor Made(
        ::open(FileName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode_t{Rights}));
    if (Made.IsOpen())
        return true;
    if (errno == EEXIST)
        return false;
    throw SystemFailure(errno, FileName);
}

bool MakePrivateFolder(const std::string& FolderName) {
    if (!IsPossibleName(FolderName))
        throw SystemFailure(FolderName.empty() ? ENOENT : EINVAL, FolderName);
    if (::mkdir(FolderName.c_str(), 0700) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    throw SystemFailure(errno, FolderName);
}

bool MakeFolderPath(const std::string& FolderName) noexcept {
    if (!IsPossibleName(FolderName))
        return false;
    std::error_code Ignored; // what counts is whether the folder is there
    std::filesystem::create_directories(FolderName, Ignored);
    return FolderExists(FolderName);
}

bool RemoveFolder(const std::string& FolderName) noexcept {
    return !IsPossibleName(FolderName) || ::rmdir(FolderName.c_str()) == 0 ||
           !FolderExists(FolderName);
}

std::vector<std::string> FilesInFolder(const std::string& FolderName) {
    std::vector<std::string> Names;
    if (!IsPossibleName(FolderName))
        return Names;
    const std::unique_ptr<DIR, FolderCloser> Folder(::opendir(FolderName.c_str()));
    if (!Folder)
        return Names;
    const std::string Start = FolderName.back() == '/' ? FolderName : FolderName + "/";
    while (const dirent* Entry = ::readdir(Folder.get())) {
        std::string Name = Start + Entry->d_name;
        if (!FolderExists(Name))
            Names.push_back(std::move(Name));
    }
    std::sort(Names.begin(), Names.end());
    return Names;
}

std::string FolderOfPath(const std::string& Path) {
    const std::size_t Slash = Path.rfind('/');
    return Slash == std::string::npos ? std::string() : Path.substr(0, Slash);
}

std::string NameOfPath(const std::string& Path) {
    const std::size_t Slash = Path.rfind('/');
    return Slash == std::string::npos ? Path : Path.substr(Slash + 1);
}

std::string EndingOfPath(const std::string& Path) {
    const std::string Name = NameOfPath(Path);
    const std::size_t Point = Name.rfind('.');
    return Point == std::string::npos ? std::string()
                                      : LowerCase(std::string_view(Name).substr(Point + 1));
}

} // namespace quoril

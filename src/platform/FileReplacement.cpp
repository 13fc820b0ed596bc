#include "platform/FileReplacement.h"

#include "base/CommandFailure.h"
#include "base/Failure.h"
#include "platform/Descriptor.h"
#include "platform/FileSystem.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quoril {

namespace {

constexpr mode_t AllRights = 07777;
constexpr int MostNeighbours = 100; // that many processes save one file at the same time

/// The old contents are gone in part; the words say where the new ones lie.
class HalfReplaced : public Failure {
    using Failure::Failure;
};

/// The file behind a name that exists, whatever links lead to it.
std::string FileBehind(const std::string& FileName) {
    const std::unique_ptr<char, void (*)(void*)> Found(::realpath(FileName.c_str(), nullptr),
                                                       &std::free);
    if (Found == nullptr)
        throw SystemFailure(errno, FileName);
    return Found.get();
}

/// Short enough for every file system with what is added to it, and without a letter cut in two.
std::string Shortened(std::string Name) {
    constexpr std::size_t MostBytes = 60;
    if (Name.size() > MostBytes) {
        std::size_t End = MostBytes;
        while (End > 0 && (static_cast<unsigned char>(Name[End]) & 0xC0U) == 0x80U)
            --End;
        Name.resize(End);
    }
    return Name;
}

/// What the names of the neighbours of a file begin with.
std::string NeighbourNames(const std::string& FileName) {
    return FolderOfPath(FileName) + "/." + Shortened(NameOfPath(FileName)) + ".quoril-save-";
}

/// A name beside a file that tells the user what it holds, and that the file opens by.
std::string CompleteName(const std::string& FileName, int Number) {
    const std::string Name = NameOfPath(FileName);
    const std::size_t Point = std::min(Name.rfind('.'), Name.size());
    return fmt::format("{}/{} (complete{}){}", FolderOfPath(FileName),
                       Shortened(Name.substr(0, Point)),
                       Number > 1 ? fmt::format(" {}", Number) : "", Shortened(Name.substr(Point)));
}

/// Takes back the rights that a folder gives to each new file beyond its owner's.
void DropInheritedRights(const Descriptor& File) {
    if (::fremovexattr(File.Get(), "system.posix_acl_access") != 0 && errno != ENODATA &&
        errno != EOPNOTSUPP)
        throw SystemFailure(errno, {});
}

/// Makes a file and locks it, so that others see that somebody writes it. Closed when there is
/// something of that name. Throws SystemFailure on any other error.
Descriptor MadeLocked(const std::string& Name) {
    Descriptor Made(::open(Name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!Made.IsOpen()) {
        if (errno != EEXIST)
            throw SystemFailure(errno, {});
        return Made;
    }
    struct flock Lock {};
    Lock.l_type = F_WRLCK;
    Lock.l_whence = SEEK_SET;
    (void)::fcntl(Made.Get(), F_OFD_SETLK, &Lock); // a file system without locks has left-overs
    struct stat Status {};
    // Before it was locked, somebody may have cleared it away.
    if (::fstat(Made.Get(), &Status) != 0 || Status.st_nlink == 0)
        Made.Reset();
    return Made;
}

/// Clears away what a process of this user's left that ended in the midst of its writing.
bool ClearedAway(const std::string& Name) {
    struct stat Status {};
    return ::lstat(Name.c_str(), &Status) == 0 && S_ISREG(Status.st_mode) &&
           Status.st_uid == ::geteuid() && DeleteFileIfFree(Name);
}

/// Access lists and what programs note on a file. Those of the system's own that only the system
/// may give are its business.
bool NotesGoOver(const std::string& From, const std::string& To) {
    const ssize_t Bytes = ::listxattr(From.c_str(), nullptr, 0);
    if (Bytes <= 0)
        return true;
    std::vector<char> Names(static_cast<std::size_t>(Bytes) + 1); // ends with an empty name
    if (::listxattr(From.c_str(), Names.data(), static_cast<std::size_t>(Bytes)) != Bytes)
        return false;
    for (std::string_view Name(Names.data()); !Name.empty();
         Name = std::string_view(Name.data() + Name.size() + 1)) {
        std::vector<char> Value(XATTR_SIZE_MAX);
        const ssize_t Length = ::getxattr(From.c_str(), Name.data(), Value.data(), XATTR_SIZE_MAX);
        const bool Gone = Length >= 0 && ::setxattr(To.c_str(), Name.data(), Value.data(),
                                                    static_cast<std::size_t>(Length), 0) == 0;
        if (!Gone && (Name.starts_with("user.") || Name.starts_with("system.")))
            return false;
    }
    return true;
}

bool RightsGoOver(const struct stat& Old, const std::string& From, const std::string& To) {
    struct stat New {};
    if (::stat(To.c_str(), &New) != 0)
        return false;
    if ((New.st_uid != Old.st_uid || New.st_gid != Old.st_gid) &&
        ::chown(To.c_str(), Old.st_uid, Old.st_gid) != 0)
        return false;
    return NotesGoOver(From, To) && ::chmod(To.c_str(), Old.st_mode & AllRights) == 0;
}

/// Takes the room that a file will need, where the file system can: afterwards nothing fails for
/// want of it.
void ReserveRoom(const std::string& FileName, std::int64_t Bytes) {
    const Descriptor File(::open(FileName.c_str(), O_WRONLY | O_CLOEXEC));
    if (!File.IsOpen())
        throw SystemFailure(errno, FileName);
    if (Bytes > 0 && ::fallocate(File.Get(), FALLOC_FL_KEEP_SIZE, 0, Bytes) != 0 &&
        errno != EOPNOTSUPP && errno != ENOSYS)
        throw SystemFailure(errno, FileName);
}

} // namespace

FileReplacement::FileReplacement(const std::string& FileName) : Asked(FileName) {
    if (IsSpecialFile(FileName))
        throw Failure("This is not a plain file\n" + FileName);
    if (!FileExists(FileName)) {
        File = FileForWriting(FileName, FileForWriting::Mode::CreateNew);
        return;
    }
    // The rights of the folder alone would let it be replaced.
    if (IsWriteProtected(FileName))
        throw SystemFailure(EACCES, FileName);
    Target = FileBehind(FileName);
    struct stat Old {};
    if (::stat(Target.c_str(), &Old) != 0)
        throw SystemFailure(errno, FileName);
    RightsBefore = Old.st_mode & AllRights;
    try {
        MakeNeighbour();
    } catch (const SystemFailure& Why) {
        throw Failure(std::string(Why.what()) + "\nNo new file can be made beside\n" + FileName);
    }
}

FileReplacement::~FileReplacement() {
    GiveUp();
}

void FileReplacement::MakeNeighbour() {
    const std::string Names = NeighbourNames(Target);
    for (int Number = 1; Number <= MostNeighbours; ++Number) {
        const std::string Name = Names + std::to_string(Number);
        Descriptor Made = MadeLocked(Name);
        if (!Made.IsOpen() && ClearedAway(Name))
            Made = MadeLocked(Name);
        if (Made.IsOpen()) {
            Neighbour = Name;
            DropInheritedRights(Made);
            File = FileForWriting(std::move(Made), Asked);
            return;
        }
    }
    throw SystemFailure(EEXIST, Names);
}

void FileReplacement::Write(std::int64_t Offset, const void* Source, std::size_t Bytes) {
    File.Write(Offset, Source, Bytes);
}

void FileReplacement::PutInPlace() {
    if (Placed)
        return;
    File.Flush();
    if (!Target.empty()) {
        if (IsHeldLocked(Target))
            throw Failure("This file is held by another program\n" + Asked);
        // Locked until it has its place, so that nobody takes it for a left-over.
        if (!TakesThePlace())
            CopyIntoThePlace();
    }
    Placed = true;
    GiveUp();
}

bool FileReplacement::TakesThePlace() {
    struct stat Old {};
    const bool StillThere = ::stat(Target.c_str(), &Old) == 0;
    if (StillThere && (Old.st_nlink != 1 || !RightsGoOver(Old, Target, Neighbour)))
        return false;
    if (!StillThere && (errno != ENOENT || ::chmod(Neighbour.c_str(), RightsBefore) != 0))
        return false;
    // Both change their names in one step, and what is then the neighbour goes. To rename onto the
    // old file is the same, but some file systems write all of the new one to the disk within it.
    if (StillThere &&
        ::renameat2(AT_FDCWD, Neighbour.c_str(), AT_FDCWD, Target.c_str(), RENAME_EXCHANGE) == 0)
        return true;
    if (::rename(Neighbour.c_str(), Target.c_str()) != 0)
        return false;
    Neighbour.clear();
    return true;
}

void FileReplacement::ShowNeighbour() noexcept {
    for (int Number = 1; Number <= MostNeighbours; ++Number) {
        std::string Name = CompleteName(Target, Number);
        if (::renameat2(AT_FDCWD, Neighbour.c_str(), AT_FDCWD, Name.c_str(), RENAME_NOREPLACE) == 0)
            Neighbour = std::move(Name);
        else if (errno == EEXIST)
            continue;
        return;
    }
}

void FileReplacement::CopyIntoThePlace() {
    ReserveRoom(Target, IdentityOfFile(Neighbour).Bytes);
    // A process that is killed from here on leaves the file in halves. The next save clears away
    // hidden neighbours, and nobody would look for one.
    ShowNeighbour();
    try {
        CopyFileContents(Neighbour, Target);
    } catch (const SystemFailure& Why) {
        const std::string Whole = std::exchange(Neighbour, {});
        throw HalfReplaced(std::string(Why.what()) +
                           "\n\nThe file is written in part only. The whole of it lies in\n" +
                           Whole);
    }
}

void FileReplacement::GiveUp() noexcept {
    if (!Neighbour.empty())
        (void)DeleteFileAnyway(Neighbour);
    Neighbour.clear();
}

void ReplaceFile(const std::string& FileName, const std::function<void(FileReplacement&)>& Write) {
    const bool WasThere = FileExists(FileName);
    try {
        FileReplacement File(FileName);
        Write(File);
        File.PutInPlace();
    } catch (const HalfReplaced&) {
        throw;
    } catch (const std::exception& What) {
        if (!WasThere)
            throw;
        throw Failure(FailureText(What) + "\n\nThe file that was there before is unchanged.");
    }
}

} // namespace quoril

#include "platform/FileHandle.h"

#include "base/Failure.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <utility>

namespace quoril {

namespace {

FileIdentity IdentityFrom(const struct stat& Status) {
    return {static_cast<std::uint64_t>(Status.st_dev), static_cast<std::uint64_t>(Status.st_ino),
            static_cast<std::int64_t>(Status.st_size),
            static_cast<std::int64_t>(Status.st_mtim.tv_sec) * 1000000000 +
                static_cast<std::int64_t>(Status.st_mtim.tv_nsec)};
}

/// Asks others not to write. A file system without locks is no reason to refuse the file.
void LockForReading(int Handle, const std::string& FileName) {
    struct flock Lock = {};
    Lock.l_type = F_RDLCK;
    Lock.l_whence = SEEK_SET;
    if (::fcntl(Handle, F_OFD_SETLK, &Lock) < 0 && (errno == EAGAIN || errno == EACCES))
        throw Failure("This file is being written by another program\n" + FileName);
}

int OpenRetrying(const std::string& FileName, int Flags) {
    int Handle;
    do {
        // Without O_NONBLOCK the opening of a pipe waits for whoever is at its other end.
        Handle = ::open(FileName.c_str(), Flags | O_CLOEXEC | O_NONBLOCK, 0666);
    } while (Handle < 0 && errno == EINTR);
    return Handle;
}

} // namespace

FileIdentity IdentityOfFile(const std::string& FileName) {
    struct stat Status;
    if (::stat(FileName.c_str(), &Status) < 0)
        throw SystemFailure(errno, FileName);
    return IdentityFrom(Status);
}

bool IsLockedByOthers(int Handle) noexcept {
    struct flock Wanted {};
    Wanted.l_type = F_WRLCK;
    Wanted.l_whence = SEEK_SET;
    if (::fcntl(Handle, F_OFD_GETLK, &Wanted) == 0 && Wanted.l_type != F_UNLCK)
        return true;
    if (::flock(Handle, LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK;
    (void)::flock(Handle, LOCK_UN);
    return false;
}

void FailChangedFile(const std::string& FileName) {
    throw Failure("This file has been changed by another program\n" + FileName);
}

FileForReading::FileForReading(const std::string& Name) : FileName(Name) {
    Handle = OpenRetrying(Name, O_RDONLY);
    if (Handle < 0)
        throw SystemFailure(errno, Name);
    try {
        struct stat Status;
        if (::fstat(Handle, &Status) < 0)
            throw SystemFailure(errno, Name);
        if (S_ISDIR(Status.st_mode))
            throw SystemFailure(EISDIR, Name);
        if (!S_ISREG(Status.st_mode))
            throw Failure("This is not a plain file\n" + Name);
        LockForReading(Handle, Name);
    } catch (...) {
        Close();
        throw;
    }
}

FileForReading::~FileForReading() {
    Close();
}

FileForReading::FileForReading(FileForReading&& Other) noexcept
    : Handle(std::exchange(Other.Handle, -1)), FileName(std::move(Other.FileName)) {}

FileForReading& FileForReading::operator=(FileForReading&& Other) noexcept {
    if (this != &Other) {
        Close();
        Handle = std::exchange(Other.Handle, -1);
        FileName = std::move(Other.FileName);
    }
    return *this;
}

void FileForReading::Close() noexcept {
    if (Handle >= 0)
        ::close(Handle);
    Handle = -1;
}

void FileForReading::Unlock() noexcept {
    struct flock Lock = {};
    Lock.l_type = F_UNLCK;
    Lock.l_whence = SEEK_SET;
    (void)::fcntl(Handle, F_OFD_SETLK, &Lock);
}

FileIdentity FileForReading::Identity() const {
    struct stat Status;
    if (::fstat(Handle, &Status) < 0)
        throw SystemFailure(errno, FileName);
    return IdentityFrom(Status);
}

std::size_t FileForReading::ReadSome(std::int64_t Offset, void* Target, std::size_t Bytes) const {
    std::size_t Done = 0;
    while (Done < Bytes) {
        const ssize_t Got = ::pread(Handle, static_cast<char*>(Target) + Done, Bytes - Done,
                                    Offset + static_cast<std::int64_t>(Done));
        if (Got == 0)
            break;
        if (Got > 0)
            Done += static_cast<std::size_t>(Got);
        else if (errno != EINTR)
            throw SystemFailure(errno, FileName);
    }
    return Done;
}

void FileForReading::Read(std::int64_t Offset, void* Target, std::size_t Bytes) const {
    if (ReadSome(Offset, Target, Bytes) != Bytes)
        throw Failure("This file has become shorter\n" + FileName);
}

bool FileForReading::IsNear(std::int64_t Offset) const noexcept {
    char Byte;
    const iovec Place{&Byte, 1};
    return ::preadv2(Handle, &Place, 1, Offset, RWF_NOWAIT) >= 0 || errno != EAGAIN;
}

void FileForReading::WillNeed(std::int64_t Offset, std::int64_t Bytes) const noexcept {
    ::posix_fadvise(Handle, Offset, Bytes, POSIX_FADV_WILLNEED);
}

FileForWriting::FileForWriting(const std::string& Name, Mode How)
    : Handle(OpenRetrying(Name, How == Mode::CreateNew ? O_WRONLY | O_CREAT | O_TRUNC : O_WRONLY)),
      FileName(Name) {
    if (!Handle.IsOpen())
        throw SystemFailure(errno, Name);
}

void FileForWriting::Write(std::int64_t Offset, const void* Source, std::size_t Bytes) {
    std::size_t Done = 0;
    while (Done < Bytes) {
        const ssize_t Put = ::pwrite(Handle.Get(), static_cast<const char*>(Source) + Done,
                                     Bytes - Done, Offset + static_cast<std::int64_t>(Done));
        if (Put > 0)
            Done += static_cast<std::size_t>(Put);
        else if (Put == 0 || errno != EINTR)
            throw SystemFailure(Put == 0 ? ENOSPC : errno, FileName);
    }
}

void FileForWriting::SetLength(std::int64_t Bytes) {
    while (::ftruncate(Handle.Get(), Bytes) < 0)
        if (errno != EINTR)
            throw SystemFailure(errno, FileName);
}

void FileForWriting::Flush() const {
    // The system reports at the closing of each handle of a file, not only of the last.
    Descriptor Again(::fcntl(Handle.Get(), F_DUPFD_CLOEXEC, 0));
    if (!Again.IsOpen() || (!Again.Close() && errno != EINTR))
        throw SystemFailure(errno, FileName);
}

void FileForWriting::Close() {
    if (!Handle.Close() && errno != EINTR)
        throw SystemFailure(errno, FileName);
}

} // namespace quoril

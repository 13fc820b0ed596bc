// Open files: reading that denies writing to others, and writing.
#pragma once

#include "platform/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace quoril {

/// What tells whether a file is still the one that was seen before: another program that replaces
/// or rewrites it changes at least one of these.
struct FileIdentity {
    std::uint64_t Device = 0;
    std::uint64_t Inode = 0;
    std::int64_t Bytes = 0;
    std::int64_t ChangedNs = 0; ///< time of the last change of the contents, in nanoseconds
    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// The identity of a file by name. Throws SystemFailure when it cannot be had.
[[nodiscard]] FileIdentity IdentityOfFile(const std::string& FileName);

/// Whether another handle than this one, of whichever process, holds a lock on the file that it has
/// open. Never fails.
[[nodiscard]] bool IsLockedByOthers(int Handle) noexcept;

/// Throws Failure: the file is no longer the one that was seen before.
[[noreturn]] void FailChangedFile(const std::string& FileName);

/// A file open for binary reading. Others are asked not to write while it is open (an advisory
/// read lock; where a file system has no locks the file is open without one).
class FileForReading {
  public:
    FileForReading() noexcept = default;
    /// Throws SystemFailure when the file cannot be opened, is a folder or a device, and Failure
    /// when another program holds it locked for writing.
    explicit FileForReading(const std::string& FileName);
    ~FileForReading();
    FileForReading(FileForReading&& Other) noexcept;
    FileForReading& operator=(FileForReading&& Other) noexcept;
    FileForReading(const FileForReading&) = delete;
    FileForReading& operator=(const FileForReading&) = delete;

    [[nodiscard]] bool IsOpen() const noexcept { return Handle >= 0; }
    void Close() noexcept;
    /// Others may write again, or delete the file: what this handle reads then is still this file.
    void Unlock() noexcept;
    /// Whether somebody else has locked the file; the lock of this handle does not count.
    [[nodiscard]] bool IsHeldByOthers() const noexcept { return IsLockedByOthers(Handle); }

    [[nodiscard]] const std::string& Name() const noexcept { return FileName; }
    [[nodiscard]] FileIdentity Identity() const;
    [[nodiscard]] std::int64_t Length() const { return Identity().Bytes; }

    /// Reads exactly `Bytes` bytes from `Offset` (from 0) on. Throws SystemFailure on an error of
    /// the system and Failure when the file ends before.
    void Read(std::int64_t Offset, void* Target, std::size_t Bytes) const;
    /// Reads what there is of `Bytes` bytes from `Offset` on; fewer only at the end of the file.
    [[nodiscard]] std::size_t ReadSome(std::int64_t Offset, void* Target, std::size_t Bytes) const;
    /// Whether the byte at `Offset` can be read without waiting for the disk. True also where the
    /// system cannot tell. Never fails.
    [[nodiscard]] bool IsNear(std::int64_t Offset) const noexcept;
    /// Tells the system that these bytes will be read soon. Never fails.
    void WillNeed(std::int64_t Offset, std::int64_t Bytes) const noexcept;

  private:
    int Handle = -1;
    std::string FileName;
};

/// A file open for binary writing.
class FileForWriting {
  public:
    enum class Mode {
        CreateNew, ///< made new, or emptied when it exists
        Existing   ///< must exist; keeps its contents
    };
    FileForWriting() noexcept = default;
    FileForWriting(const std::string& FileName, Mode How);
    /// Takes a file that is open for writing; failures name it as `ToldName`.
    FileForWriting(Descriptor Opened, std::string ToldName) noexcept
        : Handle(std::move(Opened)), FileName(std::move(ToldName)) {}
    /// Closes without a report; a writer that cares for its file calls Close first.
    ~FileForWriting() = default;
    FileForWriting(FileForWriting&&) noexcept = default;
    FileForWriting& operator=(FileForWriting&&) noexcept = default;
    FileForWriting(const FileForWriting&) = delete;
    FileForWriting& operator=(const FileForWriting&) = delete;

    /// Writes all bytes at `Offset` (from 0). Throws SystemFailure, naming the file.
    void Write(std::int64_t Offset, const void* Source, std::size_t Bytes);
    /// Makes the file exactly this long.
    void SetLength(std::int64_t Bytes);
    /// Throws SystemFailure for what the system would tell only at the closing. The file stays
    /// open.
    void Flush() const;
    /// Closes, and throws SystemFailure when the system tells only now that data was lost.
    void Close();

  private:
    Descriptor Handle;
    std::string FileName;
};

} // namespace quoril

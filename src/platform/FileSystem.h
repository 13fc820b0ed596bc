// Names of files and folders: looking, copying, deleting. Names are bytes as they are.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

/// True for a file (not a folder) of exactly this name.
[[nodiscard]] bool FileExists(const std::string& FileName) noexcept;
[[nodiscard]] bool FolderExists(const std::string& FolderName) noexcept;

/// The time now in nanoseconds since 1970, as times of files are counted.
[[nodiscard]] std::int64_t NowNs() noexcept;

/// Whether a file is there that is not to be written: its rights let nobody write it, or not us.
[[nodiscard]] bool IsWriteProtected(const std::string& FileName) noexcept;

/// Whether a name stands for a device, a pipe or a socket.
[[nodiscard]] bool IsSpecialFile(const std::string& FileName) noexcept;
/// Whether another handle, of whichever process, holds a lock on an ordinary file.
[[nodiscard]] bool IsHeldLocked(const std::string& FileName) noexcept;

/// Deletes a file. False when it is still there: no right to, or another program (or another
/// handle of this one) holds it open with a lock. True also when there was none.
[[nodiscard]] bool DeleteFileIfFree(const std::string& FileName) noexcept;
/// The same, whoever has it open: for files that are nobody else's. Open handles keep the contents.
[[nodiscard]] bool DeleteFileAnyway(const std::string& FileName) noexcept;

/// Copies the contents over those of `To`, which is made if it is not there. Both names for one
/// file: nothing happens. Throws SystemFailure; `To` then holds a part, before what it held.
void CopyFileContents(const std::string& From, const std::string& To);
/// Makes an existing file exactly this long. False when that failed.
[[nodiscard]] bool SetLengthOfFile(const std::string& FileName, std::int64_t Bytes) noexcept;

/// Makes an empty file, in one step: false when something of that name exists already. `Rights` as
/// the system counts them, less what the process keeps from others. Throws SystemFailure on any
/// other error.
[[nodiscard]] bool MakeNewFile(const std::string& FileName, unsigned Rights = 0666);

/// Makes one folder that only its owner can enter (mode 0700), in one step: false when something
/// of that name exists already. Throws SystemFailure on any other error.
[[nodiscard]] bool MakePrivateFolder(const std::string& FolderName);
/// Makes a folder with its parents, if missing. False when that failed.
[[nodiscard]] bool MakeFolderPath(const std::string& FolderName) noexcept;
/// Removes an empty folder. False when it is still there.
[[nodiscard]] bool RemoveFolder(const std::string& FolderName) noexcept;
/// Full paths of the files (not folders) in a folder, hidden ones too, sorted; empty when it cannot
/// be read.
[[nodiscard]] std::vector<std::string> FilesInFolder(const std::string& FolderName);

/// The part of a path before its last "/", and after it.
[[nodiscard]] std::string FolderOfPath(const std::string& Path);
[[nodiscard]] std::string NameOfPath(const std::string& Path);
/// The text after the last "." of the file's name in lower case; empty without one.
[[nodiscard]] std::string EndingOfPath(const std::string& Path);

} // namespace quoril

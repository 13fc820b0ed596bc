// The settings file, the places for working files, and small file helpers.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

// Paths without a separator at the end. Set at start-up.
extern std::string InstalledPath;    ///< folder of the program
extern std::string AppPath;          ///< folder of its settings: the same, or the user's own
extern std::string SysTempDir;       ///< the system's temporary folder, or AppPath
extern std::string TmpDir0;          ///< the user's choice of location for temporary data
extern std::string SessionDir;       ///< folder of this process in TmpDir0, removed at exit
extern std::int32_t TempNameCounter; ///< grows by one with each temporary name

/// The settings file: AppPath + "/quoril-wave-editor.ini".
[[nodiscard]] std::string SettingsFileName();

/// A value of the settings file. An empty section means "General" and an empty key "END"; both are
/// changed in place. Cut off after 99 characters.
[[nodiscard]] std::string IniGet(std::string& Section, std::string& Key,
                                 const std::string& Default);
[[nodiscard]] std::string IniGet(const char* Section, const char* Key, const std::string& Default);
/// Writes a value of the settings file at once. An empty section means "General".
void IniPut(const std::string& Section, const std::string& Key, const std::string& Value);

/// The same for a named file; reading gives long values whole and replaces no empty name.
[[nodiscard]] std::string ProfileGet(const std::string& Section, const std::string& Key,
                                     const std::string& Default, const std::string& FileName);
void ProfilePut(const std::string& Section, const std::string& Key, const std::string& Value,
                const std::string& FileName);

/// Free bytes for the user on the disk of TmpDir0; 0 when it cannot be asked.
[[nodiscard]] std::int64_t FreeDiskBytes();
/// True when FreeDiskBytes is greater than `Needed`; otherwise says that it is low.
bool FreeDiskEnough(std::int64_t Needed);

/// False for a blank name, otherwise whether a file of that name exists.
[[nodiscard]] bool FileThere(const std::string& FileName);
/// True when the name is empty, there is no such file, or it could be deleted.
bool FileDelete(const std::string& FileName) noexcept;
/// A new path in SessionDir that no file has. No file is made.
[[nodiscard]] std::string TempFileName();
/// A number for temporary names: whole seconds since midnight, local time.
[[nodiscard]] std::int32_t SecondsSinceMidnight();
/// Makes a new session folder in TmpDir0 and gives its path. Throws SystemFailure.
[[nodiscard]] std::string SessionDirMake();
/// Deletes the files in SessionDir and the folder; a file that is still there gets a second try
/// after 200 milliseconds, whoever has it open then. Failures are ignored.
void SessionDirRemove();
/// Sets the length of an existing file. Failures are ignored.
void FileSetLength(const std::string& FileName, std::int64_t Bytes);

/// Fixes TmpDir0 and makes SessionDir, writing the record keys on the way. AppPath and SysTempDir
/// must be set. A TmpDir0 that is missing, or where no folder can be made, gives way to SysTempDir;
/// throws SystemFailure when none can be made there either.
void WorkingFilesSetUp();

} // namespace quoril

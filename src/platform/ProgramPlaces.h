// Where the program lies, and where its files may go.
#pragma once

#include <string>

namespace quoril {

/// Full path of the running executable. Throws SystemFailure when the system does not tell.
[[nodiscard]] std::string ProgramFile();

/// Its folder, without a separator at the end. Throws likewise.
[[nodiscard]] std::string FolderOfProgram();

/// Whether a folder belongs to the installed programs of the system, where no user's files go even
/// if they could: "/usr", "/opt", "/bin" and the like, and all folders in them.
[[nodiscard]] bool IsSystemFolder(const std::string& Folder);
/// Folder for the settings of a program that lies in the given folder: this folder itself where it
/// can be written and is none of the system's (a build tree, a portable folder), otherwise
/// "quoril-wave-editor" in $XDG_CONFIG_HOME or in ~/.config, which is made if missing. No separator
/// at the end.
[[nodiscard]] std::string FolderForSettings(const std::string& ExecutableFolder);
/// Where a user's sounds are looked for first: the music folder of the desktop, or "Music" in the
/// home folder, else the home folder itself. No separator at the end.
[[nodiscard]] std::string FolderForSounds();

/// $TMPDIR if it is a folder, else /var/tmp, else /tmp: work files are large, and /tmp is often
/// memory. No separator at the end.
[[nodiscard]] std::string GetTempPathA();

} // namespace quoril

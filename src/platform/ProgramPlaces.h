// Where the program lies, and where its files may go.
#pragma once

#include <string>

namespace quoril {

/// Full path of the running executable. Throws SystemFailure when the system does not tell.
[[nodiscard]] std::string ProgramFile();

/// Folder for settings: the executable's own folder where it can be written (a build tree, a
/// portable folder), otherwise "quoril-wave-editor" in $XDG_CONFIG_HOME or in ~/.config, which is
/// made if missing. No separator at the end.
[[nodiscard]] std::string FolderOfProgram();
/// The same for an executable that lies in the given folder.
[[nodiscard]] std::string FolderForSettings(const std::string& ExecutableFolder);

/// $TMPDIR if it is a folder, else /var/tmp, else /tmp: work files are large, and /tmp is often
/// memory. No separator at the end.
[[nodiscard]] std::string GetTempPathA();

} // namespace quoril

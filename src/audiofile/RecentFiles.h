// The files opened or saved last, kept in the settings file.
#pragma once

#include <array>
#include <string>

namespace quoril {

inline constexpr int RecentFileCount = 5;

/// The entries 1 to 5, newest first; index 0 unused. Empty where there is none.
[[nodiscard]] std::array<std::string, RecentFileCount + 1> RecentFilesRead();
/// Puts a file at the first place. One that is in the list already, in whatever case, moves up; a
/// new one pushes the oldest out. A name that no settings file can hold (with a line break in it)
/// is passed over.
void RecentFilesAdd(const std::string& FileName);
/// How the menu shows a path: one of 38 characters or more as its first 3, " .. " and its last 30.
[[nodiscard]] std::string RecentFileCaption(const std::string& FileName);

} // namespace quoril

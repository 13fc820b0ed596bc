// What start-up and shut-down work out without a window: memory budget, place of the main window,
// command line, and the settings that live through sessions.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

extern bool MainWindowOpen; ///< the main window has been shown

// ---- Memory

struct MemoryBudgetChoice {
    std::int32_t Budget = 0; ///< bytes, at least 10000000
    std::string Warning;     ///< a tip for the user; empty for none
};
/// The budget for a machine with `Total` bytes of memory, of which `LoadPercent` are in use.
[[nodiscard]] MemoryBudgetChoice MemoryBudgetFor(std::int32_t Total, std::int32_t LoadPercent);

// ---- Place of the main window

/// State 0 normal, 1 minimised, 2 maximised. The rest in twips: 1440 to the logical inch.
struct WindowPlace {
    std::int32_t State = 0;
    std::int32_t Left = 0;
    std::int32_t Top = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};
/// What the settings hold when no place has been stored.
inline constexpr const char* NoWindowPlace = "-1,-1,-1,-1,-1";

/// Five whole numbers divided by commas; a missing or broken one is 0.
[[nodiscard]] WindowPlace WindowPlaceParse(const std::string& Text);
[[nodiscard]] std::string WindowPlaceText(const WindowPlace& Place);
/// The corrections that a stored place gets on a screen of the given size in twips.
[[nodiscard]] WindowPlace WindowPlaceCorrected(WindowPlace Place, std::int32_t ScreenWidth,
                                               std::int32_t ScreenHeight);

[[nodiscard]] std::int32_t TwipsFromPixels(std::int32_t Pixels, double DotsPerInch);
[[nodiscard]] std::int32_t PixelsFromTwips(std::int32_t Twips, double DotsPerInch);

// ---- Command line

/// The words of a command line as one text. A word with a blank in it, or one that begins with a
/// double quote, is put in double quotes, as a user would type it.
[[nodiscard]] std::string CommandLineText(const std::vector<std::string>& Words);

/// The path of the file that a command line names, made absolute from the folder `CurrentFolder`;
/// none when it names no audio file. `IsFile` tells whether a file of a name exists.
[[nodiscard]] std::optional<std::string>
CommandLineFile(const std::string& CommandLine, const std::string& CurrentFolder,
                const std::function<bool(const std::string&)>& IsFile);

// ---- Settings

/// Fixes InstalledPath, AppPath and SysTempDir, and makes the folder "Work" in InstalledPath if it
/// is missing and settings lie there, too.
void PathsSetUp(const std::string& ProgramFolder, const std::string& SystemTempPath);

/// Reads the settings that live through sessions; what fails its check takes its default, and
/// nothing is written back.
void StartUpSettingsRead();
/// Writes those of them that change in a session.
void ShutDownSettingsWrite();

/// A tempo from 0.1 to 2 as it stands in the settings, anything else 1.
[[nodiscard]] float TempoFromText(const std::string& Text);

/// Fixes MemoryBudget by the machine's memory, and notes both numbers in the settings file. Gives
/// the tip that the user should see, or nothing.
[[nodiscard]] std::string MemoryBudgetSetUp();

/// Notes in the settings file which version of the sound system answers.
void SoundSystemVersionNote();

} // namespace quoril

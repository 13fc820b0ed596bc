#include "shell/StartUpMod.h"

#include "audiofile/AudioFileNames.h"
#include "audiofile/DocumentFile.h"
#include "base/Arithmetic.h"
#include "base/DocumentState.h"
#include "base/PlayState.h"
#include "base/ProgramTitle.h"
#include "platform/DirectXSetup.h"
#include "platform/FileSystem.h"
#include "platform/ProgramPlaces.h"
#include "platform/SystemStatus.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "storage/WoroFileBlockMod.h"
#include "view/ValueEntry.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quoril {

bool MainWindowOpen = false;

// ---- Memory

namespace {

struct MemoryRow {
    std::int64_t Below;         ///< the row is for less memory than this
    std::int32_t WarnAboveLoad; ///< percent
    double Share;
};
constexpr std::array<MemoryRow, 4> MemoryRows = {{{33000000, -1, 0.66},
                                                  {66500000, 70, 0.5},
                                                  {157000000, 90, 0.33},
                                                  {std::int64_t{1} << 31U, 90, 0.25}}};

std::string TooLittleMemory(std::int32_t Total) {
    return fmt::format("Memory found ({} bytes) is too low. {} will run slow and may come across "
                       "errors. And it is recommended to close other applications that may be "
                       "running.",
                       Total, ProgramTitle);
}

} // namespace

MemoryBudgetChoice MemoryBudgetFor(std::int32_t Total, std::int32_t LoadPercent) {
    const auto* const Row = std::ranges::find_if(
        MemoryRows, [Total](const MemoryRow& Each) { return Total < Each.Below; });
    MemoryBudgetChoice Choice;
    Choice.Budget = std::max(RoundToLong(Total * Row->Share), LowestMemoryBudget);
    if (Row == MemoryRows.begin())
        Choice.Warning = TooLittleMemory(Total);
    else if (LoadPercent > Row->WarnAboveLoad)
        Choice.Warning = "It is recommended to close other applications that may be running and "
                         "consuming larger memory.";
    return Choice;
}

std::string MemoryBudgetSetUp() {
    const MemoryStatus Memory = GlobalMemoryStatus();
    IniPut("General", "PhyMemorySz", std::to_string(Memory.Total));
    IniPut("General", "PhyMemoryLoad", std::to_string(Memory.LoadPercent));
    const MemoryBudgetChoice Choice = MemoryBudgetFor(Memory.Total, Memory.LoadPercent);
    MemoryBudget = Choice.Budget;
    return Choice.Warning;
}

// ---- Place of the main window

namespace {

constexpr double FarthestPart = 0.9;
constexpr std::int32_t NarrowestWidth = 7500;
constexpr std::int32_t LowestHeight = 5000;
constexpr std::int32_t ReplacementTop = 14000;
constexpr std::int32_t ReplacementHeight = 7440;
constexpr double TwipsPerInch = 1440.0;

/// The leading number of a text, limited to 32 bits.
std::int32_t LeadingLong(const std::string& Text) {
    return RoundToLong(std::clamp(LeadingNumber(Text), -2147483648.0, 2147483647.0));
}

} // namespace

WindowPlace WindowPlaceParse(const std::string& Text) {
    std::array<std::int32_t, 5> Numbers{};
    std::size_t From = 0;
    for (std::int32_t& Number : Numbers) {
        const std::size_t Comma = std::min(Text.find(',', From), Text.size());
        Number = LeadingLong(Text.substr(From, Comma - From));
        From = std::min(Comma + 1, Text.size());
    }
    return {Numbers[0], Numbers[1], Numbers[2], Numbers[3], Numbers[4]};
}

std::string WindowPlaceText(const WindowPlace& Place) {
    return fmt::format("{},{},{},{},{}", Place.State, Place.Left, Place.Top, Place.Width,
                       Place.Height);
}

WindowPlace WindowPlaceCorrected(WindowPlace Place, std::int32_t ScreenWidth,
                                 std::int32_t ScreenHeight) {
    if (Place.State != 0 && Place.State != 2)
        Place.State = 0;
    if (Place.Left < 0 || Place.Left > FarthestPart * ScreenWidth)
        Place.Left = 0;
    if (Place.Top < 0 || Place.Top > FarthestPart * ScreenHeight)
        Place.Top = 0;
    // It is the top that is replaced here, and meant to be: a width that is too small stays.
    if (Place.Top > ScreenWidth || Place.Width < NarrowestWidth)
        Place.Top = ReplacementTop;
    Place.Width = std::min(Place.Width, ScreenWidth);
    if (Place.Height > ScreenHeight || Place.Height < LowestHeight)
        Place.Height = ReplacementHeight;
    Place.Height = std::min(Place.Height, ScreenHeight);
    return Place;
}

std::int32_t TwipsFromPixels(std::int32_t Pixels, double DotsPerInch) {
    return RoundToLong(Pixels * TwipsPerInch / DotsPerInch);
}

std::int32_t PixelsFromTwips(std::int32_t Twips, double DotsPerInch) {
    return RoundToLong(Twips * DotsPerInch / TwipsPerInch);
}

// ---- Command line

namespace {

/// The text before the first `Mark` at the second place or later; none without one.
std::optional<std::string> TextBefore(const std::string& Text, char Mark) {
    const std::size_t Found = Text.find(Mark, 1);
    if (Found == std::string::npos)
        return std::nullopt;
    return Text.substr(0, Found);
}

/// The file name in a trimmed command line, as it is quoted or divided by a blank.
std::optional<std::string>
NameInCommandLine(std::string Text, const std::function<bool(const std::string&)>& IsFile) {
    if (Text.empty())
        return std::nullopt;
    if (Text.front() == '"') {
        Text.front() = ' ';
        if (Text.back() != '"')
            return TextBefore(Text, '"');
        Text.back() = ' ';
        return Text;
    }
    if (IsFile(Text))
        return Text;
    return TextBefore(Text, ' ');
}

} // namespace

std::string CommandLineText(const std::vector<std::string>& Words) {
    std::string Text;
    for (const std::string& Word : Words) {
        if (!Text.empty())
            Text += ' ';
        const bool Quoted = Word.find(' ') != std::string::npos || Word.starts_with('"');
        Text += Quoted ? '"' + Word + '"' : Word;
    }
    return Text;
}

std::optional<std::string> CommandLineFile(const std::string& CommandLine,
                                           const std::string& CurrentFolder,
                                           const std::function<bool(const std::string&)>& IsFile) {
    const auto Name = NameInCommandLine(Trim(CommandLine), IsFile);
    if (!Name)
        return std::nullopt;
    std::string Path = Trim(*Name);
    if (!IsFile(Path) || NameOfPath(Path).empty() || !IsAudioFileName(NameOfPath(Path)))
        return std::nullopt;
    if (!Path.starts_with('/'))
        Path = (CurrentFolder == "/" ? CurrentFolder : CurrentFolder + "/") + Path;
    return Path;
}

// ---- Settings

namespace {

/// The whole number of a setting if it is one of those allowed, else the default.
std::int32_t SettingOneOf(const char* Section, const char* Key, std::int32_t Default,
                          std::initializer_list<std::int32_t> Allowed) {
    const double Value = RoundEven(LeadingNumber(IniGet(Section, Key, std::to_string(Default))));
    for (const std::int32_t Each : Allowed)
        if (Value == Each)
            return Each;
    return Default;
}

std::string WorkFolder() {
    return InstalledPath + "/Work";
}

/// Where the dialogs of a first session begin.
std::string FirstWaveDir() {
    return FolderExists(WorkFolder()) ? WorkFolder() : FolderForSounds();
}

bool SettingIs(const char* Section, const char* Key, const char* Default, double What) {
    return RoundEven(LeadingNumber(IniGet(Section, Key, Default))) == What;
}

} // namespace

void PathsSetUp(const std::string& ProgramFolder, const std::string& SystemTempPath) {
    constexpr std::size_t LongestTempPath = 500;
    InstalledPath = ProgramFolder;
    AppPath = FolderForSettings(ProgramFolder);
    SysTempDir = SystemTempPath.substr(0, LongestTempPath);
    while (SysTempDir.size() > 1 && SysTempDir.ends_with('/'))
        SysTempDir.pop_back();
    if (Trim(SysTempDir).empty() || !FolderExists(SysTempDir))
        SysTempDir = AppPath;
    // Only a proposal for the first dialog: without it the dialogs start elsewhere.
    if (AppPath == InstalledPath)
        (void)MakeFolderPath(WorkFolder());
}

void StartUpSettingsRead() {
    CurrentFormat.Channel = SettingOneOf("Format", "Channel", 1, {1, 2});
    CurrentFormat.Bits = SettingOneOf("Format", "Bits", 16, {8, 16});
    CurrentFormat.Freq = SettingOneOf("Format", "SamplingRate", 22050, {11025, 22050, 44100});
    // Read whole: a folder's name may be longer than what IniGet gives.
    WaveDir = ProfileGet("Path", "Last Wave Dir", FirstWaveDir(), SettingsFileName());
    SelectedDir = WaveDir;
    LoopOn = SettingIs("Setting", "LoopOn", "0", 1);
    QuickPlay = SettingIs("Setting", "QuickPlay", "1", 1);
    UserGuideSettingsRead();
    UndoOptionON = !SettingIs("General", "UndoOptionON", "1", 0);
    TempoFor = TempoFromText(IniGet("Setting", "TempoFor", "1"));
    TempoRev = TempoFromText(IniGet("Setting", "TempoRev", "1"));
    DisplayToggleRead();
}

void ShutDownSettingsWrite() {
    IniPut("Format", "Channel", std::to_string(CurrentFormat.Channel));
    IniPut("Format", "Bits", std::to_string(CurrentFormat.Bits));
    IniPut("Format", "SamplingRate", std::to_string(CurrentFormat.Freq));
    IniPut("Setting", "TempoFor", fmt::format("{:.1f}", TempoFor));
    IniPut("Setting", "TempoRev", fmt::format("{:.1f}", TempoRev));
    IniPut("Path", "Last Wave Dir", WaveDir);
}

float TempoFromText(const std::string& Text) {
    const double Tempo = LeadingNumber(Text);
    return Tempo >= 0.1 && Tempo <= 2.0 ? Single(Tempo) : 1.0F;
}

void SoundSystemVersionNote() {
    const std::optional<DirectXVersion> Found = DirectXSetupGetVersion();
    std::string Text = "ErrorInDetecting";
    if (Found && Found->Known)
        Text = fmt::format("DirectX-{}-{}", Found->Number(), Found->Revision);
    else if (Found)
        Text = "DirectX-0-0";
    IniPut("General", "DirectXInstalled", Text);
}

} // namespace quoril

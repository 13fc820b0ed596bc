#include "shell/StartUpMod.h"
#include "playback/PlaySpeed.h"

#include "audiofile/DocumentFile.h"
#include "base/DocumentState.h"
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "storage/WoroFileBlockMod.h"
#include "support/TestSession.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace quoril {
namespace {

namespace fs = std::filesystem;
using test::TestSession;

// ---- Memory

constexpr const char* CloseOthers = "It is recommended to close other applications that may be "
                                    "running and consuming larger memory.";

struct BudgetCase {
    std::int32_t Total;
    std::int32_t Load;
    std::int32_t Budget;
    bool Warns;
};
void PrintTo(const BudgetCase& Case, std::ostream* Out) {
    *Out << Case.Total << " bytes at " << Case.Load << " percent";
}
class MemoryBudgetTable : public ::testing::TestWithParam<BudgetCase> {};

TEST_P(MemoryBudgetTable, GivesShareAndAdvice) {
    const BudgetCase& Case = GetParam();
    const MemoryBudgetChoice Choice = MemoryBudgetFor(Case.Total, Case.Load);
    EXPECT_EQ(Choice.Budget, Case.Budget);
    EXPECT_EQ(!Choice.Warning.empty(), Case.Warns);
    if (Case.Total >= 33000000 && Case.Warns) {
        EXPECT_EQ(Choice.Warning, CloseOthers);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MemoryBudgetTable,
    ::testing::Values(
        // The lowest row warns at any load, and its share is raised to the floor.
        BudgetCase{0, 0, 10000000, true}, BudgetCase{15000000, 0, 10000000, true},
        BudgetCase{20000000, 100, 13200000, true}, BudgetCase{32999999, 0, 21779999, true},
        // 33000000 and up: half.
        BudgetCase{33000000, 70, 16500000, false}, BudgetCase{33000000, 71, 16500000, true},
        BudgetCase{66499999, 0, 33250000, false},
        // 66500000 and up: a third.
        BudgetCase{66500000, 90, 21945000, false}, BudgetCase{66500000, 91, 21945000, true},
        BudgetCase{156999999, 0, 51810000, false},
        // 157000000 and up: a quarter.
        BudgetCase{157000000, 90, 39250000, false}, BudgetCase{157000000, 91, 39250000, true},
        BudgetCase{2147483647, 0, 536870912, false}, BudgetCase{2147483647, 100, 536870912, true},
        // A number that turned negative has the floor.
        BudgetCase{-1, 0, 10000000, true}, BudgetCase{-2147483647 - 1, 0, 10000000, true}));

TEST(MemoryBudget, TooLittleMemoryIsToldWithItsNumber) {
    EXPECT_EQ(MemoryBudgetFor(20000000, 10).Warning,
              "Memory found (20000000 bytes) is too low. Quoril Wave Editor will run slow and may "
              "come across errors. And it is recommended to close other applications that may be "
              "running.");
}

TEST(MemoryBudget, SetUpNotesTheMachineAndFixesTheBudget) {
    const TestSession Session;
    MemoryBudget = 0;
    static_cast<void>(MemoryBudgetSetUp());
    const std::int64_t Total = std::stoll(IniGet("General", "PhyMemorySz", ""));
    const std::int32_t Load = std::stoi(IniGet("General", "PhyMemoryLoad", ""));
    EXPECT_GT(Total, 0);
    EXPECT_GE(Load, 0);
    EXPECT_LE(Load, 100);
    EXPECT_EQ(MemoryBudget, MemoryBudgetFor(static_cast<std::int32_t>(Total), Load).Budget);
}

// ---- Place of the main window; the screen has 28800 x 16200 twips, 1920 x 1080 pixels at 96

struct PlaceCase {
    const char* What;
    WindowPlace Stored;
    WindowPlace Corrected;
};
void PrintTo(const PlaceCase& Case, std::ostream* Out) {
    *Out << Case.What;
}
class WindowPlaceTable : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(WindowPlaceTable, IsCorrected) {
    EXPECT_EQ(WindowPlaceText(WindowPlaceCorrected(GetParam().Stored, 28800, 16200)),
              WindowPlaceText(GetParam().Corrected));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WindowPlaceTable,
    ::testing::Values(
        PlaceCase{"good place", {0, 100, 200, 15000, 10000}, {0, 100, 200, 15000, 10000}},
        PlaceCase{"maximised", {2, 100, 200, 15000, 10000}, {2, 100, 200, 15000, 10000}},
        PlaceCase{"minimised", {1, 100, 200, 15000, 10000}, {0, 100, 200, 15000, 10000}},
        PlaceCase{"state below", {-1, 100, 200, 15000, 10000}, {0, 100, 200, 15000, 10000}},
        PlaceCase{"state above", {3, 100, 200, 15000, 10000}, {0, 100, 200, 15000, 10000}},
        PlaceCase{"left negative", {0, -1, 200, 15000, 10000}, {0, 0, 200, 15000, 10000}},
        PlaceCase{"left at limit", {0, 25920, 200, 15000, 10000}, {0, 25920, 200, 15000, 10000}},
        PlaceCase{"left beyond", {0, 25921, 200, 15000, 10000}, {0, 0, 200, 15000, 10000}},
        PlaceCase{"top negative", {0, 100, -1, 15000, 10000}, {0, 100, 0, 15000, 10000}},
        PlaceCase{"top at limit", {0, 100, 14580, 15000, 10000}, {0, 100, 14580, 15000, 10000}},
        PlaceCase{"top beyond", {0, 100, 14581, 15000, 10000}, {0, 100, 0, 15000, 10000}},
        PlaceCase{"narrowest", {0, 100, 200, 7500, 10000}, {0, 100, 200, 7500, 10000}},
        PlaceCase{"too narrow", {0, 100, 200, 7499, 10000}, {0, 100, 14000, 7499, 10000}},
        PlaceCase{"too wide", {0, 100, 200, 28801, 10000}, {0, 100, 200, 28800, 10000}},
        PlaceCase{"lowest", {0, 100, 200, 15000, 5000}, {0, 100, 200, 15000, 5000}},
        PlaceCase{"too low", {0, 100, 200, 15000, 4999}, {0, 100, 200, 15000, 7440}},
        PlaceCase{"too high", {0, 100, 200, 15000, 16201}, {0, 100, 200, 15000, 7440}},
        PlaceCase{"nothing stored", {-1, -1, -1, -1, -1}, {0, 0, 14000, -1, 7440}},
        PlaceCase{"absurd numbers",
                  {2147483647, 2147483647, 2147483647, 2147483647, 2147483647},
                  {0, 0, 0, 28800, 7440}}));

TEST(WindowPlace, OnALowScreenTheReplacementHeightIsLimited) {
    const WindowPlace Place = WindowPlaceCorrected({0, 0, 0, 8000, 9000}, 9000, 6000);
    EXPECT_EQ(Place.Height, 6000);
}

TEST(WindowPlace, ATopBeyondTheScreensWidthIsReplacedOnATallScreen) {
    const WindowPlace Place = WindowPlaceCorrected({0, 0, 16000, 8000, 9000}, 15000, 30000);
    EXPECT_EQ(Place.Top, 14000);
}

TEST(WindowPlace, TextComesBack) {
    const WindowPlace Place{2, 15, -30, 12345, 67890};
    EXPECT_EQ(WindowPlaceText(Place), "2,15,-30,12345,67890");
    EXPECT_EQ(WindowPlaceParse(WindowPlaceText(Place)), Place);
}

TEST(WindowPlace, RubbishCountsAsZero) {
    EXPECT_EQ(WindowPlaceParse(""), (WindowPlace{0, 0, 0, 0, 0}));
    EXPECT_EQ(WindowPlaceParse("x,1"), (WindowPlace{0, 1, 0, 0, 0}));
    EXPECT_EQ(WindowPlaceParse(",,,,"), (WindowPlace{0, 0, 0, 0, 0}));
    EXPECT_EQ(WindowPlaceParse("1,2,3,4,5,6"), (WindowPlace{1, 2, 3, 4, 5}));
    EXPECT_EQ(WindowPlaceParse("99999999999,-99999999999,1e30,nan,inf").State, 2147483647);
}

TEST(WindowPlace, TwipsAreFourteenFortiethsOfAnInch) {
    EXPECT_EQ(TwipsFromPixels(1, 96), 15);
    EXPECT_EQ(TwipsFromPixels(1920, 96), 28800);
    EXPECT_EQ(PixelsFromTwips(28800, 96), 1920);
    EXPECT_EQ(TwipsFromPixels(100, 120), 1200);
}

// ---- Command line

/// Files that exist in the tests of the command line.
bool IsFile(const std::string& Name) {
    static const std::set<std::string> Files = {
        "a.wav",        "my song.wav",   "my",        "my.wav",
        "/music/b.MP3", "/music/c d.Au", "notes.txt", "bad\xFFname.wav",
        "\"q\".wav",    "noending",      ".wav",      "dir.wav/plain",
        "x.snd",        "y.RAW"};
    return Files.contains(Name);
}

struct LineCase {
    const char* Line;
    const char* Path; ///< null: no file
};
void PrintTo(const LineCase& Case, std::ostream* Out) {
    *Out << '[' << Case.Line << ']';
}
class CommandLineTable : public ::testing::TestWithParam<LineCase> {};

TEST_P(CommandLineTable, NamesAFileOrNot) {
    const auto Path = CommandLineFile(GetParam().Line, "/home/me", IsFile);
    EXPECT_EQ(Path.value_or("(none)"), GetParam().Path == nullptr ? "(none)" : GetParam().Path);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CommandLineTable,
    ::testing::Values(LineCase{"a.wav", "/home/me/a.wav"}, LineCase{"  a.wav  ", "/home/me/a.wav"},
                      LineCase{"\"a.wav\"", "/home/me/a.wav"},
                      LineCase{"a.wav other words", "/home/me/a.wav"},
                      LineCase{"my song.wav", "/home/me/my song.wav"},
                      LineCase{"\"my song.wav\"", "/home/me/my song.wav"},
                      LineCase{"\"my song.wav\" more", "/home/me/my song.wav"},
                      LineCase{"\" a.wav \"", "/home/me/a.wav"},
                      LineCase{"my.wav song.wav", "/home/me/my.wav"},
                      // The part before the blank is a file, but no audio file.
                      LineCase{"my other.wav", nullptr}, LineCase{"no such.wav", nullptr},
                      LineCase{"nosuch.wav", nullptr},
                      // A first quote alone is not enough, a second one later is.
                      LineCase{"\"a.wav", nullptr}, LineCase{"\"a.wav\" x", "/home/me/a.wav"},
                      LineCase{"\"", nullptr}, LineCase{"\"\"", nullptr}, LineCase{"", nullptr},
                      LineCase{"   ", nullptr}, LineCase{"/music/b.MP3", "/music/b.MP3"},
                      LineCase{"\"/music/c d.Au\"", "/music/c d.Au"},
                      LineCase{"x.snd", "/home/me/x.snd"}, LineCase{"y.RAW", "/home/me/y.RAW"},
                      LineCase{"notes.txt", nullptr}, LineCase{"noending", nullptr},
                      LineCase{".wav", "/home/me/.wav"}, LineCase{"dir.wav/plain", nullptr},
                      LineCase{"bad\xFFname.wav", "/home/me/bad\xFFname.wav"}));

TEST(CommandLine, InTheRootFolderARelativeNameHasOneSeparator) {
    EXPECT_EQ(CommandLineFile("a.wav", "/", IsFile), "/a.wav");
}

TEST(CommandLine, WordsAreJoinedAsTheyWouldBeTyped) {
    EXPECT_EQ(CommandLineText({}), "");
    EXPECT_EQ(CommandLineText({"a.wav"}), "a.wav");
    EXPECT_EQ(CommandLineText({"my song.wav"}), "\"my song.wav\"");
    EXPECT_EQ(CommandLineText({"my", "song.wav"}), "my song.wav");
    EXPECT_EQ(CommandLineText({"my song.wav", "more"}), "\"my song.wav\" more");
}

TEST(CommandLine, EveryNameGoesThroughTheTextUnharmed) {
    for (const char* Name :
         {"a.wav", "my song.wav", "bad\xFFname.wav", "\"q\".wav", "/music/c d.Au"}) {
        const auto Path = CommandLineFile(CommandLineText({Name}), "/home/me", IsFile);
        ASSERT_TRUE(Path.has_value()) << Name;
        EXPECT_TRUE(Path->ends_with(Name)) << *Path;
    }
}

TEST(CommandLine, AnUnquotedNameInTwoWordsIsOneFile) {
    EXPECT_EQ(CommandLineFile(CommandLineText({"my", "song.wav"}), "/", IsFile), "/my song.wav");
}

// ---- Settings

TEST(StartUpSettings, WithoutAFileTheDefaultsStand) {
    const TestSession Session;
    fs::create_directory(InstalledPath + "/Work");
    StartUpSettingsRead();
    EXPECT_EQ(CurrentFormat, (WaveFormat{1, 22050, 16}));
    EXPECT_EQ(WaveDir, InstalledPath + "/Work");
    EXPECT_FALSE(LoopOn);
    EXPECT_TRUE(QuickPlay);
    EXPECT_TRUE(ShowNewUserGuide);
    EXPECT_TRUE(UndoOptionON);
    EXPECT_EQ(TempoFor, 1.0F);
    EXPECT_EQ(TempoRev, 1.0F);
    EXPECT_EQ(ShowHhmmss, 1);
}

struct FormatCase {
    const char* Key;
    const char* Value;
    std::int32_t Expected;
};
void PrintTo(const FormatCase& Case, std::ostream* Out) {
    *Out << Case.Key << "=" << Case.Value;
}
class FormatSetting : public ::testing::TestWithParam<FormatCase> {};

TEST_P(FormatSetting, IsKeptOrReplaced) {
    const TestSession Session;
    IniPut("Format", GetParam().Key, GetParam().Value);
    StartUpSettingsRead();
    const std::string Key = GetParam().Key;
    EXPECT_EQ(Key == "Channel" ? CurrentFormat.Channel
              : Key == "Bits"  ? CurrentFormat.Bits
                               : CurrentFormat.Freq,
              GetParam().Expected);
    EXPECT_EQ(IniGet("Format", GetParam().Key, ""), GetParam().Value) << "nothing is written back";
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FormatSetting,
    ::testing::Values(FormatCase{"Channel", "2", 2}, FormatCase{"Channel", "0", 1},
                      FormatCase{"Channel", "3", 1}, FormatCase{"Channel", "two", 1},
                      FormatCase{"Bits", "8", 8}, FormatCase{"Bits", "24", 16},
                      FormatCase{"Bits", "-8", 16}, FormatCase{"SamplingRate", "11025", 11025},
                      FormatCase{"SamplingRate", "44100", 44100},
                      FormatCase{"SamplingRate", "48000", 22050},
                      FormatCase{"SamplingRate", "99999999999999", 22050}));

struct SwitchCase {
    const char* Section;
    const char* Key;
    const char* Value;
    bool On;
};
void PrintTo(const SwitchCase& Case, std::ostream* Out) {
    *Out << Case.Key << "=" << Case.Value;
}
class SwitchSetting : public ::testing::TestWithParam<SwitchCase> {};

TEST_P(SwitchSetting, IsOnOrOff) {
    const TestSession Session;
    const std::string Key = GetParam().Key;
    IniPut(GetParam().Section, Key, GetParam().Value);
    StartUpSettingsRead();
    EXPECT_EQ(Key == "LoopOn"             ? LoopOn
              : Key == "QuickPlay"        ? QuickPlay
              : Key == "ShowNewUserGuide" ? ShowNewUserGuide
              : Key == "ShowHhmmss"       ? ShowHhmmss == 1
                                          : UndoOptionON,
              GetParam().On);
}

INSTANTIATE_TEST_SUITE_P(Rows, SwitchSetting,
                         ::testing::Values(SwitchCase{"Setting", "LoopOn", "1", true},
                                           SwitchCase{"Setting", "LoopOn", "0", false},
                                           SwitchCase{"Setting", "LoopOn", "2", false},
                                           SwitchCase{"Setting", "LoopOn", "yes", false},
                                           SwitchCase{"Setting", "QuickPlay", "0", false},
                                           SwitchCase{"Setting", "QuickPlay", "-1", false},
                                           SwitchCase{"Setting", "QuickPlay", "1", true},
                                           SwitchCase{"General", "ShowNewUserGuide", "0", false},
                                           SwitchCase{"General", "ShowNewUserGuide", "7", true},
                                           SwitchCase{"General", "UndoOptionON", "0", false},
                                           SwitchCase{"General", "UndoOptionON", "-1", true},
                                           SwitchCase{"General", "UndoOptionON", "broken", false},
                                           SwitchCase{"General", "ShowHhmmss", "0", false},
                                           SwitchCase{"General", "ShowHhmmss", "2", true}));

TEST(StartUpSettings, ATempoOutsideItsRangeIsOne) {
    for (const char* Good : {"2", "0.1", "1.5", "0.10"})
        EXPECT_EQ(TempoFromText(Good), std::stof(Good)) << Good;
    for (const char* Bad : {"2.01", "0.09", "0", "-1", "", "fast", "1e30", "nan"})
        EXPECT_EQ(TempoFromText(Bad), 1.0F) << Bad;
}

TEST(StartUpSettings, ATempoIsShownInWholePercent) {
    EXPECT_EQ(PlaySpeedText(1.0F), "100%");
    EXPECT_EQ(PlaySpeedText(0.1F), "10%");
    EXPECT_EQ(PlaySpeedText(2.0F), "200%");
    EXPECT_EQ(PlaySpeedText(0.999F), "99%");
}

TEST(StartUpSettings, TheFirstDialogsBeginWithTheUsersMusicWhereThereIsNoWorkFolder) {
    const TestSession Session;
    ::setenv("HOME", Session.Path("home").c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", Session.Path("config").c_str(), 1);
    fs::create_directories(Session.Path("home"));
    StartUpSettingsRead();
    EXPECT_EQ(WaveDir, Session.Path("home"));
    fs::create_directories(Session.Path("home/Music"));
    StartUpSettingsRead();
    EXPECT_EQ(WaveDir, Session.Path("home/Music"));
    EXPECT_EQ(SelectedDir, WaveDir);
}

TEST(StartUpSettings, WhatLivesThroughSessionsComesBack) {
    const TestSession Session;
    CurrentFormat = {2, 44100, 8};
    TempoFor = 0.55F;
    TempoRev = 2.0F;
    WaveDir = "/some/where/" + std::string(150, 'x');
    ShutDownSettingsWrite();
    EXPECT_EQ(IniGet("Setting", "TempoRev", ""), "2.0");
    CurrentFormat = {};
    TempoFor = TempoRev = 1.0F;
    const std::string Dir = WaveDir;
    WaveDir.clear();
    StartUpSettingsRead();
    EXPECT_EQ(CurrentFormat, (WaveFormat{2, 44100, 8}));
    EXPECT_NEAR(TempoFor, 0.55F, 0.051F);
    EXPECT_EQ(TempoRev, 2.0F);
    EXPECT_EQ(WaveDir, Dir);
}

TEST(StartUpSettings, BothSaveDialogsBeginInTheFolderOfTheLastSession) {
    const TestSession Session;
    IniPut("Path", "Last Wave Dir", "/some/where");
    SelectedDir = "/elsewhere";
    StartUpSettingsRead();
    EXPECT_EQ(WaveDir, "/some/where");
    EXPECT_EQ(SelectedDir, "/some/where");
}

TEST(StartUpSettings, ARateOutsideTheThreeIsWrittenButNotRestored) {
    const TestSession Session;
    CurrentFormat = {2, 48000, 16};
    ShutDownSettingsWrite();
    EXPECT_EQ(IniGet("Format", "SamplingRate", ""), "48000");
    StartUpSettingsRead();
    EXPECT_EQ(CurrentFormat.Freq, 22050);
}

TEST(StartUpSettings, AFileFullOfRubbishGivesTheDefaults) {
    const TestSession Session;
    std::vector<std::uint8_t> Rubbish;
    std::uint32_t State = 12345;
    for (int I = 0; I < 20000; ++I) {
        State = State * 1664525U + 1013904223U;
        Rubbish.push_back(static_cast<std::uint8_t>(State >> 24U));
    }
    fs::rename(Session.WriteFile("rubbish", Rubbish), SettingsFileName());
    StartUpSettingsRead();
    EXPECT_EQ(CurrentFormat, (WaveFormat{1, 22050, 16}));
    EXPECT_EQ(TempoFor, 1.0F);
    EXPECT_TRUE(UndoOptionON);
}

// ---- Paths

TEST(StartUpPaths, TheWorkFolderIsMade) {
    const TestSession Session;
    const std::string App = Session.Path("installed");
    fs::create_directory(App);
    PathsSetUp(App, Session.Path(""));
    EXPECT_EQ(AppPath, App);
    EXPECT_TRUE(fs::is_directory(App + "/Work"));
    EXPECT_EQ(SysTempDir + "/", Session.Path(""));
}

TEST(StartUpPaths, AnUnusableTemporaryFolderGivesWayToTheProgramsOwn) {
    const TestSession Session;
    const std::string App = Session.Path("installed");
    fs::create_directory(App);
    const std::string File = Session.WriteFile("file", {1});
    for (const std::string& Bad : {std::string(), std::string("  "), Session.Path("nosuch"), File,
                                   "/" + std::string(600, 'x')}) {
        PathsSetUp(App, Bad);
        EXPECT_EQ(SysTempDir, App) << Bad;
    }
}

TEST(StartUpPaths, AFolderThatCannotHoldTheWorkFolderIsNoFailure) {
    const TestSession Session;
    ::setenv("XDG_CONFIG_HOME", "/proc/nosuch", 1);
    PathsSetUp("/proc/nosuch", Session.Path(""));
    EXPECT_EQ(InstalledPath, "/proc/nosuch");
    EXPECT_EQ(AppPath, "/proc/nosuch/quoril-wave-editor");
}

TEST(StartUpPaths, AnInstalledProgramKeepsItsSettingsWithTheUserAndMakesNoWorkFolder) {
    const TestSession Session;
    ::setenv("XDG_CONFIG_HOME", Session.Path("config").c_str(), 1);
    for (const char* Installed : {"/usr/bin", "/usr/local/bin", "/opt"}) {
        PathsSetUp(Installed, Session.Path(""));
        EXPECT_EQ(InstalledPath, Installed);
        EXPECT_EQ(AppPath, Session.Path("config/quoril-wave-editor"));
        EXPECT_FALSE(fs::exists(std::string(Installed) + "/Work"));
        EXPECT_FALSE(fs::exists(AppPath + "/Work"));
        WorkingFilesSetUp();
        EXPECT_EQ(ProfileGet("General", "InstalledPath", "",
                             Session.Path("config/quoril-wave-editor/quoril-wave-editor.ini")),
                  Installed);
    }
}

// ---- Sound system

TEST(SoundSystemVersion, IsNotedAsZeroWhenNoServerAnswers) {
    const TestSession Session;
    ::setenv("PULSE_SERVER", ("unix:" + Session.Path("no-server")).c_str(), 1);
    SoundSystemVersionNote();
    EXPECT_EQ(IniGet("General", "DirectXInstalled", ""), "DirectX-0-0");
}

} // namespace
} // namespace quoril

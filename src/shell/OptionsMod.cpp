#include "shell/OptionsMod.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "base/ProgramTitle.h"
#include "platform/DirectXSetup.h"
#include "platform/FileSystem.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"

#include <algorithm>

namespace quoril {

namespace {

std::int32_t StoredGuideLevel() {
    const double Stored = RoundEven(LeadingNumber(IniGet("Setting", "Experienced", "0")));
    for (const GuideLevels Level : {GuideExperienced, GuideNewUser})
        if (Stored == static_cast<std::int32_t>(Level))
            return Level;
    return GuideNormal;
}

float TempoOfPercent(double Percent) {
    // Written so that what is no number ends at the lowest speed, too.
    const double Limited =
        Percent > LowestTempoPercent ? std::min(Percent, HighestTempoPercent) : LowestTempoPercent;
    return Single(Limited / 100.0);
}

void GuideLevelUpdate(std::int32_t Guide) {
    ShowNewUserGuide = Guide != GuideExperienced;
    if (Guide == GuideNewUser)
        UserGuideForget();
    IniPut("General", "ShowNewUserGuide", ShowNewUserGuide ? "1" : "0");
    // A new user is an ordinary one the next time: tips are not forgotten at each OK.
    IniPut("Setting", "Experienced", Guide == GuideExperienced ? "1" : "0");
}

bool TempPathUpdate(std::string& TempPath) {
    const std::string Path = WithoutEndSeparators(TempPath);
    if (!Path.starts_with('/') || !FolderExists(Path)) {
        MsgBox("New path for temporary files\n" + TempPath + "\ndoes not exists");
        // A path that was not changed is not held against the user.
        const bool Changed = Path != TmpDir0;
        TempPath = TmpDir0;
        return !Changed;
    }
    if (Path != TmpDir0) {
        IniPut("General", "TmpDir0", Path);
        MsgBox("New path for temporary files will be used\nafter you restart " +
               std::string(ProgramTitle));
    }
    return true;
}

} // namespace

OptionsChoice OptionsNow() {
    OptionsChoice Choice;
    Choice.LoopPlay = LoopOn;
    Choice.QuickPlay = QuickPlay;
    Choice.TempoForPercent = static_cast<double>(TempoFor) * 100.0;
    Choice.TempoRevPercent = static_cast<double>(TempoRev) * 100.0;
    Choice.Guide = StoredGuideLevel();
    Choice.DrawStyle = WaveFormDrawStyle;
    Choice.Colors = WaveColors;
    Choice.TempPath = TmpDir0;
    return Choice;
}

bool UpdateEditings(OptionsChoice& Choice, const OptionsEffects& Effects) {
    LoopOn = Choice.LoopPlay;
    if (Effects.SetLoopONOFF)
        Effects.SetLoopONOFF();
    QuickPlay = Choice.QuickPlay;
    IniPut("Setting", "QuickPlay", QuickPlay ? "1" : "0");
    TempoFor = TempoOfPercent(Choice.TempoForPercent);
    TempoRev = TempoOfPercent(Choice.TempoRevPercent);
    if (Effects.TemposChanged)
        Effects.TemposChanged();
    GuideLevelUpdate(Choice.Guide);
    WaveFormDrawStyle = Choice.DrawStyle;
    WaveColors = Choice.Colors;
    ColorSettingsWrite();
    return TempPathUpdate(Choice.TempPath);
}

SoundSystemVerdict SoundSystemCheck() {
    constexpr std::int32_t LowestVersion = 7;
    const std::optional<DirectXVersion> Found = DirectXSetupGetVersion();
    if (!Found)
        return {false, "There was an error detecting DirectX version in your PC."};
    const std::int32_t Version = Found->Known ? Found->Number() : 0;
    if (Version == 0)
        return {false, "This software requires DirectX7 or higher to run.\n"
                       "Please install DirectX7 (or higher) before running it"};
    if (Version < LowestVersion)
        return {false,
                "An earlier version (DirectX" + std::to_string(Version) + ") is found in your PC."};
    return {true, "Your have DirectX" + std::to_string(Version)};
}

void DirectX7CheckAndInfo() {
    const SoundSystemVerdict Verdict = SoundSystemCheck();
    MsgBox(Verdict.Text, Verdict.GoodEnough ? "Test Sucess" : "");
}

} // namespace quoril

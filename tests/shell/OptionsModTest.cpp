#include "shell/OptionsMod.h"

#include "base/PlayState.h"
#include "settings/STD1.h"
#include "settings/UserGuideMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace quoril {
namespace {

namespace fs = std::filesystem;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Options : public ::testing::Test {
  protected:
    Options() { TmpDir0 = Session.Path("temp"), fs::create_directory(TmpDir0); }

    bool Update(const OptionsChoice& Wanted) {
        OptionsChoice Choice = Wanted;
        return UpdateEditings(Choice, {});
    }

    const TestSession Session;
    ScriptedMessages Messages;
};

TEST_F(Options, ShowWhatIsInForce) {
    LoopOn = true;
    QuickPlay = false;
    TempoFor = 0.55F;
    TempoRev = 2.0F;
    WaveFormDrawStyle = 5;
    const OptionsChoice Choice = OptionsNow();
    EXPECT_TRUE(Choice.LoopPlay);
    EXPECT_FALSE(Choice.QuickPlay);
    EXPECT_NEAR(Choice.TempoForPercent, 55, 0.001);
    EXPECT_NEAR(Choice.TempoRevPercent, 200, 0.001);
    EXPECT_EQ(Choice.Guide, GuideNormal);
    EXPECT_EQ(Choice.DrawStyle, 5);
    EXPECT_EQ(Choice.Colors, WaveColors);
    EXPECT_EQ(Choice.TempPath, TmpDir0);
}

TEST_F(Options, UnchangedChangeNothing) {
    const OptionsChoice Before = OptionsNow();
    EXPECT_TRUE(Update(Before));
    const OptionsChoice After = OptionsNow();
    EXPECT_EQ(After.Colors, Before.Colors);
    EXPECT_EQ(After.TempoForPercent, Before.TempoForPercent);
    EXPECT_EQ(IniGet("General", "TmpDir0", "none"), "none");
    EXPECT_THAT(Messages.Requests, IsEmpty());
}

TEST_F(Options, ArePutInForceAndStored) {
    OptionsChoice Choice = OptionsNow();
    Choice.LoopPlay = true;
    Choice.QuickPlay = false;
    Choice.TempoForPercent = 150;
    Choice.TempoRevPercent = 10;
    Choice.DrawStyle = 4;
    Choice.Colors[0] = 0x123456;
    std::vector<std::string> Told;
    OptionsEffects Effects;
    Effects.SetLoopONOFF = [&Told] { Told.push_back(LoopOn ? "loop on" : "loop off"); };
    Effects.TemposChanged = [&Told] { Told.push_back("tempos"); };
    EXPECT_TRUE(UpdateEditings(Choice, Effects));
    EXPECT_THAT(Told, ElementsAre("loop on", "tempos"));
    EXPECT_FALSE(QuickPlay);
    EXPECT_EQ(IniGet("Setting", "QuickPlay", ""), "0");
    EXPECT_EQ(TempoFor, 1.5F);
    EXPECT_EQ(TempoRev, 0.1F);
    EXPECT_EQ(WaveFormDrawStyle, 4);
    EXPECT_EQ(IniGet("Color", "WaveFormDrawStyle", ""), "4");
    EXPECT_EQ(WaveColors[0], 0x123456);
    EXPECT_EQ(IniGet("Color", "WaveFormNormalColor", ""), "1193046");
}

TEST_F(Options, AbsurdTemposEndAtTheLimits) {
    const std::vector<std::pair<double, float>> Cases = {
        {-5, 0.1F},    {0, 0.1F},
        {9.99, 0.1F},  {10, 0.1F},
        {200.1, 2.0F}, {1e300, 2.0F},
        {200, 2.0F},   {std::numeric_limits<double>::quiet_NaN(), 0.1F}};
    for (const auto& [Percent, Tempo] : Cases) {
        OptionsChoice Choice = OptionsNow();
        Choice.TempoForPercent = Choice.TempoRevPercent = Percent;
        EXPECT_TRUE(Update(Choice));
        EXPECT_EQ(TempoFor, Tempo) << Percent;
        EXPECT_EQ(TempoRev, Tempo) << Percent;
    }
}

TEST_F(Options, TheSameColorForWaveformAndBackgroundWarnsAtTheNextStartOnly) {
    OptionsChoice Choice = OptionsNow();
    Choice.Colors[0] = Choice.Colors[5] = 0x102030;
    EXPECT_TRUE(Update(Choice));
    EXPECT_THAT(Messages.Requests, IsEmpty());
    ColorSettingsRead();
    EXPECT_EQ(Messages.Requests.size(), 1U);
}

TEST_F(Options, TheFifthStyleHoldsForTheSessionOnly) {
    OptionsChoice Choice = OptionsNow();
    Choice.DrawStyle = 5;
    EXPECT_TRUE(Update(Choice));
    EXPECT_EQ(WaveFormDrawStyle, 5);
    ColorSettingsRead();
    EXPECT_EQ(WaveFormDrawStyle, 3);
}

// ---- Guide

TEST_F(Options, AnExperiencedUserSeesNoTips) {
    OptionsChoice Choice = OptionsNow();
    Choice.Guide = GuideExperienced;
    EXPECT_TRUE(Update(Choice));
    EXPECT_FALSE(ShowNewUserGuide);
    EXPECT_EQ(IniGet("General", "ShowNewUserGuide", ""), "0");
    EXPECT_EQ(OptionsNow().Guide, GuideExperienced);
}

TEST_F(Options, ANewUserSeesAllTipsOnceAgain) {
    ProfilePut("I Know", "tip", "Yes", UserGuideFileName());
    ShowNewUserGuide = false;
    OptionsChoice Choice = OptionsNow();
    Choice.Guide = GuideNewUser;
    EXPECT_TRUE(Update(Choice));
    EXPECT_TRUE(ShowNewUserGuide);
    EXPECT_FALSE(fs::exists(UserGuideFileName()));
    EXPECT_EQ(IniGet("General", "ShowNewUserGuide", ""), "1");
    EXPECT_EQ(OptionsNow().Guide, GuideNormal) << "the next OK must not forget the answers again";
}

TEST_F(Options, ANormalUserKeepsTheAnswers) {
    ProfilePut("I Know", "tip", "Yes", UserGuideFileName());
    ShowNewUserGuide = false;
    OptionsChoice Choice = OptionsNow();
    Choice.Guide = GuideNormal;
    EXPECT_TRUE(Update(Choice));
    EXPECT_TRUE(ShowNewUserGuide);
    EXPECT_TRUE(fs::exists(UserGuideFileName()));
}

TEST_F(Options, TheStoredLevelIsShown) {
    for (const auto& [Stored, Level] : std::vector<std::pair<const char*, std::int32_t>>{
             {"0", 0}, {"1", 1}, {"2", 2}, {"3", 0}, {"-1", 0}, {"x", 0}, {"1e99", 0}}) {
        IniPut("Setting", "Experienced", Stored);
        EXPECT_EQ(OptionsNow().Guide, Level) << Stored;
    }
}

// ---- Temporary path

TEST_F(Options, ANewTemporaryPathIsForTheNextStart) {
    const std::string New = Session.Path("disk2");
    fs::create_directory(New);
    OptionsChoice Choice = OptionsNow();
    Choice.TempPath = New + "/";
    EXPECT_TRUE(Update(Choice));
    EXPECT_EQ(IniGet("General", "TmpDir0", ""), New);
    EXPECT_EQ(TmpDir0, Session.Path("temp")) << "the running process keeps its place";
    EXPECT_THAT(Messages.Texts(), ElementsAre("New path for temporary files will be used\n"
                                              "after you restart Quoril Wave Editor"));
}

TEST_F(Options, ATemporaryPathThatDoesNotExistIsRefusedAndTheRestIsStored) {
    for (const std::string& Bad :
         {Session.Path("nosuch"), std::string(), std::string("/"), std::string("relative"),
          std::string("."), Session.WriteFile("file", {1}),
          std::string(5000, 'x').insert(0, 1, '/'), std::string("\xFF\xFE")}) {
        OptionsChoice Choice = OptionsNow();
        Choice.TempPath = Bad;
        Choice.QuickPlay = false;
        EXPECT_FALSE(UpdateEditings(Choice, {})) << Bad;
        EXPECT_EQ(Choice.TempPath, TmpDir0);
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("New path for temporary files\n" + Bad + "\ndoes not exists"));
        EXPECT_EQ(IniGet("Setting", "QuickPlay", ""), "0");
        EXPECT_EQ(IniGet("General", "TmpDir0", "none"), "none");
    }
}

TEST_F(Options, AnUnchangedPathThatHasVanishedIsToldAndKeepsNobodyInTheWindow) {
    fs::remove(TmpDir0);
    EXPECT_TRUE(Update(OptionsNow()));
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("New path for temporary files\n" + TmpDir0 + "\ndoes not exists"));
}

// ---- The sound system

TEST_F(Options, ASoundSystemThatDoesNotAnswerIsTold) {
    ::setenv("PULSE_SERVER", "unix:/nosuch/server", 1);
    EXPECT_FALSE(SoundSystemCheck().GoodEnough);
    DirectX7CheckAndInfo();
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("This software requires DirectX7 or higher to run.\n"
                            "Please install DirectX7 (or higher) before running it"));
}

} // namespace
} // namespace quoril

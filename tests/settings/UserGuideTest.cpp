#include "base/Random.h"
#include "settings/UserGuideMod.h"

#include "settings/STD1.h"
#include "support/ScriptedMessages.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

namespace quoril {
namespace {

const std::string Advice = "If you dont like to see this guide message at all, go to Options "
                           "through menu and put this off.";

/// Records what is shown; ticks the box by script, or leaves it as it is shown.
class ScriptedGuide final : public UserGuideWindow {
  public:
    bool ShowGuideTip(const GuideTip& Tip) override {
        Tips.push_back(Tip);
        if (Ticks.empty())
            return Tip.IKnow;
        const bool Ticked = Ticks.front();
        Ticks.pop_front();
        return Ticked;
    }
    void ShowStatusGuide(const std::string& Message) override { Status.push_back(Message); }

    std::deque<bool> Ticks;
    std::vector<GuideTip> Tips;
    std::vector<std::string> Status;
};

class Guide : public ::testing::Test {
  protected:
    Guide() {
        AppPath = Folder.Path();
        ShowNewUserGuide = true;
        GuideIKnowRun = 0;
        SetUserGuideWindow(&Window);
    }
    ~Guide() override { SetUserGuideWindow(nullptr); }

    /// Shows tips that the user ticks, each under a key of its own.
    void ShowTicked(int Count) {
        for (int i = 0; i < Count; ++i) {
            Window.Ticks.push_back(true);
            UserGuide("Tip", "Ticked" + std::to_string(++Keys));
        }
    }
    static std::string Answer(const std::string& Key) {
        return ProfileGet("I Know", Key, "No", UserGuideFileName());
    }

    const test::TempFolder Folder;
    ScriptedGuide Window;
    int Keys = 0;
};

TEST_F(Guide, ATipIsShownWithItsBoxOffAndEnabled) {
    UserGuide("Advice");
    ASSERT_EQ(Window.Tips.size(), 1U);
    EXPECT_EQ(Window.Tips[0].Message, "Advice");
    EXPECT_FALSE(Window.Tips[0].IKnow);
    EXPECT_TRUE(Window.Tips[0].IKnowEnabled);
    EXPECT_EQ(GuideIKnowRun, 0);
    EXPECT_FALSE(FileThere(UserGuideFileName()));
}

TEST_F(Guide, ATickIsWrittenBesideTheProgramAndEndsTheTip) {
    Window.Ticks = {true};
    UserGuide("Advice", "TheKey");
    EXPECT_EQ(UserGuideFileName(), AppPath + "/UserGuide.ini");
    EXPECT_EQ(Answer("TheKey"), "Yes");
    EXPECT_EQ(GuideIKnowRun, 1);
    UserGuide("Other words", "TheKey");
    EXPECT_EQ(Window.Tips.size(), 1U);
    EXPECT_EQ(GuideIKnowRun, 1);
}

TEST_F(Guide, AnUntickedTipComesAgain) {
    UserGuide("Advice");
    UserGuide("Advice");
    EXPECT_EQ(Window.Tips.size(), 2U);
}

TEST_F(Guide, ATextOf51CharactersHasAKeyOf50) {
    const std::string Text(51, 'x');
    Window.Ticks = {true};
    UserGuide(Text);
    EXPECT_EQ(Answer(std::string(50, 'x')), "Yes");
    EXPECT_EQ(Answer(Text), "No");
}

TEST_F(Guide, ATextOf50CharactersIsItsOwnKey) {
    const std::string Text(50, 'y');
    Window.Ticks = {true};
    UserGuide(Text);
    EXPECT_EQ(Answer(Text), "Yes");
}

TEST_F(Guide, TipsWithTheSame50CharactersShareTheirAnswer) {
    Window.Ticks = {true};
    UserGuide(std::string(50, 'z') + "one");
    UserGuide(std::string(50, 'z') + "two");
    EXPECT_EQ(Window.Tips.size(), 1U);
}

TEST_F(Guide, AKeyThatASettingsFileCannotHoldIsRememberedAllTheSame) {
    // Cut after 50 characters this one ends with a blank.
    const std::vector<std::string> Texts = {
        "For \"Quick play\" by clicking or selecting on this scale, set it \"ON\" in options.",
        "First line\nsecond = line", "; looks like a comment", "[looks like a section]"};
    for (const std::string& Text : Texts) {
        Window.Tips.clear();
        Window.Ticks = {true};
        UserGuide(Text);
        UserGuide(Text);
        EXPECT_EQ(Window.Tips.size(), 1U) << Text;
    }
}

TEST_F(Guide, ForcingShowsATickedTipWithItsBoxOnAndDisabled) {
    Window.Ticks = {true};
    UserGuide("Advice", "K");
    UserGuide("Advice", "K", true);
    ASSERT_EQ(Window.Tips.size(), 2U);
    EXPECT_TRUE(Window.Tips[1].IKnow);
    EXPECT_FALSE(Window.Tips[1].IKnowEnabled);
    // The locked box counts as ticked.
    EXPECT_EQ(GuideIKnowRun, 2);
    EXPECT_EQ(Answer("K"), "Yes");
}

TEST_F(Guide, ForcingAnUntickedTipShowsItAsUsual) {
    UserGuide("Advice", "K", true);
    ASSERT_EQ(Window.Tips.size(), 1U);
    EXPECT_FALSE(Window.Tips[0].IKnow);
    EXPECT_TRUE(Window.Tips[0].IKnowEnabled);
}

TEST_F(Guide, SwitchedOffNothingIsShownEvenByForce) {
    ShowNewUserGuide = false;
    UserGuide("Advice", "K", true);
    EXPECT_TRUE(Window.Tips.empty());
}

TEST_F(Guide, FiveTickedTipsInARowBringOneMore) {
    ShowTicked(4);
    EXPECT_EQ(Window.Tips.size(), 4U);
    ShowTicked(1);
    ASSERT_EQ(Window.Tips.size(), 6U);
    EXPECT_EQ(Window.Tips[5].Message, Advice);
    EXPECT_FALSE(Window.Tips[5].IKnow);
    EXPECT_TRUE(Window.Tips[5].IKnowEnabled);
    // It was not ticked, and so ends the run.
    EXPECT_EQ(GuideIKnowRun, 0);
}

TEST_F(Guide, TheAdviceIsATipLikeOthers) {
    Window.Ticks = {true, true, true, true, true, true};
    for (int i = 0; i < 5; ++i)
        UserGuide("Tip", "Key" + std::to_string(i));
    ASSERT_EQ(Window.Tips.size(), 6U);
    EXPECT_EQ(GuideIKnowRun, 6);
    EXPECT_EQ(Answer(Advice.substr(0, 50)), "Yes");
    ShowTicked(1);
    EXPECT_EQ(Window.Tips.size(), 7U);
    GuideIKnowRun = 0;
    ShowTicked(5);
    EXPECT_EQ(Window.Tips.size(), 12U);
}

TEST_F(Guide, AnUntickedTipEndsTheRun) {
    ShowTicked(4);
    UserGuide("Not ticked");
    EXPECT_EQ(GuideIKnowRun, 0);
    ShowTicked(4);
    EXPECT_EQ(Window.Tips.size(), 9U);
    EXPECT_EQ(GuideIKnowRun, 4);
}

TEST_F(Guide, WithoutAWindowNothingIsShownOrRemembered) {
    SetUserGuideWindow(nullptr);
    GuideIKnowRun = 3;
    UserGuide("Advice");
    StatusGuide("Help");
    EXPECT_EQ(GuideIKnowRun, 3);
    EXPECT_FALSE(FileThere(UserGuideFileName()));
}

TEST_F(Guide, ForgettingShowsEveryTipAgain) {
    Window.Ticks = {true};
    UserGuide("Advice", "K");
    UserGuideForget();
    EXPECT_FALSE(FileThere(UserGuideFileName()));
    UserGuide("Advice", "K");
    EXPECT_EQ(Window.Tips.size(), 2U);
}

TEST_F(Guide, TheSettingIsOffForZeroAloneAndOnByDefault) {
    struct Row {
        const char* Stored;
        bool On;
    };
    UserGuideSettingsRead();
    EXPECT_TRUE(ShowNewUserGuide);
    for (const Row& Each : {Row{"0", false}, Row{"1", true}, Row{"2", true}, Row{"-1", true}}) {
        IniPut("General", "ShowNewUserGuide", Each.Stored);
        UserGuideSettingsRead();
        EXPECT_EQ(ShowNewUserGuide, Each.On) << Each.Stored;
    }
}

TEST_F(Guide, TheStatusLineTakesTheMessage) {
    StatusGuide("Press F1 to see help");
    StatusGuide("");
    EXPECT_EQ(Window.Status, (std::vector<std::string>{"Press F1 to see help", ""}));
}

TEST_F(Guide, TheWayToSwitchTipsOffIsToldInAMessage) {
    test::ScriptedMessages Messages;
    GuideStopThis();
    EXPECT_EQ(Messages.Texts(),
              std::vector<std::string>{"If you dont want to see these user-guide-tips any more\n"
                                       "you can put it off, see Menu-Tools-Option-UserGuide"});
}

TEST(GuideChance, OneInTwentyIsAboutThat) {
    RandomSeed(1);
    int Hits = 0;
    for (int i = 0; i < 20000; ++i)
        Hits += GuideChance(0.05) ? 1 : 0;
    EXPECT_GT(Hits, 900);
    EXPECT_LT(Hits, 1100);
}

TEST(GuideChance, NoChanceNeverHoldsAndAFullOneAlways) {
    for (int i = 0; i < 1000; ++i) {
        EXPECT_FALSE(GuideChance(0.0));
        EXPECT_TRUE(GuideChance(1.0));
    }
}

TEST(GuideChance, ASeedStartsTheSameSequence) {
    const auto Sequence = [] {
        std::vector<bool> Draws;
        for (int i = 0; i < 200; ++i)
            Draws.push_back(GuideChance(0.5));
        return Draws;
    };
    RandomSeed(7);
    const auto First = Sequence();
    const auto Second = Sequence();
    RandomSeed(7);
    EXPECT_EQ(Sequence(), First);
    EXPECT_NE(Second, First);
}

TEST(GuideChance, AFixedDrawIsCertain) {
    GuideChanceFix(0.04);
    EXPECT_TRUE(GuideChance(0.05));
    EXPECT_FALSE(GuideChance(0.04));
    GuideChanceFix(std::nullopt);
    EXPECT_FALSE(GuideChance(0.0));
}

} // namespace
} // namespace quoril

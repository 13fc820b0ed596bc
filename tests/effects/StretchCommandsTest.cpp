// Stretch/Shrink and Change Speed as commands: what comes out, what the user reads, what is kept
// for the next time, and undo.
#include "effects/StretchCommands.h"

#include "effects/EffectFixture.h"
#include "effects/LiteralStretch.h"
#include "effects/ScriptedStretch.h"
#include "effects/TestWaves.h"

#include <algorithm>

namespace quoril::test {
namespace {

void StretchShrink() {
    Stretch(0);
}
void ChangeSpeed() {
    Stretch(1);
}

class StretchCommandsTest : public EffectTest {
  protected:
    static constexpr bool Move = true;

    /// One percentage for both ends.
    void Enter(const std::string& Percent, bool MoveFollowing = false) {
        Dialog.Accept({Percent, "another", false, MoveFollowing});
    }
    void EnterTwo(const std::string& Start, const std::string& End, bool MoveFollowing = false) {
        Dialog.Accept({Start, End, true, MoveFollowing});
    }
    static Samples Part(const Samples& All, std::int32_t From, std::int32_t To) {
        return {All.begin() + From - 1, All.begin() + To};
    }
    /// `All` with what stands from `From` on overwritten.
    static Samples Overwritten(Samples All, std::int32_t From, const Samples& New) {
        All.resize(std::max(All.size(), static_cast<std::size_t>(From) - 1 + New.size()), 0);
        std::ranges::copy(New, All.begin() + From - 1);
        return All;
    }
    /// `All` with a range exchanged.
    static Samples Exchanged(Samples All, std::int32_t From, std::int32_t To, const Samples& New) {
        All.erase(All.begin() + From - 1, All.begin() + To);
        All.insert(All.begin() + From - 1, New.begin(), New.end());
        return All;
    }

    ScriptedStretch Dialog;
};

TEST_F(StretchCommandsTest, StretchesBothChannelsAcrossBordersOfBlocks) {
    const Samples L = FullNoise(90000, 1);
    const Samples R = FullNoise(90000, 2);
    Document(L, R, 16, 20011);
    EnterTwo("80", "250.5");
    ExpectStep(StretchShrink, "Stretch/Shrink", LiteralStretch(L, 16, 80, 250.5),
               LiteralStretch(R, 16, 80, 250.5));
}

TEST_F(StretchCommandsTest, WithoutMovingAStretchedRangeRunsOverWhatFollows) {
    const Samples L = FullNoise(5000, 1);
    const Samples R = FullNoise(5000, 2);
    Document(L, R, 16, 700);
    Select(1001, 2000);
    Enter("150");
    ExpectStep(StretchShrink, "Stretch/Shrink",
               Overwritten(L, 1001, LiteralStretch(Part(L, 1001, 2000), 16, 150, 150)),
               Overwritten(R, 1001, LiteralStretch(Part(R, 1001, 2000), 16, 150, 150)));
    EXPECT_EQ(WaveStore->WavWaveINos, 5000);
}

TEST_F(StretchCommandsTest, WithoutMovingTheDocumentGrowsOnlyPastItsEnd) {
    const Samples L = FullNoise(3000, 1, 8);
    Document(L, {}, 8, 700);
    Select(2001, 3000);
    Enter("200");
    const Samples Made = LiteralStretch(Part(L, 2001, 3000), 8, 200, 200);
    ASSERT_EQ(Made.size(), 2000U);
    ExpectStep(StretchShrink, "Stretch/Shrink", Overwritten(L, 2001, Made));
}

TEST_F(StretchCommandsTest, WithoutMovingTheRestOfAShrunkRangeIsSilent) {
    const Samples L = FullNoise(3000, 1);
    const Samples R = FullNoise(3000, 2);
    Document(L, R, 16, 700);
    Select(501, 1500);
    SelBoth = false;
    SelSingle = 2;
    Enter("30");
    Samples Made = LiteralStretch(Part(R, 501, 1500), 16, 30, 30);
    Made.resize(1000, 0);
    ExpectStep(StretchShrink, "Stretch/Shrink", L, Overwritten(R, 501, Made));
}

TEST_F(StretchCommandsTest, WithMovingWhatFollowsComesBehindTheResult) {
    const Samples L = FullNoise(4000, 1);
    const Samples R = FullNoise(4000, 2);
    for (const double Percent : {40.0, 230.0}) {
        Document(L, R, 16, 900);
        Select(1001, 2000);
        Enter(std::to_string(Percent), Move);
        ExpectStep(
            StretchShrink, "Stretch/Shrink",
            Exchanged(L, 1001, 2000, LiteralStretch(Part(L, 1001, 2000), 16, Percent, Percent)),
            Exchanged(R, 1001, 2000, LiteralStretch(Part(R, 1001, 2000), 16, Percent, Percent)));
    }
}

TEST_F(StretchCommandsTest, WithMovingTheWholeDocumentTakesTheNewLength) {
    const Samples L = FullNoise(2000, 1);
    for (const double Percent : {10.0, 1000.0}) {
        Document(L, {}, 16, 300);
        Enter(std::to_string(Percent), Move);
        ExpectStep(StretchShrink, "Stretch/Shrink", LiteralStretch(L, 16, Percent, Percent));
    }
}

TEST_F(StretchCommandsTest, MovingInOneChannelLeavesTheOtherAndPadsTheShorter) {
    const Samples L = FullNoise(3000, 1);
    const Samples R = FullNoise(3000, 2);
    for (const double Percent : {50.0, 300.0}) {
        Document(L, R, 16, 700);
        Select(1001, 2000);
        SelBoth = false;
        SelSingle = 1;
        Enter(std::to_string(Percent), Move);
        Samples NewL =
            Exchanged(L, 1001, 2000, LiteralStretch(Part(L, 1001, 2000), 16, Percent, Percent));
        Samples NewR = R;
        NewL.resize(std::max(NewL.size(), NewR.size()), 0);
        NewR.resize(NewL.size(), 0);
        ExpectStep(StretchShrink, "Stretch/Shrink", NewL, NewR);
    }
}

TEST_F(StretchCommandsTest, TwiceTheSpeedIsHalfTheLength) {
    const Samples L = FullNoise(3000, 1);
    Document(L, {}, 16, 700);
    Select(1001, 2000);
    Enter("200", Move);
    const Samples Made = LiteralStretch(Part(L, 1001, 2000), 16, 50, 50);
    ASSERT_EQ(Made.size(), 501U);
    ExpectStep(ChangeSpeed, "Change Speed", Exchanged(L, 1001, 2000, Made));
    // The next time it begins with the stretch that this was.
    ChangeSpeed();
    EXPECT_EQ(Dialog.Asked.back().second.Start, "50");
    EXPECT_EQ(Dialog.Asked.back().second.End, "50");
}

TEST_F(StretchCommandsTest, TwoSpeedsAreTwoStretches) {
    const Samples L = FullNoise(3000, 1);
    Document(L);
    EnterTwo("120", "300", Move);
    ExpectStep(ChangeSpeed, "Change Speed", LiteralStretch(L, 16, 10000.0 / 120, 10000.0 / 300));
    EXPECT_EQ(SpeedStart, 10000.0 / 120);
    EXPECT_EQ(SpeedEnd, 10000.0 / 300);
}

TEST_F(StretchCommandsTest, VeryShortRangesAreStretchedOrStay) {
    const Samples L = FullNoise(50, 1);
    for (std::int32_t Length = 2; Length <= 5; ++Length) {
        Document(L, {}, 16, 7);
        Select(10, 9 + Length);
        Enter("300");
        const Samples Made = LiteralStretch(Part(L, 10, 9 + Length), 16, 300, 300);
        EXPECT_EQ(Made.size() == static_cast<std::size_t>(Length), Length < 3);
        ExpectStep(StretchShrink, "Stretch/Shrink", Overwritten(L, 10, Made));
    }
}

TEST_F(StretchCommandsTest, TheFirstTimeItBeginsWithItsFirstValues) {
    Document(FullNoise(100, 1));
    EXPECT_TRUE(Unchanged(StretchShrink).empty());
    EXPECT_TRUE(Unchanged(ChangeSpeed).empty());
    ASSERT_EQ(Dialog.Asked.size(), 2U);
    EXPECT_EQ(Dialog.Asked[0], std::pair(0, StretchEntry{"150", "150", false, false}));
    EXPECT_EQ(Dialog.Asked[1], std::pair(1, StretchEntry{"120", "120", false, false}));
}

TEST_F(StretchCommandsTest, APercentageOfNothingGivesWayToTheFirstValue) {
    Document(FullNoise(100, 1));
    StretchStart = StretchEnd = SpeedStart = SpeedEnd = 0;
    EXPECT_TRUE(Unchanged(StretchShrink).empty());
    EXPECT_TRUE(Unchanged(ChangeSpeed).empty());
    EXPECT_EQ(Dialog.Asked.at(0).second.Start, "150");
    EXPECT_EQ(Dialog.Asked.at(0).second.End, "150");
    EXPECT_EQ(Dialog.Asked.at(1).second.Start, "120");
    EXPECT_EQ(Dialog.Asked.at(1).second.End, "120");
}

TEST_F(StretchCommandsTest, WhatWasAcceptedIsOfferedTheNextTime) {
    Document(FullNoise(1000, 1));
    Select(1, 500);
    EnterTwo("75", "110.25", Move);
    StretchShrink();
    StretchShrink(); // cancelled
    EXPECT_EQ(Dialog.Asked.back().second, (StretchEntry{"75", "110.25", true, true}));
    // The speed has percentages of its own, and the same boxes.
    ChangeSpeed();
    EXPECT_EQ(Dialog.Asked.back().second, (StretchEntry{"120", "120", true, true}));
    Enter("1000");
    ChangeSpeed();
    StretchShrink();
    EXPECT_EQ(Dialog.Asked.back().second, (StretchEntry{"75", "110.25", false, false}));
    ChangeSpeed();
    EXPECT_EQ(Dialog.Asked.back().second, (StretchEntry{"10", "10", false, false}));
}

TEST_F(StretchCommandsTest, WhatMakesNoSenseIsToldAndAskedAgain) {
    Document(FullNoise(1000, 1));
    const std::vector<StretchEntry> Wrong = {
        {"9.99", "", false, false}, {"1000.01", "", false, true}, {"100", "", false, false},
        {"100", "100", true, true}, {"150", "9", true, false},    {"5", "150", true, false},
        {"150", "", true, false},   {"", "150", false, false},    {"abc", "", false, false},
        {"-50", "", false, false},  {"1e309", "", false, false}};
    for (const StretchEntry& Each : Wrong)
        Dialog.Accept(Each);
    const std::vector<std::string> Told = Unchanged(StretchShrink);
    EXPECT_EQ(Told, std::vector<std::string>(Wrong.size(), "Invalid Entry"));
    ASSERT_EQ(Dialog.Asked.size(), Wrong.size() + 1);
    for (std::size_t i = 0; i < Wrong.size(); ++i)
        EXPECT_EQ(Dialog.Asked[i + 1].second, Wrong[i]) << "what was entered is not offered again";
    // Nothing of it is kept.
    StretchShrink();
    EXPECT_EQ(Dialog.Asked.back().second, (StretchEntry{"150", "150", false, false}));
}

TEST_F(StretchCommandsTest, TheEndsOfTheRangeAndOneEndAloneMakeSense) {
    for (const auto& [Start, End] : {std::pair("10", "1000"), {"1000", "10"}, {"100", "101"}}) {
        Document(FullNoise(100, 1));
        EnterTwo(Start, End);
        StretchShrink();
        EXPECT_EQ(WaveStore->UndoMenu().Caption, "Undo [Stretch/Shrink]") << Start << " " << End;
    }
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(StretchCommandsTest, AsksForSpaceForTwiceTheMeanStretch) {
    Document(FullNoise(1001, 1), FullNoise(1001, 2));
    Select(1, 1001);
    EnterTwo("150", "250.5");
    // 4.005 times 1001 samples, rounded, 2 bytes and two channels.
    EXPECT_EQ(Refused(StretchShrink), std::vector<std::int64_t>{4009 * 2 * 2});
    SelBoth = false;
    Enter("50");
    EXPECT_EQ(Refused(StretchShrink), std::vector<std::int64_t>{1001 * 2});
    Enter("200"); // the speed
    EXPECT_EQ(Refused(ChangeSpeed), std::vector<std::int64_t>{1001 * 2});
}

TEST_F(StretchCommandsTest, IsAskedBeforeTheDisk) {
    Document(FullNoise(100, 1));
    EXPECT_TRUE(Refused(StretchShrink).empty()); // cancelled
    EXPECT_EQ(Dialog.Asked.size(), 1U);
}

TEST_F(StretchCommandsTest, BackingOutOfTheSelectionEndsIt) {
    Document(FullNoise(100, 1));
    Select(0, 0);
    EXPECT_TRUE(Unchanged(StretchShrink).empty());
    EXPECT_TRUE(Dialog.Asked.empty());
}

TEST_F(StretchCommandsTest, AFailureInTheMiddleIsToldAndChangesNothing) {
    Document(FullNoise(300000, 1), FullNoise(300000, 2));
    for (const auto& [Command, Title] : {std::pair(&StretchShrink, "Stretch / Shrink Error"),
                                         std::pair(&ChangeSpeed, "Change speed Error")})
        for (const bool MoveIt : {false, true}) {
            Enter("150", MoveIt);
            Progress.FailAt = 0.5F;
            EXPECT_EQ(Unchanged(Command),
                      std::vector<std::string>{std::string(Title) + "|Disk full"});
            Progress.FailAt = -1;
        }
}

TEST_F(StretchCommandsTest, TheBarMovesAllTheWay) {
    Document(FullNoise(1000000, 1), FullNoise(1000000, 2));
    Enter("150");
    StretchShrink();
    EXPECT_GE(Progress.Values.size(), 10U);
    EXPECT_TRUE(std::ranges::is_sorted(Progress.Values));
    EXPECT_EQ(Progress.Values.back(), 1);
}

TEST_F(StretchCommandsTest, WithoutAWindowTheQuestionCountsAsCancelled) {
    Document(FullNoise(100, 1));
    SetStretchDialog(nullptr);
    EXPECT_TRUE(Unchanged(StretchShrink).empty());
}

} // namespace
} // namespace quoril::test

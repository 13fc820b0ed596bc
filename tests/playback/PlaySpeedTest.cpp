#include "playback/PlaySpeed.h"
#include "PlaybackDoubles.h"

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlaySpeedTest : public PlaybackFixture {};

TEST_F(PlaySpeedTest, EveryPlaceOfTheSliderIsAWholeNumberOfTenPercents) {
    for (std::int32_t Value = PlaySpeedLeast; Value <= PlaySpeedMost; ++Value) {
        EXPECT_EQ(PlaySpeedText(PlaySpeedOf(Value)), std::to_string(100 - 10 * Value) + "%");
        EXPECT_EQ(PlaySpeedValue(PlaySpeedOf(Value)), Value);
    }
    EXPECT_EQ(PlaySpeedText(1.239F), "123%");
}

TEST_F(PlaySpeedTest, ASliderSetsItsOwnSpeedAndText) {
    PlaySpeedChange(1, -10);
    EXPECT_EQ(TempoFor, 2.0F);
    EXPECT_EQ(TempoRev, 1.0F);
    PlaySpeedChange(2, 9);
    EXPECT_EQ(TempoRev, 0.1F);
    EXPECT_THAT(Window.Shown, ElementsAre("speed 1 200%", "speed 2 10%"));
    EXPECT_THAT(TakeCalls(), IsEmpty()) << "nothing plays";
}

TEST_F(PlaySpeedTest, WhatPlaysPausesAndContinuesWithTheNewSpeedAndRestartsNothing) {
    for (const std::int32_t Playing : {1, 2}) {
        Player.Status = Playing;
        PlaySpeedChange(1, 5);
        EXPECT_THAT(TakeCalls(),
                    ElementsAre("TempoForward 0.5", "TempoReverse 1", "PauseStart", "Pause",
                                "TempoForward 0.5", "TempoReverse 1", "Continue"));
    }
}

TEST_F(PlaySpeedTest, ThePlayerIsAskedOnceWhatItDoes) {
    PlayCommand(PlayNew, 0);
    TakeCalls();
    Player.StatusAsked = 0;
    Player.Status = 3;
    PlaySpeedChange(1, 5);
    EXPECT_EQ(Player.StatusAsked, 1);
}

TEST_F(PlaySpeedTest, WhatIsPausedOrPlainSoundStaysAsItIs) {
    Player.Status = 3;
    PlaySpeedChange(1, 5);
    EXPECT_THAT(TakeCalls(), IsEmpty());
    Player.Status = 1;
    SoundDriverState = 2;
    PlaySpeedChange(1, 6);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

TEST_F(PlaySpeedTest, TheBoxShowsBothSpeedsAndPlainSoundHasNone) {
    TempoFor = 1.4F;
    TempoRev = 0.3F;
    PlaySpeedShow();
    EXPECT_THAT(Window.Shown, ElementsAre("box -4 7"));
    SoundDriverState = 2;
    PlaySpeedShow();
    EXPECT_THAT(Window.Shown, ElementsAre("box -4 7"));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("You need to install directX7 or higher for this"));
}

} // namespace
} // namespace quoril::test

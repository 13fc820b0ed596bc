#include "playback/SoundDriver.h"
#include "PlaybackDoubles.h"

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string FourLines =
    "\nThere is an error initializing Sound Driver"
    "\nCheck whether another application is using sound driver exclusively."
    "\nIf yes, put that off and then ON the Sound driver in Options window (Tools-Options menu)."
    "\nOther wise, if this problem persists you may need to reinstall DirectX7 or Sound Card's "
    "Driver";

class SoundDriverTest : public PlaybackFixture {
  protected:
    SoundDriverTest() { SoundDriverState = 0; }
};

TEST_F(SoundDriverTest, OnHandsTheWindowOverAndTakesTheStateQuietly) {
    for (const std::int32_t State : {1, 2}) {
        Player.State = State;
        SoundDriverSwitch(SoundDriverOn);
        EXPECT_EQ(SoundDriverState, State);
        EXPECT_THAT(TakeCalls(), ElementsAre("DriverState 77"));
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(SoundDriverTest, ZeroAndMinusOneShowABoxOfFiveLines) {
    for (const std::int32_t State : {0, -1}) {
        Player.State = State;
        SoundDriverSwitch(SoundDriverOn);
        EXPECT_EQ(SoundDriverState, State);
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(FourLines));
    }
}

TEST_F(SoundDriverTest, AnErrorStandsOnTheFirstLine) {
    Player.FailingCall = "DriverState";
    SoundDriverSwitch(SoundDriverOn);
    EXPECT_EQ(SoundDriverState, 0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("The player does not answer" + FourLines));
}

TEST_F(SoundDriverTest, OffTellsTheComponent) {
    SoundDriverState = 1;
    SoundDriverSwitch(SoundDriverOff);
    EXPECT_EQ(SoundDriverState, 0);
    EXPECT_THAT(TakeCalls(), ElementsAre("DriverState 0"));
}

TEST_F(SoundDriverTest, OffWithAComponentThatDoesNotAnswerDropsIt) {
    SoundDriverState = 1;
    Player.FailingCall = "DriverState";
    SoundDriverSwitch(SoundDriverOff);
    EXPECT_EQ(SoundDriverState, 0);
    EXPECT_EQ(DsPlayer->Dll, nullptr);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(SoundDriverTest, AComponentThatCouldNotStartIsSeenFromTheStateAlone) {
    DsPlayer = std::make_unique<DsPlayClass>(
        []() -> std::unique_ptr<PlayerComponent> { throw Failure("no player"); });
    SoundDriverSwitch(SoundDriverOn);
    EXPECT_EQ(SoundDriverState, 0);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(SoundDriverTest, OnStartsAComponentThatHasEndedAnew) {
    int Made = 0;
    DsPlayer = std::make_unique<DsPlayClass>([&] {
        ++Made;
        Player.Alive = true;
        return std::make_unique<PlayerDouble>(Player);
    });
    Player.Alive = false;
    SoundDriverSwitch(SoundDriverOn);
    EXPECT_EQ(Made, 2);
    EXPECT_EQ(SoundDriverState, 1);
}

} // namespace
} // namespace quoril::test

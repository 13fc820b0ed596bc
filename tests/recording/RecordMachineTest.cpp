#include "recording/RecordMachine.h"

#include "ScriptedTake.h"

#include <gmock/gmock.h>

namespace quoril::test {
namespace {

constexpr std::int32_t Freq = 8000;
constexpr std::int32_t Frames = 800; // a tenth of a second
constexpr std::int16_t Loud = 20000;
constexpr std::int16_t Soft = 100;

/// What follows the reason of a stop that the user has not wished for.
constexpr const char* DoneKeeps =
    "\nThe recording has stopped. Done keeps what was recorded until then.";

class RecordMachineTest : public ::testing::Test {
  protected:
    RecordMachineTest() { Machine.SetUp({1, 16, Freq}, 1000000000); }

    void Block(std::int16_t Value, int Count = 1) {
        for (int No = 0; No < Count; ++No)
            Machine.ProcessRecordedBlock(BlockOf(Value, Frames), {}, Frames);
    }
    void Open() { Machine.EngineOpened("Ready to record"); }
    void Begin() {
        Open();
        Machine.Start();
    }
    [[nodiscard]] std::int32_t State() const { return Machine.RecState(); }
    [[nodiscard]] std::string Stat() const { return Machine.Show().Rec_Stat_Lbl; }

    ScriptedTake Take;
    RecordMachine Machine{Take};
};

// ---- Every state with every event

struct Step {
    const char* Event;
    std::int32_t From;
    std::int32_t To;
    const char* Status; ///< null: stays as it was
};

class RecordStatesTest : public ::testing::TestWithParam<Step> {
  protected:
    ScriptedTake Take;
    RecordMachine Machine{Take};

    void BringTo(std::int32_t Wanted) {
        Machine.SetUp({1, 16, Freq}, 1000000000);
        if (Wanted >= RecReady)
            Machine.EngineOpened("Ready to record");
        if (Wanted >= RecRecording)
            Machine.Start();
        if (Wanted == RecPaused)
            Machine.Pause();
        ASSERT_EQ(Machine.RecState(), Wanted);
        Machine.Status("before");
    }
    void Do(const std::string& Event) {
        if (Event == "open")
            Machine.EngineOpened("Ready to record");
        else if (Event == "close")
            Machine.EngineClosed();
        else if (Event == "start")
            Machine.Start();
        else if (Event == "pause")
            Machine.Pause();
        else if (Event == "stop")
            Machine.Stop();
        else
            Machine.ProcessRecordedBlock(BlockOf(Event == "loud" ? Loud : Soft, Frames), {},
                                         Frames);
    }
};

TEST_P(RecordStatesTest, GoesWhereTheTableSays) {
    const Step& Row = GetParam();
    BringTo(Row.From);
    Machine.Choices.PauseIfSilen = Machine.Choices.ContnIfNoSilen = true;
    Machine.Choices.PauseTime = 0.1F;
    Do(Row.Event);
    EXPECT_EQ(Machine.RecState(), Row.To);
    EXPECT_EQ(Machine.Show().Rec_Stat_Lbl, Row.Status == nullptr ? "before" : Row.Status);
    const RecordShown& Shown = Machine.Show();
    const bool Running = Row.To > RecReady;
    EXPECT_EQ(Shown.StartEnabled, Row.To == RecReady);
    EXPECT_EQ(Shown.PauseEnabled, Running);
    EXPECT_EQ(Shown.StopEnabled, Running);
    EXPECT_EQ(Shown.CancelEnabled, !Running);
    EXPECT_EQ(Shown.DeviceEnabled, !Running);
    EXPECT_EQ(Shown.PauseCaption, Row.To == RecPaused ? "Continue" : "Pause");
}

constexpr const char* NowRecording = "Now Recording";
constexpr const char* Paused = "Recording Paused";
constexpr const char* Done = "Recording Done";

INSTANTIATE_TEST_SUITE_P(
    All, RecordStatesTest,
    ::testing::Values(
        Step{"open", 0, 1, "Ready to record"}, Step{"open", 1, 1, nullptr},
        Step{"open", 2, 2, nullptr}, Step{"open", 3, 3, nullptr}, Step{"close", 0, 0, nullptr},
        Step{"close", 1, 0, nullptr}, Step{"close", 2, 0, Done}, Step{"close", 3, 0, Done},
        Step{"start", 0, 0, nullptr}, Step{"start", 1, 2, NowRecording},
        Step{"start", 2, 2, nullptr}, Step{"start", 3, 3, nullptr}, Step{"pause", 0, 0, nullptr},
        Step{"pause", 1, 1, nullptr}, Step{"pause", 2, 3, Paused},
        Step{"pause", 3, 2, NowRecording}, Step{"stop", 0, 0, nullptr}, Step{"stop", 1, 1, nullptr},
        Step{"stop", 2, 1, Done}, Step{"stop", 3, 1, Done}, Step{"loud", 0, 0, nullptr},
        Step{"loud", 1, 1, nullptr}, Step{"loud", 2, 2, nullptr}, Step{"loud", 3, 2, NowRecording},
        Step{"soft", 0, 0, nullptr}, Step{"soft", 1, 1, nullptr}, Step{"soft", 2, 3, Paused},
        Step{"soft", 3, 3, nullptr}),
    [](const ::testing::TestParamInfo<Step>& Each) {
        std::string Name = Each.param.Event;
        Name[0] = static_cast<char>(Name[0] - 'a' + 'A');
        return Name + "In" + std::to_string(Each.param.From);
    });

// ---- Start, Pause, Stop

TEST_F(RecordMachineTest, NothingIsKeptBeforeStart) {
    Open();
    Block(Loud, 3);
    EXPECT_EQ(Machine.Show().PeakL, Loud);
    EXPECT_FALSE(Machine.Show().MetersRed);
    EXPECT_EQ(Machine.ElapsedFrames(), 0);
    EXPECT_THAT(Take.L, ::testing::IsEmpty());
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "");
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "");
    EXPECT_EQ(Machine.Show().StartCaption, "Start");
    EXPECT_FALSE(Machine.Show().DoneEnabled);
}

TEST_F(RecordMachineTest, ATakeGrowsByItsBlocks) {
    Begin();
    Block(Loud, 25);
    EXPECT_TRUE(Machine.Show().MetersRed);
    EXPECT_EQ(Machine.RecordedFrames(), 25 * Frames);
    EXPECT_EQ(Take.L.size(), 25U * Frames);
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "02.50");
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "02.50");
    EXPECT_FALSE(Machine.Show().DoneEnabled);
    Machine.Stop();
    EXPECT_EQ(Machine.Show().StartCaption, "Restart");
    EXPECT_TRUE(Machine.Show().DoneEnabled);
    Block(Loud);
    EXPECT_EQ(Take.L.size(), 25U * Frames);
    EXPECT_FALSE(Machine.Show().MetersRed);
}

TEST_F(RecordMachineTest, TheMetersAreBlueInAPause) {
    Begin();
    Machine.Pause();
    Block(Soft);
    EXPECT_FALSE(Machine.Show().MetersRed);
}

TEST_F(RecordMachineTest, APauseMarksTheLengthAndLetsTheClockGoOn) {
    Begin();
    Block(Loud, 10);
    Machine.Pause();
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "01 [P]");
    Block(Loud, 5);
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "01 [P]");
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "01.50");
    Machine.Stop();
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "01");
    EXPECT_EQ(Machine.Show().PauseCaption, "Pause");
}

TEST_F(RecordMachineTest, GoingOnAfterAPauseBeginsTheSilenceAnew) {
    Begin();
    Block(Soft, 5);
    EXPECT_NEAR(Machine.SilenceSeconds(), 0.5F, 1e-5);
    Machine.Pause();
    Machine.Pause();
    EXPECT_EQ(Machine.SilenceSeconds(), 0);
    EXPECT_EQ(Stat(), "Now Recording");
}

TEST_F(RecordMachineTest, RestartAfterStopDiscardsTheFirstTake) {
    Begin();
    Block(Loud, 10);
    Machine.Stop();
    Machine.Start();
    EXPECT_EQ(Take.Emptied, 2);
    EXPECT_EQ(Machine.RecordedFrames(), 0);
    EXPECT_EQ(Machine.ElapsedFrames(), 0);
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "");
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "");
    Block(Soft, 2);
    EXPECT_EQ(Take.L.size(), 2U * Frames);
}

TEST_F(RecordMachineTest, ALostDeviceLeavesTheTake) {
    Begin();
    Block(Loud, 4);
    Machine.EngineClosed();
    EXPECT_EQ(State(), RecClosed);
    EXPECT_TRUE(Machine.Show().DoneEnabled);
    EXPECT_FALSE(Machine.Show().StartEnabled);
    EXPECT_EQ(Machine.Show().PeakL, 0);
    EXPECT_EQ(Machine.RecordedFrames(), 4 * Frames);
}

// ---- The meters

TEST(RecordMeterTest, ProbesAQuarterHalfThreeQuartersAndTheEnd) {
    for (const int Place : {200, 400, 600, 800}) {
        std::vector<std::int16_t> Block = BlockOf(0, 800);
        Block[static_cast<std::size_t>(Place)] = -5000;
        EXPECT_EQ(ProbedPeak(Block, 800), 5000) << Place;
        Block[static_cast<std::size_t>(Place)] = 0;
        Block[static_cast<std::size_t>(Place) - 1] = 5000;
        EXPECT_EQ(ProbedPeak(Block, 800), 0) << Place;
    }
    EXPECT_EQ(ProbedPeak(BlockOf(-32768, 800), 800), 32768);
}

TEST(RecordMeterTest, BlocksOfAnyLengthCanBeProbed) {
    for (const int Length : {1, 2, 3, 4, 5, 1102})
        EXPECT_EQ(ProbedPeak(BlockOf(77, Length), Length), 77) << Length;
    EXPECT_EQ(ProbedPeak(BlockOf(77, 0), 0), 0);
}

TEST(RecordMeterTest, BarsAndMarkerFollowFullScale) {
    EXPECT_EQ(MeterBar(32768, 16, 150), 150);
    EXPECT_EQ(MeterBar(16384, 16, 150), 75);
    EXPECT_EQ(MeterBar(0, 16, 150), 0);
    EXPECT_EQ(MeterBar(128, 8, 150), 150);
    EXPECT_EQ(MeterBar(64, 8, 150), 75);
    EXPECT_EQ(SilenArrowTop(1.0F, 20, 150, 10), 15);
    EXPECT_EQ(SilenArrowTop(0.5F, 20, 150, 10), 90);
    EXPECT_EQ(SilenArrowTop(0.1F, 20, 150, 10), 150);
}

TEST_F(RecordMachineTest, TheLouderChannelIsTheLevel) {
    Machine.SetUp({2, 16, Freq}, 1000000);
    Machine.Choices.StopIfSilen = true;
    Machine.Choices.StopTime = 1;
    Begin();
    for (int No = 0; No < 20; ++No)
        Machine.ProcessRecordedBlock(BlockOf(Soft, Frames), BlockOf(Loud, Frames), Frames);
    EXPECT_EQ(State(), RecRecording);
    EXPECT_EQ(Machine.Show().PeakL, Soft);
    EXPECT_EQ(Machine.Show().PeakR, Loud);
    EXPECT_EQ(Take.R.size(), Take.L.size());
}

TEST_F(RecordMachineTest, EightBitsHaveTheirOwnFullScale) {
    Machine.SetUp({1, 8, Freq}, 1000000);
    Machine.Choices.Silenthreshold = 0.5F;
    Begin();
    Block(63);
    EXPECT_GT(Machine.SilenceSeconds(), 0);
    Block(64);
    EXPECT_EQ(Machine.SilenceSeconds(), 0);
}

// ---- Silence

TEST_F(RecordMachineTest, ALevelExactlyAtTheThresholdIsSound) {
    Machine.Choices.Silenthreshold = 0.25F;
    Begin();
    Block(8191);
    EXPECT_GT(Machine.SilenceSeconds(), 0);
    Block(8192);
    EXPECT_EQ(Machine.SilenceSeconds(), 0);
}

TEST_F(RecordMachineTest, AShortPeakBetweenTheProbesIsSilence) {
    Begin();
    std::vector<std::int16_t> Peak = BlockOf(Soft, Frames);
    Peak[100] = 32767;
    Block(Soft, 5);
    Machine.ProcessRecordedBlock(Peak, {}, Frames);
    EXPECT_NEAR(Machine.SilenceSeconds(), 0.6F, 1e-5);
}

TEST_F(RecordMachineTest, SilenceStopsAtItsTime) {
    Machine.Choices.StopIfSilen = true;
    Machine.Choices.StopTime = 2;
    Begin();
    Block(Soft, 19);
    Block(Loud);
    Block(Soft, 19);
    EXPECT_EQ(State(), RecRecording);
    Block(Soft, 2); // the sum of tenths in single precision may lie below 2
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Stat(), "Recording Done");
    EXPECT_LE(Machine.RecordedFrames(), 40 * Frames);
}

TEST_F(RecordMachineTest, SilenceOfExactlyItsTimeStops) {
    Machine.Choices.StopIfSilen = true;
    Machine.Choices.StopTime = 2;
    Begin();
    const std::vector<std::int16_t> Second = BlockOf(Soft, Freq);
    Machine.ProcessRecordedBlock(Second, {}, Freq);
    EXPECT_EQ(State(), RecRecording);
    Machine.ProcessRecordedBlock(Second, {}, Freq);
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.RecordedFrames(), Freq) << "the block that brings the stop is not kept";
}

TEST_F(RecordMachineTest, AnotherTakeBeginsWithoutTheSilenceOfTheOneBefore) {
    Begin();
    Block(Soft, 5);
    Machine.Stop();
    Machine.Start();
    EXPECT_EQ(Machine.SilenceSeconds(), 0);
}

TEST_F(RecordMachineTest, SilenceBeforeAPauseIsKept) {
    Machine.Choices.PauseIfSilen = true;
    Machine.Choices.PauseTime = 1;
    Begin();
    Block(Loud, 3);
    Block(Soft, 30);
    EXPECT_EQ(State(), RecPaused);
    EXPECT_EQ(Stat(), "Recording Paused");
    // The block that brings the pause is not kept.
    EXPECT_GE(Machine.RecordedFrames(), 12 * Frames);
    EXPECT_LE(Machine.RecordedFrames(), 13 * Frames);
    EXPECT_EQ(Machine.ElapsedFrames(), 33 * Frames);
}

TEST_F(RecordMachineTest, WithBothSilencesOnOnlyTheStopFires) {
    Machine.Choices.StopIfSilen = Machine.Choices.PauseIfSilen = true;
    Machine.Choices.StopTime = 3;
    Machine.Choices.PauseTime = 1;
    Begin();
    Block(Soft, 25);
    EXPECT_EQ(State(), RecRecording);
    Block(Soft, 10);
    EXPECT_EQ(State(), RecReady);
}

TEST_F(RecordMachineTest, SoundEndsAPauseMadeByHand) {
    Machine.Choices.ContnIfNoSilen = true;
    Begin();
    Machine.Pause();
    Block(Soft, 5);
    EXPECT_EQ(State(), RecPaused);
    Block(Loud);
    EXPECT_EQ(State(), RecRecording);
    EXPECT_EQ(Machine.RecordedFrames(), Frames) << "what ended the pause is kept";
}

TEST_F(RecordMachineTest, SoundDoesNotEndAPauseUnlessAsked) {
    Begin();
    Machine.Pause();
    Block(Loud, 5);
    EXPECT_EQ(State(), RecPaused);
    EXPECT_EQ(Machine.RecordedFrames(), 0);
}

// ---- The time limit

TEST_F(RecordMachineTest, TheTimeLimitCountsPausesToo) {
    Machine.Choices.StopAftRec = true;
    Machine.Choices.RecordTime = 2;
    Begin();
    Block(Loud, 5);
    Machine.Pause();
    Block(Soft, 15);
    EXPECT_EQ(State(), RecPaused);
    Block(Loud);
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.RecordedFrames(), 5 * Frames);
    EXPECT_EQ(Machine.ElapsedFrames(), 20 * Frames) << "looked at before the block is counted";
}

TEST_F(RecordMachineTest, TheTimeLimitIsOffUnlessAsked) {
    Machine.Choices.RecordTime = 1;
    Begin();
    Block(Loud, 50);
    EXPECT_EQ(State(), RecRecording);
}

TEST_F(RecordMachineTest, AfterATimeLimitTheWindowIsReadyForAnother) {
    Machine.Choices.StopAftRec = true;
    Machine.Choices.RecordTime = 1;
    Begin();
    Block(Loud, 11);
    ASSERT_EQ(State(), RecReady);
    Machine.Status("Ready to record");
    Block(Loud, 3);
    EXPECT_EQ(Stat(), "Ready to record") << "no stop after the stop";
    Machine.Start();
    Block(Loud, 5);
    EXPECT_EQ(State(), RecRecording);
}

// ---- What stands against it

TEST_F(RecordMachineTest, AFullDiskStopsAndKeepsWhatWasTaken) {
    Begin();
    Block(Loud, 10);
    Take.FailWith = "No space left on device";
    Block(Loud, 3);
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.RecordedFrames(), 10 * Frames);
    EXPECT_TRUE(Machine.Show().DoneEnabled);
    EXPECT_EQ(Machine.TakeTrouble(), std::string("No space left on device") + DoneKeeps);
    EXPECT_EQ(Machine.TakeTrouble(), "") << "told once";
    Machine.Start();
    EXPECT_EQ(Machine.TakeTrouble(), "No space left on device") << "there is nothing to keep";
}

TEST_F(RecordMachineTest, AFirstBlockThatFindsNoRoomLeavesNothingToKeep) {
    Begin();
    Take.FailWith = "No space left on device";
    Block(Loud);
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.TakeTrouble(), "No space left on device");
    EXPECT_FALSE(Machine.Show().DoneEnabled);
}

TEST_F(RecordMachineTest, ATakeThatCannotBeginIsTold) {
    Take.FailWith = "No space left on device";
    Begin();
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.TakeTrouble(), "No space left on device");
    EXPECT_TRUE(Machine.Show().StartEnabled);
    EXPECT_FALSE(Machine.Show().DoneEnabled);
}

TEST_F(RecordMachineTest, ATakeEndsWhereADocumentMustEnd) {
    Machine.SetUp({1, 16, Freq}, 10 * Frames + 5);
    Begin();
    Block(Loud, 15);
    EXPECT_EQ(State(), RecReady);
    EXPECT_EQ(Machine.RecordedFrames(), 10 * Frames);
    EXPECT_EQ(Machine.TakeTrouble(),
              std::string("The recording has become as long as a waveform can be.") + DoneKeeps);
}

TEST_F(RecordMachineTest, ATakeMayFillTheDocumentToItsLastPlace) {
    Machine.SetUp({1, 16, Freq}, 10 * Frames);
    Begin();
    Block(Loud, 10);
    EXPECT_EQ(State(), RecRecording);
    EXPECT_EQ(Machine.RecordedFrames(), 10 * Frames);
}

TEST_F(RecordMachineTest, LostSoundIsToldWithItsPlace) {
    Begin();
    Block(Loud, 12);
    Machine.SoundLost();
    Block(Loud, 5);
    Machine.SoundLost();
    EXPECT_EQ(Machine.Show().LossLbl, "Sound was lost at 01.20");
    Machine.Stop();
    Machine.Start();
    EXPECT_EQ(Machine.Show().LossLbl, "");
    Machine.Pause();
    Machine.SoundLost();
    EXPECT_EQ(Machine.Show().LossLbl, "") << "nothing was to be kept";
}

TEST_F(RecordMachineTest, TheClocksAreRightAfterADayOfPause) {
    Machine.SetUp({1, 16, 200000}, 1000000000);
    Begin();
    Machine.Pause();
    const std::vector<std::int16_t> Tenth = BlockOf(Soft, 20000);
    for (int No = 0; No < 25 * 3600 * 10; ++No)
        Machine.ProcessRecordedBlock(Tenth, {}, 20000);
    EXPECT_EQ(Machine.ElapsedFrames(), std::int64_t{25} * 3600 * 200000);
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "25:00:00");
}

} // namespace
} // namespace quoril::test

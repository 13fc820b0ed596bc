// Noise reduction as commands: what is learnt, what comes out, what the user reads, and undo.
#include "effects/NoiseCommands.h"

#include "effects/EffectFixture.h"
#include "effects/LiteralFilters.h"
#include "effects/NoiseProfile.h"
#include "effects/TestWaves.h"
#include "selection/ScriptedSelConf.h"

#include <algorithm>

namespace quoril::test {
namespace {

void ChoosePureNoise() {
    EffectNoisRedu(0);
}
void ApplyNoiseFilter() {
    EffectNoisRedu(1);
}

class NoiseTest : public EffectTest {
  protected:
    NoiseTest() { NoiseFrame = 0; }

    static Samples Noise(std::int32_t Count, std::uint32_t Seed, std::int32_t High = 32767) {
        return NoiseWave(Count, -High - 1, High, Seed);
    }
    /// Learns the noise of a range, and sees that nothing else happens.
    void Learn(std::int32_t From, std::int32_t To) {
        Select(From, To);
        EXPECT_EQ(Unchanged(ChoosePureNoise), std::vector<std::string>{});
        EXPECT_EQ(NoiseFrame, 1024);
    }
    static Samples Part(const Samples& Whole, std::size_t Count) {
        return {Whole.begin(), Whole.begin() + static_cast<std::ptrdiff_t>(Count)};
    }

    const std::vector<std::string> DefineFirst = {
        "Please define the noise first. That is :\nSelect a small portion with only noise\n"
        "and use the command 'Choose Pure Noise'"};
    const std::vector<std::string> TooShort = {
        "Selected length is not sufficient for the sample size 1024"};
    const std::vector<std::string> TooLong = {
        "You have selected a long noise,\n"
        "Only first 20 seconds will be used to define the noise."};
};

TEST_F(NoiseTest, WithoutAProfileTheFilterTellsWhatToDo) {
    Document(Noise(5000, 1));
    Select(0, 0); // told before anything is asked
    EXPECT_EQ(Unchanged(ApplyNoiseFilter), DefineFirst);
}

TEST_F(NoiseTest, LearnsTheMeanMagnitudesOfWholeFrames) {
    const Samples L = Noise(5000, 1, 3000);
    Document(L, {}, 16, 999);
    BusyCalls = 0;
    Learn(1, 5000);
    EXPECT_EQ(BusyCalls, 2); // the pointer is busy meanwhile
    EXPECT_TRUE(NoiseProfile == LiteralNoiseProfile(1024, L));
    EXPECT_EQ(NoiseProfile[0], 0.0F);
    EXPECT_EQ(NoiseBits, 16);
    EXPECT_EQ(NoiseFreq, 1000);
}

TEST_F(NoiseTest, BothChannelsAreLearntFromTheLeftOne) {
    const Samples L = Noise(3000, 1, 3000);
    const Samples R = Noise(3000, 2, 3000);
    Document(L, R);
    Learn(1, 3000);
    EXPECT_TRUE(NoiseProfile == LiteralNoiseProfile(1024, L));
    SelBoth = false;
    SelSingle = 2;
    Learn(1, 3000);
    EXPECT_TRUE(NoiseProfile == LiteralNoiseProfile(1024, R));
}

TEST_F(NoiseTest, FiltersBothChannelsAcrossBordersOfBlocks) {
    const Samples L = Noise(60000, 1);
    const Samples R = Noise(60000, 2);
    Document(L, R, 16, 7001);
    Learn(1, 2048);
    const std::vector<float> Profile = NoiseProfile;
    Select(1, 60000);
    ExpectStep(ApplyNoiseFilter, "Filter Noise", LiteralNoiseFilter(Profile, 16, L),
               LiteralNoiseFilter(Profile, 16, R));
}

TEST_F(NoiseTest, FiltersEightBitsOnTheirOwnScale) {
    const Samples L = Noise(9000, 1, 127);
    Document(L, {}, 8, 999);
    Learn(1, 1024);
    EXPECT_LT(*std::ranges::max_element(NoiseProfile), 1024 * 128);
    const std::vector<float> Profile = NoiseProfile;
    Select(1, 9000);
    ExpectStep(ApplyNoiseFilter, "Filter Noise", LiteralNoiseFilter(Profile, 8, L));
}

TEST_F(NoiseTest, KeepsToTheRangeAndTheChannelAndIsSilentBehindTheLastFrame) {
    const Samples L = Noise(9000, 1);
    const Samples R = Noise(9000, 2);
    Document(L, R, 16, 999);
    Learn(1, 1024);
    Select(1001, 4000);
    SelBoth = false;
    SelSingle = 2;
    Samples New = R;
    const Samples Middle =
        LiteralNoiseFilter(NoiseProfile, 16, {R.begin() + 1000, R.begin() + 4000});
    std::copy(Middle.begin(), Middle.end(), New.begin() + 1000);
    EXPECT_TRUE(std::all_of(Middle.begin() + 2048, Middle.end(),
                            [](std::int16_t Sample) { return Sample == 0; }));
    ExpectStep(ApplyNoiseFilter, "Filter Noise", L, New);
}

TEST_F(NoiseTest, OneFrameIsEnoughAndLessIsTold) {
    const Samples L = Noise(5000, 1);
    Document(L);
    Select(1, 1023);
    EXPECT_EQ(Unchanged(ChoosePureNoise), TooShort);
    EXPECT_EQ(NoiseFrame, 0);
    Learn(1, 1024);
    for (const std::int32_t Length : {2, 512, 1022, 1023}) {
        Select(1, Length);
        EXPECT_EQ(Unchanged(ApplyNoiseFilter), TooShort);
    }
    for (const std::int32_t Length : {1024, 1025}) {
        Select(1, Length);
        Samples New = L;
        const Samples Filtered =
            LiteralNoiseFilter(NoiseProfile, 16, Part(L, static_cast<std::size_t>(Length)));
        std::copy(Filtered.begin(), Filtered.end(), New.begin());
        ExpectStep(ApplyNoiseFilter, "Filter Noise", New);
    }
}

TEST_F(NoiseTest, ASinglePointIsTooShortToo) {
    Document(Noise(5000, 1));
    Select(7, 7);
    const ScriptedSelConf PointAsRange(3);
    EXPECT_EQ(Unchanged(ChoosePureNoise), TooShort);
    EXPECT_EQ(PointAsRange.Captions, std::vector<std::string>{" Confirm Selection [Define Noise]"});
}

TEST_F(NoiseTest, UpTo20PointOneSecondsAreLearntWhole) {
    const Samples L = Noise(30000, 1, 3000); // 1000 Hz
    Document(L);
    Learn(1, 20100);
    EXPECT_TRUE(NoiseProfile == LiteralNoiseProfile(1024, Part(L, 20100)));
    for (const std::int32_t Length : {20101, 20200, 30000}) {
        Select(1, Length);
        EXPECT_EQ(Unchanged(ChoosePureNoise), TooLong);
        EXPECT_TRUE(NoiseProfile == LiteralNoiseProfile(1024, Part(L, 20000)));
    }
}

TEST_F(NoiseTest, TheLimitIsTheSameAtAllRates) {
    for (const std::int32_t Freq : {1000, 11025, 44100, 48000}) {
        const std::int32_t Limit = Freq / 10 * 201 + Freq % 10 * 201 / 10;
        Document(Samples(static_cast<std::size_t>(Limit) + 100, 3));
        WaveStore->WavFmtFreq = Freq;
        Learn(1, Limit);
        Select(1, Limit + Freq / 1000 + 1);
        EXPECT_EQ(Unchanged(ChoosePureNoise), TooLong) << Freq;
    }
}

TEST_F(NoiseTest, AnotherFormatNeedsAnotherProfile) {
    Document(Noise(5000, 1));
    Learn(1, 2000);
    WaveStore->WavFmtFreq = 2000;
    EXPECT_EQ(Unchanged(ApplyNoiseFilter), DefineFirst);
    WaveStore->WavFmtFreq = 1000;
    WaveStore->WavFmtBits = 8;
    EXPECT_EQ(Unchanged(ApplyNoiseFilter), DefineFirst);
    EXPECT_FALSE(NoiseDefined(16, 1000, 512));
    EXPECT_TRUE(NoiseDefined(16, 1000, 1024));
}

TEST_F(NoiseTest, ANewProfileReplacesTheOldOne) {
    const Samples L = Noise(5000, 1);
    Document(L);
    Learn(1, 2000);
    const std::vector<float> Old = NoiseProfile;
    Learn(2001, 4000);
    EXPECT_FALSE(NoiseProfile == Old);
}

TEST_F(NoiseTest, AFailureWhileLearningLeavesNoProfile) {
    Document(Noise(5000, 1));
    Learn(1, 2000);
    const auto Short = Carrier(Samples(100, 1));
    EXPECT_THROW(NoiseDefine(1024, *Short, 16, 1000), Failure);
    EXPECT_EQ(NoiseFrame, 0);
    Select(1, 5000);
    EXPECT_EQ(Unchanged(ApplyNoiseFilter), DefineFirst);
}

TEST_F(NoiseTest, NoDiskIsAskedFor) {
    const Samples L = Noise(5000, 1);
    Document(L);
    Learn(1, 2000);
    Select(1, 5000);
    const std::string Place = TmpDir0;
    TmpDir0 = "/nowhere";
    ExpectStep(ApplyNoiseFilter, "Filter Noise", LiteralNoiseFilter(NoiseProfile, 16, L));
    TmpDir0 = Place;
    EXPECT_TRUE(Disk.Needed.empty());
}

TEST_F(NoiseTest, BothCommandsEndWithTheQuestionForTheSelection) {
    Document(Noise(5000, 1));
    Learn(1, 2000);
    Select(0, 0);
    const ScriptedSelConf Refusing;
    EXPECT_TRUE(Unchanged(ChoosePureNoise).empty());
    EXPECT_TRUE(Unchanged(ApplyNoiseFilter).empty());
    EXPECT_EQ(Refusing.Captions, (std::vector<std::string>{" Confirm Selection [Define Noise]",
                                                           " Confirm Selection [Filter Noise]"}));
    EXPECT_EQ(NoiseFrame, 1024);
}

TEST_F(NoiseTest, DigitalSilenceStaysSilent) {
    Samples L = Noise(5000, 1);
    L.resize(20000, 0);
    Document(L, {}, 16, 3000);
    Learn(1, 5000);
    Select(6000, 20000);
    ExpectStep(ApplyNoiseFilter, "Filter Noise", L);
}

TEST_F(NoiseTest, TheBarMovesAlongAndEndsFull) {
    Document(Noise(500000, 1), Noise(500000, 2), 16, 100000);
    Learn(1, 2000);
    Select(1, 500000);
    ApplyNoiseFilter();
    ASSERT_GE(Progress.Values.size(), 5U);
    EXPECT_TRUE(std::ranges::is_sorted(Progress.Values));
    EXPECT_NEAR(Progress.Values.back(), 1, 1e-6);
}

TEST_F(NoiseTest, StandsAFullDisk) {
    Document(Noise(60000, 1), Noise(60000, 2), 16, 9000);
    Learn(1, 2000);
    Select(1, 60000);
    EXPECT_GT(FailuresOnAFullDisk(ApplyNoiseFilter, ""), 3);
}

} // namespace
} // namespace quoril::test

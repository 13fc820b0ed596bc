// The levels of frequency bands, beside values that were worked out by another program in exact
// fractions, straight from what a centred moving average is.
#include "effects/BandLevels.h"

#include "base/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace quoril {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Values = std::vector<std::int32_t>;

/// A wave of samples from 1 on; `Sample` gets the place from 0.
Values WaveOf(int Count, const std::function<std::int32_t(int)>& Sample) {
    Values Wave(1, 0);
    for (int Place = 0; Place < Count; ++Place)
        Wave.push_back(Sample(Place));
    return Wave;
}

Values Noise(int Count, std::int32_t Height, std::uint32_t Seed) {
    return WaveOf(Count, [&](int) {
        Seed = (Seed * 1103515245U + 12345U) % (1U << 31);
        const auto Range = static_cast<std::uint32_t>(2 * Height + 1);
        return static_cast<std::int32_t>((Seed >> 8) % Range) - Height;
    });
}

/// The levels of ten bands.
Values LevelsOf(const Values& Wave, std::int32_t Freq) {
    Values Levels(11, 0);
    BandLevels(Wave, 10, Freq, 16, Levels);
    Levels.erase(Levels.begin());
    return Levels;
}

TEST(BandFrequencies, AreMultiplesOfFourFrom20To20000Hz) {
    EXPECT_THAT(BandFrequencies(8), ElementsAre(0, 20, 52, 140, 384, 1032, 2776, 7452, 19996));
    EXPECT_THAT(BandFrequencies(10),
                ElementsAre(0, 20, 40, 92, 200, 428, 928, 2000, 4308, 9280, 20000));
    EXPECT_THAT(BandFrequencies(4), ElementsAre(0, 20, 200, 2000, 20000));
    EXPECT_THAT(BandFrequencies(2), ElementsAre(0, 20, 20000));
    EXPECT_THAT(BandFrequencies(1), ElementsAre(0, 20));
    EXPECT_THAT(BandFrequencies(0), ElementsAre(0));
}

TEST(BandFrequencies, HalfAWindowIsHalfAPeriodRoundedToEven) {
    EXPECT_EQ(BandHalfWindow(44100, 20), 1102); // 1102.5
    EXPECT_EQ(BandHalfWindow(44100, 20000), 1); // 1.1025
    EXPECT_EQ(BandHalfWindow(8000, 9280), 0);   // 0.43
    EXPECT_EQ(BandHalfWindow(40000, 20000), 1);
    EXPECT_EQ(BandHalfWindow(20000, 20000), 0); // 0.5
    EXPECT_EQ(BandHalfWindow(200000, 20), 5000);
}

TEST(BandAverage, TakesHalfAWindowOnEachSideAndHoldsTheEnds) {
    const Values Wave = {10, 20, 30, 40, 100};
    BandAverage Average(Wave.data(), 2);
    // Window: the value before, the value, and the two after it.
    Average.Step(30, true);
    EXPECT_EQ(Average.Centre(), 10);
    EXPECT_EQ(Average.Mean(), 18); // 10 10 20 30: 17.5, and 18 is even
    Average.Step(40, true);
    EXPECT_EQ(Average.Centre(), 20);
    EXPECT_EQ(Average.Mean(), 25);
    Average.Step(100, true);
    EXPECT_EQ(Average.Centre(), 30);
    EXPECT_EQ(Average.Mean(), 48); // 20 30 40 100: 47.5
    Average.Step(100, false);
    EXPECT_EQ(Average.Centre(), 30);
    EXPECT_EQ(Average.Mean(), 68); // 30 40 100 100: 67.5
    Average.Step(100, false);
    EXPECT_EQ(Average.Centre(), 100); // the last value has reached the centre's place
    EXPECT_EQ(Average.Mean(), 85);
}

TEST(BandLevels, OfNoiseAtFiveRates) {
    EXPECT_THAT(LevelsOf(Noise(1102, 32767, 7), 44100),
                ElementsAre(16261, 337, 506, 1537, 1657, 1249, 2147, 7677, 6965, 9331));
    EXPECT_THAT(LevelsOf(Noise(512, 32767, 7), 8000),
                ElementsAre(774, 693, 1061, 2948, 4192, 5486, 7137, 10212, 0, 0));
    EXPECT_THAT(LevelsOf(Noise(512, 32767, 7), 1000),
                ElementsAre(1690, 4060, 5380, 5575, 6114, 10212, 0, 0, 0, 0));
    EXPECT_THAT(LevelsOf(Noise(4096, 32767, 7), 200000),
                ElementsAre(16304, 215, 454, 370, 461, 560, 1229, 1161, 3250, 15715));
    EXPECT_THAT(LevelsOf(Noise(551, 32767, 7), 22050),
                ElementsAre(15957, 1447, 814, 879, 1913, 3417, 3699, 7322, 5616, 12226));
}

TEST(BandLevels, WhatStandsInALevelCountsAsOneMoreSample) {
    // Two samples a period: the window of 10 samples in the middle has ten of 100.
    const Values Wave = WaveOf(512, [](int Place) { return Place % 2 == 0 ? 100 : -100; });
    Values Levels(11, 0);
    Levels[8] = 1100;
    BandLevels(Wave, 10, 8000, 16, Levels);
    EXPECT_EQ(Levels[8], 200); // of 11, from 251 to 261
}

TEST(BandLevels, OfNoiseOfEightBits) {
    EXPECT_THAT(LevelsOf(Noise(512, 127, 3), 8000), ElementsAre(3, 5, 5, 10, 6, 15, 30, 41, 0, 0));
}

TEST(BandLevels, OfASquareTone) {
    const Values Wave =
        WaveOf(1102, [](int Place) { return Place / 22 % 2 == 0 ? 10000 : -10000; });
    EXPECT_THAT(LevelsOf(Wave, 44100),
                ElementsAre(10000, 274, 9, 47, 325, 4733, 3022, 2682, 1364, 909));
}

TEST(BandLevels, OfASawtooth) {
    const Values Wave = WaveOf(1102, [](int Place) { return Place % 441 * 40000 / 441 - 20000; });
    EXPECT_THAT(LevelsOf(Wave, 44100),
                ElementsAre(10014, 2494, 5178, 2883, 128, 45, 45, 45, 45, 45));
}

TEST(BandLevels, OfOneImpulse) {
    Values Wave(13, 0);
    Wave[4] = 100;
    EXPECT_THAT(LevelsOf(Wave, 8000), ElementsAre(8, 8, 8, 8, 6, 5, 9, 9, 0, 0));
    EXPECT_THAT(LevelsOf(Wave, 48000), ElementsAre(8, 8, 8, 8, 8, 8, 8, 4, 11, 9));
}

TEST(BandLevels, OfSilenceAreNothing) {
    EXPECT_THAT(LevelsOf(Values(513, 0), 8000), ElementsAreArray(Values(10, 0)));
}

TEST(BandLevels, OfASteadyValueAreItsHeightBelowTheLowestBandOnly) {
    EXPECT_THAT(LevelsOf(Values(1103, 5000), 44100), ElementsAre(5000, 0, 0, 0, 0, 0, 0, 0, 0, 0));
}

TEST(BandLevels, OfTheLoudestSamplesFit) {
    const Values Highest = LevelsOf(Values(4097, -32768), 200000);
    EXPECT_EQ(Highest.front(), 32768);
    const Values Wave = WaveOf(4096, [](int Place) { return Place % 2 == 0 ? 32767 : -32768; });
    const Values Levels = LevelsOf(Wave, 200000);
    EXPECT_LE(*std::max_element(Levels.begin(), Levels.end()), 65535);
    EXPECT_GE(Levels.back(), 26000);
}

TEST(BandLevels, OfNoSamplesAreNothing) {
    EXPECT_THAT(LevelsOf(Values(1, 0), 44100), ElementsAreArray(Values(10, 0)));
}

TEST(BandLevels, TheFirstCallFixesTheFrequencies) {
    const Values Wave = Noise(512, 32767, 7);
    const Values Ten = LevelsOf(Wave, 8000);
    Values Five(6, 0);
    BandLevels(Wave, 5, 8000, 16, Five);
    // Bands 1 to 5 of ten: the higher ones are not taken out before.
    EXPECT_NE(Five[5], Ten[4]);
    EXPECT_GT(Five[5], 10000);
    Values More(12, 0);
    EXPECT_THROW(BandLevels(Wave, 11, 8000, 16, More), Failure);
}

} // namespace
} // namespace quoril

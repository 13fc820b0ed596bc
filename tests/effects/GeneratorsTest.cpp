// The arithmetic of the generators against plain arrays, and what can be told of a tone by hand.
#include "effects/Generators.h"

#include "base/Random.h"
#include "effects/LiteralWaves.h"
#include "effects/TestWaves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace quoril::test {
namespace {

using Wave = std::vector<std::int16_t>;

/// The tone in runs of random lengths.
Wave Tone(std::int32_t Samples, std::int32_t Amplitude, std::int32_t StartHz, std::int32_t EndHz,
          std::int32_t Rate, std::mt19937& Random) {
    SineMake Sine(Samples, Amplitude, StartHz, EndHz, Rate);
    Wave Made(static_cast<std::size_t>(Samples), 99);
    for (std::size_t At = 0; At < Made.size();) {
        const std::size_t Run = std::min<std::size_t>(Made.size() - At, Random() % 700);
        Sine.Fill(std::span(Made).subspan(At, Run));
        At += Run;
    }
    return Made;
}

TEST(GeneratorsTest, ATonesSamplesAreThoseOfTheRunningSum) {
    std::mt19937 Random(21);
    const auto Number = [&Random](std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    };
    constexpr std::array Rates = {1, 997, 8000, 11025, 22050, 44100, 48000, 96000, 192000};
    constexpr std::array Amplitudes = {89, 22937, 15000, 32767};
    for (int Case = 0; Case < 600; ++Case) {
        const std::int32_t Samples = Case % 3 == 0 ? Number(0, 8) : Number(3, 6000);
        const std::int32_t Rate = Rates.at(static_cast<std::size_t>(Number(0, 8)));
        const std::int32_t Amplitude = Amplitudes.at(static_cast<std::size_t>(Number(0, 3)));
        const std::int32_t StartHz = Number(2, 20000);
        const std::int32_t EndHz = Case % 4 == 0 ? StartHz : Number(2, 20000);
        ASSERT_TRUE(Tone(Samples, Amplitude, StartHz, EndHz, Rate, Random) ==
                    LiteralSine(Samples, Amplitude, StartHz, EndHz, Rate))
            << Samples << " samples of " << StartHz << " to " << EndHz << " Hz at " << Rate;
    }
}

TEST(GeneratorsTest, AThousandHertzHaveTheirPeriodAndTheirPeak) {
    std::mt19937 Random(1);
    const Wave Made = Tone(44100, 22937, 1000, 1000, 44100, Random);
    EXPECT_EQ(*std::max_element(Made.begin(), Made.end()), 22937);
    EXPECT_EQ(*std::min_element(Made.begin(), Made.end()), -22937);
    std::int32_t Rises = 0;
    for (std::size_t i = 0; i < Made.size(); ++i) {
        const double Angle = 2 * std::numbers::pi * 1000 / 44100 * static_cast<double>(i);
        ASSERT_NEAR(Made[i], 22937 * std::sin(Angle), 0.51) << i;
        Rises += i > 0 && Made[i - 1] <= 0 && Made[i] > 0 ? 1 : 0;
    }
    EXPECT_EQ(Rises, 1000);
}

TEST(GeneratorsTest, ASweepRisesByTheSameFactorInEqualTimes) {
    std::mt19937 Random(1);
    const Wave Made = Tone(44100, 22937, 200, 1000, 44100, Random);
    // Rises through zero in each tenth of a second: the mean frequency there.
    std::array<double, 10> Hz{};
    for (std::size_t i = 1; i < Made.size(); ++i)
        if (Made[i - 1] < 0 && Made[i] >= 0)
            Hz.at(i / 4410) += 10;
    const double Factor = std::pow(5.0, 0.1);
    for (std::size_t i = 0; i < Hz.size(); ++i) {
        const double Mean =
            200 * std::pow(Factor, static_cast<double>(i)) * (Factor - 1) / std::log(Factor);
        EXPECT_NEAR(Hz[i], Mean, 11) << i;
    }
    EXPECT_NEAR(Hz.back(), 925, 15);
}

TEST(GeneratorsTest, TwoSamplesOrFewerAreSilent) {
    std::mt19937 Random(1);
    EXPECT_EQ(Tone(2, 22937, 3000, 9000, 44100, Random), (Wave{0, 0}));
    EXPECT_EQ(Tone(1, 22937, 3000, 9000, 44100, Random), Wave{0});
    EXPECT_NE(Tone(3, 22937, 3000, 9000, 44100, Random), (Wave{0, 0, 0}));
}

TEST(GeneratorsTest, NoiseIsTheWalkOfItsDrawsAndStaysWithinItsLimits) {
    for (const std::int32_t Bits : {8, 16}) {
        const std::int16_t Limit = Bits == 8 ? 38 : 9830;
        RandomSeed(3);
        NoiseWalk Walk(Bits);
        Wave Made(50000);
        for (std::size_t At = 0; At < Made.size(); At += 1000)
            Walk.Fill(std::span(Made).subspan(At, 1000));
        RandomSeed(3);
        EXPECT_TRUE(Made == LiteralNoise(50000, Bits, RandomDraw)) << Bits;
        EXPECT_EQ(*std::max_element(Made.begin(), Made.end()), Limit);
        EXPECT_EQ(*std::min_element(Made.begin(), Made.end()), -Limit);
    }
}

TEST(GeneratorsTest, ProductsWithAToneAreExact) {
    for (const std::int32_t Bits : {8, 16})
        for (const NamedWave& Each : TestWaves(20000, Bits)) {
            const Wave With = NoiseWave(20000, -FullTone, FullTone, 7);
            Wave Made(Each.Samples.size());
            ModulateByTone(Each.Samples, With, Made, Bits);
            EXPECT_TRUE(Made == LiteralModulate(Each.Samples, With, Bits)) << Each.Name;
        }
}

TEST(GeneratorsTest, EveryStrengthOfAToneIsExactAtTheEndsOfTheScale) {
    Wave With;
    for (std::int32_t Value = -FullTone; Value <= FullTone; ++Value)
        With.push_back(static_cast<std::int16_t>(Value));
    for (const int Sample : {-32768, -32767, -20001, -1, 1, 7500, 32767}) {
        const Wave In(With.size(), static_cast<std::int16_t>(Sample));
        Wave Made(In.size());
        ModulateByTone(In, With, Made, 16);
        EXPECT_TRUE(Made == LiteralModulate(In, With, 16)) << Sample;
    }
    Wave Loudest = {-32768, -32768, 32767};
    ModulateByTone(Loudest, Wave{-15000, 15000, -15000}, Loudest, 16);
    EXPECT_EQ(Loudest, (Wave{32767, -32768, -32767}));
    Wave Loudest8 = {-128, -128, 127};
    ModulateByTone(Loudest8, Wave{-15000, 15000, -15000}, Loudest8, 8);
    EXPECT_EQ(Loudest8, (Wave{127, -128, -127}));
}

} // namespace
} // namespace quoril::test

// The echo of a wave: against the same arithmetic written down step by step, and what is known of
// its delays and volumes.
#include "effects/EchoWave.h"

#include "base/Random.h"
#include "effects/EffectFixture.h"
#include "effects/LiteralEcho.h"
#include "effects/Streamed.h"
#include "effects/TestWaves.h"

#include <algorithm>
#include <random>

namespace quoril::test {
namespace {

class EchoWaveTest : public EffectTest {
  protected:
    /// The echo of the first `Length` samples of `Dry`, which comes in runs of `Run` samples.
    static Samples Made(const Samples& Dry, std::int32_t Length, const EchoParamsRec& Params,
                        std::int32_t Freq, std::int32_t Bits, std::size_t Run) {
        RandomSeed(5);
        const std::vector<EchoTap> Taps = EchoTaps(Params, Freq);
        Samples In = Dry;
        In.resize(std::max(In.size(), static_cast<std::size_t>(EchoLength(Taps, Length))), 0);
        return Streamed(EchoWave(Params, Taps, Freq, Bits, Length), In, Run);
    }
    static void ExpectAsWrittenDown(const Samples& Dry, std::int32_t Length,
                                    const EchoParamsRec& Params, std::int32_t Freq,
                                    std::int32_t Bits, std::size_t Run) {
        RandomSeed(5);
        const LiteralWave Wet =
            LiteralEcho(Samples(Dry.begin(), Dry.begin() + Length), Freq, Bits,
                        {Params.FirstDelay, Params.NextDelays, Params.Repeats, Params.VolReduceAll,
                         Params.DelayVariation, Params.VolReduceHiFi},
                        RandomDraw);
        EXPECT_TRUE(Made(Dry, Length, Params, Freq, Bits, Run) == LiteralDryMix(Wet, Dry, Bits))
            << Length << " of " << Dry.size() << " samples of " << Bits << " bits at " << Freq
            << " Hz in runs of " << Run << ": " << ::testing::PrintToString(EchoTextsOf(Params));
    }
};

TEST_F(EchoWaveTest, TheFirstParametersAreAsWrittenDown) {
    for (const std::int32_t Bits : {8, 16})
        for (const std::size_t Run : {std::size_t{777}, std::size_t{32768}})
            ExpectAsWrittenDown(FullNoise(90000, 1, Bits), 70001, {}, 44100, Bits, Run);
}

TEST_F(EchoWaveTest, AnyParametersAreAsWrittenDown) {
    std::mt19937 Random(3);
    const auto Any = [&Random](std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    };
    for (int Time = 0; Time < 300; ++Time) {
        const std::int32_t Bits = Any(0, 1) == 0 ? 8 : 16;
        const std::int32_t Freq = Any(0, 1) == 0 ? 1000 : 8000;
        const std::int32_t Length = Any(0, 4) == 0 ? Any(1, 5) : Any(1, 4000);
        const EchoParamsRec Params{static_cast<float>(Any(1, 900)) / 1000,
                                   static_cast<float>(Any(1, 600)) / 1000,
                                   Any(1, 9),
                                   Any(1, 200),
                                   Any(0, 100),
                                   Any(0, 1) == 0 ? 100 : Any(1, 200)};
        ExpectAsWrittenDown(
            FullNoise(Length + Any(0, 3000), static_cast<std::uint32_t>(Time), Bits), Length,
            Params, Freq, Bits, static_cast<std::size_t>(Any(1, 2500)));
    }
}

TEST_F(EchoWaveTest, FiltersThatComeLaterThanTheirRepeatsAreAsWrittenDown) {
    // A hundred filters take far longer than the repeats have; some repeats change places.
    for (const std::int32_t HiFi : {1, 60, 99, 101, 200}) {
        const EchoParamsRec Params{0.001F, 0.002F, 12, 95, 100, HiFi};
        ExpectAsWrittenDown(FullNoise(6000, 9), 5000, Params, 8000, 16, 640);
        ExpectAsWrittenDown(FullNoise(9000, 9), 300, Params, 8000, 16, 64);
    }
}

TEST_F(EchoWaveTest, DelaysLongerThanTheSoundAreAsWrittenDown) {
    for (const std::int32_t HiFi : {100, 80}) {
        const EchoParamsRec Params{4.0F, 3.0F, 3, 70, 0, HiFi};
        ExpectAsWrittenDown(FullNoise(500, 2), 400, Params, 44100, 16, 5000);
        ExpectAsWrittenDown(FullNoise(400000, 2), 390000, Params, 44100, 16, 32768);
    }
}

TEST_F(EchoWaveTest, WhatWaitsForLongLiesInBlocksUnderTheBudget) {
    MemoryBudget = 600000;
    ExpectAsWrittenDown(FullNoise(600000, 4), 500000, {5.0F, 4.0F, 2, 70, 10, 100}, 44100, 16,
                        32768);
    ExpectAsWrittenDown(FullNoise(600000, 4), 500000, {5.0F, 4.0F, 2, 70, 10, 50}, 44100, 16,
                        32768);
    EXPECT_LE(MemoryUsed, MemoryBudget);
}

TEST_F(EchoWaveTest, AHundredRepeatsThatGrowLouderEndAtTheLimits) {
    const EchoParamsRec Params{0.01F, 0.003F, 100, 200, 50, 100};
    ExpectAsWrittenDown(FullNoise(2000, 5), 2000, Params, 8000, 16, 500);
    const Samples Echoes = Made(FullNoise(2000, 5), 2000, Params, 8000, 16, 500);
    EXPECT_EQ(*std::ranges::max_element(Echoes), 32767);
    EXPECT_EQ(*std::ranges::min_element(Echoes), -32768);
}

TEST_F(EchoWaveTest, AtFullLevelLoudPlacesAreCutOff) {
    const Samples Loud(500, 20000);
    const Samples Echoes = Made(Loud, 500, {0.1F, 0.1F, 2, 100, 0, 100}, 1000, 16, 500);
    ASSERT_EQ(Echoes.size(), 700U);
    EXPECT_EQ(Echoes[50], 20000);  // the sound alone
    EXPECT_EQ(Echoes[150], 32767); // with one repeat
    EXPECT_EQ(Echoes[550], 32767); // two repeats
    EXPECT_EQ(Echoes[650], 20000); // the last one alone
}

TEST_F(EchoWaveTest, TheFirstDelaysLieWhereTheyBelong) {
    for (std::uint32_t Seed = 0; Seed < 200; ++Seed) {
        RandomSeed(Seed);
        const std::vector<EchoTap> Taps = EchoTaps({}, 44100);
        ASSERT_EQ(Taps.size(), 5U);
        EXPECT_EQ(Taps[0].Offset, 3528);
        for (std::int32_t i = 1; i < 5; ++i)
            EXPECT_NEAR(Taps[static_cast<std::size_t>(i)].Offset, 3528 + 2646 * i, 265);
    }
}

TEST_F(EchoWaveTest, DelaysVaryToBothSides) {
    int Earlier = 0;
    int Later = 0;
    RandomSeed(1);
    for (int Time = 0; Time < 300; ++Time) {
        const std::int32_t Second = EchoTaps({}, 44100)[1].Offset;
        Earlier += Second < 6174 - 100;
        Later += Second > 6174 + 100;
    }
    EXPECT_GT(Earlier, 50);
    EXPECT_GT(Later, 50);
}

TEST_F(EchoWaveTest, WithoutVariationTheDelaysAreRegular) {
    const std::vector<EchoTap> Taps = EchoTaps({0.08F, 0.06F, 5, 80, 0, 100}, 44100);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(Taps[i].Offset, 3528 + 2646 * static_cast<std::int32_t>(i));
}

TEST_F(EchoWaveTest, EachRepeatIsReducedOnceMore) {
    const std::vector<EchoTap> Taps = EchoTaps({0.08F, 0.06F, 3, 80, 0, 100}, 44100);
    EXPECT_EQ(Taps[0].Gain, 0.8F);
    EXPECT_EQ(Taps[1].Gain, static_cast<float>(static_cast<double>(0.8F) * 0.8));
    for (const EchoTap& Each : EchoTaps({0.08F, 0.06F, 3, 100, 0, 100}, 44100))
        EXPECT_EQ(Each.Gain, 1.0F);
}

TEST_F(EchoWaveTest, ADelayBelowNothingIsNone) {
    // The smallest first delay, and one before it by all of the next delay.
    RandomSeed(3);
    for (int Time = 0; Time < 100; ++Time)
        for (const EchoTap& Each : EchoTaps({0.0000001F, 0.001F, 2, 80, 100, 100}, 8000))
            EXPECT_GE(Each.Offset, 0);
}

TEST_F(EchoWaveTest, ADelayBeyondAllNumbersFails) {
    EXPECT_THROW((void)EchoTaps({100, 100, 100, 80, 0, 100}, 2000000), Failure);
    EXPECT_THROW((void)EchoLength({{2147483647, 1}}, 1), Failure);
    EXPECT_EQ(EchoLength({{5, 1}, {3, 1}}, 10), 15);
}

TEST_F(EchoWaveTest, TheSpaceIsThatOfTheLastRepeatVariedByHalf) {
    EXPECT_EQ(EchoSpace({0.08F, 0.06F, 5, 80, 10, 100}, 44100, 1000), 1000 + 14112 + 132);
    EXPECT_EQ(EchoSpace({0.08F, 0.06F, 1, 80, 10, 100}, 44100, 1000), 1000 + 3528);
    EXPECT_EQ(EchoSpace({100, 100, 100, 80, 0, 100}, 200000, 2147483647),
              2147483647 + 2000000000LL);
}

TEST_F(EchoWaveTest, TheFilterHasFourBands) {
    const auto Bands = [](std::int32_t HiFi) { return EchoBandSet(HiFi).Bands; };
    EXPECT_EQ(Bands(99), (std::vector<std::int32_t>{0, 0, 0, 0, 0}));
    EXPECT_EQ(Bands(97), (std::vector<std::int32_t>{0, 0, 0, -1, -2}));
    EXPECT_EQ(Bands(50), (std::vector<std::int32_t>{0, 0, -6, -12, -25}));
    EXPECT_EQ(Bands(1), (std::vector<std::int32_t>{0, 0, -12, -25, -50}));
    EXPECT_EQ(Bands(103), (std::vector<std::int32_t>{0, 0, 0, 0, 0}));
    EXPECT_EQ(Bands(109), (std::vector<std::int32_t>{0, 0, 0, 1, 2}));
    EXPECT_EQ(Bands(200), (std::vector<std::int32_t>{0, 0, 4, 8, 17}));
    EXPECT_EQ(EchoBandSet(50).NoOfBands, 4);
}

TEST_F(EchoWaveTest, EvenTheNeutralFilterIsNotNeutral) {
    const Samples Source = FullNoise(3000, 1);
    const EchoParamsRec Plain{0.5F, 0.5F, 1, 100, 0, 100};
    EchoParamsRec Filtered = Plain;
    Filtered.VolReduceHiFi = 99;
    EXPECT_NE(Made(Source, 3000, Plain, 8000, 16, 1000),
              Made(Source, 3000, Filtered, 8000, 16, 1000));
}

} // namespace
} // namespace quoril::test

// Stretching a wave: against the same arithmetic written down step by step, and what is known of
// its results.
#include "effects/StretchWave.h"

#include "effects/EffectFixture.h"
#include "effects/LiteralStretch.h"
#include "effects/Streamed.h"
#include "effects/TestWaves.h"

#include <algorithm>
#include <array>
#include <random>

namespace quoril::test {
namespace {

class StretchWaveTest : public EffectTest {
  protected:
    /// What comes out when the wave comes in runs of `Run` samples.
    static Samples Stretched(const Samples& Source, std::int32_t Bits, double Start, double End,
                             std::size_t Run = 32768) {
        const auto Length = static_cast<std::int32_t>(Source.size());
        return Streamed(StretchWave(Length, Bits, Start, End), Source, Run);
    }
    static void ExpectAsWrittenDown(const Samples& Source, std::int32_t Bits, double Start,
                                    double End, std::size_t Run = 32768) {
        EXPECT_TRUE(Stretched(Source, Bits, Start, End, Run) ==
                    LiteralStretch(Source, Bits, Start, End))
            << Source.size() << " samples of " << Bits << " bits, " << Start << " to " << End
            << " percent, in runs of " << Run;
    }
};

TEST_F(StretchWaveTest, EveryPercentageFromTenToAThousandIsAsWrittenDown) {
    for (const std::int32_t Bits : {8, 16}) {
        const Samples Source = FullNoise(1500, 3, Bits);
        for (int Percent = 10; Percent <= 1000; ++Percent)
            ExpectAsWrittenDown(Source, Bits, Percent, Percent);
    }
}

TEST_F(StretchWaveTest, RampsInBothDirectionsAreAsWrittenDown) {
    const std::array<double, 11> Percents = {10,  10.7, 33.333, 50,    99.9, 100,
                                             101, 150,  200,    317.5, 1000};
    for (const std::int32_t Bits : {8, 16})
        for (const double Start : Percents)
            for (const double End : Percents)
                ExpectAsWrittenDown(FullNoise(3000, 4, Bits), Bits, Start, End, 777);
}

TEST_F(StretchWaveTest, EveryShortLengthIsAsWrittenDown) {
    for (std::int32_t Length = 1; Length <= 40; ++Length)
        for (const double Start : {10.0, 49.0, 100.0, 150.0, 1000.0})
            for (const double End : {10.0, 100.0, 101.0, 700.0})
                for (const std::size_t Run : {std::size_t{1}, std::size_t{2}, std::size_t{100}})
                    ExpectAsWrittenDown(FullNoise(Length, static_cast<std::uint32_t>(Length)), 16,
                                        Start, End, Run);
}

TEST_F(StretchWaveTest, AnyPercentagesLengthsAndRunsAreAsWrittenDown) {
    std::mt19937 Random(11);
    const auto Any = [&Random](std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    };
    for (int Time = 0; Time < 400; ++Time) {
        const std::int32_t Bits = Any(0, 1) == 0 ? 8 : 16;
        const double Start = std::uniform_real_distribution<double>(10, 1000)(Random);
        const double End =
            Any(0, 1) == 0 ? Start : std::uniform_real_distribution<double>(10, 1000)(Random);
        ExpectAsWrittenDown(FullNoise(Any(1, 9000), static_cast<std::uint32_t>(Time), Bits), Bits,
                            Start, End, static_cast<std::size_t>(Any(1, 3000)));
    }
}

TEST_F(StretchWaveTest, EveryKindOfWaveIsAsWrittenDown) {
    for (const std::int32_t Bits : {8, 16})
        for (const NamedWave& Wave : TestWaves(4000, Bits))
            for (const double Percent : {25.0, 66.6, 150.0, 431.0})
                ExpectAsWrittenDown(Wave.Samples, Bits, Percent, Percent);
}

TEST_F(StretchWaveTest, ChangesOfTheRateFarBeyondThePercentagesOfTheDialogAreAsWrittenDown) {
    const Samples Source = FullNoise(700, 8);
    for (const double Percent : {0.5, 2.0, 7.3, 1814.0589569160998, 20000.0})
        ExpectAsWrittenDown(Source, 16, Percent, Percent, 100);
}

TEST_F(StretchWaveTest, LongWavesAreAsWrittenDownAcrossTheirRuns) {
    const Samples Source = FullNoise(300000, 9);
    for (const auto& [Start, End] : std::array<std::pair<double, double>, 4>{
             {{150, 150}, {66.66666666666667, 66.66666666666667}, {20, 500}, {500, 20}}})
        ExpectAsWrittenDown(Source, 16, Start, End);
}

TEST_F(StretchWaveTest, TwiceAsLongIsTwiceAsManySamplesAndASilentOne) {
    const Samples Made = Stretched(Samples(1000, 123), 16, 200, 200);
    EXPECT_EQ(Made.size(), 2000U);
    EXPECT_EQ(Made.back(), 0);
    EXPECT_TRUE(std::all_of(Made.begin(), Made.end() - 1, [](int One) { return One == 123; }));
}

TEST_F(StretchWaveTest, HalfAsLongIsHalfAsManySamplesAndASilentOne) {
    EXPECT_EQ(Stretched(FullNoise(1000, 1), 16, 50, 50).size(), 501U);
}

TEST_F(StretchWaveTest, TheStartKeepsItsSpeedAndTheEndIsTwiceAsLong) {
    // A saw tooth tells where in the source a place of the result lies.
    Samples Source(20000);
    for (std::size_t i = 0; i < Source.size(); ++i)
        Source[i] = static_cast<std::int16_t>(i);
    const Samples Made = Stretched(Source, 16, 100, 200);
    EXPECT_NEAR(Made[1000] - Made[0], 1000, 30);
    const std::size_t Last = Made.size() - 2;
    EXPECT_NEAR(Made[Last] - Made[Last - 1000], 500, 20);
    EXPECT_NEAR(static_cast<double>(Made.size()), 20000 * 2 * 0.6931, 20);
}

TEST_F(StretchWaveTest, StrongShrinkingTakesOneNewSampleForEachThatComesOut) {
    // The positions are 1, 11, 21 and so on; what is read there are the samples 3, 13, 23.
    Samples Source(1000);
    for (std::size_t i = 0; i < Source.size(); ++i)
        Source[i] = static_cast<std::int16_t>(i + 1);
    const Samples Made = Stretched(Source, 16, 10, 10);
    ASSERT_EQ(Made.size(), 101U);
    // Each place is that of the register before last of its segment.
    EXPECT_EQ(Samples(Made.begin(), Made.begin() + 6), (Samples{1, 2, 3, 13, 23, 33}));
}

TEST_F(StretchWaveTest, TenTimesAsLongIsTenPlacesASegment) {
    const Samples Made = Stretched(FullNoise(1000, 1), 16, 1000, 1000);
    EXPECT_NEAR(static_cast<double>(Made.size()), 9991, 2);
}

TEST_F(StretchWaveTest, OvershootEndsAtTheLimitsOfTheDepth) {
    for (const std::int32_t Bits : {8, 16}) {
        const std::int32_t High = Bits == 8 ? 127 : 32767;
        Samples Source(400);
        for (std::size_t i = 0; i < Source.size(); ++i)
            Source[i] = static_cast<std::int16_t>(i / 10 % 2 == 0 ? High : -High - 1);
        const Samples Made = Stretched(Source, Bits, 700, 700);
        EXPECT_EQ(*std::max_element(Made.begin(), Made.end()), High);
        EXPECT_EQ(*std::min_element(Made.begin(), Made.end()), -High - 1);
        // Beside an edge the curve stays at the limit instead of swinging round.
        EXPECT_EQ(Made, LiteralStretch(Source, Bits, 700, 700));
    }
}

TEST_F(StretchWaveTest, FewerThanThreeSamplesComeOutAsTheyAre) {
    EXPECT_EQ(Stretched({}, 16, 200, 200), Samples{});
    EXPECT_EQ(Stretched({5}, 16, 200, 200), Samples{5});
    EXPECT_EQ(Stretched({5, -7}, 16, 200, 200, 1), (Samples{5, -7}));
    EXPECT_EQ(Stretched({5, -7, 9}, 16, 100, 100), (Samples{5, -7, 0}));
}

TEST_F(StretchWaveTest, APercentageThatIsNotAboveNothingFailsWithWords) {
    for (const double Percent : {0.0, -5.0, std::nan(""), 1e-310})
        try {
            (void)StretchWave(100, 16, 100, Percent);
            ADD_FAILURE() << Percent;
        } catch (const Failure& Why) {
            EXPECT_STREQ(Why.what(), "The length would not be greater than 0.");
        }
}

} // namespace
} // namespace quoril::test

// The noise filter beside a plain one that works on whole arrays.
#include "effects/NoiseFrames.h"

#include "effects/LiteralFilters.h"
#include "effects/NoiseProfile.h"
#include "effects/TestWaves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace quoril::test {
namespace {

/// The filtered signal, in pieces of `Piece` samples.
LiteralWave Filtered(const std::vector<float>& Profile, std::int32_t Bits,
                     const LiteralWave& Source, std::size_t Piece) {
    NoiseFrames Filter(Profile, Bits, static_cast<std::int32_t>(Source.size()));
    LiteralWave Result;
    std::size_t Taken = 0;
    for (std::size_t At = 0; At < Source.size(); At += Piece) {
        const auto Part = std::span(Source).subspan(At, std::min(Piece, Source.size() - At));
        Filter.Push(Part, [&](std::span<const std::int16_t> Some) {
            Result.insert(Result.end(), Some.begin(), Some.end());
        });
        Taken += Part.size();
        EXPECT_TRUE(Result.size() <= Taken || Taken == Source.size());
        EXPECT_LE(Taken - std::min(Taken, Result.size()), static_cast<std::size_t>(Filter.Delay()));
    }
    return Result;
}

std::vector<float> ProfileOf(const LiteralWave& Noise) {
    return LiteralNoiseProfile(1024, Noise);
}

std::vector<float> SomeProfile(std::int32_t Bits) {
    return ProfileOf(NoiseWave(5000, Bits == 8 ? -20 : -3000, Bits == 8 ? 20 : 3000, 9));
}

TEST(NoiseFramesTest, EqualsThePlainFilterOnAllWavesAtBothDepths) {
    for (const std::int32_t Bits : {8, 16})
        for (const NamedWave& Wave : TestWaves(20 * 1024 + 77, Bits)) {
            const std::vector<float> Profile = SomeProfile(Bits);
            EXPECT_TRUE(Filtered(Profile, Bits, Wave.Samples, 32768) ==
                        LiteralNoiseFilter(Profile, Bits, Wave.Samples))
                << Wave.Name << " of " << Bits;
        }
}

TEST(NoiseFramesTest, EqualsThePlainFilterForLengthsAroundAllFrames) {
    const std::vector<float> Profile = SomeProfile(16);
    for (const std::int32_t Frames : {0, 1, 2, 3, 4, 5, 8, 9})
        for (const std::int32_t Around : {-1, 0, 1, 511, 512, 513})
            if (Frames * 1024 + Around > 0) {
                const LiteralWave Source = NoiseWave(Frames * 1024 + Around, -32768, 32767, 3);
                EXPECT_TRUE(Filtered(Profile, 16, Source, 1000) ==
                            LiteralNoiseFilter(Profile, 16, Source))
                    << Source.size();
            }
}

TEST(NoiseFramesTest, GivesTheSameHoweverTheSignalIsCut) {
    const std::vector<float> Profile = SomeProfile(16);
    const LiteralWave Source = NoiseWave(30000, -32768, 32767, 8);
    const LiteralWave Expected = LiteralNoiseFilter(Profile, 16, Source);
    for (const std::size_t Piece : {std::size_t{1}, std::size_t{511}, std::size_t{512},
                                    std::size_t{1024}, std::size_t{4607}, std::size_t{30000}})
        EXPECT_TRUE(Filtered(Profile, 16, Source, Piece) == Expected) << Piece;
}

TEST(NoiseFramesTest, OneFrameIsShapedByTheWindow) {
    LiteralWave Source(1500, 0);
    for (std::size_t i = 0; i < Source.size(); ++i)
        Source[i] = static_cast<std::int16_t>(std::lround(
            20000 * std::cos(2 * 3.14159265358979 * 8 * static_cast<double>(i) / 1024)));
    const LiteralWave Result = Filtered(std::vector<float>(1024, 0.0F), 16, Source, 1500);
    ASSERT_EQ(Result.size(), 1500U);
    EXPECT_EQ(Result[0], 0);
    EXPECT_NEAR(Result[512], 20000, 20); // a cosine is even about its start
    EXPECT_NEAR(Result[256], 10000, 40);
    EXPECT_TRUE(std::all_of(Result.begin() + 1024, Result.end(),
                            [](std::int16_t Sample) { return Sample == 0; }));
}

TEST(NoiseFramesTest, TheNoiseItselfBecomesNearlySilent) {
    const LiteralWave Noise = NoiseWave(1024, -3000, 3000, 4);
    const LiteralWave Result = Filtered(ProfileOf(Noise), 16, Noise, 1024);
    for (const std::int16_t Sample : Result)
        EXPECT_LE(std::abs(Sample), 1);
}

TEST(NoiseFramesTest, SilenceStaysSilent) {
    EXPECT_EQ(Filtered(SomeProfile(16), 16, LiteralWave(5000, 0), 5000), LiteralWave(5000, 0));
}

TEST(NoiseFramesTest, FullScaleStaysWithinTheLimitsOfTheDepth) {
    for (const std::int32_t Bits : {8, 16}) {
        const std::int32_t High = Bits == 8 ? 127 : 32767;
        const LiteralWave Source = NoiseWave(20000, -High - 1, High, 2);
        const LiteralWave Result = Filtered(std::vector<float>(1024, 0.0F), Bits, Source, 20000);
        EXPECT_EQ(Result, LiteralNoiseFilter(std::vector<float>(1024, 0.0F), Bits, Source));
        EXPECT_LE(*std::ranges::max_element(Result), High);
        EXPECT_GE(*std::ranges::min_element(Result), -High - 1);
    }
}

} // namespace
} // namespace quoril::test

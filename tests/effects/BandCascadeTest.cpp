// The cascade of bands beside a plain one that works on whole arrays.
#include "effects/BandCascade.h"

#include "base/Arithmetic.h"
#include "effects/BandLevels.h"
#include "effects/BandSet.h"
#include "effects/LiteralFilters.h"
#include "effects/TestWaves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace quoril::test {
namespace {

using Values = std::vector<std::int32_t>;

std::vector<BandCascade::Band> BandsOf(const Values& Set, std::int32_t Freq) {
    const Values Freqs = BandFrequencies(static_cast<std::int32_t>(Set.size()) - 1);
    std::vector<BandCascade::Band> Bands;
    for (std::size_t Band = 1; Band < Set.size(); ++Band)
        Bands.push_back({BandHalfWindow(Freq, Freqs[Band]), BandGain(Set[Band])});
    return Bands;
}

/// The mix of all bands, in pieces of `Piece` samples.
LiteralWave Mixed(const LiteralWave& Source, std::int32_t Freq, std::int32_t Bits,
                  const Values& Set, std::size_t Piece) {
    BandCascade Cascade(BandsOf(Set, Freq), static_cast<std::int32_t>(Source.size()),
                        SampleHigh(Bits));
    LiteralWave Result;
    std::size_t Taken = 0;
    for (std::size_t At = 0; At < Source.size(); At += Piece) {
        const auto Part = std::span(Source).subspan(At, std::min(Piece, Source.size() - At));
        Cascade.Push(Part, [&](std::span<const std::int16_t> Some) {
            Result.insert(Result.end(), Some.begin(), Some.end());
        });
        Taken += Part.size();
        EXPECT_LE(Taken - Result.size(), static_cast<std::size_t>(Cascade.Delay()));
    }
    return Result;
}

Values SomeSet(std::int32_t NoOfBands, std::uint32_t Seed) {
    std::mt19937 Random(Seed);
    Values Set(1, 0);
    for (std::int32_t Band = 1; Band <= NoOfBands; ++Band)
        Set.push_back(std::uniform_int_distribution<std::int32_t>(-50, 50)(Random));
    return Set;
}

TEST(BandCascadeTest, EqualsThePlainCascadeOnAllWavesAtBothDepths) {
    for (const std::int32_t Bits : {8, 16})
        for (const std::int32_t Freq : {1000, 8000, 11025, 44100, 48000, 200000})
            for (const NamedWave& Wave : TestWaves(12345, Bits)) {
                const Values Set = SomeSet(8, static_cast<std::uint32_t>(Freq + Bits));
                EXPECT_TRUE(Mixed(Wave.Samples, Freq, Bits, Set, 32768) ==
                            LiteralEqualize(Wave.Samples, Freq, Bits, Set))
                    << Wave.Name << " at " << Freq << " of " << Bits;
            }
}

TEST(BandCascadeTest, EqualsThePlainCascadeForAllNumbersOfBands) {
    for (std::int32_t NoOfBands = 2; NoOfBands <= 50; ++NoOfBands)
        for (const std::int32_t Freq : {9999, 44100, 200000}) {
            const LiteralWave Source = NoiseWave(9001, -32768, 32767, 5);
            const Values Set = SomeSet(NoOfBands, 77);
            EXPECT_TRUE(Mixed(Source, Freq, 16, Set, 3000) ==
                        LiteralEqualize(Source, Freq, 16, Set))
                << NoOfBands << " at " << Freq;
        }
}

TEST(BandCascadeTest, EqualsThePlainCascadeForLengthsAroundAllWindows) {
    constexpr std::int32_t Freq = 8000;
    const Values Set = SomeSet(8, 3);
    std::vector<std::int32_t> Lengths = {1, 2, 3, 4, 5};
    for (const BandCascade::Band& Band : BandsOf(Set, Freq))
        for (const std::int32_t Around : {-1, 0, 1, 2}) {
            Lengths.push_back(Band.Half + Around);
            Lengths.push_back(2 * Band.Half + Around);
            Lengths.push_back(4096 + Band.Half + Around);
        }
    for (const std::int32_t Length : Lengths)
        for (const NamedWave& Wave : TestWaves(std::max(Length, 1), 16)) {
            EXPECT_TRUE(Mixed(Wave.Samples, Freq, 16, Set, 1000) ==
                        LiteralEqualize(Wave.Samples, Freq, 16, Set))
                << Wave.Name << " of " << Length;
        }
}

TEST(BandCascadeTest, GivesTheSameHoweverTheSignalIsCut) {
    const LiteralWave Source = NoiseWave(20000, -32768, 32767, 8);
    const Values Set = SomeSet(10, 4);
    const LiteralWave Expected = LiteralEqualize(Source, 44100, 16, Set);
    for (const std::size_t Piece :
         {std::size_t{1}, std::size_t{2}, 511UL, 512UL, 513UL, 4095UL, 4096UL, 4097UL, 20000UL})
        EXPECT_TRUE(Mixed(Source, 44100, 16, Set, Piece) == Expected) << Piece;
}

TEST(BandCascadeTest, RoundsHalvesToEvenInAllWindows) {
    // The average of one window is a half for every second sample.
    for (std::int32_t Half = 1; Half < 300; ++Half) {
        LiteralWave Source(2000, 0);
        for (std::size_t i = 700; i < Source.size(); ++i)
            Source[i] = static_cast<std::int16_t>(i % 2 == 0 ? Half : 3 * Half);
        const std::array<BandCascade::Band, 1> Bands = {{{Half, 1.0F}}};
        BandCascade Cascade(Bands, static_cast<std::int32_t>(Source.size()), 32767);
        LiteralWave Result;
        Cascade.Push(Source, [&](std::span<const std::int16_t> Some) {
            Result.insert(Result.end(), Some.begin(), Some.end());
        });
        for (std::int32_t i = Half; i + Half < 2000; ++i) {
            const auto First = Source.begin() + i - Half + 1;
            const std::int32_t Sum = std::accumulate(First, First + std::ptrdiff_t{2} * Half, 0);
            const std::int32_t Whole = Sum / (2 * Half);
            const std::int32_t Rest = Sum % (2 * Half);
            const std::int32_t Mean =
                Whole + (Rest > Half || (Rest == Half && Whole % 2 != 0) ? 1 : 0);
            ASSERT_EQ(Result[static_cast<std::size_t>(i)],
                      Source[static_cast<std::size_t>(i)] - Mean)
                << Half << " at " << i;
        }
    }
}

TEST(BandCascadeTest, AllBandsStoppedGiveSilence) {
    const LiteralWave Source = NoiseWave(5000, -32768, 32767, 8);
    EXPECT_EQ(Mixed(Source, 44100, 16, Values(9, -50), 900), LiteralWave(5000, 0));
}

TEST(BandCascadeTest, NeutralBandsGiveNearlyTheSignal) {
    // A tone of 1000 Hz between silence: the part below 20 Hz is nothing.
    LiteralWave Source(20000, 0);
    for (std::size_t i = 4000; i < 16000; ++i)
        Source[i] = static_cast<std::int16_t>(std::lround(
            10000 * std::sin(2 * 3.14159265358979 * 1000 / 44100 * static_cast<double>(i - 4000))));
    const LiteralWave Result = Mixed(Source, 44100, 16, Values(9, 7), 4096);
    for (std::size_t i = 0; i < Source.size(); ++i)
        EXPECT_NEAR(Result[i], Source[i], 220) << i;
    EXPECT_NE(Result, Source);
}

TEST(BandCascadeTest, AValueOfMinus32768NeverComesOut) {
    const LiteralWave Source = TestWaves(3000, 16)[7].Samples; // square
    for (const std::int16_t Sample : Mixed(Source, 8000, 16, Values(9, 50), 3000))
        EXPECT_GE(Sample, -32767);
}

} // namespace
} // namespace quoril::test

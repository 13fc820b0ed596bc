// The transform beside a plain one, and what follows from its definition.
#include "effects/FFTDorinMod.h"

#include "base/Failure.h"
#include "effects/LiteralFilters.h"
#include "effects/TestWaves.h"
#include "support/ScriptedMessages.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quoril::test {
namespace {

std::vector<float> Forward(const std::vector<std::int16_t>& Wave) {
    std::vector<float> Real(Wave.size());
    FFTForward(Wave, Real, static_cast<std::int32_t>(Wave.size()));
    return Real;
}
std::vector<std::int32_t> Inverse(const std::vector<float>& Spectrum) {
    std::vector<std::int32_t> Real(Spectrum.size());
    FFTInverse(Spectrum, Real, static_cast<std::int32_t>(Spectrum.size()));
    return Real;
}

class FFTDorinModTest : public ::testing::Test {
  protected:
    ScriptedMessages Messages;
};

TEST_F(FFTDorinModTest, TablesOfTheUsualSize) {
    EXPECT_TRUE(FFTPrepare(1024));
    EXPECT_EQ(FFTSize, 1024);
    EXPECT_EQ(FFTBits, 10);
    EXPECT_EQ(ReversedBits[1], 512);
    EXPECT_EQ(ReversedBits.size(), 1024U);
    EXPECT_EQ(ReverseBits(6, 3), 3);
    EXPECT_EQ(ReverseBits(6, 4), 6);
}

TEST_F(FFTDorinModTest, EqualsThePlainTransformOnAllWavesAndSizes) {
    for (const std::int32_t Size : {2, 4, 8, 64, 512, 1024, 4096})
        for (const std::int32_t Bits : {8, 16})
            for (const NamedWave& Wave : TestWaves(Size, Bits)) {
                const LiteralSpectrum Expected = LiteralForward(Wave.Samples);
                const std::vector<float> Spectrum = Forward(Wave.Samples);
                EXPECT_TRUE(Spectrum == Expected.Real) << Wave.Name << " of " << Size;
                EXPECT_TRUE(ImagOut == Expected.Imag) << Wave.Name << " of " << Size;
                EXPECT_TRUE(Inverse(Spectrum) == LiteralInverse(Spectrum))
                    << Wave.Name << " of " << Size;
            }
}

TEST_F(FFTDorinModTest, TheInverseRoundsItsInputToEven) {
    const std::vector<float> Spectrum = {2.5F, 3.5F, -0.5F, -1.5F, 1e6F, 0.49F, 7.0F, -8.5F};
    EXPECT_EQ(Inverse(Spectrum), LiteralInverse(Spectrum));
    EXPECT_EQ(Inverse({2.5F, 0.5F}), (std::vector<std::int32_t>{1, 1}));
    EXPECT_EQ(Inverse({3.5F, 0.5F}), (std::vector<std::int32_t>{2, 2}));
}

TEST_F(FFTDorinModTest, AConstantFrameStandsInTheFirstBin) {
    const std::vector<float> Spectrum = Forward(std::vector<std::int16_t>(1024, 1000));
    EXPECT_EQ(Spectrum[0], 1024000.0F);
    for (std::size_t Bin = 1; Bin < 1024; ++Bin)
        EXPECT_NEAR(Spectrum[Bin], 0, 1) << Bin;
}

TEST_F(FFTDorinModTest, ForwardAndBackGivesTheEvenPart) {
    std::vector<std::int16_t> Frame(1024, 0);
    Frame[3] = 10000;
    const std::vector<std::int32_t> Back = Inverse(Forward(Frame));
    for (std::size_t i = 0; i < 1024; ++i)
        EXPECT_NEAR(Back[i], i == 3 || i == 1021 ? 5000 : 0, 2) << i;
}

TEST_F(FFTDorinModTest, TheKernelTurnsForward) {
    std::vector<std::int16_t> Frame(1024, 0);
    Frame[1] = 10000;
    const std::vector<float> Spectrum = Forward(Frame);
    EXPECT_NEAR(Spectrum[256], 0, 1);
    EXPECT_NEAR(ImagOut[256], 10000, 1);
    EXPECT_NEAR(Spectrum[512], -10000, 1);
}

TEST_F(FFTDorinModTest, OtherSizesAreToldAtEachCallAndWriteNothing) {
    ASSERT_TRUE(FFTPrepare(8));
    for (const std::int32_t Size : {1000, 1, 0, -4, 1023, 1025}) {
        std::vector<float> Real(1025, 77.0F);
        std::vector<std::int32_t> Whole(1025, 78);
        FFTForward(std::vector<std::int16_t>(1025, 5), Real, Size);
        FFTInverse(std::vector<float>(1025, 5.0F), Whole, Size);
        EXPECT_EQ(Real, std::vector<float>(1025, 77.0F));
        EXPECT_EQ(Whole, std::vector<std::int32_t>(1025, 78));
        EXPECT_EQ(Messages.TakeTexts(),
                  (std::vector<std::string>{"Failed to FFT", "Failed to FFT"}))
            << Size;
        EXPECT_EQ(FFTSize, 8);
        EXPECT_EQ(FFTBits, 3);
    }
}

TEST_F(FFTDorinModTest, TwoSamplesAreOneStage) {
    EXPECT_EQ(Forward({300, 100}), (std::vector<float>{400.0F, 200.0F}));
    EXPECT_EQ(FFTBits, 1);
}

TEST_F(FFTDorinModTest, AnotherSizeMakesTheTablesAnew) {
    (void)Forward(std::vector<std::int16_t>(1024, 1));
    (void)Forward(std::vector<std::int16_t>(16, 1));
    EXPECT_EQ(FFTSize, 16);
    EXPECT_EQ(ReversedBits.size(), 16U);
    EXPECT_EQ(Forward(std::vector<std::int16_t>(1024, 1))[0], 1024.0F);
    EXPECT_EQ(FFTSize, 1024);
}

TEST_F(FFTDorinModTest, TheInverseFailsBeyond32Bits) {
    std::vector<std::int32_t> Whole(4);
    EXPECT_THROW(FFTInverse({3e9F, 0, 0, 0}, Whole, 4), Failure);
    EXPECT_THROW(FFTInverse(std::vector<float>(4, 1e9F), Whole, 4), Failure);
    EXPECT_NO_THROW(FFTInverse(std::vector<float>(4, 5e8F), Whole, 4));
    EXPECT_EQ(Whole, (std::vector<std::int32_t>{500000000, 0, 0, 0}));
}

} // namespace
} // namespace quoril::test

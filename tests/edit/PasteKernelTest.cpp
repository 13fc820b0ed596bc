#include "edit/PasteKernels.h"

#include "base/Arithmetic.h"
#include "base/SampleRuns.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quoril::test {

namespace {

using Samples = std::vector<std::int16_t>;

TEST(PasteKernelTest, TheLimitIsThatOfTheBits) {
    EXPECT_EQ(PasteMaxSample(8), 127);
    EXPECT_EQ(PasteMaxSample(16), 32767);
}

TEST(PasteKernelTest, MixAddsAndLimits) {
    const Samples Clip = {100, 32767, -32768, 20000, -20000, 0};
    const Samples Doc = {-30, 32767, -32768, 12767, -12768, -32768};
    Samples Out(6);
    SumRun(Clip, Doc, Out, 1, -32767, 32767);
    EXPECT_EQ(Out, (Samples{70, 32767, -32767, 32767, -32767, -32767}));
    const Samples Clip8 = {100, -100, 5};
    const Samples Doc8 = {28, -28, 6};
    Samples Out8(3);
    SumRun(Clip8, Doc8, Out8, 1, -127, 127);
    EXPECT_EQ(Out8, (Samples{127, -127, 11}));
}

TEST(PasteKernelTest, ModulateTakesTheSizeFromTheClipAndTheSignFromTheDocument) {
    // 0.95 x 10000 = 9500; half scale 16384 / 32767 x 0.95 x 10000 = 4750.14...;
    // 0.95 x 32768 / 32767 x 32767 = 31129.6; 0.95 x -32768 = -31129.6.
    const Samples Clip = {32767, -32767, 16384, 0, -32768, 32767};
    const Samples Doc = {10000, -10000, 10000, 32767, 32767, -32768};
    Samples Out(6);
    ModulateRun(Clip, Doc, Out, 32767);
    EXPECT_EQ(Out, (Samples{9500, -9500, 4750, 0, 31130, -31130}));
}

TEST(PasteKernelTest, ModulateLimits) {
    const Samples Clip = {128};
    const Samples Doc = {-128};
    Samples Out(1);
    ModulateRun(Clip, Doc, Out, 100);
    EXPECT_EQ(Out, Samples{-100});
}

TEST(PasteKernelTest, CrossFadeGoesFromTheClipToTheDocument) {
    // x = 1/4, 2/4, 3/4, 1 of the document's 1000 and 1 - x of the clip's 0.
    const Samples Clip(4, 0);
    const Samples Doc(4, 1000);
    Samples Out(4);
    CrossFadeRun(Clip, Doc, Out, 1, 4, 32767);
    EXPECT_EQ(Out, (Samples{250, 500, 750, 1000}));
    // Halves go to even: 0.5 x 1 + 0.5 x 0 is 0, 0.5 x 3 is 2, 0.5 x -1 is 0, 0.5 x -3 is -2.
    const std::array<std::pair<std::int16_t, std::int16_t>, 4> Halves = {
        {{1, 0}, {3, 2}, {-1, 0}, {-3, -2}}};
    for (const auto& [In, Expected] : Halves) {
        const Samples One = {In};
        Samples Result(1);
        CrossFadeRun(Samples{0}, One, Result, 1, 2, 32767);
        EXPECT_EQ(Result[0], Expected) << In;
    }
}

TEST(PasteKernelTest, CrossFadeWeighsInSinglePrecision) {
    // 1/3 in single precision is above a third: 32767/3 = 10922.33, and 0.3333333433 x 32767 =
    // 10922.3336; 2/3 gives 21844.668.
    const Samples Clip(3, 0);
    const Samples Doc(3, 32767);
    Samples Out(3);
    CrossFadeRun(Clip, Doc, Out, 1, 3, 32767);
    EXPECT_EQ(Out, (Samples{10922, 21845, 32767}));
    // x = 1/10 is above a tenth in single precision: 0.100000001 x 5 is above the half.
    CrossFadeRun(Samples{0}, Samples{5}, std::span(Out).first(1), 1, 10, 32767);
    EXPECT_EQ(Out[0], 1);
}

TEST(PasteKernelTest, RunsOfAnyLengthGiveTheSameAsSingleSamples) {
    Samples Clip(1003);
    Samples Doc(1003);
    for (std::size_t i = 0; i < Clip.size(); ++i) {
        Clip[i] = static_cast<std::int16_t>(i * 7919);
        Doc[i] = static_cast<std::int16_t>(i * 104729 + 13);
    }
    Samples Whole(Clip.size());
    CrossFadeRun(Clip, Doc, Whole, 1, 1003, 32767);
    for (std::size_t i = 0; i < Clip.size(); ++i) {
        Samples One(1);
        CrossFadeRun(std::span(Clip).subspan(i, 1), std::span(Doc).subspan(i, 1), One,
                     static_cast<std::int32_t>(i) + 1, 1003, 32767);
        ASSERT_EQ(Whole[i], One[0]) << i;
    }
}

/// The words of the fade, sample by sample.
std::int16_t CrossFaded(std::int16_t Clip, std::int16_t Doc, std::int32_t i, std::int32_t Total,
                        std::int32_t Max) {
    const float x = Single(static_cast<double>(i) / static_cast<double>(Total));
    const float y = Single(1.0 - static_cast<double>(x));
    const double Sum = static_cast<double>(x) * Doc + static_cast<double>(y) * Clip;
    return static_cast<std::int16_t>(std::clamp(RoundToLong(Sum), -Max, Max));
}

TEST(PasteKernelTest, CrossFadeKeepsSinglePrecisionAtEveryPlaceOfLongStretches) {
    std::mt19937 Random(11);
    constexpr std::int32_t Length = 5000;
    Samples Clip(Length);
    Samples Doc(Length);
    for (std::int32_t Total :
         {5000, 8192, 65536, 1000003, (1 << 24) + 1, 1 << 26, 536870912, 999999937, 2147483647}) {
        std::vector<std::int32_t> Places = {1, Total - Length + 1};
        for (std::int32_t Half = Total; Half > 2 * Length; Half /= 2)
            Places.push_back(Half - Length / 2 - Length * (Half == Total ? 1 : 0));
        for (const std::int32_t First : Places) {
            for (std::size_t i = 0; i < Clip.size(); ++i) {
                Clip[i] = static_cast<std::int16_t>(Random());
                Doc[i] = static_cast<std::int16_t>(Random());
            }
            Samples Out(Length);
            CrossFadeRun(Clip, Doc, Out, First, Total, 32767);
            for (std::int32_t i = 0; i < Length; ++i) {
                const auto At = static_cast<std::size_t>(i);
                ASSERT_EQ(Out[At], CrossFaded(Clip[At], Doc[At], First + i, Total, 32767))
                    << First + i << " of " << Total;
            }
        }
    }
}

} // namespace

} // namespace quoril::test

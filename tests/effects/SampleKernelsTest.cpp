// The arithmetic on samples against values worked out in whole numbers.
#include "effects/SampleKernels.h"
#include "base/SampleRuns.h"
#include "effects/GainKernel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace quoril::test {

namespace {

using Samples = std::vector<std::int16_t>;
__extension__ using Wide = __int128;

Samples AllValues() {
    Samples All;
    for (std::int32_t Value = -32768; Value <= 32767; ++Value)
        All.push_back(static_cast<std::int16_t>(Value));
    return All;
}

/// Number / 2^Shift to the nearest whole number, ties to even, without any floating point.
std::int64_t Nearest(Wide Number, int Shift) {
    const Wide Floor = Number >> Shift;
    const Wide Rest = Number - (Floor << Shift);
    const Wide Half = Wide{1} << (Shift - 1);
    if (Rest > Half || (Rest == Half && (Floor & 1) != 0))
        return static_cast<std::int64_t>(Floor + 1);
    return static_cast<std::int64_t>(Floor);
}

std::int16_t Clipped(std::int64_t Value, std::int32_t Bits) {
    const std::int64_t Low = Bits == 8 ? -128 : -32768;
    return static_cast<std::int16_t>(std::clamp(Value, Low, -Low - 1));
}

/// The single-precision number nearest to Percent / 100, as a whole number of 2^-30: found by its
/// 24 bits. All presets lie from 1/8 to 4, so that 24 bits reach down to 2^-27 at least.
Wide SinglePercent(std::int32_t Percent) {
    int Exponent = 2;
    while ((Wide{Percent} << 30) < (Wide{100} << (30 + Exponent - 1)))
        --Exponent;
    // 2^(Exponent-1) <= value < 2^Exponent: a unit of the 24th bit is 2^(Exponent-24).
    const int Fraction = 24 - Exponent;
    const Wide Scaled = Wide{Percent} << Fraction;
    Wide Whole = Scaled / 100;
    const Wide Rest = Scaled % 100;
    if (Rest > 50 || (Rest == 50 && (Whole & 1) != 0))
        ++Whole;
    return Whole << (30 - Fraction);
}

TEST(SampleKernels, PresetsAreExactForEverySampleValueAndDepth) {
    const Samples In = AllValues();
    Samples Out(In.size());
    for (const std::int32_t Percent : {200, 160, 120, 85, 70, 50, 25})
        for (const std::int32_t Bits : {8, 16}) {
            const Wide Factor = SinglePercent(Percent);
            GainRun(In, Out, static_cast<double>(Factor) / 1073741824.0, Bits);
            for (std::size_t i = 0; i < In.size(); ++i)
                ASSERT_EQ(Out[i], Clipped(Nearest(Factor * In[i], 30), Bits))
                    << Percent << " % of " << In[i] << " at " << Bits;
        }
}

TEST(SampleKernels, ARampIsExactForEverySampleValue) {
    // Steps that a double holds exactly, so that whole numbers tell the result.
    const Samples In = AllValues();
    for (const std::int32_t Bits : {8, 16})
        for (const std::int32_t Before : {0, 1, 99999, 2000000000}) {
            // Start 3/4, step -5/2^40
            Samples Out(In.size());
            RampRun(In, Out, 0.75, -5.0 / 1099511627776.0, Before, Bits);
            for (std::size_t i = 0; i < In.size(); ++i) {
                const Wide Factor =
                    (Wide{3} << 38) - Wide{5} * (Wide{Before} + static_cast<Wide>(i));
                ASSERT_EQ(Out[i], Clipped(Nearest(Factor * In[i], 40), Bits)) << In[i];
            }
        }
}

TEST(SampleKernels, ARampAtAnyPlaceOfARunIsTheSame) {
    std::mt19937 Random(7);
    Samples In(5000);
    for (std::int16_t& Value : In)
        Value = static_cast<std::int16_t>(Random());
    Samples Whole(In.size());
    RampRun(In, Whole, 1.2, -0.00011, 12345, 16);
    for (const std::size_t Cut : {1U, 2U, 3U, 7U, 17U, 4096U, 4999U}) {
        Samples Parts = In; // in place
        const std::span<std::int16_t> All(Parts);
        RampRun(All.first(Cut), All.first(Cut), 1.2, -0.00011, 12345, 16);
        RampRun(All.subspan(Cut), All.subspan(Cut), 1.2, -0.00011,
                12345 + static_cast<std::int32_t>(Cut), 16);
        EXPECT_EQ(Parts, Whole) << Cut;
    }
}

TEST(SampleKernels, AProductOfALoudSampleIsClippedAndNeverWraps) {
    const Samples In = {32767, -32768, 1, -1, 0};
    Samples Out(In.size());
    GainRun(In, Out, 655340.0, 16);
    EXPECT_EQ(Out, (Samples{32767, -32768, 32767, -32768, 0}));
    RampRun(In, Out, 655340.0, 1.0, 2000000000, 8);
    EXPECT_EQ(Out, (Samples{127, -128, 127, -128, 0}));
}

TEST(SampleKernels, ThePeakIsFoundWhereverItStands) {
    EXPECT_EQ(PeakOf({}), 0);
    EXPECT_EQ(PeakOf(AllValues()), 32768);
    for (std::size_t At = 0; At < 70; ++At)
        for (const std::int16_t Value :
             {std::int16_t{-32768}, std::int16_t{32767}, std::int16_t{-5}, std::int16_t{5}}) {
            Samples In(70, 3);
            In[At] = Value;
            EXPECT_EQ(PeakOf(In), std::abs(std::int32_t{Value})) << At;
        }
}

} // namespace

} // namespace quoril::test

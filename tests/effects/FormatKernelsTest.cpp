// The arithmetic of format changes against values worked out in whole numbers and, where a product
// in double precision is told, one by one.
#include "effects/FormatKernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace quoril::test {

namespace {

using Samples = std::vector<std::int16_t>;

Samples AllValues() {
    Samples All;
    for (std::int32_t Value = -32768; Value <= 32767; ++Value)
        All.push_back(static_cast<std::int16_t>(Value));
    return All;
}

std::int32_t Limited(std::int32_t Value, std::int32_t High) {
    return std::min(std::max(Value, -High - 1), High);
}

/// A 256th to the nearest whole number, and of two the even one, by trying all that there are.
std::int32_t Narrowed(std::int32_t Value) {
    std::int32_t Best = -129;
    for (std::int32_t Each = -128; Each <= 128; ++Each) {
        const std::int32_t Off = std::abs(Value - Each * 256);
        const std::int32_t BestOff = std::abs(Value - Best * 256);
        if (Off < BestOff || (Off == BestOff && Each % 2 == 0))
            Best = Each;
    }
    return std::min(Best, 127);
}

std::int32_t Merged(std::int32_t L, std::int32_t R, std::int32_t Bits) {
    const volatile double Product = (L + R) * 0.666;
    return Limited(static_cast<std::int32_t>(std::nearbyint(Product)), Bits == 8 ? 127 : 32767);
}

void ExpectMerge(const Samples& L, const Samples& R, std::int32_t Bits) {
    Samples Out(L.size(), 99);
    MergeRun(L, R, Out, Bits);
    for (std::size_t i = 0; i < L.size(); ++i)
        ASSERT_EQ(Out[i], Merged(L[i], R[i], Bits)) << L[i] << " and " << R[i] << " at " << Bits;
}

TEST(FormatKernels, EverySampleIsMadeNarrowerExactly) {
    const Samples In = AllValues();
    Samples Out(In.size(), 99);
    NarrowRun(In, Out);
    for (std::size_t i = 0; i < In.size(); ++i)
        ASSERT_EQ(Out[i], Narrowed(In[i])) << In[i];
    EXPECT_EQ(Out.front(), -128);
    EXPECT_EQ(Out.back(), 127);
}

TEST(FormatKernels, HalvesGoToTheEvenSide) {
    const Samples In = {128, 384, 640, -128, -384, -640, 32640, 32639, -32640, -32641};
    Samples Out(In.size());
    NarrowRun(In, Out);
    EXPECT_EQ(Out, (Samples{0, 2, 2, 0, -2, -2, 127, 127, -128, -128}));
}

TEST(FormatKernels, EverySampleIsMadeWiderAndStaysWithinTheDepth) {
    const Samples In = AllValues();
    Samples Out(In.size(), 99);
    WidenRun(In, Out);
    for (std::size_t i = 0; i < In.size(); ++i)
        ASSERT_EQ(Out[i], Limited(In[i] * 256, 32767)) << In[i];
    // What a paste may have left in a document of 8 bits.
    const Samples Edge = {127, -128, 128};
    Samples Wide(3);
    WidenRun(Edge, Wide);
    EXPECT_EQ(Wide, (Samples{32512, -32768, 32767}));
}

TEST(FormatKernels, WiderAndNarrowerAgainIsTheSame) {
    Samples In;
    for (std::int32_t Value = -128; Value <= 127; ++Value)
        In.push_back(static_cast<std::int16_t>(Value));
    Samples Out = In;
    WidenRun(Out, Out); // in its place
    EXPECT_NE(Out, In);
    NarrowRun(Out, Out);
    EXPECT_EQ(Out, In);
}

TEST(FormatKernels, EveryPairOf8BitsIsMergedExactly) {
    Samples L;
    Samples R;
    for (std::int32_t A = -128; A <= 127; ++A)
        for (std::int32_t B = -128; B <= 127; ++B) {
            L.push_back(static_cast<std::int16_t>(A));
            R.push_back(static_cast<std::int16_t>(B));
        }
    ExpectMerge(L, R, 8);
}

TEST(FormatKernels, EverySumOf16BitsIsMergedExactly) {
    const Samples All = AllValues();
    // With itself, the next one and the highest and lowest beside, each sum there is comes up.
    Samples Next = All;
    std::rotate(Next.begin(), Next.begin() + 1, Next.end());
    ExpectMerge(All, All, 16);
    ExpectMerge(All, Next, 16);
    for (const std::int16_t Other : {std::int16_t{-32768}, std::int16_t{0}, std::int16_t{32767}}) {
        ExpectMerge(All, Samples(All.size(), Other), 16);
        ExpectMerge(Samples(All.size(), Other), All, 16);
    }
}

TEST(FormatKernels, RunsOfEveryLengthAreExact) {
    for (std::size_t Count = 0; Count < 70; ++Count) {
        Samples L;
        Samples R;
        for (std::size_t i = 0; i < Count; ++i) {
            L.push_back(static_cast<std::int16_t>(i * 7919U));
            R.push_back(static_cast<std::int16_t>(i * 104729U + 5U));
        }
        ExpectMerge(L, R, 16);
        Samples Out(Count, 99);
        NarrowRun(L, Out);
        for (std::size_t i = 0; i < Count; ++i)
            ASSERT_EQ(Out[i], Narrowed(L[i]));
        WidenRun(R, Out);
        for (std::size_t i = 0; i < Count; ++i)
            ASSERT_EQ(Out[i], Limited(R[i] * 256, 32767));
    }
}

} // namespace

} // namespace quoril::test

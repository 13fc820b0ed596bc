#include "audiofile/SampleForms.h"

#include "AuMaker.h"

#include <gtest/gtest.h>

#include <array>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;

/// Lengths around those of the vector registers, and one long run.
constexpr std::array<std::int32_t, 17> Lengths = {0,  1,  2,  3,  7,  8,  9,   15,  16,
                                                  17, 31, 32, 33, 63, 65, 100, 4099};

TEST(SampleForms, SixteenBitFramesAlternateLeftFirst) {
    for (const std::int32_t Count : Lengths) {
        const Samples All = test::Noise(2 * Count, 16, 1);
        const Samples Left = test::EveryOther(All, 0);
        const Samples Right = test::EveryOther(All, 1);
        Bytes Out(All.size() * 2 + 1, 0xA5);
        InterleaveSamples(Left.data(), Right.data(), Left.size(), Out.data());
        EXPECT_EQ(Out.back(), 0xA5) << "nothing is written past the end";
        Out.pop_back();
        EXPECT_EQ(Out, test::AudioBytes(All, 16)) << Count;
    }
}

TEST(SampleForms, EightBitSamplesGetTheirOffset) {
    for (const std::int32_t Count : Lengths) {
        const Samples All = test::Noise(2 * Count, 8, 2);
        Bytes Out(All.size() + 1, 0xA5);
        EXPECT_TRUE(BytesFromSamples(All.data(), All.size(), Out.data()));
        EXPECT_EQ(Out.back(), 0xA5);
        Out.pop_back();
        EXPECT_EQ(Out, test::AudioBytes(All, 8)) << Count;

        const Samples Left = test::EveryOther(All, 0);
        const Samples Right = test::EveryOther(All, 1);
        Bytes Frames(All.size() + 1, 0xA5);
        EXPECT_TRUE(InterleaveBytes(Left.data(), Right.data(), Left.size(), Frames.data()));
        EXPECT_EQ(Frames.back(), 0xA5);
        Frames.pop_back();
        EXPECT_EQ(Frames, Out) << Count;

        Samples Back(All.size());
        SamplesFromBytes(Out.data(), Out.size(), Back.data());
        EXPECT_EQ(Back, All) << Count;
    }
}

TEST(SampleForms, EverySampleOutsideEightBitsIsSeenWhereverItStands) {
    Samples Run(70, 0);
    Samples Other(70, 127);
    Bytes Out(140);
    for (std::int32_t Value = -32768; Value <= 32767; ++Value) {
        const bool Fits = Value >= -128 && Value <= 127;
        const std::size_t Where = static_cast<std::size_t>(Value + 32768) % Run.size();
        Run[Where] = static_cast<std::int16_t>(Value);
        ASSERT_EQ(BytesFromSamples(Run.data(), Run.size(), Out.data()), Fits) << Value;
        ASSERT_EQ(InterleaveBytes(Run.data(), Other.data(), Run.size(), Out.data()), Fits) << Value;
        ASSERT_EQ(InterleaveBytes(Other.data(), Run.data(), Run.size(), Out.data()), Fits) << Value;
        Run[Where] = 0;
    }
}

TEST(SampleForms, SwappedSamplesHaveTheHighByteFirst) {
    for (const std::int32_t Count : Lengths) {
        const Samples All = test::Noise(2 * Count, 16, 4);
        const Bytes Expected = test::SwappedBytes(All);
        Bytes Out(Expected.size() + 2, 0xA5);
        SwapSamples(All.data(), All.size(), Out.data() + 1);
        EXPECT_EQ(Bytes(Out.begin() + 1, Out.end() - 1), Expected) << Count;
        EXPECT_EQ(Out.back(), 0xA5) << "nothing is written past the end";
        Samples Back(All.size());
        SamplesFromSwapped(Out.data() + 1, All.size(), Back.data());
        EXPECT_EQ(Back, All) << Count;

        const Samples Left = test::EveryOther(All, 0);
        const Samples Right = test::EveryOther(All, 1);
        Bytes Frames(Expected.size() + 2, 0xA5);
        InterleaveSwapped(Left.data(), Right.data(), Left.size(), Frames.data() + 1);
        EXPECT_EQ(Frames, Out) << Count;
        Samples BackL(Left.size());
        Samples BackR(Right.size());
        DealSwapped(Frames.data() + 1, Left.size(), BackL.data(), BackR.data());
        EXPECT_EQ(BackL, Left) << Count;
        EXPECT_EQ(BackR, Right) << Count;
    }
}

TEST(SampleForms, NumbersTurnTheirBytes) {
    EXPECT_EQ(SwapInteger(0x1234), 0x3412);
    EXPECT_EQ(SwapInteger(0xFF00), 0x00FF);
    EXPECT_EQ(SwapLong(0x12345678U), 0x78563412U);
    EXPECT_EQ(SwapLong(0xFFFFFF00U), 0x00FFFFFFU);
}

TEST(SampleForms, SamplesMayLieAtOddPlaces) {
    const Samples All = test::Noise(203, 16, 3);
    Bytes Out(1 + 4 * 100);
    InterleaveSamples(All.data() + 1, All.data() + 102, 100, Out.data() + 1);
    Samples Expected;
    for (std::size_t i = 0; i < 100; ++i) {
        Expected.push_back(All[1 + i]);
        Expected.push_back(All[102 + i]);
    }
    EXPECT_EQ(Bytes(Out.begin() + 1, Out.end()), test::AudioBytes(Expected, 16));
}

} // namespace
} // namespace quoril

#include "player/SampleRing.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

namespace quoril::test {
namespace {

TEST(SampleRing, HasThePowerOfTwoThatHoldsWhatWasAsked) {
    SampleRing Ring;
    Ring.SetUp(1, 1000);
    EXPECT_EQ(Ring.Capacity(), 1024U);
    EXPECT_EQ(Ring.Room(), 1024U);
    EXPECT_EQ(Ring.Fill(), 0U);
}

TEST(SampleRing, GivesFramesOnceAndInOrderAcrossItsEnd) {
    SampleRing Ring;
    Ring.SetUp(2, 4);
    const std::array<std::int16_t, 6> First = {1, 2, 3, 4, 5, 6};
    std::array<std::int16_t, 8> Out{};
    Ring.Push(First.data(), 3);
    EXPECT_EQ(Ring.Pop(Out.data(), 2), 2U);
    Ring.Push(First.data(), 3);
    EXPECT_EQ(Ring.Room(), 0U);
    EXPECT_EQ(Ring.Pop(Out.data(), 100), 4U);
    EXPECT_EQ(Out, (std::array<std::int16_t, 8>{5, 6, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(Ring.Taken(), 6U);
    EXPECT_EQ(Ring.Given(), 6U);
}

TEST(SampleRing, ForgetsWhatWasNotTakenAndCountsOn) {
    SampleRing Ring;
    Ring.SetUp(1, 8);
    const std::array<std::int16_t, 4> In = {1, 2, 3, 4};
    std::array<std::int16_t, 4> Out{};
    Ring.Push(In.data(), 4);
    Ring.Pop(Out.data(), 1);
    Ring.Discard();
    EXPECT_EQ(Ring.Fill(), 0U);
    EXPECT_EQ(Ring.Given(), 1U);
    Ring.Push(In.data() + 2, 1);
    EXPECT_EQ(Ring.Pop(Out.data(), 4), 1U);
    EXPECT_EQ(Out[0], 3);
}

TEST(SampleRing, LosesNothingBetweenTwoThreads) {
    SampleRing Ring;
    Ring.SetUp(1, 64);
    constexpr std::uint32_t Total = 400000;
    std::thread Giver([&Ring] {
        for (std::uint32_t Next = 0; Next < Total;)
            if (Ring.Room() > 0) {
                const auto Value = static_cast<std::int16_t>(Next++ & 0x7FFFU);
                Ring.Push(&Value, 1);
            } else
                std::this_thread::yield();
    });
    std::array<std::int16_t, 16> Out{};
    std::uint32_t Wrong = 0;
    for (std::uint32_t Next = 0; Next < Total;) {
        const std::size_t Count = Ring.Pop(Out.data(), Out.size());
        for (std::size_t i = 0; i < Count; ++i)
            Wrong += Out.at(i) != static_cast<std::int16_t>(Next++ & 0x7FFFU) ? 1 : 0;
        if (Count == 0)
            std::this_thread::yield();
    }
    Giver.join();
    EXPECT_EQ(Wrong, 0U);
}

} // namespace
} // namespace quoril::test

// A line of waiting samples against a plain array.
#include "effects/DelayLine.h"

#include "effects/EffectFixture.h"

#include <algorithm>
#include <random>

namespace quoril::test {
namespace {

class DelayLineTest : public EffectTest {
  protected:
    void Put(std::size_t Count) {
        Samples Some(Count);
        for (std::int16_t& Each : Some)
            Each = static_cast<std::int16_t>(Random());
        All.insert(All.end(), Some.begin(), Some.end());
        Line.Put(Some);
    }
    [[nodiscard]] bool Right(std::int64_t From, std::size_t Count) {
        Samples Expected(Count, 0);
        for (std::size_t i = 0; i < Count; ++i)
            if (const std::int64_t Place = From + static_cast<std::int64_t>(i);
                Place >= 0 && Place < std::ssize(All))
                Expected[i] = All[static_cast<std::size_t>(Place)];
        return std::ranges::equal(Line.Get(From, Count), Expected);
    }

    std::mt19937 Random{1};
    Samples All;
    DelayLine Line;
};

TEST_F(DelayLineTest, GivesWhatWasPutAndSilenceAroundIt) {
    EXPECT_TRUE(Right(-5, 10));
    Put(100);
    EXPECT_EQ(Line.End(), 100);
    EXPECT_TRUE(Right(-50, 200));
    EXPECT_TRUE(Right(10, 20));
    EXPECT_TRUE(Right(90, 20));
    EXPECT_TRUE(Right(-100, 20));
    EXPECT_TRUE(Right(200, 20));
    EXPECT_TRUE(Right(0, 0));
}

TEST_F(DelayLineTest, GivesStretchesAcrossItsPiecesWhateverIsInMemory) {
    MemoryBudget = 600000; // of 2.4 million bytes
    for (int Time = 0; Time < 100; ++Time)
        Put(12345);
    EXPECT_LE(MemoryUsed, MemoryBudget);
    EXPECT_TRUE(Right(-100, All.size() + 200));
    for (int Time = 0; Time < 300; ++Time) {
        const auto From = static_cast<std::int64_t>(Random() % All.size()) - 50;
        EXPECT_TRUE(Right(From, Random() % 200000));
    }
}

TEST_F(DelayLineTest, WhatWasGivenUpTakesNoMemory) {
    for (int Time = 0; Time < 200; ++Time) {
        Put(10000);
        const std::int64_t Oldest = Line.End() - 400000;
        Line.Forget(Oldest);
        EXPECT_TRUE(Right(std::max<std::int64_t>(Oldest, 0), 5000));
        EXPECT_LE(MemoryUsed, 2 * (400000 + 65536));
    }
    Line.Forget(Line.End());
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_TRUE(Right(Line.End() - 1, 0));
    Put(300000);
    EXPECT_TRUE(Right(Line.End() - 300000, 300000));
}

TEST_F(DelayLineTest, WhatIsGivenUpBeforeItIsOldNeverComesToABlock) {
    for (int Time = 0; Time < 200; ++Time) {
        Put(30000);
        EXPECT_EQ(MemoryUsed, 0);
        Line.Forget(Line.End() - 20000);
        EXPECT_TRUE(Right(Line.End() - 20000, 20000));
    }
}

} // namespace
} // namespace quoril::test

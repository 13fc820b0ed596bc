#include "base/Random.h"

#include <gtest/gtest.h>
#include <vector>

namespace quoril::test {
namespace {

std::vector<double> Numbers(int Count) {
    std::vector<double> Drawn;
    for (int i = 0; i < Count; ++i)
        Drawn.push_back(RandomDraw());
    return Drawn;
}

TEST(RandomTest, EqualSeedsGiveEqualSequencesAndOthersDoNot) {
    RandomSeed(0.18);
    const std::vector<double> First = Numbers(20);
    EXPECT_NE(Numbers(20), First);
    RandomSeed(0.19);
    EXPECT_NE(Numbers(20), First);
    RandomSeed(0.18);
    EXPECT_EQ(Numbers(20), First);
}

TEST(RandomTest, NumbersAreEvenlySpreadFromZeroToBelowOne) {
    RandomSeed(5);
    std::vector<int> Tenths(10, 0);
    for (const double Number : Numbers(100000)) {
        ASSERT_GE(Number, 0.0);
        ASSERT_LT(Number, 1.0);
        ++Tenths[static_cast<std::size_t>(Number * 10)];
    }
    for (const int Count : Tenths) {
        EXPECT_GT(Count, 9600);
        EXPECT_LT(Count, 10400);
    }
}

} // namespace
} // namespace quoril::test

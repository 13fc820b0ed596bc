#include "base/Arithmetic.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

TEST(Arithmetic, RoundsToNearestWithTiesToEven) {
    EXPECT_EQ(RoundToLong(0.5), 0);
    EXPECT_EQ(RoundToLong(1.5), 2);
    EXPECT_EQ(RoundToLong(2.5), 2);
    EXPECT_EQ(RoundToLong(-0.5), 0);
    EXPECT_EQ(RoundToLong(-1.5), -2);
    EXPECT_EQ(RoundToLong(-2.5), -2);
    EXPECT_EQ(RoundToLong(0.49999999999999994), 0);
    EXPECT_EQ(RoundToLong(2147483646.5), 2147483646);
    EXPECT_EQ(RoundToLong(-2147483648.5), -2147483647 - 1);
}

TEST(Arithmetic, RoundingOutOfRangeFails) {
    EXPECT_THROW((void)RoundToLong(2147483647.5), Failure);
    EXPECT_THROW((void)RoundToLong(-2147483649.0), Failure);
    EXPECT_THROW((void)RoundToLong(std::nan("")), Failure);
    EXPECT_THROW((void)RoundToInteger(32767.5), Failure);
    EXPECT_EQ(RoundToInteger(-32768.5), -32768);
}

TEST(Arithmetic, SumsAndProductsThatOverflowFail) {
    EXPECT_EQ(AddLong(2147483646, 1), 2147483647);
    EXPECT_THROW((void)AddLong(2147483647, 1), Failure);
    EXPECT_THROW((void)SubLong(-2147483647 - 1, 1), Failure);
    EXPECT_EQ(MulLong(46341, 46340), 2147441940);
    EXPECT_THROW((void)MulLong(46341, 46341), Failure);
    EXPECT_THROW((void)ToLong(2147483648LL), Failure);
}

TEST(Arithmetic, ClipsToTheLimitsOfTheDepth) {
    EXPECT_EQ(ClipSample(40000, 16), 32767);
    EXPECT_EQ(ClipSample(-40000, 16), -32768);
    EXPECT_EQ(ClipSample(200, 8), 127);
    EXPECT_EQ(ClipSample(-200, 8), -128);
    EXPECT_EQ(ClipSample(-7, 8), -7);
}

} // namespace
} // namespace quoril

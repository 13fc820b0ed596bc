// What is set for the bands, and how it is remembered.
#include "effects/BandSet.h"

#include "settings/STD1.h"
#include "support/TestSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quoril {
namespace {

using ::testing::ElementsAre;
using Values = std::vector<std::int32_t>;

class BandSetTest : public ::testing::Test {
  protected:
    const test::TestSession Session;
};

BandSet SetOf(Values Bands) {
    BandSet Set;
    Set.NoOfBands = static_cast<std::int32_t>(Bands.size());
    Bands.insert(Bands.begin(), 0);
    Set.Bands = std::move(Bands);
    return Set;
}

Values Shaped(std::int32_t NoOfBands, BandShape Shape) {
    BandSet Set;
    BandSetResize(Set, NoOfBands);
    BandSetShape(Set, Shape);
    return {Set.Bands.begin() + 1, Set.Bands.end()};
}

TEST_F(BandSetTest, GainsRunFromNothingToFourTimes) {
    EXPECT_EQ(BandGain(-50), 0.0F);
    EXPECT_FLOAT_EQ(BandGain(0), 0.77189296F);
    EXPECT_FLOAT_EQ(BandGain(7), 1.0017668F);
    EXPECT_FLOAT_EQ(BandGain(50), 4.1557989F);
    EXPECT_EQ(BandPercent(-50), 0);
    EXPECT_EQ(BandPercent(0), 77);
    EXPECT_EQ(BandPercent(7), 100);
    EXPECT_EQ(BandPercent(50), 416);
}

TEST_F(BandSetTest, APercentageGivesTheNearestValue) {
    for (std::int32_t Value = -50; Value <= 50; ++Value)
        EXPECT_EQ(BandPercent(BandValueOfPercent(BandPercent(Value))), BandPercent(Value));
    EXPECT_EQ(BandValueOfPercent(100), 7);
    EXPECT_EQ(BandValueOfPercent(102), 7); // 8 has 104 %
    EXPECT_EQ(BandValueOfPercent(-1000000), -50);
    EXPECT_EQ(BandValueOfPercent(2000000000), 50);
}

TEST_F(BandSetTest, WithoutSettingsEightBandsAreNeutralAndFourAreStopped) {
    EXPECT_EQ(BandSetRead(), SetOf(Values(8, 7)));
    EXPECT_THAT(BandStopRead(),
                ElementsAre(false, false, false, false, true, true, false, false, true));
}

TEST_F(BandSetTest, WhatWasWrittenIsRead) {
    BandSetWrite(SetOf({-50, 0, 50}));
    EXPECT_EQ(IniGet("Effects", "Equalizer", ""), "3,-50,0,50");
    EXPECT_EQ(BandSetRead(), SetOf({-50, 0, 50}));
    BandStopWrite({false, true, false});
    EXPECT_EQ(IniGet("Effects", "EqBandStop", ""), "2,1,0");
    EXPECT_THAT(BandStopRead(), ElementsAre(false, true, false));
}

TEST_F(BandSetTest, AHundredBandsAreReadWhole) {
    BandSetWrite(SetOf(Values(100, -49)));
    EXPECT_EQ(BandSetRead(), SetOf(Values(100, -49)));
}

TEST_F(BandSetTest, MissingValuesReadAsNothing) {
    IniPut("Effects", "Equalizer", "4,9,8");
    EXPECT_EQ(BandSetRead(), SetOf({9, 8, 0, 0}));
    IniPut("Effects", "Equalizer", "3,,5,");
    EXPECT_EQ(BandSetRead(), SetOf({0, 5, 0}));
    IniPut("Effects", "EqBandStop", "3,1");
    EXPECT_THAT(BandStopRead(), ElementsAre(false, true, false, false));
}

TEST_F(BandSetTest, SuperfluousValuesAreDropped) {
    IniPut("Effects", "Equalizer", "2,1,2,3,4");
    EXPECT_EQ(BandSetRead(), SetOf({1, 2}));
}

TEST_F(BandSetTest, ValuesAreHeldWithinTheirRange) {
    IniPut("Effects", "Equalizer", "3,51,-51,999999999999999999999999");
    EXPECT_EQ(BandSetRead(), SetOf({50, -50, 50}));
}

TEST_F(BandSetTest, AbsurdCountsAreEight) {
    for (const char* Count : {"", "x", "1", "0", "-3", "101", "99999999999999999999", "nan"}) {
        IniPut("Effects", "Equalizer", std::string(Count) + ",5,6");
        IniPut("Effects", "EqBandStop", std::string(Count) + ",1");
        EXPECT_EQ(BandSetRead(), SetOf({5, 6, 0, 0, 0, 0, 0, 0})) << Count;
        EXPECT_EQ(BandStopRead().size(), 9U) << Count;
    }
}

TEST_F(BandSetTest, NewBandsAreNeutral) {
    BandSet Set = SetOf({1, 2});
    BandSetResize(Set, 4);
    EXPECT_EQ(Set, SetOf({1, 2, 7, 7}));
    BandSetResize(Set, 1);
    EXPECT_EQ(Set, SetOf({1}));
}

TEST_F(BandSetTest, StoppedBandsAreCutAndTheOthersNeutral) {
    EXPECT_EQ(BandSetOfStops({false, true, false, true}), SetOf({-50, 7, -50}));
}

TEST_F(BandSetTest, TheFourShapes) {
    EXPECT_THAT(Shaped(5, BandShape::MiddleLow), ElementsAre(50, 0, -50, 0, 50));
    EXPECT_THAT(Shaped(5, BandShape::MiddleHigh), ElementsAre(-50, 0, 50, 0, -50));
    EXPECT_THAT(Shaped(5, BandShape::Increasing), ElementsAre(-50, -25, 0, 25, 50));
    EXPECT_THAT(Shaped(5, BandShape::Decreasing), ElementsAre(50, 25, 0, -25, -50));
    // The middle of eight is the fourth: 4.5 rounded to even. 16.67 and 37.5 on the way.
    EXPECT_THAT(Shaped(8, BandShape::MiddleLow), ElementsAre(50, 17, -17, -50, -25, 0, 25, 50));
    EXPECT_THAT(Shaped(8, BandShape::MiddleHigh), ElementsAre(-50, -17, 17, 50, 25, 0, -25, -50));
    EXPECT_THAT(Shaped(2, BandShape::MiddleLow), ElementsAre(50, -50));
    EXPECT_THAT(Shaped(2, BandShape::MiddleHigh), ElementsAre(-50, 50));
    EXPECT_THAT(Shaped(2, BandShape::Increasing), ElementsAre(-50, 50));
    EXPECT_THAT(Shaped(9, BandShape::Increasing),
                ElementsAre(-50, -38, -25, -12, 0, 12, 25, 38, 50)); // 37.5 and 12.5 to even
}

TEST_F(BandSetTest, ReverseInvertAndNeutral) {
    BandSet Set = SetOf({1, 2, 3});
    BandSetReverse(Set);
    EXPECT_EQ(Set, SetOf({3, 2, 1}));
    BandSetInvert(Set);
    EXPECT_EQ(Set, SetOf({-3, -2, -1}));
    BandSetNeutral(Set);
    EXPECT_EQ(Set, SetOf({7, 7, 7}));
}

} // namespace
} // namespace quoril

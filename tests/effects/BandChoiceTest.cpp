// The choice of bands until it is accepted, and where it stands in a picture.
#include "effects/BandChoice.h"

#include "effects/BandPicture.h"
#include "settings/STD1.h"
#include "support/TestSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

class BandChoiceTest : public ::testing::Test {
  protected:
    const TestSession Session;
};

TEST_F(BandChoiceTest, EachModeBeginsWithItsOwnSettings) {
    IniPut("Effects", "Equalizer", "3,-5,6,51");
    IniPut("Effects", "EqBandStop", "5,1,0,0,1");
    const BandChoice Equalizer = BandChoice::Read(EqualizerMode);
    EXPECT_EQ(Equalizer.NoOfBands(), 3);
    EXPECT_THAT(Equalizer.EqBands.Bands, ElementsAre(0, -5, 6, 50));
    const BandChoice Filter = BandChoice::Read(BandPassMode);
    EXPECT_EQ(Filter.NoOfBands(), 5);
    EXPECT_THAT(Filter.BandStop, ElementsAre(false, true, false, false, true, false));
}

TEST_F(BandChoiceTest, AnotherNumberOfBandsKeepsWhatThereWas) {
    BandChoice Choice = BandChoice::Read(EqualizerMode);
    (void)Choice.SetValue(2, -20);
    Choice.Toggle(1);
    EXPECT_TRUE(Choice.SetNoOfBands(10));
    EXPECT_EQ(Choice.Value(2), -20);
    EXPECT_EQ(Choice.Value(10), 7);
    EXPECT_TRUE(Choice.Stopped(1));
    EXPECT_FALSE(Choice.Stopped(10));
    for (const std::int32_t Count : {-1, 0, 1, 10, 51, 1000})
        EXPECT_FALSE(Choice.SetNoOfBands(Count)) << Count;
    EXPECT_EQ(Choice.NoOfBands(), 10);
    EXPECT_TRUE(Choice.SetNoOfBands(2));
    EXPECT_TRUE(Choice.SetNoOfBands(50));
}

TEST_F(BandChoiceTest, ValuesAreHeldWithinTheirRange) {
    BandChoice Choice = BandChoice::Read(EqualizerMode);
    EXPECT_TRUE(Choice.SetValue(1, 60));
    EXPECT_EQ(Choice.Value(1), 50);
    EXPECT_FALSE(Choice.SetValue(1, 51));
    EXPECT_TRUE(Choice.SetValue(1, -60));
    EXPECT_EQ(Choice.Value(1), -50);
}

TEST_F(BandChoiceTest, WhatIsHandedOverIsWithinTheRangeWhateverWasSet) {
    BandChoice Choice = BandChoice::Read(EqualizerMode);
    (void)Choice.SetNoOfBands(3);
    Choice.EqBands.Bands = {0, 51, -51, 1000};
    Choice.Accept();
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, 50, -50, 50));
    EXPECT_EQ(IniGet("Effects", "Equalizer", ""), "3,50,-50,50");
}

TEST_F(BandChoiceTest, AcceptedItIsHandedOverAndRemembered) {
    BandChoice Choice = BandChoice::Read(EqualizerMode);
    (void)Choice.SetNoOfBands(2);
    (void)Choice.SetValue(1, -3);
    Choice.Accept();
    EXPECT_EQ(EqBandSet.NoOfBands, 2);
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, -3, 7));
    EXPECT_EQ(IniGet("Effects", "Equalizer", ""), "2,-3,7");
    EXPECT_EQ(IniGet("Effects", "EqBandStop", "none"), "none");
    BandChoice Filter = BandChoice::Read(BandPassMode);
    Filter.Accept();
    EXPECT_THAT(EqBandSet.Bands, ElementsAre(0, 7, 7, 7, -50, -50, 7, 7, -50));
    EXPECT_EQ(IniGet("Effects", "EqBandStop", ""), "8,0,0,0,1,1,0,0,1");
    EXPECT_EQ(IniGet("Effects", "Equalizer", ""), "2,-3,7");
}

TEST(BandPictureTest, ColumnsShareTheWidth) {
    const BandPicture Picture = {652, 320, 8};
    EXPECT_EQ(Picture.BandAt(0), 1); // 0.5 goes to 0, and there is none before the first
    EXPECT_EQ(Picture.BandAt(81), 1);
    EXPECT_EQ(Picture.BandAt(82), 2);
    EXPECT_EQ(Picture.BandAt(651), 8);
    EXPECT_EQ(Picture.BandAt(9999), 8);
    EXPECT_EQ(Picture.BandAt(-9999), 1);
    EXPECT_EQ(Picture.Left(1), 0);
    EXPECT_EQ(Picture.Left(2), 82); // 81.5
    EXPECT_EQ(Picture.Left(9), 652);
}

TEST(BandPictureTest, ValuesAndRowsGoTogether) {
    const BandPicture Picture = {100, 308, 8}; // three rows for each step
    EXPECT_EQ(Picture.RowOf(50), 3);
    EXPECT_EQ(Picture.RowOf(7), 132);
    EXPECT_EQ(Picture.RowOf(-50), 303);
    for (std::int32_t Value = -50; Value <= 50; ++Value)
        EXPECT_EQ(Picture.ValueAt(Picture.RowOf(Value)), Value);
    EXPECT_EQ(Picture.ValueAt(0), 50);
    EXPECT_EQ(Picture.ValueAt(307), -50);
    EXPECT_EQ(Picture.ValueAt(-500), 50);
    EXPECT_EQ(Picture.ValueAt(5000), -50);
}

TEST(BandPictureTest, TheHighestFrequencyIsShownAs20000) {
    EXPECT_THAT(ShownFrequencies(8), ElementsAre(0, 20, 52, 140, 384, 1032, 2776, 7452, 20000));
    EXPECT_THAT(ShownFrequencies(2), ElementsAre(0, 20, 20000));
}

} // namespace
} // namespace quoril::test

#include "selection/DurationText.h"

#include "base/Failure.h"
#include "selection/DurationEntry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace quoril {
namespace {

struct DurationRow {
    float Seconds;
    const char* Text;
};

TEST(FormatDuration, WritesAsFewPartsAsTheTimeNeeds) {
    const DurationRow Rows[] = {
        {5.0F, "05"},
        {65.5F, "01:05.50"},
        {3605.0F, "1:00:05"},
        {0.0F, "00"},
        {0.5F, "00.50"},
        {9.99F, "09.99"},
        {10.1F, "10.10"},
        {59.99F, "59.99"},
        {60.0F, "01:00"},
        {61.25F, "01:01.25"},
        {600.0F, "10:00"},
        {3599.0F, "59:59"},
        {3600.0F, "1:00:00"},
        {3660.5F, "1:01:00.50"},
        {36000.0F, "10:00:00"},
        {360000.0F, "100:00:00"},
        {2147483.75F, "596:31:23.75"},
    };
    for (const DurationRow& Row : Rows)
        EXPECT_EQ(FormatDuration(Row.Seconds), Row.Text) << Row.Seconds;
}

TEST(FormatDuration, RoundsToHundredthsBeforeItSplits) {
    EXPECT_EQ(FormatDuration(59.999F), "01:00");
    EXPECT_EQ(FormatDuration(3599.999F), "1:00:00");
    EXPECT_EQ(FormatDuration(0.994F), "00.99");
    EXPECT_EQ(FormatDuration(0.996F), "01");
    EXPECT_EQ(FormatDuration(59.994F), "59.99");
}

TEST(FormatDuration, RoundsTiesToEven) {
    EXPECT_EQ(FormatDuration(0.125F), "00.12");
    EXPECT_EQ(FormatDuration(0.375F), "00.38");
    EXPECT_EQ(FormatDuration(0.625F), "00.62");
    EXPECT_EQ(FormatDuration(0.875F), "00.88");
}

TEST(FormatDuration, WritesTimesBelowZeroInSecondsAlone) {
    EXPECT_EQ(FormatDuration(-0.5F), "-00.50");
    EXPECT_EQ(FormatDuration(-65.5F), "-65.50");
    EXPECT_EQ(FormatDuration(-0.001F), "00");
    EXPECT_FLOAT_EQ(ParseDuration(FormatDuration(-4000.25F)), -4000.25F);
}

TEST(FormatDuration, FailsForTimesWithoutText) {
    EXPECT_THROW((void)FormatDuration(std::nanf("")), Failure);
    EXPECT_THROW((void)FormatDuration(std::numeric_limits<float>::infinity()), Failure);
    EXPECT_THROW((void)FormatDuration(-std::numeric_limits<float>::infinity()), Failure);
    EXPECT_THROW((void)FormatDuration(std::numeric_limits<float>::max()), Failure);
    EXPECT_EQ(FormatDuration(7.0e12F).substr(0, 5), "19444");
}

TEST(ParseDuration, ReadsHoursMinutesAndSeconds) {
    EXPECT_FLOAT_EQ(ParseDuration(""), 0.0F);
    EXPECT_FLOAT_EQ(ParseDuration("5"), 5.0F);
    EXPECT_FLOAT_EQ(ParseDuration("5.25"), 5.25F);
    EXPECT_FLOAT_EQ(ParseDuration("90"), 90.0F);
    EXPECT_FLOAT_EQ(ParseDuration("1:05.5"), 65.5F);
    EXPECT_FLOAT_EQ(ParseDuration("01:05.50"), 65.5F);
    EXPECT_FLOAT_EQ(ParseDuration("1:00:05"), 3605.0F);
    EXPECT_FLOAT_EQ(ParseDuration("1.5:0"), 90.0F);
    EXPECT_FLOAT_EQ(ParseDuration("0:90:90"), 5490.0F);
}

TEST(ParseDuration, ReadsJunkAsNothingAndIgnoresFurtherParts) {
    EXPECT_FLOAT_EQ(ParseDuration("abc"), 0.0F);
    EXPECT_FLOAT_EQ(ParseDuration("x:7"), 7.0F);
    EXPECT_FLOAT_EQ(ParseDuration("2:"), 120.0F);
    EXPECT_FLOAT_EQ(ParseDuration(":"), 0.0F);
    EXPECT_FLOAT_EQ(ParseDuration(":::"), 0.0F);
    EXPECT_FLOAT_EQ(ParseDuration("1:2:3:4"), 3723.0F);
    EXPECT_FLOAT_EQ(ParseDuration("1:2:3:4:5:6"), 3723.0F);
    EXPECT_FLOAT_EQ(ParseDuration("12s:30s"), 750.0F);
    EXPECT_FLOAT_EQ(ParseDuration(" 7 "), 7.0F);
}

TEST(ParseDuration, SumsThePartsWithTheirSigns) {
    EXPECT_FLOAT_EQ(ParseDuration("-5"), -5.0F);
    EXPECT_FLOAT_EQ(ParseDuration("-1:30"), -30.0F);
    EXPECT_FLOAT_EQ(ParseDuration("1:-30"), 30.0F);
}

TEST(ParseDuration, FailsBeyondSinglePrecision) {
    EXPECT_THROW((void)ParseDuration("1e200"), Failure);
    EXPECT_THROW((void)ParseDuration("1e300:1e308:0"), Failure);
}

TEST(FormatSamples, DividesThePositionByTheRateAsItStands) {
    EXPECT_EQ(FormatSamples(44100, 44100), "01");
    EXPECT_EQ(FormatSamples(1, 1000), "00");
    EXPECT_EQ(FormatSamples(16, 1000), "00.02");
    // In single precision 0.015 lies just below the tie.
    EXPECT_EQ(FormatSamples(15, 1000), "00.01");
    EXPECT_EQ(FormatSamples(2147483647, 1000), "596:31:23.75");
    EXPECT_THROW((void)FormatSamples(1, 0), Failure);
}

TEST(EntDur, TheSamplesFollowTheTime) {
    EXPECT_EQ(EntDurSamplesFollow("1:00", 44100), "2646000");
    EXPECT_EQ(EntDurSamplesFollow("0.5", 11025), "5512");
    EXPECT_EQ(EntDurSamplesFollow("", 44100), "0");
    EXPECT_EQ(EntDurSamplesFollow("-2", 1000), "-2000");
    EXPECT_EQ(EntDurSamplesFollow("-0.0001", 1000), "0");
}

/// The box of the samples is the result: it must never keep the number of what was typed before.
TEST(EntDur, ATimeBeyondAllSamplesGivesNoNumberOfSamplesThatIsTaken) {
    EXPECT_EQ(EntDurSamplesFollow("99999", 44100), "4409955900");
    EXPECT_EQ(EntDurSamplesFollow("-99999", 44100), "-4409955900");
    EXPECT_THROW((void)EntDurSamples(EntDurSamplesFollow("99999", 44100)), Failure);
    EXPECT_THROW((void)EntDurSamples(EntDurSamplesFollow("99999999999999", 44100)), Failure);
    EXPECT_EQ(EntDurSamplesFollow("1e300", 44100), "");
}

TEST(EntDur, TheTimeFollowsTheSamples) {
    EXPECT_EQ(EntDurTimeFollow("2646000", 44100), "01:00");
    EXPECT_EQ(EntDurTimeFollow("", 44100), "00");
    EXPECT_EQ(EntDurTimeFollow("22050abc", 44100), "00.50");
    EXPECT_EQ(EntDurTimeFollow("-22050", 44100), "-00.50");
    EXPECT_EQ(EntDurTimeFollow("1e300", 44100), "");
}

TEST(EntDur, TheResultIsTheRoundedLeadingNumber) {
    EXPECT_EQ(EntDurSamples("12.5 samples"), 12);
    EXPECT_EQ(EntDurSamples("13.5"), 14);
    EXPECT_EQ(EntDurSamples("none"), 0);
    EXPECT_THROW((void)EntDurSamples("2147483648"), Failure);
    EXPECT_EQ(EntDurNumber("2147483648"), 2147483648.0);
}

TEST(EntDur, ARequestFillsLabelsAndBoxes) {
    const EntDurRequest Request = EntDurFor(22050, 11025, 11025);
    EXPECT_EQ(Request.CurSizeDur, "02");
    EXPECT_EQ(Request.CurSizeSmp, "22050");
    EXPECT_EQ(Request.EnterDur, "01");
    EXPECT_EQ(Request.EnterSmp, "11025");
    EXPECT_EQ(Request.Freq, 11025);
    EXPECT_EQ(Request.Caption, "Change Size");
    EXPECT_EQ(Request.RefSize, "Current File Size:");
}

TEST(EntDur, WithoutAWindowEveryEntryIsCancelled) {
    EXPECT_FALSE(EntDurAsk({}).OkClicked);
}

} // namespace
} // namespace quoril

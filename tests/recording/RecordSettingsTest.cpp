#include "recording/RecordSettings.h"

#include "settings/STD1.h"
#include "support/TestSession.h"

#include <cmath>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

class RecordSettingsTest : public ::testing::Test {
  protected:
    static float Read(const char* Key, const char* Value, float RecordChoices::*Place) {
        IniPut("Record", Key, Value);
        return RecordSettingsRead().Choices.*Place;
    }
    const TestSession Session;
};

TEST_F(RecordSettingsTest, WithoutAFileTheDefaultsHold) {
    const RecordSettings Found = RecordSettingsRead();
    EXPECT_EQ(Found.Choices, RecordChoices());
    EXPECT_EQ(Found.Choices.RecordTime, 300);
    EXPECT_EQ(Found.Choices.StopTime, 30);
    EXPECT_EQ(Found.Choices.PauseTime, 30);
    EXPECT_EQ(Found.Choices.Silenthreshold, 0.10F);
    EXPECT_FALSE(Found.Choices.StopAftRec || Found.Choices.StopIfSilen ||
                 Found.Choices.PauseIfSilen || Found.Choices.ContnIfNoSilen);
    EXPECT_EQ(Found.Dx7Div, 0);
    EXPECT_EQ(Found.ApiDiv, 0);
}

TEST_F(RecordSettingsTest, WhatIsWrittenIsReadBack) {
    RecordSettings Kept;
    Kept.Choices = {true, false, true, true, 7200, 12.5F, 3600, 0.37F};
    Kept.Dx7Div = 3;
    Kept.ApiDiv = 1;
    RecordSettingsWrite(Kept);
    const RecordSettings Found = RecordSettingsRead();
    EXPECT_EQ(Found.Choices, Kept.Choices);
    EXPECT_EQ(Found.Dx7Div, 3);
    EXPECT_EQ(Found.ApiDiv, 1);
    EXPECT_EQ(IniGet("Record", "StopAfterRecfor", ""), "1");
    EXPECT_EQ(IniGet("Record", "StopIfSilentfor", ""), "0");
    EXPECT_EQ(IniGet("Record", "PauseIfSilentfor", ""), "1");
    EXPECT_EQ(IniGet("Record", "ContinWhenNotSilen", ""), "1");
    EXPECT_EQ(IniGet("Record", "RecordTime", ""), "7200");
    EXPECT_EQ(IniGet("Record", "StopTime", ""), "12.5");
    EXPECT_EQ(IniGet("Record", "Silenthreshold", ""), "0.37");
    EXPECT_EQ(IniGet("Record", "Dx7Div", ""), "3");
}

TEST_F(RecordSettingsTest, NumbersOutsideTheirLimitsAreBroughtInside) {
    struct Row {
        const char* Value;
        float RecordTime;
        float StopTime;
    };
    for (const Row& Each :
         {Row{"0.99", 300, 30}, Row{"1", 1, 1}, Row{"-5", 300, 30}, Row{"junk", 300, 30},
          Row{"", 300, 30}, Row{"3600", 3600, 3600}, Row{"3601", 3601, 3600},
          Row{"86399", 86399, 3600}, Row{"86400", 86400, 3600}, Row{"1e300", 86400, 3600},
          Row{"99999999999999999999999", 86400, 3600}}) {
        EXPECT_EQ(Read("RecordTime", Each.Value, &RecordChoices::RecordTime), Each.RecordTime)
            << Each.Value;
        EXPECT_EQ(Read("StopTime", Each.Value, &RecordChoices::StopTime), Each.StopTime)
            << Each.Value;
        EXPECT_EQ(Read("PauseTime", Each.Value, &RecordChoices::PauseTime), Each.StopTime)
            << Each.Value;
    }
    for (const char* Value : {"2", "-1", "yes", ""}) {
        IniPut("Record", "StopIfSilentfor", Value);
        EXPECT_FALSE(RecordSettingsRead().Choices.StopIfSilen) << Value;
    }
    EXPECT_EQ(Read("Silenthreshold", "0.009", &RecordChoices::Silenthreshold), 0.01F);
    EXPECT_EQ(Read("Silenthreshold", "-1", &RecordChoices::Silenthreshold), 0.01F);
    EXPECT_EQ(Read("Silenthreshold", "1.5", &RecordChoices::Silenthreshold), 1.0F);
    EXPECT_EQ(Read("Silenthreshold", "1e99", &RecordChoices::Silenthreshold), 1.0F);
    EXPECT_EQ(Read("Silenthreshold", "0.5", &RecordChoices::Silenthreshold), 0.5F);
    for (const char* Value : {"-3", "junk", "1e30", "99999999999"}) {
        IniPut("Record", "Dx7Div", Value);
        EXPECT_EQ(RecordSettingsRead().Dx7Div, 0) << Value;
    }
}

TEST_F(RecordSettingsTest, TypedTimesAreLimited) {
    EXPECT_EQ(RecordTimeTyped("2:00:00", MostRecordTime), 7200);
    EXPECT_EQ(RecordTimeTyped("90", MostRecordTime), 90);
    EXPECT_EQ(RecordTimeTyped("1:30", MostSilenceTime), 90);
    for (const char* Little : {"0.5", "0", "", "junk", "-10", "-1e300", "-99999999999999999999"})
        EXPECT_EQ(RecordTimeTyped(Little, MostRecordTime), 1) << Little;
    for (const char* Much : {"24:00:00", "24:00:01", "1e9", "1e300", "99999999999999999999:0:0"}) {
        EXPECT_EQ(RecordTimeTyped(Much, MostRecordTime), 86400) << Much;
        EXPECT_EQ(RecordTimeTyped(Much, MostSilenceTime), 3600) << Much;
    }
}

TEST_F(RecordSettingsTest, TheSliderCountsHundredths) {
    for (int Position = 1; Position <= 100; ++Position)
        EXPECT_EQ(SilenthresPosition(static_cast<float>(Position) / 100), Position);
    EXPECT_EQ(SilenthresPosition(0), 1);
}

} // namespace
} // namespace quoril::test

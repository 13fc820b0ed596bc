// The echo's fields as texts, and what is remembered of them.
#include "effects/EchoParams.h"

#include "settings/STD1.h"
#include "support/TestSession.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace quoril::test {
namespace {

enum Field : std::size_t { First, Next, Repeats, OverAll, Variation, HiFi };

class EchoParamsTest : public ::testing::Test {
  protected:
    /// What a field shows when a text was left in it.
    static std::string Left(Field In, const std::string& Text) {
        EchoParamsRec Params;
        EchoFieldTake(Params, In, Text);
        EchoTexts Others = EchoTextsOf(Params);
        const std::string Shown = Others.at(In);
        Others.at(In) = EchoTextsOf({}).at(In);
        EXPECT_EQ(Others, EchoTextsOf({})) << "another field has changed";
        return Shown;
    }
    static EchoTexts ReadOf(const std::string& Setting) {
        IniPut("Effects", "Echo", Setting);
        return EchoTextsOf(EchoSettingRead());
    }

    const TestSession Session;
    const EchoTexts AtFirst{"0.08", "0.06", "5", "80", "10", "100"};
};

TEST_F(EchoParamsTest, TheFirstValuesAreShown) {
    EXPECT_EQ(EchoTextsOf({}), AtFirst);
    EXPECT_EQ(EchoTextsOf(EchoSettingRead()), AtFirst);
}

TEST_F(EchoParamsTest, ValuesInTheirRangeAreTaken) {
    for (const Field In : {First, Next}) {
        EXPECT_EQ(Left(In, "100"), "100");
        EXPECT_EQ(Left(In, "0.001"), "0.001");
        EXPECT_EQ(Left(In, " 1.50 "), "1.5");
        EXPECT_EQ(Left(In, "1e-3"), "0.001");
    }
    EXPECT_EQ(Left(Repeats, "1"), "1");
    EXPECT_EQ(Left(Repeats, "100"), "100");
    EXPECT_EQ(Left(Variation, "0"), "0");
    EXPECT_EQ(Left(Variation, "100"), "100");
    for (const Field In : {OverAll, HiFi}) {
        EXPECT_EQ(Left(In, "1"), "1");
        EXPECT_EQ(Left(In, "200"), "200");
    }
}

TEST_F(EchoParamsTest, ValuesOutOfTheirRangeArePutBack) {
    const std::array<Field, 6> All = {First, Next, Repeats, OverAll, Variation, HiFi};
    for (const Field In : All)
        for (const char* Wrong : {"-1", "201", "", "abc", "5x", "1e309", "nan", "inf", "0,5"})
            EXPECT_EQ(Left(In, Wrong), AtFirst.at(In)) << Wrong;
    for (const Field In : {First, Next}) {
        EXPECT_EQ(Left(In, "0"), AtFirst.at(In));
        EXPECT_EQ(Left(In, "100.01"), AtFirst.at(In));
        EXPECT_EQ(Left(In, "1e-60"), AtFirst.at(In)); // nothing in single precision
    }
    for (const Field In : {Repeats, OverAll, HiFi}) {
        EXPECT_EQ(Left(In, "0"), AtFirst.at(In));
        EXPECT_EQ(Left(In, "0.9"), AtFirst.at(In));
    }
    EXPECT_EQ(Left(Repeats, "101"), "5");
    EXPECT_EQ(Left(Variation, "101"), "10");
    EXPECT_EQ(Left(OverAll, "200.1"), "80");
}

TEST_F(EchoParamsTest, NumbersAreRoundedToWholeOnesTiesToEven) {
    EXPECT_EQ(Left(Repeats, "6.5"), "6");
    EXPECT_EQ(Left(Repeats, "7.5"), "8");
    EXPECT_EQ(Left(HiFi, "99.4"), "99");
}

TEST_F(EchoParamsTest, DelaysAreKeptInSinglePrecision) {
    EchoParamsRec Params;
    EchoFieldTake(Params, First, "0.12345678912345");
    EXPECT_EQ(Params.FirstDelay, 0.12345678912345F);
    EXPECT_EQ(EchoTextsOf(Params)[First], "0.12345679");
}

TEST_F(EchoParamsTest, WhatIsWrittenIsReadTheNextTime) {
    const EchoTexts Texts{"0.25", "1.5", "12", "95", "0", "42"};
    EchoSettingWrite(Texts);
    EXPECT_EQ(IniGet("Effects", "Echo", ""), "0.25,1.5,12,95,0,42");
    EXPECT_EQ(EchoTextsOf(EchoSettingRead()), Texts);
}

TEST_F(EchoParamsTest, TheLongestValuesAreReadWhole) {
    const float Smallest = std::numeric_limits<float>::min();
    EchoSettingWrite(EchoTextsOf({Smallest, Smallest, 100, 200, 100, 200}));
    EXPECT_EQ(EchoSettingRead(), (EchoParamsRec{Smallest, Smallest, 100, 200, 100, 200}));
}

TEST_F(EchoParamsTest, ADamagedSettingGivesEachFieldItsFirstValue) {
    EXPECT_EQ(ReadOf(""), AtFirst);
    EXPECT_EQ(ReadOf("abc"), AtFirst);
    EXPECT_EQ(ReadOf("0.5"), (EchoTexts{"0.5", "0.06", "5", "80", "10", "100"}));
    EXPECT_EQ(ReadOf("0,101,7,0,101,150"), (EchoTexts{"0.08", "0.06", "7", "80", "10", "150"}));
    EXPECT_EQ(ReadOf(",,,,,"), AtFirst);
    EXPECT_EQ(ReadOf("1,2,3,4,5,6,7,8"), (EchoTexts{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(ReadOf(std::string(5000, ',')), AtFirst);
}

} // namespace
} // namespace quoril::test

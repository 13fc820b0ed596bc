// What the user may set for the shortening of silence: settings, fields and problems.
#include "effects/DelSilenChoice.h"

#include "settings/STD1.h"
#include "support/TestSession.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <optional>

namespace quoril::test {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

class DelSilenChoiceTest : public ::testing::Test {
  protected:
    /// What a stored text is read as.
    static DelSilenChoice With(const char* Key, const std::string& Text) {
        IniPut("DelSilenFrm", Key, Text);
        return DelSilenSettingsRead();
    }
    static std::string Stored(const char* Key) { return IniGet("DelSilenFrm", Key, "none"); }

    const TestSession Session;
};

TEST_F(DelSilenChoiceTest, WithoutSettingsEverythingHasItsDefault) {
    const DelSilenChoice Choice = DelSilenSettingsRead();
    EXPECT_EQ(Choice.SilenVol, 1);
    EXPECT_EQ(Choice.SilenDur, 0.1);
    EXPECT_EQ(Choice.SilenDelStyl, 1);
    EXPECT_EQ(Choice.BalDur, 1);
    EXPECT_EQ(Choice.BalPer, 30);
    EXPECT_EQ(Choice.BalMin, 0);
    EXPECT_EQ(Choice.BalMax, 100);
}

TEST_F(DelSilenChoiceTest, AbsurdSettingsBecomeWhatIsSaidForThem) {
    struct Row {
        const char* Key;
        double DelSilenChoice::*Value;
        double Low;
        double Otherwise;
    };
    for (const Row& Each : {Row{"SilenceVol", &DelSilenChoice::SilenVol, 0, 1},
                            Row{"SilenceDur", &DelSilenChoice::SilenDur, 0.025, 0.1},
                            Row{"SilenBalDur", &DelSilenChoice::BalDur, 0, 1},
                            Row{"SilenBalPer", &DelSilenChoice::BalPer, 0, 30},
                            Row{"SilenMinDur", &DelSilenChoice::BalMin, 0, 0},
                            Row{"SilenMaxDur", &DelSilenChoice::BalMax, 0.025, 60}}) {
        for (const char* Text : {"-0.001", "-5", "100.001", "1e300", "1e999", "nan", "inf", "abc",
                                 "", "12,5", "0x10", "99999999999999999999999999999999999999"})
            EXPECT_EQ(With(Each.Key, Text).*Each.Value, Each.Otherwise) << Each.Key << Text;
        EXPECT_EQ(With(Each.Key, "100").*Each.Value, 100) << Each.Key;
        EXPECT_EQ(With(Each.Key, " 7.25 ").*Each.Value, 7.25) << Each.Key;
        EXPECT_EQ(With(Each.Key, std::to_string(Each.Low)).*Each.Value, Each.Low) << Each.Key;
        EXPECT_EQ(With(Each.Key, "0.024").*Each.Value, Each.Low > 0 ? Each.Otherwise : 0.024);
    }
    for (const char* Text : {"0", "3", "-1", "", "two", "1e99"})
        EXPECT_EQ(With("SilenDelSty", Text).SilenDelStyl, 1) << Text;
    EXPECT_EQ(With("SilenDelSty", "2").SilenDelStyl, 2);
}

TEST_F(DelSilenChoiceTest, SettingsAreWrittenAsPlainNumbers) {
    const DelSilenChoice Choice = {2.5, 0.1, 2, 30, 0, 0.025, 99.99};
    DelSilenSettingsWrite(Choice);
    EXPECT_EQ(Stored("SilenceVol"), "2.5");
    EXPECT_EQ(Stored("SilenceDur"), "0.1");
    EXPECT_EQ(Stored("SilenDelSty"), "2");
    EXPECT_EQ(Stored("SilenBalDur"), "30");
    EXPECT_EQ(Stored("SilenBalPer"), "0");
    EXPECT_EQ(Stored("SilenMinDur"), "0.025");
    EXPECT_EQ(Stored("SilenMaxDur"), "99.99");
    EXPECT_EQ(DelSilenSettingsRead(), Choice);
}

TEST_F(DelSilenChoiceTest, EveryProblemIsToldInItsWords) {
    struct Row {
        std::int16_t Style; ///< 0: in both
        double DelSilenChoice::*Value;
        double Number;
        const char* Problem;
    };
    const auto Vol = "Volume threshold percentage should be between 0 and 100";
    const auto Dur = "Duration threshold should be between 0.025 and 100 seconds";
    const std::vector<Row> Rows = {
        {0, &DelSilenChoice::SilenVol, -0.01, Vol},
        {0, &DelSilenChoice::SilenVol, 100.01, Vol},
        {0, &DelSilenChoice::SilenVol, NaN, Vol},
        {0, &DelSilenChoice::SilenVol, 0, ""},
        {0, &DelSilenChoice::SilenVol, 100, ""},
        {0, &DelSilenChoice::SilenDur, 0.0249, Dur},
        {0, &DelSilenChoice::SilenDur, 100.01, Dur},
        {0, &DelSilenChoice::SilenDur, NaN, Dur},
        {0, &DelSilenChoice::SilenDur, 0.025, ""},
        {0, &DelSilenChoice::SilenDur, 100, ""},
        {1, &DelSilenChoice::BalDur, -0.01, "Balance duration can not be less then zero"},
        {1, &DelSilenChoice::BalDur, NaN, "Balance duration can not be less then zero"},
        {1, &DelSilenChoice::BalDur, 100.01, "Balance duration can not be more then 100 seconds"},
        {1, &DelSilenChoice::BalDur, 0, ""},
        {1, &DelSilenChoice::BalDur, 100, ""},
        {2, &DelSilenChoice::BalPer, -0.01, "Balance duration % can not be less then 0%"},
        {2, &DelSilenChoice::BalPer, 100.01, "Balance duration % can not be more then 100%"},
        {2, &DelSilenChoice::BalPer, 100, ""},
        {2, &DelSilenChoice::BalMin, -0.01, "Balance Min. duration can not be less then zero"},
        {2, &DelSilenChoice::BalMin, 100.01,
         "Balance Min. duration can not be more then 100 seconds"},
        {2, &DelSilenChoice::BalMax, 0.0249, "Balance Max. duration can not be less then zero"},
        {2, &DelSilenChoice::BalMax, 100.01,
         "Balance Max. duration can not be more then 100 seconds"},
        {2, &DelSilenChoice::BalMin, 100,
         "Balance Min. duration can not be more then (or equal to) Max. duration"},
        {2, &DelSilenChoice::BalMin, 99.99, ""},
    };
    for (const Row& Each : Rows)
        for (const std::int16_t Style : {std::int16_t{1}, std::int16_t{2}}) {
            DelSilenChoice Choice;
            Choice.SilenDelStyl = Style;
            Choice.*Each.Value = Each.Number;
            const bool Seen = Each.Style == 0 || Each.Style == Style;
            EXPECT_EQ(DelSilenProblem(Choice), Seen ? Each.Problem : "")
                << Each.Number << " in style " << Style;
        }
}

TEST_F(DelSilenChoiceTest, OfSeveralProblemsTheFirstIsTold) {
    DelSilenChoice Choice = {-1, 0, 2, -1, -1, -1, -1};
    const auto Next = [&Choice](double DelSilenChoice::*Mended, double Number) {
        const std::string Problem = DelSilenProblem(Choice);
        Choice.*Mended = Number;
        return Problem;
    };
    EXPECT_EQ(Next(&DelSilenChoice::SilenVol, 1).substr(0, 16), "Volume threshold");
    EXPECT_EQ(Next(&DelSilenChoice::SilenDur, 1).substr(0, 18), "Duration threshold");
    EXPECT_EQ(Next(&DelSilenChoice::BalPer, 1).substr(0, 18), "Balance duration %");
    EXPECT_EQ(Next(&DelSilenChoice::BalMin, 50).substr(0, 12), "Balance Min.");
    EXPECT_EQ(Next(&DelSilenChoice::BalMax, 50).substr(0, 12), "Balance Max.");
    EXPECT_EQ(Next(&DelSilenChoice::BalMax, 51),
              "Balance Min. duration can not be more then (or equal to) Max. duration");
    EXPECT_EQ(DelSilenProblem(Choice), "");
}

TEST_F(DelSilenChoiceTest, EachFieldHasItsLimitsWhileEditedAndWhenLeft) {
    struct Row {
        const char* Control;
        double Number;
        bool Edited; ///< good while it is edited
        bool Left;   ///< good when it is left
    };
    const std::vector<Row> Rows = {
        {"VolTxt", -0.01, false, false},      {"VolTxt", 0, true, true},
        {"VolTxt", 99.99, true, true},        {"VolTxt", 100, false, false},
        {"VolTxt", NaN, false, false},        {"DurTxt", 0.0249, false, false},
        {"DurTxt", 0.025, false, true},       {"DurTxt", 0.0251, true, true},
        {"DurTxt", 5000, true, true},         {"DurTxt", NaN, false, false},
        {"BalDurTxt", -0.01, false, false},   {"BalDurTxt", 0, true, true},
        {"BalDurTxt", 5000, true, true},      {"BalPerTxt", -0.01, false, false},
        {"BalPerTxt", 0, true, true},         {"BalPerTxt", 100, false, false},
        {"BalMinDurTxt", -1, false, false},   {"BalMinDurTxt", 0, true, true},
        {"BalMinDurTxt", 100, true, true},    {"BalMinDurTxt", 100.1, false, false},
        {"BalMaxDurTxt", -1, false, false},   {"BalMaxDurTxt", 0, false, true},
        {"BalMaxDurTxt", 0.025, true, true},  {"BalMaxDurTxt", 100, true, true},
        {"BalMaxDurTxt", 100.1, false, false}};
    std::map<std::string, const DelSilenField*> Fields;
    for (const DelSilenField& Field : DelSilenFields())
        Fields[Field.Control] = &Field;
    for (const Row& Each : Rows) {
        ASSERT_TRUE(Fields.contains(Each.Control));
        EXPECT_EQ(Fields[Each.Control]->WhileEdited.Hold(Each.Number), Each.Edited)
            << Each.Control << Each.Number;
        EXPECT_EQ(Fields[Each.Control]->WhenLeft.Hold(Each.Number), Each.Left)
            << Each.Control << Each.Number;
    }
}

} // namespace
} // namespace quoril::test

#include "platform/Text.h"

#include <clocale>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <string>

namespace quoril {
namespace {

TEST(Text, ChangesTheCaseOfPlainLettersOnly) {
    EXPECT_EQ(LowerCase("AZaz09[`@{\xC4\xE4"), "azaz09[`@{\xC4\xE4");
    EXPECT_EQ(UpperCase("AZaz09[`@{\xC4\xE4"), "AZAZ09[`@{\xC4\xE4");
    EXPECT_EQ(LowerCase(""), "");
}

TEST(Text, ComparesWithoutCase) {
    EXPECT_TRUE(EqualIgnoringCase("TmpDir0", "tMPdIR0"));
    EXPECT_TRUE(EqualIgnoringCase("", ""));
    EXPECT_FALSE(EqualIgnoringCase("a", "ab"));
    EXPECT_FALSE(EqualIgnoringCase("ab", "a"));
    EXPECT_FALSE(EqualIgnoringCase("@", "`"));
    EXPECT_FALSE(EqualIgnoringCase("\xC4", "\xE4"));
}

TEST(Text, TrimsBlanksAndTabsAtBothEnds) {
    EXPECT_EQ(Trim(" \t a b \t"), "a b");
    EXPECT_EQ(Trim(" \t "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("\na\r"), "\na\r");
}

TEST(Text, TakesTheLeadingNumber) {
    EXPECT_EQ(LeadingNumber("12.5abc"), 12.5);
    EXPECT_EQ(LeadingNumber(" -3"), -3.0);
    EXPECT_EQ(LeadingNumber("\t+7"), 7.0);
    EXPECT_EQ(LeadingNumber(".25"), 0.25);
    EXPECT_EQ(LeadingNumber("-.25x"), -0.25);
    EXPECT_EQ(LeadingNumber("5."), 5.0);
    EXPECT_EQ(LeadingNumber("1e3"), 1000.0);
    EXPECT_EQ(LeadingNumber("1E-2,"), 0.01);
    EXPECT_EQ(LeadingNumber("1e"), 1.0);
    EXPECT_EQ(LeadingNumber("1,5"), 1.0);
    EXPECT_EQ(LeadingNumber("0.1"), 0.1);
}

TEST(Text, WritesTheShortestTextThatIsReadAsTheSameNumber) {
    EXPECT_EQ(NumberText(0.08F), "0.08");
    EXPECT_EQ(NumberText(100.0F), "100");
    EXPECT_EQ(NumberText(0.0000012F), "0.0000012");
    EXPECT_EQ(NumberText(50.0), "50");
    EXPECT_EQ(NumberText(-2.5), "-2.5");
    EXPECT_EQ(NumberText(10000.0 / 120), "83.33333333333333");
    for (const double Extreme : {std::numeric_limits<double>::denorm_min(),
                                 std::numeric_limits<double>::max(), 0.1, 1.0 / 3})
        EXPECT_EQ(LeadingNumber(NumberText(Extreme)), Extreme);
}

TEST(Text, GivesZeroForAnythingElse) {
    for (const char* Other : {"", " ", "abc", "-", "+", ".", "-.", "+-3", "--3", "- 3", "inf",
                              "-inf", "nan", "NAN(1)", "infinity", "e5", ".e5", "\n5", "\xB2"})
        EXPECT_EQ(LeadingNumber(Other), 0.0) << Other;
    EXPECT_EQ(LeadingNumber("0x1F"), 0.0);
}

TEST(Text, NeverGivesAnInfiniteNumber) {
    EXPECT_TRUE(std::isfinite(LeadingNumber("1e999")));
    EXPECT_TRUE(std::isfinite(LeadingNumber("-1e999")));
    EXPECT_TRUE(std::isfinite(LeadingNumber(std::string(5000, '9'))));
    EXPECT_EQ(LeadingNumber("1e-999"), 0.0);
}

/// A language whose decimal mark is the comma.
struct CommaLanguage final : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Text, TakesThePointInEveryLanguage) {
    const std::locale Before =
        std::locale::global(std::locale(std::locale::classic(), new CommaLanguage));
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(LeadingNumber("12.5"), 12.5);
    EXPECT_EQ(LeadingNumber("12,5"), 12.0);
    EXPECT_EQ(LeadingNumber("1.234"), 1.234);
    std::setlocale(LC_ALL, "C");
    std::locale::global(Before);
}

} // namespace
} // namespace quoril

#include "base/QtText.h"

#include <gtest/gtest.h>

namespace quoril {
namespace {

TEST(QtText, ValidUtf8IsShownAsItIs) {
    EXPECT_EQ(ShownText("gr\xC3\xBC\xC3\x9F"), QStringLiteral("gr\u00FC\u00DF"));
    EXPECT_EQ(ShownText(""), QString());
}

TEST(QtText, OtherBytesAreReadAsWindows1252) {
    EXPECT_EQ(ShownText("gr\xFC\xDF \x80 \x93"), QStringLiteral("gr\u00FC\u00DF \u20AC \u201C"));
    EXPECT_EQ(ShownText("cut off \xC3"), QStringLiteral("cut off \u00C3"));
}

TEST(QtText, AWholeTextFallsBackTogether) {
    EXPECT_EQ(ShownText("\xC3\xBC\xFC"), QStringLiteral("\u00C3\u00BC\u00FC"));
}

TEST(QtText, TypedTextComesBackAsUtf8) {
    EXPECT_EQ(CoreText(QStringLiteral("gr\u00FC\u00DF")), "gr\xC3\xBC\xC3\x9F");
}

TEST(QtText, OnlyLongWordsMayBeBroken) {
    const QString Words = QStringLiteral("a path of ordinary words, /music/one.wav\nand no more");
    EXPECT_EQ(Breakable(Words), Words);
    const QString Long(100, QLatin1Char('w'));
    const QString Shown = Breakable(Words + QLatin1Char(' ') + Long);
    EXPECT_EQ(Shown.count(QChar(0x200B)), 2);
    EXPECT_EQ(QString(Shown).remove(QChar(0x200B)), Words + QLatin1Char(' ') + Long);
}

TEST(QtText, AnAccessKeyIsTheFirstPlaceOfItsLetter) {
    EXPECT_EQ(WithAccessKey("Try again", 't'), "&Try again");
    EXPECT_EQ(WithAccessKey("Can not continue", 't'), "Can no&t continue");
    EXPECT_EQ(WithAccessKey("Ok", 'z'), "Ok");
}

} // namespace
} // namespace quoril

#include "base/QtText.h"

#include <QStringDecoder>
#include <array>

namespace quoril {

namespace {

/// Bytes 0x80 to 0x9F of Windows-1252; the five that it leaves open stand for themselves.
constexpr std::array<char16_t, 32> HighControls = {
    u'\u20AC', 0x81,      u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8D,      u'\u017D', 0x8F,
    0x90,      u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0x9D,      u'\u017E', u'\u0178'};

QString FromWindows1252(std::string_view Text) {
    QString Result;
    Result.reserve(static_cast<qsizetype>(Text.size()));
    for (const char Each : Text) {
        const auto Byte = static_cast<unsigned char>(Each);
        Result += Byte >= 0x80 && Byte < 0xA0 ? QChar(HighControls[Byte - 0x80U]) : QChar(Byte);
    }
    return Result;
}

} // namespace

QString ShownText(std::string_view Text) {
    QStringDecoder Utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString Result = Utf8.decode(QByteArrayView(Text.data(), static_cast<qsizetype>(Text.size())));
    return Utf8.hasError() ? FromWindows1252(Text) : Result;
}

std::string CoreText(const QString& Text) {
    return Text.toStdString();
}

QString Breakable(const QString& Text) {
    constexpr int LongestWord = 40;
    constexpr QChar MayBreak(0x200B);
    QString Result;
    int InWord = 0;
    for (const QChar Letter : Text) {
        InWord = Letter.isSpace() ? 0 : InWord + 1;
        if (InWord > LongestWord && !Letter.isLowSurrogate()) {
            Result.append(MayBreak);
            InWord = 1;
        }
        Result.append(Letter);
    }
    return Result;
}

QString WithAccessKey(const char* Caption, char Letter) {
    QString Text = QString::fromUtf8(Caption);
    if (const qsizetype At = Text.indexOf(QLatin1Char(Letter), 0, Qt::CaseInsensitive); At >= 0)
        Text.insert(At, QLatin1Char('&'));
    return Text;
}

} // namespace quoril

#include "shell/BandDraw.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quoril {

namespace {

constexpr std::int32_t Unity = BandValueNeutral;
const QColor White(255, 255, 255);
const QColor LightGrey(0xE0, 0xE0, 0xE0);
const QColor LineGrey(0xC0, 0xC0, 0xC0);
const QColor BarRed(255, 0, 0);
const QColor TextColor(0x40, 0x40, 0x40);

} // namespace

BandDraw::BandDraw(QImage& Image, double PixelRatio, const QFont& Font, const BandPicture& Geometry)
    : Picture(Image), Ratio(PixelRatio), Letters(Font), Place(Geometry) {
    // Labels must fit into the narrowest column.
    constexpr double LargestLetters = 12;
    constexpr double SmallestLetters = 7;
    constexpr double PartOfColumn = 0.8;
    const double Width = static_cast<double>(Place.Width) / Place.NoOfBands;
    Letters.setPixelSize(static_cast<int>(std::lround(
        std::clamp(Width * PartOfColumn, SmallestLetters * Ratio, LargestLetters * Ratio))));
}

QRect BandDraw::Column(std::int32_t Band) const {
    const std::int32_t Left = Place.Left(Band);
    return {Left, 0, Place.Left(Band + 1) - Left, Place.Height};
}

void BandDraw::Label(std::int32_t Band, std::int32_t Freq, const QColor& Color) {
    QPainter Painter(&Picture);
    Painter.setFont(Letters);
    Painter.setPen(Color);
    // Read from below; the middle of the column is the middle of the letters.
    const QRect Where = Column(Band);
    Painter.translate(Where.center().x() + 1, Where.bottom());
    Painter.rotate(-90);
    const auto Margin = static_cast<int>(std::lround(4 * Ratio));
    Painter.drawText(QRect(Margin, -Where.width(), Place.Height, 2 * Where.width()),
                     Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("%1 %2 Hz").arg(Band).arg(Freq));
}

void BandDraw::Columns(const std::vector<std::int32_t>& BandFreq, const QString& Text) {
    {
        QPainter Painter(&Picture);
        for (std::int32_t Band = 1; Band <= Place.NoOfBands; ++Band)
            Painter.fillRect(Column(Band), Band % 2 == 1 ? White : LightGrey);
        QFont Plain = Letters;
        Plain.setPixelSize(static_cast<int>(std::lround(12 * Ratio)));
        Painter.setFont(Plain);
        Painter.setPen(TextColor);
        Painter.drawText(Picture.rect(), Qt::AlignLeft | Qt::AlignTop, Text);
    }
    for (std::int32_t Band = 1; Band <= Place.NoOfBands; ++Band)
        Label(Band, BandFreq[static_cast<std::size_t>(Band)], TextColor);
}

void BandDraw::Values(const BandChoice& Choice) {
    QPainter Painter(&Picture);
    const auto Thick = static_cast<int>(std::max(1.0, std::floor(Ratio)));
    Painter.fillRect(QRect(0, Place.RowOf(Unity), Place.Width, Thick), LineGrey);
    const auto Height = static_cast<int>(std::lround(3 * Ratio));
    for (std::int32_t Band = 1; Band <= Place.NoOfBands; ++Band) {
        const QRect Where = Column(Band);
        Painter.fillRect(QRect(Where.left(), Place.RowOf(Choice.Value(Band)) - Height / 2,
                               Where.width(), Height),
                         BarRed);
    }
}

void BandDraw::Stops(const BandChoice& Choice, const std::vector<std::int32_t>& BandFreq) {
    for (std::int32_t Band = 1; Band <= Place.NoOfBands; ++Band)
        if (Choice.Stopped(Band)) {
            QPainter(&Picture).fillRect(Column(Band), Qt::black);
            Label(Band, BandFreq[static_cast<std::size_t>(Band)], LightGrey);
        }
}

void BandDraw::Frame(std::int32_t Band, const QColor& Color, int Thick) {
    QPainter Painter(&Picture);
    const auto Width = static_cast<int>(std::lround(Thick * Ratio));
    const QRect Outer = Column(Band);
    for (int i = 0; i < Width; ++i) {
        Painter.setPen(Color);
        Painter.drawRect(Outer.adjusted(i, i, -1 - i, -1 - i));
    }
}

void BandDraw::Words(const QString& Text) {
    Picture.fill(White);
    QPainter Painter(&Picture);
    Painter.setFont(Letters);
    Painter.setPen(TextColor);
    Painter.drawText(Picture.rect(), Qt::AlignLeft | Qt::AlignVCenter, Text);
}

} // namespace quoril

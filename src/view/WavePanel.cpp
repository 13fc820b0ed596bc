#include "view/WavePanel.h"

#include "view/WaveColumns.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace quoril {

WavePanel::WavePanel(int Index, QWidget* Parent)
    : PicturePanel(QStringLiteral("Wave_Pic_%1").arg(Index), Parent), ChannelIndex(Index) {
    MouseLine = new PanelLine(QStringLiteral("MouseLine_%1").arg(Index), this);
    MouseLine->hide();
    PlayPosShp = new PanelLine(QStringLiteral("PlayPosShp_%1").arg(Index), this);
    setFocusPolicy(Qt::StrongFocus);
}

void WavePanel::TakeSnapshot() {
    const QImage& Now = Picture();
    if (WaveBak_Pic.size() != Now.size() || WaveBak_Pic.bytesPerLine() != Now.bytesPerLine())
        WaveBak_Pic = QImage(Now.size(), Now.format());
    // Into the memory that is there: a fresh image of this size costs more than the copy.
    std::memcpy(WaveBak_Pic.bits(), Now.constBits(), std::size_t(Now.sizeInBytes()));
    InvertedFirst = InvertedPast = 0;
    PointRow.assign(std::size_t(Now.width()), -1);
}

void WavePanel::ShowInverted(int First, int Past) {
    const QImage& Shown = Picture();
    if (WaveBak_Pic.size() != Shown.size())
        return;
    First = std::clamp(First, 0, Shown.width());
    Past = std::clamp(Past, First, Shown.width());
    const auto [LeftFrom, LeftTo] = std::minmax({InvertedFirst, First});
    const auto [RightFrom, RightTo] = std::minmax({InvertedPast, Past});
    InvertedFirst = First;
    InvertedPast = Past;
    // Every column that is in one of the two bands only lies between their left or right edges.
    Invert(LeftFrom, LeftTo);
    Invert(RightFrom, RightTo);
}

/// Draws columns as the band has them now.
void WavePanel::Invert(int From, int To) {
    if (From >= To)
        return;
    constexpr QRgb Inverted = 0x00FFFFFF;
    QImage& Shown = Picture();
    const int First = std::clamp(InvertedFirst, From, To);
    const int Past = std::clamp(InvertedPast, First, To);
    for (int Row = 0; Row < Shown.height(); ++Row) {
        const auto* Finished = reinterpret_cast<const QRgb*>(WaveBak_Pic.constScanLine(Row));
        auto* Line = reinterpret_cast<QRgb*>(Shown.scanLine(Row));
        std::copy(Finished + From, Finished + To, Line + From);
        for (int Column = First; Column < Past; ++Column)
            Line[Column] ^= Inverted;
    }
    UpdatePixels(QRect(From, 0, To - From, Shown.height()));
}

QRect WavePanel::PlacePoint(double X, double Y, const QColor& Color) {
    QImage& Shown = Picture();
    const QPoint Place(PixelOf(X), PixelOf(Y));
    if (WaveBak_Pic.size() != Shown.size() || !Shown.rect().contains(Place))
        return {};
    const int Thick = std::max(1, int(PixelRatio()));
    const QRect Dot = QRect(Place, QSize(Thick, Thick)).intersected(Shown.rect());
    QRect Changed = Dot;
    for (int Column = Dot.left(); Column <= Dot.right(); ++Column) {
        // Of the whole column no other pixels differ from the finished picture.
        int& Row = PointRow[std::size_t(Column)];
        if (Row >= 0) {
            const QRect Before = QRect(Column, Row, 1, Thick).intersected(Shown.rect());
            for (int y = Before.top(); y <= Before.bottom(); ++y)
                Shown.setPixel(Column, y, WaveBak_Pic.pixel(Column, y));
            Changed |= Before;
        }
        Row = Dot.top();
        for (int y = Dot.top(); y <= Dot.bottom(); ++y)
            Shown.setPixel(Column, y, Color.rgb());
    }
    return Changed;
}

void WavePanel::UpdatePixels(const QRect& Pixels) {
    if (Pixels.isEmpty())
        return;
    const double Ratio = PixelRatio();
    const QRectF Seen(Pixels.x() / Ratio, Pixels.y() / Ratio, Pixels.width() / Ratio,
                      Pixels.height() / Ratio);
    update(Seen.toAlignedRect().translated(0, InnerRect().top()));
}

} // namespace quoril

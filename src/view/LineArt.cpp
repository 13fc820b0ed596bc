#include "view/LineArt.h"

#include "view/PicturePanel.h"
#include "view/WaveColumns.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace quoril {

namespace {

/// How many pixels of a line are drawn, and after how many it begins anew, for a line one pixel
/// thick.
struct DashPattern {
    std::int64_t On;
    std::int64_t Period;
};

constexpr DashPattern PatternOf(LineStyle Style) {
    switch (Style) {
    case LineStyle::Dashed:
        return {8, 12};
    case LineStyle::Dotted:
        return {1, 3};
    default:
        return {1, 1};
    }
}

} // namespace

LineArt::LineArt(QImage& Image, double PixelRatio)
    : Picture(Image), Ratio(PixelRatio), Thickness(std::max(1, static_cast<int>(PixelRatio))) {}

void LineArt::Dot(std::int32_t X, std::int32_t Y, QRgb Color) {
    if (X <= -Thickness || X >= Picture.width() || Y <= -Thickness || Y >= Picture.height())
        return;
    for (std::int32_t Row = std::max(Y, 0); Row < std::min(Y + Thickness, Picture.height());
         ++Row) {
        auto* Pixels = reinterpret_cast<QRgb*>(Picture.scanLine(Row));
        for (std::int32_t Column = std::max(X, 0);
             Column < std::min(X + Thickness, Picture.width()); ++Column)
            Pixels[Column] = Color;
    }
}

void LineArt::Line(const WaveLine& What, std::int32_t Color, LineStyle Style) {
    if (std::max(What.X1, What.X2) < -Thickness || std::min(What.X1, What.X2) > Picture.width())
        return;
    // The line walks along its longer side, one pixel a step.
    const bool Wide = std::abs(What.X2 - What.X1) >= std::abs(What.Y2 - What.Y1);
    double A1 = Wide ? What.X1 : What.Y1;
    double A2 = Wide ? What.X2 : What.Y2;
    double B1 = Wide ? What.Y1 : What.X1;
    double B2 = Wide ? What.Y2 : What.X2;
    if (A1 > A2) {
        std::swap(A1, A2);
        std::swap(B1, B2);
    }
    const double Slope = A2 > A1 ? (B2 - B1) / (A2 - A1) : 0.0;
    const std::int32_t Begin = PixelOf(A1);
    const std::int32_t From = std::max(Begin, -Thickness);
    const std::int32_t To =
        std::min(PixelOf(A2), Wide ? Picture.width() - 1 : Picture.height() - 1);
    const DashPattern Pattern = PatternOf(Style);
    const QRgb Pen = ColorFromBgr(Color).rgb();
    for (std::int64_t A = From; A <= To; ++A) {
        if ((A - Begin) / Thickness % Pattern.Period >= Pattern.On)
            continue;
        const double At = std::clamp(static_cast<double>(A), A1, A2);
        const std::int32_t B = PixelOf(B1 + (At - A1) * Slope);
        const auto Along = static_cast<std::int32_t>(A);
        Wide ? Dot(Along, B, Pen) : Dot(B, Along, Pen);
    }
}

void LineArt::Box(double X1, double Y1, double X2, double Y2, std::int32_t Color) {
    const QRect Area(
        QPoint(std::max(PixelOf(X1), -1), std::max(PixelOf(Y1), -1)),
        QPoint(std::min(PixelOf(X2), Picture.width()), std::min(PixelOf(Y2), Picture.height())));
    const QRect Part = Area.intersected(Picture.rect());
    const QRgb Fill = ColorFromBgr(Color).rgb();
    for (int Row = Part.top(); Row <= Part.bottom(); ++Row) {
        auto* Pixels = reinterpret_cast<QRgb*>(Picture.scanLine(Row));
        std::fill(Pixels + Part.left(), Pixels + Part.right() + 1, Fill);
    }
}

void LineArt::Outline(double X1, double Y1, double X2, double Y2, std::int32_t Color) {
    Line({X1, Y1, X2, Y1}, Color);
    Line({X1, Y2, X2, Y2}, Color);
    Line({X1, Y1, X1, Y2}, Color);
    Line({X2, Y1, X2, Y2}, Color);
}

void LineArt::Text(double X, double Y, const QString& What, const QColor& Color,
                   const QFont& Font) {
    // Far outside nothing can be seen, and the painter's own numbers would run over.
    if (What.isEmpty() || X > Picture.width() || X < -1e6 || Y > Picture.height())
        return;
    QPainter Painter(&Picture);
    Painter.setFont(Scaled(Font));
    Painter.setPen(Color);
    Painter.drawText(QPointF(X, Y + Painter.fontMetrics().ascent()), What);
}

void LineArt::Words(const QString& What, const QColor& Color, const QFont& Font) {
    QPainter Painter(&Picture);
    Painter.setFont(Scaled(Font));
    Painter.setPen(Color);
    Painter.drawText(Picture.rect(), Qt::AlignCenter | Qt::TextWrapAnywhere, What);
}

QFont LineArt::Scaled(const QFont& Font) const {
    QFont Result(Font);
    Result.setPixelSize(
        std::max(1, static_cast<int>(std::lround(QFontInfo(Font).pixelSize() * Ratio))));
    return Result;
}

QColor ReadableOn(const QColor& Back) {
    const double Light = 0.299 * Back.redF() + 0.587 * Back.greenF() + 0.114 * Back.blueF();
    return Light > 0.5 ? QColor(Qt::black) : QColor(Qt::white);
}

} // namespace quoril

// Marker lines, boxes and texts in an image: what is drawn besides the waveform.
#pragma once

#include "view/WaveGeometry.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

namespace quoril {

enum class LineStyle { Solid, Dashed, Dotted };

/// Pixels of the image are those of the screen. `Thick` is the thickness of a line in such pixels:
/// the whole part of the screen's scale, so that a line looks alike on every screen.
class LineArt {
  public:
    LineArt(QImage& Image, double PixelRatio);

    [[nodiscard]] int Thick() const { return Thickness; }
    /// A line between two points, both included. What lies outside is cut off, at no cost.
    void Line(const WaveLine& What, std::int32_t Color, LineStyle Style = LineStyle::Solid);
    /// Filled from (X1, Y1) to (X2, Y2), both corners included.
    void Box(double X1, double Y1, double X2, double Y2, std::int32_t Color);
    /// The outline of that box.
    void Outline(double X1, double Y1, double X2, double Y2, std::int32_t Color);
    /// A text whose upper left corner is (X, Y).
    void Text(double X, double Y, const QString& What, const QColor& Color, const QFont& Font);
    /// A text of several lines in the middle of the image, wrapped to its width.
    void Words(const QString& What, const QColor& Color, const QFont& Font);

  private:
    [[nodiscard]] QFont Scaled(const QFont& Font) const;
    void Dot(std::int32_t X, std::int32_t Y, QRgb Color);

    QImage& Picture;
    double Ratio;
    int Thickness;
};

/// The text colour that stands out against a background.
[[nodiscard]] QColor ReadableOn(const QColor& Back);

} // namespace quoril

// The pictures of the dialog of the bands.
#pragma once

#include "effects/BandChoice.h"
#include "effects/BandPicture.h"

#include <QFont>
#include <QImage>

#include <vector>

namespace quoril {

class BandDraw {
  public:
    /// Draws into an image whose pixels are those of the screen.
    BandDraw(QImage& Image, double PixelRatio, const QFont& Font, const BandPicture& Geometry);

    /// White and grey columns, each with its number and frequency, and words for what a click does.
    void Columns(const std::vector<std::int32_t>& BandFreq, const QString& Words);
    /// The line of 100 %, and a bar for the value of each band.
    void Values(const BandChoice& Choice);
    /// Blackens the columns of the stopped bands.
    void Stops(const BandChoice& Choice, const std::vector<std::int32_t>& BandFreq);
    /// A frame around the column of a band, `Thick` pixels of the window system wide.
    void Frame(std::int32_t Band, const QColor& Color, int Thick);
    /// Only words, on an empty strip.
    void Words(const QString& Text);

  private:
    [[nodiscard]] QRect Column(std::int32_t Band) const;
    void Label(std::int32_t Band, std::int32_t Freq, const QColor& Color);

    QImage& Picture;
    double Ratio;
    QFont Letters;
    BandPicture Place;
};

} // namespace quoril

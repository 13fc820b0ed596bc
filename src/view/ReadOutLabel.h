// A label in the colours of the wave view.
#pragma once

#include <QLabel>

#include <cstdint>

namespace quoril {

/// Shows a value in colours that the user has chosen for the waveform. Where text and background
/// are hard to tell apart, the letters get an outline.
class ReadOutLabel : public QLabel {
  public:
    /// The colours are told to the palette, too. `Longest` sets the least width: a text that must
    /// fit.
    ReadOutLabel(const QString& Name, QWidget* Parent, const QString& Longest = {});

    /// Background and text, 0x00BBGGRR.
    void SetColors(std::int32_t BackColor, std::int32_t TextColor);

  protected:
    void paintEvent(QPaintEvent* Event) override;

  private:
    QColor Back;
    QColor Front;
};

} // namespace quoril

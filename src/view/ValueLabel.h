// A value that can be changed: `SelectLbl` and `ViewLbl`.
#pragma once

#include <QLabel>

#include <functional>

namespace quoril {

/// A label in the colours of the wave view. A click or Enter asks for a new value; a right click,
/// Shift+F10 or the menu key opens its menu.
class ValueLabel final : public QLabel {
  public:
    ValueLabel(const QString& Name, QWidget* Parent);

    /// Background and text, 0x00BBGGRR. Where the two are hard to tell apart, the letters get an
    /// outline.
    void SetColors(std::int32_t BackColor, std::int32_t TextColor);

    std::function<void()> Clicked;
    std::function<void(const QPoint& GlobalPos)> MenuWanted;

  protected:
    void paintEvent(QPaintEvent* Event) override;
    void mousePressEvent(QMouseEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void contextMenuEvent(QContextMenuEvent* Event) override;
    void focusInEvent(QFocusEvent* Event) override;
    void focusOutEvent(QFocusEvent* Event) override;

  private:
    QColor Back = Qt::black;
    QColor Front = Qt::white;
};

} // namespace quoril

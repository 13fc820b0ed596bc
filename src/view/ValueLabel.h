// A value that can be changed: `SelectLbl` and `ViewLbl`.
#pragma once

#include "view/ReadOutLabel.h"

#include <functional>

namespace quoril {

/// A label in the colours of the wave view. A click or Enter asks for a new value; a right click,
/// Shift+F10 or the menu key opens its menu.
class ValueLabel final : public ReadOutLabel {
  public:
    ValueLabel(const QString& Name, QWidget* Parent, const QString& Longest);

    std::function<void()> Clicked;
    std::function<void(const QPoint& GlobalPos)> MenuWanted;

  protected:
    void mousePressEvent(QMouseEvent* Event) override;
    void keyPressEvent(QKeyEvent* Event) override;
    void contextMenuEvent(QContextMenuEvent* Event) override;
    void focusInEvent(QFocusEvent* Event) override;
    void focusOutEvent(QFocusEvent* Event) override;
};

} // namespace quoril

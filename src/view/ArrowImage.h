// `ArrowImg`: the wedges at the ends of the overview bar.
#pragma once

#include <QWidget>

namespace quoril {

/// A wedge of vertical lines, narrow at the outer end of the bar: the shorter the line under the
/// mouse, the fewer samples a click there moves the view. `Index` 0 stands at the right end of the
/// bar, 1 at the left.
class ArrowImage final : public QWidget {
  public:
    ArrowImage(int Index, QWidget* Parent);
    static constexpr int Width = 48;

  protected:
    void paintEvent(QPaintEvent* Event) override;

  private:
    int ArrowIndex;
};

} // namespace quoril

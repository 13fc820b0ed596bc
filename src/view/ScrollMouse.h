// What the mouse does on the overview bar and its arrows: it shifts the view. Numbers only. They
// leave `ViewFrom` without limits; the refresh that follows applies them.
#pragma once

#include <array>
#include <cstdint>

namespace quoril {

/// The overview bar under the mouse, in the pixels of its picture.
struct ScrollBar {
    std::array<std::int32_t, 3>&
        ScrollEdge;         ///< 1 and 2 the edges of the view, 0 where a drag stands
    std::int32_t Width = 1; ///< of the whole strip
    std::int32_t Total = 0; ///< samples that it stands for

    /// Whether a pixel lies on the bar that stands for the view.
    [[nodiscard]] bool OnView(double X) const noexcept {
        return X >= ScrollEdge[1] && X <= ScrollEdge[2];
    }
};

/// A button on the overview bar of one window.
class ScrollMouseClass {
  public:
    /// Beside the view a press shifts it by its own length; on it a drag begins. True when the view
    /// has to be drawn anew.
    bool Press(const ScrollBar& Bar, double X) noexcept;
    /// Drags the view along, if a drag is on. True when it has to be drawn anew. A move beyond an
    /// end of the document that the view has already reached changes nothing.
    bool Move(const ScrollBar& Bar, double X) noexcept;
    void Release() noexcept { ScrollDragging = false; }
    [[nodiscard]] bool IsDragging() const noexcept { return ScrollDragging; }

  private:
    bool ScrollDragging = false;
};

/// Where the sample that a pixel of the bar stands for lies in the view: 0 at its left edge to 1 at
/// its right edge. A sample outside counts as the nearer edge.
[[nodiscard]] double BarAcross(const ScrollBar& Bar, double X) noexcept;

/// A click on an arrow of `Width` pixels, at pixel X of it: the view moves by as many samples as
/// there are pixels from its outer end, at least one. Index 0 is the right arrow, 1 the left.
void ArrowShift(std::int32_t Index, double X, double Width) noexcept;

} // namespace quoril

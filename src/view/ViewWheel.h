// What the mouse wheel and the touchpad do to the view. Pure numbers.
#pragma once

#include <cstdint>

namespace quoril {

/// A view of a document of `Total` samples.
struct WheelView {
    std::int32_t From = 1;    ///< first sample, from 1
    std::int32_t Samples = 1; ///< samples across
    std::int32_t Total = 0;

    friend bool operator==(const WheelView&, const WheelView&) = default;
};

enum class WheelDeed : std::uint8_t {
    Scroll, ///< a tenth of the view for each notch
    Zoom,   ///< in and out, around the sample under the mouse
    Page    ///< a whole view for each notch
};
/// What the wheel does with the keys that are held; Ctrl goes before Shift.
[[nodiscard]] WheelDeed WheelDeedOf(bool Ctrl, bool Shift) noexcept;

/// The wheel over the panels of one window. Between turns it keeps the parts of a sample and of a
/// notch that a view cannot show, so that many small turns come to the same as a large one. A view
/// that something else has changed in between is taken as it stands.
class ViewWheelClass {
  public:
    /// The view after a turn of `Notches`, which may be parts of one; positive is away from the
    /// user, and goes to earlier samples or zooms in. `Across` is where the mouse stands, 0 at the
    /// left edge of the view to 1 at its right edge. The result lies within the document, and shows
    /// 10 samples at least, if there are as many. An empty document gives the view itself.
    [[nodiscard]] WheelView Turned(const WheelView& View, WheelDeed Deed, double Notches,
                                   double Across);
    /// The view after fingers on a touchpad have moved the picture to the right by `Share` of the
    /// view's width, or to the left if that is negative. The limits are those of Turned.
    [[nodiscard]] WheelView Moved(const WheelView& View, double Share);

  private:
    void Take(const WheelView& View);
    [[nodiscard]] WheelView Limited(std::int32_t Total);
    void ZoomAround(double Notches, double Across, std::int32_t Total);

    WheelView Last;  // what the last turn gave
    double From = 1; // the same view, not rounded
    double Samples = 1;
    double PageRest = 0; // notches that make no whole page yet
};

} // namespace quoril

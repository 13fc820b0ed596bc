#include "view/ViewWheel.h"

#include "base/Arithmetic.h"

#include <algorithm>
#include <cmath>

namespace quoril {

namespace {

constexpr double ScrollShare = 0.1;
constexpr double ZoomFactor = 0.6; // that of the zoom commands
constexpr double LeastSamples = 10;

} // namespace

WheelDeed WheelDeedOf(bool Ctrl, bool Shift) noexcept {
    if (Ctrl)
        return WheelDeed::Zoom;
    return Shift ? WheelDeed::Page : WheelDeed::Scroll;
}

void ViewWheelClass::Take(const WheelView& View) {
    if (View == Last)
        return;
    Last = View;
    From = View.From;
    Samples = View.Samples;
    PageRest = 0;
}

WheelView ViewWheelClass::Limited(std::int32_t Total) {
    Samples = std::min(std::max(Samples, LeastSamples), static_cast<double>(Total));
    From = std::max(std::min(From, Total - Samples + 1), 1.0);
    Last.Samples = RoundToLong(Samples);
    Last.From = std::clamp(RoundToLong(From), 1, Total - Last.Samples + 1);
    Last.Total = Total;
    return Last;
}

void ViewWheelClass::ZoomAround(double Notches, double Across, std::int32_t Total) {
    const double Position = From + Across * Samples;
    Samples =
        std::clamp(Samples * std::pow(ZoomFactor, Notches),
                   std::min(LeastSamples, static_cast<double>(Total)), static_cast<double>(Total));
    From = Position - Across * Samples;
}

WheelView ViewWheelClass::Turned(const WheelView& View, WheelDeed Deed, double Notches,
                                 double Across) {
    if (View.Total < 1)
        return View;
    Take(View);
    if (Deed == WheelDeed::Zoom) {
        ZoomAround(Notches, std::clamp(Across, 0.0, 1.0), View.Total);
    } else if (Deed == WheelDeed::Page) {
        PageRest += Notches;
        const double Pages = std::trunc(PageRest);
        PageRest -= Pages;
        From -= Pages * Samples;
    } else {
        From -= Notches * Samples * ScrollShare;
    }
    return Limited(View.Total);
}

WheelView ViewWheelClass::Moved(const WheelView& View, double Share) {
    if (View.Total < 1)
        return View;
    Take(View);
    From -= Share * Samples;
    return Limited(View.Total);
}

} // namespace quoril

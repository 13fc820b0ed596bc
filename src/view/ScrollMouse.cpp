#include "view/ScrollMouse.h"

#include "base/Arithmetic.h"
#include "base/ViewState.h"

#include <algorithm>
#include <limits>

namespace quoril {

namespace {

/// A position that may have left 32 bits: the refresh takes it to an end of the document anyway.
std::int32_t Held(double Position) noexcept {
    return static_cast<std::int32_t>(std::clamp(
        RoundEven(Position), static_cast<double>(std::numeric_limits<std::int32_t>::min()),
        static_cast<double>(std::numeric_limits<std::int32_t>::max())));
}

double Past() noexcept {
    return static_cast<double>(ViewFrom) + ViewTotal;
}

} // namespace

bool ScrollMouseClass::Press(const ScrollBar& Bar, double X) noexcept {
    ScrollDragging = false;
    if (Bar.Total < 1)
        return false;
    if (X < Bar.ScrollEdge[1]) {
        ViewFrom = Held(static_cast<double>(ViewFrom) - ViewTotal);
        return true;
    }
    if (X > Bar.ScrollEdge[2]) {
        ViewFrom = Held(Past());
        return true;
    }
    ScrollDragging = true;
    Bar.ScrollEdge[0] = Held(X);
    return false;
}

bool ScrollMouseClass::Move(const ScrollBar& Bar, double X) noexcept {
    if (!ScrollDragging || Bar.Total < 1)
        return false;
    const double Delta = RoundEven((X - Bar.ScrollEdge[0]) * Bar.Total / std::max(Bar.Width, 1));
    if ((ViewFrom == 1 && Delta < 0.0) || (Past() >= Bar.Total && Delta > 0.0))
        return false;
    ViewFrom = Held(ViewFrom + Delta);
    Bar.ScrollEdge[0] = Held(X);
    return true;
}

double BarAcross(const ScrollBar& Bar, double X) noexcept {
    const double Sample = X * Bar.Total / std::max(Bar.Width - 1, 1);
    return std::clamp((Sample - ViewFrom) / std::max(ViewTotal, 1), 0.0, 1.0);
}

void ArrowShift(std::int32_t Index, double X, double Width) noexcept {
    const double Samples = std::max(Index == 0 ? Width - X : X, 1.0);
    ViewFrom = Held(Index == 0 ? ViewFrom + Samples : ViewFrom - Samples);
}

} // namespace quoril

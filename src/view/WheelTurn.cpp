#include "view/WheelTurn.h"

#include "base/ViewState.h"
#include "view/WaveEditor_Frm.h"
#include "view/WavePanel.h"

#include <QWheelEvent>

#include <cmath>

namespace quoril {

namespace {

constexpr double UnitsOfNotch = 120;

/// Of the two ways that a wheel or fingers can go, the one that was meant: the greater one. A wheel
/// with Alt or Shift held can come as a sideways one.
double Meant(const QPoint& Way) {
    return std::abs(Way.x()) > std::abs(Way.y()) ? Way.x() : Way.y();
}

} // namespace

void WheelTurn::Turn(const QWheelEvent& Event, double Across) {
    const WheelView View{ViewFrom, ViewTotal, Window.Facts().Total};
    if (View.Total < 1)
        return;
    const WheelDeed Deed = WheelDeedOf(Event.modifiers().testFlag(Qt::ControlModifier),
                                       Event.modifiers().testFlag(Qt::ShiftModifier));
    // Fingers take the picture along. Without phases it is a wheel, and the pixels that some
    // systems tell with it are not the way of any finger.
    const bool Fingers = Event.phase() != Qt::NoScrollPhase && !Event.pixelDelta().isNull();
    const WavePanel& Panel = *Window.Wave_Pic[1];
    const double Share = Meant(Event.pixelDelta()) * Panel.PixelRatio() / Panel.ScaleSpan();
    const WheelView New =
        Fingers && Deed == WheelDeed::Scroll
            ? Wheel.Moved(View, Share)
            : Wheel.Turned(View, Deed, Meant(Event.angleDelta()) / UnitsOfNotch, Across);
    if (New == View)
        return;
    ViewAll = false;
    ViewFrom = New.From;
    ViewTotal = New.Samples;
    Window.Refresh_Wave_View();
}

} // namespace quoril

// The mouse wheel and the touchpad over the panels and strips, as the window system tells them.
#pragma once

#include "view/ViewWheel.h"

class QWheelEvent;

namespace quoril {

class WaveEditor_Frm;

/// Turns the view of one window.
class WheelTurn {
  public:
    explicit WheelTurn(WaveEditor_Frm& MainWindow) : Window(MainWindow) {}
    /// `Across` is where the mouse stands in the view, 0 at its left edge to 1 at its right edge.
    /// Refreshes the window when the view has changed; nothing happens over an empty document.
    void Turn(const QWheelEvent& Event, double Across);

  private:
    WaveEditor_Frm& Window;
    ViewWheelClass Wheel;
};

} // namespace quoril

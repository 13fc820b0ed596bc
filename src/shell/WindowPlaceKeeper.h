// Where the main window was, from one session to the next.
#pragma once

#include "shell/StartUpMod.h"

#include <QPoint>
#include <QRect>

#include <optional>

class QWidget;

namespace quoril {

/// Gives a window the place that the settings hold, follows it while it is moved and sized, and
/// stores where it was last without being minimised or maximised.
class WindowPlaceKeeper {
  public:
    explicit WindowPlaceKeeper(QWidget& KeptWindow) : Window(KeptWindow) {}

    /// To be called before the window is shown, which this does not do. Without a stored place the
    /// window keeps its size, as far as the screen has room, and the desktop places it.
    void Restore();
    /// To be called once the window is on the screen. One that had to grow while it was shown may
    /// have been put there without its frame, and the title bar beyond the screen's edge.
    void Settle();
    /// To be called after each change of the window's place or state.
    void Record();
    void Store() const;

    [[nodiscard]] const WindowPlace& Place() const noexcept { return Last; }

  private:
    [[nodiscard]] WindowPlace PlaceNow() const;

    QWidget& Window;
    WindowPlace Last;
    WindowPlace Before; ///< the normal place before `Last`
    std::optional<QPoint>
        Corner; ///< of the frame, as it was restored; until the window stands there
    bool Applying = true;
};

/// A rectangle moved, and if need be made smaller, so that all of it lies on the screen.
[[nodiscard]] QRect RectOnScreen(QRect Wanted, const QRect& Screen);

} // namespace quoril

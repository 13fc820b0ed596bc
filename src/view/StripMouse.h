// Mouse events on the time scale, the overview bar and its arrows, and what they show.
#pragma once

#include "view/ScaleMouse.h"
#include "view/ScrollMouse.h"
#include "view/ViewWheel.h"

#include <QObject>

class QMouseEvent;
class QTimer;
class QWheelEvent;
class QWidget;

namespace quoril {

class ArrowImage;
class WaveEditor_Frm;

/// Watches the strips of one main window, which owns it.
class StripMouse final : public QObject {
  public:
    /// The strips must have been built.
    explicit StripMouse(WaveEditor_Frm& MainWindow);

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void Turn(const QWidget& Strip, const QWheelEvent& Event);

    bool OnScale(const QMouseEvent& Event);
    void ScalePress(const QMouseEvent& Event);
    void ScaleMove(const QMouseEvent& Event);
    void ScaleRelease(const QMouseEvent& Event);
    [[nodiscard]] std::int32_t ScalePosition(const QMouseEvent& Event) const;
    void ShowScalePosition(std::int32_t Position);
    void RefreshStrips();
    void Follow(const ScaleDeed& Deed);

    bool OnBar(const QMouseEvent& Event);
    void BarMove(const QMouseEvent& Event, double X);
    [[nodiscard]] double BarPixel(double X) const;
    [[nodiscard]] ScrollBar Bar() const;

    bool OnArrow(const QMouseEvent& Event, const ArrowImage& Arrow, int Index);

    WaveEditor_Frm& Window;
    QTimer* MouseMoveWaitTimer;
    ScaleMouseClass Scale;
    ScrollMouseClass Scroll;
    ViewWheelClass Wheel;
};

} // namespace quoril

// Mouse events on the time scale, the overview bar and its arrows, and what they show.
#pragma once

#include "view/ScaleMouse.h"
#include "view/ScrollMouse.h"
#include "view/WheelTurn.h"

#include <QObject>
#include <QPointF>

#include <optional>

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

    /// The view has changed under the mouse: the read-outs follow.
    void PictureRefreshed();

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    void Turn(const QWidget& Strip, const QWheelEvent& Event);

    bool OnScale(const QMouseEvent& Event);
    void ScalePress(const QMouseEvent& Event);
    void ScaleMove(const QMouseEvent& Event);
    void ScaleRelease(const QMouseEvent& Event);
    [[nodiscard]] std::int32_t ScalePosition(const QPointF& Place) const;
    void ShowScalePosition(std::int32_t Position);
    void ScaleLeft();
    void RefreshStrips();
    void Follow(const ScaleDeed& Deed);

    bool OnBar(const QMouseEvent& Event);
    void BarMove(const QMouseEvent& Event, double X);
    /// The pixel of the bar's picture at a place on the bar.
    [[nodiscard]] double BarPixel(const QPointF& Place) const;
    [[nodiscard]] ScrollBar Bar() const;

    bool OnArrow(const QMouseEvent& Event, const ArrowImage& Arrow, int Index);

    WaveEditor_Frm& Window;
    QTimer* MouseMoveWaitTimer;
    ScaleMouseClass Scale;
    ScrollMouseClass Scroll;
    WheelTurn Wheel;
    std::optional<QPointF> OnScaleAt; // where the read-outs stand for, in the scale's own pixels
};

} // namespace quoril

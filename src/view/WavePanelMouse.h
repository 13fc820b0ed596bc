// Mouse and wheel over the wave panels, as the window system tells them.
#pragma once

#include "view/DrawStroke.h"
#include "view/WaveMouse.h"
#include "view/WheelTurn.h"

#include <QObject>
#include <QPointF>

#include <cstdint>

class QLabel;
class QMouseEvent;
class QTimer;
class QWheelEvent;

namespace quoril {

class WaveEditor_Frm;
class WavePanel;
class WaveSource;

/// Hands the events of the panels to WaveMouseClass, and shows what follows the mouse: line
/// cursors, read-outs, the rubber band, the tip of the Zoom tool. One for each main window, which
/// owns it.
class WavePanelMouse final : public QObject {
  public:
    explicit WavePanelMouse(WaveEditor_Frm& MainWindow);

    /// The panels have been drawn anew: what lies over the picture is put back.
    void PictureRefreshed();
    /// A command has run: a gesture whose ground it took away ends.
    void CommandRun();
    /// The document is another one.
    void Clear();
    void HideLines();
    /// Pointer and line colours of the tool in use.
    void ShowTool();
    /// The picture of the panels comes from there.
    void SetSource(const WaveSource* What) { Source = What; }

    WaveMouseClass Mouse;
    QTimer* MouseMoveWaitTimer;

  protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

  private:
    bool PanelEvent(WavePanel& Panel, QEvent* Event);
    void Press(WavePanel& Panel, const QMouseEvent& Event);
    void Move(WavePanel& Panel, const QMouseEvent& Event);
    void Release(WavePanel& Panel, const QMouseEvent& Event);
    void Left();
    void Abandon();
    void Turn(const WavePanel& Panel, const QWheelEvent& Event);
    void ShowReadOut();
    void ShowLines();
    void ShowBand();
    void BeginStroke(const QPoint& Pixel);
    void MoveStroke(const QPoint& Pixel);
    void EndStroke();
    /// Draws the points of the stroke from a number on.
    void ShowStroke(std::int32_t From);
    void ShowZoomTip();
    void FollowTool();

    /// What tells one tool from another.
    struct Tool {
        std::int32_t Mode = MouseModeSelect;
        std::int32_t ViewMode = ViewMouseModeNone;
        friend bool operator==(const Tool&, const Tool&) = default;
    };

    WaveEditor_Frm& Window;
    Tool ToolShown;
    const WaveSource* Source = nullptr;
    WheelTurn Wheel;
    QLabel* ZoomTipLbl;
    DrawStroke Stroke;
    WavePanel* Under = nullptr; // the panel that the mouse is on, or was pressed on
    QPointF At;                 // where on it, in pixels of the window system
};

} // namespace quoril

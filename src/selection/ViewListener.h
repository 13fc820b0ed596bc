// Who redraws when the numbers of the view change, seen from code without windows.
#pragma once

namespace quoril {

/// Implemented by the main window, and by tests.
class ViewListener {
  public:
    virtual ~ViewListener() = default;
    /// Applies the limits of view and selection, and draws the document anew.
    virtual void Refresh_Wave_View() = 0;
    /// Shows the pointer and the line cursors of the current tool.
    virtual void RefreshMousePointer() = 0;
    /// Rewrites the six value labels; while dragging they show the dragged range.
    virtual void RefreshDisplayLabels(bool Dragging) = 0;
    /// Brings the channel controls into line with `SelBoth` and `SelSingle`.
    virtual void RefreshChannelSelector() = 0;
    /// Forgets a mouse button that is held, and the wait after a press.
    virtual void ClearMouseFlags() = 0;
};

/// Names who redraws from now on; null for nobody. The object must outlive its use.
void SetViewListener(ViewListener* Receiver) noexcept;
[[nodiscard]] ViewListener* CurrentViewListener() noexcept;

// The same, sent to the listener; without one nothing happens.
void Refresh_Wave_View();
void RefreshMousePointer();
void RefreshDisplayLabels(bool Dragging);
void RefreshChannelSelector();
void ClearMouseFlags();

} // namespace quoril

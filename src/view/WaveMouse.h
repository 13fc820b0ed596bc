// What the mouse does over the wave panels: the tools of selection and view, from press to release.
// Changes the numbers of base/ViewState.h, and tells the ViewListener. Touches no sample.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

inline constexpr std::int32_t MouseButtonLeft = 1;
inline constexpr std::int32_t MouseButtonRight = 2;

/// The tools, as `MouseMode` and `ViewMouseMode` have them; the view's go before the others.
inline constexpr std::int32_t MouseModeSelect = 0;
inline constexpr std::int32_t MouseModeSecondPoint = 1; ///< waits for the second click
inline constexpr std::int32_t MouseModeStart = 2;
inline constexpr std::int32_t MouseModeEnd = 3;
inline constexpr std::int32_t MouseModeDraw = 7;
inline constexpr std::int32_t ViewMouseModeNone = 0;
inline constexpr std::int32_t ViewMouseModeZoomStart = 4;
inline constexpr std::int32_t ViewMouseModeZoomEnd = 5; ///< waits for the second click
inline constexpr std::int32_t ViewMouseModeZoomAt = 6;
inline constexpr std::int32_t ViewMouseModePan = 8;

/// Between the press of a button and its release. A stroke is drawn with either button.
enum class MouseHold : std::uint8_t { None, Select, Pan, Draw };

/// The sample under a pixel of a panel, for the view as it stands: limited to 1 and the length of
/// the document; 0 when that is empty.
[[nodiscard]] std::int32_t WavePositionAt(double X);
/// The same without the limits.
[[nodiscard]] double WavePlaceAt(double X);

/// The columns of a panel of `Width` pixels that the rubber band inverts, from `First` to before
/// `Past`, for a dragged range in order. Equal when the range lies beside the panel.
struct BandColumns {
    std::int32_t First = 0;
    std::int32_t Past = 0;
    friend bool operator==(const BandColumns&, const BandColumns&) = default;
};
[[nodiscard]] BandColumns BandColumnsOf(std::int32_t From, std::int32_t To, std::int32_t Width);

/// The read-outs of the mouse: time and sample, as "01:05.50/65500"; and the sample's value with
/// the value that the height stands for, as "00012/-345". Without a sample, beside the document or
/// where it cannot be read, a star stands for it.
[[nodiscard]] std::string MouseTimeText(std::int32_t Pos, std::int32_t Freq);
[[nodiscard]] std::string MouseLevelText(const std::int16_t* Sample, std::int32_t Height);

/// The mouse over the wave panels of one window. X is the pixel of the panel, which may lie outside
/// of it while a button is held. Nothing happens over an empty document.
class WaveMouseClass {
  public:
    /// A button went down on a panel, 1 or 2. Another button than left and right does nothing, and
    /// so does a second one while the first is held.
    void Press(std::int32_t Panel, double X, std::int32_t Button);
    /// The mouse moved, and `MoveWait` is off. True when a range is dragged: then the rubber band
    /// is to be drawn.
    bool Move(double X);
    /// A button came up, wherever the mouse is. True when that was the end of a gesture which
    /// counts.
    bool Release(double X, std::int32_t Button);
    /// The second press of two quick ones. It counts as a press, unless it selects everything.
    void DoubleClick(std::int32_t Panel, double X, std::int32_t Button);
    /// The button will not come up here: the window lost the mouse or the keyboard. What the press
    /// did to the tool is undone; the selection stays as it was, and a stroke is dropped.
    void Abandon();
    /// After a change that came from elsewhere. A drag whose tool, selection or document is another
    /// one now is over, and a second click without its first point is not waited for. True when
    /// something of the kind was taken back.
    bool Revise();
    /// Forgets the button that is held, and the wait after its press.
    void Clear() noexcept;

    [[nodiscard]] MouseHold Hold() const noexcept { return Held; }
    /// The button that is held, or was pressed last.
    [[nodiscard]] std::int32_t Button() const noexcept { return LastButton; }
    /// The mouse has been moved with the button held: the rubber band is on the panels.
    [[nodiscard]] bool Dragging() const noexcept { return Held == MouseHold::Select && DragSeen; }

    std::int32_t DragFrom = 0; ///< the range that the labels show during a gesture
    std::int32_t DragTo = 0;
    bool MoveWait = false; ///< moves are ignored, so that a shaky click is no drag

  private:
    /// Numbers that must not change under a gesture.
    struct Ground {
        std::int32_t SelStart = 0;
        std::int32_t SelEnd = 0;
        std::int32_t Mode = 0;
        std::int32_t ViewMode = 0;
        std::int32_t Total = 0;
        friend bool operator==(const Ground&, const Ground&) = default;
    };
    [[nodiscard]] static Ground GroundNow();

    bool GroundLost();
    void TakePanel(std::int32_t Panel);
    void PressWithViewTool(std::int32_t Pos, std::int32_t Button);
    void PressZoomEnd(std::int32_t Pos);
    void PressZoomAt(std::int32_t Pos, std::int32_t Button);
    void PressLeft(std::int32_t Pos);
    void Adjust(std::int32_t Pos);
    void Grab(MouseHold Kind, std::int32_t Pos, std::int32_t ModeBefore);
    void Pan(std::int32_t Pos);
    void Select(std::int32_t Pos);

    MouseHold Held = MouseHold::None;
    bool DragSeen = false;
    bool HadRange = false; // at the press the selection was a range
    std::int32_t DownPos = 0;
    std::int32_t LastButton = 0;
    std::int32_t ModeAtPress = 0;
    Ground AtPress;
};

} // namespace quoril

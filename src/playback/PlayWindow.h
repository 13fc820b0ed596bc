// What the play controls show, and what they ask of the window.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

/// Implemented by the main window's wiring, and by tests.
class PlayWindow {
  public:
    virtual ~PlayWindow() = default;

    /// The gate of all commands that work on the selection.
    virtual bool ConfirmSelection(std::int32_t& FromPos, std::int32_t& ToPos, std::int32_t& WorkChn,
                                  std::int32_t Need, const std::string& Operation) = 0;
    /// A time in seconds as the program writes it.
    [[nodiscard]] virtual std::string FormatDuration(float Seconds) const = 0;
    /// The window's handle for the component, never 0.
    [[nodiscard]] virtual std::int32_t Handle() const = 0;

    virtual void RefreshPlayScale() = 0;
    virtual void RefreshScrollScale() = 0;

    /// Whether "Play", "PlayRev", "Stop" and "UTurn" of `PlayToolbar` are enabled.
    [[nodiscard]] virtual bool PlayEnabled() const = 0;
    /// Enables "Play", "PlayRev", "Stop" and "UTurn".
    virtual void EnablePlayButtons() = 0;
    virtual void SetPause(bool Enabled, const std::string& ToolTip) = 0;
    /// "Stop" and "UTurn": there is no player that they could reach.
    virtual void DisableStop() = 0;
    virtual void SetLoopPressed(bool Pressed) = 0;

    /// `PlayPosTimer`, 40 ms.
    virtual void SetPlayPosTimer(bool On) = 0;
    /// The lines `PlayPosShp`(1) and (2), in columns of their panels; -2 is out of sight.
    virtual void MovePlayPosShp(std::int32_t X1, std::int32_t X2) = 0;
    virtual void SetPlayPosLbl(const std::string& Text) = 0;
    virtual void SetPlayStatusLbl(const std::string& Text) = 0;

    /// The tool tip of `PlaySpeedSlider`(Index) and the text of `SpeedDispLbl`(Index).
    virtual void SetSpeedText(std::int32_t Index, const std::string& Text) = 0;
    /// Shows `SpeedBoxPic` with the values of its two sliders.
    virtual void ShowSpeedBox(std::int32_t ValueFor, std::int32_t ValueRev) = 0;
};

/// Names the window from now on; null for none, which shows nothing and selects nothing. The object
/// must outlive its use.
void SetPlayWindow(PlayWindow* Window) noexcept;
[[nodiscard]] PlayWindow& CurrentPlayWindow() noexcept;

} // namespace quoril

// What the mouse does on the time scale: it makes the play selection, and says what is to be
// played. Numbers only; the window draws, plays and shows tips.
#pragma once

#include <cstdint>
#include <string_view>

namespace quoril {

/// A tip that may follow once in a while.
inline constexpr double ScaleTipChance = 0.05;
inline constexpr std::string_view ScaleAdjustTip =
    "See options for \"Quick play\" when you click or select on this scale.";
inline constexpr std::string_view ScaleClickTip =
    "For \"Quick play\" by clicking or selecting on this scale, set it \"ON\" in options.";

/// What follows a gesture.
struct ScaleDeed {
    std::int32_t PlayCode = 0; ///< the play command to give; 0 for none
    std::int32_t PlayArg = 0;  ///< its argument, in samples
    std::string_view Tip;      ///< a tip that follows by chance; empty for none
    friend bool operator==(const ScaleDeed&, const ScaleDeed&) = default;
};

/// The right button at a position of a document of `Total` samples: moves the nearer end of the
/// play selection there; without one it goes from there to the end of the document.
[[nodiscard]] ScaleDeed ScaleAdjust(std::int32_t Position, std::int32_t Total) noexcept;

/// The left button on the time scale of one window. Positions are samples from 1.
class ScaleMouseClass {
  public:
    void Press(std::int32_t Position) noexcept;
    /// With the button held: the play selection goes from the press to here. True when it was set.
    bool Drag(std::int32_t Position, std::int32_t Total) noexcept;
    /// The button came up; nothing follows unless it went down on the scale.
    [[nodiscard]] ScaleDeed Release(std::int32_t Position, std::int32_t Total) noexcept;
    /// The button came up somewhere else, unseen: the gesture is over.
    void Forget() noexcept { ScaleDown = ScaleDragged = false; }
    [[nodiscard]] bool IsDown() const noexcept { return ScaleDown; }

    bool MoveWait = false; ///< moves are ignored, so that a shaky click is no drag

  private:
    bool Select(std::int32_t Position, std::int32_t Total) noexcept;

    bool ScaleDown = false;
    bool ScaleDragged = false;
    std::int32_t ScaleAnchor = 0; ///< where the button went down
};

} // namespace quoril

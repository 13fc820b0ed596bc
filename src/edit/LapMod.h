// Cutting a stretch in two, and letting the halves overlap so that the cut is not heard.
#pragma once

#include <array>
#include <cstdint>

namespace quoril {

/// What the selection is.
enum LapSelections : std::int32_t {
    LapSelectionBoth = 0,   ///< the two halves, cut in the middle
    LapSelectionFirst = 1,  ///< the first one, cut at its end
    LapSelectionSecond = 2, ///< the second one, cut at its start
};
/// How the one runs into the other.
enum LapTransitions : std::int32_t { LapSmooth = 0, LapSimple = 1 };

/// The indexes of the options chosen.
struct LapChoice {
    std::int32_t SelcOpn = LapSelectionBoth;
    std::int32_t TransOpn = LapSmooth;
    friend bool operator==(const LapChoice&, const LapChoice&) = default;
};

struct LapAnswer {
    bool OkClicked = false;
    LapChoice Choice;
};

/// Implemented by `LapFrm`, and by tests.
class LapDialog {
  public:
    virtual ~LapDialog() = default;
    virtual LapAnswer ShowLap() = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetLapDialog(LapDialog* Receiver) noexcept;

/// `Edit_Lap_Mnu`: two stretches of equal length, end to end, become one in which they overlap. One
/// undo step. A failure passes through; before the document is touched nothing has changed.
void EditLap();

// ---- For the dialog

inline constexpr std::array<const char*, 3> LapSelcCaptions = {
    "Current selection is both (cut in the middle)",
    "Current selection is the first part (cut at the end of it)",
    "Current selection is second part  (cut at the start)"};
inline constexpr std::array<const char*, 2> LapTransCaptions = {
    "Smooth transition (fade out and fade in)", "Simple overlap"};

/// The choice of the last time; an option that there is not gives the first one.
[[nodiscard]] LapChoice LapSettingsRead();
void LapSettingsWrite(const LapChoice& Choice);

} // namespace quoril

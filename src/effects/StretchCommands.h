// Stretch/Shrink and Change Speed: one dialog, one arithmetic.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

/// What stands in the dialog.
struct StretchEntry {
    std::string Start; ///< a percentage from 10 to 1000
    std::string End;   ///< another one, in force with `UseTwo`
    bool UseTwo = false;
    bool Move = false; ///< what follows the selection moves, instead of being overwritten
    friend bool operator==(const StretchEntry&, const StretchEntry&) = default;
};

struct StretchAnswer {
    bool OkClicked = false;
    StretchEntry Entry;
};

/// Implemented by `EntStrchFrm`, and by tests.
class StretchDialog {
  public:
    virtual ~StretchDialog() = default;
    /// Asks for the stretch (index 0) or the tempo (1), beginning with `Shown`.
    virtual StretchAnswer ShowStretch(std::int32_t Index, const StretchEntry& Shown) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetStretchDialog(StretchDialog* Receiver) noexcept;

// What the dialog begins with: what was accepted last in this process. A percentage of 0 gives way
// to its first value. The speed is kept as the stretch that it amounts to.
extern double StretchStart;
extern double StretchEnd;
extern double SpeedStart;
extern double SpeedEnd;
extern bool UseTwoValues;
extern bool MoveFollowing;

/// `Stretch_Mnu` of that index, 0 "Stretch / Shrink" or 1 "Change Speed": asks for the percentages
/// and makes the selection longer or shorter, as one undo step. A failure is told, and leaves the
/// document as it was.
void Stretch(std::int32_t Index);

} // namespace quoril

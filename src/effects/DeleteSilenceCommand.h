// The command that shortens the quiet stretches of the selection.
#pragma once

#include "effects/DelSilenChoice.h"

namespace quoril {

struct DelSilenAnswer {
    bool OkClicked = false;
    DelSilenChoice Choice;
};

/// Implemented by `DelSilenFrm`, and by tests.
class DelSilenDialog {
  public:
    virtual ~DelSilenDialog() = default;
    /// Asks, with the given values shown, until the choice has no problem or the user backs out.
    virtual DelSilenAnswer ShowDelSilen(const DelSilenChoice& Shown) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetDelSilenDialog(DelSilenDialog* Receiver) noexcept;

/// `DeleteSilence_Mnu`: asks what is silence and how much of it is to remain, and shortens the
/// selection. The sound behind it moves up. One undo step. A failure is told, and leaves the
/// document as it was.
void DeleteSilence();

} // namespace quoril

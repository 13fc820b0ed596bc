// The echo as a command.
#pragma once

#include "effects/EchoParams.h"

namespace quoril {

/// Implemented by `EchoFrm`, and by tests.
class EchoDialog {
  public:
    virtual ~EchoDialog() = default;
    /// Asks, beginning with `Params`, which takes each value as soon as its field is left. False
    /// when the user backs out; with true the setting is written.
    virtual bool ShowEcho(EchoParamsRec& Params) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetEchoDialog(EchoDialog* Receiver) noexcept;

/// `Echo_Mnu`: asks for the echo and adds it to the selection and to what follows, as far as it
/// reaches. One undo step. A failure is told, and leaves the document as it was.
void Echo();

} // namespace quoril

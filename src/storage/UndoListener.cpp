#include "storage/UndoListener.h"

namespace quoril {

namespace {

UndoListener* Listener = nullptr;

} // namespace

void SetUndoListener(UndoListener* Receiver) noexcept {
    Listener = Receiver;
}

UndoListener* CurrentUndoListener() noexcept {
    return Listener;
}

} // namespace quoril

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

void SetMenu_To_DefaultFormat() {
    if (Listener != nullptr)
        Listener->SetMenu_To_DefaultFormat();
}

} // namespace quoril

#include "selection/ViewListener.h"

namespace quoril {
namespace {
ViewListener* Listener = nullptr;
}

void SetViewListener(ViewListener* Receiver) noexcept {
    Listener = Receiver;
}
ViewListener* CurrentViewListener() noexcept {
    return Listener;
}

void Refresh_Wave_View() {
    if (Listener != nullptr)
        Listener->Refresh_Wave_View();
}

void RefreshMousePointer() {
    if (Listener != nullptr)
        Listener->RefreshMousePointer();
}

void RefreshDisplayLabels(bool Dragging) {
    if (Listener != nullptr)
        Listener->RefreshDisplayLabels(Dragging);
}

void RefreshChannelSelector() {
    if (Listener != nullptr)
        Listener->RefreshChannelSelector();
}

void ClearMouseFlags() {
    if (Listener != nullptr)
        Listener->ClearMouseFlags();
}

} // namespace quoril

#include "base/BusyPointer.h"

namespace quoril {

namespace {
BusyPointerRoutine Receiver = nullptr;
}

void SetBusyPointerRoutine(BusyPointerRoutine Routine) noexcept {
    Receiver = Routine;
}

BusyPointer::BusyPointer() : Shown(Receiver) {
    if (Shown != nullptr)
        Shown(true);
}

BusyPointer::~BusyPointer() {
    if (Shown != nullptr)
        Shown(false);
}

} // namespace quoril

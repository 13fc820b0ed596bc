#include "base/BusyPointer.h"

#include <utility>

namespace quoril {

namespace {
BusyPointerRoutine Receiver;
}

void SetBusyPointerRoutine(BusyPointerRoutine Routine) noexcept {
    Receiver = std::move(Routine);
}

BusyPointer::BusyPointer() : Shown(Receiver) {
    if (Shown)
        Shown(true);
}

BusyPointer::~BusyPointer() {
    if (Shown)
        Shown(false);
}

} // namespace quoril

#include "base/WaitPointer.h"

namespace quoril {

namespace {
void (*CurrentSwitch)(bool Busy) = nullptr;
}

void SetWaitPointerSwitch(void (*Switch)(bool Busy)) noexcept {
    CurrentSwitch = Switch;
}

WaitPointer::WaitPointer() : Used(CurrentSwitch) {
    if (Used != nullptr)
        Used(true);
}

WaitPointer::~WaitPointer() {
    if (Used != nullptr)
        Used(false);
}

} // namespace quoril

// The pointer that says "please wait", seen from code without windows.
#pragma once

#include <functional>

namespace quoril {

/// Shows the busy pointer (true) or takes it back (false). Calls come in pairs, and may be nested.
using BusyPointerRoutine = std::function<void(bool Busy)>;

/// Names who shows it from now on; empty for nobody.
void SetBusyPointerRoutine(BusyPointerRoutine Routine) noexcept;

/// The busy pointer for the length of a scope, also when a failure passes through.
class BusyPointer {
  public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    BusyPointerRoutine Shown; ///< who showed it also takes it back
};

} // namespace quoril

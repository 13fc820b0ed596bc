// The wait cursor of a long command, seen from code without windows.
#pragma once

namespace quoril {

/// Names what shows (true) and takes away (false) the wait cursor; null: nothing is shown. Calls
/// come in pairs and may be nested.
void SetWaitPointerSwitch(void (*Switch)(bool Busy)) noexcept;

/// The wait cursor for the length of a scope, also when a failure passes through.
class WaitPointer {
  public:
    WaitPointer();
    ~WaitPointer();
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;

  private:
    void (*Used)(bool Busy);
};

} // namespace quoril

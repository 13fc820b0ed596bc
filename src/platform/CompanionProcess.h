// A program that works for this one for as long as this one lives.
#pragma once

#include "platform/Descriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace quoril {

/// A child whose standard input is held open by this process and says nothing: it ends there when
/// this process ends, in whatever way, and the child is expected to end then, too. It has none of
/// our other files open. One thread at a time; started and ended on the same thread.
class CompanionProcess {
  public:
    CompanionProcess() noexcept = default;
    /// Starts `Arguments[0]`, a path, and waits for the line "ready" on its standard output.
    /// Throws Failure when it does not start, or has not said so after `MostMs`; it is gone then.
    CompanionProcess(const std::vector<std::string>& Arguments, int MostMs);
    ~CompanionProcess() { End(); }
    CompanionProcess(const CompanionProcess&) = delete;
    CompanionProcess& operator=(const CompanionProcess&) = delete;

    /// Whether it still runs. One that has ended leaves nothing behind in the system's table.
    [[nodiscard]] bool IsRunning() noexcept;
    [[nodiscard]] pid_t Id() const noexcept { return Child; }
    /// Ends it: it is given a moment to go by itself.
    void End() noexcept;

  private:
    void Start(const std::vector<std::string>& Arguments);
    [[nodiscard]] bool SaysReady(int MostMs) const noexcept;

    pid_t Child = -1;
    Descriptor LifeLine;
    Descriptor Words;
};

} // namespace quoril

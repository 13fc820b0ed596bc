// Other programs, started from a list of arguments and never through a shell.
#pragma once

#include "platform/Descriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace quoril {

/// The files that a program of this name may be, in the order in which they are tried: the name
/// itself if it has a "/", else one in each folder of $PATH.
[[nodiscard]] std::vector<std::string> ProgramFiles(const std::string& Name);

/// How a child ended.
struct ChildResult {
    bool Started = false;   ///< false: no such program, or no right to run it
    int ExitCode = -1;      ///< its exit code; 128 + the signal's number if a signal ended it
    std::string StartError; ///< the system's words when it did not start
};

/// Starts a program (found on $PATH unless the name has a "/"), waits for its end, and gives how
/// it ended. `Arguments[0]` is the program. It reads nothing from its input, says its words where
/// we say ours, and has none of our files open.
[[nodiscard]] ChildResult RunAndWait(const std::vector<std::string>& Arguments);

/// Starts a program that lives on without us, in a session of its own, without input and output.
/// The result tells only whether it started.
[[nodiscard]] ChildResult StartDetached(const std::vector<std::string>& Arguments);

/// A program that works for us while we do something else, an encoder for instance. It leads a
/// group of its own, so that what it starts can be ended with it; and it ends when this process
/// does.
class WorkerProcess {
  public:
    /// Starts it. What it says goes into the file `Words`, which is made anew. Throws Failure with
    /// the system's words when it does not start.
    WorkerProcess(const std::vector<std::string>& Arguments, const std::string& Words);
    /// Ends it, if it still runs.
    ~WorkerProcess() { End(); }
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Waits for its end, `MostMs` at most; less long when a signal comes.
    [[nodiscard]] bool EndedWithin(int MostMs) noexcept;
    /// How it ended, as ChildResult has it; -1 while it runs.
    [[nodiscard]] int ExitCode() const noexcept { return Code; }
    /// Ends it and what it has started: asked to go, and made to after a moment.
    void End() noexcept;

  private:
    pid_t Child = -1; ///< -1 when it has ended
    Descriptor Watch; ///< becomes readable at its end
    int Code = -1;
};

} // namespace quoril

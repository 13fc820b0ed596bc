// Other programs, started from a list of arguments and never through a shell.
#pragma once

#include <string>
#include <vector>

namespace quoril {

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

} // namespace quoril

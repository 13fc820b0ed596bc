// Signals that ask the program to end, as something that an event loop can wait for.
#pragma once

namespace quoril {

/// From now on SIGTERM and SIGINT make the returned descriptor readable instead of ending the
/// process; a second one of the same kind ends it at once. SIGHUP, the end of the terminal that the
/// program was started from, does nothing. Call once. -1 when the system refuses: signals then end
/// the process as ever.
[[nodiscard]] int TerminationSignalsCatch();

} // namespace quoril

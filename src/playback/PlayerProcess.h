// The player component in a process of its own.
#pragma once

#include "playback/PlayerComponent.h"

#include <memory>
#include <string>

namespace quoril {

/// Starts the program `quoril-player`, which lies beside this one, and talks to it over a socket in
/// the session folder. Throws Failure when it does not start. A call that is not answered within a
/// few seconds fails, so that a player that hangs stops nobody. Messages of the component come from
/// the event loop.
[[nodiscard]] std::unique_ptr<PlayerComponent> StartPlayerProcess();
/// The same for a given program and folder.
[[nodiscard]] std::unique_ptr<PlayerComponent> StartPlayerProcess(const std::string& Program,
                                                                  const std::string& Folder);

/// The process number of a player that was started here; -1 when it has ended.
[[nodiscard]] int PlayerProcessId(const PlayerComponent& Component);

} // namespace quoril

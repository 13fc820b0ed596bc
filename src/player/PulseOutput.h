// Sound through the sound server of the desktop.
#pragma once

#include "player/SoundOutput.h"

#include <memory>

namespace quoril {

/// Connects to the sound server; null when none answers within a few seconds.
[[nodiscard]] std::unique_ptr<SoundOutput> MakePulseOutput(const OutputNotice& Notice);

} // namespace quoril

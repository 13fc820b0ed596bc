// Sound through the plain sound of the system.
#pragma once

#include "player/SoundOutput.h"

#include <memory>

namespace quoril {

/// The default device; null when it cannot be opened.
[[nodiscard]] std::unique_ptr<SoundOutput> MakeAlsaOutput(const OutputNotice& Notice);

} // namespace quoril

// Which sound system the machine has.
#pragma once

#include <cstdint>
#include <optional>

namespace quoril {

/// What the sound system says of itself. `Version` may carry the bit 0x40000 beside its number.
struct DirectXVersion {
    bool Known = false; ///< false: it was asked and gave no answer
    std::int32_t Version = 0;
    std::int32_t Revision = 0;
};

/// Asks the sound server of the desktop for its version. Nothing when it cannot be asked: the
/// program has no connection to one.
[[nodiscard]] std::optional<DirectXVersion> DirectXSetupGetVersion();

} // namespace quoril

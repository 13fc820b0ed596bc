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

    /// The version without the bit beside it.
    [[nodiscard]] std::int32_t Number() const noexcept { return Version & ~0x40000; }
};

/// Asks the sound server of the desktop for its version, for half a second at most, and starts
/// none. One that answers counts as version 8, revision 0, whichever it is. Nothing when the
/// connection to it cannot even be tried.
[[nodiscard]] std::optional<DirectXVersion> DirectXSetupGetVersion();

} // namespace quoril

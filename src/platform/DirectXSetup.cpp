#include "platform/DirectXSetup.h"

namespace quoril {

std::optional<DirectXVersion> DirectXSetupGetVersion() {
    return std::nullopt;
}

} // namespace quoril

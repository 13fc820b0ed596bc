#include "platform/DirectXSetup.h"

#include "platform/PulseConnection.h"

namespace quoril {

namespace {

constexpr std::int32_t VersionOfAnyServer = 8;
constexpr std::chrono::milliseconds LongestWait{500};

} // namespace

std::optional<DirectXVersion> DirectXSetupGetVersion() {
    PulseConnection Server;
    if (!Server.CanBeTried())
        return std::nullopt;
    if (!Server.Connect(LongestWait))
        return DirectXVersion{};
    return DirectXVersion{true, VersionOfAnyServer, 0};
}

} // namespace quoril

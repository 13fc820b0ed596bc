// Numbers of long random tests that somebody may want to set by hand.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace quoril::test {

/// The number in a variable of the environment, or another one when it is not set.
[[nodiscard]] inline std::uint32_t FromEnvironment(const char* Name, std::uint32_t Otherwise) {
    const char* const Text = std::getenv(Name);
    return Text == nullptr ? Otherwise
                           : static_cast<std::uint32_t>(std::strtoul(Text, nullptr, 10));
}

} // namespace quoril::test

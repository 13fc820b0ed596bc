// The changes of the format sample by sample, as they are told: what the fast ones must give.
#pragma once

#include "base/DocumentState.h"

#include <array>
#include <cstdint>
#include <vector>

namespace quoril::test {

/// A whole document as plain arrays; the second one of a mono document is empty.
struct PlainSound {
    WaveFormat Format;
    std::array<std::vector<std::int16_t>, 2> Channels;
    friend bool operator==(const PlainSound&, const PlainSound&) = default;
};

[[nodiscard]] PlainSound InBits(const PlainSound& Sound, std::int32_t Bits);
[[nodiscard]] PlainSound InStereo(const PlainSound& Sound);
/// `Way`: 0 keeps the left channel, 1 the right one, 2 merges both.
[[nodiscard]] PlainSound InMono(const PlainSound& Sound, std::int32_t Way);
[[nodiscard]] PlainSound AtRate(const PlainSound& Sound, std::int32_t Rate);

} // namespace quoril::test

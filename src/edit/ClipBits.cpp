#include "edit/ClipBits.h"

#include "base/Arithmetic.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr std::int32_t RunLength = 100000;

} // namespace

void ClipBitsChange(BlockCarrBuffClass& Carrier, std::int32_t FromBits, std::int32_t ToBits) {
    const bool Narrower = FromBits == 16 && ToBits == 8;
    if (!Narrower && !(FromBits == 8 && ToBits == 16))
        return;
    const auto Change = [Narrower](std::int16_t Sample) {
        return RoundToInteger(Narrower ? Sample / 256.0 : Sample * 255.0);
    };
    Carrier.WaveRunsChange(
        1, Carrier.WaveINos, RunLength,
        [&Change](std::int32_t, std::span<const std::int16_t> In, std::span<std::int16_t> Out) {
            std::ranges::transform(In, Out.begin(), Change);
        });
}

} // namespace quoril

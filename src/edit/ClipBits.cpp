#include "edit/ClipBits.h"

#include "base/Arithmetic.h"
#include "storage/CarrierWalk.h"

#include <algorithm>
#include <vector>

namespace quoril {

void ClipBitsChange(BlockCarrBuffClass* CarrL, BlockCarrBuffClass* CarrR, std::int32_t FromBits,
                    std::int32_t ToBits) {
    const bool Narrower = FromBits == 16 && ToBits == 8;
    if (!Narrower && !(FromBits == 8 && ToBits == 16))
        return;
    const auto ChangeRun = [Narrower](std::int32_t, std::span<const std::int16_t> In,
                                      std::span<std::int16_t> Out) {
        std::ranges::transform(In, Out.begin(), [Narrower](std::int16_t Sample) {
            return RoundToInteger(Narrower ? Sample / 256.0 : Sample * 255.0);
        });
    };
    std::vector<ChannelChange> Channels;
    for (BlockCarrBuffClass* const Carrier : {CarrL, CarrR})
        if (Carrier != nullptr)
            Channels.push_back({Carrier, ChangeRun});
    ChangeSideBySide(Channels);
}

} // namespace quoril

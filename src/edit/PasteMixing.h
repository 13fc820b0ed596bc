// Computing the clip's samples together with those of the document that they are pasted over.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>

namespace quoril {

enum class PasteMixMode : std::uint8_t { Mix, Modulate, CrossFade };

/// Changes the clip's carriers in place, both channels side by side, over the shorter of clip and
/// document; what the clip has beyond stays. `WorkChn`: 0 both, 1 left, 2 right; a carrier of a
/// channel that is not in use may be null. Shows progress in a window of its own.
void PasteMixing(PasteMixMode Mode, std::int32_t WorkChn, std::int32_t Bits,
                 BlockCarrBuffClass* ClipL, BlockCarrBuffClass* ClipR,
                 const BlockCarrBuffClass* DocL, const BlockCarrBuffClass* DocR);

} // namespace quoril

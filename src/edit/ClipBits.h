// Samples of a clip in the bits of the document that they are pasted into.
#pragma once

#include "storage/BlockCarrBuffClass.h"

#include <cstdint>

namespace quoril {

/// 16 to 8 bits: each sample / 256, rounded to nearest with ties to even (the highest become 128).
/// 8 to 16 bits: each sample x 255; fails with "Overflow" for samples that 8 bits cannot have
/// and 16 bits cannot hold. Other bits, and equal ones: nothing is read. Either carrier may be
/// null.
void ClipBitsChange(BlockCarrBuffClass* CarrL, BlockCarrBuffClass* CarrR, std::int32_t FromBits,
                    std::int32_t ToBits);

} // namespace quoril

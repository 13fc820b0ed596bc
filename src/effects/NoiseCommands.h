// Noise reduction: learning what a noise is like, and taking it out of a range.
#pragma once

#include <cstdint>

namespace quoril {

/// `EffectNoisReduMnu` of that index: 0 learns the noise of the selection, and leaves the document
/// as it is; 1 takes the learnt noise out of the selection, as one undo step. A failure is told,
/// and leaves the document as it was.
void EffectNoisRedu(std::int32_t Index);

} // namespace quoril

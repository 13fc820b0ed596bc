#include "base/PlayState.h"

namespace quoril {

bool LoopOn = false;
bool QuickPlay = true;
float TempoFor = 1.0F;
float TempoRev = 1.0F;
std::int32_t SoundDriverState = 0;

} // namespace quoril

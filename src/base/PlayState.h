// The plain state of playback and of the sound driver, for every layer to read.
#pragma once

#include <cstdint>

namespace quoril {

extern bool LoopOn;                   ///< play over and over again
extern bool QuickPlay;                ///< a click on the time scale starts playing
extern float TempoFor;                ///< speed of forward play, 0.1 to 2; 1 is the sound's own
extern float TempoRev;                ///< speed of reverse play
extern std::int32_t SoundDriverState; ///< 0 off or failed, 1 sound server, 2 plain system sound

} // namespace quoril

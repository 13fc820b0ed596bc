// The switch of the sound driver.
#pragma once

#include <cstdint>

namespace quoril {

inline constexpr std::int16_t SoundDriverOn = -1;
inline constexpr std::int16_t SoundDriverOff = 0;

/// Switches the driver on (-1) or off (0), and sets `SoundDriverState`. A driver that cannot be
/// switched on is told in a box; never fails.
void SoundDriverSwitch(std::int16_t State);

/// When the component has ended by itself it is started anew, with its driver on; the driver's
/// state tells whether that went well. Nothing happens while the driver is off. Never fails.
void SoundDriverRevive();

} // namespace quoril

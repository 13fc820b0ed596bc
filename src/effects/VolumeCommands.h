// The volume commands: changing by a factor or a ramp, and bringing the peak to a level.
#pragma once

#include <cstdint>

namespace quoril {

/// Multiplies the selected samples. `Mode`: 0 asks for one or two percentages, 4 Fade Out, 5 Fade
/// In, 11 to 17 the presets 200, 160, 120, 85, 70, 50 and 25 %, 21 Silence. Another mode does
/// nothing.
void AdjustVolume(std::int32_t Mode);

/// Multiplies each channel of the selection so that its peak reaches a percentage of the largest
/// sample. `Mode`: 0 asks, 3 Maximize, 11 to 17 as above, 21 100 %. Another mode does nothing.
void OptimizeVolume(std::int32_t Mode);

} // namespace quoril

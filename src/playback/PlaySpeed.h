// The speed of playing: two sliders and two labels.
#pragma once

#include <cstdint>
#include <string>

namespace quoril {

/// The range of `PlaySpeedSlider`(1), forward, and (2), reverse.
inline constexpr std::int32_t PlaySpeedLeast = -10; ///< twice the sound's own speed
inline constexpr std::int32_t PlaySpeedMost = 9;    ///< a tenth of it

/// The speed of a slider's value: 1 - value / 10.
[[nodiscard]] float PlaySpeedOf(std::int32_t Value) noexcept;
/// The slider's value of a speed.
[[nodiscard]] std::int32_t PlaySpeedValue(float Speed);
/// A speed in whole percent, cut off: "70%".
[[nodiscard]] std::string PlaySpeedText(float Speed);

/// Slider `Index` (1 or 2) was moved: the speed is taken on, also by what plays.
void PlaySpeedChange(std::int32_t Index, std::int32_t Value);
/// `SoundTmpoMnu` and the speed labels: shows the sliders, or says why there are none.
void PlaySpeedShow();

} // namespace quoril

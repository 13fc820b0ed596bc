// The time text of the program: hh:mm:ss.ss with as few parts as the time needs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quoril {

/// A time as text, rounded first to hundredths (ties to even): 5 is "05", 65.5 is "01:05.50",
/// 3605 is "1:00:05". Hundredths that are nothing are left out. A time below zero is written in
/// seconds alone ("-65.50"), the only form that ParseDuration reads back.
/// Fails with "Overflow" for NaN and when the hours pass 32 bits.
[[nodiscard]] std::string FormatDuration(float Seconds);

/// The time that a text means, in seconds: "h:m:s", "m:s" or "s". Each part counts as its leading
/// decimal number, junk as 0; parts beyond the third are ignored; the parts are summed with their
/// signs. Empty is 0. Fails with "Overflow" beyond the range of single precision.
[[nodiscard]] float ParseDuration(std::string_view Text);

/// Samples, or a position as it stands, as time at `Freq` Hz. Fails as FormatDuration does, and
/// when `Freq` is 0.
[[nodiscard]] std::string FormatSamples(std::int64_t Samples, std::int32_t Freq);

} // namespace quoril

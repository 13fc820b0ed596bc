// The one random generator of the process.
#pragma once

namespace quoril {

/// The next number, evenly spread from 0 to below 1.
[[nodiscard]] double RandomDraw() noexcept;
/// Starts the sequence of numbers anew; equal seeds give equal sequences. A process that never
/// calls this has always the same one.
void RandomSeed(double Seed) noexcept;

} // namespace quoril

// The commands that rearrange samples without filtering. Each works on the selected range and is
// one undo step.
#pragma once

namespace quoril {

/// The last sample first.
void WaveReverse();
/// Every sample negated; the lowest value becomes the highest.
void WaveInvert();
/// Asks for a percentage of the full height, and adds it to every sample.
void WaveMoveUpDown();
/// Asks for a distance in samples, and moves the range over what stands there; silence stays
/// behind.
void WaveMoveForwardBack();
/// Exchanges the channels. Nothing in a mono document.
void InterchangeChannels();

} // namespace quoril

// The flags and the format that say how the document stands, for every layer to read.
#pragma once

#include <array>
#include <cstdint>

namespace quoril {

/// Channels 1 or 2, sampling rate in Hz, bits 8 or 16.
struct WaveFormat {
    std::int32_t Channel = 1;
    std::int32_t Freq = 22050;
    std::int32_t Bits = 16;
    friend bool operator==(const WaveFormat&, const WaveFormat&) = default;
};

/// What the Format menu shows, and what a new document takes.
extern WaveFormat CurrentFormat;

/// The rates that have entries of their own: `Format_FrQ_Menu` by index, in Hz.
inline constexpr std::array<std::int32_t, 9> MenuRates = {11025, 22050, 44100, 8000, 12000,
                                                          16000, 24000, 32000, 48000};
/// The rate that the entry "Custom Hz" stands for: that of the current format when it has no entry
/// of its own, otherwise 0.
[[nodiscard]] std::int32_t CustomRate() noexcept;

extern bool WaveChanged;     ///< the samples differ from the document's file
extern bool BookmarkChanged; ///< the bookmarks differ from their file
extern bool UndoOptionON;    ///< edits leave a record in the journal

} // namespace quoril

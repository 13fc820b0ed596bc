// The flags and the format that say how the document stands, for every layer to read.
#pragma once

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

extern bool WaveChanged;     ///< the samples differ from the document's file
extern bool BookmarkChanged; ///< the bookmarks differ from their file
extern bool UndoOptionON;    ///< edits leave a record in the journal

} // namespace quoril

// The line of text on the desktop's clipboard that says: there is copied sound, and its description
// lies in this folder.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace quoril {

inline constexpr const char* ClipMarkerWord = "QuorilWaveEditorClip";

/// The seven fields of the line, without the first, which is the word above.
struct ClipMarker {
    std::int32_t Channels = 1;    ///< of the clip: 1 or 2
    std::int32_t Length = 0;      ///< samples per channel
    std::int32_t Bits = 16;       ///< of the document that the clip was taken from
    std::int32_t Freq = 22050;    ///< Hz, of the same
    std::string FreqText;         ///< the field as it stands in the line; set by reading
    std::int32_t ClipPointer = 0; ///< the clip's random number; 0 when the field has none
    std::string Folder;           ///< where the descriptions lie; no separator at the end
};

[[nodiscard]] std::string ClipMarkerLine(const ClipMarker& Marker);
/// The way back: nothing for any other text, for a line that has not seven fields (a folder with a
/// comma makes eight), for a length below 1, for other channels than 1 and 2, and for texts with a
/// zero byte or longer than any such line. Numbers that pass 32 bits count as 0.
[[nodiscard]] std::optional<ClipMarker> ClipMarkerRead(const std::string& Line);

} // namespace quoril

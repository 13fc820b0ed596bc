// One named point or range of a document, and the list of them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

enum BokTypes : std::int32_t { BokPoint = 1, BokRange = 2 };

struct BookmarkRec {
    std::string Name;                ///< shown in the lists and on the waveform
    std::string Text;                ///< free comment
    std::int32_t BokType = BokPoint; ///< 1 one point, 2 a range
    std::int32_t From = 0;           ///< first sample, from 1
    std::int32_t To = 0;             ///< last sample; equal to From for a point
    bool Selected = false;           ///< marked for saving the bookmarked parts
};

/// The bookmarks of the document: records 1 to BookmarkNos(), index 0 unused.
extern std::vector<BookmarkRec> Bookmarks;
/// How many there are; 0 when the list is empty.
[[nodiscard]] std::int32_t BookmarkNos() noexcept;
/// A bookmark with the name that the next new one has.
[[nodiscard]] BookmarkRec NewBookmark();
/// Puts a bookmark at the end of the list.
void BookmarkAppend(BookmarkRec Bookmark);

} // namespace quoril

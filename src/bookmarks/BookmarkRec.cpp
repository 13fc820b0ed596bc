#include "bookmarks/BookmarkRec.h"

#include <utility>

namespace quoril {

std::vector<BookmarkRec> Bookmarks(1);

std::int32_t BookmarkNos() noexcept {
    return Bookmarks.empty() ? 0 : static_cast<std::int32_t>(Bookmarks.size()) - 1;
}

BookmarkRec NewBookmark() {
    BookmarkRec Bookmark;
    Bookmark.Name = "New-" + std::to_string(BookmarkNos() + 1);
    return Bookmark;
}

void BookmarkAppend(BookmarkRec Bookmark) {
    if (Bookmarks.empty())
        Bookmarks.emplace_back();
    Bookmarks.push_back(std::move(Bookmark));
}

} // namespace quoril

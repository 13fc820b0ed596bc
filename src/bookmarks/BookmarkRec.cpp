#include "bookmarks/BookmarkRec.h"

namespace quoril {

std::vector<BookmarkRec> Bookmarks(1);

std::int32_t BookmarkNos() noexcept {
    return Bookmarks.empty() ? 0 : static_cast<std::int32_t>(Bookmarks.size()) - 1;
}

} // namespace quoril

// Bookmarks that are set by keys while sound plays.
#pragma once

#include "bookmarks/BookmarkRec.h"

#include <cstdint>
#include <functional>

namespace quoril {

/// The keys, by their codes.
enum PlayHotKeys : std::int32_t {
    HotKeyBackspace = 8,
    HotKeyEqual = 187,
    HotKeyBracketLeft = 219,
    HotKeyBackslash = 220,
    HotKeyBracketRight = 221
};

/// Lets the user edit a bookmark; false when that was cancelled.
using BookmarkEditor = std::function<bool(BookmarkRec&)>;

/// One of the keys was pressed: acts on the last bookmark at the position that is heard, and draws
/// the view anew. While nothing plays no bookmark changes, and a message tells so. `Edit` is what
/// the key = opens. Throws Failure when the player does not answer.
void PlayHotKey(PlayHotKeys Key, const BookmarkEditor& Edit);

} // namespace quoril

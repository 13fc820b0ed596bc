#include "view/PlayHotKeys.h"

#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "playback/PlayMod.h"
#include "selection/ViewListener.h"

#include <string>
#include <utility>

namespace quoril {

namespace {

constexpr const char* CommentPoint = "Hot key \\";
constexpr const char* CommentRange = "Hot keys \\\\";
constexpr const char* CommentAdjusted = "Hot keys [\\]";
const std::string FirstAdd = "First add a bookmark with \\";
const std::string IfYouAdd = "\nIf you add bookmark with keys \\  [  ] while playing,";

/// What is said when the key needs a bookmark and there is none.
std::string Refusal(PlayHotKeys Key) {
    switch (Key) {
    case HotKeyBracketLeft:
        return FirstAdd + "\nafter that you can adjust its start - with [";
    case HotKeyBracketRight:
        return FirstAdd + "\nafter that you can adjust its end - with ]";
    case HotKeyEqual:
        return "No bookmark to rename" + IfYouAdd +
               "\nthat you can rename with = key while playing";
    case HotKeyBackspace:
        return "No bookmark to delete" + IfYouAdd +
               "\nthat you can delete with backspace while playing";
    case HotKeyBackslash:
        break;
    }
    return {};
}

void OrderEnds(BookmarkRec& Bookmark) {
    if (Bookmark.To < Bookmark.From)
        std::swap(Bookmark.From, Bookmark.To);
}

void AddPoint(std::int32_t Position) {
    BookmarkRec Bookmark = NewBookmark();
    Bookmark.Text = CommentPoint;
    Bookmark.From = Bookmark.To = Position;
    BookmarkAppend(std::move(Bookmark));
}

void Backslash(std::int32_t Position) {
    if (BookmarkNos() == 0 || Bookmarks.back().BokType != BokPoint) {
        AddPoint(Position);
        return;
    }
    BookmarkRec& Last = Bookmarks.back();
    Last.BokType = BokRange;
    Last.To = Position;
    Last.Text = CommentRange;
    OrderEnds(Last);
}

void BracketLeft(BookmarkRec& Last, std::int32_t Position) {
    Last.From = Position;
    Last.Text = CommentAdjusted;
    if (Last.BokType == BokRange)
        OrderEnds(Last);
    else
        Last.To = Position;
}

void BracketRight(BookmarkRec& Last, std::int32_t Position) {
    Last.To = Position;
    Last.BokType = BokRange;
    Last.Text = CommentAdjusted;
    OrderEnds(Last);
}

void Backspace() {
    BookmarkRec& Last = Bookmarks.back();
    if (Last.BokType == BokRange) {
        Last.BokType = BokPoint;
        Last.To = Last.From;
        Last.Text = CommentRange;
    } else {
        Bookmarks.pop_back();
    }
}

} // namespace

void PlayHotKey(PlayHotKeys Key, const BookmarkEditor& Edit) {
    if (!PlayIsOn()) {
        MsgBox("These hot keys \\ [  ] = and backspace work only while playing\nfor bookmarking");
        return;
    }
    const std::int32_t Position = PlayPositionNow();
    if (Key != HotKeyBackslash && BookmarkNos() == 0) {
        MsgBox(Refusal(Key));
        return;
    }
    switch (Key) {
    case HotKeyBackslash:
        Backslash(Position);
        break;
    case HotKeyBracketLeft:
        BracketLeft(Bookmarks.back(), Position);
        break;
    case HotKeyBracketRight:
        BracketRight(Bookmarks.back(), Position);
        break;
    case HotKeyBackspace:
        Backspace();
        break;
    case HotKeyEqual: {
        BookmarkRec Copy = Bookmarks.back();
        if (!Edit || !Edit(Copy))
            return;
        Bookmarks.back() = std::move(Copy);
        break;
    }
    }
    BookmarkChanged = true;
    Refresh_Wave_View();
}

} // namespace quoril

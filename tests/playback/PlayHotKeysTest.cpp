#include "view/PlayHotKeys.h"
#include "PlaybackDoubles.h"
#include "base/DocumentState.h"

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlayHotKeysTest : public PlaybackFixture {
  protected:
    PlayHotKeysTest() {
        Bookmarks.resize(1);
        Player.Status = 1;
        PlayBaseSample = 1001;
    }
    void Press(PlayHotKeys Key, std::int32_t Position = 0) {
        Player.Position = Position - PlayBaseSample;
        PlayHotKey(Key, Edit);
    }
    [[nodiscard]] static std::string Last() {
        const BookmarkRec& Bookmark = Bookmarks.back();
        return fmt::format("{}|{}|{}|{}|{}", Bookmark.Name, Bookmark.Text, Bookmark.BokType,
                           Bookmark.From, Bookmark.To);
    }
    BookmarkEditor Edit;
};

TEST_F(PlayHotKeysTest, InStoppedStateNoKeyChangesABookmark) {
    Press(HotKeyBackslash, 2000);
    Player.Status = 0;
    const std::string Before = Last();
    for (const PlayHotKeys Key :
         {HotKeyBackslash, HotKeyBracketLeft, HotKeyBracketRight, HotKeyEqual, HotKeyBackspace}) {
        Press(Key, 3000);
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("These hot keys \\ [  ] = and backspace work only while playing\n"
                                "for bookmarking"));
        EXPECT_EQ(Last(), Before);
        EXPECT_EQ(BookmarkNos(), 1);
    }
    SoundDriverState = 0;
    Press(HotKeyBackspace);
    EXPECT_EQ(BookmarkNos(), 1);
}

TEST_F(PlayHotKeysTest, ABackslashMakesAPointAndTheNextOneARange) {
    Press(HotKeyBackslash, 2000);
    EXPECT_EQ(Last(), "New-1|Hot key \\|1|2000|2000");
    Press(HotKeyBackslash, 1500);
    EXPECT_EQ(Last(), "New-1|Hot keys \\\\|2|1500|2000");
    Press(HotKeyBackslash, 4000);
    EXPECT_EQ(Last(), "New-2|Hot key \\|1|4000|4000");
    EXPECT_EQ(BookmarkNos(), 2);
    EXPECT_TRUE(BookmarkChanged);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayHotKeysTest, BracketsMoveTheEndsAndSwapThem) {
    Press(HotKeyBackslash, 2000);
    Press(HotKeyBracketRight, 3000);
    EXPECT_EQ(Last(), "New-1|Hot keys [\\]|2|2000|3000");
    Press(HotKeyBracketLeft, 3500);
    EXPECT_EQ(Last(), "New-1|Hot keys [\\]|2|3000|3500");
    Press(HotKeyBracketRight, 1200);
    EXPECT_EQ(Last(), "New-1|Hot keys [\\]|2|1200|3000");
}

TEST_F(PlayHotKeysTest, BackspaceMakesAPointOfARangeAndRemovesAPoint) {
    Press(HotKeyBackslash, 2000);
    Press(HotKeyBackslash, 3000);
    Press(HotKeyBackspace);
    EXPECT_EQ(Last(), "New-1|Hot keys \\\\|1|2000|2000");
    Press(HotKeyBackspace);
    EXPECT_EQ(BookmarkNos(), 0);
}

TEST_F(PlayHotKeysTest, WithoutABookmarkTheKeysSayWhatToDo) {
    Press(HotKeyBracketLeft);
    Press(HotKeyBracketRight);
    Press(HotKeyEqual);
    Press(HotKeyBackspace);
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("First add a bookmark with \\\nafter that you can adjust its start - with [",
                    "First add a bookmark with \\\nafter that you can adjust its end - with ]",
                    "No bookmark to rename\nIf you add bookmark with keys \\  [  ] while playing,\n"
                    "that you can rename with = key while playing",
                    "No bookmark to delete\nIf you add bookmark with keys \\  [  ] while playing,\n"
                    "that you can delete with backspace while playing"));
}

TEST_F(PlayHotKeysTest, EqualEditsACopyAndKeepsItWhenConfirmed) {
    Press(HotKeyBackslash, 2000);
    bool Confirm = false;
    Edit = [&](BookmarkRec& Bookmark) {
        Bookmark.Name = "Renamed";
        return Confirm;
    };
    Press(HotKeyEqual);
    EXPECT_EQ(Bookmarks.back().Name, "New-1");
    Confirm = true;
    Press(HotKeyEqual);
    EXPECT_EQ(Bookmarks.back().Name, "Renamed");
}

} // namespace
} // namespace quoril::test

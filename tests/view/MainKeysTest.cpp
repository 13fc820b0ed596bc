// The keys of the main window, plain, with Ctrl and with Shift.
#include "selection/ViewFixture.h"

#include "view/MainKeys.h"
#include "view/WaveMouse.h"

namespace quoril::test {
namespace {

class MainKeysTest : public ViewTest {
  protected:
    MainKeysTest() { Start(); }
    void Start() {
        View(301, 200);
        Select(451, 651);
        MouseMode = ViewMouseMode = 0;
        PixelsPerSample = 1.0;
        Entries.clear();
        Window.Calls.clear();
    }
    void Press(MainKey Key, bool Ctrl = false, bool Shift = false) {
        MainKeyPressed(Key, Ctrl, Shift,
                       {Mouse, 400, [this](const std::string& Name) { Entries.push_back(Name); }});
    }

    WaveMouseClass Mouse;
    std::vector<std::string> Entries;
};

struct ViewKey {
    MainKey Key;
    bool Ctrl;
    std::int32_t From;
    std::int32_t Samples;
    bool All;
};
const ViewKey ViewKeys[] = {
    {MainKey::F2, false, 234, 333, false},    {MainKey::F2, true, 234, 333, false},
    {MainKey::F3, false, 341, 120, false},    {MainKey::F3, true, 341, 120, false},
    {MainKey::F4, false, 301, 400, false},    {MainKey::F4, true, 301, 400, false},
    {MainKey::F5, false, 301, 200, true},     {MainKey::F5, true, 301, 200, true},
    {MainKey::Up, false, 341, 120, false},    {MainKey::Up, true, 301, 400, false},
    {MainKey::Down, false, 234, 333, false},  {MainKey::Down, true, 301, 200, true},
    {MainKey::Left, false, 281, 200, false},  {MainKey::Left, true, 1, 200, false},
    {MainKey::Right, false, 321, 200, false}, {MainKey::Right, true, 801, 200, false},
    {MainKey::Home, false, 351, 200, false},  {MainKey::Home, true, 1, 200, false},
    {MainKey::End, false, 551, 200, false},   {MainKey::End, true, 801, 200, false},
};

TEST_F(MainKeysTest, KeysMoveTheViewAsTheTableSays) {
    for (const ViewKey& Each : ViewKeys) {
        SCOPED_TRACE(static_cast<int>(Each.Key) * 10 + (Each.Ctrl ? 1 : 0));
        Start();
        Press(Each.Key, Each.Ctrl);
        ExpectView(Each.From, Each.Samples);
        EXPECT_EQ(ViewAll, Each.All);
        ExpectCalls({"Refresh_Wave_View"});
    }
}

TEST_F(MainKeysTest, HomeAndEndNeedASelection) {
    Select(0, 0);
    Press(MainKey::Home);
    Press(MainKey::End);
    ExpectView(301, 200);
    ExpectCalls({});
}

TEST_F(MainKeysTest, ShiftTakesTheEffectOfArrowsHomeAndEndAlone) {
    for (const MainKey Key :
         {MainKey::Up, MainKey::Down, MainKey::Left, MainKey::Right, MainKey::Home, MainKey::End})
        for (const bool Ctrl : {false, true})
            Press(Key, Ctrl, true);
    ExpectView(301, 200);
    ExpectCalls({});
    Press(MainKey::F3, false, true);
    ExpectView(341, 120);
}

TEST_F(MainKeysTest, ToolsAndEntriesHaveKeys) {
    Press(MainKey::X);
    EXPECT_EQ(ViewMouseMode, 6);
    Press(MainKey::Z);
    EXPECT_EQ(ViewMouseMode, 4);
    Press(MainKey::X, true);
    EXPECT_EQ(ViewMouseMode, 6);
    Press(MainKey::Z, true);
    EXPECT_EQ(ViewMouseMode, 6);
    for (const bool Ctrl : {false, true})
        for (const MainKey Key : {MainKey::B, MainKey::S, MainKey::M})
            Press(Key, Ctrl);
    const std::vector<std::string> Three = {"Bookmark_Add_Mnu_0", "SelectBookmark_Mnu",
                                            "Bookmark_Manage_Mnu"};
    std::vector<std::string> Expected = {"Undo_Mnu_1"};
    for (int Twice = 0; Twice < 2; ++Twice)
        Expected.insert(Expected.end(), Three.begin(), Three.end());
    EXPECT_EQ(Entries, Expected);
}

TEST_F(MainKeysTest, EscPutsTheToolOfTheViewAwayFirst) {
    for (const bool Ctrl : {false, true})
        for (const std::int32_t ViewMode : {4, 5, 6, 8}) {
            Start();
            ViewMouseMode = ViewMode;
            MouseMode = 2;
            Press(MainKey::Escape, Ctrl);
            EXPECT_EQ(ViewMouseMode, 0);
            EXPECT_EQ(MouseMode, 2);
            ExpectSelection(451, 651);
            EXPECT_EQ(Window.Calls.back(), "RefreshMousePointer");
            Press(MainKey::Escape, Ctrl);
            EXPECT_EQ(MouseMode, 0);
            ExpectSelection(0, 0);
        }
}

TEST_F(MainKeysTest, EscEndsDrawing) {
    MouseMode = 7;
    Press(MainKey::Escape);
    EXPECT_EQ(Entries, std::vector<std::string>{"Draw_Mnu_2"});
    ExpectSelection(451, 651);
}

TEST_F(MainKeysTest, EscDuringADragDoesNothing) {
    Mouse.Press(1, 10, MouseButtonLeft);
    Mouse.Move(60);
    Press(MainKey::Escape);
    EXPECT_EQ(Mouse.Hold(), MouseHold::Select);
    Mouse.Release(60, MouseButtonLeft);
    ExpectSelection(311, 361);
}

TEST_F(MainKeysTest, TheEndsOfTheLongestDocumentHaveRoom) {
    Document(Most);
    View(Most - 9, 10);
    Press(MainKey::Right);
    ExpectView(Most - 8, 10);
    Press(MainKey::Right, true);
    ExpectView(Most - 9, 10);
    View(1, Most);
    Press(MainKey::Left);
    EXPECT_LT(ViewFrom, 1);
}

TEST_F(MainKeysTest, AnEmptyDocumentHasNoPlaces) {
    Document(0);
    View(1, 0);
    for (const MainKey Key : {MainKey::Left, MainKey::Right, MainKey::Home, MainKey::End})
        for (const bool Ctrl : {false, true})
            Press(Key, Ctrl);
    ExpectView(1, 0);
}

} // namespace
} // namespace quoril::test

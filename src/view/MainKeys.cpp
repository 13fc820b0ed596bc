#include "view/MainKeys.h"

#include "base/Arithmetic.h"
#include "base/ViewState.h"
#include "selection/DocumentFacts.h"
#include "selection/SelectionMod.h"
#include "selection/ViewListener.h"
#include "view/WaveMouse.h"
#include "view/ZoomMod.h"

#include <algorithm>
#include <array>

namespace quoril {

namespace {

void ViewFromIs(double From) {
    if (CurrentDocument().Total < 1)
        return;
    ViewFrom = RoundToLong(From);
    Refresh_Wave_View();
}

void ToStart() {
    ViewFromIs(1);
}
void ToEnd() {
    ViewFromIs(static_cast<double>(CurrentDocument().Total) - ViewTotal + 1);
}
void TenthBack() {
    ViewFromIs(ViewFrom - ViewTotal / 10.0);
}
void TenthOn() {
    ViewFromIs(ViewFrom + ViewTotal / 10.0);
}
void ToSelStart() {
    if (SelStart != 0)
        ViewFromIs(SelStart - ViewTotal / 2.0);
}
void ToSelEnd() {
    if (SelStart != 0)
        ViewFromIs(SelEnd - ViewTotal / 2.0);
}

void Escape(const MainKeySurroundings& Around) {
    if (ViewMouseMode != ViewMouseModeNone)
        ViewTool(ViewMouseModeNone);
    else if (Around.Mouse.Hold() != MouseHold::None)
        return;
    else if (MouseMode == MouseModeDraw)
        Around.RunEntry("Draw_Mnu_2");
    else
        ResetSelection();
}

enum class Deed : std::uint8_t { Cancel, Tool, Zoom, View, Entry };

/// What a key does: plain, and with Ctrl. `Plain` and `WithCtrl` are the tool or the zoom code.
struct KeyRow {
    MainKey Key;
    Deed What;
    std::int16_t Plain = 0;
    std::int16_t WithCtrl = 0;
    void (*PlainView)() = nullptr;
    void (*CtrlView)() = nullptr;
    const char* EntryName = "";
};

constexpr std::array<KeyRow, 16> KeyTable = {{
    {MainKey::Escape, Deed::Cancel},
    {MainKey::X, Deed::Tool, ViewMouseModeZoomAt, ViewMouseModeZoomAt},
    {MainKey::Z, Deed::Tool, ViewMouseModeZoomStart},
    {MainKey::F2, Deed::Zoom, ZoomCodeOut, ZoomCodeOut},
    {MainKey::F3, Deed::Zoom, ZoomCodeIn, ZoomCodeIn},
    {MainKey::F4, Deed::Zoom, ZoomCodeOneToOne, ZoomCodeOneToOne},
    {MainKey::F5, Deed::Zoom, ZoomCodeAll, ZoomCodeAll},
    {MainKey::Up, Deed::Zoom, ZoomCodeIn, ZoomCodeOneToOne},
    {MainKey::Down, Deed::Zoom, ZoomCodeOut, ZoomCodeAll},
    {MainKey::Left, Deed::View, 0, 0, TenthBack, ToStart},
    {MainKey::Right, Deed::View, 0, 0, TenthOn, ToEnd},
    {MainKey::Home, Deed::View, 0, 0, ToSelStart, ToStart},
    {MainKey::End, Deed::View, 0, 0, ToSelEnd, ToEnd},
    {MainKey::B, Deed::Entry, 0, 0, nullptr, nullptr, "Bookmark_Add_Mnu_0"},
    {MainKey::S, Deed::Entry, 0, 0, nullptr, nullptr, "SelectBookmark_Mnu"},
    {MainKey::M, Deed::Entry, 0, 0, nullptr, nullptr, "Bookmark_Manage_Mnu"},
}};

bool IsArrowOrEnd(MainKey Key) {
    return Key >= MainKey::Up && Key <= MainKey::End;
}

void Run(const KeyRow& Row, bool Ctrl, const MainKeySurroundings& Around) {
    const std::int16_t Code = Ctrl ? Row.WithCtrl : Row.Plain;
    switch (Row.What) {
    case Deed::Cancel:
        return Escape(Around);
    case Deed::Tool:
        if (Row.Key == MainKey::Z && Ctrl)
            return Around.RunEntry("Undo_Mnu_1");
        return ViewTool(Code);
    case Deed::Zoom:
        return ZoomCommand(Code, Around.PanelWidth);
    case Deed::View:
        return Ctrl ? Row.CtrlView() : Row.PlainView();
    case Deed::Entry:
        return Around.RunEntry(Row.EntryName);
    }
}

} // namespace

void MainKeyPressed(MainKey Key, bool Ctrl, bool Shift, const MainKeySurroundings& Around) {
    if (Shift && IsArrowOrEnd(Key))
        return;
    const auto* Row = std::find_if(KeyTable.begin(), KeyTable.end(),
                                   [Key](const KeyRow& Each) { return Each.Key == Key; });
    if (Row != KeyTable.end())
        Run(*Row, Ctrl, Around);
}

} // namespace quoril

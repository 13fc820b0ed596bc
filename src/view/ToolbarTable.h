// The toolbars as a table.
#pragma once

#include <string>
#include <vector>

namespace quoril {

enum class ToolKind {
    Plain,    ///< runs its command
    TwoState, ///< stays pressed in until the next click
    DropDown  ///< a plain button with a list of entries at its arrow
};

/// One button, in the order of the screen. The control's name is the toolbar's name, an
/// underscore and the key ("FileToolbar_New").
struct ToolButtonRow {
    const char* Toolbar = "";
    const char* Key = "";
    ToolKind Kind = ToolKind::Plain;
    const char* Tip = "";     ///< tool tip and accessible name
    const char* Hint = "";    ///< the line in the status bar while the mouse is over it
    const char* Command = ""; ///< the menu entry that it stands for, or the name of its own command
    bool Visible = true;
};

/// An entry of a drop-down button's list, and the menu entry that it stands for.
struct ToolDropRow {
    const char* Entry = "";
    const char* Command = "";
};

/// The toolbars, in the order of the screen: name and accessible name.
struct ToolbarRow {
    const char* Name = "";
    const char* Title = "";
};

[[nodiscard]] const std::vector<ToolbarRow>& Toolbars();
[[nodiscard]] const std::vector<ToolButtonRow>& ToolbarTable();
/// What the arrow of the "Paste" button offers: the modes 1 to 6 of `Edit_Paste_Mnu`.
[[nodiscard]] const std::vector<ToolDropRow>& PasteDropTable();

} // namespace quoril

// The menu bar as a table: every entry, where it stands and what it says.
#pragma once

#include <string>
#include <vector>

namespace quoril {

/// What a row of the table stands for.
enum class MenuKind {
    Menu,      ///< a menu of the bar, or a submenu
    Command,   ///< runs the command of its name
    Check,     ///< the same, with a check mark that the command's owner sets
    Radio,     ///< the same, one of several that exclude each other
    Separator, ///< a line
    Sections   ///< a place that the window fills while it runs
};

/// One row. Rows stand in the order of the screen; a menu stands before its entries.
struct MenuRow {
    MenuKind Kind = MenuKind::Command;
    const char* Name = "";     ///< the control's name; an element of an array is "Open_Mnu_1"
    const char* Parent = "";   ///< the menu that it stands in; empty for the menu bar
    const char* Caption = "";  ///< with "&" before the mnemonic
    const char* Shortcut = ""; ///< in portable text; several are divided by "; "
    const char* Icon = "";     ///< the drawing's key, see ToolIcon
    const char* Hint = "";     ///< the line in the status bar while the entry is highlighted
    bool Visible = true;
};

/// All entries of the menu bar.
[[nodiscard]] const std::vector<MenuRow>& MenuTable();
/// The entries of the menu that a right click on a value label opens.
[[nodiscard]] const std::vector<MenuRow>& PopMnuTable();
/// The row of that name in either table, or null.
[[nodiscard]] const MenuRow* MenuRowOf(const std::string& Name);
/// A caption as the user reads it: mnemonic marks taken out.
[[nodiscard]] std::string CaptionWithoutMnemonic(const std::string& Caption);

} // namespace quoril

// What the window is told of undo and of the format, and who is told.
#pragma once

#include <string>

namespace quoril {

/// What the Undo menu and the toolbar show.
struct UndoMenuState {
    std::string Caption = "Undo [Nothing]";
    bool Enabled = false;      ///< entries 1 and 2, and the button
    bool OptionChecked = true; ///< the check mark of entry 3
};

/// Implemented by the window: what commands and undo change outside the document.
class UndoListener {
  public:
    virtual ~UndoListener() = default;
    virtual void UndoMenuChanged(const UndoMenuState& State) = 0;
    /// The current format has changed: the Format menu must follow.
    virtual void SetMenu_To_DefaultFormat() = 0;
};

/// Names who is told from now on; null for nobody. The object must outlive its use.
void SetUndoListener(UndoListener* Receiver) noexcept;
[[nodiscard]] UndoListener* CurrentUndoListener() noexcept;

/// Tells the listener, if there is one, that the current format has changed.
void SetMenu_To_DefaultFormat();

} // namespace quoril

// Dialogs that commands open: over which window, and with what put aside meanwhile.
#pragma once

class QDialog;
class QWidget;

namespace quoril {

/// The window that a new dialog is to stand over: the modal one on top, else the main window if it
/// is on the screen, else null.
[[nodiscard]] QWidget* WindowInUse();
/// Names the main window; null for none. A window that is deleted is forgotten by itself.
void SetMainWindow(QWidget* Window);
/// The main window, or null.
[[nodiscard]] QWidget* MainWindow();

/// Shows a dialog until it is closed, and gives its result; it is wide enough for its title. The
/// wait cursor and the progress window are out of the way meanwhile.
int RunModal(QDialog& Dialog);

/// The ordinary pointer in place of the wait cursor for the length of a scope.
class OrdinaryPointer {
  public:
    OrdinaryPointer();
    ~OrdinaryPointer();
    OrdinaryPointer(const OrdinaryPointer&) = delete;
    OrdinaryPointer& operator=(const OrdinaryPointer&) = delete;

  private:
    bool Changed;
};

} // namespace quoril

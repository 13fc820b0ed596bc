// The recording command: the window over a session, and what it does to the main window.
#pragma once

#include "recording/RecordDriver.h"

#include <memory>

namespace quoril {

class Recd_Frm;
class RecordSession;
class WaveEditor_Frm;

/// One for each main window, which must outlive it.
class RecordCommands {
  public:
    explicit RecordCommands(WaveEditor_Frm& MainWindow);
    /// With other sound systems than those of the machine.
    RecordCommands(WaveEditor_Frm& MainWindow, RecordSurroundings Given);
    ~RecordCommands();
    RecordCommands(const RecordCommands&) = delete;
    RecordCommands& operator=(const RecordCommands&) = delete;

    /// `Record_Mnu`: asks for the place, and shows the window until it is closed. Throws Failure.
    void Record();
    /// A take is being made, or waits to be kept.
    [[nodiscard]] bool HoldsTake() const noexcept;
    /// The program ends: the device is closed, the choices are kept, the take goes.
    void TakeDown();

  private:
    struct Systems;
    void ShowWindow(RecordSession& Session);

    WaveEditor_Frm& Window;
    std::unique_ptr<Systems> Real;
    RecordSurroundings Around;
    RecordSession* Session = nullptr; ///< while the window is open
    Recd_Frm* Shown = nullptr;
};

/// Registers the recording and the volume control of the system.
void WireRecordCommands(WaveEditor_Frm& Window, RecordCommands& Recording);

} // namespace quoril

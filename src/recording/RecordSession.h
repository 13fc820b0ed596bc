// One use of the recording window: where the take is to go, the choices, and what its buttons do.
// Knows no window.
#pragma once

#include "recording/RecordDriver.h"
#include "recording/RecordMachine.h"
#include "recording/RecordTake.h"

#include <cstdint>

namespace quoril {

class RecordSession {
  public:
    explicit RecordSession(const RecordSurroundings& Surroundings);
    ~RecordSession();
    RecordSession(const RecordSession&) = delete;
    RecordSession& operator=(const RecordSession&) = delete;

    std::int32_t InsertPos = 0; ///< the place in the document that the take goes to
    std::int32_t WorkChn = 0;   ///< 0 both channels, 1 left, 2 right
    CaptureFormat Format;       ///< `RecChannels`, `RecBits`, `RecFreq`

    /// Asks for the place, and takes the format from the document. False when the user has named
    /// none. Throws Failure.
    [[nodiscard]] bool InitilizeForm();

    /// The choices of the user, with the devices chosen, come from the settings and go back.
    void LoadSettings();
    void StoreSettings() const;

    // ---- The buttons. What has come from the device before a button is looked at first.

    void Start();
    void Pause();
    void Stop();
    /// Puts the take into the document, as one step that undo takes back. False when that failed:
    /// the user has been told, and the take is still there.
    [[nodiscard]] bool Done();

    /// The timer of the engine has fired. False when no sound had come.
    bool Deliver() { return Driver.Deliver(); }
    /// Closes the device and gives up the take.
    void End();
    /// A take is being made, or waits to be kept.
    [[nodiscard]] bool HoldsTake() const noexcept;

  private:
    RecordTake Take;

  public:
    RecordMachine Machine{Take};
    RecordDriver Driver;
};

} // namespace quoril

// A device of the plain sound while it captures.
#pragma once

#include "recording/CaptureSystem.h"

#include <future>
#include <memory>
#include <string>

namespace quoril {

class AlsaCapturing;

/// The device belongs to the capture thread alone, which opens and closes it, too. So whatever the
/// device does, nobody but that thread waits for it longer than told here: one that does not come
/// back is left to itself, and ends when the device answers.
class AlsaStream final : public CaptureStream {
  public:
    /// Captures from the device of that name. Throws CaptureFailure, also when the device has not
    /// answered after 0.6 seconds.
    AlsaStream(const std::string& Name, const CaptureFormat& Format, const CaptureLine& To);
    /// Waits for the thread, 0.5 seconds at most.
    ~AlsaStream() override;
    AlsaStream(const AlsaStream&) = delete;
    AlsaStream& operator=(const AlsaStream&) = delete;

    void RoomMade() noexcept override;
    [[nodiscard]] bool Lost() const noexcept override;

  private:
    void WantEnd() noexcept;

    std::shared_ptr<AlsaCapturing> Capturing;
    std::future<void> Ended;
};

} // namespace quoril

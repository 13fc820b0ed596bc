// Capture from the plain sound of the system.
#pragma once

#include "recording/CaptureSystem.h"

#include <string>
#include <vector>

namespace quoril {

/// The default device, if there is one; then the inputs of the sound cards, and what the user has
/// defined. A device is asked for what it takes.
class AlsaCapture final : public CaptureSystem {
  public:
    AlsaCapture();
    [[nodiscard]] std::vector<std::string> Devices() override;
    [[nodiscard]] std::uint32_t FormatBits(std::size_t Device) override;
    [[nodiscard]] std::unique_ptr<CaptureStream> Open(std::size_t Device,
                                                      const CaptureFormat& Format,
                                                      CaptureQueue& Queue,
                                                      const CaptureNotice& Notice) override;

  private:
    std::vector<std::string> DeviceNames; ///< of the devices
};

} // namespace quoril

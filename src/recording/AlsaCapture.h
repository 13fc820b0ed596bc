// Capture from the plain sound of the system.
#pragma once

#include "recording/CaptureSystem.h"

#include <string>
#include <vector>

namespace quoril {

/// The default device, if there is one; then the inputs of the sound cards, and what the user has
/// defined. A device is asked for what it takes; one that does not answer in time is not listed.
class AlsaCapture final : public CaptureSystem {
  public:
    AlsaCapture();
    [[nodiscard]] std::vector<std::string> Devices() override;
    [[nodiscard]] std::uint32_t FormatBits(std::size_t DeviceNo) override;
    [[nodiscard]] std::unique_ptr<CaptureStream>
    Open(std::size_t DeviceNo, const CaptureFormat& Format, const CaptureLine& To) override;

  private:
    struct Device {
        std::string Name;
        std::uint32_t FormatBits; ///< what it said when the list was made
    };
    std::vector<Device> Known; ///< in the order of the list
};

} // namespace quoril

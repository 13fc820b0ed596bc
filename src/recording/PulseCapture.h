// Capture from the sound server of the desktop.
#pragma once

#include "recording/CaptureSystem.h"

#include <string>
#include <vector>

namespace quoril {

/// The first device is whatever the server takes by itself; then come the server's sources, those
/// that hear an output behind the others. The server brings every format to what is asked for.
class PulseCapture final : public CaptureSystem {
  public:
    [[nodiscard]] std::vector<std::string> Devices() override;
    [[nodiscard]] std::uint32_t FormatBits(std::size_t Device) override;
    [[nodiscard]] std::unique_ptr<CaptureStream>
    Open(std::size_t Device, const CaptureFormat& Format, const CaptureLine& To) override;

  private:
    std::vector<std::string> SourceNames; ///< of the devices; empty for the server's own choice
};

} // namespace quoril

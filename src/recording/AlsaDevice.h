// One device of the plain sound: how it is opened, and what it takes. Every routine here may wait
// for as long as what the device's name leads to, such as a sound server that does not answer.
#pragma once

#include "recording/RecordFormats.h"

#include <alsa/asoundlib.h>
#include <memory>
#include <string>

namespace quoril {

struct AlsaDeviceEnd {
    void operator()(snd_pcm_t* Device) const;
};
using AlsaDevice = std::unique_ptr<snd_pcm_t, AlsaDeviceEnd>;

/// Opens a device for capture; its reading does not wait. Null with the system's code when it
/// cannot be opened.
[[nodiscard]] AlsaDevice AlsaOpen(const std::string& Name, int& Code);

/// The parameters that a device takes, which are asked and then narrowed.
class AlsaParameters {
  public:
    explicit AlsaParameters(snd_pcm_t* Asked);
    ~AlsaParameters();
    AlsaParameters(const AlsaParameters&) = delete;
    AlsaParameters& operator=(const AlsaParameters&) = delete;

    /// 0, or the system's code for what is refused.
    [[nodiscard]] int Take(const CaptureFormat& Format);
    /// Fixes them, with a buffer of the device's own as long as it will have it.
    [[nodiscard]] int Fix();

  private:
    snd_pcm_t* Device;
    snd_pcm_hw_params_t* Space = nullptr;
    int Any;
};

/// The code of CaptureErrors for one of the system.
[[nodiscard]] std::int32_t AlsaErrorCode(int Code);

} // namespace quoril

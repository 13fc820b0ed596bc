// What the encoders are told beside the files: bit rates, and which of them a format can have.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace quoril {

// ---- MP3

/// Kilobits per second that a sampling rate can have, rising.
[[nodiscard]] std::span<const std::int32_t> Mp3BitRates(std::int32_t Freq) noexcept;
/// The place of a bit rate among them, or that of the usual one when it is not there.
[[nodiscard]] std::size_t Mp3BitRatePlace(std::int32_t Freq, std::int32_t BitRate) noexcept;

inline constexpr std::array<const char*, 5> Mp3StereoModes = {"Default", "Stereo", "Joint Stereo",
                                                              "Forced Joint Stereo", "Mono"};

/// What `Mp3ParamFrm` holds.
struct Mp3Params {
    std::int32_t CurrentBitRate = 0;    ///< kilobits per second
    std::int32_t CurrentStereoMode = 0; ///< index in `StereoModeCmb`
    std::int32_t CurrentFreq = 0;       ///< Hz
};

/// Implemented by `Mp3ParamFrm`, and by tests. True for OK.
class Mp3ParamDialog {
  public:
    virtual ~Mp3ParamDialog() = default;
    virtual bool ShowMp3Param(Mp3Params& Params) = 0;
};
/// Names who asks from now on; the object must outlive its use. With null every dialog counts as
/// cancelled. So for the one of WMA.
void SetMp3ParamDialog(Mp3ParamDialog* Receiver) noexcept;

/// The parameters for a document of this rate. With `UsePrevPrm` those of the settings, if its rate
/// can have them; otherwise the user is asked, and the answer is kept. `Ok` is false when he
/// cancelled.
void GetMp3Parameters(std::int32_t Freq, bool UsePrevPrm, std::int32_t& BitRate,
                      std::int32_t& StereoMode, bool& Ok);

// ---- WMA

/// Kilobits per second that a format can have, falling; empty for a format that cannot be exported.
[[nodiscard]] std::span<const std::int32_t> WmaBitRates(std::int32_t Freq,
                                                        std::int32_t Channels) noexcept;

/// What `WmaParamFrm` holds.
struct WmaParams {
    std::int32_t CurrentBitRate = 0; ///< bits per second
    std::int32_t CurrentChannel = 0;
    std::int32_t CurrentFreq = 0; ///< Hz
};

/// Implemented by `WmaParamFrm`, and by tests. True for OK.
class WmaParamDialog {
  public:
    virtual ~WmaParamDialog() = default;
    virtual bool ShowWmaParam(WmaParams& Params) = 0;
};
void SetWmaParamDialog(WmaParamDialog* Receiver) noexcept;

/// Asks for the bit rate, in bits per second, and keeps the answer.
void GetWmaParameters(std::int32_t Freq, std::int32_t Channels, std::int32_t& BitRate, bool& Ok);

} // namespace quoril

// Making each channel of a stereo selection anew out of both.
#pragma once

#include "effects/MixKernels.h"

#include <array>
#include <cstdint>

namespace quoril {

/// What the two new channels are made of: `MixSources`.
struct ChnMixChoice {
    std::int32_t LeftSrc = MixAverage;
    std::int32_t RightSrc = MixAverage;
    friend bool operator==(const ChnMixChoice&, const ChnMixChoice&) = default;
};

struct ChnMixAnswer {
    bool OkClicked = false;
    ChnMixChoice Choice;
};

/// Implemented by `ChnMixFrm`, and by tests.
class ChnMixDialog {
  public:
    virtual ~ChnMixDialog() = default;
    /// Asks, with the choice of the last time chosen.
    virtual ChnMixAnswer ShowChnMix(const ChnMixChoice& Last) = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetChnMixDialog(ChnMixDialog* Receiver) noexcept;

/// `ChannelMixMnu`: asks for the two sources, and makes both channels of the selection anew. One
/// undo step. A failure is told, and leaves the document as it was.
void ChannelMix();

/// The names of `MixSources`, in their order.
inline constexpr std::array<const char*, 7> MixSourceNames = {
    "Left", "Right", "Average", "Left + Right", "Left - Right", "Right - Left", "Silence"};

/// The choice of the last time; a source that there is not gives the average.
[[nodiscard]] ChnMixChoice ChnMixSettingsRead();
void ChnMixSettingsWrite(const ChnMixChoice& Choice);

} // namespace quoril

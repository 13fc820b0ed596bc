// The commands of the Format menu. Each works on the whole document, without a selection, and is
// one undo step, which brings the old format back as well. A failure is told, and leaves samples
// and format as they were.
#pragma once

#include "effects/EffectFrame.h"

#include <cstdint>

namespace quoril {

/// What changes samples of `OldBits` into samples of `NewBits`, where 0 stands for the bits of the
/// current format: equal bits copy, and others than 8 and 16 give nothing that could be called.
[[nodiscard]] RunChange ChangeBits(std::int32_t OldBits, std::int32_t NewBits);

/// `Format_Bit_Menu`: 0 makes it 8 bits, 1 16 bits. Asks first; nothing when the entry is ticked.
void FormatBit(std::int32_t Index);
/// `Format_Channel_Stereo_Menu`: asks, and copies the left channel to the right one.
void FormatChannelStereo();
/// `Format_Channel_Mono_Menu`: asks with `CompMonoFrm` what becomes of the two channels.
void FormatChannelMono();
/// `Format_FrQ_Menu`: 0 to 8 are the `MenuRates`, 9 is the custom rate, 10 asks for one. The sound
/// lasts as long as before. What stands at sample numbers (selection, view, bookmarks) stays there.
void FormatFrQ(std::int32_t Index);

/// The index of `MonoOpn`: which way one channel comes of two.
enum MonoWays : std::int32_t { TrenchRight = 0, TrenchLeft = 1, MergeBoth = 2 };

struct CompMonoAnswer {
    bool OkClicked = false;
    std::int32_t MonoOpn = MergeBoth;
};

/// Implemented by `CompMonoFrm`, and by tests.
class CompMonoDialog {
  public:
    virtual ~CompMonoDialog() = default;
    virtual CompMonoAnswer ShowCompMono() = 0;
};

/// Names who asks from now on. The object must outlive its use; with null the question counts as
/// cancelled.
void SetCompMonoDialog(CompMonoDialog* Receiver) noexcept;

} // namespace quoril

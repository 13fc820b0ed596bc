// What the commands of the Format menu share: each makes the whole document anew in another format,
// and what the menu shows follows.
#pragma once

#include "base/DocumentState.h"
#include "effects/EffectFrame.h"

#include <string>

namespace quoril {

class FormatEffect : public EffectClass {
  public:
    /// Puts the new samples and the new format into the document, and marks the format as the
    /// current one.
    void GiveBack(EffectWork& Work) final;

  protected:
    /// `Wanted` has 0 for the parts of the format that stay.
    FormatEffect(const std::string& Name, const WaveFormat& Wanted);

    /// Puts what was computed into the document. Its last operation must come behind
    /// ChangeFormat(): what the end of an edit does goes by the number of channels.
    virtual void Replace(EffectWork& Work) = 0;
    void ChangeFormat() const;
    /// All samples of a channel make way for those of a carrier.
    void ReplaceChannel(std::int32_t Chn, const BlockCarrBuffClass& Carrier,
                        bool IsLastOperation) const;

    WaveFormat New;
};

} // namespace quoril

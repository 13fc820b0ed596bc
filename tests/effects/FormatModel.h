// The changes of the format beside the model of a document.
#pragma once

#include "effects/EffectModel.h"
#include "effects/FormatCommands.h"
#include "effects/LiteralFormats.h"
#include "effects/ScriptedMono.h"

#include <array>
#include <string>

namespace quoril::test {

class FormatModel : public ModelOfDocument {
  protected:
    [[nodiscard]] PlainSound Plain() const {
        return {{Now.Channel, Now.Freq, Now.Bits}, Now.Channels};
    }
    void Follow(const PlainSound& Sound) {
        Now = {Sound.Channels, Sound.Format.Channel, Sound.Format.Freq, Sound.Format.Bits};
    }
    void ChangeTheBits() {
        const std::int32_t Bits = Now.Bits == 8 ? 16 : 8;
        Run(
            std::to_string(Bits) + " bits", [Bits] { FormatBit(Bits == 8 ? 0 : 1); },
            [&] { Follow(InBits(Plain(), Bits)); });
    }
    void ChangeTheChannels() {
        if (!Stereo()) {
            Run("Stereo", FormatChannelStereo, [&] { Follow(InStereo(Plain())); });
            return;
        }
        const std::int32_t Way = Number(0, 2);
        Mono.Answer = {true, Way};
        Run("Mono", FormatChannelMono, [&] { Follow(InMono(Plain(), Way)); });
    }
    /// A rate of the menu or another one, as long as the sound does not become too long for the
    /// plain arrays.
    void ChangeTheRate() {
        const bool Other = Number(0, 1) == 0;
        const std::int32_t Index = Number(0, 8);
        const std::int32_t Rate =
            Other ? Number(400, 60000) : MenuRates.at(static_cast<std::size_t>(Index));
        constexpr double MostSamples = 9000;
        if (Rate == Now.Freq || static_cast<double>(Total()) * Rate / Now.Freq > MostSamples)
            return;
        if (Other)
            Messages.AnswerInput(std::to_string(Rate));
        Run(
            std::to_string(Rate) + " Hz", [&] { FormatFrQ(Other ? 10 : Index); },
            [&] { Follow(AtRate(Plain(), Rate)); });
    }
    void ChangeTheFormat() {
        switch (Number(0, 2)) {
        case 0:
            return ChangeTheBits();
        case 1:
            return ChangeTheChannels();
        default:
            return ChangeTheRate();
        }
    }

    ScriptedMono Mono;
};

} // namespace quoril::test

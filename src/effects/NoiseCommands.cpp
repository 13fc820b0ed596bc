#include "effects/NoiseCommands.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"
#include "effects/EffectFrame.h"
#include "effects/NoiseFrames.h"
#include "effects/NoiseProfile.h"
#include "selection/SelectionMod.h"
#include "storage/FileMemoClass.h"

#include <memory>
#include <optional>
#include <string>

namespace quoril {

namespace {

/// False for a range without a whole frame; then the user has been told.
bool LongEnough(const EffectWork& Work) {
    if (Work.Length() >= NoiseFrameLength)
        return true;
    MsgBox("Selected length is not sufficient for the sample size " +
           std::to_string(NoiseFrameLength));
    return false;
}

/// A long noise is learnt from its beginning.
void Shorten(EffectWork& Work) {
    constexpr std::int32_t SecondsUsed = 20;
    constexpr float SecondsAllowed = 20.1F;
    const std::int32_t Freq = WaveStore->WavFmtFreq;
    if (Single(static_cast<double>(Work.Length()) / Freq) <= SecondsAllowed)
        return;
    MsgBox("You have selected a long noise,\n"
           "Only first 20 seconds will be used to define the noise.");
    Work.To = Work.From + Freq * SecondsUsed - 1;
}

/// Nothing is changed, so it goes another road than the commands that compute.
void DefineNoise() {
    RunCommand({}, [] {
        EffectWork Work;
        if (!ConfirmSelection(Work.From, Work.To, Work.WorkChn, NeedTwoPoints, "Define Noise") ||
            !LongEnough(Work))
            return;
        Shorten(Work);
        const BusyPointer Busy;
        WaveStore->WaveCollectData(Work.From, Work.To, Work.WorkChn, Work.CarrierL, Work.CarrierR);
        NoiseDefine(NoiseFrameLength, Work.WorkChn == 2 ? *Work.CarrierR : *Work.CarrierL,
                    WaveStore->WavFmtBits, WaveStore->WavFmtFreq);
    });
}

class NoiseFilterEffect final : public EffectClass {
  public:
    NoiseFilterEffect() : EffectClass("Filter Noise") {}
    bool Admits() override {
        if (NoiseDefined(WaveStore->WavFmtBits, WaveStore->WavFmtFreq, NoiseFrameLength))
            return true;
        MsgBox("Please define the noise first. That is :\n"
               "Select a small portion with only noise\n"
               "and use the command 'Choose Pure Noise'");
        return false;
    }
    bool AskFirst(EffectWork& Work) override { return LongEnough(Work); }
    std::optional<std::int64_t> DiskNeed(const EffectWork&) override { return std::nullopt; }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        StreamPass(Work, Progress, [&Work](std::int32_t Chn) -> RunStream {
            auto Frames =
                std::make_shared<NoiseFrames>(NoiseProfile, NoiseBits, Work.Carrier(Chn)->WaveINos);
            return [Frames](RunIn In, CarrierWriter& Out) {
                Frames->Push(In, [&Out](RunIn Filtered) { Out.Put(Filtered); });
            };
        });
    }
};

} // namespace

void EffectNoisRedu(std::int32_t Index) {
    if (Index == 0) {
        DefineNoise();
        return;
    }
    NoiseFilterEffect Effect;
    RunEffect(Effect);
}

} // namespace quoril

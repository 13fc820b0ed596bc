#include "effects/EchoCommands.h"

#include "base/Arithmetic.h"
#include "base/Random.h"
#include "effects/EchoWave.h"
#include "effects/EffectFrame.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace quoril {

namespace {

EchoDialog* Dialog = nullptr;

class EchoEffect final : public EffectClass {
  public:
    EchoEffect() : EffectClass("Echo") { ErrorTitle = "Echo Error"; }
    bool AskFirst(EffectWork&) override {
        if (!EchoParams)
            EchoParams = EchoSettingRead();
        if (Dialog == nullptr || !Dialog->ShowEcho(*EchoParams))
            return false;
        Params = *EchoParams;
        return true;
    }
    std::optional<std::int64_t> DiskNeed(const EffectWork& Work) override {
        constexpr std::int64_t BytesPerSample = 2;
        return BytesPerSample * (Work.WorkChn == 0 ? 2 : 1) *
               EchoSpace(Params, WaveStore->WavFmtFreq, Work.Length());
    }
    /// All that the echo reaches.
    void Collect(EffectWork& Work) override {
        Length = Work.Length();
        // Once for both, so that the delays of the channels differ.
        RandomSeed(static_cast<double>(Params.NextDelays) + Params.DelayVariation);
        std::int32_t Reach = 0;
        for (const std::int32_t Chn : {1, 2})
            if (Work.InWork(Chn)) {
                Taps(Chn) = EchoTaps(Params, WaveStore->WavFmtFreq);
                Reach = std::max(Reach, EchoLength(Taps(Chn), Length));
            }
        WaveStore->WaveCollectData(Work.From, SubLong(AddLong(Work.From, Reach), 1), Work.WorkChn,
                                   Work.CarrierL, Work.CarrierR);
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        StreamPass(Work, Progress, [&](std::int32_t Chn) {
            BlockCarrBuffClass& Dry = *Work.Carrier(Chn);
            // Behind the end of the document the echo falls into silence.
            if (const std::int32_t Least = EchoLength(Taps(Chn), Length); Dry.WaveINos < Least)
                Dry.ReDimSize(Least);
            return EchoWave(Params, Taps(Chn), WaveStore->WavFmtFreq, WaveStore->WavFmtBits,
                            Length);
        });
    }

  private:
    std::vector<EchoTap>& Taps(std::int32_t Chn) {
        return TapsOf.at(static_cast<std::size_t>(Chn) - 1);
    }

    EchoParamsRec Params;
    std::int32_t Length = 0; ///< of the selection
    std::array<std::vector<EchoTap>, 2> TapsOf;
};

} // namespace

void SetEchoDialog(EchoDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void Echo() {
    EchoEffect Effect;
    RunEffect(Effect);
}

} // namespace quoril

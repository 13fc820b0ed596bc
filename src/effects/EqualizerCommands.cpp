#include "effects/EqualizerCommands.h"

#include "effects/BandFilter.h"
#include "settings/UserGuideMod.h"
#include "storage/FileMemoClass.h"

#include <optional>
#include <string>

namespace quoril {

namespace {

EqlizDialog* Dialog = nullptr;

class EqualizeEffect final : public EffectClass {
  public:
    EqualizeEffect(const std::string& Name, const std::string& Title, std::int32_t Mode)
        : EffectClass(Name), WorkingMode(Mode) {
        ErrorTitle = Title;
    }
    /// For the distance of the two ends, which is one sample less than the range has.
    std::optional<std::int64_t> DiskNeed(const EffectWork& Work) override {
        constexpr std::int32_t BytesPerSample = 2;
        return Work.Bytes(BytesPerSample) -
               std::int64_t{BytesPerSample} * (Work.WorkChn == 0 ? 2 : 1);
    }
    bool AskBeforeCollecting(const EffectWork&) override {
        EqBandSet = {};
        if (Dialog != nullptr)
            Dialog->ShowEqliz(WorkingMode);
        return EqBandSet.NoOfBands != 0;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        StreamPass(Work, Progress, [&Work](std::int32_t Chn) {
            return BandEqualize(EqBandSet, WaveStore->WavFmtFreq, WaveStore->WavFmtBits,
                                Work.Carrier(Chn)->WaveINos);
        });
    }

  private:
    std::int32_t WorkingMode;
};

} // namespace

void SetEqlizDialog(EqlizDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void Equalize(std::int32_t Index) {
    EqualizeEffect Effect(Index == 0 ? "Equalize" : "Band Pass Filter",
                          Index == 0 ? "Equalizier Error" : "Band Pass Filter Error", Index);
    RunEffect(Effect);
}

void BandSplitter() {
    // Also to those who have ticked the tip: there is nothing else that the command does.
    constexpr bool ForceShow = true;
    UserGuide("This will separate audio of each band and save them to multiple files", {},
              ForceShow);
}

} // namespace quoril

#include "effects/ChannelMix.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/EffectFrame.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"

#include <map>
#include <memory>
#include <string>
#include <utility>

namespace quoril {

namespace {

constexpr const char* Section = "ChannelMix";

ChnMixDialog* Dialog = nullptr;

using CarrierPointer = std::unique_ptr<BlockCarrBuffClass>;

bool Computed(std::int32_t Source) {
    return Source != MixLeft && Source != MixRight && Source != MixSilence;
}

class ChannelMixEffect final : public EffectClass {
  public:
    // The name is that of the exchange of channels, also in the undo list.
    ChannelMixEffect() : EffectClass("Interchange Left-Right") {
        ErrorTitle = UndoName + " Error";
        ProgressStep = 10000;
    }
    bool Admits() override {
        if (WaveStore->WavFmtChannel == 2)
            return true;
        MsgBox("This function works only in Stereo");
        return false;
    }
    bool AskFirst(EffectWork& Work) override {
        if (Work.WorkChn != 0) {
            MsgBox("This function works only if you select both channels");
            return false;
        }
        const ChnMixAnswer Answer =
            Dialog == nullptr ? ChnMixAnswer{} : Dialog->ShowChnMix(ChnMixSettingsRead());
        if (!Answer.OkClicked)
            return false;
        Choice = Answer.Choice;
        ChnMixSettingsWrite(Choice);
        return true;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override;

  private:
    /// What a source that is not computed gives.
    [[nodiscard]] static CarrierPointer Plain(std::int32_t Source, const EffectWork& Work);

    ChnMixChoice Choice;
    std::int32_t Bits = WaveStore->WavFmtBits;
};

CarrierPointer ChannelMixEffect::Plain(std::int32_t Source, const EffectWork& Work) {
    if (Source == MixSilence)
        return SilentCarrier(Work.Length());
    return CarrierCopy(Source == MixLeft ? *Work.CarrierL : *Work.CarrierR);
}

void ChannelMixEffect::Compute(EffectWork& Work, PassProgress& Progress) {
    MakeEquallyLong(Work);
    const std::array Sources = {Choice.LeftSrc, Choice.RightSrc};
    std::map<std::int32_t, CarrierWriter> Made; // by source: what both channels want is made once
    for (const std::int32_t Source : Sources)
        if (Computed(Source))
            Made.try_emplace(Source, Work.Length());
    if (Made.empty())
        Progress.PassEnd();
    else
        PairPass(Work, Progress, [&](std::int32_t, RunIn L, RunIn R) {
            for (auto& [Source, Writer] : Made)
                Writer.Make(L.size(), [&, Source = Source](std::size_t At, RunOut Out) {
                    MixRun(Source, L.subspan(At, Out.size()), R.subspan(At, Out.size()), Out, Bits);
                });
        });
    std::map<std::int32_t, CarrierPointer> New;
    for (auto& [Source, Writer] : Made)
        New[Source] = Writer.Finish();
    for (const std::int32_t Source : Sources)
        if (!Computed(Source))
            New[Source] = Plain(Source, Work);
    Work.CarrierR = CarrierCopy(*New[Choice.RightSrc]);
    Work.CarrierL = std::move(New[Choice.LeftSrc]);
}

std::int32_t SourceRead(const char* Key) {
    const double Value = RoundEven(LeadingNumber(IniGet(Section, Key, "2")));
    return Value >= 0.0 && Value < static_cast<double>(MixSourceNames.size())
               ? static_cast<std::int32_t>(Value)
               : MixAverage;
}

} // namespace

void SetChnMixDialog(ChnMixDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void ChannelMix() {
    ChannelMixEffect Effect;
    RunEffect(Effect);
}

ChnMixChoice ChnMixSettingsRead() {
    return {SourceRead("LeftSrc"), SourceRead("RightSrc")};
}

void ChnMixSettingsWrite(const ChnMixChoice& Choice) {
    IniPut(Section, "LeftSrc", std::to_string(Choice.LeftSrc));
    IniPut(Section, "RightSrc", std::to_string(Choice.RightSrc));
}

} // namespace quoril

#include "effects/ChannelMix.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/EffectFrame.h"
#include "platform/Text.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace quoril {

namespace {

constexpr const char* Section = "ChannelMix";

ChnMixDialog* Dialog = nullptr;

/// Samples that are made beside their place, so that both channels can be read until both are made.
constexpr std::int32_t MadeAtOnce = 4096;

class MadeSamples {
  public:
    /// What `Source` makes of a run of at most `MadeAtOnce` samples.
    void Make(std::int32_t Source, std::span<const std::int16_t> L, std::span<const std::int16_t> R,
              std::int32_t Bits) {
        MixRun(Source, L, R, std::span(Samples).first(L.size()), Bits);
    }
    void PutTo(std::span<std::int16_t> Out) const {
        std::copy_n(Samples.begin(), Out.size(), Out.begin());
    }

  private:
    alignas(64) std::array<std::int16_t, MadeAtOnce> Samples;
};

using CarrierPointer = std::unique_ptr<BlockCarrBuffClass>;

bool Computed(std::int32_t Source) {
    return Source != MixLeft && Source != MixRight && Source != MixSilence;
}

/// Where the run that begins at `Pos` stands in a run that begins at `First`.
std::size_t PlaceIn(std::int32_t First, std::int32_t Pos) {
    return static_cast<std::size_t>(Pos - First);
}

std::int32_t LastOf(std::int32_t First, std::size_t Count) {
    return First + static_cast<std::int32_t>(Count) - 1;
}

/// Blocks of both channels that are one stretch of an interleaved file are then read in one pass.
void JoinInterleaved(const BlockCarrBuffClass& L, const BlockCarrBuffClass& R) {
    const BlockSet& NumbersL = L.Blocks().Numbers();
    const BlockSet& NumbersR = R.Blocks().Numbers();
    for (std::size_t i = 0; i < std::min(NumbersL.size(), NumbersR.size()); ++i) {
        const BlockRec& One = BlockTable[static_cast<std::size_t>(NumbersL[i])];
        const BlockRec& Other = BlockTable[static_cast<std::size_t>(NumbersR[i])];
        if (BlocksInterleave(One, Other))
            OrgPairAdd(NumbersL[i], NumbersR[i]);
    }
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
    bool AskFirst(const EffectWork& Work) override {
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
    void Compute(EffectWork& Work) override;

  private:
    /// Makes one channel anew in the place of the left or the right one, and leaves the other one
    /// as it is.
    void MixOne(std::int32_t Source, EffectWork& Work, bool IntoLeft,
                EffectProgress& Progress) const;
    /// Makes both channels anew in one walk, in their own places.
    void MixBoth(EffectWork& Work, EffectProgress& Progress) const;
    /// What a source that is not computed gives, made of what is left of the channels.
    [[nodiscard]] static CarrierPointer Plain(std::int32_t Source, const EffectWork& Work);

    ChnMixChoice Choice;
    std::int32_t Bits = WaveStore->WavFmtBits;
};

void ChannelMixEffect::MixOne(std::int32_t Source, EffectWork& Work, bool IntoLeft,
                              EffectProgress& Progress) const {
    BlockCarrBuffClass& Changed = IntoLeft ? *Work.CarrierL : *Work.CarrierR;
    BlockCarrBuffClass& Other = IntoLeft ? *Work.CarrierR : *Work.CarrierL;
    MadeSamples Made;
    ChangePass(
        Changed, Progress,
        [&](std::int32_t First, std::span<const std::int16_t> In, std::span<std::int16_t> Out) {
            Other.WaveRunsRead(First, LastOf(First, In.size()), MadeAtOnce,
                               [&](std::int32_t Pos, std::span<const std::int16_t> Second) {
                                   const std::size_t At = PlaceIn(First, Pos);
                                   const auto Mine = In.subspan(At, Second.size());
                                   Made.Make(Source, IntoLeft ? Mine : Second,
                                             IntoLeft ? Second : Mine, Bits);
                                   Made.PutTo(Out.subspan(At, Second.size()));
                               });
        });
}

void ChannelMixEffect::MixBoth(EffectWork& Work, EffectProgress& Progress) const {
    MadeSamples MadeL;
    MadeSamples MadeR;
    ChangePass(
        *Work.CarrierL, Progress,
        [&](std::int32_t First, std::span<const std::int16_t> InL, std::span<std::int16_t> OutL) {
            Work.CarrierR->WaveRunsChange(First, LastOf(First, InL.size()), MadeAtOnce,
                                          [&](std::int32_t Pos, std::span<const std::int16_t> InR,
                                              std::span<std::int16_t> OutR) {
                                              const std::size_t At = PlaceIn(First, Pos);
                                              const auto Mine = InL.subspan(At, InR.size());
                                              MadeL.Make(Choice.LeftSrc, Mine, InR, Bits);
                                              MadeR.Make(Choice.RightSrc, Mine, InR, Bits);
                                              MadeL.PutTo(OutL.subspan(At, InR.size()));
                                              MadeR.PutTo(OutR);
                                          });
        });
}

CarrierPointer ChannelMixEffect::Plain(std::int32_t Source, const EffectWork& Work) {
    if (Source == MixSilence)
        return SilentCarrier(Work.Length());
    return CopiedCarrier(Source == MixLeft ? *Work.CarrierL : *Work.CarrierR);
}

void ChannelMixEffect::Compute(EffectWork& Work) {
    for (BlockCarrBuffClass* Each : {Work.CarrierL.get(), Work.CarrierR.get()})
        if (Each->WaveINos < Work.Length())
            Each->ReDimSize(Work.Length()); // a channel that ends early is silent there
    const bool ComputeL = Computed(Choice.LeftSrc);
    const bool ComputeR = Computed(Choice.RightSrc);
    if (ComputeL || ComputeR)
        JoinInterleaved(*Work.CarrierL, *Work.CarrierR);
    if (ComputeL && ComputeR && Choice.LeftSrc != Choice.RightSrc) {
        EffectProgress BothHalves(1.0, ProgressStep);
        MixBoth(Work, BothHalves);
        return;
    }
    EffectProgress Progress(SpanOfPass(Work), ProgressStep);
    if (!ComputeL && !ComputeR) {
        CarrierPointer NewL = Plain(Choice.LeftSrc, Work);
        Progress.PassEnd();
        Work.CarrierR = Plain(Choice.RightSrc, Work);
        Work.CarrierL = std::move(NewL);
        Progress.PassEnd();
        return;
    }
    // One channel is computed, and the other one is plain or the same. The walk changes the channel
    // that the plain one does not need.
    const std::int32_t Source = ComputeL ? Choice.LeftSrc : Choice.RightSrc;
    const std::int32_t Second = ComputeL ? Choice.RightSrc : Choice.LeftSrc;
    const bool IntoLeft = Second != MixLeft;
    if (!ComputeL)
        Progress.PassEnd();
    MixOne(Source, Work, IntoLeft, Progress);
    CarrierPointer New = std::move(IntoLeft ? Work.CarrierL : Work.CarrierR);
    CarrierPointer Rest = std::move(IntoLeft ? Work.CarrierR : Work.CarrierL);
    if (Second == MixSilence)
        Rest = SilentCarrier(Work.Length());
    else if (Computed(Second))
        Rest = CopiedCarrier(*New);
    Work.CarrierL = std::move(ComputeL ? New : Rest);
    Work.CarrierR = std::move(ComputeL ? Rest : New);
    if (ComputeL)
        Progress.PassEnd();
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

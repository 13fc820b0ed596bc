#include "effects/TransformCommands.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/EffectFrame.h"
#include "effects/SampleKernels.h"
#include "platform/Text.h"
#include "selection/DurationEntry.h"
#include "storage/FileMemoClass.h"

#include <string>
#include <utility>

namespace quoril {

namespace {

constexpr std::int32_t TransformProgressStep = 10000;

/// What all of them share: the title of a failure is the name and a word.
class TransformEffect : public EffectClass {
  public:
    explicit TransformEffect(const std::string& Name) : EffectClass(Name) {
        ProgressStep = TransformProgressStep;
        Named(Name);
    }

  protected:
    void Named(const std::string& Name) {
        UndoName = Name;
        ErrorTitle = Name + " Error";
    }
};

class ReverseEffect final : public TransformEffect {
  public:
    ReverseEffect() : TransformEffect("Reverse") {}
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        const auto Turned = [](RunIn In, CarrierWriter& Made) {
            // The piece at `At` is what stands as far before the end of the run.
            Made.Make(In.size(), [In](std::size_t At, RunOut Out) {
                ReverseRun(In.subspan(In.size() - At - Out.size(), Out.size()), Out);
            });
        };
        StreamPass(
            Work, Progress, [&Turned](std::int32_t) { return Turned; }, WalkOrder::Falling);
    }
};

class InvertEffect final : public TransformEffect {
  public:
    InvertEffect() : TransformEffect("Invert") {}
    RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
        return [Bits = WaveStore->WavFmtBits](std::int32_t, RunIn In, RunOut Out) {
            InvertRun(In, Out, Bits);
        };
    }
};

std::string LastHeight = "20"; ///< the last accepted entry of Move Up/Down

class MoveUpDownEffect final : public TransformEffect {
  public:
    MoveUpDownEffect() : TransformEffect("Move Up/Dn") {}
    bool AskParameters(const EffectWork&) override {
        const InputBoxAnswer Answer =
            InputBox("Enter Height percentage to move up or down.\n(-100 to 100)", {}, LastHeight);
        if (!Answer.Accepted || Answer.Text.empty())
            return false;
        const double Percent = NumberAlone(Answer.Text).value_or(0);
        if (Percent == 0 || Percent < -100 || Percent > 100) {
            MsgBox("Invalid Entry", "Move Up/Down Failed");
            return false;
        }
        LastHeight = Answer.Text;
        Offset = RoundToLong(Percent / 100 * SampleHigh(WaveStore->WavFmtBits));
        Named(Percent < 0 ? "Move Down" : "Move Up");
        return true;
    }
    RunChange ChannelKernel(const EffectWork&, std::int32_t) override {
        return [Bits = WaveStore->WavFmtBits, Added = Offset](std::int32_t, RunIn In, RunOut Out) {
            OffsetRun(In, Out, Added, Bits);
        };
    }

  private:
    std::int32_t Offset = 0;
};

std::int32_t LastDistance = 0; ///< of Move Forward/Back, in samples

class MoveForwardBackEffect final : public TransformEffect {
  public:
    MoveForwardBackEffect() : TransformEffect("Move Forward/Back") {}
    std::optional<std::int64_t> DiskNeed(const EffectWork& Work) override { return Work.Bytes(4); }
    bool AskFirst(EffectWork& Work) override {
        EntDurRequest Request =
            EntDurFor(WaveStore->WavWaveINos, LastDistance, WaveStore->WavFmtFreq);
        Request.Caption = " Enter distance to move";
        Request.Prompt = "(+ to move right, - to move left)";
        const EntDurAnswer Answer = EntDurAsk(Request);
        if (!Answer.OkClicked)
            return false;
        LastDistance = EntDurSamples(Answer.EnterSmp);
        if (LastDistance == 0)
            return false;
        const std::int64_t Start = std::int64_t{Work.From} + LastDistance;
        if (Start < 1 || Start > WaveStore->WavWaveINos) {
            MsgBox("Unable to move beyond the current wave size.\n"
                   "Add space by inserting silence and try again.",
                   "Failed to move");
            return false;
        }
        NewStart = static_cast<std::int32_t>(Start);
        Named(LastDistance < 0 ? "Move Back" : "Move Forward");
        return true;
    }
    void Compute(EffectWork&, PassProgress&) override {}
    void GiveBack(EffectWork& Work) override {
        const auto SilenceL = SilentCarrier(Work.CarrierL->WaveINos);
        const auto SilenceR = SilentCarrier(Work.CarrierR->WaveINos);
        WaveStore->WaveDataReplace(Work.From, Work.WorkChn, SilenceL.get(), SilenceR.get(),
                                   UndoName, false);
        WaveStore->WaveDataReplace(NewStart, Work.WorkChn, Work.CarrierL.get(), Work.CarrierR.get(),
                                   UndoName, true);
    }

  private:
    std::int32_t NewStart = 0;
};

class InterchangeEffect final : public TransformEffect {
  public:
    InterchangeEffect() : TransformEffect("Interchange Left-Right") {}
    std::optional<std::int64_t> DiskNeed(const EffectWork&) override { return 0; }
    bool Admits() override { return WaveStore->WavFmtChannel == 2; }
    void Compute(EffectWork& Work, PassProgress&) override {
        std::swap(Work.CarrierL, Work.CarrierR);
    }
};

} // namespace

void WaveReverse() {
    ReverseEffect Effect;
    RunEffect(Effect);
}

void WaveInvert() {
    InvertEffect Effect;
    RunEffect(Effect);
}

void WaveMoveUpDown() {
    MoveUpDownEffect Effect;
    RunEffect(Effect);
}

void WaveMoveForwardBack() {
    MoveForwardBackEffect Effect;
    RunEffect(Effect);
}

void InterchangeChannels() {
    InterchangeEffect Effect;
    RunEffect(Effect);
}

} // namespace quoril

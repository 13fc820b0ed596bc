#include "effects/GeneratorCommands.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/BandFilter.h"
#include "effects/EffectFrame.h"
#include "effects/Generators.h"
#include "platform/Text.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace quoril {

namespace {

EntFrqDialog* Dialog = nullptr;

struct Frequencies {
    std::int32_t StartHz = 0;
    std::int32_t EndHz = 0;
};

/// Whole Hertz; nothing outside the range.
std::optional<std::int32_t> FrequencyOf(const std::string& Text) {
    constexpr double Lowest = 2;
    constexpr double Highest = 20000;
    const double Hz = RoundEven(LeadingNumber(Text));
    if (Hz < Lowest || Hz > Highest)
        return std::nullopt;
    return static_cast<std::int32_t>(Hz);
}

/// Asks until the frequencies are in range, beginning with the last accepted entry. Nothing when
/// the user backed out.
std::optional<Frequencies> AskFrequencies(EntFrqEntry& LastEntry) {
    EntFrqEntry Shown = LastEntry;
    while (Dialog != nullptr) {
        const EntFrqAnswer Answer = Dialog->ShowEntFrq(Shown);
        if (!Answer.OkClicked)
            break;
        Shown = Answer.Entry;
        const auto StartHz = FrequencyOf(Shown.Start);
        const auto EndHz = Shown.UseTwo ? FrequencyOf(Shown.End) : StartHz;
        if (!StartHz || !EndHz)
            continue;
        LastEntry = Shown;
        return Frequencies{*StartHz, *EndHz};
    }
    return std::nullopt;
}

/// What both commands with a tone share.
class ToneEffect : public EffectClass {
  public:
    ToneEffect(const std::string& Name, const std::string& Title, EntFrqEntry& Entry)
        : EffectClass(Name), LastEntry(Entry) {
        ErrorTitle = Title;
    }
    bool AskFirst(EffectWork&) override {
        const auto Asked = AskFrequencies(LastEntry);
        Chosen = Asked.value_or(Frequencies{});
        return Asked.has_value();
    }

  protected:
    [[nodiscard]] SineMake Tone(std::int32_t Samples, std::int32_t Amplitude) const {
        return {Samples, Amplitude, Chosen.StartHz, Chosen.EndHz, WaveStore->WavFmtFreq};
    }

  private:
    EntFrqEntry& LastEntry;
    Frequencies Chosen;
};

/// Makes the samples of the range run by run, the same for all channels in work.
void MakePass(EffectWork& Work, PassProgress& Progress, const std::function<void(RunOut)>& Fill) {
    constexpr std::int32_t RunLength = 32768; // the processor's cache has room for it
    const std::int32_t Count = Work.Length();
    CarrierWriter Out(Count);
    while (Out.Length() < Count) {
        const std::int32_t Run = std::min(RunLength, Count - Out.Length());
        Out.Make(static_cast<std::size_t>(Run), [&](std::size_t, RunOut Piece) { Fill(Piece); });
        Progress.Reached(Out.Length(), Count);
    }
    auto Made = Out.Finish();
    if (Work.WorkChn == 0)
        Work.CarrierR = CarrierCopy(*Made);
    Work.Carrier(Work.WorkChn == 2 ? 2 : 1) = std::move(Made);
    Progress.PassEnd();
}

class SineEffect final : public ToneEffect {
  public:
    explicit SineEffect(EntFrqEntry& Entry) : ToneEffect("Sine", "Generate Sine Error", Entry) {
        Collects = false;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        constexpr double Part = 0.7;
        SineMake Sweep = Tone(Work.Length(), RoundToLong(SampleHigh(WaveStore->WavFmtBits) * Part));
        MakePass(Work, Progress, [&Sweep](RunOut Run) { Sweep.Fill(Run); });
    }
};

/// The tone under the runs of a walk over both channels, made once for both.
class ToneRuns {
  public:
    explicit ToneRuns(const SineMake& Made) : Sweep(Made) {}
    /// The tone of a run. It begins where the last one did, or right behind it.
    RunIn At(std::int32_t First, std::size_t Count) {
        if (First != Begin)
            Samples.clear();
        Begin = First;
        const std::size_t There = Samples.size();
        if (There < Count) {
            Samples.resize(Count);
            Sweep.Fill(RunOut(Samples).subspan(There));
        }
        return RunIn(Samples).first(Count);
    }

  private:
    SineMake Sweep;
    std::int32_t Begin = 0;
    std::vector<std::int16_t> Samples;
};

class ModulateEffect final : public ToneEffect {
  public:
    explicit ModulateEffect(EntFrqEntry& Entry) : ToneEffect("Modulate", "Modulate Error", Entry) {}
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        if (Work.WorkChn == 2) { // without a left channel the tone is empty, and so is the product
            Work.CarrierR = SilentCarrier(0);
            return;
        }
        ToneRuns Tones(Tone(Work.CarrierL->WaveINos, FullTone));
        ChangePass(Work, Progress, [&Tones](std::int32_t) -> RunChange {
            return
                [&Tones, Bits = WaveStore->WavFmtBits](std::int32_t First, RunIn In, RunOut Out) {
                    ModulateByTone(In, Tones.At(First, In.size()), Out, Bits);
                };
        });
    }
};

/// The bands that the noise is filtered with: from the full gain of the lowest down to little.
BandCascade FallingBands(std::int32_t Length) {
    constexpr std::int32_t Count = 8;
    BandSet Set;
    BandSetResize(Set, Count);
    for (std::int32_t Band = 1; Band <= Count; ++Band)
        Set.Bands[static_cast<std::size_t>(Band)] =
            RoundToLong(static_cast<double>(Count + 1 - Band) / Count * 100 - 50);
    return {CascadeBands(Set, WaveStore->WavFmtFreq), Length, SampleHigh(WaveStore->WavFmtBits)};
}

class NoiseEffect final : public EffectClass {
  public:
    NoiseEffect() : EffectClass("Noise") {
        ErrorTitle = "Generate Noise Error";
        Collects = false;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        NoiseWalk Walk(WaveStore->WavFmtBits);
        BandCascade Bands = FallingBands(Work.Length());
        MakePass(Work, Progress, [&](RunOut Run) {
            Walk.Fill(Run);
            // The document takes the walk as it is. What is filtered is the time that the command
            // takes, and is not kept.
            Bands.Push(Run, [](RunIn) {});
        });
    }
};

// The last accepted entries.
EntFrqEntry LastSine;
EntFrqEntry LastModulate;

} // namespace

void SetEntFrqDialog(EntFrqDialog* Receiver) noexcept {
    Dialog = Receiver;
}

void DrawSine() {
    SineEffect Effect(LastSine);
    RunEffect(Effect);
}

void DrawNoise() {
    NoiseEffect Effect;
    if (RunEffect(Effect))
        MsgBox("Noise Generated with all frequencies.\n"
               "Use Equalizer effect on it, to choose as needed.",
               "Noise Generated");
}

void Modulate() {
    ModulateEffect Effect(LastModulate);
    RunEffect(Effect);
}

} // namespace quoril

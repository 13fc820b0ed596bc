#include "effects/VolumeCommands.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/SampleRuns.h"
#include "effects/EffectFrame.h"
#include "effects/GainKernel.h"
#include "effects/SampleKernels.h"
#include "platform/Text.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace quoril {

namespace {

constexpr std::int32_t ModeEnter = 0;
constexpr std::int32_t ModeMaximize = 3;
constexpr std::int32_t ModeFadeOut = 4;
constexpr std::int32_t ModeFadeIn = 5;
constexpr std::int32_t ModeLast = 21; ///< Silence; 100 % of the maximum

constexpr float LargestFactor = 20;

struct Preset {
    std::int32_t Mode;
    std::int32_t Percent;
};
constexpr std::array<Preset, 7> Presets = {
    {{11, 200}, {12, 160}, {13, 120}, {14, 85}, {15, 70}, {16, 50}, {17, 25}}};

std::optional<std::int32_t> PresetPercent(std::int32_t Mode) {
    for (const Preset& Each : Presets)
        if (Each.Mode == Mode)
            return Each.Percent;
    return std::nullopt;
}

/// Two factors for the two ends of a range, in single precision.
struct Ramp {
    float Start = 1;
    float End = 1;
};

/// Asks for one or two percentages, beginning with the last accepted text. Nothing when the user
/// backed out or the numbers are out of range. Fails when they are no numbers.
std::optional<Ramp> AskRamp(const std::string& Question, std::string& LastEntry) {
    const InputBoxAnswer Answer = InputBox(
        Question + "\n\nYou can enter two values (Start and End values) using ~ to seperate, "
                   "(i.e.: 120~10)",
        {}, LastEntry.empty() ? "100" : LastEntry);
    if (!Answer.Accepted || Answer.Text.empty())
        return std::nullopt;
    const std::vector<std::string> Parts = TextParts(Answer.Text, '~');
    const double First = EnteredNumber(Parts[0]);
    const double Second = Parts.size() > 1 ? EnteredNumber(Parts[1]) : First;
    const Ramp Entered = {Single(First / 100), Single(Second / 100)};
    for (const float Factor : {Entered.Start, Entered.End})
        if (Factor < 0 || Factor > LargestFactor) {
            MsgBox("Invalid Entry\nEnter values between 0 to 2000", "Adjust Volume Failed");
            return std::nullopt;
        }
    LastEntry = Answer.Text;
    return Entered;
}

/// What both commands share: the factors, entered or fixed.
class VolumeEffect : public EffectClass {
  public:
    VolumeEffect(const std::string& Name, std::optional<Ramp> Fixed, const char* AskedFor,
                 std::string& Entry)
        : EffectClass(Name), Factors(Fixed), Question(AskedFor), LastEntry(Entry) {}

    bool AskParameters(const EffectWork&) override {
        if (!Factors)
            Factors = AskRamp(Question, LastEntry);
        return Factors.has_value();
    }

  protected:
    [[nodiscard]] Ramp Chosen() const { return Factors.value_or(Ramp()); }
    /// Multiplies sample i of a channel by `Used.Start` + `Step` x (i - 1).
    static RunChange Multiplying(const Ramp& Used, double Step) {
        return [Step, Bits = WaveStore->WavFmtBits,
                Start = static_cast<double>(Used.Start)](std::int32_t First, RunIn In, RunOut Out) {
            if (Step == 0)
                GainRun(In, Out, Start, Bits);
            else
                RampRun(In, Out, Start, Step, First - 1, Bits);
        };
    }
    static double StepOf(const Ramp& Used, std::int32_t Count) {
        return (static_cast<double>(Used.End) - static_cast<double>(Used.Start)) /
               std::max(Count, 1);
    }

  private:
    std::optional<Ramp> Factors;
    std::string Question;
    std::string& LastEntry;
};

class AdjustEffect final : public VolumeEffect {
  public:
    using VolumeEffect::VolumeEffect;
    RunChange ChannelKernel(const EffectWork& Work, std::int32_t) override {
        return Multiplying(Chosen(), StepOf(Chosen(), Work.Length()));
    }
};

class OptimizeEffect final : public VolumeEffect {
  public:
    using VolumeEffect::VolumeEffect;
    /// With one channel the bar is full soon after the start and stays so.
    [[nodiscard]] double SpanOfPass(const EffectWork& Work) const override {
        return Work.WorkChn == 0 ? 0.5 : 5.0;
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        std::array<std::int32_t, 3> Peaks{}; // of channels 1 and 2
        ReadPass(Work, Progress, [&Peaks](std::int32_t Chn) -> RunVisit {
            return [&Peak = Peaks[static_cast<std::size_t>(Chn)]](std::int32_t, RunIn In) {
                Peak = std::max(Peak, PeakOf(In));
            };
        });
        ChangePass(Work, Progress, [&](std::int32_t Chn) {
            const Ramp Scaled = ScaledTo(Peaks[static_cast<std::size_t>(Chn)]);
            return Multiplying(Scaled, StepOf(Scaled, Work.Carrier(Chn)->WaveINos));
        });
    }

  private:
    /// The factors that bring a channel's peak to the chosen levels.
    [[nodiscard]] Ramp ScaledTo(std::int32_t Peak) const {
        const double Part =
            static_cast<double>(std::max(Peak, 1)) / SampleHigh(WaveStore->WavFmtBits);
        return {Single(static_cast<double>(Chosen().Start) / Part),
                Single(static_cast<double>(Chosen().End) / Part)};
    }
};

Ramp Constant(std::int32_t Percent) {
    const float Factor = Single(Percent / 100.0);
    return {Factor, Factor};
}

// The last accepted texts; empty until the first one.
std::string LastAdjust;
std::string LastOptimize;

} // namespace

void AdjustVolume(std::int32_t Mode) {
    const auto Run = [](const std::string& Name, std::optional<Ramp> Fixed) {
        AdjustEffect Effect(Name, Fixed, "Enter new volume as percentage of current Volume.",
                            LastAdjust);
        RunEffect(Effect);
    };
    if (const auto Percent = PresetPercent(Mode))
        Run("Chg. Vol. " + std::to_string(*Percent) + "%", Constant(*Percent));
    else if (Mode == ModeEnter)
        Run("Adj. Vol. Enter", std::nullopt);
    else if (Mode == ModeFadeOut)
        Run("Fade Out", Ramp{1, 0});
    else if (Mode == ModeFadeIn)
        Run("Fade In", Ramp{0, 1});
    else if (Mode == ModeLast)
        Run("Silence", Ramp{0, 0});
}

void OptimizeVolume(std::int32_t Mode) {
    const auto Run = [](const std::string& Name, std::optional<Ramp> Fixed) {
        OptimizeEffect Effect(Name, Fixed, "Enter new volume as percentage of maximum Volume.",
                              LastOptimize);
        RunEffect(Effect);
    };
    if (const auto Percent = PresetPercent(Mode))
        Run("Opti.Vol." + std::to_string(*Percent) + "%", Constant(*Percent));
    else if (Mode == ModeEnter)
        Run("Opti.Vol.Enter", std::nullopt);
    else if (Mode == ModeMaximize)
        Run("Maximize", Ramp{1, 1});
    else if (Mode == ModeLast)
        Run("Opti.Vol.100%", Ramp{1, 1});
}

} // namespace quoril

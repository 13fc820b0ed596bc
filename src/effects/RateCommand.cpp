#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "effects/FormatCommands.h"
#include "effects/FormatEffect.h"
#include "effects/StretchWave.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"

#include <algorithm>
#include <string>

namespace quoril {

namespace {

constexpr std::int32_t CustomIndex = 9;
constexpr std::int32_t OtherIndex = 10;
constexpr std::int32_t LowestOtherRate = 1000;
constexpr std::int32_t HighestOtherRate = 200000;

std::string LastOtherRate; ///< the text of the last entry, empty before the first question

/// The rate that an entry of the menu stands for; 0 for a custom rate that there is not.
std::int32_t RateOfEntry(std::int32_t Index) {
    return Index == CustomIndex ? CustomRate() : MenuRates.at(static_cast<std::size_t>(Index));
}

/// Asks for a rate; nothing when the user has none. One that is out of range is told, and taken all
/// the same.
std::optional<std::int32_t> OtherRate() {
    if (LastOtherRate.empty())
        LastOtherRate = std::to_string(WaveStore->WavFmtFreq);
    const InputBoxAnswer Answer =
        InputBox("Enter other (not standard) sampling rate Hz", "Sampling rate", LastOtherRate);
    if (!Answer.Accepted || Answer.Text.empty())
        return std::nullopt;
    const double Entered = RoundEven(EnteredNumber(Answer.Text));
    LastOtherRate = Answer.Text;
    if (Entered < LowestOtherRate || Entered > HighestOtherRate)
        MsgBox("Invalid entry\n(Valid range - 1000 ~ 200000)", "Change Sampling rate - failed");
    const std::int32_t Rate = RoundToLong(Entered);
    if (Rate < 1)
        throw Failure("There is no sound with a sampling rate of " + std::to_string(Rate) + " Hz.");
    return Rate;
}

class RateEffect final : public FormatEffect {
  public:
    explicit RateEffect(std::int32_t MenuIndex) : FormatEffect({}, {0, 0, 0}), Index(MenuIndex) {}
    bool Admits() override { return Index == OtherIndex || RateOfEntry(Index) != 0; }
    bool AskFirst(EffectWork&) override {
        const std::optional<std::int32_t> Rate =
            Index == OtherIndex ? OtherRate() : ConfirmedRate();
        if (!Rate)
            return false;
        if (*Rate == WaveStore->WavFmtFreq) {
            SetMenu_To_DefaultFormat();
            return false;
        }
        New.Freq = *Rate;
        UndoName = std::to_string(*Rate) + " Hz";
        Percent = *Rate * 100.0 / WaveStore->WavFmtFreq;
        return true;
    }
    std::optional<std::int64_t> DiskNeed(const EffectWork& Work) override {
        constexpr double MostNeed = 1e18; // more than there ever is, and a number of 64 bits
        const double BytesPerFrame = WaveStore->WavFmtChannel == 2 ? 4 : 2;
        const double Need = RoundEven(Percent / 100 * Work.Length() * BytesPerFrame);
        return static_cast<std::int64_t>(std::min(Need, MostNeed));
    }
    void Compute(EffectWork& Work, PassProgress& Progress) override {
        StreamPass(Work, Progress, [&](std::int32_t Chn) {
            return StretchWave(Work.Carrier(Chn)->WaveINos, WaveStore->WavFmtBits, Percent,
                               Percent);
        });
    }

  private:
    /// The rate of the entry, asked for unless the entry is ticked.
    [[nodiscard]] std::optional<std::int32_t> ConfirmedRate() const {
        const std::int32_t Rate = RateOfEntry(Index);
        if (Rate != CurrentFormat.Freq &&
            MsgBox("Do you wish to Change Sampling rate?",
                   "Changing Sampling rate (Frequency format)", MsgBoxButtons::YesNo,
                   MsgBoxAnswer::Yes) != MsgBoxAnswer::Yes)
            return std::nullopt;
        return Rate;
    }
    void Replace(EffectWork& Work) override {
        if (Work.InWork(2))
            ReplaceChannel(2, *Work.CarrierR, false);
        ChangeFormat();
        ReplaceChannel(1, *Work.CarrierL, true);
    }

    std::int32_t Index;
    double Percent = 100;
};

} // namespace

void FormatFrQ(std::int32_t Index) {
    RateEffect Effect(Index);
    RunEffect(Effect);
}

} // namespace quoril

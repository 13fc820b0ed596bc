#include "audiofile/RawFormat.h"

#include "base/Arithmetic.h"
#include "base/DocumentState.h"
#include "base/MsgBoxMod.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace quoril {

namespace {

constexpr std::array<std::int32_t, 3> RatesWithOption = {11025, 22050, 44100};
constexpr std::int32_t RateOfNone = 44100;
constexpr double LowestRate = 1000;
constexpr double HighestRate = 200000;

RawLoadDialog* Dialog = nullptr;
std::optional<RawChoice> LastChoice; ///< that was confirmed
std::int32_t LastOtherFreq = 0;      ///< kept also when the dialog was cancelled

/// The option that has a rate: one of its own, or the last one.
std::int32_t OptionOf(std::int32_t Freq) {
    return static_cast<std::int32_t>(std::ranges::find(RatesWithOption, Freq) -
                                     RatesWithOption.begin());
}

RawChoice FirstChoice() {
    RawChoice Choice;
    Choice.FmtChnOpn = CurrentFormat.Channel == 2 ? 1 : 0;
    Choice.FmtBitsOpn = CurrentFormat.Bits == 8 ? 0 : 1;
    Choice.FmtFreqOpn = OptionOf(CurrentFormat.Freq);
    Choice.OtherFreq = LastOtherFreq;
    if (Choice.FmtFreqOpn == RawChoice::OtherRate)
        Choice.OtherFreq = CurrentFormat.Freq;
    return Choice;
}

std::int32_t RateOr44100(std::int32_t OtherFreq) {
    return OtherFreq == 0 ? RateOfNone : OtherFreq;
}

} // namespace

std::int32_t RawChoice::Freq() const noexcept {
    return FmtFreqOpn == OtherRate ? RateOr44100(OtherFreq)
                                   : RatesWithOption.at(static_cast<std::size_t>(FmtFreqOpn));
}

std::string RawChoice::OtherCaption() const {
    if (OptionOf(RateOr44100(OtherFreq)) != OtherRate)
        return RawFreqCaptions.back();
    // Thousands are set off by a comma, whatever the language of the system.
    return fmt::format("{},{:03} H&z", OtherFreq / 1000, OtherFreq % 1000);
}

void RawChoice::AskOtherFreq() {
    const InputBoxAnswer Answer = InputBox("Enter the other frequency (Hz) for sampling rate",
                                           "Sampling rate", std::to_string(RateOr44100(OtherFreq)));
    if (!Answer.Accepted || Trim(Answer.Text).empty())
        return;
    const double Entered = LeadingNumber(Answer.Text);
    if (Entered < LowestRate || Entered > HighestRate) {
        MsgBox("Invalid entry\nPlease enter in this range: 1000 ~ 200000 Hz");
        return;
    }
    OtherFreq = RoundToLong(Entered);
    FmtFreqOpn = OptionOf(OtherFreq);
}

void SetRawLoadDialog(RawLoadDialog* Receiver) noexcept {
    Dialog = Receiver;
}

bool AskRawFormat(RawChoice& Choice) {
    Choice = LastChoice ? *LastChoice : FirstChoice();
    const bool Ok = Dialog != nullptr && Dialog->ShowRawLoad(Choice);
    LastOtherFreq = Choice.OtherFreq;
    if (Ok)
        LastChoice = Choice;
    else if (LastChoice)
        LastChoice->OtherFreq = LastOtherFreq;
    return Ok;
}

} // namespace quoril

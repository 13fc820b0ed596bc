#include "selection/DurationEntry.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "selection/DurationText.h"

#include <fmt/format.h>

namespace quoril {
namespace {
EntDurDialog* Dialog = nullptr;
}

void SetEntDurDialog(EntDurDialog* Receiver) noexcept {
    Dialog = Receiver;
}

EntDurAnswer EntDurAsk(const EntDurRequest& Request) {
    return Dialog == nullptr ? EntDurAnswer{} : Dialog->ShowEntDur(Request);
}

EntDurRequest EntDurFor(std::int64_t Current, std::int64_t Proposed, std::int32_t Freq) {
    EntDurRequest Request;
    Request.CurSizeDur = FormatSamples(Current, Freq);
    Request.CurSizeSmp = std::to_string(Current);
    Request.EnterDur = FormatSamples(Proposed, Freq);
    Request.EnterSmp = std::to_string(Proposed);
    Request.Freq = Freq;
    return Request;
}

// Typing goes on through numbers that are too large: no message may stop it, and the other box may
// not go on showing what belongs to an earlier one.

std::string EntDurSamplesFollow(std::string_view EnterDur, std::int32_t Freq) {
    try {
        const double Samples =
            RoundEven(static_cast<double>(ParseDuration(EnterDur)) * static_cast<double>(Freq));
        return fmt::format("{:.0f}", Samples == 0.0 ? 0.0 : Samples);
    } catch (const Failure&) {
        return {};
    }
}

std::string EntDurTimeFollow(std::string_view EnterSmp, std::int32_t Freq) {
    try {
        return FormatDuration(Single(LeadingNumber(EnterSmp) / static_cast<double>(Freq)));
    } catch (const Failure&) {
        return {};
    }
}

double EntDurNumber(std::string_view EnterSmp) noexcept {
    return RoundEven(LeadingNumber(EnterSmp));
}

std::int32_t EntDurSamples(std::string_view EnterSmp) {
    return RoundToLong(LeadingNumber(EnterSmp));
}

} // namespace quoril

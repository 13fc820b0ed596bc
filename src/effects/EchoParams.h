// What the user sets for the echo: the record, its fields as texts, and how it is remembered.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace quoril {

struct EchoParamsRec {
    float FirstDelay = 0.08F;         ///< seconds, above 0, at most 100
    float NextDelays = 0.06F;         ///< seconds between the repeats, above 0, at most 100
    std::int32_t Repeats = 5;         ///< 1 to 100
    std::int32_t VolReduceAll = 80;   ///< percent of the one before, 1 to 200
    std::int32_t DelayVariation = 10; ///< percent of `NextDelays`, 0 to 100
    std::int32_t VolReduceHiFi = 100; ///< percent, 1 to 200; 100 leaves the filter out
    friend bool operator==(const EchoParamsRec&, const EchoParamsRec&) = default;
};

inline constexpr std::size_t EchoFields = 6;
using EchoTexts = std::array<std::string, EchoFields>;

/// What the dialog shows and changes. Nothing until it is first asked for in this process; after
/// that also what was left in a field when the dialog was cancelled.
extern std::optional<EchoParamsRec> EchoParams;

/// The fields' values as texts, in the record's order.
[[nodiscard]] EchoTexts EchoTextsOf(const EchoParamsRec& Params);
/// Stores what a text says in a field, counted from 0. A text that is no number in the field's
/// range changes nothing.
void EchoFieldTake(EchoParamsRec& Params, std::size_t Field, const std::string& Text);

/// The values of the last time; what is missing or out of its range is as at first.
[[nodiscard]] EchoParamsRec EchoSettingRead();
void EchoSettingWrite(const EchoTexts& Texts);

} // namespace quoril

#include "effects/EchoParams.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <algorithm>
#include <vector>

namespace quoril {

namespace {

constexpr const char* Section = "Effects";
constexpr const char* Key = "Echo";

/// One of the two says where the value is.
struct Field {
    float EchoParamsRec::*Seconds;
    std::int32_t EchoParamsRec::*Number;
    std::int32_t Low; ///< of a number; seconds are above 0
    std::int32_t High;
};
constexpr std::array<Field, EchoFields> Fields = {{
    {&EchoParamsRec::FirstDelay, nullptr, 0, 100},
    {&EchoParamsRec::NextDelays, nullptr, 0, 100},
    {nullptr, &EchoParamsRec::Repeats, 1, 100},
    {nullptr, &EchoParamsRec::VolReduceAll, 1, 200},
    {nullptr, &EchoParamsRec::DelayVariation, 0, 100},
    {nullptr, &EchoParamsRec::VolReduceHiFi, 1, 200},
}};

} // namespace

std::optional<EchoParamsRec> EchoParams;

EchoTexts EchoTextsOf(const EchoParamsRec& Params) {
    EchoTexts Texts;
    std::ranges::transform(Fields, Texts.begin(), [&Params](const Field& Each) {
        return Each.Seconds != nullptr ? NumberText(Params.*Each.Seconds)
                                       : std::to_string(Params.*Each.Number);
    });
    return Texts;
}

void EchoFieldTake(EchoParamsRec& Params, std::size_t Index, const std::string& Text) {
    const Field& Taken = Fields.at(Index);
    const auto Value = NumberAlone(Text);
    if (!Value || *Value < Taken.Low || *Value > Taken.High)
        return;
    if (Taken.Number != nullptr)
        Params.*Taken.Number = RoundToLong(*Value);
    else if (const float Seconds = Single(*Value); Seconds > 0)
        Params.*Taken.Seconds = Seconds;
}

EchoParamsRec EchoSettingRead() {
    const std::vector<std::string> Parts =
        TextParts(ProfileGet(Section, Key, "", SettingsFileName()), ',', EchoFields);
    EchoParamsRec Params;
    for (std::size_t Index = 0; Index < std::min(Parts.size(), EchoFields); ++Index)
        EchoFieldTake(Params, Index, Parts[Index]);
    return Params;
}

void EchoSettingWrite(const EchoTexts& Texts) {
    std::string Value = Texts[0];
    for (std::size_t Index = 1; Index < EchoFields; ++Index)
        Value += "," + Texts[Index];
    IniPut(Section, Key, Value);
}

} // namespace quoril

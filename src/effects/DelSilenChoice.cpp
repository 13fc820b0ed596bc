#include "effects/DelSilenChoice.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <fmt/format.h>
#include <limits>

namespace quoril {

namespace {

constexpr const char* Section = "DelSilenFrm";
constexpr const char* StyleKey = "SilenDelSty";

using Field = double DelSilenChoice::*;

/// Accepted are `Low` to 100; anything else becomes `Otherwise`.
struct SettingRow {
    Field Value;
    const char* Key;
    const char* Default;
    double Low;
    double Otherwise;
};
constexpr double Highest = 100;
constexpr double ShortestRun = 0.025;
constexpr std::array<SettingRow, 6> SettingRows = {{
    {&DelSilenChoice::SilenVol, "SilenceVol", "1", 0, 1},
    {&DelSilenChoice::SilenDur, "SilenceDur", "0.1", ShortestRun, 0.1},
    {&DelSilenChoice::BalDur, "SilenBalDur", "1", 0, 1},
    {&DelSilenChoice::BalPer, "SilenBalPer", "30", 0, 30},
    {&DelSilenChoice::BalMin, "SilenMinDur", "0", 0, 0},
    {&DelSilenChoice::BalMax, "SilenMaxDur", "100", ShortestRun, 60},
}};

/// From `Low` to 100 a value passes.
struct ProblemRow {
    Field Value;
    std::int16_t Style; ///< in which it is looked at; 0 for both
    double Low;
    const char* TooLow;
    const char* TooHigh;
};
constexpr const char* BadVolume = "Volume threshold percentage should be between 0 and 100";
constexpr const char* BadDuration = "Duration threshold should be between 0.025 and 100 seconds";
constexpr std::array<ProblemRow, 6> ProblemRows = {{
    {&DelSilenChoice::SilenVol, 0, 0, BadVolume, BadVolume},
    {&DelSilenChoice::SilenDur, 0, ShortestRun, BadDuration, BadDuration},
    {&DelSilenChoice::BalDur, 1, 0, "Balance duration can not be less then zero",
     "Balance duration can not be more then 100 seconds"},
    {&DelSilenChoice::BalPer, 2, 0, "Balance duration % can not be less then 0%",
     "Balance duration % can not be more then 100%"},
    {&DelSilenChoice::BalMin, 2, 0, "Balance Min. duration can not be less then zero",
     "Balance Min. duration can not be more then 100 seconds"},
    {&DelSilenChoice::BalMax, 2, ShortestRun, "Balance Max. duration can not be less then zero",
     "Balance Max. duration can not be more then 100 seconds"},
}};

constexpr double NoEnd = std::numeric_limits<double>::infinity();
constexpr NumberLimits PartOfAll = {0, true, 100, false};
constexpr NumberLimits ZeroAndMore = {0, true, NoEnd, false};
constexpr NumberLimits UpTo100 = {0, true, 100, true};
constexpr std::array<DelSilenField, 6> Fields = {{
    {"VolTxt", &DelSilenChoice::SilenVol, 0, PartOfAll, "Err1Lbl",
     "Volume should be in the range of 0~99%", PartOfAll, "Volume threshold is not valid"},
    {"DurTxt",
     &DelSilenChoice::SilenDur,
     0,
     {ShortestRun, false, NoEnd, false},
     "Err2Lbl",
     "Too small duration will delete part of low frequency sound",
     {ShortestRun, true, NoEnd, false},
     "Duration threshold is too small"},
    {"BalDurTxt", &DelSilenChoice::BalDur, 1, ZeroAndMore, "Err3Lbl", "Invalid duration",
     ZeroAndMore, "Balance duration invalid"},
    {"BalPerTxt", &DelSilenChoice::BalPer, 2, PartOfAll, "Err3Lbl", "Invalid duration", PartOfAll,
     "Balance duration % invalid"},
    {"BalMinDurTxt", &DelSilenChoice::BalMin, 2, UpTo100, "Err4Lbl", "Min. Invalid", UpTo100,
     "Balance Min. duration invalid"},
    {"BalMaxDurTxt",
     &DelSilenChoice::BalMax,
     2,
     {ShortestRun, true, 100, true},
     "Err5Lbl",
     "Max. Invalid",
     UpTo100,
     "Balance Max. duration invalid"},
}};

} // namespace

DelSilenChoice DelSilenSettingsRead() {
    DelSilenChoice Choice;
    for (const SettingRow& Row : SettingRows) {
        const double Value =
            NumberAlone(IniGet(Section, Row.Key, Row.Default)).value_or(Row.Otherwise);
        Choice.*Row.Value = Value >= Row.Low && Value <= Highest ? Value : Row.Otherwise;
    }
    const double Style = RoundEven(LeadingNumber(IniGet(Section, StyleKey, "1")));
    Choice.SilenDelStyl = Style == 2 ? 2 : 1;
    return Choice;
}

void DelSilenSettingsWrite(const DelSilenChoice& Choice) {
    for (const SettingRow& Row : SettingRows)
        IniPut(Section, Row.Key, fmt::format("{}", Choice.*Row.Value));
    IniPut(Section, StyleKey, std::to_string(Choice.SilenDelStyl));
}

const std::array<DelSilenField, 6>& DelSilenFields() noexcept {
    return Fields;
}

std::string DelSilenProblem(const DelSilenChoice& Choice) {
    for (const ProblemRow& Row : ProblemRows) {
        if (Row.Style != 0 && Row.Style != Choice.SilenDelStyl)
            continue;
        const double Value = Choice.*Row.Value;
        if (!(Value >= Row.Low)) // also what is no number
            return Row.TooLow;
        if (Value > Highest)
            return Row.TooHigh;
    }
    if (Choice.SilenDelStyl == 2 && Choice.BalMin >= Choice.BalMax)
        return "Balance Min. duration can not be more then (or equal to) Max. duration";
    return {};
}

} // namespace quoril

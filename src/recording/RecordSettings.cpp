#include "recording/RecordSettings.h"

#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "selection/DurationText.h"
#include "settings/STD1.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <string>

namespace quoril {

namespace {

constexpr const char* Section = "Record";

struct CheckKey {
    const char* Key;
    bool RecordChoices::*Place;
};
constexpr std::array<CheckKey, 4> Checks = {
    {{"StopAfterRecfor", &RecordChoices::StopAftRec},
     {"StopIfSilentfor", &RecordChoices::StopIfSilen},
     {"PauseIfSilentfor", &RecordChoices::PauseIfSilen},
     {"ContinWhenNotSilen", &RecordChoices::ContnIfNoSilen}}};

struct TimeKey {
    const char* Key;
    const char* Default;
    float Most;
    float RecordChoices::*Place;
};
constexpr std::array<TimeKey, 3> Times = {
    {{"RecordTime", "300", MostRecordTime, &RecordChoices::RecordTime},
     {"StopTime", "30", MostSilenceTime, &RecordChoices::StopTime},
     {"PauseTime", "30", MostSilenceTime, &RecordChoices::PauseTime}}};

struct DeviceKey {
    const char* Key;
    std::int32_t RecordSettings::*Place;
};
constexpr std::array<DeviceKey, 2> Devices = {
    {{"Dx7Div", &RecordSettings::Dx7Div}, {"ApiDiv", &RecordSettings::ApiDiv}}};

constexpr float LeastSilenthreshold = 0.01F;

float NumberOf(const char* Key, const char* Default) {
    return Single(LeadingNumber(IniGet(Section, Key, Default)));
}

float TimeRead(const TimeKey& Each) {
    const float Found = NumberOf(Each.Key, Each.Default);
    if (!(Found >= 1)) // also what is no number
        return Single(LeadingNumber(Each.Default));
    return std::min(Found, Each.Most);
}

std::int32_t DeviceRead(const char* Key) {
    const float Found = NumberOf(Key, "0");
    constexpr float MostDevices = 10000;
    return Found >= 1 && Found < MostDevices ? static_cast<std::int32_t>(Found) : 0;
}

} // namespace

RecordSettings RecordSettingsRead() {
    RecordSettings Result;
    for (const CheckKey& Each : Checks)
        Result.Choices.*Each.Place = NumberOf(Each.Key, "0") == 1;
    for (const TimeKey& Each : Times)
        Result.Choices.*Each.Place = TimeRead(Each);
    for (const DeviceKey& Each : Devices)
        Result.*Each.Place = DeviceRead(Each.Key);
    const float Limit = NumberOf("Silenthreshold", "0.10");
    Result.Choices.Silenthreshold =
        Limit >= LeastSilenthreshold ? std::min(Limit, 1.0F) : LeastSilenthreshold;
    return Result;
}

void RecordSettingsWrite(const RecordSettings& Settings) {
    for (const DeviceKey& Each : Devices)
        IniPut(Section, Each.Key, std::to_string(Settings.*Each.Place));
    for (const CheckKey& Each : Checks)
        IniPut(Section, Each.Key, Settings.Choices.*Each.Place ? "1" : "0");
    for (const TimeKey& Each : Times)
        IniPut(Section, Each.Key, fmt::format("{:.7g}", Settings.Choices.*Each.Place));
    IniPut(Section, "Silenthreshold", fmt::format("{:.2f}", Settings.Choices.Silenthreshold));
}

float RecordTimeTyped(std::string_view Text, float Most) {
    try {
        const float Seconds = ParseDuration(Text);
        return Seconds >= 1 ? std::min(Seconds, Most) : 1.0F;
    } catch (const Failure&) { // beyond all times
        return LeadingNumber(Text) < 0 ? 1.0F : Most;
    }
}

std::int32_t SilenthresPosition(float Silenthreshold) {
    return std::clamp(RoundToLong(Silenthreshold * 100.0), 1, 100);
}

} // namespace quoril

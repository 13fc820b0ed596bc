// What the user chooses in the recording window, and how it is kept.
#pragma once

#include <cstdint>
#include <string_view>

namespace quoril {

/// The four check boxes, the three times in seconds, and the silence limit.
struct RecordChoices {
    bool StopAftRec = false;
    bool StopIfSilen = false;
    bool PauseIfSilen = false;
    bool ContnIfNoSilen = false;
    float RecordTime = 300;       ///< stop after so many seconds, 1 to 86400
    float StopTime = 30;          ///< stop after silence of so many seconds, 1 to 3600
    float PauseTime = 30;         ///< pause after silence of so many seconds, 1 to 3600
    float Silenthreshold = 0.10F; ///< what is softer is silence; fraction of full scale, 0.01 to 1
    friend bool operator==(const RecordChoices&, const RecordChoices&) = default;
};

/// The choices, and the device chosen for each engine.
struct RecordSettings {
    RecordChoices Choices;
    std::int32_t Dx7Div = 0; ///< place in the list of devices, from 1; 0 is the first, too
    std::int32_t ApiDiv = 0;
};

/// From the settings file. A number outside its limits is brought inside.
[[nodiscard]] RecordSettings RecordSettingsRead();
void RecordSettingsWrite(const RecordSettings& Settings);

inline constexpr float MostRecordTime = 86400;
inline constexpr float MostSilenceTime = 3600;
/// A time that was typed as the program writes times, in seconds, brought inside 1 to `Most`.
[[nodiscard]] float RecordTimeTyped(std::string_view Text, float Most);

/// The position of `SilenthresSlider`, 1 to 100, for a silence limit.
[[nodiscard]] std::int32_t SilenthresPosition(float Silenthreshold);

} // namespace quoril

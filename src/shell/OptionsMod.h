// What the options window changes, without the window.
#pragma once

#include "view/ColorSettings.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace quoril {

/// The choices of `Guide_Option`.
enum GuideLevels : std::int32_t {
    GuideNormal = 0,      ///< tips that have not been ticked
    GuideExperienced = 1, ///< no tips
    GuideNewUser = 2      ///< all tips once again
};

/// Everything that the window shows and takes.
struct OptionsChoice {
    bool LoopPlay = false;
    bool QuickPlay = true;
    double TempoForPercent = 100; ///< 10 to 200
    double TempoRevPercent = 100;
    std::int32_t Guide = GuideNormal;
    std::int32_t DrawStyle = 3; ///< from 1
    std::array<std::int32_t, WaveColorCount> Colors{};
    std::string TempPath;
};

inline constexpr double LowestTempoPercent = 10;
inline constexpr double HighestTempoPercent = 200;

/// What the program has to do besides storing; null where there is nothing to be done.
struct OptionsEffects {
    std::function<void()> SetLoopONOFF; ///< `LoopOn` has changed: show and store it; never fails
    std::function<void()> TemposChanged;
    std::function<void(bool)> SoundDriverSwitch; ///< on or off
};

/// The choices in force.
[[nodiscard]] OptionsChoice OptionsNow();

/// Puts choices in force and stores them. False when the temporary folder does not exist: then the
/// user has been told, the rest is in force, and `Choice` has the path in force again.
bool UpdateEditings(OptionsChoice& Choice, const OptionsEffects& Effects);

// ---- The sound system's version

struct SoundSystemVerdict {
    bool GoodEnough = false;
    std::string Text; ///< what the user reads
};
/// Asks for the version as start-up does.
[[nodiscard]] SoundSystemVerdict SoundSystemCheck();
/// Asks, and tells the user.
void DirectX7CheckAndInfo();

} // namespace quoril

#include "playback/PlaySpeed.h"

#include "base/Arithmetic.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "playback/PlayMod.h"
#include "playback/PlayWindow.h"
#include "playback/PlayerComponent.h"

#include <cmath>

namespace quoril {

namespace {

constexpr std::int32_t UsingSoundServer = 1;
constexpr std::int32_t UsingPlainSound = 2;

bool IsPlaying() {
    if (SoundDriverState != UsingSoundServer)
        return false;
    const std::int32_t Status = PlayStatusNow();
    return Status != StatusStopped && Status != StatusPaused;
}

} // namespace

float PlaySpeedOf(std::int32_t Value) noexcept {
    return Single(1.0 - Value / 10.0);
}

std::int32_t PlaySpeedValue(float Speed) {
    return -RoundToLong((double{Speed} - 1.0) * 10.0);
}

std::string PlaySpeedText(float Speed) {
    // In single precision, where 0.7 times 100 is 70.
    const float Percent = Speed * 100.0F;
    return std::to_string(RoundToLong(std::floor(double{Percent}))) + "%";
}

void PlaySpeedChange(std::int32_t Index, std::int32_t Value) {
    const float Speed = PlaySpeedOf(Value);
    CurrentPlayWindow().SetSpeedText(Index, PlaySpeedText(Speed));
    (Index == 1 ? TempoFor : TempoRev) = Speed;
    if (!IsPlaying())
        return;
    // Each command tells the player the speeds; going on after a pause takes them on.
    PlayCommand(PlayCodePause, 0);
    PlayCommand(PlayCodePause, 0);
}

void PlaySpeedShow() {
    if (SoundDriverState == UsingPlainSound) {
        MsgBox("You need to install directX7 or higher for this");
        return;
    }
    CurrentPlayWindow().ShowSpeedBox(PlaySpeedValue(TempoFor), PlaySpeedValue(TempoRev));
}

} // namespace quoril

#include "playback/SoundDriver.h"

#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayMod.h"
#include "playback/PlayWindow.h"

#include <exception>
#include <string>

namespace quoril {

namespace {

void TellNoDriver(const std::string& Description) {
    MsgBox(Description +
           "\nThere is an error initializing Sound Driver"
           "\nCheck whether another application is using sound driver exclusively."
           "\nIf yes, put that off and then ON the Sound driver in Options window (Tools-Options "
           "menu)."
           "\nOther wise, if this problem persists you may need to reinstall DirectX7 or Sound "
           "Card's Driver");
}

void SwitchOn() {
    (void)DsPlayer->MakeAnew();
    if (DsPlayer->Dll == nullptr)
        return; // seen from the state alone
    try {
        SoundDriverState = DsPlayer->Dll->DriverState(CurrentPlayWindow().Handle());
        if (SoundDriverState == 0 || SoundDriverState == -1)
            TellNoDriver({});
    } catch (const std::exception& What) {
        TellNoDriver(What.what());
    }
}

} // namespace

void SoundDriverSwitch(std::int16_t State) {
    SoundDriverState = 0;
    if (DsPlayer == nullptr)
        return;
    if (State != SoundDriverOff) {
        SwitchOn();
        return;
    }
    try {
        if (DsPlayer->Dll != nullptr && DsPlayer->Dll->IsAlive())
            (void)DsPlayer->Dll->DriverState(0);
    } catch (const std::exception&) {
        DsPlayer->Dll.reset(); // one that does not answer plays no more
    }
}

void SoundDriverRevive() {
    if (SoundDriverState == 0 || DsPlayer == nullptr ||
        (DsPlayer->Dll != nullptr && DsPlayer->Dll->IsAlive()))
        return;
    PlayerLost();
    SoundDriverState = 0;
    try {
        if (DsPlayer->MakeAnew())
            SoundDriverState = DsPlayer->Dll->DriverState(CurrentPlayWindow().Handle());
    } catch (const std::exception&) {
        DsPlayer->Dll.reset(); // the state stays 0, which the command that comes next tells
    }
}

} // namespace quoril

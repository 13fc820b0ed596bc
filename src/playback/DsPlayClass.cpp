#include "playback/DsPlayClass.h"

#include "base/Failure.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "playback/PlayMod.h"
#include "playback/PlayWindow.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"

#include <algorithm>
#include <utility>

namespace quoril {

std::unique_ptr<DsPlayClass> DsPlayer;

namespace {

constexpr const char* StatusPrompt = "S2";

bool ReadsOriginalFile(const BlockCarrBuffClass& Buff) {
    const BlockSet& Numbers = Buff.Blocks().Numbers();
    return std::any_of(Numbers.begin(), Numbers.end(), [](std::int32_t BlockNo) {
        return BlockTable[static_cast<std::size_t>(BlockNo)].BlockKind == BlockOrgFile;
    });
}

bool SnapshotReadsOriginalFile() {
    return (PlayBuffL != nullptr && ReadsOriginalFile(*PlayBuffL)) ||
           (PlayChannels == 2 && PlayBuffR != nullptr && ReadsOriginalFile(*PlayBuffR));
}

} // namespace

DsPlayClass::DsPlayClass(PlayerMaker Maker) : Make(std::move(Maker)) {
    (void)MakeAnew();
}

DsPlayClass::~DsPlayClass() = default;

bool DsPlayClass::MakeAnew() {
    if (Dll != nullptr && Dll->IsAlive())
        return false;
    Dll.reset();
    if (!Make)
        return false;
    try {
        std::unique_ptr<PlayerComponent> Made = Make();
        Made->MsgBoxOb = Dll_MsgBoxOb;
        Made->MemoryBytes(MemoryBudget);
        Made->TempDir(SessionDir);
        Made->Loop(LoopOn);
        Dll = std::move(Made);
    } catch (const Failure&) {
        // The program goes on without sound: the driver's state says so.
        return false;
    }
    return true;
}

PlayerComponent& DsPlayClass::Component() const {
    if (Dll == nullptr)
        throw Failure("The player is not there");
    return *Dll;
}

void DsPlayClass::ReleasePlayingFiles(bool OnlyOriginal) {
    if (OnlyOriginal && !SnapshotReadsOriginalFile())
        return;
    try {
        if (Dll != nullptr && Dll->IsAlive())
            Dll->ReleaseFiles();
        PlayButtonsRefresh();
    } catch (const PlayerGone&) {
        PlayerLost(); // one that has ended reads no file
    }
}

void DsPlayClass::Dll_MsgBoxOb(const std::string& Prompt, const std::string& Title) {
    if (Prompt == StatusPrompt)
        CurrentPlayWindow().SetPlayStatusLbl(Title);
    else
        MsgBox(Prompt, Title);
}

void ReleasePlayingFiles(bool OnlyOriginal) {
    if (DsPlayer != nullptr)
        DsPlayer->ReleasePlayingFiles(OnlyOriginal);
}

} // namespace quoril

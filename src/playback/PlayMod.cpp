#include "playback/PlayMod.h"

#include "base/Arithmetic.h"
#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayWindow.h"
#include "playback/PlayerComponent.h"
#include "playback/SoundDriver.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace quoril {

std::int32_t PlayBaseSample = 0;
std::int32_t PlayEndSample = 0;
std::int32_t PlayLength = 0;
std::int32_t PlayBits = 16;
std::int32_t PlayChannels = 0;
std::int32_t PlayFreq = 22050;
std::int32_t PlayDirection = 1;
std::int32_t PlayWorkChn = 0;
std::unique_ptr<BlockCarrBuffClass> PlayBuffL;
std::unique_ptr<BlockCarrBuffClass> PlayBuffR;

namespace {

constexpr double ShortestSeconds = 0.005;
constexpr std::int32_t OutOfSight = -2;

/// Stands where no window is.
class NoWindow final : public PlayWindow {
  public:
    bool ConfirmSelection(std::int32_t&, std::int32_t&, std::int32_t&, std::int32_t,
                          const std::string&) override {
        return false;
    }
    [[nodiscard]] std::string FormatDuration(float) const override { return {}; }
    [[nodiscard]] std::int32_t Handle() const override { return 1; }
    void RefreshPlayScale() override {}
    void RefreshScrollScale() override {}
    [[nodiscard]] bool PlayEnabled() const override { return true; }
    void EnablePlayButtons() override {}
    void SetPause(bool, const std::string&) override {}
    void DisableStop() override {}
    void SetLoopPressed(bool) override {}
    void SetPlayPosTimer(bool) override {}
    void MovePlayPosShp(std::int32_t, std::int32_t) override {}
    void SetPlayPosLbl(const std::string&) override {}
    void SetPlayStatusLbl(const std::string&) override {}
    void SetSpeedText(std::int32_t, const std::string&) override {}
    void ShowSpeedBox(std::int32_t, std::int32_t) override {}
};

NoWindow Nowhere;
PlayWindow* Window = &Nowhere;

/// What is to play: document positions and a channel code.
struct PlayRange {
    std::int32_t From = 0;
    std::int32_t To = 0;
    std::int32_t WorkChn = 0;
};

PlayerComponent& Player() {
    return DsPlayer->Component();
}

bool PlayerIsThere() {
    return DsPlayer != nullptr && DsPlayer->Dll != nullptr && DsPlayer->Dll->IsAlive();
}

bool TakesMainSelection(std::int32_t Code) {
    return Code == PlayNew || Code == PlayNewRev;
}

/// A single point is where playing begins: it goes to an end of the document.
void GrowPoint(PlayRange& Range, std::int32_t Code) {
    if (Range.From != Range.To)
        return;
    if (Code == PlayNewRev || Code == PlaySelectionRev)
        Range.From = 1;
    else
        Range.To = WaveStore->WavWaveINos;
}

PlayRange RangeFor(std::int32_t Code) {
    PlayRange Range;
    if (TakesMainSelection(Code)) {
        if (!Window->ConfirmSelection(Range.From, Range.To, Range.WorkChn, 0, "Play")) {
            Range.From = 1;
            Range.To = WaveStore->WavWaveINos;
        }
        PlaySelStart = Range.From;
        PlaySelEnd = Range.To;
        Window->RefreshPlayScale();
        Window->RefreshScrollScale();
    } else {
        Range.From = PlaySelStart;
        Range.To = PlaySelEnd;
        // The count of channels that played last serves as the code of the channel to play.
        Range.WorkChn = WaveStore->WavFmtChannel == 1 ? 1 : PlayChannels;
    }
    GrowPoint(Range, Code);
    return Range;
}

/// Fills PlayBuffL and PlayBuffR. One channel alone lies in PlayBuffL, whichever it is.
void CollectSnapshot(const PlayRange& Range) {
    PlayBuffL.reset();
    PlayBuffR.reset();
    const bool Right = Range.WorkChn == 2;
    WaveStore->WaveCollectData_ForPlay(Range.From, Range.To, Range.WorkChn,
                                       Right ? PlayBuffR : PlayBuffL,
                                       Right ? PlayBuffL : PlayBuffR);
    PlayChannels = Range.WorkChn == 0 ? WaveStore->WavFmtChannel : 1;
}

/// Blocks that are still in memory alone are written out for the player.
void BlocksToFiles(const BlockCarrBuffClass& Buff) {
    for (const std::int32_t BlockNo : Buff.Blocks().Numbers())
        if (BlockTable[static_cast<std::size_t>(BlockNo)].BlockKind == BlockMemory)
            BlockWriteThrough(BlockNo);
}

std::vector<std::int32_t> SerialList(const BlockCarrBuffClass* Buff) {
    std::vector<std::int32_t> Longs(1, 0);
    if (Buff == nullptr)
        return Longs;
    BlocksToFiles(*Buff);
    BlockSet Blocks;
    Buff->BuffBlocksGet(Blocks);
    BlockSetToLongs(Blocks, Longs);
    return Longs;
}

void HandOver() {
    const std::vector<std::int32_t> Left = SerialList(PlayBuffL.get());
    const std::vector<std::int32_t> Right =
        SerialList(PlayChannels == 2 ? PlayBuffR.get() : nullptr);
    // Looked at once more: what was prepared may be old.
    if (const auto Files = OrgFilesEntered(PlayBuffL.get(), PlayBuffR.get()); !Files.empty())
        Player().FilesEntered(Files);
    Player().Load(PlayBits, PlayChannels, PlayFreq, PlayLength, Left, Right);
    if (!Window->PlayEnabled())
        Window->EnablePlayButtons();
}

/// False when the range is too small; then the user has been told.
bool Prepare(PlayRange Range) {
    if (Range.From == 0 || Range.To == 0) {
        Range.From = 1;
        Range.To = WaveStore->WavWaveINos;
    }
    PlayBits = WaveStore->WavFmtBits;
    PlayFreq = WaveStore->WavFmtFreq;
    const std::int32_t Length = AddLong(SubLong(Range.To, Range.From), 1);
    if (static_cast<double>(Length) / PlayFreq < ShortestSeconds) {
        PlayCommand(PlayCodeStop, 0);
        MsgBox("Too small to play");
        return false;
    }
    PlayBaseSample = Range.From;
    PlayEndSample = Range.To;
    PlayLength = Length;
    const BusyPointer Busy;
    CollectSnapshot(Range);
    PlayWorkChn = Range.WorkChn;
    HandOver();
    return true;
}

void PreparePrepared() {
    PlayLength = AddLong(SubLong(PlayEndSample, PlayBaseSample), 1);
    const BusyPointer Busy;
    HandOver();
}

/// False when the command has ended already.
bool StartPlaying(std::int32_t Code, std::int32_t Arg) {
    if (Code == PlayPrepared)
        PreparePrepared();
    else if (!Prepare(RangeFor(Code)))
        return false;
    const bool Reverse = Code == PlayNewRev || Code == PlaySelectionRev || Code == PlayFromRev;
    PlayDirection = Reverse ? -1 : 1;
    if (Code == PlayFrom)
        Player().PlayForwardFrom(Arg);
    else if (Code == PlayFromRev)
        Player().PlayReverseFrom(Arg);
    else if (Reverse)
        Player().PlayReverse();
    else
        Player().PlayForward();
    return true;
}

void PauseOrContinue() {
    const std::int32_t Status = Player().PlayStatus();
    if (Status == StatusPaused) {
        Player().Continue();
    } else if (Status != StatusStopped) {
        Player().PauseStart();
        Player().Pause();
    }
}

void Run(std::int32_t Code, std::int32_t Arg) {
    Player().TempoForward(TempoFor);
    Player().TempoReverse(TempoRev);
    switch (Code) {
    case PlayCodeStop:
    case PlayStopAndRelease:
        Player().Stop();
        break;
    case PlayCodePause:
        PauseOrContinue();
        break;
    case PlayCodeUTurn:
        PlayDirection = -PlayDirection;
        Player().UTurn();
        break;
    case PlayNew:
    case PlayPrepared:
    case PlayNewRev:
    case PlaySelection:
    case PlaySelectionRev:
    case PlayFrom:
    case PlayFromRev:
        if (!StartPlaying(Code, Arg))
            return;
        break;
    default:
        break;
    }
    PlayButtonsRefresh();
}

bool StartsToPlay(std::int32_t Code) {
    return Code == PlayNew || Code == PlayPrepared || Code >= PlayNewRev;
}

void CursorsGone() {
    Window->SetPlayPosTimer(false);
    Window->MovePlayPosShp(OutOfSight, OutOfSight);
    Window->SetPlayPosLbl({});
}

/// Runs what asks the component; when that is gone the window shows it, and the failure goes on.
template <class BodyType>
auto AskPlayer(const BodyType& Body) {
    try {
        return Body();
    } catch (const PlayerGone&) {
        PlayerLost();
        throw;
    }
}

} // namespace

void SetPlayWindow(PlayWindow* Shown) noexcept {
    Window = Shown == nullptr ? &Nowhere : Shown;
}

PlayWindow& CurrentPlayWindow() noexcept {
    return *Window;
}

void PlayCommand(std::int32_t Code, std::int32_t Arg) {
    if (StartsToPlay(Code))
        SoundDriverRevive();
    if (SoundDriverState == 0) {
        MsgBox("Put ON the Sound driver in Options box (Tools-Options menu) to play",
               "Play failed");
        return;
    }
    try {
        if (PlayerIsThere())
            AskPlayer([=] { Run(Code, Arg); });
        else
            PlayerLost(); // nothing plays that could be stopped or turned
    } catch (const std::exception& What) {
        // What played before has lost its snapshot.
        if (StartsToPlay(Code) && DsPlayer->Dll != nullptr)
            PlayCommand(PlayCodeStop, 0);
        // A player that has been given up is as silent as one that has stopped.
        if (Code != PlayStopAndRelease)
            ShowFailure(What, "Play failed");
    }
    if (Code == PlayStopAndRelease) {
        PlayBuffL.reset();
        PlayBuffR.reset();
    }
}

void PlayButtonsRefresh() {
    const std::int32_t Status = DsPlayer->Dll == nullptr ? StatusStopped : Player().PlayStatus();
    if (Status != StatusStopped)
        Window->SetPlayPosTimer(true);
    Window->SetPause(Status != StatusStopped, Status == StatusPaused ? "Continue" : "Pause");
}

void PlayerLost() {
    DsPlayer->Dll.reset();
    CursorsGone();
    Window->SetPlayStatusLbl({});
    Window->DisableStop();
    PlayButtonsRefresh();
}

std::int32_t PlayStatusNow() {
    if (SoundDriverState == 0 || !PlayerIsThere())
        return StatusStopped;
    return AskPlayer([] { return Player().PlayStatus(); });
}

bool PlayIsOn() {
    return PlayStatusNow() != StatusStopped;
}

std::int32_t PlayPositionNow() {
    return AddLong(PlayBaseSample, AskPlayer([] { return Player().PlayPosition(); }));
}

void PlayPosTimerFired() {
    try {
        AskPlayer([] {
            if (Player().PlayStatus() == StatusStopped)
                Window->SetPlayPosTimer(false);
            PlayCursorPositioning();
        });
    } catch (const std::exception&) {
        CursorsGone();
        throw;
    }
}

void PlayCursorPositioning() {
    const std::int32_t Pos = std::min(PlayPositionNow(), PlayEndSample);
    if (Player().PlayStatus() == StatusStopped) {
        Window->MovePlayPosShp(OutOfSight, OutOfSight);
        Window->SetPlayPosLbl({});
        return;
    }
    const bool InView = Pos >= ViewFrom && Pos <= std::int64_t{ViewFrom} + ViewTotal;
    const std::int32_t X =
        InView ? RoundToLong((static_cast<double>(Pos) - ViewFrom) * PixelsPerSample) : OutOfSight;
    Window->MovePlayPosShp(PlayWorkChn == 2 ? OutOfSight : X, PlayWorkChn == 1 ? OutOfSight : X);
    Window->SetPlayPosLbl(Window->FormatDuration(Single(static_cast<double>(Pos) / PlayFreq)) +
                          "/" + std::to_string(Pos));
}

void SetLoopONOFF() {
    Window->SetLoopPressed(LoopOn);
    IniPut("Setting", "LoopOn", LoopOn ? "1" : "0");
    if (PlayerIsThere())
        AskPlayer([] { Player().Loop(LoopOn); });
}

void PlayOrStop() {
    PlayCommand(PlayIsOn() ? PlayCodeStop : PlaySelection, 0);
}

} // namespace quoril

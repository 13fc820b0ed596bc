// The player component and the window of the play controls in tests.
#pragma once

#include "base/BusyPointer.h"
#include "base/Failure.h"
#include "base/PlayState.h"
#include "base/ViewState.h"
#include "playback/DsPlayClass.h"
#include "playback/PlayMod.h"
#include "playback/PlayWindow.h"
#include "storage/FileMemoClass.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quoril::test {

using Lines = std::vector<std::string>;

/// Writes every call down, and answers what the test has set.
class PlayerDouble final : public PlayerComponent {
  public:
    struct Answers {
        Lines Calls;
        std::int32_t State = 1;
        std::int32_t Status = 0;
        int StatusAsked = 0;
        std::int32_t Position = 0;
        bool Alive = true;
        std::string FailingCall;
        std::vector<std::int32_t> LeftList;
        std::vector<std::int32_t> RightList;
        std::vector<EnteredFile> Files;
        PlayerDouble* Now = nullptr;
    };
    explicit PlayerDouble(Answers& Given) : Told(Given) { Told.Now = this; }
    ~PlayerDouble() override { Told.Now = nullptr; }
    PlayerDouble(const PlayerDouble&) = delete;
    PlayerDouble& operator=(const PlayerDouble&) = delete;

    std::int32_t DriverState(std::int32_t Window) override {
        Note(fmt::format("DriverState {}", Window));
        return Window == 0 ? 0 : Told.State;
    }
    std::int32_t PlayPosition() override {
        Quiet("PlayPosition");
        return Told.Position;
    }
    void PlayForward() override { Start("PlayForward"); }
    void PlayReverse() override { Start("PlayReverse"); }
    std::int32_t PlayStatus() override {
        Quiet("PlayStatus");
        ++Told.StatusAsked;
        return Told.Status;
    }
    void UTurn() override { Note("UTurn"); }
    void Stop() override {
        Note("Stop");
        Told.Status = 0;
    }
    void Continue() override {
        Note("Continue");
        Told.Status = 1;
    }
    void Pause() override {
        Note("Pause");
        Told.Status = 3;
    }
    void PauseStart() override { Note("PauseStart"); }
    void Load(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq, std::int32_t Length,
              const std::vector<std::int32_t>& Left,
              const std::vector<std::int32_t>& Right) override {
        Note(fmt::format("Load {} {} {} {}", Bits, Channels, Freq, Length));
        Told.LeftList = Left;
        Told.RightList = Right;
    }
    void MemoryBytes(std::int32_t Bytes) override { Note(fmt::format("MemoryBytes {}", Bytes)); }
    void Loop(bool On) override { Note(fmt::format("Loop {}", On)); }
    void TempoForward(float Tempo) override { Note(fmt::format("TempoForward {}", Tempo)); }
    void TempoReverse(float Tempo) override { Note(fmt::format("TempoReverse {}", Tempo)); }
    void TempDir(const std::string& Folder) override { Note("TempDir " + Folder); }
    void ReleaseFiles() override { Note("ReleaseFiles"); }
    void PlayForwardFrom(std::int32_t Offset) override {
        Start(fmt::format("PlayForwardFrom {}", Offset));
    }
    void PlayReverseFrom(std::int32_t Offset) override {
        Start(fmt::format("PlayReverseFrom {}", Offset));
    }
    void FilesEntered(const std::vector<EnteredFile>& Files) override {
        Note("FilesEntered");
        Told.Files = Files;
    }
    [[nodiscard]] bool IsAlive() const override { return Told.Alive; }

  private:
    void Quiet(const std::string& Call) const {
        if (Call.substr(0, Call.find(' ')) == Told.FailingCall)
            throw PlayerGone("The player does not answer");
    }
    void Note(const std::string& Call) {
        Quiet(Call);
        Told.Calls.push_back(Call);
    }
    void Start(const std::string& Call) {
        Note(Call);
        Told.Status = 1;
    }
    Answers& Told;
};

/// Writes down what the controls show.
class WindowDouble final : public PlayWindow {
  public:
    WindowDouble() {
        SetPlayWindow(this);
        SetBusyPointerRoutine([this](bool Busy) { Shown.emplace_back(Busy ? "busy" : "ready"); });
    }
    ~WindowDouble() override {
        SetBusyPointerRoutine({});
        SetPlayWindow(nullptr);
    }
    WindowDouble(const WindowDouble&) = delete;
    WindowDouble& operator=(const WindowDouble&) = delete;

    bool ConfirmSelection(std::int32_t& From, std::int32_t& To, std::int32_t& WorkChn,
                          std::int32_t Need, const std::string& Operation) override {
        Shown.push_back(fmt::format("confirm {} {}", Need, Operation));
        WorkChn = Channel;
        From = SelStart;
        To = SelEnd;
        return SelStart != 0;
    }
    [[nodiscard]] std::string FormatDuration(float Seconds) const override {
        return fmt::format("<{:g}>", Seconds);
    }
    [[nodiscard]] std::int32_t Handle() const override { return 77; }
    void RefreshPlayScale() override { Shown.emplace_back("play scale"); }
    void RefreshScrollScale() override { Shown.emplace_back("scroll scale"); }
    [[nodiscard]] bool PlayEnabled() const override { return Enabled; }
    void EnablePlayButtons() override {
        Shown.emplace_back("enable");
        Enabled = true;
    }
    void SetPause(bool On, const std::string& ToolTip) override {
        PauseEnabled = On;
        PauseTip = ToolTip;
    }
    void DisableStop() override {
        Shown.emplace_back("no stop");
        Enabled = false;
    }
    void SetLoopPressed(bool Pressed) override { LoopPressed = Pressed; }
    void SetPlayPosTimer(bool On) override { Timer = On; }
    void MovePlayPosShp(std::int32_t X1, std::int32_t X2) override { Shapes = {X1, X2}; }
    void SetPlayPosLbl(const std::string& Text) override { PosLbl = Text; }
    void SetPlayStatusLbl(const std::string& Text) override { StatusLbl = Text; }
    void SetSpeedText(std::int32_t Index, const std::string& Text) override {
        Shown.push_back(fmt::format("speed {} {}", Index, Text));
    }
    void ShowSpeedBox(std::int32_t ValueFor, std::int32_t ValueRev) override {
        Shown.push_back(fmt::format("box {} {}", ValueFor, ValueRev));
    }

    std::int32_t Channel = 0;
    Lines Shown;
    bool Enabled = false;
    bool PauseEnabled = false;
    std::string PauseTip;
    bool LoopPressed = false;
    bool Timer = false;
    std::vector<std::int32_t> Shapes;
    std::string PosLbl;
    std::string StatusLbl;
};

/// A document of silence, a player and a window.
class PlaybackFixture : public ::testing::Test {
  protected:
    PlaybackFixture() {
        WaveStore = std::make_unique<FileMemoClass>();
        MakeDocument(1, 8000, 16, 10000);
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        Player.Calls.clear();
        SoundDriverState = 1;
        TempoFor = TempoRev = 1.0F;
    }
    ~PlaybackFixture() override {
        DsPlayer.reset();
        PlayBuffL.reset();
        PlayBuffR.reset();
        WaveStore.reset();
    }
    void MakeDocument(std::int32_t Channels, std::int32_t Freq, std::int32_t Bits,
                      std::int32_t Total) {
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = Channels;
        WaveStore->WavFmtFreq = Freq;
        WaveStore->WavFmtBits = Bits;
        BlockCarrBuffClass Left;
        BlockCarrBuffClass Right;
        Left.ReDimSize(Total);
        Right.ReDimSize(Total);
        WaveStore->SwitchUndoOff = true;
        WaveStore->WaveDataInsert(1, Channels == 2 ? 0 : 1, &Left, &Right, "New", true);
        WaveStore->SwitchUndoOff = false;
    }
    Lines TakeCalls() { return std::exchange(Player.Calls, {}); }
    /// The same without the speeds that precede every command.
    Lines TakeActs() {
        Lines Acts = TakeCalls();
        std::erase_if(Acts, [](const std::string& Call) { return Call.starts_with("Tempo"); });
        return Acts;
    }

    TestSession Session;
    ScriptedMessages Messages;
    WindowDouble Window;
    PlayerDouble::Answers Player;
};

} // namespace quoril::test

// The states of a recording: what Start, Pause and Stop do, the silence logic, the two clocks and
// the meters. Knows no window and no device.
#pragma once

#include "recording/RecordFormats.h"
#include "recording/RecordSettings.h"
#include "recording/RecordTake.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quoril {

enum RecStates : std::int32_t {
    RecClosed = 0,    ///< no engine is open
    RecReady = 1,     ///< sound comes for the meters, and is not kept
    RecRecording = 2, ///< sound is kept
    RecPaused = 3     ///< the clock goes on, sound is not kept
};

/// What the window shows of the recording.
struct RecordShown {
    std::string Rec_Stat_Lbl;
    std::string StartCaption = "Start";
    std::string PauseCaption = "Pause";
    bool StartEnabled = false;
    bool PauseEnabled = false;
    bool StopEnabled = false;
    bool DoneEnabled = false;
    bool CancelEnabled = true;
    bool DeviceEnabled = true; ///< the controls of engine and device
    std::string Dur_Lbl0;      ///< length of the take
    std::string Dur_Lbl1;      ///< time since Start
    std::string LossLbl;       ///< that sound was lost, and when; empty if none was
    bool MetersRed = false;
    std::int32_t PeakL = 0; ///< absolute, 0 to full scale
    std::int32_t PeakR = 0;
    friend bool operator==(const RecordShown&, const RecordShown&) = default;
};

/// Every event may come in every state; one that means nothing there changes nothing.
class RecordMachine {
  public:
    explicit RecordMachine(TakeStore& Store) : Take(Store) {}

    RecordChoices Choices;
    /// What the blocks are like. `MostFrames`: as much as the document still holds.
    void SetUp(const CaptureFormat& Captured, std::int32_t MostFrames);

    // ---- Events

    void EngineOpened(const std::string& Status);
    /// Also when it is lost: a running recording is stopped first, and can be kept.
    void EngineClosed();
    void Status(const std::string& Text) { Shown.Rec_Stat_Lbl = Text; }
    void ClearMeters() noexcept { Shown.PeakL = Shown.PeakR = 0; }
    void Start();
    /// Pause, or go on when paused.
    void Pause();
    void Stop();
    /// A block of the engine, about 0.1 seconds: index 1 to `BlockFrames`; the right one is empty
    /// when mono. A take that cannot go on is stopped, and Trouble tells why.
    void ProcessRecordedBlock(const std::vector<std::int16_t>& RecBuffL,
                              const std::vector<std::int16_t>& RecBuffR, std::int32_t BlockFrames);
    /// Sound was lost before the next block.
    void SoundLost();

    // ---- Where it stands

    [[nodiscard]] std::int32_t RecState() const noexcept { return State; }
    [[nodiscard]] std::int32_t RecordedFrames() const noexcept { return Recorded; }
    [[nodiscard]] std::int64_t ElapsedFrames() const noexcept { return Elapsed; }
    [[nodiscard]] float SilenceSeconds() const noexcept { return Silence; }
    [[nodiscard]] const RecordShown& Show() const noexcept { return Shown; }
    /// What stopped the recording against the user's will, to be told once; empty if nothing did.
    [[nodiscard]] std::string TakeTrouble();

  private:
    void Enter(std::int32_t NewState, const std::string& Status);
    void ShowState();
    void CountTime(std::int32_t BlockFrames);
    void WatchSilence(float Level, std::int32_t BlockFrames);
    void Keep(const std::vector<std::int16_t>& RecBuffL, const std::vector<std::int16_t>& RecBuffR,
              std::int32_t BlockFrames);
    void StopFor(const std::string& Reason);
    [[nodiscard]] double Seconds(std::int64_t Frames) const noexcept;

    TakeStore& Take;
    CaptureFormat Format;
    std::int32_t Most = 0;
    std::int32_t State = RecClosed;
    std::int32_t Recorded = 0;
    std::int64_t Elapsed = 0; // a pause may last longer than a document can be
    float Silence = 0;
    std::string DurationText; // of the take, without the mark of the pause
    std::string Trouble;
    RecordShown Shown;
};

// ---- The meters

/// Full scale of a depth: 32768 or 128.
[[nodiscard]] std::int32_t MeterFullScale(std::int32_t Bits) noexcept;
/// The largest absolute value at a quarter, half, three quarters and the end of a block.
[[nodiscard]] std::int32_t ProbedPeak(const std::vector<std::int16_t>& RecBuff,
                                      std::int32_t BlockFrames);
/// Height of the bar for a peak in a meter of a height, both in pixels.
[[nodiscard]] std::int32_t MeterBar(std::int32_t Peak, std::int32_t Bits, std::int32_t Height);
/// Top of the marker, of a height of its own, beside a meter whose top and height are given.
[[nodiscard]] std::int32_t SilenArrowTop(float Silenthreshold, std::int32_t MeterTop,
                                         std::int32_t MeterHeight, std::int32_t ArrowHeight);

} // namespace quoril

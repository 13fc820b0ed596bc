#include "recording/RecordMachine.h"

#include "base/Arithmetic.h"
#include "base/CommandFailure.h"
#include "selection/DurationText.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace quoril {

void RecordMachine::SetUp(const CaptureFormat& Captured, std::int32_t MostFrames) {
    Format = Captured;
    Most = MostFrames;
    ShowState();
}

double RecordMachine::Seconds(std::int64_t Frames) const noexcept {
    return static_cast<double>(Frames) / Format.RecFreq;
}

// ---- States

void RecordMachine::Enter(std::int32_t NewState, const std::string& Text) {
    State = NewState;
    Status(Text);
    ShowState();
}

void RecordMachine::ShowState() {
    const bool Running = State == RecRecording || State == RecPaused;
    Shown.StartEnabled = State == RecReady;
    Shown.PauseEnabled = Running;
    Shown.StopEnabled = Running;
    Shown.DoneEnabled = !Running && Recorded > 0;
    Shown.CancelEnabled = !Running;
    Shown.DeviceEnabled = !Running;
    Shown.PauseCaption = State == RecPaused ? "Continue" : "Pause";
    Shown.Dur_Lbl0 = DurationText + (State == RecPaused ? " [P]" : "");
}

void RecordMachine::EngineOpened(const std::string& Text) {
    if (State == RecClosed)
        Enter(RecReady, Text);
}

void RecordMachine::EngineClosed() {
    Stop();
    State = RecClosed;
    ShowState();
    ClearMeters();
}

void RecordMachine::Start() {
    if (State != RecReady)
        return;
    Elapsed = Recorded = 0;
    Silence = 0;
    DurationText.clear();
    Shown.Dur_Lbl1.clear();
    Shown.LossLbl.clear();
    try {
        Take.Empty();
    } catch (const std::exception& What) {
        Trouble = FailureText(What);
        ShowState();
        return;
    }
    Enter(RecRecording, "Now Recording");
}

void RecordMachine::Pause() {
    if (State == RecRecording) {
        Enter(RecPaused, "Recording Paused");
    } else if (State == RecPaused) {
        Silence = 0;
        Enter(RecRecording, "Now Recording");
    }
}

void RecordMachine::Stop() {
    if (State != RecRecording && State != RecPaused)
        return;
    Shown.StartCaption = "Restart";
    Enter(RecReady, "Recording Done");
}

void RecordMachine::StopFor(const std::string& Reason) {
    Trouble = Reason;
    if (Recorded > 0)
        Trouble += "\nThe recording has stopped. Done keeps what was recorded until then.";
    Stop();
}

std::string RecordMachine::TakeTrouble() {
    return std::exchange(Trouble, {});
}

// ---- Blocks

void RecordMachine::ProcessRecordedBlock(const std::vector<std::int16_t>& RecBuffL,
                                         const std::vector<std::int16_t>& RecBuffR,
                                         std::int32_t BlockFrames) {
    Shown.MetersRed = State == RecRecording;
    Shown.PeakL = ProbedPeak(RecBuffL, BlockFrames);
    Shown.PeakR = Format.RecChannels == 2 ? ProbedPeak(RecBuffR, BlockFrames) : 0;
    const float Level = Single(static_cast<double>(std::max(Shown.PeakL, Shown.PeakR)) /
                               MeterFullScale(Format.RecBits));
    // The time limit looks at the clock as it was before this block.
    if (Choices.StopAftRec && Seconds(Elapsed) >= Choices.RecordTime)
        Stop();
    if (State > RecReady) {
        CountTime(BlockFrames);
        WatchSilence(Level, BlockFrames);
    }
    if (State == RecRecording)
        Keep(RecBuffL, RecBuffR, BlockFrames);
}

void RecordMachine::CountTime(std::int32_t BlockFrames) {
    Elapsed += BlockFrames;
    Shown.Dur_Lbl1 = FormatSamples(Elapsed, Format.RecFreq);
}

void RecordMachine::WatchSilence(float Level, std::int32_t BlockFrames) {
    if (Level >= Choices.Silenthreshold) {
        Silence = 0;
        if (State == RecPaused && Choices.ContnIfNoSilen)
            Pause();
    } else if (State == RecRecording) {
        Silence = Single(Silence + Seconds(BlockFrames));
        if (Choices.StopIfSilen) {
            if (Silence >= Choices.StopTime)
                Stop();
        } else if (Choices.PauseIfSilen && Silence >= Choices.PauseTime) {
            Pause();
        }
    }
}

void RecordMachine::Keep(const std::vector<std::int16_t>& RecBuffL,
                         const std::vector<std::int16_t>& RecBuffR, std::int32_t BlockFrames) {
    if (BlockFrames > Most - Recorded) {
        StopFor("The recording has become as long as a waveform can be.");
        return;
    }
    try {
        Take.Put(RecBuffL, RecBuffR);
    } catch (const std::exception& What) {
        StopFor(FailureText(What));
        return;
    }
    Recorded += BlockFrames;
    DurationText = FormatSamples(Recorded, Format.RecFreq);
    ShowState();
}

void RecordMachine::SoundLost() {
    if (State == RecRecording && Shown.LossLbl.empty())
        Shown.LossLbl = "Sound was lost at " + FormatSamples(Recorded, Format.RecFreq);
}

// ---- The meters

std::int32_t MeterFullScale(std::int32_t Bits) noexcept {
    return Bits == 8 ? 128 : 32768;
}

std::int32_t ProbedPeak(const std::vector<std::int16_t>& RecBuff, std::int32_t BlockFrames) {
    std::int32_t Peak = 0;
    for (int Quarter = 1; Quarter <= 4 && BlockFrames > 0; ++Quarter) {
        const std::int32_t Place = std::max(1, RoundToLong(BlockFrames * 0.25 * Quarter));
        Peak = std::max(Peak, std::abs(std::int32_t{RecBuff[static_cast<std::size_t>(Place)]}));
    }
    return Peak;
}

std::int32_t MeterBar(std::int32_t Peak, std::int32_t Bits, std::int32_t Height) {
    return RoundToLong(static_cast<double>(Peak) * Height / MeterFullScale(Bits));
}

std::int32_t SilenArrowTop(float Silenthreshold, std::int32_t MeterTop, std::int32_t MeterHeight,
                           std::int32_t ArrowHeight) {
    return RoundToLong(MeterTop + MeterHeight - double{Silenthreshold} * MeterHeight -
                       ArrowHeight / 2.0);
}

} // namespace quoril

#include "recording/RecordSession.h"

#include "base/BusyPointer.h"
#include "base/CommandFailure.h"
#include "recording/RecordSettings.h"
#include "selection/SelectionMod.h"
#include "storage/FileMemoClass.h"

#include <algorithm>
#include <limits>

namespace quoril {

RecordSession::RecordSession(const RecordSurroundings& Surroundings)
    : Driver(Machine, Surroundings) {}

RecordSession::~RecordSession() = default;

bool RecordSession::InitilizeForm() {
    std::int32_t SamePos = 0;
    if (!ConfirmSelection(InsertPos, SamePos, WorkChn, NeedOnePoint, "Record"))
        return false;
    const bool Stereo = WaveStore->WavFmtChannel == 2 && WorkChn == 0;
    Format = {Stereo ? 2 : 1, WaveStore->WavFmtBits, WaveStore->WavFmtFreq};
    // Positions behind the take must still be numbers of 32 bits.
    Machine.SetUp(Format, std::numeric_limits<std::int32_t>::max() -
                              std::max(InsertPos, WaveStore->WavWaveINos));
    Driver.SetFormat(Format);
    return true;
}

void RecordSession::LoadSettings() {
    const RecordSettings Settings = RecordSettingsRead();
    Machine.Choices = Settings.Choices;
    Driver.Dx7Div = Settings.Dx7Div;
    Driver.ApiDiv = Settings.ApiDiv;
}

void RecordSession::StoreSettings() const {
    RecordSettingsWrite({Machine.Choices, Driver.Dx7Div, Driver.ApiDiv});
}

void RecordSession::Start() {
    (void)Driver.Deliver();
    Machine.Start();
}

void RecordSession::Pause() {
    (void)Driver.Deliver();
    Machine.Pause();
}

void RecordSession::Stop() {
    (void)Driver.Deliver();
    Machine.Stop();
}

bool RecordSession::Done() {
    return RunCommand({}, [this] {
        const BusyPointer Busy;
        Take.InsertInto(InsertPos, WorkChn);
    });
}

void RecordSession::End() {
    Driver.Close();
    Take.Drop();
}

bool RecordSession::HoldsTake() const noexcept {
    return Machine.RecState() > RecReady || Machine.Show().DoneEnabled;
}

} // namespace quoril

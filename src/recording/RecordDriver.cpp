#include "recording/RecordDriver.h"

#include "base/CommandFailure.h"
#include "base/MsgBoxMod.h"

#include <algorithm>
#include <utility>

namespace quoril {

RecordDriver::RecordDriver(RecordMachine& Recording, const RecordSurroundings& Surroundings)
    : Machine(Recording), Around(Surroundings), Line{nullptr, std::make_shared<CaptureNotice>()} {}

CaptureSystem& RecordDriver::Wanted() const noexcept {
    return Dx7OrApiOpn == OptionDx7 ? Around.Dx7 : Around.Api;
}

std::int32_t& RecordDriver::ChosenDevice() noexcept {
    return Dx7OrApiOpn == OptionDx7 ? Dx7Div : ApiDiv;
}

// ---- Open and close

bool RecordDriver::InitilizeDriver(bool Same) {
    Close();
    DevicesShown.clear();
    DeviceIndex = -1;
    FmtSup_Lbl.clear();
    Formats.clear();
    if (!Same) {
        DxAvailable = Around.Dx7IsThere();
        if (!DxAvailable)
            Dx7OrApiOpn = OptionApi;
    }
    if (Dx7OrApiOpn == OptionDx7 && !DxAvailable) {
        Machine.Status("Need DirectX7 to use this drive");
        return false;
    }
    return ChooseDevice() && FormatAccepted() && OpenDevice();
}

bool RecordDriver::ChooseDevice() {
    DevicesShown = Wanted().Devices();
    if (DevicesShown.empty()) {
        Machine.Status("Audio Device not found");
        MsgBox("Audio Device not found", "No audio device found");
        return false;
    }
    for (std::string& Each : DevicesShown)
        if (Each.empty())
            Each = "---";
    const auto Count = static_cast<std::int32_t>(DevicesShown.size());
    DeviceIndex = ChosenDevice() >= 1 && ChosenDevice() <= Count ? ChosenDevice() - 1 : 0;
    return true;
}

bool RecordDriver::FormatAccepted() {
    const std::uint32_t Bits = Wanted().FormatBits(static_cast<std::size_t>(DeviceIndex));
    const bool ByServer = Dx7OrApiOpn == OptionDx7;
    Formats = RecordFormatList(Bits, ByServer ? RecEngineDx7 : RecEngineApi);
    FormatSupported = std::ranges::any_of(Formats, [this](const RecordFormatName& Each) {
        return Each.Key == RecordFormatKey(Format);
    });
    FmtSup_Lbl = FormatSupported ? "Format supported" : "Format not supported";
    if (FormatSupported || !ByServer)
        return true; // the plain sound is tried in any case
    Machine.Status("Format not supported");
    MsgBox("Format not supported for recording\nYou may try changing the device\n"
           "Or change the format before recording");
    return false;
}

bool RecordDriver::OpenDevice() {
    const bool ByServer = Dx7OrApiOpn == OptionDx7;
    if (!ByServer)
        Machine.Status("Recording");
    try {
        Line.Queue = std::make_shared<CaptureQueue>();
        Line.Queue->SetUp(Format.HalfBytes());
        Stream = Wanted().Open(static_cast<std::size_t>(DeviceIndex), Format, Line);
    } catch (const CaptureFailure& What) {
        Machine.Status(CaptureErrorStatus(What.Code));
        ShowFailure(What, {});
        return false;
    } catch (const std::exception& What) {
        Machine.Status(CaptureErrorStatus(CaptureNoMemory));
        ShowFailure(What, {});
        return false;
    }
    RecEngine = ByServer ? RecEngineDx7 : RecEngineApi;
    Machine.EngineOpened("Ready to record");
    return true;
}

void RecordDriver::Close() {
    Stream.reset();
    RecEngine = RecEngineNone;
    Machine.EngineClosed();
}

// ---- Another engine, another device

void RecordDriver::BeginChange() {
    Machine.Status("Please wait");
    Close();
    Machine.Status("Please wait..");
}

void RecordDriver::ChangeEngine(std::int32_t Option) {
    Dx7OrApiOpn = Option;
    BeginChange();
}

void RecordDriver::ChangeDevice(std::int32_t Index) {
    ChosenDevice() = Index + 1;
    BeginChange();
}

// ---- Blocks

bool RecordDriver::Deliver() {
    if (Delivering)
        return false;
    // Also without a stream: a device that was left to itself may still raise it.
    Line.Notice->Lower();
    if (Stream == nullptr)
        return false;
    Delivering = true;
    // What was captured before the device went is in the queue once the loss is seen.
    const bool Lost = Stream->Lost();
    // As many as there are now: who fills faster than time must not keep the window from its work.
    const std::size_t Waiting = Line.Queue->Waiting();
    for (std::size_t No = 0; No < Waiting; ++No)
        DeliverHalf();
    Delivering = false;
    if (Waiting > 1)
        Stream->RoomMade();
    if (Lost) {
        Close();
        Machine.Status("The recording device is gone");
    }
    return Waiting > 0;
}

void RecordDriver::DeliverHalf() {
    const CaptureQueue::Half& Half = *Line.Queue->Oldest();
    if (Half.AfterLoss)
        Machine.SoundLost();
    const std::int32_t BlockFrames =
        SplitFrames(Half.Frames, Half.Bytes, Format, RecBuffL, RecBuffR);
    Line.Queue->Drop();
    Machine.ProcessRecordedBlock(RecBuffL, RecBuffR, BlockFrames);
}

std::string RecordDriver::SupportedFormatsText() const {
    std::string Text = "Supported formats:";
    for (const RecordFormatName& Each : Formats)
        Text += "\n" + Each.Name;
    return Formats.empty() ? Text + "\n[Failed to show]" : Text;
}

} // namespace quoril

#include "recording/CaptureSystem.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/eventfd.h>

namespace quoril {

namespace {

struct ErrorWords {
    std::int32_t Code;
    const char* Text;
    const char* Status;
};
constexpr const char* NotOpened = "Unable to open audio device.";
constexpr std::array<ErrorWords, 7> Words = {
    {{CaptureBadParameter, "Invalid parameter passed", NotOpened},
     {CaptureBadDevice, "Specified device identifier is out of range.", "Failed to open device"},
     {CaptureInUse, "Device already in use.", "Device already in use"},
     {CaptureBadHandle, "Specified device handle is invalid.", "Failed to open device"},
     {CaptureNoDriver, "No device driver is present.", "No device driver is present"},
     {CaptureNoMemory, "Unable to allocate or lock memory.", NotOpened},
     {CaptureBadFormat, "Attempted to open with an unsupported waveform-audio format.",
      NotOpened}}};

const ErrorWords& WordsOf(std::int32_t Code) {
    const auto* const Found = std::ranges::find(Words, Code, &ErrorWords::Code);
    return Found == Words.end() ? Words.front() : *Found;
}

} // namespace

CaptureNotice::CaptureNotice() : Event(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (Event.Get() < 0)
        throw SystemFailure(errno, {});
}

void CaptureNotice::Raise() const noexcept {
    (void)::eventfd_write(Event.Get(), 1);
}

void CaptureNotice::Lower() const noexcept {
    eventfd_t Count = 0;
    (void)::eventfd_read(Event.Get(), &Count);
}

std::string CaptureErrorText(std::int32_t Code) {
    return WordsOf(Code).Text;
}

std::string CaptureErrorStatus(std::int32_t Code) {
    return WordsOf(Code).Status;
}

CaptureFailure::CaptureFailure(std::int32_t ErrorCode, bool WhilePreparing)
    : Failure((WhilePreparing ? "(Prepare recording buffer - Failed)\n"
                              : "(Open audio device for recording - failed)\n") +
              CaptureErrorText(ErrorCode)),
      Code(ErrorCode), Preparing(WhilePreparing) {}

} // namespace quoril

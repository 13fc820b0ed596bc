#include "recording/AlsaStream.h"

#include "recording/AlsaDevice.h"

#include <atomic>
#include <chrono>
#include <poll.h>
#include <pthread.h>
#include <sys/resource.h>
#include <thread>
#include <utility>

namespace quoril {

namespace {

constexpr std::chrono::milliseconds LongestOpening{600};
constexpr std::chrono::milliseconds LongestEnd{500};
constexpr int LongestWaitMs = 50;
// Above the ordinary programs, where the user may.
constexpr int ThreadNice = -11;

} // namespace

/// What a stream and its thread share.
class AlsaCapturing {
  public:
    AlsaCapturing(std::string DeviceName, const CaptureFormat& Wanted, CaptureLine To)
        : Name(std::move(DeviceName)), Format(Wanted), Line(std::move(To)) {}

    /// The thread. Opens the device, captures until the end is wanted or the device is gone, and
    /// closes it.
    void Run();

    std::promise<void> Opened; ///< or CaptureFailure
    std::promise<void> Ended;  ///< from then on nothing is filled
    std::atomic<bool> EndWanted{false};
    std::atomic<bool> Gone{false};
    const CaptureNotice Room; ///< wakes the thread

  private:
    void Open();
    void Capture() noexcept;
    void WaitForRoom() const noexcept;
    void Take() noexcept;
    [[nodiscard]] bool Recovered(int Code) noexcept;

    const std::string Name;
    const CaptureFormat Format;
    const CaptureLine Line;
    AlsaDevice Device;
    std::vector<std::byte> Piece; ///< where the device puts frames; as long as a half
};

void AlsaCapturing::Run() {
    try {
        Open();
        ::pthread_setname_np(::pthread_self(), "capture");
        // Who may not raise a thread captures at the ordinary priority.
        (void)::setpriority(PRIO_PROCESS, 0, ThreadNice);
        Opened.set_value();
        Capture();
    } catch (...) {
        Opened.set_exception(std::current_exception());
    }
    Device.reset();
    Ended.set_value();
}

void AlsaCapturing::Open() {
    int Code = 0;
    Device = AlsaOpen(Name, Code);
    if (Device == nullptr)
        throw CaptureFailure(AlsaErrorCode(Code), false);
    AlsaParameters Wanted(Device.get());
    if (Wanted.Take(Format) < 0)
        throw CaptureFailure(CaptureBadFormat, false);
    Piece.assign(Format.HalfBytes(), std::byte{0});
    Code = Wanted.Fix();
    if (Code >= 0)
        Code = ::snd_pcm_start(Device.get());
    if (Code < 0)
        throw CaptureFailure(AlsaErrorCode(Code), true);
}

void AlsaCapturing::Capture() noexcept {
    while (!EndWanted.load(std::memory_order_acquire)) {
        if (Line.Queue->Room() == 0) {
            WaitForRoom();
        } else if (const int Code = ::snd_pcm_wait(Device.get(), LongestWaitMs);
                   Code >= 0 || Recovered(Code)) {
            Take();
        }
        if (Gone.load(std::memory_order_relaxed)) {
            Line.Notice->Raise();
            return;
        }
    }
}

void AlsaCapturing::WaitForRoom() const noexcept {
    pollfd Waited{Room.Handle(), POLLIN, 0};
    (void)::poll(&Waited, 1, LongestWaitMs);
    Room.Lower();
}

/// Stands where a callback would: copies what there is, as far as there is room. What there is no
/// room for stays with the device.
void AlsaCapturing::Take() noexcept {
    while (const std::size_t Frames = Line.Queue->Room() / Format.BlockAlign()) {
        const snd_pcm_sframes_t Got = ::snd_pcm_readi(Device.get(), Piece.data(), Frames);
        if (Got == -EAGAIN || Got == 0)
            return;
        if (Got < 0) {
            if (!Recovered(static_cast<int>(Got)))
                return;
        } else if (Line.Queue->Fill(Piece.data(),
                                    static_cast<std::size_t>(Got) * Format.BlockAlign())) {
            Line.Notice->Raise();
        }
    }
}

/// After an interruption: what came before it is handed over, and the device goes on. False when it
/// does not.
bool AlsaCapturing::Recovered(int Code) noexcept {
    if (Line.Queue->HandOver())
        Line.Notice->Raise();
    if (::snd_pcm_recover(Device.get(), Code, 1) >= 0 && ::snd_pcm_start(Device.get()) >= 0) {
        Line.Queue->NoteLoss();
        return true;
    }
    Gone.store(true, std::memory_order_release);
    return false;
}

// ---- The stream

AlsaStream::AlsaStream(const std::string& Name, const CaptureFormat& Format, const CaptureLine& To)
    : Capturing(std::make_shared<AlsaCapturing>(Name, Format, To)),
      Ended(Capturing->Ended.get_future()) {
    std::future<void> Opened = Capturing->Opened.get_future();
    std::thread([Shared = Capturing] { Shared->Run(); }).detach();
    if (Opened.wait_for(LongestOpening) != std::future_status::ready) {
        WantEnd();
        throw CaptureFailure(CaptureNoDriver, false);
    }
    Opened.get();
}

AlsaStream::~AlsaStream() {
    WantEnd();
    (void)Ended.wait_for(LongestEnd);
}

void AlsaStream::WantEnd() noexcept {
    Capturing->EndWanted.store(true, std::memory_order_release);
    RoomMade();
}

void AlsaStream::RoomMade() noexcept {
    Capturing->Room.Raise();
}

bool AlsaStream::Lost() const noexcept {
    return Capturing->Gone.load(std::memory_order_acquire);
}

} // namespace quoril

#include "player/PulseOutput.h"

#include "base/Failure.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <ctime>
#include <pulse/pulseaudio.h>
#include <semaphore.h>
#include <string>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace quoril {

namespace {

// What the server holds of us. Where the processors are busy, its request and our answer come late
// by a tenth of a second now and then; up to this length that is not heard.
constexpr pa_usec_t ServerBufferUs = 500000;
// In how long pieces the server asks, and what the device is ahead of what is heard.
constexpr pa_usec_t LeastRequestUs = 40000;
// What is heard before a turn, though more could be taken back: the device's own buffer, and the
// time that the new frames need to the server.
constexpr pa_usec_t KeptAtTurnUs = 120000;
constexpr int ConnectSeconds = 3;
// Above the ordinary programs, where the user may.
constexpr int CallbackNice = -11;

/// The lock of the server's thread, for the command thread only.
class LoopLock {
  public:
    explicit LoopLock(pa_threaded_mainloop* Loop) : Locked(Loop) {
        pa_threaded_mainloop_lock(Loop);
    }
    ~LoopLock() { pa_threaded_mainloop_unlock(Locked); }
    LoopLock(const LoopLock&) = delete;
    LoopLock& operator=(const LoopLock&) = delete;

  private:
    pa_threaded_mainloop* Locked;
};

class PulseOutput final : public SoundOutput {
  public:
    explicit PulseOutput(OutputNotice Told) : Notice(std::move(Told)) { ::sem_init(&Answer, 0, 0); }
    ~PulseOutput() override;

    /// False when no server answers.
    [[nodiscard]] bool Connect();

    [[nodiscard]] std::int32_t DriverState() const override { return 1; }
    void Start(SoundFeed& From, std::int32_t Channels, std::int32_t Rate, bool Steerable) override;
    void Stop() override;
    void Pause(bool On) override;
    [[nodiscard]] bool SetRate(std::int32_t Rate) override;
    void Kick() noexcept override;
    void Hold() override { pa_threaded_mainloop_lock(Loop); }
    [[nodiscard]] std::uint64_t TakeBack() override;
    void LetGo() override;
    [[nodiscard]] std::uint64_t Heard() override;
    [[nodiscard]] bool Finished() const override { return Done.load(std::memory_order_acquire); }
    [[nodiscard]] bool Lost() const override { return Gone.load(std::memory_order_acquire); }

  private:
    static PulseOutput& Of(void* Self) { return *static_cast<PulseOutput*>(Self); }
    void ContextChanged();
    void StreamChanged();
    void Fill() noexcept;
    [[nodiscard]] bool Write(std::size_t Writable) noexcept;
    void DrainStart() noexcept;
    void DrainForget() noexcept;
    void Lose();
    [[nodiscard]] std::uint64_t HeardByClock();

    OutputNotice Notice;
    pa_threaded_mainloop* Loop = nullptr;
    pa_context* Context = nullptr;
    sem_t Answer;
    int KickHandle = -1;
    pa_io_event* KickEvent = nullptr;

    // Under the lock of the server's thread.
    pa_stream* Stream = nullptr;
    SoundFeed* Feed = nullptr;
    pa_operation* Drain = nullptr;
    std::size_t FrameBytes = 2;
    std::int64_t Written = 0;   ///< frames given to the server, less those taken back
    std::int64_t ServerEnd = 0; ///< where the server's next frame would go by itself
    bool Corked = false;
    bool CanSteer = false;
    double RateNow = 0;
    pa_usec_t ClockValidFrom = 0; ///< what the server told before this time says nothing about now
    std::int64_t LastHeard = 0;

    std::atomic<bool> Done{false};
    std::atomic<bool> Gone{false};
};

pa_usec_t ClockNow() {
    timeval Now{};
    pa_gettimeofday(&Now);
    return pa_timeval_load(&Now);
}

void Forget(pa_operation* Operation) {
    if (Operation != nullptr)
        pa_operation_unref(Operation);
}

PulseOutput::~PulseOutput() {
    if (Loop != nullptr) {
        Stop();
        {
            const LoopLock Lock(Loop);
            if (KickEvent != nullptr)
                pa_threaded_mainloop_get_api(Loop)->io_free(KickEvent);
            if (Context != nullptr) {
                pa_context_set_state_callback(Context, nullptr, nullptr);
                pa_context_disconnect(Context);
                pa_context_unref(Context);
            }
        }
        pa_threaded_mainloop_stop(Loop);
        pa_threaded_mainloop_free(Loop);
    }
    if (KickHandle >= 0)
        ::close(KickHandle);
    ::sem_destroy(&Answer);
}

bool PulseOutput::Connect() {
    KickHandle = ::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    Loop = pa_threaded_mainloop_new();
    if (KickHandle < 0 || Loop == nullptr)
        return false;
    pa_mainloop_api* const Api = pa_threaded_mainloop_get_api(Loop);
    Context = pa_context_new(Api, "Quoril Wave Editor");
    if (Context == nullptr)
        return false;
    pa_context_set_state_callback(
        Context, [](pa_context*, void* Self) { Of(Self).ContextChanged(); }, this);
    KickEvent = Api->io_new(
        Api, KickHandle, PA_IO_EVENT_INPUT,
        [](pa_mainloop_api*, pa_io_event*, int Handle, pa_io_event_flags_t, void* Self) {
            eventfd_t Count = 0;
            (void)::eventfd_read(Handle, &Count);
            Of(Self).Fill();
        },
        this);
    // Who may not raise a thread plays at the ordinary priority.
    pa_mainloop_api_once(
        Api, [](pa_mainloop_api*, void*) { (void)::setpriority(PRIO_PROCESS, 0, CallbackNice); },
        nullptr);
    if (pa_context_connect(Context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 ||
        pa_threaded_mainloop_start(Loop) < 0)
        return false;
    timespec Until{};
    ::clock_gettime(CLOCK_REALTIME, &Until);
    Until.tv_sec += ConnectSeconds;
    while (::sem_timedwait(&Answer, &Until) != 0)
        if (errno != EINTR)
            return false;
    const LoopLock Lock(Loop);
    return pa_context_get_state(Context) == PA_CONTEXT_READY;
}

void PulseOutput::ContextChanged() {
    const pa_context_state_t State = pa_context_get_state(Context);
    if (State == PA_CONTEXT_READY)
        ::sem_post(&Answer);
    if (!PA_CONTEXT_IS_GOOD(State)) {
        ::sem_post(&Answer);
        Lose();
    }
}

void PulseOutput::Lose() {
    Gone.store(true, std::memory_order_release);
    Notice();
}

// ---- Start and stop

void PulseOutput::Start(SoundFeed& From, std::int32_t Channels, std::int32_t Rate, bool Steerable) {
    const LoopLock Lock(Loop);
    Feed = &From;
    Done.store(false, std::memory_order_release);
    FrameBytes = sizeof(std::int16_t) * static_cast<std::size_t>(Channels);
    Written = ServerEnd = 0;
    LastHeard = 0;
    Corked = false;
    CanSteer = Steerable;
    RateNow = Rate;
    ClockValidFrom = ClockNow();
    pa_sample_spec Format{};
    Format.format = PA_SAMPLE_S16NE;
    Format.rate = static_cast<std::uint32_t>(Rate);
    Format.channels = static_cast<std::uint8_t>(Channels);
    Stream = pa_stream_new(Context, "Play", &Format, nullptr);
    if (Stream == nullptr)
        throw Failure(pa_strerror(pa_context_errno(Context)));
    pa_stream_set_write_callback(
        Stream, [](pa_stream*, std::size_t, void* Self) { Of(Self).Fill(); }, this);
    pa_stream_set_state_callback(
        Stream, [](pa_stream*, void* Self) { Of(Self).StreamChanged(); }, this);
    const auto Bytes = [&](pa_usec_t Time) {
        return static_cast<std::uint32_t>(std::max(pa_usec_to_bytes(Time, &Format), FrameBytes));
    };
    pa_buffer_attr Buffers{};
    Buffers.maxlength = static_cast<std::uint32_t>(-1);
    Buffers.tlength = Bytes(ServerBufferUs);
    // After a dropout sound goes on with the first frame that comes.
    Buffers.prebuf = static_cast<std::uint32_t>(FrameBytes);
    Buffers.minreq = Bytes(LeastRequestUs);
    Buffers.fragsize = static_cast<std::uint32_t>(-1);
    // Early requests: the device takes short pieces however much the server holds.
    const int Flags = PA_STREAM_EARLY_REQUESTS | PA_STREAM_AUTO_TIMING_UPDATE |
                      (Steerable ? PA_STREAM_VARIABLE_RATE : 0);
    if (pa_stream_connect_playback(Stream, nullptr, &Buffers, static_cast<pa_stream_flags_t>(Flags),
                                   nullptr, nullptr) < 0) {
        pa_stream_unref(Stream);
        Stream = nullptr;
        throw Failure(pa_strerror(pa_context_errno(Context)));
    }
}

void PulseOutput::Stop() {
    const LoopLock Lock(Loop);
    if (Stream == nullptr)
        return;
    DrainForget();
    pa_stream_set_write_callback(Stream, nullptr, nullptr);
    pa_stream_set_state_callback(Stream, nullptr, nullptr);
    pa_stream_disconnect(Stream);
    pa_stream_unref(Stream);
    Stream = nullptr;
    Feed = nullptr;
}

void PulseOutput::StreamChanged() {
    if (pa_stream_get_state(Stream) == PA_STREAM_FAILED)
        Lose();
    else
        Fill();
}

// ---- The sound callback

void PulseOutput::Kick() noexcept {
    (void)::eventfd_write(KickHandle, 1);
}

void PulseOutput::Fill() noexcept {
    if (Stream == nullptr || pa_stream_get_state(Stream) != PA_STREAM_READY)
        return;
    while (true) {
        std::size_t Writable = pa_stream_writable_size(Stream);
        if (Writable == static_cast<std::size_t>(-1))
            return;
        // The room of frames that were taken back.
        Writable += static_cast<std::size_t>(ServerEnd - Written) * FrameBytes;
        // The end is looked at before the ring: what was put in before the end is then seen.
        const bool Ended = Feed->Ended.load(std::memory_order_acquire);
        if (Feed->Ring.Fill() == 0) {
            if (Ended)
                DrainStart();
            return;
        }
        if (Writable < FrameBytes || !Write(Writable))
            return;
    }
}

/// Hands frames of the feed to the server; false when it does not take them.
bool PulseOutput::Write(std::size_t Writable) noexcept {
    void* Place = nullptr;
    std::size_t Bytes = Writable;
    if (pa_stream_begin_write(Stream, &Place, &Bytes) < 0 || Place == nullptr)
        return false;
    const std::size_t Frames = Feed->Take(static_cast<std::int16_t*>(Place), Bytes / FrameBytes);
    const std::int64_t Back = (Written - ServerEnd) * static_cast<std::int64_t>(FrameBytes);
    if (pa_stream_write(Stream, Place, Frames * FrameBytes, nullptr, Back, PA_SEEK_RELATIVE) < 0)
        return false;
    if (Written == 0)
        Forget(pa_stream_update_timing_info(Stream, nullptr, nullptr));
    Written += static_cast<std::int64_t>(Frames);
    ServerEnd = Written;
    return true;
}

void PulseOutput::DrainStart() noexcept {
    if (Drain != nullptr || Corked || Done.load(std::memory_order_relaxed))
        return;
    Drain = pa_stream_drain(
        Stream,
        [](pa_stream*, int, void* Self) {
            Of(Self).DrainForget();
            Of(Self).Done.store(true, std::memory_order_release);
            Of(Self).Notice();
        },
        this);
}

void PulseOutput::DrainForget() noexcept {
    if (Drain == nullptr)
        return;
    pa_operation_cancel(Drain);
    pa_operation_unref(Drain);
    Drain = nullptr;
}

std::uint64_t PulseOutput::TakeBack() {
    if (Stream == nullptr || pa_stream_get_state(Stream) != PA_STREAM_READY)
        return 0;
    const pa_timing_info* const Told = pa_stream_get_timing_info(Stream);
    if (Told == nullptr || Told->read_index_corrupt != 0 || Told->read_index <= 0)
        return 0;
    const pa_usec_t ToldAt = pa_timeval_load(&Told->timestamp);
    if (ToldAt < ClockValidFrom)
        return 0;
    const double Since =
        Corked ? 0.0 : static_cast<double>(ClockNow()) - static_cast<double>(ToldAt);
    const double Kept = static_cast<double>(Told->read_index) / static_cast<double>(FrameBytes) +
                        (Since + static_cast<double>(KeptAtTurnUs)) * RateNow / 1e6;
    const std::int64_t End = std::clamp(static_cast<std::int64_t>(Kept), LastHeard, Written);
    return static_cast<std::uint64_t>(std::exchange(Written, End) - End);
}

void PulseOutput::LetGo() {
    DrainForget();
    Done.store(false, std::memory_order_release);
    pa_threaded_mainloop_unlock(Loop);
}

// ---- Pause, speed, clock

void PulseOutput::Pause(bool On) {
    const LoopLock Lock(Loop);
    if (Stream == nullptr || Corked == On)
        return;
    if (On)
        LastHeard = static_cast<std::int64_t>(HeardByClock());
    Corked = On;
    DrainForget();
    Forget(pa_stream_cork(Stream, On ? 1 : 0, nullptr, nullptr));
    ClockValidFrom = ClockNow();
    Forget(pa_stream_update_timing_info(Stream, nullptr, nullptr));
    if (!On)
        Kick();
}

bool PulseOutput::SetRate(std::int32_t Rate) {
    const LoopLock Lock(Loop);
    if (Stream == nullptr || !CanSteer)
        return false;
    LastHeard = static_cast<std::int64_t>(HeardByClock());
    pa_operation* const Change =
        pa_stream_update_sample_rate(Stream, static_cast<std::uint32_t>(Rate), nullptr, nullptr);
    if (Change == nullptr)
        return false;
    pa_operation_unref(Change);
    RateNow = Rate;
    ClockValidFrom = ClockNow();
    Forget(pa_stream_update_timing_info(Stream, nullptr, nullptr));
    return true;
}

std::uint64_t PulseOutput::Heard() {
    const LoopLock Lock(Loop);
    return HeardByClock();
}

std::uint64_t PulseOutput::HeardByClock() {
    if (Stream == nullptr || Corked || pa_stream_get_state(Stream) != PA_STREAM_READY)
        return static_cast<std::uint64_t>(LastHeard);
    if (Done.load(std::memory_order_acquire))
        return static_cast<std::uint64_t>(Written);
    const pa_timing_info* const Told = pa_stream_get_timing_info(Stream);
    Forget(pa_stream_update_timing_info(Stream, nullptr, nullptr));
    if (Told == nullptr || Told->read_index_corrupt != 0)
        return static_cast<std::uint64_t>(LastHeard);
    const pa_usec_t ToldAt = pa_timeval_load(&Told->timestamp);
    if (ToldAt < ClockValidFrom || Told->read_index <= 0)
        return static_cast<std::uint64_t>(LastHeard);
    const double Since = static_cast<double>(ClockNow()) - static_cast<double>(ToldAt);
    const double OnTheWay = static_cast<double>(Told->sink_usec) - Since;
    const double Frames = static_cast<double>(Told->read_index) / static_cast<double>(FrameBytes) -
                          OnTheWay * RateNow / 1e6;
    LastHeard = std::clamp(static_cast<std::int64_t>(Frames), LastHeard, Written);
    return static_cast<std::uint64_t>(LastHeard);
}

} // namespace

std::unique_ptr<SoundOutput> MakePulseOutput(const OutputNotice& Notice) {
    auto Output = std::make_unique<PulseOutput>(Notice);
    if (!Output->Connect())
        return nullptr;
    return Output;
}

} // namespace quoril

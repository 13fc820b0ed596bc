#include "player/AlsaOutput.h"

#include "base/Failure.h"

#include <algorithm>
#include <alsa/asoundlib.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quoril {

namespace {

constexpr unsigned DeviceBufferUs = 120000;
constexpr std::size_t PieceFrames = 1024;
// Above the ordinary programs, where the user may.
constexpr int ThreadNice = -11;
constexpr int LongestWaitMs = 100;
constexpr const char* DeviceName = "default";

// The library says its own words on the error output; what matters comes back as a code.
void SilentErrors(const char*, int, const char*, int, const char*, ...) {}

class AlsaOutput final : public SoundOutput {
  public:
    explicit AlsaOutput(OutputNotice Told)
        : Notice(std::move(Told)), WakeHandle(::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
        ::sem_init(&HeldNow, 0, 0);
        ::sem_init(&GoOn, 0, 0);
    }
    ~AlsaOutput() override {
        StopThread();
        ::close(WakeHandle);
        ::sem_destroy(&HeldNow);
        ::sem_destroy(&GoOn);
    }

    [[nodiscard]] std::int32_t DriverState() const override { return 2; }
    void Start(SoundFeed& From, std::int32_t Channels, std::int32_t Rate, bool Steerable) override;
    void Stop() override { StopThread(); }
    void Pause(bool On) override;
    [[nodiscard]] bool SetRate(std::int32_t) override { return false; }
    void Kick() noexcept override { (void)::eventfd_write(WakeHandle, 1); }
    void Hold() override;
    [[nodiscard]] std::uint64_t TakeBack() override { return 0; }
    void LetGo() override;
    [[nodiscard]] std::uint64_t Heard() override;
    [[nodiscard]] bool Finished() const override { return Done.load(std::memory_order_acquire); }
    [[nodiscard]] bool Lost() const override { return Gone.load(std::memory_order_acquire); }

  private:
    void StopThread();
    void SoundThread();
    [[nodiscard]] bool SoundOnce();
    [[nodiscard]] bool Recovered(snd_pcm_sframes_t Code);
    void Wait();
    void NoteHeard();

    OutputNotice Notice;
    int WakeHandle;
    snd_pcm_t* Device = nullptr;
    SoundFeed* Feed = nullptr;
    std::size_t Width = 1;
    std::vector<std::int16_t> Piece;
    std::size_t PieceFrom = 0; ///< frames of the piece that the device has taken
    std::size_t PieceCount = 0;
    std::uint64_t Written = 0; ///< frames given to the device
    std::thread Sounding;
    std::atomic<bool> EndWanted{false};
    std::atomic<bool> HoldWanted{false};
    std::atomic<bool> PauseWanted{false};
    std::atomic<bool> Done{false};
    std::atomic<bool> Gone{false};
    std::atomic<std::uint64_t> HeardFrames{0};
    bool Held = false;
    sem_t HeldNow;
    sem_t GoOn;
};

void AlsaOutput::Start(SoundFeed& From, std::int32_t Channels, std::int32_t Rate, bool) {
    StopThread();
    int Code = ::snd_pcm_open(&Device, DeviceName, SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK);
    if (Code >= 0)
        Code = ::snd_pcm_set_params(Device, SND_PCM_FORMAT_S16, SND_PCM_ACCESS_RW_INTERLEAVED,
                                    static_cast<unsigned>(Channels), static_cast<unsigned>(Rate), 1,
                                    DeviceBufferUs);
    if (Code < 0) {
        StopThread();
        throw Failure(::snd_strerror(Code));
    }
    Feed = &From;
    Width = static_cast<std::size_t>(Channels);
    Piece.assign(PieceFrames * Width, 0);
    PieceFrom = PieceCount = 0;
    Written = 0;
    EndWanted = HoldWanted = PauseWanted = false;
    Done = Gone = false;
    HeardFrames = 0;
    Sounding = std::thread([this] { SoundThread(); });
}

void AlsaOutput::StopThread() {
    if (Sounding.joinable()) {
        EndWanted.store(true, std::memory_order_release);
        Kick();
        Sounding.join();
    }
    if (Device != nullptr) {
        (void)::snd_pcm_drop(Device);
        (void)::snd_pcm_close(Device);
        Device = nullptr;
    }
}

void AlsaOutput::Hold() {
    Held = Sounding.joinable();
    if (!Held)
        return;
    HoldWanted.store(true, std::memory_order_release);
    Kick();
    while (::sem_wait(&HeldNow) != 0 && errno == EINTR) {
    }
}

void AlsaOutput::LetGo() {
    Done.store(false, std::memory_order_release);
    if (std::exchange(Held, false))
        ::sem_post(&GoOn);
}

void AlsaOutput::Pause(bool On) {
    PauseWanted.store(On, std::memory_order_release);
    Kick();
}

std::uint64_t AlsaOutput::Heard() {
    return HeardFrames.load(std::memory_order_acquire);
}

// ---- The sounding thread, which stands where a callback would

void AlsaOutput::SoundThread() {
    ::pthread_setname_np(::pthread_self(), "sound");
    // Who may not raise a thread plays at the ordinary priority.
    (void)::setpriority(PRIO_PROCESS, 0, ThreadNice);
    bool Paused = false;
    while (!EndWanted.load(std::memory_order_acquire)) {
        if (HoldWanted.exchange(false, std::memory_order_acq_rel)) {
            ::sem_post(&HeldNow);
            while (::sem_wait(&GoOn) != 0 && errno == EINTR) {
            }
        }
        if (const bool Wanted = PauseWanted.load(std::memory_order_acquire); Wanted != Paused) {
            Paused = Wanted;
            // A device that cannot pause plays out what it holds, and goes on afterwards.
            if (::snd_pcm_pause(Device, Paused ? 1 : 0) < 0 && !Paused)
                (void)::snd_pcm_prepare(Device);
        }
        if (Paused || Finished() || Lost() || !SoundOnce())
            Wait();
        NoteHeard();
    }
    // Who waits for a hold at the very end must not wait for ever.
    if (HoldWanted.exchange(false, std::memory_order_acq_rel))
        ::sem_post(&HeldNow);
}

/// Gives the device what it takes. False when there is nothing to do now.
bool AlsaOutput::SoundOnce() {
    if (PieceFrom == PieceCount) {
        const bool Ended = Feed->Ended.load(std::memory_order_acquire);
        PieceFrom = 0;
        PieceCount = Feed->Take(Piece.data(), PieceFrames);
        if (PieceCount == 0) {
            snd_pcm_sframes_t Left = 0;
            const bool Playing = ::snd_pcm_state(Device) == SND_PCM_STATE_RUNNING &&
                                 ::snd_pcm_delay(Device, &Left) == 0 && Left > 0;
            if (::snd_pcm_state(Device) == SND_PCM_STATE_PREPARED && Written > 0)
                (void)::snd_pcm_start(Device); // less than the device begins with by itself
            else if (Ended && !Playing) {
                HeardFrames.store(Written, std::memory_order_release);
                Done.store(true, std::memory_order_release);
                Notice();
            }
            return false;
        }
    }
    const snd_pcm_sframes_t Taken =
        ::snd_pcm_writei(Device, Piece.data() + PieceFrom * Width, PieceCount - PieceFrom);
    if (Taken < 0)
        return Recovered(Taken);
    PieceFrom += static_cast<std::size_t>(Taken);
    Written += static_cast<std::uint64_t>(Taken);
    return Taken > 0;
}

bool AlsaOutput::Recovered(snd_pcm_sframes_t Code) {
    if (Code == -EAGAIN)
        return false;
    if (::snd_pcm_recover(Device, static_cast<int>(Code), 1) >= 0)
        return true;
    Gone.store(true, std::memory_order_release);
    Notice();
    return false;
}

void AlsaOutput::Wait() {
    std::array<pollfd, 8> Waited{};
    Waited[0] = {WakeHandle, POLLIN, 0};
    int Count = 0;
    const bool Idle = PauseWanted.load(std::memory_order_acquire) || Finished() || Lost();
    if (!Idle && PieceFrom < PieceCount)
        Count = std::max(0, ::snd_pcm_poll_descriptors(Device, Waited.data() + 1, 7));
    (void)::poll(Waited.data(), static_cast<nfds_t>(Count) + 1, Idle ? -1 : LongestWaitMs / 10);
    eventfd_t Ignored = 0;
    (void)::eventfd_read(WakeHandle, &Ignored);
}

void AlsaOutput::NoteHeard() {
    if (PauseWanted.load(std::memory_order_acquire) || Finished())
        return;
    snd_pcm_sframes_t Waiting = 0;
    if (::snd_pcm_delay(Device, &Waiting) < 0)
        return;
    const auto Behind = static_cast<std::uint64_t>(std::max<snd_pcm_sframes_t>(Waiting, 0));
    HeardFrames.store(Written > Behind ? Written - Behind : 0, std::memory_order_release);
}

} // namespace

std::unique_ptr<SoundOutput> MakeAlsaOutput(const OutputNotice& Notice) {
    ::snd_lib_error_set_handler(SilentErrors);
    snd_pcm_t* Device = nullptr;
    if (::snd_pcm_open(&Device, DeviceName, SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK) < 0)
        return nullptr;
    (void)::snd_pcm_close(Device);
    return std::make_unique<AlsaOutput>(Notice);
}

} // namespace quoril

// Where sound goes out: a sound server, or the system's plain sound.
#pragma once

#include "player/SampleRing.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace quoril {

/// What the sound callback sees: it takes frames out, tells when there is much room, and looks
/// whether more will come. It takes no lock, allocates nothing and opens nothing.
struct SoundFeed {
    SampleRing Ring;
    /// Set with release after the last frame has been put in, so that who sees it sees the frame.
    std::atomic<bool> Ended{false};
    std::size_t LowFill = 0; ///< with fewer frames in the ring the reader is woken
    std::atomic<bool> ReaderWoken{false};
    /// Wakes the reader; safe in the callback.
    std::function<void()> WakeReader;

    /// Fills `Target` as far as there are frames, and wakes the reader when they run low.
    std::size_t Take(std::int16_t* Target, std::size_t Most) noexcept {
        const std::size_t Count = Ring.Pop(Target, Most);
        if (Ring.Fill() < LowFill && !Ended.load(std::memory_order_acquire) &&
            !ReaderWoken.exchange(true, std::memory_order_acq_rel))
            WakeReader();
        return Count;
    }
};

/// One way out. All routines on the command thread, but for Kick. The feed must outlive it.
class SoundOutput {
  public:
    virtual ~SoundOutput() = default;
    /// The state that the driver reports: 1 sound server, 2 plain system sound.
    [[nodiscard]] virtual std::int32_t DriverState() const = 0;

    /// Begins to sound what comes out of the feed, from its next frame on. `Rate` in Hz; with
    /// `Steerable` it can be changed meanwhile. Throws Failure.
    virtual void Start(SoundFeed& Feed, std::int32_t Channels, std::int32_t Rate,
                       bool Steerable) = 0;
    /// Ends the sound at once; afterwards no callback runs. Also when nothing sounds.
    virtual void Stop() = 0;
    virtual void Pause(bool On) = 0;
    /// Goes on at another rate without a gap. False when that cannot be done.
    [[nodiscard]] virtual bool SetRate(std::int32_t Rate) = 0;
    /// Frames have come into the feed, or its end. Any thread; never waits.
    virtual void Kick() noexcept = 0;
    /// Between the two no callback runs, and frames in the feed may be taken back.
    virtual void Hold() = 0;
    /// Between the two: how many of the frames that were taken out of the feed last will not be
    /// heard; the next ones go in their place.
    [[nodiscard]] virtual std::uint64_t TakeBack() = 0;
    virtual void LetGo() = 0;
    /// How many frames since Start have been heard by now.
    [[nodiscard]] virtual std::uint64_t Heard() = 0;
    /// Everything up to the feed's end has been heard.
    [[nodiscard]] virtual bool Finished() const = 0;
    /// Nothing can be heard any more: the server or the device is gone.
    [[nodiscard]] virtual bool Lost() const = 0;
};

/// Called on any thread when Finished or Lost may have changed; must not wait.
using OutputNotice = std::function<void()>;

/// The way out that this machine has now; null without any.
using OutputMaker = std::function<std::unique_ptr<SoundOutput>(const OutputNotice&)>;

} // namespace quoril

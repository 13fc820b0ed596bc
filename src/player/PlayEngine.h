// The player's inside: commands come in, and a thread reads ahead of the sound callback.
#pragma once

#include "player/PlaySource.h"
#include "player/PlayTrack.h"
#include "player/SoundOutput.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <semaphore.h>
#include <span>
#include <string>
#include <thread>
#include <vector>

namespace quoril {

/// What the player reports as its status.
enum PlayStates : std::int32_t {
    PlayStopped = 0,
    PlayingForward = 1,
    PlayingReverse = 2,
    PlayPaused = 3
};

/// All public routines belong to one thread, the command thread.
class PlayEngine {
  public:
    /// `Maker` finds the way out when the driver is switched on. `Notice` is called on any thread
    /// when Attend should be called soon; it must not wait.
    PlayEngine(OutputMaker Maker, OutputNotice Notice);
    ~PlayEngine();
    PlayEngine(const PlayEngine&) = delete;
    PlayEngine& operator=(const PlayEngine&) = delete;

    /// Finds a way for sound: the driver state, 0 when there is none.
    std::int32_t SwitchOn();
    void SwitchOff();

    /// Another snapshot in place of the present one, as PlaySource has it; what plays stops. Throws
    /// Failure on one that cannot be played; there is none then.
    void Load(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq, std::int32_t Length,
              std::span<const std::int32_t> LeftList, std::span<const std::int32_t> RightList,
              std::span<const EnteredFile> Entered = {});
    /// Plays the snapshot from an offset on, which is brought into it; direction 1 or -1. Nothing
    /// happens without a snapshot or without a driver. Throws Failure when no sound can go out.
    void Play(std::int32_t Offset, std::int32_t Direction);
    void PlayFromEnd();
    void UTurn();
    void Stop();
    /// Notes the place that Pause will keep.
    void PauseStart();
    void Pause();
    /// Goes on after Pause at the place where it was, at the present speed.
    void Continue();
    void SetLoop(bool On);
    /// Speeds from 0.1 to 2, taken on by the next start, turn or Continue; others are ignored.
    void SetTempo(std::int32_t Direction, float Tempo);
    /// The memory that reading ahead may use is an eighth of this.
    void SetMemoryBytes(std::int32_t Bytes);
    /// Nobody can start the snapshot again, and its files may be deleted or written anew from here
    /// on. What plays goes on with the samples as they are, from the opened audio file that is kept
    /// open until the sound ends; what does not play is closed and forgotten at once.
    void ReleaseFiles();

    [[nodiscard]] std::int32_t Status();
    /// The offset of the frame that is heard now, from 0.
    [[nodiscard]] std::int32_t Position();
    /// Looks after a sound that has come to its end or lost its way out. What the user should be
    /// told, empty without anything.
    [[nodiscard]] std::string Attend();

  private:
    class SourceLock;
    void ReadAheadThread();
    [[nodiscard]] bool ReadAheadOnce();
    void WakeReader() noexcept;
    void StartAt(std::int64_t Offset, std::int32_t Direction);
    /// Takes back what has not gone out yet, and goes on from there in a direction.
    void Reseat(std::int32_t Direction);
    [[nodiscard]] std::int32_t OutputRate(std::int32_t Direction) const;
    [[nodiscard]] std::int64_t OffsetHeard();
    void HaltOutput();
    void ForgetReleased();

    OutputMaker MakeOutput;
    OutputNotice NoticeCommand;
    SoundFeed Feed;
    std::unique_ptr<SoundOutput> Output;

    // The command thread's own.
    std::int32_t State = PlayStopped;
    std::int32_t Way = 1;
    std::int32_t RateNow = 0;
    bool Noted = false;
    std::int64_t PausedAt = 0;
    float TempoForward = 1.0F;
    float TempoReverse = 1.0F;
    std::int64_t MemoryBytes = 80000000;

    // Under SourceMutex: the command thread and the reader.
    std::mutex GateMutex;
    std::mutex SourceMutex;
    std::unique_ptr<PlaySource> Source;
    bool Released = false; ///< the snapshot goes when its sound ends
    bool Active = false;   ///< the reader fills the ring
    bool Loop = false;
    bool FailureTold = false;
    std::size_t Chunk = 0;
    std::vector<std::int16_t> Buffer;

    // Under TrackMutex, which nobody holds while reading files.
    std::mutex TrackMutex;
    PlayTrack Track;
    std::string ReadFailure;

    sem_t Wake;
    std::atomic<bool> Quit{false};
    std::thread Reader;
};

} // namespace quoril

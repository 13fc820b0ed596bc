#include "player/PlayEngine.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace quoril {

namespace {

// How far the reader is ahead: a disk that is busy for this long is not heard.
constexpr std::int64_t ReadAheadSeconds = 8;
// What is read at one time: short at first, so that the start is heard soon.
constexpr std::size_t FirstChunkFrames = 4096;
constexpr std::size_t LongestChunkFrames = 32768;
constexpr std::int32_t HighestOutputRate = 384000;
constexpr std::int32_t LowestOutputRate = 100;
// Places that went out this many frames ago are asked for by nobody.
constexpr std::uint64_t TrackFrames = 10 * std::uint64_t{HighestOutputRate};
constexpr float LowestTempo = 0.1F;
constexpr float HighestTempo = 2.0F;

} // namespace

/// The source for the command thread. The reader, which takes it again and again, gives way.
class PlayEngine::SourceLock {
  public:
    explicit SourceLock(PlayEngine& Engine) : Gate(Engine.GateMutex), Source(Engine.SourceMutex) {}

  private:
    std::scoped_lock<std::mutex> Gate;
    std::scoped_lock<std::mutex> Source;
};

PlayEngine::PlayEngine(OutputMaker Maker, OutputNotice Notice)
    : MakeOutput(std::move(Maker)), NoticeCommand(std::move(Notice)) {
    ::sem_init(&Wake, 0, 0);
    Feed.WakeReader = [this] { WakeReader(); };
    Reader = std::thread([this] { ReadAheadThread(); });
}

PlayEngine::~PlayEngine() {
    HaltOutput();
    Quit.store(true, std::memory_order_release);
    WakeReader();
    Reader.join();
    Output.reset();
    ::sem_destroy(&Wake);
}

// ---- The reader

void PlayEngine::WakeReader() noexcept {
    ::sem_post(&Wake);
}

void PlayEngine::ReadAheadThread() {
    while (true) {
        while (::sem_wait(&Wake) != 0 && errno == EINTR) {
        }
        if (Quit.load(std::memory_order_acquire))
            return;
        Feed.ReaderWoken.store(false, std::memory_order_release);
        while (ReadAheadOnce() && !Quit.load(std::memory_order_acquire)) {
        }
    }
}

bool PlayEngine::ReadAheadOnce() {
    std::unique_lock<std::mutex> Gate(GateMutex);
    const std::scoped_lock<std::mutex> Lock(SourceMutex);
    Gate.unlock();
    if (!Active || Feed.Ended.load(std::memory_order_relaxed))
        return false;
    const std::size_t Most = std::min(Chunk, Feed.Ring.Room());
    if (Most == 0)
        return false;
    PlaySource::Stretch Got;
    std::string Failed;
    try {
        Got = Source->Next(Most, Loop, Buffer.data());
        Failed = Source->TakeFailure();
    } catch (const std::exception& What) {
        Failed = What.what();
    }
    if (!Failed.empty() && !FailureTold) {
        FailureTold = true;
        {
            const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
            ReadFailure = Failed;
        }
        NoticeCommand();
    }
    if (Got.Count == 0) {
        // Release: who sees the end has seen every frame before it.
        Feed.Ended.store(true, std::memory_order_release);
        Output->Kick();
        return false;
    }
    {
        const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
        Track.Add(Feed.Ring.Given(), Got.First, Got.Direction);
        if (const std::uint64_t Taken = Feed.Ring.Taken(); Taken > TrackFrames)
            Track.ForgetBefore(Taken - TrackFrames);
    }
    Feed.Ring.Push(Buffer.data(), Got.Count);
    Output->Kick();
    Chunk = std::min(Chunk * 2, LongestChunkFrames);
    Source->ReadAhead(Chunk * 8);
    return true;
}

// ---- The driver

std::int32_t PlayEngine::SwitchOn() {
    SwitchOff();
    Output = MakeOutput(NoticeCommand);
    return Output == nullptr ? 0 : Output->DriverState();
}

void PlayEngine::SwitchOff() {
    HaltOutput();
    ForgetReleased();
    Output.reset();
}

// ---- Playing

void PlayEngine::Load(std::int32_t Bits, std::int32_t Channels, std::int32_t Freq,
                      std::int32_t Length, std::span<const std::int32_t> LeftList,
                      std::span<const std::int32_t> RightList,
                      std::span<const EnteredFile> Entered) {
    HaltOutput();
    const SourceLock Lock(*this);
    Source.reset();
    Released = false;
    FailureTold = false;
    Source =
        std::make_unique<PlaySource>(Bits, Channels, Freq, Length, LeftList, RightList, Entered);
}

void PlayEngine::HaltOutput() {
    if (Output != nullptr)
        Output->Stop();
    const SourceLock Lock(*this);
    Active = false;
    Noted = false;
    State = PlayStopped;
}

void PlayEngine::ForgetReleased() {
    const SourceLock Lock(*this);
    if (std::exchange(Released, false))
        Source.reset();
}

void PlayEngine::Play(std::int32_t Offset, std::int32_t Direction) {
    HaltOutput();
    if (Source == nullptr || Output == nullptr)
        return;
    const std::int32_t Last = std::max(0, Source->Length() - 1);
    StartAt(std::clamp(Offset, 0, Last), Direction);
}

void PlayEngine::PlayFromEnd() {
    if (Source != nullptr)
        Play(Source->Length() - 1, -1);
}

std::int32_t PlayEngine::OutputRate(std::int32_t Direction) const {
    const float Tempo = Direction > 0 ? TempoForward : TempoReverse;
    return std::clamp(RoundToLong(double{Tempo} * Source->Freq()), LowestOutputRate,
                      HighestOutputRate);
}

void PlayEngine::StartAt(std::int64_t Offset, std::int32_t Direction) {
    HaltOutput();
    if (Output->Lost()) {
        Output.reset();
        Output = MakeOutput(NoticeCommand);
    }
    if (Output == nullptr) {
        ForgetReleased();
        throw Failure("There is no sound output any more");
    }
    {
        const SourceLock Lock(*this);
        Way = Direction;
        // Plain sound has one speed.
        RateNow = Output->DriverState() == 1 ? OutputRate(Direction) : Source->Freq();
        const std::int64_t MostFrames = MemoryBytes / 8 / (std::int64_t{2} * Source->Channels());
        const std::int64_t Ahead = std::min(ReadAheadSeconds * RateNow, MostFrames);
        Feed.Ring.SetUp(Source->Channels(),
                        static_cast<std::size_t>(std::max<std::int64_t>(Ahead, FirstChunkFrames)));
        Feed.LowFill = Feed.Ring.Capacity() / 4 * 3;
        Feed.Ended.store(false, std::memory_order_relaxed);
        Buffer.resize(LongestChunkFrames * static_cast<std::size_t>(Source->Channels()));
        Chunk = FirstChunkFrames;
        Source->PlaceAt(Offset, Direction);
        {
            const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
            Track.Clear();
            Track.Add(0, Offset, Direction);
        }
        Active = true;
        // The rate of the output is that of the sound itself unless another speed is wanted, so
        // that the samples go out as they are.
        Output->Start(Feed, Source->Channels(), RateNow, RateNow != Source->Freq());
    }
    State = Direction > 0 ? PlayingForward : PlayingReverse;
    WakeReader();
}

void PlayEngine::Reseat(std::int32_t Direction) {
    {
        const SourceLock Lock(*this);
        Output->Hold();
        Feed.Ring.Discard(Output->TakeBack());
        const std::uint64_t Taken = Feed.Ring.Taken();
        {
            const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
            // The frame that went out last, and the one after it in the new direction.
            const bool Turned = Direction != Way;
            std::int64_t Next = Track.OffsetAt(Taken);
            if (Turned && Taken > 0)
                Next = Track.OffsetAt(Taken - 1) + Direction;
            Track.CutFrom(Taken);
            Track.Add(Taken, Next, Direction);
            Source->PlaceAt(Next, Direction);
        }
        Way = Direction;
        Feed.Ended.store(false, std::memory_order_release);
        Chunk = FirstChunkFrames;
        Output->LetGo();
    }
    WakeReader();
}

void PlayEngine::UTurn() {
    const std::int32_t Direction = -Way;
    if (State == PlayPaused) {
        Way = Direction;
        return;
    }
    if (State == PlayStopped)
        return;
    const std::int32_t Rate = Output->DriverState() == 1 ? OutputRate(Direction) : RateNow;
    if (Rate == RateNow || Output->SetRate(Rate)) {
        RateNow = Rate;
        Reseat(Direction);
        State = Direction > 0 ? PlayingForward : PlayingReverse;
        return;
    }
    StartAt(OffsetHeard(), Direction);
}

void PlayEngine::Stop() {
    HaltOutput();
    ForgetReleased();
}

void PlayEngine::PauseStart() {
    if (State != PlayingForward && State != PlayingReverse)
        return;
    PausedAt = OffsetHeard();
    Noted = true;
}

void PlayEngine::Pause() {
    if (State != PlayingForward && State != PlayingReverse)
        return;
    if (!std::exchange(Noted, false))
        PausedAt = OffsetHeard();
    Noted = false;
    Output->Pause(true);
    State = PlayPaused;
}

void PlayEngine::Continue() {
    if (State != PlayPaused)
        return;
    std::int32_t DirectionOut = 1;
    {
        const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
        DirectionOut = Track.DirectionAt(Feed.Ring.Taken());
    }
    const std::int32_t Rate = Output->DriverState() == 1 ? OutputRate(Way) : RateNow;
    const bool SameWay = DirectionOut == Way;
    if (!Output->Lost() && SameWay && (Rate == RateNow || Output->SetRate(Rate))) {
        RateNow = Rate;
        State = Way > 0 ? PlayingForward : PlayingReverse;
        Output->Pause(false);
        return;
    }
    StartAt(PausedAt, Way);
}

void PlayEngine::SetLoop(bool On) {
    {
        const SourceLock Lock(*this);
        if (Loop == On)
            return;
        Loop = On;
    }
    // What has been read ahead was read for the other setting.
    if (State != PlayStopped)
        Reseat(Way);
}

void PlayEngine::SetTempo(std::int32_t Direction, float Tempo) {
    if (!(Tempo >= LowestTempo && Tempo <= HighestTempo))
        return;
    (Direction > 0 ? TempoForward : TempoReverse) = Tempo;
}

void PlayEngine::SetMemoryBytes(std::int32_t Bytes) {
    MemoryBytes = std::max(Bytes, 0);
}

void PlayEngine::ReleaseFiles() {
    if (State != PlayingForward && State != PlayingReverse)
        HaltOutput();
    {
        const SourceLock Lock(*this);
        Released = Source != nullptr;
        if (Released)
            Source->HoldOriginal();
    }
    if (State == PlayStopped)
        ForgetReleased();
}

// ---- What is heard

std::int64_t PlayEngine::OffsetHeard() {
    const std::uint64_t Heard = Output->Heard();
    const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
    return Track.OffsetAt(Heard);
}

std::int32_t PlayEngine::Position() {
    if (State == PlayStopped || Output == nullptr || Source == nullptr)
        return 0;
    const std::int64_t Offset = State == PlayPaused ? PausedAt : OffsetHeard();
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(Offset, 0, Source->Length()));
}

std::int32_t PlayEngine::Status() {
    if (State != PlayStopped && (Output->Finished() || Output->Lost()))
        NoticeCommand();
    return State != PlayStopped && Output->Finished() ? static_cast<std::int32_t>(PlayStopped)
                                                      : State;
}

std::string PlayEngine::Attend() {
    std::string Told;
    {
        const std::scoped_lock<std::mutex> TrackLock(TrackMutex);
        Told = std::exchange(ReadFailure, {});
    }
    if (State == PlayStopped)
        return Told;
    const bool Lost = Output->Lost();
    if (Lost || Output->Finished()) {
        HaltOutput();
        ForgetReleased();
    }
    return Lost ? "The sound output has been lost" : Told;
}

} // namespace quoril

#include "recording/PulseCapture.h"

#include "platform/PulseConnection.h"

#include <algorithm>
#include <atomic>
#include <pthread.h>
#include <pulse/context.h>
#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/mainloop.h>
#include <pulse/stream.h>
#include <sys/resource.h>
#include <thread>
#include <utility>

namespace quoril {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds LongestWait{700};
// The server hands sound over in pieces that are short beside a half.
constexpr std::uint32_t PiecesInAHalf = 5;
// Above the ordinary programs, where the user may.
constexpr int ThreadNice = -11;

struct Source {
    std::string Name;
    std::string Description;
    bool IsMonitor = false;
};

/// What the server tells, gathered while its answers come in.
struct SourceList {
    std::string DefaultName;
    std::vector<Source> Sources;
    int AnswersLeft = 2;
};

void NoteServer(pa_context*, const pa_server_info* Info, void* To) {
    auto& List = *static_cast<SourceList*>(To);
    if (Info != nullptr && Info->default_source_name != nullptr)
        List.DefaultName = Info->default_source_name;
    --List.AnswersLeft;
}

void NoteSource(pa_context*, const pa_source_info* Info, int End, void* To) {
    auto& List = *static_cast<SourceList*>(To);
    if (End != 0)
        --List.AnswersLeft;
    else
        List.Sources.push_back(
            {Info->name, Info->description, Info->monitor_of_sink != PA_INVALID_INDEX});
}

void Forget(pa_operation* Asked) {
    if (Asked != nullptr)
        pa_operation_unref(Asked);
}

/// The sources of the server; none when it does not answer.
SourceList AskForSources() {
    SourceList List;
    PulseConnection Server;
    if (!Server.Connect(LongestWait))
        return List;
    Forget(pa_context_get_server_info(Server.Context(), NoteServer, &List));
    Forget(pa_context_get_source_info_list(Server.Context(), NoteSource, &List));
    if (!Server.WaitUntil([&List] { return List.AnswersLeft == 0; }, LongestWait))
        List.Sources.clear();
    return List;
}

std::int32_t ErrorCodeOf(int PulseError) {
    switch (PulseError) {
    case PA_ERR_NOENTITY:
        return CaptureBadDevice;
    case PA_ERR_BUSY:
    case PA_ERR_ACCESS:
        return CaptureInUse;
    case PA_ERR_INVALID:
    case PA_ERR_NOTSUPPORTED:
        return CaptureBadFormat;
    case PA_ERR_CONNECTIONREFUSED:
    case PA_ERR_CONNECTIONTERMINATED:
    case PA_ERR_TIMEOUT:
        return CaptureNoDriver;
    default:
        return CaptureBadParameter;
    }
}

/// The server is listened to by whoever opens the stream, and then by the capture thread alone
/// until the stream ends; so nothing is locked.
class PulseStream final : public CaptureStream {
  public:
    explicit PulseStream(CaptureLine To) : Line(std::move(To)) {}
    ~PulseStream() override;

    void Open(const std::string& SourceName, const CaptureFormat& Format);
    void RoomMade() noexcept override { pa_mainloop_wakeup(Server.Loop()); }
    [[nodiscard]] bool Lost() const noexcept override {
        return Gone.load(std::memory_order_acquire);
    }

  private:
    [[noreturn]] void Fail() const;
    void CaptureThread();
    void Take() noexcept;

    const CaptureLine Line;
    PulseConnection Server;
    pa_stream* Stream = nullptr;
    std::size_t PieceFrom = 0; ///< bytes of the server's piece at hand that have been taken
    std::atomic<bool> EndWanted{false};
    std::atomic<bool> Gone{false};
    std::thread Capturing;
};

PulseStream::~PulseStream() {
    if (Capturing.joinable()) {
        EndWanted.store(true, std::memory_order_release);
        RoomMade();
        Capturing.join();
    }
    if (Stream != nullptr) {
        pa_stream_disconnect(Stream);
        pa_stream_unref(Stream);
    }
}

void PulseStream::Fail() const {
    throw CaptureFailure(ErrorCodeOf(pa_context_errno(Server.Context())), false);
}

void PulseStream::Open(const std::string& SourceName, const CaptureFormat& Format) {
    if (!Server.Connect(LongestWait))
        throw CaptureFailure(CaptureNoDriver, false);
    pa_sample_spec Sound{};
    Sound.format = Format.RecBits == 8 ? PA_SAMPLE_U8 : PA_SAMPLE_S16NE;
    Sound.rate = static_cast<std::uint32_t>(Format.RecFreq);
    Sound.channels = static_cast<std::uint8_t>(Format.RecChannels);
    Stream = pa_stream_new(Server.Context(), "Record", &Sound, nullptr);
    if (Stream == nullptr)
        Fail();
    pa_buffer_attr Buffers{};
    Buffers.maxlength = static_cast<std::uint32_t>(-1); // as much as the server will keep
    Buffers.tlength = Buffers.prebuf = Buffers.minreq = static_cast<std::uint32_t>(-1);
    Buffers.fragsize = std::max(static_cast<std::uint32_t>(Format.HalfBytes()) / PiecesInAHalf,
                                static_cast<std::uint32_t>(Format.BlockAlign()));
    // The latency: without it a source may hand over seconds at once.
    if (pa_stream_connect_record(Stream, SourceName.empty() ? nullptr : SourceName.c_str(),
                                 &Buffers, PA_STREAM_ADJUST_LATENCY) < 0)
        Fail();
    const auto Settled = [this] { return pa_stream_get_state(Stream) != PA_STREAM_CREATING; };
    if (!Server.WaitUntil(Settled, LongestWait) || pa_stream_get_state(Stream) != PA_STREAM_READY)
        Fail();
    Capturing = std::thread([this] { CaptureThread(); });
}

void PulseStream::CaptureThread() {
    ::pthread_setname_np(::pthread_self(), "capture");
    // Who may not raise a thread captures at the ordinary priority.
    (void)::setpriority(PRIO_PROCESS, 0, ThreadNice);
    while (!EndWanted.load(std::memory_order_acquire)) {
        Take();
        if (pa_mainloop_iterate(Server.Loop(), 1, nullptr) < 0 || !Server.IsGood() ||
            pa_stream_get_state(Stream) != PA_STREAM_READY) {
            // What the queue has no room for now goes with the server.
            (void)Line.Queue->HandOver();
            Gone.store(true, std::memory_order_release);
            Line.Notice->Raise();
            return;
        }
    }
}

/// Stands where a callback would: copies what there is, as far as there is room. What there is no
/// room for stays with the server.
void PulseStream::Take() noexcept {
    CaptureQueue& Queue = *Line.Queue;
    while (Queue.Room() > 0) {
        const void* Piece = nullptr;
        std::size_t Bytes = 0;
        if (pa_stream_peek(Stream, &Piece, &Bytes) < 0 || Bytes == 0)
            return;
        const std::size_t Count = std::min(Queue.Room(), Bytes - PieceFrom);
        if (Piece == nullptr && PieceFrom == 0)
            Queue.NoteLoss(); // the server had to leave a hole
        if (Queue.Fill(Piece == nullptr ? nullptr
                                        : static_cast<const std::byte*>(Piece) + PieceFrom,
                       Count))
            Line.Notice->Raise();
        PieceFrom += Count;
        if (PieceFrom == Bytes) {
            (void)pa_stream_drop(Stream);
            PieceFrom = 0;
        }
    }
}

} // namespace

std::vector<std::string> PulseCapture::Devices() {
    SourceList List = AskForSources();
    SourceNames.clear();
    std::vector<std::string> Result;
    if (List.Sources.empty())
        return Result;
    std::stable_partition(List.Sources.begin(), List.Sources.end(),
                          [](const Source& Each) { return !Each.IsMonitor; });
    const auto Default = std::ranges::find(List.Sources, List.DefaultName, &Source::Name);
    SourceNames.emplace_back();
    Result.push_back("Default device" +
                     (Default == List.Sources.end() ? "" : " (" + Default->Description + ")"));
    for (const Source& Each : List.Sources) {
        SourceNames.push_back(Each.Name);
        Result.push_back(Each.Description);
    }
    return Result;
}

std::uint32_t PulseCapture::FormatBits(std::size_t) {
    return AllFormatBits;
}

std::unique_ptr<CaptureStream> PulseCapture::Open(std::size_t Device, const CaptureFormat& Format,
                                                  const CaptureLine& To) {
    if (Device >= SourceNames.size())
        throw CaptureFailure(CaptureBadDevice, false);
    auto Stream = std::make_unique<PulseStream>(To);
    Stream->Open(SourceNames[Device], Format);
    return Stream;
}

} // namespace quoril

#include "recording/AlsaCapture.h"

#include <algorithm>
#include <alsa/asoundlib.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <poll.h>
#include <pthread.h>
#include <string_view>
#include <sys/resource.h>
#include <thread>

namespace quoril {

namespace {

constexpr const char* DefaultName = "default";
constexpr unsigned DeviceBufferUs = 1000000;
constexpr unsigned DevicePeriodUs = 20000;
constexpr int LongestWaitMs = 50;
// Above the ordinary programs, where the user may.
constexpr int ThreadNice = -11;

// The library says its own words on the error output; what matters comes back as a code.
void SilentErrors(const char*, int, const char*, int, const char*, ...) {}

struct DeviceEnd {
    void operator()(snd_pcm_t* Device) const {
        (void)::snd_pcm_drop(Device);
        (void)::snd_pcm_close(Device);
    }
};
using OpenDevice = std::unique_ptr<snd_pcm_t, DeviceEnd>;

/// The device, or null with the system's code.
OpenDevice OpenByName(const std::string& Name, int& Code) {
    snd_pcm_t* Opened = nullptr;
    Code = ::snd_pcm_open(&Opened, Name.c_str(), SND_PCM_STREAM_CAPTURE, SND_PCM_NONBLOCK);
    return OpenDevice(Code < 0 ? nullptr : Opened);
}

bool CanBeOpened(const std::string& Name) {
    int Code = 0;
    const OpenDevice Device = OpenByName(Name, Code);
    return Device != nullptr || Code == -EBUSY;
}

/// The parameters that a device takes, which are asked and then narrowed.
class Parameters {
  public:
    explicit Parameters(snd_pcm_t* Asked) : Device(Asked) {
        ::snd_pcm_hw_params_malloc(&Space);
        Any = Space == nullptr ? -ENOMEM : ::snd_pcm_hw_params_any(Device, Space);
    }
    ~Parameters() { ::snd_pcm_hw_params_free(Space); }
    Parameters(const Parameters&) = delete;
    Parameters& operator=(const Parameters&) = delete;

    /// 0, or the code of what is refused.
    [[nodiscard]] int Take(const CaptureFormat& Format) {
        int Code = Any;
        if (Code >= 0)
            Code = ::snd_pcm_hw_params_set_access(Device, Space, SND_PCM_ACCESS_RW_INTERLEAVED);
        if (Code >= 0)
            Code = ::snd_pcm_hw_params_set_format(
                Device, Space, Format.RecBits == 8 ? SND_PCM_FORMAT_U8 : SND_PCM_FORMAT_S16);
        if (Code >= 0)
            Code = ::snd_pcm_hw_params_set_channels(Device, Space,
                                                    static_cast<unsigned>(Format.RecChannels));
        if (Code >= 0)
            Code = ::snd_pcm_hw_params_set_rate(Device, Space,
                                                static_cast<unsigned>(Format.RecFreq), 0);
        return std::min(Code, 0);
    }
    /// Fixes them, with a buffer of the device's own as long as it will have it.
    [[nodiscard]] int Fix() {
        unsigned Buffer = DeviceBufferUs;
        unsigned Period = DevicePeriodUs;
        int Code = ::snd_pcm_hw_params_set_period_time_near(Device, Space, &Period, nullptr);
        if (Code >= 0)
            Code = ::snd_pcm_hw_params_set_buffer_time_near(Device, Space, &Buffer, nullptr);
        if (Code >= 0)
            Code = ::snd_pcm_hw_params(Device, Space);
        return std::min(Code, 0);
    }

  private:
    snd_pcm_t* Device;
    snd_pcm_hw_params_t* Space = nullptr;
    int Any;
};

std::int32_t ErrorCodeOf(int Code) {
    switch (Code) {
    case -EBUSY:
    case -EAGAIN:
        return CaptureInUse;
    case -ENOENT:
        return CaptureBadDevice;
    case -ENODEV:
    case -ENXIO:
    case -ECONNREFUSED:
        return CaptureNoDriver;
    case -ENOMEM:
        return CaptureNoMemory;
    case -EBADFD:
        return CaptureBadHandle;
    default:
        return CaptureBadParameter;
    }
}

class AlsaStream final : public CaptureStream {
  public:
    AlsaStream(CaptureQueue& To, const CaptureNotice& Told) : Queue(To), Notice(Told) {}
    ~AlsaStream() override {
        if (!Capturing.joinable())
            return;
        EndWanted.store(true, std::memory_order_release);
        RoomMade();
        Capturing.join();
    }

    void Open(const std::string& Name, const CaptureFormat& Format);
    void RoomMade() noexcept override { Room.Raise(); }
    [[nodiscard]] bool Lost() const noexcept override {
        return Gone.load(std::memory_order_acquire);
    }

  private:
    void CaptureThread();
    void WaitForRoom() const;
    void Take() noexcept;
    [[nodiscard]] bool Recovered(int Code) noexcept;

    CaptureQueue& Queue;
    const CaptureNotice& Notice;
    const CaptureNotice Room; ///< wakes the thread
    OpenDevice Device;
    std::size_t Align = 2;
    std::vector<std::byte> Piece; ///< where the device puts frames; as long as a half
    std::atomic<bool> EndWanted{false};
    std::atomic<bool> Gone{false};
    std::thread Capturing;
};

void AlsaStream::Open(const std::string& Name, const CaptureFormat& Format) {
    int Code = 0;
    Device = OpenByName(Name, Code);
    if (Device == nullptr)
        throw CaptureFailure(ErrorCodeOf(Code), false);
    Parameters Wanted(Device.get());
    if (Wanted.Take(Format) < 0)
        throw CaptureFailure(CaptureBadFormat, false);
    Align = Format.BlockAlign();
    Piece.assign(Format.HalfBytes(), std::byte{0});
    Code = Wanted.Fix();
    if (Code >= 0)
        Code = ::snd_pcm_start(Device.get());
    if (Code < 0)
        throw CaptureFailure(ErrorCodeOf(Code), true);
    Capturing = std::thread([this] { CaptureThread(); });
}

void AlsaStream::CaptureThread() {
    ::pthread_setname_np(::pthread_self(), "capture");
    // Who may not raise a thread captures at the ordinary priority.
    (void)::setpriority(PRIO_PROCESS, 0, ThreadNice);
    while (!EndWanted.load(std::memory_order_acquire)) {
        if (Queue.Room() == 0) {
            WaitForRoom();
        } else if (const int Code = ::snd_pcm_wait(Device.get(), LongestWaitMs);
                   Code >= 0 || Recovered(Code)) {
            Take();
        }
        if (Lost()) {
            Notice.Raise();
            return;
        }
    }
}

void AlsaStream::WaitForRoom() const {
    pollfd Waited{Room.Handle(), POLLIN, 0};
    (void)::poll(&Waited, 1, LongestWaitMs);
    Room.Lower();
}

/// Stands where a callback would: copies what there is, as far as there is room. What there is no
/// room for stays with the device.
void AlsaStream::Take() noexcept {
    while (const std::size_t Frames = Queue.Room() / Align) {
        const snd_pcm_sframes_t Got = ::snd_pcm_readi(Device.get(), Piece.data(), Frames);
        if (Got == -EAGAIN || Got == 0)
            return;
        if (Got < 0) {
            if (!Recovered(static_cast<int>(Got)))
                return;
        } else if (Queue.Fill(Piece.data(), static_cast<std::size_t>(Got) * Align)) {
            Notice.Raise();
        }
    }
}

/// After an interruption: what came before it is handed over, and the device goes on. False when it
/// does not.
bool AlsaStream::Recovered(int Code) noexcept {
    if (Queue.HandOver())
        Notice.Raise();
    if (::snd_pcm_recover(Device.get(), Code, 1) >= 0 && ::snd_pcm_start(Device.get()) >= 0) {
        Queue.NoteLoss();
        return true;
    }
    Gone.store(true, std::memory_order_release);
    return false;
}

// ---- The list of devices

/// Names of what only leads to another device, or leads nowhere.
bool LeadsElsewhere(std::string_view Name) {
    static constexpr std::array<std::string_view, 19> Beginnings = {
        "null",     "hw:",       "sysdefault", "front", "rear",   "center_lfe", "side",
        "surround", "iec958",    "spdif",      "hdmi",  "modem",  "phoneline",  "dmix",
        "dsnoop",   "usbstream", "samplerate", "speex", "lavrate"};
    static constexpr std::array<std::string_view, 4> Others = {"upmix", "vdownmix", "jack", "oss"};
    return std::ranges::any_of(Beginnings,
                               [Name](std::string_view Each) { return Name.starts_with(Each); }) ||
           std::ranges::find(Others, Name) != Others.end();
}

struct HintWordEnd {
    void operator()(char* Word) const { std::free(Word); }
};

/// A word of a hint; empty without it. The lines of a description become one.
std::string HintWord(const void* Hint, const char* Id) {
    const std::unique_ptr<char, HintWordEnd> Word(::snd_device_name_get_hint(Hint, Id));
    std::string Text = Word ? Word.get() : "";
    std::ranges::replace(Text, '\n', ' ');
    return Text;
}

struct HintsEnd {
    void operator()(void** Hints) const { (void)::snd_device_name_free_hint(Hints); }
};

} // namespace

AlsaCapture::AlsaCapture() {
    ::snd_lib_error_set_handler(SilentErrors);
}

std::vector<std::string> AlsaCapture::Devices() {
    DeviceNames.clear();
    std::vector<std::string> Result;
    const auto Add = [&](const std::string& Name, const std::string& Description) {
        if (std::ranges::find(DeviceNames, Name) != DeviceNames.end() || !CanBeOpened(Name))
            return;
        DeviceNames.push_back(Name);
        Result.push_back(Description.empty() ? Name : Description);
    };
    Add(DefaultName, "Default device");
    void** Found = nullptr;
    if (::snd_device_name_hint(-1, "pcm", &Found) < 0)
        return Result;
    const std::unique_ptr<void*, HintsEnd> Hints(Found);
    for (void** Hint = Found; *Hint != nullptr; ++Hint) {
        const std::string Name = HintWord(*Hint, "NAME");
        if (HintWord(*Hint, "IOID") != "Output" && !LeadsElsewhere(Name))
            Add(Name, HintWord(*Hint, "DESC"));
    }
    return Result;
}

std::uint32_t AlsaCapture::FormatBits(std::size_t DeviceNo) {
    int Code = 0;
    const OpenDevice Device =
        DeviceNo < DeviceNames.size() ? OpenByName(DeviceNames[DeviceNo], Code) : nullptr;
    std::uint32_t Bits = 0;
    for (int BitNo = 0; Device != nullptr && AllFormatBits >> BitNo != 0; ++BitNo)
        if (Parameters(Device.get()).Take(RecordFormatOfBit(BitNo)) >= 0)
            Bits |= std::uint32_t{1} << BitNo;
    return Bits;
}

std::unique_ptr<CaptureStream> AlsaCapture::Open(std::size_t Device, const CaptureFormat& Format,
                                                 CaptureQueue& Queue, const CaptureNotice& Notice) {
    if (Device >= DeviceNames.size())
        throw CaptureFailure(CaptureBadDevice, false);
    auto Stream = std::make_unique<AlsaStream>(Queue, Notice);
    Stream->Open(DeviceNames[Device], Format);
    return Stream;
}

} // namespace quoril

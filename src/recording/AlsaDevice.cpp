#include "recording/AlsaDevice.h"

#include "recording/CaptureSystem.h"

#include <algorithm>
#include <cerrno>

namespace quoril {

namespace {

constexpr unsigned DeviceBufferUs = 1000000;
constexpr unsigned DevicePeriodUs = 20000;

} // namespace

void AlsaDeviceEnd::operator()(snd_pcm_t* Device) const {
    (void)::snd_pcm_drop(Device);
    (void)::snd_pcm_close(Device);
}

AlsaDevice AlsaOpen(const std::string& Name, int& Code) {
    snd_pcm_t* Opened = nullptr;
    Code = ::snd_pcm_open(&Opened, Name.c_str(), SND_PCM_STREAM_CAPTURE, SND_PCM_NONBLOCK);
    return AlsaDevice(Code < 0 ? nullptr : Opened);
}

AlsaParameters::AlsaParameters(snd_pcm_t* Asked) : Device(Asked) {
    ::snd_pcm_hw_params_malloc(&Space);
    Any = Space == nullptr ? -ENOMEM : ::snd_pcm_hw_params_any(Device, Space);
}

AlsaParameters::~AlsaParameters() {
    ::snd_pcm_hw_params_free(Space);
}

int AlsaParameters::Take(const CaptureFormat& Format) {
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
        Code =
            ::snd_pcm_hw_params_set_rate(Device, Space, static_cast<unsigned>(Format.RecFreq), 0);
    return std::min(Code, 0);
}

int AlsaParameters::Fix() {
    unsigned Buffer = DeviceBufferUs;
    unsigned Period = DevicePeriodUs;
    int Code = ::snd_pcm_hw_params_set_period_time_near(Device, Space, &Period, nullptr);
    if (Code >= 0)
        Code = ::snd_pcm_hw_params_set_buffer_time_near(Device, Space, &Buffer, nullptr);
    if (Code >= 0)
        Code = ::snd_pcm_hw_params(Device, Space);
    return std::min(Code, 0);
}

std::int32_t AlsaErrorCode(int Code) {
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

} // namespace quoril

#include "recording/AlsaCapture.h"

#include "platform/AnswerWithin.h"
#include "recording/AlsaDevice.h"
#include "recording/AlsaStream.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace quoril {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* DefaultName = "default";
// For one device, and for all of them.
constexpr milliseconds LongestAnswer{500};
constexpr milliseconds LongestList{800};

// The library says its own words on the error output; what matters comes back as a code.
void SilentErrors(const char*, int, const char*, int, const char*, ...) {}

struct DeviceAnswer {
    bool Present = false;
    std::uint32_t FormatBits = 0;
};

DeviceAnswer AskDevice(const std::string& Name) {
    int Code = 0;
    const AlsaDevice Device = AlsaOpen(Name, Code);
    DeviceAnswer Answer{Device != nullptr || Code == -EBUSY, 0};
    for (int BitNo = 0; Device != nullptr && AllFormatBits >> BitNo != 0; ++BitNo)
        if (AlsaParameters(Device.get()).Take(RecordFormatOfBit(BitNo)) >= 0)
            Answer.FormatBits |= std::uint32_t{1} << BitNo;
    return Answer;
}

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
    Known.clear();
    std::vector<std::string> Result;
    const steady_clock::time_point Until = steady_clock::now() + LongestList;
    // One that does not answer, such as one that leads to a server that hangs, is left out.
    const auto Add = [&](const std::string& Name, const std::string& Description) {
        const auto Left = std::chrono::duration_cast<milliseconds>(Until - steady_clock::now());
        if (Left.count() <= 0 || std::ranges::find(Known, Name, &Device::Name) != Known.end())
            return;
        const auto Answer = AnswerWithin<DeviceAnswer>(std::min(Left, LongestAnswer),
                                                       [Name] { return AskDevice(Name); });
        if (!Answer || !Answer->Present)
            return;
        Known.push_back({Name, Answer->FormatBits});
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
    return DeviceNo < Known.size() ? Known[DeviceNo].FormatBits : 0;
}

std::unique_ptr<CaptureStream> AlsaCapture::Open(std::size_t DeviceNo, const CaptureFormat& Format,
                                                 const CaptureLine& To) {
    if (DeviceNo >= Known.size())
        throw CaptureFailure(CaptureBadDevice, false);
    return std::make_unique<AlsaStream>(Known[DeviceNo].Name, Format, To);
}

} // namespace quoril

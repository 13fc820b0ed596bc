#include "audiofile/EncoderParams.h"

#include "audiofile/DocumentFile.h"
#include "base/Arithmetic.h"
#include "platform/Text.h"
#include "settings/STD1.h"

#include <algorithm>

namespace quoril {

namespace {

constexpr std::int32_t HighestLowRate = 25000; // Hz
constexpr std::array<std::int32_t, 14> HighRates = {32,  40,  48,  56,  64,  80,  96,
                                                    112, 128, 160, 192, 224, 256, 320};
constexpr std::array<std::int32_t, 14> LowRates = {8,  16, 24, 32,  40,  48,  56,
                                                   64, 80, 96, 112, 128, 144, 160};
constexpr std::int32_t UsualHighRate = 128;
constexpr std::int32_t UsualLowRate = 64;

struct WmaRow {
    std::int32_t Freq;
    std::int32_t Channels;
    std::array<std::int32_t, 8> BitRates; ///< behind the last one zeros
};
constexpr std::array<WmaRow, 12> WmaTable = {{{8000, 1, {8, 6, 5}},
                                              {8000, 2, {12}},
                                              {11025, 1, {10, 8}},
                                              {16000, 1, {16, 12, 10}},
                                              {16000, 2, {20, 16}},
                                              {22050, 1, {20, 16}},
                                              {22050, 2, {32, 22, 20}},
                                              {32000, 1, {20}},
                                              {32000, 2, {48, 40, 32}},
                                              {44100, 1, {48, 32}},
                                              {44100, 2, {192, 160, 128, 96, 80, 64, 48, 32}},
                                              {48000, 2, {192, 160, 128}}}};

Mp3ParamDialog* Mp3Dialog = nullptr;
WmaParamDialog* WmaDialog = nullptr;

/// A whole number of the settings; what makes no sense is 0.
std::int32_t NumberOf(const char* Section, const char* Key, const char* Default) {
    constexpr double Most = 1000000000;
    return RoundToLong(std::clamp(LeadingNumber(IniGet(Section, Key, Default)), 0.0, Most));
}

} // namespace

std::span<const std::int32_t> Mp3BitRates(std::int32_t Freq) noexcept {
    return Freq > HighestLowRate ? HighRates : LowRates;
}

std::size_t Mp3BitRatePlace(std::int32_t Freq, std::int32_t BitRate) noexcept {
    const auto Rates = Mp3BitRates(Freq);
    auto Found = std::ranges::find(Rates, BitRate);
    if (Found == Rates.end())
        Found = std::ranges::find(Rates, Freq > HighestLowRate ? UsualHighRate : UsualLowRate);
    return static_cast<std::size_t>(Found - Rates.begin());
}

void SetMp3ParamDialog(Mp3ParamDialog* Receiver) noexcept {
    Mp3Dialog = Receiver;
}

void GetMp3Parameters(std::int32_t Freq, bool UsePrevPrm, std::int32_t& BitRate,
                      std::int32_t& StereoMode, bool& Ok) {
    Mp3Params Params{NumberOf("Mp3", "BitRate", "128"), NumberOf("Mp3", "StereoMode", "0"), Freq};
    const auto Rates = Mp3BitRates(Freq);
    const bool Known = std::ranges::find(Rates, Params.CurrentBitRate) != Rates.end();
    Ok = UsePrevPrm && Known;
    if (!Ok && Mp3Dialog != nullptr && Mp3Dialog->ShowMp3Param(Params)) {
        IniPut("Mp3", "BitRate", std::to_string(Params.CurrentBitRate));
        IniPut("Mp3", "StereoMode", std::to_string(Params.CurrentStereoMode));
        Mp3ParamsChosen = true;
        Ok = true;
    }
    BitRate = Params.CurrentBitRate;
    StereoMode = Params.CurrentStereoMode;
}

std::span<const std::int32_t> WmaBitRates(std::int32_t Freq, std::int32_t Channels) noexcept {
    const auto* const Row = std::ranges::find_if(WmaTable, [Freq, Channels](const WmaRow& Each) {
        return Each.Freq == Freq && Each.Channels == Channels;
    });
    if (Row == WmaTable.end())
        return {};
    const auto Count = std::ranges::find(Row->BitRates, 0) - Row->BitRates.begin();
    return std::span(Row->BitRates).first(static_cast<std::size_t>(Count));
}

void SetWmaParamDialog(WmaParamDialog* Receiver) noexcept {
    WmaDialog = Receiver;
}

void GetWmaParameters(std::int32_t Freq, std::int32_t Channels, std::int32_t& BitRate, bool& Ok) {
    WmaParams Params{NumberOf("Wma", "BitRate", "128000"), Channels, Freq};
    Ok = WmaDialog != nullptr && WmaDialog->ShowWmaParam(Params);
    if (Ok)
        IniPut("Wma", "BitRate", std::to_string(Params.CurrentBitRate));
    BitRate = Params.CurrentBitRate;
}

} // namespace quoril

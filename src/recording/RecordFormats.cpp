#include "recording/RecordFormats.h"

#include "base/Arithmetic.h"
#include "selection/DurationText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fmt/format.h>

namespace quoril {

namespace {

struct NamedRate {
    std::int32_t Freq;
    const char* Name;
};
/// Four bits each, by rising number: 8-bit mono and stereo, 16-bit mono and stereo.
constexpr std::array<NamedRate, 3> Rates = {
    {{11025, "11.025 kHz"}, {22050, "22.05 kHz"}, {44100, "44.1 kHz"}}};
constexpr int BitsOfRate = 4;
constexpr int FormatCount = BitsOfRate * static_cast<int>(Rates.size());

std::int16_t SampleAt(const std::byte* Place, std::int32_t Bits) {
    if (Bits == 8)
        return static_cast<std::int16_t>(std::to_integer<int>(*Place) - 128);
    std::int16_t Sample;
    std::memcpy(&Sample, Place, sizeof Sample);
    return Sample;
}

} // namespace

std::int32_t CaptureFormat::HalfFrames() const {
    return std::max(1, RoundToLong(RecFreq * 0.1));
}

CaptureFormat RecordFormatOfBit(int BitNo) {
    return {BitNo % 2 + 1, BitNo % BitsOfRate < 2 ? 8 : 16,
            Rates.at(static_cast<std::size_t>(BitNo / BitsOfRate)).Freq};
}

std::string RecordFormatKey(const CaptureFormat& Format) {
    return fmt::format("{},{},{}", Format.RecFreq, Format.RecChannels, Format.RecBits);
}

std::uint32_t RecordFormatBit(const CaptureFormat& Format) {
    for (int BitNo = 0; BitNo < FormatCount; ++BitNo)
        if (RecordFormatOfBit(BitNo) == Format)
            return std::uint32_t{1} << BitNo;
    return 0;
}

std::vector<RecordFormatName> RecordFormatList(std::uint32_t FormatBits, std::int32_t RecEngine) {
    std::vector<RecordFormatName> List;
    for (int BitNo = 0; BitNo < FormatCount; ++BitNo) {
        const CaptureFormat Format = RecordFormatOfBit(BitNo);
        if ((FormatBits >> BitNo & 1U) == 0 || (RecEngine == RecEngineDx7 && Format.RecBits == 8))
            continue;
        List.push_back({RecordFormatKey(Format),
                        fmt::format("{}, {}, {}-bit",
                                    Rates.at(static_cast<std::size_t>(BitNo / BitsOfRate)).Name,
                                    Format.RecChannels == 1 ? "mono" : "stereo", Format.RecBits)});
    }
    return List;
}

std::string Fmt_LblText(const CaptureFormat& Format) {
    return fmt::format("({},{} Hz, {} Bits)", Format.RecChannels == 1 ? "Mono" : "Stereo",
                       Format.RecFreq, Format.RecBits);
}

std::string InsertLblText(std::int32_t InsertPos, std::int32_t Freq) {
    return fmt::format("Sample:{} ({})", InsertPos, FormatSamples(InsertPos, Freq));
}

std::int32_t SplitFrames(const std::vector<std::byte>& Frames, std::size_t Bytes,
                         const CaptureFormat& Format, std::vector<std::int16_t>& RecBuffL,
                         std::vector<std::int16_t>& RecBuffR) {
    const std::size_t Align = Format.BlockAlign();
    const std::size_t Step = Align / static_cast<std::size_t>(Format.RecChannels);
    const std::size_t Count = std::min(Bytes, Frames.size()) / Align;
    RecBuffL.assign(Count + 1, 0);
    RecBuffR.assign(Format.RecChannels == 2 ? Count + 1 : 0, 0);
    for (std::size_t i = 0; i < Count; ++i) {
        const std::byte* const Place = Frames.data() + i * Align;
        RecBuffL[i + 1] = SampleAt(Place, Format.RecBits);
        if (Format.RecChannels == 2)
            RecBuffR[i + 1] = SampleAt(Place + Step, Format.RecBits);
    }
    return static_cast<std::int32_t>(Count);
}

} // namespace quoril

#include "audiofile/WavHeader.h"

#include "base/Arithmetic.h"
#include "base/Failure.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <string_view>

namespace quoril {

static_assert(std::endian::native == std::endian::little);

namespace {

/// What the header holds behind the size of the whole.
constexpr std::int32_t BytesAfterSize = WavHeaderBytes - 8;
/// The size of the whole is a number of 32 bits with a sign to many programs.
constexpr std::int64_t MostDataBytes = std::numeric_limits<std::int32_t>::max() - BytesAfterSize;

constexpr std::size_t TagPlace = 20;
constexpr std::size_t ChannelsPlace = 22;
constexpr std::size_t RatePlace = 24;
constexpr std::size_t BitsPlace = 34;
constexpr std::size_t FirstDataPlace = 35;
constexpr std::size_t LastDataPlace = 99999;
/// The four letters and the size at the last place.
constexpr std::size_t MostHeadBytes = LastDataPlace + 8;

/// Letters differ from their capitals in one bit, and no other byte becomes a letter by it.
bool IsDataName(const std::uint8_t* Bytes) {
    constexpr std::uint32_t Name = 0x61746164; // "data"
    constexpr std::uint32_t SmallLetters = 0x20202020;
    std::uint32_t Word;
    std::memcpy(&Word, Bytes, sizeof Word);
    return (Word | SmallLetters) == Name;
}

} // namespace

WavHead::WavHead(const FileForReading& File, std::int64_t Length)
    : FileName(File.Name()),
      Head(static_cast<std::size_t>(std::min<std::int64_t>(Length, MostHeadBytes))) {
    File.Read(0, Head.data(), Head.size());
}

std::uint32_t WavHead::LittleEndian(std::size_t Offset, std::size_t Bytes) const {
    if (Offset + Bytes > Head.size())
        throw Failure("The file ends within its header.\n" + FileName);
    std::uint32_t Value = 0;
    for (std::size_t i = 0; i < Bytes; ++i)
        Value |= static_cast<std::uint32_t>(Head[Offset + i]) << (8 * i);
    return Value;
}

std::int16_t WavHead::FormatTag() const {
    return static_cast<std::int16_t>(LittleEndian(TagPlace, 2));
}

std::int32_t WavHead::Channels() const {
    return static_cast<std::int32_t>(LittleEndian(ChannelsPlace, 1));
}

std::int32_t WavHead::Rate() const {
    return static_cast<std::int32_t>(LittleEndian(RatePlace, 4));
}

std::int16_t WavHead::Bits() const {
    return static_cast<std::int16_t>(LittleEndian(BitsPlace, 2));
}

bool WavHead::FindData() {
    for (std::size_t Place = FirstDataPlace; Place <= LastDataPlace && Place + 4 <= Head.size();
         ++Place) {
        if (IsDataName(Head.data() + Place)) {
            DataName = static_cast<std::int32_t>(Place);
            return true;
        }
    }
    return false;
}

std::uint32_t WavHead::DataSize() const {
    return LittleEndian(static_cast<std::size_t>(DataName) + 4, 4);
}

std::array<std::uint8_t, WavHeaderBytes> WavHeaderMake(const WaveFormat& Format,
                                                       std::int32_t Frames) {
    const std::int32_t FrameBytes = Format.Channel * Format.Bits / 8;
    const std::int64_t Needed = std::int64_t{FrameBytes} * Frames;
    if (Needed > MostDataBytes)
        throw Failure("A WAV file holds 2 GB at most, and this sound needs more.\n"
                      "\"Save Selected Part\" can write it into several files.");
    const auto DataBytes = static_cast<std::int32_t>(Needed);

    std::array<std::uint8_t, WavHeaderBytes> Header{};
    std::size_t End = 0;
    const auto PutText = [&](std::string_view Text) {
        End = static_cast<std::size_t>(
            std::copy(Text.begin(), Text.end(), Header.begin() + static_cast<std::ptrdiff_t>(End)) -
            Header.begin());
    };
    const auto PutNumber = [&](std::int32_t Value, std::size_t Bytes) {
        for (std::size_t i = 0; i < Bytes; ++i)
            Header[End++] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(Value) >> (8 * i));
    };
    PutText("RIFF");
    PutNumber(DataBytes + BytesAfterSize, 4);
    PutText("WAVEfmt ");
    PutNumber(16, 4);
    PutNumber(WavTagPcm, 2);
    PutNumber(Format.Channel, 2);
    PutNumber(Format.Freq, 4);
    PutNumber(MulLong(Format.Freq, FrameBytes), 4);
    PutNumber(FrameBytes, 2);
    PutNumber(Format.Bits, 2);
    PutText("data");
    PutNumber(DataBytes, 4);
    return Header;
}

} // namespace quoril

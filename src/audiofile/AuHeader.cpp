#include "audiofile/AuHeader.h"

#include "audiofile/SampleForms.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace quoril {

static_assert(std::endian::native == std::endian::little);

namespace {

constexpr std::uint32_t ClipName = 0x2E736E64; // ".snd"
/// Letters differ from their capitals in one bit, and no other byte becomes a letter by it. The
/// point has none.
constexpr std::uint32_t SmallLetters = 0x00202020;

using HeadWords = std::array<std::uint32_t, AuHeaderBytes / 4>;

} // namespace

AuHead AuHeadRead(const FileForReading& File) {
    HeadWords Words{};
    File.Read(0, Words.data(), sizeof Words);
    for (std::uint32_t& Word : Words)
        Word = SwapLong(Word);
    const auto Signed = [&Words](std::size_t Index) {
        return static_cast<std::int32_t>(Words.at(Index));
    };
    return {(Words[0] | SmallLetters) == ClipName,
            Signed(1),
            Words[2],
            Signed(3),
            Signed(4),
            Signed(5)};
}

std::vector<std::uint8_t> AuHeaderMake(std::int32_t Encoding, std::int32_t Rate,
                                       std::int32_t Channels, std::int32_t DataBytes) {
    HeadWords Words{ClipName,
                    AuHeaderBytes,
                    static_cast<std::uint32_t>(DataBytes),
                    static_cast<std::uint32_t>(Encoding),
                    static_cast<std::uint32_t>(Rate),
                    static_cast<std::uint32_t>(Channels)};
    for (std::uint32_t& Word : Words)
        Word = SwapLong(Word);
    std::vector<std::uint8_t> Header(AuHeaderBytes);
    std::memcpy(Header.data(), Words.data(), Header.size());
    return Header;
}

} // namespace quoril

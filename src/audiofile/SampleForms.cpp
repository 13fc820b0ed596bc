#include "audiofile/SampleForms.h"

#include "base/Vectorised.h"

#include <bit>
#include <cstring>

namespace quoril {

static_assert(std::endian::native == std::endian::little,
              "sample files are little-endian, and samples are written as they lie in memory");

namespace {

// Each frame is put together in one unsigned word, so that the loops have one store each and are
// vectorised. Unsigned sums wrap: sample + 128 has a high byte exactly when it fits no byte.

QUORIL_VECTORISED
void InterleaveLoop(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                    std::uint8_t* Out) noexcept {
    for (std::size_t i = 0; i < Frames; ++i) {
        const std::uint32_t Frame =
            static_cast<std::uint32_t>(static_cast<std::uint16_t>(Left[i])) |
            (static_cast<std::uint32_t>(static_cast<std::uint16_t>(Right[i])) << 16);
        std::memcpy(Out + 4 * i, &Frame, sizeof Frame);
    }
}

QUORIL_VECTORISED
std::uint16_t BytesLoop(const std::int16_t* In, std::size_t Count, std::uint8_t* Out) noexcept {
    std::uint16_t Seen = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        const auto Value = static_cast<std::uint16_t>(In[i] + 128);
        Seen = static_cast<std::uint16_t>(Seen | Value);
        Out[i] = static_cast<std::uint8_t>(Value);
    }
    return Seen;
}

QUORIL_VECTORISED
std::uint16_t InterleaveBytesLoop(const std::int16_t* Left, const std::int16_t* Right,
                                  std::size_t Frames, std::uint8_t* Out) noexcept {
    std::uint16_t Seen = 0;
    for (std::size_t i = 0; i < Frames; ++i) {
        const auto ValueL = static_cast<std::uint16_t>(Left[i] + 128);
        const auto ValueR = static_cast<std::uint16_t>(Right[i] + 128);
        Seen = static_cast<std::uint16_t>(Seen | ValueL | ValueR);
        const auto Frame = static_cast<std::uint16_t>((ValueL & 0xFF) | (ValueR << 8));
        std::memcpy(Out + 2 * i, &Frame, sizeof Frame);
    }
    return Seen;
}

QUORIL_VECTORISED
void SamplesLoop(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        Out[i] = static_cast<std::int16_t>(In[i] - 128);
}

QUORIL_VECTORISED
void SwapLoop(const std::int16_t* In, std::size_t Count, std::uint8_t* Out) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        const std::uint16_t Sample = SwapInteger(static_cast<std::uint16_t>(In[i]));
        std::memcpy(Out + 2 * i, &Sample, sizeof Sample);
    }
}

QUORIL_VECTORISED
void InterleaveSwappedLoop(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                           std::uint8_t* Out) noexcept {
    for (std::size_t i = 0; i < Frames; ++i) {
        const std::uint32_t Frame =
            std::uint32_t{SwapInteger(static_cast<std::uint16_t>(Left[i]))} |
            (std::uint32_t{SwapInteger(static_cast<std::uint16_t>(Right[i]))} << 16);
        std::memcpy(Out + 4 * i, &Frame, sizeof Frame);
    }
}

QUORIL_VECTORISED
void FromSwappedLoop(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        std::uint16_t Sample;
        std::memcpy(&Sample, In + 2 * i, sizeof Sample);
        Out[i] = static_cast<std::int16_t>(SwapInteger(Sample));
    }
}

QUORIL_VECTORISED
void DealSwappedLoop(const std::uint8_t* In, std::size_t Frames, std::int16_t* Left,
                     std::int16_t* Right) noexcept {
    for (std::size_t i = 0; i < Frames; ++i) {
        std::uint32_t Frame;
        std::memcpy(&Frame, In + 4 * i, sizeof Frame);
        Left[i] = static_cast<std::int16_t>(SwapInteger(static_cast<std::uint16_t>(Frame)));
        Right[i] = static_cast<std::int16_t>(SwapInteger(static_cast<std::uint16_t>(Frame >> 16)));
    }
}

} // namespace

void InterleaveSamples(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                       std::uint8_t* Out) noexcept {
    InterleaveLoop(Left, Right, Frames, Out);
}

bool BytesFromSamples(const std::int16_t* In, std::size_t Count, std::uint8_t* Out) noexcept {
    return BytesLoop(In, Count, Out) <= 255;
}

bool InterleaveBytes(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                     std::uint8_t* Out) noexcept {
    return InterleaveBytesLoop(Left, Right, Frames, Out) <= 255;
}

void SamplesFromBytes(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept {
    SamplesLoop(In, Count, Out);
}

void SwapSamples(const std::int16_t* In, std::size_t Count, std::uint8_t* Out) noexcept {
    SwapLoop(In, Count, Out);
}

void InterleaveSwapped(const std::int16_t* Left, const std::int16_t* Right, std::size_t Frames,
                       std::uint8_t* Out) noexcept {
    InterleaveSwappedLoop(Left, Right, Frames, Out);
}

void SamplesFromSwapped(const std::uint8_t* In, std::size_t Count, std::int16_t* Out) noexcept {
    FromSwappedLoop(In, Count, Out);
}

void DealSwapped(const std::uint8_t* In, std::size_t Frames, std::int16_t* Left,
                 std::int16_t* Right) noexcept {
    DealSwappedLoop(In, Frames, Left, Right);
}

} // namespace quoril

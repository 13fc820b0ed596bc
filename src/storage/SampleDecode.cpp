#include "storage/SampleDecode.h"

#include "base/Vectorised.h"

namespace quoril {

namespace {

QUORIL_VECTORISED
void EachByte(const std::uint8_t* Source, std::int16_t* Target, std::size_t Count) noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        Target[i] = static_cast<std::int16_t>(Source[i] - 128);
}

QUORIL_VECTORISED
void EverySecondByte(const std::uint8_t* Source, std::int16_t* Target, std::size_t Count) noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        Target[i] = static_cast<std::int16_t>(Source[2 * i] - 128);
}

} // namespace

void DecodeBytes(const std::uint8_t* Source, std::size_t Stride, std::int16_t* Target,
                 std::size_t Count) noexcept {
    if (Stride == 1)
        EachByte(Source, Target, Count);
    else
        EverySecondByte(Source, Target, Count);
}

QUORIL_VECTORISED
void DecodeEverySecond(const std::int16_t* Source, std::int16_t* Target,
                       std::size_t Count) noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        Target[i] = Source[2 * i];
}

QUORIL_VECTORISED
void DecodeFrames(const std::int16_t* Source, std::int16_t* Left, std::int16_t* Right,
                  std::size_t Count) noexcept {
    for (std::size_t i = 0; i < Count; ++i) {
        Left[i] = Source[2 * i];
        Right[i] = Source[2 * i + 1];
    }
}

} // namespace quoril

#include "audiofile/SampleCoders.h"

#include "audiofile/SampleForms.h"
#include "audiofile/ULawTable.h"
#include "base/Arithmetic.h"
#include "storage/SampleDecode.h"

#include <cstring>

namespace quoril {

namespace {

using In = std::span<const std::int16_t>;

void CodeBytes(In Left, In Right, std::uint8_t* Out) {
    const bool Fits = Right.empty() ? BytesFromSamples(Left.data(), Left.size(), Out)
                                    : InterleaveBytes(Left.data(), Right.data(), Left.size(), Out);
    if (!Fits)
        FailOverflow();
}

void CodeLittleEndian(In Left, In Right, std::uint8_t* Out) {
    if (Right.empty())
        std::memcpy(Out, Left.data(), Left.size_bytes());
    else
        InterleaveSamples(Left.data(), Right.data(), Left.size(), Out);
}

void CodeBigEndian(In Left, In Right, std::uint8_t* Out) {
    if (Right.empty())
        SwapSamples(Left.data(), Left.size(), Out);
    else
        InterleaveSwapped(Left.data(), Right.data(), Left.size(), Out);
}

void CodeULaw(In Left, In Right, std::uint8_t* Out) {
    const ULawEncodeTables& Tables = ULawEncodeTable();
    const std::size_t Step = Right.empty() ? 1 : 2;
    for (std::size_t i = 0; i < Left.size(); ++i)
        Out[Step * i] = ULawCode(Tables, Left[i]);
    for (std::size_t i = 0; i < Right.size(); ++i)
        Out[Step * i + 1] = ULawCode(Tables, Right[i]);
}

void DecodeUnsigned(const std::uint8_t* Bytes, std::size_t Frames, std::int16_t* Left,
                    std::int16_t* Right) {
    DecodeBytes(Bytes, Right == nullptr ? 1 : 2, Left, Frames);
    if (Right != nullptr)
        DecodeBytes(Bytes + 1, 2, Right, Frames);
}

void DecodeLittleEndian(const std::uint8_t* Bytes, std::size_t Frames, std::int16_t* Left,
                        std::int16_t* Right) {
    if (Right == nullptr)
        std::memcpy(Left, Bytes, Frames * sizeof *Left);
    else
        DecodeFrames(reinterpret_cast<const std::int16_t*>(Bytes), Left, Right, Frames);
}

void DecodeBigEndian(const std::uint8_t* Bytes, std::size_t Frames, std::int16_t* Left,
                     std::int16_t* Right) {
    if (Right == nullptr)
        SamplesFromSwapped(Bytes, Frames, Left);
    else
        DealSwapped(Bytes, Frames, Left, Right);
}

void DecodeULaw(const std::uint8_t* Bytes, std::size_t Frames, std::int16_t* Left,
                std::int16_t* Right) {
    const auto& Table = ULawDecodeTable();
    const std::size_t Step = Right == nullptr ? 1 : 2;
    for (std::size_t i = 0; i < Frames; ++i)
        Left[i] = Table[Bytes[Step * i]];
    if (Right != nullptr)
        for (std::size_t i = 0; i < Frames; ++i)
            Right[i] = Table[Bytes[Step * i + 1]];
}

} // namespace

std::int32_t BitsInFile(SampleCode Code) noexcept {
    return Code == SampleCode::Bytes || Code == SampleCode::ULaw ? 8 : 16;
}

FrameCoder FrameCoderFor(SampleCode Code) {
    switch (Code) {
    case SampleCode::Bytes:
        return &CodeBytes;
    case SampleCode::LittleEndian:
        return &CodeLittleEndian;
    case SampleCode::BigEndian:
        return &CodeBigEndian;
    default:
        return &CodeULaw;
    }
}

FrameDecoder FrameDecoderFor(SampleCode Code) {
    switch (Code) {
    case SampleCode::Bytes:
        return &DecodeUnsigned;
    case SampleCode::LittleEndian:
        return &DecodeLittleEndian;
    case SampleCode::BigEndian:
        return &DecodeBigEndian;
    default:
        return &DecodeULaw;
    }
}

} // namespace quoril

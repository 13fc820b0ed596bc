#include "audiofile/ULawTable.h"

#include <cstdlib>
#include <memory>

namespace quoril {

namespace {

/// The code holds sign, exponent and mantissa with all bits turned over; each exponent has a base
/// value and steps of its own size.
std::array<std::int16_t, 256> BuildULawTable() {
    constexpr std::array<std::int32_t, 8> Base = {0, 132, 396, 924, 1980, 4092, 8316, 16764};
    std::array<std::int16_t, 256> Table{};
    for (std::uint32_t Code = 0; Code < 256; ++Code) {
        const std::uint32_t Bits = Code ^ 255U;
        const std::uint32_t Exponent = (Bits & 112U) >> 4;
        const auto Mantissa = static_cast<std::int32_t>(Bits & 15U);
        const std::int32_t Value = Base[Exponent] + Mantissa * (1 << (Exponent + 3));
        Table[Code] = static_cast<std::int16_t>((Bits & 128U) != 0 ? -Value : Value);
    }
    return Table;
}

/// The code from `FirstCode` to `LastCode` whose value is nearest to `Sample`.
std::uint8_t NearestCode(std::int32_t Sample, std::int32_t FirstCode, std::int32_t LastCode) {
    const auto& Decode = ULawDecodeTable();
    std::int32_t Best = FirstCode;
    std::int32_t BestDistance = 65536;
    for (std::int32_t Code = FirstCode; Code <= LastCode; ++Code) {
        const std::int32_t Distance =
            std::abs(Sample - std::int32_t{Decode[static_cast<std::size_t>(Code)]});
        if (Distance < BestDistance) {
            BestDistance = Distance;
            Best = Code;
        }
    }
    return static_cast<std::uint8_t>(Best);
}

std::unique_ptr<const ULawEncodeTables> BuildEncodeTables() {
    auto Tables = std::make_unique<ULawEncodeTables>();
    for (std::int32_t Value = 0; Value <= 32767; ++Value)
        Tables->ULawPos[static_cast<std::size_t>(Value)] = NearestCode(Value, 128, 255);
    Tables->ULawNeg[0] = 127; // no sample has this index
    for (std::int32_t Size = 1; Size <= 32768; ++Size)
        Tables->ULawNeg[static_cast<std::size_t>(Size)] = NearestCode(-Size, 0, 127);
    return Tables;
}

} // namespace

const std::array<std::int16_t, 256>& ULawDecodeTable() {
    static const std::array<std::int16_t, 256> Table = BuildULawTable();
    return Table;
}

const ULawEncodeTables& ULawEncodeTable() {
    static const std::unique_ptr<const ULawEncodeTables> Tables = BuildEncodeTables();
    return *Tables;
}

} // namespace quoril

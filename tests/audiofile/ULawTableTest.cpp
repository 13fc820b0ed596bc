#include "audiofile/ULawTable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace quoril {
namespace {

/// The expansion as the recommendation gives it, in another form: mantissa with its hidden bit,
/// shifted by the exponent, less the bias.
std::int32_t ExpandedByShift(std::int32_t Code) {
    const std::int32_t Bits = ~Code & 0xFF;
    const std::int32_t Size = ((((Bits & 15) << 3) + 132) << ((Bits >> 4) & 7)) - 132;
    return (Bits & 128) != 0 ? -Size : Size;
}

TEST(ULawTable, DecodesEveryCode) {
    for (std::int32_t Code = 0; Code < 256; ++Code)
        EXPECT_EQ(ULawDecodeTable()[static_cast<std::size_t>(Code)], ExpandedByShift(Code)) << Code;
    EXPECT_EQ(ULawDecodeTable()[0], -32124);
    EXPECT_EQ(ULawDecodeTable()[127], 0);
    EXPECT_EQ(ULawDecodeTable()[128], 32124);
    EXPECT_EQ(ULawDecodeTable()[255], 0);
}

TEST(ULawTable, EncodesToTheNearestCodeOfTheSign) {
    const ULawEncodeTables& Tables = ULawEncodeTable();
    for (std::int32_t Sample = -32768; Sample <= 32767; ++Sample) {
        const std::int32_t Code = ULawCode(Tables, static_cast<std::int16_t>(Sample));
        const std::int32_t Distance = std::abs(ExpandedByShift(Code) - Sample);
        ASSERT_EQ(Code >= 128, Sample >= 0) << Sample;
        for (std::int32_t Other = Sample >= 0 ? 128 : 0; Other < (Sample >= 0 ? 256 : 128);
             ++Other) {
            const std::int32_t OtherDistance = std::abs(ExpandedByShift(Other) - Sample);
            ASSERT_GE(OtherDistance, Distance) << Sample;
            if (OtherDistance == Distance) {
                ASSERT_GE(Other, Code) << "of two equally near, the lower code: " << Sample;
            }
        }
    }
}

TEST(ULawTable, EveryCodeComesBackExceptNegativeZero) {
    for (std::int32_t Code = 0; Code < 256; ++Code) {
        const std::int16_t Sample = ULawDecodeTable()[static_cast<std::size_t>(Code)];
        EXPECT_EQ(ULawCode(ULawEncodeTable(), Sample), Code == 127 ? 255 : Code);
    }
}

TEST(ULawTable, TheLowestSampleHasAPlace) {
    EXPECT_EQ(ULawEncodeTable().ULawNeg[32768], 0);
    EXPECT_EQ(ULawCode(ULawEncodeTable(), -32768), 0);
    EXPECT_EQ(ULawCode(ULawEncodeTable(), 32767), 128);
    // 4 lies exactly between 0 (code 255) and 8 (code 254).
    EXPECT_EQ(ULawCode(ULawEncodeTable(), 4), 254);
    EXPECT_EQ(ULawCode(ULawEncodeTable(), -4), 126);
}

} // namespace
} // namespace quoril

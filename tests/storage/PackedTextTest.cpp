#include "storage/PackedText.h"

#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using Words = std::vector<std::int32_t>;

TEST(PackedTextTest, AnEmptyTextIsACountOf1AndALengthOf0) {
    Words All = {7};
    PackedTextPut("", All);
    EXPECT_THAT(All, ElementsAre(7, 1, 0));
    std::size_t At = 1;
    EXPECT_EQ(PackedTextTake(All, At), "");
    EXPECT_EQ(At, 3U);
}

TEST(PackedTextTest, FourBytesToAWordTheLowestFirst) {
    Words All;
    PackedTextPut("ab\xFF\x01z", All);
    EXPECT_THAT(All, ElementsAre(3, 5, 0x01FF6261, 'z'));
}

TEST(PackedTextTest, TextsOfEveryLengthStandOneBehindTheOther) {
    Words All;
    for (std::size_t Length = 0; Length < 100; ++Length)
        PackedTextPut(std::string(Length, 'x') + '\0', All);
    std::size_t At = 0;
    for (std::size_t Length = 0; Length < 100; ++Length)
        EXPECT_EQ(PackedTextTake(All, At), std::string(Length, 'x') + '\0');
    EXPECT_EQ(At, All.size());
}

TEST(PackedTextTest, WhatDoesNotEndWithinTheWordsIsNoText) {
    const Words Damaged[] = {{},
                             {1},
                             {0},
                             {0, 0},
                             {-1, 0},
                             {2, 1},
                             {3, 5, 0},
                             {2, -1, 0},
                             {2, 5, 0},
                             {1, 1, 0},
                             {2147483647},
                             {2147483647, 2147483647, 0},
                             {-2147483647 - 1, 0, 0}};
    for (const Words& Each : Damaged) {
        SCOPED_TRACE(::testing::PrintToString(Each));
        std::size_t At = 0;
        EXPECT_FALSE(PackedTextTake(Each, At).has_value());
        EXPECT_LE(At, Each.size());
    }
    std::size_t Behind = 4;
    EXPECT_FALSE(PackedTextTake(Words{1, 0, 1, 0}, Behind).has_value());
}

} // namespace
} // namespace quoril::test

#include "platform/SampleMemory.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace quoril {
namespace {

constexpr std::int32_t Piece = 1 << 20; ///< samples: 2 MiB, taken from the system by itself

class SampleMemoryTest : public testing::Test {
  protected:
    void SetUp() override { SampleMemoryTrim(); }
    void TearDown() override {
        SampleMemoryTrim();
        EXPECT_EQ(SampleMemoryInUse(), Before);
    }
    std::int64_t Before = SampleMemoryInUse();
};

TEST_F(SampleMemoryTest, WhatWasGivenBackServesInParts) {
    std::int16_t* const Whole = SampleMemoryTake(4 * Piece, false);
    std::fill_n(Whole, 4 * Piece, std::int16_t{7});
    SampleMemoryGive(Whole, 4 * Piece);
    std::vector<std::int16_t*> Parts;
    for (int i = 0; i < 4; ++i) {
        Parts.push_back(SampleMemoryTake(Piece, false));
        EXPECT_EQ(Parts.back(), Whole + i * Piece);
    }
    EXPECT_EQ(SampleMemoryInUse() - Before, 8LL * Piece);
    std::int16_t* const Beyond = SampleMemoryTake(Piece, false);
    EXPECT_TRUE(Beyond + Piece <= Whole || Beyond >= Whole + 4 * Piece);
    Parts.push_back(Beyond);
    for (std::int16_t* const Part : Parts)
        SampleMemoryGive(Part, Piece);
}

TEST_F(SampleMemoryTest, APartOfASpareIsClearedWhereZerosAreAsked) {
    std::int16_t* const Whole = SampleMemoryTake(2 * Piece, false);
    std::fill_n(Whole, 2 * Piece, std::int16_t{7});
    SampleMemoryGive(Whole, 2 * Piece);
    std::int16_t* const Part = SampleMemoryTake(Piece, true);
    ASSERT_EQ(Part, Whole);
    EXPECT_EQ(std::count(Part, Part + Piece, 0), Piece);
    SampleMemoryGive(Part, Piece);
}

TEST_F(SampleMemoryTest, TheSmallestSpareThatSufficesIsTaken) {
    std::int16_t* const Large = SampleMemoryTake(3 * Piece, false);
    std::int16_t* const Small = SampleMemoryTake(2 * Piece, false);
    SampleMemoryGive(Small, 2 * Piece);
    SampleMemoryGive(Large, 3 * Piece);
    std::int16_t* const Taken = SampleMemoryTake(Piece, false);
    EXPECT_EQ(Taken, Small);
    SampleMemoryGive(Taken, Piece);
}

TEST_F(SampleMemoryTest, SparesBeyondTheMostAreGivenToTheSystemOldestFirst) {
    constexpr std::int32_t Half = 16 * Piece; // of what is kept
    std::int16_t* const First = SampleMemoryTake(Half, false);
    std::int16_t* const Second = SampleMemoryTake(Half, false);
    std::int16_t* const Third = SampleMemoryTake(Half, false);
    for (std::int16_t* const One : {First, Second, Third}) {
        std::fill_n(One, Half, std::int16_t{7});
        SampleMemoryGive(One, Half);
    }
    std::int16_t* const Newest = SampleMemoryTake(Half, false);
    std::int16_t* const Middle = SampleMemoryTake(Half, false);
    EXPECT_EQ(Newest, Third);
    EXPECT_EQ(Middle, Second);
    std::int16_t* const Fresh = SampleMemoryTake(Half, false);
    EXPECT_EQ(*Fresh, 0); // new from the system
    for (std::int16_t* const One : {Newest, Middle, Fresh})
        SampleMemoryGive(One, Half);
}

TEST_F(SampleMemoryTest, NoMoreOfTheOldestSpareIsGivenToTheSystemThanMustBe) {
    constexpr std::int32_t Half = 16 * Piece;
    std::int16_t* const First = SampleMemoryTake(Half, false);
    std::int16_t* const Second = SampleMemoryTake(Half, false);
    std::int16_t* const Third = SampleMemoryTake(Piece, false);
    SampleMemoryGive(First, Half);
    SampleMemoryGive(Second, Half);
    SampleMemoryGive(Third, Piece);
    // The first one has made room for the third one, and serves what is too long for the others.
    std::int16_t* const Whole = SampleMemoryTake(Half, false);
    std::int16_t* const Rest = SampleMemoryTake(Half - Piece, false);
    EXPECT_EQ(Whole, Second);
    EXPECT_EQ(Rest, First);
    SampleMemoryGive(Whole, Half);
    SampleMemoryGive(Rest, Half - Piece);
}

} // namespace
} // namespace quoril

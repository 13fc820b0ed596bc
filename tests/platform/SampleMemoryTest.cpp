#include "platform/SampleMemory.h"

#include "base/Failure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sys/resource.h>
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

/// Bytes of address space that this process has.
std::int64_t AddressSpace() {
    std::FILE* const File = std::fopen("/proc/self/statm", "r");
    long long Pages = 0;
    EXPECT_EQ(std::fscanf(File, "%lld", &Pages), 1);
    std::fclose(File);
    return Pages * 4096;
}

TEST_F(SampleMemoryTest, NoTwoRunsEverShareAPlaceWhateverIsTakenAndGivenBack) {
    struct Run {
        std::int16_t* Place;
        std::int32_t Count;
        std::int16_t Mark;
    };
    std::vector<Run> Held;
    std::mt19937 Random(5);
    const auto Number = [&Random](std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    };
    const std::int64_t SpaceBefore = AddressSpace();
    for (int i = 0; i < 20000; ++i) {
        if (Held.size() < 60 && Number(0, 1) == 0) {
            // Around the sizes where the way of taking changes, and anything else.
            const std::int32_t Around = Number(1, 8) * (1 << Number(14, 19)) + Number(-1, 1);
            const std::int32_t Count = Number(0, 3) == 0 ? Number(0, 3000000) : Around;
            const bool Zeroed = Number(0, 3) == 0;
            const Run One{SampleMemoryTake(Count, Zeroed), Count, static_cast<std::int16_t>(i | 1)};
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(One.Place) % 64, 0U);
            for (const Run& Other : Held)
                ASSERT_TRUE(One.Place + std::max(Count, 1) <= Other.Place ||
                            Other.Place + std::max(Other.Count, 1) <= One.Place);
            for (std::int32_t At = 0; At < Count; At += 1021) {
                ASSERT_TRUE(!Zeroed || One.Place[At] == 0);
                One.Place[At] = One.Mark;
            }
            if (Count > 0)
                One.Place[Count - 1] = One.Place[0] = One.Mark;
            Held.push_back(One);
        } else if (!Held.empty()) {
            const auto Which = Held.begin() + Number(0, static_cast<std::int32_t>(Held.size()) - 1);
            for (std::int32_t At = 0; At < Which->Count; At += 1021)
                ASSERT_EQ(Which->Place[At], Which->Mark);
            ASSERT_TRUE(Which->Count == 0 || Which->Place[Which->Count - 1] == Which->Mark);
            SampleMemoryGive(Which->Place, Which->Count);
            Held.erase(Which);
        }
        if (Number(0, 2000) == 0)
            SampleMemoryTrim();
    }
    for (const Run& One : Held)
        SampleMemoryGive(One.Place, One.Count);
    SampleMemoryTrim();
    // Small runs come from the heap, which may keep them; what was taken in all is far more.
    EXPECT_LT(AddressSpace() - SpaceBefore, 512LL << 20);
}

TEST_F(SampleMemoryTest, WhatNobodyCanHaveIsRefused) {
    for (const std::int32_t Count : {-1, -2, -40000, std::numeric_limits<std::int32_t>::min()})
        EXPECT_THROW((void)SampleMemoryTake(Count, false), Failure) << Count;
    std::int16_t* const Most = SampleMemoryTake(std::numeric_limits<std::int32_t>::max(), false);
    Most[std::numeric_limits<std::int32_t>::max() - 1] = 1;
    SampleMemoryGive(Most, std::numeric_limits<std::int32_t>::max());
}

TEST_F(SampleMemoryTest, SparesAreGivenUpWhereMemoryEnds) {
    std::int16_t* const Small = SampleMemoryTake(16 * Piece, false);
    SampleMemoryGive(Small, 16 * Piece);
    rlimit Normal{};
    ASSERT_EQ(::getrlimit(RLIMIT_AS, &Normal), 0);
    const rlimit Tight{static_cast<rlim_t>(AddressSpace()) + (16U << 20), Normal.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &Tight), 0);
    std::int16_t* Large = nullptr;
    EXPECT_NO_THROW(Large = SampleMemoryTake(20 * Piece, true));
    EXPECT_EQ(::setrlimit(RLIMIT_AS, &Normal), 0);
    ASSERT_NE(Large, nullptr);
    SampleMemoryGive(Large, 20 * Piece);
}

} // namespace
} // namespace quoril

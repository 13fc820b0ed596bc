// The numbers of the bar graph of the sound around the mouse.
#include "view/BandGraph.h"

#include <gtest/gtest.h>

#include <limits>

namespace quoril {
namespace {

TEST(BandWindow, IsAFortiethOfASecondAroundThePosition) {
    EXPECT_EQ(BandWindowAt(1000, 44100), (BandWindow{449, 1102})); // 1102.5 is even at 1102
    EXPECT_EQ(BandWindowAt(10000, 48000), (BandWindow{9400, 1200}));
    EXPECT_EQ(BandWindowAt(10000, 22050), (BandWindow{9724, 551})); // 9724.5
    EXPECT_EQ(BandWindowAt(10001, 22050), (BandWindow{9726, 551})); // 9725.5
}

TEST(BandWindow, Has512To4096Samples) {
    EXPECT_EQ(BandWindowAt(501, 1000), (BandWindow{245, 512}));
    EXPECT_EQ(BandWindowAt(501, 20500), (BandWindow{245, 512})); // 512.5
    EXPECT_EQ(BandWindowAt(10000, 163880), (BandWindow{7952, 4096}));
    EXPECT_EQ(BandWindowAt(10000, 200000), (BandWindow{7952, 4096}));
}

TEST(BandWindow, MayBeginBeforeTheDocumentAndEndsWithinTheNumbers) {
    EXPECT_EQ(BandWindowAt(1, 44100), (BandWindow{-550, 1102}));
    constexpr std::int32_t Last = std::numeric_limits<std::int32_t>::max();
    const BandWindow Window = BandWindowAt(Last, 44100);
    EXPECT_EQ(Window.Count, 1102);
    EXPECT_EQ(Window.From, Last - 1102);
}

TEST(BandBar, StandsOnTheGroundInItsTenthOfTheWidth) {
    EXPECT_EQ(BandBarOf(1, 4096, 16, 100, 60), (BandBar{0, 10, 30}));
    EXPECT_EQ(BandBarOf(3, 2048, 16, 100, 60), (BandBar{20, 30, 45}));
    EXPECT_EQ(BandBarOf(10, 0, 16, 100, 60), (BandBar{90, 100, 60}));
}

TEST(BandBar, ATenthThatIsNoWholePixelEndsWhereTheNextBegins) {
    EXPECT_EQ(BandBarOf(1, 4096, 16, 75, 60), (BandBar{0, 8, 30}));
    EXPECT_EQ(BandBarOf(2, 4096, 16, 75, 60), (BandBar{8, 15, 30}));
    EXPECT_EQ(BandBarOf(3, 4096, 16, 75, 60), (BandBar{15, 22, 30}));
    EXPECT_EQ(BandBarOf(10, 4096, 16, 75, 60), (BandBar{68, 75, 30}));
}

TEST(BandBar, EightBitsHaveAFullScaleOf128) {
    EXPECT_EQ(BandBarOf(1, 16, 8, 100, 60).Top, 30);
    EXPECT_EQ(BandBarOf(1, 16, 16, 100, 60).Top, 60);
}

TEST(BandBar, AQuarterOfFullScaleAndMoreFillTheHeight) {
    EXPECT_EQ(BandBarOf(1, 8192, 16, 100, 60).Top, 0);
    EXPECT_EQ(BandBarOf(1, 65535, 16, 100, 60).Top, 0);
    EXPECT_EQ(BandBarOf(1, 255, 8, 100, 60).Top, 0);
}

} // namespace
} // namespace quoril

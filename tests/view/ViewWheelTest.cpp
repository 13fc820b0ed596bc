// Mouse wheel and touchpad over the view.
#include "view/ViewWheel.h"

#include <gtest/gtest.h>

namespace quoril {

namespace {

struct WheelCase {
    const char* What;
    WheelView Before;
    WheelDeed Deed;
    double Notches;
    double Across;
    WheelView After;
};

const WheelCase Cases[] = {
    {"up goes back a tenth", {501, 100, 1000}, WheelDeed::Scroll, 1, 0.5, {491, 100, 1000}},
    {"down goes on a tenth", {501, 100, 1000}, WheelDeed::Scroll, -1, 0.5, {511, 100, 1000}},
    {"three at once", {501, 100, 1000}, WheelDeed::Scroll, -3, 0.5, {531, 100, 1000}},
    {"stops at the start", {5, 100, 1000}, WheelDeed::Scroll, 1, 0.5, {1, 100, 1000}},
    {"stops at the end", {896, 100, 1000}, WheelDeed::Scroll, -1, 0.5, {901, 100, 1000}},
    {"all in view stays", {1, 1000, 1000}, WheelDeed::Scroll, -1, 0.5, {1, 1000, 1000}},
    {"a page back", {501, 100, 1000}, WheelDeed::Page, 1, 0.5, {401, 100, 1000}},
    {"a page on", {501, 100, 1000}, WheelDeed::Page, -1, 0.5, {601, 100, 1000}},
    {"the last page is whole", {850, 100, 1000}, WheelDeed::Page, -1, 0.5, {901, 100, 1000}},
    {"in at the left edge", {501, 100, 1000}, WheelDeed::Zoom, 1, 0, {501, 60, 1000}},
    {"in at the right edge", {501, 100, 1000}, WheelDeed::Zoom, 1, 1, {541, 60, 1000}},
    {"in at the middle", {501, 100, 1000}, WheelDeed::Zoom, 1, 0.5, {521, 60, 1000}},
    {"out at the middle", {521, 60, 1000}, WheelDeed::Zoom, -1, 0.5, {501, 100, 1000}},
    {"out at the start", {1, 60, 1000}, WheelDeed::Zoom, -1, 0.5, {1, 100, 1000}},
    {"out to the whole", {301, 700, 1000}, WheelDeed::Zoom, -1, 0.5, {1, 1000, 1000}},
    {"in to ten at least", {501, 12, 1000}, WheelDeed::Zoom, 5, 0, {501, 10, 1000}},
    {"a mouse beside counts as at the edge",
     {501, 100, 1000},
     WheelDeed::Zoom,
     1,
     -7,
     {501, 60, 1000}},
    {"a short document is shown whole", {1, 4, 4}, WheelDeed::Zoom, 3, 0.5, {1, 4, 4}},
    {"the longest document out",
     {1, 2000000000, 2147483647},
     WheelDeed::Zoom,
     -1,
     0.5,
     {1, 2147483647, 2147483647}},
    {"the end of the longest document",
     {2147483547, 100, 2147483647},
     WheelDeed::Page,
     -9,
     0.5,
     {2147483548, 100, 2147483647}},
    {"a view beyond the document comes back",
     {5000, 100, 1000},
     WheelDeed::Scroll,
     -1,
     0.5,
     {901, 100, 1000}},
    {"an empty document", {1, 0, 0}, WheelDeed::Zoom, 1, 0.5, {1, 0, 0}},
};

TEST(ViewWheel, TurnsTheViewAsTheTableSays) {
    for (const WheelCase& Each : Cases) {
        ViewWheelClass Wheel;
        EXPECT_EQ(Wheel.Turned(Each.Before, Each.Deed, Each.Notches, Each.Across), Each.After)
            << Each.What;
    }
}

TEST(ViewWheel, TheKeysSayWhatItDoes) {
    EXPECT_EQ(WheelDeedOf(false, false), WheelDeed::Scroll);
    EXPECT_EQ(WheelDeedOf(true, false), WheelDeed::Zoom);
    EXPECT_EQ(WheelDeedOf(false, true), WheelDeed::Page);
    EXPECT_EQ(WheelDeedOf(true, true), WheelDeed::Zoom);
}

TEST(ViewWheel, ManySmallTurnsComeToTheSameAsALargeOne) {
    for (const WheelDeed Deed : {WheelDeed::Scroll, WheelDeed::Zoom, WheelDeed::Page}) {
        ViewWheelClass Small;
        ViewWheelClass Large;
        const WheelView Start{501, 40, 1000};
        WheelView View = Start;
        for (int Turn = 0; Turn < 16; ++Turn)
            View = Small.Turned(View, Deed, 0.0625, 0.25);
        EXPECT_EQ(View, Large.Turned(Start, Deed, 1, 0.25)) << static_cast<int>(Deed);
        EXPECT_NE(View, Start);
    }
}

TEST(ViewWheel, InAndOutAgainLeavesTheSampleUnderTheMouseInItsPlace) {
    ViewWheelClass Wheel;
    WheelView View{3001, 5000, 100000};
    const double Across = 0.3;
    const double Position = View.From + Across * View.Samples;
    for (int Turn = 0; Turn < 40; ++Turn) {
        View = Wheel.Turned(View, WheelDeed::Zoom, Turn < 20 ? 0.5 : -0.5, Across);
        EXPECT_NEAR(View.From + Across * View.Samples, Position, 1.0) << Turn;
    }
    EXPECT_EQ(View, (WheelView{3001, 5000, 100000}));
}

TEST(ViewWheel, FingersMoveThePictureByTheirOwnWay) {
    ViewWheelClass Wheel;
    WheelView View{501, 10, 1000};
    View = Wheel.Moved(View, -0.04);
    EXPECT_EQ(View.From, 501);
    View = Wheel.Moved(View, -0.04);
    EXPECT_EQ(View.From, 502);
    View = Wheel.Moved(View, 0.5);
    EXPECT_EQ(View.From, 497);
    EXPECT_EQ(Wheel.Moved(View, 1000).From, 1);
    EXPECT_EQ(Wheel.Moved({1, 0, 0}, 1), (WheelView{1, 0, 0}));
}

TEST(ViewWheel, AViewThatSomethingElseChangedIsTakenAsItStands) {
    ViewWheelClass Wheel;
    // Leaves nearly half a sample, which belongs to this view alone.
    EXPECT_EQ(Wheel.Moved({501, 10, 1000}, -0.04).From, 501);
    EXPECT_EQ(Wheel.Moved({701, 10, 1000}, -0.02).From, 701);
    // Nor does the start of a page.
    static_cast<void>(Wheel.Turned({701, 10, 1000}, WheelDeed::Page, 0.75, 0));
    EXPECT_EQ(Wheel.Turned({301, 10, 1000}, WheelDeed::Page, 0.75, 0).From, 301);
}

} // namespace

} // namespace quoril

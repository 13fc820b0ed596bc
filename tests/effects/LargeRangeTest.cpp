// What the commands on a whole long file cost beside their arithmetic.
#include "effects/EffectFixture.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "support/LargeFile.h"

#include <algorithm>

namespace quoril::test {

namespace {

constexpr std::int32_t Frames = 20000000;

class LargeRangeOfEffect : public EffectTest {
  protected:
    LargeRangeOfEffect() {
        MakeLongWav(Session.Path("long.wav"), Frames);
        OpenAsDocument(Session.Path("long.wav"));
        Select(1, Frames);
    }
};

TEST_F(LargeRangeOfEffect, UndoReadsNothing) {
    AdjustVolume(16);
    ASSERT_GT(WaveStore->UndoCount(), 0);
    const std::int64_t Before = BytesReadSoFar();
    WaveStore->Undo();
    EXPECT_LT(BytesReadSoFar() - Before, 4096);
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(LargeRangeOfEffect, NoMoreMemoryIsHeldThanTheBudgetAndTheLatestBlocks) {
    AdjustVolume(5);
    ASSERT_GT(WaveStore->UndoCount(), 0);
    EXPECT_LE(MemoryUsed, MemoryBudget);
    EXPECT_LT(Frames, 4 * std::int64_t{MemoryBudget}); // what is held was not all there is
    EXPECT_GT(std::int64_t{Frames} * 4, MemoryBudget);
}

struct Walk {
    const char* Name;
    void (*Run)();
    double Span;       ///< of the bar, for a walk over both channels
    std::int32_t Most; ///< samples between two moves
};

TEST_F(LargeRangeOfEffect, TheBarMovesAllTheTime) {
    for (const Walk& Each : {Walk{"volume", [] { AdjustVolume(16); }, 1, 100000},
                             Walk{"fade", [] { AdjustVolume(4); }, 1, 100000},
                             Walk{"maximize", [] { OptimizeVolume(3); }, 0.5, 100000},
                             // a run may hold more than one step of these
                             Walk{"reverse", [] { WaveReverse(); }, 1, 40000},
                             Walk{"invert", [] { WaveInvert(); }, 1, 40000}}) {
        Progress.Values.clear();
        Each.Run();
        ASSERT_FALSE(Progress.Values.empty()) << Each.Name;
        EXPECT_FLOAT_EQ(Progress.Values.back(), 1) << Each.Name;
        float Longest = Progress.Values.front();
        for (std::size_t i = 1; i < Progress.Values.size(); ++i)
            Longest = std::max(Longest, Progress.Values[i] - Progress.Values[i - 1]);
        EXPECT_LE(Longest, 1.01 * Each.Span * Each.Most / Frames) << Each.Name;
    }
}

} // namespace

} // namespace quoril::test

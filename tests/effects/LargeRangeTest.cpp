// What the commands on a whole long file cost beside their arithmetic.
#include "effects/ChannelMix.h"
#include "effects/EffectFixture.h"
#include "effects/ScriptedMix.h"
#include "effects/TransformCommands.h"
#include "effects/VolumeCommands.h"
#include "support/LargeFile.h"

#include <algorithm>
#include <array>
#include <string>

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

struct Reading {
    const char* Name;
    void (*Run)();
};

constexpr std::array<Reading, 7> Commands = {{{"volume", [] { AdjustVolume(16); }},
                                              {"fade", [] { AdjustVolume(4); }},
                                              {"maximize", [] { OptimizeVolume(3); }},
                                              {"reverse", WaveReverse},
                                              {"invert", WaveInvert},
                                              {"mix", ChannelMix},
                                              {"interchange", InterchangeChannels}}};

TEST_F(LargeRangeOfEffect, TheFileIsReadOnceAndNothingIsWrittenWhileTheResultFitsTheBudget) {
    const ScriptedMix Mix{{true, {MixSum, MixLeftLessRight}}};
    MemoryBudget = 100000000; // the result has 80 MB
    for (const Reading& Each : Commands) {
        OpenAsDocument(Session.Path("long.wav"));
        ChnMixSettingsWrite(Mix.Answer.Choice); // so that there is no need to write it once more
        const std::int64_t Read = BytesReadSoFar();
        const std::int64_t Written = BytesWrittenSoFar();
        Each.Run();
        EXPECT_LE(BytesReadSoFar() - Read, Frames * std::int64_t{4} * 102 / 100) << Each.Name;
        EXPECT_LT(BytesWrittenSoFar() - Written, 65536) << Each.Name;
        EXPECT_LE(MemoryUsed, MemoryBudget) << Each.Name;
        EXPECT_EQ(WaveStore->UndoCount() > 0, true) << Each.Name;
    }
}

TEST_F(LargeRangeOfEffect, BeyondTheBudgetTheFileIsReadOnceForEachPassAndTheResultWrittenOnce) {
    const ScriptedMix Mix{{true, {MixSum, MixLeftLessRight}}};
    constexpr std::int64_t FileBytes = Frames * std::int64_t{4};
    for (const Reading& Each : Commands) {
        const int Passes = std::string(Each.Name) == "maximize" ? 2 : 1;
        OpenAsDocument(Session.Path("long.wav"));
        const std::int64_t Read = BytesReadSoFar();
        const std::int64_t Written = BytesWrittenSoFar();
        Each.Run();
        EXPECT_LE(BytesReadSoFar() - Read, Passes * FileBytes * 102 / 100) << Each.Name;
        EXPECT_LE(BytesWrittenSoFar() - Written, FileBytes) << Each.Name;
    }
}

TEST_F(LargeRangeOfEffect, SavingReadsAnUntouchedFileOnceAndMovesNoBlock) {
    const std::int64_t Read = BytesReadSoFar();
    const std::int64_t Written = BytesWrittenSoFar();
    ASSERT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, Session.Path("copy.wav")));
    constexpr std::int64_t FileBytes = Frames * std::int64_t{4};
    EXPECT_LE(BytesReadSoFar() - Read, FileBytes * 102 / 100);
    EXPECT_LE(BytesWrittenSoFar() - Written, FileBytes * 102 / 100);
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(LargeRangeOfEffect, SavingOverTheOpenedFileReadsItForTheWritingAndForTheDocument) {
    MemoryBudget = 100000000;
    const std::int64_t Read = BytesReadSoFar();
    const std::int64_t Written = BytesWrittenSoFar();
    ASSERT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, Session.Path("long.wav")));
    constexpr std::int64_t FileBytes = Frames * std::int64_t{4};
    EXPECT_LE(BytesReadSoFar() - Read, 2 * FileBytes * 102 / 100);
    EXPECT_LE(BytesWrittenSoFar() - Written, FileBytes * 102 / 100);
    EXPECT_EQ(MemoryUsed, FileBytes);
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

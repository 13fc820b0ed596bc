// The echo as a command: what comes out, what the user reads, what is kept, and undo.
#include "effects/EchoCommands.h"

#include "base/Random.h"
#include "effects/EffectFixture.h"
#include "effects/LiteralEcho.h"
#include "effects/ScriptedEcho.h"
#include "effects/TestWaves.h"

#include <algorithm>
#include <array>

namespace quoril::test {
namespace {

class EchoCommandsTest : public EffectTest {
  protected:
    /// What the echo makes of the channels in work, of which one may be empty.
    [[nodiscard]] std::array<Samples, 2> Expected(const std::array<Samples, 2>& Old,
                                                  std::int32_t From, std::int32_t To,
                                                  std::int32_t WorkChn,
                                                  std::int32_t Bits = 16) const {
        const EchoParamsRec Set = Dialog.Left.value_or(EchoParamsRec{});
        RandomSeed(static_cast<double>(Set.NextDelays) + Set.DelayVariation);
        std::array<Samples, 2> Wet;
        std::array<Samples, 2> New = Old;
        for (std::size_t c = 0; c < 2; ++c)
            if (WorkChn == 0 || WorkChn == static_cast<std::int32_t>(c) + 1)
                Wet[c] = LiteralEcho({Old[c].begin() + From - 1, Old[c].begin() + To},
                                     WaveStore->WavFmtFreq, Bits,
                                     {Set.FirstDelay, Set.NextDelays, Set.Repeats, Set.VolReduceAll,
                                      Set.DelayVariation, Set.VolReduceHiFi},
                                     RandomDraw);
        const std::size_t T = std::max(Wet[0].size(), Wet[1].size());
        for (std::size_t c = 0; c < 2; ++c) {
            if (Wet[c].empty())
                continue;
            const auto Start = static_cast<std::size_t>(From) - 1;
            const std::size_t End = std::min(Start + T, Old[c].size());
            const Samples Dry(Old[c].begin() + From - 1,
                              Old[c].begin() + static_cast<std::ptrdiff_t>(End));
            const Samples Made = LiteralDryMix(Wet[c], Dry, Bits);
            New[c].resize(std::max(New[c].size(), Start + Made.size()), 0);
            std::ranges::copy(Made, New[c].begin() + From - 1);
        }
        const std::size_t Longest = std::max(New[0].size(), New[1].size());
        for (Samples& Each : New)
            if (!Each.empty())
                Each.resize(Longest, 0);
        return New;
    }

    ScriptedEcho Dialog;
};

TEST_F(EchoCommandsTest, AddsTheEchoToWhatFollows) {
    const std::array<Samples, 2> Old = {FullNoise(60000, 1), FullNoise(60000, 2)};
    Document(Old[0], Old[1], 16, 9001);
    WaveStore->WavFmtFreq = 44100;
    Select(10001, 30000);
    const auto New = Expected(Old, 10001, 30000, 0);
    EXPECT_EQ(New[0].size(), 60000U);
    ExpectStep(Echo, "Echo", New[0], New[1]);
}

TEST_F(EchoCommandsTest, AtTheEndTheEchoRunsPastTheOldEnd) {
    for (const std::int32_t HiFi : {100, 70}) {
        Dialog.Left = EchoParamsRec{0.3F, 0.2F, 4, 90, 50, HiFi};
        const std::array<Samples, 2> Old = {FullNoise(5000, 1), FullNoise(5000, 2)};
        Document(Old[0], Old[1], 16, 700);
        Select(4001, 5000);
        const auto New = Expected(Old, 4001, 5000, 0);
        EXPECT_GT(New[0].size(), 5700U);
        ExpectStep(Echo, "Echo", New[0], New[1]);
    }
}

TEST_F(EchoCommandsTest, EightBitsAndOneChannel) {
    Dialog.Left = EchoParamsRec{0.05F, 0.03F, 7, 120, 30, 130};
    const std::array<Samples, 2> Old = {FullNoise(4000, 1, 8), {}};
    Document(Old[0], {}, 8, 333);
    Select(501, 3000);
    ExpectStep(Echo, "Echo", Expected(Old, 501, 3000, 1, 8)[0]);
}

TEST_F(EchoCommandsTest, InOneChannelTheOtherIsLeftAndPaddedWhereNeeded) {
    const std::array<Samples, 2> Old = {FullNoise(3000, 1), FullNoise(3000, 2)};
    for (const std::int32_t To : {1500, 3000}) {
        Document(Old[0], Old[1], 16, 700);
        Select(1001, To);
        SelBoth = false;
        SelSingle = 2;
        const auto New = Expected(Old, 1001, To, 2);
        ExpectStep(Echo, "Echo", New[0], New[1]);
        EXPECT_EQ(Samples(New[0].begin(), New[0].begin() + 3000), Old[0]);
    }
}

TEST_F(EchoCommandsTest, AWholeDocumentOfManyBlocksInALittleMemory) {
    MemoryBudget = 50000;
    Dialog.Left = EchoParamsRec{2.0F, 3.0F, 3, 80, 10, 100};
    const std::array<Samples, 2> Old = {FullNoise(200000, 1), FullNoise(200000, 2)};
    Document(Old[0], Old[1], 16, 10000);
    WaveStore->WavFmtFreq = 44100;
    const auto New = Expected(Old, 1, 200000, 0);
    ExpectStep(Echo, "Echo", New[0], New[1]);
}

TEST_F(EchoCommandsTest, TheChannelsGetDifferentDelays) {
    const Samples Same = FullNoise(20000, 1);
    Document(Same, Same);
    WaveStore->WavFmtFreq = 44100;
    Echo();
    EXPECT_NE(Left(), Right());
}

TEST_F(EchoCommandsTest, WithoutVariationEqualChannelsStayEqual) {
    Dialog.Left = EchoParamsRec{0.08F, 0.06F, 5, 80, 0, 60};
    const Samples Same = FullNoise(20000, 1);
    Document(Same, Same);
    Echo();
    EXPECT_EQ(Left(), Right());
}

TEST_F(EchoCommandsTest, RunTwiceItMakesTheSame) {
    const Samples L = FullNoise(20000, 1);
    Document(L);
    Echo();
    const Samples Once = Left();
    WaveStore->Undo();
    Select(1, 20000);
    Echo();
    EXPECT_EQ(Left(), Once);
}

TEST_F(EchoCommandsTest, SingleSamplesAndAFewHaveAnEcho) {
    for (std::int32_t Length = 2; Length <= 5; ++Length) {
        Dialog.Left = EchoParamsRec{0.002F, 0.001F, 3, 80, 0, Length == 4 ? 70 : 100};
        const std::array<Samples, 2> Old = {FullNoise(10, 1), {}};
        Document(Old[0]);
        Select(6, 5 + Length);
        ExpectStep(Echo, "Echo", Expected(Old, 6, 5 + Length, 1)[0]);
    }
}

TEST_F(EchoCommandsTest, TheSettingIsReadTheFirstTimeAndCancelKeepsWhatWasLeftInTheFields) {
    EchoParams.reset();
    EchoSettingWrite({"0.5", "0.25", "3", "70", "0", "100"});
    Document(FullNoise(1000, 1));
    Dialog.Ok = false;
    Dialog.Left = EchoParamsRec{1, 2, 3, 4, 5, 6};
    EXPECT_TRUE(Unchanged(Echo).empty());
    ASSERT_EQ(Dialog.Found.size(), 1U);
    EXPECT_EQ(Dialog.Found[0], (EchoParamsRec{0.5F, 0.25F, 3, 70, 0, 100}));
    EXPECT_EQ(EchoTextsOf(EchoSettingRead())[0], "0.5");
    EXPECT_TRUE(Unchanged(Echo).empty());
    EXPECT_EQ(Dialog.Found.back(), *Dialog.Left);
}

TEST_F(EchoCommandsTest, AsksForSpaceForTheLongestEcho) {
    Document(FullNoise(1000, 1), FullNoise(1000, 2));
    WaveStore->WavFmtFreq = 44100;
    EXPECT_EQ(Refused(Echo), std::vector<std::int64_t>{(1000 + 14112 + 132) * 2 * 2});
    SelBoth = false;
    EXPECT_EQ(Refused(Echo), std::vector<std::int64_t>{(1000 + 14112 + 132) * 2});
}

TEST_F(EchoCommandsTest, IsAskedAfterTheSelectionAndBeforeTheDisk) {
    Document(FullNoise(100, 1));
    Dialog.Ok = false;
    EXPECT_TRUE(Refused(Echo).empty());
    EXPECT_EQ(Dialog.Found.size(), 1U);
    Select(0, 0);
    EXPECT_TRUE(Unchanged(Echo).empty());
    EXPECT_EQ(Dialog.Found.size(), 1U);
}

TEST_F(EchoCommandsTest, AFailureInTheMiddleIsToldAndChangesNothing) {
    Document(FullNoise(300000, 1), FullNoise(300000, 2));
    for (const std::int32_t HiFi : {100, 50}) {
        Dialog.Left = EchoParamsRec{0.08F, 0.06F, 5, 80, 10, HiFi};
        Progress.FailAt = 0.5F;
        EXPECT_EQ(Unchanged(Echo), std::vector<std::string>{"Echo Error|Disk full"});
        Progress.FailAt = -1;
    }
}

TEST_F(EchoCommandsTest, AnEchoBeyondAllPositionsFailsWithWords) {
    Dialog.Left = EchoParamsRec{100, 100, 100, 80, 0, 100};
    Document(FullNoise(1000, 1));
    WaveStore->WavFmtFreq = 215000;
    const std::vector<std::string> Told = Unchanged(Echo);
    ASSERT_EQ(Told.size(), 1U);
    EXPECT_TRUE(Told[0].starts_with("Echo Error|")) << Told[0];
}

TEST_F(EchoCommandsTest, TheBarMovesAllTheWay) {
    for (const std::int32_t HiFi : {100, 50}) {
        Dialog.Left = EchoParamsRec{0.08F, 100.0F, 3, 80, 10, HiFi};
        Document(FullNoise(300000, 1), FullNoise(300000, 2));
        WaveStore->WavFmtFreq = 8000;
        Progress.Values.clear();
        Echo();
        // The echo alone is five times as long as the sound.
        EXPECT_GE(Progress.Values.size(), 18U);
        EXPECT_TRUE(std::ranges::is_sorted(Progress.Values));
        EXPECT_EQ(Progress.Values.back(), 1);
    }
}

TEST_F(EchoCommandsTest, WithoutAWindowTheQuestionCountsAsCancelled) {
    Document(FullNoise(100, 1));
    SetEchoDialog(nullptr);
    EXPECT_TRUE(Unchanged(Echo).empty());
}

} // namespace
} // namespace quoril::test

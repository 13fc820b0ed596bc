#include "StorageChecks.h"
#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/CarrierWalk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <array>
#include <filesystem>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CarrierTest : public ::testing::Test {
  protected:
    [[nodiscard]] static std::vector<std::int32_t> Kinds(const BlockCarrBuffClass& Carrier) {
        std::vector<std::int32_t> Result;
        for (const std::int32_t BlockNo : Carrier.Blocks().Numbers())
            Result.push_back(Block(BlockNo).BlockKind);
        return Result;
    }
    [[nodiscard]] static std::vector<std::int16_t> Samples(BlockCarrBuffClass& Carrier) {
        std::vector<std::int16_t> Result;
        for (std::int32_t p = 1; p <= Carrier.WaveINos; ++p)
            Result.push_back(Carrier.WaveLR(p));
        return Result;
    }

    TestSession Session;
    ScriptedMessages Messages;
};

TEST_F(CarrierTest, SizeZeroIsRefusedAndKeepsTheBlocks) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    Carrier.ReDimSize(0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Error:\nCan not create buffer with zero size"));
    EXPECT_EQ(Samples(Carrier), TestSamples(1, 100));
}

TEST_F(CarrierTest, GrowingMakesSilentBlocksOfTheLongestLengthAndNoMemory) {
    BlockCarrBuffClass Carrier;
    Carrier.ReDimSize(524288 * 2 + 100);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(5, 5, 5));
    EXPECT_EQ(Block(Carrier.Blocks().At(2)).BlockLen, 100);
    EXPECT_EQ(Block(Carrier.Blocks().At(2)).BlockStart, 524288 * 2 + 1);
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(Carrier.WaveINos, 524288 * 2 + 100);
}

TEST_F(CarrierTest, WritingIntoSilenceMakesThatBlockAndOnlyThatOneMemory) {
    BlockCarrBuffClass Carrier;
    Carrier.ReDimSize(524288 * 3);
    Carrier.WaveLR(524288 + 5, 7);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(5, 2, 5));
    EXPECT_EQ(Carrier.WaveLR(524288 + 5), 7);
    EXPECT_EQ(Carrier.WaveLR(524288 + 6), 0);
    EXPECT_EQ(Carrier.WaveLR(1), 0);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(5, 2, 5));
}

TEST_F(CarrierTest, AShrinkInsideABlockCutsItAndFreesTheTail) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 600000);
    Carrier.ReDimSize(300000);
    EXPECT_EQ(Carrier.WaveINos, 300000);
    EXPECT_EQ(Carrier.BlkCount(), 1);
    EXPECT_EQ(MemoryUsed, 600000);
    EXPECT_EQ(Samples(Carrier), TestSamples(1, 300000));
    EXPECT_EQ(BrokenRule({&Carrier.Blocks().Numbers()}), "");
}

TEST_F(CarrierTest, PositionsWithoutABlockReadZeroAndTakeNothing) {
    BlockCarrBuffClass Carrier;
    EXPECT_EQ(Carrier.WaveLR(1), 0);
    CarrierFill(Carrier, 10);
    Carrier.WaveLR(11, 5);
    Carrier.WaveLR(0, 5);
    Carrier.WaveLR(-2147483647 - 1, 5);
    EXPECT_EQ(Carrier.WaveLR(11), 0);
    EXPECT_EQ(Carrier.WaveLR(0), 0);
    EXPECT_EQ(Carrier.CurrentBlock(), 0);
    EXPECT_EQ(Samples(Carrier), TestSamples(1, 10));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(CarrierTest, AStampIsGivenWhenTheBlockChangesAndNotAtEachAccess) {
    BlockCarrBuffClass Carrier;
    Carrier.ReDimSize(524288 * 2);
    (void)Carrier.WaveLR(524288 + 1);
    const std::int32_t Stamp = BlockUseCounter;
    (void)Carrier.WaveLR(524288 + 2);
    (void)Carrier.WaveLR(524288 + 3);
    EXPECT_EQ(BlockUseCounter, Stamp);
    (void)Carrier.WaveLR(1);
    EXPECT_EQ(BlockUseCounter, Stamp + 1);
}

TEST_F(CarrierTest, SamplesSurviveBeingPushedOutBetweenTwoWrites) {
    MemoryBudget = 2000;
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    (void)Carrier.WaveLR(1);
    for (int i = 0; i < 10; ++i)
        (void)MemoryBlock(200);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(3));
    Carrier.WaveLR(5, 4321);
    EXPECT_EQ(Carrier.WaveLR(5), 4321);
    for (int i = 0; i < 10; ++i)
        (void)MemoryBlock(200);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(3));
    std::vector<std::int16_t> Expected = TestSamples(1, 100);
    Expected[4] = 4321;
    EXPECT_EQ(Samples(Carrier), Expected);
}

TEST_F(CarrierTest, WritingAfterACopyWasTakenLeavesTheCopyAlone) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    BlockSet Copies;
    Carrier.BuffBlocksGetCopy(Copies);
    Carrier.WaveLR(100, 1); // through the window that was open before the copy
    EXPECT_EQ(BlockSamples(Copies[0]), TestSamples(1, 100));
    EXPECT_EQ(Carrier.WaveLR(100), 1);
    BlockSetFree(Copies);
}

TEST_F(CarrierTest, WritingAfterAPartWasCutOutLeavesThePartAlone) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    const std::int32_t Part = BlockCutRange(Carrier.Blocks().At(0), 91, 100);
    Carrier.WaveLR(100, 1); // through the window that was open before the cut
    EXPECT_EQ(BlockSamples(Part), TestSamples(91, 100));
    EXPECT_EQ(Carrier.WaveLR(100), 1);
    BlockFree(Part);
}

TEST_F(CarrierTest, TheFirstWriteAfterACopyKeepsItsBlockHoweverLongAgoItWasUsed) {
    MemoryBudget = 1000;
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    BlockSet Others;
    Carrier.BuffBlocksGetCopy(Others);
    for (int i = 0; i < 4; ++i)
        Others.push_back(MemoryBlock(100));
    EXPECT_EQ(MemoryUsed, 1000);
    Carrier.WaveLR(50, 1); // takes samples of its own: something has to go
    EXPECT_EQ(Carrier.WaveLR(50), 1);
    EXPECT_THAT(Kinds(Carrier), ElementsAre(2));
    EXPECT_EQ(Block(Others[0]).BlockKind, 3);
    EXPECT_EQ(BrokenRule({&Carrier.Blocks().Numbers(), &Others}), "");
    BlockSetFree(Others);
}

TEST_F(CarrierTest, WritingAfterItsBlockWasWrittenThroughLeavesTheFileBehind) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    BlockWriteThrough(Carrier.Blocks().At(0));
    Carrier.WaveLR(100, 1); // through the window that was open before
    EXPECT_THAT(Kinds(Carrier), ElementsAre(2));
    EXPECT_EQ(Carrier.WaveLR(100), 1);
    EXPECT_EQ(BrokenRule({&Carrier.Blocks().Numbers()}), "");
}

TEST_F(CarrierTest, TheEndOfACarrierFreesItsBlocksAndSweepsTheFiles) {
    {
        BlockCarrBuffClass Carrier;
        Carrier.BuffBlocksPutFresh({WorkFileBlock(100)});
        EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    }
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
    EXPECT_EQ(Block(1).BlockKind, 0);
}

TEST_F(CarrierTest, PuttingAFreshListFreesTheOldOneAndCountsTheNew) {
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, 100);
    const std::int32_t A = MemoryBlock(30, 1);
    const std::int32_t B = MemoryBlock(40, 31);
    Carrier.BuffBlocksPutFresh({B, A});
    EXPECT_EQ(Carrier.WaveINos, 70);
    EXPECT_EQ(Carrier.CurrentBlock(), B);
    EXPECT_EQ(MemoryUsed, 140);
    EXPECT_EQ(Samples(Carrier), TestSamples(1, 70));
    BlockSet Numbers;
    Carrier.BuffBlocksGet(Numbers);
    EXPECT_THAT(Numbers, ElementsAre(B, A));
}

TEST_F(CarrierTest, QuickReadingTakesWhatThereIsAndStampsNothing) {
    BlockCarrBuffClass Carrier;
    const std::int32_t A = MemoryBlock(30, 1);
    const std::int32_t B = WorkFileBlock(40, 41);
    Carrier.BuffBlocksPutFresh({A, B});
    const std::int32_t Stamp = BlockUseCounter;
    std::vector<std::int16_t> Buff(61, 99);
    Carrier.QuickBuffGet(21, Buff);
    std::vector<std::int16_t> Expected(61, 99);
    for (std::int32_t p = 21; p <= 80; ++p)
        if (p <= 30 || p >= 41)
            Expected[static_cast<std::size_t>(p - 20)] = TestSample(p);
    EXPECT_EQ(Buff, Expected);
    EXPECT_EQ(BlockUseCounter, Stamp);
    EXPECT_EQ(Block(B).BlockKind, 3);
}

/// What is left after a walk by runs is what is left after a walk by samples.
TEST_F(CarrierTest, ChangingByRunsLeavesTheSameAsChangingBySamples) {
    const std::string File = RawFile(Session, "a.raw", 3000, 1, 16);
    const auto Material = [&](BlockCarrBuffClass& Carrier) {
        const std::int32_t OrgNo = OrgFileAdd(File, 1, 16);
        const std::int32_t Silent = BlockNew(500, 5);
        BlockTable[static_cast<std::size_t>(Silent)].BlockStart = 2001;
        const std::int32_t Org = OrgBlock(OrgNo, 1000, 1, 2501);
        Carrier.BuffBlocksPutFresh({Org, MemoryBlock(1000, 1), WorkFileBlock(1000, 1001), Silent});
    };
    BlockCarrBuffClass BySamples;
    Material(BySamples);
    for (std::int32_t p = 1; p <= BySamples.WaveINos; ++p)
        BySamples.WaveLR(p, static_cast<std::int16_t>(BySamples.WaveLR(p) / 2));
    BlockCarrBuffClass ByRuns;
    Material(ByRuns);
    BlockSet Shared; // makes the change work beside shared samples
    ByRuns.BuffBlocksGetCopy(Shared);
    ChangeSideBySide(std::array{ChannelChange{
        &ByRuns, [](std::int32_t, std::span<const std::int16_t> In, std::span<std::int16_t> Out) {
            for (std::size_t i = 0; i < In.size(); ++i)
                Out[i] = static_cast<std::int16_t>(In[i] / 2);
        }}});
    EXPECT_EQ(Kinds(ByRuns), Kinds(BySamples));
    EXPECT_EQ(Samples(ByRuns), Samples(BySamples));
    EXPECT_EQ(BlockSamples(Shared[1]), TestSamples(1, 1000));
    BlockSetFree(Shared);
    EXPECT_EQ(BrokenRule({&ByRuns.Blocks().Numbers(), &BySamples.Blocks().Numbers()}), "");
}

TEST_F(CarrierTest, ReadingByRunsGivesEverySampleOnceAndGapsAsZero) {
    BlockCarrBuffClass Carrier;
    Carrier.BuffBlocksPutFresh({MemoryBlock(100, 201), WorkFileBlock(100, 1)});
    std::vector<std::int16_t> Seen;
    Carrier.WaveRunsRead(51, 400, 70, [&](std::int32_t First, std::span<const std::int16_t> In) {
        EXPECT_EQ(First, 51 + static_cast<std::int32_t>(Seen.size()));
        EXPECT_LE(In.size(), 70U);
        Seen.insert(Seen.end(), In.begin(), In.end());
    });
    std::vector<std::int16_t> Expected;
    for (std::int32_t p = 51; p <= 400; ++p)
        Expected.push_back(p <= 100 || (p > 200 && p <= 300) ? TestSample(p) : std::int16_t{0});
    EXPECT_EQ(Seen, Expected);
}

TEST_F(CarrierTest, AChangeDuringWhichItsBlockIsPushedOutLosesNothing) {
    constexpr std::int32_t Count = 100000; // several runs
    MemoryBudget = 3000;
    BlockCarrBuffClass Carrier;
    CarrierFill(Carrier, Count);
    const std::int32_t Mine = Carrier.Blocks().At(0);
    BlockSet Others;
    ChangeSideBySide(
        std::array{ChannelChange{&Carrier, [&](std::int32_t First, std::span<const std::int16_t> In,
                                               std::span<std::int16_t> Out) {
                                     for (std::size_t i = 0; i < In.size(); ++i)
                                         Out[i] = static_cast<std::int16_t>(~In[i]);
                                     if (First > 1)
                                         return;
                                     for (int i = 0; i < 8; ++i)
                                         Others.push_back(MemoryBlock(300));
                                     EXPECT_EQ(Block(Mine).BlockKind, 3);
                                 }}});
    std::vector<std::int16_t> Expected = TestSamples(1, Count);
    for (std::int16_t& One : Expected)
        One = static_cast<std::int16_t>(~One);
    EXPECT_EQ(Samples(Carrier), Expected);
    BlockSetFree(Others);
}

} // namespace
} // namespace quoril::test

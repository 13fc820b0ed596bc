#include "StorageChecks.h"
#include "base/Failure.h"
#include "platform/SampleMemory.h"
#include "settings/STD1.h"
#include "support/LargeFile.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <utility>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class BlockTableTest : public ::testing::Test {
  protected:
    TestSession Session;
    ScriptedMessages Messages;
};

TEST_F(BlockTableTest, DefaultBlockLenFollowsTheBudget) {
    MemoryBudget = 10000000;
    EXPECT_EQ(DefaultBlockLen(), 524288);
    MemoryBudget = 134217728; // / 20 = 6710886.4
    EXPECT_EQ(DefaultBlockLen(), 6710884);
    MemoryBudget = 536870912;
    EXPECT_EQ(DefaultBlockLen(), 26843544);
}

TEST_F(BlockTableTest, ANewMemoryBlockIsZeroAndCounted) {
    const std::int32_t No = BlockNew(1000, 2);
    EXPECT_EQ(No, 1);
    EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(Block(No).BlockStart, 0);
    EXPECT_EQ(Block(No).BlockStamp, 1);
    EXPECT_EQ(MemoryUsed, 2000);
    BlockTable[1].BlockStart = 1;
    EXPECT_EQ(BlockSamples(No), std::vector<std::int16_t>(1000, 0));
}

TEST_F(BlockTableTest, AKindThatCannotBeMadeIsToldAndTheSlotStaysFree) {
    EXPECT_EQ(BlockNew(10, 0), 1);
    EXPECT_EQ(BlockNew(10, 1), 1);
    EXPECT_EQ(BlockNew(10, 4), 1);
    EXPECT_EQ(Block(1).BlockKind, 0);
    const std::string Both =
        "Error - Can not create buffer block in both (memory and file) or in Orgfile";
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Error - can not make free block", Both, Both));
}

TEST_F(BlockTableTest, ANewWorkFileBlockWritesZeros) {
    const std::int32_t No = BlockNew(50, 3);
    EXPECT_EQ(Block(No).BlockKind, 3);
    EXPECT_EQ(Block(No).FilePos, 0);
    EXPECT_EQ(Block(No).BlockStamp, 0);
    EXPECT_EQ(WorkFileTable[1].WorkFileUse, 1);
    EXPECT_EQ(TestSession::ReadFile(WorkFileTable[1].WorkFileName),
              std::vector<std::uint8_t>(100, 0));
}

TEST_F(BlockTableTest, TheFirstFreeSlotIsTaken) {
    const std::int32_t A = BlockNew(1, 5);
    const std::int32_t B = BlockNew(1, 5);
    const std::int32_t C = BlockNew(1, 5);
    BlockFree(B);
    BlockFree(A);
    EXPECT_EQ(BlockNew(1, 5), A);
    EXPECT_EQ(BlockNew(1, 5), B);
    EXPECT_EQ(BlockNew(1, 5), C + 1);
}

TEST_F(BlockTableTest, CloningAFreeBlockIsTold) {
    const std::int32_t No = BlockNew(1, 5);
    BlockFree(No);
    EXPECT_EQ(BlockClone(No), 1);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Error - free block can not be copied"));
}

TEST_F(BlockTableTest, AClonesSamplesAreItsOwn) {
    const std::int32_t A = MemoryBlock(100);
    const std::int32_t B = BlockClone(A);
    EXPECT_EQ(MemoryUsed, 200) << "shared samples count once";
    EXPECT_EQ(Block(B).BlockKind, 2);
    EXPECT_EQ(Block(B).BlockStart, 1);
    EXPECT_GT(Block(B).BlockStamp, Block(A).BlockStamp);
    BlockToWrite(B)[0] = 77;
    EXPECT_EQ(MemoryUsed, 400) << "a clone that is written adds its own";
    EXPECT_EQ(BlockSample(A, 1), TestSample(1));
    EXPECT_EQ(BlockSample(B, 1), 77);
    BlockToWrite(A)[1] = 78;
    EXPECT_EQ(BlockSample(B, 2), TestSample(2));
    const BlockSet Both{A, B};
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&Both}), "");
}

TEST_F(BlockTableTest, BrakingAtTheFirstSampleOrPastTheLastIsToldAndMakesNothing) {
    const std::int32_t No = MemoryBlock(10, 5);
    std::int32_t First = -1;
    std::int32_t Second = -2;
    BlockBrake(No, 5, First, Second);
    BlockBrake(No, 15, First, Second);
    BlockBrake(No, 1, First, Second);
    EXPECT_EQ(First, -1);
    EXPECT_EQ(Second, -2);
    EXPECT_EQ(BlockTable.size(), 2U);
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>(3, "Error - Could not brake a block"));
}

TEST_F(BlockTableTest, BrakingKeepsEverySampleForEveryKind) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 16), 2, 16);
    const std::int32_t Both = MemoryBlock(100);
    BlockWriteThrough(Both);
    const std::int32_t Silent = BlockNew(100, 5);
    BlockTable[static_cast<std::size_t>(Silent)].BlockStart = 1;
    for (const std::int32_t No :
         {Both, MemoryBlock(100), WorkFileBlock(100), OrgBlock(OrgNo, 100, 1), Silent}) {
        const std::vector<std::int16_t> Before = BlockSamples(No);
        const std::int32_t Kind = Block(No).BlockKind;
        std::int32_t First = 0;
        std::int32_t Second = 0;
        BlockBrake(No, 31, First, Second);
        EXPECT_EQ(Block(First).BlockLen, 30);
        EXPECT_EQ(Block(Second).BlockLen, 70);
        EXPECT_EQ(Block(First).BlockStart, 1);
        EXPECT_EQ(Block(Second).BlockStart, 31);
        const std::int32_t Expected = Kind == 1 || Kind == 3 ? Kind : 2;
        EXPECT_EQ(Block(First).BlockKind, Expected) << Kind;
        EXPECT_EQ(Block(Second).BlockKind, Expected) << Kind;
        std::vector<std::int16_t> After = BlockSamples(First);
        const std::vector<std::int16_t> Tail = BlockSamples(Second);
        After.insert(After.end(), Tail.begin(), Tail.end());
        EXPECT_EQ(After, Before) << Kind;
    }
    BlockSet All;
    for (std::size_t No = 1; No < BlockTable.size(); ++No)
        if (BlockTable[No].BlockKind != 0)
            All.push_back(static_cast<std::int32_t>(No));
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&All}), "");
}

struct CutCase {
    std::int32_t From, To, Start, Length, FirstSample;
};

TEST_F(BlockTableTest, ABorderInALongBlockTouchesOnlyWhatIsNear) {
    constexpr std::int32_t Length = 300000;
    const std::string Name = RawFile(Session, "a.raw", Length, 2, 16);
    for (const bool Silent : {false, true}) {
        for (const std::int32_t Border : {2, 20000, 150000, 290000, Length}) {
            BlockListClass List;
            List.Append(Silent ? BlockNew(Length, 5)
                               : OrgBlock(OrgFileAdd(Name, 2, 16), Length, 2));
            BlockTable.at(static_cast<std::size_t>(List.At(0))).BlockStart = 1;
            const std::int32_t Used = MemoryUsed;
            List.MakeBorder(Border);
            EXPECT_LE(MemoryUsed - Used, 2 * 65536) << Border;
            EXPECT_EQ(MemoryUsed > Used, !Silent) << Border; // silence stays without samples
            std::vector<std::int16_t> All(Length, 1);
            std::int32_t Sum = 0;
            bool Begins = false;
            for (const std::int32_t No : List.Numbers()) {
                const std::vector<std::int16_t> Part = BlockSamples(No);
                std::copy(Part.begin(), Part.end(), All.begin() + Block(No).BlockStart - 1);
                Sum += Block(No).BlockLen;
                Begins = Begins || Block(No).BlockStart == Border;
            }
            EXPECT_TRUE(Begins) << Border;
            EXPECT_EQ(Sum, Length) << Border;
            EXPECT_EQ(All, Silent ? std::vector<std::int16_t>(Length) : TestSamples(1, Length, 2))
                << Border;
            EXPECT_EQ(BrokenRule({&List.Numbers()}), "");
            BlockSet Mine = List.Take();
            BlockSetFree(Mine);
        }
    }
}

TEST_F(BlockTableTest, ABorderThatCannotBeReadLeavesTheListAsItWas) {
    const std::string Name = RawFile(Session, "a.raw", 300000, 2, 16);
    const std::int32_t OrgNo = OrgFileAdd(Name, 2, 16);
    BlockListClass List;
    List.Append(OrgBlock(OrgNo, 300000, 1));
    std::filesystem::remove(Name);
    const BlockSet Before = List.Numbers();
    EXPECT_THROW(List.MakeBorder(150000), Failure);
    EXPECT_EQ(List.Numbers(), Before);
    EXPECT_EQ(OrgFileTable.at(1).OrgFileUse, 1);
    EXPECT_EQ(BrokenRule({&List.Numbers()}), "");
    BlockSet Mine = List.Take();
    BlockSetFree(Mine);
}

TEST_F(BlockTableTest, CuttingARangeCoversTheFourCases) {
    const std::int32_t No = MemoryBlock(10, 11); // 11 to 20
    const CutCase Cases[] = {
        {13, 15, 1, 3, 13}, // the range lies in the block
        {5, 30, 7, 10, 11}, // the block lies in the range
        {15, 30, 1, 6, 15}, // the block ends in the range
        {5, 12, 7, 2, 11},  // the block starts in the range
        {20, 40, 1, 1, 20}, // touching at one sample
        {1, 11, 11, 1, 11},
    };
    for (const CutCase& Case : Cases) {
        const std::int32_t Cut = BlockCutRange(No, Case.From, Case.To);
        ASSERT_NE(Cut, 0);
        EXPECT_EQ(Block(Cut).BlockStart, Case.Start);
        EXPECT_EQ(Block(Cut).BlockLen, Case.Length);
        EXPECT_EQ(BlockSamples(Cut),
                  TestSamples(Case.FirstSample, Case.FirstSample + Case.Length - 1));
        BlockFree(Cut);
    }
    EXPECT_EQ(BlockCutRange(No, 1, 10), 0);
    EXPECT_EQ(BlockCutRange(No, 21, 30), 0);
}

TEST_F(BlockTableTest, CuttingABlockInAFileReadsNothing) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 8), 2, 8);
    const std::int32_t Right = OrgBlock(OrgNo, 100, 2);
    const std::int32_t Work = WorkFileBlock(100);
    const std::int32_t UsedBefore = MemoryUsed;
    const std::int32_t CutOrg = BlockCutRange(Right, 10, 19);
    const std::int32_t CutWork = BlockCutRange(Work, 10, 19);
    EXPECT_EQ(Block(CutOrg).BlockKind, 4);
    EXPECT_EQ(Block(CutOrg).FilePos, Block(Right).FilePos + 9 * 2);
    EXPECT_EQ(OrgFileTable[1].OrgFileUse, 2);
    EXPECT_EQ(Block(CutWork).BlockKind, 3);
    EXPECT_EQ(Block(CutWork).FilePos, 1 + 9 * 2);
    EXPECT_EQ(WorkFileTable[1].WorkFileUse, 2);
    EXPECT_EQ(MemoryUsed, UsedBefore);
    EXPECT_EQ(OrgFileOpenNo, 0);
    EXPECT_EQ(BlockSamples(CutWork), TestSamples(10, 19));
}

class OrgFileForms : public BlockTableTest,
                     public ::testing::WithParamInterface<std::pair<std::int32_t, std::int32_t>> {};

std::int16_t AsStored(std::int16_t Sample, std::int32_t Bits) {
    return Bits == 16 ? Sample : static_cast<std::int16_t>((Sample & 255) - 128);
}

TEST_P(OrgFileForms, EveryWayOfReadingGivesTheSameSamples) {
    const auto [Channels, Bits] = GetParam();
    constexpr std::int32_t Frames = 70001; // more than one decoding buffer
    const std::int32_t OrgNo =
        OrgFileAdd(RawFile(Session, "a.raw", Frames, Channels, Bits), Channels, Bits);
    for (std::int32_t Channel = 1; Channel <= Channels; ++Channel) {
        const std::int32_t No = OrgBlock(OrgNo, Frames, Channel);
        std::vector<std::int16_t> Expected;
        for (std::int32_t p = 1; p <= Frames; ++p)
            Expected.push_back(AsStored(TestSample(p, Channel), Bits));
        EXPECT_EQ(BlockSamples(No), Expected);
        for (const std::int32_t p : {1, 2, 4711, Frames - 1, Frames})
            EXPECT_EQ(BlockSample(No, p), Expected[static_cast<std::size_t>(p) - 1]);
        EXPECT_EQ(BlockSample(No, 0), 0);
        EXPECT_EQ(BlockSample(No, Frames + 1), 0);
        EXPECT_EQ(Block(No).BlockKind, 4);
        EXPECT_EQ(Block(No).BlockStamp, 0);
        BlockToMemory(No);
        EXPECT_EQ(Block(No).BlockKind, 2);
        EXPECT_EQ(Block(No).FileNo, 0);
        EXPECT_EQ(BlockSamples(No), Expected);
    }
    EXPECT_EQ(OrgFileTable[1].OrgFileUse, 0);
    EXPECT_NE(OrgFileTable[1].OrgFileName, "");
    FilesSweep();
    EXPECT_EQ(OrgFileTable[1].OrgFileName, "");
    EXPECT_TRUE(fs::exists(Session.Path("a.raw")));
}

INSTANTIATE_TEST_SUITE_P(All, OrgFileForms,
                         ::testing::Values(std::pair{1, 8}, std::pair{2, 8}, std::pair{1, 16},
                                           std::pair{2, 16}));

TEST_F(BlockTableTest, APairIsReadTogether) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 90000, 2, 16), 2, 16);
    const std::int32_t Left = OrgBlock(OrgNo, 90000, 1);
    const std::int32_t Right = OrgBlock(OrgNo, 90000, 2);
    OrgPairAdd(Left, Right);
    BlockToMemory(Right);
    EXPECT_EQ(Block(Left).BlockKind, 2);
    EXPECT_EQ(Block(Left).BlockStamp, 0);
    EXPECT_GT(Block(Right).BlockStamp, 0);
    EXPECT_EQ(MemoryUsed, 360000);
    EXPECT_EQ(OrgFileTable[1].OrgFileUse, 0);
    EXPECT_TRUE(BlockPairTable.empty());
    EXPECT_EQ(BlockSamples(Left), TestSamples(1, 90000, 1));
    EXPECT_EQ(BlockSamples(Right), TestSamples(1, 90000, 2));
}

TEST_F(BlockTableTest, FreeingOneOfAPairLeavesTheOtherReadingAlone) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 16), 2, 16);
    const std::int32_t Left = OrgBlock(OrgNo, 100, 1);
    const std::int32_t Right = OrgBlock(OrgNo, 100, 2);
    OrgPairAdd(Left, Right);
    BlockFree(Left);
    EXPECT_TRUE(BlockPairTable.empty());
    BlockToMemory(Right);
    EXPECT_EQ(BlockSamples(Right), TestSamples(1, 100, 2));
}

TEST_F(BlockTableTest, BytesOfAnEightBitFileBecomeSignedSamples) {
    const std::int32_t OrgNo = OrgFileAdd(Session.WriteFile("b.raw", {0, 255, 128}), 1, 8);
    EXPECT_THAT(BlockSamples(OrgBlock(OrgNo, 3, 1)), ElementsAre(-128, 127, 0));
}

TEST_F(BlockTableTest, FourBlocksOverBudgetStayAndAFifthPushesOneOut) {
    MemoryBudget = 700;
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100);
    EXPECT_EQ(MemoryUsed, 800);
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
    (void)MemoryBlock(100);
    EXPECT_EQ(Block(1).BlockKind, 3);
    for (std::int32_t No = 2; No <= 5; ++No)
        EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(MemoryUsed, 800);
    EXPECT_EQ(BlockSamples(1), TestSamples(1, 100));
}

TEST_F(BlockTableTest, PushingStopsOnlyBelowTheBudget) {
    MemoryBudget = 1400;
    for (int i = 0; i < 8; ++i)
        (void)MemoryBlock(100);
    // The eighth block makes 1600: one goes, and 1400 is not below the budget, so another goes.
    EXPECT_EQ(MemoryUsed, 1200);
    EXPECT_EQ(Block(1).BlockKind, 3);
    EXPECT_EQ(Block(2).BlockKind, 3);
    EXPECT_EQ(Block(3).BlockKind, 2);
}

TEST_F(BlockTableTest, TheBlockLongestUnusedGoesFirst) {
    MemoryBudget = 1000;
    for (int i = 0; i < 5; ++i)
        (void)MemoryBlock(100);
    BlockToMemory(1);
    (void)MemoryBlock(100);
    EXPECT_EQ(Block(1).BlockKind, 2);
    EXPECT_EQ(Block(2).BlockKind, 3);
}

TEST_F(BlockTableTest, DriftOfTheSumIsMendedByTheHundredthCheck) {
    MemoryBudget = 1000;
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100);
    MemoryUsed += 5000;
    for (int i = 0; i < 99; ++i)
        BudgetEnforce();
    EXPECT_EQ(MemoryUsed, 5800);
    BudgetEnforce();
    EXPECT_EQ(MemoryUsed, 800);
    EXPECT_EQ(BudgetCheckCount, 0);
}

TEST_F(BlockTableTest, ABlockThatIsInAFileTooIsDroppedWithoutWriting) {
    const std::int32_t No = MemoryBlock(100);
    BlockWriteThrough(No);
    EXPECT_EQ(Block(No).BlockKind, 1);
    EXPECT_EQ(MemoryUsed, 200);
    const std::vector<std::string> Files = TestSession::SessionFiles();
    EXPECT_EQ(Files.size(), 1U);
    BlockToFile(No);
    EXPECT_EQ(Block(No).BlockKind, 3);
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(TestSession::SessionFiles(), Files);
    EXPECT_EQ(BlockSamples(No), TestSamples(1, 100));
}

TEST_F(BlockTableTest, EachMemoryBlockThatIsPushedOutGetsAFileOfItsOwn) {
    (void)WorkFileBlock(100);
    (void)WorkFileBlock(50);
    EXPECT_EQ(TestSession::SessionFiles().size(), 2U);
}

TEST_F(BlockTableTest, SilenceThatIsWrittenThroughIsCounted) {
    const std::int32_t No = BlockNew(100, 5);
    BlockWriteThrough(No);
    EXPECT_EQ(Block(No).BlockKind, 1);
    EXPECT_EQ(MemoryUsed, 200);
    const BlockSet Mine{No};
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&Mine}), "");
}

TEST_F(BlockTableTest, ABlockWhoseWorkFileWasTakenAwayIsWrittenAnew) {
    const std::int32_t No = MemoryBlock(100);
    BlockWriteThrough(No);
    fs::remove(WorkFileTable[1].WorkFileName);
    BlockToFile(No);
    EXPECT_EQ(Block(No).BlockKind, 3);
    EXPECT_EQ(BlockSamples(No), TestSamples(1, 100));
    const BlockSet Mine{No};
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&Mine}), "");
}

TEST_F(BlockTableTest, ReadingAWorkFileThatIsGoneFailsWithItsName) {
    const std::int32_t No = WorkFileBlock(100);
    const std::string Name = WorkFileTable[1].WorkFileName;
    fs::remove(Name);
    try {
        BlockToMemory(No);
        FAIL() << "no failure";
    } catch (const Failure& Error) {
        EXPECT_NE(std::string(Error.what()).find(Name), std::string::npos);
    }
    EXPECT_EQ(Block(No).BlockKind, 3);
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(BlockTableTest, FreeingTheLastBlockOfAUsersFileLeavesTheFileAndClearsTheEntry) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 10, 1, 16), 1, 16);
    BlockFree(OrgBlock(OrgNo, 10, 1));
    EXPECT_EQ(OrgFileTable[1].OrgFileName, "");
    EXPECT_TRUE(fs::exists(Session.Path("a.raw")));
}

TEST_F(BlockTableTest, ADecodedCopyInTheSessionFolderGoesWithItsLastBlock) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "qw1/decoded.raw", 10, 1, 16), 1, 16);
    BlockFree(OrgBlock(OrgNo, 10, 1));
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(BlockTableTest, AUsersFileWhosePathOnlyContainsThatOfTheSessionStays) {
    const std::string Inside = Session.Path("backup" + SessionDir);
    fs::create_directories(Inside);
    fs::create_directories(SessionDir + "0");
    for (const std::string& Name :
         {Inside + "/a.raw", SessionDir + "0/a.raw", SessionDir + "/../beside.raw"}) {
        fs::copy_file(RawFile(Session, "a.raw", 10, 1, 16), Name);
        BlockFree(OrgBlock(OrgFileAdd(Name, 1, 16), 10, 1));
        FilesSweep();
        EXPECT_TRUE(fs::exists(Name)) << Name;
    }
}

TEST_F(BlockTableTest, AWorkFileLivesAsLongAsAnyClone) {
    const std::int32_t A = WorkFileBlock(100);
    const std::int32_t B = BlockClone(A);
    BlockFree(A);
    FilesSweep();
    EXPECT_EQ(BlockSamples(B), TestSamples(1, 100));
    BlockFree(B);
    EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    FilesSweep();
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(BlockTableTest, ASilentBlockReadsZeroAndStaysAsItIs) {
    const std::int32_t No = BlockNew(10, 5);
    BlockTable[1].BlockStart = 1;
    EXPECT_EQ(BlockSample(No, 5), 0);
    EXPECT_EQ(Block(No).BlockKind, 5);
    EXPECT_EQ(Block(No).BlockStamp, 0);
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(BlockTableTest, MisuseIsToldInItsWords) {
    const std::int32_t No = BlockNew(1, 5);
    BlockFree(No);
    std::vector<std::int16_t> Buff;
    BlockToMemory(No);
    BlockToFile(No);
    BlockWriteThrough(No);
    BlockRangeRead(No, 1, 1, Buff);
    BlockToPrivateMemory(No);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Error - Free block can not be copied to buffer",
                            "Error - Free block can not be written to file",
                            "Error - Free block can not be written to file",
                            "Error - A block can not be read for quick buffer",
                            "Error - Free block can not be copied to buffer",
                            "Error - Block type has a problem in moving to buff"));
}

TEST_F(BlockTableTest, PrivateMemoryHasNoTieToAFile) {
    const std::int32_t No = WorkFileBlock(100);
    BlockToPrivateMemory(No);
    EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(Block(No).FileNo, 0);
    EXPECT_EQ(WorkFileTable[1].WorkFileUse, 0);
    EXPECT_EQ(BlockSamples(No), TestSamples(1, 100));
}

TEST_F(BlockTableTest, ReleasingByNameIgnoresCaseAndMovesTheSamplesToMemory) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "Name.raw", 100, 1, 16), 1, 16);
    const std::int32_t No = OrgBlock(OrgNo, 100, 1);
    (void)BlockSample(No, 1);
    OrgFileReleaseByName(Session.Path("nAME.raw"));
    EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(OrgFileOpenNo, 0);
    EXPECT_EQ(OrgFileTable[1].OrgFileName, "");
    fs::remove(Session.Path("Name.raw"));
    EXPECT_EQ(BlockSamples(No), TestSamples(1, 100));
}

TEST_F(BlockTableTest, AFileThatAnotherProgramChangedIsNeverRead) {
    const std::string Name = RawFile(Session, "a.raw", 100, 1, 16);
    const std::int32_t OrgNo = OrgFileAdd(Name, 1, 16);
    const std::int32_t No = OrgBlock(OrgNo, 100, 1);
    (void)BlockSample(No, 1); // the handle is open now
    Session.WriteFile("a.raw", std::vector<std::uint8_t>(200, 1));
    fs::last_write_time(Name, fs::last_write_time(Name) + std::chrono::seconds(5));
    EXPECT_THROW((void)BlockSample(No, 2), Failure);
    EXPECT_THROW(BlockToMemory(No), Failure); // opened anew
    EXPECT_EQ(Block(No).BlockKind, 4);
}

TEST_F(BlockTableTest, AChangeDuringAReadOfManyPlacesIsNoticed) {
    FileMemoClass Store;
    const std::string Name = RawFile(Session, "a.raw", 100, 1, 16);
    const std::int32_t OrgNo = OrgFileAdd(Name, 1, 16);
    BlockCarrBuffClass Carrier;
    Carrier.BuffBlocksPutFresh({OrgBlock(OrgNo, 100, 1)});
    Store.WaveDataInsert(1, 1, &Carrier, nullptr, "", true);
    SampleArray Samples;
    Store.WaveSamples(1, {5, 7, 100, 101}, Samples);
    EXPECT_THAT(Samples, ElementsAre(TestSample(5), TestSample(7), TestSample(100), 0));
    fs::last_write_time(Name, fs::last_write_time(Name) + std::chrono::seconds(5));
    EXPECT_THROW(Store.WaveSamples(1, {5, 7}, Samples), Failure);
    EXPECT_THROW((void)Store.WaveL(5), Failure);
}

TEST_F(BlockTableTest, ADiskThatTakesNothingLeavesTheBlockInMemory) {
    const std::int32_t No = MemoryBlock(100);
    fs::remove_all(SessionDir);
    EXPECT_THROW(BlockToFile(No), Failure);
    EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(BlockSamples(No), TestSamples(1, 100));
    const BlockSet Mine{No};
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&Mine}), "");
}

TEST_F(BlockTableTest, ABlockThatFindsNoRoomIsNotLeftBehind) {
    MemoryBudget = 700;
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100);
    fs::remove_all(SessionDir);
    EXPECT_THROW((void)BlockNew(100, 2), Failure);
    EXPECT_EQ(MemoryUsed, 800);
    const BlockSet Mine{1, 2, 3, 4};
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{&Mine}), "");
}

TEST_F(BlockTableTest, AClonesFirstWriteThatFindsNoRoomChangesNoSample) {
    MemoryBudget = 700;
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100);
    fs::remove_all(SessionDir);
    const std::int32_t Clone = BlockClone(2);
    EXPECT_EQ(MemoryUsed, 800);
    BlockCarrBuffClass Carrier;
    Carrier.BuffBlocksPutFresh({Clone});
    EXPECT_THROW(Carrier.WaveLR(1, 77), Failure);
    EXPECT_EQ(BlockSamples(Clone), TestSamples(1, 100));
    EXPECT_EQ(BlockSamples(2), TestSamples(1, 100));
    const BlockSet Mine{1, 2, 3, 4};
    EXPECT_EQ(BrokenRule({&Mine, &Carrier.Blocks().Numbers()}), "");
}

TEST_F(BlockTableTest, BlocksThatShareSamplesGoTogetherAndAreWrittenOnce) {
    MemoryBudget = 1100;
    const std::int32_t Old = MemoryBlock(100);
    const std::int32_t Part = BlockCutRange(Old, 21, 60);
    const std::int32_t Clone = BlockClone(Old);
    for (int i = 0; i < 5; ++i)
        (void)MemoryBlock(100, 500);
    EXPECT_EQ(MemoryUsed, 1000);
    EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    for (const std::int32_t No : {Old, Part, Clone}) {
        EXPECT_EQ(Block(No).BlockKind, 3);
        EXPECT_EQ(Block(No).FileNo, Block(Old).FileNo);
    }
    EXPECT_EQ(BlockSamples(Old), TestSamples(1, 100));
    EXPECT_EQ(BlockSamples(Part), TestSamples(21, 60));
    EXPECT_EQ(BlockSamples(Clone), TestSamples(1, 100));
    BlockSet All;
    for (std::int32_t No = 1; No < static_cast<std::int32_t>(BlockTable.size()); ++No)
        All.push_back(No);
    EXPECT_EQ(BrokenRule({&All}), "");
    BlockFree(Old);
    FilesSweep();
    EXPECT_EQ(BlockSamples(Clone), TestSamples(1, 100)) << "the file stays for the others";
}

TEST_F(BlockTableTest, ACloneThatWasJustUsedKeepsTheOldBlockInMemory) {
    MemoryBudget = 1000;
    const std::int32_t Old = MemoryBlock(100);
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100, 500);
    const std::int32_t Clone = BlockClone(Old);
    (void)MemoryBlock(100, 500);
    EXPECT_EQ(Block(Old).BlockKind, 2) << "giving it up alone would free nothing";
    EXPECT_EQ(Block(Clone).BlockKind, 2);
    EXPECT_EQ(Block(2).BlockKind, 3);
}

TEST_F(BlockTableTest, AFullDiskLeavesBlocksThatShareSamplesInMemory) {
    MemoryBudget = 900;
    const std::int32_t Old = MemoryBlock(100);
    const std::int32_t Clone = BlockClone(Old);
    for (int i = 0; i < 3; ++i)
        (void)MemoryBlock(100, 500);
    fs::remove_all(SessionDir);
    EXPECT_THROW((void)MemoryBlock(100, 500), Failure);
    EXPECT_EQ(Block(Old).BlockKind, 2);
    EXPECT_EQ(Block(Clone).BlockKind, 2);
    BlockFree(Old);
    EXPECT_EQ(MemoryUsed, 800) << "the clone holds them still";
    BlockFree(Clone);
    EXPECT_EQ(MemoryUsed, 600);
}

TEST_F(BlockTableTest, CutPiecesOfABlockCountOnceAndEachGoesByItself) {
    const std::int32_t Whole = MemoryBlock(100);
    std::int32_t First = 0;
    std::int32_t Second = 0;
    BlockBrake(Whole, 41, First, Second);
    EXPECT_EQ(MemoryUsed, 200);
    BlockFree(Whole);
    EXPECT_EQ(MemoryUsed, 200);
    BlockToFile(First);
    EXPECT_EQ(MemoryUsed, 120);
    EXPECT_EQ(Block(Second).BlockKind, 2);
    BlockFree(Second);
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(BlockSamples(First), TestSamples(1, 40));
}

TEST_F(BlockTableTest, PiecesThatOnlyTouchGoOneByOne) {
    MemoryBudget = 1000;
    const std::int32_t Whole = MemoryBlock(100);
    std::int32_t First = 0;
    std::int32_t Second = 0;
    BlockBrake(Whole, 41, First, Second);
    BlockFree(Whole);
    for (int i = 0; i < 4; ++i)
        (void)MemoryBlock(100, 500);
    BlockToMemory(Second); // used again
    (void)MemoryBlock(30, 500);
    EXPECT_EQ(Block(First).BlockKind, 3);
    EXPECT_EQ(Block(Second).BlockKind, 2);
    EXPECT_EQ(MemoryUsed, 980);
}

TEST_F(BlockTableTest, SmallPartsDoNotKeepLargeBuffersAliveOverTheBudget) {
    for (int i = 0; i < 12; ++i) {
        const std::int32_t Whole = BlockNew(500000, 2);
        BlockTable[static_cast<std::size_t>(Whole)].BlockStart = 1;
        (void)BlockCutRange(Whole, 1, 10);
        BlockFree(Whole);
    }
    EXPECT_EQ(MemoryUsed, 240);
    const std::int32_t Clone = BlockClone(13);
    (void)BlockNew(4500000, 2);
    (void)BlockNew(1500000, 2); // passes the budget
    EXPECT_LE(SampleMemoryInUse(), 12500000);
    EXPECT_EQ(Block(Clone).BlockKind, 2);
    EXPECT_EQ(Block(Clone).BlockData.BufferId(), Block(13).BlockData.BufferId());
    EXPECT_EQ(Block(Clone).BlockData.BufferLength(), 10) << "what was shared is shared still";
}

TEST_F(BlockTableTest, SmallPartsOfLargeBuffersDoNotPileUpBelowTheBudgetEither) {
    for (int i = 0; i < 100; ++i) {
        const std::int32_t Whole = BlockNew(500000, 2);
        BlockTable[static_cast<std::size_t>(Whole)].BlockStart = 1;
        (void)BlockCutRange(Whole, 1, 10);
        BlockFree(Whole);
    }
    EXPECT_EQ(MemoryUsed, 2000);
    EXPECT_LE(SampleMemoryInUse(), MemoryBudget + 2000000);
}

TEST_F(BlockTableTest, APairIsMadeOfTheTwoChannelsOfOneStretchWhicheverIsAskedFirst) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 16), 2, 16);
    const std::int32_t Left = OrgBlock(OrgNo, 100, 1);
    const std::int32_t Right = OrgBlock(OrgNo, 100, 2);
    const std::int32_t Shorter = BlockCutRange(Right, 1, 99);
    const std::int32_t Later = BlockCutRange(Right, 2, 100);
    EXPECT_FALSE(OrgPairMake(Left, Left));
    EXPECT_FALSE(OrgPairMake(Left, Shorter));
    EXPECT_FALSE(OrgPairMake(Shorter, Later));
    EXPECT_FALSE(OrgPairMake(Left, 0));
    EXPECT_TRUE(BlockPairTable.empty());
    EXPECT_TRUE(OrgPairMake(Right, Left));
    ASSERT_EQ(BlockPairTable.size(), 1U);
    EXPECT_EQ(BlockPairTable[0].LeftNo, Left);
    EXPECT_EQ(BlockPairTable[0].RightNo, Right);
    BlockToMemory(Right);
    EXPECT_EQ(BlockSamples(Left), TestSamples(1, 100, 1));
    EXPECT_EQ(BlockSamples(Right), TestSamples(1, 100, 2));
    const std::int32_t Mono = OrgFileAdd(RawFile(Session, "b.raw", 100, 1, 16), 1, 16);
    const std::int32_t One = OrgBlock(Mono, 100, 1);
    const std::int32_t Next = OrgBlock(Mono, 99, 1);
    BlockTable[static_cast<std::size_t>(One)].BlockLen = 99;
    BlockTable[static_cast<std::size_t>(Next)].FilePos = 3;
    EXPECT_FALSE(OrgPairMake(One, Next)) << "neighbours of one channel";
}

TEST_F(BlockTableTest, AFileIsLeftWithOneReadingForAllThatHaveTheSameOfIt) {
    for (const std::int32_t Bits : {8, 16}) {
        constexpr std::int32_t Frames = 200000;
        const std::string Name = RawFile(Session, "left.raw", Frames, 2, Bits);
        const std::int32_t OrgNo = OrgFileAdd(Name, 2, Bits);
        BlockSet All;
        for (std::int32_t Channel = 1; Channel <= 2; ++Channel) {
            const std::int32_t Whole = OrgBlock(OrgNo, Frames, Channel);
            for (std::int32_t From = 1; From <= Frames; From += 70000) {
                All.push_back(BlockCutRange(Whole, From, std::min(From + 69999, Frames)));
                BlockTable[static_cast<std::size_t>(All.back())].BlockStart = From;
                All.push_back(BlockClone(All.back()));
            }
            All.push_back(BlockCutRange(Whole, 1, 1000)); // the same place, and not the same
            BlockFree(Whole);
        }
        std::vector<std::vector<std::int16_t>> Held;
        for (const std::int32_t No : All)
            Held.push_back(BlockSamples(No));
        const std::int64_t Before = BytesReadSoFar();
        OrgFileReleaseByName(Name);
        EXPECT_LE(BytesReadSoFar() - Before, Frames * 2 * (Bits / 8) * 102 / 100);
        EXPECT_EQ(MemoryUsed, 4 * Frames + 4000) << "what two have is held once";
        EXPECT_TRUE(BlockPairTable.empty());
        EXPECT_EQ(BrokenRule({&All}), "");
        for (std::size_t i = 0; i < All.size(); ++i)
            EXPECT_TRUE(BlockSamples(All[i]) == Held[i]) << i;
        BlockSetFree(All);
    }
}

TEST_F(BlockTableTest, AFirstWriteThatCannotBeCountedFailsAndTheSamplesStayShared) {
    const std::int32_t No = MemoryBlock(100);
    const std::int32_t Clone = BlockClone(No);
    const std::int32_t Used = std::exchange(MemoryUsed, 2147483600);
    EXPECT_THROW((void)BlockToWrite(Clone), Failure);
    EXPECT_EQ(MemoryUsed, 2147483600);
    MemoryUsed = Used;
    EXPECT_EQ(Block(Clone).BlockData.BufferId(), Block(No).BlockData.BufferId());
    EXPECT_EQ(BlockSamples(Clone), TestSamples(1, 100));
    const BlockSet Mine{No, Clone};
    EXPECT_EQ(BrokenRule({&Mine}), "");
}

TEST_F(BlockTableTest, PositionsThatOverflowFailAndChangeNothing) {
    const std::int32_t No = BlockNew(2000000000, 5);
    EXPECT_THROW(BlockToMemory(No), Failure);
    EXPECT_EQ(Block(No).BlockKind, 5);
    EXPECT_EQ(MemoryUsed, 0);
}

} // namespace
} // namespace quoril::test

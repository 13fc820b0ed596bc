#include "StorageChecks.h"
#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/PortableBlock.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

class PortableTest : public ::testing::Test {
  protected:
    TestSession Session;
    ScriptedMessages Messages;
};

TEST_F(PortableTest, TheWordsStandAsTheyAreTold) {
    const std::int32_t Silent = BlockNew(300, 5);
    BlockTable[static_cast<std::size_t>(Silent)].BlockStart = 11;
    WorkFileTable.push_back({"abcde", 1});
    const std::int32_t Work = BlockNew(20, 5);
    BlockTable[static_cast<std::size_t>(Work)] = {1, 7, 311, 3, {}, 20, 0};
    std::vector<std::int32_t> Longs;
    BlockSetToLongs({Silent, Work}, Longs);
    // " " packs into 2 + 0.25, rounded 2; "abcde" into 2 + 1.25, rounded 3.
    EXPECT_THAT(Longs, ElementsAre(20, 2,                         //
                                   2, 1, 32, 300, 5, 11, 0, 0, 0, //
                                   3, 5, 0x64636261, 0x65, 20, 3, 311, 7, 0, 0));
    WorkFileTable[1] = {};
    BlockTable[static_cast<std::size_t>(Work)] = {};
}

TEST_F(PortableTest, TheCountOfANamesWordsIsRoundedToEven) {
    const std::pair<std::size_t, std::int32_t> Cases[] = {{1, 2}, {2, 2}, {3, 3}, {4, 3},  {5, 3},
                                                          {6, 4}, {7, 4}, {8, 4}, {10, 4}, {14, 6}};
    for (const auto& [Length, Count] : Cases) {
        WorkFileTable.assign(2, {std::string(Length, 'x'), 1});
        const std::int32_t No = BlockNew(1, 5);
        BlockTable[static_cast<std::size_t>(No)] = {1, 1, 1, 3, {}, 1, 0};
        std::vector<std::int32_t> Longs;
        BlockSetToLongs({No}, Longs);
        EXPECT_EQ(Longs[2], Count) << Length;
        EXPECT_EQ(Longs[3], static_cast<std::int32_t>(Length));
        BlockTable[static_cast<std::size_t>(No)] = {};
        WorkFileTable.assign(1, {});
    }
}

TEST_F(PortableTest, AMemoryBlockIsToldOfAndKeepsTheEntryOfTheOneBefore) {
    const std::int32_t Silent = BlockNew(3, 5);
    const std::int32_t Memory = MemoryBlock(5);
    std::vector<std::int32_t> Longs;
    BlockSetToLongs({Silent, Memory}, Longs);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Error - Block should be written to file before converting"));
    EXPECT_EQ(Longs[15], 5);
}

TEST_F(PortableTest, OwnBlocksComeBackSharingTheirFiles) {
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 16), 2, 16);
    const std::int32_t Org = OrgBlock(OrgNo, 100, 2);
    const std::int32_t Work = WorkFileBlock(50, 101);
    const std::int32_t Both = MemoryBlock(10, 151);
    BlockWriteThrough(Both);
    const std::int32_t Silent = BlockNew(5, 5);
    BlockTable[static_cast<std::size_t>(Silent)].BlockStart = 161;
    const BlockSet Mine{Org, Work, Both, Silent};
    std::vector<std::int32_t> Longs;
    BlockSetToLongs(Mine, Longs);
    BlockSet Back;
    LongsToBlockSet(Longs, Back, true);
    ASSERT_EQ(Back.size(), 4U);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(BlockSamples(Back[i]), BlockSamples(Mine[i])) << i;
        EXPECT_EQ(Block(Back[i]).BlockStart, Block(Mine[i]).BlockStart);
    }
    EXPECT_EQ(Block(Back[0]).BlockKind, 4);
    EXPECT_EQ(Block(Back[2]).BlockKind, 3);
    EXPECT_EQ(BrokenRule({&Mine, &Back}), "");
}

TEST_F(PortableTest, BothChannelsOfAForeignFileComeBackAndNothingElseStays) {
    const std::string Org = RawFile(Session, "org.raw", 100, 2, 16);
    std::vector<std::int32_t> Left;
    std::vector<std::int32_t> Right;
    {
        const std::int32_t OrgNo = OrgFileAdd(Org, 2, 16);
        const BlockSet L{OrgBlock(OrgNo, 60, 1, 1), OrgBlock(OrgNo, 40, 1, 61)};
        // The second one of the right channel is no half of a pair.
        const BlockSet R{OrgBlock(OrgNo, 60, 2, 1), OrgBlock(OrgNo, 30, 2, 61)};
        BlockSetToLongs(L, Left);
        BlockSetToLongs(R, Right);
        for (BlockSet Each : {L, R})
            BlockSetFree(Each);
    }
    BlockSet BackL;
    BlockSet BackR;
    ForeignLongsToBlockSets(Left, Right, BackL, BackR);
    ASSERT_EQ(BackL.size(), 2U);
    ASSERT_EQ(BackR.size(), 2U);
    for (const BlockSet& Each : {BackL, BackR})
        for (const std::int32_t No : Each)
            EXPECT_EQ(Block(No).BlockKind, 2);
    EXPECT_EQ(BlockSamples(BackL[0]), TestSamples(1, 60));
    EXPECT_EQ(BlockSamples(BackL[1]), TestSamples(1, 40));
    EXPECT_EQ(BlockSamples(BackR[1]), TestSamples(1, 30, 2));
    EXPECT_EQ(BlockSamples(BackR[0]), TestSamples(1, 60, 2));
    EXPECT_EQ(BrokenRule({&BackL, &BackR}), "");
    EXPECT_TRUE(std::filesystem::exists(Org));
    EXPECT_TRUE(BlockPairTable.empty());
    for (const OrgFileRec& File : OrgFileTable)
        EXPECT_TRUE(File.OrgFileName.empty());
    for (BlockSet* const Each : {&BackL, &BackR})
        BlockSetFree(*Each);
    // One that cannot be read leaves nothing of either channel.
    std::filesystem::remove(Org);
    EXPECT_THROW(ForeignLongsToBlockSets(Left, Right, BackL, BackR), Failure);
    for (const BlockRec& Each : BlockTable)
        EXPECT_EQ(Each.BlockKind, 0);
    for (const OrgFileRec& File : OrgFileTable)
        EXPECT_TRUE(File.OrgFileName.empty());
}

TEST_F(PortableTest, ForeignFilesAreReadAtOnceAndNeitherKeptNorDeleted) {
    const std::string Foreign = RawFile(Session, "foreign.tmp", 100, 1, 16);
    const std::string Org = RawFile(Session, "org.raw", 100, 2, 16);
    std::vector<std::int32_t> Longs;
    {
        WorkFileTable.push_back({Foreign, 1});
        const std::int32_t Work = BlockNew(100, 5);
        BlockTable[static_cast<std::size_t>(Work)] = {1, 1, 1, 3, {}, 100, 0};
        const std::int32_t OrgNo = OrgFileAdd(Org, 2, 16);
        const std::int32_t Right = OrgBlock(OrgNo, 100, 2, 101);
        BlockSetToLongs({Work, Right}, Longs);
        WorkFileTable[1] = {};
        BlockTable[static_cast<std::size_t>(Work)] = {};
        BlockFree(Right);
    }
    BlockSet Back;
    LongsToBlockSet(Longs, Back, true);
    ASSERT_EQ(Back.size(), 2U);
    EXPECT_EQ(Block(Back[0]).BlockKind, 2);
    EXPECT_EQ(Block(Back[1]).BlockKind, 2);
    EXPECT_EQ(BlockSamples(Back[0]), TestSamples(1, 100));
    EXPECT_EQ(BlockSamples(Back[1]), TestSamples(1, 100, 2));
    EXPECT_EQ(BrokenRule({&Back}), "");
    BlockSetFree(Back);
    FilesSweep();
    EXPECT_TRUE(fs::exists(Foreign));
    EXPECT_TRUE(fs::exists(Org));
}

TEST_F(PortableTest, DamagedWordsFailAndLeaveNothingBehind) {
    const std::string Foreign = RawFile(Session, "foreign.tmp", 100, 1, 16);
    WorkFileTable.push_back({Foreign, 1});
    const std::int32_t Work = BlockNew(100, 5);
    BlockTable[static_cast<std::size_t>(Work)] = {1, 1, 1, 3, {}, 100, 0};
    const std::int32_t Silent = BlockNew(5, 5);
    BlockTable[static_cast<std::size_t>(Silent)].BlockStart = 101;
    std::vector<std::int32_t> Good;
    BlockSetToLongs({Silent, Work}, Good);
    WorkFileTable[1] = {};
    BlockTable[static_cast<std::size_t>(Work)] = {};
    BlockFree(Silent);
    int Refused = 0;
    for (std::size_t Place = 0; Place < Good.size(); ++Place) {
        for (const std::int32_t Wrong :
             {0, -1, 1, 3, 4, 2147483647, -2147483647 - 1, 0x7FFFFF, 1000}) {
            std::vector<std::int32_t> Longs = Good;
            Longs[Place] = Wrong;
            BlockSet Back;
            try {
                LongsToBlockSet(Longs, Back, true);
            } catch (const Failure&) {
                ++Refused;
                EXPECT_THAT(Back, IsEmpty());
            }
            BlockSetFree(Back);
            EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "") << Place << " " << Wrong;
        }
    }
    EXPECT_GT(Refused, 50);
    for (std::size_t Length = 0; Length < Good.size(); ++Length) {
        BlockSet Back;
        EXPECT_THROW(
            LongsToBlockSet({Good.begin(), Good.begin() + static_cast<std::ptrdiff_t>(Length)},
                            Back, true),
            Failure);
        EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "");
    }
    EXPECT_TRUE(fs::exists(Foreign));
}

TEST_F(PortableTest, NumbersThatDoNotFitTogetherAreRefusedBeforeAnythingIsMadeOfThem) {
    constexpr std::int32_t Most = 2147483647;
    enum Field {
        LastIndex,
        Blocks,
        NameCount,
        NameBytes,
        Name,
        Length,
        Kind,
        Start,
        Pos,
        Chns,
        Bits
    };
    const std::vector<std::int32_t> Silent = {10, 1, 2, 1, 'x', 10, 5, 1, 0, 0, 0};
    const std::vector<std::int32_t> Work = {10, 1, 2, 1, 'x', 10, 3, 1, 1, 0, 0};
    const std::vector<std::int32_t> Original = {10, 1, 2, 1, 'x', 10, 4, 1, 1, 2, 16};
    const auto IsTaken = [](std::vector<std::int32_t> Longs, Field Which, std::int32_t Value) {
        Longs[Which] = Value;
        try {
            PortableBlockReader Reader(Longs);
            while (!Reader.AtEnd())
                (void)Reader.NextBlock();
            return true;
        } catch (const Failure&) {
            return false;
        }
    };
    for (const auto& Words : {Silent, Work, Original}) {
        EXPECT_TRUE(IsTaken(Words, Length, 0));
        EXPECT_TRUE(IsTaken(Words, Length, Most - 1));
        EXPECT_TRUE(IsTaken(Words, Start, 100));
        for (const std::int32_t Wrong : {-1, 9, 11, 0, Most})
            EXPECT_FALSE(IsTaken(Words, LastIndex, Wrong)) << Wrong;
        for (const std::int32_t Wrong : {-1, 2, Most})
            EXPECT_FALSE(IsTaken(Words, Blocks, Wrong)) << Wrong;
        EXPECT_TRUE(IsTaken(Words, Blocks, 0));
        for (const std::int32_t Wrong : {-1, 0, 9, Most})
            EXPECT_FALSE(IsTaken(Words, NameCount, Wrong)) << Wrong;
        for (const std::int32_t Wrong : {-1, 5, Most})
            EXPECT_FALSE(IsTaken(Words, NameBytes, Wrong)) << Wrong;
        EXPECT_FALSE(IsTaken(Words, Name, 0)) << "a zero byte";
        for (const std::int32_t Wrong : {-1, Most})
            EXPECT_FALSE(IsTaken(Words, Length, Wrong)) << Wrong;
        for (const std::int32_t Wrong : {-1, 0, Most - 9})
            EXPECT_FALSE(IsTaken(Words, Start, Wrong)) << Wrong;
    }
    EXPECT_TRUE(IsTaken(Silent, Pos, 0));
    for (const auto& Words : {Work, Original})
        for (const std::int32_t Wrong : {-1, 0})
            EXPECT_FALSE(IsTaken(Words, Pos, Wrong)) << Wrong;
    EXPECT_TRUE(IsTaken(Work, Chns, 7));
    EXPECT_TRUE(IsTaken(Work, Bits, 7));
    EXPECT_TRUE(IsTaken(Original, Chns, 1));
    EXPECT_TRUE(IsTaken(Original, Bits, 8));
    for (const std::int32_t Wrong : {-1, 0, 3}) {
        EXPECT_FALSE(IsTaken(Original, Chns, Wrong)) << Wrong;
        EXPECT_FALSE(IsTaken(Original, Bits, Wrong)) << Wrong;
    }
    EXPECT_FALSE(IsTaken(Original, Bits, 24));
}

TEST_F(PortableTest, AnUnknownKindIsTold) {
    BlockSet Back;
    LongsToBlockSet({10, 1, 2, 1, 32, 4, 2, 1, 0, 0, 0}, Back, false);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Error - Block type can not be converted to Block"));
    BlockSetFree(Back);
}

} // namespace
} // namespace quoril::test

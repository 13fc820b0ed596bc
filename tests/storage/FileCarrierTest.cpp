#include "StorageChecks.h"
#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/FileCarrBuffClass.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

/// Indexes from 1, as the carrier takes it.
std::vector<std::int16_t> Indexed(std::int32_t From, std::int32_t To) {
    std::vector<std::int16_t> Result = TestSamples(From, To);
    Result.insert(Result.begin(), 0);
    return Result;
}

class FileCarrierTest : public ::testing::Test {
  protected:
    TestSession Session;
    ScriptedMessages Messages;
};

TEST_F(FileCarrierTest, TheWindowFollowsTheBudgetAndIsNeverSmall) {
    EXPECT_EQ(FileCarrBuffClass().BuffLength(), 500000);
    MemoryBudget = 134217728;
    EXPECT_EQ(FileCarrBuffClass().BuffLength(), 6710884);
}

TEST_F(FileCarrierTest, ANewCarrierIsNeverEmptyOnceItHasAFile) {
    FileCarrBuffClass Carrier;
    EXPECT_EQ(Carrier.WaveINos, 0);
    Carrier.MovePointer(0, 0);
    EXPECT_EQ(Carrier.WaveINos, 1);
    EXPECT_EQ(Carrier.WaveLR(1), 0);
    EXPECT_EQ(fs::file_size(Carrier.FileName1()), 2U);
}

TEST_F(FileCarrierTest, RunsThatAreLongerThanTheWindowAreRefused) {
    FileCarrBuffClass Carrier;
    Carrier.BuffLength(100);
    Carrier.BuffPut(1, Indexed(1, 101));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Out of limit - Error"));
    EXPECT_EQ(Carrier.WaveINos, 1);
    Carrier.BuffPut(0, Indexed(1, 10));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Out of limit - Error"));
    Carrier.BuffPut(1, {0});
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(FileCarrierTest, WhatIsPutInSequenceStandsInTheFile) {
    FileCarrBuffClass Carrier;
    Carrier.BuffLength(100);
    for (std::int32_t p = 1; p <= 1000; p += 70)
        Carrier.BuffPut(p, Indexed(p, std::min(p + 69, 1000)));
    EXPECT_EQ(Carrier.WaveINos, 1000);
    const std::vector<std::uint8_t> Bytes = TestSession::ReadFile(Carrier.FileName1());
    ASSERT_EQ(Bytes.size(), 2000U);
    for (std::int32_t p = 1; p <= 1000; ++p) {
        const auto At = static_cast<std::size_t>(p - 1) * 2;
        EXPECT_EQ(static_cast<std::int16_t>(Bytes[At] | Bytes[At + 1] << 8), TestSample(p));
    }
    std::vector<std::int16_t> Got(91);
    Carrier.BuffGet(600, Got);
    EXPECT_EQ(Got, Indexed(600, 689));
}

TEST_F(FileCarrierTest, ReadingBehindTheEndIsRefused) {
    FileCarrBuffClass Carrier;
    Carrier.BuffPut(1, Indexed(1, 50));
    std::vector<std::int16_t> Got(11, 3);
    Carrier.BuffGet(42, Got);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Out of limit - Error"));
    EXPECT_EQ(Got, std::vector<std::int16_t>(11, 3));
    EXPECT_EQ(Carrier.WaveLR(51), 0);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Out of limit - Error"));
}

TEST_F(FileCarrierTest, PositionZeroIsHeldApartAndNeverReachesTheFile) {
    FileCarrBuffClass Carrier;
    Carrier.WaveLR(0, 123);
    EXPECT_EQ(Carrier.WaveLR(0), 123);
    EXPECT_EQ(Carrier.FileName1(), "");
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(FileCarrierTest, SamplesOneByOneSurviveTheMovesOfTheWindow) {
    FileCarrBuffClass Carrier;
    Carrier.ReDimSize(500, true);
    Carrier.BuffLength(64);
    for (std::int32_t p = 500; p >= 1; --p)
        Carrier.WaveLR(p, TestSample(p));
    for (std::int32_t p = 1; p <= 500; ++p)
        EXPECT_EQ(Carrier.WaveLR(p), TestSample(p));
}

TEST_F(FileCarrierTest, GrowingReadsAsZerosBothWays) {
    for (const bool Write : {true, false}) {
        FileCarrBuffClass Carrier;
        Carrier.BuffPut(1, Indexed(1, 10));
        Carrier.ReDimSize(1000, Write);
        EXPECT_EQ(Carrier.WaveINos, 1000);
        EXPECT_EQ(Carrier.WaveLR(10), TestSample(10));
        EXPECT_EQ(Carrier.WaveLR(11), 0);
        EXPECT_EQ(Carrier.WaveLR(1000), 0);
        EXPECT_EQ(fs::file_size(Carrier.FileName1()), 2000U);
    }
}

TEST_F(FileCarrierTest, ShrinkingCutsTheFileAndForgetsTheTail) {
    FileCarrBuffClass Carrier;
    Carrier.BuffPut(1, Indexed(1, 100));
    Carrier.ReDimSize(40, false);
    EXPECT_EQ(Carrier.WaveINos, 40);
    EXPECT_EQ(fs::file_size(Carrier.FileName1()), 80U);
    Carrier.WaveLR(1, 9);
    EXPECT_EQ(fs::file_size(Carrier.FileName1()), 80U);
    Carrier.ReDimSize(50, false);
    EXPECT_EQ(Carrier.WaveLR(45), 0);
    EXPECT_EQ(Carrier.WaveLR(40), TestSample(40));
}

TEST_F(FileCarrierTest, AFileThatWasGivenAwayOutlivesTheCarrier) {
    std::string Name;
    {
        FileCarrBuffClass Carrier;
        Carrier.BuffPut(1, Indexed(1, 100));
        Name = Carrier.FileName1();
        Carrier.FileRelease();
        EXPECT_NE(Carrier.FileName1(), Name);
        EXPECT_EQ(Carrier.WaveINos, 100);
    }
    EXPECT_TRUE(fs::exists(Name));
    EXPECT_EQ(fs::file_size(Name), 200U);
}

TEST_F(FileCarrierTest, AFileIsCompleteWhenItIsGivenAway) {
    FileCarrBuffClass Carrier;
    Carrier.BuffPut(1, Indexed(1, 100));
    const std::string Name = Carrier.FileName1();
    Carrier.WaveLR(50, 4321);
    Carrier.FileRelease();
    const std::vector<std::uint8_t> Bytes = TestSession::ReadFile(Name);
    EXPECT_EQ(static_cast<std::int16_t>(Bytes[98] | Bytes[99] << 8), 4321);
}

TEST_F(FileCarrierTest, TheEndOfACarrierDeletesItsFile) {
    {
        FileCarrBuffClass Carrier;
        Carrier.BuffPut(1, Indexed(1, 100));
        (void)Carrier.FileName1();
        EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    }
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(FileCarrierTest, TwoCarriersReleasedInTheSameSecondKeepApart) {
    FileCarrBuffClass First;
    FileCarrBuffClass Second;
    First.BuffPut(1, Indexed(1, 10));
    Second.BuffPut(1, Indexed(1, 10));
    First.FileRelease();
    Second.FileRelease();
    First.BuffPut(1, Indexed(101, 110));
    Second.BuffPut(1, Indexed(201, 203));
    ASSERT_NE(First.FileName1(), Second.FileName1());
    EXPECT_EQ(First.WaveLR(10), TestSamples(110, 110)[0]);
    EXPECT_EQ(Second.WaveLR(3), TestSamples(203, 203)[0]);
}

TEST_F(FileCarrierTest, ACarrierWithoutAFileDeletesNoOther) {
    std::string Kept;
    {
        FileCarrBuffClass Carrier;
        Carrier.BuffPut(1, Indexed(1, 10));
        Carrier.FileRelease(); // its next name is reserved, and no file bears it yet
        Kept = Carrier.FileName1();
        std::ofstream(Kept) << "a work file of another";
    }
    EXPECT_TRUE(fs::exists(Kept));
    {
        FileCarrBuffClass Carrier;
        Carrier.BuffPut(1, Indexed(1, 10));
        Carrier.FileRelease();
        const std::string Reserved = Carrier.FileName1();
        std::ofstream(Reserved) << "a work file of another";
        Carrier.FileNameUseItNotCopy = true;
        Carrier.FileName1(Session.Path("nowhere"));
        EXPECT_TRUE(fs::exists(Reserved));
        Carrier.BuffPut(1, Indexed(1, 10));
        EXPECT_TRUE(fs::exists(Reserved));
    }
}

TEST_F(FileCarrierTest, AReservedNameThatAnotherTookIsGivenUp) {
    FileCarrBuffClass Carrier;
    Carrier.BuffPut(1, Indexed(1, 10));
    Carrier.FileRelease();
    const std::string Taken = Carrier.FileName1();
    std::ofstream(Taken) << "a work file of another";
    Carrier.BuffPut(1, Indexed(1, 10));
    EXPECT_NE(Carrier.FileName1(), Taken);
    EXPECT_EQ(fs::file_size(Taken), 22U);
}

TEST_F(FileCarrierTest, AGivenFileIsCopiedOrAdopted) {
    const std::string Given = RawFile(Session, "qw1/given.raw", 100, 1, 16);
    FileCarrBuffClass Copying;
    Copying.FileName1(Given);
    EXPECT_EQ(Copying.WaveINos, 100);
    EXPECT_EQ(Copying.WaveLR(100), TestSample(100));
    EXPECT_NE(Copying.FileName1(), Given);
    FileCarrBuffClass Adopting;
    Adopting.FileNameUseItNotCopy = true;
    Adopting.FileName1(Given);
    EXPECT_EQ(Adopting.FileName1(), Given);
    EXPECT_EQ(Adopting.WaveLR(1), TestSample(1));
    Adopting.FileName1(Session.Path("missing.raw"));
    EXPECT_FALSE(fs::exists(Given));
    EXPECT_EQ(Adopting.WaveINos, 0);
}

TEST_F(FileCarrierTest, AFileTakenAwayBehindItsBackFailsWithItsName) {
    FileCarrBuffClass Carrier;
    Carrier.BuffPut(1, Indexed(1, 100));
    const std::string Name = Carrier.FileName1();
    fs::remove(Name);
    try {
        Carrier.MovePointer(0, 0);
        FAIL() << "no failure";
    } catch (const Failure& Error) {
        EXPECT_NE(std::string(Error.what()).find(Name), std::string::npos);
    }
}

TEST_F(FileCarrierTest, ABlockCarrierAdoptsTheFileWithoutCopying) {
    std::string Name;
    BlockCarrBuffClass BlockCarr;
    {
        FileCarrBuffClass Carrier;
        for (std::int32_t p = 1; p <= 600000; p += 100000)
            Carrier.BuffPut(p, Indexed(p, p + 99999));
        Name = Carrier.FileName1();
        FileCarrToBlockCarr(Carrier, BlockCarr);
    }
    EXPECT_EQ(BlockCarr.WaveINos, 600000);
    EXPECT_EQ(BlockCarr.BlkCount(), 2);
    EXPECT_EQ(Block(BlockCarr.Blocks().At(1)).FilePos, 2 * 524289 - 1);
    EXPECT_EQ(Block(BlockCarr.Blocks().At(1)).BlockKind, 3);
    EXPECT_EQ(WorkFileTable[1].WorkFileName, Name);
    EXPECT_EQ(WorkFileTable[1].WorkFileUse, 2);
    EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    for (const std::int32_t p : {1, 524288, 524289, 600000})
        EXPECT_EQ(BlockCarr.WaveLR(p), TestSample(p));
}

TEST_F(FileCarrierTest, WhatIsCutOffNeedsNoRoomOnTheDisk) {
    FileCarrBuffClass Carrier;
    Carrier.BuffLength(100);
    Carrier.BuffPut(1, Indexed(1, 50));
    (void)Carrier.FileName1();
    Carrier.BuffPut(51, Indexed(51, 80));
    const FullDisk Disk;
    Disk.Fill();
    EXPECT_THROW((void)Carrier.FileName1(), Failure);
    Carrier.ReDimSize(50, false);
    EXPECT_EQ(Carrier.WaveINos, 50);
    EXPECT_EQ(fs::file_size(Carrier.FileName1()), 100U);
    EXPECT_EQ(Carrier.WaveLR(50), Indexed(50, 50).back());
}

} // namespace
} // namespace quoril::test

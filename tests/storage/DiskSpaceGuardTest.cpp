#include "storage/DiskSpaceGuardMod.h"

#include "base/Failure.h"
#include "settings/STD1.h"
#include "storage/StorageChecks.h"
#include "storage/WoroFileBlockMod.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace quoril::test {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

/// Notes what it is asked with, and gives a fixed answer.
class ScriptedGuard final : public ChkDskSpcDialog {
  public:
    ScriptedGuard() { SetChkDskSpcDialog(this); }
    ~ScriptedGuard() override { SetChkDskSpcDialog(nullptr); }
    ScriptedGuard(const ScriptedGuard&) = delete;
    ScriptedGuard& operator=(const ScriptedGuard&) = delete;
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers,
                               const FreeBytesRoutine& FreeBytes) override {
        Asked.push_back(Numbers);
        AfterTick = Numbers;
        AfterTick.Available = FreeBytes();
        return Answer;
    }
    std::int32_t Answer = 0;
    std::vector<DiskSpaceNumbers> Asked;
    DiskSpaceNumbers AfterTick; ///< as the timer would see it
};

class DiskGuard : public ::testing::Test {
  protected:
    static FreeBytesRoutine Free(std::int64_t Bytes) {
        return [Bytes] { return Bytes; };
    }
    const TestSession Session;
    ScriptedGuard Window;
};

TEST_F(DiskGuard, CountsMemoryOriginalFilesAndSilenceOnly) {
    EXPECT_EQ(DiskSpaceTransfer(), 0);
    const std::int32_t Memory = MemoryBlock(100);
    EXPECT_EQ(DiskSpaceTransfer(), 200);
    (void)WorkFileBlock(1000);
    EXPECT_EQ(DiskSpaceTransfer(), 200);
    (void)BlockNew(30, BlockSilence);
    EXPECT_EQ(DiskSpaceTransfer(), 260);
    const std::int32_t Org = OrgFileAdd(RawFile(Session, "org.raw", 5000, 1, 16), 1, 16);
    (void)OrgBlock(Org, 5000, 1);
    EXPECT_EQ(DiskSpaceTransfer(), 10260);
    BlockWriteThrough(Memory);
    EXPECT_EQ(Block(Memory).BlockKind, BlockMemoryAndFile);
    EXPECT_EQ(DiskSpaceTransfer(), 10060);
}

TEST_F(DiskGuard, ADocumentInWorkFilesHasNothingToTransfer) {
    BlockCarrBuffClass Carrier;
    Carrier.BuffBlocksPutFresh({WorkFileBlock(1000, 1), WorkFileBlock(500, 1001)});
    FileMemoClass Store;
    Store.WaveDataInsert(1, 1, &Carrier, nullptr, "", true);
    EXPECT_EQ(Store.WavWaveINos, 1500);
    EXPECT_EQ(DiskSpaceTransfer(), 0);
    EXPECT_TRUE(DiskSpaceGuard(99, Free(100)));
}

TEST_F(DiskGuard, ANewDocumentOfSilenceCountsTwiceItsSamplesPerChannel) {
    FileMemoClass Store;
    Store.WavFmtChannel = 2;
    {
        BlockCarrBuffClass Silence;
        Silence.ReDimSize(1000);
        Store.WaveDataInsert(1, 0, &Silence, &Silence, "", true);
    }
    EXPECT_EQ(DiskSpaceTransfer(), 2 * 2 * 1000);
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(DiskGuard, TheJournalAndCarriersCountToo) {
    FileMemoClass Store;
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(1000);
    EXPECT_EQ(DiskSpaceTransfer(), 2000);
    Store.WaveDataInsert(1, 1, &Silence, nullptr, "New", true);
    EXPECT_EQ(DiskSpaceTransfer(), 4000);
    Store.WaveDataDelete(1, 1, 400, "Cut", true);
    EXPECT_EQ(DiskSpaceTransfer(), 4000);
}

TEST_F(DiskGuard, EnoughSpaceAsksNothing) {
    (void)MemoryBlock(100);
    EXPECT_TRUE(DiskSpaceGuard(50, Free(251)));
    EXPECT_TRUE(Window.Asked.empty());
}

TEST_F(DiskGuard, SpaceEqualToTheTotalAsksAndIsNotEnoughAtTheNextLook) {
    (void)MemoryBlock(100);
    EXPECT_FALSE(DiskSpaceGuard(50, Free(250)));
    ASSERT_EQ(Window.Asked.size(), 1U);
    EXPECT_EQ(Window.Asked[0].Needed1, 200);
    EXPECT_EQ(Window.Asked[0].Needed2, 50);
    EXPECT_EQ(Window.Asked[0].Needed0, 250);
    EXPECT_EQ(Window.Asked[0].Available, 250);
    EXPECT_STREQ(DiskSpaceStateOf(Window.AfterTick).TryAgainCaption, "Try again");
}

TEST_F(DiskGuard, EqualSpaceWithNothingToTransferIsTheThirdState) {
    EXPECT_FALSE(DiskSpaceGuard(50, Free(50)));
    EXPECT_STREQ(DiskSpaceStateOf(Window.AfterTick).TryAgainCaption, "Can not continue");
}

TEST_F(DiskGuard, TheAnswerDecides) {
    Window.Answer = 1;
    EXPECT_TRUE(DiskSpaceGuard(50, Free(0)));
    Window.Answer = 0;
    EXPECT_FALSE(DiskSpaceGuard(50, Free(0)));
    EXPECT_EQ(Window.Asked.size(), 2U);
}

TEST_F(DiskGuard, WithoutADialogTooLittleSpaceIsARefusal) {
    SetChkDskSpcDialog(nullptr);
    EXPECT_FALSE(DiskSpaceGuard(50, Free(50)));
    EXPECT_TRUE(DiskSpaceGuard(50, Free(51)));
}

TEST_F(DiskGuard, ADiskThatCannotBeReadHasNothing) {
    TmpDir0 = Session.Path("nowhere");
    EXPECT_FALSE(DiskSpaceGuard(1));
    ASSERT_EQ(Window.Asked.size(), 1U);
    EXPECT_EQ(Window.Asked[0].Available, 0);
    EXPECT_STREQ(DiskSpaceStateOf(Window.AfterTick).TryAgainCaption, "Can not continue");
}

TEST_F(DiskGuard, ANeedBeyondTwoGigabytesFailsInWordsThatHelp) {
    const auto ExpectTold = [](std::int64_t Needed) {
        try {
            (void)DiskSpaceGuard(Needed, Free(1000000000000));
            FAIL() << Needed;
        } catch (const Failure& Told) {
            EXPECT_THAT(Told.what(),
                        AllOf(HasSubstr("The document and this command together need more than "
                                        "2 GB of work space."),
                              HasSubstr("Clear Undo Backup Data"), HasSubstr("smaller part")));
        }
    };
    ExpectTold(2147483648);
    EXPECT_TRUE(DiskSpaceGuard(2147483647, Free(1000000000000)));
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(1000000000);
    EXPECT_TRUE(DiskSpaceGuard(147483647, Free(1000000000000)));
    ExpectTold(147483648);
    BlockCarrBuffClass More;
    More.ReDimSize(1000000000);
    ExpectTold(0);
    EXPECT_TRUE(Window.Asked.empty());
}

TEST_F(DiskGuard, TheRealDiskIsAsked) {
    EXPECT_TRUE(DiskSpaceGuard(1));
    EXPECT_TRUE(Window.Asked.empty());
}

TEST_F(DiskGuard, ANeedBeyond32BitsFails) {
    (void)BlockNew(1000000000, BlockSilence);
    const auto Guard = [](std::int32_t Needed) { (void)DiskSpaceGuard(Needed, Free(0)); };
    EXPECT_THROW(Guard(147483648), Failure);
    EXPECT_NO_THROW(Guard(147483647));
    (void)BlockNew(1000000000, BlockSilence);
    EXPECT_THROW(Guard(0), Failure);
}

TEST_F(DiskGuard, TheThreeStatesAreToldApartByTheFreeSpace) {
    struct Row {
        std::int64_t Available;
        const char* Caption;
        bool Enabled;
        const char* Message;
        std::int32_t Color;
    };
    const Row Rows[] = {
        {151, "Ok, Continue", true, "Free space is enough, try again now.", 65280},
        {150, "Try again", true, "Free space is not enough, trying now is risky.", 255},
        {51, "Try again", true, "Free space is not enough, trying now is risky.", 255},
        {50, "Can not continue", false,
         "Disk free space available is not sufficient for this operation.", 0},
        {0, "Can not continue", false,
         "Disk free space available is not sufficient for this operation.", 0}};
    for (const Row& Each : Rows) {
        SCOPED_TRACE(Each.Available);
        const DiskSpaceStateRec& State = DiskSpaceStateOf({100, 50, 150, Each.Available});
        EXPECT_STREQ(State.TryAgainCaption, Each.Caption);
        EXPECT_EQ(State.TryAgainEnabled, Each.Enabled);
        EXPECT_STREQ(State.Message, Each.Message);
        EXPECT_EQ(State.MessageColor, Each.Color);
    }
}

TEST_F(DiskGuard, NumbersAreMegabytesWithTwoDecimals) {
    EXPECT_EQ(DiskSpaceText(0), "0.00 mb");
    EXPECT_EQ(DiskSpaceText(1048576), "1.00 mb");
    EXPECT_EQ(DiskSpaceText(5243), "0.01 mb");
    EXPECT_EQ(DiskSpaceText(5242), "0.00 mb");
    EXPECT_EQ(DiskSpaceText(13107200), "12.50 mb");
    EXPECT_EQ(DiskSpaceText(std::int64_t{3} << 40), "3145728.00 mb");
}

} // namespace
} // namespace quoril::test

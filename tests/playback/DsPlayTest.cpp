#include "PlaybackDoubles.h"
#include "settings/STD1.h"

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DsPlayTest : public PlaybackFixture {
  protected:
    /// A snapshot whose left blocks lie in the opened file.
    void PutOriginalBlock(std::unique_ptr<BlockCarrBuffClass>& Buff) {
        const std::string Name = Session.WriteFile("org.raw", std::vector<std::uint8_t>(100, 1));
        const std::int32_t No = BlockNew(50, BlockSilence);
        BlockRec& Block = BlockTable[static_cast<std::size_t>(No)];
        Block.BlockKind = BlockOrgFile;
        Block.FileNo = OrgFileAdd(Name, 1, 16);
        Block.FilePos = 1;
        Block.BlockStart = 1;
        OrgFileTable[static_cast<std::size_t>(Block.FileNo)].OrgFileUse = 1;
        Buff = std::make_unique<BlockCarrBuffClass>();
        Buff->BuffBlocksPutFresh({No});
    }
};

TEST_F(DsPlayTest, TheComponentIsToldBudgetFolderAndLoopWhenItIsMade) {
    LoopOn = true;
    DsPlayer =
        std::make_unique<DsPlayClass>([this] { return std::make_unique<PlayerDouble>(Player); });
    EXPECT_THAT(TakeCalls(),
                ElementsAre("MemoryBytes 10000000", "TempDir " + SessionDir, "Loop true"));
    LoopOn = false;
}

TEST_F(DsPlayTest, WithoutAComponentTheProgramGoesOn) {
    for (const std::string& Failing : {std::string("MemoryBytes"), std::string("Loop")}) {
        Player.FailingCall = Failing;
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        EXPECT_EQ(DsPlayer->Dll, nullptr);
    }
    ReleasePlayingFiles(false);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(DsPlayTest, AStatusTextNeverOpensABox) {
    Player.Now->MsgBoxOb("S2", "Playing");
    EXPECT_EQ(Window.StatusLbl, "Playing");
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(DsPlayTest, AnyOtherTextIsABoxWithItsTitle) {
    Player.Now->MsgBoxOb("S2 is not alone", "Title");
    Player.Now->MsgBoxOb("s2", "Other");
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Title|S2 is not alone", "Other|s2"));
    EXPECT_EQ(Window.StatusLbl, "");
}

TEST_F(DsPlayTest, WorkFilesAloneAreNotReleasedForTheOriginalFile) {
    PlayCommand(PlayNew, 0);
    TakeCalls();
    ReleasePlayingFiles(true);
    EXPECT_THAT(TakeCalls(), IsEmpty());
    EXPECT_TRUE(Window.PauseEnabled);
}

TEST_F(DsPlayTest, ASnapshotOfTheOpenedFileIsReleased) {
    PutOriginalBlock(PlayBuffL);
    Window.PauseEnabled = true;
    ReleasePlayingFiles(true);
    EXPECT_THAT(TakeCalls(), ElementsAre("ReleaseFiles"));
    EXPECT_FALSE(Window.PauseEnabled);
}

TEST_F(DsPlayTest, AfterAReleasePauseIsThereForWhatPlaysOn) {
    PutOriginalBlock(PlayBuffL);
    for (const bool OnlyOriginal : {true, false})
        for (const std::int32_t Status : {1, 2}) {
            Player.Status = Status;
            Window.PauseEnabled = false;
            ReleasePlayingFiles(OnlyOriginal);
            EXPECT_THAT(TakeCalls(), ElementsAre("ReleaseFiles"));
            EXPECT_TRUE(Window.PauseEnabled);
            EXPECT_EQ(Window.PauseTip, "Pause");
            EXPECT_TRUE(Window.Timer);
        }
}

TEST_F(DsPlayTest, APlayerThatDoesNotAnswerKeepsNoFileFromBeingWritten) {
    for (const std::string& Failing : {std::string("ReleaseFiles"), std::string("PlayStatus")}) {
        DsPlayer = std::make_unique<DsPlayClass>(
            [this] { return std::make_unique<PlayerDouble>(Player); });
        Player.FailingCall = Failing;
        Window.PauseEnabled = Window.Timer = true;
        Window.StatusLbl = "Playing";
        ReleasePlayingFiles(false);
        EXPECT_EQ(DsPlayer->Dll, nullptr) << "given up: it may read the file no more";
        EXPECT_FALSE(Window.PauseEnabled);
        EXPECT_FALSE(Window.Timer);
        EXPECT_EQ(Window.StatusLbl, "");
        Player.FailingCall.clear();
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(DsPlayTest, TheRightBufferCountsOnlyWhileTwoChannelsPlay) {
    PutOriginalBlock(PlayBuffR);
    PlayChannels = 1;
    ReleasePlayingFiles(true);
    EXPECT_THAT(TakeCalls(), IsEmpty());
    PlayChannels = 2;
    ReleasePlayingFiles(true);
    EXPECT_THAT(TakeCalls(), ElementsAre("ReleaseFiles"));
}

TEST_F(DsPlayTest, WithoutTheConditionEverythingIsReleased) {
    Window.PauseEnabled = true;
    ReleasePlayingFiles(false);
    EXPECT_THAT(TakeCalls(), ElementsAre("ReleaseFiles"));
    EXPECT_FALSE(Window.PauseEnabled);
}

TEST_F(DsPlayTest, APlayerThatHasEndedHoldsNoFilesAndStopsNobody) {
    Player.Alive = false;
    Player.FailingCall = "ReleaseFiles";
    ReleasePlayingFiles(false);
    EXPECT_THAT(TakeCalls(), IsEmpty());
}

} // namespace
} // namespace quoril::test

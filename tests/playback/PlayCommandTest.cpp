#include "PlaybackDoubles.h"
#include "settings/STD1.h"

#include <algorithm>
#include <filesystem>
#include <limits>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PlayCommandTest : public PlaybackFixture {};

TEST_F(PlayCommandTest, WithTheDriverOffAMessageAndNothingElse) {
    SoundDriverState = 0;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre(
            "Play failed|Put ON the Sound driver in Options box (Tools-Options menu) to play"));
    EXPECT_THAT(TakeCalls(), IsEmpty());
    EXPECT_THAT(Window.Shown, IsEmpty());
}

TEST_F(PlayCommandTest, EveryCommandTellsTheSpeedsFirst) {
    TempoFor = 1.5F;
    TempoRev = 0.5F;
    PlayCommand(PlayCodeStop, 0);
    EXPECT_THAT(TakeCalls(), ElementsAre("TempoForward 1.5", "TempoReverse 0.5", "Stop"));
}

TEST_F(PlayCommandTest, WithoutASelectionPlayNewPlaysAllAndMakesItThePlaySelection) {
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 10000", "PlayForward"));
    EXPECT_THAT(Window.Shown, ElementsAre("confirm 0 Play", "play scale", "scroll scale", "busy",
                                          "enable", "ready"));
    EXPECT_EQ(PlaySelStart, 1);
    EXPECT_EQ(PlaySelEnd, 10000);
    EXPECT_EQ(PlayBaseSample, 1);
    EXPECT_EQ(PlayEndSample, 10000);
    EXPECT_EQ(PlayLength, 10000);
    EXPECT_EQ(PlayDirection, 1);
    EXPECT_TRUE(Window.Timer);
    EXPECT_TRUE(Window.PauseEnabled);
    EXPECT_EQ(Window.PauseTip, "Pause");
}

TEST_F(PlayCommandTest, TheListsArePortableAndTheSecondOneIsASingleZeroForOneChannel) {
    SelStart = 101;
    SelEnd = 1100;
    Window.Channel = 1;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(Player.LeftList, ElementsAre(10, 1, 2, 1, 32, 1000, 5, 1, 0, 0, 0));
    EXPECT_THAT(Player.RightList, ElementsAre(0));
    MakeDocument(2, 44100, 8, 10000);
    Window.Channel = 0;
    PlayCommand(PlayNew, 0);
    EXPECT_EQ(Player.RightList.size(), Player.LeftList.size());
    EXPECT_THAT(TakeActs().back(), "PlayForward");
}

TEST_F(PlayCommandTest, AOnePointSelectionPlaysToTheEndAndPlayDoesSoAgain) {
    SelStart = SelEnd = 4001;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 6000", "PlayForward"));
    EXPECT_EQ(PlaySelStart, 4001);
    EXPECT_EQ(PlaySelEnd, 4001);
    PlayCommand(PlaySelection, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 6000", "PlayForward"));
    EXPECT_EQ(PlayBaseSample, 4001);
    EXPECT_EQ(PlayEndSample, 10000);
}

TEST_F(PlayCommandTest, AOnePointSelectionInReversePlaysBackToTheFirstSample) {
    SelStart = SelEnd = 4001;
    PlayCommand(PlayNewRev, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 4001", "PlayReverse"));
    EXPECT_EQ(PlayBaseSample, 1);
    EXPECT_EQ(PlayEndSample, 4001);
    EXPECT_EQ(PlayDirection, -1);
    PlayCommand(PlaySelectionRev, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 4001", "PlayReverse"));
}

TEST_F(PlayCommandTest, AClickInsideThePlaySelectionStartsAtItsOffset) {
    PlaySelStart = 1001;
    PlaySelEnd = 3000;
    PlayCommand(PlayFrom, 500);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 2000", "PlayForwardFrom 500"));
    EXPECT_EQ(PlayDirection, 1);
    PlayCommand(PlayFromRev, 500);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 2000", "PlayReverseFrom 500"));
    EXPECT_EQ(PlayDirection, -1);
    PlaySelStart = PlaySelEnd = 9001;
    PlayCommand(PlayFromRev, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 1000", "PlayReverseFrom 0"))
        << "a point grows to the end in this command, too";
}

TEST_F(PlayCommandTest, WithoutAPlaySelectionPlayTakesTheWholeDocument) {
    for (const std::int32_t Code : {11, 12, 13, 14}) {
        PlayCommand(Code, 0);
        EXPECT_EQ(TakeActs().front(), "Load 16 1 8000 10000") << Code;
        EXPECT_EQ(PlaySelStart, 0);
    }
}

TEST_F(PlayCommandTest, ThirtyNineSamplesAt8000HzAreTooSmallAndFortyPlay) {
    SelStart = 100;
    SelEnd = 138;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Too small to play"));
    EXPECT_EQ(PlayBuffL, nullptr);
    SelEnd = 139;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 1 8000 40", "PlayForward"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayCommandTest, PauseWhilePausedContinuesAndWhileStoppedDoesNothing) {
    PlayCommand(PlayCodePause, 0);
    EXPECT_THAT(TakeActs(), IsEmpty());
    EXPECT_FALSE(Window.PauseEnabled);
    EXPECT_EQ(Window.PauseTip, "Pause");
    for (const std::int32_t Playing : {1, 2}) {
        Player.Status = Playing;
        PlayCommand(PlayCodePause, 0);
        EXPECT_THAT(TakeActs(), ElementsAre("PauseStart", "Pause"));
        EXPECT_TRUE(Window.PauseEnabled);
        EXPECT_EQ(Window.PauseTip, "Continue");
        EXPECT_TRUE(Window.Timer);
        PlayCommand(PlayCodePause, 0);
        EXPECT_THAT(TakeActs(), ElementsAre("Continue"));
        EXPECT_EQ(Window.PauseTip, "Pause");
    }
}

TEST_F(PlayCommandTest, UTurnTurnsTheDirectionEachTime) {
    PlayDirection = 1;
    PlayCommand(PlayCodeUTurn, 0);
    EXPECT_EQ(PlayDirection, -1);
    PlayCommand(PlayCodeUTurn, 0);
    EXPECT_EQ(PlayDirection, 1);
    EXPECT_THAT(TakeActs(), ElementsAre("UTurn", "UTurn"));
}

TEST_F(PlayCommandTest, StopAndReleaseDropsTheSnapshot) {
    PlayCommand(PlayNew, 0);
    ASSERT_NE(PlayBuffL, nullptr);
    TakeActs();
    PlayCommand(PlayCodeStop, 0);
    EXPECT_NE(PlayBuffL, nullptr);
    PlayCommand(PlayStopAndRelease, 0);
    EXPECT_EQ(PlayBuffL, nullptr);
    EXPECT_EQ(PlayBuffR, nullptr);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop", "Stop"));
}

TEST_F(PlayCommandTest, OtherCodesOnlyRefreshTheButtons) {
    Player.Status = 3;
    for (const std::int32_t Code : {7, 8, 9}) {
        Window.PauseTip.clear();
        PlayCommand(Code, 0);
        EXPECT_THAT(TakeActs(), IsEmpty());
        EXPECT_EQ(Window.PauseTip, "Continue");
    }
}

TEST_F(PlayCommandTest, TheCountOfChannelsServesAsTheChannelOfTheNextPlay) {
    MakeDocument(2, 8000, 16, 10000);
    PlayChannels = 0;
    PlayCommand(PlaySelection, 0);
    EXPECT_THAT(TakeActs().front(), "Load 16 2 8000 10000");
    EXPECT_EQ(PlayWorkChn, 0);
    EXPECT_EQ(PlayChannels, 2);
    PlayCommand(PlaySelection, 0);
    EXPECT_THAT(TakeActs().front(), "Load 16 1 8000 10000");
    EXPECT_EQ(PlayWorkChn, 2);
    PlayCommand(PlaySelection, 0);
    EXPECT_EQ(PlayWorkChn, 1);
    MakeDocument(1, 8000, 16, 10000);
    PlayChannels = 2;
    PlayCommand(PlaySelection, 0);
    EXPECT_EQ(PlayWorkChn, 1);
}

TEST_F(PlayCommandTest, TheRightChannelAlonePlaysThroughTheLeftBuffer) {
    MakeDocument(2, 8000, 16, 10000);
    Window.Channel = 2;
    SelStart = 1;
    SelEnd = 1000;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs().front(), "Load 16 1 8000 1000");
    EXPECT_EQ(PlayBuffL->WaveINos, 1000);
    EXPECT_EQ(PlayBuffR->WaveINos, 0);
    EXPECT_THAT(Player.RightList, ElementsAre(0));
    Player.Position = 500;
    ViewFrom = 1;
    ViewTotal = 1000;
    PixelsPerSample = 0.5;
    PlayPosTimerFired();
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, 250));
}

TEST_F(PlayCommandTest, MemoryBlocksGoToFilesBeforeTheyPlay) {
    std::unique_ptr<BlockCarrBuffClass> Left;
    std::unique_ptr<BlockCarrBuffClass> Right;
    WaveStore->WaveCollectData(1, 10000, 1, Left, Right);
    Left->WaveLR(5, 1234);
    WaveStore->WaveDataReplace(1, 1, Left.get(), Right.get(), "Test", true);
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    // A name, a length, then the length and the kind of the block.
    const std::size_t NameWords = static_cast<std::size_t>(Player.LeftList[2]);
    EXPECT_EQ(Player.LeftList[2 + NameWords + 2], 3);
}

TEST_F(PlayCommandTest, WhatIsPreparedPlaysAsItStands) {
    PlayBuffL = std::make_unique<BlockCarrBuffClass>();
    PlayBuffL->ReDimSize(20);
    PlayBuffL->WaveLR(3, 99);
    PlayBaseSample = 11;
    PlayEndSample = 30;
    PlayChannels = 1;
    PlayBits = 8;
    PlayFreq = 11025;
    PlayCommand(PlayPrepared, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 8 1 11025 20", "PlayForward"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(PlayLength, 20);
}

TEST_F(PlayCommandTest, TheButtonsAreEnabledOnlyOnce) {
    PlayCommand(PlayNew, 0);
    Window.Shown.clear();
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(Window.Shown,
                ElementsAre("confirm 0 Play", "play scale", "scroll scale", "busy", "ready"));
}

TEST_F(PlayCommandTest, AFailureWhilePreparingEndsTheCommandWithTheOrdinaryPointerAndIsTold) {
    WaveStore->WavWaveINos = 2147483647; // more than there can be, so that the range overflows
    PlaySelStart = -2147483647;
    PlaySelEnd = 2147483647;
    Player.Status = 1;
    Window.PauseEnabled = true;
    PlayCommand(PlaySelection, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop")) << "what played before has lost its snapshot";
    EXPECT_FALSE(Window.PauseEnabled);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Play failed|Overflow"));
    EXPECT_THAT(Window.Shown, ::testing::Not(::testing::Contains("busy")));
}

/// Plays the opened file, and what another program does to it.
class PlayChangedFileTest : public PlaybackFixture {
  protected:
    PlayChangedFileTest() {
        Name = Session.WriteFile("sound.raw", std::vector<std::uint8_t>(20000, 1));
        OpenFile(Name, 2);
    }
    /// Makes the document the blocks of a raw file of 16 bits, as a reader does.
    static void OpenFile(const std::string& File, std::int32_t Channels) {
        WaveStore->StorageReset();
        WaveStore->WavFmtChannel = Channels;
        WaveStore->WavFmtFreq = 8000;
        WaveStore->WavFmtBits = 16;
        const std::int32_t OrgNo = OrgFileAdd(File, Channels, 16);
        std::vector<std::unique_ptr<BlockCarrBuffClass>> Sides(2);
        for (std::int32_t Side = 0; Side < 2; ++Side) {
            Sides[static_cast<std::size_t>(Side)] = std::make_unique<BlockCarrBuffClass>();
            if (Side >= Channels)
                continue;
            const std::int32_t No = BlockNew(5000, BlockSilence);
            BlockRec& Block = BlockTable[static_cast<std::size_t>(No)];
            Block.BlockKind = BlockOrgFile;
            Block.FileNo = OrgNo;
            Block.FilePos = 1 + 2 * Side;
            Block.BlockStart = 1;
            ++OrgFileTable[static_cast<std::size_t>(OrgNo)].OrgFileUse;
            Sides[static_cast<std::size_t>(Side)]->BuffBlocksPutFresh({No});
        }
        WaveStore->SwitchUndoOff = true;
        WaveStore->WaveDataInsert(1, Channels == 2 ? 0 : 1, Sides[0].get(), Sides[1].get(), "",
                                  true);
        WaveStore->SwitchUndoOff = false;
    }
    void ExpectRefused(const std::string& Words) {
        PlayCommand(PlayNew, 0);
        EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Play failed|" + Words + "\n" + Name));
        EXPECT_EQ(Window.Shown.back(), "ready");
        EXPECT_FALSE(Window.PauseEnabled);
    }
    std::string Name;
};

TEST_F(PlayChangedFileTest, TheFileIsHandedOverAsItWasWhenItWasEntered) {
    const FileIdentity Entered = IdentityOfFile(Name);
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("FilesEntered", "Load 16 2 8000 5000", "PlayForward"));
    ASSERT_EQ(Player.Files.size(), 1U) << "both channels lie in one file";
    EXPECT_EQ(Player.Files[0].Name, Name);
    EXPECT_EQ(Player.Files[0].Identity, Entered);
}

TEST_F(PlayChangedFileTest, AFileThatOnlyTheRightChannelLiesInIsHandedOverToo) {
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(5000);
    WaveStore->WaveDataDelete(1, 1, 5000, "", false);
    WaveStore->WaveDataInsert(1, 1, &Silence, nullptr, "", true);
    PlayCommand(PlayNew, 0);
    ASSERT_EQ(Player.Files.size(), 1U);
    EXPECT_EQ(Player.Files[0].Name, Name);
}

TEST_F(PlayChangedFileTest, OneThatWasRewrittenWithTheSameLengthIsRefusedByName) {
    Session.WriteFile("sound.raw", std::vector<std::uint8_t>(20000, 9));
    ExpectRefused("This file has been changed by another program");
    std::unique_ptr<BlockCarrBuffClass> Left;
    std::unique_ptr<BlockCarrBuffClass> Right;
    EXPECT_THROW(WaveStore->WaveCollectData_ForPlay(1, 5000, 0, Left, Right), Failure);
    WaveStore->WaveCollectData(1, 5000, 0, Left, Right); // reads nothing yet
}

TEST_F(PlayChangedFileTest, OneThatWasReplacedIsRefusedAlsoWhileTheEditorHasTheOldOneOpen) {
    EXPECT_EQ(WaveStore->WaveL(1), 257); // the editor's handle stays open
    const std::string Other = Session.WriteFile("other.raw", std::vector<std::uint8_t>(20000, 9));
    std::filesystem::rename(Other, Name);
    EXPECT_EQ(WaveStore->WaveL(2), 257);
    ExpectRefused("This file has been changed by another program");
}

TEST_F(PlayChangedFileTest, OneThatWasDeletedIsRefusedByName) {
    std::filesystem::remove(Name);
    ExpectRefused("No such file or directory");
}

TEST_F(PlayChangedFileTest, APartThatDoesNotLieInTheFilePlays) {
    const std::string Other = Session.WriteFile("other.raw", std::vector<std::uint8_t>(20000, 9));
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(1000);
    WaveStore->WaveDataInsert(1, 0, &Silence, &Silence, "", true);
    std::filesystem::rename(Other, Name);
    SelStart = 1;
    SelEnd = 1000;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Load 16 2 8000 1000", "PlayForward"));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayChangedFileTest, WhatIsPreparedIsHeldAgainstItsFileToo) {
    WaveStore->WaveCollectData_ForPlay(1, 5000, 0, PlayBuffL, PlayBuffR);
    PlayChannels = 2;
    PlayBaseSample = 1;
    PlayEndSample = 5000;
    Session.WriteFile("sound.raw", std::vector<std::uint8_t>(20000, 9));
    PlayCommand(PlayPrepared, 0);
    EXPECT_THAT(TakeActs(), ElementsAre("Stop"));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Play failed|This file has been changed by another program\n" + Name));
}

TEST_F(PlayCommandTest, APlayerThatHasEndedIsStartedAnew) {
    DsPlayer = std::make_unique<DsPlayClass>([this]() -> std::unique_ptr<PlayerComponent> {
        Player.Alive = true;
        return std::make_unique<PlayerDouble>(Player);
    });
    TakeCalls();
    Player.Alive = false;
    SoundDriverState = 1;
    PlayCommand(PlayNew, 0);
    const Lines Calls = TakeCalls();
    ASSERT_GE(Calls.size(), 6U);
    EXPECT_EQ(Calls[3], "DriverState 77");
    EXPECT_EQ(Calls.back(), "PlayForward");
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayCommandTest, APlayerThatEndsWhileItPlaysIsShownAsNothingAndTheNextPlayMakesAnother) {
    DsPlayer.reset();
    DsPlayer = std::make_unique<DsPlayClass>([this]() -> std::unique_ptr<PlayerComponent> {
        Player = {};
        return std::make_unique<PlayerDouble>(Player);
    });
    PlayCommand(PlayNew, 0);
    Player.Now->MsgBoxOb("S2", "Playing");
    ASSERT_TRUE(Window.Timer && Window.PauseEnabled && Window.Enabled);
    Player.FailingCall = "PlayStatus";
    EXPECT_THROW(PlayPosTimerFired(), PlayerGone);
    EXPECT_FALSE(Window.Timer);
    EXPECT_FALSE(Window.PauseEnabled);
    EXPECT_FALSE(Window.Enabled);
    EXPECT_EQ(Window.StatusLbl, "");
    EXPECT_EQ(Window.PosLbl, "");
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
    EXPECT_FALSE(PlayIsOn());
    TakeCalls();
    PlayCommand(PlayNew, 0);
    EXPECT_EQ(TakeActs().back(), "PlayForward");
    EXPECT_TRUE(Window.Timer && Window.PauseEnabled && Window.Enabled);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty()) << "who asked the timer tells";
}

TEST_F(PlayCommandTest, APlayerThatEndsDuringACommandIsToldAndGivenUp) {
    for (const std::string& Failing : {std::string("Load"), std::string("PlayForward"),
                                       std::string("TempoForward"), std::string("PlayStatus")}) {
        Player.FailingCall.clear();
        (void)DsPlayer->MakeAnew();
        Player.Status = 0;
        Player.FailingCall = Failing;
        Window.Shown.clear();
        PlayCommand(PlayNew, 0);
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Play failed|The player does not answer"));
        EXPECT_EQ(DsPlayer->Dll, nullptr);
        EXPECT_FALSE(Window.PauseEnabled);
        EXPECT_FALSE(Window.Timer);
        EXPECT_EQ(std::ranges::count(Window.Shown, "busy"),
                  std::ranges::count(Window.Shown, "ready"));
    }
}

TEST_F(PlayCommandTest, PauseOfAPlayerThatHasEndedShowsThatNothingPlays) {
    PlayCommand(PlayNew, 0);
    Window.StatusLbl = "Playing";
    Player.Alive = false;
    Player.Status = 0; // as one that is made anew
    PlayCommand(PlayCodePause, 0);
    EXPECT_EQ(Window.StatusLbl, "");
    EXPECT_FALSE(Window.PauseEnabled);
    EXPECT_FALSE(Window.Timer);
}

TEST_F(PlayCommandTest, OnlyWhatPlaysMakesAnotherPlayer) {
    int Made = 0;
    DsPlayer = std::make_unique<DsPlayClass>([&]() -> std::unique_ptr<PlayerComponent> {
        ++Made;
        return std::make_unique<PlayerDouble>(Player);
    });
    for (const PlayCodes Code : {PlayCodeStop, PlayCodePause, PlayCodeUTurn, PlayStopAndRelease}) {
        Player.Alive = true;
        (void)DsPlayer->MakeAnew();
        PlayCommand(PlayNew, 0);
        Player.Alive = false;
        Player.Status = 0;
        Made = 0;
        PlayCommand(Code, 0);
        EXPECT_EQ(Made, 0) << Code;
        EXPECT_EQ(DsPlayer->Dll, nullptr) << Code;
        EXPECT_FALSE(Window.PauseEnabled || Window.Timer || Window.Enabled) << Code;
        EXPECT_EQ(SoundDriverState, 1) << "the driver is not off for that";
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    Player.Alive = true;
    PlayCommand(PlayNew, 0);
    EXPECT_EQ(Made, 1);
}

TEST_F(PlayCommandTest, ReleasingFromAPlayerThatDoesNotAnswerSaysNothing) {
    for (const char* Failing : {"TempoForward", "Stop", "PlayStatus"}) {
        Player.FailingCall.clear();
        (void)DsPlayer->MakeAnew();
        PlayCommand(PlayNew, 0);
        ASSERT_NE(PlayBuffL, nullptr);
        Player.FailingCall = Failing;
        PlayCommand(PlayStopAndRelease, 0);
        EXPECT_EQ(DsPlayer->Dll, nullptr) << Failing;
        EXPECT_EQ(PlayBuffL, nullptr) << Failing;
    }
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(PlayCommandTest, APlayerThatCannotBeStartedAnewIsToldAsADriverThatIsOff) {
    DsPlayer = std::make_unique<DsPlayClass>(
        []() -> std::unique_ptr<PlayerComponent> { throw Failure("no player"); });
    SoundDriverState = 1;
    PlayCommand(PlayNew, 0);
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre(
            "Play failed|Put ON the Sound driver in Options box (Tools-Options menu) to play"));
    EXPECT_EQ(SoundDriverState, 0);
}

TEST_F(PlayCommandTest, LoopIsShownStoredAndTold) {
    LoopOn = true;
    SetLoopONOFF();
    EXPECT_TRUE(Window.LoopPressed);
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "1");
    EXPECT_THAT(TakeCalls(), ElementsAre("Loop true"));
    LoopOn = false;
    SetLoopONOFF();
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "0");
    EXPECT_THAT(TakeCalls(), ElementsAre("Loop false"));
}

TEST_F(PlayCommandTest, LoopToldToAPlayerThatDoesNotAnswerGivesItUp) {
    PlayCommand(PlayNew, 0);
    Player.FailingCall = "Loop";
    LoopOn = true;
    EXPECT_THROW(SetLoopONOFF(), PlayerGone);
    LoopOn = false;
    EXPECT_EQ(IniGet("Setting", "LoopOn", ""), "1");
    EXPECT_EQ(DsPlayer->Dll, nullptr);
    EXPECT_FALSE(Window.PauseEnabled || Window.Timer || Window.Enabled);
}

TEST_F(PlayCommandTest, SpacePlaysWhatIsStoppedAndStopsWhatPlays) {
    PlayOrStop();
    EXPECT_EQ(TakeActs().back(), "PlayForward");
    PlayOrStop();
    EXPECT_EQ(TakeActs().back(), "Stop");
    Player.Status = 3;
    PlayOrStop();
    EXPECT_EQ(TakeActs().back(), "Stop");
}

// ---- Where playing stands

class PlayPositionTest : public PlaybackFixture {
  protected:
    PlayPositionTest() {
        PlayBaseSample = 1001;
        PlayEndSample = 3000;
        PlayFreq = 8000;
        PlayWorkChn = 0;
        ViewFrom = 1;
        ViewTotal = 10000;
        PixelsPerSample = 0.05;
        Window.Timer = true;
    }
};

TEST_F(PlayPositionTest, TheCursorAndTheLabelFollowTheSound) {
    Player.Status = 1;
    Player.Position = 1000;
    PlayPosTimerFired();
    EXPECT_TRUE(Window.Timer);
    EXPECT_THAT(Window.Shapes, ElementsAre(100, 100));
    EXPECT_EQ(Window.PosLbl, "<0.250125>/2001");
}

TEST_F(PlayPositionTest, OneChannelShowsOneCursor) {
    Player.Status = 3;
    Player.Position = 1000;
    PlayWorkChn = 1;
    PlayCursorPositioning();
    EXPECT_THAT(Window.Shapes, ElementsAre(100, -2));
    PlayWorkChn = 2;
    PlayCursorPositioning();
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, 100));
}

TEST_F(PlayPositionTest, NothingPassesTheEndOfTheSnapshot) {
    Player.Status = 1;
    Player.Position = 2345;
    PlayCursorPositioning();
    EXPECT_EQ(Window.PosLbl, "<0.375>/3000");
    EXPECT_THAT(Window.Shapes, ElementsAre(150, 150));
}

TEST_F(PlayPositionTest, OutsideTheViewOnlyTheLabelShows) {
    Player.Status = 2;
    Player.Position = 1000;
    ViewFrom = 2002;
    PlayCursorPositioning();
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
    EXPECT_EQ(Window.PosLbl, "<0.250125>/2001");
    ViewFrom = 1000;
    ViewTotal = 1000;
    PlayCursorPositioning();
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
    ViewTotal = 1001; // the edge itself still counts
    PlayCursorPositioning();
    EXPECT_THAT(Window.Shapes, ElementsAre(50, 50));
}

TEST_F(PlayPositionTest, TheTimerStopsWithTheSoundAndClearsTheCursors) {
    Window.PosLbl = "x";
    PlayPosTimerFired();
    EXPECT_FALSE(Window.Timer);
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
    EXPECT_EQ(Window.PosLbl, "");
}

TEST_F(PlayPositionTest, APositionThatIsNoneIsToldOnceAndNotAtEachTick) {
    Player.Position = std::numeric_limits<std::int32_t>::max();
    EXPECT_THROW(PlayPosTimerFired(), Failure);
    EXPECT_FALSE(Window.Timer);
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
    EXPECT_EQ(Window.PosLbl, "");
    EXPECT_NE(DsPlayer->Dll, nullptr) << "the player is there";
}

TEST_F(PlayPositionTest, APlayerThatDoesNotAnswerIsAskedNoMore) {
    Player.FailingCall = "PlayStatus";
    EXPECT_THROW(PlayPosTimerFired(), Failure);
    EXPECT_FALSE(Window.Timer);
    EXPECT_THAT(Window.Shapes, ElementsAre(-2, -2));
}

} // namespace
} // namespace quoril::test

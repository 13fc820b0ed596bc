#include "StorageChecks.h"
#include "base/DocumentState.h"
#include "base/Failure.h"
#include "settings/STD1.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::int16_t> Joined(std::initializer_list<std::vector<std::int16_t>> Pieces) {
    std::vector<std::int16_t> Result;
    for (const auto& Piece : Pieces)
        Result.insert(Result.end(), Piece.begin(), Piece.end());
    return Result;
}

std::vector<std::int16_t> Zeros(std::size_t Count) {
    return std::vector<std::int16_t>(Count, 0);
}

class FileMemoTest : public ::testing::Test {
  protected:
    /// A document of `Length` samples a channel, loaded without a record.
    void Load(std::int32_t Channels, std::int32_t Length) {
        Store.WavFmtChannel = Channels;
        BlockCarrBuffClass Left;
        BlockCarrBuffClass Right;
        CarrierFill(Left, Length, 1);
        if (Channels == 2)
            CarrierFill(Right, Length, 2);
        Store.SwitchUndoOff = true;
        Store.WaveDataInsert(1, Channels == 2 ? 0 : 1, &Left, &Right, "", true);
        Store.SwitchUndoOff = false;
    }
    [[nodiscard]] std::vector<std::int16_t> Left() const { return ChannelSamples(Store, 1); }
    [[nodiscard]] std::vector<std::int16_t> Right() const { return ChannelSamples(Store, 2); }
    /// New material of `Length` samples, the same for both channels.
    static void Material(BlockCarrBuffClass& Carrier, std::int32_t Length) {
        Carrier.ReDimSize(Length);
        for (std::int32_t p = 1; p <= Length; ++p)
            Carrier.WaveLR(p, static_cast<std::int16_t>(-p));
    }
    [[nodiscard]] static std::vector<std::int16_t> MaterialSamples(std::int32_t Length) {
        std::vector<std::int16_t> Result;
        for (std::int32_t p = 1; p <= Length; ++p)
            Result.push_back(static_cast<std::int16_t>(-p));
        return Result;
    }

    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
};

TEST_F(FileMemoTest, InsertingAtTheStartMovesAllBlocksAndSplitsNone) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 10);
    EXPECT_TRUE(Store.WaveDataInsert(1, 1, &Carrier, nullptr, "Paste", true));
    EXPECT_EQ(Store.BlocksL().Count(), 2);
    EXPECT_EQ(Block(Store.BlocksL().At(0)).BlockStart, 11);
    EXPECT_EQ(Left(), Joined({MaterialSamples(10), TestSamples(1, 100)}));
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(Store.WavWaveINos, 110);
}

TEST_F(FileMemoTest, InsertingBehindTheEndAppends) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 10);
    Store.WaveDataInsert(101, 1, &Carrier, nullptr, "Paste", true);
    EXPECT_EQ(Left(), Joined({TestSamples(1, 100), MaterialSamples(10)}));
}

TEST_F(FileMemoTest, InsertingInABlockSplitsItAtThatPlace) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 10);
    Store.WaveDataInsert(41, 1, &Carrier, nullptr, "Paste", true);
    EXPECT_EQ(Store.BlocksL().Count(), 3);
    EXPECT_EQ(Left(), Joined({TestSamples(1, 40), MaterialSamples(10), TestSamples(41, 100)}));
}

TEST_F(FileMemoTest, TheCarrierStaysUsableAfterItsBlocksWereTaken) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 10);
    Store.WaveDataInsert(1, 1, &Carrier, nullptr, "Paste", true);
    Carrier.WaveLR(1, 5555);
    EXPECT_EQ(Store.WaveL(1), -1);
    EXPECT_EQ(Carrier.WaveLR(1), 5555);
}

TEST_F(FileMemoTest, InsertingFarBehindTheEndLeavesAGapThatReadsAsSilence) {
    Load(1, 10);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 5);
    Store.WaveDataInsert(21, 1, &Carrier, nullptr, "Paste", true);
    EXPECT_EQ(Store.WaveNosL(), 15);
    EXPECT_EQ(Store.WaveL(15), 0);
    EXPECT_EQ(Store.WaveL(21), -1);
}

TEST_F(FileMemoTest, ADeleteInsideABlockKeepsTheOuterTwoOfThreePieces) {
    Load(1, 100);
    EXPECT_TRUE(Store.WaveDataDelete(31, 1, 20, "Cut", true));
    EXPECT_EQ(Store.BlocksL().Count(), 2);
    EXPECT_EQ(Left(), Joined({TestSamples(1, 30), TestSamples(51, 100)}));
    EXPECT_EQ(Store.WavWaveINos, 80);
    const UndoRec& Record = Store.UndoRecords().back();
    EXPECT_EQ(Record.UndoKind, 2);
    ASSERT_EQ(Record.BlocksL.size(), 1U);
    EXPECT_EQ(Block(Record.BlocksL[0]).BlockStart, 1);
    EXPECT_EQ(BlockSamples(Record.BlocksL[0]), TestSamples(31, 50));
}

TEST_F(FileMemoTest, DeletingEverythingLeavesAnEmptyList) {
    Load(2, 100);
    Store.WaveDataDelete(1, 0, 100, "Cut", true);
    EXPECT_EQ(Store.BlocksL().Count(), 0);
    EXPECT_EQ(Store.BlocksR().Count(), 0);
    EXPECT_EQ(Store.WavWaveINos, 0);
}

TEST_F(FileMemoTest, WithUndoOffADeleteFreesItsBlocksAtOnce) {
    Load(1, 100);
    UndoOptionON = false;
    Store.WaveDataDelete(1, 1, 100, "Cut", true);
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(Store.UndoCount(), 0);
}

TEST_F(FileMemoTest, AReplacementThatRunsPastTheEndMakesTheChannelLonger) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 30);
    Store.WaveDataReplace(91, 1, &Carrier, nullptr, "Echo", true);
    EXPECT_EQ(Left(), Joined({TestSamples(1, 90), MaterialSamples(30)}));
    EXPECT_EQ(Store.UndoCount(), 2);
}

TEST_F(FileMemoTest, ALongerLeftChannelPadsTheRightOneWithSilence) {
    Load(2, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 20);
    Store.WaveDataInsert(51, 1, &Carrier, nullptr, "Paste", true);
    EXPECT_EQ(Store.WaveNosR(), 120);
    EXPECT_EQ(Right(), Joined({TestSamples(1, 100, 2), Zeros(20)}));
    // The padding lies behind the left channel's end.
    EXPECT_EQ(Block(Store.BlocksR().At(1)).BlockStart, 121);
    EXPECT_EQ(Block(Store.BlocksR().At(1)).BlockKind, 5);
    const UndoRec& Record = Store.UndoRecords().back();
    EXPECT_EQ(Record.UndoKind, 3);
    EXPECT_EQ(Record.UndoPos, 101);
    EXPECT_EQ(Record.UndoChn, 2);
    EXPECT_EQ(Record.UndoLen, 20);
    EXPECT_TRUE(Record.UndoIsLast);
    EXPECT_EQ(Record.UndoName, "Paste");
    EXPECT_EQ(Record.UndoViewFrom, 0);
}

TEST_F(FileMemoTest, ALongerRightChannelPadsTheLeftOneAtItsEnd) {
    Load(2, 100);
    BlockCarrBuffClass Carrier;
    Carrier.ReDimSize(1200000);
    Store.WaveDataInsert(101, 2, nullptr, &Carrier, "Paste", true);
    EXPECT_EQ(Store.WaveNosL(), 1200100);
    EXPECT_EQ(Store.BlocksL().Count(), 4);
    EXPECT_EQ(Block(Store.BlocksL().At(1)).BlockStart, 101);
    EXPECT_EQ(Block(Store.BlocksL().At(2)).BlockStart, 101 + 524288);
    EXPECT_EQ(Block(Store.BlocksL().At(3)).BlockLen, 1200000 - 2 * 524288);
}

TEST_F(FileMemoTest, UnequalChannelsAreNotPaddedBeforeTheLastOperation) {
    Load(2, 100);
    Store.WaveDataDelete(1, 1, 40, "Cut", false);
    EXPECT_EQ(Store.WaveNosL(), 60);
    EXPECT_EQ(Store.WaveNosR(), 100);
    EXPECT_EQ(Store.UndoCount(), 1);
    EXPECT_EQ(Store.UndoRecords().back().UndoName, "");
}

TEST_F(FileMemoTest, AStretchTakenOverPaddingHasItsFullLengthOnBothChannels) {
    Load(2, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 20);
    Store.WaveDataInsert(1, 1, &Carrier, nullptr, "Paste", true); // pads the right channel
    Store.WaveDataInsert(121, 0, &Carrier, &Carrier, "Paste", true);
    std::unique_ptr<BlockCarrBuffClass> TakenL;
    std::unique_ptr<BlockCarrBuffClass> TakenR;
    Store.WaveCollectData(1, 140, 0, TakenL, TakenR);
    EXPECT_EQ(TakenL->WaveINos, 140);
    EXPECT_EQ(TakenR->WaveINos, 140);
    const std::vector<std::int16_t> BeforeL = Left();
    const std::vector<std::int16_t> BeforeR = Right();
    Store.WaveDataInsert(11, 0, TakenL.get(), TakenR.get(), "Paste", true);
    const auto Doubled = [](const std::vector<std::int16_t>& Once) {
        return Joined({{Once.begin(), Once.begin() + 10}, Once, {Once.begin() + 10, Once.end()}});
    };
    EXPECT_EQ(Left(), Doubled(BeforeL));
    EXPECT_EQ(Right(), Doubled(BeforeR));
}

TEST_F(FileMemoTest, AChangeOfFormatStoresOnlyWhatIsNotZero) {
    Load(2, 100);
    WaveChanged = false;
    EXPECT_FALSE(Store.WaveDataChangeFmt(0, 8, 0, "Convert"));
    EXPECT_EQ(Store.WavFmtBits, 8);
    EXPECT_EQ(Store.WavFmtChannel, 2);
    EXPECT_EQ(Store.WavFmtFreq, 22050);
    EXPECT_FALSE(WaveChanged);
    const UndoRec& Record = Store.UndoRecords().back();
    EXPECT_EQ(Record.UndoKind, 4);
    EXPECT_EQ(Record.UndoPos, 16);
    EXPECT_EQ(Record.UndoChn, 2);
    EXPECT_EQ(Record.UndoLen, 22050);
    EXPECT_EQ(Record.UndoName, "Convert");
    EXPECT_FALSE(Record.UndoIsLast);
}

TEST_F(FileMemoTest, CollectingOneSampleGivesItAtIndexOne) {
    Load(1, 100);
    SampleArray L;
    SampleArray R;
    Store.WaveCollectBuff(40, 40, 1, L, R);
    EXPECT_EQ(L.size(), 2U);
    EXPECT_EQ(L[1], TestSample(40));
}

TEST_F(FileMemoTest, CollectingBothChannelsOfAMonoDocumentLeavesTheRightArraySingle) {
    Load(1, 100);
    SampleArray L;
    SampleArray R(77, 3);
    Store.WaveCollectBuff(1, 100, 0, L, R);
    EXPECT_EQ(R.size(), 1U);
    EXPECT_EQ(L.size(), 101U);
}

TEST_F(FileMemoTest, CollectingOverTheEndGivesZerosThere) {
    Load(1, 100);
    SampleArray L(500, 9);
    SampleArray R;
    Store.WaveCollectBuff(91, 120, 1, L, R);
    EXPECT_EQ(std::vector<std::int16_t>(L.begin() + 1, L.end()),
              Joined({TestSamples(91, 100), Zeros(20)}));
}

TEST_F(FileMemoTest, CollectingBringsBlocksIntoMemoryAndQuickReadingDoesNot) {
    Store.WavFmtChannel = 1;
    BlockCarrBuffClass Carrier;
    Carrier.BuffBlocksPutFresh({WorkFileBlock(100)});
    Store.WaveDataInsert(1, 1, &Carrier, nullptr, "", true);
    const std::int32_t Mine = Store.BlocksL().At(0);
    const std::int32_t Stamp = BlockUseCounter;
    SampleArray L;
    SampleArray R;
    Store.QuickBuffGet(1, 100, 0, L, R);
    EXPECT_EQ(Block(Mine).BlockKind, 3);
    EXPECT_EQ(BlockUseCounter, Stamp);
    EXPECT_EQ(R, Zeros(101));
    Store.WaveCollectBuff(1, 100, 1, L, R);
    EXPECT_EQ(Block(Mine).BlockKind, 1);
}

TEST_F(FileMemoTest, AGapBesidePaddingOnPaddingReadsAsSilenceIntoAUsedArray) {
    Load(2, 100);
    BlockCarrBuffClass More;
    CarrierFill(More, 100, 1);
    Store.WaveDataInsert(101, 1, &More, nullptr, "Paste", true); // padding behind 200
    Store.WaveDataDelete(1, 2, 60, "Delete", true);              // from 141, and behind 200 again
    Store.WaveDataInsert(201, 1, &More, nullptr, "Paste", true);
    const std::vector<std::int16_t> Expected = Joined({TestSamples(61, 100, 2), Zeros(260)});
    // Some stretches hold as many samples of padding on padding as there are places without any.
    for (std::int32_t From = 1; From <= 300; ++From)
        for (std::int32_t To = From; To <= 300; To += 7) {
            const std::vector<std::int16_t> Part(Expected.begin() + From - 1,
                                                 Expected.begin() + To);
            const auto Count = static_cast<std::size_t>(To - From) + 1;
            SampleArray Unused;
            SampleArray Quick(Count + 1, 99);
            SampleArray Through(Count + 1, 99);
            Store.QuickBuffGet(From, To - From + 1, 2, Unused, Quick);
            Store.WaveCollectBuff(From, To, 2, Unused, Through);
            ASSERT_EQ(std::vector<std::int16_t>(Quick.begin() + 1, Quick.end()), Part)
                << From << " to " << To;
            ASSERT_EQ(std::vector<std::int16_t>(Through.begin() + 1, Through.end()), Part)
                << From << " to " << To;
        }
}

TEST_F(FileMemoTest, QuickReadingPastTheEndGivesZerosThere) {
    Load(2, 100);
    SampleArray L;
    SampleArray R;
    Store.QuickBuffGet(96, 10, 0, L, R);
    EXPECT_EQ(std::vector<std::int16_t>(L.begin() + 1, L.end()),
              Joined({TestSamples(96, 100), Zeros(5)}));
    EXPECT_EQ(std::vector<std::int16_t>(R.begin() + 1, R.end()),
              Joined({TestSamples(96, 100, 2), Zeros(5)}));
}

TEST_F(FileMemoTest, TakingAStretchOfSilenceCostsNoMemory) {
    Store.WavFmtChannel = 1;
    BlockCarrBuffClass Silence;
    Silence.ReDimSize(2000000);
    Store.WaveDataInsert(1, 1, &Silence, nullptr, "", true);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    Store.WaveCollectData(10, 1900000, 0, L, R);
    EXPECT_EQ(L->WaveINos, 1899991);
    EXPECT_EQ(R->WaveINos, 0);
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(FileMemoTest, TakingOverBordersGivesOneBlockForEachWithRelativeStarts) {
    Load(1, 100);
    BlockCarrBuffClass Carrier;
    Material(Carrier, 10);
    Store.WaveDataInsert(51, 1, &Carrier, nullptr, "", true);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    Store.WaveCollectData(41, 70, 1, L, R);
    std::vector<std::pair<std::int32_t, std::int32_t>> Places;
    for (const std::int32_t BlockNo : L->Blocks().Numbers())
        Places.emplace_back(Block(BlockNo).BlockStart, Block(BlockNo).BlockLen);
    EXPECT_THAT(Places, ::testing::UnorderedElementsAre(std::pair{1, 10}, std::pair{11, 10},
                                                        std::pair{21, 10}));
    EXPECT_EQ(BrokenRule(Store, {L.get(), R.get(), &Carrier}), "");
}

TEST_F(FileMemoTest, AStretchForThePlayerIsInFilesAndASecondTakeWritesNothing) {
    Load(2, 1000);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    Store.WaveCollectData_ForPlay(101, 900, 0, L, R);
    for (const BlockCarrBuffClass* const Carrier : {L.get(), R.get()})
        for (const std::int32_t BlockNo : Carrier->Blocks().Numbers())
            EXPECT_EQ(Block(BlockNo).BlockKind, 1);
    EXPECT_EQ(Block(Store.BlocksL().At(0)).BlockKind, 1);
    const std::size_t Files = TestSession::SessionFiles().size();
    EXPECT_EQ(Files, 2U) << "the document and what is played of it share a file for each channel";
    std::unique_ptr<BlockCarrBuffClass> L2;
    std::unique_ptr<BlockCarrBuffClass> R2;
    Store.WaveCollectData_ForPlay(101, 900, 0, L2, R2);
    EXPECT_EQ(TestSession::SessionFiles().size(), Files);
    EXPECT_EQ(BrokenRule(Store, {L.get(), R.get(), L2.get(), R2.get()}), "");
}

TEST_F(FileMemoTest, PlayingWritesOnlyTheBlocksThatAreHeard) {
    Load(1, 1000);
    BlockCarrBuffClass Behind;
    Material(Behind, 500);
    Store.WaveDataInsert(1001, 1, &Behind, nullptr, "Insert", true);
    BlockCarrBuffClass Silent;
    Silent.ReDimSize(500);
    Store.WaveDataInsert(1501, 1, &Silent, nullptr, "Insert", true);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    Store.WaveCollectData_ForPlay(1401, 1600, 1, L, R);
    EXPECT_EQ(TestSession::SessionFiles().size(), 1U);
    std::vector<std::int32_t> Kinds;
    for (const std::int32_t BlockNo : Store.BlocksL().Numbers())
        Kinds.push_back(Block(BlockNo).BlockKind);
    EXPECT_EQ(Kinds, (std::vector<std::int32_t>{2, 1, 5}));
    EXPECT_EQ(BrokenRule(Store, {L.get(), R.get(), &Behind, &Silent}), "");
}

TEST_F(FileMemoTest, SingleSamplesAreReadInPlace) {
    Load(2, 100);
    EXPECT_EQ(Store.WaveL(7), TestSample(7, 1));
    EXPECT_EQ(Store.WaveR(7), TestSample(7, 2));
    EXPECT_EQ(Store.WaveL(0), 0);
    EXPECT_EQ(Store.WaveL(101), 0);
    Store.WavFmtChannel = 1;
    EXPECT_EQ(Store.WaveR(7), 0);
}

TEST_F(FileMemoTest, ResettingKeepsTheFormatAndNothingElse) {
    Load(2, 100);
    Store.WaveDataDelete(1, 0, 10, "Cut", true);
    Store.WavFmtFreq = 48000;
    Store.StorageReset();
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(Store.WavFmtFreq, 48000);
    EXPECT_EQ(Store.WavFmtChannel, 2);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(FileMemoTest, AnInsertionThatFindsNoRoomLeavesTheDocumentAsItWas) {
    // The place lies inside a block of the opened file, and splitting that takes memory.
    Store.WavFmtChannel = 2;
    const std::int32_t OrgNo = OrgFileAdd(RawFile(Session, "a.raw", 100, 2, 16), 2, 16);
    BlockCarrBuffClass OpenedL;
    BlockCarrBuffClass OpenedR;
    OpenedL.BuffBlocksPutFresh({OrgBlock(OrgNo, 100, 1)});
    OpenedR.BuffBlocksPutFresh({OrgBlock(OrgNo, 100, 2)});
    Store.SwitchUndoOff = true;
    Store.WaveDataInsert(1, 0, &OpenedL, &OpenedR, "", true);
    Store.SwitchUndoOff = false;
    BlockCarrBuffClass Carrier;
    BlockSet Pieces;
    for (int i = 0; i < 9; ++i)
        Pieces.push_back(MemoryBlock(100, 1 + 100 * i));
    Carrier.BuffBlocksPutFresh(Pieces);
    MemoryBudget = 2000; // enough for the border in one channel
    const std::vector<std::int16_t> BeforeL = Left();
    const std::vector<std::int16_t> BeforeR = Right();
    const std::string SessionBefore = SessionDir;
    SessionDir = Session.Path("nowhere");
    EXPECT_THROW(Store.WaveDataInsert(31, 0, &Carrier, &Carrier, "Paste", true), Failure);
    SessionDir = SessionBefore;
    EXPECT_EQ(Left(), BeforeL);
    EXPECT_EQ(Right(), BeforeR);
    EXPECT_EQ(Store.UndoCount(), 0);
}

TEST_F(FileMemoTest, WhatLiesInMemoryIsInsertedReplacedAndTakenOutWithoutAnyRoom) {
    Load(2, 100);
    BlockCarrBuffClass Carrier;
    BlockSet Pieces;
    for (int i = 0; i < 9; ++i)
        Pieces.push_back(MemoryBlock(100, 1 + 100 * i));
    Carrier.BuffBlocksPutFresh(Pieces);
    const std::vector<std::int16_t> BeforeL = Left();
    const std::vector<std::int16_t> BeforeR = Right();
    const std::int32_t Used = MemoryUsed;
    MemoryBudget = Used;
    const std::string SessionBefore = SessionDir;
    SessionDir = Session.Path("nowhere");
    Store.WaveDataInsert(31, 0, &Carrier, &Carrier, "Paste", true);
    Store.WaveDataReplace(17, 0, &Carrier, &Carrier, "Paste", true);
    Store.WaveDataDelete(5, 0, 20, "Cut", true);
    EXPECT_EQ(MemoryUsed, Used);
    EXPECT_EQ(BrokenRule(Store, {&Carrier}), "");
    for (int i = 0; i < 3; ++i)
        Store.Undo();
    SessionDir = SessionBefore;
    EXPECT_EQ(Left(), BeforeL);
    EXPECT_EQ(Right(), BeforeR);
    EXPECT_EQ(BrokenRule(Store, {&Carrier}), "");
}

} // namespace
} // namespace quoril::test

#include "StorageChecks.h"
#include "base/DocumentState.h"
#include "base/Failure.h"
#include "base/ViewState.h"
#include "storage/UndoListener.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <gmock/gmock.h>
#include <new>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;

class RecordingListener final : public UndoListener {
  public:
    RecordingListener() { SetUndoListener(this); }
    ~RecordingListener() override { SetUndoListener(nullptr); }
    RecordingListener(const RecordingListener&) = delete;
    RecordingListener& operator=(const RecordingListener&) = delete;
    void UndoMenuChanged(const UndoMenuState& NewState) override { State = NewState; }
    void SetMenu_To_DefaultFormat() override {
        ++FormatCalls;
        if (OutOfMemory)
            throw std::bad_alloc();
    }

    UndoMenuState State;
    int FormatCalls = 0;
    bool OutOfMemory = false; ///< when the format is set back
};

class UndoTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Store.WavFmtChannel = 2;
        BlockCarrBuffClass L;
        BlockCarrBuffClass R;
        CarrierFill(L, 100, 1);
        CarrierFill(R, 100, 2);
        Store.SwitchUndoOff = true;
        Store.WaveDataInsert(1, 0, &L, &R, "", true);
        Store.SwitchUndoOff = false;
        Clip.ReDimSize(30);
        Clip.WaveLR(1, 1);
    }
    void ExpectUntouched() const {
        EXPECT_EQ(ChannelSamples(Store, 1), TestSamples(1, 100, 1));
        EXPECT_EQ(ChannelSamples(Store, 2), TestSamples(1, 100, 2));
        EXPECT_EQ(BrokenRule(Store, {&Clip}), "");
    }

    TestSession Session;
    ScriptedMessages Messages;
    RecordingListener Listener;
    FileMemoClass Store;
    BlockCarrBuffClass Clip;
};

TEST_F(UndoTest, PaddingOnTopOfOtherSilenceGoesBackOnAFullDisk) {
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
    Store.WaveDataDelete(1, 2, 10, "Delete", true);
    const FullDisk Work;
    Work.Fill();
    MemoryBudget = 2;
    Store.Undo();
    EXPECT_EQ(Store.UndoMenu().Caption, "Undo [Paste]");
    Store.Undo();
    Work.Empty();
    EXPECT_TRUE(Messages.Texts().empty());
    ExpectUntouched();
}

TEST_F(UndoTest, PaddingThatWasReadGoesBackOnAFullDisk) {
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
    Store.WaveDataDelete(1, 2, 10, "Delete", true);
    SampleArray L;
    SampleArray R;
    Store.WaveCollectBuff(1, 130, 0, L, R); // as saving does
    const FullDisk Work;
    Work.Fill();
    MemoryBudget = 2;
    Store.Undo();
    Store.Undo();
    Work.Empty();
    EXPECT_TRUE(Messages.Texts().empty());
    ExpectUntouched();
}

TEST_F(UndoTest, APasteIntoOneChannelGoesBackWithItsPaddingInOneStep) {
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
    EXPECT_EQ(Store.WaveNosR(), 130);
    EXPECT_EQ(Listener.State.Caption, "Undo [Paste]");
    Store.Undo();
    ExpectUntouched();
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(Listener.State.Caption, "Undo [Nothing]");
}

TEST_F(UndoTest, PaddingOfTheLeftChannelGoesBackToo) {
    Store.WaveDataDelete(11, 1, 40, "Cut", true);
    EXPECT_EQ(Store.WaveNosL(), 100);
    Store.Undo();
    ExpectUntouched();
}

TEST_F(UndoTest, PaddingLeftBehindDoesNotComeBackToLife) {
    for (int i = 0; i < 3; ++i) {
        Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
        Store.Undo();
    }
    ExpectUntouched();
    EXPECT_EQ(Store.BlocksR().Count(), 1);
}

TEST_F(UndoTest, AReplacementIsThreeRecordsAndOneStep) {
    Store.WaveDataReplace(31, 0, &Clip, &Clip, "Echo", true);
    EXPECT_EQ(Store.UndoCount(), 3);
    Store.Undo();
    ExpectUntouched();
    EXPECT_EQ(Store.UndoCount(), 0);
}

TEST_F(UndoTest, AConversionGoesBackWithItsSamplesAndTheFormatMenuFollows) {
    Store.WaveDataChangeFmt(0, 8, 44100, "Convert");
    CurrentFormat = {2, 44100, 8};
    Store.WaveDataReplace(1, 0, &Clip, &Clip, "Convert", true);
    Store.Undo();
    ExpectUntouched();
    EXPECT_EQ(Store.WavFmtBits, 16);
    EXPECT_EQ(Store.WavFmtFreq, 22050);
    EXPECT_EQ(CurrentFormat, (WaveFormat{2, 22050, 16}));
    EXPECT_EQ(Listener.FormatCalls, 1);
}

TEST_F(UndoTest, SelectionAndViewComeBackFromTheFirstRecordOfTheStep) {
    SelStart = 5;
    SelEnd = 50;
    ViewFrom = 3;
    ViewTotal = 60;
    Store.WaveDataDelete(5, 0, 46, "Cut", true);
    SelStart = SelEnd = ViewFrom = 1;
    ViewTotal = 10;
    Store.WaveDataDelete(1, 0, 5, "Cut", true);
    Store.Undo();
    EXPECT_EQ(ViewTotal, 10);
    Store.Undo();
    EXPECT_EQ(SelStart, 5);
    EXPECT_EQ(SelEnd, 50);
    EXPECT_EQ(ViewFrom, 3);
    EXPECT_EQ(ViewTotal, 60);
    ExpectUntouched();
}

TEST_F(UndoTest, AFormatChangeGivesSelectionAndViewBackAsTheyStoodBeforeIt) {
    const auto Stand = [](std::int32_t First) {
        SelStart = First;
        SelEnd = First + 1;
        ViewFrom = First + 2;
        ViewTotal = First + 3;
    };
    const auto ExpectStand = [](std::int32_t First) {
        EXPECT_EQ(SelStart, First);
        EXPECT_EQ(SelEnd, First + 1);
        EXPECT_EQ(ViewFrom, First + 2);
        EXPECT_EQ(ViewTotal, First + 3);
    };
    Stand(10);
    Store.WaveDataChangeFmt(0, 8, 0, "8 bits");
    EXPECT_EQ(Store.UndoRecords().back().UndoSelStart, 0) << "this record holds none";
    Store.WaveDataReplace(1, 0, &Clip, &Clip, "8 bits", true);
    Stand(20);
    Store.WaveDataChangeFmt(1, 0, 0, "Mono");
    Store.WaveDataDelete(1, 2, 100, "Mono", true);
    Stand(30);
    Store.WaveDataChangeFmt(2, 0, 0, "Stereo"); // padding ends the step
    Store.WaveDataInsert(1, 1, &Clip, nullptr, "Stereo", true);
    ASSERT_EQ(Store.UndoRecords().back().UndoKind, UndoPadding);
    Stand(50);
    for (const std::int32_t Before : {30, 20, 10}) {
        Store.Undo();
        ExpectStand(Before);
        Stand(70);
    }
    ExpectUntouched();
    EXPECT_TRUE(Messages.Texts().empty());
}

TEST_F(UndoTest, WhereMemoryRanOutTheUserReadsSo) {
    Listener.OutOfMemory = true;
    Store.WaveDataChangeFmt(0, 8, 0, "8 bits");
    Store.WaveDataInsert(1, 1, &Clip, nullptr, "8 bits", true);
    Store.Undo();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Undo Error|Out of memory"));
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_THROW(Store.EditAsOne([this] {
        Store.WaveDataChangeFmt(0, 16, 0, "16 bits");
        throw Failure("The command's own failure");
    }),
                 Failure);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Undo Error|Out of memory"));
}

TEST_F(UndoTest, AJournalThatWasResetDuringACommandDoesNotGrow) {
    Store.WaveDataInsert(1, 0, &Clip, &Clip, "One", true);
    Store.WaveDataInsert(1, 0, &Clip, &Clip, "Two", true);
    EXPECT_THROW(Store.EditAsOne([this] {
        Store.UndoInfoReset();
        throw Failure("The command's own failure");
    }),
                 Failure);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(Listener.State.Caption, "Undo [Nothing]");
    Store.WaveDataInsert(1, 0, &Clip, &Clip, "Three", true);
    UndoOptionON = false;
    Store.EditAsOne([this] { Store.UndoInfoReset(); });
    EXPECT_EQ(Store.UndoCount(), 0);
}

TEST_F(UndoTest, TheMenuNamesTheTopStepAlsoThroughItsPadding) {
    Store.WaveDataDelete(1, 0, 5, "Cut", true);
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
    EXPECT_EQ(Store.UndoRecords().back().UndoKind, 3);
    EXPECT_EQ(Listener.State.Caption, "Undo [Paste]");
    EXPECT_TRUE(Listener.State.Enabled);
    Store.Undo();
    EXPECT_EQ(Listener.State.Caption, "Undo [Cut]");
}

TEST_F(UndoTest, TurningUndoOffAndOnChangesTheCaption) {
    Store.WaveDataDelete(1, 0, 5, "Cut", true);
    UndoOptionON = false;
    Store.UndoInfoReset();
    EXPECT_EQ(Listener.State.Caption, "Undo [Off]");
    EXPECT_FALSE(Listener.State.Enabled);
    EXPECT_FALSE(Listener.State.OptionChecked);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(BrokenRule(Store, {&Clip}), "");
    UndoOptionON = true;
    Store.UndoInfoUpdateMenu();
    EXPECT_EQ(Listener.State.Caption, "Undo [Nothing]");
}

TEST_F(UndoTest, WithNothingToUndoTheUserIsToldAndTheSelectionGoes) {
    SelStart = SelEnd = 9;
    WaveChanged = false;
    Store.Undo();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Undo Failed"));
    EXPECT_EQ(SelStart, 0);
    EXPECT_EQ(SelEnd, 0);
    EXPECT_TRUE(WaveChanged);
}

TEST_F(UndoTest, ReleasingTheOldestStepLeavesTheLaterOnes) {
    Store.WaveDataDelete(1, 0, 5, "One", true);
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Two", true);
    Store.WaveDataDelete(1, 0, 5, "Three", true);
    Store.UndoInfoReleaseUpto(1);
    EXPECT_EQ(Store.UndoReleased(), 1);
    EXPECT_EQ(Listener.State.Caption, "Undo [Three]");
    Store.Undo();
    Store.Undo();
    EXPECT_FALSE(Listener.State.Enabled);
    EXPECT_EQ(ChannelSamples(Store, 1), TestSamples(6, 100, 1));
    EXPECT_EQ(BrokenRule(Store, {&Clip}), "");
}

TEST_F(UndoTest, PaddingOfAReleasedStepIsReleasedWithIt) {
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "One", true); // records 1 and 2
    Store.WaveDataDelete(1, 0, 5, "Two", true);
    Store.UndoInfoReleaseUpto(1);
    EXPECT_EQ(Store.UndoReleased(), 2);
    Store.UndoInfoReleaseUpto(3);
    EXPECT_EQ(Store.UndoReleased(), 0);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(BrokenRule(Store, {&Clip}), "");
}

TEST_F(UndoTest, UnequalCarriersGoBackExactly) {
    {
        BlockCarrBuffClass Longer;
        Longer.ReDimSize(45);
        Store.WaveDataInsert(21, 0, &Clip, &Longer, "Paste", true);
    }
    EXPECT_EQ(Store.WaveNosL(), 145);
    Store.Undo();
    ExpectUntouched();
}

TEST_F(UndoTest, ADeleteOverPaddingGoesBackExactly) {
    Store.WaveDataInsert(21, 1, &Clip, nullptr, "Paste", true);
    Store.WaveDataInsert(131, 0, &Clip, &Clip, "Paste", true);
    const std::vector<std::int16_t> BeforeR = ChannelSamples(Store, 2);
    Store.WaveDataDelete(91, 0, 60, "Cut", true);
    Store.Undo();
    EXPECT_EQ(ChannelSamples(Store, 2), BeforeR);
    Store.Undo();
    Store.Undo();
    ExpectUntouched();
}

TEST_F(UndoTest, AFailureInsideTellsWhyAndDropsTheJournal) {
    Store.WaveDataDelete(1, 0, 5, "One", true);
    Store.WaveDataDelete(31, 0, 5, "Two", true);
    const std::vector<std::int16_t> Before = ChannelSamples(Store, 1);
    BlockUseCounter = 2147483647; // the next stamp overflows
    Store.Undo();
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Undo Error|Overflow"));
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_EQ(Listener.State.Caption, "Undo [Nothing]");
    EXPECT_EQ(ChannelSamples(Store, 1), Before);
    EXPECT_EQ(BrokenRule(Store, {&Clip}), "");
}

} // namespace
} // namespace quoril::test

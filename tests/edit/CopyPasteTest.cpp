#include "audiofile/OpenSaveClass.h"
#include "audiofile/WavMaker.h"
#include "edit/ClipMarker.h"
#include "edit/CopyPasteFixture.h"
#include "support/OrderLog.h"

#include "selection/ScriptedSelConf.h"
#include "selection/SelectionMod.h"

#include <filesystem>
#include <set>

namespace quoril::test {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using CopyPasteTest = CopyPasteFixture;

constexpr const char* NoClip = "Get Wave Form from Clipboard Failed|No Waveform found (or invalid "
                               "data) in Clipboard";

TEST_F(CopyPasteTest, CopyPutsAMarkerOnTheDesktopsClipboardAndLeavesTheDocument) {
    Document({1, 2, 3, 4, 5}, {6, 7, 8, 9, 10});
    WaveChanged = false;
    Select(2, 4);
    Commands.Copy();
    const auto Marker = ClipMarkerRead(Slot.Held);
    ASSERT_TRUE(Marker.has_value());
    EXPECT_EQ(Marker->Channels, 2);
    EXPECT_EQ(Marker->Length, 3);
    EXPECT_EQ(Marker->Bits, 16);
    EXPECT_EQ(Marker->Freq, 1000);
    EXPECT_EQ(Marker->ClipPointer, ClipPointer);
    EXPECT_NE(ClipPointer, 0);
    EXPECT_EQ(Marker->Folder, AppPath);
    EXPECT_EQ(Slot.Cleared, 1) << "other forms of what was there before must not stay";
    EXPECT_TRUE(FileThere(AppPath + "/InfoLeft.dat"));
    EXPECT_TRUE(FileThere(AppPath + "/InfoRight.dat"));
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_FALSE(WaveChanged);
}

TEST_F(CopyPasteTest, TheRightDescriptionOfAMonoClipIsOneZeroWord) {
    Clip({1, 2, 3});
    EXPECT_EQ(TestSession::ReadFile(AppPath + "/InfoRight.dat"), std::vector<std::uint8_t>(4, 0));
}

TEST_F(CopyPasteTest, ACopyIsConfirmedInSamplesAndTime) {
    Document(std::vector<std::int16_t>(5000, 7));
    Select(1001, 3500);
    Commands.Copy();
    ASSERT_EQ(Windows.Copied.size(), 1U);
    EXPECT_EQ(Windows.Copied[0].First, "Samples: 2500 (From 1001 to 3500)");
    EXPECT_EQ(Windows.Copied[0].Second, "Duration: 02.50 (From 01 to 03.50)");
    EXPECT_EQ(Windows.Copied[0].Note,
              "Note: You can paste it anywhere in this wave file or in another instance of Wave "
              "Editor. (You can run multiple Editors windows at the same time, to edit multiple "
              "files).");
}

TEST_F(CopyPasteTest, ACutIsConfirmedInSamplesAndSeconds) {
    Document(std::vector<std::int16_t>(5000, 7));
    Select(1001, 3500);
    Commands.Cut();
    ASSERT_EQ(Windows.Copied.size(), 1U);
    EXPECT_EQ(Windows.Copied[0].First, "Samples: 2500 (1001 to 3500)");
    EXPECT_EQ(Windows.Copied[0].Second, "Duration: 2.500 Seconds");
}

TEST_F(CopyPasteTest, AClipOfTheRightChannelIsALeftOne) {
    Document({1, 2, 3}, {4, 5, 6});
    SelBoth = false;
    SelSingle = 2;
    Select(1, 2);
    Commands.Copy();
    ASSERT_NE(ClipCarrL, nullptr);
    EXPECT_EQ(ClipCarrR, nullptr);
    EXPECT_EQ(ClipMarkerRead(Slot.Held)->Channels, 1);
    Document({0});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(4, 5, 0));
}

TEST_F(CopyPasteTest, CutTakesOutWhatItCopiesAndOneUndoPutsItBack) {
    Document({1, 2, 3, 4, 5});
    Select(2, 3);
    Commands.Cut();
    EXPECT_THAT(Left(), ElementsAre(1, 4, 5));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Cut");
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(2, 3, 1, 4, 5));
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(CopyPasteTest, DeleteLeavesTheClipAlone) {
    Document({1, 2, 3, 4, 5});
    Select(1, 2);
    Commands.Copy();
    const std::string Line = Slot.Held;
    Select(3, 5);
    Commands.Delete();
    EXPECT_THAT(Left(), ElementsAre(1, 2));
    EXPECT_EQ(Slot.Held, Line);
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Delete");
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(CopyPasteTest, WhatWasSelectedInASoundThatIsGoneIsNotDeletedAgain) {
    Document({1, 2, 3}, {4, 5, 6});
    Select(1, 3);
    Commands.Delete();
    EXPECT_EQ(WaveStore->WavWaveINos, 0);
    Select(1, 3); // as a window leaves it
    Commands.Delete();
    Select(1, 3);
    Commands.Cut();
    Select(1, 3);
    Commands.Copy();
    EXPECT_EQ(WaveStore->WaveNosL(), 0);
    EXPECT_EQ(WaveStore->WaveNosR(), 0);
    EXPECT_THAT(Windows.Copied, IsEmpty());
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_THAT(Right(), ElementsAre(4, 5, 6));
    EXPECT_EQ(WaveStore->UndoCount(), 0);
}

TEST_F(CopyPasteTest, ACopyThatFailsSaysSoAndACutThenDeletesNothing) {
    Document({1, 2, 3});
    const std::string Folder = AppPath;
    AppPath = Session.Path("missing");
    Select(1, 2);
    Commands.Copy();
    ASSERT_EQ(Messages.Texts().size(), 2U);
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    Commands.Cut();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed,\nDeleting not done.");
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_EQ(ClipPointer, 0);
    EXPECT_THAT(Windows.Copied, IsEmpty());
    AppPath = Folder;
}

TEST_F(CopyPasteTest, ReplaceTakesThePlaceOfAsManyAndRunsPastTheEnd) {
    Clip({10, 20, 30});
    Document({1, 2, 3, 4, 5});
    PasteAt(PasteReplace, 2);
    EXPECT_THAT(Left(), ElementsAre(1, 10, 20, 30, 5));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Paste Replace");
    PasteAt(PasteReplace, 5);
    EXPECT_THAT(Left(), ElementsAre(1, 10, 20, 30, 10, 20, 30));
    WaveStore->Undo();
    WaveStore->Undo();
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(CopyPasteTest, InsertAtTheLastSampleGoesBeforeIt) {
    Clip({10, 20});
    Document({1, 2, 3});
    PasteAt(PasteInsert, 3);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 10, 20, 3));
    EXPECT_EQ(WaveStore->UndoRecords().back().UndoName, "Paste Insert");
}

TEST_F(CopyPasteTest, EveryPasteIntoAnEmptySoundTakesTheWholeClipAtEitherEnd) {
    Clip({10, 20, 30});
    for (std::int32_t Mode = PasteReplace; Mode <= PasteCrossFade; ++Mode)
        for (const std::int32_t End : {0, 1}) {
            const ScriptedSelConf Chosen(End);
            Document({1, 2}, {3, 4});
            Select(1, 2);
            Commands.Delete();
            ASSERT_EQ(WaveStore->WavWaveINos, 0);
            Messages.AnswerInput("1");
            Select(0, 0);
            Commands.Paste(Mode);
            EXPECT_THAT(Left(), ElementsAre(10, 20, 30)) << Mode << " at end " << End;
            EXPECT_THAT(Right(), ElementsAre(10, 20, 30)) << Mode << " at end " << End;
            EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get()}), "");
            WaveStore->Undo();
            EXPECT_EQ(WaveStore->WavWaveINos, 0);
            WaveStore->Undo();
            EXPECT_THAT(Left(), ElementsAre(1, 2));
            EXPECT_THAT(Right(), ElementsAre(3, 4));
        }
}

TEST_F(CopyPasteTest, AMonoClipFillsBothChannels) {
    Clip({10, 20});
    Document({1, 2}, {3, 4});
    PasteAt(PasteInsert, 2);
    EXPECT_THAT(Left(), ElementsAre(1, 10, 20, 2));
    EXPECT_THAT(Right(), ElementsAre(3, 10, 20, 4));
}

TEST_F(CopyPasteTest, AChannelTakesItsOwnOfAStereoClip) {
    Clip({10, 20}, {30, 40});
    Document({1, 2}, {3, 4});
    SelBoth = false;
    SelSingle = 2;
    PasteAt(PasteReplace, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2));
    EXPECT_THAT(Right(), ElementsAre(30, 40));
}

/// The samples of a carrier; nothing for none.
std::vector<std::int16_t> SamplesOf(const std::unique_ptr<BlockCarrBuffClass>& Carrier) {
    std::vector<std::int16_t> Samples;
    for (std::int32_t i = 1; Carrier != nullptr && i <= Carrier->WaveINos; ++i)
        Samples.push_back(Carrier->WaveLR(i));
    return Samples;
}

TEST_F(CopyPasteTest, AChannelThatIsNotWantedGetsNoneOfAMonoClipAndItsOwnOfStereo) {
    const std::vector<std::int16_t> None;
    struct Row {
        std::vector<std::int16_t> ClipR;
        std::int32_t WorkChn;
        std::vector<std::int16_t> GotL;
        std::vector<std::int16_t> GotR;
    };
    const Row Rows[] = {{None, 0, {1, 2}, {1, 2}},   {None, 1, {1, 2}, None},
                        {None, 2, None, {1, 2}},     {{3, 4}, 0, {1, 2}, {3, 4}},
                        {{3, 4}, 1, {1, 2}, {3, 4}}, {{3, 4}, 2, {1, 2}, {3, 4}}};
    for (const Row& Each : Rows) {
        SCOPED_TRACE(Each.WorkChn + static_cast<int>(Each.ClipR.size()) * 10);
        Clip({1, 2}, Each.ClipR);
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        ASSERT_TRUE(GetClipboard(L, R, Each.WorkChn));
        EXPECT_EQ(SamplesOf(L), Each.GotL);
        EXPECT_EQ(SamplesOf(R), Each.GotR);
    }
}

TEST_F(CopyPasteTest, OnlyTheChannelsInUseChangeTheirBits) {
    for (const std::int32_t WorkChn : {0, 1, 2}) {
        Clip({256, 512}, {768, 1024});
        Document({5, 5}, {6, 6}, 8);
        std::unique_ptr<BlockCarrBuffClass> L;
        std::unique_ptr<BlockCarrBuffClass> R;
        ASSERT_TRUE(GetClipboard(L, R, WorkChn));
        if (WorkChn == 2)
            EXPECT_THAT(SamplesOf(L), ElementsAre(256, 512));
        else
            EXPECT_THAT(SamplesOf(L), ElementsAre(1, 2));
        if (WorkChn == 1)
            EXPECT_THAT(SamplesOf(R), ElementsAre(768, 1024));
        else
            EXPECT_THAT(SamplesOf(R), ElementsAre(3, 4));
    }
}

TEST_F(CopyPasteTest, AMonoDocumentTakesTheLeftChannelOfAStereoClip) {
    Clip({10, 20}, {30, 40});
    for (const std::int32_t Mode : {PasteInsert, PasteReplace, PasteMix}) {
        Document({1, 2, 3});
        PasteAt(Mode, 1);
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        EXPECT_EQ(WaveStore->WaveNosR(), 0);
        WaveStore->Undo();
        EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
        EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get(), ClipCarrR.get()}), "");
    }
    PasteAt(PasteReplace, 2);
    EXPECT_THAT(Left(), ElementsAre(1, 10, 20));
}

TEST_F(CopyPasteTest, AClipOutlivesTheUndoDataAndTheSamplesThatItWasTakenFrom) {
    Document({1, 2, 3, 4, 5}, {6, 7, 8, 9, 10});
    Select(2, 4);
    Commands.Cut();
    WaveStore->UndoInfoReset();
    FilesSweep();
    PasteAt(PasteInsert, 2);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(Right(), ElementsAre(6, 7, 8, 9, 10));
    WaveStore->UndoInfoReset();
    WaveStore->StorageReset();
    FilesSweep();
    Document({50}, {60});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(2, 3, 4, 50));
    EXPECT_THAT(Right(), ElementsAre(7, 8, 9, 60));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get(), ClipCarrR.get()}), "");
}

TEST_F(CopyPasteTest, APasteShowsDarkGreenProgressFrom0AndHidesItBeforeItSaysAWord) {
    Clip({1, 2});
    Document({3});
    std::vector<std::string> Lines;
    for (const char* Text : {Slot.Held.c_str(), "some words"}) {
        Slot.Held = std::string(Text);
        OrderLog Log;
        PasteAt(PasteInsert, 1);
        Lines.insert(Lines.end(), Log.Lines.begin(), Log.Lines.end());
    }
    EXPECT_THAT(Lines, ElementsAre("show", "color 25600", "0.000", "hide", "show", "color 25600",
                                   "0.000", "hide", std::string("message ") + NoClip));
}

TEST_F(CopyPasteTest, TheNumberOfAClipIsDrawnNewForEveryCopy) {
    std::set<std::int32_t> Numbers;
    for (int Round = 0; Round < 20; ++Round) {
        Clip({1, 2});
        EXPECT_GE(ClipPointer, 1);
        EXPECT_LE(ClipPointer, 16000000);
        Numbers.insert(ClipPointer);
    }
    EXPECT_GE(Numbers.size(), 18U);
}

TEST_F(CopyPasteTest, OtherTextsOnTheClipboardAreNoClip) {
    Document({1, 2, 3});
    for (const char* Text :
         {"", "some words", "QuorilWaveEditorClip,1,0,16,1000,ClipPointer:5,/"}) {
        Slot.Held = Text;
        PasteAt(PasteInsert, 1);
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NoClip)) << Text;
    }
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
}

TEST_F(CopyPasteTest, AFolderWithACommaCannotBePastedFromEvenHere) {
    const std::string Folder = AppPath;
    AppPath = Session.Path("a,b");
    std::filesystem::create_directory(AppPath);
    Clip({1, 2});
    Document({5});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NoClip));
    EXPECT_THAT(Left(), ElementsAre(5));
    AppPath = Folder;
}

TEST_F(CopyPasteTest, AnotherRateIsAskedAboutAndNoIsNoClip) {
    Clip({10, 20});
    Document({1});
    WaveStore->WavFmtFreq = 8000;
    const char* Question = "The sampling rate of the audio found in clipboard is different\n1000 "
                           "Hz\nThis will be pasted with different pitch and duration\nIt is "
                           "recommended to make the formats same before copying\nDo you wish to "
                           "proceed any way?";
    Messages.Answer(MsgBoxAnswer::No);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question, NoClip));
    EXPECT_THAT(Left(), ElementsAre(1));
    Messages.Answer(MsgBoxAnswer::Yes);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question));
    EXPECT_THAT(Left(), ElementsAre(10, 20, 1));
}

TEST_F(CopyPasteTest, SamplesOf8BitsAreScaledTo16) {
    Clip({-128, 127, 0, 1}, {}, 8);
    Document({5});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(-32640, 32385, 0, 255, 5));
}

TEST_F(CopyPasteTest, SamplesOf16BitsAreRoundedTo8WithTiesToEven) {
    Clip({32767, -32768, 128, 384, -128, -384, 129, 255});
    Document({5}, {}, 8);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(128, -128, 0, 2, 0, -2, 1, 1, 5));
}

TEST_F(CopyPasteTest, What8BitsCannotHoldIsPastedAndRefusedByAWriter) {
    Clip({32767, 32639}); // becomes 128 and 127
    Document({5}, {}, 8);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(128, 127, 5));
    EXPECT_FALSE(OpenSaveClass().FileWriteWave(*WaveStore, Session.Path("8.wav")));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Wave file write error|Overflow"));
    EXPECT_THAT(Left(), ElementsAre(128, 127, 5));
    // Without that sample it can be written.
    Document({127, 5}, {}, 8);
    EXPECT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, Session.Path("8.wav")));
}

TEST_F(CopyPasteTest, WhatNeither8Nor16BitsCanHoldIsToldAndNotPasted) {
    Clip({127, 129}, {}, 8);
    Document({5});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Get Wave Form from Clipboard Failed|Overflow"));
    EXPECT_THAT(Left(), ElementsAre(5));
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get()}), "");
}

TEST_F(CopyPasteTest, AChangeOfBitsLeavesTheClipAsItIs) {
    Clip({256, 512});
    Document({5}, {}, 8);
    PasteAt(PasteInsert, 1);
    Document({5});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(256, 512, 5));
}

TEST_F(CopyPasteTest, AMonoClipOnBothChannelsTakesNoMoreRoomThanOnOne) {
    Clip(std::vector<std::int16_t>(100000, 3));
    Document({1}, {2});
    const std::int32_t Used = MemoryUsed;
    PasteAt(PasteInsert, 1);
    EXPECT_EQ(MemoryUsed, Used);
    // Both lead to the same place in the same file.
    ASSERT_FALSE(WaveStore->BlocksL().Numbers().empty());
    const auto At = [](const BlockListClass& List) {
        const BlockRec& Block = BlockTable[static_cast<std::size_t>(List.Numbers().back())];
        return std::tuple(Block.BlockKind, Block.FileNo, Block.FilePos);
    };
    EXPECT_EQ(At(WaveStore->BlocksL()), At(WaveStore->BlocksR()));
    EXPECT_EQ(std::get<0>(At(WaveStore->BlocksL())), BlockWorkFile);
}

TEST_F(CopyPasteTest, TheClipEndsWithTheProgramAndTakesItsLineAlong) {
    Clip({1, 2});
    ClearClipboard();
    EXPECT_EQ(Slot.Held, "");
    EXPECT_EQ(ClipPointer, 0);
    EXPECT_EQ(ClipCarrL, nullptr);
}

TEST_F(CopyPasteTest, WhatAnotherProgramPutThereSinceStays) {
    Clip({1, 2});
    Slot.Held = "a shopping list";
    ClearClipboard();
    EXPECT_EQ(Slot.Held, "a shopping list");
    Clip({1, 2});
    Slot.Held = "QuorilWaveEditorClip,1,2,16,1000,ClipPointer:20000000,/tmp";
    ClearClipboard();
    EXPECT_NE(Slot.Held, "");
    EXPECT_EQ(ClipPointer, 0);
    EXPECT_EQ(ClipCarrL, nullptr);
}

TEST_F(CopyPasteTest, CopyCutPasteAndUndoReadNoSampleOfAFile) {
    const std::string Path = Session.WriteFile(
        "a.wav", WavFile{.Rate = 1000, .Data = AudioBytes(Noise(9000, 16, 3), 16)}.Whole());
    bool Loaded = false;
    OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
    ASSERT_TRUE(Loaded);
    WaveStore->UndoInfoReset();
    const auto Before = Left();
    const std::int32_t Used = MemoryUsed;
    Select(1, WaveStore->WavWaveINos);
    Commands.Copy();
    PasteAt(PasteReplace, 1);
    PasteAt(PasteInsert, 1);
    Select(1, 9000);
    Commands.Cut();
    Messages.AnswerInput("3");
    PasteAt(PasteMultiInsert, 1);
    for (int Step = 0; Step < 4; ++Step)
        WaveStore->Undo();
    EXPECT_EQ(MemoryUsed, Used);
    for (const BlockRec& Each : BlockTable)
        EXPECT_TRUE(Each.BlockKind == BlockFreeSlot || Each.BlockKind == BlockOrgFile);
    EXPECT_EQ(Left(), Before);
    EXPECT_THAT(Messages.Texts(), ::testing::SizeIs(1));
}

// ---- A full disk

/// Free space cannot be asked where there is no such folder, which counts as none.
TEST_F(CopyPasteTest, ARefusedCopyKeepsTheClipBeforeAndARefusedMixTheDocument) {
    Clip({10, 20});
    const std::string Line = Slot.Held;
    Document({1, 2, 3});
    const std::string Folder = TmpDir0;
    TmpDir0 = Session.Path("missing");
    Select(1, 3);
    Commands.Cut();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed,\nDeleting not done.");
    EXPECT_EQ(Slot.Held, Line);
    for (const std::int32_t Mode : {PasteMix, PasteModulate, PasteCrossFade})
        PasteAt(Mode, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_EQ(WaveStore->UndoCount(), 0);
    TmpDir0 = Folder;
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(10, 20, 1, 2, 3));
}

} // namespace

} // namespace quoril::test

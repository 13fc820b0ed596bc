// Clips of other processes, and descriptions that somebody damaged.
#include "base/Failure.h"
#include "edit/ClipImportFixture.h"
#include "support/LargeFile.h"
#include "support/OrdinaryUser.h"

#include <filesystem>

namespace quoril::test {

namespace {

namespace fs = std::filesystem;

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using ClipImportTest = ClipImportFixture;

TEST_F(ClipImportTest, AForeignWorkFileIsReadAtOnceAndNeverDeleted) {
    const std::string Foreign = ForeignFile(5);
    Describe(OneBlock(Foreign, 3, BlockWorkFile, 1, 3));
    Offer(1, 3);
    Document({50});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(2, 3, 4, 50));
    EXPECT_EQ(ClipPointer, 4711);
    for (const WorkFileRec& File : WorkFileTable)
        EXPECT_NE(File.WorkFileName, Foreign);
    ClearClipboard();
    Document({1});
    FilesSweep();
    EXPECT_TRUE(FileThere(Foreign));
}

TEST_F(ClipImportTest, TheOtherProcessMayEndAfterThePaste) {
    const std::string Foreign = ForeignFile(5);
    Describe(OneBlock(Foreign, 5, BlockWorkFile, 1, 1));
    Offer(1, 5);
    Document({50});
    PasteAt(PasteInsert, 1);
    std::filesystem::remove(Foreign);
    PasteAt(PasteInsert, 1); // once imported, a clip is this process's own
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5, 1, 2, 3, 4, 5, 50));
}

TEST_F(ClipImportTest, PastingTwiceHereImportsNothing) {
    Clip({10, 20});
    Document({1});
    std::filesystem::remove(AppPath + "/InfoLeft.dat");
    PasteAt(PasteInsert, 1);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(10, 20, 10, 20, 1));
}

TEST_F(ClipImportTest, ACopyCanBeReadBackFromItsDescription) {
    Clip({10, 20, 0, 30}, {1, 2, 3, 4});
    const std::string Folder = SessionDir;
    // The files must outlive the clip, as those of another process do.
    auto KeptL = std::move(ClipCarrL);
    auto KeptR = std::move(ClipCarrR);
    BecomeAnotherProcess();
    Document({7}, {8});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(10, 20, 0, 30, 7));
    EXPECT_THAT(Right(), ElementsAre(1, 2, 3, 4, 8));
}

TEST_F(ClipImportTest, PartsOfFilesOfEveryFormComeOverExactly) {
    for (const SampleForm& Form : SampleForms) {
        const Samples All = Noise(3000 * Form.Channels, Form.Bits, 5);
        const std::string Path =
            Session.WriteFile("a.wav", WavFile{.Channels = Form.Channels,
                                               .Rate = 1000,
                                               .Bits = Form.Bits,
                                               .Data = AudioBytes(All, Form.Bits)}
                                           .Whole());
        for (std::int32_t WorkChn = Form.Channels == 1 ? 1 : 0; WorkChn <= Form.Channels;
             ++WorkChn) {
            SCOPED_TRACE(NameOf(Form) + " " + std::to_string(WorkChn));
            bool Loaded = false;
            OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
            ASSERT_TRUE(Loaded);
            const auto PartOf = [](const std::vector<std::int16_t>& Channel) {
                return std::vector<std::int16_t>(Channel.begin() + 776, Channel.begin() + 2000);
            };
            const auto PartL = PartOf(WorkChn == 2 ? Right() : Left());
            const auto PartR = WorkChn == 0 ? PartOf(Right()) : PartL;
            SelBoth = WorkChn == 0;
            SelSingle = WorkChn == 2 ? 2 : 1;
            Select(777, 2000);
            Commands.Copy();
            BecomeAnotherProcess();
            Document({7}, {8}, Form.Bits);
            PasteAt(PasteReplace, 1);
            EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
            EXPECT_EQ(Left(), PartL);
            EXPECT_EQ(Right(), PartR);
        }
    }
}

TEST_F(ClipImportTest, AClipOutOfAFileThatItsEditorSavesOverStaysWhatItWas) {
    for (const std::int32_t Channels : {1, 2}) {
        const std::string Path = OpenedFile(Channels);
        const auto ClipL = Left();
        const auto ClipR = Right();
        Select(1, WaveStore->WavWaveINos);
        Commands.Copy();
        Select(1, 100);
        Commands.Delete();
        ASSERT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, Path));
        // The files must outlive the clip, as those of another process do.
        const auto KeptL = std::move(ClipCarrL);
        const auto KeptR = std::move(ClipCarrR);
        BecomeAnotherProcess();
        Document({7}, Channels == 2 ? std::vector<std::int16_t>{8} : std::vector<std::int16_t>{});
        PasteAt(PasteReplace, 1);
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        EXPECT_EQ(Left(), ClipL);
        EXPECT_EQ(Right(), ClipR);
    }
}

TEST_F(ClipImportTest, SavingLeavesTheDescriptionOfALaterCopyElsewhereAlone) {
    const std::string Path = OpenedFile(1);
    Select(1, WaveStore->WavWaveINos);
    Commands.Copy();
    Describe(OneBlock(" ", 1000, BlockSilence, 1, 0));
    Offer(1, 1000);
    const auto Before = TestSession::ReadFile(ClipDescriptionName(AppPath, 1));
    ASSERT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, Path));
    EXPECT_EQ(TestSession::ReadFile(ClipDescriptionName(AppPath, 1)), Before);
}

/// A clip out of an opened file that was copied a while ago, and what becomes of that file.
class CopiedFileTest : public ClipImportFixture {
  protected:
    CopiedFileTest() {
        Path = OpenedFile(1);
        Select(1, WaveStore->WavWaveINos);
        Commands.Copy();
        Clip = Left();
        Line = Slot.Held;
        fs::last_write_time(ClipDescriptionName(AppPath, 1), Now - std::chrono::seconds(100));
    }
    /// What another process tells when it pastes.
    std::vector<std::string> PasteElsewhere() {
        BecomeAnotherProcess();
        Document({7});
        Slot.Held = Line;
        PasteAt(PasteReplace, 1);
        return Messages.TakeTexts();
    }
    void ExpectTold() {
        EXPECT_THAT(PasteElsewhere(),
                    ElementsAre("Get Wave Form from Clipboard Failed|This file was changed after "
                                "its sound was copied\n" +
                                Path));
        EXPECT_THAT(Left(), ElementsAre(7));
    }
    void ExpectPasted() {
        EXPECT_THAT(PasteElsewhere(), IsEmpty());
        EXPECT_EQ(Left(), Clip);
    }
    const fs::file_time_type Now = fs::file_time_type::clock::now();
    std::string Path;
    std::string Line;
    std::vector<std::int16_t> Clip;
};

TEST_F(CopiedFileTest, OtherRightsAndFurtherNamesDoNotMatter) {
    fs::permissions(Path, fs::perms::owner_read);
    ExpectPasted();
    fs::permissions(Path, fs::perms::owner_all);
    fs::create_hard_link(Path, Path + ".second");
    ExpectPasted();
    fs::rename(Path, Path + ".away");
    fs::create_symlink(Path + ".away", Path);
    ExpectPasted();
}

TEST_F(CopiedFileTest, OneThatWasRewrittenWithTheSameLengthIsTold) {
    auto Contents = TestSession::ReadFile(Path);
    Contents.back() ^= 1U;
    (void)Session.WriteFile("a.wav", Contents);
    ExpectTold();
}

TEST_F(CopiedFileTest, OneThatWasReplacedByAFileWithAnOlderDateIsTold) {
    auto Contents = TestSession::ReadFile(Path);
    Contents.back() ^= 1U;
    const std::string Other = Session.WriteFile("older.wav", Contents);
    fs::last_write_time(Other, Now - std::chrono::hours(1000));
    fs::rename(Other, Path);
    ExpectTold();
}

TEST_F(CopiedFileTest, WithoutWordOfTheFileOnlyItsDateTells) {
    using std::chrono::seconds;
    fs::remove(ClipFilesName(AppPath));
    fs::last_write_time(Path, Now - seconds(90));
    ExpectTold();
    fs::last_write_time(Path, Now - seconds(99)); // some file systems count in 2 seconds
    ExpectPasted();
    fs::last_write_time(Path, Now + seconds(3600)); // a clock that was wrong
    ExpectPasted();
}

TEST_F(CopiedFileTest, DamagedWordsOfTheFilesAreRefused) {
    const auto Good = TestSession::ReadFile(ClipFilesName(AppPath));
    ASSERT_EQ(Good.size() % 4, 0U);
    for (std::size_t Count = 2; Count < Good.size() / 4; ++Count) {
        std::vector<std::uint8_t> Cut(Good.begin(),
                                      Good.begin() + static_cast<std::ptrdiff_t>(4 * Count));
        Cut[0] = static_cast<std::uint8_t>(Count - 1);
        fs::rename(Session.WriteFile("cut", Cut), ClipFilesName(AppPath));
        EXPECT_EQ(PasteElsewhere().size(), 1U) << Count;
    }
}

TEST_F(ClipImportTest, AFileOfTwoChannelsIsReadOnceForBoth) {
    constexpr std::int32_t Frames = 200000;
    const std::string Path = Session.WriteFile(
        "a.wav",
        WavFile{.Channels = 2, .Rate = 1000, .Data = AudioBytes(Noise(Frames * 2, 16, 3), 16)}
            .Whole());
    bool Loaded = false;
    OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
    ASSERT_TRUE(Loaded);
    Select(1, Frames);
    Commands.Copy();
    BecomeAnotherProcess();
    Document({7}, {8});
    const std::int64_t Before = BytesReadSoFar();
    PasteAt(PasteReplace, 1);
    const std::int64_t Read = BytesReadSoFar() - Before;
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(WaveStore->WavWaveINos, Frames);
    EXPECT_GE(Read, Frames * 4);
    EXPECT_LT(Read, Frames * 5);
}

TEST_F(ClipImportTest, SilenceComesAsSilence) {
    Describe(OneBlock(" ", 1000, BlockSilence, 1, 0));
    Offer(1, 1000);
    Document({5});
    const std::int32_t Used = MemoryUsed;
    PasteAt(PasteInsert, 1);
    EXPECT_EQ(Left().size(), 1001U);
    EXPECT_EQ(MemoryUsed, Used);
}

TEST_F(ClipImportTest, AClipThatIsGoneIsTold) {
    Offer(1, 3);
    ExpectRefused("no description");
    Describe(OneBlock(Session.Path("gone"), 3, BlockWorkFile, 1, 1));
    ExpectRefused("no work file");
    Slot.Held = "QuorilWaveEditorClip,1,3,16,1000,ClipPointer:4711,/no/such/folder";
    ExpectRefused("no folder");
}

TEST_F(ClipImportTest, ADamagedDescriptionIsToldAndChangesNothing) {
    const std::string File = ForeignFile(5);
    const Words Good = OneBlock(File, 3, BlockWorkFile, 1, 1);
    Offer(1, 3);
    const auto Refuse = [&](const char* Why, const Words& Longs) {
        Describe(Longs);
        ExpectRefused(Why);
    };
    for (std::size_t Cut = 0; Cut < Good.size(); ++Cut)
        Refuse("cut short", {Good.begin(), Good.begin() + static_cast<std::ptrdiff_t>(Cut)});
    const auto With = [&Good](std::size_t At, std::int32_t Value) {
        Words Longs = Good;
        Longs[At] = Value;
        return Longs;
    };
    const std::size_t Last = Good.size() - 1;
    Refuse("last index below 0", With(0, -1));
    Refuse("last index far out", With(0, 2147483647));
    Describe(With(0, -2));
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Get Wave Form from Clipboard Failed|The description of the copied "
                            "sound is damaged"));
    Refuse("more blocks than there are", With(1, 2));
    Refuse("fewer than no blocks", With(1, -1));
    Refuse("a name longer than the file", With(2, 1000000));
    Refuse("a name below nothing", With(2, -1));
    Refuse("a name longer than its words", With(3, 100000));
    Refuse("a length below 0", With(Last - 5, -3));
    Refuse("longer than the file", With(Last - 5, 6));
    Refuse("far longer than the file", With(Last - 5, 2147483000));
    Refuse("another length than was told", With(Last - 5, 2));
    Refuse("a kind that is in memory", With(Last - 4, BlockMemory));
    Refuse("no kind", With(Last - 4, 99));
    Refuse("a start below 1", With(Last - 3, 0));
    Refuse("a place behind the file", With(Last - 2, 100));
    Refuse("a place below 1", With(Last - 2, 0));
    Words Original = With(Last - 4, BlockOrgFile);
    Original[Last - 1] = 3;
    Refuse("an original file of 3 channels", Original);
    Refuse("a folder in place of a file", OneBlock(AppPath, 3, BlockWorkFile, 1, 1));
    Refuse("a device in place of a file", OneBlock("/dev/zero", 3, BlockWorkFile, 1, 1));
    EXPECT_TRUE(FileThere(File));

    Words Two = OneBlock(" ", 2, BlockSilence, 1, 0);
    const Words Second = OneBlock(" ", 1, BlockSilence, 2, 0);
    Two.insert(Two.end(), Second.begin() + 2, Second.end());
    Two[0] = static_cast<std::int32_t>(Two.size()) - 1;
    Two[1] = 2;
    Refuse("blocks that overlap", Two);
    const auto WithSecondAt = [&Two](std::int32_t Start) {
        Words Longs = Two;
        Longs[Longs.size() - 4] = Start;
        return Longs;
    };
    Refuse("a gap between blocks", WithSecondAt(4));
    Refuse("a block far behind the others", WithSecondAt(2147483000));
    Refuse("a gap before the first block", OneBlock(" ", 3, BlockSilence, 2, 0));

    Describe(WithSecondAt(3));
    Document({9});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(0, 0, 0, 9)) << "two blocks end to end work";
    BecomeAnotherProcess();
    Describe(Good);
    Document({9});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 9)) << "the undamaged one works";
}

TEST_F(ClipImportTest, ALineOfTwoChannelsDoesNotFitTheDescriptionOfOne) {
    Describe(OneBlock(" ", 3, BlockSilence, 1, 0));
    ClipDescriptionWrite(ClipDescriptionName(AppPath, 2), {0});
    Offer(2, 3);
    ExpectRefused("the right channel is that of a mono clip: none");
    Describe({0});
    Offer(1, 3);
    ExpectRefused("no channel at all");
}

TEST_F(ClipImportTest, AFolderThatMayNotBeEnteredIsTold) {
    const std::string Closed = Session.Path("closed");
    std::filesystem::create_directory(Closed);
    ClipDescriptionWrite(ClipDescriptionName(Closed, 1), OneBlock(" ", 3, BlockSilence, 1, 0));
    Offer(1, 3);
    Slot.Held.replace(Slot.Held.find(AppPath), AppPath.size(), Closed);
    std::filesystem::permissions(Closed, std::filesystem::perms::none);
    EXPECT_EQ(AsOrdinaryUser([&] {
                  std::unique_ptr<BlockCarrBuffClass> L;
                  std::unique_ptr<BlockCarrBuffClass> R;
                  if (GetClipboard(L, R, 1))
                      return 1;
                  const auto Texts = Messages.TakeTexts();
                  const bool Told =
                      Texts.size() == 1 && Texts[0].find("Permission denied") != std::string::npos;
                  return Told ? 0 : 2;
              }),
              0);
    std::filesystem::permissions(Closed, std::filesystem::perms::owner_all);
}

TEST_F(ClipImportTest, AFailedImportLeavesNoClipToPasteFrom) {
    Clip({1, 2});
    Offer(1, 3);
    std::filesystem::remove(AppPath + "/InfoLeft.dat");
    ExpectRefused("no description");
    EXPECT_EQ(ClipPointer, 0);
    EXPECT_EQ(ClipCarrL, nullptr);
    Slot.Held = "QuorilWaveEditorClip,1,3,16,1000,ClipPointer:0,/no/such/folder";
    ExpectRefused("the number of no clip");
    Describe(OneBlock(" ", 3, BlockSilence, 1, 0));
    Slot.Held = "QuorilWaveEditorClip,1,3,16,1000,ClipPointer:," + AppPath;
    ExpectRefused("no number, which is that of no clip");
}

} // namespace

} // namespace quoril::test

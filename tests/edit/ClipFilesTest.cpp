// The files of a clip: which one a name means, and what may stand in the place of one.
#include "edit/ClipImportFixture.h"

#include "platform/FileHandle.h"
#include "storage/DiskSpaceGuardMod.h"
#include "support/FullDisk.h"
#include "support/OrderLog.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace quoril::test {

namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ClipFilesTest : public ClipImportFixture {
  protected:
    /// A WAV file of these samples, opened as the document.
    std::string OpenedAs(const std::string& Name, const Samples& Values) {
        std::string Path =
            Session.WriteFile(Name, WavFile{.Rate = 1000, .Data = AudioBytes(Values, 16)}.Whole());
        bool Loaded = false;
        OpenSaveClass().FileLoadWave(*WaveStore, Path, Loaded);
        EXPECT_TRUE(Loaded);
        WaveStore->UndoInfoReset();
        return Path;
    }
    /// Replaces a file by another one with the same name, as a program that saves does.
    void Replaced(const std::string& Name, const Bytes& Contents) const {
        fs::rename(Session.WriteFile(Name + ".new", Contents), Session.Path(Name));
    }
    static Bytes Wav(const Samples& Values) {
        return WavFile{.Rate = 1000, .Data = AudioBytes(Values, 16)}.Whole();
    }
    void CopyOnAFullDisk() {
        Document({1, 2, 3});
        Select(1, 3);
        const FullDisk Disk;
        Disk.Fill();
        Commands.Copy();
        EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    }
    static constexpr std::int32_t WavHeaderBytes = 44;
};

TEST_F(ClipFilesTest, TwoNamesThatDifferInTheCaseOfLettersAreTwoFiles) {
    const std::string Lower = OpenedAs("song.wav", {1, 2, 3});
    const std::string Upper = Session.WriteFile("SONG.wav", Wav({10, 20, 30}));
    Describe(OneBlock(Upper, 3, BlockOrgFile, 1, WavHeaderBytes + 1));
    Offer(1, 3);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(10, 20, 30, 1, 2, 3));
}

TEST_F(ClipFilesTest, WorkingFilesWhoseNamesDifferInTheCaseOfLettersAreTwoFiles) {
    Clip({1, 2, 3});
    const auto Held = BlockTable[static_cast<std::size_t>(ClipCarrL->Blocks().Numbers()[0])];
    ASSERT_EQ(Held.BlockKind, BlockWorkFile);
    const std::string Own = WorkFileTable[static_cast<std::size_t>(Held.FileNo)].WorkFileName;
    std::string Other = Own;
    Other.replace(Other.size() - 4, 4, ".TMP");
    fs::copy_file(ForeignFile(5), Other);
    std::string Same = Own;
    Same.replace(Same.size() - 4, 4, ".Tmp"); // as a disk without case would find it
    fs::create_hard_link(Own, Same);
    Document({50});
    const auto KeptL = std::move(ClipCarrL);
    BecomeAnotherProcess();
    Describe(OneBlock(Other, 3, BlockWorkFile, 1, 3));
    Offer(1, 3);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(2, 3, 4, 50));
    BecomeAnotherProcess();
    Describe(OneBlock(Same, 3, BlockWorkFile, 1, 1));
    const std::int32_t Used = MemoryUsed;
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 2, 3, 4, 50));
    EXPECT_EQ(MemoryUsed, Used) << "nothing was read";
}

TEST_F(ClipFilesTest, TwoSuchFilesOfOneClipStayTwo) {
    const std::string Lower = Session.WriteFile("a.wav", Wav({1, 2}));
    const std::string Upper = Session.WriteFile("A.wav", Wav({10, 20}));
    Words Two = OneBlock(Lower, 2, BlockOrgFile, 1, WavHeaderBytes + 1);
    const Words Second = OneBlock(Upper, 2, BlockOrgFile, 3, WavHeaderBytes + 1);
    Two.insert(Two.end(), Second.begin() + 2, Second.end());
    Two[0] = static_cast<std::int32_t>(Two.size()) - 1;
    Two[1] = 2;
    Describe(Two);
    Offer(1, 4);
    Document({7});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_THAT(Left(), ElementsAre(1, 2, 10, 20, 7));
}

TEST_F(ClipFilesTest, ANameInOtherLettersForAnOpenedFileSharesIt) {
    const std::string Path = OpenedAs("song.wav", {1, 2, 3});
    const std::string Link = Session.Path("SONG.wav"); // as a disk without case would find it
    fs::create_hard_link(Path, Link);
    Describe(OneBlock(Link, 3, BlockOrgFile, 1, WavHeaderBytes + 1));
    Offer(1, 3);
    const std::int32_t Used = MemoryUsed;
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(MemoryUsed, Used) << "nothing was read";
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(ClipFilesTest, AFileThatWasReplacedAfterItWasOpenedHereComesAsItIsThere) {
    const std::string Path = OpenedAs("song.wav", {1, 2, 3});
    Document({7});
    const std::string Again = OpenedAs("song.wav", {1, 2, 3});
    Replaced("song.wav", Wav({10, 20, 30, 40}));
    Describe(OneBlock(Path, 4, BlockOrgFile, 1, WavHeaderBytes + 1));
    Offer(1, 4);
    std::unique_ptr<BlockCarrBuffClass> L;
    std::unique_ptr<BlockCarrBuffClass> R;
    ASSERT_TRUE(GetClipboard(L, R, 1));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    std::vector<std::int16_t> Got;
    for (std::int32_t i = 1; i <= L->WaveINos; ++i)
        Got.push_back(L->WaveLR(i));
    EXPECT_THAT(Got, ElementsAre(10, 20, 30, 40));
}

TEST_F(ClipFilesTest, AnotherFormOfAnOpenedFileIsReadInThatForm) {
    const std::string Path = OpenedAs("song.wav", {0x0102, 0x0304, 0x0506});
    Words Form = OneBlock(Path, 6, BlockOrgFile, 1, WavHeaderBytes + 1);
    Form.back() = 8;
    Describe(Form);
    Offer(1, 6);
    PasteAt(PasteReplace, 1);
    EXPECT_THAT(Left(), ElementsAre(2 - 128, 1 - 128, 4 - 128, 3 - 128, 6 - 128, 5 - 128));
    EXPECT_EQ(BrokenRule(*WaveStore, {ClipCarrL.get()}), "");
    BecomeAnotherProcess();
    WaveStore->Undo();
    Form = OneBlock(Path, 2, BlockOrgFile, 1, WavHeaderBytes + 1);
    Form[Form.size() - 2] = 2;
    Describe(Form);
    Offer(1, 2);
    PasteAt(PasteReplace, 1);
    EXPECT_THAT(Left(), ElementsAre(0x0102, 0x0506, 0x0506));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(ClipFilesTest, ANameWithAZeroByteDoesNotStandForAShorterOne) {
    Describe(OneBlock(ForeignFile(5) + std::string("\0more", 5), 3, BlockWorkFile, 1, 1));
    Offer(1, 3);
    ExpectRefused("a zero byte in the name of a file");
    Describe(OneBlock(ForeignFile(5), 3, BlockWorkFile, 1, 1));
    Offer(1, 3);
    Slot.Held += std::string("\0more", 5);
    ExpectRefused("a zero byte in the name of the folder");
}

TEST_F(ClipFilesTest, CopyingFromAFileThatAnotherProgramChangedIsTold) {
    const std::string Path = OpenedAs("song.wav", {1, 2, 3});
    Replaced("song.wav", Wav({10, 20, 30, 40}));
    Select(1, 3);
    Commands.Copy();
    EXPECT_THAT(
        Messages.TakeTexts(),
        ElementsAre("This file has been changed by another program\n" + Path, "Copying failed"));
    EXPECT_EQ(Slot.Held, "");
    EXPECT_EQ(ClipPointer, 0);
}

TEST_F(ClipFilesTest, AFileThatWasReplacedWhileItIsOpenHereIsCopiedAsItWas) {
    for (const bool Deleted : {false, true}) {
        const std::string Path = OpenedAs("song.wav", {1, 2, 3});
        EXPECT_THAT(Left(), ElementsAre(1, 2, 3)); // opens it
        if (Deleted)
            fs::remove(Path);
        else
            Replaced("song.wav", Wav({10, 20, 30}));
        Select(1, 3);
        Commands.Copy();
        // The files must outlive the clip, as those of another process do.
        const auto KeptL = std::move(ClipCarrL);
        BecomeAnotherProcess();
        Document({7});
        PasteAt(PasteInsert, 1);
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 7));
    }
}

TEST_F(ClipFilesTest, SavingOverOneFileOfAClipTellsOfAnotherOneThatWasChanged) {
    const std::string One = OpenedAs("one.wav", {1, 2, 3});
    Windows.Choice = Session.WriteFile("two.wav", Wav({4, 5, 6}));
    Commands.CopyFile();
    PasteAt(PasteInsert, 1);
    Select(1, 6);
    Commands.Copy();
    WaveStore->WaveDataDelete(1, 1, 3, "", true);
    WaveStore->UndoInfoReset(); // only the clip lies in the other file now
    OrgFileClose(OrgFileOpenNo);
    Replaced("two.wav", Wav({40, 50, 60}));
    EXPECT_TRUE(OpenSaveClass().FileWriteWave(*WaveStore, One));
    EXPECT_FALSE(FileThere(ClipDescriptionName(AppPath, 1)));
}

// ---- What may stand in the place of a file

TEST_F(ClipFilesTest, APipeInPlaceOfAFileIsToldAndNotWaitedFor) {
    ::alarm(20); // waiting would be for ever
    const std::string Pipe = Session.Path("pipe");
    ASSERT_EQ(::mkfifo(Pipe.c_str(), 0600), 0);
    Offer(1, 3);
    for (const std::int32_t Kind : {BlockWorkFile, BlockOrgFile}) {
        Describe(OneBlock(Pipe, 3, Kind, 1, 1));
        ExpectRefused("a pipe in place of a file with samples");
    }
    fs::remove(ClipDescriptionName(AppPath, 1));
    ASSERT_EQ(::mkfifo(ClipDescriptionName(AppPath, 1).c_str(), 0600), 0);
    ExpectRefused("a pipe in place of the description");
    Clip({1, 2});
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(ClipDescriptionName(AppPath, 1))));
    ::alarm(0);
}

TEST_F(ClipFilesTest, ACopyWritesThroughNoLinkInPlaceOfADescription) {
    const std::string Mine = Session.WriteFile("letter.txt", {1, 2, 3});
    const std::string Nothing = Session.Path("nothing");
    for (const std::string& Target : {Mine, Nothing}) {
        for (const std::int32_t Channel : {1, 2}) {
            fs::remove(ClipDescriptionName(AppPath, Channel));
            fs::create_symlink(Target, ClipDescriptionName(AppPath, Channel));
        }
        Clip({1, 2}, {3, 4});
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
        for (const std::int32_t Channel : {1, 2})
            EXPECT_TRUE(
                fs::is_regular_file(fs::symlink_status(ClipDescriptionName(AppPath, Channel))));
    }
    EXPECT_EQ(TestSession::ReadFile(Mine), (Bytes{1, 2, 3}));
    EXPECT_FALSE(fs::exists(Nothing));
}

TEST_F(ClipFilesTest, WhoeverReadsADescriptionReadsItToItsEnd) {
    const Words First = OneBlock(" ", 1000, BlockSilence, 1, 0);
    Describe(First);
    const FileForReading Reader(ClipDescriptionName(AppPath, 1));
    Describe(OneBlock(" ", 2000, BlockSilence, 1, 0));
    Words Read(First.size());
    Reader.Read(0, Read.data(), Read.size() * 4);
    EXPECT_EQ(Read, First);
}

TEST_F(ClipFilesTest, LinksToFilesWithSamplesAreFollowedAndLeft) {
    const std::string Foreign = ForeignFile(5);
    const std::string Link = Session.Path("link.tmp");
    fs::create_symlink(Foreign, Link);
    Describe(OneBlock(Link, 5, BlockWorkFile, 1, 1));
    Offer(1, 5);
    Document({50});
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 4, 5, 50));
    ClearClipboard();
    Document({1});
    FilesSweep();
    EXPECT_TRUE(fs::is_symlink(Link));
    EXPECT_TRUE(fs::exists(Foreign));
}

// ---- Where there is no room, or no folder

TEST_F(ClipFilesTest, ACopyThatFailsBeforeItDescribesLeavesWhatAnotherHasDescribed) {
    const Words Others = OneBlock(" ", 1000, BlockSilence, 1, 0);
    Describe(Others);
    Offer(1, 1000);
    const auto Before = TestSession::ReadFile(ClipDescriptionName(AppPath, 1));
    CopyOnAFullDisk();
    EXPECT_EQ(TestSession::ReadFile(ClipDescriptionName(AppPath, 1)), Before);
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(Left().size(), 1003U);
}

TEST_F(ClipFilesTest, ACopyThatFailsTakesTheDescriptionOfTheOwnClipAlong) {
    Clip({10, 20});
    CopyOnAFullDisk();
    EXPECT_FALSE(FileThere(ClipDescriptionName(AppPath, 1)));
    EXPECT_FALSE(FileThere(ClipDescriptionName(AppPath, 2)));
    EXPECT_FALSE(FileThere(ClipFilesName(AppPath)));
    ExpectRefused("the clip went with its working files");
}

TEST_F(ClipFilesTest, ADescriptionThatCannotBeFinishedDoesNotStay) {
    fs::create_directories(ClipDescriptionName(AppPath, 2) + "/in the way");
    Document({1, 2, 3});
    Select(1, 3);
    Commands.Copy();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed");
    EXPECT_FALSE(FileThere(ClipDescriptionName(AppPath, 1)));
    EXPECT_EQ(Slot.Held, "");
}

class GuardDouble final : public ChkDskSpcDialog {
  public:
    GuardDouble() { SetChkDskSpcDialog(this); }
    ~GuardDouble() override { SetChkDskSpcDialog(nullptr); }
    GuardDouble(const GuardDouble&) = delete;
    GuardDouble& operator=(const GuardDouble&) = delete;
    std::int32_t ShowChkDskSpc(const DiskSpaceNumbers& Numbers, const FreeBytesRoutine&) override {
        Asked.push_back(Numbers.Needed2);
        if (Meanwhile)
            Meanwhile();
        return Answer;
    }
    std::int32_t Answer = 0;
    std::function<void()> Meanwhile; ///< what happens while the question is on the screen
    std::vector<std::int64_t> Asked;
};

/// Free space cannot be asked where there is no such folder, which counts as none.
TEST_F(ClipFilesTest, ACopyAsksForTwoBytesForEachSampleOfTheChannelsConcerned) {
    GuardDouble Guard;
    Document({1, 2, 3}, {4, 5, 6});
    TmpDir0 = Session.Path("missing");
    Select(1, 3);
    Commands.Copy();
    SelBoth = false;
    for (const std::int16_t Single : {std::int16_t{1}, std::int16_t{2}}) {
        SelSingle = Single;
        Select(1, 2);
        Commands.Copy();
    }
    EXPECT_THAT(Guard.Asked, ElementsAre(12, 4, 4));
    EXPECT_EQ(Messages.TakeTexts().size(), 3U);
    EXPECT_EQ(ClipPointer, 0);
    EXPECT_FALSE(FileThere(ClipDescriptionName(AppPath, 1)));
    BlockCarrBuffClass More;
    Fill(More, {1, 2, 3, 4, 5});
    BlockCarrBuffClass Few;
    Fill(Few, {6});
    EXPECT_FALSE(PutClipboard(2, 16, 1000, &More, &Few)) << "only the right one is concerned";
    EXPECT_EQ(Guard.Asked.back(), 2);
    Guard.Answer = 1;
    Commands.Copy();
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_NE(ClipPointer, 0);
}

TEST_F(ClipFilesTest, APasteFromElsewhereAsksForTheSamplesAndTheDescription) {
    GuardDouble Guard;
    const Words Description = OneBlock(" ", 1000, BlockSilence, 1, 0);
    TmpDir0 = Session.Path("missing");
    for (const std::int32_t Channel : {1, 2})
        ClipDescriptionWrite(ClipDescriptionName(AppPath, Channel), Description);
    for (const std::int32_t Channels : {1, 2}) {
        Document({1, 2});
        Offer(Channels, 1000);
        PasteAt(PasteInsert, 1);
        EXPECT_THAT(Messages.TakeTexts(), IsEmpty()) << "the user has said no himself";
        EXPECT_THAT(Left(), ElementsAre(1, 2));
        EXPECT_EQ(ClipPointer, 0);
        EXPECT_EQ(ClipCarrL, nullptr);
    }
    EXPECT_THAT(Guard.Asked, ElementsAre(2000 + Description[0], 4000 + Description[0]));
    Guard.Answer = 1;
    PasteAt(PasteInsert, 1);
    EXPECT_EQ(Left().size(), 1002U);
    PasteAt(PasteInsert, 1);
    EXPECT_EQ(Guard.Asked.size(), 3U) << "once imported, nothing is asked";
}

TEST_F(ClipFilesTest, TheFolderForWorkingFilesGoesWhileTheProgramRuns) {
    Clip({10, 20});
    Document({1, 2, 3});
    fs::remove_all(SessionDir);
    Select(1, 3);
    Commands.Cut();
    EXPECT_EQ(Messages.TakeTexts().back(), "Copying failed,\nDeleting not done.");
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3));
    EXPECT_EQ(BrokenRule(*WaveStore), "");
    fs::create_directory(SessionDir);
    Select(1, 3);
    Commands.Copy();
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    PasteAt(PasteInsert, 1);
    EXPECT_THAT(Left(), ElementsAre(1, 2, 3, 1, 2, 3));
}

TEST_F(ClipFilesTest, AFileThatIsWrittenWhileTheUserThinksAboutTheDiskIsTold) {
    GuardDouble Guard;
    Guard.Answer = 1;
    const std::string Path = Session.WriteFile("song.wav", Wav({1, 2, 3}));
    const Words Left = OneBlock(" ", 3, BlockSilence, 1, 0);
    const Words InFile = OneBlock(Path, 3, BlockOrgFile, 1, WavHeaderBytes + 1);
    TmpDir0 = Session.Path("missing"); // where free space cannot be asked, which counts as none
    Guard.Meanwhile = [&] { Session.WriteFile("song.wav", Wav({10, 20, 30})); };
    const auto Past = fs::file_time_type::clock::now() - std::chrono::seconds(100);
    for (const std::int32_t Channels : {1, 2}) {
        ClipDescriptionWrite(ClipDescriptionName(AppPath, 1), Channels == 1 ? InFile : Left);
        ClipDescriptionWrite(ClipDescriptionName(AppPath, 2), InFile);
        for (const std::string& Name : {ClipDescriptionName(AppPath, 1), Path})
            fs::last_write_time(Name, Past);
        Offer(Channels, 3);
        ExpectRefused("a file that was written meanwhile");
        EXPECT_EQ(ClipPointer, 0);
    }
    EXPECT_EQ(Guard.Asked.size(), 2U);
    Describe(OneBlock(Path, 4, BlockOrgFile, 1, WavHeaderBytes + 1));
    Offer(1, 4);
    ExpectRefused("there is no sense in asking where the file is too short");
    EXPECT_EQ(Guard.Asked.size(), 2U);
}

} // namespace

} // namespace quoril::test

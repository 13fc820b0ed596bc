// The commands on files with files of every type: who reads and writes what, and a save over the
// open file with an undo after it.
#include "audiofile/AudioFileTypes.h"
#include "audiofile/DocumentFile.h"
#include "audiofile/FileSurroundings.h"
#include "audiofile/RecentFiles.h"
#include "audiofile/ScriptedDialogs.h"
#include "base/ViewState.h"
#include "settings/STD1.h"

#include "AuMaker.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quoril::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class FileTypesTest : public FileCommandsFixture {
  protected:
    [[nodiscard]] std::string Music(const std::string& Name) const {
        return Session.Path("music/" + Name);
    }
    /// A program that copies, both ways, and notes its words.
    void UseCopyingEncoder() const {
        const std::string Path = Session.Path("copying");
        std::ofstream(Path) << "#!/bin/sh\nprintf '%s\\n' \"$@\" >'" << Session.Path("said")
                            << "'\ncase \"$1\" in --decode) cp \"$2\" \"$3\";; -b) cp \"$3\" "
                               "\"$4\";; *) cp \"$2\" \"$4\";; esac\n";
        fs::permissions(Path, fs::perms::owner_all);
        ChooseEncoder(EncoderMp3, Path);
        ChooseEncoder(EncoderWma, Path);
    }
    void OpenNoise(const std::string& Ending) {
        All = Noise(300000, 16, 9);
        UseCopyingEncoder();
        Raw.Answer(1, 16);
        Bytes File = AudioBytes(All, 16);
        if (Ending == "au")
            File = AuFile{.Data = SwappedBytes(All)}.Whole();
        else if (Ending == "wav" || Ending == "mp3")
            File = WavFile{.Data = AudioBytes(All, 16)}.Whole();
        OpenByDialog(Session.WriteFile("music/a." + Ending, File));
        Whole = File;
    }
    void SaveAs(const std::string& Path) {
        Around.Choices.push_back(Path);
        EXPECT_TRUE(Commands.Save(true));
    }

    ScriptedRaw Raw;
    ScriptedEncoder Encoder;
    Samples All;
    Bytes Whole;
};

TEST_F(FileTypesTest, TheLastThreeLettersChooseTheReaderInAnyCase) {
    for (const auto& [Name, Type] :
         {std::pair("a.WAV", "wav"), std::pair("a.Mp3", "mp3"), std::pair("a.AU", ".au"),
          std::pair("a.RAW", "raw"), std::pair("a.Snd", "snd")}) {
        ASSERT_NE(AudioFileTypeOf(Name), nullptr) << Name;
        EXPECT_STREQ(AudioFileTypeOf(Name)->LastThree, Type);
        EXPECT_TRUE(CanBeOpened(Name));
    }
    EXPECT_EQ(AudioFileTypeOf("a.wma"), nullptr);
    EXPECT_EQ(AudioFileTypeOf("au"), nullptr);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(FileTypesTest, SavingOverTheOpenFileAndUndoingGivesTheOldFileByteForByte) {
    for (const char* Ending : {"wav", "au", "raw", "snd", "mp3"}) {
        SCOPED_TRACE(Ending);
        OpenNoise(Ending);
        const std::string Path = Music(std::string("a.") + Ending);
        ASSERT_EQ(WaveFilePath, Path);
        ASSERT_TRUE(LeftOf(*WaveStore) == All);
        WaveStore->WaveDataDelete(1001, 1, 5000, "Delete", true);
        ASSERT_TRUE(WaveChanged);
        ASSERT_TRUE(Commands.Save(false));
        EXPECT_FALSE(WaveChanged);
        EXPECT_LT(fs::file_size(Path), Whole.size() - 9000);
        WaveStore->Undo();
        EXPECT_TRUE(LeftOf(*WaveStore) == All);
        ASSERT_TRUE(Commands.Save(false));
        EXPECT_TRUE(TestSession::ReadFile(Path) == Whole);
        EXPECT_TRUE(CountsHold());
    }
}

TEST_F(FileTypesTest, ASndFileOfSunIsAskedAboutAsRaw) {
    Raw.Answer(1, 8);
    OpenByDialog(Session.WriteFile("music/sun.snd", AuFile{.Data = Bytes(40, 128)}.Whole()));
    EXPECT_EQ(Raw.Shown.size(), 1U);
    EXPECT_EQ(WaveStore->WavWaveINos, 64) << "the header is sound to it";
}

TEST_F(FileTypesTest, ACancelledRawDialogIsAFailedLoad) {
    OpenByDialog(WriteWav("good.wav"));
    WaveChanged = true;
    Messages.Answer(MsgBoxAnswer::Yes);
    Raw.Ok = false;
    OpenByDialog(Session.WriteFile("music/b.raw", Bytes(100)));
    EXPECT_EQ(WaveFileName, "good.wav");
    EXPECT_EQ(WaveStore->WavWaveINos, 1000);
    EXPECT_FALSE(WaveChanged) << "as after every load";
    EXPECT_EQ(RecentFilesRead()[1], Music("b.raw"));
}

TEST_F(FileTypesTest, EachTypeKeepsItsBookmarksButRaw) {
    for (const auto& [Name, Bookmarks] :
         {std::pair("b.wav", "bookmarks [b.bok]"), std::pair("b.au", "bookmarks [b.bok]"),
          std::pair("b.mp3", "bookmarks [b.bok]"), std::pair("b.raw", "bookmarks []"),
          std::pair("b.snd", "bookmarks []")}) {
        OpenNoise("wav");
        Around.TakeCalls();
        SaveAs(Music(Name));
        EXPECT_THAT(Around.TakeCalls(), Contains(Bookmarks)) << Name;
        EXPECT_EQ(WaveFileName, Name);
        EXPECT_EQ(RecentFilesRead()[1], Music(Name));
    }
}

TEST_F(FileTypesTest, AnotherTypeHoldsTheSameSound) {
    OpenNoise("wav");
    SaveAs(Music("b.au"));
    EXPECT_TRUE(TestSession::ReadFile(Music("b.au")) == AuFile{.Data = SwappedBytes(All)}.Whole());
    SaveAs(Music("b.snd"));
    EXPECT_TRUE(TestSession::ReadFile(Music("b.snd")) == AudioBytes(All, 16));
    SaveAs(Music("b.mp3"));
    EXPECT_TRUE(TestSession::ReadFile(Music("b.mp3")) == Whole);
    OpenByDialog(Music("b.mp3"));
    EXPECT_TRUE(LeftOf(*WaveStore) == All);
    EXPECT_EQ(WaveFileName, "b.mp3");
}

TEST_F(FileTypesTest, ASecondSaveOfAnMp3AsksNothingAndSaveAsAsks) {
    OpenNoise("wav");
    SaveAs(Music("b.mp3"));
    EXPECT_EQ(Encoder.TakeCalls().size(), 1U);
    EXPECT_TRUE(Mp3ParamsChosen);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Encoder.TakeCalls(), IsEmpty());
    IniPut("Mp3", "BitRate", "7");
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_THAT(Encoder.TakeCalls(), ElementsAre("mp3 7 0 44100")) << "no rate of the list";
    SaveAs(Music("c.mp3"));
    EXPECT_EQ(Encoder.TakeCalls().size(), 1U);
    OpenByDialog(Music("c.mp3"));
    EXPECT_FALSE(Mp3ParamsChosen);
    EXPECT_TRUE(Commands.Save(false));
    EXPECT_EQ(Encoder.TakeCalls().size(), 1U) << "another document";
}

TEST_F(FileTypesTest, AnMp3ThatIsNotWrittenLeavesTheWorkUnsaved) {
    OpenNoise("wav");
    WaveStore->WaveDataDelete(1, 1, 10, "Delete", true);
    Encoder.Ok = false;
    Around.Choices.push_back(Music("b.mp3"));
    EXPECT_FALSE(Commands.Save(true));
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(WaveFileName, "a.wav");
    EXPECT_FALSE(fs::exists(Music("b.mp3")));
    EXPECT_THAT(RecentFilesRead(), Not(Contains(Music("b.mp3"))));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(FileTypesTest, SaveSelectedWritesEveryType) {
    OpenNoise("wav");
    Around.Selection = {11, 110};
    for (const auto& [Name, Size] :
         {std::pair("p.wav", 244U), std::pair("p.au", 224U), std::pair("p.raw", 200U),
          std::pair("p.snd", 200U), std::pair("p.mp3", 244U), std::pair("p.txt", 0U)}) {
        Around.Choices.push_back(Music(Name));
        Commands.SaveSelected();
        if (Size != 0) {
            EXPECT_EQ(fs::file_size(Music(Name)), Size) << Name;
        }
    }
    EXPECT_TRUE(fs::exists(Music("p.txt.wav")));
}

TEST_F(FileTypesTest, TheCompanionBookmarksOfEveryTypeAreLoaded) {
    Session.WriteFile("music/a.bok", {0, 0, 0, 0});
    for (const char* Ending : {"au", "raw", "snd", "mp3"}) {
        OpenNoise(Ending);
        EXPECT_THAT(Around.TakeCalls(), Contains("load a.bok")) << Ending;
    }
}

// ---- Export

TEST_F(FileTypesTest, ExportProposesTheFilesOwnNameAndWritesTheSound) {
    OpenNoise("wav");
    Around.TakeCalls();
    WaveChanged = true;
    Around.Choices.push_back(Music("out"));
    Commands.ExportWma();
    const FileDialogRequest& Request = Around.Requests.back();
    EXPECT_EQ(Request.Title, "Choose a Windows media file name to export to");
    EXPECT_EQ(Request.Folder, Session.Path("music"));
    EXPECT_EQ(Request.FileName, "a.wma");
    EXPECT_EQ(Request.Filter, "Windows media audio files (Wma)|*.Wma|All files (*.*)|*.*");
    EXPECT_EQ(Request.DefaultExtension, "wma");
    EXPECT_TRUE(Request.OverwritePrompt);
    EXPECT_THAT(Around.TakeCalls(), ElementsAre("save dialog", "release original"));
    EXPECT_TRUE(TestSession::ReadFile(Music("out.wma")) == Whole);
    EXPECT_THAT(Encoder.TakeCalls(), ElementsAre("wma 128000 1 44100"));
    EXPECT_TRUE(WaveChanged) << "an export is no save";
    EXPECT_EQ(WaveFileName, "a.wav");
    Around.Choices.push_back(Music("out.wma.WMA"));
    Commands.ExportWma();
    EXPECT_TRUE(fs::exists(Music("out.wma.WMA")));
}

TEST_F(FileTypesTest, ExportOfANewDocumentProposesNothing) {
    CurrentFormat = {2, 44100, 16};
    Commands.New();
    Commands.ExportWma();
    EXPECT_EQ(Around.Requests.back().FileName, "");
    EXPECT_EQ(Around.Requests.back().Folder, WaveDir);
    EXPECT_THAT(Messages.Texts(), IsEmpty()) << "cancelled";
}

TEST_F(FileTypesTest, ExportAsksBeforeACompletedNameReplacesAFile) {
    OpenNoise("wav");
    Session.WriteFile("music/out.wma", {1, 2, 3});
    Around.Choices.push_back(Music("out"));
    Commands.ExportWma();
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(Music("out.wma") + " already exists.\nDo you want to replace it?"));
    EXPECT_EQ(fs::file_size(Music("out.wma")), 3U);
}

TEST_F(FileTypesTest, FormatsThatWmaDoesNotHaveAreRefusedBeforeTheDialog) {
    for (const auto& [Rate, Channels] :
         {std::pair(11025, 2), std::pair(48000, 1), std::pair(96000, 2), std::pair(12000, 1)}) {
        CurrentFormat = {Channels, Rate, 16};
        Commands.New();
        Around.TakeCalls();
        Commands.ExportWma();
        EXPECT_THAT(Around.TakeCalls(), IsEmpty());
        EXPECT_THAT(
            Messages.TakeTexts(),
            ElementsAre(
                "Only these formats are supported for exporting to Wma, using wma8 utility\n"
                "44100Hz, 32000Hz, 22050Hz, 16000Hz, 8000Hz,\n"
                "48000Hz (stereo only) and 11025Hz (mono only)\n"
                "Please change the format to one of these and try again."));
    }
}

TEST_F(FileTypesTest, AnEncoderThatFailsIsToldUnderTheTitleOfTheExport) {
    OpenNoise("wav");
    const std::string Path = Session.Path("bad");
    std::ofstream(Path) << "#!/bin/sh\nexit 9\n";
    fs::permissions(Path, fs::perms::owner_all);
    ChooseEncoder(EncoderWma, Path);
    Around.Choices.push_back(Music("out.wma"));
    Commands.ExportWma();
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("Export to Wma Error|The encoder failed (exit code 9)\n" + Path));
    EXPECT_FALSE(fs::exists(Music("out.wma")));
}

} // namespace
} // namespace quoril::test

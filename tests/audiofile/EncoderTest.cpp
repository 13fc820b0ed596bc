// Files by way of encoders: which encoder, with which words, and what becomes of the document and
// of the file that was there when it fails, writes nothing or half, or never ends.
#include "audiofile/DocumentFile.h"
#include "audiofile/EncoderRun.h"
#include "audiofile/OpenSaveClass.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "ScriptedDialogs.h"
#include "WavMaker.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const std::string Unchanged = "\n\nThe file that was there before is unchanged.";

class EncoderTest : public ::testing::Test {
  protected:
    /// A program in the language of the shell. What it is started with stands in `Said` afterwards,
    /// a word on each line.
    std::string MakeEncoder(const std::string& Body, const std::string& Name = "encoder") const {
        const std::string Path = Session.Path(Name);
        std::ofstream(Path) << "#!/bin/sh\nprintf '%s\\n' \"$@\" >'" << Said() << "'\n"
                            << Body << "\n";
        fs::permissions(Path, fs::perms::owner_all);
        return Path;
    }
    [[nodiscard]] std::string Said() const { return Session.Path("said"); }
    [[nodiscard]] std::vector<std::string> WordsSaid() const {
        std::ifstream In(Said());
        std::vector<std::string> Words;
        for (std::string Line; std::getline(In, Line);)
            Words.push_back(Line);
        return Words;
    }
    void Use(const std::string& Body) { ChooseEncoder(EncoderMp3, MakeEncoder(Body)); }
    void UseForWma(const std::string& Body) { ChooseEncoder(EncoderWma, MakeEncoder(Body)); }
    void Fill(std::int32_t Rate = 44100, std::int32_t Channels = 2) {
        const Samples All = test::Noise(1000, 16, 3);
        Store.StorageReset();
        test::FillStore(Store, {Channels, Rate, 16}, All, All);
    }
    bool Write(bool UsePrevPrm = false) {
        const bool Written = OpenSave.FileWriteMp3(Store, Target(), UsePrevPrm);
        EXPECT_THAT(TestSession::SessionFiles(), IsEmpty()) << "nothing temporary is left";
        return Written;
    }
    bool Load(const std::string& Name) {
        bool Result = true;
        OpenSave.FileLoadMp3(Store, Name, Result);
        return Result;
    }
    [[nodiscard]] std::string Target() const { return Session.Path("out.mp3"); }
    [[nodiscard]] std::string TargetText() const {
        const Bytes All = TestSession::ReadFile(Target());
        return {All.begin(), All.end()};
    }
    void OldTarget() const { Session.WriteFile("out.mp3", {'o', 'l', 'd'}); }

    TestSession Session;
    test::ScriptedMessages Messages;
    test::ScriptedEncoder Dialogs;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
};

// ---- Which encoder

TEST_F(EncoderTest, TheChosenPathIsTakenWhileItsFileIsThere) {
    const std::string Path = MakeEncoder("");
    ChooseEncoder(EncoderMp3, "  " + Path + " ");
    EXPECT_EQ(GetEncoderPath(EncoderMp3), Path);
    EXPECT_THAT(Dialogs.TakeCalls(), IsEmpty());
    fs::remove(Path);
    EXPECT_EQ(GetEncoderPath(EncoderMp3), "");
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("choose 1"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("File not found\n" + Path));
}

TEST_F(EncoderTest, CancelWithoutAPathEndsWithoutAWord) {
    EXPECT_EQ(GetEncoderPath(EncoderMp3), "");
    EXPECT_EQ(GetEncoderPath(EncoderWma), "");
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("choose 1", "choose 2"));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    Fill();
    EXPECT_FALSE(Write());
    EXPECT_FALSE(Load(Session.Path("a.mp3")));
    EXPECT_FALSE(OpenSave.FileWriteWma(Store, Session.Path("a.wma")));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(EncoderTest, WhatIsEnteredInTheDialogIsTaken) {
    Dialogs.Chosen = MakeEncoder("");
    EXPECT_EQ(GetEncoderPath(EncoderWma), Dialogs.Chosen);
    EXPECT_EQ(IniGet("Wma", "WM8EUTILExe", ""), Dialogs.Chosen.substr(0, 99));
    Dialogs.Chosen = Session.Path("missing");
    EXPECT_EQ(GetEncoderPath(EncoderMp3), "");
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("File not found\n" + Dialogs.Chosen));
}

TEST_F(EncoderTest, APathLongerThanASettingIsReadWhole) {
    const std::string Folder = Session.Path(std::string(150, 'x'));
    fs::create_directory(Folder);
    const std::string Path = MakeEncoder("", std::string(150, 'x') + "/enc");
    ChooseEncoder(EncoderMp3, Path);
    EXPECT_EQ(GetEncoderPath(EncoderMp3), Path);
}

TEST_F(EncoderTest, TheEncoderOnThePathIsProposedOrElseAUsualPlace) {
    const std::string Folder = Session.Path("bin");
    fs::create_directory(Folder);
    ::setenv("PATH", Folder.c_str(), 1);
    EXPECT_EQ(EncoderToPropose(EncoderMp3), "C:\\Program Files\\Lame\\lame.exe");
    EXPECT_EQ(EncoderMissing(EncoderMp3),
              "lame is not installed. Install the package \"lame\", or choose another encoder.");
    EXPECT_THAT(EncoderMissing(EncoderWma), HasSubstr("Install the package \"ffmpeg\""));
    Session.WriteFile("bin/lame", {});
    Session.WriteFile("bin/ffmpeg", {});
    EXPECT_EQ(EncoderToPropose(EncoderMp3), Folder + "/lame");
    EXPECT_EQ(EncoderMissing(EncoderMp3), "");
    EXPECT_EQ(EncoderMissing(EncoderWma), "");
    ChooseEncoder(EncoderMp3, "/my own");
    EXPECT_EQ(EncoderToPropose(EncoderMp3), "/my own");
}

// ---- Words

TEST_F(EncoderTest, CommandLinesHaveTheirWordsInOrder) {
    EXPECT_THAT(Mp3DecodeCommand("/e", "/a b.mp3", "/t.wav"),
                ElementsAre("/e", "--decode", "/a b.mp3", "/t.wav"));
    EXPECT_THAT(Mp3EncodeCommand("/e", 160, "/t.wav", "/a.mp3"),
                ElementsAre("/e", "-b", "160", "/t.wav", "/a.mp3"));
    EXPECT_THAT(Mp3EncodeCommand("/e", 0, "/t.wav", "/a.mp3"),
                ElementsAre("/e", "-b", "128", "/t.wav", "/a.mp3"));
    EXPECT_THAT(
        WmaEncodeCommand("/e", 128000, 44100, 2, "/t.wav", "/a.wma"),
        ElementsAre("/e", "-input", "/t.wav", "-output", "/a.wma", "-a_setting", "128_44_2"));
    EXPECT_EQ(WmaEncodeCommand("/e", 0, 22050, 1, "/t", "/a").back(), "128_22_1");
    EXPECT_EQ(WmaEncodeCommand("/e", 8000, 11025, 1, "/t", "/a").back(), "8_11_1");
    EXPECT_THAT(Mp3DecodeCommand("-e", "-a.mp3", "-t.wav"),
                ElementsAre("./-e", "--decode", "./-a.mp3", "./-t.wav"))
        << "a name is no option";
    EXPECT_EQ(CommandLineShown(WmaEncodeCommand("/the e", 128000, 44100, 2, "/t.wav", "/a b.wma")),
              "\"/the e\" -input \"/t.wav\" -output \"/a b.wma\" -a_setting 128_44_2");
}

TEST_F(EncoderTest, BitRatesFollowTheSamplingRate) {
    EXPECT_THAT(Mp3BitRates(44100),
                ElementsAre(32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320));
    EXPECT_EQ(Mp3BitRates(25001).front(), 32);
    EXPECT_THAT(Mp3BitRates(25000),
                ElementsAre(8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160));
    EXPECT_EQ(Mp3BitRates(44100)[Mp3BitRatePlace(44100, 7)], 128);
    EXPECT_EQ(Mp3BitRates(22050)[Mp3BitRatePlace(22050, 320)], 64);
    EXPECT_EQ(Mp3BitRates(22050)[Mp3BitRatePlace(22050, 160)], 160);
    EXPECT_THAT(WmaBitRates(44100, 2), ElementsAre(192, 160, 128, 96, 80, 64, 48, 32));
    EXPECT_THAT(WmaBitRates(8000, 2), ElementsAre(12));
    EXPECT_THAT(WmaBitRates(11025, 1), ElementsAre(10, 8));
    EXPECT_THAT(WmaBitRates(11025, 2), IsEmpty());
    EXPECT_THAT(WmaBitRates(48000, 1), IsEmpty());
    EXPECT_THAT(WmaBitRates(96000, 2), IsEmpty());
}

// ---- Parameters

TEST_F(EncoderTest, ParametersAreAskedKeptAndReused) {
    std::int32_t BitRate = 0;
    std::int32_t StereoMode = 0;
    bool Ok = false;
    Dialogs.Mp3 = {192, 2, 44100};
    GetMp3Parameters(44100, true, BitRate, StereoMode, Ok);
    EXPECT_TRUE(Ok) << "128 of the first time stands in the list";
    EXPECT_EQ(BitRate, 128);
    EXPECT_FALSE(Mp3ParamsChosen);
    GetMp3Parameters(44100, false, BitRate, StereoMode, Ok);
    EXPECT_TRUE(Ok);
    EXPECT_EQ(BitRate, 192);
    EXPECT_EQ(StereoMode, 2);
    EXPECT_TRUE(Mp3ParamsChosen);
    EXPECT_EQ(IniGet("Mp3", "BitRate", ""), "192");
    EXPECT_EQ(IniGet("Mp3", "StereoMode", ""), "2");
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("mp3 128 0 44100"));
    GetMp3Parameters(22050, true, BitRate, StereoMode, Ok);
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("mp3 192 2 22050")) << "192 is none of its rates";
    Dialogs.Ok = false;
    Dialogs.Mp3.CurrentBitRate = 320;
    GetMp3Parameters(44100, false, BitRate, StereoMode, Ok);
    EXPECT_FALSE(Ok);
    EXPECT_EQ(IniGet("Mp3", "BitRate", ""), "192");
}

TEST_F(EncoderTest, SettingsThatMakeNoSenseAskAgain) {
    for (const char* Text : {"", "abc", "-1", "1e300", "99999999999"}) {
        IniPut("Mp3", "BitRate", Text);
        std::int32_t BitRate = 0;
        std::int32_t StereoMode = 0;
        bool Ok = false;
        GetMp3Parameters(44100, true, BitRate, StereoMode, Ok);
        EXPECT_EQ(Dialogs.TakeCalls().size(), 1U) << Text;
    }
}

// ---- Saving

TEST_F(EncoderTest, TheEncoderGetsAWavFileAndWhatItWritesBecomesTheFile) {
    Use("cp \"$3\" \"" + Session.Path("seen.wav") + "\"; printf encoded >\"$4\"");
    Fill();
    AuWriteMode = 1;
    ASSERT_TRUE(Write());
    EXPECT_EQ(TargetText(), "encoded");
    const auto Words = WordsSaid();
    ASSERT_EQ(Words.size(), 4U);
    EXPECT_EQ(Words[0], "-b");
    EXPECT_EQ(Words[1], "128");
    EXPECT_TRUE(Words[2].starts_with(SessionDir + "/tm") && Words[2].ends_with(".wav"));
    ASSERT_TRUE(OpenSave.FileWriteWave(Store, Session.Path("same.wav")));
    EXPECT_EQ(TestSession::ReadFile(Session.Path("seen.wav")),
              TestSession::ReadFile(Session.Path("same.wav")));
    EXPECT_EQ(AuWriteMode, 0) << "a WAV file was written";
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("mp3 128 0 44100"));
    ASSERT_TRUE(Write(true));
    EXPECT_THAT(Dialogs.TakeCalls(), IsEmpty());
}

TEST_F(EncoderTest, APartAsksEachTime) {
    Use("cp \"$3\" \"$4\"");
    Fill();
    ASSERT_TRUE(OpenSave.FileWriteMp3Part(Store, 11, 30, 2, Target()));
    EXPECT_EQ(fs::file_size(Target()), 44U + 40U);
    ASSERT_TRUE(OpenSave.FileWriteMp3Part(Store, 11, 30, 0, Target()));
    EXPECT_EQ(fs::file_size(Target()), 44U + 80U);
    EXPECT_EQ(Dialogs.TakeCalls().size(), 2U);
    EXPECT_FALSE(OpenSave.FileWriteMp3Part(Store, 0, 30, 0, Target()));
    EXPECT_THAT(Messages.Texts(), ElementsAre("Invalid selection to save selected"));
}

TEST_F(EncoderTest, CancelOfTheParametersWritesNothing) {
    Use("printf encoded >\"$4\"");
    Fill();
    OldTarget();
    Dialogs.Ok = false;
    EXPECT_FALSE(Write());
    EXPECT_EQ(TargetText(), "old");
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(EncoderTest, EncodersThatFailLeaveTheOldFileAndAreTold) {
    Fill();
    OldTarget();
    const std::string Path = Session.Path("encoder");
    const struct {
        const char* Body;
        std::string Text;
    } Cases[] = {
        {"exit 3", "The encoder failed (exit code 3)\n" + Path},
        {"printf half >\"$4\"; echo 'begin' >&2; printf 'unknown rate\\r\\n' >&2; exit 1",
         "The encoder failed (exit code 1)\n" + Path + "\n\nunknown rate"},
        {"printf half >\"$4\"; kill -9 $$", "The encoder failed (exit code 137)\n" + Path},
        {"exit 0", "The encoder wrote nothing\n" + Path},
        {": >\"$4\"", "The encoder wrote nothing\n" + Path},
    };
    for (const auto& Case : Cases) {
        Use(Case.Body);
        EXPECT_FALSE(Write());
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Case.Text + Unchanged)) << Case.Body;
        EXPECT_EQ(TargetText(), "old") << Case.Body;
    }
    fs::remove(Target());
    Use("exit 3");
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("The encoder failed (exit code 3)\n" + Path));
    EXPECT_FALSE(fs::exists(Target()));
}

TEST_F(EncoderTest, AFileThatIsNoProgramIsToldInTheSystemsWords) {
    Fill();
    OldTarget();
    ChooseEncoder(EncoderMp3, Session.WriteFile("text", {'x'}));
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Permission denied\n" + Session.Path("text")));
    fs::permissions(Session.Path("text"), fs::perms::owner_all);
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Exec format error\n" + Session.Path("text")));
    EXPECT_EQ(TargetText(), "old");
}

TEST_F(EncoderTest, OneThatNeverEndsCanBeEndedWithAllThatItStarted) {
    // What it starts writes into a pipe whose end is seen when all writers are gone.
    ASSERT_EQ(std::system(("mkfifo '" + Session.Path("pipe") + "'").c_str()), 0);
    const std::string Reader = Session.Path("ended");
    ASSERT_EQ(std::system(("(cat '" + Session.Path("pipe") + "' >/dev/null; : >'" + Reader +
                           "') >/dev/null 2>&1 &")
                              .c_str()),
              0);
    Use("printf half >\"$4\"; sh -c 'trap \"\" TERM; while :; do sleep 1; done' >'" +
        Session.Path("pipe") + "' & wait");
    Fill();
    OldTarget();
    Dialogs.EndsIt = true;
    EXPECT_FALSE(Write());
    EXPECT_EQ(Dialogs.WaitedFor, Session.Path("encoder"));
    EXPECT_EQ(TargetText(), "old");
    EXPECT_THAT(Messages.Texts(), IsEmpty()) << "the user has ended it";
    const auto Latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!fs::exists(Reader) && std::chrono::steady_clock::now() < Latest)
        std::this_thread::yield();
    EXPECT_TRUE(fs::exists(Reader)) << "its child still runs";
}

TEST_F(EncoderTest, ASlowOneIsWaitedFor) {
    Use("sleep 0.4; printf encoded >\"$4\"");
    Fill();
    ASSERT_TRUE(Write());
    EXPECT_EQ(Dialogs.WaitedFor, Session.Path("encoder"));
    EXPECT_EQ(TargetText(), "encoded");
    SetEncoderWaitDialog(nullptr);
    ASSERT_TRUE(Write());
}

TEST_F(EncoderTest, ATargetThatCannotBeReplacedIsToldBeforeAnythingIsAsked) {
    Use("printf encoded >\"$4\"");
    Fill();
    OldTarget();
    fs::permissions(Target(), fs::perms::owner_read);
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Permission denied\n" + Target()));
    EXPECT_THAT(Dialogs.TakeCalls(), IsEmpty());
    EXPECT_TRUE(WordsSaid().empty());
    EXPECT_EQ(TargetText(), "old");
}

TEST_F(EncoderTest, AFullDiskLeavesBothTheOldFileAndTheDocument) {
    Use("printf encoded >\"$4\"");
    Fill();
    OldTarget();
    {
        const test::FullDisk Disk;
        Disk.Fill();
        EXPECT_FALSE(OpenSave.FileWriteMp3(Store, Target(), true));
    }
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("File too large")));
    EXPECT_EQ(TargetText(), "old");
    EXPECT_EQ(test::LeftOf(Store), test::Noise(1000, 16, 3));
}

TEST_F(EncoderTest, NamesWithAwkwardLettersCrossAsTheyAre) {
    for (const std::string Name : {"a b.mp3", "it's \"q\".mp3", "$HOME;`ls`.mp3", "-b.mp3",
                                   "two\nlines.mp3", "caf\xE9\xFF.mp3", "*?[a].mp3", "a\\b.mp3"}) {
        const std::string Path = Session.Path(Name);
        Use("cp \"$3\" \"$4\"");
        Fill();
        ASSERT_TRUE(OpenSave.FileWriteMp3(Store, Path, true)) << Name;
        EXPECT_EQ(fs::file_size(Path), 44U + 4000U) << Name;
        // A decoder that copies makes the file readable as what was written.
        Use("printf '%s' \"$2\" >'" + Session.Path("name") + "'; cp \"$2\" \"$3\"");
        ASSERT_TRUE(Load(Path)) << Name;
        const Bytes Seen = TestSession::ReadFile(Session.Path("name"));
        EXPECT_EQ(std::string(Seen.begin(), Seen.end()), Path);
        EXPECT_EQ(test::LeftOf(Store), test::Noise(1000, 16, 3));
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(EncoderTest, TheEncodersOwnPathMayHaveThemToo) {
    Fill();
    for (const std::string Name : {"my encoder", "it's \"q\"", "$x;y"}) {
        ChooseEncoder(EncoderMp3, MakeEncoder("printf encoded >\"$4\"", Name));
        ASSERT_TRUE(Write()) << Name;
        EXPECT_EQ(TargetText(), "encoded");
        fs::remove(Target());
    }
}

// ---- Opening

TEST_F(EncoderTest, TheDecodedFileIsTheDocumentsAndGoesWithIt) {
    const Samples All = test::Noise(1000, 16, 5);
    Session.WriteFile("a.mp3", test::WavFile{.Data = test::AudioBytes(All, 16)}.Whole());
    Use("cp \"$2\" \"$3\"");
    ASSERT_TRUE(Load(Session.Path("a.mp3")));
    EXPECT_THAT(WordsSaid(), ElementsAre("--decode", Session.Path("a.mp3"), HasSubstr("/tm")));
    EXPECT_EQ(test::LeftOf(Store), All);
    EXPECT_EQ(test::TablesInUse().OrgFiles, 1);
    EXPECT_THAT(TestSession::SessionFiles(), ElementsAre(testing::EndsWith(".wav")));
    Store.StorageReset();
    FilesSweep();
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(EncoderTest, ADecoderThatWritesNothingIsToldAndTheDocumentStays) {
    Fill();
    for (const char* Body : {"exit 0", "exit 1"}) {
        Use(Body);
        EXPECT_FALSE(Load(Session.Path("a.mp3")));
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Failed in decoding to intermediate wave file"));
    }
    EXPECT_EQ(test::LeftOf(Store), test::Noise(1000, 16, 3));
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(EncoderTest, ADecoderThatWritesSomethingElseIsToldByTheReader) {
    Fill();
    Use("printf 'not a wave' >\"$3\"");
    EXPECT_FALSE(Load(Session.Path("a.mp3")));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre(HasSubstr("No wave Data found in file"), "Wave file loading failed"));
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(EncoderTest, WhatADecoderHadWrittenWhenItFailedOpens) {
    test::WavFile Half{.Data = test::AudioBytes(test::Noise(100, 16, 5), 16)};
    Half.DataSize = 2000;
    Session.WriteFile("a.mp3", Half.Whole());
    Use("cp \"$2\" \"$3\"; exit 1");
    EXPECT_TRUE(Load(Session.Path("a.mp3")));
    EXPECT_EQ(Store.WavWaveINos, 100);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr("Header shows")));
}

TEST_F(EncoderTest, ADecoderThatIsEndedLeavesTheDocumentAsItWas) {
    Fill();
    Use("printf half >\"$3\"; exec sleep 1000");
    Dialogs.EndsIt = true;
    EXPECT_FALSE(Load(Session.Path("a.mp3")));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(test::LeftOf(Store), test::Noise(1000, 16, 3));
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

// ---- A WAV file that exists

TEST_F(EncoderTest, AWavFileIsConvertedAndDeleted) {
    const auto Wav = [this] {
        return Session.WriteFile("in.wav", test::WavFile{.Rate = 22050, .Data = Bytes(50)}.Whole());
    };
    EXPECT_FALSE(OpenSave.ConvertWaveFileToMp3File(Session.Path("none.wav"), Target(), false));
    EXPECT_FALSE(OpenSave.ConvertWaveFileToMp3File(Wav(), Target(), false)) << "no encoder";
    Use("cp \"$3\" \"$4\"");
    Dialogs.Ok = false;
    EXPECT_FALSE(OpenSave.ConvertWaveFileToMp3File(Wav(), Target(), false));
    EXPECT_TRUE(fs::exists(Session.Path("in.wav")));
    Dialogs.Ok = true;
    Dialogs.TakeCalls();
    EXPECT_TRUE(OpenSave.ConvertWaveFileToMp3File(Wav(), Target(), false));
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("mp3 128 0 22050"));
    EXPECT_FALSE(fs::exists(Session.Path("in.wav")));
    EXPECT_EQ(fs::file_size(Target()), 94U);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

// ---- WMA

TEST_F(EncoderTest, WmaHasItsWordsAndPutsThemOnTheClipboard) {
    static std::string Shown;
    SetCommandLineRoutine([](const std::string& Text) { Shown = Text; });
    UseForWma("cp \"$2\" \"$4\"");
    Fill();
    Dialogs.WmaBitRate = 64000;
    const std::string Path = Session.Path("my out.wma");
    ASSERT_TRUE(OpenSave.FileWriteWma(Store, Path));
    SetCommandLineRoutine(nullptr);
    EXPECT_THAT(Dialogs.TakeCalls(), ElementsAre("wma 128000 2 44100"));
    EXPECT_EQ(IniGet("Wma", "BitRate", ""), "64000");
    const auto Words = WordsSaid();
    ASSERT_EQ(Words.size(), 6U);
    EXPECT_EQ(Words[0], "-input");
    EXPECT_EQ(Words[2], "-output");
    EXPECT_EQ(Words[4], "-a_setting");
    EXPECT_EQ(Words[5], "64_44_2");
    EXPECT_EQ(fs::file_size(Path), 44U + 4000U);
    EXPECT_EQ(Shown, "\"" + Session.Path("encoder") + "\" -input \"" + Words[1] + "\" -output \"" +
                         Path + "\" -a_setting 64_44_2");
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(EncoderTest, AProtectedWmaFileIsTold) {
    UseForWma("cp \"$2\" \"$4\"");
    Fill();
    const std::string Path = Session.WriteFile("out.wma", {'o', 'l', 'd'});
    fs::permissions(Path, fs::perms::owner_read);
    EXPECT_FALSE(OpenSave.FileWriteWma(Store, Path));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("There is a problem in deleting the existing file\n" + Path +
                            "\nPlease delete this file manually and try again"));
    Dialogs.Ok = false;
    EXPECT_FALSE(OpenSave.FileWriteWma(Store, Path));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(fs::file_size(Path), 3U);
}

TEST_F(EncoderTest, AFailingWmaEncoderThrowsItsWords) {
    UseForWma("echo 'no such codec' >&2; exit 1");
    Fill();
    const std::string Path = Session.WriteFile("out.wma", {'o', 'l', 'd'});
    EXPECT_THROW(
        {
            try {
                (void)OpenSave.FileWriteWma(Store, Path);
            } catch (const std::exception& What) {
                EXPECT_EQ(What.what(), "The encoder failed (exit code 1)\n" +
                                           Session.Path("encoder") + "\n\nno such codec" +
                                           Unchanged);
                throw;
            }
        },
        std::exception);
    EXPECT_EQ(fs::file_size(Path), 3U);
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

} // namespace
} // namespace quoril

// MP3 files of lame and ffmpeg, opened by way of lame, against what lame itself decodes; ours, read
// by ffmpeg; and WMA files by way of the encoder that comes with the editor.
#include "audiofile/DocumentFile.h"
#include "audiofile/OpenSaveClass.h"
#include "platform/ChildProcess.h"
#include "platform/ProgramPlaces.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "ScriptedDialogs.h"
#include "SoundTools.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

/// Beside the editor in the folder of the build.
std::string WmaEncoder() {
    return FolderOfProgram() + "/../../src/quoril-wma-encoder";
}

class Mp3Material : public ::testing::Test {
  protected:
    Mp3Material() {
        const std::string Lame = EncoderToPropose(EncoderMp3);
        EXPECT_TRUE(fs::exists(Lame)) << "lame is needed by this test";
        ChooseEncoder(EncoderMp3, Lame);
        ChooseEncoder(EncoderWma, WmaEncoder());
    }
    [[nodiscard]] std::string Wav() const { return Session.Path("in.wav"); }
    [[nodiscard]] std::string Mp3() const { return Session.Path("made.mp3"); }
    void MakeWav(std::int32_t Channels, std::int32_t Rate) const {
        test::MakeBySox(Wav(), Channels, Rate, {"-b", "16"});
    }
    bool Load(const std::string& Name) {
        bool Result = false;
        OpenSaveClass().FileLoadMp3(Store, Name, Result);
        return Result;
    }
    /// The document has what lame decodes by itself.
    void ExpectAsLameDecodes(std::int32_t Channels, std::int32_t Rate) {
        const std::string Decoded = Session.Path("decoded.wav");
        ASSERT_NO_FATAL_FAILURE(test::RunTool({"lame", "--quiet", "--decode", Mp3(), Decoded}));
        const Samples Expected = test::ReadBySox(Decoded, 16, Session.Path("decoded.raw"));
        ASSERT_GT(Expected.size(), 1000U);
        ASSERT_TRUE(Load(Mp3()));
        EXPECT_EQ(Store.WavFmtChannel, Channels);
        EXPECT_EQ(Store.WavFmtFreq, Rate);
        EXPECT_TRUE(test::LeftOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 0) : Expected));
        EXPECT_TRUE(test::RightOf(Store) ==
                    (Channels == 2 ? test::EveryOther(Expected, 1) : Samples()));
    }

    TestSession Session;
    test::ScriptedMessages Messages;
    test::ScriptedEncoder Dialogs;
    FileMemoClass Store;
};

TEST_F(Mp3Material, FilesOfLameOpenAtEveryRate) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Rate : {8000, 11025, 16000, 22050, 24000, 32000, 44100, 48000}) {
            SCOPED_TRACE(Rate);
            ASSERT_NO_FATAL_FAILURE(MakeWav(Channels, Rate));
            // At fewer bits lame would go over to a lower rate.
            ASSERT_NO_FATAL_FAILURE(test::RunTool(
                {"lame", "--quiet", "--cbr", "-b", Rate > 25000 ? "160" : "80", Wav(), Mp3()}));
            ASSERT_NO_FATAL_FAILURE(ExpectAsLameDecodes(Channels, Rate));
        }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(Mp3Material, VariableRatesTagsAndPicturesOpen) {
    ASSERT_NO_FATAL_FAILURE(MakeWav(2, 44100));
    const std::string Picture = Session.Path("cover.png");
    ASSERT_NO_FATAL_FAILURE(test::RunTool({"ffmpeg", "-v", "error", "-f", "lavfi", "-i",
                                           "color=c=red:s=64x64", "-frames:v", "1", Picture}));
    for (const auto& Words : std::vector<std::vector<std::string>>{
             {"-V", "4"},
             {"--abr", "140"},
             {"-V", "2", "--tt", "A title", "--ta", "Somebody", "--add-id3v2"},
             {"-b", "128", "--ti", Picture, "--id3v2-only"},
             {"-b", "96", "-m", "m"}}) {
        std::vector<std::string> Line = {"lame", "--quiet"};
        Line.insert(Line.end(), Words.begin(), Words.end());
        Line.insert(Line.end(), {Wav(), Mp3()});
        ASSERT_NO_FATAL_FAILURE(test::RunTool(Line));
        ASSERT_NO_FATAL_FAILURE(ExpectAsLameDecodes(Words.back() == "m" ? 1 : 2, 44100));
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(Mp3Material, FilesOfFfmpegOpen) {
    for (const std::int32_t Rate : {16000, 44100}) {
        ASSERT_NO_FATAL_FAILURE(test::MakeByFfmpeg(Mp3(), 2, Rate, "libmp3lame",
                                                   {"-b:a", "96k", "-metadata", "title=Noise"}));
        ASSERT_NO_FATAL_FAILURE(ExpectAsLameDecodes(2, Rate));
    }
}

TEST_F(Mp3Material, OneThatIsCutOffOpensAsFarAsItGoes) {
    ASSERT_NO_FATAL_FAILURE(MakeWav(2, 44100));
    ASSERT_NO_FATAL_FAILURE(test::RunTool({"lame", "--quiet", "-b", "128", Wav(), Mp3()}));
    ASSERT_TRUE(Load(Mp3()));
    const std::int32_t Whole = Store.WavWaveINos;
    fs::resize_file(Mp3(), fs::file_size(Mp3()) / 2 + 7);
    ASSERT_TRUE(Load(Mp3()));
    EXPECT_GT(Store.WavWaveINos, Whole / 4);
    EXPECT_LT(Store.WavWaveINos, Whole);
}

TEST_F(Mp3Material, WhatIsNoMp3IsToldAndTheDocumentStays) {
    test::FillStore(Store, {1, 12345, 16}, {3, 1, 4});
    for (const Bytes& Junk : {Bytes(), Bytes(5000, 'x')}) {
        Session.WriteFile("made.mp3", Junk);
        EXPECT_FALSE(Load(Mp3()));
        EXPECT_THAT(Messages.TakeTexts(), ::testing::Not(IsEmpty()));
        EXPECT_THAT(test::LeftOf(Store), ElementsAre(3, 1, 4));
        EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
    }
}

TEST_F(Mp3Material, OursAreReadByFfmpegAndCarryTheSound) {
    for (const std::int32_t Channels : {1, 2}) {
        ASSERT_NO_FATAL_FAILURE(
            test::RunTool({"sox", "-V1", "-R", "-n", "-r", "44100", "-c", std::to_string(Channels),
                           "-b", "16", Wav(), "synth", "1", "sine", "440", "gain", "-6"}));
        bool Result = false;
        OpenSaveClass().FileLoadWave(Store, Wav(), Result);
        ASSERT_TRUE(Result);
        Dialogs.Mp3 = {192, 0, 44100};
        ASSERT_TRUE(OpenSaveClass().FileWriteMp3(Store, Mp3(), false));
        const Samples Back = test::ReadByFfmpeg(Mp3(), 16, Session.Path("back.raw"));
        ASSERT_GT(Back.size(), 40000U * static_cast<std::size_t>(Channels));
        double Power = 0;
        for (const std::int16_t Sample : Back)
            Power += static_cast<double>(Sample) * Sample;
        // A sine of half the full height.
        EXPECT_NEAR(std::sqrt(Power / static_cast<double>(Back.size())), 16422 / std::sqrt(2.0),
                    600);
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(Mp3Material, EightBitsAndOddRatesCanBeSaved) {
    Dialogs.Mp3 = {64, 0, 22050};
    for (const std::int32_t Rate : {8000, 22050, 96000}) {
        Store.StorageReset();
        test::FillStore(Store, {1, Rate, 8}, test::Noise(20000, 8, 1));
        ASSERT_TRUE(OpenSaveClass().FileWriteMp3(Store, Mp3(), false)) << Rate;
        EXPECT_TRUE(Load(Mp3()));
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

// ---- WMA

TEST_F(Mp3Material, WmaFilesOfEveryFormatAreReadByFfmpeg) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Rate : {8000, 11025, 16000, 22050, 32000, 44100, 48000}) {
            const auto Rates = WmaBitRates(Rate, Channels);
            if (Rates.empty())
                continue;
            ASSERT_NO_FATAL_FAILURE(MakeWav(Channels, Rate));
            bool Result = false;
            OpenSaveClass().FileLoadWave(Store, Wav(), Result);
            ASSERT_TRUE(Result);
            Dialogs.WmaBitRate = Rates.back() * 1000;
            const std::string Wma = Session.Path("out.wma");
            ASSERT_TRUE(OpenSaveClass().FileWriteWma(Store, Wma)) << Rate;
            const Samples Back = test::ReadByFfmpeg(Wma, 16, Session.Path("back.raw"));
            // Frames that are not full at the end of the sound are left out.
            EXPECT_GT(Back.size(),
                      static_cast<std::size_t>(Rate) / 5 * static_cast<std::size_t>(Channels));
        }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(Mp3Material, TheWmaEncoderTakesOnlyItsOwnWords) {
    const std::string In = Session.Path("in.wav");
    const std::string Out = Session.Path("-o:u\nt $x.wma");
    for (const std::vector<std::string>& Words : std::vector<std::vector<std::string>>{
             {},
             {"-input", In, "-output", Out},
             {"-input", In, "-output", Out, "-a_setting", "64_45_2"},
             {"-input", In, "-output", Out, "-a_setting", "64_44_3"},
             {"-input", In, "-output", Out, "-a_setting", "64_44_2x"},
             {"-input", In, "-output", Out, "-a_setting", "0_44_2"},
             {"-input", In, "-output", Out, "-b", "64_44_2"},
             {"-input", In, "-output", Out, "-a_setting", "64_44_2", "more"}}) {
        std::vector<std::string> Line = {WmaEncoder()};
        Line.insert(Line.end(), Words.begin(), Words.end());
        EXPECT_EQ(RunAndWait(Line).ExitCode, 2) << ::testing::PrintToString(Words);
    }
    ASSERT_NO_FATAL_FAILURE(MakeWav(2, 44100));
    EXPECT_EQ(
        RunAndWait({WmaEncoder(), "-input", In, "-output", Out, "-a_setting", "64_44_2"}).ExitCode,
        0);
    EXPECT_GT(fs::file_size(Out), 1000U);
    EXPECT_NE(
        RunAndWait({WmaEncoder(), "-input", In + "x", "-output", Out, "-a_setting", "64_44_2"})
            .ExitCode,
        0)
        << "a failure of ffmpeg is one of the encoder";
    ::setenv("PATH", Session.Path("").c_str(), 1);
    EXPECT_EQ(
        RunAndWait({WmaEncoder(), "-input", In, "-output", Out, "-a_setting", "64_44_2"}).ExitCode,
        127);
}

} // namespace
} // namespace quoril

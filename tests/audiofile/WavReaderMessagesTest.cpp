// Every word of the reader, in its order, and what is left of the old document after each.
#include "audiofile/OpenSaveClass.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "WavMaker.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace quoril {
namespace {

using test::Bytes;
using test::ScriptedMessages;
using test::TestSession;
using test::WavFile;

namespace fs = std::filesystem;

enum class Old { Kept, Gone };

/// `Texts` as "title|text"; {file} stands for the path.
struct MessageCase {
    std::string Name;
    Bytes File;
    std::vector<std::string> Texts;
    bool Result = false;
    Old Document = Old::Kept;
    std::vector<MsgBoxAnswer> Answers = {};
};

void PrintTo(const MessageCase& Case, std::ostream* Out) {
    *Out << Case.Name;
}

const std::string Failed = "Wave file loading failed";
const std::string ErrorLoading = "Error Loading {file}|";

std::string TagQuestion(const std::string& Number) {
    return "Format Tag = " + Number +
           "\nThis special format can not be opened.\n"
           "Please contact us with the format tag number.\n\n"
           "Click 'OK' to try to open it any way.";
}

std::string BitsMessage(const std::string& Number) {
    return ErrorLoading + "Bits per sample " + Number +
           " is invalid or not supported (at byte location 35)";
}

std::vector<MessageCase> AllCases() {
    const Bytes Data(100, 1);
    const auto Wav = [&](std::int32_t Tag, std::int32_t Channels, std::int32_t Rate,
                         std::int32_t Bits) {
        return WavFile{.Tag = Tag, .Channels = Channels, .Rate = Rate, .Bits = Bits, .Data = Data};
    };
    const auto NoData = [](WavFile File) {
        File.DataName = "dato";
        return File.Whole();
    };
    const std::string Mp3 = "This is mp3-compressed data (inside a .wav file)\n"
                            "Please rename this file from .wav to .mp3 and open it.\n"
                            "Contact us if you need help.";
    const std::string Adpcm = "Can not open this (4bit/adpcm) format";
    const std::string NotFound = ErrorLoading + "The String 'Data' - is not found";
    const std::string Channel = ErrorLoading + "Channel info invalid at byte location 23";
    WavFile Long = Wav(1, 1, 8000, 8);
    Long.DataSize = 180;
    const std::string Header = "Header shows that the size of audio is\n"
                               "180 Samples (0.022 Seconds)\n"
                               "But as per the size of the file it will be\n"
                               "100 Samples (0.013 Seconds)";
    using enum MsgBoxAnswer;
    return {
        {"GoodFile", Wav(1, 1, 44100, 16).Whole(), {}, true, Old::Gone},
        {"EmptyFile", {}, {ErrorLoading + "No wave Data found in file", Failed}},
        {"FileOf44Bytes", Bytes(44, 1), {ErrorLoading + "No wave Data found in file", Failed}},
        {"Mp3Inside", Wav(85, 1, 44100, 16).Whole(), {Mp3}},
        {"Mp3InsideAndNothingElseRight", NoData(Wav(85, 9, 1, 99)), {Mp3}},
        {"Adpcm4Mono",
         Wav(2, 1, 44100, 4).Whole(),
         {Adpcm, "Wave file load error|Division by zero"},
         false,
         Old::Gone},
        {"Adpcm4Stereo", Wav(2, 2, 44100, 4).Whole(), {Adpcm}, true, Old::Gone},
        {"AdpcmWithoutData", NoData(Wav(2, 1, 44100, 4)), {Adpcm, NotFound, Failed}},
        {"TagRefused",
         Wav(3, 1, 44100, 16).Whole(),
         {TagQuestion("3")},
         false,
         Old::Kept,
         {Cancel}},
        {"TagAccepted", Wav(3, 1, 44100, 16).Whole(), {TagQuestion("3")}, true, Old::Gone, {Ok}},
        {"TagZero", Wav(0, 1, 44100, 16).Whole(), {TagQuestion("0")}, false, Old::Kept, {Cancel}},
        {"TagNegative",
         Wav(0xFFFE, 1, 44100, 16).Whole(),
         {TagQuestion("-2")},
         true,
         Old::Gone,
         {Ok}},
        {"TagAcceptedThenBitsRefused",
         Wav(3, 2, 44100, 32).Whole(),
         {TagQuestion("3"), BitsMessage("32"), Failed},
         false,
         Old::Gone,
         {Ok}},
        {"NoData", NoData(Wav(1, 1, 44100, 16)), {NotFound, Failed}},
        {"NoDataComesBeforeTheRate", NoData(Wav(1, 1, 1, 16)), {NotFound, Failed}},
        {"RateTooLow",
         Wav(1, 1, 999, 16).Whole(),
         {"Sampling rate 999 Hz is not supported", Failed}},
        {"RateTooHigh",
         Wav(1, 1, 200001, 16).Whole(),
         {"Sampling rate 200001 Hz is not supported", Failed}},
        {"RateNegative",
         Wav(1, 1, -44100, 16).Whole(),
         {"Sampling rate -44100 Hz is not supported", Failed}},
        {"RateLowest", Wav(1, 1, 1000, 16).Whole(), {}, true, Old::Gone},
        {"RateHighest", Wav(1, 1, 200000, 16).Whole(), {}, true, Old::Gone},
        {"RateComesBeforeTheChannels",
         Wav(1, 7, 999, 3).Whole(),
         {"Sampling rate 999 Hz is not supported", Failed}},
        {"NoChannels", Wav(1, 0, 44100, 16).Whole(), {Channel, Failed}, false, Old::Gone},
        {"ThreeChannels", Wav(1, 3, 44100, 3).Whole(), {Channel, Failed}, false, Old::Gone},
        {"Bits24", Wav(1, 2, 44100, 24).Whole(), {BitsMessage("24"), Failed}, false, Old::Gone},
        {"BitsZero", Wav(1, 2, 44100, 0).Whole(), {BitsMessage("0"), Failed}, false, Old::Gone},
        {"BitsNegative",
         Wav(1, 2, 44100, -8).Whole(),
         {BitsMessage("-8"), Failed},
         false,
         Old::Gone},
        {"PcmOf4BitsMono",
         Wav(1, 1, 44100, 4).Whole(),
         {"Wave file load error|Division by zero"},
         false,
         Old::Gone},
        {"HeaderClaimsMore", Long.Whole(), {Header}, true, Old::Gone},
    };
}

class WavReaderMessages : public ::testing::TestWithParam<MessageCase> {};

INSTANTIATE_TEST_SUITE_P(Each, WavReaderMessages, ::testing::ValuesIn(AllCases()),
                         [](const auto& Info) { return Info.param.Name; });

TEST_P(WavReaderMessages, ComeInOrderAndLeaveTheDocumentAsTold) {
    const MessageCase& Case = GetParam();
    const TestSession Session;
    ScriptedMessages Messages;
    for (const MsgBoxAnswer Answer : Case.Answers)
        Messages.Answer(Answer);
    FileMemoClass Store;
    test::FillStore(Store, {1, 12345, 16}, {3, 1, 4});

    const std::string Path = Session.WriteFile("x.wav", Case.File);
    bool Result = !Case.Result;
    OpenSaveClass().FileLoadWave(Store, Path, Result);

    std::vector<std::string> Expected = Case.Texts;
    for (std::string& Text : Expected)
        if (const std::size_t At = Text.find("{file}"); At != std::string::npos)
            Text.replace(At, 6, Path);
    EXPECT_EQ(Messages.Texts(), Expected);
    EXPECT_EQ(Result, Case.Result);
    EXPECT_FALSE(Store.SwitchUndoOff);
    EXPECT_TRUE(test::CountsHold());
    if (Case.Document == Old::Kept) {
        EXPECT_EQ(test::LeftOf(Store), (test::Samples{3, 1, 4}));
        EXPECT_EQ(Store.WavFmtFreq, 12345);
    } else {
        EXPECT_NE(test::LeftOf(Store), (test::Samples{3, 1, 4}));
        EXPECT_NE(Store.WavFmtFreq, 12345);
    }
    if (Case.Document == Old::Gone && !Case.Result) {
        EXPECT_EQ(Store.WavWaveINos, 0);
        EXPECT_EQ(test::TablesInUse(), test::TableUse()) << "nothing is left in the tables";
    }
}

class WavReaderNames : public ::testing::Test {
  protected:
    void ExpectTexts(const std::string& Path, const std::vector<std::string>& Texts) {
        bool Result = true;
        OpenSaveClass().FileLoadWave(Store, Path, Result);
        EXPECT_FALSE(Result);
        EXPECT_EQ(Messages.TakeTexts(), Texts);
    }
    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
};

TEST_F(WavReaderNames, NoNameAndNoFileEndInOneMessage) {
    ExpectTexts("", {Failed});
    ExpectTexts("   ", {Failed});
    ExpectTexts(Session.Path("missing.wav"), {Failed});
    ExpectTexts(Session.Path("missing/also.wav"), {Failed});
}

TEST_F(WavReaderNames, FoldersPipesAndDevicesFailWithoutWaiting) {
    fs::create_directory(Session.Path("folder.wav"));
    ExpectTexts(Session.Path("folder.wav"), {Failed});
    ASSERT_EQ(::mkfifo(Session.Path("pipe.wav").c_str(), 0600), 0);
    for (const std::string& Path : {Session.Path("pipe.wav"), std::string("/dev/zero")})
        ExpectTexts(Path, {"Error Loading " + Path + "|No wave Data found in file", Failed});
}

TEST_F(WavReaderNames, AFileThatAnotherProgramHoldsForWritingIsRefusedInWords) {
    const std::string Path = Session.WriteFile("x.wav", WavFile{.Data = Bytes(100)}.Whole());
    const int Handle = ::open(Path.c_str(), O_RDWR | O_CLOEXEC);
    struct flock Lock = {};
    Lock.l_type = F_WRLCK;
    Lock.l_whence = SEEK_SET;
    ASSERT_EQ(::fcntl(Handle, F_OFD_SETLK, &Lock), 0);
    ExpectTexts(Path,
                {"Wave file load error|This file is being written by another program\n" + Path});
    ::close(Handle);
    bool Result = false;
    OpenSaveClass().FileLoadWave(Store, Path, Result);
    EXPECT_TRUE(Result);
}

TEST_F(WavReaderNames, LowDiskSpaceIsToldAndLoadingGoesOn) {
    const std::string Path = Session.WriteFile("x.wav", WavFile{.Data = Bytes(100)}.Whole());
    TmpDir0 = Session.Path("no such folder"); // its disk has no free byte that anyone could tell
    bool Result = false;
    OpenSaveClass().FileLoadWave(Store, Path, Result);
    EXPECT_TRUE(Result);
    EXPECT_EQ(Messages.TakeTexts(), std::vector<std::string>{"Free disk space for this is low."});
}

} // namespace
} // namespace quoril

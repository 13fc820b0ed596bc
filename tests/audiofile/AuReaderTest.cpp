// What a Sun/NeXT file becomes when it is opened, and every word of the reader in its order.
#include "audiofile/OpenSaveClass.h"
#include "audiofile/ULawTable.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/OrderLog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "AuMaker.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <tuple>

namespace quoril {
namespace {

using test::AuFile;
using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const std::string Failed = "Sound Clip (Au) file loading failed";

class AuReader : public ::testing::Test {
  protected:
    bool Load(const std::string& Path) {
        bool Result = false;
        OpenSave.FileLoadAuSnd(Store, Path, Result);
        EXPECT_FALSE(Store.SwitchUndoOff);
        EXPECT_TRUE(test::CountsHold());
        return Result;
    }
    bool LoadBytes(const Bytes& What) { return Load(Session.WriteFile("a.au", What)); }
    void ExpectFormat(std::int32_t Channels, std::int32_t Rate, std::int32_t Bits) const {
        EXPECT_EQ(Store.WavFmtChannel, Channels);
        EXPECT_EQ(Store.WavFmtFreq, Rate);
        EXPECT_EQ(Store.WavFmtBits, Bits);
    }

    TestSession Session;
    ScriptedMessages Messages;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
};

// ---- Samples

TEST_F(AuReader, SixteenBitSamplesHaveTheHighByteFirst) {
    ASSERT_TRUE(LoadBytes(
        AuFile{.Rate = 8000, .Channels = 2, .Data = {0x12, 0x34, 0xFF, 0xFE, 0x80, 0x00, 0x7F, 0xFF,
                                                     0,    0,    0,    1,    0,    0,    0,    0,
                                                     0,    0,    0,    0,    0,    0,    0,    0}}
            .Whole()));
    ExpectFormat(2, 8000, 16);
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(0x1234, -32768, 0, 0, 0, 0));
    EXPECT_THAT(test::RightOf(Store), ElementsAre(-2, 32767, 1, 0, 0, 0));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuReader, EightBitSamplesAreTakenAsUnsigned) {
    Bytes Data = {0, 127, 128, 255};
    Data.resize(21, 128);
    ASSERT_TRUE(LoadBytes(AuFile{.Encoding = 2, .Data = Data}.Whole()));
    ExpectFormat(1, 44100, 8);
    Samples Expected = {-128, -1, 0, 127};
    Expected.resize(21, 0);
    EXPECT_EQ(test::LeftOf(Store), Expected);
}

TEST_F(AuReader, ULawBecomes16Bits) {
    const Bytes Codes = test::AudioBytes(test::Noise(600, 8, 3), 8);
    ASSERT_TRUE(
        LoadBytes(AuFile{.Encoding = 1, .Rate = 8000, .Channels = 2, .Data = Codes}.Whole()));
    ExpectFormat(2, 8000, 16);
    Samples Expected;
    for (const std::uint8_t Code : Codes)
        Expected.push_back(ULawDecodeTable()[Code]);
    EXPECT_EQ(test::LeftOf(Store), test::EveryOther(Expected, 0));
    EXPECT_EQ(test::RightOf(Store), test::EveryOther(Expected, 1));
}

TEST_F(AuReader, NoFileIsHeldAndTheBlocksLieInMemory) {
    OpenSave.FileBlockLength = 16;
    for (const std::int32_t Encoding : {1, 2, 3})
        for (const std::int32_t Channels : {1, 2}) {
            const std::int32_t SampleBytes = Encoding == 3 ? 2 : 1;
            const std::int32_t Chunk = (SampleBytes == 1 ? 32 : 16) / Channels;
            ASSERT_TRUE(LoadBytes(
                AuFile{.Encoding = Encoding,
                       .Channels = Channels,
                       .Data = test::AudioBytes(test::Noise(70 * Channels * SampleBytes, 8, 3), 8)}
                    .Whole()));
            EXPECT_EQ(test::TablesInUse().OrgFiles, 0);
            std::int32_t Position = 1;
            for (const std::int32_t BlockNo : Store.BlocksL().Numbers()) {
                const BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
                EXPECT_EQ(Block.BlockKind, BlockMemory);
                EXPECT_EQ(Block.BlockStart, Position);
                EXPECT_EQ(Block.BlockLen, std::min(Chunk, 71 - Position));
                Position += Block.BlockLen;
            }
            EXPECT_EQ(Position, 71);
            EXPECT_EQ(Store.BlocksR().Numbers().size(),
                      Channels == 2 ? Store.BlocksL().Numbers().size() : 0U);
        }
}

TEST_F(AuReader, LongFilesAreWholeAcrossChunksAndSlices) {
    for (const std::int32_t Frames : {65535, 65536, 65537, 262145, 524289, 1200000}) {
        const Samples All = test::Noise(2 * Frames, 16, 5);
        ASSERT_TRUE(LoadBytes(AuFile{.Channels = 2, .Data = test::SwappedBytes(All)}.Whole()));
        ASSERT_TRUE(test::LeftOf(Store) == test::EveryOther(All, 0)) << Frames;
        ASSERT_TRUE(test::RightOf(Store) == test::EveryOther(All, 1)) << Frames;
    }
}

TEST_F(AuReader, MoreThanTheMemoryBudgetGoesToWorkFiles) {
    const Samples All = test::Noise(12000000, 16, 6);
    ASSERT_TRUE(LoadBytes(AuFile{.Data = test::SwappedBytes(All)}.Whole()));
    EXPECT_LE(MemoryUsed, 5 * 2 * 2 * OpenSave.FileBlockLength);
    EXPECT_FALSE(TestSession::SessionFiles().empty());
    EXPECT_TRUE(test::LeftOf(Store) == All);
}

TEST_F(AuReader, LoadingIsNotUndoneAndClearsFlagsAndMode) {
    WaveChanged = BookmarkChanged = true;
    AuWriteMode = 1;
    ASSERT_TRUE(LoadBytes(AuFile{.Data = Bytes(40)}.Whole()));
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_EQ(AuWriteMode, 0);
    EXPECT_EQ(Store.UndoCount(), 0);
}

// ---- Offsets and sizes

TEST_F(AuReader, NotesBetweenHeaderAndSamplesArePassedOver) {
    ASSERT_TRUE(LoadBytes(AuFile{
        .Offset = 24 + 13, .Notes = Bytes(13, 'x'), .Data = test::SwappedBytes({1, -2, 3, 4})}
                              .Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, -2, 3, 4));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuReader, TheOffsetIsTakenAtFaceValue) {
    AuFile File{.Offset = 0, .Encoding = 2, .DataSize = 4};
    File.Data = Bytes(21, 128);
    ASSERT_TRUE(LoadBytes(File.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre('.' - 128, 's' - 128, 'n' - 128, 'd' - 128));
}

TEST_F(AuReader, AnOffsetBehindTheEndGivesAnEmptyDocument) {
    for (const std::int64_t Offset : {65, 1000, 0x7FFFFFFF}) {
        AuFile File{.Offset = Offset, .Data = Bytes(40)};
        ASSERT_TRUE(LoadBytes(File.Whole()));
        EXPECT_EQ(Store.WavWaveINos, 0);
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Header shows that the size of audio is\n"
                                                      "20 Samples (0.000 Seconds)\n"
                                                      "But as per the size of the file it will be\n"
                                                      "0 Samples (0.000 Seconds)"));
    }
}

TEST_F(AuReader, AnOffsetBelowZeroFailsInWords) {
    ASSERT_FALSE(LoadBytes(AuFile{.Offset = -8, .Data = Bytes(40)}.Whole()));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file load error|Invalid argument\n" + Session.Path("a.au")));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
}

TEST_F(AuReader, ASizeThatTheFileDoesNotHaveIsToldAndWhatIsThereOpens) {
    AuFile File{.Rate = 8000, .Channels = 2, .Data = test::SwappedBytes(test::Noise(200, 16, 1))};
    for (const auto& [Size, Claimed, Seconds] :
         {std::tuple(404LL, "101", "0.013"), std::tuple(0x80000000LL, "536870912", "67108.864"),
          std::tuple(0xFFFFFFFFLL, "1073741824", "134217.728")}) {
        File.DataSize = Size;
        ASSERT_TRUE(LoadBytes(File.Whole()));
        EXPECT_EQ(Store.WavWaveINos, 100);
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre(std::string("Header shows that the size of audio is\n") + Claimed +
                                " Samples (" + Seconds +
                                " Seconds)\nBut as per the size of the file it will be\n"
                                "100 Samples (0.013 Seconds)"));
    }
}

TEST_F(AuReader, ASizeBelowThatOfTheFileIsBelieved) {
    AuFile File{.Data = test::SwappedBytes(test::Noise(100, 16, 1)), .DataSize = 20};
    ASSERT_TRUE(LoadBytes(File.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 10);
    File.DataSize = 0;
    ASSERT_TRUE(LoadBytes(File.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuReader, AnOddByteAtTheEndIsNoSample) {
    Bytes Data = test::SwappedBytes(test::Noise(20, 16, 1));
    Data.push_back(7);
    // A header of an odd size rounds to the even frame.
    ASSERT_TRUE(LoadBytes(AuFile{.Data = Data, .DataSize = 40}.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 20);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuReader, AFileOfMoreThan2GBOpensUpToThat) {
    const std::string Path = Session.WriteFile(
        "a.au", AuFile{.Encoding = 1, .Channels = 2, .Data = Bytes(30), .DataSize = 100}.Whole());
    fs::resize_file(Path, 3000000000);
    ASSERT_TRUE(Load(Path));
    EXPECT_EQ(Store.WavWaveINos, 50);
    EXPECT_THAT(Messages.TakeTexts(),
                ::testing::Contains("This wav file is too large\nOnly about 2GB will be opened"));
}

// ---- Words

struct AuCase {
    std::string Name;
    Bytes File;
    std::vector<std::string> Texts; ///< before the last one; {file} stands for the path
};

void PrintTo(const AuCase& Case, std::ostream* Out) {
    *Out << Case.Name;
}

std::vector<AuCase> RefusedCases() {
    const Bytes Data(100, 1);
    const auto Coded = [&](std::int32_t Encoding) {
        return AuFile{.Encoding = Encoding, .Data = Data}.Whole();
    };
    const auto Refusal = [](const std::string& What) {
        return "Could not open this format .au file\n" + What;
    };
    const std::string Loading = "Error Loading {file}|";
    const std::string NoData = Loading + "No audio Data found in file";
    const std::string NoClip = Loading + "This is not a Sound Clip (au) file";
    const std::string Channels = Loading + "Channel info invalid";
    const auto Rate = [](const std::string& Number) {
        return "Sampling rate " + Number + " Hz is not supported";
    };
    return {
        {"Empty", {}, {NoData}},
        {"Of44Bytes", AuFile{.Data = Bytes(20)}.Whole(), {NoData}},
        {"OtherName", AuFile{.Name = "RIFF", .Data = Data}.Whole(), {NoClip}},
        {"NameInOtherOrder", AuFile{.Name = "dns.", .Data = Data}.Whole(), {NoClip}},
        {"NameWithAControlByte", AuFile{.Name = "\x0Esnd", .Data = Data}.Whole(), {NoClip}},
        {"NameComesFirst",
         AuFile{.Name = "    ", .Encoding = 5, .Rate = 1, .Channels = 9, .Data = Data}.Whole(),
         {NoClip}},
        {"RateTooLow", AuFile{.Rate = 999, .Data = Data}.Whole(), {Rate("999")}},
        {"RateTooHigh", AuFile{.Rate = 200001, .Data = Data}.Whole(), {Rate("200001")}},
        {"RateBelowZero", AuFile{.Rate = -1, .Data = Data}.Whole(), {Rate("-1")}},
        {"RateComesBeforeTheChannels",
         AuFile{.Encoding = 5, .Rate = 5, .Channels = 0, .Data = Data}.Whole(),
         {Rate("5")}},
        {"NoChannels", AuFile{.Channels = 0, .Data = Data}.Whole(), {Channels}},
        {"ThreeChannels", AuFile{.Channels = 3, .Data = Data}.Whole(), {Channels}},
        {"ChannelsInTheHighBytes",
         AuFile{.Channels = 0x01000001, .Data = Data}.Whole(),
         {Channels}},
        {"ChannelsComeBeforeTheEncoding",
         AuFile{.Encoding = 4, .Channels = 3, .Data = Data}.Whole(),
         {Channels}},
        {"Bits24", Coded(4), {Refusal("24-bit linear PCM")}},
        {"Bits32", Coded(5), {Refusal("32-bit linear PCM")}},
        {"Float32", Coded(6), {Refusal("32-bit IEEE floating point")}},
        {"Float64", Coded(7), {Refusal("64-bit IEEE floating point")}},
        {"Adpcm", Coded(23), {Refusal("8-bit ISDN u-law compressed (CCITT)")}},
        {"NoEncoding", Coded(0), {Refusal("")}},
        {"ALaw", Coded(27), {Refusal("")}},
        {"EncodingBelowZero", Coded(-1), {Refusal("")}},
    };
}

class AuReaderRefusals : public ::testing::TestWithParam<AuCase> {};

INSTANTIATE_TEST_SUITE_P(Each, AuReaderRefusals, ::testing::ValuesIn(RefusedCases()),
                         [](const auto& Info) { return Info.param.Name; });

TEST_P(AuReaderRefusals, AreToldInOrderAndTheDocumentStays) {
    const TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
    test::FillStore(Store, {1, 12345, 16}, {3, 1, 4});
    WaveChanged = true;
    AuWriteMode = 3;
    const std::string Path = Session.WriteFile("x.au", GetParam().File);
    bool Result = true;
    OpenSaveClass().FileLoadAuSnd(Store, Path, Result);
    std::vector<std::string> Expected = GetParam().Texts;
    Expected.push_back(Failed);
    for (std::string& Text : Expected)
        if (const std::size_t At = Text.find("{file}"); At != std::string::npos)
            Text.replace(At, 6, Path);
    EXPECT_EQ(Messages.Texts(), Expected);
    EXPECT_FALSE(Result);
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(3, 1, 4));
    EXPECT_EQ(Store.WavFmtFreq, 12345);
    EXPECT_TRUE(WaveChanged);
    EXPECT_EQ(AuWriteMode, 3);
}

TEST_F(AuReader, TheNameMayBeInCapitals) {
    for (const char* Name : {".SND", ".Snd", ".sNd"})
        EXPECT_TRUE(LoadBytes(AuFile{.Name = Name, .Data = Bytes(40)}.Whole())) << Name;
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(AuReader, NoNameNoFileAndAFolderAreToldOnce) {
    fs::create_directory(Session.Path("folder.au"));
    for (const std::string& Path : {std::string(), std::string("  "), Session.Path("missing.au"),
                                    Session.Path("folder.au")}) {
        EXPECT_FALSE(Load(Path));
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Failed));
    }
}

TEST_F(AuReader, LowDiskSpaceIsToldAndLoadingGoesOn) {
    const std::string Path = Session.WriteFile("x.au", AuFile{.Data = Bytes(100)}.Whole());
    TmpDir0 = Session.Path("no such folder");
    EXPECT_TRUE(Load(Path));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Free disk space for this is low."));
}

TEST_F(AuReader, AFileThatGrowsShorterOnTheWayLeavesAnEmptyDocument) {
    const std::string Path = Session.WriteFile("x.au", AuFile{.Data = Bytes(4000000)}.Whole());
    test::FillStore(Store, {1, 8000, 16}, {1, 2, 3});
    struct Shortens final : ProgressReport {
        explicit Shortens(std::string Name) : File(std::move(Name)) { SetProgressReport(this); }
        ~Shortens() override { SetProgressReport(nullptr); }
        void SetVisible(bool) override {}
        void SetBarColor1(std::uint32_t) override {}
        void SetCurrentProgress(float Value) override {
            if (Value > 0.3F)
                fs::resize_file(File, 100);
        }
        [[nodiscard]] float CurrentProgress() const override { return 0; }
        void BlinkLamp() override {}
        std::string File;
    };
    {
        const Shortens AtThird(Path);
        EXPECT_FALSE(Load(Path));
    }
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(::testing::StartsWith("Wave file load error|")));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(AuReader, TheBarIsGreenAndGoesBeforeTheLastMessage) {
    const std::string Good = Session.WriteFile("x.au", AuFile{.Data = Bytes(100)}.Whole());
    const std::string Bad = Session.WriteFile("y.au", Bytes(10));
    const test::OrderLog Log;
    Load(Good);
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 25600", "0.000", "0.000", "hide"));
    Load(Bad);
    EXPECT_THAT(std::vector(Log.Lines.begin() + 5, Log.Lines.end()),
                ElementsAre("show", "color 25600", "0.000",
                            "message Error Loading " + Bad + "|No audio Data found in file", "hide",
                            "message |" + Failed));
}

} // namespace
} // namespace quoril

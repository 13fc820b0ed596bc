// What a WAV file becomes when it is opened: the format, the samples, the block records.
#include "audiofile/OpenSaveClass.h"
#include "audiofile/ULawTable.h"
#include "base/DocumentState.h"
#include "settings/STD1.h"
#include "storage/UndoListener.h"
#include "storage/WoroFileBlockMod.h"
#include "support/OrderLog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "WavMaker.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using test::WavFile;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

class WavReader : public ::testing::Test {
  protected:
    bool Load(const std::string& Path) {
        bool Result = false;
        OpenSave.FileLoadWave(Store, Path, Result);
        EXPECT_FALSE(Store.SwitchUndoOff);
        EXPECT_TRUE(test::CountsHold());
        return Result;
    }
    bool LoadBytes(const Bytes& What, const std::string& Name = "a.wav") {
        return Load(Session.WriteFile(Name, What));
    }

    TestSession Session;
    ScriptedMessages Messages;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
};

class WavReaderFormats : public WavReader,
                         public ::testing::WithParamInterface<test::SampleForm> {};

INSTANTIATE_TEST_SUITE_P(All, WavReaderFormats, ::testing::ValuesIn(test::SampleForms),
                         [](const auto& Info) { return test::NameOf(Info.param); });

TEST_P(WavReaderFormats, SamplesStayInTheFileAndReadAsTheyAre) {
    const auto [Channels, Bits] = GetParam();
    const Samples All = test::Noise(1000 * Channels, Bits, 7);
    WavFile Wav{
        .Channels = Channels, .Rate = 8000, .Bits = Bits, .Data = test::AudioBytes(All, Bits)};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
    EXPECT_EQ(Store.WavFmtChannel, Channels);
    EXPECT_EQ(Store.WavFmtBits, Bits);
    EXPECT_EQ(Store.WavFmtFreq, 8000);
    EXPECT_EQ(Store.WavWaveINos, 1000);
    EXPECT_EQ(test::LeftOf(Store), Channels == 2 ? test::EveryOther(All, 0) : All);
    EXPECT_EQ(test::RightOf(Store), Channels == 2 ? test::EveryOther(All, 1) : Samples());
    EXPECT_EQ(MemoryUsed, 0) << "reading for display leaves the samples in the file";
}

TEST_P(WavReaderFormats, BlocksPointIntoTheFileChunkByChunk) {
    const auto [Channels, Bits] = GetParam();
    OpenSave.FileBlockLength = 8;
    const std::int32_t ChunkFrames = 8 * 16 / Bits / Channels;
    const std::int32_t Frames = 3 * ChunkFrames + 1;
    const Samples All = test::Noise(Frames * Channels, Bits, 8);
    WavFile Wav{.Channels = Channels, .Bits = Bits, .Data = test::AudioBytes(All, Bits)};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));

    const std::int32_t SampleBytes = Bits / 8;
    const std::int32_t FrameBytes = SampleBytes * Channels;
    const auto ExpectPlaced = [&](const BlockListClass& List, std::int32_t FirstByte) {
        ASSERT_EQ(List.Count(), 4);
        std::int32_t Position = 0;
        for (const std::int32_t BlockNo : List.Numbers()) {
            const BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
            EXPECT_EQ(Block.BlockKind, BlockOrgFile);
            EXPECT_EQ(Block.FileNo, Store.OrgRoFileInUse);
            EXPECT_EQ(Block.BlockStart, Position + 1);
            EXPECT_EQ(Block.BlockLen, std::min(ChunkFrames, Frames - Position));
            EXPECT_EQ(Block.FilePos, 44 + FirstByte + 1 + Position * FrameBytes);
            Position += Block.BlockLen;
        }
    };
    ExpectPlaced(Store.BlocksL(), 0);
    if (Channels == 2)
        ExpectPlaced(Store.BlocksR(), SampleBytes);
    else
        EXPECT_EQ(Store.BlocksR().Count(), 0);

    const OrgFileRec& File = OrgFileTable[static_cast<std::size_t>(Store.OrgRoFileInUse)];
    EXPECT_EQ(File.OrgFileName, Session.Path("a.wav"));
    EXPECT_EQ(File.OrgFileChannels, Channels);
    EXPECT_EQ(File.OrgFileBits, Bits);
    EXPECT_EQ(File.OrgFileUse, 4 * Channels) << "once for each block";
    EXPECT_EQ(test::LeftOf(Store), Channels == 2 ? test::EveryOther(All, 0) : All);
}

TEST_F(WavReader, TheChunkLengthFollowsTheMemoryBudget) {
    EXPECT_EQ(OpenSave.FileBlockLength, 524288);
    MemoryBudget = 134217728;
    EXPECT_EQ(OpenSaveClass().FileBlockLength, 6710884);
    MemoryBudget = 536870912;
    EXPECT_EQ(OpenSaveClass().FileBlockLength, 26843544);
}

TEST_F(WavReader, LoadingLeavesNoUndoAndNoUnsavedWork) {
    WaveChanged = BookmarkChanged = true;
    AuWriteMode = 3;
    ASSERT_TRUE(LoadBytes(WavFile{.Data = Bytes(100)}.Whole()));
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(BookmarkChanged);
    EXPECT_EQ(Store.UndoCount(), 0);
    EXPECT_FALSE(Store.UndoMenu().Enabled);
    EXPECT_EQ(AuWriteMode, 0) << "the choice of a Sun/NeXT form is asked anew";
}

TEST_F(WavReader, LoadingReplacesTheOldDocumentAndItsTables) {
    ASSERT_TRUE(LoadBytes(WavFile{.Channels = 2, .Data = Bytes(4000)}.Whole()));
    const test::TableUse First = test::TablesInUse();
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(LoadBytes(WavFile{.Channels = 2, .Data = Bytes(4000)}.Whole()));
    EXPECT_EQ(test::TablesInUse(), First);
    ASSERT_TRUE(Load(Session.WriteFile("b.wav", WavFile{.Data = Bytes(4000)}.Whole())));
    EXPECT_EQ(test::TablesInUse().OrgFiles, 1);
    EXPECT_EQ(test::TablesInUse().Blocks, 1);
    EXPECT_EQ(test::TablesInUse().Pairs, 0);
}

TEST_F(WavReader, ProgressIsShownGreenAndHiddenBeforeTheEnd) {
    OpenSave.FileBlockLength = 16;
    test::OrderLog Log;
    ASSERT_TRUE(LoadBytes(WavFile{.Data = Bytes(128)}.Whole()));
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 25600", "0.000", "0.000", "0.250", "0.500",
                                       "0.750", "hide"));
}

TEST_F(WavReader, ProgressIsHiddenBeforeTheLastWord) {
    test::OrderLog Log;
    EXPECT_FALSE(LoadBytes(Bytes(44)));
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 25600", "0.000",
                                       "message Error Loading " + Session.Path("a.wav") +
                                           "|No wave Data found in file",
                                       "hide", "message |Wave file loading failed"));
    Log.Lines.clear();
    EXPECT_FALSE(LoadBytes(WavFile{.Tag = 1, .Bits = 4, .Data = Bytes(64)}.Whole()));
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 25600", "0.000", "hide",
                                       "message Wave file load error|Division by zero"));
}

// ---- Where the audio is

TEST_F(WavReader, DataIsFoundInAnyCase) {
    for (const char* Name : {"data", "DATA", "Data", "dAtA"}) {
        WavFile Wav{.Data = test::AudioBytes({11, -12}, 16), .DataName = Name};
        ASSERT_TRUE(LoadBytes(Wav.Whole())) << Name;
        EXPECT_THAT(test::LeftOf(Store), ElementsAre(11, -12)) << Name;
    }
    EXPECT_FALSE(LoadBytes(WavFile{.Data = Bytes(40), .DataName = "dat\xC1"}.Whole()));
}

TEST_F(WavReader, ChunksAroundTheDataArePassedOver) {
    const Samples All = {1, 2, 3, -4, 5, -6};
    const std::vector<Bytes> Chunks = {
        test::Chunk("LIST", test::TextBytes("INFOISFT\x05\0\0\0Made\0\0")),
        test::Chunk("fact", {3, 0, 0, 0}),
        test::Chunk("cue ", Bytes(28, 1)),
        test::Chunk("bext", Bytes(602, 'x')),
        test::Chunk("smpl", Bytes(36)),
        test::Chunk("odd ", Bytes(7, 0xFF)),
    };
    for (const Bytes& One : Chunks) {
        WavFile Wav{.Channels = 2, .Data = test::AudioBytes(All, 16), .Before = One, .After = One};
        ASSERT_TRUE(LoadBytes(Wav.Whole()));
        EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 3, 5));
        EXPECT_THAT(test::RightOf(Store), ElementsAre(2, -4, -6));
    }
    WavFile Wav{.Data = test::AudioBytes(All, 16),
                .Before = test::Joined(Chunks),
                .After = test::Joined(Chunks)};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_EQ(test::LeftOf(Store), All);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavReader, TheWordDataInsideAnEarlierChunkIsTakenForTheDataChunk) {
    // The word, a size of 6 bytes, and then what stands behind it in the list chunk.
    const Bytes List = test::Chunk("LIST", test::Joined({test::TextBytes("some Data"),
                                                         {6, 0, 0, 0},
                                                         test::AudioBytes({7, 8, 9, 10}, 16)}));
    ASSERT_TRUE(LoadBytes(WavFile{.Data = test::AudioBytes({1, 2}, 16), .Before = List}.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(7, 8, 9));
}

TEST_F(WavReader, TheHighByteOfTheBitsIsPartOfTheScan) {
    // "data" from offset 35 on: the scan begins in the middle of the bits field.
    Bytes Odd = WavFile{.Data = Bytes(20)}.Header();
    Odd[34] = 8;
    const Bytes Name = test::Joined({test::TextBytes("data"), {3, 0, 0, 0}, {129, 130, 131}});
    Odd.resize(35);
    Odd = test::Joined({Odd, Name});
    // Bits are read as 16-bit: 8 + 256 x 'd'.
    EXPECT_FALSE(LoadBytes(Odd));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Error Loading " + Session.Path("a.wav") +
                                "|Bits per sample 25608 is invalid or not supported (at byte "
                                "location 35)",
                            "Wave file loading failed"));
}

TEST_F(WavReader, DataIsFoundAtByte100000AndNotBehind) {
    const auto FileWithDataAt = [](std::size_t Offset) {
        WavFile Wav{.Data = test::AudioBytes({5, 6}, 16)};
        Wav.Before = Bytes(Offset - 36, 'x');
        return Wav.Whole();
    };
    ASSERT_TRUE(LoadBytes(FileWithDataAt(99999)));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(5, 6));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_FALSE(LoadBytes(FileWithDataAt(100000), "b.wav"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Error Loading " + Session.Path("b.wav") +
                                                      "|The String 'Data' - is not found",
                                                  "Wave file loading failed"));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(5, 6)) << "the old document is still there";
}

TEST_F(WavReader, TheFirstFourLettersAreNotLookedAt) {
    Bytes Wav = WavFile{.Data = test::AudioBytes({5, 6}, 16)}.Whole();
    std::fill(Wav.begin(), Wav.begin() + 20, std::uint8_t{0});
    std::fill(Wav.begin() + 28, Wav.begin() + 34, std::uint8_t{0xFF}); // bytes a second, alignment
    Wav[23] = 0x77;                                                    // channels, high byte
    ASSERT_TRUE(LoadBytes(Wav));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(5, 6));
}

// ---- How much audio there is

TEST_F(WavReader, AHeaderThatClaimsLessIsBelieved) {
    WavFile Wav{.Data = test::AudioBytes({1, 2, 3, 4}, 16), .DataSize = 6};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 2, 3));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavReader, AHeaderThatClaimsNothingGivesAnEmptyDocument) {
    WavFile Wav{.Channels = 2, .Data = Bytes(400), .DataSize = 0};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(Store.BlocksL().Count(), 1) << "one block without samples";
    EXPECT_EQ(Store.BlocksR().Count(), 1);
    EXPECT_THAT(test::LeftOf(Store), IsEmpty());
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavReader, HeaderFramesAreRoundedToEven) {
    // 10 bytes are 2.5 frames of stereo 16-bit, 14 bytes are 3.5.
    const Bytes Data = test::AudioBytes({1, 1, 2, 2, 3, 3, 4, 4}, 16);
    ASSERT_TRUE(LoadBytes(WavFile{.Channels = 2, .Data = Data, .DataSize = 10}.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 2));
    ASSERT_TRUE(LoadBytes(WavFile{.Channels = 2, .Data = Data, .DataSize = 14}.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 2, 3, 4));
}

TEST_F(WavReader, ALastByteThatFillsNoFrameIsNoAudio) {
    Bytes Data = test::AudioBytes({1, 2, 3}, 16);
    Data.push_back(0x55);
    // 7 bytes are 3.5 samples, which rounds to 4, and the file has 3.
    ASSERT_TRUE(LoadBytes(WavFile{.Data = Data}.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 2, 3));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Header shows that the size of audio is\n4 Samples (0.000 Seconds)\n"
                            "But as per the size of the file it will be\n3 Samples (0.000 "
                            "Seconds)"));
    ASSERT_TRUE(LoadBytes(WavFile{.Data = Data, .DataSize = 6}.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, 2, 3));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
}

TEST_F(WavReader, AHeaderThatClaimsMoreIsToldAndTheFileDecides) {
    WavFile Wav{
        .Channels = 2, .Rate = 1000, .Bits = 8, .Data = Bytes(3001, 128), .DataSize = 2147483647};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 1500);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Header shows that the size of audio is\n"
                                                  "1073741824 Samples (1073741.824 Seconds)\n"
                                                  "But as per the size of the file it will be\n"
                                                  "1500 Samples (1.500 Seconds)"));
}

TEST_F(WavReader, AFileThatEndsAtItsFirstSampleIsEmpty) {
    // 45 bytes, of which 44 + 1 are header: the data chunk stands one byte later than usual.
    WavFile Wav{.Before = Bytes(1)};
    ASSERT_EQ(Wav.Whole().size(), 45U);
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavReader, AFileOf45BytesOpensWithItsOneByte) {
    WavFile Wav{.Bits = 8, .Data = {200}};
    ASSERT_EQ(Wav.Whole().size(), 45U);
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(72));
}

TEST_F(WavReader, AFileThatEndsWithinTheSizeOfItsDataFails) {
    for (const int Missing : {1, 2, 3, 4}) {
        Bytes Wav = WavFile{.Before = Bytes(20)}.Whole();
        Wav.erase(Wav.end() - Missing, Wav.end());
        EXPECT_FALSE(LoadBytes(Wav));
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Wave file load error|The file ends within its header.\n" +
                                Session.Path("a.wav")));
    }
}

TEST_F(WavReader, ASizeThatAWriterIntoAPipeLeavesOpensWhatIsThere) {
    struct Case {
        std::int64_t Size;
        const char* Told;
    };
    for (const auto& [Size, Told] : {Case{0xFFFFFFFF, "1073741824 Samples (24347.887 Seconds)"},
                                     Case{0x80000000, "536870912 Samples (12173.944 Seconds)"},
                                     Case{0xFFFFFF9C, "1073741799 Samples (24347.887 Seconds)"}}) {
        const test::Samples All = test::Noise(50, 16, 3);
        ASSERT_TRUE(LoadBytes(
            WavFile{.Channels = 2, .Data = test::AudioBytes(All, 16), .DataSize = Size}.Whole()));
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre(std::string("Header shows that the size of audio is\n") + Told +
                                "\nBut as per the size of the file it will be\n"
                                "25 Samples (0.001 Seconds)"));
        EXPECT_EQ(test::LeftOf(Store), test::EveryOther(All, 0));
        EXPECT_EQ(test::RightOf(Store), test::EveryOther(All, 1));
    }
}

// ---- Coded audio

TEST_F(WavReader, ULawIsDecodedAtOnceAndTheFileIsLetGo) {
    Bytes Codes(256);
    for (std::size_t i = 0; i < 256; ++i)
        Codes[i] = static_cast<std::uint8_t>(i);
    const std::string Path =
        Session.WriteFile("u.wav", WavFile{.Tag = 7, .Bits = 8, .Data = Codes}.Whole());
    ASSERT_TRUE(Load(Path));
    EXPECT_EQ(Store.WavFmtBits, 16);
    EXPECT_EQ(test::TablesInUse().OrgFiles, 0);
    fs::remove(Path);
    const auto& Table = ULawDecodeTable();
    EXPECT_EQ(test::LeftOf(Store), Samples(Table.begin(), Table.end()));

    ASSERT_TRUE(LoadBytes(WavFile{.Tag = 7, .Channels = 2, .Bits = 8, .Data = Codes}.Whole()));
    EXPECT_EQ(test::LeftOf(Store), test::EveryOther(Samples(Table.begin(), Table.end()), 0));
    EXPECT_EQ(test::RightOf(Store), test::EveryOther(Samples(Table.begin(), Table.end()), 1));
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavReader, ULawIsCutIntoMemoryBlocksOfAnEightBitFile) {
    OpenSave.FileBlockLength = 16;
    for (const std::int32_t Channels : {1, 2}) {
        const Bytes Codes = test::AudioBytes(test::Noise(70 * Channels, 8, 3), 8);
        ASSERT_TRUE(
            LoadBytes(WavFile{.Tag = 7, .Channels = Channels, .Bits = 8, .Data = Codes}.Whole()));
        const std::int32_t ChunkFrames = 32 / Channels;
        for (const BlockListClass* List : {&Store.BlocksL(), &Store.BlocksR()}) {
            if (Channels == 1 && List == &Store.BlocksR())
                continue;
            std::int32_t Position = 1;
            for (const std::int32_t BlockNo : List->Numbers()) {
                const BlockRec& Block = BlockTable[static_cast<std::size_t>(BlockNo)];
                EXPECT_EQ(Block.BlockKind, BlockMemory);
                EXPECT_EQ(Block.BlockStart, Position);
                EXPECT_EQ(Block.BlockLen, std::min(ChunkFrames, 71 - Position));
                Position += Block.BlockLen;
            }
            EXPECT_EQ(Position, 71);
        }
        Samples Expected;
        for (const std::uint8_t Code : Codes)
            Expected.push_back(ULawDecodeTable()[Code]);
        EXPECT_EQ(test::LeftOf(Store), Channels == 2 ? test::EveryOther(Expected, 0) : Expected);
    }
}

TEST_F(WavReader, ULawLongerThanTheMemoryBudgetGoesToWorkFiles) {
    Bytes Codes(20000001);
    for (std::size_t i = 0; i < Codes.size(); ++i)
        Codes[i] = static_cast<std::uint8_t>(i * 2654435761U >> 13);
    ASSERT_TRUE(LoadBytes(WavFile{.Tag = 7, .Bits = 8, .Data = Codes}.Whole()));
    EXPECT_LE(MemoryUsed, 5 * 2 * 2 * OpenSave.FileBlockLength);
    EXPECT_FALSE(TestSession::SessionFiles().empty());
    const Samples All = test::LeftOf(Store);
    ASSERT_EQ(All.size(), Codes.size());
    for (std::size_t i = 0; i < Codes.size(); ++i)
        ASSERT_EQ(All[i], ULawDecodeTable()[Codes[i]]) << i;
}

TEST_F(WavReader, ALoadThatFindsNoRoomLeavesAnEmptyDocument) {
    // Six blocks for each channel: the last ones pass the budget, and there is no room for work
    // files.
    const Bytes Codes(6 * 2 * 524288, 0x55);
    const std::string Path = Session.WriteFile(
        "u.wav", WavFile{.Tag = 7, .Channels = 2, .Bits = 8, .Data = Codes}.Whole());
    test::FillStore(Store, {1, 8000, 16}, {1, 2, 3});
    const std::string Kept = SessionDir;
    SessionDir = Session.Path("no such folder");
    EXPECT_FALSE(Load(Path));
    SessionDir = Kept;
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(::testing::StartsWith("Wave file load error|")));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(Store.WaveNosL(), 0);
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_TRUE(Load(Path)) << "and with room again it opens";
}

TEST_F(WavReader, FourBitStereoOpensEmptyAndLeavesNoFileBehind) {
    Store.WavFmtBits = 16;
    WavFile Wav{.Tag = 2, .Channels = 2, .Bits = 4, .Data = Bytes(1000)};
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Can not open this (4bit/adpcm) format"));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(Store.WavFmtChannel, 2);
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
}

TEST_F(WavReader, AnExtensibleFileOpensWhenTheUserInsists) {
    Bytes Guid = {22, 0, 16, 0, 4,    0, 0, 0,    1, 0,    0,    0,
                  0,  0, 16, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
    WavFile Wav{.Tag = 0xFFFE, .Data = test::AudioBytes({1, -2, 3}, 16), .FormatTail = Guid};
    const std::string Question = "Format Tag = -2\nThis special format can not be opened.\n"
                                 "Please contact us with the format tag number.\n\n"
                                 "Click 'OK' to try to open it any way.";
    Messages.Answer(MsgBoxAnswer::Ok);
    ASSERT_TRUE(LoadBytes(Wav.Whole()));
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, -2, 3));
    ASSERT_EQ(Messages.Requests.size(), 1U);
    EXPECT_EQ(Messages.Requests[0].Buttons, MsgBoxButtons::OkCancel);
    EXPECT_EQ(Messages.Requests[0].Default, MsgBoxAnswer::Ok);
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question));

    Messages.Answer(MsgBoxAnswer::Cancel);
    EXPECT_FALSE(LoadBytes(Wav.Whole(), "b.wav"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(Question)) << "nothing further is said";
    EXPECT_THAT(test::LeftOf(Store), ElementsAre(1, -2, 3)) << "the old document is still there";
}

// ---- Names

TEST_F(WavReader, AFileThatMayOnlyBeReadOpens) {
    const std::string Path = Session.WriteFile("r.wav", WavFile{.Data = Bytes(10)}.Whole());
    fs::permissions(Path, fs::perms::owner_read);
    EXPECT_TRUE(Load(Path));
}

TEST_F(WavReader, ANameThatIsNotUtf8Opens) {
    const std::string Name = "caf\xE9 \xFF\xFE.wav";
    ASSERT_TRUE(Load(Session.WriteFile(Name, WavFile{.Data = Bytes(10)}.Whole())));
    EXPECT_EQ(OrgFileTable[static_cast<std::size_t>(Store.OrgRoFileInUse)].OrgFileName,
              Session.Path(Name));
    EXPECT_EQ(test::LeftOf(Store).size(), 5U);
    EXPECT_FALSE(Load(Session.WriteFile(Name, Bytes(44))));
    EXPECT_THAT(Messages.Texts(),
                ElementsAre("Error Loading " + Session.Path(Name) + "|No wave Data found in file",
                            "Wave file loading failed"));
}

} // namespace
} // namespace quoril

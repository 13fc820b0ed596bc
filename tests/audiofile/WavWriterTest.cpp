// What the writers put into a file, what they say, and that no failure costs the document a sample.
#include "audiofile/OpenSaveClass.h"
#include "base/DocumentState.h"
#include "base/UserFileWriting.h"
#include "platform/FileHandle.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/OrderLog.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "WavMaker.h"

#include <gmock/gmock.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>

namespace quoril {
namespace {

using test::Bytes;
using test::Samples;
using test::ScriptedMessages;
using test::TestSession;
using test::WavFile;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace fs = std::filesystem;

class WavWriter : public ::testing::Test {
  protected:
    void Load(const std::string& Path) {
        bool Result = false;
        OpenSave.FileLoadWave(Store, Path, Result);
        ASSERT_TRUE(Result);
    }
    /// A document from a file of noise; `All` has its interleaved samples.
    std::string LoadNoise(std::int32_t Channels, std::int32_t Bits, std::int32_t Frames) {
        All = test::Noise(Frames * Channels, Bits, 99);
        Wav = {.Channels = Channels, .Bits = Bits, .Data = test::AudioBytes(All, Bits)};
        std::string Path = Session.WriteFile("doc.wav", Wav.Whole());
        Load(Path);
        return Path;
    }
    bool Write(const std::string& Name = "out.wav") {
        const bool Written = OpenSave.FileWriteWave(Store, Session.Path(Name));
        EXPECT_TRUE(test::CountsHold());
        return Written;
    }
    /// A file that is locked or protected is told, whether all is to be written or a part.
    void ExpectNotWritten(const std::string& Name) {
        const std::string Path = Session.Path(Name);
        EXPECT_FALSE(Write(Name));
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Failed to write wave file|This file " + Path +
                                " is locked,\nmay be used by another program.\nRelease that file "
                                "and try again"));
        EXPECT_FALSE(OpenSave.FileWriteWavePart(Store, 1, 10, 0, Path));
        EXPECT_THAT(Messages.TakeTexts(),
                    ElementsAre("Wave file write error|Permission denied\n" + Path));
    }
    [[nodiscard]] Bytes Out(const std::string& Name = "out.wav") const {
        return TestSession::ReadFile(Session.Path(Name));
    }

    TestSession Session;
    ScriptedMessages Messages;
    OpenSaveClass OpenSave;
    FileMemoClass Store;
    Samples All;
    WavFile Wav;
};

TEST_F(WavWriter, TheHeaderIsByteForByteTheCanonicalOne) {
    test::FillStore(Store, {2, 44100, 16}, {1, -2, 3}, {4, 5, -6});
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out(),
              (Bytes{'R',  'I',  'F', 'F', 48, 0, 0,    0,    'W', 'A', 'V',  'E',  'f',  'm',
                     't',  ' ',  16,  0,   0,  0, 1,    0,    2,   0,   0x44, 0xAC, 0,    0,
                     0x10, 0xB1, 2,   0,   4,  0, 16,   0,    'd', 'a', 't',  'a',  12,   0,
                     0,    0,    1,   0,   4,  0, 0xFE, 0xFF, 5,   0,   3,    0,    0xFA, 0xFF}));
    Store.StorageReset();
    test::FillStore(Store, {1, 200000, 8}, {-128, 127, 0});
    ASSERT_TRUE(Write());
    EXPECT_EQ(Out(), (Bytes{'R',  'I',  'F', 'F', 39,   0,    0, 0, 'W', 'A', 'V', 'E',
                            'f',  'm',  't', ' ', 16,   0,    0, 0, 1,   0,   1,   0,
                            0x40, 0x0D, 3,   0,   0x40, 0x0D, 3, 0, 1,   0,   8,   0,
                            'd',  'a',  't', 'a', 3,    0,    0, 0, 0,   255, 128}))
        << "an odd length gets no padding byte";
}

class WavWriterFormats : public WavWriter,
                         public ::testing::WithParamInterface<test::SampleForm> {};

INSTANTIATE_TEST_SUITE_P(All, WavWriterFormats, ::testing::ValuesIn(test::SampleForms),
                         [](const auto& Info) { return test::NameOf(Info.param); });

TEST_P(WavWriterFormats, AnOpenedFileIsWrittenBackAsItWasWhateverItsLength) {
    // Around the borders of slices (65536 frames) and chunks (262144 frames to 1048576).
    for (const std::int32_t Frames :
         {1, 2, 65535, 65536, 65537, 262143, 262144, 262145, 524287, 524289, 1048577, 1200000}) {
        LoadNoise(GetParam().Channels, GetParam().Bits, Frames);
        ASSERT_TRUE(Write());
        ASSERT_TRUE(Out() == Wav.Whole()) << Frames;
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_P(WavWriterFormats, SmallChunksGiveTheSameFile) {
    OpenSave.FileBlockLength = 12;
    for (std::int32_t Frames = 1; Frames < 60; ++Frames) {
        LoadNoise(GetParam().Channels, GetParam().Bits, Frames);
        ASSERT_TRUE(Write());
        ASSERT_TRUE(Out() == Wav.Whole()) << Frames;
    }
}

TEST_P(WavWriterFormats, EditsAreWrittenAndOtherChunksAreNot) {
    const auto [Channels, Bits] = GetParam();
    All = test::Noise(5000 * Channels, Bits, 98);
    Wav = {.Channels = Channels,
           .Bits = Bits,
           .Data = test::AudioBytes(All, Bits),
           .Before = test::Chunk("LIST", Bytes(100)),
           .After = test::Chunk("cue ", Bytes(28))};
    Load(Session.WriteFile("doc.wav", Wav.Whole()));
    Store.WaveDataDelete(1001, 0, 3000, "Delete", true);
    ASSERT_TRUE(Write());
    Samples Left(All.begin(), All.begin() + 1000 * Channels);
    Left.insert(Left.end(), All.begin() + 4000 * Channels, All.end());
    EXPECT_EQ(Out(),
              (WavFile{.Channels = Channels, .Bits = Bits, .Data = test::AudioBytes(Left, Bits)}
                   .Whole()));
}

TEST_F(WavWriter, ULawIsSavedAsPcm) {
    Load(Session.WriteFile(
        "u.wav",
        WavFile{.Tag = 7, .Channels = 2, .Rate = 8000, .Bits = 8, .Data = {0, 128, 255, 127}}
            .Whole()));
    ASSERT_TRUE(Write());
    EXPECT_EQ(
        Out(),
        (WavFile{.Channels = 2, .Rate = 8000, .Data = test::AudioBytes({-32124, 32124, 0, 0}, 16)}
             .Whole()));
}

TEST_F(WavWriter, ProgressIsRedAndMovesChunkByChunk) {
    LoadNoise(1, 16, 32);
    OpenSave.FileBlockLength = 8;
    test::OrderLog Log;
    ASSERT_TRUE(Write());
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 255", "0.000", "0.000", "0.250", "0.500",
                                       "0.750", "hide"));
    Log.Lines.clear();
    ASSERT_TRUE(OpenSave.FileWriteWavePart(Store, 9, 24, 0, Session.Path("p.wav")));
    EXPECT_THAT(Log.Lines, ElementsAre("show", "color 255", "0.000", "0.000", "0.500", "hide"));
    Log.Lines.clear();
    ASSERT_FALSE(Write("no/such/folder.wav"));
    ASSERT_EQ(Log.Lines.size(), 5U);
    EXPECT_EQ(Log.Lines[3], "hide") << "the window goes before the message comes";
    EXPECT_THAT(Log.Lines[4], StartsWith("message Wave file write error|"));
}

/// Ends the process, as it were, while a file is half written.
class EndAtHalf final : public ProgressReport {
  public:
    explicit EndAtHalf(std::string File) : FileName(std::move(File)) { SetProgressReport(this); }
    ~EndAtHalf() override { SetProgressReport(nullptr); }
    EndAtHalf(const EndAtHalf&) = delete;
    EndAtHalf& operator=(const EndAtHalf&) = delete;
    void SetVisible(bool) override {}
    void SetBarColor1(std::uint32_t) override {}
    void SetCurrentProgress(float Value) override {
        Current = Value;
        if (Value < 0.5F || !AtTheEnd.empty())
            return;
        WasOn = UserFileWriting::IsOn();
        BytesBefore = TestSession::ReadFile(FileName).size();
        Finished = UserFileWriting::FinishNow();
        AtTheEnd = TestSession::ReadFile(FileName);
    }
    [[nodiscard]] float CurrentProgress() const override { return Current; }
    void BlinkLamp() override {}

    std::string FileName;
    bool WasOn = false;
    bool Finished = false;
    std::size_t BytesBefore = 0;
    Bytes AtTheEnd;

  private:
    float Current = 0;
};

TEST_F(WavWriter, AFileThatIsHalfWrittenIsCompletedBeforeTheProcessEnds) {
    const std::string Path = LoadNoise(2, 16, 1000);
    OpenSave.FileBlockLength = 200;
    EndAtHalf End(Path);
    EXPECT_TRUE(Write("doc.wav"));
    EXPECT_TRUE(End.WasOn);
    EXPECT_TRUE(End.Finished);
    EXPECT_EQ(End.BytesBefore, 44U + 4000U) << "until then the old file stands";
    EXPECT_TRUE(End.AtTheEnd == Wav.Whole());
    EXPECT_TRUE(Out("doc.wav") == Wav.Whole());
    EXPECT_FALSE(UserFileWriting::IsOn());
}

TEST_F(WavWriter, WhatCannotBeCompletedIsNoReasonToFailTwice) {
    Samples Left(1000, 127);
    Left[900] = 128;
    test::FillStore(Store, {1, 8000, 8}, Left);
    OpenSave.FileBlockLength = 100;
    EndAtHalf End(Session.Path("out.wav"));
    EXPECT_FALSE(Write());
    EXPECT_TRUE(End.WasOn);
    EXPECT_FALSE(End.Finished);
    EXPECT_FALSE(UserFileWriting::IsOn());
    EXPECT_TRUE(UserFileWriting::FinishNow()) << "nothing is half written now";
}

TEST_F(WavWriter, WritingForgetsTheFormOfSunFiles) {
    LoadNoise(1, 16, 10);
    AuWriteMode = 1;
    ASSERT_TRUE(Write());
    EXPECT_EQ(AuWriteMode, 0);
    AuWriteMode = 2;
    ASSERT_TRUE(OpenSave.FileWriteWavePart(Store, 1, 2, 0, Session.Path("p.wav")));
    EXPECT_EQ(AuWriteMode, 0);
}

// ---- Words

TEST_F(WavWriter, ChecksOfTheWholeFileComeInOrder) {
    EXPECT_FALSE(OpenSave.FileWriteWave(Store, ""));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No file name given to write"));
    Store.WavFmtChannel = 3;
    EXPECT_FALSE(Write());
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Writing wave error|Zero size wave found"));
    test::FillStore(Store, {1, 8000, 16}, {1});
    for (const WaveFormat& Bad : {WaveFormat{0, 8000, 16}, WaveFormat{3, 8000, 16},
                                  WaveFormat{1, 8000, 4}, WaveFormat{1, 8000, 24}}) {
        Store.WavFmtChannel = Bad.Channel;
        Store.WavFmtBits = Bad.Bits;
        EXPECT_FALSE(Write());
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Format not Known to write wave file"));
    }
    EXPECT_FALSE(fs::exists(Session.Path("out.wav")));
}

TEST_F(WavWriter, ChecksOfAPartComeInOrder) {
    const auto WritePart = [&](std::int32_t From, std::int32_t To, const std::string& Path) {
        EXPECT_FALSE(OpenSave.FileWriteWavePart(Store, From, To, 0, Path));
        return Messages.TakeTexts();
    };
    EXPECT_THAT(WritePart(0, 0, ""), ElementsAre("Writing wave error|Zero size wave found"));
    test::FillStore(Store, {1, 8000, 4}, {1, 2, 3});
    const std::string Invalid = "Invalid selection to save selected";
    EXPECT_THAT(WritePart(0, 3, ""), ElementsAre(Invalid));
    EXPECT_THAT(WritePart(1, 4, ""), ElementsAre(Invalid));
    EXPECT_THAT(WritePart(3, 2, ""), ElementsAre(Invalid));
    EXPECT_THAT(WritePart(1, 3, ""), ElementsAre("No file name given to write"));
    EXPECT_THAT(WritePart(1, 3, Session.Path("p.wav")),
                ElementsAre("Format not Known to write wave file"));
    EXPECT_FALSE(fs::exists(Session.Path("p.wav")));
}

TEST_F(WavWriter, ALockedFileIsToldAndTheDocumentStays) {
    LoadNoise(1, 16, 100);
    const std::string Path = Session.WriteFile("out.wav", {1, 2, 3});
    const FileForReading Another(Path);
    ExpectNotWritten("out.wav");
    EXPECT_EQ(TestSession::ReadFile(Path), (Bytes{1, 2, 3}));
    EXPECT_EQ(test::LeftOf(Store), All);
}

TEST_F(WavWriter, AFileThatIsProtectedAgainstWritingStaysAsItIs) {
    const std::string Own = LoadNoise(1, 16, 100);
    Store.WaveDataDelete(1, 1, 50, "Delete", true);
    const std::string Other = Session.WriteFile("out.wav", {1, 2, 3});
    fs::create_symlink("out.wav", Session.Path("link.wav"));
    fs::permissions(Own, fs::perms::owner_read);
    fs::permissions(Other, fs::perms::owner_read);
    for (const std::string Name : {"doc.wav", "out.wav", "link.wav"})
        ExpectNotWritten(Name);
    EXPECT_TRUE(Out("doc.wav") == Wav.Whole());
    EXPECT_EQ(Out(), (Bytes{1, 2, 3}));
    EXPECT_TRUE(fs::is_symlink(Session.Path("link.wav")));
    Store.Undo();
    EXPECT_EQ(test::LeftOf(Store), All);
    fs::permissions(Own, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(Write("doc.wav"));
}

TEST_F(WavWriter, ANameThatIsTooLongIsToldInTheWordsOfTheSystem) {
    LoadNoise(1, 16, 100);
    const std::string Name = std::string(260, 'n') + ".wav";
    EXPECT_FALSE(Write(Name));
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file write error|File name too long\n" + Session.Path(Name)));
    EXPECT_EQ(test::LeftOf(Store), All);
}

TEST_F(WavWriter, FoldersPipesAndDevicesAreRefusedInTheWordsOfTheSystem) {
    LoadNoise(1, 16, 100);
    fs::create_directory(Session.Path("folder.wav"));
    ASSERT_EQ(::mkfifo(Session.Path("pipe.wav").c_str(), 0600), 0);
    fs::create_symlink("/dev/null", Session.Path("device.wav"));
    for (const std::string Name : {"folder.wav", "pipe.wav", "device.wav", "no/folder.wav"}) {
        EXPECT_FALSE(Write(Name));
        EXPECT_FALSE(OpenSave.FileWriteWavePart(Store, 1, 10, 0, Session.Path(Name)));
        const std::vector<std::string> Texts = Messages.TakeTexts();
        ASSERT_EQ(Texts.size(), 2U) << Name;
        for (const std::string& Text : Texts) {
            EXPECT_THAT(Text, StartsWith("Wave file write error|"));
            EXPECT_THAT(Text, HasSubstr(Session.Path(Name)));
        }
    }
    EXPECT_TRUE(fs::is_fifo(Session.Path("pipe.wav"))) << "nothing was deleted";
    EXPECT_TRUE(fs::is_symlink(Session.Path("device.wav")));
    EXPECT_EQ(test::LeftOf(Store), All);
}

TEST_F(WavWriter, ASampleThatFitsNoByteFailsTheWriting) {
    for (const std::int16_t Bad : Samples{128, -129, 32767, -32768}) {
        Store.StorageReset();
        Samples Left(1000, 127);
        Left[789] = Bad;
        test::FillStore(Store, {1, 8000, 8}, Left);
        EXPECT_FALSE(Write());
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre("Wave file write error|Overflow"));
        EXPECT_TRUE(fs::remove(Session.Path("out.wav"))) << "what was begun stays on the disk";
        EXPECT_EQ(test::LeftOf(Store), Left);
    }
}

TEST_F(WavWriter, AFullDiskLeavesAHalfWrittenFileAndTheDocumentWhole) {
    LoadNoise(2, 16, 300000);
    // The system refuses to let a file grow beyond this, as it does when the disk is full.
    const rlimit Short{700000, RLIM_INFINITY};
    rlimit Normal{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &Normal), 0);
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &Short), 0);
    EXPECT_FALSE(Write());
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &Normal), 0);
    EXPECT_THAT(Messages.TakeTexts(),
                ElementsAre("Wave file write error|File too large\n" + Session.Path("out.wav")));
    const Bytes Half = Out();
    EXPECT_EQ(Half.size(), 700000U);
    const Bytes Whole = Wav.Whole();
    EXPECT_TRUE(std::equal(Half.begin(), Half.end(), Whole.begin()));
    EXPECT_EQ(test::LeftOf(Store), test::EveryOther(All, 0));
    ASSERT_TRUE(Write()) << "and it can be saved once there is room";
    EXPECT_TRUE(Out() == Whole);
}

// ---- Parts

TEST_F(WavWriter, APartTakesTheChannelsAskedFor) {
    const Samples Left = {1, 2, 3, 4, 5};
    const Samples Right = {-1, -2, -3, -4, -5};
    const auto Part = [&](std::int32_t From, std::int32_t To, std::int32_t WorkChn) {
        EXPECT_TRUE(OpenSave.FileWriteWavePart(Store, From, To, WorkChn, Session.Path("out.wav")));
        return Out();
    };
    const auto File = [](std::int32_t Channels, const Samples& What) {
        return WavFile{.Channels = Channels, .Rate = 8000, .Data = test::AudioBytes(What, 16)}
            .Whole();
    };
    test::FillStore(Store, {2, 8000, 16}, Left, Right);
    EXPECT_EQ(Part(2, 4, 0), File(2, {2, -2, 3, -3, 4, -4}));
    EXPECT_EQ(Part(2, 4, 1), File(1, {2, 3, 4}));
    EXPECT_EQ(Part(2, 4, 2), File(1, {-2, -3, -4}));
    EXPECT_EQ(Part(5, 5, 2), File(1, {-5}));
    EXPECT_EQ(Part(1, 5, 0), File(2, {1, -1, 2, -2, 3, -3, 4, -4, 5, -5}));
    Store.StorageReset();
    test::FillStore(Store, {1, 8000, 16}, Left);
    for (const std::int32_t WorkChn : {0, 1, 2})
        EXPECT_EQ(Part(1, 3, WorkChn), File(1, {1, 2, 3})) << "mono has only its one channel";
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavWriter, PartsOfEveryFormatMatchTheFileTheyComeFrom) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Bits : {8, 16}) {
            LoadNoise(Channels, Bits, 700000);
            ASSERT_TRUE(
                OpenSave.FileWriteWavePart(Store, 99999, 600000, 0, Session.Path("out.wav")));
            const Samples Part(All.begin() + 99998 * Channels, All.begin() + 600000 * Channels);
            ASSERT_TRUE(
                Out() ==
                (WavFile{.Channels = Channels, .Bits = Bits, .Data = test::AudioBytes(Part, Bits)}
                     .Whole()));
        }
}

// ---- Over the file that is open

TEST_F(WavWriter, SavingOverTheOpenFileThenUndoingGivesEveryByteBack) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Bits : {8, 16}) {
            const std::string Path = LoadNoise(Channels, Bits, 600000);
            const Bytes Original = Wav.Whole();
            Store.WaveDataDelete(200001, 0, 300000, "Delete", true);
            ASSERT_TRUE(Write("doc.wav"));
            EXPECT_EQ(fs::file_size(Path),
                      44U + static_cast<std::size_t>(300000 * Channels * Bits / 8));
            Store.Undo();
            ASSERT_EQ(Store.WavWaveINos, 600000);
            ASSERT_TRUE(Write("doc.wav"));
            ASSERT_TRUE(Out("doc.wav") == Original);
            EXPECT_EQ(test::LeftOf(Store), Channels == 2 ? test::EveryOther(All, 0) : All);
        }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavWriter, SavingAPartOverTheOpenFileKeepsTheDocumentWhole) {
    const std::string Path = LoadNoise(2, 16, 400000);
    ASSERT_TRUE(OpenSave.FileWriteWavePart(Store, 11, 20, 0, Path));
    EXPECT_EQ(fs::file_size(Path), 84U);
    EXPECT_EQ(test::LeftOf(Store), test::EveryOther(All, 0));
    EXPECT_EQ(test::RightOf(Store), test::EveryOther(All, 1));
}

TEST_F(WavWriter, SavingOverTheOpenFileUnderAnotherNameKeepsTheDocumentWhole) {
    fs::create_directory(Session.Path("sub"));
    fs::create_directory_symlink(Session.Path("sub"), Session.Path("link"));
    for (const std::string Name : {"sub/../doc.wav", ".//doc.wav", "symlink.wav", "hard.wav"}) {
        const std::string Path = LoadNoise(2, 16, 1000);
        fs::remove(Session.Path("symlink.wav"));
        fs::remove(Session.Path("hard.wav"));
        fs::create_symlink(Path, Session.Path("symlink.wav"));
        fs::create_hard_link(Path, Session.Path("hard.wav"));
        Store.WaveDataDelete(1, 0, 10, "Delete", true);
        ASSERT_TRUE(Write(Name)) << Name << ::testing::PrintToString(Messages.Texts());
        EXPECT_EQ(test::TablesInUse().OrgFiles, 0) << Name;
        Store.Undo();
        EXPECT_EQ(test::LeftOf(Store), test::EveryOther(All, 0)) << Name;
        EXPECT_EQ(test::RightOf(Store), test::EveryOther(All, 1)) << Name;
    }
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(WavWriter, SavingElsewhereLeavesTheOpenFileAlone) {
    const std::string Path = LoadNoise(2, 16, 1000);
    const Bytes Before = TestSession::ReadFile(Path);
    ASSERT_TRUE(Write("caf\xE9.wav"));
    EXPECT_EQ(TestSession::ReadFile(Path), Before);
    EXPECT_EQ(Out("caf\xE9.wav"), Before);
}

TEST_F(WavWriter, AFileOfMoreThanTheBudgetIsSavedOverItself) {
    const std::string Path = LoadNoise(2, 16, 8000000); // 32 MB, and the budget is 10 MB
    const Bytes Original = Wav.Whole();
    Store.WaveDataDelete(1, 0, 1, "Delete", true);
    ASSERT_TRUE(Write("doc.wav"));
    EXPECT_EQ(fs::file_size(Path), Original.size() - 4);
    Store.Undo();
    ASSERT_TRUE(Write("doc.wav"));
    EXPECT_TRUE(Out("doc.wav") == Original);
}

// ---- Where the work files have no room

TEST_F(WavWriter, WithNoRoomForWorkFilesTheDocumentIsSavedElsewhereAllTheSame) {
    for (const std::int32_t Channels : {1, 2})
        for (const std::int32_t Bits : {8, 16}) {
            const std::string Kept = SessionDir;
            LoadNoise(Channels, Bits, 12000000 / Channels);
            SessionDir = Session.Path("no such folder");
            ASSERT_TRUE(Write());
            EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
            ASSERT_TRUE(Out() == Wav.Whole());
            EXPECT_LE(MemoryUsed, MemoryBudget + 5000000) << "no more blocks come into memory";
            ASSERT_TRUE(
                OpenSave.FileWriteWavePart(Store, 2, Store.WavWaveINos, 0, Session.Path("p.wav")));
            const Bytes Part = Out("p.wav");
            const Bytes Whole = Wav.Whole();
            EXPECT_TRUE(std::equal(Part.begin() + 44, Part.end(),
                                   Whole.begin() + 44 + Channels * Bits / 8));
            SessionDir = Kept;
            EXPECT_TRUE(test::LeftOf(Store) == (Channels == 2 ? test::EveryOther(All, 0) : All));
            Store.StorageReset();
        }
}

TEST_F(WavWriter, WithNoRoomForWorkFilesTheOpenFileIsNotTouched) {
    const std::string Path = LoadNoise(1, 16, 12000000);
    const std::string Kept = SessionDir;
    SessionDir = Session.Path("no such folder");
    EXPECT_FALSE(Write("doc.wav"));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(StartsWith("Wave file write error|")));
    EXPECT_TRUE(TestSession::ReadFile(Path) == Wav.Whole());
    SessionDir = Kept;
    EXPECT_TRUE(test::LeftOf(Store) == All);
    ASSERT_TRUE(Write("doc.wav")) << "and with room again it is saved";
    EXPECT_TRUE(Out("doc.wav") == Wav.Whole());
}

// ---- Memory

/// The most memory that the process has had so far, in bytes.
std::int64_t PeakMemory() {
    std::ifstream Status("/proc/self/status");
    std::string Word;
    while (Status >> Word)
        if (Word == "VmHWM:") {
            std::int64_t Kilobytes = 0;
            Status >> Kilobytes;
            return Kilobytes * 1024;
        }
    return 0;
}

TEST_F(WavWriter, WritingNeverHoldsTheWholeDocument) {
    const std::string Path =
        Session.WriteFile("big.wav", WavFile{.Channels = 2, .DataSize = 400000000}.Whole());
    fs::resize_file(Path, 400000044);
    Load(Path);
    const std::int64_t Before = PeakMemory();
    ASSERT_GT(Before, 0);
    ASSERT_TRUE(Write());
    // The budget of 10 MB, the latest five blocks, and little else.
    EXPECT_LT(PeakMemory() - Before, MemoryBudget + 50000000);
    EXPECT_EQ(fs::file_size(Session.Path("out.wav")), 400000044U);
}

} // namespace
} // namespace quoril

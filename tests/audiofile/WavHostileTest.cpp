// Files that are cut off, lie, are too large, or change while they are open.
#include "audiofile/OpenSaveClass.h"
#include "settings/STD1.h"
#include "storage/WoroFileBlockMod.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include "WavMaker.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <utility>

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
using ::testing::SizeIs;

namespace fs = std::filesystem;

/// Answers every question with OK, so that a load goes as far as it can.
class SaysOk final : public UserMessages {
  public:
    SaysOk() { SetUserMessages(this); }
    ~SaysOk() override { SetUserMessages(nullptr); }
    SaysOk(const SaysOk&) = delete;
    SaysOk& operator=(const SaysOk&) = delete;
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override {
        ++Count;
        Last = Request.Text;
        return MsgBoxAnswer::Ok;
    }
    InputBoxAnswer InputBox(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    int Count = 0;
    std::string Last;
};

/// Loads, reads and writes what was loaded, and looks at the tables after each step.
void LoadReadAndWrite(const TestSession& Session, const std::string& Path) {
    FileMemoClass Store;
    SaysOk Messages;
    bool Result = false;
    OpenSaveClass().FileLoadWave(Store, Path, Result);
    ASSERT_TRUE(test::CountsHold());
    ASSERT_FALSE(Store.SwitchUndoOff);
    ASSERT_TRUE(Result || Messages.Count > 0) << "a file that does not open is told";
    if (!Result) {
        ASSERT_EQ(test::TablesInUse(), test::TableUse());
        return;
    }
    const auto Length = static_cast<std::size_t>(Store.WavWaveINos);
    ASSERT_LE(Length * static_cast<std::size_t>(Store.WavFmtChannel), fs::file_size(Path));
    ASSERT_THAT(test::LeftOf(Store), SizeIs(Length));
    if (Length == 0)
        return;
    const std::string Copy = Session.Path("copy.wav");
    ASSERT_TRUE(OpenSaveClass().FileWriteWave(Store, Copy)) << Messages.Last;
    ASSERT_EQ(fs::file_size(Copy), 44 + Length * static_cast<std::size_t>(Store.WavFmtChannel) *
                                            static_cast<std::size_t>(Store.WavFmtBits) / 8);
    ASSERT_TRUE(test::CountsHold());
}

TEST(WavHostile, EveryTruncationOfEveryFormatEndsInADocumentOrAMessage) {
    const TestSession Session;
    for (const std::int32_t Tag : {1, 7})
        for (const std::int32_t Channels : {1, 2})
            for (const std::int32_t Bits : {8, 16}) {
                const WavFile Wav{
                    .Tag = Tag, .Channels = Channels, .Bits = Bits, .Data = Bytes(40, 77)};
                const Bytes Whole = Wav.Whole();
                for (std::size_t Length = 0; Length <= 64; ++Length) {
                    SCOPED_TRACE(Length);
                    LoadReadAndWrite(
                        Session,
                        Session.WriteFile(
                            "cut.wav",
                            {Whole.begin(), Whole.begin() + static_cast<std::ptrdiff_t>(Length)}));
                    if (HasFatalFailure())
                        return;
                }
            }
}

TEST(WavHostile, EveryByteOfTheHeaderMayBeAnything) {
    const TestSession Session;
    for (const std::int32_t Channels : {1, 2}) {
        const WavFile Wav{.Channels = Channels, .Data = Bytes(400, 77)};
        for (std::size_t Where = 0; Where < 60; ++Where)
            for (const int Value : {0, 1, 2, 3, 4, 7, 8, 16, 32, 85, 127, 128, 200, 255}) {
                SCOPED_TRACE("byte " + std::to_string(Where) + " is " + std::to_string(Value));
                Bytes Bad = Wav.Whole();
                Bad[Where] = static_cast<std::uint8_t>(Value);
                LoadReadAndWrite(Session, Session.WriteFile("bad.wav", Bad));
                if (HasFatalFailure())
                    return;
            }
    }
}

TEST(WavHostile, LyingSizesEndInADocumentOrAMessage) {
    const TestSession Session;
    for (const std::int32_t Tag : {1, 2, 7})
        for (const std::int32_t Channels : {1, 2})
            for (const std::int32_t Bits : {4, 8, 16})
                for (const std::int64_t Size :
                     {std::int64_t{-2147483648}, std::int64_t{-65537}, std::int64_t{-1},
                      std::int64_t{0}, std::int64_t{1}, std::int64_t{2}, std::int64_t{3},
                      std::int64_t{99}, std::int64_t{100}, std::int64_t{101}, std::int64_t{65536},
                      std::int64_t{2147483647}}) {
                    SCOPED_TRACE("tag " + std::to_string(Tag) + ", " + std::to_string(Channels) +
                                 " x " + std::to_string(Bits) + ", size " + std::to_string(Size));
                    const WavFile Wav{.Tag = Tag,
                                      .Channels = Channels,
                                      .Bits = Bits,
                                      .Data = Bytes(100, 5),
                                      .DataSize = Size};
                    LoadReadAndWrite(Session, Session.WriteFile("lie.wav", Wav.Whole()));
                    if (HasFatalFailure())
                        return;
                }
}

TEST(WavHostile, RandomBytesBehindAGoodBeginningEndInADocumentOrAMessage) {
    const TestSession Session;
    constexpr std::uint32_t Seed = 20240611;
    std::mt19937 Random(Seed);
    for (int Round = 0; Round < 400; ++Round) {
        SCOPED_TRACE("seed " + std::to_string(Seed) + ", round " + std::to_string(Round));
        Bytes Bad = WavFile{.Channels = 2, .Data = Bytes(300)}.Whole();
        for (int i = 0; i < 6; ++i)
            Bad[20 + Random() % 30] = static_cast<std::uint8_t>(Random());
        Bad.resize(Random() % Bad.size());
        LoadReadAndWrite(Session, Session.WriteFile("bad.wav", Bad));
        if (HasFatalFailure())
            return;
    }
}

// ---- Files at the limits of the 32-bit positions; their samples lie in no disk block

class WavLarge : public ::testing::Test {
  protected:
    /// A file of this length with zeros behind its header and what else is given.
    std::string Sparse(const WavFile& Wav, std::int64_t Length) {
        const std::string Path = Session.WriteFile("large.wav", Wav.Whole());
        fs::resize_file(Path, static_cast<std::uintmax_t>(Length));
        return Path;
    }
    /// Puts bytes into the file.
    static void Put(const std::string& Path, std::int64_t Offset, const Bytes& What) {
        std::fstream File(Path, std::ios::in | std::ios::out | std::ios::binary);
        File.seekp(Offset);
        File.write(reinterpret_cast<const char*>(What.data()),
                   static_cast<std::streamsize>(What.size()));
        ASSERT_TRUE(File.flush());
    }
    bool Load(const std::string& Path) {
        bool Result = false;
        OpenSaveClass().FileLoadWave(Store, Path, Result);
        EXPECT_TRUE(test::CountsHold());
        return Result;
    }
    static std::int64_t BytesReadSoFar() {
        std::ifstream File("/proc/self/io");
        std::string Word;
        std::int64_t Number = 0;
        File >> Word >> Number;
        EXPECT_EQ(Word, "rchar:");
        return Number;
    }

    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
    static constexpr std::int64_t Limit = 2146435072;
    const std::string TooLarge = "This wav file is too large\nOnly about 2GB will be opened";
    const std::string TooLong = "This wav file is too long\nOnly about 2GB will be opened";
    /// The temporary location need not have room for twice two gigabytes.
    const std::string LowDisk = "Free disk space for this is low.";

    std::vector<std::string> TextsWithoutLowDisk() {
        std::vector<std::string> Texts = Messages.TakeTexts();
        std::erase(Texts, LowDisk);
        return Texts;
    }
};

TEST_F(WavLarge, AFileAtTheLimitOpensWhole) {
    const std::int32_t Frames = (2146435072 - 44) / 4;
    const std::string Path = Sparse({.Channels = 2, .DataSize = Frames * 4LL}, Limit);
    Put(Path, Limit - 4, test::AudioBytes({-21, 22}, 16));
    ASSERT_TRUE(Load(Path));
    EXPECT_THAT(TextsWithoutLowDisk(), IsEmpty());
    EXPECT_EQ(Store.WavWaveINos, Frames);
    EXPECT_EQ(Store.WaveL(Frames), -21);
    EXPECT_EQ(Store.WaveR(Frames), 22);
    EXPECT_EQ(Store.WaveL(Frames - 1), 0);
}

TEST_F(WavLarge, AFileAboveTheLimitOpensUpToIt) {
    const std::string Path = Sparse({.Channels = 2, .DataSize = 2147483647}, Limit + 1000);
    Put(Path, Limit - 4, test::AudioBytes({-21, 22}, 16));
    ASSERT_TRUE(Load(Path));
    EXPECT_THAT(TextsWithoutLowDisk(),
                ElementsAre(TooLarge, HasSubstr("536870912 Samples (12173.944 Seconds)\nBut as per "
                                                "the size of the file it will be\n"
                                                "536608757 Samples (12167.999 Seconds)")));
    EXPECT_EQ(Store.WavWaveINos, 536608757);
    EXPECT_EQ(Store.WaveL(536608757), -21);
    EXPECT_EQ(Store.WaveR(536608757), 22);
}

TEST_F(WavLarge, AFileOfMoreThanFourGigabytesOpensUpToTheLimit) {
    const std::string Path = Sparse({.DataSize = 2147483646}, 5000000000);
    ASSERT_TRUE(Load(Path));
    EXPECT_THAT(TextsWithoutLowDisk(), ElementsAre(TooLarge, HasSubstr("1073217514 Samples (")));
    EXPECT_EQ(Store.WavWaveINos, 1073217514);
}

TEST_F(WavLarge, EightBitMonoIsCutToTheGreatestLength) {
    // A file at the limit is not too large, but has more samples than a channel may have.
    const std::string Path = Sparse({.Bits = 8, .DataSize = Limit - 44}, Limit);
    Put(Path, 44 + 2143289344 - 1, {201, 99});
    ASSERT_TRUE(Load(Path));
    EXPECT_THAT(TextsWithoutLowDisk(), ElementsAre(TooLong));
    EXPECT_EQ(Store.WavWaveINos, 2143289344);
    EXPECT_EQ(Store.WaveL(2143289344), 201 - 128);

    ASSERT_TRUE(Load(Sparse({.Bits = 8, .DataSize = 2147483647}, Limit + 1)));
    EXPECT_THAT(TextsWithoutLowDisk(), ElementsAre(TooLarge, HasSubstr("Header shows")))
        << "who was told that the file is too large is not told that it is too long";
    EXPECT_EQ(Store.WavWaveINos, 2143289344);
}

TEST_F(WavLarge, AFileOfThreeGigabytesOpensUpToTheLimit) {
    const std::string Path = Sparse({.Channels = 2, .DataSize = 3000000000}, 3000000044);
    Put(Path, Limit - 4, test::AudioBytes({-21, 22}, 16));
    ASSERT_TRUE(Load(Path));
    EXPECT_THAT(TextsWithoutLowDisk(), ElementsAre(TooLarge, HasSubstr("750000000 Samples (")));
    EXPECT_EQ(Store.WavWaveINos, 536608757);
    EXPECT_EQ(Store.WaveL(536608757), -21);
    EXPECT_EQ(Store.WaveR(536608757), 22);
}

TEST_F(WavLarge, OpeningReadsNextToNothing) {
#if defined(QUORIL_NO_CLONES) // built with sanitizers, which are slow at memory that grows
    constexpr auto MostTime = std::chrono::milliseconds(100);
#else
    constexpr auto MostTime = std::chrono::milliseconds(5);
#endif
    for (const bool DataFound : {true, false}) {
        const std::string Path =
            Sparse({.Channels = 2, .DataSize = Limit - 44, .DataName = DataFound ? "data" : "none"},
                   Limit);
        auto Best = std::chrono::steady_clock::duration::max();
        for (int Round = 0; Round < 20; ++Round) {
            const std::int64_t Before = BytesReadSoFar();
            const auto Start = std::chrono::steady_clock::now();
            EXPECT_EQ(Load(Path), DataFound);
            Best = std::min(Best, std::chrono::steady_clock::now() - Start);
            EXPECT_LT(BytesReadSoFar() - Before, 128 * 1024);
        }
        EXPECT_LT(Best, MostTime);
        RecordProperty(DataFound ? "MicrosecondsFound" : "MicrosecondsNotFound",
                       static_cast<int>(Best / std::chrono::microseconds(1)));
    }
}

TEST_F(WavLarge, WritingADocumentThatFitsNoHeaderFailsAndKeepsTheOldFile) {
    // 1073741805 frames of 16-bit mono are the most: their 2147483610 bytes and 36 more.
    for (const std::int32_t Length : {2000000000, 1073741824, 1073741806}) {
        Store.StorageReset();
        Store.WavFmtBits = 16;
        BlockCarrBuffClass Silence;
        Silence.ReDimSize(Length);
        Store.SwitchUndoOff = true;
        Store.WaveDataInsert(1, 1, &Silence, nullptr, {}, true);
        const std::string Path = Session.WriteFile("old.wav", {1, 2, 3});
        EXPECT_FALSE(OpenSaveClass().FileWriteWave(Store, Path));
        EXPECT_THAT(
            Messages.TakeTexts(),
            ElementsAre("Wave file write error|A WAV file holds 2 GB at most, and this sound "
                        "needs more.\n\"Save Selected Part\" can write it into several "
                        "files.\n\n"
                        "The file that was there before is unchanged."));
        EXPECT_EQ(TestSession::ReadFile(Path), (Bytes{1, 2, 3}));
        EXPECT_EQ(Store.WavWaveINos, Length);
    }
}

// ---- Files that change while they are the document

class WavChanged : public ::testing::Test {
  protected:
    void SetUp() override {
        All = test::Noise(400000, 16, 5);
        Path = Session.WriteFile("doc.wav", WavFile{.Data = test::AudioBytes(All, 16)}.Whole());
        // The time of change tells a rewritten file: let it lie in the past.
        fs::last_write_time(Path, fs::file_time_type::clock::now() - std::chrono::hours(1));
        bool Result = false;
        OpenSaveClass().FileLoadWave(Store, Path, Result);
        ASSERT_TRUE(Result);
    }
    /// Another program's file of the same length, with quite other samples.
    void Rewrite() {
        Session.WriteFile("doc.wav", WavFile{.Data = Bytes(All.size() * 2, 0x11)}.Whole());
    }
    void ExpectWriteFailsNamingTheFile() {
        const std::string Copy = Session.Path("copy.wav");
        EXPECT_FALSE(OpenSaveClass().FileWriteWave(Store, Copy));
        const std::vector<std::string> Texts = Messages.TakeTexts();
        ASSERT_THAT(Texts, SizeIs(1));
        EXPECT_THAT(Texts[0], ::testing::StartsWith("Wave file write error|"));
        EXPECT_THAT(Texts[0], HasSubstr(Path));
        const Bytes Written = TestSession::ReadFile(Copy);
        const Bytes Own = WavFile{.Data = test::AudioBytes(All, 16)}.Whole();
        ASSERT_LE(Written.size(), Own.size());
        EXPECT_TRUE(std::equal(Written.begin(), Written.end(), Own.begin()))
            << "no sample of the other program's is read as the user's own";
        EXPECT_EQ(Store.WavWaveINos, 400000);
        EXPECT_TRUE(test::CountsHold());
    }

    TestSession Session;
    ScriptedMessages Messages;
    FileMemoClass Store;
    Samples All;
    std::string Path;
};

TEST_F(WavChanged, ARemovedFileFailsTheCommandThatNeedsIt) {
    fs::remove(Path);
    ExpectWriteFailsNamingTheFile();
}

TEST_F(WavChanged, AFileRewrittenBeforeTheFirstReadFailsTheCommand) {
    Rewrite();
    ExpectWriteFailsNamingTheFile();
}

TEST_F(WavChanged, AFileRewrittenAfterARead) {
    EXPECT_EQ(Store.WaveL(1), All[0]); // the file is open now
    Rewrite();
    ExpectWriteFailsNamingTheFile();
}

TEST_F(WavChanged, AFileReplacedAfterAReadGivesNoForeignSample) {
    EXPECT_EQ(Store.WaveL(1), All[0]);
    Session.WriteFile("other.wav", WavFile{.Data = Bytes(All.size() * 2, 0x11)}.Whole());
    fs::rename(Session.Path("other.wav"), Path);
    // Either the old file is still read, since it is open, or the command fails; never a mixture.
    const std::string Copy = Session.Path("copy.wav");
    if (OpenSaveClass().FileWriteWave(Store, Copy))
        EXPECT_EQ(TestSession::ReadFile(Copy), WavFile{.Data = test::AudioBytes(All, 16)}.Whole());
    else
        EXPECT_THAT(Messages.TakeTexts(), ElementsAre(HasSubstr(Path)));
}

TEST_F(WavChanged, AFileThatBecameShorterFailsTheCommand) {
    fs::resize_file(Path, 1000);
    ExpectWriteFailsNamingTheFile();
}

/// While the user reads a message, another program rewrites the file.
class RewritesWhileAsking final : public UserMessages {
  public:
    RewritesWhileAsking(const TestSession& Where, Bytes What)
        : Session(Where), Replacement(std::move(What)) {
        SetUserMessages(this);
    }
    ~RewritesWhileAsking() override { SetUserMessages(nullptr); }
    RewritesWhileAsking(const RewritesWhileAsking&) = delete;
    RewritesWhileAsking& operator=(const RewritesWhileAsking&) = delete;
    MsgBoxAnswer MsgBox(const MsgBoxRequest& Request) override {
        if (Texts.empty())
            Session.WriteFile("asked.wav", Replacement);
        Texts.push_back(Request.Title + "|" + Request.Text);
        return MsgBoxAnswer::Ok;
    }
    InputBoxAnswer InputBox(const std::string&, const std::string&, const std::string&) override {
        return {};
    }
    std::vector<std::string> Texts;

  private:
    const TestSession& Session;
    Bytes Replacement;
};

TEST(WavHostile, AFileThatChangesDuringAQuestionIsNotOpenedWithItsOldHeader) {
    const TestSession Session;
    const std::string Path =
        Session.WriteFile("asked.wav", WavFile{.Tag = 3, .Data = Bytes(1000, 1)}.Whole());
    RewritesWhileAsking Messages(Session, WavFile{.Bits = 8, .Data = Bytes(5000, 2)}.Whole());
    FileMemoClass Store;
    bool Result = true;
    OpenSaveClass().FileLoadWave(Store, Path, Result);
    EXPECT_FALSE(Result);
    EXPECT_THAT(Messages.Texts,
                ElementsAre(HasSubstr("Format Tag = 3\n"),
                            "Wave file load error|Another program changed the file while it was "
                            "being opened.\n" +
                                Path));
    EXPECT_EQ(Store.WavWaveINos, 0);
    EXPECT_EQ(test::TablesInUse(), test::TableUse());
}

TEST_F(WavChanged, WhatIsInMemoryIsNotLostWithTheFile) {
    SampleArray Left;
    SampleArray Right;
    Store.WaveCollectBuff(1, 400000, 1, Left, Right);
    fs::remove(Path);
    ASSERT_TRUE(OpenSaveClass().FileWriteWave(Store, Session.Path("copy.wav")));
    EXPECT_EQ(TestSession::ReadFile(Session.Path("copy.wav")),
              WavFile{.Data = test::AudioBytes(All, 16)}.Whole());
}

} // namespace
} // namespace quoril

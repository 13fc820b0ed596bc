#include "recording/RecordTake.h"

#include "ScriptedTake.h"
#include "base/DocumentState.h"
#include "recording/RecordMachine.h"
#include "settings/STD1.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoListener.h"
#include "storage/UndoOffScope.h"
#include "storage/WoroFileBlockMod.h"
#include "support/FullDisk.h"
#include "support/ScriptedMessages.h"
#include "support/SmallDisk.h"
#include "support/TestSession.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace quoril::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Samples First, First + 1 ... with index 0 unused.
std::vector<std::int16_t> Counting(std::int32_t First, std::int32_t Count) {
    std::vector<std::int16_t> Block = {0};
    for (std::int32_t No = 0; No < Count; ++No)
        Block.push_back(static_cast<std::int16_t>(First + No));
    return Block;
}

class RecordTakeTest : public ::testing::Test {
  protected:
    RecordTakeTest() { WaveStore = std::make_unique<FileMemoClass>(); }
    ~RecordTakeTest() override { WaveStore.reset(); }

    /// A document of `Length` samples, all 7.
    static void Document(std::int32_t Channels, std::int32_t Length) {
        WaveStore->WavFmtChannel = Channels;
        const UndoOffScope Off(*WaveStore);
        BlockCarrBuffClass Samples;
        Samples.ReDimSize(Length);
        for (std::int32_t Pos = 1; Pos <= Length; ++Pos)
            Samples.WaveLR(Pos, 7);
        WaveStore->WaveDataInsert(1, Channels == 2 ? 0 : 1, &Samples, &Samples, {}, true);
    }
    static std::vector<std::int16_t> Left(std::int32_t From, std::int32_t Count) {
        std::vector<std::int16_t> Result;
        for (std::int32_t Pos = From; Pos < From + Count; ++Pos)
            Result.push_back(WaveStore->WaveL(Pos));
        return Result;
    }
    static std::vector<std::int16_t> Right(std::int32_t From, std::int32_t Count) {
        std::vector<std::int16_t> Result;
        for (std::int32_t Pos = From; Pos < From + Count; ++Pos)
            Result.push_back(WaveStore->WaveR(Pos));
        return Result;
    }
    static std::vector<std::int16_t> Plain(std::int32_t First, std::int32_t Count) {
        std::vector<std::int16_t> Block = Counting(First, Count);
        Block.erase(Block.begin());
        return Block;
    }

    const TestSession Session;
    ScriptedMessages Messages;
    RecordTake Take;
};

TEST_F(RecordTakeTest, AMonoTakeGoesInWholeAndInOrder) {
    Document(1, 100);
    Take.Empty();
    for (int No = 0; No < 20; ++No)
        Take.Put(Counting(No * 800, 800), {});
    Take.InsertInto(51, 1);
    EXPECT_EQ(WaveStore->WavWaveINos, 16100);
    EXPECT_EQ(Left(1, 50), std::vector<std::int16_t>(50, 7));
    EXPECT_EQ(Left(51, 16000), Plain(0, 16000));
    EXPECT_EQ(Left(16051, 50), std::vector<std::int16_t>(50, 7));
    EXPECT_TRUE(WaveChanged);
}

TEST_F(RecordTakeTest, NoSampleIsCopiedIntoMemory) {
    Document(1, 100);
    Take.Empty();
    Take.Put(Counting(0, 5000), {});
    const auto FilesBefore = TestSession::SessionFiles();
    Take.InsertInto(101, 1);
    EXPECT_EQ(TestSession::SessionFiles().size(), FilesBefore.size());
    Take.Drop();
    std::int32_t InFiles = 0;
    for (const std::int32_t BlockNo : WaveStore->BlocksL().Numbers())
        if (const BlockRec& Block = BlockTable.at(static_cast<std::size_t>(BlockNo));
            Block.BlockKind == BlockWorkFile)
            InFiles += Block.BlockLen;
    EXPECT_EQ(InFiles, 5000);
}

TEST_F(RecordTakeTest, AStereoTakeFillsBothChannels) {
    Document(2, 100);
    Take.Empty();
    for (int No = 0; No < 5; ++No)
        Take.Put(Counting(No * 800, 800), Counting(10000 + No * 800, 800));
    Take.InsertInto(1, 0);
    EXPECT_EQ(WaveStore->WaveNosL(), 4100);
    EXPECT_EQ(WaveStore->WaveNosR(), 4100);
    EXPECT_EQ(Left(1, 4000), Plain(0, 4000));
    EXPECT_EQ(Right(1, 4000), Plain(10000, 4000));
}

TEST_F(RecordTakeTest, OneChannelGainsTheTakeAndTheOtherIsPadded) {
    for (const std::int32_t WorkChn : {1, 2}) {
        WaveStore = std::make_unique<FileMemoClass>();
        Document(2, 100);
        Take.Empty();
        Take.Put(Counting(0, 500), {});
        Take.InsertInto(11, WorkChn);
        EXPECT_EQ(WaveStore->WaveNosL(), 600);
        EXPECT_EQ(WaveStore->WaveNosR(), 600);
        EXPECT_EQ(WorkChn == 1 ? Left(11, 500) : Right(11, 500), Plain(0, 500));
        const auto Other = WorkChn == 1 ? Right(1, 600) : Left(1, 600);
        std::vector<std::int16_t> Expected(600, 0);
        std::fill_n(Expected.begin(), 100, std::int16_t{7});
        EXPECT_EQ(Other, Expected);
        WaveStore->Undo();
        EXPECT_EQ(WaveStore->WavWaveINos, 100) << "one step";
        EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
    }
}

TEST_F(RecordTakeTest, OneUndoTakesItOutUnderItsName) {
    Document(1, 100);
    Take.Empty();
    Take.Put(Counting(0, 500), {});
    Take.InsertInto(50, 1);
    Take.Drop();
    EXPECT_THAT(WaveStore->UndoMenu().Caption, ::testing::HasSubstr("Record"));
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->WavWaveINos, 100);
    EXPECT_EQ(Left(1, 100), std::vector<std::int16_t>(100, 7));
    FilesSweep();
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty()) << "its work file is given back";
}

TEST_F(RecordTakeTest, AnEmptyTakeChangesNothing) {
    Document(1, 100);
    WaveChanged = false;
    Take.Empty();
    Take.InsertInto(50, 1);
    EXPECT_EQ(WaveStore->WavWaveINos, 100);
    EXPECT_FALSE(WaveChanged);
    EXPECT_FALSE(WaveStore->UndoMenu().Enabled);
}

TEST_F(RecordTakeTest, ANewTakeForgetsTheOldOne) {
    Document(1, 10);
    Take.Empty();
    Take.Put(Counting(0, 5000), {});
    Take.Empty();
    Take.Put(Counting(300, 20), {});
    Take.InsertInto(11, 1);
    EXPECT_EQ(WaveStore->WavWaveINos, 30);
    EXPECT_EQ(Left(11, 20), Plain(300, 20));
}

TEST_F(RecordTakeTest, DroppingGivesTheDiskBack) {
    Take.Empty();
    Take.Put(Counting(0, 5000), Counting(0, 5000));
    EXPECT_THAT(TestSession::SessionFiles(), SizeIs(2));
    Take.Drop();
    EXPECT_THAT(TestSession::SessionFiles(), IsEmpty());
}

TEST_F(RecordTakeTest, WhatIsPutStandsOnTheDiskAtOnce) {
    Take.Empty();
    Take.Put(Counting(0, 800), {});
    std::uintmax_t Longest = 0;
    for (const std::string& Name : TestSession::SessionFiles())
        Longest =
            std::max(Longest, std::filesystem::file_size(std::filesystem::path(SessionDir) / Name));
    EXPECT_EQ(Longest, 1600U);
}

TEST_F(RecordTakeTest, AFullDiskLeavesTheTakeAsItWas) {
    for (const std::int32_t Channels : {1, 2}) {
        WaveStore = std::make_unique<FileMemoClass>();
        Document(Channels, 100);
        Take.Empty();
        const auto Put = [&](int No) {
            Take.Put(Counting(No * 800, 800),
                     Channels == 2 ? Counting(-No * 800, 800) : std::vector<std::int16_t>{});
        };
        for (int No = 0; No < 10; ++No)
            Put(No);
        const FullDisk Disk;
        Disk.Fill();
        EXPECT_THROW(Put(10), Failure);
        EXPECT_THROW(Put(10), Failure);
        // Done works although the disk is still full.
        Take.InsertInto(101, Channels == 2 ? 0 : 1);
        Disk.Empty();
        EXPECT_EQ(WaveStore->WavWaveINos, 8100);
        EXPECT_EQ(Left(101, 8000), Plain(0, 8000));
        if (Channels == 2) {
            EXPECT_EQ(WaveStore->WaveNosR(), 8100);
            EXPECT_EQ(WaveStore->WaveR(101 + 7200), -7200);
        }
    }
}

/// The file of a take's channel that begins with a sample.
std::filesystem::path FileThatBeginsWith(std::int16_t Sample) {
    for (const std::string& Name : TestSession::SessionFiles()) {
        const std::filesystem::path Path = std::filesystem::path(SessionDir) / Name;
        std::int16_t First = 0;
        std::ifstream(Path, std::ios::binary).read(reinterpret_cast<char*>(&First), sizeof First);
        if (First == Sample)
            return Path;
    }
    return {};
}

/// As long as it lives, what is written to a file finds no room.
class FullFile {
  public:
    explicit FullFile(std::filesystem::path Named)
        : Path(std::move(Named)), Kept(Path.string() + "k") {
        std::filesystem::rename(Path, Kept);
        std::filesystem::create_symlink("/dev/full", Path);
    }
    ~FullFile() {
        std::filesystem::remove(Path);
        std::filesystem::rename(Kept, Path);
    }
    FullFile(const FullFile&) = delete;
    FullFile& operator=(const FullFile&) = delete;

  private:
    std::filesystem::path Path;
    std::filesystem::path Kept;
};

TEST_F(RecordTakeTest, WhereOneChannelFindsNoRoomTheOtherIsCutBack) {
    for (const std::int16_t Full : {std::int16_t{1000}, std::int16_t{20000}}) {
        WaveStore = std::make_unique<FileMemoClass>();
        Document(2, 100);
        Take.Empty();
        Take.Put(Counting(1000, 800), Counting(20000, 800));
        {
            const FullFile Channel(FileThatBeginsWith(Full));
            EXPECT_THROW(Take.Put(Counting(5000, 800), Counting(6000, 800)), Failure);
        }
        Take.Put(Counting(1800, 300), Counting(20800, 300));
        Take.InsertInto(101, 0);
        EXPECT_EQ(WaveStore->WaveNosL(), 1200) << Full;
        EXPECT_EQ(WaveStore->WaveNosR(), 1200) << Full;
        EXPECT_EQ(Left(101, 1100), Plain(1000, 1100));
        EXPECT_EQ(Right(101, 1100), Plain(20000, 1100));
    }
}

TEST_F(RecordTakeTest, WhereverTheDiskIsFullBothChannelsAreKeptEquallyLong) {
    constexpr std::int32_t Frames = 8000; // four pages
    int Failed = 0;
    for (std::size_t Pages = 9; Pages < 24; ++Pages) {
        WaveStore = std::make_unique<FileMemoClass>();
        const SmallDisk Disk(SessionDir, Pages);
        if (!Disk.Is())
            GTEST_SKIP() << "the system lets no disk be made";
        Document(2, 100);
        Take.Empty();
        std::int32_t Kept = 0;
        try {
            for (; Kept < 3 * Frames; Kept += Frames)
                Take.Put(Counting(Kept, Frames), Counting(-Kept, Frames));
        } catch (const Failure&) {
            ++Failed;
        }
        if (Kept > 0) // Done works although the disk is still full
            Take.InsertInto(101, 0);
        EXPECT_EQ(WaveStore->WaveNosL(), 100 + Kept) << Pages;
        EXPECT_EQ(WaveStore->WaveNosR(), 100 + Kept) << Pages;
        EXPECT_EQ(Left(101, Kept), Plain(0, Kept));
        Take.Drop();
        WaveStore.reset();
    }
    EXPECT_GT(Failed, 12) << "at each of the steps of a block";
}

TEST_F(RecordTakeTest, AfterRoomWasMadeATakeGoesOnWithoutAHole) {
    Document(1, 10);
    Take.Empty();
    Take.Put(Counting(0, 800), {});
    {
        const FullDisk Disk;
        Disk.Fill();
        EXPECT_THROW(Take.Put(Counting(800, 800), {}), Failure);
    }
    Take.Put(Counting(800, 800), {});
    Take.InsertInto(11, 1);
    EXPECT_EQ(Left(11, 1600), Plain(0, 1600));
}

TEST_F(RecordTakeTest, ATakeLongerThanAWorkFileGoesOnInAnother) {
    Document(2, 100);
    RecordTake Short(1000);
    Short.Empty();
    for (int No = 0; No < 12; ++No)
        Short.Put(Counting(No * 300, 300), Counting(-No * 300, 300));
    for (const std::string& Name : TestSession::SessionFiles())
        EXPECT_LE(std::filesystem::file_size(std::filesystem::path(SessionDir) / Name), 2000U);
    Short.InsertInto(51, 0);
    Short.Drop();
    EXPECT_EQ(WaveStore->WavWaveINos, 3700);
    EXPECT_EQ(Left(51, 3600), Plain(0, 3600));
    for (std::int32_t Block = 0; Block < 12; ++Block)
        EXPECT_EQ(Right(51 + Block * 300, 300), Plain(-Block * 300, 300));
    WaveStore->Undo();
    EXPECT_EQ(WaveStore->WavWaveINos, 100) << "still one step";
}

TEST_F(RecordTakeTest, AFailedInsertKeepsTheTakeForAnotherTry) {
    Document(1, 100);
    Take.Empty();
    Take.Put(Counting(0, 800), {});
    EXPECT_THROW(Take.InsertInto(2147483647, 1), Failure);
    EXPECT_EQ(WaveStore->WavWaveINos, 100);
    Take.InsertInto(101, 1);
    EXPECT_EQ(Left(101, 800), Plain(0, 800));
}

// ---- A long take

/// Pages of memory that the process holds, in bytes.
std::int64_t MemoryInUse() {
    std::ifstream In("/proc/self/statm");
    std::int64_t Whole = 0;
    std::int64_t Held = 0;
    In >> Whole >> Held;
    return Held * ::sysconf(_SC_PAGESIZE);
}

TEST_F(RecordTakeTest, TwoHoursTakeNoMoreMemoryThanAMinute) {
    constexpr std::int32_t Freq = 8000;
    constexpr std::int32_t Frames = Freq / 10;
    constexpr int Blocks = 2 * 3600 * 10;
    RecordMachine Machine(Take);
    Document(2, 10);
    Machine.SetUp({2, 16, Freq}, 2000000000);
    Machine.EngineOpened({});
    Machine.Start();
    [[maybe_unused]] std::int64_t AfterAMinute = 0;
    for (int No = 0; No < Blocks; ++No) {
        Machine.ProcessRecordedBlock(Counting(No, Frames), Counting(-No, Frames), Frames);
        if (No == 600)
            AfterAMinute = MemoryInUse();
    }
#ifndef QUORIL_SANITIZED // the sanitizer keeps what was given back
    EXPECT_LT(MemoryInUse() - AfterAMinute, 1 << 20);
#endif
    Machine.Stop();
    EXPECT_EQ(Machine.TakeTrouble(), "");
    EXPECT_EQ(Machine.Show().Dur_Lbl0, "2:00:00");
    EXPECT_EQ(Machine.Show().Dur_Lbl1, "2:00:00");
    Take.InsertInto(11, 0);
    EXPECT_EQ(WaveStore->WavWaveINos, 10 + Blocks * Frames);
    for (const int No : {0, 1, 35999, 36000, Blocks - 1}) {
        EXPECT_EQ(WaveStore->WaveL(11 + No * Frames), static_cast<std::int16_t>(No));
        EXPECT_EQ(WaveStore->WaveR(11 + No * Frames), static_cast<std::int16_t>(-No));
    }
}

} // namespace
} // namespace quoril::test

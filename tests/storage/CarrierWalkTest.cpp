// Walks over two channels side by side, against plain arrays.
#include "storage/CarrierWalk.h"
#include "StorageChecks.h"
#include "base/Failure.h"
#include "platform/SampleMemory.h"
#include "storage/CarrierWriter.h"
#include "support/FullDisk.h"
#include "support/LargeFile.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <random>

namespace quoril::test {
namespace {

using Samples = std::vector<std::int16_t>;
using RunIn = std::span<const std::int16_t>;
using RunOut = std::span<std::int16_t>;

class CarrierWalkTest : public ::testing::Test {
  protected:
    /// An opened stereo file, with both channels in blocks of `Piece` frames.
    void Open(std::int32_t Frames, std::int32_t Bits, std::int32_t Piece) {
        Store.StorageReset();
        Store.WavFmtChannel = 2;
        Store.WavFmtBits = Bits;
        const std::string Path =
            RawFile(Session, "f" + std::to_string(++Files) + ".raw", Frames, 2, Bits);
        const std::int32_t OrgNo = OrgFileAdd(Path, 2, Bits);
        std::array<BlockCarrBuffClass, 2> Opened;
        for (std::int32_t c = 0; c < 2; ++c) {
            const std::int32_t Whole = OrgBlock(OrgNo, Frames, c + 1);
            BlockSet Blocks;
            for (std::int32_t From = 1; From <= Frames; From += Piece) {
                Blocks.push_back(BlockCutRange(Whole, From, std::min(From + Piece - 1, Frames)));
                BlockTable[static_cast<std::size_t>(Blocks.back())].BlockStart = From;
            }
            BlockFree(Whole);
            Opened[static_cast<std::size_t>(c)].BuffBlocksPutFresh(Blocks);
        }
        Store.SwitchUndoOff = true;
        Store.WaveDataInsert(1, 0, Opened.data(), &Opened[1], "", true);
        Store.SwitchUndoOff = false;
    }
    /// Such a file of any length, and blocks of any length down to a single sample.
    void OpenAtRandom() {
        const std::int32_t Bits = Number(0, 1) == 0 ? 8 : 16;
        if (Number(0, 3) == 0)
            Open(Number(1, 300), Bits, Number(1, 3));
        else
            Open(Number(3000, 60000), Bits, Number(300, 9000));
    }
    /// Makes the blocks of the two channels different from one another.
    void EditAtRandom() {
        for (int i = 0; i < 4; ++i) {
            const std::int32_t Total = Store.WavWaveINos;
            const std::int32_t At = Number(1, Total);
            BlockCarrBuffClass New;
            switch (Number(0, 5)) {
            case 0:
                if (Total > 3)
                    Store.WaveDataDelete(At, Number(0, 2),
                                         std::min({Number(1, 300), Total - At + 1, Total / 2}),
                                         "Cut", true);
                break;
            case 1:
                CarrierFill(New, Number(1, 700), 3);
                Store.WaveDataInsert(At, Number(0, 2), &New, &New, "Paste", true);
                break;
            case 2:
                New.ReDimSize(Number(1, 700));
                Store.WaveDataInsert(At, Number(0, 2), &New, &New, "Silence", true);
                break;
            case 3: {
                std::unique_ptr<BlockCarrBuffClass> L;
                std::unique_ptr<BlockCarrBuffClass> R;
                Store.WaveCollectData(At, Total, 0, L, R);
                Store.WaveDataReplace(At, 0, R.get(), L.get(), "Exchange", true);
                break;
            }
            case 4: {
                std::unique_ptr<BlockCarrBuffClass> L;
                std::unique_ptr<BlockCarrBuffClass> R;
                Store.WaveCollectData_ForPlay(At, Total, 0, L, R);
                break;
            }
            default:
                Store.Undo();
                break;
            }
        }
        (void)Messages.TakeTexts();
    }
    /// Carriers of a range, and what they hold.
    void Collect(std::int32_t From, std::int32_t To) {
        Store.WaveCollectData(From, To, 0, CarrL, CarrR);
        for (std::int32_t c = 1; c <= 2; ++c) {
            const Samples Whole = ChannelSamples(Store, c);
            Held[static_cast<std::size_t>(c) - 1] =
                Samples(Whole.begin() + From - 1, Whole.begin() + To);
        }
    }
    void ExpectRules() { EXPECT_EQ(BrokenRule(Store, {CarrL.get(), CarrR.get()}), ""); }
    [[nodiscard]] std::int32_t Number(std::int32_t From, std::int32_t To) {
        return std::uniform_int_distribution<std::int32_t>(From, To)(Random);
    }
    static Samples All(const BlockCarrBuffClass& Carrier) {
        Samples Quick(static_cast<std::size_t>(Carrier.WaveINos) + 1);
        Carrier.QuickBuffGet(1, Quick);
        return {Quick.begin() + 1, Quick.end()};
    }

    const TestSession Session{20000};
    ScriptedMessages Messages;
    FileMemoClass Store;
    std::unique_ptr<BlockCarrBuffClass> CarrL;
    std::unique_ptr<BlockCarrBuffClass> CarrR;
    std::array<Samples, 2> Held;
    std::mt19937 Random{20261122};
    int Files = 0;
};

TEST_F(CarrierWalkTest, EveryWalkAgreesWithPlainArraysWhereverTheSamplesLie) {
    for (int Round = 0; Round < 200; ++Round) {
        SCOPED_TRACE(Round);
        OpenAtRandom();
        EditAtRandom();
        const std::int32_t From = Number(1, (Store.WavWaveINos + 1) / 2);
        Collect(From, Number(From, Store.WavWaveINos));
        const std::array<Samples, 2> Before = {ChannelSamples(Store, 1), ChannelSamples(Store, 2)};

        const std::int32_t Used = MemoryUsed;
        std::array<Samples, 2> Read;
        ReadSideBySide(CarrL.get(), CarrR.get(), WalkOrder::Rising,
                       [&](std::int32_t First, RunIn Left, RunIn Right) {
                           EXPECT_EQ(First, static_cast<std::int32_t>(Read[0].size()) + 1);
                           Read[0].insert(Read[0].end(), Left.begin(), Left.end());
                           Read[1].insert(Read[1].end(), Right.begin(), Right.end());
                       });
        EXPECT_TRUE(Read == Held);
        Read = {};
        ReadSideBySide(CarrL.get(), CarrR.get(), WalkOrder::Falling,
                       [&](std::int32_t, RunIn Left, RunIn Right) {
                           Read[0].insert(Read[0].begin(), Left.begin(), Left.end());
                           Read[1].insert(Read[1].begin(), Right.begin(), Right.end());
                       });
        EXPECT_TRUE(Read == Held);
        EXPECT_EQ(MemoryUsed, Used) << "reading in place moves nothing";

        if (Round % 3 == 0) {
            Read = {};
            std::vector<ChannelVisit> Visits;
            for (std::size_t c = 0; c < 2; ++c)
                Visits.push_back(
                    {c == 0 ? CarrL.get() : CarrR.get(), [&, c](std::int32_t, RunIn In) {
                         Read[c].insert(Read[c].end(), In.begin(), In.end());
                     }});
            VisitSideBySide(Visits, [](std::int32_t) {});
            EXPECT_TRUE(Read == Held);
            ExpectRules();
        }

        std::vector<ChannelChange> Changes;
        std::array<std::int16_t, 2> Last{}; // of each channel: kernels keep state
        for (std::size_t c = 0; c < 2; ++c)
            Changes.push_back(
                {c == 0 ? CarrL.get() : CarrR.get(), [&, c](std::int32_t, RunIn In, RunOut Out) {
                     for (std::size_t k = 0; k < In.size(); ++k) {
                         const std::int16_t Here = In[k];
                         Out[k] = static_cast<std::int16_t>(Here ^ Last[c]);
                         Last[c] = Here;
                     }
                 }});
        std::int32_t Reached = 0;
        ChangeSideBySide(Changes, [&](std::int32_t Position) {
            EXPECT_GT(Position, Reached);
            Reached = Position;
        });
        EXPECT_EQ(Reached, CarrL->WaveINos);
        ExpectRules();
        for (Samples& Each : Held)
            for (std::size_t k = Each.size() - 1; k > 0; --k)
                Each[k] = static_cast<std::int16_t>(Each[k] ^ Each[k - 1]);
        EXPECT_TRUE(All(*CarrL) == Held[0]);
        EXPECT_TRUE(All(*CarrR) == Held[1]);
        EXPECT_TRUE(ChannelSamples(Store, 1) == Before[0]) << "the document keeps its own";
        EXPECT_TRUE(ChannelSamples(Store, 2) == Before[1]);
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(CarrierWalkTest, AnInterleavedFileIsReadOnceByEveryWalk) {
    constexpr std::int32_t Frames = 100000;
    MemoryBudget = LowestMemoryBudget;
    for (const bool Swapped : {false, true})
        for (int Walk = 0; Walk < 4; ++Walk) {
            Open(Frames, 16, 30000);
            Store.WaveCollectData(1, Frames, 0, CarrL, CarrR);
            if (Swapped)
                std::swap(CarrL, CarrR);
            const std::int64_t Before = BytesReadSoFar();
            const WalkReached Reached = [](std::int32_t) {};
            const auto Visit = [](std::int32_t, RunIn, RunIn) {};
            const auto Copy = [](std::int32_t, RunIn In, RunOut Out) {
                std::ranges::copy(In, Out.begin());
            };
            const std::array Changes = {ChannelChange{CarrL.get(), Copy},
                                        ChannelChange{CarrR.get(), Copy}};
            const std::array Visits = {ChannelVisit{CarrL.get(), [](std::int32_t, RunIn) {}},
                                       ChannelVisit{CarrR.get(), [](std::int32_t, RunIn) {}}};
            switch (Walk) {
            case 0:
                ReadSideBySide(CarrL.get(), CarrR.get(), WalkOrder::Rising, Visit);
                break;
            case 1:
                ReadSideBySide(CarrL.get(), CarrR.get(), WalkOrder::Falling, Visit);
                break;
            case 2:
                ChangeSideBySide(Changes, Reached);
                break;
            default:
                VisitSideBySide(Visits, Reached);
                break;
            }
            EXPECT_LT(BytesReadSoFar() - Before, Frames * 4 * 102 / 100) << Walk << Swapped;
            ExpectRules();
        }
}

TEST_F(CarrierWalkTest, SamplesThatNobodyElseHasAreChangedInTheirPlace) {
    auto Mine = std::make_unique<BlockCarrBuffClass>();
    CarrierFill(*Mine, 5000);
    const std::int32_t BlockNo = Mine->Blocks().At(0);
    const void* const Buffer = Block(BlockNo).BlockData.BufferId();
    const auto Negate = [](std::int32_t, RunIn In, RunOut Out) {
        std::ranges::transform(In, Out.begin(),
                               [](std::int16_t One) { return static_cast<std::int16_t>(~One); });
    };
    const std::array<ChannelChange, 1> Change = {ChannelChange{Mine.get(), Negate}};
    ChangeSideBySide(Change);
    EXPECT_EQ(Block(BlockNo).BlockData.BufferId(), Buffer);
    const std::int32_t Clone = BlockClone(BlockNo);
    const Samples Once = BlockSamples(Clone);
    ChangeSideBySide(Change);
    EXPECT_TRUE(BlockSamples(Clone) == Once) << "a clone keeps what it had";
    EXPECT_EQ(All(*Mine), TestSamples(1, 5000));
    EXPECT_EQ(MemoryUsed, 20000);
    BlockFree(Clone);
}

TEST_F(CarrierWalkTest, AMergeTakesWhatStandsAheadInOtherCarriersAndLeavesTheseAsTheyAre) {
    for (int Round = 0; Round < 160; ++Round) {
        SCOPED_TRACE(Round);
        OpenAtRandom();
        EditAtRandom();
        const std::int32_t Total = Store.WavWaveINos;
        const std::int32_t From = Number(1, Total);
        Collect(From, Number(From, Total));
        const std::array<Samples, 2> Mine = Held;
        std::unique_ptr<BlockCarrBuffClass> OtherL;
        std::unique_ptr<BlockCarrBuffClass> OtherR;
        std::swap(CarrL, OtherL);
        std::swap(CarrR, OtherR);
        const std::int32_t Second = Number(1, Total);
        Collect(Second, Number(Second, Total));
        std::swap(CarrL, OtherL);
        std::swap(CarrR, OtherR);
        const std::array<Samples, 2> Theirs = Held;
        const std::int32_t Ahead = Number(0, 2);
        const bool LeftAlone = Number(0, 3) == 0;

        std::array<std::int32_t, 2> Next = {1, 1}; // position of each channel's next run
        std::vector<ChannelMerge> Merges;
        for (std::size_t c = 0; c < (LeftAlone ? 1U : 2U); ++c)
            Merges.push_back({c == 0 ? CarrL.get() : CarrR.get(),
                              c == 0 ? OtherL.get() : OtherR.get(),
                              [&, c](std::int32_t First, RunIn In, RunIn Other, RunOut Out) {
                                  EXPECT_EQ(First, Next[c]);
                                  EXPECT_EQ(In.size(), Other.size());
                                  EXPECT_EQ(In.size(), Out.size());
                                  Next[c] += static_cast<std::int32_t>(In.size());
                                  for (std::size_t k = 0; k < In.size(); ++k)
                                      Out[k] = static_cast<std::int16_t>(In[k] ^ (Other[k] + 7));
                              }});
        MergeSideBySide(Merges, Ahead, [](std::int32_t) {});
        EXPECT_EQ(BrokenRule(Store, {CarrL.get(), CarrR.get(), OtherL.get(), OtherR.get()}), "");
        EXPECT_TRUE(All(*OtherL) == Theirs[0] && All(*OtherR) == Theirs[1]);
        for (std::size_t c = 0; c < 2; ++c) {
            Samples Expected = Mine[c];
            for (std::size_t k = 0; k < Expected.size() && (c == 0 || !LeftAlone); ++k)
                if (const std::size_t There = k + static_cast<std::size_t>(Ahead);
                    There < Theirs[c].size())
                    Expected[k] = static_cast<std::int16_t>(Expected[k] ^ (Theirs[c][There] + 7));
            EXPECT_TRUE(All(c == 0 ? *CarrL : *CarrR) == Expected) << c;
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST_F(CarrierWalkTest, AMergeReadsBothSidesOnceHoweverSmallTheBlocksBeside) {
    constexpr std::int32_t Frames = 60000;
    MemoryBudget = LowestMemoryBudget;
    Open(2 * Frames, 16, 30000);
    for (std::int32_t At = Frames + 1; At < 2 * Frames; At += 1000) { // short blocks in memory
        BlockCarrBuffClass New;
        CarrierFill(New, 10);
        Store.WaveDataReplace(At, 0, &New, &New, "Paste", true);
    }
    std::unique_ptr<BlockCarrBuffClass> OtherL;
    std::unique_ptr<BlockCarrBuffClass> OtherR;
    Store.WaveCollectData(1, Frames, 0, CarrL, CarrR);
    Store.WaveCollectData(Frames + 1, 2 * Frames, 0, OtherL, OtherR);
    const auto Kernel = [](std::int32_t, RunIn In, RunIn, RunOut Out) {
        std::ranges::copy(In, Out.begin());
    };
    const std::array Merges = {ChannelMerge{CarrL.get(), OtherL.get(), Kernel},
                               ChannelMerge{CarrR.get(), OtherR.get(), Kernel}};
    const std::int64_t Before = BytesReadSoFar();
    MergeSideBySide(Merges, 0, [](std::int32_t) {});
    EXPECT_LT(BytesReadSoFar() - Before, 2 * Frames * 4 * 102 / 100);
}

TEST_F(CarrierWalkTest, AVisitBeyondTheBudgetReadsInPlaceAndPushesNothingOut) {
    constexpr std::int32_t Frames = 400000;
    Open(Frames, 16, 50000);
    MemoryBudget = 500000; // of 1600000 bytes
    Store.WaveCollectData(1, Frames, 0, CarrL, CarrR);
    std::array<Samples, 2> Read;
    std::vector<ChannelVisit> Visits;
    for (std::size_t c = 0; c < 2; ++c)
        Visits.push_back({c == 0 ? CarrL.get() : CarrR.get(), [&, c](std::int32_t, RunIn In) {
                              Read[c].insert(Read[c].end(), In.begin(), In.end());
                          }});
    const std::int64_t Before = BytesReadSoFar();
    VisitSideBySide(Visits, [](std::int32_t) {});
    EXPECT_LT(BytesReadSoFar() - Before, Frames * 4 * 102 / 100);
    EXPECT_TRUE(Read[0] == TestSamples(1, Frames, 1) && Read[1] == TestSamples(1, Frames, 2));
    EXPECT_EQ(TestSession::SessionFiles(), std::vector<std::string>());
    EXPECT_EQ(MemoryUsed, 400000) << "what found room is there for the next walk";
    ExpectRules();
}

TEST_F(CarrierWalkTest, WhatIsSharedAndInAWorkFileIsNotWrittenAgainWhileItIsChanged) {
    constexpr std::int32_t Count = 40000;
    MemoryBudget = LowestMemoryBudget;
    BlockCarrBuffClass Mine;
    CarrierFill(Mine, Count);
    const std::int32_t MineNo = Mine.Blocks().At(0);
    BlockWriteThrough(MineNo);
    const auto Copy = CarrierCopy(Mine);
    const auto Fill = [&](std::int32_t First, RunIn, RunOut Out) {
        std::ranges::fill(Out, std::int16_t{5});
        if (First > 1)
            return;
        MemoryBudget = 1000; // and others press in the midst of the walk
        BlockSet Small;
        for (int i = 0; i < 5; ++i)
            Small.push_back(BlockNew(10, 2));
        EXPECT_EQ(Block(MineNo).BlockKind, 3);
        BlockSetFree(Small);
    };
    const std::array Change = {ChannelChange{&Mine, Fill}};
    const std::int64_t Before = BytesWrittenSoFar();
    ChangeSideBySide(Change);
    EXPECT_LT(BytesWrittenSoFar() - Before, Count);
    EXPECT_TRUE(All(Mine) == Samples(Count, 5));
    EXPECT_TRUE(All(*Copy) == TestSamples(1, Count));
}

TEST_F(CarrierWalkTest, AReaderKeepsNothingInMemoryOfWhatItHasPassed) {
    constexpr std::int32_t Count = 500000; // a megabyte
    MemoryBudget = LowestMemoryBudget;
    BlockSet Blocks = {MemoryBlock(Count, 1), BlockNew(100, 5)};
    BlockTable[static_cast<std::size_t>(Blocks[1])].BlockStart = Count + 1;
    BlockCarrBuffClass Mine;
    Mine.BuffBlocksPutFresh(Blocks);
    bool Passed = false;
    ReadSideBySide(&Mine, nullptr, WalkOrder::Rising, [&](std::int32_t First, RunIn, RunIn) {
        if (First <= Count)
            return;
        Passed = true;
        BlockToFile(Blocks[0]);
        EXPECT_LT(SampleMemoryInUse(), Count);
    });
    EXPECT_TRUE(Passed);
}

TEST_F(CarrierWalkTest, AKernelThatThrowsLeavesTheTablesWholeAndTheDocumentAsItWas) {
    for (int Round = 0; Round < 40; ++Round) {
        Open(40000, 16, Number(500, 40000));
        EditAtRandom();
        Collect(1, Store.WavWaveINos);
        const std::array<Samples, 2> Before = {ChannelSamples(Store, 1), ChannelSamples(Store, 2)};
        const std::int32_t Where = Number(1, Store.WavWaveINos);
        const auto Failing = [Where](std::int32_t First, RunIn In, RunOut Out) {
            if (First + static_cast<std::int32_t>(In.size()) > Where)
                throw Failure("Stop");
            std::ranges::fill(Out, std::int16_t{9});
        };
        const std::array Changes = {ChannelChange{CarrL.get(), Failing},
                                    ChannelChange{CarrR.get(), Failing}};
        EXPECT_THROW(ChangeSideBySide(Changes), Failure);
        ExpectRules();
        CarrL.reset();
        CarrR.reset();
        EXPECT_EQ(BrokenRule(Store), "");
        EXPECT_TRUE(ChannelSamples(Store, 1) == Before[0]);
        EXPECT_TRUE(ChannelSamples(Store, 2) == Before[1]);
    }
}

TEST_F(CarrierWalkTest, ABlockThatEqualsItsFileLeavesItBeforeTheFirstSampleIsChanged) {
    MemoryBudget = LowestMemoryBudget;
    BlockCarrBuffClass Mine;
    CarrierFill(Mine, 50000);
    BlockWriteThrough(Mine.Blocks().At(0));
    const auto Failing = [](std::int32_t First, RunIn, RunOut Out) {
        std::ranges::fill(Out, std::int16_t{5});
        if (First > 1)
            throw Failure("Stop");
    };
    const std::array Change = {ChannelChange{&Mine, Failing}};
    EXPECT_THROW(ChangeSideBySide(Change), Failure);
    EXPECT_EQ(BrokenRule({&Mine.Blocks().Numbers()}), "");
}

TEST_F(CarrierWalkTest, AChannelThatEndsEarlyGivesNoMoreThanItHas) {
    MemoryBudget = LowestMemoryBudget;
    for (const bool LeftEnds : {true, false})
        for (const WalkOrder Order : {WalkOrder::Rising, WalkOrder::Falling}) {
            BlockCarrBuffClass L;
            BlockCarrBuffClass R;
            CarrierFill(L, LeftEnds ? 40000 : 70000, 1);
            CarrierFill(R, LeftEnds ? 70000 : 40000, 2);
            std::array<Samples, 2> Read;
            ReadSideBySide(&L, &R, Order, [&](std::int32_t First, RunIn Left, RunIn Right) {
                for (std::size_t c = 0; c < 2; ++c) {
                    const RunIn Run = c == 0 ? Left : Right;
                    if (Run.empty())
                        continue;
                    Read[c].resize(
                        std::max(Read[c].size(), static_cast<std::size_t>(First) - 1 + Run.size()));
                    std::ranges::copy(Run, Read[c].begin() + First - 1);
                }
            });
            EXPECT_TRUE(Read[0] == All(L)) << LeftEnds;
            EXPECT_TRUE(Read[1] == All(R)) << LeftEnds;
        }
}

TEST_F(CarrierWalkTest, ReadingAfterAWalkSeesWhatTheWalkMade) {
    MemoryBudget = LowestMemoryBudget;
    BlockCarrBuffClass Mine;
    CarrierFill(Mine, 1000);
    const auto Copy = CarrierCopy(Mine); // so that the walk makes new samples
    EXPECT_EQ(Mine.WaveLR(1), TestSample(1));
    const std::int32_t Stamp = NextBlockStamp();
    const auto Fill = [](std::int32_t, RunIn, RunOut Out) {
        std::ranges::fill(Out, std::int16_t{5});
    };
    const std::array Change = {ChannelChange{&Mine, Fill}};
    ChangeSideBySide(Change);
    EXPECT_GT(Block(Mine.Blocks().At(0)).BlockStamp, Stamp);
    EXPECT_EQ(Mine.WaveLR(1), 5);
    Mine.WaveLR(2, 6);
    EXPECT_EQ(Mine.WaveLR(2), 6);
    EXPECT_EQ(Copy->WaveLR(1), TestSample(1));
    EXPECT_EQ(BlockSamples(Mine.Blocks().At(0))[1], 6);
}

class CarrierWriterTest : public CarrierWalkTest {};

TEST_F(CarrierWriterTest, MoreThan32BitsFailBeforeAnythingIsMade) {
    CarrierWriter Writer(10);
    Writer.Put(Samples(10, 5));
    int Pieces = 0;
    const auto Fill = [&](std::size_t, RunOut) {
        ++Pieces;
        throw Failure("Made");
    };
    EXPECT_THROW(Writer.Make((std::size_t{1} << 31) - 10, Fill), Failure);
    EXPECT_EQ(Pieces, 0);
    EXPECT_EQ(Writer.Length(), 10);
    EXPECT_EQ(Writer.Finish()->WaveINos, 10);
}

TEST_F(CarrierWriterTest, PutsRunsOfEveryLengthTogether) {
    MemoryBudget = LowestMemoryBudget;
    const std::int32_t BlockLen = DefaultBlockLen();
    for (const std::int32_t Rough : {0, 10, BlockLen, 3 * BlockLen}) {
        const std::int64_t Memory = SampleMemoryInUse();
        CarrierWriter Writer(Rough);
        Samples Put;
        while (static_cast<std::int32_t>(Put.size()) < BlockLen + 1000) {
            Samples Run(static_cast<std::size_t>(Number(0, 70000)));
            for (std::int16_t& One : Run)
                One = static_cast<std::int16_t>(Number(-32768, 32767));
            if (Number(0, 1) == 0)
                Writer.Put(Run);
            else
                Writer.Make(Run.size(), [&Run](std::size_t At, RunOut Out) {
                    std::copy_n(Run.begin() + static_cast<std::ptrdiff_t>(At), Out.size(),
                                Out.begin());
                });
            Put.insert(Put.end(), Run.begin(), Run.end());
            EXPECT_EQ(Writer.Length(), static_cast<std::int32_t>(Put.size()));
        }
        const auto Made = Writer.Finish();
        EXPECT_EQ(Writer.Length(), 0);
        EXPECT_EQ(Made->WaveINos, static_cast<std::int32_t>(Put.size()));
        EXPECT_TRUE(All(*Made) == Put);
        EXPECT_EQ(MemoryUsed, static_cast<std::int32_t>(2 * Put.size()));
        constexpr std::int64_t Rounding = 300000; // of the memory of each block
        EXPECT_LT(SampleMemoryInUse() - Memory, MemoryUsed + Rounding) << "and no more is held";
        EXPECT_EQ(BrokenRule({&Made->Blocks().Numbers()}), "");
    }
    EXPECT_EQ(MemoryUsed, 0);
}

TEST_F(CarrierWriterTest, NothingPutGivesAnEmptyCarrierAndNothingFinishedLeavesNothing) {
    EXPECT_EQ(CarrierWriter(100).Finish()->WaveINos, 0);
    {
        CarrierWriter Writer(0);
        const Samples Run(100000, 5);
        for (int i = 0; i < 20; ++i)
            Writer.Put(Run);
        EXPECT_GT(MemoryUsed, 0);
    }
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "");
}

TEST_F(CarrierWriterTest, AFullDiskFailsAndLeavesNothing) {
    MemoryBudget = 2;
    const FullDisk Disk;
    {
        CarrierWriter Writer(0);
        const Samples Run(100000, 5);
        Disk.Fill();
        const auto PutMuch = [&] {
            for (int i = 0; i < 60; ++i)
                Writer.Put(Run);
        };
        EXPECT_THROW(PutMuch(), Failure);
    }
    Disk.Empty();
    EXPECT_EQ(MemoryUsed, 0);
    EXPECT_EQ(BrokenRule(std::vector<const BlockSet*>{}), "");
}

} // namespace
} // namespace quoril::test

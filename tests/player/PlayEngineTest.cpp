#include "player/PlayEngine.h"
#include "BlockWords.h"
#include "base/Failure.h"
#include "settings/STD1.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Samples = std::vector<std::int16_t>;

/// A way out whose callback is the test itself: frames go out when the test takes them.
class HandOutput final : public SoundOutput {
  public:
    [[nodiscard]] std::int32_t DriverState() const override { return State; }
    void Start(SoundFeed& From, std::int32_t Channels, std::int32_t Rate, bool Steerable) override {
        Feed = &From;
        Width = static_cast<std::size_t>(Channels);
        RateGiven = Rate;
        CanSteer = Steerable;
        Out.clear();
        Paused = Done = false;
        HeardNow = 0;
        ++Starts;
    }
    void Stop() override { Feed = nullptr; }
    void Pause(bool On) override { Paused = On; }
    bool SetRate(std::int32_t Rate) override {
        if (CanSteer)
            RateGiven = Rate;
        return CanSteer;
    }
    void Kick() noexcept override {}
    void Hold() override { ++Holds; }
    std::uint64_t TakeBack() override { return std::exchange(Returned, 0U); }
    void LetGo() override { Done = false; }
    std::uint64_t Heard() override { return HeardNow; }
    [[nodiscard]] bool Finished() const override { return Done; }
    [[nodiscard]] bool Lost() const override { return Gone; }

    /// The callback: waits until so many frames have come or the sound has ended.
    Samples Take(std::size_t Count) {
        Samples Got;
        const auto Until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (Got.size() < Count * Width && std::chrono::steady_clock::now() < Until) {
            const bool Ended = Feed->Ended.load(std::memory_order_acquire);
            Samples Piece(Count * Width);
            const std::size_t Frames = Feed->Take(Piece.data(), Count - Got.size() / Width);
            Got.insert(Got.end(), Piece.begin(),
                       Piece.begin() + static_cast<std::ptrdiff_t>(Frames * Width));
            if (Frames == 0 && Ended) {
                Done = true;
                break;
            }
            if (Frames == 0)
                std::this_thread::yield();
        }
        HeardNow = Feed->Ring.Taken();
        return Got;
    }

    std::int32_t State = 1;
    SoundFeed* Feed = nullptr;
    std::size_t Width = 1;
    std::int32_t RateGiven = 0;
    bool CanSteer = false;
    bool Paused = false;
    bool Done = false;
    bool Gone = false;
    std::uint64_t HeardNow = 0;
    std::uint64_t Returned = 0; ///< what the next Hold gives back
    int Starts = 0;
    int Holds = 0;
    Samples Out;
};

class PlayEngineTest : public ::testing::Test {
  protected:
    PlayEngineTest()
        : Engine(
              [this](const OutputNotice&) {
                  auto Made = std::make_unique<HandOutput>();
                  Output = Made.get();
                  return Made;
              },
              [] {}) {}

    void LoadNoise(std::size_t Count, std::int32_t Freq = 8000) {
        All = Noise(Count);
        BlockWords List;
        List.Add(WriteSamples(Folder, "w", All), static_cast<std::int32_t>(Count), 3, 1);
        EXPECT_EQ(Engine.SwitchOn(), 1);
        Engine.Load(16, 1, Freq, static_cast<std::int32_t>(Count), List.Words,
                    std::vector<std::int32_t>{0});
    }
    [[nodiscard]] Samples Part(std::int64_t From, std::int64_t To) const {
        Samples Result;
        const std::int64_t Step = From <= To ? 1 : -1;
        for (std::int64_t i = From; i != To + Step; i += Step)
            Result.push_back(All[static_cast<std::size_t>(i)]);
        return Result;
    }

    TempFolder Folder;
    HandOutput* Output = nullptr;
    PlayEngine Engine;
    Samples All;
};

TEST_F(PlayEngineTest, PlaysForwardToTheEndAndThenIsStopped) {
    LoadNoise(100000);
    Engine.Play(0, 1);
    EXPECT_EQ(Engine.Status(), 1);
    EXPECT_EQ(Output->Take(60000), Part(0, 59999));
    EXPECT_EQ(Engine.Position(), 60000);
    EXPECT_EQ(Output->Take(60000), Part(60000, 99999));
    EXPECT_EQ(Engine.Status(), 0);
    EXPECT_EQ(Engine.Attend(), "");
    EXPECT_EQ(Output->Feed, nullptr);
    EXPECT_EQ(Engine.Position(), 0);
}

TEST_F(PlayEngineTest, PlaysInReverseFromTheEndOrFromAnOffset) {
    LoadNoise(5000);
    Engine.PlayFromEnd();
    EXPECT_EQ(Engine.Status(), 2);
    EXPECT_EQ(Output->Take(9999), Part(4999, 0));
    Engine.Play(1000, -1);
    EXPECT_EQ(Output->Take(400), Part(1000, 601));
    EXPECT_EQ(Engine.Position(), 600);
    Engine.Play(-7, 1);
    EXPECT_EQ(Output->Take(3), Part(0, 2));
    Engine.Play(999999, -1);
    EXPECT_EQ(Output->Take(3), Part(4999, 4997));
}

TEST_F(PlayEngineTest, TurnsAfterTheFrameThatWentOutLast) {
    LoadNoise(50000);
    Engine.Play(0, 1);
    Output->Take(20000);
    Engine.UTurn();
    EXPECT_EQ(Engine.Status(), 2);
    EXPECT_EQ(Output->Take(500), Part(19998, 19499));
    Engine.UTurn();
    EXPECT_EQ(Output->Take(500), Part(19500, 19999));
    EXPECT_EQ(Engine.Position(), 20000);
    EXPECT_EQ(Output->Starts, 1);
}

TEST_F(PlayEngineTest, FramesThatTheServerGivesBackAreNotHeardAgainAfterATurn) {
    LoadNoise(100000);
    Engine.Play(0, 1);
    EXPECT_EQ(Output->Take(5000), Part(0, 4999));
    Output->Returned = 3000;
    Engine.UTurn();
    EXPECT_EQ(Output->Feed->Ring.Taken(), 2000U);
    EXPECT_EQ(Output->Take(1000), Part(1998, 999));
    Output->HeardNow = 2100;
    EXPECT_EQ(Engine.Position(), 1898);
    Output->Returned = 1000;
    Engine.UTurn();
    EXPECT_EQ(Output->Take(3), Part(2000, 2002)) << "as if it had never turned";
}

TEST_F(PlayEngineTest, TheHeardPlaceIsKnownAcrossATurn) {
    LoadNoise(50000);
    Engine.Play(0, 1);
    Output->Take(20000);
    Engine.UTurn();
    Output->Take(1000);
    Output->HeardNow = 19000; // the server still holds the frames before the turn
    EXPECT_EQ(Engine.Position(), 19000);
    Output->HeardNow = 20500;
    EXPECT_EQ(Engine.Position(), 19498);
}

TEST_F(PlayEngineTest, ATurnBeforeTheFirstFrameOrAtTheEndIsNoHarm) {
    LoadNoise(100);
    Engine.Play(0, 1);
    Engine.UTurn();
    EXPECT_EQ(Output->Take(10), Part(0, 0));
    Engine.Play(0, 1);
    EXPECT_EQ(Output->Take(100), Part(0, 99));
    Engine.UTurn();
    EXPECT_EQ(Output->Take(200), Part(98, 0));
    Engine.UTurn();
    EXPECT_EQ(Engine.Status(), 1);
}

TEST_F(PlayEngineTest, ALoopGoesRoundAndItsEndCountsFromWhatWentOut) {
    LoadNoise(1000);
    Engine.SetLoop(true);
    Engine.Play(0, 1);
    Output->Take(2500);
    EXPECT_EQ(Engine.Position(), 500);
    Engine.SetLoop(false);
    EXPECT_EQ(Output->Take(9999), Part(500, 999));
    EXPECT_EQ(Engine.Status(), 0);
}

TEST_F(PlayEngineTest, ALoopThatIsSwitchedOnWhilePlayingHolds) {
    LoadNoise(1000);
    Engine.Play(0, 1);
    Output->Take(300);
    Engine.SetLoop(true);
    EXPECT_EQ(Output->Take(701), [&] {
        Samples Expected = Part(300, 999);
        Expected.push_back(All[0]);
        return Expected;
    }());
}

TEST_F(PlayEngineTest, PauseKeepsThePlaceAndContinueGoesOn) {
    LoadNoise(50000);
    Engine.Play(0, 1);
    Output->Take(1000);
    Engine.PauseStart();
    Engine.Pause();
    EXPECT_EQ(Engine.Status(), 3);
    EXPECT_TRUE(Output->Paused);
    EXPECT_EQ(Engine.Position(), 1000);
    Engine.Continue();
    EXPECT_EQ(Engine.Status(), 1);
    EXPECT_FALSE(Output->Paused);
    EXPECT_EQ(Output->Take(10), Part(1000, 1009));
    EXPECT_EQ(Output->Starts, 1);
}

TEST_F(PlayEngineTest, AnotherSpeedIsTakenOnAtContinueAtTheSamePlace) {
    LoadNoise(50000);
    Engine.Play(0, 1);
    EXPECT_EQ(Output->RateGiven, 8000);
    EXPECT_FALSE(Output->CanSteer);
    Output->Take(1000);
    Output->HeardNow = 900;
    Engine.SetTempo(1, 1.5F);
    Engine.PauseStart();
    Engine.Pause();
    Engine.Continue();
    EXPECT_EQ(Output->RateGiven, 12000);
    EXPECT_EQ(Output->Take(10), Part(900, 909));
    Engine.SetTempo(1, 0.5F);
    Engine.Pause();
    Engine.Continue();
    EXPECT_EQ(Output->RateGiven, 4000);
    EXPECT_EQ(Output->Starts, 2) << "a steerable output goes on without a gap";
    EXPECT_EQ(Output->Take(10), Part(910, 919));
}

TEST_F(PlayEngineTest, SpeedsOutsideTheirRangeAreIgnored) {
    LoadNoise(1000);
    for (const float Bad : {0.0F, -1.0F, 0.09F, 2.01F, std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity()})
        Engine.SetTempo(1, Bad);
    Engine.Play(0, 1);
    EXPECT_EQ(Output->RateGiven, 8000);
}

TEST_F(PlayEngineTest, PlainSoundHasOneSpeed) {
    LoadNoise(1000);
    Output->State = 2;
    Engine.SetTempo(1, 2.0F);
    Engine.Play(0, 1);
    EXPECT_EQ(Output->RateGiven, 8000);
}

TEST_F(PlayEngineTest, ATurnWhilePausedIsHeardAtContinue) {
    LoadNoise(50000);
    Engine.Play(0, 1);
    Output->Take(1000);
    Engine.Pause();
    Engine.UTurn();
    EXPECT_EQ(Engine.Status(), 3);
    Engine.Continue();
    EXPECT_EQ(Engine.Status(), 2);
    EXPECT_EQ(Output->Take(10), Part(1000, 991));
}

TEST_F(PlayEngineTest, AMissingFileIsToldOnceForASnapshot) {
    LoadNoise(100);
    BlockWords List;
    List.Add(Folder / "missing", 100000, 3, 1);
    Engine.Load(16, 1, 8000, 100000, List.Words, std::vector<std::int32_t>{0});
    Engine.Play(0, 1);
    EXPECT_EQ(Output->Take(100000), Samples(100000, 0));
    EXPECT_THAT(Engine.Attend(), HasSubstr("missing"));
    EXPECT_EQ(Engine.Attend(), "");
}

TEST_F(PlayEngineTest, AfterARefusedListOrAReleaseNothingPlays) {
    LoadNoise(100);
    Engine.Play(0, 1);
    EXPECT_THROW(Engine.Load(16, 1, 8000, 100, std::vector<std::int32_t>{5, 5},
                             std::vector<std::int32_t>{0}),
                 Failure);
    EXPECT_EQ(Engine.Status(), 0);
    Engine.Play(0, 1);
    EXPECT_EQ(Engine.Status(), 0);
    LoadNoise(100);
    Engine.ReleaseFiles();
    Engine.Play(0, 1);
    Engine.UTurn();
    Engine.Pause();
    Engine.Continue();
    EXPECT_EQ(Engine.Status(), 0);
}

TEST_F(PlayEngineTest, WhatPlaysWhenItsFilesAreReleasedPlaysToItsEndFromTheFileAsItWas) {
    Engine.SetMemoryBytes(100000); // reads little ahead
    All = Noise(200000);
    const std::string Name = WriteSamples(Folder, "opened", All);
    BlockWords List;
    List.Add(Name, 200000, 4, 1, 1, 1, 16);
    EXPECT_EQ(Engine.SwitchOn(), 1);
    Engine.Load(16, 1, 8000, 200000, List.Words, std::vector<std::int32_t>{0});
    Engine.Play(0, 1);
    EXPECT_EQ(Output->Take(100), Part(0, 99));
    Engine.ReleaseFiles();
    EXPECT_EQ(Engine.Status(), 1);
    ASSERT_TRUE(FileDelete(Name)) << "nobody keeps it from being written anew";
    WriteSamples(Folder, "opened", Noise(200000, 2));
    EXPECT_TRUE(Output->Take(150000) == Part(100, 150099));
    Engine.UTurn();
    EXPECT_TRUE(Output->Take(60000) == Part(150098, 90099));
    Engine.Stop();
    Engine.Play(0, 1);
    EXPECT_EQ(Engine.Status(), 0) << "what has ended is gone";
}

TEST_F(PlayEngineTest, APausedSoundEndsWhenItsFilesAreReleased) {
    LoadNoise(100000);
    Engine.Play(0, 1);
    Engine.Pause();
    Engine.ReleaseFiles();
    EXPECT_EQ(Engine.Status(), 0);
    Engine.Continue();
    Engine.Play(0, 1);
    EXPECT_EQ(Engine.Status(), 0);
}

TEST_F(PlayEngineTest, ALostOutputStopsAndIsFoundAgainByTheNextStart) {
    LoadNoise(5000);
    Engine.Play(0, 1);
    Output->Gone = true;
    EXPECT_EQ(Engine.Attend(), "The sound output has been lost");
    EXPECT_EQ(Engine.Status(), 0);
    Engine.Play(0, 1);
    EXPECT_EQ(Output->Take(10), Part(0, 9));
}

TEST_F(PlayEngineTest, WithoutADriverCommandsDoNothing) {
    LoadNoise(100);
    Engine.SwitchOff();
    Engine.Play(0, 1);
    Engine.UTurn();
    Engine.Stop();
    EXPECT_EQ(Engine.Status(), 0);
    EXPECT_EQ(Engine.Position(), 0);
}

} // namespace
} // namespace quoril::test

// The real player with a real sound server: what is heard, and when.
#include "PlayerSoundFixture.h"
#include "platform/DirectXSetup.h"

namespace quoril::test {
namespace {

TEST_F(PlayerSoundTest, TheServerCountsAsVersionEight) {
    const SoundServer Private(1);
    const std::optional<DirectXVersion> Found = DirectXSetupGetVersion();
    ASSERT_TRUE(Found && Found->Known);
    EXPECT_EQ(Found->Version, 8);
    EXPECT_EQ(Found->Revision, 0);
}

TEST_F(PlayerSoundTest, EverySampleIsHeardOnceAndInOrder) {
    Begin();
    Load(Sound(Rate));
    Player->PlayForward();
    EXPECT_EQ(Player->PlayStatus(), 1);
    EXPECT_TRUE(HeardToTheEnd() == All);
    EXPECT_THAT(Status, ::testing::ElementsAre("Playing", ""));
}

TEST_F(PlayerSoundTest, InReverseTheSamplesComeBackwards) {
    Begin();
    Load(Sound(Rate / 2));
    Player->PlayReverse();
    EXPECT_EQ(Player->PlayStatus(), 2);
    EXPECT_TRUE(HeardToTheEnd() == Reversed(All));
}

TEST_F(PlayerSoundTest, BothChannelsOfAnInterleavedFileKeepTheirSides) {
    Begin(2);
    const Samples Frames = Sound(Rate);
    const std::string Name = WriteSamples(Folder, "stereo", Frames);
    BlockWords Left;
    BlockWords Right;
    Left.Add(Name, Rate / 2, 4, 1, 1, 2, 16);
    Right.Add(Name, Rate / 2, 4, 1, 3, 2, 16);
    Player->Load(16, 2, Rate, Rate / 2, Left.Words, Right.Words);
    Player->PlayForward();
    EXPECT_TRUE(HeardToTheEnd() == Frames);
}

TEST_F(PlayerSoundTest, EightBitsSoundAtTheirHeightInSixteen) {
    Begin();
    std::string Bytes(Rate, '\0');
    Samples Expected;
    for (std::size_t i = 0; i < Bytes.size(); ++i) {
        const auto Height = static_cast<unsigned char>(i % 255 < 127 ? i % 255 : i % 255 + 1);
        Bytes[i] = static_cast<char>(Height);
        Expected.push_back(static_cast<std::int16_t>((Height - 128) * 256));
    }
    BlockWords List;
    List.Add(Folder.Write("eight", Bytes), Rate, 4, 1, 1, 1, 8);
    Player->Load(8, 1, Rate, Rate, List.Words, NoList);
    Player->PlayForward();
    Samples Got = HeardToTheEnd();
    Got.erase(std::remove(Got.begin(), Got.end(), std::int16_t{0}), Got.end());
    Expected.erase(std::remove(Expected.begin(), Expected.end(), std::int16_t{0}), Expected.end());
    EXPECT_TRUE(Got == Expected) << Got.size() << " of " << Expected.size();
}

/// More than a minute out of a work file, an interleaved file and silence, in blocks of odd
/// lengths.
class OneMinuteTest : public PlayerSoundTest {
  protected:
    static constexpr std::int32_t Blocks = 61;

    void LoadMinute() {
        Begin();
        constexpr std::int32_t Length = Rate + 77;
        const auto Whole = static_cast<std::size_t>(Blocks * Length);
        const Samples Work = Sound(Whole, 3);
        const Samples Frames = Sound(2 * Whole, 4);
        const std::string WorkName = WriteSamples(Folder, "sound", Work);
        const std::string FramesName = WriteSamples(Folder, "frames", Frames);
        BlockWords List;
        for (std::int32_t Block = 0; Block < Blocks; ++Block) {
            const std::int32_t At = Block * Length;
            if (Block % 3 == 0)
                List.Add(WorkName, Length, 3, At + 1, 1 + 2 * At);
            else if (Block % 3 == 1)
                List.Add(FramesName, Length, 4, At + 1, 3 + 4 * At, 2, 16);
            else
                List.Silence(Length, At + 1);
            for (auto i = static_cast<std::size_t>(At); i < static_cast<std::size_t>(At + Length);
                 ++i)
                All.push_back(Block % 3 == 0   ? Work[i]
                              : Block % 3 == 1 ? Frames[2 * i + 1]
                                               : std::int16_t{0});
        }
        Player->Load(16, 1, Rate, Blocks * Length, List.Words, NoList);
    }
    /// Waits by what is heard: asking the player a thousand times a second costs it more time than
    /// playing does.
    void WaitForTheMinute() {
        EXPECT_TRUE(WaitFor([&] { return Heard->Count() > Heard->FirstSound() + All.size(); },
                            std::chrono::seconds(90)));
    }
};

TEST_F(OneMinuteTest, ForwardNoSampleIsLostOrDoubledAndOneCoreIsHardlyUsed) {
    LoadMinute();
    const int Process = PlayerProcessId(*Player);
    const double Before = CpuSeconds(Process);
    Player->PlayForward();
    WaitForTheMinute();
    EXPECT_LE(CpuSeconds(Process) - Before, 0.05 * Blocks) << "a twentieth of a core";
    EXPECT_TRUE(HeardToTheEnd() == All);
}

TEST_F(OneMinuteTest, BackwardsNoSampleIsLostOrDoubled) {
    LoadMinute();
    Player->PlayReverse();
    WaitForTheMinute();
    EXPECT_TRUE(HeardToTheEnd() == Reversed(All));
}

TEST_F(PlayerSoundTest, ALoopPointLeavesNoSeam) {
    Begin();
    Load(Sound(Rate / 4));
    Player->Loop(true);
    Player->PlayForward();
    WaitHeard(Rate);
    Player->Loop(false);
    const Samples Got = HeardToTheEnd();
    ASSERT_EQ(Got.size() % All.size(), 0U);
    for (std::size_t i = 0; i < Got.size(); ++i)
        ASSERT_EQ(Got[i], All[i % All.size()]) << i;
}

TEST_F(PlayerSoundTest, ATurnSoonAfterTheStartEndsWithTheFirstSample) {
    Begin();
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 50);
    Player->UTurn();
    const Samples Got = HeardToTheEnd();
    ASSERT_EQ(Got.size() % 2, 1U);
    const std::size_t Turn = Got.size() / 2;
    EXPECT_LT(Turn, Rate / 4U) << "what the server already had is not heard";
    for (std::size_t i = 0; i < Got.size(); ++i)
        ASSERT_EQ(Got[i], All[i <= Turn ? i : 2 * Turn - i]) << i;
}

TEST_F(PlayerSoundTest, ATurnGoesBackOverTheSameSamplesWithoutASeam) {
    Begin();
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate);
    const auto Asked = Clock::now();
    Player->UTurn();
    EXPECT_EQ(Player->PlayStatus(), 2);
    WaitHeard(Rate + Rate / 2);
    Player->UTurn();
    WaitHeard(2 * Rate);
    Player->Stop();
    const Samples Got = Trimmed();
    // Forward to a sample, back from it, and forward again.
    std::vector<std::size_t> Turns;
    std::size_t Place = 0;
    int Way = 1;
    for (std::size_t i = 1; i < Got.size(); ++i) {
        const std::size_t Next = Place + static_cast<std::size_t>(Way);
        if (Next < All.size() && Got[i] == All[Next]) {
            Place = Next;
            continue;
        }
        const std::size_t Back = Place - static_cast<std::size_t>(Way);
        ASSERT_EQ(Got[i], All[Back]) << "at " << i << " after " << Place;
        Way = -Way;
        Place = Back;
        Turns.push_back(i);
    }
    ASSERT_EQ(Turns.size(), 2U);
    const auto Delay = Heard->TimeOf(Heard->FirstSound() + Turns[0]) - Asked;
    EXPECT_LT(Delay, milliseconds(250)) << "a turn is heard at once";
}

TEST_F(PlayerSoundTest, ASecondIsHeardWithinATenthOfASecond) {
    Begin();
    Load(Sound(Rate));
    const auto Asked = Clock::now();
    Player->PlayForward();
    WaitHeard(10);
    EXPECT_LT(Heard->TimeOf(Heard->FirstSound()) - Asked, milliseconds(100));
}

TEST_F(PlayerSoundTest, TwoGigabytesAreHeardJustAsSoon) {
    Begin();
    // A file full of holes, with sound where playing begins in either direction.
    constexpr std::int64_t Total = 1000000000;
    const std::string Name = WriteSamples(Folder, "long", Sound(Rate));
    std::filesystem::resize_file(Name, Total * 2);
    {
        std::fstream File(Name, std::ios::binary | std::ios::in | std::ios::out);
        File.seekp((Total - Rate) * 2);
        const Samples Tail = Sound(Rate, 2);
        File.write(reinterpret_cast<const char*>(Tail.data()), Rate * 2);
    }
    BlockWords List;
    List.Add(Name, static_cast<std::int32_t>(Total), 4, 1, 1, 1, 16);
    for (const bool Reverse : {false, true}) {
        const std::size_t Before = Heard->Count();
        const auto Asked = Clock::now();
        Player->Load(16, 1, Rate, static_cast<std::int32_t>(Total), List.Words, NoList);
        Reverse ? Player->PlayReverse() : Player->PlayForward();
        ASSERT_TRUE(WaitFor([&] { return Heard->FirstSound(Before) < Heard->Count(); }));
        EXPECT_LT(Heard->TimeOf(Heard->FirstSound(Before)) - Asked, milliseconds(100));
        Player->Stop();
        const std::size_t Now = Heard->Count();
        ASSERT_TRUE(WaitFor([&] { return Heard->Count() > Now + Rate / 4; }));
    }
}

/// How far the position that the player tells is from the sample that arrives then, in samples.
std::vector<double> PositionErrors(PlayerComponent& Player, Recorder& Heard, double Speed) {
    std::vector<double> Errors;
    const std::size_t First = Heard.FirstSound();
    for (int i = 0; i < 20; ++i) {
        const std::size_t Now = Heard.Count();
        if (!WaitFor([&] { return Heard.Count() > Now + Rate / 40; }))
            break;
        const double Position = Player.PlayPosition();
        Errors.push_back(Position - static_cast<double>(Heard.Count() - First) * Speed);
    }
    return Errors;
}

TEST_F(PlayerSoundTest, ThePositionIsWhatIsHeard) {
    Begin();
    Load(Sound(4 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 4);
    const std::vector<double> Errors = PositionErrors(*Player, *Heard, 1.0);
    ASSERT_EQ(Errors.size(), 20U);
    for (const double Error : Errors)
        EXPECT_LT(std::abs(Error) / Rate, 0.020);
}

TEST_F(PlayerSoundTest, AnotherSpeedKeepsThePlace) {
    Begin();
    Load(Sound(6 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 2);
    const std::int32_t Before = Player->PlayPosition();
    Player->TempoForward(0.5F);
    Player->PauseStart();
    Player->Pause();
    EXPECT_EQ(Player->PlayStatus(), 3);
    Player->Continue();
    const std::int32_t After = Player->PlayPosition();
    EXPECT_GE(After, Before);
    EXPECT_LT(After - Before, Rate / 20);
    // Half the speed: in half a second a quarter of a second goes by.
    const auto Asked = Clock::now();
    ASSERT_TRUE(WaitFor([&] { return Player->PlayPosition() > After + Rate / 4; }));
    const std::chrono::duration<double> Took = Clock::now() - Asked;
    EXPECT_GT(Took.count(), 0.4);
    EXPECT_LT(Took.count(), 0.75);
}

TEST_F(PlayerSoundTest, EverySpeedLastsAsLongAsItShould) {
    Begin();
    struct SpeedCase {
        float Speed;
        bool Reverse;
        double Seconds;
    };
    for (const SpeedCase& Case :
         {SpeedCase{0.1F, false, 0.2}, SpeedCase{0.5F, true, 0.8}, SpeedCase{1.0F, false, 0.5},
          SpeedCase{1.3F, true, 1.3}, SpeedCase{2.0F, false, 2.0}}) {
        Load(Sound(static_cast<std::size_t>(Case.Seconds * Rate)));
        Player->TempoForward(Case.Speed);
        Player->TempoReverse(Case.Speed);
        const std::size_t Before = Heard->Count();
        Case.Reverse ? Player->PlayReverse() : Player->PlayForward();
        ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
        const std::size_t Now = Heard->Count();
        ASSERT_TRUE(WaitFor([&] { return Heard->Count() > Now + Rate / 5; }));
        const std::size_t First = Heard->FirstSound(Before);
        Samples Got = Heard->Samples();
        while (Got.size() > First && Got.back() == 0)
            Got.pop_back();
        const double Expected = Case.Seconds / static_cast<double>(Case.Speed);
        EXPECT_NEAR(static_cast<double>(Got.size() - First) / Rate, Expected, 0.01 * Expected)
            << Case.Speed;
    }
}

TEST_F(PlayerSoundTest, PauseIsSilentAndContinueLosesNothing) {
    Begin();
    Load(Sound(2 * Rate));
    Player->PlayForward();
    WaitHeard(Rate / 2);
    Player->PauseStart();
    Player->Pause();
    const std::int32_t Kept = Player->PlayPosition();
    const std::size_t Now = Heard->Count();
    ASSERT_TRUE(WaitFor([&] { return Heard->Count() > Now + Rate / 2; }));
    EXPECT_EQ(Player->PlayPosition(), Kept);
    EXPECT_EQ(Player->PlayStatus(), 3);
    Player->Continue();
    Samples Got = HeardToTheEnd();
    Got.erase(std::remove(Got.begin(), Got.end(), std::int16_t{0}), Got.end());
    EXPECT_TRUE(Got == All) << Got.size() << " of " << All.size();
}

TEST_F(PlayerSoundTest, AtRestItUsesNoProcessorTime) {
    Begin();
    Load(Sound(Rate / 4));
    Player->PlayForward();
    HeardToTheEnd();
    const int Process = PlayerProcessId(*Player);
    const double Before = CpuSeconds(Process);
    const std::size_t Now = Heard->Count();
    // Three seconds by the server's own clock.
    ASSERT_TRUE(WaitFor([&] { return Heard->Count() > Now + 3 * Rate; }));
    EXPECT_LE(CpuSeconds(Process) - Before, 0.01);
}

/// The system's plain sound with a device that writes down what it is given.
class PlainSoundTest : public PlayerSoundTest {
  protected:
    void BeginPlain(const std::string& Device) {
        ::setenv("PULSE_SERVER", ("unix:" + (Folder / "no-server")).c_str(), 1);
        ::setenv("ALSA_CONFIG_PATH", Folder.Write("alsa.conf", Device).c_str(), 1);
        Player = Make();
    }
};

TEST_F(PlainSoundTest, WithoutAServerThePlainDevicePlaysEverySampleInBothDirections) {
    const std::string Out = Folder / "out.raw";
    BeginPlain("pcm.!default { type file slave.pcm { type null } file \"" + Out +
               "\" format raw }\n");
    ASSERT_EQ(Player->DriverState(1), 2);
    for (const bool Reverse : {false, true}) {
        Load(Sound(Rate));
        Reverse ? Player->PlayReverse() : Player->PlayForward();
        ASSERT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
        Player->Stop();
        const std::string Bytes = TempFolder::Read(Out);
        Samples Got(Bytes.size() / 2);
        std::memcpy(Got.data(), Bytes.data(), Got.size() * 2);
        while (!Got.empty() && Got.back() == 0)
            Got.pop_back();
        EXPECT_TRUE(Got == (Reverse ? Reversed(All) : All)) << Got.size() << " samples";
    }
}

TEST_F(PlainSoundTest, WithoutAnyDeviceThereIsNoDriver) {
    BeginPlain("\n");
    EXPECT_EQ(Player->DriverState(1), 0);
    Load(Sound(Rate));
    Player->PlayForward();
    EXPECT_EQ(Player->PlayStatus(), 0);
}

} // namespace
} // namespace quoril::test

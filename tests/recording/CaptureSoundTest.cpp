// The capture engines with a private sound server, sample for sample.
#include "CaptureRig.h"

#include <cstdlib>
#include <filesystem>
#include <thread>

namespace quoril::test {
namespace {

using std::chrono::seconds;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string SinkOf(const CaptureFormat& Format) {
    return std::string("format=") + (Format.RecBits == 8 ? "u8" : "s16le") +
           " rate=" + std::to_string(Format.RecFreq);
}

/// ALSA sees only what a test writes.
void WritePlainSound(const TempFolder& Folder, const std::string& Text) {
    ::setenv("ALSA_CONFIG_PATH", Folder.Write("asound.conf", Text).c_str(), 1);
}
constexpr const char* LeadsToTheServer = "pcm.!default { type pulse device \"nowhere.monitor\" }\n";

double SecondsSince(Clock::time_point Begin) {
    return std::chrono::duration<double>(Clock::now() - Begin).count();
}

// ---- Sample for sample

class SampleForSampleTest : public ::testing::TestWithParam<std::tuple<int, CaptureFormat>> {};

TEST_P(SampleForSampleTest, WhatIsPlayedStandsInTheDocument) {
    const auto& [Engine, Format] = GetParam();
    const SoundServer Server(Format.RecChannels, SinkOf(Format));
    const TempFolder Folder;
    WritePlainSound(Folder, LeadsToTheServer);
    CaptureRig Rig(Format);
    Rig.Driver.Dx7OrApiOpn = Engine == RecEngineDx7 ? OptionDx7 : OptionApi;
    ASSERT_TRUE(Rig.Driver.InitilizeDriver(false));
    ASSERT_EQ(Rig.Driver.RecEngine, Engine);
    Rig.ExpectWhole(Server, 3 * Format.RecFreq);
    EXPECT_THAT(Rig.Messages.Texts(), IsEmpty());
}

std::string NameOf(const ::testing::TestParamInfo<std::tuple<int, CaptureFormat>>& Each) {
    const auto& [Engine, Format] = Each.param;
    return std::string(Engine == RecEngineDx7 ? "Server" : "Plain") +
           std::to_string(Format.RecFreq) + (Format.RecChannels == 1 ? "Mono" : "Stereo") +
           std::to_string(Format.RecBits);
}

INSTANTIATE_TEST_SUITE_P(All, SampleForSampleTest,
                         ::testing::Values(std::tuple(1, CaptureFormat{1, 16, 44100}),
                                           std::tuple(1, CaptureFormat{2, 16, 44100}),
                                           std::tuple(1, CaptureFormat{2, 16, 22050}),
                                           std::tuple(1, CaptureFormat{1, 16, 11025}),
                                           std::tuple(2, CaptureFormat{1, 8, 11025}),
                                           std::tuple(2, CaptureFormat{2, 8, 44100}),
                                           std::tuple(2, CaptureFormat{1, 16, 22050}),
                                           std::tuple(2, CaptureFormat{2, 16, 48000}),
                                           std::tuple(2, CaptureFormat{2, 16, 192000}),
                                           std::tuple(2, CaptureFormat{1, 16, 8000})),
                         NameOf);

/// A window that is busy for three seconds.
void DoNothingFor(seconds Time) {
    const auto Until = Clock::now() + Time;
    while (Clock::now() < Until)
        (void)::poll(nullptr, 0, 50);
}

TEST(BusyWindowTest, ThreeSecondsWithoutAnyDeliveryLoseNothing) {
    for (const int Engine : {RecEngineDx7, RecEngineApi}) {
        const CaptureFormat Format{2, 16, 44100};
        const SoundServer Server(2);
        const TempFolder Folder;
        WritePlainSound(Folder, LeadsToTheServer);
        CaptureRig Rig(Format);
        Rig.Driver.Dx7OrApiOpn = Engine == RecEngineDx7 ? OptionDx7 : OptionApi;
        ASSERT_TRUE(Rig.Driver.InitilizeDriver(false));
        Rig.ExpectWhole(Server, 6 * 44100, [] { DoNothingFor(seconds(3)); });
    }
}

// ---- How soon

TEST(CaptureTimesTest, TheFirstBlockIsStoredSoonAfterStart) {
    for (const int Engine : {RecEngineDx7, RecEngineApi}) {
        const SoundServer Server(1);
        const TempFolder Folder;
        WritePlainSound(Folder, LeadsToTheServer);
        CaptureRig Rig({1, 16, 44100});
        Rig.Driver.Dx7OrApiOpn = Engine == RecEngineDx7 ? OptionDx7 : OptionApi;
        ASSERT_TRUE(Rig.Driver.InitilizeDriver(false));
        ASSERT_TRUE(Rig.Pump([&] { return Rig.Driver.RecEngine != 0; }));
        double Longest = 0;
        for (int Take = 0; Take < 10; ++Take) {
            // Anywhere between two blocks.
            Rig.Pump([] { return false; }, milliseconds(137 + 13 * Take));
            Rig.Machine.Start();
            const auto Begin = Clock::now();
            ASSERT_TRUE(Rig.PumpFrames(1));
            Longest = std::max(Longest, SecondsSince(Begin));
            Rig.Machine.Stop();
        }
        RecordProperty("LongestMs" + std::to_string(Engine), static_cast<int>(Longest * 1000));
        EXPECT_LT(Longest, 0.150) << "engine " << Engine;
    }
}

// ---- Devices

TEST(CaptureDevicesTest, TheServersOwnChoiceComesFirst) {
    const SoundServer Server(1);
    PulseCapture System;
    const auto Names = System.Devices();
    ASSERT_THAT(Names, SizeIs(2));
    EXPECT_THAT(Names[0], ::testing::StartsWith("Default device ("));
    EXPECT_THAT(Names[1], ::testing::HasSubstr("Monitor"));
    EXPECT_EQ(System.FormatBits(1), AllFormatBits);
}

TEST(CaptureDevicesTest, WithoutAServerAndDevicesTheUserIsToldSoon) {
    const TempFolder Folder;
    ::setenv("PULSE_SERVER", ("unix:" + (Folder / "nobody")).c_str(), 1);
    ::setenv("HOME", Folder.Path().c_str(), 1);
    WritePlainSound(Folder, "defaults.pcm.nothing 0\n");
    CaptureRig Rig({1, 16, 44100});
    const auto Begin = Clock::now();
    EXPECT_FALSE(Rig.Driver.InitilizeDriver(false));
    EXPECT_LT(SecondsSince(Begin), 2.0);
    EXPECT_THAT(Rig.Messages.Texts(), ElementsAre("No audio device found|Audio Device not found"));
    EXPECT_FALSE(Rig.Machine.Show().StartEnabled);
}

TEST(CaptureDevicesTest, DevicesThatTheUserHasDefinedAreListedByTheirWords) {
    const TempFolder Folder;
    WritePlainSound(Folder,
                    "pcm.!default { type null }\n"
                    "pcm.null { type null hint { show on description \"Nothing\" } }\n"
                    "pcm.studio { type null hint { show on description \"Studio Input\" } }\n"
                    "pcm.broken { type hw card 77 hint { show on description \"Broken\" } }\n");
    AlsaCapture System;
    EXPECT_THAT(System.Devices(), ElementsAre("Default device", "Studio Input"));
    EXPECT_EQ(System.FormatBits(1), AllFormatBits);
    EXPECT_EQ(System.FormatBits(7), 0U);
}

TEST(CaptureDevicesTest, AFormatThatTheDeviceRefusesIsTold) {
    const TempFolder Folder;
    // It speaks nothing but mu-law.
    WritePlainSound(Folder, "pcm.!default { type mulaw\n"
                            "  slave { pcm { type null } format S16_LE } }\n");
    CaptureRig Rig({1, 16, 44100});
    Rig.Driver.Dx7OrApiOpn = OptionApi;
    EXPECT_FALSE(Rig.Driver.InitilizeDriver(true));
    EXPECT_THAT(Rig.Messages.Texts(),
                ElementsAre("(Open audio device for recording - failed)\n"
                            "Attempted to open with an unsupported waveform-audio format."));
    EXPECT_EQ(Rig.Driver.FmtSup_Lbl, "Format not supported");
    EXPECT_EQ(Rig.Machine.Show().Rec_Stat_Lbl, "Unable to open audio device.");
}

TEST(CaptureDevicesTest, ADeviceOfAFileIsTakenInFasterThanTime) {
    const TempFolder Folder;
    const CaptureFormat Format{2, 16, 44100};
    const std::vector<std::byte> Known = KnownSound(std::size_t{44100} * 4, 16);
    const std::string File =
        Folder.Write("in.raw", {reinterpret_cast<const char*>(Known.data()), Known.size()});
    WritePlainSound(Folder, "pcm.!default { type file slave.pcm { type null } file \"/dev/null\"\n"
                            "  format \"raw\" infile \"" +
                                File + "\" }\n");
    CaptureRig Rig(Format);
    Rig.Driver.Dx7OrApiOpn = OptionApi;
    ASSERT_TRUE(Rig.Driver.InitilizeDriver(true));
    Rig.Machine.Start();
    ASSERT_TRUE(Rig.PumpFrames(20 * 44100));
    Rig.Machine.Stop();
    EXPECT_EQ(Rig.Machine.RecordedFrames() % Format.HalfFrames(), 0);
}

// ---- A server that hangs

int ThreadsOfThisProcess() {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                                          std::filesystem::directory_iterator()));
}

/// What a test waits for, which must be sooner than a user loses patience.
template <class Act>
void ExpectSoon(const char* What, const Act& Do) {
    const auto Begin = Clock::now();
    Do();
    EXPECT_LT(SecondsSince(Begin), 2.0) << What;
}

class HungServerTest : public ::testing::TestWithParam<int> {
  protected:
    HungServerTest() {
        WritePlainSound(Folder, LeadsToTheServer);
        Rig.Driver.Dx7OrApiOpn = GetParam() == RecEngineDx7 ? OptionDx7 : OptionApi;
        Rig.Driver.DxAvailable = true;
    }
    /// Whoever was left with the server comes back and ends.
    ~HungServerTest() override {
        Server.GoOn();
        Rig.Driver.Close();
        EXPECT_TRUE(Rig.Pump([] { return ThreadsOfThisProcess() == 1; }));
    }
    void Record(std::int32_t Frames) {
        ASSERT_TRUE(Rig.Driver.InitilizeDriver(true));
        Rig.Machine.Start();
        ASSERT_TRUE(Rig.PumpFrames(Frames));
    }
    SoundServer Server{1};
    TempFolder Folder;
    CaptureRig Rig{{1, 16, 44100}};
};

TEST_P(HungServerTest, OpeningGivesUpSoonAndSaysSo) {
    Server.Hang();
    ExpectSoon("opening", [&] { EXPECT_FALSE(Rig.Driver.InitilizeDriver(true)); });
    EXPECT_THAT(Rig.Messages.TakeTexts(),
                ElementsAre("No audio device found|Audio Device not found"));
    EXPECT_FALSE(Rig.Machine.Show().StartEnabled);
    Server.GoOn();
    EXPECT_TRUE(Rig.Driver.InitilizeDriver(true)) << "the next try finds it";
}

TEST_P(HungServerTest, TheFirstOpeningTriesBothAndGivesUpSoon) {
    Server.Hang();
    ExpectSoon("opening", [&] { EXPECT_FALSE(Rig.Driver.InitilizeDriver(false)); });
    EXPECT_THAT(Rig.Messages.Texts(), SizeIs(1));
}

TEST_P(HungServerTest, ADeviceThatHangsBetweenItsListAndItsOpeningIsGivenUp) {
    ASSERT_TRUE(Rig.Driver.InitilizeDriver(true));
    CaptureSystem& System = GetParam() == RecEngineDx7 ? static_cast<CaptureSystem&>(Rig.Dx7)
                                                       : static_cast<CaptureSystem&>(Rig.Api);
    Rig.Driver.Close();
    Server.Hang();
    const CaptureLine Line{std::make_shared<CaptureQueue>(), std::make_shared<CaptureNotice>()};
    Line.Queue->SetUp(Rig.Format.HalfBytes());
    ExpectSoon("opening", [&] {
        try {
            (void)System.Open(0, Rig.Format, Line);
            ADD_FAILURE() << "it was opened";
        } catch (const CaptureFailure& What) {
            EXPECT_EQ(What.Code, CaptureNoDriver);
        }
    });
}

TEST_P(HungServerTest, StoppingAndClosingAreSoonAndTheTakeIsKept) {
    Record(22050);
    Server.Hang();
    EXPECT_FALSE(Rig.PumpFrames(44100, milliseconds(300)));
    ExpectSoon("pause", [&] { Rig.Machine.Pause(); });
    ExpectSoon("stop", [&] {
        Rig.Driver.Deliver();
        Rig.Machine.Stop();
    });
    const std::int32_t Frames = Rig.Machine.RecordedFrames();
    EXPECT_GE(Frames, 22050);
    ExpectSoon("done", [&] { Rig.Take.InsertInto(1, 1); });
    EXPECT_EQ(WaveStore->WavWaveINos, Frames);
    ExpectSoon("close", [&] { Rig.Driver.Close(); });
}

TEST_P(HungServerTest, AfterItGoesOnTheTakeGoesOn) {
    Record(4410);
    Server.Hang();
    EXPECT_FALSE(Rig.PumpFrames(44100, milliseconds(300)));
    Server.GoOn();
    EXPECT_TRUE(Rig.PumpFrames(44100));
}

INSTANTIATE_TEST_SUITE_P(Both, HungServerTest, ::testing::Values(RecEngineDx7, RecEngineApi),
                         [](const ::testing::TestParamInfo<int>& Each) {
                             return Each.param == RecEngineDx7 ? "Server" : "Plain";
                         });

TEST(CaptureDevicesTest, OneThatDoesNotAnswerDoesNotHideTheOthers) {
    const SoundServer Server(1);
    const TempFolder Folder;
    WritePlainSound(Folder,
                    std::string(LeadsToTheServer) +
                        "pcm.studio { type null hint { show on description \"Studio\" } }\n");
    AlsaCapture System;
    EXPECT_THAT(System.Devices(), ElementsAre("Default device", "Studio"));
    Server.Hang();
    EXPECT_THAT(System.Devices(), ElementsAre("Studio"));
    EXPECT_EQ(System.FormatBits(0), AllFormatBits);
    Server.GoOn();
    const auto Until = Clock::now() + seconds(10);
    while (ThreadsOfThisProcess() > 1 && Clock::now() < Until)
        std::this_thread::yield();
    EXPECT_EQ(ThreadsOfThisProcess(), 1);
}

// ---- Faults

class CaptureFaultsTest : public ::testing::TestWithParam<int> {
  protected:
    void Begin() {
        WritePlainSound(Folder, LeadsToTheServer);
        Rig.Driver.Dx7OrApiOpn = GetParam() == RecEngineDx7 ? OptionDx7 : OptionApi;
        ASSERT_TRUE(Rig.Driver.InitilizeDriver(false));
        Rig.Machine.Start();
        ASSERT_TRUE(Rig.PumpFrames(22050));
    }
    void ExpectTakeKept() {
        const auto Begin = Clock::now();
        EXPECT_TRUE(
            Rig.Pump([&] { return Rig.Machine.RecState() == RecClosed; }, milliseconds(5000)));
        EXPECT_LT(SecondsSince(Begin), 2.0);
        EXPECT_EQ(Rig.Machine.Show().Rec_Stat_Lbl, "The recording device is gone");
        EXPECT_TRUE(Rig.Machine.Show().DoneEnabled);
        EXPECT_GE(Rig.Machine.RecordedFrames(), 22050);
        Rig.Take.InsertInto(1, 1);
        EXPECT_EQ(WaveStore->WavWaveINos, Rig.Machine.RecordedFrames());
    }
    SoundServer Server{1};
    TempFolder Folder;
    CaptureRig Rig{{1, 16, 44100}};
};

TEST_P(CaptureFaultsTest, AServerThatEndsLeavesTheTake) {
    Begin();
    Server.Kill();
    ExpectTakeKept();
}

TEST_P(CaptureFaultsTest, ADeviceThatGoesLeavesTheTake) {
    Begin();
    Server.TakeDeviceAway();
    ExpectTakeKept();
}

TEST_P(CaptureFaultsTest, ClosingIsQuickAndNothingComesAfterwards) {
    Begin();
    const auto Begin = Clock::now();
    Rig.Driver.Close();
    EXPECT_LT(SecondsSince(Begin), 0.5);
    const std::int32_t Frames = Rig.Machine.RecordedFrames();
    EXPECT_FALSE(Rig.PumpFrames(1, milliseconds(300)));
    EXPECT_EQ(Rig.Machine.RecordedFrames(), Frames);
}

TEST_P(CaptureFaultsTest, AfterALossTheDeviceCanBeOpenedAgain) {
    Begin();
    Server.Kill();
    ASSERT_TRUE(Rig.Pump([&] { return Rig.Machine.RecState() == RecClosed; }));
    Server.Restart();
    EXPECT_TRUE(Rig.Driver.InitilizeDriver(true));
    Rig.Machine.Start();
    EXPECT_TRUE(Rig.PumpFrames(4410));
}

INSTANTIATE_TEST_SUITE_P(Both, CaptureFaultsTest, ::testing::Values(RecEngineDx7, RecEngineApi),
                         [](const ::testing::TestParamInfo<int>& Each) {
                             return Each.param == RecEngineDx7 ? "Server" : "Plain";
                         });

} // namespace
} // namespace quoril::test

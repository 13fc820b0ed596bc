#include "recording/RecordDriver.h"

#include "ScriptedCapture.h"
#include "ScriptedTake.h"
#include "support/ScriptedMessages.h"

#include <gmock/gmock.h>
#include <poll.h>

namespace quoril::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* NotSupported = "Format not supported for recording\n"
                                     "You may try changing the device\n"
                                     "Or change the format before recording";

class RecordDriverTest : public ::testing::Test {
  protected:
    void Format(std::int32_t Channels, std::int32_t Bits, std::int32_t Freq) {
        Machine.SetUp({Channels, Bits, Freq}, 1000000000);
        Driver.SetFormat({Channels, Bits, Freq});
    }
    void SetUp() override { Format(1, 16, 44100); }
    [[nodiscard]] std::string Stat() const { return Machine.Show().Rec_Stat_Lbl; }
    [[nodiscard]] bool StartEnabled() const { return Machine.Show().StartEnabled; }

    ScriptedMessages Messages;
    ScriptedCapture Dx7;
    ScriptedCapture Api;
    bool Dx7IsThere = true;
    int Asked = 0;
    ScriptedTake Take;
    RecordMachine Machine{Take};
    RecordDriver Driver{Machine, {Dx7, Api, [this] {
                                      ++Asked;
                                      return Dx7IsThere;
                                  }}};
};

TEST_F(RecordDriverTest, TheSoundServerComesFirst) {
    EXPECT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_TRUE(Driver.DxAvailable);
    EXPECT_EQ(Driver.RecEngine, RecEngineDx7);
    EXPECT_EQ(Driver.Dx7OrApiOpn, OptionDx7);
    EXPECT_EQ(Dx7.Opened, (CaptureFormat{1, 16, 44100}));
    EXPECT_EQ(Stat(), "Ready to record");
    EXPECT_TRUE(StartEnabled());
    EXPECT_EQ(Driver.FmtSup_Lbl, "Format supported");
    EXPECT_TRUE(Driver.FormatSupported);
    EXPECT_THAT(Driver.DevicesShown, ElementsAre("first", "second"));
    EXPECT_EQ(Driver.DeviceIndex, 0);
    EXPECT_THAT(Messages.Texts(), IsEmpty());
}

TEST_F(RecordDriverTest, WithoutASoundServerThePlainSoundIsTaken) {
    Dx7IsThere = false;
    EXPECT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_FALSE(Driver.DxAvailable);
    EXPECT_EQ(Driver.RecEngine, RecEngineApi);
    EXPECT_EQ(Driver.Dx7OrApiOpn, OptionApi);
    EXPECT_TRUE(StartEnabled());
}

TEST_F(RecordDriverTest, AWishForAMissingSoundServerIsTold) {
    Dx7IsThere = false;
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Driver.ChangeEngine(OptionDx7);
    EXPECT_FALSE(Driver.InitilizeDriver(true));
    EXPECT_EQ(Stat(), "Need DirectX7 to use this drive");
    EXPECT_FALSE(StartEnabled());
    EXPECT_EQ(Driver.RecEngine, RecEngineNone);
    EXPECT_EQ(Asked, 1) << "asked only at the first opening";
}

TEST_F(RecordDriverTest, EightThousandHertzAreRefusedByOneEngineAndTriedByTheOther) {
    Format(1, 16, 8000);
    EXPECT_FALSE(Driver.InitilizeDriver(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NotSupported));
    EXPECT_EQ(Driver.FmtSup_Lbl, "Format not supported");
    EXPECT_EQ(Stat(), "Format not supported");
    EXPECT_FALSE(Driver.FormatSupported);
    EXPECT_FALSE(StartEnabled());
    EXPECT_THAT(Dx7.Log, IsEmpty());
    Driver.ChangeEngine(OptionApi);
    EXPECT_TRUE(Driver.InitilizeDriver(true));
    EXPECT_THAT(Messages.TakeTexts(), IsEmpty());
    EXPECT_EQ(Driver.FmtSup_Lbl, "Format not supported");
    EXPECT_TRUE(StartEnabled());
    EXPECT_EQ(Api.Opened.RecFreq, 8000);
}

TEST_F(RecordDriverTest, EightBitsAreRefusedByTheSoundServerOnEveryDevice) {
    for (const std::int32_t Freq : {11025, 22050, 44100}) {
        Format(2, 8, Freq);
        for (const std::int32_t Device : {0, 1}) {
            Driver.ChangeDevice(Device);
            EXPECT_FALSE(Driver.InitilizeDriver(false));
            EXPECT_EQ(Driver.FmtSup_Lbl, "Format not supported");
            EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NotSupported));
        }
    }
    Driver.ChangeEngine(OptionApi);
    EXPECT_TRUE(Driver.InitilizeDriver(true));
    EXPECT_EQ(Driver.FmtSup_Lbl, "Format supported");
}

TEST_F(RecordDriverTest, AFormatThatTheDeviceDoesNotTakeIsRefusedByTheServerAlone) {
    Dx7.Bits = Api.Bits = 64; // 22050 mono 16 bits
    EXPECT_FALSE(Driver.InitilizeDriver(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre(NotSupported));
    Driver.ChangeEngine(OptionApi);
    EXPECT_TRUE(Driver.InitilizeDriver(true));
    EXPECT_EQ(Driver.FmtSup_Lbl, "Format not supported");
}

TEST_F(RecordDriverTest, NoDeviceIsToldUnderItsTitle) {
    Dx7.Names.clear();
    EXPECT_FALSE(Driver.InitilizeDriver(false));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No audio device found|Audio Device not found"));
    EXPECT_FALSE(StartEnabled());
    EXPECT_THAT(Driver.DevicesShown, IsEmpty());
    Api.Names.clear();
    Driver.ChangeEngine(OptionApi);
    EXPECT_FALSE(Driver.InitilizeDriver(true));
    EXPECT_THAT(Messages.TakeTexts(), ElementsAre("No audio device found|Audio Device not found"));
}

TEST_F(RecordDriverTest, ErrorsAtOpeningHaveTheirWords) {
    struct Row {
        std::int32_t Code;
        const char* Text;
        const char* Status;
    };
    Driver.Dx7OrApiOpn = OptionApi;
    for (const Row& Each :
         {Row{2, "Specified device identifier is out of range.", "Failed to open device"},
          Row{4, "Device already in use.", "Device already in use"},
          Row{5, "Specified device handle is invalid.", "Failed to open device"},
          Row{6, "No device driver is present.", "No device driver is present"},
          Row{7, "Unable to allocate or lock memory.", "Unable to open audio device."},
          Row{11, "Invalid parameter passed", "Unable to open audio device."},
          Row{32, "Attempted to open with an unsupported waveform-audio format.",
              "Unable to open audio device."}}) {
        Api.FailCode = Each.Code;
        Api.FailPreparing = false;
        EXPECT_FALSE(Driver.InitilizeDriver(false));
        EXPECT_EQ(Stat(), Each.Status);
        Api.FailPreparing = true;
        EXPECT_FALSE(Driver.InitilizeDriver(false));
        EXPECT_THAT(
            Messages.TakeTexts(),
            ElementsAre(std::string("(Open audio device for recording - failed)\n") + Each.Text,
                        std::string("(Prepare recording buffer - Failed)\n") + Each.Text));
        EXPECT_FALSE(StartEnabled());
        EXPECT_EQ(Driver.RecEngine, RecEngineNone);
    }
    Api.FailCode = 0;
    EXPECT_TRUE(Driver.InitilizeDriver(true)) << "the window stays, another try is made";
}

TEST_F(RecordDriverTest, ADeviceIsChosenFromTheList) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Driver.ChangeDevice(1);
    EXPECT_EQ(Stat(), "Please wait..");
    EXPECT_FALSE(StartEnabled());
    EXPECT_EQ(Dx7.OpenNow, 0);
    EXPECT_TRUE(Driver.InitilizeDriver(true));
    EXPECT_THAT(Dx7.Log, ElementsAre("open 0", "close", "open 1"));
    EXPECT_EQ(Driver.Dx7Div, 2);
    EXPECT_EQ(Driver.ApiDiv, 0) << "each engine has its own";
    EXPECT_EQ(Driver.DeviceIndex, 1);
}

TEST_F(RecordDriverTest, TheStatusTellsWhatTheWindowIsAt) {
    std::vector<std::string> Seen;
    Dx7.Watch = Api.Watch = [&] { Seen.push_back(Stat()); };
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Seen.clear();
    Driver.ChangeEngine(OptionApi);
    EXPECT_THAT(Seen, ElementsAre("Please wait"));
    EXPECT_EQ(Stat(), "Please wait..");
    Seen.clear();
    ASSERT_TRUE(Driver.InitilizeDriver(true));
    EXPECT_THAT(Seen, ElementsAre("Recording")) << "while its buffers are prepared";
    EXPECT_EQ(Stat(), "Ready to record");
    Driver.Close(); // while there is somebody who watches
}

TEST_F(RecordDriverTest, NothingIsLeftOfADeviceThatWasOpenBefore) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Api.Names.clear();
    Driver.ChangeEngine(OptionApi);
    EXPECT_FALSE(Driver.InitilizeDriver(true));
    EXPECT_EQ(Driver.FmtSup_Lbl, "");
    EXPECT_EQ(Driver.DeviceIndex, -1);
    EXPECT_THAT(Driver.DevicesShown, IsEmpty());
    EXPECT_EQ(Driver.SupportedFormatsText(), "Supported formats:\n[Failed to show]");
    EXPECT_EQ(Stat(), "Audio Device not found");
}

TEST_F(RecordDriverTest, ADeviceThatIsNoMoreGivesWayToTheFirst) {
    Driver.Dx7Div = 7;
    EXPECT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_EQ(Driver.DeviceIndex, 0);
    Driver.Dx7Div = -3;
    EXPECT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_EQ(Driver.DeviceIndex, 0);
}

TEST_F(RecordDriverTest, AnEmptyNameIsShownAsDashes) {
    Dx7.Names = {"", "second"};
    EXPECT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_THAT(Driver.DevicesShown, ElementsAre("---", "second"));
}

TEST_F(RecordDriverTest, TheFormatsOfTheDeviceAreListed) {
    EXPECT_EQ(Driver.SupportedFormatsText(), "Supported formats:\n[Failed to show]");
    Dx7.Bits = 0xF00;
    (void)Driver.InitilizeDriver(false);
    EXPECT_EQ(Driver.SupportedFormatsText(),
              "Supported formats:\n44.1 kHz, mono, 16-bit\n44.1 kHz, stereo, 16-bit");
    Api.Bits = 0x300;
    Driver.ChangeEngine(OptionApi);
    (void)Driver.InitilizeDriver(true);
    EXPECT_EQ(Driver.SupportedFormatsText(),
              "Supported formats:\n44.1 kHz, mono, 8-bit\n44.1 kHz, stereo, 8-bit");
}

// ---- Blocks

TEST_F(RecordDriverTest, BlocksArriveAlsoBeforeStart) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Dx7.Deliver(1, 0x11);
    Driver.Deliver();
    EXPECT_EQ(Machine.Show().PeakL, 0x1111);
    EXPECT_THAT(Take.L, IsEmpty());
}

TEST_F(RecordDriverTest, ABusyWindowLosesNothing) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Machine.Start();
    for (int Half = 1; Half <= 50; ++Half) // five seconds
        Dx7.Deliver(1, Half);
    Driver.Deliver();
    ASSERT_EQ(Take.L.size(), 50U * 4410U);
    for (std::size_t Half = 0; Half < 50; ++Half)
        EXPECT_EQ(Take.L[Half * 4410], static_cast<std::int16_t>((Half + 1) * 0x101)) << Half;
    EXPECT_EQ(Machine.Show().LossLbl, "");
    EXPECT_EQ(Dx7.RoomMadeCount, 1);
}

TEST_F(RecordDriverTest, AShorterBlockIsTakenAsItIs) {
    Driver.Dx7OrApiOpn = OptionApi;
    ASSERT_TRUE(Driver.InitilizeDriver(true));
    Machine.Start();
    const std::vector<std::byte> Some(200);
    Api.Queue->Fill(Some.data(), Some.size());
    Api.Queue->HandOver();
    Driver.Deliver();
    EXPECT_EQ(Machine.RecordedFrames(), 100);
}

TEST_F(RecordDriverTest, ALossIsTold) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Machine.Start();
    Dx7.Deliver(3);
    Driver.Deliver();
    Dx7.Queue->NoteLoss();
    Dx7.Deliver(1);
    Driver.Deliver();
    EXPECT_EQ(Machine.Show().LossLbl, "Sound was lost at 00.30");
}

TEST_F(RecordDriverTest, ALossIsToldAtItsPlaceAlsoWhenTheWindowWasBusy) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Machine.Start();
    Dx7.Deliver(20);
    Dx7.Queue->NoteLoss();
    Dx7.Deliver(10);
    Driver.Deliver();
    EXPECT_EQ(Machine.Show().LossLbl, "Sound was lost at 02");
}

TEST_F(RecordDriverTest, ADeviceThatGoesLeavesWhatItHadDelivered) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Machine.Start();
    Dx7.Deliver(7);
    Dx7.LostNow = true;
    Driver.Deliver();
    EXPECT_EQ(Machine.RecState(), RecClosed);
    EXPECT_EQ(Machine.RecordedFrames(), 7 * 4410);
    EXPECT_EQ(Stat(), "The recording device is gone");
    EXPECT_EQ(Dx7.OpenNow, 0);
    EXPECT_TRUE(Machine.Show().DoneEnabled);
    Driver.ChangeDevice(0);
    EXPECT_TRUE(Driver.InitilizeDriver(true)) << "it can be opened again";
    EXPECT_EQ(Machine.RecordedFrames(), 7 * 4410) << "and the take is still there";
    EXPECT_TRUE(Machine.Show().DoneEnabled);
}

TEST_F(RecordDriverTest, AfterClosingNothingIsDelivered) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    Machine.Start();
    Dx7.Deliver(2);
    Driver.Close();
    Driver.Deliver();
    EXPECT_EQ(Machine.RecordedFrames(), 0);
    EXPECT_EQ(Machine.RecState(), RecClosed);
}

TEST_F(RecordDriverTest, TheNoticeIsReadableUntilBlocksAreTaken) {
    const auto Readable = [this] {
        pollfd Waited{Driver.NoticeHandle(), POLLIN, 0};
        return ::poll(&Waited, 1, 0) == 1;
    };
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    EXPECT_FALSE(Readable());
    Dx7.Deliver(2);
    EXPECT_TRUE(Readable());
    EXPECT_TRUE(Driver.Deliver());
    EXPECT_FALSE(Readable());
    EXPECT_FALSE(Driver.Deliver()) << "nothing has come";
    // A device that is left to itself may tell of sound after its end.
    Dx7.Deliver(1);
    Driver.Close();
    EXPECT_FALSE(Driver.Deliver());
    EXPECT_FALSE(Readable());
}

TEST_F(RecordDriverTest, WhatComesFromAnEarlierOpeningIsForgotten) {
    ASSERT_TRUE(Driver.InitilizeDriver(false));
    const auto Earlier = Dx7.Queue;
    Driver.ChangeDevice(1);
    ASSERT_TRUE(Driver.InitilizeDriver(true));
    Machine.Start();
    const std::vector<std::byte> Half(Earlier->Room(), std::byte{1});
    EXPECT_TRUE(Earlier->Fill(Half.data(), Half.size()));
    EXPECT_FALSE(Driver.Deliver());
    EXPECT_EQ(Machine.RecordedFrames(), 0);
    EXPECT_EQ(Dx7.Queue->Room(), Half.size());
}

} // namespace
} // namespace quoril::test

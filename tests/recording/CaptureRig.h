// A whole recording without a window: the real engines, the state machine, the work files and the
// document, with a private sound server whose sink is heard.
#pragma once

#include "platform/DirectXSetup.h"
#include "player/SoundServer.h"
#include "recording/AlsaCapture.h"
#include "recording/PulseCapture.h"
#include "recording/RecordDriver.h"
#include "recording/RecordTake.h"
#include "storage/FileMemoClass.h"
#include "storage/UndoOffScope.h"
#include "support/ScriptedMessages.h"
#include "support/TestSession.h"

#include <functional>
#include <gmock/gmock.h>
#include <poll.h>

namespace quoril::test {

using std::chrono::milliseconds;

/// A byte stream in which every place can be told from every other one, and none is silent.
inline std::vector<std::byte> KnownSound(std::size_t Bytes, std::int32_t Bits) {
    std::vector<std::byte> Result(Bytes);
    for (std::size_t At = 0; At < Bytes; ++At) {
        std::uint64_t Mixed = (At + 1) * 0x9E3779B97F4A7C15U;
        Mixed ^= Mixed >> 29U;
        Mixed *= 0xBF58476D1CE4E5B9U;
        auto Value = static_cast<std::uint8_t>(Mixed >> 40U);
        if (Bits == 8 && Value == 128)
            Value = 129;
        if (Bits == 16 && At % 2 == 0)
            Value |= 1U;
        Result[At] = static_cast<std::byte>(Value);
    }
    return Result;
}

class CaptureRig {
  public:
    explicit CaptureRig(const CaptureFormat& Wanted)
        : Format(Wanted), Driver(Machine, {Dx7, Api, [] {
                                               const auto Found = DirectXSetupGetVersion();
                                               return Found && Found->Known;
                                           }}) {
        WaveStore = std::make_unique<FileMemoClass>();
        WaveStore->WavFmtChannel = Format.RecChannels;
        WaveStore->WavFmtBits = Format.RecBits;
        WaveStore->WavFmtFreq = Format.RecFreq;
        Machine.SetUp(Format, 2000000000);
        Driver.SetFormat(Format);
    }
    ~CaptureRig() {
        Driver.Close();
        Take.Drop();
        WaveStore.reset();
    }
    CaptureRig(const CaptureRig&) = delete;
    CaptureRig& operator=(const CaptureRig&) = delete;

    /// Delivers what comes until something holds. False when it does not in time.
    bool Pump(const std::function<bool()>& Holds, milliseconds Most = milliseconds(10000)) {
        const auto Until = Clock::now() + Most;
        while (!Holds()) {
            if (Clock::now() > Until)
                return false;
            pollfd Waited{Driver.NoticeHandle(), POLLIN, 0};
            if (::poll(&Waited, 1, 10) == 1)
                Driver.Deliver();
        }
        return true;
    }
    bool PumpFrames(std::int32_t More, milliseconds Most = milliseconds(10000)) {
        const std::int32_t Wanted = Machine.RecordedFrames() + More;
        return Pump([&] { return Machine.RecordedFrames() >= Wanted; }, Most);
    }
    /// Starts a player of a sound file of raw frames to the server's sink.
    std::unique_ptr<TestChild> Play(const SoundServer& Server, const std::string& File) const {
        return std::make_unique<TestChild>(std::vector<std::string>{
            "pacat", "--playback", "--raw", "--server=unix:" + Server.Socket(), "--device=nowhere",
            Format.RecBits == 8 ? "--format=u8" : "--format=s16le",
            "--rate=" + std::to_string(Format.RecFreq),
            "--channels=" + std::to_string(Format.RecChannels), "--latency-msec=2000", File});
    }
    /// Takes `Known` in, played to the sink, and expects it in the document: whole, once, in order.
    /// `Meanwhile` happens at a fifth of it.
    void ExpectWhole(
        const SoundServer& Server, std::int32_t Frames,
        const std::function<void()>& Meanwhile = [] {}) {
        const TempFolder Folder;
        const std::vector<std::byte> Known =
            KnownSound(static_cast<std::size_t>(Frames) * Format.BlockAlign(), Format.RecBits);
        const std::string File =
            Folder.Write("known.raw", {reinterpret_cast<const char*>(Known.data()), Known.size()});
        Machine.Start();
        ASSERT_EQ(Machine.RecState(), RecRecording);
        ASSERT_TRUE(PumpFrames(1)) << "no sound comes";
        const auto Player = Play(Server, File);
        ASSERT_TRUE(PumpFrames(Frames / 5, milliseconds(60000)));
        Meanwhile();
        ASSERT_TRUE(PumpFrames(Frames + 2 * Format.RecFreq, milliseconds(120000)));
        Machine.Stop();
        EXPECT_EQ(Machine.Show().LossLbl, "");
        EXPECT_EQ(Machine.TakeTrouble(), "");
        ExpectInDocument(Known);
    }
    void ExpectInDocument(const std::vector<std::byte>& Known) {
        Take.InsertInto(1, Format.RecChannels == 2 ? 0 : 1);
        ASSERT_EQ(WaveStore->WavWaveINos, Machine.RecordedFrames());
        SampleArray L;
        SampleArray R;
        WaveStore->WaveCollectBuff(1, WaveStore->WavWaveINos, 0, L, R);
        std::vector<std::int16_t> KnownL;
        std::vector<std::int16_t> KnownR;
        SplitFrames(Known, Known.size(), Format, KnownL, KnownR);
        ExpectOnce(L, KnownL);
        if (Format.RecChannels == 2)
            ExpectOnce(R, KnownR);
    }

    const TestSession Session;
    ScriptedMessages Messages;
    CaptureFormat Format;
    PulseCapture Dx7;
    AlsaCapture Api;
    RecordTake Take;
    RecordMachine Machine{Take};
    RecordDriver Driver;

  private:
    /// Silence, then the known samples, then silence.
    static void ExpectOnce(const SampleArray& Heard, const std::vector<std::int16_t>& Known) {
        const auto Begin =
            std::find_if(Heard.begin(), Heard.end(), [](std::int16_t Each) { return Each != 0; });
        const auto Differs = std::mismatch(Known.begin() + 1, Known.end(), Begin, Heard.end());
        EXPECT_EQ(Differs.first - Known.begin(), Known.end() - Known.begin())
            << "the first one that differs";
        EXPECT_TRUE(std::all_of(Differs.second, Heard.end(), [](std::int16_t Each) {
            return Each == 0;
        })) << "something comes after it";
    }
};

} // namespace quoril::test

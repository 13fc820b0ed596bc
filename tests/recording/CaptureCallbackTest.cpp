// The capture thread only copies: no memory, no lock, no file.
#include "CaptureRig.h"
#include "player/CallbackWatch.h"

#include <cstdlib>

namespace quoril::test {
namespace {

constexpr const char* CaptureThread = "capture";

/// Records a second under the watch.
void RecordUnderWatch(CaptureRig& Rig) {
    ASSERT_TRUE(Rig.Driver.InitilizeDriver(true));
    Rig.Machine.Start();
    ASSERT_TRUE(Rig.PumpFrames(4410));
    const CallbackWatch Watch(CaptureThread);
    ASSERT_TRUE(Rig.PumpFrames(44100));
    EXPECT_EQ(CallbackWatch::Allocations(), 0);
    EXPECT_EQ(CallbackWatch::Frees(), 0);
    EXPECT_EQ(CallbackWatch::Locks(), 0);
    EXPECT_EQ(CallbackWatch::Opens(), 0);
    EXPECT_GT(CallbackWatch::OfLibraries(), 0) << "it was this thread that captured";
}

TEST(CaptureCallbackTest, WithTheSoundServerItOnlyCopies) {
    const SoundServer Server(1);
    CaptureRig Rig({1, 16, 44100});
    Rig.Driver.DxAvailable = true;
    RecordUnderWatch(Rig);
}

TEST(CaptureCallbackTest, WithPlainSoundItOnlyCopies) {
    const SoundServer Server(1);
    const TempFolder Folder;
    ::setenv(
        "ALSA_CONFIG_PATH",
        Folder.Write("a.conf", "pcm.!default { type pulse device \"nowhere.monitor\" }\n").c_str(),
        1);
    CaptureRig Rig({1, 16, 44100});
    Rig.Driver.Dx7OrApiOpn = OptionApi;
    RecordUnderWatch(Rig);
}

} // namespace
} // namespace quoril::test

// The sound callback only copies: no memory, no lock, no file.
#include "BlockWords.h"
#include "CallbackWatch.h"
#include "SoundServer.h"
#include "player/AlsaOutput.h"
#include "player/PlayEngine.h"
#include "player/PulseOutput.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

namespace quoril::test {
namespace {

// What the sound server's library calls its thread, and the player the one of the plain sound.
constexpr const char* ServerThread = "threaded-ml";
constexpr const char* PlainThread = "sound";
constexpr std::int32_t Rate = 44100;

void ExpectNothing() {
    EXPECT_EQ(CallbackWatch::Allocations(), 0);
    EXPECT_EQ(CallbackWatch::Frees(), 0);
    EXPECT_EQ(CallbackWatch::Locks(), 0);
    EXPECT_EQ(CallbackWatch::Opens(), 0);
}

template <class ConditionType>
bool WaitUntil(ConditionType&& Holds) {
    const auto End = Clock::now() + std::chrono::seconds(20);
    while (!Holds()) {
        if (Clock::now() > End)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2)); // asks, and asks again
    }
    return true;
}

class CallbackTest : public ::testing::Test {
  protected:
    void Load(PlayEngine& Engine, std::int32_t Count) const {
        BlockWords List;
        List.Add(WriteSamples(Folder, "sound", Noise(static_cast<std::size_t>(Count))), Count, 3,
                 1);
        Engine.Load(16, 1, Rate, Count, List.Words, std::vector<std::int32_t>{0});
    }
    TempFolder Folder;
};

TEST_F(CallbackTest, TheWatchSeesMemoryALockAndAFile) {
    const CallbackWatch Watch(ServerThread);
    ExpectNothing();
    const auto Act = [] {
        std::mutex Mutex;
        const std::scoped_lock<std::mutex> Guard(Mutex);
        const auto Memory = std::make_unique<std::vector<int>>(100);
        ::close(::open("/dev/null", O_RDONLY));
        EXPECT_EQ(Memory->size(), 100U);
    };
    std::thread Other([&] {
        ::pthread_setname_np(::pthread_self(), "another");
        Act();
    });
    Other.join();
    ExpectNothing();
    std::thread Watched([&] {
        ::pthread_setname_np(::pthread_self(), ServerThread);
        Act();
    });
    Watched.join();
    EXPECT_GE(CallbackWatch::Allocations(), 2);
    EXPECT_GE(CallbackWatch::Frees(), 2);
    EXPECT_GE(CallbackWatch::Locks(), 1);
    EXPECT_EQ(CallbackWatch::Opens(), 1);
}

TEST_F(CallbackTest, WithTheSoundServerItOnlyCopies) {
    const SoundServer Server(1);
    PlayEngine Engine(MakePulseOutput, [] {});
    ASSERT_EQ(Engine.SwitchOn(), 1);
    Load(Engine, 3 * Rate);
    const CallbackWatch Watch(ServerThread);
    Engine.Play(0, 1);
    ASSERT_TRUE(WaitUntil([&] { return Engine.Position() > Rate / 2; }));
    Engine.UTurn();
    ASSERT_TRUE(WaitUntil([&] { return Engine.Position() < Rate / 3; }));
    ASSERT_TRUE(WaitUntil([&] { return Engine.Status() == PlayStopped; })) << "up to its end";
    ExpectNothing();
    EXPECT_GT(CallbackWatch::OfLibraries(), 100) << "it was this thread that sounded";
}

TEST_F(CallbackTest, WithPlainSoundItOnlyCopies) {
    ::setenv("ALSA_CONFIG_PATH", Folder.Write("alsa.conf", "pcm.!default { type null }\n").c_str(),
             1);
    PlayEngine Engine(MakeAlsaOutput, [] {});
    ASSERT_EQ(Engine.SwitchOn(), 2);
    Load(Engine, 20 * Rate);
    const CallbackWatch Watch(PlainThread);
    Engine.Play(0, 1);
    ASSERT_TRUE(WaitUntil([&] { return Engine.Status() == PlayStopped; }));
    ExpectNothing();
    EXPECT_GT(CallbackWatch::OfLibraries(), 100) << "it was this thread that sounded";
}

} // namespace
} // namespace quoril::test

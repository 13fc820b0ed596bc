// The player's process with a private sound server, and what is heard of it.
#pragma once

#include "BlockWords.h"
#include "SoundServer.h"
#include "playback/PlayerProcess.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <functional>
#include <sstream>

namespace quoril::test {

using Samples = std::vector<std::int16_t>;
using std::chrono::milliseconds;

constexpr std::int32_t Rate = 44100;
inline const std::vector<std::int32_t> NoList{0};

/// Lets events through until something holds. False when it has not come in time.
inline bool WaitFor(const std::function<bool()>& What, milliseconds Most = milliseconds(8000)) {
    const auto Until = Clock::now() + Most;
    while (!What()) {
        if (Clock::now() > Until)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
        std::this_thread::sleep_for(milliseconds(1)); // asks a thousand times a second, not more
    }
    return true;
}

inline double CpuSeconds(int Process) {
    std::ifstream In("/proc/" + std::to_string(Process) + "/stat");
    std::string Line;
    std::getline(In, Line);
    std::istringstream Fields(Line.substr(Line.rfind(')') + 2));
    std::string Skipped;
    for (int i = 0; i < 11; ++i)
        Fields >> Skipped;
    double User = 0;
    double System = 0;
    Fields >> User >> System;
    return (User + System) / 100.0;
}

/// Whether a process is there and runs. One that nobody has waited for yet runs no more.
inline bool ProcessRuns(int Process) {
    std::ifstream In("/proc/" + std::to_string(Process) + "/stat");
    std::string Line;
    std::getline(In, Line);
    return !Line.empty() && Line[Line.rfind(')') + 2] != 'Z';
}

inline bool ProcessExists(int Process) {
    return ::kill(Process, 0) == 0;
}

/// Noise without silent samples, so that every one can be told from the silence around.
inline Samples Sound(std::size_t Count, unsigned Seed = 1) {
    Samples All = Noise(Count, Seed);
    std::replace(All.begin(), All.end(), std::int16_t{0}, std::int16_t{1});
    return All;
}

class PlayerSoundTest : public ::testing::Test {
  protected:
    void Begin(int Channels = 1) {
        Server = std::make_unique<SoundServer>(Channels);
        Player = Make();
        ASSERT_EQ(Player->DriverState(1), 1);
        Heard = std::make_unique<Recorder>(*Server, Channels);
    }
    std::unique_ptr<PlayerComponent> Make() {
        auto Made = StartPlayerProcess(PLAYER_PROGRAM, Folder.Path());
        Made->MsgBoxOb = [this](const std::string& Prompt, const std::string& Title) {
            (Prompt == "S2" ? Status : Messages).push_back(Prompt == "S2" ? Title : Prompt);
        };
        return Made;
    }
    void Load(const Samples& What) {
        All = What;
        BlockWords List;
        List.Add(WriteSamples(Folder, "sound", All), static_cast<std::int32_t>(All.size()), 3, 1);
        Player->Load(16, 1, Rate, static_cast<std::int32_t>(All.size()), List.Words, NoList);
    }
    /// What was heard from the first sound on, once the player has stopped.
    Samples HeardToTheEnd() {
        EXPECT_TRUE(WaitFor([&] { return Player->PlayStatus() == 0; }));
        const std::size_t Now = Heard->Count();
        EXPECT_TRUE(WaitFor([&] { return Heard->Count() > Now + Rate / 2; }));
        return Trimmed();
    }
    Samples Trimmed() const {
        Samples Got = Heard->Samples();
        Got.erase(Got.begin(), Got.begin() + static_cast<std::ptrdiff_t>(Heard->FirstSound()));
        while (!Got.empty() && Got.back() == 0)
            Got.pop_back();
        return Got;
    }
    /// Waits until a sound has been heard for so many samples.
    void WaitHeard(std::size_t Count) {
        ASSERT_TRUE(WaitFor([&] {
            const std::size_t First = Heard->FirstSound();
            return Heard->Count() > First + Count;
        }));
    }

    TempFolder Folder;
    std::unique_ptr<SoundServer> Server;
    std::unique_ptr<PlayerComponent> Player;
    std::unique_ptr<Recorder> Heard;
    Samples All;
    std::vector<std::string> Status;
    std::vector<std::string> Messages;
};

inline Samples Reversed(Samples What) {
    std::reverse(What.begin(), What.end());
    return What;
}

} // namespace quoril::test

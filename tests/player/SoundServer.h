// A private sound server that plays to nowhere, and what it plays.
#pragma once

#include "platform/Descriptor.h"
#include "support/TempFolder.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace quoril::test {

using Clock = std::chrono::steady_clock;

/// A child of the test with its output in a pipe; killed at the end.
class TestChild {
  public:
    explicit TestChild(const std::vector<std::string>& Arguments);
    ~TestChild() { Kill(); }
    TestChild(const TestChild&) = delete;
    TestChild& operator=(const TestChild&) = delete;
    void Kill();
    [[nodiscard]] pid_t Id() const { return Child; }
    [[nodiscard]] const Descriptor& Output() const { return Words; }

  private:
    pid_t Child = -1;
    Descriptor Words;
};

/// A sound server with one sink, of 16 bits at 44100 Hz unless told otherwise. The programs that
/// this process starts use it from then on. Throws when it does not come up.
class SoundServer {
  public:
    explicit SoundServer(int Channels, const std::string& SinkFormat = "format=s16le rate=44100");
    [[nodiscard]] std::string Socket() const { return Folder / "native"; }
    void Kill() { Server->Kill(); }
    void Restart();
    /// The server answers nobody until it goes on.
    void Hang() const;
    void GoOn() const;
    /// The sink, and what plays to it, goes; the server stays. It comes back as a new one.
    void TakeDeviceAway() const;
    void PutDeviceBack() const;

  private:
    [[nodiscard]] std::string Sink() const;
    void Control(const std::string& Command, const std::string& Module) const;
    TempFolder Folder;
    int SinkChannels;
    std::string Format;
    std::unique_ptr<TestChild> Server;
};

/// What the sink plays, from now on.
class Recorder {
  public:
    /// Comes back when the recording runs.
    Recorder(const SoundServer& Server, int Channels);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    [[nodiscard]] std::vector<std::int16_t> Samples() const;
    [[nodiscard]] std::size_t Count() const;
    /// When the sample at an index had been heard.
    [[nodiscard]] Clock::time_point TimeOf(std::size_t Index) const;
    /// The index of the first sample that is not silent, from an index on; the count without one.
    [[nodiscard]] std::size_t FirstSound(std::size_t From = 0) const;

  private:
    void Read();
    struct Arrival {
        std::size_t Count;
        Clock::time_point When;
    };
    mutable std::mutex Lock;
    std::vector<std::int16_t> Heard;
    std::vector<Arrival> Arrivals;
    std::unique_ptr<TestChild> Program;
    std::thread Reader;
};

} // namespace quoril::test

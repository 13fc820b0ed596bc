#include "SoundServer.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quoril::test {

TestChild::TestChild(const std::vector<std::string>& Arguments) {
    std::array<int, 2> Ends{};
    if (::pipe2(Ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    Words = Descriptor(Ends[0]);
    const Descriptor To(Ends[1]);
    std::vector<char*> Texts;
    Texts.reserve(Arguments.size() + 1);
    for (const std::string& Each : Arguments)
        Texts.push_back(const_cast<char*>(Each.c_str()));
    Texts.push_back(nullptr);
    Child = ::fork();
    if (Child == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(To.Get(), STDOUT_FILENO);
        ::execvp(Texts.front(), Texts.data());
        ::_exit(127);
    }
}

void TestChild::Kill() {
    if (Child > 0) {
        ::kill(Child, SIGKILL);
        ::waitpid(Child, nullptr, 0);
    }
    Child = -1;
}

SoundServer::SoundServer(int Channels, const std::string& SinkFormat)
    : SinkChannels(Channels), Format(SinkFormat) {
    ::setenv("HOME", Folder.Path().c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", Folder.Path().c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", Folder.Path().c_str(), 1);
    ::setenv("PULSE_SERVER", ("unix:" + Socket()).c_str(), 1);
    ::unsetenv("DISPLAY");
    Restart();
}

void SoundServer::Restart() {
    std::filesystem::remove(Socket());
    Server.reset();
    Server = std::make_unique<TestChild>(std::vector<std::string>{
        "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--disable-shm=true",
        "--log-target=file:" + (Folder / "log"),
        "--load=module-native-protocol-unix auth-anonymous=1 socket=" + Socket(),
        "--load=" + Sink()});
    const auto Until = Clock::now() + std::chrono::seconds(10);
    while (!std::filesystem::exists(Socket())) {
        if (Clock::now() > Until)
            throw std::runtime_error("the sound server does not come up");
        std::this_thread::yield();
    }
}

void SoundServer::Hang() const {
    ::kill(Server->Id(), SIGSTOP);
    // It may still be at work until it is seen to have stopped.
    ::waitpid(Server->Id(), nullptr, WUNTRACED);
}

void SoundServer::GoOn() const {
    ::kill(Server->Id(), SIGCONT);
}

std::string SoundServer::Sink() const {
    // A sink that takes back what it has already sounded would confuse who listens to it.
    return "module-null-sink sink_name=nowhere norewinds=1 " + Format +
           " channels=" + std::to_string(SinkChannels);
}

void SoundServer::Control(const std::string& Command, const std::string& Module) const {
    const std::string Line = "pactl -s unix:" + Socket() + " " + Command + " " + Module;
    if (std::system((Line + " >/dev/null").c_str()) != 0)
        throw std::runtime_error(Line);
}

void SoundServer::TakeDeviceAway() const {
    Control("unload-module", "module-null-sink");
}

void SoundServer::PutDeviceBack() const {
    Control("load-module", Sink());
}

Recorder::Recorder(const SoundServer& Server, int Channels)
    : Program(std::make_unique<TestChild>(std::vector<std::string>{
          "parec", "--server=unix:" + Server.Socket(), "--device=nowhere.monitor", "--raw",
          "--format=s16le", "--rate=44100", "--channels=" + std::to_string(Channels),
          "--latency-msec=5", "--process-time-msec=5"})) {
    Reader = std::thread([this] { Read(); });
    const auto Until = Clock::now() + std::chrono::seconds(10);
    while (Count() == 0) {
        if (Clock::now() > Until)
            throw std::runtime_error("the recording does not start");
        std::this_thread::yield();
    }
}

Recorder::~Recorder() {
    Program->Kill();
    Reader.join();
}

void Recorder::Read() {
    std::array<std::int16_t, 2048> Piece{};
    std::size_t Held = 0; // bytes
    auto* const Bytes = reinterpret_cast<char*>(Piece.data());
    while (true) {
        const ssize_t Got = ReadOnce(Program->Output(), Bytes + Held, sizeof Piece - Held);
        if (Got <= 0)
            return;
        Held += static_cast<std::size_t>(Got);
        const std::scoped_lock<std::mutex> Guard(Lock);
        Heard.insert(Heard.end(), Piece.begin(),
                     Piece.begin() + static_cast<std::ptrdiff_t>(Held / 2));
        Arrivals.push_back({Heard.size(), Clock::now()});
        if (Held % 2 == 1)
            Bytes[0] = Bytes[Held - 1];
        Held %= 2;
    }
}

std::vector<std::int16_t> Recorder::Samples() const {
    const std::scoped_lock<std::mutex> Guard(Lock);
    return Heard;
}

std::size_t Recorder::Count() const {
    const std::scoped_lock<std::mutex> Guard(Lock);
    return Heard.size();
}

Clock::time_point Recorder::TimeOf(std::size_t Index) const {
    const std::scoped_lock<std::mutex> Guard(Lock);
    const auto Found =
        std::upper_bound(Arrivals.begin(), Arrivals.end(), Index,
                         [](std::size_t Value, const Arrival& Each) { return Value < Each.Count; });
    return Found == Arrivals.end() ? Clock::now() : Found->When;
}

std::size_t Recorder::FirstSound(std::size_t From) const {
    const std::scoped_lock<std::mutex> Guard(Lock);
    const auto Begin = Heard.begin() + static_cast<std::ptrdiff_t>(std::min(From, Heard.size()));
    return static_cast<std::size_t>(
        std::find_if(Begin, Heard.end(), [](std::int16_t Each) { return Each != 0; }) -
        Heard.begin());
}

} // namespace quoril::test

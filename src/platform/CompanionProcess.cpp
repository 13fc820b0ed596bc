#include "platform/CompanionProcess.h"

#include "base/Failure.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <thread>

namespace quoril {

namespace {

constexpr std::chrono::milliseconds EndTime{500};
constexpr std::chrono::milliseconds EndStep{2};

/// Both ends above the three standard descriptors, which the child's own are put over.
void PipeOpen(Descriptor& From, Descriptor& To) {
    std::array<int, 2> Ends{};
    if (::pipe2(Ends.data(), O_CLOEXEC) != 0)
        throw SystemFailure(errno, {});
    const Descriptor LowFrom(Ends[0]);
    const Descriptor LowTo(Ends[1]);
    From = Descriptor(::fcntl(LowFrom.Get(), F_DUPFD_CLOEXEC, 3));
    To = Descriptor(::fcntl(LowTo.Get(), F_DUPFD_CLOEXEC, 3));
    if (!From.IsOpen() || !To.IsOpen())
        throw SystemFailure(errno, {});
}

/// What happens to the child's descriptors.
class SpawnActions {
  public:
    SpawnActions(int Input, int Output) {
        ::posix_spawn_file_actions_init(&Actions);
        ::posix_spawn_file_actions_adddup2(&Actions, Input, STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&Actions, Output, STDOUT_FILENO);
        ::posix_spawn_file_actions_addclosefrom_np(&Actions, 3);
    }
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&Actions); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    posix_spawn_file_actions_t Actions;
};

/// Signals as a fresh process has them: none ignored, none held back.
class SpawnAttributes {
  public:
    SpawnAttributes() {
        sigset_t Set;
        ::posix_spawnattr_init(&Attributes);
        ::sigemptyset(&Set);
        ::posix_spawnattr_setsigmask(&Attributes, &Set);
        ::sigfillset(&Set);
        ::sigdelset(&Set, SIGKILL);
        ::sigdelset(&Set, SIGSTOP);
        ::posix_spawnattr_setsigdefault(&Attributes, &Set);
        ::posix_spawnattr_setflags(&Attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&Attributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    posix_spawnattr_t Attributes;
};

} // namespace

CompanionProcess::CompanionProcess(const std::vector<std::string>& Arguments, int MostMs) {
    Start(Arguments);
    if (!SaysReady(MostMs)) {
        End();
        throw Failure("This program does not start\n" + Arguments.front());
    }
}

void CompanionProcess::Start(const std::vector<std::string>& Arguments) {
    Descriptor Input;
    Descriptor Output;
    PipeOpen(Input, LifeLine);
    PipeOpen(Words, Output);
    std::vector<char*> Texts;
    Texts.reserve(Arguments.size() + 1);
    for (const std::string& Argument : Arguments)
        Texts.push_back(const_cast<char*>(Argument.c_str()));
    Texts.push_back(nullptr);
    const SpawnActions Files(Input.Get(), Output.Get());
    const SpawnAttributes Signals;
    const int Code = ::posix_spawn(&Child, Texts.front(), &Files.Actions, &Signals.Attributes,
                                   Texts.data(), environ);
    if (Code != 0) {
        Child = -1;
        throw SystemFailure(Code, Arguments.front());
    }
}

bool CompanionProcess::SaysReady(int MostMs) const noexcept {
    constexpr std::string_view Ready = "ready\n";
    const auto Until = std::chrono::steady_clock::now() + std::chrono::milliseconds(MostMs);
    std::string Said;
    while (Said.size() < Ready.size()) {
        const auto Left = std::chrono::duration_cast<std::chrono::milliseconds>(
            Until - std::chrono::steady_clock::now());
        pollfd Waited{Words.Get(), POLLIN, 0};
        const int Found =
            Left.count() <= 0 ? 0 : ::poll(&Waited, 1, static_cast<int>(Left.count()));
        if (Found == 0 || (Found < 0 && errno != EINTR))
            return false;
        char Letter = 0;
        if (Found > 0 && ReadOnce(Words, &Letter, 1) != 1)
            return false;
        if (Found > 0)
            Said.push_back(Letter);
    }
    return Said == Ready;
}

bool CompanionProcess::IsRunning() noexcept {
    if (Child <= 0)
        return false;
    pid_t Ended;
    do
        Ended = ::waitpid(Child, nullptr, WNOHANG);
    while (Ended < 0 && errno == EINTR);
    if (Ended != 0)
        Child = -1;
    return Ended == 0;
}

void CompanionProcess::End() noexcept {
    LifeLine.Reset();
    const auto Until = std::chrono::steady_clock::now() + EndTime;
    while (IsRunning() && std::chrono::steady_clock::now() < Until)
        std::this_thread::sleep_for(EndStep);
    if (Child > 0) {
        ::kill(Child, SIGKILL);
        while (::waitpid(Child, nullptr, 0) < 0 && errno == EINTR) {
        }
        Child = -1;
    }
    Words.Reset();
}

} // namespace quoril

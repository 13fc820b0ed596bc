#include "platform/TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace quoril {

namespace {

int WriteEnd = -1;

extern "C" void TellEventLoop(int) {
    const int Kept = errno;
    const char Byte = 0;
    // A full pipe has told it already.
    [[maybe_unused]] const auto Written = ::write(WriteEnd, &Byte, 1);
    errno = Kept;
}

extern "C" void DoNothing(int) {}

void Catch(int Signal, void (*Handler)(int), int Flags) {
    struct sigaction Action {};
    Action.sa_handler = Handler;
    Action.sa_flags = SA_RESTART | Flags;
    ::sigemptyset(&Action.sa_mask);
    ::sigaction(Signal, &Action, nullptr);
}

} // namespace

int TerminationSignalsCatch() {
    std::array<int, 2> Ends{};
    if (::pipe2(Ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return -1;
    WriteEnd = Ends[1];
    Catch(SIGTERM, TellEventLoop, static_cast<int>(SA_RESETHAND));
    Catch(SIGINT, TellEventLoop, static_cast<int>(SA_RESETHAND));
    // A handler and not SIG_IGN, which the programs that we start would inherit.
    Catch(SIGHUP, DoNothing, 0);
    return Ends[0];
}

} // namespace quoril

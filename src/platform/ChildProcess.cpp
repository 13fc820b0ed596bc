#include "platform/ChildProcess.h"

#include "base/Failure.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <linux/close_range.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace quoril {

namespace {

enum class Kind {
    Waited,   ///< a child of ours, in our session; its words go where ours go
    Detached, ///< nobody's child, in a session of its own, with nothing of ours open
    Worker    ///< a child that leads a group of its own and ends with us; its words go into a file
};

/// A pipe whose ends are not among the three standard descriptors, even where those are closed.
struct Pipe {
    Descriptor From;
    Descriptor To;

    /// False with errno when there is none to be had.
    [[nodiscard]] bool Open() noexcept {
        std::array<int, 2> Ends{};
        if (::pipe2(Ends.data(), O_CLOEXEC) != 0)
            return false;
        const Descriptor LowFrom(Ends[0]);
        const Descriptor LowTo(Ends[1]);
        From = Descriptor(::fcntl(LowFrom.Get(), F_DUPFD_CLOEXEC, 3));
        To = Descriptor(::fcntl(LowTo.Get(), F_DUPFD_CLOEXEC, 3));
        return From.IsOpen() && To.IsOpen();
    }
};

std::string WordsOf(int ErrorCode) {
    return std::generic_category().message(ErrorCode);
}

/// waitpid that is not ended by signals. False when there is nothing to wait for.
bool WaitFor(pid_t Child, int& Status) noexcept {
    pid_t Ended;
    do
        Ended = ::waitpid(Child, &Status, 0);
    while (Ended < 0 && errno == EINTR);
    return Ended == Child;
}

// From here to RunDetached everything happens between fork and exec, where only plain system calls
// are allowed: other threads may have held any lock.

/// Tells the starting process why there is no program, and ends.
[[noreturn]] void EndWithError(const Descriptor& Report, int ErrorCode) noexcept {
    (void)WriteAll(Report, reinterpret_cast<const char*>(&ErrorCode), sizeof ErrorCode);
    ::_exit(127);
}

/// Signals as a fresh process has them: none ignored, none held back.
void ResetSignals() noexcept {
    struct sigaction Plain {};
    Plain.sa_handler = SIG_DFL;
    for (int Number = 1; Number < NSIG; ++Number)
        ::sigaction(Number, &Plain, nullptr);
    sigset_t None;
    ::sigemptyset(&None);
    ::sigprocmask(SIG_SETMASK, &None, nullptr);
}

/// What is ready for the new process before there is one.
struct Program {
    std::vector<std::string> Files; ///< where it may lie, in the order of the search
    std::vector<char*> Arguments;   ///< ends with a null pointer
    const char* Words = nullptr;    ///< the file for what a worker says
};

/// Takes the program's place, and comes back with the error only when no file could be run. A
/// missing file says less than one that may not be run.
int Execute(const Program& What) noexcept {
    int ErrorCode = ENOENT;
    for (const std::string& File : What.Files) {
        ::execve(File.c_str(), What.Arguments.data(), environ);
        if (errno != ENOENT && errno != ENOTDIR && errno != EACCES)
            return errno;
        if (errno == EACCES)
            ErrorCode = EACCES;
    }
    return ErrorCode;
}

/// False with errno when that failed.
bool BecomeWorker(const char* Words) noexcept {
    const int File = ::open(Words, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    return File >= 0 && ::dup2(File, STDOUT_FILENO) >= 0 && ::dup2(File, STDERR_FILENO) >= 0 &&
           ::setpgid(0, 0) == 0 && ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0;
}

[[noreturn]] void RunProgram(const Program& What, Kind How, const Descriptor& Report) noexcept {
    ResetSignals();
    // A program that reads its input must not wait for a terminal, nor take keys from it.
    const int Nothing = ::open("/dev/null", O_RDWR);
    if (Nothing < 0 || ::dup2(Nothing, STDIN_FILENO) < 0)
        EndWithError(Report, errno);
    if (How == Kind::Detached &&
        (::dup2(Nothing, STDOUT_FILENO) < 0 || ::dup2(Nothing, STDERR_FILENO) < 0))
        EndWithError(Report, errno);
    if (How == Kind::Worker && !BecomeWorker(What.Words))
        EndWithError(Report, errno);
    // The report's end stays open until the program starts; everything of ours ends there.
    (void)::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
    EndWithError(Report, Execute(What));
}

/// The child between us and a detached program: it ends at once, so that the program becomes a
/// child of the system, which sees to its end.
[[noreturn]] void RunDetached(const Program& What, const Descriptor& Report) noexcept {
    ::setsid();
    const pid_t Child = ::_Fork();
    if (Child == 0)
        RunProgram(What, Kind::Detached, Report);
    if (Child < 0)
        EndWithError(Report, errno);
    ::_exit(0);
}

/// Starts the program; `Child` is the process to wait for. 0, or the error's number.
int Start(const std::vector<std::string>& Arguments, Kind How, pid_t& Child,
          const char* Words = nullptr) {
    if (Arguments.empty() || Arguments.front().empty())
        return ENOENT;
    Program What;
    What.Words = Words;
    What.Files = ProgramFiles(Arguments.front());
    What.Arguments.reserve(Arguments.size() + 1);
    for (const std::string& Argument : Arguments) {
        if (Argument.find('\0') != std::string::npos)
            return EINVAL; // the program would see a shorter one
        What.Arguments.push_back(const_cast<char*>(Argument.c_str()));
    }
    What.Arguments.push_back(nullptr);
    Pipe Report;
    if (!Report.Open())
        return errno;
    Child = ::fork();
    if (Child < 0)
        return errno;
    if (Child == 0) {
        if (How == Kind::Detached)
            RunDetached(What, Report.To);
        RunProgram(What, How, Report.To);
    }
    Report.To.Reset();
    // The pipe ends without a word when the program has taken the child's place.
    int ErrorCode = 0;
    if (ReadOnce(Report.From, &ErrorCode, sizeof ErrorCode) != sizeof ErrorCode)
        return 0;
    int Status = 0;
    (void)WaitFor(Child, Status);
    return ErrorCode;
}

/// The exit code of a child that has ended; 128 and the signal's number if a signal ended it.
int CodeOf(int Status) noexcept {
    if (WIFEXITED(Status))
        return WEXITSTATUS(Status);
    return WIFSIGNALED(Status) ? 128 + WTERMSIG(Status) : -1;
}

} // namespace

std::vector<std::string> ProgramFiles(const std::string& Name) {
    if (Name.find('/') != std::string::npos)
        return {Name};
    const char* Set = std::getenv("PATH");
    std::vector<std::string> Files;
    for (const std::string& Folder :
         TextParts(Set == nullptr ? "/usr/local/bin:/usr/bin:/bin" : Set, ':'))
        if (!Folder.empty())
            Files.push_back(fmt::format("{}/{}", Folder, Name));
    return Files;
}

ChildResult RunAndWait(const std::vector<std::string>& Arguments) {
    ChildResult Result;
    pid_t Child = -1;
    if (const int ErrorCode = Start(Arguments, Kind::Waited, Child); ErrorCode != 0) {
        Result.StartError = WordsOf(ErrorCode);
        return Result;
    }
    Result.Started = true;
    int Status = 0;
    if (WaitFor(Child, Status))
        Result.ExitCode = CodeOf(Status);
    return Result;
}

ChildResult StartDetached(const std::vector<std::string>& Arguments) {
    ChildResult Result;
    pid_t Between = -1;
    if (const int ErrorCode = Start(Arguments, Kind::Detached, Between); ErrorCode != 0) {
        Result.StartError = WordsOf(ErrorCode);
        return Result;
    }
    Result.Started = true;
    int Status = 0;
    (void)WaitFor(Between, Status);
    return Result;
}

WorkerProcess::WorkerProcess(const std::vector<std::string>& Arguments, const std::string& Words) {
    if (const int ErrorCode = Start(Arguments, Kind::Worker, Child, Words.c_str());
        ErrorCode != 0) {
        Child = -1;
        throw SystemFailure(ErrorCode, Arguments.empty() ? std::string() : Arguments.front());
    }
    Watch = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, Child, 0)));
    if (!Watch.IsOpen()) {
        const int ErrorCode = errno;
        End();
        throw SystemFailure(ErrorCode, Arguments.front());
    }
}

bool WorkerProcess::EndedWithin(int MostMs) noexcept {
    if (Child < 0)
        return true;
    pollfd Waited{Watch.Get(), POLLIN, 0};
    if (::poll(&Waited, 1, MostMs) <= 0)
        return false;
    int Status = 0;
    if (WaitFor(Child, Status))
        Code = CodeOf(Status);
    Child = -1;
    return true;
}

void WorkerProcess::End() noexcept {
    constexpr int TimeToGoMs = 500;
    if (Child < 0)
        return;
    ::kill(-Child, SIGTERM);
    pollfd Waited{Watch.Get(), POLLIN, 0};
    if (Watch.IsOpen())
        (void)::poll(&Waited, 1, TimeToGoMs);
    ::kill(-Child, SIGKILL);
    int Status = 0;
    if (WaitFor(Child, Status))
        Code = CodeOf(Status);
    Child = -1;
}

} // namespace quoril

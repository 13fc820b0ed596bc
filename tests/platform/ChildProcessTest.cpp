#include "platform/ChildProcess.h"

#include "support/TempFolder.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace quoril {
namespace {

using test::TempFolder;

/// Waits until a file has a whole line, and gives it without its end.
std::string LineOf(const std::string& FileName) {
    const auto Latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < Latest) {
        std::ifstream In(FileName);
        std::string Line;
        if (std::getline(In, Line) && !In.eof())
            return Line;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return "(no line)";
}

std::string Words(int ErrorCode) {
    return std::generic_category().message(ErrorCode);
}

TEST(ChildProcess, GivesTheExitCode) {
    const ChildResult Good = RunAndWait({"true"});
    EXPECT_TRUE(Good.Started);
    EXPECT_EQ(Good.ExitCode, 0);
    EXPECT_EQ(Good.StartError, "");
    EXPECT_EQ(RunAndWait({"/bin/sh", "-c", "exit 37"}).ExitCode, 37);
}

TEST(ChildProcess, GivesTheSignalThatEndedIt) {
    const ChildResult Killed = RunAndWait({"sh", "-c", "kill -9 $$"});
    EXPECT_TRUE(Killed.Started);
    EXPECT_EQ(Killed.ExitCode, 128 + SIGKILL);
}

TEST(ChildProcess, SaysWhyAProgramDidNotStart) {
    const TempFolder Folder;
    const std::string NotExecutable = Folder.Write("plain", "#!/bin/sh\n");
    for (const auto& Run : {RunAndWait, StartDetached}) {
        for (const char* Missing : {"no-such-program-anywhere", "/no/such/program", ""}) {
            const ChildResult Result = Run({Missing});
            EXPECT_FALSE(Result.Started) << Missing;
            EXPECT_EQ(Result.ExitCode, -1) << Missing;
            EXPECT_EQ(Result.StartError, Words(ENOENT)) << Missing;
        }
        EXPECT_EQ(Run({}).StartError, Words(ENOENT));
        EXPECT_EQ(Run({NotExecutable}).StartError, Words(EACCES));
        EXPECT_EQ(Run({Folder.Path()}).StartError, Words(EACCES));
        EXPECT_EQ(Run({"true", std::string("a\0b", 3)}).StartError, Words(EINVAL));
    }
}

TEST(ChildProcess, LeavesNoChildBehindWhenAProgramDidNotStart) {
    EXPECT_FALSE(RunAndWait({"/no/such/program"}).Started);
    EXPECT_FALSE(StartDetached({"/no/such/program"}).Started);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(ChildProcess, NeverTakesAShellForAFileThatIsNoProgram) {
    const TempFolder Folder;
    const std::string Text = Folder.Write("text", "exit 5\n");
    ASSERT_EQ(::chmod(Text.c_str(), 0755), 0);
    const ChildResult Result = RunAndWait({Text});
    EXPECT_FALSE(Result.Started);
    EXPECT_EQ(Result.StartError, Words(ENOEXEC));
}

TEST(ChildProcess, HandsOverArgumentsAsTheyAre) {
    const TempFolder Folder;
    const std::string Program =
        Folder.Write("program", "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$1\"\n");
    ASSERT_EQ(::chmod(Program.c_str(), 0755), 0);
    const std::string Out = Folder / "out";
    ASSERT_EQ(RunAndWait({Program, Out, "a b", "$HOME", "'\"`;&|", "", "\xFF\xFE", "*"}).ExitCode,
              0);
    EXPECT_EQ(TempFolder::Read(Out), Out + "\na b\n$HOME\n'\"`;&|\n\n\xFF\xFE\n*\n");
}

TEST(ChildProcess, FindsAProgramOnThePath) {
    const TempFolder Folder;
    const std::string Hidden = Folder.Write("first/quoril-here", "#!/bin/sh\nexit 1\n");
    const std::string Program = Folder.Write("second/quoril-here", "#!/bin/sh\nexit 42\n");
    ASSERT_EQ(::chmod(Program.c_str(), 0755), 0);
    const std::string Path =
        "/no/such:" + (Folder / "first") + "::" + (Folder / "second") + ":/usr/bin:/bin";
    ::setenv("PATH", Path.c_str(), 1);
    EXPECT_EQ(RunAndWait({"quoril-here"}).ExitCode, 42);
    ::setenv("PATH", (Folder / "first").c_str(), 1);
    EXPECT_EQ(RunAndWait({"quoril-here"}).StartError, Words(EACCES));
}

TEST(ChildProcess, DoesNotTakeAProgramFromTheCurrentFolder) {
    const TempFolder Folder;
    const std::string Program = Folder.Write("quoril-here", "#!/bin/sh\nexit 42\n");
    ASSERT_EQ(::chmod(Program.c_str(), 0755), 0);
    ASSERT_EQ(::chdir(Folder.Path().c_str()), 0);
    ::setenv("PATH", ":/usr/bin:/bin:", 1);
    EXPECT_FALSE(RunAndWait({"quoril-here"}).Started);
    EXPECT_EQ(RunAndWait({"./quoril-here"}).ExitCode, 42);
}

TEST(ChildProcess, InheritsNoneOfOurFiles) {
    const TempFolder Folder;
    const std::string Name = Folder.Write("ours", "x");
    // Open without the mark that closes it, as a library may leave it.
    const int Ours = ::open(Name.c_str(), O_RDONLY);
    ASSERT_GE(Ours, 3);
    const std::string Check = "/proc/self/fd/" + std::to_string(Ours);
    EXPECT_EQ(RunAndWait({"test", "-e", Check}).ExitCode, 1);
    const std::string Out = Folder / "out";
    ASSERT_TRUE(StartDetached({"sh", "-c", "test -e " + Check + "; echo $? > " + Out}).Started);
    EXPECT_EQ(LineOf(Out), "1");
    ::close(Ours);
}

TEST(ChildProcess, ReadsNothingFromOurInput) {
    int Ends[2];
    ASSERT_EQ(::pipe(Ends), 0);
    ASSERT_EQ(::dup2(Ends[0], STDIN_FILENO), STDIN_FILENO);
    // With our input, which never ends, this would wait for ever.
    EXPECT_EQ(RunAndWait({"sh", "-c", "cat; exit 6"}).ExitCode, 6);
}

TEST(ChildProcess, StartsWithPlainSignals) {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGHUP, SIG_IGN);
    sigset_t All;
    ::sigfillset(&All);
    ::sigprocmask(SIG_BLOCK, &All, nullptr);
    const TempFolder Folder;
    const std::string Out = Folder / "out";
    EXPECT_EQ(
        RunAndWait({"sh", "-c", "grep -E '^Sig(Blk|Ign)' /proc/self/status > " + Out}).ExitCode, 0);
    EXPECT_EQ(TempFolder::Read(Out), "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
}

TEST(ChildProcess, WorksWithTheStandardDescriptorsClosed) {
    const pid_t Child = ::fork();
    if (Child == 0) {
        for (int Standard = 0; Standard < 3; ++Standard)
            ::close(Standard);
        const bool Good = RunAndWait({"sh", "-c", "exit 9"}).ExitCode == 9 &&
                          RunAndWait({"/no/such"}).StartError == Words(ENOENT) &&
                          StartDetached({"true"}).Started && !StartDetached({"/no/such"}).Started;
        ::_exit(Good ? 0 : 1);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Child, &Status, 0), Child);
    EXPECT_TRUE(WIFEXITED(Status));
    EXPECT_EQ(WEXITSTATUS(Status), 0);
}

int SignalsSeen = 0;

TEST(ChildProcess, SignalsDoNotEndTheWait) {
    struct sigaction Count {};
    Count.sa_handler = [](int) { ++SignalsSeen; };
    ASSERT_EQ(::sigaction(SIGALRM, &Count, nullptr), 0); // without SA_RESTART
    const itimerval Often{{0, 10000}, {0, 10000}};
    ASSERT_EQ(::setitimer(ITIMER_REAL, &Often, nullptr), 0);
    const ChildResult Result = RunAndWait({"sh", "-c", "sleep 0.3; exit 8"});
    const itimerval Never{};
    ::setitimer(ITIMER_REAL, &Never, nullptr);
    EXPECT_EQ(Result.ExitCode, 8);
    EXPECT_GT(SignalsSeen, 0);
}

TEST(ChildProcess, WhereChildrenAreReapedByTheSystemItStillRuns) {
    ::signal(SIGCHLD, SIG_IGN);
    EXPECT_TRUE(RunAndWait({"true"}).Started);
    EXPECT_TRUE(StartDetached({"true"}).Started);
}

TEST(ChildProcess, DetachedProgramOutlivesUsAndIsNobodysZombie) {
    const TempFolder Folder;
    const std::string Out = Folder / "out";
    const std::string Go = Folder / "go";
    const pid_t Starter = ::fork();
    if (Starter == 0) {
        const ChildResult Result =
            StartDetached({"sh", "-c",
                           "i=0; while [ ! -e " + Go +
                               " ] && [ $i -lt 2000 ]; do sleep 0.01; i=$((i+1)); done; "
                               "ps -o pid=,sid=,tty= $$ > " +
                               Out});
        // No child of ours is left, ended or not.
        const bool NoChild = ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
        ::_exit(Result.Started && NoChild ? 0 : 1);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Starter, &Status, 0), Starter);
    ASSERT_TRUE(WIFEXITED(Status));
    EXPECT_EQ(WEXITSTATUS(Status), 0);
    // The starter is gone; only now may the program come to its end.
    Folder.Write("go", "");
    std::istringstream Line(LineOf(Out));
    pid_t Program = 0;
    pid_t Session = 0;
    std::string Terminal;
    Line >> Program >> Session >> Terminal;
    EXPECT_GT(Program, 0);
    EXPECT_NE(Session, ::getsid(0));
    EXPECT_NE(Session, Program); // not the head of its session: it can get no terminal
    EXPECT_EQ(Terminal, "?");
}

TEST(ChildProcess, DetachedProgramKeepsNoPipeOfOursOpen) {
    const TempFolder Folder;
    int Ends[2];
    ASSERT_EQ(::pipe(Ends), 0);
    const pid_t Starter = ::fork();
    if (Starter == 0) {
        ::dup2(Ends[1], STDOUT_FILENO);
        ::dup2(Ends[1], STDERR_FILENO);
        ::close(Ends[0]);
        ::close(Ends[1]);
        ::_exit(StartDetached({"sleep", "30"}).Started ? 0 : 1);
    }
    ::close(Ends[1]);
    int Status = 0;
    ASSERT_EQ(::waitpid(Starter, &Status, 0), Starter);
    EXPECT_EQ(WEXITSTATUS(Status), 0);
    ASSERT_EQ(::fcntl(Ends[0], F_SETFL, O_NONBLOCK), 0);
    char Byte;
    EXPECT_EQ(::read(Ends[0], &Byte, 1), 0); // its end, although the program still runs
}

// ---- Workers

TEST(WorkerProcess, IsWaitedForAndItsWordsAreKept) {
    const TempFolder Folder;
    WorkerProcess Worker({"sh", "-c", "read Line || echo none; echo words; echo more >&2; exit 7"},
                         Folder / "words");
    EXPECT_TRUE(Worker.EndedWithin(20000));
    EXPECT_TRUE(Worker.EndedWithin(0)) << "also asked once more";
    EXPECT_EQ(Worker.ExitCode(), 7);
    EXPECT_EQ(TempFolder::Read(Folder / "words"), "none\nwords\nmore\n");
}

TEST(WorkerProcess, ThatDoesNotStartIsAFailureInTheSystemsWords) {
    const TempFolder Folder;
    for (const char* Missing : {"no-such-program-anywhere", "/no/such/program"})
        try {
            const WorkerProcess Worker({Missing}, Folder / "words");
            ADD_FAILURE() << Missing;
        } catch (const std::exception& What) {
            EXPECT_EQ(What.what(), Words(ENOENT) + "\n" + Missing);
        }
    EXPECT_THROW(WorkerProcess({"true"}, "/no/such/folder/words"), std::exception);
    EXPECT_THROW(WorkerProcess({}, Folder / "words"), std::exception);
}

TEST(WorkerProcess, RunsUntilItIsEndedHoweverItStruggles) {
    const TempFolder Folder;
    for (const char* Program : {"echo up; exec sleep 1000", "trap '' TERM; echo up; sleep 1000"}) {
        WorkerProcess Worker({"sh", "-c", Program}, Folder / "words");
        EXPECT_EQ(LineOf(Folder / "words"), "up");
        EXPECT_FALSE(Worker.EndedWithin(1));
        EXPECT_EQ(Worker.ExitCode(), -1);
        Worker.End();
        EXPECT_TRUE(Worker.EndedWithin(0));
        EXPECT_GE(Worker.ExitCode(), 128);
    }
}

TEST(WorkerProcess, EndsWithTheProcessThatStartedIt) {
    const TempFolder Folder;
    const pid_t Between = ::fork();
    ASSERT_GE(Between, 0);
    if (Between == 0) {
        const WorkerProcess Worker({"sh", "-c", "echo $$; exec sleep 1000"}, Folder / "words");
        (void)LineOf(Folder / "words");
        ::kill(::getpid(), SIGKILL);
    }
    int Status = 0;
    ASSERT_EQ(::waitpid(Between, &Status, 0), Between);
    const auto Worker = static_cast<pid_t>(std::stol(LineOf(Folder / "words")));
    const std::string Entry = "/proc/" + std::to_string(Worker) + "/stat";
    // It may stay in the table until the system has taken note of its end.
    const auto Runs = [&] {
        std::ifstream In(Entry);
        std::string Number;
        std::string Name;
        std::string State;
        return (In >> Number >> Name >> State) && State != "Z";
    };
    const auto Latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (Runs() && std::chrono::steady_clock::now() < Latest)
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_FALSE(Runs());
}

} // namespace
} // namespace quoril

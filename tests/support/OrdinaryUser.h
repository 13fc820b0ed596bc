// What a user without special rights may do, also where the tests run as root.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

namespace quoril::test {

/// Runs an action in a process of a user who has no special rights. Its exit code; 99 when the
/// rights could not be given up, -1 when the process did not end by itself.
template <typename Action>
int AsOrdinaryUser(const Action& What) {
    const pid_t Child = ::fork();
    if (Child == 0) {
        if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0)
            ::_exit(99);
        ::_exit(What());
    }
    int Status = 0;
    return ::waitpid(Child, &Status, 0) == Child && WIFEXITED(Status) ? WEXITSTATUS(Status) : -1;
}

} // namespace quoril::test

// Test support: run a piece of a test without the right to write into folders the test made
// read-only, also when the tests run as root (which ignores permission bits).
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace orvak::test {

// Runs `attempt` without the right to write into folders it does not own. Root ignores
// permission bits, so as root the attempt runs in a child process that has given its rights
// up. Returns what the attempt returned (0..125), or -1 when the child could not run it.
inline int runUnprivileged(const std::function<int()>& attempt) {
    if (::geteuid() != 0) {
        return attempt();
    }
    const pid_t child = ::fork();
    if (child == 0) {
        const uid_t nobody = 65534;
        if (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0) {
            ::_exit(126);
        }
        ::_exit(attempt());
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) >= 126) {
        return -1;
    }
    return WEXITSTATUS(status);
}

} // namespace orvak::test

#pragma once

#include <functional>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cvlog::tests {

/// Runs the body in a process of its own, which ends with what the body answers, by _exit: it neither flushes nor closes
/// anything.
inline pid_t startChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        int result = 99;
        try {
            result = body();
        } catch (...) {
        }
        _exit(result);
    }
    return child;
}

/// Waits for its end; negative for the signal that ended it.
inline int exitCodeOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// False when this process may not become a user without rights.
inline bool becomeNobody() {
    constexpr uid_t kNobody = 65534;
    return geteuid() != 0 || setuid(kNobody) == 0;
}

} // namespace cvlog::tests

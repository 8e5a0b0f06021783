#pragma once

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <csignal>
#include <functional>
#include <optional>
#include <string>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace plotwell::test {

// What a child process is denied before it runs a piece of a test: limits
// that must not touch the test program itself.
struct ChildLimits {
    // Run as an ordinary user: root, which may write anywhere, drops to nobody.
    bool unprivileged = false;
    // Files may not grow beyond this many bytes (0: no limit), as when the
    // disk fills up; the signal that would end the child is ignored, so the
    // write fails instead.
    rlim_t fileSizeLimit = 0;
};

// Runs body in a forked child and returns the text it returned, or no value
// when the child could not take the limits or did not end normally.
inline std::optional<std::string> runInChild(const ChildLimits& limits, const std::function<std::string()>& body)
{
    int fds[2];
    if (pipe(fds) != 0)
        return std::nullopt;
    const pid_t pid = fork();
    if (pid < 0)
        return std::nullopt;
    if (pid == 0) {
        close(fds[0]);
        if (limits.unprivileged && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
            _exit(2);
        if (limits.fileSizeLimit > 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{limits.fileSizeLimit, limits.fileSizeLimit};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
                _exit(2);
        }
        const std::string text = body();
        for (std::size_t at = 0; at < text.size();) {
            const ssize_t n = write(fds[1], text.data() + at, text.size() - at);
            if (n <= 0)
                _exit(3);
            at += std::size_t(n);
        }
        _exit(0); // no destructors or exit handlers of the test program
    }
    close(fds[1]);
    std::string text;
    char piece[4096];
    for (ssize_t n; (n = read(fds[0], piece, sizeof piece)) > 0;)
        text.append(piece, std::size_t(n));
    close(fds[0]);
    int status = 0;
    if (waitpid(pid, &status, 0) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    return text;
}

} // namespace plotwell::test

#endif

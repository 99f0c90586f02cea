// Work in a process of its own, in which the system refuses something or which a signal ends; what it leaves behind is
// looked at from outside.
#pragma once

#include <csignal>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace torvane {

constexpr int childCannotTry = 77; // exit code: the system does not let us make the fault

// The exit code of a child, or minus the signal that ended it.
inline int endOf(pid_t child)
{
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return childCannotTry;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// Starts a function whose result becomes the exit code. Signals reach it also where the tests were started to ignore
// them, as behind nohup or "&".
template <class Work>
pid_t startChild(Work&& work)
{
    pid_t child = ::fork();
    if (child == 0) {
        for (int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            std::signal(signal, SIG_DFL);
        [&]() noexcept { ::_exit(work()); }(); // what it throws must not lead on into the tests that follow
    }
    return child;
}

template <class Work>
int inChild(Work&& work)
{
    return endOf(startChild(work));
}

} // namespace torvane

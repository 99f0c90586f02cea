// A process of its own in which the system refuses something: a call that fails with an error of choice, a call that
// ends the process, a disk without room. What the process leaves behind is looked at from outside.
#pragma once

#include <cstddef>
#include <cstdio>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace torvane {

constexpr int childCannotTry = 77; // exit code: the system does not let us make the fault

// Runs a function in a process of its own. Its result, which becomes the exit code, or minus the signal that ended it.
template <class Work>
int inChild(Work&& work)
{
    pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child)
        return childCannotTry;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

enum SystemCall : int {
    callWrite = SYS_write,
    callSync = SYS_fsync,
#ifdef SYS_rename
    callRename = SYS_rename,
#else
    callRename = SYS_renameat,
#endif
};

// From now on a system call of this process fails with the error, or with 0 ends the process on the spot.
inline bool forbidCall(SystemCall call, int error)
{
    unsigned action = error != 0 ? SECCOMP_RET_ERRNO | static_cast<unsigned>(error) : SECCOMP_RET_KILL_PROCESS;
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
        BPF_STMT(BPF_RET | BPF_K, action),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog program = {static_cast<unsigned short>(std::size(filter)), filter};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

// Puts a small disk of its own over a folder, for this process alone. Needs root.
inline bool mountSmallDisk(const std::string& folder, const char* size)
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", folder.c_str(), "tmpfs", 0, (std::string("size=") + size).c_str()) == 0;
}

inline bool makeDiskReadOnly(const std::string& folder)
{
    return ::mount("tmpfs", folder.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
}

} // namespace torvane

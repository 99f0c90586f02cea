// What stands at a path when a write goes wrong: the old file or the new one, whole, and nothing beside it that the
// program could have taken away.
#include "core/files.h"
#include "fit/fit_builder.h"
#include "in_child.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <tuple>

namespace torvane {
namespace {

enum SystemCall : int {
    callWrite = SYS_write,
    callSync = SYS_fsync,
    callSyncVolume = SYS_syncfs,
#ifdef SYS_rename
    callRename = SYS_rename,
#else
    callRename = SYS_renameat,
#endif
};

// From now on a system call of this process fails with the error, or with 0 ends the process on the spot.
bool forbidCall(SystemCall call, int error)
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

TEST(WriteFaults, theOldFileStands)
{
    // error: 0: the process ends there
    constexpr int failed = static_cast<int>(FileResult::writeFailed);
    constexpr std::tuple<const char*, SystemCall, int, int> cases[] = {
        {"disk full", callWrite, ENOSPC, failed},           {"lost while it settles", callSync, EIO, failed},
        {"no right to rename", callRename, EACCES, failed}, {"ended while writing", callWrite, 0, -SIGSYS},
        {"ended before it settles", callSync, 0, -SIGSYS},  {"ended before the rename", callRename, 0, -SIGSYS},
    };
    for (const auto& [name, call, error, expected] : cases) {
        TestFolder folder;
        std::string path = folder.path + "file";
        writeBytes(path, Bytes(5000, 1));
        int result = inChild([&] {
            return forbidCall(call, error) ? static_cast<int>(replaceFile(path, {Bytes(9000, 2)})) : childCannotTry;
        });
        if (result == childCannotTry)
            GTEST_SKIP() << "this system lets no process forbid itself a call";
        EXPECT_EQ(result, expected) << name;
        EXPECT_EQ(bytesOf(path), Bytes(5000, 1)) << name;
        // A process that was ended cannot clear up; one that goes on does.
        EXPECT_EQ(folder.count(), error == 0 ? 2u : 1u) << name;
        EXPECT_EQ(replaceFile(path, {Bytes(9000, 2)}), FileResult::ok) << "what was left behind is in nobody's way";
        EXPECT_EQ(bytesOf(path), Bytes(9000, 2)) << name;
    }
}

TEST(WriteFaults, aVolumeIsFlushed)
{
    TestFolder folder;
    int result =
        inChild([&] { return forbidCall(callSyncVolume, 0) ? (flushVolumeOf(folder.path), 0) : childCannotTry; });
    EXPECT_TRUE(result == -SIGSYS || result == childCannotTry) << result;
}

TEST(WriteFaults, aFileWhosePiecesEndEarlyIsNotReplaced)
{
    TestFolder folder;
    std::string path = folder.path + "file";
    writeBytes(path, Bytes(5000, 1));
    auto giveUp = [&](const WritePiece& write, bool outOfMemory) {
        EXPECT_TRUE(write(Bytes(9000, 2)));
        EXPECT_EQ(bytesOf(path), Bytes(5000, 1)) << "while the pieces are made";
        return outOfMemory ? throw std::bad_alloc() : false;
    };
    EXPECT_EQ(replaceFile(path, [&](auto& write) { return giveUp(write, false); }), FileResult::writeFailed);
    EXPECT_THROW(replaceFile(path, [&](auto& write) { return giveUp(write, true); }), std::bad_alloc);
    EXPECT_EQ(bytesOf(path), Bytes(5000, 1));
    EXPECT_EQ(folder.count(), 1u);
}

} // namespace
} // namespace torvane

// The thread id a message records: the constructing thread's own, kept per thread, and a forked
// child's own after the fork (its only thread has a new id; the parent's must not leak into it).
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <thread>

#include <gtest/gtest.h>

#include "cmddata/cmddata.h"

TEST(ThreadId, EachThreadRecordsItsOwn) {
    const std::uint32_t here = CCmdBase(1).GetThreadId();
    std::uint32_t there = 0, thereAgain = 0;
    std::thread([&] {
        there = CCmdBase(1).GetThreadId();
        thereAgain = CCmdBaseInfo(2).GetThreadId();
    }).join();
    EXPECT_NE(here, 0u);
    EXPECT_NE(there, 0u);
    EXPECT_NE(there, here);
    EXPECT_EQ(thereAgain, there);
    EXPECT_EQ(CCmdBase(3).GetThreadId(), here);
}

TEST(ThreadId, AForkedChildRecordsItsOwn) {
    const std::uint32_t parent = CCmdBase(1).GetThreadId();  // cached in this process first
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // The child's only thread has the process's id as its own.
        const std::uint32_t id = CCmdBase(1).GetThreadId();
        _exit(id == static_cast<std::uint32_t>(getpid()) && id != parent ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

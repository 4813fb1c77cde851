// SPDX-License-Identifier: MIT
// What Start() leaves behind when the system gives no thread.
#include "UtilityDLL/runtime/Thread.h"

#include "Framework/system/WinThread.h"
#include "tests/support/NoThreads.h"
#include "tests/support/Resources.h"
#include "tests/support/Work.h"

#include <gtest/gtest.h>

namespace {

TEST(Thread_NoThread, FrameworkGivesNone) {
    const NoThreads none;
    EXPECT_EQ(nullptr, CWinThread::BeginSuspended([](void*) { return 0u; }, nullptr, 0));
}

TEST(Thread_NoThread, StartIsFalseAndTheWorkStaysUntilItIsGivenUp) {
    Thread thread;
    Counter work, other;
    {
        const NoThreads none;
        EXPECT_FALSE(thread.Start(&work));
        EXPECT_FALSE(thread.IsRunning());
        EXPECT_TRUE(thread.WaitForEnd());
    }
    EXPECT_FALSE(thread.Start(&other)); // that one has its place
    EXPECT_FALSE(thread.IsRunning());
    thread.Stop();
    EXPECT_FALSE(thread.Start(&other));
    thread.HandleEndThread();
    ASSERT_TRUE(thread.Start(&other)); // the lock was given back, too
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1u, thread.ExitCode());
    EXPECT_EQ(0, work.numSteps);
    EXPECT_EQ(1, other.numSteps);
}

TEST(Thread_NoThread, ThreadOfAFailedStartIsDestroyed) {
    Counter work;
    Thread thread;
    const NoThreads none;
    EXPECT_FALSE(thread.Start(&work));
}

TEST(Thread_NoThread, ManyFailedStartsLeaveNothingBehind) {
    const NoThreads none;
    Thread thread;
    Counter work;
    const auto fail = [&](int times) {
        for (int i = 0; i < times; ++i) {
            ASSERT_FALSE(thread.Start(&work));
            thread.HandleEndThread();
        }
    };
    fail(10);
    const Resources before = ResourcesInUse();
    fail(1000);
    const Resources after = ResourcesInUse();
    EXPECT_LE(after.threads, before.threads);
    EXPECT_NEAR(static_cast<double>(before.handles), static_cast<double>(after.handles), 20);
    EXPECT_LE(after.heap, before.heap + 4000); // four bytes a start
}

} // namespace

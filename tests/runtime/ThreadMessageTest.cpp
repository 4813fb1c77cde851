// SPDX-License-Identifier: MIT
// The message at the end of a run, from the worker through the host's event loop to the window.

#include "UtilityDLL/runtime/Thread.h"
#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <gtest/gtest.h>
#include <memory>
#include <mutex>

namespace {

/// Work that answers with these numbers one after another, each when it is let.
class Work : public ThreadObject {
public:
    explicit Work(std::vector<unsigned int> answers) : m_answers(std::move(answers)) {}

    /// Holds the next step back until Let().
    void Hold() { m_gate.lock(); }
    void Let() { m_gate.unlock(); }

    unsigned int Run(volatile bool*) override {
        const std::lock_guard lock(m_gate);
        return m_answers[m_steps++ % m_answers.size()];
    }

private:
    const std::vector<unsigned int> m_answers;
    std::size_t m_steps = 0;
    std::mutex m_gate;
};

const Received kEnd = {2029, 0, 0};

class ThreadMessage : public ::testing::Test {
protected:
    EventLoop m_loop;
    RecordingWindow m_window;

    void SetUp() override { ASSERT_TRUE(m_window.Create()); }

    // Until the window has as many messages, and then no more.
    void WaitFor(int count) {
        EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() >= count; }));
        m_loop.RunWhatWaits();
        EXPECT_EQ(std::vector(static_cast<std::size_t>(count), kEnd), m_window.received);
        EXPECT_EQ(0, m_window.inOtherThreads);
    }
};

} // namespace

TEST_F(ThreadMessage, HasTheNumberOfTheFirstUserMessageAnd1005) {
    EXPECT_EQ(1024u + 1005, Thread::END_MESSAGE);
}

TEST_F(ThreadMessage, ComesOnceWhenTheRunIsOver) {
    struct Row {
        std::vector<unsigned int> answers;
        unsigned int exitCode;
    };
    for (const Row& row : {Row{{2}, 1}, Row{{0}, 0}, Row{{1, 1, 1, 2}, 1}, Row{{1, 0}, 0}}) {
        Work work(row.answers);
        Thread thread;
        thread.SetCaller(&m_window);
        m_window.received.clear();
        m_window.onMessage = [&](const Received&) { // the state is idle by then
            EXPECT_FALSE(thread.IsRunning());
            EXPECT_EQ(row.exitCode, thread.ExitCode());
        };
        EXPECT_TRUE(thread.Start(&work));
        WaitFor(1);
        EXPECT_TRUE(thread.WaitForEnd());
    }
}

TEST_F(ThreadMessage, DoesNotComeBeforeTheLoopRuns) {
    Work work({2});
    Thread thread;
    thread.SetCaller(&m_window);
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(0, m_window.Count());
    WaitFor(1);
}

TEST_F(ThreadMessage, ComesAfterStopAndAfterAnException) {
    class Throwing : public ThreadObject {
        unsigned int Run(volatile bool*) override { throw 5; }
    } throwing;
    Work endless({1});
    Thread thread;
    thread.SetCaller(&m_window);
    EXPECT_TRUE(thread.Start(&endless));
    thread.Stop();
    WaitFor(1);
    EXPECT_EQ(1u, thread.ExitCode());
    EXPECT_TRUE(thread.Start(&throwing));
    WaitFor(2);
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST_F(ThreadMessage, GoesToNobodyWithoutACaller) {
    Work work({2});
    Thread thread;
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd());
    thread.SetCaller(&m_window);
    thread.SetCaller(nullptr);
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd());
    WaitFor(0);
}

TEST_F(ThreadMessage, GoesToWhoIsTheCallerAtTheEnd) {
    RecordingWindow earlier;
    ASSERT_TRUE(earlier.Create());
    Work work({2});
    work.Hold();
    Thread thread;
    thread.SetCaller(&earlier);
    EXPECT_TRUE(thread.Start(&work));
    thread.SetCaller(&m_window);
    work.Let();
    WaitFor(1);
    EXPECT_EQ(0, earlier.Count());
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST_F(ThreadMessage, WindowWithoutCreateGetsNothing) {
    RecordingWindow never;
    Work work({2});
    Thread thread;
    thread.SetCaller(&never);
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd());
    m_loop.RunWhatWaits();
    EXPECT_EQ(0, never.Count());
}

TEST_F(ThreadMessage, DestroyedCallerIsNotTouched) {
    for (int i = 0; i < 50; ++i) {
        auto caller = std::make_unique<RecordingWindow>();
        ASSERT_TRUE(caller->Create());
        Work work({2});
        work.Hold();
        Thread thread;
        thread.SetCaller(caller.get());
        EXPECT_TRUE(thread.Start(&work));
        if (i % 2) work.Let(); // the message races with the end of the window
        caller.reset();
        if (i % 2 == 0) work.Let();
        EXPECT_TRUE(thread.WaitForEnd());
        m_loop.RunWhatWaits();
    }
}

TEST_F(ThreadMessage, RunMayBeginAgainInTheMessage) {
    constexpr int runs = 100;
    Work work({1, 2});
    Thread thread;
    thread.SetCaller(&m_window);
    m_window.onMessage = [&](const Received&) {
        if (m_window.Count() == runs) return;
        EXPECT_TRUE(thread.Start(&work));
    };
    EXPECT_TRUE(thread.Start(&work));
    WaitFor(runs);
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST_F(ThreadMessage, ThreadMayBeDestroyedInTheMessage) {
    Work work({2});
    auto thread = std::make_unique<Thread>();
    thread->SetCaller(&m_window);
    m_window.onMessage = [&](const Received&) { thread.reset(); };
    EXPECT_TRUE(thread->Start(&work));
    WaitFor(1);
    EXPECT_EQ(nullptr, thread);
}

TEST_F(ThreadMessage, TwoThreadsTellOneWindow) {
    constexpr int runs = 100;
    Work firstWork({2}), secondWork({2});
    Thread first, second;
    for (Thread* const thread : {&first, &second}) thread->SetCaller(&m_window);
    for (int i = 0; i < runs; ++i) {
        EXPECT_TRUE(first.Start(&firstWork));
        EXPECT_TRUE(second.Start(&secondWork));
        EXPECT_TRUE(first.WaitForEnd());
        EXPECT_TRUE(second.WaitForEnd());
    }
    WaitFor(2 * runs);
}

TEST_F(ThreadMessage, HandleEndThreadSendsItAtOnce) {
    Work work({2});
    work.Hold();
    Thread thread;
    thread.SetCaller(&m_window);
    EXPECT_TRUE(thread.Start(&work));
    thread.HandleEndThread();
    EXPECT_FALSE(thread.IsRunning());
    WaitFor(1);
    work.Let();
    EXPECT_TRUE(thread.WaitForEnd()); // the worker that was given up says nothing
    WaitFor(1);
}

// SPDX-License-Identifier: MIT
// The queue between threads and a window, without a system behind it: what ThreadSanitizer can follow to the
// end.

#include "Framework/windows/private/MessageQueue.h"
#include "tests/support/StartLine.h"

#include <condition_variable>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

/// A window that counts how often it was woken.
class CountingWindow final : public Wakeable {
public:
    bool isRefusing = false;

    bool Wake() override {
        const std::lock_guard lock(m_guard);
        if (isRefusing) return false;
        ++m_wakes;
        m_woken.notify_one();
        return true;
    }

    int Wakes() const {
        const std::lock_guard lock(m_guard);
        return m_wakes;
    }

    /// As an event loop does.
    void WaitForWake() {
        std::unique_lock lock(m_guard);
        m_woken.wait(lock, [&] { return m_wakes > 0; });
        --m_wakes;
    }

private:
    mutable std::mutex m_guard;
    std::condition_variable m_woken;
    int m_wakes = 0;
};

constexpr MessageQueue::Message kMessage = {1024, 1, 2};

} // namespace

TEST(MessageQueue, TakesNothingInWhileClosed) {
    MessageQueue queue;
    CountingWindow window;
    EXPECT_FALSE(queue.Post(kMessage));
    queue.Open(window);
    EXPECT_TRUE(queue.Post(kMessage));
    queue.Close();
    EXPECT_FALSE(queue.Post(kMessage));
    EXPECT_FALSE(queue.Take());
    queue.Open(window);
    EXPECT_FALSE(queue.Take());
    EXPECT_EQ(1, window.Wakes());
}

TEST(MessageQueue, WakesOnceForEachMessageTaken) {
    MessageQueue queue;
    CountingWindow window;
    queue.Open(window);
    for (WPARAM i = 0; i < 3; ++i) EXPECT_TRUE(queue.Post({1024, i, 0}));
    for (WPARAM i = 0; i < 3; ++i) {
        EXPECT_EQ(static_cast<int>(i) + 1, window.Wakes());
        const auto message = queue.Take();
        ASSERT_TRUE(message);
        EXPECT_EQ(i, message->wParam);
    }
    EXPECT_EQ(3, window.Wakes());
    EXPECT_FALSE(queue.Take());
    EXPECT_TRUE(queue.Post(kMessage));
    EXPECT_EQ(4, window.Wakes());
}

TEST(MessageQueue, KeepsNoMessageThatCannotWake) {
    MessageQueue queue;
    CountingWindow window;
    queue.Open(window);
    window.isRefusing = true;
    EXPECT_FALSE(queue.Post(kMessage));
    window.isRefusing = false;
    EXPECT_FALSE(queue.Take());
    EXPECT_TRUE(queue.Post(kMessage));
    EXPECT_TRUE(queue.Take());
}

TEST(MessageQueue, ThreadsMeetAtIt) {
    constexpr int numThreads = 4, count = 2'000;
    MessageQueue queue;
    CountingWindow window;
    queue.Open(window);
    StartLine line(numThreads);
    std::vector<std::jthread> threads;
    threads.reserve(numThreads);
    for (int thread = 0; thread < numThreads; ++thread)
        threads.emplace_back([&, thread] {
            line.ArriveAndWait();
            for (int i = 0; i < count; ++i) EXPECT_TRUE(queue.Post({1024, static_cast<WPARAM>(thread), i}));
        });
    std::vector<LPARAM> next(numThreads, 0);
    for (int i = 0; i < numThreads * count; ++i) {
        window.WaitForWake();
        const auto message = queue.Take();
        ASSERT_TRUE(message);
        ASSERT_EQ(next[message->wParam]++, message->lParam);
    }
    EXPECT_EQ(0, window.Wakes());
    EXPECT_FALSE(queue.Take());
}

TEST(MessageQueue, WindowIsLeftAloneWhenCloseReturns) {
    constexpr int numThreads = 4;
    MessageQueue queue;
    StartLine line(numThreads + 1);
    std::vector<std::jthread> threads;
    threads.reserve(numThreads);
    for (int i = 0; i < numThreads; ++i)
        threads.emplace_back([&](const std::stop_token& stop) {
            line.ArriveAndWait();
            while (!stop.stop_requested()) {
                (void)queue.Post(kMessage);
                std::this_thread::yield(); // others want the queue too
            }
        });
    line.ArriveAndWait();
    for (int i = 0; i < 200; ++i) {
        const auto window = std::make_unique<CountingWindow>();
        queue.Open(*window);
        window->WaitForWake();
        EXPECT_TRUE(queue.Take());
        queue.Close();
    }
}

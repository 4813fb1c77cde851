// SPDX-License-Identifier: MIT
#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"
#include "tests/support/StartLine.h"

#include <atomic>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <stdexcept>

namespace {

class Wnd : public ::testing::Test {
protected:
    EventLoop m_loop;

    static std::unique_ptr<RecordingWindow> Made() {
        auto window = std::make_unique<RecordingWindow>();
        const ErrorString made = window->Create();
        EXPECT_TRUE(made) << std::string(made.Text().begin(), made.Text().end());
        return window;
    }

    // Until the window has `count` messages; then whatever else there is has been handled as well.
    void WaitFor(const RecordingWindow& window, int count) {
        EXPECT_TRUE(m_loop.RunUntil([&] { return window.Count() >= count; }));
        m_loop.RunWhatWaits();
        EXPECT_EQ(count, window.Count());
        EXPECT_EQ(0, window.inOtherThreads);
    }
};

} // namespace

TEST_F(Wnd, HasAWindowFromCreateToDestroy) {
    RecordingWindow window;
    EXPECT_EQ(nullptr, window.NativeHandle());
    EXPECT_FALSE(window.PostMessage(2029));
    const std::shared_ptr<MessageTarget> target = window.Target();
    EXPECT_FALSE(target->Post(2029, 0, 0));

    EXPECT_TRUE(window.Create());
    EXPECT_NE(nullptr, window.NativeHandle());
    EXPECT_EQ(target, window.Target());
    EXPECT_TRUE(target->Post(2029, 0, 0));
    WaitFor(window, 1);

    window.DestroyWindow();
    EXPECT_EQ(nullptr, window.NativeHandle());
    EXPECT_FALSE(target->Post(2029, 0, 0));
    EXPECT_FALSE(window.PostMessageW(2029));
    window.DestroyWindow();

    EXPECT_TRUE(window.Create());
    EXPECT_TRUE(target->Post(2030, 0, 0));
    WaitFor(window, 2);
}

TEST_F(Wnd, CreatedTwiceIsOneWindow) {
    const auto window = Made();
    void* const handle = window->NativeHandle();
    EXPECT_TRUE(window->PostMessage(1, 2, 3));
    EXPECT_TRUE(window->Create());
    EXPECT_EQ(handle, window->NativeHandle());
    WaitFor(*window, 1);
}

TEST_F(Wnd, MessagesComeWholeAndInOrderOutOfTheLoop) {
    const std::vector<Received> messages = {
        {2029, 0, 0},
        {1024, std::numeric_limits<WPARAM>::max(), std::numeric_limits<LPARAM>::min()},
        {1024, 0x123456789ABCDEF0, std::numeric_limits<LPARAM>::max()},
        {0, 1, -1}, // numbers that a system uses for itself are as good as any
        {2, 0, 0},
        {16, 0, 0},
        {0xFFFFFFFF, 3, 4},
        {2029, 0, 0}, // the same again is another one
    };
    const auto window = Made();
    for (const Received& m : messages) EXPECT_TRUE(window->PostMessage(m.message, m.wParam, m.lParam));
    EXPECT_EQ(0, window->Count()); // not before the loop runs
    WaitFor(*window, static_cast<int>(messages.size()));
    EXPECT_EQ(messages, window->received);
}

TEST_F(Wnd, HundredThousandMessagesWait) {
    constexpr int count = 100'000;
    const auto window = Made();
    for (int i = 0; i < count; ++i) ASSERT_TRUE(window->PostMessage(1024, static_cast<WPARAM>(i), -i)) << i;
    WaitFor(*window, count);
    for (int i = 0; i < window->Count(); ++i)
        ASSERT_EQ((Received{1024, static_cast<WPARAM>(i), -i}),
                  window->received[static_cast<std::size_t>(i)]);
}

TEST_F(Wnd, EveryThreadMayPost) {
    constexpr int numThreads = 4, count = 2'000;
    const auto window = Made();
    StartLine line(numThreads);
    {
        std::vector<std::jthread> threads;
        threads.reserve(numThreads);
        for (int thread = 0; thread < numThreads; ++thread)
            threads.emplace_back([&, thread] {
                line.ArriveAndWait();
                for (int i = 0; i < count; ++i)
                    EXPECT_TRUE(window->Target()->Post(1024, static_cast<WPARAM>(thread), i));
            });
        EXPECT_TRUE(m_loop.RunUntil([&] { return window->Count() == numThreads * count; }));
    }
    WaitFor(*window, numThreads * count);
    std::vector<LPARAM> next(numThreads, 0);
    for (const Received& received : window->received) ASSERT_EQ(next[received.wParam]++, received.lParam);
}

TEST_F(Wnd, TwoWindowsGetTheirOwn) {
    const auto first = Made(), second = Made();
    EXPECT_NE(first->NativeHandle(), second->NativeHandle());
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(first->PostMessage(1024, 1, i));
        EXPECT_TRUE(second->PostMessage(1024, 2, i));
    }
    WaitFor(*first, 3);
    WaitFor(*second, 3);
    for (const Received& received : first->received) EXPECT_EQ(1u, received.wParam);
    for (const Received& received : second->received) EXPECT_EQ(2u, received.wParam);
}

TEST_F(Wnd, DestroyedWindowDropsWhatWaits) {
    const auto window = Made();
    for (int i = 0; i < 100; ++i) EXPECT_TRUE(window->PostMessage(1024));
    window->DestroyWindow();
    m_loop.RunWhatWaits();
    EXPECT_TRUE(window->Create()); // not for the next window either
    EXPECT_TRUE(window->PostMessage(1025));
    WaitFor(*window, 1);
    EXPECT_EQ(1025u, window->received[0].message);
}

TEST_F(Wnd, TargetOutlivesTheWindow) {
    auto window = Made();
    const std::shared_ptr<MessageTarget> target = window->Target();
    EXPECT_TRUE(target->Post(1024, 0, 0));
    window.reset();
    EXPECT_FALSE(target->Post(1024, 0, 0));
    m_loop.RunWhatWaits();
}

TEST_F(Wnd, WindowMayBeDestroyedInItsOwnMessage) {
    const auto window = Made();
    window->onMessage = [&](const Received&) { window->DestroyWindow(); };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(window->PostMessage(1024));
    WaitFor(*window, 1);
    EXPECT_EQ(nullptr, window->NativeHandle());
    EXPECT_FALSE(window->PostMessage(1024));
}

TEST_F(Wnd, WindowMayBeMadeAnewInItsOwnMessage) {
    const auto window = Made();
    window->onMessage = [&](const Received& received) {
        if (received.message != 1024) return;
        window->DestroyWindow();
        EXPECT_TRUE(window->Create());
        EXPECT_TRUE(window->PostMessage(1025));
    };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(window->PostMessage(1024));
    WaitFor(*window, 2);
    EXPECT_EQ(1025u, window->received[1].message);
}

TEST_F(Wnd, WindowMayDeleteItselfInItsOwnMessage) {
    auto* const window = Made().release();
    const std::shared_ptr<MessageTarget> target = window->Target();
    int calls = 0;
    window->onMessage = [&calls, window](const Received&) {
        ++calls;
        delete window;
    };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(target->Post(1024, 0, 0));
    EXPECT_TRUE(m_loop.RunUntil([&] { return calls > 0; }));
    m_loop.RunWhatWaits();
    EXPECT_EQ(1, calls);
    EXPECT_FALSE(target->Post(1024, 0, 0));
}

TEST_F(Wnd, WindowMayDeleteItselfInALoopOfItsOwnMessage) {
    auto* const window = Made().release();
    const std::shared_ptr<MessageTarget> target = window->Target();
    int calls = 0;
    bool isBack = false;
    window->onMessage = [&, window](const Received& received) {
        ++calls;
        if (received.message == 1025) {
            delete window;
            return;
        }
        EXPECT_TRUE(m_loop.RunUntil([&] { return calls == 2; }));
        m_loop.RunWhatWaits();
        isBack = true;
    };
    for (const UINT message : {1024u, 1025u, 1026u}) EXPECT_TRUE(target->Post(message, 0, 0));
    EXPECT_TRUE(m_loop.RunUntil([&] { return isBack; }));
    EXPECT_EQ(2, calls);
}

TEST_F(Wnd, OneWindowMayDestroyAnother) {
    auto other = Made();
    const auto window = Made();
    window->onMessage = [&](const Received&) { other.reset(); };
    int calls = 0;
    other->onMessage = [&](const Received&) { ++calls; };
    EXPECT_TRUE(window->PostMessage(1024));
    EXPECT_TRUE(other->PostMessage(1024));
    WaitFor(*window, 1);
    EXPECT_EQ(nullptr, other);
    EXPECT_EQ(0, calls);
}

TEST_F(Wnd, MessagesComeInALoopInsideAMessage) {
    const auto window = Made();
    window->onMessage = [&](const Received& received) {
        if (received.wParam != 0) return;
        EXPECT_TRUE(m_loop.RunUntil([&] { return window->Count() == 3; }));
    };
    for (WPARAM i = 0; i < 3; ++i) EXPECT_TRUE(window->PostMessage(1024, i));
    WaitFor(*window, 3);
    EXPECT_EQ(2u, window->received[2].wParam);
}

TEST_F(Wnd, ExceptionEndsAtTheWindow) {
    const auto window = Made();
    window->onMessage = [&](const Received& received) {
        if (received.wParam == 1) throw std::runtime_error("for nobody");
        if (received.wParam == 2) throw 5;
    };
    for (WPARAM i = 1; i < 4; ++i) EXPECT_TRUE(window->PostMessage(1024, i));
    EXPECT_NO_THROW(WaitFor(*window, 3));
}

TEST_F(Wnd, WindowThatPostsToItselfLeavesTheLoopToOthers) {
    const auto restless = Made(), window = Made();
    bool isOver = false;
    restless->onMessage = [&](const Received&) {
        if (isOver) return;
        EXPECT_TRUE(restless->PostMessage(1024));
        if (restless->Count() != 10) return;
        EXPECT_TRUE(window->PostMessage(1025));
    };
    EXPECT_TRUE(restless->PostMessage(1024));
    EXPECT_TRUE(m_loop.RunUntil([&] { return window->Count() == 1 && restless->Count() > 100; }));
    isOver = true;
    m_loop.RunWhatWaits();
}

TEST_F(Wnd, WindowMayGoWhileThreadsPost) {
    constexpr int numThreads = 4;
    std::vector<std::unique_ptr<RecordingWindow>> windows(200);
    for (auto& window : windows) window = Made();
    std::vector<std::shared_ptr<MessageTarget>> targets;
    targets.reserve(windows.size());
    for (const auto& window : windows) targets.push_back(window->Target());

    std::atomic<int> left = numThreads;
    StartLine line(numThreads + 1);
    std::vector<std::jthread> threads;
    threads.reserve(numThreads);
    for (int i = 0; i < numThreads; ++i)
        threads.emplace_back([&] {
            line.ArriveAndWait();
            for (const auto& target : targets)
                while (target->Post(1024, 0, 0)) std::this_thread::yield();
            --left;
        });
    line.ArriveAndWait();
    for (auto& window : windows) {
        EXPECT_TRUE(m_loop.RunUntil([&] { return window->Count() > 0; })); // somebody is at it
        window.reset();
    }
    EXPECT_TRUE(m_loop.RunUntil([&] { return left == 0; }));
}

// SPDX-License-Identifier: MIT
// What becomes of windows in the hands of the system: other messages, its own functions, full queues.

#include <windows.h> // before the library's header, as hosts have it

#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <gtest/gtest.h>

namespace {

HWND Handle(const CWnd& window) { return static_cast<HWND>(window.NativeHandle()); }

class Wnd_MessageLoop : public ::testing::Test {
protected:
    EventLoop m_loop;
    RecordingWindow m_window;

    void SetUp() override { ASSERT_TRUE(m_window.Create()); }

    void ExpectGone() {
        EXPECT_EQ(nullptr, m_window.NativeHandle());
        EXPECT_FALSE(m_window.PostMessage(2029));
        m_loop.RunWhatWaits();
        EXPECT_EQ(0, m_window.Count());
        EXPECT_TRUE(m_window.Create());
        ExpectDelivery();
    }

    void ExpectDelivery() {
        EXPECT_TRUE(m_window.PostMessage(2029, 1, 2));
        EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() > 0; }));
        m_loop.RunWhatWaits();
        EXPECT_EQ((std::vector{Received{2029, 1, 2}}), m_window.received);
    }
};

} // namespace

TEST_F(Wnd_MessageLoop, WindowIsHiddenAndBelongsToTheThread) {
    EXPECT_TRUE(IsWindow(Handle(m_window)));
    EXPECT_FALSE(IsWindowVisible(Handle(m_window)));
    EXPECT_EQ(GetCurrentThreadId(), GetWindowThreadProcessId(Handle(m_window), nullptr));
    const HWND handle = Handle(m_window);
    m_window.DestroyWindow();
    EXPECT_FALSE(IsWindow(handle));
}

TEST_F(Wnd_MessageLoop, HostMayDestroyTheWindow) {
    EXPECT_TRUE(m_window.PostMessage(2030)); // waits, and is dropped
    EXPECT_TRUE(DestroyWindow(Handle(m_window)));
    ExpectGone();
}

TEST_F(Wnd_MessageLoop, ClosedWindowIsGone) {
    SendMessageW(Handle(m_window), WM_CLOSE, 0, 0);
    ExpectGone();
}

TEST_F(Wnd_MessageLoop, HostMayDestroyTheWindowInAMessage) {
    m_window.onMessage = [&](const Received&) { EXPECT_TRUE(DestroyWindow(Handle(m_window))); };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(m_window.PostMessage(2029));
    EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() > 0; }));
    m_loop.RunWhatWaits();
    EXPECT_EQ(1, m_window.Count());
    EXPECT_EQ(nullptr, m_window.NativeHandle());
}

TEST_F(Wnd_MessageLoop, MessagesForHostsReachTheHandleToo) {
    const HWND handle = Handle(m_window);
    EXPECT_TRUE(PostMessageW(handle, 2029, 1, -1));
    EXPECT_TRUE(PostMessageW(handle, WM_USER - 1, 0, 0)); // the system's own
    EXPECT_TRUE(PostMessageW(handle, 0xC000, 0, 0));      // registered by name
    EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() > 0; }));
    m_loop.RunWhatWaits();
    EXPECT_EQ(7, SendMessageW(handle, WM_USER, 2, 0));
    EXPECT_EQ((std::vector<Received>{{2029, 1, -1}, {WM_USER, 2, 0}}), m_window.received);
}

TEST_F(Wnd_MessageLoop, ExceptionOutOfASentMessageAnswersNothing) {
    m_window.onMessage = [](const Received&) { throw 5; };
    EXPECT_EQ(0, SendMessageW(Handle(m_window), WM_USER, 0, 0));
    m_window.onMessage = {};
    EXPECT_EQ(7, SendMessageW(Handle(m_window), WM_USER, 0, 0));
}

TEST_F(Wnd_MessageLoop, LoopThatLooksAtOneMessageDelivers) {
    EXPECT_TRUE(m_window.PostMessage(2029));
    MSG message;
    ASSERT_TRUE(GetMessageW(&message, Handle(m_window), 0, 0) > 0);
    DispatchMessageW(&message);
    EXPECT_EQ(1, m_window.Count());
}

TEST_F(Wnd_MessageLoop, EndOfTheThreadEndsItsWindows) {
    RecordingWindow window;
    std::thread([&] { EXPECT_TRUE(window.Create()); }).join();
    EXPECT_FALSE(window.PostMessage(2029));
    window.DestroyWindow();
    EXPECT_EQ(nullptr, window.NativeHandle());
}

TEST_F(Wnd_MessageLoop, FullQueueOfTheThreadLosesNothingThatWasTakenIn) {
    // The host's own messages fill the queue; where the system has no limit, that cannot be asked.
    const auto fill = [] {
        for (int i = 0; i < 100'000; ++i)
            if (!PostThreadMessageW(GetCurrentThreadId(), WM_USER, 0, 0)) return true;
        return false;
    };
    EXPECT_TRUE(m_window.PostMessage(2029, 0));
    EXPECT_TRUE(m_window.PostMessage(2029, 1));
    m_window.onMessage = [&](const Received& received) {
        if (received.wParam == 0) (void)fill(); // the next wake-up came before
        if (received.wParam == 1) m_window.Target()->Post(2029, 2, 0);
    };
    const bool isLimited = fill();
    EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() == 3; }));
    if (!isLimited) GTEST_SKIP() << "the system takes in 100,000 messages";
    EXPECT_TRUE(fill());
    EXPECT_TRUE(m_window.PostMessage(2029, 3)); // by a timer, in the window's own thread
    bool isPosted = true;
    std::thread([&] { isPosted = m_window.Target()->Post(2029, 4, 0); }).join();
    EXPECT_TRUE(isPosted); // behind the third, for which the window is woken already
    EXPECT_TRUE(m_loop.RunUntil([&] { return m_window.Count() == 5; }));
}

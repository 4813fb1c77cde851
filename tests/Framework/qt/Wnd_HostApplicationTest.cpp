// SPDX-License-Identifier: MIT
// What becomes of windows as the QApplication and its widgets come and go.

#include "VelmBase/WideString.h"
#include "tests/support/EventLoop.h"
#include "tests/support/RecordingWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <gmock/gmock.h>
#include <string>

using ::testing::HasSubstr;

namespace {

std::string CreationError(CWnd& window) {
    const ErrorString made = window.Create();
    EXPECT_FALSE(made);
    EXPECT_EQ(nullptr, window.NativeHandle());
    EXPECT_FALSE(window.PostMessage(2029));
    return ToUtf8(made.Text());
}

QWidget* Widget(const CWnd& window) { return static_cast<QWidget*>(window.NativeHandle()); }

// The window works.
void ExpectDelivery(EventLoop& loop, RecordingWindow& window) {
    window.received.clear();
    EXPECT_TRUE(window.PostMessage(2029, 1, 2));
    EXPECT_TRUE(loop.RunUntil([&] { return window.Count() > 0; }));
    loop.RunWhatWaits();
    EXPECT_EQ((std::vector{Received{2029, 1, 2}}), window.received);
}

} // namespace

TEST(Wnd_HostApplication, CreateSaysThatThereIsNoApplication) {
    RecordingWindow window;
    EXPECT_EQ("Windows cannot be made: there is no QApplication", CreationError(window));
    EventLoop loop;
    EXPECT_TRUE(window.Create());
    ExpectDelivery(loop, window);
}

TEST(Wnd_HostApplication, ApplicationWithoutWidgetsIsNone) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    RecordingWindow window;
    EXPECT_THAT(CreationError(window), HasSubstr("no QApplication"));
}

TEST(Wnd_HostApplication, OtherThreadsMakeNoWindows) {
    EventLoop loop;
    RecordingWindow window;
    std::string error;
    std::thread([&] { error = CreationError(window); }).join();
    EXPECT_EQ("Windows can be made by the thread of the QApplication only", error);
    EXPECT_TRUE(window.Create());
}

TEST(Wnd_HostApplication, WindowIsAHiddenWidget) {
    const EventLoop loop;
    CWnd window;
    EXPECT_TRUE(window.Create());
    EXPECT_TRUE(Widget(window)->isWindow());
    EXPECT_TRUE(Widget(window)->isHidden());
}

TEST(Wnd_HostApplication, WindowOutlivesApplications) {
    RecordingWindow window;
    for (int i = 0; i < 3; ++i) {
        {
            EventLoop loop;
            EXPECT_TRUE(window.Create());
            ExpectDelivery(loop, window);
            EXPECT_TRUE(window.PostMessage(2030)); // waits when the application goes
        }
        EXPECT_EQ(nullptr, window.NativeHandle());
        EXPECT_FALSE(window.PostMessage(2029));
        EXPECT_EQ(1, window.Count());
    }
    window.DestroyWindow();
}

TEST(Wnd_HostApplication, ThreadsMayPostWhileTheApplicationGoes) {
    for (int i = 0; i < 20; ++i) {
        RecordingWindow window;
        std::jthread thread;
        {
            EventLoop loop;
            EXPECT_TRUE(window.Create());
            thread = std::jthread([target = window.Target()] {
                while (target->Post(2029, 0, 0)) std::this_thread::yield();
            });
            EXPECT_TRUE(loop.RunUntil([&] { return window.Count() > 0; }));
        }
    }
}

TEST(Wnd_HostApplication, WindowThatLeftInALoopDoesNotOutliveTheApplication) {
    QPointer<QWidget> widget;
    {
        EventLoop loop;
        RecordingWindow window;
        EXPECT_TRUE(window.Create());
        widget = Widget(window);
        window.onMessage = [&](const Received&) {
            window.DestroyWindow();
            EXPECT_NE(nullptr, widget); // it is at work just now
        };
        EXPECT_TRUE(window.PostMessage(2029));
        EXPECT_TRUE(loop.RunUntil([&] { return window.Count() > 0; }));
    }
    EXPECT_EQ(nullptr, widget);
}

TEST(Wnd_HostApplication, HostMayDeleteTheWidget) {
    EventLoop loop;
    RecordingWindow window;
    EXPECT_TRUE(window.Create());
    EXPECT_TRUE(window.PostMessage(2030));
    delete Widget(window);
    EXPECT_EQ(nullptr, window.NativeHandle());
    EXPECT_FALSE(window.PostMessage(2029));
    loop.RunWhatWaits();
    EXPECT_EQ(0, window.Count());
    EXPECT_TRUE(window.Create());
    ExpectDelivery(loop, window);
}

TEST(Wnd_HostApplication, HostMayDeleteTheWidgetInAMessage) {
    EventLoop loop;
    RecordingWindow window;
    EXPECT_TRUE(window.Create());
    window.onMessage = [&](const Received&) { delete Widget(window); };
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(window.PostMessage(2029));
    EXPECT_TRUE(loop.RunUntil([&] { return window.Count() > 0; }));
    loop.RunWhatWaits();
    EXPECT_EQ(1, window.Count());
    EXPECT_EQ(nullptr, window.NativeHandle());
}

TEST(Wnd_HostApplication, HostMayPlaceTheWidget) {
    EventLoop loop;
    RecordingWindow window;
    EXPECT_TRUE(window.Create());
    {
        QWidget host;
        Widget(window)->setParent(&host);
        host.show();
        ExpectDelivery(loop, window);
    }
    EXPECT_EQ(nullptr, window.NativeHandle());
    EXPECT_FALSE(window.PostMessage(2029));
}

TEST(Wnd_HostApplication, WindowTakesItsPlacedWidgetAlong) {
    const EventLoop loop;
    QWidget host;
    {
        CWnd window;
        EXPECT_TRUE(window.Create());
        Widget(window)->setParent(&host);
        EXPECT_EQ(1, host.children().size());
    }
    EXPECT_TRUE(host.children().isEmpty());
}

TEST(Wnd_HostApplication, ClosedWidgetStaysAWindow) {
    EventLoop loop;
    RecordingWindow window;
    EXPECT_TRUE(window.Create());
    Widget(window)->show();
    Widget(window)->close();
    EXPECT_NE(nullptr, window.NativeHandle());
    ExpectDelivery(loop, window);
}

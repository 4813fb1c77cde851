// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

/// What a host with windows has: on Linux a QApplication, on Windows the thread's message queue. One at a
/// time, in the thread that runs the tests.
///
/// Tests that include this are linked with Qt on Linux, and not built where it is not installed.
/// ThreadSanitizer does not run them: Qt is not built for it, so that it cannot see how Qt's threads wait for
/// each other.
class EventLoop {
public:
    EventLoop();
    ~EventLoop();
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;

    /// Runs until `isDone`, or until two minutes are over. Returns what `isDone` says at the end. May be
    /// called while it runs.
    bool RunUntil(const std::function<bool()>& isDone);

    /// Handles what waits, also what comes to wait by that, and returns.
    void RunWhatWaits();
};

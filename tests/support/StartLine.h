// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>

/// Where threads wait for each other before they begin. Not std::latch: with the C++ runtime of the Windows
/// build a thread that begins to wait just as the last one arrives is never woken.
class StartLine {
public:
    explicit StartLine(int numThreads) : m_missing(numThreads) {}

    void ArriveAndWait() {
        std::unique_lock lock(m_guard);
        if (--m_missing == 0) m_all.notify_all();
        m_all.wait(lock, [&] { return m_missing <= 0; });
    }

private:
    std::mutex m_guard;
    std::condition_variable m_all;
    int m_missing;
};

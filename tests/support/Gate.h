// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>

/// Closed until somebody opens it; then everybody who waits goes on, and nobody waits any more.
class Gate {
public:
    void Open() {
        const std::lock_guard lock(m_guard);
        m_isOpen = true;
        m_opened.notify_all();
    }
    void Wait() {
        std::unique_lock lock(m_guard);
        m_opened.wait(lock, [&] { return m_isOpen; });
    }

private:
    std::mutex m_guard;
    std::condition_variable m_opened;
    bool m_isOpen = false;
};

// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeWindow.h"

#include <deque>
#include <mutex>
#include <optional>

/// The messages that wait for a window: left by any thread, taken one by one by the window's own. The window
/// is woken once for each, the next time only when one was taken: its event loop then has one entry of them
/// at most, however many there are, and gets to everything else in between.
class MessageQueue {
public:
    struct Message {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    /// From here on messages are taken in, and `window` is woken for them.
    void Open(Wakeable& window) {
        const std::lock_guard lock(m_guard);
        m_window = &window;
    }

    /// Drops what waits and refuses what comes. The window is not used any more when this returns.
    void Close() {
        const std::lock_guard lock(m_guard);
        m_window = nullptr;
        m_waiting.clear();
    }

    /// See MessageTarget::Post().
    bool Post(const Message& message) {
        const std::lock_guard lock(m_guard);
        if (!m_window) return false;
        try {
            m_waiting.push_back(message);
            if (m_waiting.size() > 1 || m_window->Wake()) return true;
            m_waiting.pop_back();
        } catch (...) { // no memory: the deque is then as it was
        }
        return false;
    }

    /// The oldest message, to be called when the window was woken; none when it was dropped since.
    std::optional<Message> Take() {
        const std::lock_guard lock(m_guard);
        if (!m_window || m_waiting.empty()) return std::nullopt;
        const Message message = m_waiting.front();
        m_waiting.pop_front();
        // Before the message is handled: its handler may run an event loop of its own.
        if (!m_waiting.empty()) (void)m_window->Wake();
        return message;
    }

private:
    std::mutex m_guard;
    std::deque<Message> m_waiting;
    Wakeable* m_window = nullptr; // null while closed
};

// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/Wnd.h"

#include <functional>
#include <ostream>
#include <thread>
#include <vector>

/// What a window got.
struct Received {
    UINT message;
    WPARAM wParam = 0;
    LPARAM lParam = 0;

    bool operator==(const Received&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Received& received) {
        return out << received.message << ' ' << received.wParam << ' ' << received.lParam;
    }
};

/// Keeps the messages that it gets, all of which have to come in the thread that made it.
class RecordingWindow : public CWnd {
public:
    std::vector<Received> received;
    int inOtherThreads = 0;
    std::function<void(const Received&)> onMessage; // called for each, when it was kept

    int Count() const { return static_cast<int>(received.size()); }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        received.push_back({message, wParam, lParam});
        if (std::this_thread::get_id() != m_thread) ++inOtherThreads;
        const auto call = onMessage; // the call may destroy this window
        if (call) call({message, wParam, lParam});
        return 7;
    }

private:
    const std::thread::id m_thread = std::this_thread::get_id();
};

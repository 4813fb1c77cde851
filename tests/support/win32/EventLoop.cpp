// SPDX-License-Identifier: MIT
#include "tests/support/EventLoop.h"

#include <windows.h>

EventLoop::EventLoop() = default;
EventLoop::~EventLoop() { RunWhatWaits(); } // none of it is for the next test

bool EventLoop::RunUntil(const std::function<bool()>& isDone) {
    const ULONGLONG end = GetTickCount64() + 120'000;
    const UINT_PTR look = SetTimer(nullptr, 0, 10, nullptr);
    MSG message;
    while (!isDone() && GetTickCount64() < end && GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, look);
    return isDone();
}

void EventLoop::RunWhatWaits() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>
#include <string>
#include <windows.h>

namespace {

// Under Wine a desktop stays on the display of the program that made it, and is nowhere when that had none. A
// program that has a display makes one of its own there, before its first window.
void MoveToTheDisplay() {
    if (GetEnvironmentVariableW(L"DISPLAY", nullptr, 0) == 0) return;
    const std::wstring name = L"Test" + std::to_wstring(GetCurrentProcessId());
    const HDESK desktop = CreateDesktopW(name.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    EXPECT_TRUE(desktop && SetThreadDesktop(desktop)) << GetLastError();
}

} // namespace

EventLoop::EventLoop() {
    static const bool isMoved = (MoveToTheDisplay(), true);
    static_cast<void>(isMoved);
}
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

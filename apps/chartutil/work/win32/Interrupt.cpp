// SPDX-License-Identifier: MIT
#include "apps/chartutil/work/Interrupt.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <windows.h>

namespace {

std::atomic<bool> requested{false};

std::mutex guard;
HANDLE reader = nullptr; // the thread that waits for standard input

// The wait cannot be left from outside before it has begun, so this is tried until the reader is out of it.
void WakeReader() {
    constexpr DWORD kPause = 5;
    for (;; Sleep(kPause)) {
        const std::lock_guard lock(guard);
        if (!reader) return;
        CancelSynchronousIo(reader);
    }
}

// The system calls it in a thread of its own.
BOOL WINAPI OnEvent(DWORD event) {
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    if (requested.exchange(true) && isKey) return FALSE; // the system's handler ends the program
    WakeReader();
    // The system ends the program when this returns, or when its patience with closing is over.
    if (!isKey) Sleep(INFINITE);
    return TRUE;
}

// This thread waits for standard input.
class Reading {
public:
    Reading() {
        const HANDLE process = GetCurrentProcess();
        DuplicateHandle(process, GetCurrentThread(), process, &m_thread, 0, FALSE, DUPLICATE_SAME_ACCESS);
        Become(m_thread);
    }
    ~Reading() {
        Become(nullptr);
        if (m_thread) CloseHandle(m_thread);
    }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

private:
    static void Become(HANDLE thread) {
        const std::lock_guard lock(guard);
        reader = thread;
    }
    HANDLE m_thread = nullptr;
};

} // namespace

Interrupt::Interrupt() {
    requested = false;
    SetConsoleCtrlHandler(&OnEvent, TRUE);
}

Interrupt::~Interrupt() { SetConsoleCtrlHandler(&OnEvent, FALSE); }

bool Interrupt::IsRequested() { return requested.load(std::memory_order_relaxed); }

void Interrupt::Request() {
    requested = true;
    WakeReader();
}

bool ReadStandardInput(void* buffer, std::size_t count, std::size_t& got) {
    got = 0;
    DWORD read = 0;
    DWORD error = ERROR_SUCCESS;
    {
        const Reading reading;
        if (Interrupt::IsRequested()) return true;
        const auto size = static_cast<DWORD>(std::min<std::size_t>(count, 1u << 30));
        SetLastError(ERROR_SUCCESS); // a read that succeeds leaves the error of an earlier call
        const bool hasRead = ReadFile(GetStdHandle(STD_INPUT_HANDLE), buffer, size, &read, nullptr) != 0;
        // A console gives no input after Ctrl-C, even before the handler was called.
        if (!hasRead || read == 0) error = GetLastError();
    }
    if (error == ERROR_OPERATION_ABORTED) {
        requested = true;
        return true;
    }
    got = read;
    return error == ERROR_SUCCESS || error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF;
}

void EndIfInterrupted() {
    if (requested) std::exit(static_cast<int>(STATUS_CONTROL_C_EXIT));
}

// SPDX-License-Identifier: MIT
#include "Framework/system/WinThread.h"

#include <new>

#include <windows.h>

namespace {

// Keeps the library of that code loaded.
void Pin(CWinThread::Procedure procedure) {
    HMODULE ignored;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(procedure), &ignored);
}

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr int CWinThread::BELOW_NORMAL; // NOLINT(readability-redundant-declaration)

struct CWinThread::Native {
    Procedure procedure;
    void* argument;
    HANDLE thread;

    static DWORD WINAPI Run(void* thread);
};

DWORD WINAPI CWinThread::Native::Run(void* thread) {
    auto* const self = static_cast<CWinThread*>(thread);
    const unsigned int result = self->m_native->procedure(self->m_native->argument);
    delete self;
    return result;
}

CWinThread::~CWinThread() {
    if (m_native->thread) CloseHandle(m_native->thread);
    delete m_native;
}

CWinThread* CWinThread::BeginSuspended(Procedure procedure, void* argument, int priority) {
    auto* const native = new (std::nothrow) Native{procedure, argument, nullptr};
    auto* const thread = native ? new (std::nothrow) CWinThread(native) : nullptr;
    if (!thread) {
        delete native;
        return nullptr;
    }
    Pin(procedure);
    Pin(reinterpret_cast<Procedure>(&Native::Run));
    native->thread = CreateThread(nullptr, 0, &Native::Run, thread, CREATE_SUSPENDED, nullptr);
    if (!native->thread) {
        delete thread;
        return nullptr;
    }
    SetThreadPriority(native->thread,
                      priority == BELOW_NORMAL ? THREAD_PRIORITY_BELOW_NORMAL : THREAD_PRIORITY_NORMAL);
    return thread;
}

// The thread may end, and close its handle, before the call returns, but not before the system has looked the
// handle up.
void CWinThread::ResumeThread() { ::ResumeThread(m_native->thread); }

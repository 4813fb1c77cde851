// SPDX-License-Identifier: MIT
#include "Framework/system/CriticalSection.h"

#include <new>
#include <system_error>

#include <windows.h>

// A CRITICAL_SECTION belongs to the thread that entered it; a semaphore of one belongs to nobody.
CCriticalSection::CCriticalSection() : m_lock(CreateSemaphoreW(nullptr, 1, 1, nullptr)) {
    if (m_lock) return;
    const DWORD error = GetLastError();
    if (error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY) throw std::bad_alloc();
    throw std::system_error(static_cast<int>(error), std::system_category());
}

CCriticalSection::~CCriticalSection() { CloseHandle(m_lock); }

void CCriticalSection::Lock() { WaitForSingleObject(m_lock, INFINITE); }

void CCriticalSection::Unlock() { ReleaseSemaphore(m_lock, 1, nullptr); }

// SPDX-License-Identifier: MIT
#include "Framework/system/NamedMutex.h"

#include <system_error>

#include <windows.h>

namespace {

HANDLE MakeMutex(const std::wstring& name, CNamedMutex::NAMING naming) {
    HANDLE mutex = CreateMutexW(nullptr, FALSE, name.c_str());
    if (naming == CNamedMutex::OWN && (!mutex || GetLastError() == ERROR_ALREADY_EXISTS)) {
        if (mutex) CloseHandle(mutex);
        mutex = CreateMutexW(nullptr, FALSE, nullptr);
    }
    if (!mutex) throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
    return mutex;
}

} // namespace

struct CNamedMutex::Native {
    HANDLE mutex;
};

CNamedMutex::CNamedMutex(const std::wstring& name, NAMING naming) : m_native(std::make_unique<Native>()) {
    m_native->mutex = MakeMutex(name, naming);
}

CNamedMutex::~CNamedMutex() { CloseHandle(m_native->mutex); }

bool CNamedMutex::TryLock() {
    const DWORD result = WaitForSingleObject(m_native->mutex, 0);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void CNamedMutex::Unlock() { ReleaseMutex(m_native->mutex); }

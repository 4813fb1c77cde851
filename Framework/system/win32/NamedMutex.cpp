#include "Framework/system/NamedMutex.h"

#include <windows.h>

struct CNamedMutex::Native {
    HANDLE mutex;
};

CNamedMutex::CNamedMutex(const std::wstring& name)
    : m_native(new Native{CreateMutexW(nullptr, FALSE, name.c_str())}) {}

CNamedMutex::~CNamedMutex() {
    if (m_native->mutex) CloseHandle(m_native->mutex);
}

bool CNamedMutex::TryLock() {
    const DWORD result = m_native->mutex ? WaitForSingleObject(m_native->mutex, 0) : WAIT_FAILED;
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void CNamedMutex::Unlock() {
    if (m_native->mutex) ReleaseMutex(m_native->mutex);
}

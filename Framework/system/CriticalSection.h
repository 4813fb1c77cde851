// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

/// A lock that one thread may take and another give back, which no mutex of the C++ library allows. It is not
/// recursive: a second Lock waits, in the same thread too.
class FRAMEWORK_API CCriticalSection {
public:
    /// Unlocked. Throws std::system_error with the system's error code, or std::bad_alloc, when the system
    /// has no lock to give.
    CCriticalSection();

    /// Nobody may be waiting for it.
    ~CCriticalSection();
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    /// Waits until it is free, and takes it.
    void Lock();

    /// Gives it back, whichever thread took it.
    void Unlock();

private:
    void* m_lock;
};

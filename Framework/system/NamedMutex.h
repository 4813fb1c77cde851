// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

#include <memory>
#include <string>

/// A mutex that everybody who knows its name shares: on Windows all programs of the session, elsewhere all of
/// this process. It belongs to the thread that took it, which may take it again and gives it back as often.
/// The name is free again when the last one of that name is gone, taken or not.
class FRAMEWORK_API CNamedMutex {
public:
    /// Whom a mutex is shared with.
    enum NAMING : int {
        SHARED, ///< the one of that name where there is one
        OWN     ///< always a new one: where the name is in use already, nobody finds this one by it
    };

    /// Throws std::system_error, with the system's error code, when the system gives none: on Windows also
    /// where SHARED finds something else under that name, or may not use it.
    explicit CNamedMutex(const std::wstring& name, NAMING naming = SHARED);
    ~CNamedMutex();
    CNamedMutex(const CNamedMutex&) = delete;
    CNamedMutex& operator=(const CNamedMutex&) = delete;

    /// Takes it if it is free or this thread's own; false, at once, where another thread has it.
    bool TryLock();

    /// Gives it back. Nothing happens when this thread does not have it.
    void Unlock();

private:
    struct Native;
    std::unique_ptr<Native> m_native;
};

#pragma once

#include "Framework/Export.h"

#include <memory>
#include <string>

/// A mutex that everybody who knows its name shares: on Windows all programs of the session, elsewhere all of
/// this process. It belongs to the thread that took it, which may take it again and gives it back as often.
class FRAMEWORK_API CNamedMutex {
public:
    /// Free, unless somebody else has the one of that name.
    explicit CNamedMutex(const std::wstring& name);
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

// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"

/// A worker thread of the system. It deletes itself when its procedure has returned, so that what Begin()
/// hands out may be used only until it runs.
class FRAMEWORK_API CWinThread {
public:
    using Procedure = unsigned int (*)(void* argument); ///< what a thread runs

    /// Below the priority of a program's other threads: what a user waits for at the screen goes first.
    static constexpr int BELOW_NORMAL = -1;

    /// A thread that waits for ResumeThread() and then runs the procedure. `priority` is 0 for the usual one
    /// or BELOW_NORMAL. Null when the system gives no thread.
    ///
    /// The library that holds the procedure stays loaded from then on, so that its code is there for as long
    /// as the thread needs it.
    static CWinThread* BeginSuspended(Procedure procedure, void* argument, int priority);

    /// Lets it run. To be called once.
    void ResumeThread();

private:
    struct Native;
    explicit CWinThread(Native* native) : m_native(native) {}
    ~CWinThread();

    Native* m_native;
};

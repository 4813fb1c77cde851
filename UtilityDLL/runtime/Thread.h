// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "UtilityDLL/runtime/detail/Guarded.h"

#include <chrono>
#include <memory>
#include <string>

class CWnd;

/// A piece of work that a Thread does, step by step.
class UTILITYDLL_API ThreadObject {
public:
    /// One step of the work, called in the worker thread: 0 ends the run as failed, 2 ends it as finished,
    /// any other number asks for the next step. An exception ends it as failed.
    ///
    /// `keepRunning` points to a flag that Thread::Stop() clears from another thread; a long step looks at it
    /// now and then, by IsKeptRunning(), and returns early.
    virtual unsigned int Run(volatile bool* keepRunning) = 0;

protected:
    /// For derived classes; this library does not call it. Does nothing here.
    virtual void CancelFunction();

    /// Whether the work is to go on: what the flag that Run() got holds just now, read so that the compiler
    /// and other processors know that another thread writes it.
    static bool IsKeptRunning(volatile bool* keepRunning) {
        return __atomic_load_n(keepRunning, __ATOMIC_RELAXED);
    }

public:
    virtual ~ThreadObject();
};

/// Work that shows how far it is. The step sets both fields by = or +=; any thread may ask for them
/// meanwhile.
class UTILITYDLL_API ProgThreadObject : public ThreadObject {
public:
    /// What the work made of it, by custom from 0 to 1; 0 at first.
    float GetProgress() const { return progress.Get(); }

    /// What the work is at; empty at first.
    std::wstring GetProgText() const { return progText.Get(); }

protected:
    /// What the step sets, by = or +=, and GetProgress() and GetProgText() give.
    /// @{
    Guarded<float> progress;
    Guarded<std::wstring> progText;
    /// @}
};

/// Runs a ThreadObject in a worker thread, at a priority below normal, and tells a window when it has ended.
///
/// It is started, stopped and destroyed by one thread, the user interface's as a rule; asking is for every
/// thread. A host with an event loop gives the window by SetCaller(); one without calls Stop() and
/// WaitForEnd().
class UTILITYDLL_API Thread {
public:
    /// The message that the caller's window gets, with both parameters 0, when a run has ended.
    static constexpr unsigned int END_MESSAGE = 2029;

    /// Throws std::bad_alloc or std::system_error, with the system's error code, when the system has no lock
    /// to give.
    Thread();

    /// Asks a worker that runs to stop, and does not wait for it: the object that it works on has to be there
    /// until the end message, or until WaitForEnd() returned before this was destroyed.
    ~Thread();
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    /// Begins a run of `object`, which stays the caller's. False when one is running or `object` is null, and
    /// nothing changes; false too when the system gives no thread: HandleEndThread() then makes this ready
    /// for another try.
    ///
    /// The worker ends at once, without a step and without END_MESSAGE, where another thread holds the mutex
    /// of MutexName() just then: a host, or the worker of a run that HandleEndThread() gave up. This is then
    /// running until HandleEndThread().
    bool Start(ThreadObject* object);

    /// Asks the run to end after its current step, or within a step that looks. Does not wait.
    void Stop();

    /// Waits until the worker of each run has ended, its message posted, or the time is over; false in that
    /// case. To be called by any thread but the worker. Runs that HandleEndThread() gave up are waited for as
    /// well. This is how a host without an event loop learns of the end; nothing is polled.
    bool WaitForEnd(std::chrono::milliseconds longest = std::chrono::milliseconds::max()) const;

    /// From Start() until the worker's last step is done, shortly before END_MESSAGE is posted: from then on
    /// Start() may be called again.
    bool IsRunning() const;

    /// 1 when the last run that ended was a success, else 0; 0 before the first.
    unsigned int ExitCode() const;

    /// The window that gets END_MESSAGE of the runs that have not ended yet, null for none. It may be
    /// destroyed at any time; the message is then lost.
    void SetCaller(CWnd* window);

    /// The name of the mutex that keeps this object from running two workers at once: "Thread[address]", with
    /// the address as the system writes one.
    const std::wstring& MutexName() const;

    /// Gives the current run up, and posts END_MESSAGE to the caller: for a host that ended it by itself. A
    /// worker that is still in a step ends after it, without a word; ExitCode() stays that of the run before.
    void HandleEndThread();

private:
    struct Run;
    struct Shared;
    struct Worker;
    std::shared_ptr<Shared> m_shared; // the worker has it too, and may be the last
};

// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/Thread.h"

#include "Framework/system/CriticalSection.h"
#include "Framework/system/NamedMutex.h"
#include "Framework/system/WinThread.h"
#include "Framework/windows/Wnd.h"

#include <algorithm>
#include <condition_variable>
#include <cwchar>
#include <iterator>
#include <mutex>

namespace {

// What a step answers; any other number asks for the next one.
constexpr unsigned int kFailed = 0;
constexpr unsigned int kGoOn = 1;
constexpr unsigned int kFinished = 2;

constexpr unsigned int kMutexHeld = 0xFFFFFFFF;

// Nobody waits longer, and the clock, which counts nanoseconds, could not say until when.
constexpr std::chrono::hours kAnAge{24 * 36500};

} // namespace

// Exported, for hosts that bind a reference to it.
constexpr unsigned int Thread::END_MESSAGE; // NOLINT(readability-redundant-declaration)

void ThreadObject::CancelFunction() {}
ThreadObject::~ThreadObject() = default;

// A run has its own flag: a worker that was given up must not take the next run's for its own.
struct Thread::Run {
    ThreadObject* workObject;
    bool keepRunning = true;
    bool hasThread = false; // stays so where the system gave none

    void Stop() { (void)__atomic_exchange_n(&keepRunning, false, __ATOMIC_SEQ_CST); }
    bool IsKept() const { return __atomic_load_n(&keepRunning, __ATOMIC_SEQ_CST); }
    unsigned int Work();
};

// What a Thread and its workers have in common.
struct Thread::Shared {
    const std::wstring mutexName;
    CCriticalSection startLock; // taken by Start(), given back by the worker

    std::mutex guard; // of what follows
    std::condition_variable workerGone;
    int numWorkers = 0;       // whose procedure has not returned
    std::shared_ptr<Run> run; // null while idle
    // Gone with the Thread, so that its name is free for the next one at that address.
    std::unique_ptr<CNamedMutex> mutex;
    unsigned int exitCode = kFailed;
    std::shared_ptr<MessageTarget> caller;

    // A mutex of its own: on Windows another program may have a Thread at the same address, and neither
    // is to keep the other from its work.
    explicit Shared(const std::wstring& name)
        : mutexName(name), mutex(std::make_unique<CNamedMutex>(name, CNamedMutex::OWN)) {}

    bool TakeMutex();
    void PostEndMessage();
    unsigned int Work(const std::shared_ptr<Run>& own);
};

struct Thread::Worker {
    std::shared_ptr<Shared> shared;
    std::shared_ptr<Run> run;

    static unsigned int Procedure(void* worker);
};

unsigned int Thread::Run::Work() {
    unsigned int result = kGoOn; // where it was stopped before the first step
    try {
        while (IsKept()) {
            result = workObject->Run(&keepRunning);
            if (result == kFailed || result == kFinished) break;
        }
    } catch (...) {
        result = kFailed;
    }
    return result;
}

bool Thread::Shared::TakeMutex() {
    const std::lock_guard lock(guard);
    return !mutex || mutex->TryLock();
}

void Thread::Shared::PostEndMessage() {
    std::shared_ptr<MessageTarget> target;
    {
        const std::lock_guard lock(guard);
        target = caller;
    }
    if (target) target->Post(END_MESSAGE, 0, 0);
}

unsigned int Thread::Shared::Work(const std::shared_ptr<Run>& own) {
    startLock.Unlock();
    if (!TakeMutex()) return kMutexHeld;
    const unsigned int result = own->Work() != kFailed ? 1 : 0;
    bool isCurrent;
    {
        const std::lock_guard lock(guard);
        if (mutex) mutex->Unlock();
        isCurrent = run == own; // unless HandleEndThread() gave it up
        if (isCurrent) {
            run.reset();
            exitCode = result;
        }
    }
    if (isCurrent) PostEndMessage();
    return result;
}

unsigned int Thread::Worker::Procedure(void* worker) {
    const std::unique_ptr<Worker> own(static_cast<Worker*>(worker));
    Shared& shared = *own->shared;
    const unsigned int result = shared.Work(own->run);
    const std::lock_guard lock(shared.guard);
    --shared.numWorkers;
    shared.workerGone.notify_all();
    return result;
}

namespace {

std::wstring NameFor(const Thread* thread) {
    wchar_t name[40];
    std::swprintf(name, std::size(name), L"Thread[%p]", static_cast<const void*>(thread));
    return name;
}

} // namespace

Thread::Thread() : m_shared(std::make_shared<Shared>(NameFor(this))) {}

Thread::~Thread() {
    const std::lock_guard lock(m_shared->guard);
    if (m_shared->run) m_shared->run->Stop();
    m_shared->mutex.reset();
}

bool Thread::Start(ThreadObject* object) {
    if (!object) return false;
    const auto run = std::make_shared<Run>(Run{object});
    auto worker = std::make_unique<Worker>(Worker{m_shared, run});
    {
        const std::lock_guard lock(m_shared->guard);
        if (m_shared->run) return false;
        m_shared->run = run;
    }
    m_shared->startLock.Lock();
    CWinThread* const thread =
        CWinThread::BeginSuspended(&Worker::Procedure, worker.get(), CWinThread::BELOW_NORMAL);
    if (!thread) {
        m_shared->startLock.Unlock();
        return false;
    }
    (void)worker.release(); // the thread's own from here on
    {
        const std::lock_guard lock(m_shared->guard);
        run->hasThread = true;
        ++m_shared->numWorkers;
    }
    thread->ResumeThread();
    return true;
}

void Thread::Stop() {
    const std::lock_guard lock(m_shared->guard);
    if (m_shared->run) m_shared->run->Stop();
}

bool Thread::WaitForEnd(std::chrono::milliseconds longest) const {
    std::unique_lock lock(m_shared->guard);
    const auto isOver = [&] { return m_shared->numWorkers == 0; };
    if (longest < kAnAge)
        return m_shared->workerGone.wait_for(lock, std::max(longest, std::chrono::milliseconds(0)), isOver);
    m_shared->workerGone.wait(lock, isOver);
    return true;
}

bool Thread::IsRunning() const {
    const std::lock_guard lock(m_shared->guard);
    return m_shared->run && m_shared->run->hasThread;
}

unsigned int Thread::ExitCode() const {
    const std::lock_guard lock(m_shared->guard);
    return m_shared->exitCode;
}

void Thread::SetCaller(CWnd* window) {
    const std::lock_guard lock(m_shared->guard);
    m_shared->caller = window ? window->Target() : nullptr;
}

const std::wstring& Thread::MutexName() const { return m_shared->mutexName; }

void Thread::HandleEndThread() {
    {
        const std::lock_guard lock(m_shared->guard);
        if (m_shared->run) m_shared->run->Stop();
        m_shared->run.reset();
    }
    m_shared->PostEndMessage();
}

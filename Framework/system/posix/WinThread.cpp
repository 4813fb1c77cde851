// SPDX-License-Identifier: MIT
#include "Framework/system/WinThread.h"

#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <new>
#include <pthread.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// How much nicer than the process a thread below normal is: other work of the machine goes first, and it
// still gets a quarter of a processor that somebody else wants whole.
constexpr int kBelowNormalNice = 5;

// Keeps the library of that code loaded.
void Pin(void* code) {
    Dl_info library;
    if (dladdr(code, &library) == 0) return;
    if (void* const handle = dlopen(library.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE))
        dlclose(handle);
}

// Keeps the procedure's library and this one loaded. The last procedure is remembered, since a program's
// workers begin at few places and the questions cost as much as starting a thread.
void PinAll(CWinThread::Procedure procedure, void* (*run)(void*)) {
    static std::atomic<CWinThread::Procedure> last{nullptr};
    if (last.load(std::memory_order_relaxed) == procedure) return;
    Pin(reinterpret_cast<void*>(procedure));
    Pin(reinterpret_cast<void*>(run));
    last.store(procedure, std::memory_order_relaxed);
}

} // namespace

struct CWinThread::Native {
    Procedure procedure;
    void* argument;
    int priority;
    sem_t resumed;

    static void* Run(void* thread);
};

void* CWinThread::Native::Run(void* thread) {
    auto* const self = static_cast<CWinThread*>(thread);
    Native& native = *self->m_native;
    if (native.priority == BELOW_NORMAL) {
        // On Linux a thread has a niceness of its own.
        const auto id = static_cast<id_t>(syscall(SYS_gettid));
        setpriority(PRIO_PROCESS, id, getpriority(PRIO_PROCESS, id) + kBelowNormalNice);
    }
    while (sem_wait(&native.resumed) != 0 && errno == EINTR) {
    }
    native.procedure(native.argument);
    delete self;
    return nullptr;
}

CWinThread::~CWinThread() {
    sem_destroy(&m_native->resumed);
    delete m_native;
}

CWinThread* CWinThread::BeginSuspended(Procedure procedure, void* argument, int priority) {
    auto* const native = new (std::nothrow) Native{procedure, argument, priority, {}};
    auto* const thread = native ? new (std::nothrow) CWinThread(native) : nullptr;
    if (!thread) {
        delete native;
        return nullptr;
    }
    sem_init(&native->resumed, 0, 0);
    PinAll(procedure, &Native::Run);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_t id;
    const int error = pthread_create(&id, &attributes, &Native::Run, thread);
    pthread_attr_destroy(&attributes);
    if (error == 0) return thread;
    delete thread;
    return nullptr;
}

// The thread may end and delete this before the call returns: a semaphore is not touched any more once a
// waiter has got what was posted.
void CWinThread::ResumeThread() { sem_post(&m_native->resumed); }

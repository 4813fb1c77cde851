// SPDX-License-Identifier: MIT
// A host that loads the library while it runs, starts a worker, and then ends in one of several ways, with
// the worker at work: LoadingHost LIBRARY HOW. Its exit code is 0 when all went as it should.
//
// It is not linked with the library, and so has the little of ThreadObject that is not in the header itself.

#include "UtilityDLL/runtime/Thread.h"
#include "tests/support/Library.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <thread>

void ThreadObject::CancelFunction() {}
ThreadObject::~ThreadObject() = default;

namespace {

std::atomic<int> numSteps = 0;
std::atomic<bool> isToFinish = false;
std::atomic<bool> isToExit = false;

// Uses the heap, as work does.
class Endless : public ThreadObject {
public:
    unsigned int Run(volatile bool*) override {
        m_text = std::to_string(++numSteps) + std::string(100, 'x');
        if (isToExit) std::exit(0);
        return isToFinish ? 2 : 1;
    }

private:
    std::string m_text;
};

// The members of Thread, found by their names.
class LoadedThread {
public:
    explicit LoadedThread(void* library) : m_library(library) {
        Member<void (*)(void*)>("_ZN6ThreadC1Ev")(m_place);
    }
    void Start(ThreadObject* object) {
        Member<bool (*)(void*, ThreadObject*)>("_ZN6Thread5StartEP12ThreadObject")(m_place, object);
        m_isRunning = Member<bool (*)(const void*)>("_ZNK6Thread9IsRunningEv");
    }
    bool IsRunning() const { return m_isRunning(m_place); } // after the library was given back as well
    void Destroy() { Member<void (*)(void*)>("_ZN6ThreadD1Ev")(m_place); }

private:
    template <typename Function> Function Member(const char* name) const {
        void* const function = FunctionOf(m_library, name);
        if (!function) std::_Exit(4);
        return reinterpret_cast<Function>(function);
    }

    void* m_library;
    bool (*m_isRunning)(const void*) = nullptr;
    alignas(Thread) unsigned char m_place[sizeof(Thread)];
};

// Destroyed by the end of the process.
struct Static {
    LoadedThread* thread = nullptr;
    ~Static() {
        if (thread) thread->Destroy();
    }
};
Static ofTheProcess;

void WaitForSteps(int count) {
    const int end = numSteps + count;
    while (numSteps < end) std::this_thread::yield();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    void* const library = LoadSharedLibrary(argv[1]);
    if (!library) return 3;
    const std::string_view how = argv[2];
    auto& thread = *new LoadedThread(library); // the worker may outlast everything that is destroyed
    static LoadedThread* const reachable = &thread;
    static auto* const work = new Endless;
    reachable->Start(work);
    WaitForSteps(10);

    if (how == "unload") {
        UnloadSharedLibrary(library);
        WaitForSteps(1000);
        isToFinish = true;
        while (thread.IsRunning()) std::this_thread::yield();
        return IsLoaded(argv[1]) ? 0 : 5;
    }
    if (how == "unload-return") {
        UnloadSharedLibrary(library);
        return 0;
    }
    if (how == "unload-exit") {
        UnloadSharedLibrary(library);
        std::exit(0);
    }
    if (how == "return") return 0;
    if (how == "exit") std::exit(0);
    if (how == "destroy-return") {
        thread.Destroy();
        return 0;
    }
    if (how == "static-return") {
        ofTheProcess.thread = &thread;
        return 0;
    }
    if (how == "exit-in-step") {
        isToExit = true;
        for (;;) std::this_thread::yield();
    }
    return 6;
}

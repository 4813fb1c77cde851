// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/Thread.h"

#include "Framework/system/NamedMutex.h"
#include "Framework/windows/Wnd.h"
#include "tests/support/Gate.h"
#include "tests/support/Random.h"
#include "tests/support/Resources.h"
#include "tests/support/StartLine.h"
#include "tests/support/Work.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cwchar>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace {

static_assert(std::is_abstract_v<ThreadObject> && std::is_abstract_v<ProgThreadObject>);
static_assert(!std::is_copy_constructible_v<Thread> && !std::is_copy_assignable_v<Thread>);

// Work that its maker may be rid of before its worker is.
template <typename Object, typename... Arguments> Object& Lasting(Arguments&&... arguments) {
    static auto& all = *new std::vector<std::unique_ptr<Object>>;
    return *all.emplace_back(std::make_unique<Object>(std::forward<Arguments>(arguments)...));
}

// Work whose first step lasts until the test lets it go, and which is then finished.
class LongWork : public ThreadObject {
public:
    unsigned int Run(volatile bool* flag) override {
        keepRunning = flag;
        ++numSteps;
        begun.Open();
        goOn.Wait();
        wasKept = IsKeptRunning(flag);
        ended.Open();
        return answer;
    }
    bool IsKept() { return IsKeptRunning(keepRunning); }

    Gate begun, goOn, ended;
    unsigned int answer = 2;
    int numSteps = 0;
    bool wasKept = false;
    volatile bool* keepRunning = nullptr;
};

// Runs it, waits for the end, and tells the exit code.
unsigned int ExitCodeOf(Thread& thread, Work::Step step) {
    Work work(std::move(step));
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd());
    return thread.ExitCode();
}
unsigned int ExitCodeOf(Thread& thread, unsigned int answer) {
    return ExitCodeOf(thread, [=](volatile bool*) { return answer; });
}

TEST(Thread, NewOneIsIdle) {
    Thread thread;
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_EQ(0u, thread.ExitCode());
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_TRUE(thread.WaitForEnd(0ms));
    thread.Stop();
    EXPECT_FALSE(thread.IsRunning());
}

TEST(Thread, StepsGoOnUntilOneAnswersZeroOrTwo) {
    struct Row {
        std::vector<unsigned int> answers;
        unsigned int exitCode;
    };
    Thread thread;
    for (const Row& row : {Row{{1, 1, 1, 2}, 1},
                           {{0}, 0},
                           {{2}, 1},
                           {{1, 0}, 0},
                           {{3, 0xFFFFFFFF, 4, 1000, 2}, 1}, // any other number goes on
                           {{3, 0}, 0}}) {
        std::size_t numSteps = 0;
        const unsigned int exitCode =
            ExitCodeOf(thread, [&](volatile bool*) { return row.answers.at(numSteps++); });
        EXPECT_EQ(row.answers.size(), numSteps);
        EXPECT_EQ(row.exitCode, exitCode);
        EXPECT_FALSE(thread.IsRunning());
    }
}

TEST(Thread, StopEndsTheRunAfterTheStepWhoseAnswerCounts) {
    struct Row {
        unsigned int answer, exitCode;
    };
    for (const Row& row : {Row{1, 1}, {0, 0}, {2, 1}, {5, 1}}) {
        Thread thread;
        LongWork work;
        work.answer = row.answer;
        ASSERT_TRUE(thread.Start(&work));
        work.begun.Wait();
        EXPECT_TRUE(work.IsKept());
        thread.Stop(); // and does not wait: the step is still at it
        EXPECT_TRUE(thread.IsRunning());
        EXPECT_FALSE(work.IsKept());
        work.goOn.Open();
        EXPECT_TRUE(thread.WaitForEnd());
        EXPECT_FALSE(thread.IsRunning());
        EXPECT_EQ(1, work.numSteps);
        EXPECT_FALSE(work.wasKept);
        EXPECT_EQ(row.exitCode, thread.ExitCode());
    }
}

TEST(Thread, RunThatIsStoppedBeforeItsFirstStepIsASuccessWithoutOne) {
    Thread thread;
    int numSteps = 1;
    while (numSteps > 0) { // the worker may be quicker; it is not every time
        ASSERT_EQ(0u, ExitCodeOf(thread, 0u));
        numSteps = 0;
        Work work([&](volatile bool*) {
            ++numSteps;
            return 1u;
        });
        ASSERT_TRUE(thread.Start(&work));
        thread.Stop();
        ASSERT_TRUE(thread.WaitForEnd());
        EXPECT_EQ(1u, thread.ExitCode());
    }
}

TEST(Thread, StepThatLooksAtTheFlagEndsEarly) {
    Thread thread;
    Gate begun;
    Work work([&](volatile bool* keepRunning) {
        begun.Open();
        while (Work::IsKeptRunning(keepRunning)) std::this_thread::yield();
        return 1u;
    });
    ASSERT_TRUE(thread.Start(&work));
    begun.Wait();
    thread.Stop();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1u, thread.ExitCode());
}

// As work may be written that does not know of IsKeptRunning(). The thread sanitizer would rightly complain.
class PlainReader : public ThreadObject {
public:
    __attribute__((no_sanitize("thread"))) unsigned int Run(volatile bool* keepRunning) override {
        begun.Open();
        while (*keepRunning) std::this_thread::yield();
        return 2;
    }
    Gate begun;
};

TEST(Thread, StepThatReadsTheFlagPlainlyEndsEarlyToo) {
    Thread thread;
    PlainReader work;
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    thread.Stop();
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST(Thread, StartIsRefusedWhileARunGoesOnAndChangesNothing) {
    Thread thread;
    ASSERT_EQ(1u, ExitCodeOf(thread, 2u));
    LongWork work;
    Counter other;
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    EXPECT_FALSE(thread.Start(&other));
    EXPECT_FALSE(thread.Start(&work));
    EXPECT_TRUE(thread.IsRunning());
    EXPECT_TRUE(work.IsKept());
    EXPECT_EQ(1u, thread.ExitCode()); // of the run before
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1, work.numSteps);
    EXPECT_EQ(0, other.numSteps);
    EXPECT_TRUE(work.wasKept);
}

TEST(Thread, NoWorkIsRefused) {
    Thread thread;
    EXPECT_FALSE(thread.Start(nullptr));
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_EQ(1u, ExitCodeOf(thread, 2u));
}

TEST(Thread, FirstStepFindsEverythingStored) {
    for (int i = 0; i < 500; ++i) {
        Thread thread;
        bool isRunning = false, isKept = false;
        unsigned int exitCode = 9;
        EXPECT_EQ(1u, ExitCodeOf(thread, [&](volatile bool* keepRunning) {
                      isRunning = thread.IsRunning();
                      isKept = Work::IsKeptRunning(keepRunning);
                      exitCode = thread.ExitCode();
                      return 2u;
                  }));
        ASSERT_TRUE(isRunning && isKept && exitCode == 0);
    }
}

TEST(Thread, IsReadyForTheNextRunFromTheMomentOfTheEnd) {
    Thread thread;
    for (unsigned int i = 0; i < 1000; ++i) {
        Counter& work = Lasting<Counter>();
        Work& failing = Lasting<Work>([](volatile bool*) { return 0u; });
        ThreadObject* const object = i % 2 ? static_cast<ThreadObject*>(&work) : &failing;
        ASSERT_TRUE(thread.Start(object));
        while (thread.IsRunning()) std::this_thread::yield();
        ASSERT_EQ(i % 2, thread.ExitCode());
        ASSERT_EQ(static_cast<int>(i % 2), work.numSteps);
    }
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST(Thread, StepThatThrowsFailsTheRun) {
    Thread thread;
    for (int kind = 0; kind < 2; ++kind) {
        ASSERT_EQ(1u, ExitCodeOf(thread, 2u));
        int numSteps = 0;
        EXPECT_EQ(0u, ExitCodeOf(thread, [&](volatile bool*) -> unsigned int {
                      if (++numSteps < 3) return 1;
                      if (kind == 0) throw std::runtime_error("a step failed");
                      throw 2;
                  }));
        EXPECT_EQ(3, numSteps);
        EXPECT_FALSE(thread.IsRunning());
    }
    EXPECT_EQ(1u, ExitCodeOf(thread, 2u));
}

// Waiting.

TEST(Thread, WaitIsOverWhenItsTimeIs) {
    Thread thread;
    LongWork work;
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    for (const auto longest : {0ms, 1ms, -5ms, std::chrono::milliseconds::min()})
        EXPECT_FALSE(thread.WaitForEnd(longest));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(thread.WaitForEnd(20ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
}

TEST(Thread, LongWaitsEndWithTheRun) {
    for (const auto longest : {std::chrono::milliseconds(10min), std::chrono::milliseconds(24h * 365 * 200),
                               std::chrono::milliseconds::max() - 1ms, std::chrono::milliseconds::max()}) {
        Thread thread;
        LongWork work;
        ASSERT_TRUE(thread.Start(&work));
        work.begun.Wait();
        Gate waits;
        const std::jthread other([&] {
            waits.Wait();
            EXPECT_FALSE(thread.WaitForEnd(5ms)); // the other wait has begun
            work.goOn.Open();
        });
        waits.Open();
        EXPECT_TRUE(thread.WaitForEnd(longest));
        EXPECT_FALSE(thread.IsRunning());
    }
}

TEST(Thread, AllWhoWaitAreWoken) {
    constexpr int kThreads = 4;
    Thread thread;
    LongWork work;
    ASSERT_TRUE(thread.Start(&work));
    std::atomic<int> numWoken = 0;
    {
        StartLine start(kThreads + 1);
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&] {
                start.ArriveAndWait();
                if (thread.WaitForEnd()) ++numWoken;
            });
        start.ArriveAndWait();
        EXPECT_EQ(0, numWoken);
        work.goOn.Open();
    }
    EXPECT_EQ(kThreads, numWoken);
}

// The mutex.

TEST(Thread, NameOfTheMutexIsMadeOfTheAddress) {
    const Thread one, other;
    for (const Thread* thread : {&one, &other}) {
        wchar_t expected[40];
        std::swprintf(expected, std::size(expected), L"Thread[%p]", static_cast<const void*>(thread));
        EXPECT_EQ(expected, thread->MutexName());
    }
    EXPECT_NE(one.MutexName(), other.MutexName());
}

TEST(Thread, WorkerThatFindsTheMutexTakenEndsWithoutAWord) {
    Thread thread;
    ASSERT_EQ(1u, ExitCodeOf(thread, 2u));
    CNamedMutex mutex(thread.MutexName());
    ASSERT_TRUE(mutex.TryLock());
    Counter work, other;
    EXPECT_TRUE(thread.Start(&work));
    EXPECT_TRUE(thread.WaitForEnd()); // the worker has ended, the run has not
    EXPECT_EQ(0, work.numSteps);
    EXPECT_TRUE(thread.IsRunning());
    EXPECT_EQ(1u, thread.ExitCode());
    mutex.Unlock();
    EXPECT_FALSE(thread.Start(&other));

    thread.HandleEndThread();
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_TRUE(thread.Start(&other));
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1, other.numSteps);
    EXPECT_EQ(0, work.numSteps);
}

TEST(Thread, MutexIsTakenDuringARunAndFreeAfterIt) {
    Thread thread;
    LongWork work;
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    CNamedMutex mutex(thread.MutexName());
    EXPECT_FALSE(mutex.TryLock());
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_TRUE(mutex.TryLock());
    mutex.Unlock();
}

TEST(Thread, WhoHadTheNameBeforeDoesNotKeepItFromItsWork) {
    std::optional<Thread> thread(std::in_place);
    const std::wstring name = thread->MutexName();
    thread.reset();
    CNamedMutex other(name); // such as another program's Thread at the same address
    ASSERT_TRUE(other.TryLock());
    thread.emplace();
    ASSERT_EQ(name, thread->MutexName());
    EXPECT_EQ(1u, ExitCodeOf(*thread, 2u));
    other.Unlock();
}

// Runs that are given up.

TEST(Thread, RunThatIsGivenUpEndsAfterItsStepWithoutAWord) {
    Thread thread;
    LongWork& work = Lasting<LongWork>();
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    thread.HandleEndThread();
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_FALSE(work.IsKept());
    EXPECT_FALSE(thread.WaitForEnd(1ms)); // the worker is still there

    Counter second; // may not run beside the first, and is refused at its mutex
    EXPECT_TRUE(thread.Start(&second));
    EXPECT_FALSE(thread.WaitForEnd(1ms));
    thread.HandleEndThread();
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1, work.numSteps);
    EXPECT_EQ(0u, thread.ExitCode());
    EXPECT_FALSE(thread.IsRunning());

    EXPECT_TRUE(thread.Start(&second));
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1u, thread.ExitCode());
}

TEST(Thread, GivingUpNothingIsHarmless) {
    Thread thread;
    ASSERT_EQ(1u, ExitCodeOf(thread, 2u));
    thread.HandleEndThread();
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_EQ(1u, thread.ExitCode());
    EXPECT_EQ(0u, ExitCodeOf(thread, 0u));
}

TEST(Thread, RunThatIsGivenUpKeepsItsFlagClearedWhenAnotherBegins) {
    Thread thread;
    LongWork& work = Lasting<LongWork>();
    work.answer = 1; // wants another step
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    thread.HandleEndThread();
    Counter& second = Lasting<Counter>();
    ASSERT_TRUE(thread.Start(&second));
    EXPECT_FALSE(work.IsKept());
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1, work.numSteps);
}

// The end of the object.

TEST(Thread, DestroyedWhileItsWorkerRunsItAsksForTheEndAndDoesNotWait) {
    LongWork& work = Lasting<LongWork>();
    {
        Thread thread;
        ASSERT_TRUE(thread.Start(&work));
        work.begun.Wait();
    }
    EXPECT_FALSE(work.IsKept());
    work.goOn.Open();
    work.ended.Wait();
    EXPECT_EQ(1, work.numSteps);
}

TEST(Thread, NextOneAtTheSameAddressHasNothingToDoWithAWorkerOfTheFirst) {
    std::optional<Thread> thread(std::in_place);
    const std::wstring name = thread->MutexName();
    LongWork& work = Lasting<LongWork>();
    work.answer = 0;
    ASSERT_TRUE(thread->Start(&work));
    work.begun.Wait();
    thread.emplace(); // the first one's worker is in its step
    ASSERT_EQ(name, thread->MutexName());
    EXPECT_FALSE(thread->IsRunning());
    EXPECT_EQ(1u, ExitCodeOf(*thread, 2u));
    LongWork second;
    ASSERT_TRUE(thread->Start(&second));
    second.begun.Wait();
    work.goOn.Open();
    work.ended.Wait();
    EXPECT_TRUE(second.IsKept());
    EXPECT_TRUE(thread->IsRunning());
    second.goOn.Open();
    EXPECT_TRUE(thread->WaitForEnd());
    EXPECT_EQ(1u, thread->ExitCode());
}

TEST(Thread, StepMayDoWhatItLikesWithItsThread) {
    Counter other;
    Thread thread;
    EXPECT_EQ(1u, ExitCodeOf(thread, [&](volatile bool* keepRunning) {
                  EXPECT_FALSE(thread.Start(&other));
                  EXPECT_TRUE(thread.IsRunning());
                  thread.Stop();
                  EXPECT_FALSE(Work::IsKeptRunning(keepRunning));
                  return 1u;
              }));
    EXPECT_EQ(0u, ExitCodeOf(thread, 0u));
    EXPECT_EQ(0u, ExitCodeOf(thread, [&](volatile bool*) {
                  thread.HandleEndThread(); // a run that is given up has no exit code
                  return 2u;
              }));
    EXPECT_FALSE(thread.IsRunning());
    EXPECT_EQ(0, other.numSteps);
}

TEST(Thread, StepMayDestroyItsThread) {
    auto thread = std::make_unique<Thread>();
    Gate& done = Lasting<Gate>();
    Work& work = Lasting<Work>([&](volatile bool* keepRunning) {
        thread.reset();
        EXPECT_FALSE(Work::IsKeptRunning(keepRunning));
        done.Open();
        return 1u;
    });
    Thread& started = *thread;
    ASSERT_TRUE(started.Start(&work));
    done.Wait();
    EXPECT_EQ(nullptr, thread);
}

// The caller.

TEST(Thread, CallerWithoutAWindowGetsNothingAndNothingIsTouched) {
    Thread thread;
    CWnd window; // never made
    thread.SetCaller(&window);
    EXPECT_EQ(1u, ExitCodeOf(thread, 2u));
    thread.HandleEndThread();
    thread.SetCaller(nullptr);
    EXPECT_EQ(0u, ExitCodeOf(thread, 0u));
    thread.HandleEndThread();
}

TEST(Thread, CallerMayBeDestroyedWhileTheWorkerRuns) {
    Thread thread;
    LongWork work;
    auto window = std::make_unique<CWnd>();
    thread.SetCaller(window.get());
    ASSERT_TRUE(thread.Start(&work));
    work.begun.Wait();
    window.reset();
    work.goOn.Open();
    EXPECT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(1u, thread.ExitCode());
    thread.HandleEndThread();
}

// Work that shows its progress.

class Progress : public ProgThreadObject {
public:
    unsigned int Run(volatile bool*) override { return 2; }
    void Set(float part, const std::wstring& text) {
        progress = part;
        progText = text;
    }
    void Add(float part, const std::wstring& text) {
        progress += part;
        progText += text;
    }
    float Part() const { return progress; }
    std::wstring Text() const { return progText; }
    using ThreadObject::CancelFunction;
};

TEST(ProgThreadObject, StartsWithNothing) {
    Progress work;
    EXPECT_EQ(0.0f, work.GetProgress());
    EXPECT_EQ(L"", work.GetProgText());
    work.CancelFunction(); // does nothing
    EXPECT_EQ(0.0f, work.GetProgress());
}

TEST(ProgThreadObject, TellsWhatTheWorkSetsAndAdds) {
    Progress work;
    work.Set(0.25f, L"Sealing \u6D77");
    EXPECT_EQ(0.25f, work.GetProgress());
    EXPECT_EQ(L"Sealing \u6D77", work.GetProgText());
    work.Add(0.5f, L" \u2026");
    EXPECT_EQ(0.75f, work.GetProgress());
    EXPECT_EQ(L"Sealing \u6D77 \u2026", work.GetProgText());
    EXPECT_EQ(0.75f, work.Part());
    EXPECT_EQ(L"Sealing \u6D77 \u2026", work.Text());
}

TEST(ProgThreadObject, CopiesAndMovesHaveBoth) {
    const std::wstring text(100, L'x'); // not kept in the object itself
    const auto expectBoth = [&](const Progress& work) {
        EXPECT_EQ(0.5f, work.GetProgress());
        EXPECT_EQ(text, work.GetProgText());
    };
    Progress work, assigned, moved;
    work.Set(0.5f, text);
    Progress copy(work);
    expectBoth(copy);
    expectBoth(work);
    assigned = work;
    expectBoth(assigned);
    expectBoth(work);
    Progress& self = assigned;
    assigned = self;
    expectBoth(assigned);
    const Progress constructed(std::move(copy));
    expectBoth(constructed);
    moved = std::move(work);
    expectBoth(moved);
}

TEST(ProgThreadObject, IsReadWhileItIsWritten) {
    class Writer : public ProgThreadObject {
    public:
        unsigned int Run(volatile bool* keepRunning) override {
            for (int i = 1; i < 4000 && IsKeptRunning(keepRunning); ++i) {
                progText = std::wstring(i % 60, static_cast<wchar_t>(L'a' + i % 26));
                progress = static_cast<float>(i);
            }
            return 2;
        }
    };
    Thread thread;
    Writer work;
    ASSERT_TRUE(thread.Start(&work));
    float last = 0;
    while (thread.IsRunning()) {
        const std::wstring text = work.GetProgText();
        ASSERT_EQ(std::wstring(text.size(), text.empty() ? L' ' : text[0]), text);
        const float progress = work.GetProgress();
        ASSERT_LE(last, progress);
        last = progress;
        Writer copy;
        copy = work; // copies are taken whole as well
        ASSERT_LE(last, copy.GetProgress());
    }
    EXPECT_EQ(3999.0f, work.GetProgress());
}

// Many.

// A run of a few steps, whose data has no lock of its own.
class Sum : public ThreadObject {
public:
    unsigned int Run(volatile bool* keepRunning) override {
        m_total += ++m_numSteps;
        EXPECT_EQ(m_numSteps * (m_numSteps + 1) / 2, m_total);
        return m_numSteps % 5 && IsKeptRunning(keepRunning) ? 1 : 2;
    }

private:
    int m_numSteps = 0, m_total = 0;
};

// Less under a tool that takes its time for each thread.
int NumCycles() {
    const char* const number = std::getenv("THREAD_TEST_CYCLES");
    return number ? std::atoi(number) : 10000;
}

TEST(Thread_Stress, ManyAreStartedStoppedRestartedGivenUpAndDestroyedInAnyOrder) {
    constexpr int kHosts = 3;
    StartLine start(kHosts);
    std::array<std::vector<std::unique_ptr<Sum>>*, kHosts> allWorks; // workers may outlast the hosts
    for (auto& works : allWorks) works = &Lasting<std::vector<std::unique_ptr<Sum>>>();
    const auto host = [&](int number) {
        Random random(number);
        std::array<std::optional<Thread>, 4> threads;
        for (auto& thread : threads) thread.emplace();
        auto& works = *allWorks[static_cast<std::size_t>(number)];
        start.ArriveAndWait();
        for (int i = 0; i < NumCycles() / 3; ++i) {
            auto& thread = threads[static_cast<std::size_t>(random.Integer(0, 3))];
            switch (random.Integer(0, 9)) {
            case 0:
                thread->Stop();
                break;
            case 1:
                thread->HandleEndThread();
                break;
            case 2:
                thread.emplace();
                break;
            case 3:
                thread->WaitForEnd(1ms);
                break;
            case 4:
                thread->WaitForEnd();
                break;
            default:
                works.push_back(std::make_unique<Sum>());
                (void)thread->Start(works.back().get());
            }
        }
    };
    std::vector<std::jthread> hosts;
    hosts.reserve(kHosts);
    for (int i = 0; i < kHosts; ++i) hosts.emplace_back(host, i);
}

TEST(Thread_Stress, ManyAreDestroyedRightAfterTheirStart) {
    Work& work = Lasting<Work>([](volatile bool*) { return 1u; });
    std::optional<Thread> thread; // all at one address
    for (int i = 0; i < 2000; ++i) {
        thread.emplace();
        ASSERT_TRUE(thread->Start(&work));
    }
}

TEST(Thread_Stress, ManyAskWhileOneStartsAndStops) {
    Thread thread;
    std::atomic<bool> isOver = false;
    std::vector<std::jthread> askers;
    askers.reserve(2);
    for (int i = 0; i < 2; ++i)
        askers.emplace_back([&] {
            while (!isOver) {
                if (thread.IsRunning()) (void)thread.WaitForEnd(1ms);
                EXPECT_LE(thread.ExitCode(), 1u);
            }
        });
    Sum work;
    for (int i = 0; i < NumCycles() / 50; ++i) {
        EXPECT_TRUE(thread.Start(&work));
        if (i % 2) thread.Stop();
        EXPECT_TRUE(thread.WaitForEnd());
    }
    isOver = true;
}

// The second half with a Thread of its own for each run. Some are waited for while they work.
void RunCycles(int count) {
    Thread common;
    Sum work;
    for (int i = 0; i < count; ++i) {
        std::optional<Thread> own;
        Thread& thread = i < count / 2 ? common : own.emplace();
        if (i % 10) {
            ASSERT_TRUE(thread.Start(&work));
            ASSERT_TRUE(thread.WaitForEnd());
            continue;
        }
        LongWork longWork;
        ASSERT_TRUE(thread.Start(&longWork));
        longWork.begun.Wait();
        ASSERT_FALSE(thread.WaitForEnd(0ms));
        longWork.goOn.Open();
        ASSERT_TRUE(thread.WaitForEnd());
    }
}

// Once only those threads are left: a worker whose end has been told of still has to leave the system.
Resources ResourcesWithThreads(std::size_t count) {
    const auto end = std::chrono::steady_clock::now() + 2min;
    Resources now = ResourcesInUse();
    while (now.threads > count && std::chrono::steady_clock::now() < end) now = ResourcesInUse();
    return now;
}

TEST(Thread_Stress, CyclesLeaveNoThreadNoHandleAndNoMemoryBehind) {
    const std::size_t numThreads = ResourcesInUse().threads;
    RunCycles(200); // what the system keeps for threads to come is there then
    const Resources before = ResourcesWithThreads(numThreads);
    RunCycles(NumCycles());
    const Resources after = ResourcesWithThreads(numThreads);
    EXPECT_LE(after.threads, numThreads);
    EXPECT_NEAR(static_cast<double>(before.handles), static_cast<double>(after.handles), 20);
    EXPECT_LE(after.heap, before.heap + 0x10000); // six bytes a cycle
}

} // namespace

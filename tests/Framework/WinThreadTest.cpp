// SPDX-License-Identifier: MIT
#include "Framework/system/WinThread.h"

#include "tests/support/Gate.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace {

struct Task {
    Gate done;
    std::atomic<bool> isResumed = false;
    bool sawResumed = false;
    std::thread::id id;

    static unsigned int Run(void* task) {
        auto& self = *static_cast<Task*>(task);
        self.sawResumed = self.isResumed;
        self.id = std::this_thread::get_id();
        self.done.Open();
        return 7;
    }
};

// A thread may still be about to leave the gate when its task is asked: they stay.
std::vector<std::unique_ptr<Task>>& AllTasks() {
    static auto& tasks = *new std::vector<std::unique_ptr<Task>>;
    return tasks;
}

Task& NewTask() { return *AllTasks().emplace_back(std::make_unique<Task>()); }

TEST(WinThread, ItRunsItsProcedureInAThreadOfItsOwnWhenItIsResumedAndNotBefore) {
    for (int i = 0; i < 500; ++i) {
        Task& task = NewTask();
        CWinThread* const thread = CWinThread::BeginSuspended(&Task::Run, &task, i % 2 - 1);
        ASSERT_NE(nullptr, thread);
        if (i % 3 == 0) std::this_thread::yield();
        task.isResumed = true;
        thread->ResumeThread();
        task.done.Wait();
        EXPECT_TRUE(task.sawResumed);
        EXPECT_NE(std::this_thread::get_id(), task.id);
    }
}

TEST(WinThread, ManyAreSuspendedAtOnce) {
    constexpr int kThreads = 50;
    std::vector<CWinThread*> threads;
    std::vector<Task*> tasks;
    for (int i = 0; i < kThreads; ++i) {
        tasks.push_back(&NewTask());
        threads.push_back(CWinThread::BeginSuspended(&Task::Run, tasks.back(), CWinThread::BELOW_NORMAL));
        ASSERT_NE(nullptr, threads.back());
    }
    for (int i = kThreads - 1; i >= 0; --i) {
        tasks[i]->isResumed = true;
        threads[i]->ResumeThread();
    }
    for (Task* task : tasks) {
        task->done.Wait();
        EXPECT_TRUE(task->sawResumed);
    }
}

} // namespace

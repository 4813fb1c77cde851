// SPDX-License-Identifier: MIT
// The priority of a thread is its niceness here.
#include "Framework/system/WinThread.h"

#include "tests/support/Gate.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

int OwnNiceness() { return getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid))); }

struct Question {
    Gate answered;
    int niceness = 0;

    static unsigned int Answer(void* question) {
        auto& self = *static_cast<Question*>(question);
        self.niceness = OwnNiceness();
        self.answered.Open();
        return 0;
    }
};

int NicenessOfThread(int priority) {
    static auto& questions = *new std::vector<std::unique_ptr<Question>>; // threads may still leave the gate
    Question& question = *questions.emplace_back(std::make_unique<Question>());
    CWinThread* const thread = CWinThread::BeginSuspended(&Question::Answer, &question, priority);
    if (!thread) return -100;
    thread->ResumeThread();
    question.answered.Wait();
    return question.niceness;
}

constexpr int kLowest = 19;

TEST(WinThread_Priority, UsualThreadIsAsNiceAsTheOneThatBeganIt) {
    EXPECT_EQ(OwnNiceness(), NicenessOfThread(0));
}

TEST(WinThread_Priority, OneBelowNormalIsNicerAndNobodyElseBecomesSo) {
    const int own = OwnNiceness();
    const int niceness = NicenessOfThread(CWinThread::BELOW_NORMAL);
    EXPECT_EQ(std::min(own + 5, kLowest), niceness);
    EXPECT_EQ(own, OwnNiceness());
    EXPECT_EQ(own, NicenessOfThread(0));
}

TEST(WinThread_Priority, NicenessEndsAtTheLowestPriority) {
    std::jthread([] {
        setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), kLowest - 1);
        EXPECT_EQ(kLowest, NicenessOfThread(CWinThread::BELOW_NORMAL));
    }).join();
}

} // namespace

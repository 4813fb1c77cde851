// SPDX-License-Identifier: MIT
#include "Framework/system/WinThread.h"

#include "tests/support/Gate.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include <windows.h>

namespace {

struct Question {
    Gate answered;
    int priority = 0;

    static unsigned int Answer(void* question) {
        auto& self = *static_cast<Question*>(question);
        self.priority = GetThreadPriority(GetCurrentThread());
        self.answered.Open();
        return 0;
    }
};

int PriorityOfThread(int priority) {
    static auto& questions = *new std::vector<std::unique_ptr<Question>>; // threads may still leave the gate
    Question& question = *questions.emplace_back(std::make_unique<Question>());
    CWinThread* const thread = CWinThread::BeginSuspended(&Question::Answer, &question, priority);
    if (!thread) return THREAD_PRIORITY_ERROR_RETURN;
    thread->ResumeThread();
    question.answered.Wait();
    return question.priority;
}

TEST(WinThread_Priority, ThreadHasThePriorityThatItWasBegunWith) {
    EXPECT_EQ(THREAD_PRIORITY_NORMAL, PriorityOfThread(0));
    EXPECT_EQ(THREAD_PRIORITY_BELOW_NORMAL, PriorityOfThread(CWinThread::BELOW_NORMAL));
}

} // namespace

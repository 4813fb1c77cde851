// SPDX-License-Identifier: MIT
// Work in a thread of its own, a step at a time, in a host without an event loop.
#include <UtilityDLL/runtime/Thread.h>

#include <iostream>

// Adds up numbers; the last one only when nobody said stop before.
class Sum : public ProgThreadObject {
public:
    unsigned int Run(volatile bool* keepRunning) override { // in the worker thread
        for (int i = 0; i < 1000; ++i) {
            if (!IsKeptRunning(keepRunning)) return 0; // failed
            m_sum += ++m_number;
        }
        progress = static_cast<float>(m_number) / 100000;
        return m_number == 100000 ? 2 : 1; // finished, or the next step
    }
    long long Result() const { return m_sum; }

private:
    int m_number = 0;
    long long m_sum = 0;
};

int main() {
    Sum sum; // stays there until the worker has ended
    Thread thread;
    if (!thread.Start(&sum)) return 1;
    thread.WaitForEnd();
    std::wcout << L"exit code " << thread.ExitCode() << L", progress "
               << sum.GetProgress() << L", sum " << sum.Result() << L'\n';
}

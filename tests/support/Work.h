// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/runtime/Thread.h"

#include <functional>
#include <utility>

/// Work whose step is a function of the test.
class Work : public ThreadObject {
public:
    using Step = std::function<unsigned int(volatile bool*)>;
    explicit Work(Step step) : m_step(std::move(step)) {}
    unsigned int Run(volatile bool* keepRunning) override { return m_step(keepRunning); }
    using ThreadObject::IsKeptRunning;

private:
    Step m_step;
};

/// Work that is finished after one step and counts them.
class Counter : public ThreadObject {
public:
    unsigned int Run(volatile bool*) override {
        ++numSteps;
        return 2;
    }
    int numSteps = 0; // to be read when no worker runs
};

// SPDX-License-Identifier: MIT
#include "VelmBase/Clock.h"

#include <algorithm>
#include <gtest/gtest.h>

TEST(MillisecondCount, GoesOnInStepsOfFewMilliseconds) {
    // The smallest of several steps: the machine may be busy in the others.
    std::uint32_t smallest = 1000;
    std::uint32_t last = MillisecondCount();
    for (int steps = 0; steps < 20;) {
        const std::uint32_t now = MillisecondCount();
        if (now == last) continue;
        smallest = std::min(smallest, now - last);
        last = now;
        ++steps;
    }
    EXPECT_LE(smallest, 2u);
}

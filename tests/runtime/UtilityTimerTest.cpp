// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/UtilityTimer.h"

#include "VelmBase/Clock.h"
#include "tests/support/Random.h"

#include <array>
#include <bit>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

static_assert(std::is_trivially_copyable_v<UtilityTimer> && sizeof(UtilityTimer) == 8);

using Times = std::array<std::uint32_t, 2>; // start and stop, in this order

UtilityTimer Stopped(std::uint32_t start, std::uint32_t stop) {
    return std::bit_cast<UtilityTimer>(Times{start, stop});
}

TEST(UtilityTimer, NewTimerHoldsZeroTimes) {
    EXPECT_EQ((Times{0, 0}), std::bit_cast<Times>(UtilityTimer()));
    EXPECT_EQ(0u, UtilityTimer().Elapse());
}

TEST(UtilityTimer, StartAndStopTakeAndReturnTheTime) {
    const std::uint32_t before = MillisecondCount();
    UtilityTimer timer;
    const unsigned long start = timer.Start();
    while (MillisecondCount() - start < 3) {
    }
    const unsigned long stop = timer.Stop();
    const std::uint32_t after = MillisecondCount();
    EXPECT_EQ((Times{static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(stop)}),
              std::bit_cast<Times>(timer));
    EXPECT_EQ(static_cast<std::uint32_t>(stop - start), timer.Elapse());
    EXPECT_GE(timer.Elapse(), 3u);
    EXPECT_LE(start - before, after - before);
    EXPECT_LE(timer.Elapse(), after - before);
}

TEST(UtilityTimer, StartLeavesTheStopTimeAndStopTheStartTime) {
    UtilityTimer timer = Stopped(7, 9);
    timer.Start();
    EXPECT_EQ(9u, std::bit_cast<Times>(timer)[1]);
    timer = Stopped(7, 9);
    timer.Stop();
    EXPECT_EQ(7u, std::bit_cast<Times>(timer)[0]);
}

TEST(UtilityTimer, ElapsedTimeIsRightAcrossAWrapOfTheCounter) {
    EXPECT_EQ(496u, Stopped(4294967000u, 200u).Elapse());
    EXPECT_EQ(4294967295u, Stopped(1, 0).Elapse());
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto start = static_cast<std::uint32_t>(random.AnyInteger());
        const auto duration = static_cast<std::uint32_t>(random.AnyInteger());
        ASSERT_EQ(duration,
                  Stopped(start, static_cast<std::uint32_t>(std::uint64_t{start} + duration)).Elapse());
    }
}

TEST(UtilityTimer, ResetIsANewTimer) {
    UtilityTimer timer = Stopped(7, 9);
    timer.Reset();
    EXPECT_EQ((Times{0, 0}), std::bit_cast<Times>(timer));
}

} // namespace

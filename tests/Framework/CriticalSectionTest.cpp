// SPDX-License-Identifier: MIT
#include "Framework/system/CriticalSection.h"

#include "tests/support/Gate.h"
#include "tests/support/StartLine.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace {

TEST(CriticalSection, WhatOneThreadTookAnotherGivesBack) {
    CCriticalSection section;
    for (int i = 0; i < 100; ++i) {
        section.Lock();
        std::jthread([&] { section.Unlock(); }).join();
    }
    section.Lock(); // free after all
    section.Unlock();
}

TEST(CriticalSection, SecondLockWaitsInTheSameThreadToo) {
    CCriticalSection section;
    std::atomic<bool> isGivenBack = false;
    Gate taken;
    section.Lock();
    const std::jthread other([&] {
        taken.Wait();
        isGivenBack = true;
        section.Unlock();
    });
    taken.Open();
    section.Lock();
    EXPECT_TRUE(isGivenBack);
    section.Unlock();
}

TEST(CriticalSection, OneThreadAtATimeHasIt) {
    constexpr int kThreads = 4, kTimes = 5000;
    CCriticalSection section;
    StartLine start(kThreads);
    int count = 0; // plain: the lock alone keeps it whole
    {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&] {
                start.ArriveAndWait();
                for (int i = 0; i < kTimes; ++i) {
                    section.Lock();
                    ++count;
                    section.Unlock();
                }
            });
    }
    EXPECT_EQ(kThreads * kTimes, count);
}

TEST(CriticalSection, HandedFromThreadToThreadItOrdersWhatTheyWrite) {
    constexpr int kTimes = 2000;
    CCriticalSection ping, pong;
    ping.Lock();
    pong.Lock();
    int ball = 0;
    {
        const std::jthread other([&] {
            for (int i = 0; i < kTimes; ++i) {
                ping.Lock(); // what the other side gives back
                ++ball;
                pong.Unlock();
            }
        });
        for (int i = 0; i < kTimes; ++i) {
            EXPECT_EQ(2 * i, ball++);
            ping.Unlock();
            pong.Lock();
        }
    }
    EXPECT_EQ(2 * kTimes, ball);
}

TEST(CriticalSection, ThousandsAreMadeAndDestroyed) {
    for (int i = 0; i < 10000; ++i) {
        const auto section = std::make_unique<CCriticalSection>();
        section->Lock();
        if (i % 2) section->Unlock();
    }
}

} // namespace

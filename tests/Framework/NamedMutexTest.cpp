// SPDX-License-Identifier: MIT
#include "Framework/system/NamedMutex.h"

#include "tests/support/StartLine.h"

#include <atomic>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

// No other program's, where programs share them.
std::wstring NewName() {
    std::random_device random;
    return L"NamedMutexTest \u00E4\u6D77 " + std::to_wstring(random()) + L' ' + std::to_wstring(random());
}

// Whether another thread would get it. It gives it back.
bool IsFree(CNamedMutex& mutex) {
    bool isFree = false;
    std::jthread([&] {
        isFree = mutex.TryLock();
        if (isFree) mutex.Unlock();
    }).join();
    return isFree;
}

TEST(NamedMutex, AnotherThreadDoesNotGetItUntilItIsGivenBack) {
    CNamedMutex mutex(NewName());
    EXPECT_TRUE(IsFree(mutex));
    ASSERT_TRUE(mutex.TryLock());
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
    EXPECT_TRUE(IsFree(mutex));
}

TEST(NamedMutex, ItsOwnerMayTakeItAgainAndGivesItBackAsOften) {
    CNamedMutex mutex(NewName());
    constexpr int kTimes = 3;
    for (int i = 0; i < kTimes; ++i) EXPECT_TRUE(mutex.TryLock());
    for (int i = 0; i < kTimes; ++i) {
        EXPECT_FALSE(IsFree(mutex));
        mutex.Unlock();
    }
    EXPECT_TRUE(IsFree(mutex));
}

TEST(NamedMutex, WhoDoesNotHaveItCannotGiveItBack) {
    CNamedMutex mutex(NewName());
    mutex.Unlock(); // nobody has it
    ASSERT_TRUE(mutex.TryLock());
    std::jthread([&] { mutex.Unlock(); }).join();
    EXPECT_FALSE(IsFree(mutex));
    mutex.Unlock();
}

TEST(NamedMutex, EqualNamesShareOneAndOthersDoNot) {
    const std::wstring name = NewName();
    CNamedMutex one(name), same(name), another(name + L'!');
    ASSERT_TRUE(one.TryLock());
    EXPECT_FALSE(IsFree(same));
    EXPECT_TRUE(IsFree(another));
    EXPECT_TRUE(same.TryLock()); // the same owner's
    one.Unlock();
    EXPECT_FALSE(IsFree(one));
    same.Unlock();
    EXPECT_TRUE(IsFree(one));
}

TEST(NamedMutex, NameIsFreeWhenItsLastIsGoneTakenOrNot) {
    const std::wstring name = NewName();
    {
        CNamedMutex first(name);
        ASSERT_TRUE(first.TryLock());
    }
    CNamedMutex second(name);
    EXPECT_TRUE(IsFree(second));
}

TEST(NamedMutex, NameIsKeptWhileOneIsLeft) {
    const std::wstring name = NewName();
    std::optional<CNamedMutex> first(name);
    CNamedMutex second(name);
    ASSERT_TRUE(first->TryLock());
    first.reset();
    CNamedMutex third(name);
    EXPECT_FALSE(IsFree(third));
    second.Unlock();
    EXPECT_TRUE(IsFree(third));
}

TEST(NamedMutex, OwnOneIsFoundByItsName) {
    const std::wstring name = NewName();
    CNamedMutex own(name, CNamedMutex::OWN);
    CNamedMutex shared(name);
    ASSERT_TRUE(shared.TryLock());
    EXPECT_FALSE(IsFree(own));
    shared.Unlock();
}

TEST(NamedMutex, OwnOneIsNewWhoeverHasTheName) {
    const std::wstring name = NewName();
    std::optional<CNamedMutex> earlier(name);
    ASSERT_TRUE(earlier->TryLock());
    std::optional<CNamedMutex> own(std::in_place, name, CNamedMutex::OWN);
    EXPECT_TRUE(IsFree(*own));
    ASSERT_TRUE(own->TryLock());
    own.reset(); // and does not take the name with it
    CNamedMutex found(name);
    EXPECT_FALSE(IsFree(found));
    earlier->Unlock();
    EXPECT_TRUE(IsFree(found));
}

TEST(NamedMutex, OneThreadAtATimeHasItByWhicheverObjectOfTheName) {
    constexpr int kThreads = 4, kTimes = 500;
    const std::wstring name = NewName();
    CNamedMutex common(name);
    StartLine start(kThreads);
    std::atomic<int> numInside = 0, most = 0;
    {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int t = 0; t < kThreads; ++t)
            threads.emplace_back([&] {
                start.ArriveAndWait();
                for (int i = 0; i < kTimes; ++i) {
                    CNamedMutex mutex(name);
                    if (!mutex.TryLock()) continue;
                    const int now = ++numInside;
                    if (now > most) most = now;
                    --numInside;
                    mutex.Unlock();
                }
            });
    }
    EXPECT_EQ(1, most);
    EXPECT_TRUE(IsFree(common));
}

} // namespace

// SPDX-License-Identifier: MIT
// What a subscriber may do while it is called: everything. Nobody who is gone is called, everybody else once.

#include "UtilityDLL/runtime/Observer.h"

#include "tests/runtime/Calls.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using UTL::Observer;
using UTL::Subscriber;

// Notes the call and does what it is told for that code, once.
class Actor : public Subscriber {
public:
    explicit Actor(char name) : m_name(name) {}
    void OnNotify(int code) override {
        calls += m_name + std::to_string(code) + ' ';
        if (const auto task = std::exchange(tasks[code], nullptr)) task();
    }
    std::map<int, std::function<void()>> tasks;

private:
    char m_name;
};

class ObserverReentrancyTest : public ::testing::Test {
protected:
    ObserverReentrancyTest() {
        m_observer.Clear();
        calls.clear();
        // Called in the order of their names.
        for (char name = 'e'; name >= 'a'; --name) {
            m_actors[name] = std::make_unique<Actor>(name);
            m_observer.Subscribe(m_actors[name].get(), L"X");
        }
    }
    ~ObserverReentrancyTest() override { m_observer.Clear(); }

    Actor* Get(char name) { return m_actors.at(name).get(); }
    void Destroy(char name) { m_actors.erase(name); }
    // What is called when `name` does this at the notification 1.
    std::string CalledWhen(char name, std::function<void()> task) {
        Get(name)->tasks[1] = std::move(task);
        return Notified();
    }
    std::string Notified(const std::wstring& context = L"X") {
        m_observer.Notify(context, 1);
        return TakeCalls();
    }

    Observer& m_observer = Observer::Get();
    std::map<char, std::unique_ptr<Actor>> m_actors;
    Actor m_new{'n'};
};

TEST_F(ObserverReentrancyTest, WhoSubscribesMeanwhileHearsFromTheNextOneOn) {
    EXPECT_EQ("a1 b1 c1 d1 e1", CalledWhen('b', [&] { m_observer.Subscribe(&m_new, L"X"); }));
    EXPECT_EQ("n1 a1 b1 c1 d1 e1", Notified());
}

TEST_F(ObserverReentrancyTest, ManyMaySubscribeMeanwhile) {
    std::vector<std::unique_ptr<Actor>> others;
    EXPECT_EQ("a1 b1 c1 d1 e1", CalledWhen('b', [&] {
                  for (int i = 0; i < 1000; ++i) {
                      others.push_back(std::make_unique<Actor>('o'));
                      m_observer.Subscribe(others.back().get(), L"X");
                      m_observer.Subscribe(others.back().get(), L"other " + std::to_wstring(i));
                  }
              }));
    m_observer.Notify(L"X", 2);
    EXPECT_EQ(1005u * 3 - 1, TakeCalls().size());
}

TEST_F(ObserverReentrancyTest, WhoIsUnSubscribedBeforeTheTurnIsLeftOut) {
    struct Row {
        char gone;
        const char *called, *next;
    };
    for (const Row& row :
         {Row{'a', "a1 b1 c1 d1 e1", "b1 c1 d1 e1"}, Row{'b', "a1 b1 c1 d1 e1", "a1 c1 d1 e1"},
          Row{'c', "a1 b1 d1 e1", "a1 b1 d1 e1"}, Row{'e', "a1 b1 c1 d1", "a1 b1 c1 d1"}})
        for (const bool fromAll : {false, true}) {
            SCOPED_TRACE(row.gone);
            EXPECT_EQ(row.called, CalledWhen('b', [&] {
                          if (fromAll)
                              m_observer.UnSubscribe(Get(row.gone));
                          else
                              m_observer.UnSubscribe(Get(row.gone), L"X");
                      }));
            EXPECT_EQ(row.next, Notified());
            m_observer.Clear();
            for (char name = 'e'; name >= 'a'; --name) m_observer.Subscribe(Get(name), L"X");
        }
}

TEST_F(ObserverReentrancyTest, AllMayBeUnSubscribedMeanwhile) {
    EXPECT_EQ("a1 b1", CalledWhen('b', [&] {
                  for (char name = 'a'; name <= 'e'; ++name) m_observer.UnSubscribe(Get(name));
                  m_observer.Subscribe(&m_new, L"X");
              }));
    EXPECT_EQ("n1", Notified());
}

TEST_F(ObserverReentrancyTest, EachMayUnSubscribeItself) {
    for (char name = 'a'; name <= 'e'; ++name)
        Get(name)->tasks[1] = [this, name] { m_observer.UnSubscribe(Get(name), L"X"); };
    EXPECT_EQ("a1 b1 c1 d1 e1", Notified());
    EXPECT_EQ("", Notified());
}

TEST_F(ObserverReentrancyTest, NobodyIsCalledTwiceWhoComesBack) {
    EXPECT_EQ("a1 b1 d1 e1", CalledWhen('b', [&] {
                  for (const char name : {'a', 'b', 'c'}) { // called, being called, and to be called
                      m_observer.UnSubscribe(Get(name), L"X");
                      m_observer.Subscribe(Get(name), L"X");
                  }
              }));
    EXPECT_EQ("c1 b1 a1 d1 e1", Notified());
}

TEST_F(ObserverReentrancyTest, WhoIsDestroyedIsNotCalled) {
    EXPECT_EQ("a1 b1 d1", CalledWhen('b', [&] {
                  for (const char name : {'a', 'c', 'e'}) Destroy(name);
              }));
    EXPECT_EQ("b1 d1", Notified());
}

TEST_F(ObserverReentrancyTest, EachMayDestroyItself) {
    struct Mortal : Subscriber {
        void OnNotify(int) override {
            calls += "m ";
            delete this;
        }
    };
    m_observer.Clear();
    for (int i = 0; i < 3; ++i) m_observer.Subscribe(new Mortal, L"X");
    EXPECT_EQ("m m m", Notified());
    EXPECT_EQ("", Notified());
}

TEST_F(ObserverReentrancyTest, OneMayDestroyAll) {
    struct Killer : Subscriber {
        std::vector<std::unique_ptr<Killer>>* all = nullptr;
        void OnNotify(int) override {
            calls += "k ";
            for (std::unique_ptr<Killer>& killer : *std::exchange(all, nullptr)) killer.reset();
        }
    };
    std::vector<std::unique_ptr<Killer>> killers(100);
    for (std::unique_ptr<Killer>& killer : killers) {
        killer = std::make_unique<Killer>();
        killer->all = &killers;
        m_observer.Subscribe(killer.get(), L"Y");
    }
    EXPECT_EQ("k", Notified(L"Y"));
}

TEST_F(ObserverReentrancyTest, NotificationsOfOneContextNest) {
    Get('b')->tasks[1] = [&] { m_observer.Notify(L"X", 2); };
    Get('d')->tasks[2] = [&] { m_observer.Notify(L"X", 3); };
    EXPECT_EQ("a1 b1 a2 b2 c2 d2 a3 b3 c3 d3 e3 e2 c1 d1 e1", Notified());
}

TEST_F(ObserverReentrancyTest, ChangesCountForAllNotificationsThatAreUnderWay) {
    Get('b')->tasks[1] = [&] { m_observer.Notify(L"X", 2); };
    Get('c')->tasks[2] = [&] {
        m_observer.UnSubscribe(Get('a'), L"X");
        Destroy('d');
        m_observer.Subscribe(&m_new, L"X");
    };
    EXPECT_EQ("a1 b1 a2 b2 c2 e2 c1 e1", Notified());
    EXPECT_EQ("n1 b1 c1 e1", Notified());
}

// So many leave that the list closes up below the notifications.
TEST_F(ObserverReentrancyTest, ListShrinksWhileNotificationsAreUnderWay) {
    std::vector<std::unique_ptr<Actor>> others;
    for (int i = 0; i < 200; ++i) {
        others.push_back(std::make_unique<Actor>('o'));
        m_observer.Subscribe(others.back().get(), L"X");
    }
    Get('b')->tasks[1] = [&] { m_observer.Notify(L"X", 2); };
    Get('c')->tasks[2] = [&] { others.clear(); };
    m_observer.UnSubscribe(Get('a'));
    m_observer.Subscribe(Get('a'), L"X");
    m_observer.Notify(L"X", 1);
    std::string called = TakeCalls();
    std::erase(called, 'o');
    EXPECT_EQ(called.find("a1"), 0u);
    EXPECT_NE(called.find("b1 a2"), std::string::npos);
    EXPECT_EQ("b2 c2 d2 e2 c1 d1 e1", called.substr(called.size() - 20));
    EXPECT_EQ("a1 b1 c1 d1 e1", Notified());
}

TEST_F(ObserverReentrancyTest, ContextsCallEachOtherDeeply) {
    struct Caller : Subscriber {
        int next = 0, depth = 0;
        void OnNotify(int code) override {
            ++depth;
            if (code > 0) Observer::Get().Notify(L"context " + std::to_wstring(next), code - 1);
        }
    };
    std::vector<Caller> callers(7);
    for (int i = 0; i < 7; ++i) {
        callers[static_cast<std::size_t>(i)].next = (i + 1) % 7;
        m_observer.Subscribe(&callers[static_cast<std::size_t>(i)], L"context " + std::to_wstring(i));
    }
    m_observer.Notify(L"context 0", 2099);
    for (const Caller& caller : callers) EXPECT_EQ(300, caller.depth);
    EXPECT_EQ(L"context 6", m_observer.GetCurrentContext());
}

TEST_F(ObserverReentrancyTest, RenameMeanwhileKeepsNobodyFromTheNotification) {
    EXPECT_EQ("a1 b1 e29 d29 c29 b29 a29 c1 d1 e1",
              CalledWhen('b', [&] { m_observer.RenameSubscribers(L"X", L"Y"); }));
    EXPECT_EQ("", Notified());
    EXPECT_EQ("e1 d1 c1 b1 a1", Notified(L"Y"));
}

TEST_F(ObserverReentrancyTest, RenameToAContextWhereSomeAreAlready) {
    m_observer.Subscribe(Get('d'), L"Y");
    m_observer.Subscribe(&m_new, L"Y");
    m_observer.Subscribe(Get('a'), L"Y");
    EXPECT_EQ("a1 b1 e29 c29 b29 a29 n29 d29 c1 d1 e1",
              CalledWhen('b', [&] { m_observer.RenameSubscribers(L"X", L"Y"); }));
    EXPECT_EQ("e1 c1 b1 a1 n1 d1", Notified(L"Y"));
}

TEST_F(ObserverReentrancyTest, WhoLeavesAfterARenameIsLeftOut) {
    m_observer.Subscribe(Get('d'), L"Y");
    EXPECT_EQ("a1 b1 e29 c29 b29 a29 d29 e1", CalledWhen('b', [&] {
                  m_observer.RenameSubscribers(L"X", L"Y");
                  m_observer.UnSubscribe(Get('d'), L"Y"); // was in both
                  Destroy('c');
              }));
    EXPECT_EQ("e1 b1 a1", Notified(L"Y"));
}

TEST_F(ObserverReentrancyTest, RenamesInARowMeanwhile) {
    m_observer.Subscribe(Get('c'), L"Y");
    m_observer.Subscribe(Get('c'), L"Z");
    m_observer.Subscribe(Get('d'), L"Z");
    Get('b')->tasks[1] = [&] {
        for (const auto& [from, to] : std::vector<std::pair<std::wstring, std::wstring>>{
                 {L"X", L"Y"}, {L"Y", L"Z"}, {L"Z", L"X"}, {L"X", L"X"}})
            m_observer.RenameSubscribers(from, to);
        TakeCalls();
    };
    EXPECT_EQ("c1 d1 e1", Notified());
    EXPECT_EQ(14u, Notified().size()); // all five, once
}

TEST_F(ObserverReentrancyTest, RenameFromTheCallOfARename) {
    Get('c')->tasks[29] = [&] { m_observer.RenameSubscribers(L"Y", L"X"); };
    m_observer.RenameSubscribers(L"X", L"Y");
    EXPECT_EQ("e29 d29 c29 a29 b29 c29 d29 e29 b29 a29", TakeCalls());
    EXPECT_EQ("a1 b1 c1 d1 e1", Notified());
    EXPECT_EQ(L"Y", m_observer.GetPreviousContext());
}

TEST_F(ObserverReentrancyTest, ClearEndsTheNotification) {
    EXPECT_EQ("a1 b1", CalledWhen('b', [&] { m_observer.Clear(); }));
    EXPECT_EQ("", Notified());
    EXPECT_EQ(L"X", m_observer.GetCurrentContext());
}

TEST_F(ObserverReentrancyTest, ClearOfTheContextEndsTheNotificationToo) {
    m_observer.Subscribe(Get('c'), L"Y");
    EXPECT_EQ("a1 b1", CalledWhen('b', [&] {
                  m_observer.Clear(m_observer.GetCurrentContext());
                  m_observer.Subscribe(Get('d'), L"X"); // anew
              }));
    EXPECT_EQ("d1", Notified());
    EXPECT_EQ("c1", Notified(L"Y"));
}

TEST_F(ObserverReentrancyTest, ClearOfAnotherContextDoesNot) {
    m_observer.Subscribe(Get('c'), L"Y");
    EXPECT_EQ("a1 b1 c1 d1 e1", CalledWhen('b', [&] { m_observer.Clear(L"Y"); }));
}

TEST_F(ObserverReentrancyTest, AssignmentEndsTheNotification) {
    const Observer copy(m_observer);
    EXPECT_EQ("a1 b1", CalledWhen('b', [&] { m_observer = copy; }));
    EXPECT_EQ("a1 b1 c1 d1 e1", Notified());
    EXPECT_EQ("a1 b1 c1 d1 e1", CalledWhen('b', [&] { m_observer = *&m_observer; }));
    EXPECT_EQ("a1 b1", CalledWhen('b', [&] { m_observer = Observer(copy); }));
    EXPECT_EQ("a1 b1 c1 d1 e1", Notified());
}

TEST_F(ObserverReentrancyTest, CopyMayBeDestroyedOrMovedWhileItNotifies) {
    auto copy = std::make_unique<Observer>(m_observer);
    Get('b')->tasks[1] = [&] { copy.reset(); };
    copy->Notify(L"X", 1);
    EXPECT_EQ("a1 b1", TakeCalls());

    copy = std::make_unique<Observer>(m_observer);
    std::unique_ptr<Observer> moved;
    Get('b')->tasks[1] = [&] {
        moved = std::make_unique<Observer>(std::move(*copy));
        moved->UnSubscribe(Get('d'));
    };
    copy->Notify(L"X", 1);
    EXPECT_EQ("a1 b1 c1 e1", TakeCalls());
    copy->Notify(L"X", 1);
    EXPECT_EQ("", TakeCalls());
}

TEST_F(ObserverReentrancyTest, CopyMadeMeanwhileIsComplete) {
    std::unique_ptr<Observer> copy;
    EXPECT_EQ("a1 b1 d1 e1", CalledWhen('b', [&] {
                  Destroy('c');
                  copy = std::make_unique<Observer>(m_observer);
              }));
    copy->Notify(L"X", 1);
    EXPECT_EQ("a1 b1 d1 e1", TakeCalls());
}

TEST_F(ObserverReentrancyTest, ExceptionComesOutAndTheObserverGoesOn) {
    Get('b')->tasks[1] = [&] { m_observer.Notify(L"X", 2); };
    Get('c')->tasks[2] = [&] {
        Destroy('d');
        throw std::runtime_error("from a subscriber");
    };
    EXPECT_THROW(m_observer.Notify(L"X", 1), std::runtime_error);
    EXPECT_EQ("a1 b1 a2 b2 c2", TakeCalls());
    EXPECT_EQ("a1 b1 c1 e1", Notified());

    Get('c')->tasks[1] = [&] {
        m_observer.RenameSubscribers(L"X", L"Y");
        TakeCalls();
        throw std::runtime_error("after a rename");
    };
    EXPECT_THROW(m_observer.Notify(L"X", 1), std::runtime_error);
    EXPECT_EQ("", TakeCalls());
    EXPECT_EQ("e1 c1 b1 a1", Notified(L"Y"));
}

// Everybody does anything at any call, beside a model that copies lists where the observer is clever.
class Chaos {
public:
    explicit Chaos(std::uint64_t seed) : m_random(seed), m_actors(12) {
        for (std::size_t i = 0; i < m_actors.size(); ++i) Renew(i);
    }
    ~Chaos() { m_observer.Clear(); }
    Chaos(const Chaos&) = delete;
    Chaos& operator=(const Chaos&) = delete;

    void Run(int steps) {
        for (int i = 0; i < steps && m_fault.empty(); ++i) Act();
        EXPECT_EQ("", m_fault);
        EXPECT_TRUE(m_walks.empty());
    }
    int NumCalls() const { return m_numCalls; }
    int DeepestNesting() const { return m_deepest; }

private:
    struct Member : Subscriber {
        Chaos* chaos;
        std::size_t who;
        Member(Chaos* owner, std::size_t number) : chaos(owner), who(number) {}
        void OnNotify(int code) override { chaos->Called(this, code); }
    };
    // One stay in a context; where a rename brings it to where the member is already, it goes on as that one.
    struct Stay {
        explicit Stay(Member* whose) : member(whose) {}
        Member* member;
        bool isOver = false;
        std::shared_ptr<Stay> goesOnAs;
        bool Counts() const { return goesOnAs ? goesOnAs->Counts() : !isOver; }
    };
    using List = std::vector<std::shared_ptr<Stay>>; // the first is called first
    struct Walk {
        List list;
        std::size_t next = 0;
        int code;
    };

    static bool IsOf(const std::shared_ptr<Stay>& stay, const Member* member) {
        return stay->member == member;
    }
    static auto FindIn(List& list, const Member* member) {
        return std::find_if(list.begin(), list.end(), [&](const auto& stay) { return IsOf(stay, member); });
    }
    void Leave(List& list, const Member* member) {
        const auto found = FindIn(list, member);
        if (found == list.end()) return;
        (*found)->isOver = true;
        list.erase(found);
    }
    void End(List& list) {
        for (const auto& stay : list) stay->isOver = true;
        list.clear();
    }
    void Renew(std::size_t i) {
        for (auto& [name, list] : m_model) Leave(list, m_actors[i].get());
        m_actors[i] = std::make_unique<Member>(this, i);
    }
    std::wstring AnyName() { return std::wstring(1, static_cast<wchar_t>(L'A' + m_random.Below(4))); }

    // What the observer does now is to call each in this list.
    template <typename Task> void Watch(const std::wstring& context, int code, Task task) {
        m_walks.push_back({m_model[context], 0, code});
        m_deepest = std::max(m_deepest, static_cast<int>(m_walks.size()));
        task();
        if (NextOf(m_walks.back())) Fail("somebody was not called");
        m_walks.pop_back();
    }
    static Stay* NextOf(Walk& walk) {
        while (walk.next < walk.list.size() && !walk.list[walk.next]->Counts()) ++walk.next;
        return walk.next < walk.list.size() ? walk.list[walk.next].get() : nullptr;
    }
    void Called(Member* member, int code) {
        ++m_numCalls;
        if (m_walks.empty()) return Fail("called without a notification");
        Walk& walk = m_walks.back();
        const Stay* const expected = NextOf(walk);
        if (!expected || expected->member != member || walk.code != code)
            return Fail("the wrong one is called");
        ++walk.next;
        if (m_walks.size() < 6 && m_random.OnceIn(3)) Act(); // `member` may be gone then
    }
    void Fail(const char* fault) {
        if (m_fault.empty()) m_fault = fault;
    }

    void Act() {
        const std::size_t i = m_random.Below(m_actors.size());
        Member* const member = m_actors[i].get();
        const std::wstring name = AnyName(), other = AnyName();
        switch (m_random.Below(16)) {
        case 0:
            m_observer.UnSubscribe(member, name), Leave(m_model[name], member);
            break;
        case 1:
            m_observer.UnSubscribe(member);
            for (auto& [context, list] : m_model) Leave(list, member);
            break;
        case 2:
            Renew(i);
            break;
        case 3:
            if (!m_random.OnceIn(4)) break;
            m_observer.Clear(name), End(m_model[name]);
            break;
        case 4:
            if (!m_random.OnceIn(20)) break;
            m_observer.Clear();
            for (auto& [context, list] : m_model) End(list);
            break;
        case 5:
            Rename(name, other);
            break;
        case 6:
        case 7:
        case 8:
            Watch(name, 7, [&] { m_observer.Notify(name, 7); });
            break;
        default:
            m_observer.Subscribe(member, name);
            List& list = m_model[name];
            if (FindIn(list, member) == list.end()) list.insert(list.begin(), std::make_shared<Stay>(member));
        }
    }
    void Rename(const std::wstring& from, const std::wstring& to) {
        if (from != to) {
            List& list = m_model[to];
            for (const auto& stay : std::exchange(m_model[from], {}))
                if (const auto there = FindIn(list, stay->member); there != list.end())
                    stay->goesOnAs = *there;
                else
                    list.insert(list.begin(), stay);
        }
        Watch(to, 29, [&] { m_observer.RenameSubscribers(from, to); });
    }

    Random m_random;
    Observer& m_observer = Observer::Get();
    std::vector<std::unique_ptr<Member>> m_actors;
    std::map<std::wstring, List> m_model;
    std::vector<Walk> m_walks;
    std::string m_fault;
    int m_numCalls = 0, m_deepest = 0;
};

TEST(ObserverReentrancy, AgreesWithCopiedListsWhateverIsDoneInACall) {
    int numCalls = 0, deepest = 0;
    for (int seed = 0; seed < 200; ++seed) {
        Chaos chaos(static_cast<std::uint64_t>(seed));
        chaos.Run(kPropertyRuns / 100);
        numCalls += chaos.NumCalls();
        deepest = std::max(deepest, chaos.DeepestNesting());
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
    EXPECT_GT(numCalls, kPropertyRuns);
    EXPECT_EQ(6, deepest);
}

} // namespace

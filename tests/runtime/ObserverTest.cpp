// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/Observer.h"

#include "tests/runtime/Calls.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using UTL::Observer;
using UTL::Subscriber;

class Listener : public Subscriber {
public:
    explicit Listener(char name) : m_name(name) {}
    void OnNotify(int code) override { calls += m_name + std::to_string(code) + ' '; }

private:
    char m_name;
};

// Each test begins and ends with an observer that has no contexts.
class ObserverTest : public ::testing::Test {
protected:
    ObserverTest() {
        m_observer = Emptied();
        calls.clear();
    }
    ~ObserverTest() override { m_observer = Emptied(); }

    static Observer Emptied() {
        Observer taken = std::move(Observer::Get());
        Observer empty = std::move(Observer::Get());
        return empty;
    }
    std::string Notified(const std::wstring& context, int code = 5) {
        m_observer.Notify(context, code);
        return TakeCalls();
    }

    Observer& m_observer = Observer::Get();
    Listener a{'a'}, b{'b'}, c{'c'}, d{'d'};
};

TEST_F(ObserverTest, TheOneOfTheProcessIsAlwaysTheSame) { EXPECT_EQ(&m_observer, &Observer::Get()); }

TEST_F(ObserverTest, NamesAreEmptyAtFirst) {
    EXPECT_EQ(L"", m_observer.GetCurrentContext());
    EXPECT_EQ(L"", m_observer.GetPreviousContext());
}

TEST_F(ObserverTest, CallsTheLatestFirst) {
    m_observer.Subscribe(&a, L"X");
    m_observer.Subscribe(&b, L"X");
    EXPECT_EQ("b5 a5", Notified(L"X"));
    EXPECT_EQ(L"X", m_observer.GetCurrentContext());
    EXPECT_EQ(L"", m_observer.GetPreviousContext());
}

TEST_F(ObserverTest, WhoSubscribesTwiceIsCalledOnceAndKeepsThePlace) {
    m_observer.Subscribe(&a, L"X");
    m_observer.Subscribe(&b, L"X");
    m_observer.Subscribe(&a, L"X");
    EXPECT_EQ("b5 a5", Notified(L"X"));
}

TEST_F(ObserverTest, WhoComesBackIsTheLatest) {
    for (Listener* const listener : {&a, &b, &c}) m_observer.Subscribe(listener, L"X");
    m_observer.UnSubscribe(&a, L"X");
    m_observer.Subscribe(&a, L"X");
    EXPECT_EQ("a5 c5 b5", Notified(L"X"));
}

TEST_F(ObserverTest, ContextsAreKeptApartByTheirExactNames) {
    m_observer.Subscribe(&a, L"chart");
    m_observer.Subscribe(&b, L"Chart");
    m_observer.Subscribe(&c, L"");
    m_observer.Subscribe(&d, std::wstring(L"chart\0", 6));
    EXPECT_EQ("a5", Notified(L"chart"));
    EXPECT_EQ("b-1", Notified(L"Chart", -1));
    EXPECT_EQ("c0", Notified(L"", 0));
    EXPECT_EQ("d2147483647", Notified(std::wstring(L"chart\0", 6), 2147483647));
    EXPECT_EQ("", Notified(L"chart "));
}

TEST_F(ObserverTest, NamesOfAnyLengthAreToldApart) {
    std::vector<std::wstring> names;
    for (std::size_t length = 0; length < 80; ++length)
        for (const wchar_t end : {L'a', L'\xE9', L'\x20AC'}) {
            names.push_back(std::wstring(length, L'n') + end);
            names.push_back(end + std::wstring(length + 1, L'n'));
        }
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    std::vector<int> codes(names.size());
    class Counter : public Subscriber {
    public:
        int* sum = nullptr;
        void OnNotify(int code) override { *sum += code; }
    };
    std::vector<Counter> counters(names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        counters[i].sum = &codes[i];
        m_observer.Subscribe(&counters[i], names[i]);
    }
    for (std::size_t i = 0; i < names.size(); ++i) m_observer.Notify(names[i], static_cast<int>(i) + 1);
    for (std::size_t i = 0; i < names.size(); ++i) EXPECT_EQ(static_cast<int>(i) + 1, codes[i]);
}

TEST_F(ObserverTest, ContextOfNobodyBecomesTheCurrentOneAllTheSame) {
    m_observer.Subscribe(&a, L"X");
    EXPECT_EQ("", Notified(L"Y"));
    EXPECT_EQ(L"Y", m_observer.GetCurrentContext());
}

TEST_F(ObserverTest, UnSubscribingFromOneContextLeavesTheOthers) {
    m_observer.Subscribe(&a, L"X");
    m_observer.Subscribe(&a, L"Y");
    m_observer.UnSubscribe(&a, L"X");
    m_observer.UnSubscribe(&a, L"X");
    m_observer.UnSubscribe(&b, L"X");
    m_observer.UnSubscribe(&b, L"unknown");
    EXPECT_EQ("", Notified(L"X"));
    EXPECT_EQ("a5", Notified(L"Y"));
}

TEST_F(ObserverTest, UnSubscribingFromAllContextsLeavesTheOtherSubscribers) {
    for (const wchar_t* const context : {L"X", L"Y", L"Z"})
        for (Listener* const listener : {&a, &b, &c}) m_observer.Subscribe(listener, context);
    m_observer.UnSubscribe(&b);
    m_observer.UnSubscribe(&d);
    for (const wchar_t* const context : {L"X", L"Y", L"Z"}) EXPECT_EQ("c5 a5", Notified(context));
    m_observer.Subscribe(&b, L"Y");
    EXPECT_EQ("b5 c5 a5", Notified(L"Y"));
}

TEST_F(ObserverTest, DestroyedSubscriberIsCalledNoMore) {
    {
        Listener gone('g');
        for (const wchar_t* const context : {L"X", L"Y"})
            for (Subscriber* const s : {static_cast<Subscriber*>(&a), static_cast<Subscriber*>(&gone),
                                        static_cast<Subscriber*>(&b)})
                m_observer.Subscribe(s, context);
        EXPECT_EQ("b5 g5 a5", Notified(L"Y"));
    }
    EXPECT_EQ("b5 a5", Notified(L"X"));
    EXPECT_EQ("b5 a5", Notified(L"Y"));
}

TEST_F(ObserverTest, NullIsNoSubscriber) {
    m_observer.Subscribe(nullptr, L"X");
    m_observer.UnSubscribe(nullptr, L"X");
    m_observer.UnSubscribe(nullptr);
    EXPECT_EQ("", Notified(L"X"));
}

TEST_F(ObserverTest, ClearRemovesAllContextsAndKeepsTheNames) {
    m_observer.Subscribe(&a, L"X");
    m_observer.Subscribe(&b, L"Y");
    m_observer.RenameSubscribers(L"Y", L"Z");
    TakeCalls();
    m_observer.Clear();
    EXPECT_EQ("", TakeCalls());
    EXPECT_EQ(L"Z", m_observer.GetCurrentContext());
    EXPECT_EQ(L"Y", m_observer.GetPreviousContext());
    for (const wchar_t* const context : {L"X", L"Y", L"Z"}) EXPECT_EQ("", Notified(context));
    m_observer.Subscribe(&a, L"X");
    EXPECT_EQ("a5", Notified(L"X"));
}

TEST_F(ObserverTest, ClearOfOneContextLeavesTheOthers) {
    for (const wchar_t* const context : {L"X", L"Y"})
        for (Listener* const listener : {&a, &b}) m_observer.Subscribe(listener, context);
    m_observer.Clear(L"X");
    m_observer.Clear(L"unknown");
    EXPECT_EQ("", TakeCalls());
    EXPECT_EQ("", Notified(L"X"));
    EXPECT_EQ("b5 a5", Notified(L"Y"));
    m_observer.Subscribe(&a, L"X");
    EXPECT_EQ("a5", Notified(L"X"));
}

TEST_F(ObserverTest, RenameTellsWith29AndSetsTheNames) {
    static_assert(Observer::RENAMED == 29);
    m_observer.Subscribe(&a, L"A");
    m_observer.Notify(L"before", 1);
    m_observer.RenameSubscribers(L"A", L"B");
    EXPECT_EQ("a29", TakeCalls());
    EXPECT_EQ(L"A", m_observer.GetPreviousContext());
    EXPECT_EQ(L"B", m_observer.GetCurrentContext());
    EXPECT_EQ("", Notified(L"A"));
    EXPECT_EQ("a5", Notified(L"B"));
    EXPECT_EQ(L"A", m_observer.GetPreviousContext());
}

TEST_F(ObserverTest, RenameReversesTheOrderBeforeThoseWhoAreThere) {
    struct Row {
        const char *from, *to, *renamed;
    };
    for (const Row& row :
         {Row{"", "", ""}, Row{"a", "", "a29"}, Row{"", "a", "a29"}, Row{"ab", "", "a29 b29"},
          Row{"abc", "", "a29 b29 c29"},
          Row{"ab", "cd", "a29 b29 d29 c29"}, // from is b a; b is put first, then a before it
          Row{"abc", "b", "a29 c29 b29"},     // b keeps its place
          Row{"abc", "dac", "b29 c29 a29 d29"}, Row{"abcd", "abcd", "d29 c29 b29 a29"}}) {
        SCOPED_TRACE(std::string(row.from) + " to " + row.to);
        m_observer.Clear();
        Listener* const listeners[] = {&a, &b, &c, &d};
        for (const char* name = row.from; *name; ++name) m_observer.Subscribe(listeners[*name - 'a'], L"A");
        for (const char* name = row.to; *name; ++name) m_observer.Subscribe(listeners[*name - 'a'], L"B");
        m_observer.RenameSubscribers(L"A", L"B");
        EXPECT_EQ(row.renamed, TakeCalls());
        EXPECT_EQ("", Notified(L"A", 29));
        EXPECT_EQ(row.renamed, Notified(L"B", 29));
    }
}

TEST_F(ObserverTest, RenameToTheOwnNameKeepsEverybody) {
    for (Listener* const listener : {&a, &b}) m_observer.Subscribe(listener, L"X");
    m_observer.RenameSubscribers(L"X", L"X");
    EXPECT_EQ("b29 a29", TakeCalls());
    EXPECT_EQ(L"X", m_observer.GetPreviousContext());
    EXPECT_EQ(L"X", m_observer.GetCurrentContext());
    EXPECT_EQ("b5 a5", Notified(L"X"));
}

TEST_F(ObserverTest, TakesTheNamesThatItReturned) {
    m_observer.Subscribe(&a, L"first");
    m_observer.RenameSubscribers(L"first", L"a name too long for the inside of a text");
    m_observer.Subscribe(&b, m_observer.GetCurrentContext());
    TakeCalls();
    m_observer.Notify(m_observer.GetCurrentContext(), 1);
    EXPECT_EQ("b1 a1", TakeCalls());
    m_observer.UnSubscribe(&a, m_observer.GetCurrentContext());
    m_observer.RenameSubscribers(m_observer.GetCurrentContext(), m_observer.GetPreviousContext());
    EXPECT_EQ("b29", TakeCalls());
    EXPECT_EQ(L"first", m_observer.GetCurrentContext());
    EXPECT_EQ(L"a name too long for the inside of a text", m_observer.GetPreviousContext());
    m_observer.RenameSubscribers(m_observer.GetCurrentContext(), m_observer.GetCurrentContext());
    EXPECT_EQ("b29", TakeCalls());
    EXPECT_EQ(L"first", m_observer.GetPreviousContext());
    m_observer.Notify(m_observer.GetPreviousContext(), 2);
    EXPECT_EQ("b2", TakeCalls());
    m_observer.Clear(m_observer.GetCurrentContext());
    EXPECT_EQ("", Notified(L"first"));
}

TEST_F(ObserverTest, CopyOfASubscriberIsSubscribedNowhere) {
    m_observer.Subscribe(&a, L"X");
    Listener copy(a);
    Listener moved(std::move(copy));
    EXPECT_EQ("a5", Notified(L"X"));
    m_observer.Subscribe(&b, L"Y");
    b = a; // takes over the rest of the object: its name
    b = Listener('n');
    EXPECT_EQ("a5", Notified(L"X"));
    EXPECT_EQ("n5", Notified(L"Y"));
    static_assert(std::is_abstract_v<Subscriber> && std::has_virtual_destructor_v<Subscriber>);
    static_assert(sizeof(Subscriber) == sizeof(void*));
    static_assert(!std::is_default_constructible_v<Observer>);
}

TEST_F(ObserverTest, CopyIsARegistryOfItsOwn) {
    for (Listener* const listener : {&a, &b, &c}) m_observer.Subscribe(listener, L"X");
    m_observer.UnSubscribe(&b, L"X");
    m_observer.RenameSubscribers(L"Y", L"X");
    TakeCalls();
    Observer copy(m_observer);
    EXPECT_EQ(L"X", copy.GetCurrentContext());
    EXPECT_EQ(L"Y", copy.GetPreviousContext());
    copy.Subscribe(&d, L"X");
    copy.Notify(L"X", 1);
    EXPECT_EQ("d1 c1 a1", TakeCalls());
    copy.Notify(L"Z", 1);
    EXPECT_EQ("c5 a5", Notified(L"X"));
    m_observer.UnSubscribe(&a);
    copy.Notify(L"X", 2);
    EXPECT_EQ("d2 c2 a2", TakeCalls());
    copy = m_observer;
    copy.Notify(L"X", 3);
    EXPECT_EQ("c3", TakeCalls());
    copy = *&copy;
    copy.Notify(L"X", 4);
    EXPECT_EQ("c4", TakeCalls());
}

TEST_F(ObserverTest, WhatWasMovedFromIsEmptyAndUsable) {
    m_observer.Subscribe(&a, L"X");
    m_observer.RenameSubscribers(L"X", L"Y");
    TakeCalls();
    Observer copy(m_observer);
    Observer moved(std::move(copy));
    EXPECT_EQ(L"Y", moved.GetCurrentContext());
    EXPECT_EQ(L"X", moved.GetPreviousContext());
    moved.Notify(L"Y", 1);
    EXPECT_EQ("a1", TakeCalls());
    EXPECT_EQ(L"", copy.GetCurrentContext()); // NOLINT(bugprone-use-after-move): that is what is asked
    EXPECT_EQ(L"", copy.GetPreviousContext());
    copy.UnSubscribe(&a);
    copy.Clear();
    copy.Clear(L"Y");
    copy.Notify(L"Y", 2);
    EXPECT_EQ("", TakeCalls());
    copy.Subscribe(&b, L"Y");
    moved = std::move(copy);
    moved.Notify(L"Y", 3);
    EXPECT_EQ("b3", TakeCalls());
    Observer copied(copy); // NOLINT(bugprone-use-after-move)
    copied.Notify(L"Y", 4);
    EXPECT_EQ("", TakeCalls());
}

TEST_F(ObserverTest, SubscriberOfManyContextsIsFoundInEach) {
    for (const int count : {15, 16, 17, 18, 40}) {
        const auto name = [](int i) { return L"context " + std::to_wstring(i); };
        for (int i = 0; i < count; ++i)
            for (int twice = 0; twice < 2; ++twice) m_observer.Subscribe(&a, name(i));
        m_observer.UnSubscribe(&a, name(3));
        m_observer.RenameSubscribers(name(4), name(count)); // to a new name
        m_observer.RenameSubscribers(name(5), name(6));     // to one that it has too
        m_observer.Clear(name(7));
        TakeCalls();
        for (int i = 0; i <= count; ++i) {
            m_observer.Subscribe(&a, name(i));
            EXPECT_EQ("a5", Notified(name(i))) << i << " of " << count;
        }
        m_observer.UnSubscribe(&a);
        for (int i = 0; i <= count; ++i) EXPECT_EQ("", Notified(name(i))) << i << " of " << count;
    }
}

// Lists and loops, as the rules are told.
class PlainRegistry {
public:
    struct Context {
        std::wstring name;
        std::vector<Listener*> list; // the first is called first
    };
    std::vector<Listener*>& At(const std::wstring& name) {
        for (Context& context : m_contexts)
            if (context.name == name) return context.list;
        m_contexts.push_back({name, {}});
        return m_contexts.back().list;
    }
    void Subscribe(Listener* s, const std::wstring& name) {
        std::vector<Listener*>& list = At(name);
        if (std::find(list.begin(), list.end(), s) == list.end()) list.insert(list.begin(), s);
    }
    void UnSubscribe(Listener* s, const std::wstring& name) { std::erase(At(name), s); }
    void UnSubscribe(Listener* s) {
        for (Context& context : m_contexts) std::erase(context.list, s);
    }
    void Notify(const std::wstring& name, int code) {
        current = name;
        for (Listener* const s : At(name)) s->OnNotify(code);
    }
    void Rename(const std::wstring& from, const std::wstring& to) {
        if (from != to) {
            const std::vector<Listener*> moved = At(from);
            for (Listener* const s : moved) Subscribe(s, to);
            Clear(from);
        }
        previous = from;
        current = to;
        for (Listener* const s : At(to)) s->OnNotify(29);
    }
    void Clear() { m_contexts.clear(); }
    void Clear(const std::wstring& name) {
        std::erase_if(m_contexts, [&](const Context& context) { return context.name == name; });
    }
    std::wstring current, previous;

private:
    std::vector<Context> m_contexts;
};

TEST_F(ObserverTest, AgreesWithPlainListsOnRandomOperations) {
    Random random(82);
    for (const int contexts : {3, 40}) {
        std::vector<std::unique_ptr<Listener>> listeners;
        listeners.reserve(26);
        for (int i = 0; i < 26; ++i)
            listeners.push_back(std::make_unique<Listener>(static_cast<char>('a' + i)));
        m_observer = Emptied();
        Observer copy(m_observer);
        PlainRegistry plain, plainCopy;
        const auto name = [&] { return L"context of a chart " + std::to_wstring(random.Below(contexts)); };
        std::size_t numCalls = 0;
        for (int i = 0; i < kPropertyRuns; ++i) {
            std::unique_ptr<Listener>& listener = listeners[random.Below(listeners.size())];
            Listener* const s = listener.get();
            const std::wstring context = name(), other = name();
            switch (random.Below(20)) {
            case 0:
            case 1:
                m_observer.UnSubscribe(s, context), plain.UnSubscribe(s, context);
                break;
            case 2:
                m_observer.UnSubscribe(s), plain.UnSubscribe(s);
                break;
            case 3:
                if (!random.OnceIn(5)) break;
                m_observer.Clear(context), plain.Clear(context);
                break;
            case 4:
                if (!random.OnceIn(500)) break;
                m_observer.Clear(), plain.Clear();
                break;
            case 5:
                m_observer.RenameSubscribers(context, other);
                {
                    const std::string ours = TakeCalls();
                    plain.Rename(context, other);
                    ASSERT_EQ(TakeCalls(), ours);
                }
                break;
            case 6: // destroyed, and another one made
                copy.UnSubscribe(s), plainCopy.UnSubscribe(s), plain.UnSubscribe(s);
                listener = std::make_unique<Listener>(static_cast<char>('a' + random.Below(26)));
                break;
            case 7:
                if (!random.OnceIn(50)) break;
                copy = m_observer, plainCopy = plain;
                break;
            case 8:
                if (!random.OnceIn(50)) break;
                std::swap(copy, m_observer), std::swap(plainCopy, plain);
                break;
            case 9:
            case 10:
            case 11: {
                m_observer.Notify(context, i);
                const std::string ours = TakeCalls();
                plain.Notify(context, i);
                const std::string theirs = TakeCalls();
                ASSERT_EQ(theirs, ours) << i;
                numCalls += !theirs.empty();
                break;
            }
            default:
                m_observer.Subscribe(s, context), plain.Subscribe(s, context);
            }
            ASSERT_EQ(plain.current, m_observer.GetCurrentContext());
            ASSERT_EQ(plain.previous, m_observer.GetPreviousContext());
        }
        EXPECT_GT(numCalls, kPropertyRuns / 20u);
        copy.Clear();
    }
}

class ObserverGrowthTest : public ObserverTest {
protected:
    class Counter : public Subscriber {
    public:
        void OnNotify(int) override { ++numCalls; }
        static inline std::size_t numCalls = 0;
    };
    static std::vector<std::size_t> Places(std::size_t count, int order) {
        std::vector<std::size_t> places(count);
        for (std::size_t i = 0; i < count; ++i) places[i] = order == 1 ? count - 1 - i : i;
        if (order == 2) std::shuffle(places.begin(), places.end(), Random(1));
        return places;
    }
    static std::wstring Name(std::size_t i) { return L"context " + std::to_wstring(i); }
    std::size_t NumCalled(const std::wstring& context) {
        Counter::numCalls = 0;
        m_observer.Notify(context, 1);
        return Counter::numCalls;
    }

    // Ten times the work takes about ten times as long, and not a hundred times. The machine may be busy with
    // something else just then, so one good try is enough.
    template <typename Task> static void ExpectProportionalTime(Task task) {
        const auto seconds = [&](std::size_t count) {
            const std::clock_t start = std::clock();
            task(count);
            return static_cast<double>(std::clock() - start + 1) / CLOCKS_PER_SEC;
        };
        double growth = 0;
        for (int i = 0; i < 5; ++i) {
            growth = seconds(100000) / std::max(seconds(10000), 0.001);
            if (growth < 35) return;
        }
        ADD_FAILURE() << "takes " << growth << " times as long";
    }
};

TEST_F(ObserverGrowthTest, ManyInOneContextComeAndGoInAnyOrder) {
    for (const int order : {0, 1, 2})
        for (const int way : {0, 1, 2}) { // out of the context, out of all, destroyed
            SCOPED_TRACE(::testing::Message() << "order " << order << ", way " << way);
            ExpectProportionalTime([&](std::size_t count) {
                std::vector<std::unique_ptr<Counter>> counters;
                counters.reserve(count);
                for (std::size_t i = 0; i < count; ++i) counters.push_back(std::make_unique<Counter>());
                for (const auto& counter : counters) m_observer.Subscribe(counter.get(), L"X");
                for (const auto& counter : counters) m_observer.Subscribe(counter.get(), L"X");
                ASSERT_EQ(count, NumCalled(L"X"));
                for (const std::size_t i : Places(count, order)) {
                    if (way == 0) m_observer.UnSubscribe(counters[i].get(), L"X");
                    if (way == 1) m_observer.UnSubscribe(counters[i].get());
                    if (way == 2) counters[i].reset();
                }
                ASSERT_EQ(0u, NumCalled(L"X"));
            });
        }
}

TEST_F(ObserverGrowthTest, OneInManyContextsComesAndGoesInAnyOrder) {
    for (const int order : {-1, 0, 1, 2}) { // -1: from all at once
        SCOPED_TRACE(order);
        ExpectProportionalTime([&](std::size_t count) {
            m_observer.Clear();
            Counter counter;
            for (std::size_t i = 0; i < count; ++i) m_observer.Subscribe(&counter, Name(i));
            for (std::size_t i = 0; i < count; ++i) m_observer.Subscribe(&counter, Name(i));
            ASSERT_EQ(1u, NumCalled(Name(count / 2)));
            if (order == -1)
                m_observer.UnSubscribe(&counter);
            else
                for (const std::size_t i : Places(count, order)) m_observer.UnSubscribe(&counter, Name(i));
            ASSERT_EQ(0u, NumCalled(Name(count / 2)));
        });
    }
}

TEST_F(ObserverGrowthTest, SubscriberOfManyContextsBesideManyInOneOfThem) {
    ExpectProportionalTime([&](std::size_t count) {
        m_observer.Clear();
        Counter hub;
        std::vector<Counter> others(count);
        for (std::size_t i = 0; i < count; ++i) m_observer.Subscribe(&hub, Name(i));
        for (Counter& other : others) m_observer.Subscribe(&other, Name(0));
        for (std::size_t i = 0; i < count; ++i) { // neither its own list nor the context's is short
            m_observer.UnSubscribe(&hub, Name(0));
            m_observer.Subscribe(&hub, Name(0));
        }
        ASSERT_EQ(count + 1, NumCalled(Name(0)));
    });
}

TEST_F(ObserverGrowthTest, ManyContextsAreRenamedToOne) {
    ExpectProportionalTime([&](std::size_t count) {
        m_observer.Clear();
        class Quiet : public Subscriber {
            void OnNotify(int) override {}
        };
        std::vector<Quiet> silent(count);
        for (std::size_t i = 0; i < count; ++i) {
            m_observer.Subscribe(&silent[i], L"new");
            m_observer.Clear(L"other");
            m_observer.RenameSubscribers(L"new", i % 1000 == 0 ? L"all" : L"other");
        }
        ASSERT_EQ(L"other", m_observer.GetCurrentContext());
    });
}

} // namespace

// SPDX-License-Identifier: MIT
// A notification of ten subscribers, found by the name of their context among a thousand, and many
// subscribers that come and go. The peers keep a signal for each name in a std::unordered_map.

#define QT_NO_KEYWORDS // other signals have an emit() too

#include "UtilityDLL/runtime/Observer.h"

#include <benchmark/benchmark.h>
#include <boost/signals2/signal.hpp>
#include <cstddef>
#include <deque>
#include <memory>
#include <sigc++/sigc++.h>
#include <string>
#include <unordered_map>
#include <vector>
#if __has_include(<QVariantAnimation>)
#include <QVariantAnimation>
#endif

namespace {

constexpr int kContexts = 1000;
constexpr int kSubscribers = 10; // of each

// 30 characters each; they differ near the end, as names do that programs make.
std::vector<std::wstring> Names() {
    std::vector<std::wstring> names;
    names.reserve(kContexts);
    for (int i = 0; i < kContexts; ++i)
        names.push_back(L"Harbour chart, layer " + std::to_wstring(10000 + i) + L".scn");
    return names;
}

long sum = 0; // what all who are called add to

class Listener : public UTL::Subscriber {
public:
    void OnNotify(int code) override { sum += code; }
};

struct Slot {
    void OnNotify(int code) { sum += code; }
};

class OurContexts {
public:
    explicit OurContexts(const std::vector<std::wstring>& names) {
        for (int i = 0; i < kSubscribers; ++i)
            for (const std::wstring& name : names)
                UTL::Observer::Get().Subscribe(&m_listeners.emplace_back(), name);
    }
    ~OurContexts() {
        m_listeners.clear();
        UTL::Observer::Get().Clear();
    }
    OurContexts(const OurContexts&) = delete;
    OurContexts& operator=(const OurContexts&) = delete;
    void Notify(const std::wstring& name, int code) { UTL::Observer::Get().Notify(name, code); }

private:
    std::deque<Listener> m_listeners;
};

class SigcContexts {
public:
    explicit SigcContexts(const std::vector<std::wstring>& names) {
        for (int i = 0; i < kSubscribers; ++i)
            for (const std::wstring& name : names)
                m_signals[name].connect(sigc::mem_fun(m_slots.emplace_back(), &Slot::OnNotify));
    }
    void Notify(const std::wstring& name, int code) { m_signals[name].emit(code); }

private:
    std::deque<Slot> m_slots;
    std::unordered_map<std::wstring, sigc::signal<void, int>> m_signals;
};

class BoostContexts {
public:
    explicit BoostContexts(const std::vector<std::wstring>& names) {
        for (int i = 0; i < kSubscribers; ++i)
            for (const std::wstring& name : names) {
                Slot* const slot = &m_slots.emplace_back();
                m_signals[name].connect([slot](int code) { slot->OnNotify(code); });
            }
    }
    void Notify(const std::wstring& name, int code) { m_signals[name](code); }

private:
    std::deque<Slot> m_slots;
    std::unordered_map<std::wstring, boost::signals2::signal<void(int)>> m_signals;
};

#if __has_include(<QVariantAnimation>)
// Any object with a signal that has a number.
class QtContexts {
public:
    explicit QtContexts(const std::vector<std::wstring>& names) {
        for (int i = 0; i < kSubscribers; ++i)
            for (const std::wstring& name : names) {
                Slot* const slot = &m_slots.emplace_back();
                QObject::connect(&m_senders[name], &QAbstractAnimation::currentLoopChanged,
                                 [slot](int code) { slot->OnNotify(code); });
            }
    }
    void Notify(const std::wstring& name, int code) { Q_EMIT m_senders[name].currentLoopChanged(code); }

private:
    std::deque<Slot> m_slots;
    std::unordered_map<std::wstring, QVariantAnimation> m_senders;
};
#endif

template <typename Contexts> void NotifySame(benchmark::State& state) {
    const std::vector<std::wstring> names = Names();
    Contexts contexts(names);
    sum = 0;
    for (auto _ : state) contexts.Notify(names[500], 1);
    if (sum != static_cast<long>(state.iterations()) * kSubscribers)
        state.SkipWithError("not all were called");
}

// In an order that no prefetcher knows.
template <typename Contexts> void NotifyChanging(benchmark::State& state) {
    const std::vector<std::wstring> names = Names();
    Contexts contexts(names);
    std::size_t i = 0;
    sum = 0;
    for (auto _ : state) {
        contexts.Notify(names[i], 1);
        i = (i * 421 + 17) % kContexts;
    }
    if (sum != static_cast<long>(state.iterations()) * kSubscribers)
        state.SkipWithError("not all were called");
}

template <std::size_t count> void ComeAndGo(benchmark::State& state) {
    const std::vector<std::wstring> names = Names();
    for (auto _ : state) {
        std::vector<Listener> listeners(count);
        for (std::size_t i = 0; i < count; ++i)
            UTL::Observer::Get().Subscribe(&listeners[i], names[i % kContexts]);
    }
    UTL::Observer::Get().Clear();
}

// Each is a trackable object, which leaves its signal when it is destroyed.
template <std::size_t count> void ComeAndGoSigc(benchmark::State& state) {
    struct Trackable : Slot, sigc::trackable {};
    const std::vector<std::wstring> names = Names();
    std::unordered_map<std::wstring, sigc::signal<void, int>> signals;
    for (auto _ : state) {
        std::vector<Trackable> listeners(count);
        for (std::size_t i = 0; i < count; ++i)
            signals[names[i % kContexts]].connect(sigc::mem_fun(listeners[i], &Trackable::OnNotify));
    }
}

BENCHMARK(NotifySame<OurContexts>)->Name("notify the same context/ours");
BENCHMARK(NotifySame<SigcContexts>)->Name("notify the same context/sigc++");
BENCHMARK(NotifySame<BoostContexts>)->Name("notify the same context/Boost.Signals2");
BENCHMARK(NotifyChanging<OurContexts>)->Name("notify changing contexts/ours");
BENCHMARK(NotifyChanging<SigcContexts>)->Name("notify changing contexts/sigc++");
BENCHMARK(NotifyChanging<BoostContexts>)->Name("notify changing contexts/Boost.Signals2");
#if __has_include(<QVariantAnimation>)
BENCHMARK(NotifySame<QtContexts>)->Name("notify the same context/Qt");
BENCHMARK(NotifyChanging<QtContexts>)->Name("notify changing contexts/Qt");
#endif
BENCHMARK(ComeAndGo<10000>)->Name("10,000 come and go/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(ComeAndGoSigc<10000>)->Name("10,000 come and go/sigc++")->Unit(benchmark::kMillisecond);
BENCHMARK(ComeAndGo<100000>)->Name("100,000 come and go/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(ComeAndGoSigc<100000>)->Name("100,000 come and go/sigc++")->Unit(benchmark::kMillisecond);

} // namespace

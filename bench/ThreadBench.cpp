// SPDX-License-Identifier: MIT
// Starting work in a thread, and values that are read while they are written, beside what the C++ library
// has.

#include "UtilityDLL/runtime/Thread.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::duration duration) { return std::chrono::duration<double>(duration).count(); }

// From the call that starts a thread to the first line of its work.

class FirstStep : public ThreadObject {
public:
    unsigned int Run(volatile bool*) override {
        begun = Clock::now();
        return 2;
    }
    Clock::time_point begun;
};

void StartToFirstStep_Ours(benchmark::State& state) {
    Thread thread;
    FirstStep work;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        if (!thread.Start(&work)) state.SkipWithError("not started");
        thread.WaitForEnd();
        state.SetIterationTime(Seconds(work.begun - start));
    }
}
BENCHMARK(StartToFirstStep_Ours)->Name("start to first step/ours")->UseManualTime();

void StartToFirstStep_Jthread(benchmark::State& state) {
    Clock::time_point begun;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        std::jthread([&](const std::stop_token&) { begun = Clock::now(); }).join();
        state.SetIterationTime(Seconds(begun - start));
    }
}
BENCHMARK(StartToFirstStep_Jthread)->Name("start to first step/std::jthread")->UseManualTime();

// From the call to the return of the wait for the end.

void StartAndWait_Ours(benchmark::State& state) {
    Thread thread;
    FirstStep work;
    for (auto _ : state) {
        if (!thread.Start(&work)) state.SkipWithError("not started");
        thread.WaitForEnd();
    }
}
BENCHMARK(StartAndWait_Ours)->Name("start and wait for the end/ours")->UseRealTime();

void StartAndWait_Jthread(benchmark::State& state) {
    Clock::time_point begun;
    for (auto _ : state) std::jthread([&](const std::stop_token&) { begun = Clock::now(); }).join();
    benchmark::DoNotOptimize(begun);
}
BENCHMARK(StartAndWait_Jthread)->Name("start and wait for the end/std::jthread")->UseRealTime();

// Values, nobody else being at them.

const std::wstring kShort = L"Sealing", kLong = L"Sealing the sections of the harbour chart";

struct Plain {
    float progress = 0;
    std::wstring text;
};

class Guard : public ProgThreadObject {
public:
    unsigned int Run(volatile bool*) override { return 2; }
    void Set(float part) { progress = part; }
    void Set(const std::wstring& text) { progText = text; }
};

void SetProgress_Ours(benchmark::State& state) {
    Guard work;
    float part = 0;
    for (auto _ : state) work.Set(part += 1);
}
BENCHMARK(SetProgress_Ours)->Name("set progress/ours");

void SetProgress_Plain(benchmark::State& state) {
    Plain work;
    float part = 0;
    for (auto _ : state) {
        work.progress = part += 1;
        benchmark::DoNotOptimize(work.progress);
    }
}
BENCHMARK(SetProgress_Plain)->Name("set progress/unguarded");

void SetText_Ours(benchmark::State& state, const std::wstring& text) {
    Guard work;
    for (auto _ : state) work.Set(text);
}
BENCHMARK_CAPTURE(SetText_Ours, short, kShort)->Name("set text of 7/ours");
BENCHMARK_CAPTURE(SetText_Ours, long, kLong)->Name("set text of 41/ours");

void SetText_Plain(benchmark::State& state, const std::wstring& text) {
    Plain work;
    for (auto _ : state) {
        work.text = text;
        benchmark::DoNotOptimize(work.text.data());
    }
}
BENCHMARK_CAPTURE(SetText_Plain, short, kShort)->Name("set text of 7/unguarded");
BENCHMARK_CAPTURE(SetText_Plain, long, kLong)->Name("set text of 41/unguarded");

void GetText_Ours(benchmark::State& state, const std::wstring& text) {
    Guard work;
    work.Set(text);
    for (auto _ : state) benchmark::DoNotOptimize(work.GetProgText());
}
BENCHMARK_CAPTURE(GetText_Ours, short, kShort)->Name("get text of 7/ours");
BENCHMARK_CAPTURE(GetText_Ours, long, kLong)->Name("get text of 41/ours");

void GetText_Plain(benchmark::State& state, const std::wstring& text) {
    Plain work;
    work.text = text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(work.text);
        benchmark::DoNotOptimize(std::wstring(work.text));
    }
}
BENCHMARK_CAPTURE(GetText_Plain, short, kShort)->Name("get text of 7/unguarded");
BENCHMARK_CAPTURE(GetText_Plain, long, kLong)->Name("get text of 41/unguarded");

} // namespace

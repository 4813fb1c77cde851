// SPDX-License-Identifier: MIT
// From the last step of a worker to its end in the host's event loop: our message beside Qt's queued signal.

#include "Framework/windows/Wnd.h"
#include "UtilityDLL/runtime/Thread.h"

#include <QApplication>
#include <QEventLoop>
#include <QThread>
#include <benchmark/benchmark.h>
#include <chrono>
#include <stdexcept>

namespace {

using Clock = std::chrono::steady_clock;

Clock::time_point s_lastStep; // written by the worker, read when the loop heard of its end

class OneStep : public ThreadObject {
    unsigned int Run(volatile bool*) override {
        s_lastStep = Clock::now();
        return 2;
    }
};

class OneStepThread : public QThread {
    void run() override { s_lastStep = Clock::now(); }
};

// Ends the loop that waits for the end.
class EndWindow : public CWnd {
public:
    explicit EndWindow(QEventLoop& loop) : m_loop(loop) {}
    Clock::time_point heard;

private:
    LRESULT WindowProc(UINT, WPARAM, LPARAM) override {
        heard = Clock::now();
        m_loop.quit();
        return 0;
    }
    QEventLoop& m_loop;
};

QApplication& Application() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "EndMessageBench";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
    return application;
}

void SetTime(benchmark::State& state, Clock::time_point heard) {
    state.SetIterationTime(std::chrono::duration<double>(heard - s_lastStep).count());
}

void EndMessage_Ours(benchmark::State& state) {
    Application();
    QEventLoop loop;
    EndWindow window(loop);
    if (!window.Create()) throw std::runtime_error("there is no window");
    OneStep step;
    Thread thread;
    thread.SetCaller(&window);
    for (auto _ : state) {
        thread.Start(&step);
        loop.exec();
        SetTime(state, window.heard);
        thread.WaitForEnd();
    }
}

void EndMessage_QThread(benchmark::State& state) {
    Application();
    QEventLoop loop;
    OneStepThread thread;
    Clock::time_point heard;
    QObject::connect(
        &thread, &QThread::finished, &loop,
        [&] {
            heard = Clock::now();
            loop.quit();
        },
        Qt::QueuedConnection);
    for (auto _ : state) {
        thread.start();
        loop.exec();
        SetTime(state, heard);
        thread.wait();
    }
}

// Messages that wait when the loop begins.
constexpr int kCount = 10'000;

class CountingWindow : public CWnd {
public:
    int left = 0;

private:
    LRESULT WindowProc(UINT, WPARAM, LPARAM) override {
        --left;
        return 0;
    }
};

void Messages_Ours(benchmark::State& state) {
    Application();
    CountingWindow window;
    if (!window.Create()) throw std::runtime_error("there is no window");
    for (auto _ : state) {
        window.left = kCount;
        for (int i = 0; i < kCount; ++i) window.PostMessage(1024);
        while (window.left > 0) QCoreApplication::processEvents();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

void Messages_QueuedCall(benchmark::State& state) {
    Application();
    QObject receiver;
    int left = 0;
    for (auto _ : state) {
        left = kCount;
        for (int i = 0; i < kCount; ++i)
            QMetaObject::invokeMethod(
                &receiver, [&] { --left; }, Qt::QueuedConnection);
        while (left > 0) QCoreApplication::processEvents();
    }
    state.SetItemsProcessed(state.iterations() * kCount);
}

BENCHMARK(EndMessage_Ours)
    ->Name("last step to its end in the loop/ours")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(EndMessage_QThread)
    ->Name("last step to its end in the loop/QThread")
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(Messages_Ours)->Name("10,000 messages/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(Messages_QueuedCall)->Name("10,000 messages/queued call")->Unit(benchmark::kMicrosecond);

} // namespace

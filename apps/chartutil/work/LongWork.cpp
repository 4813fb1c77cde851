// SPDX-License-Identifier: MIT
#include "apps/chartutil/work/LongWork.h"

#include "UtilityDLL/runtime/Thread.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/terminal/ProgressBar.h"
#include "apps/chartutil/work/Interrupt.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <mutex>
#include <utility>

namespace {

constexpr float kUnknown = -1;

} // namespace

/// What DoLongWork() and DoShortWork() do.
class Work final : public ProgThreadObject {
public:
    Work(const std::function<void()>& work, ProgressBar* bar) : m_work(work), m_bar(bar) {}

    // Does all of it in this thread.
    void Run() {
        bool keepRunning = true;
        Run(&keepRunning);
    }

    // Work that this thread does just now.
    static Work* Current() { return current; }

    unsigned int Run(volatile bool* keepRunning) override {
        constexpr unsigned int kFinished = 2;
        m_keepRunning = keepRunning;
        current = this;
        try {
            m_work();
        } catch (...) {
            m_failure = std::current_exception();
        }
        current = nullptr;
        return kFinished;
    }

    // For the thread that waits: draws the bar while there is something to show.
    void ShowOnBar() {
        const std::lock_guard lock(m_terminal);
        const std::wstring what = GetProgText();
        if (!what.empty()) m_bar->Show(ToUtf8(what), static_cast<double>(GetProgress()));
    }

    // Throws what ended the work, if anything did.
    void Finish() {
        if (m_failure) std::rethrow_exception(std::exchange(m_failure, nullptr));
    }

    void StopIfAsked() {
        if (IsKeptRunning(m_keepRunning) && !Interrupt::IsRequested()) return;
        const std::string at = ToUtf8(GetProgText());
        throw Interrupted{"interrupted" + (at.empty() ? "" : " at " + at) + "; " + Changes()};
    }

    void SetPlace(std::size_t number, std::size_t count) {
        m_place = count > 1 ? '(' + std::to_string(number) + " of " + std::to_string(count) + ") " : "";
    }

    void AddChanged(const std::string& path) {
        ++m_numChanged;
        m_lastChanged = path;
    }

    void Begin(std::string_view what, bool isLengthKnown) {
        progress = isLengthKnown ? 0 : kUnknown;
        progText = FromUtf8(m_place.append(what));
        m_place.resize(m_place.size() - what.size());
    }

    void Show(float share) { progress = share; }

    // The bar is gone when this returns, and comes back for the next part.
    void End() {
        const std::lock_guard lock(m_terminal);
        progText = std::wstring();
        if (m_bar) m_bar->Hide();
    }

private:
    std::string Changes() const {
        if (m_numChanged == 0) return "nothing was changed";
        if (m_numChanged == 1) return "changed already: " + m_lastChanged;
        return "changed already: " + std::to_string(m_numChanged) + " files, the last " + m_lastChanged;
    }

    static thread_local Work* current;

    const std::function<void()>& m_work;
    ProgressBar* m_bar;    // null for none
    std::mutex m_terminal; // of what stands on it: the waiting thread draws the bar, the worker takes it away
    std::exception_ptr m_failure;
    volatile bool* m_keepRunning = nullptr;
    std::string m_place; // "(2 of 3) "
    std::size_t m_numChanged = 0;
    std::string m_lastChanged;
};

thread_local Work* Work::current = nullptr;

namespace {

// A worker that ends before what it works on.
class Worker {
public:
    explicit Worker(Work& work) : m_started(m_thread.Start(&work)) {}
    ~Worker() {
        m_thread.Stop();
        m_thread.WaitForEnd();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    bool WasStarted() const { return m_started; }
    bool WaitForEnd(std::chrono::milliseconds longest) const { return m_thread.WaitForEnd(longest); }

private:
    Thread m_thread;
    bool m_started;
};

} // namespace

void DoLongWork(const std::function<void()>& work, ProgressBar& bar) {
    constexpr auto kBarInterval = std::chrono::milliseconds(100);
    const auto interval = bar.HasTerminal() ? kBarInterval : std::chrono::milliseconds::max();
    const Interrupt interrupt;
    Work object(work, &bar);
    {
        const Worker worker(object);
        while (worker.WasStarted() && !worker.WaitForEnd(interval)) object.ShowOnBar();
        if (!worker.WasStarted()) object.Run(); // the system has no thread left: all goes on but the bar
    }
    object.Finish();
}

void DoLongWork(const std::function<void()>& work) {
    ProgressBar bar;
    DoLongWork(work, bar);
}

void DoShortWork(const std::function<void()>& work) {
    const Interrupt interrupt;
    Work object(work, nullptr);
    object.Run();
    object.Finish();
}

void StopIfInterrupted() {
    if (Work* const work = Work::Current()) work->StopIfAsked();
}

void ShowPlace(std::size_t number, std::size_t count) {
    if (Work* const work = Work::Current()) work->SetPlace(number, count);
}

void NoteChanged(const std::string& path) {
    if (Work* const work = Work::Current()) work->AddChanged(path);
}

Progress::Progress(std::string_view what, std::uint64_t total) : m_work(Work::Current()), m_total(total) {
    if (!m_work) return;
    m_work->Begin(what, total > 0);
    try {
        m_work->StopIfAsked();
    } catch (...) {
        m_work->End();
        throw;
    }
}

Progress::~Progress() {
    if (m_work) m_work->End();
}

void Progress::Show(std::uint64_t done) const {
    if (!m_work) return;
    m_work->StopIfAsked();
    if (m_total > 0)
        m_work->Show(
            static_cast<float>(static_cast<double>(std::min(done, m_total)) / static_cast<double>(m_total)));
}

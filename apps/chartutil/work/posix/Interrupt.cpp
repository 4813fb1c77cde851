// SPDX-License-Identifier: MIT
#include "apps/chartutil/work/Interrupt.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <iterator>
#include <sys/eventfd.h>
#include <sys/poll.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
struct sigaction before[std::size(kSignals)];

// What the handler of a signal may touch.
std::atomic<int> requested{0}; // the first signal
std::atomic<int> wake{-1};     // wakes whoever waits for standard input
static_assert(std::atomic<int>::is_always_lock_free);

void OnSignal(int number) {
    const int error = errno;
    int none = 0;
    requested.compare_exchange_strong(none, number);
    // The next Ctrl-C ends the program. The other signals may come twice for one request, as timeout(1) and
    // terminals that are closed send them.
    sigaction(SIGINT, &before[0], nullptr);
    constexpr std::uint64_t kOne = 1;
    [[maybe_unused]] const ssize_t written = write(wake, &kOne, sizeof kOne);
    errno = error;
}

// Made when it is needed, and never in the place of a standard stream that the program was started without.
int WakeDescriptor() {
    if (wake == -1) {
        constexpr int kFirstOther = STDERR_FILENO + 1;
        const int event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
        wake = fcntl(event, F_DUPFD_CLOEXEC, kFirstOther);
        if (event != -1) close(event);
    }
    return wake;
}

} // namespace

Interrupt::Interrupt() {
    requested = 0;
    struct sigaction action {};
    action.sa_handler = &OnSignal;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < std::size(kSignals); ++i) {
        sigaction(kSignals[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
    }
}

Interrupt::~Interrupt() {
    for (std::size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &before[i], nullptr);
}

bool Interrupt::IsRequested() { return requested.load(std::memory_order_relaxed) != 0; }

void Interrupt::Request() { OnSignal(SIGINT); }

bool ReadStandardInput(void* buffer, std::size_t count, std::size_t& got) {
    got = 0;
    // A request after the question for it wakes the wait.
    pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {WakeDescriptor(), POLLIN, 0}};
    while (!Interrupt::IsRequested()) {
        if (poll(sources, std::size(sources), -1) < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (sources[0].revents == 0) continue;
        const ssize_t size = read(STDIN_FILENO, buffer, count);
        if (size < 0 && (errno == EINTR || errno == EAGAIN)) continue;
        if (size > 0) got = static_cast<std::size_t>(size);
        return size >= 0;
    }
    return true;
}

void EndIfInterrupted() {
    const int number = requested;
    if (number == 0) return;
    std::signal(number, SIG_DFL);
    (void)std::raise(number);
}

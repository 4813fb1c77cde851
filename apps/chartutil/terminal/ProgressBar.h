#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>

/// A bar on a terminal while work takes long enough to be waited for: from 0.3 seconds on, ten times a
/// second, and gone when the work is done.
class ProgressBar {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// On standard error while that is a terminal.
    ProgressBar(std::string_view label, std::uint64_t total);

    /// On `terminal`, nowhere when that is null, as time goes by by that clock.
    ProgressBar(std::string_view label, std::uint64_t total, std::ostream* terminal, Clock clock);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(std::uint64_t done);

private:
    std::string m_label;
    std::uint64_t m_total;
    std::ostream* m_terminal;
    Clock m_clock;
    std::chrono::steady_clock::time_point m_next;
    bool m_shown = false;
};

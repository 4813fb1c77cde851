// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <string_view>

/// A bar on a terminal while work takes long enough to be waited for: from 0.3 seconds on, ten times a
/// second, and gone when the work is done.
class ProgressBar {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// On standard error while that is a terminal that takes one, and the user has not asked for quiet.
    ProgressBar();

    /// On `terminal`, nowhere when that is null, as time goes by by that clock.
    ProgressBar(std::ostream* terminal, Clock clock);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    bool HasTerminal() const { return m_terminal; }

    /// What is worked on (UTF-8), and how much of it is done, from 0 to 1; below 0 when nobody knows.
    void Show(std::string_view label, double share);

    /// Takes the bar away until the next Show().
    void Hide();

private:
    std::ostream* m_terminal;
    Clock m_clock;
    std::chrono::steady_clock::time_point m_next;
    bool m_shown = false;
};

#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

/// A bar on standard error while it is a terminal and the work takes long enough to be waited for.
class ProgressBar {
public:
    ProgressBar(std::string_view label, std::uint64_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(std::uint64_t done);

private:
    std::string m_label;
    std::uint64_t m_total;
    std::chrono::steady_clock::time_point m_next;
    bool m_shown = false;
};

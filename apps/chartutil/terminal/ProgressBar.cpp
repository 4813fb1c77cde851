#include "apps/chartutil/terminal/ProgressBar.h"

#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"

#include <algorithm>
#include <iostream>

ProgressBar::ProgressBar(std::string_view label, std::uint64_t total)
    : ProgressBar(label, total, ErrorIsTerminal() ? &std::cerr : nullptr, std::chrono::steady_clock::now) {}

ProgressBar::ProgressBar(std::string_view label, std::uint64_t total, std::ostream* terminal, Clock clock)
    : m_label(WithoutControls(label)), m_total(total), m_terminal(terminal), m_clock(std::move(clock)),
      m_next(m_clock() + std::chrono::milliseconds(300)) {}

ProgressBar::~ProgressBar() {
    if (m_shown) *m_terminal << "\r\x1b[K" << std::flush;
}

void ProgressBar::Show(std::uint64_t done) {
    if (m_total == 0 || !m_terminal || m_clock() < m_next) return;
    m_next = m_clock() + std::chrono::milliseconds(100);
    m_shown = true;
    constexpr std::uint64_t kWidth = 40;
    const std::uint64_t filled = std::min(done, m_total) * kWidth / m_total;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    const std::string percent = std::to_string(std::min(done, m_total) * 100 / m_total);
    *m_terminal << '\r' + m_label + " [" + bar + "] " + Padded(percent, 3, Align::RIGHT) + '%' << std::flush;
}

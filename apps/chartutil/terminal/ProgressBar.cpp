#include "apps/chartutil/terminal/ProgressBar.h"

#include "apps/chartutil/terminal/Console.h"

#include <algorithm>
#include <cstdio>

ProgressBar::ProgressBar(std::string_view label, std::uint64_t total)
    : m_label(WithoutControls(label)), m_total(total),
      m_next(std::chrono::steady_clock::now() + std::chrono::milliseconds(300)) {}

ProgressBar::~ProgressBar() {
    if (m_shown) std::fputs("\r\x1b[K", stderr);
}

void ProgressBar::Show(std::uint64_t done) {
    const auto now = std::chrono::steady_clock::now();
    if (m_total == 0 || now < m_next || !ErrorIsTerminal()) return;
    m_next = now + std::chrono::milliseconds(100);
    m_shown = true;
    constexpr std::uint64_t kWidth = 40;
    const std::uint64_t filled = std::min(done, m_total) * kWidth / m_total;
    const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %3d%%", m_label.c_str(), bar.c_str(),
                 static_cast<int>(std::min(done, m_total) * 100 / m_total));
    std::fflush(stderr);
}

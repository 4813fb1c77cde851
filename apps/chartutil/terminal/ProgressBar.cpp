// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/ProgressBar.h"

#include "apps/chartutil/terminal/Columns.h"
#include "apps/chartutil/terminal/Console.h"

#include <algorithm>
#include <iostream>
#include <string>

namespace {

constexpr char kClearLine[] = "\r\x1b[K";

std::string Drawn(double share) {
    constexpr std::size_t kWidth = 40;
    const auto part = [&](std::size_t whole) {
        return static_cast<std::size_t>(std::min(share, 1.0) * static_cast<double>(whole));
    };
    const std::string bar = std::string(part(kWidth), '#') + std::string(kWidth - part(kWidth), '.');
    return " [" + bar + "] " + Padded(std::to_string(part(100)), 3, Align::RIGHT) + '%';
}

bool IsWanted() { return ErrorIsTerminal() && !TerminalIsDumb() && !CurrentRestraint().isQuiet; }

} // namespace

ProgressBar::ProgressBar() : ProgressBar(IsWanted() ? &std::cerr : nullptr, std::chrono::steady_clock::now) {}

ProgressBar::ProgressBar(std::ostream* terminal, Clock clock)
    : m_terminal(terminal), m_clock(std::move(clock)), m_next(m_clock() + std::chrono::milliseconds(300)) {}

ProgressBar::~ProgressBar() { Hide(); }

void ProgressBar::Show(std::string_view label, double share) {
    if (!m_terminal || m_clock() < m_next) return;
    m_next = m_clock() + std::chrono::milliseconds(100);
    // What is longer than what follows would stay beside it.
    *m_terminal << kClearLine + WithoutControls(label) + (share < 0 ? " ..." : Drawn(share)) << std::flush;
    m_shown = true;
}

void ProgressBar::Hide() {
    if (m_shown) *m_terminal << kClearLine << std::flush;
    m_shown = false;
}

#include "apps/chartutil/terminal/Console.h"

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <nlohmann/json.hpp>

std::string Colored(std::string_view text, const char* sgr) {
    if (!OutputIsTerminal()) return std::string(text);
    return "\x1b[" + std::string(sgr) + "m" + std::string(text) + "\x1b[0m";
}

std::string WithoutControls(std::string_view text) {
    std::string shown;
    const auto spell = [&](unsigned int code) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\x%02X", code);
        shown += escape;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : '\0');
        if ((byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F) {
            spell(byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) { // U+0080 to U+009F
            spell(next);
            ++i;
        } else {
            shown += text[i];
        }
    }
    return shown;
}

std::string Printable(std::string_view text) {
    return OutputIsTerminal() ? WithoutControls(text) : std::string(text);
}

void PrintNote(std::string_view text) {
    std::cout.flush();
    std::cerr << (ErrorIsTerminal() ? WithoutControls(text) : std::string(text)) << '\n';
}

void PrintError(const CommandError& error) { PrintNote(std::string("chartutil: ") + error.what()); }

void PrintJson(const nlohmann::ordered_json& document) {
    std::cout << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

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

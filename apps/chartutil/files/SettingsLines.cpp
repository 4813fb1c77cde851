// SPDX-License-Identifier: MIT
#include "apps/chartutil/files/SettingsLines.h"

#include "VelmBase/SettingsText.h"
#include "VelmBase/WideString.h"

#include <algorithm>

namespace {

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerW);
    return lower;
}

} // namespace

struct SettingsLines::Finder final : SETTINGS::Handler {
    explicit Finder(SettingsLines& into) : lines(into) {}

    bool OnSection(SETTINGS::Bytes name) override {
        section = SETTINGS::Widened(name);
        Add({});
        return true;
    }
    void OnKey(SETTINGS::Bytes name, SETTINGS::Bytes, SETTINGS::Bytes) override {
        if (!name.empty()) Add(SETTINGS::Widened(name));
    }
    void Add(std::wstring key) {
        lines.m_lines.emplace(std::pair(Lower(section), Lower(key)), LineNumber());
        lines.m_names.push_back({section, std::move(key), LineNumber()});
    }

    SettingsLines& lines;
    std::wstring section;
};

SettingsLines::SettingsLines(const UserText& path) : m_path(path.Utf8()) {
    Finder finder(*this);
    (void)SETTINGS::Read(path.Wide(), finder);
}

std::uint32_t SettingsLines::LineOf(std::wstring_view section, std::wstring_view key) const {
    auto found = m_lines.find({Lower(section), Lower(key)});
    if (found == m_lines.end()) found = m_lines.find({Lower(section), {}});
    return found == m_lines.end() ? 0 : found->second;
}

std::string SettingsLines::Place(std::wstring_view section, std::wstring_view key) const {
    const std::uint32_t line = LineOf(section, key);
    std::string place = m_path + ':';
    if (line > 0) place += std::to_string(line) + ':';
    place += " [" + ToUtf8(section) + ']';
    if (!key.empty()) place += ' ' + ToUtf8(key);
    return place + ": ";
}

std::uint32_t SettingsLines::LineOfNamedIn(std::wstring_view text) const {
    std::size_t first = text.size();
    std::uint32_t line = 0;
    for (const Name& name : m_names) {
        const std::size_t at = text.find(name.key.empty() ? name.section : name.key);
        if (at >= first) continue;
        first = at;
        line = name.line;
    }
    return line;
}

// SPDX-License-Identifier: MIT
#include "apps/chartutil/commands/settings/Settings.h"
#include "apps/chartutil/files/StandardStreams.h"
#include "apps/chartutil/files/UnifiedDiff.h"
#include "apps/chartutil/terminal/Console.h"
#include "apps/chartutil/terminal/Json.h"
#include "apps/chartutil/work/LongWork.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

namespace {

using Keys = std::vector<SectionKey>;

// What the two files have otherwise: a section as such, or a key, of which a comment's line has no name.
struct Difference {
    std::wstring section;
    bool isSection;
    std::optional<SectionKey> before, after; // of a section the error key
};

// The keys of a section by name, and their names in file order.
struct KeyLists {
    explicit KeyLists(const Section& section) {
        for (int i = 0; i < section.NumKeys(); ++i) {
            const auto [found, isNew] = byName.try_emplace(section[i].GetName().String());
            if (isNew) names.push_back(found->first);
            found->second.push_back(section[i]);
        }
    }
    Keys operator[](const std::wstring& name) const {
        const auto found = byName.find(name);
        return found == byName.end() ? Keys() : found->second;
    }

    std::vector<std::wstring> names;
    std::map<std::wstring, Keys, decltype(&SmallerW)> byName{&SmallerW};
};

class Comparer {
public:
    Comparer(const SettingsDocument& before, const SettingsDocument& after, bool wantsComments)
        : m_sections(before.Sections()), m_newSections(after.Sections()), m_before(before.Lines()),
          m_after(after.Lines()), m_wantsComments(wantsComments) {}

    // In the order of the first file; what only the second has comes behind.
    std::vector<Difference> Compare() {
        for (const std::wstring& section : m_sections) CompareSection(section);
        for (const std::wstring& section : m_newSections)
            if (!m_before.HasSection(section)) CompareSection(section);
        return std::move(m_found);
    }

private:
    void CompareSection(const std::wstring& section) {
        StopIfInterrupted();
        const auto there = [&](const IniDocument& lines) {
            return lines.HasSection(section) ? std::optional(Section::m_ErrorKey) : std::nullopt;
        };
        if (!m_before.HasSection(section) || !m_after.HasSection(section))
            m_found.push_back({section, true, there(m_before), there(m_after)});
        const KeyLists before(m_before.Read(section));
        const KeyLists after(m_after.Read(section));
        for (const std::wstring& name : before.names)
            if (!name.empty()) CompareKeys(section, before[name], after[name]);
        for (const std::wstring& name : after.names)
            if (!name.empty() && before[name].empty()) CompareKeys(section, {}, after[name]);
        if (m_wantsComments) CompareCommentLines(section, before[{}], after[{}]);
    }

    // The first key counts, so that each is held against the one at its place.
    void CompareKeys(const std::wstring& section, const Keys& before, const Keys& after) {
        const auto at = [](const Keys& keys, std::size_t i) {
            return i < keys.size() ? std::optional(keys[i]) : std::nullopt;
        };
        for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i)
            if (i >= before.size() || i >= after.size() || !IsSame(before[i], after[i]))
                m_found.push_back({section, false, at(before, i), at(after, i)});
    }

    // Wherever in the section they stand.
    void CompareCommentLines(const std::wstring& section, const Keys& before, const Keys& after) {
        std::multiset<std::wstring> rest;
        for (const SectionKey& line : before) rest.insert(line.GetComments());
        Keys added;
        for (const SectionKey& line : after)
            if (const auto same = rest.find(line.GetComments()); same != rest.end())
                rest.erase(same);
            else
                added.push_back(line);
        for (const SectionKey& line : before)
            if (const auto gone = rest.find(line.GetComments()); gone != rest.end()) {
                rest.erase(gone);
                m_found.push_back({section, false, line, std::nullopt});
            }
        for (const SectionKey& line : added) m_found.push_back({section, false, std::nullopt, line});
    }

    bool IsSame(const SectionKey& a, const SectionKey& b) const {
        return a.GetValue() == b.GetValue() && (!m_wantsComments || a.GetComments() == b.GetComments());
    }

    std::vector<std::wstring> m_sections, m_newSections;
    const IniDocument& m_before;
    const IniDocument& m_after;
    bool m_wantsComments;
    std::vector<Difference> m_found;
};

// A file that cannot be compared is trouble, not a difference.
SettingsDocument Opened(const UserText& file, TextEncoding encoding) {
    try {
        return SettingsDocument({file, encoding});
    } catch (const CommandError& error) {
        const bool isNoSettings = error.Code() == ExitCode::CHECK_FAILED;
        throw CommandError(isNoSettings ? ExitCode::IO_ERROR : error.Code(), error.what());
    }
}

std::string Line(const SettingsDocument& document, const SectionKey& key, bool wantsComments) {
    std::string line;
    if (key.IsValid()) line = document.Shown(key.GetName().String()) + " = " + document.Shown(key.GetValue());
    if (wantsComments && !key.GetComments().empty())
        line += (line.empty() ? ";" : " ;") + document.Shown(key.GetComments());
    return line;
}

void Print(const std::vector<Difference>& differences, const SettingsDocument& before,
           const SettingsDocument& after, bool wantsComments) {
    PrintDifferenceLine("--- " + before.Name());
    PrintDifferenceLine("+++ " + after.Name());
    const std::wstring* section = nullptr;
    for (const Difference& difference : differences) {
        const std::string header = "[" + before.Shown(difference.section) + "]";
        if (difference.isSection)
            PrintDifferenceLine((difference.before ? "-" : "+") + header);
        else if (!section || *section != difference.section)
            PrintDifferenceLine(" " + header);
        section = &difference.section;
        if (difference.isSection) continue;
        if (difference.before) PrintDifferenceLine("-" + Line(before, *difference.before, wantsComments));
        if (difference.after) PrintDifferenceLine("+" + Line(after, *difference.after, wantsComments));
    }
}

Json ToJson(const SettingsDocument& document, const std::optional<SectionKey>& key, bool wantsComments) {
    if (!key) return nullptr;
    Json shown = {{"value", document.Shown(key->GetValue())}};
    if (wantsComments) shown["comment"] = document.Shown(key->GetComments());
    return shown;
}

Json ToJson(const Difference& difference, const SettingsDocument& before, const SettingsDocument& after,
            bool wantsComments) {
    Json shown = {{"section", before.Shown(difference.section)}};
    if (difference.isSection) {
        shown["isThere"] = {{"before", difference.before.has_value()},
                            {"after", difference.after.has_value()}};
        return shown;
    }
    shown["key"] =
        before.Shown((difference.before ? difference.before : difference.after)->GetName().String());
    shown["before"] = ToJson(before, difference.before, wantsComments);
    shown["after"] = ToJson(after, difference.after, wantsComments);
    return shown;
}

} // namespace

void Run(const DiffSettings& options) {
    const SettingsDocument before = Opened(options.before, options.encoding);
    const SettingsDocument after = Opened(options.after, options.encoding);
    const std::vector<Difference> differences = Comparer(before, after, options.wantsComments).Compare();
    if (options.json) {
        Json list = Json::array();
        for (const Difference& difference : differences)
            list.push_back(ToJson(difference, before, after, options.wantsComments));
        PrintJson({{"before", options.before.Utf8()},
                   {"after", options.after.Utf8()},
                   {"differences", std::move(list)}});
    } else if (!differences.empty()) {
        Print(differences, before, after, options.wantsComments);
    }
    before.HintAtEncoding();
    after.HintAtEncoding();
    if (!differences.empty()) throw CommandExit{ExitCode::CHECK_FAILED};
}

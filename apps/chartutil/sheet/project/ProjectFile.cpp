// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/ProjectFile.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

UserText SettingsPath(const UserText& folder) {
    UserText path((NativePath(folder) / "project.ini").string());
    if (!PathExists(path))
        throw CommandError(ExitCode::IO_ERROR, folder.Utf8() +
                                                   " is no project: it has no file project.ini; 'chartutil "
                                                   "init FOLDER --soundings FILE' makes one");
    return path;
}

// What an editor wrote as UTF-8 came one byte a character.
std::wstring Decoded(const std::wstring& text) {
    std::string bytes;
    for (const wchar_t c : text) {
        if (c > 0xFF) return text;
        bytes += static_cast<char>(c);
    }
    std::wstring decoded = FromUtf8(bytes);
    const auto isStrayByte = [](wchar_t c) { return c >= 0xDC80 && c <= 0xDCFF; };
    return std::ranges::any_of(decoded, isStrayByte) ? text : decoded;
}

// How a value is named in a message, which may have come from anywhere.
std::string Named(const std::wstring& value) {
    constexpr std::size_t kLongest = 60;
    const std::wstring text = Decoded(value);
    return "'" + ToUtf8(text.substr(0, kLongest)) + (text.size() > kLongest ? "..." : "") + "'";
}

// So many letters have to be changed, added or taken out to make one of the other.
std::size_t Distance(std::wstring_view a, std::wstring_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t before = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = before + (ToLowerW(a[i]) == ToLowerW(b[j]) ? 0 : 1);
            before = std::exchange(row[j + 1], std::min({row[j] + 1, row[j + 1] + 1, changed}));
        }
    }
    return row.back();
}

template <typename Names> std::string Suggestion(const std::wstring& name, const Names& names) {
    constexpr std::size_t kLongest = 64;
    std::size_t least = std::max<std::size_t>(name.size() / 3, 2) + 1;
    std::wstring nearest;
    for (const std::wstring& known : names) {
        const std::size_t distance = name.size() > kLongest ? least : Distance(name, known);
        if (distance >= least) continue;
        least = distance;
        nearest = known;
    }
    return nearest.empty() ? "; remove it" : "; did you mean '" + ToUtf8(nearest) + "'?";
}

std::set<std::wstring> ItemsOf(const std::wstring& list) {
    std::set<std::wstring> items;
    const FormatString split(list, L',', 1000);
    for (int i = 0; i < split.NumItems(); ++i) items.insert(trimW(split.Item(i)));
    return items;
}

// Whether a record took a value as it was given, in another spelling perhaps.
bool IsTaken(const std::wstring& given, const std::wstring& taken) {
    const std::wstring a = trimW(given, L" \t\""), b = trimW(taken, L" \t\"");
    if (a.empty() || icompareW(a, b)) return true;
    double first = 0, second = 0;
    if (ParseNumber(ToUtf8(a), first) && ParseNumber(ToUtf8(b), second))
        return std::fabs(first - second) <= 1e-6 * std::max(std::fabs(first), std::fabs(second));
    return a.find(L',') != std::wstring::npos && ItemsOf(a) == ItemsOf(b);
}

// A colour by its index counts only where there is no true one.
bool IsColorIndex(const std::wstring& key, const std::wstring& value) {
    constexpr std::wstring_view kColor = L"Color", kTrue = L"True";
    if (!key.ends_with(kColor) || key.find(kTrue) != std::wstring::npos) return false;
    double index = 0;
    return ParseNumber(ToUtf8(value), index) && index >= 0 && index <= 255 && index == std::floor(index);
}

bool IsTurn(const std::wstring& key, const std::wstring& value) {
    double degrees = 0;
    return key.ends_with(L"Rotation") && ParseNumber(ToUtf8(value), degrees);
}

} // namespace

ProjectFile::ProjectFile(const UserText& folder)
    : m_folder(folder), m_path(SettingsPath(folder)), m_file(OpenSettings(m_path)), m_lines(m_path) {}

const Section* ProjectFile::Find(const wchar_t* section) {
    m_known[section];
    return m_file.HasSection(section) ? &std::as_const(m_file)[section] : nullptr;
}

const SectionKey* ProjectFile::FindKey(const wchar_t* section, const wchar_t* key) {
    const Section* const found = Find(section);
    m_known[section].insert(key);
    return found && found->HasKey(key) ? &(*found)[key] : nullptr;
}

void ProjectFile::ReadText(const wchar_t* section, const wchar_t* key, std::wstring& value) {
    if (const SectionKey* const given = FindKey(section, key)) value = Decoded(given->GetValue());
}

void ProjectFile::ReadText(const wchar_t* section, const wchar_t* key, std::string& value) {
    std::wstring text = FromUtf8(value);
    ReadText(section, key, text);
    value = ToUtf8(text);
}

bool ProjectFile::ReadNumber(const wchar_t* section, const wchar_t* key, double& value, double lowest,
                             double highest) {
    const SectionKey* const given = FindKey(section, key);
    if (!given || given->GetValue().empty()) return false;
    double number = 0;
    if (!ParseNumber(ToUtf8(given->GetValue()), number)) {
        Report(section, key, Named(given->GetValue()) + " is no number; " + DecimalText(value) + " is taken");
        return false;
    }
    if (number >= lowest && number <= highest) {
        value = number;
        return true;
    }
    const bool hasUpper = highest < std::numeric_limits<double>::max();
    Report(section, key,
           Named(given->GetValue()) + " is not " +
               (hasUpper ? "from " + DecimalText(lowest) + " to " + DecimalText(highest)
                         : "at least " + DecimalText(lowest)) +
               "; " + DecimalText(value) + " is taken");
    return false;
}

void ProjectFile::ReadName(const wchar_t* section, const wchar_t* key, const std::vector<std::string>& names,
                           std::size_t& index) {
    const SectionKey* const given = FindKey(section, key);
    if (!given || given->GetValue().empty()) return;
    std::string all;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (icompareW(given->GetValue(), FromUtf8(names[i]))) {
            index = i;
            return;
        }
        all += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
    }
    Report(section, key, Named(given->GetValue()) + " is not known; write " + all);
}

Section ProjectFile::ReadTexts(const wchar_t* section) {
    m_taken.insert(section);
    Section texts(section);
    if (const Section* const found = Find(section))
        for (int i = 0; i < found->NumKeys(); ++i)
            texts[Decoded((*found)[i].GetName().String())] << Decoded((*found)[i].GetValue());
    return texts;
}

void ProjectFile::CompareTaken(const wchar_t* section, const Section* given, const Section& taken) {
    for (int i = 0; i < taken.NumKeys(); ++i) {
        const std::wstring& key = taken[i].GetName().String();
        m_known[section].insert(key);
        if (!given || !given->HasKey(key)) continue;
        const std::wstring& value = (*given)[key].GetValue();
        if (IsColorIndex(key, value) || IsTurn(key, value) || IsTaken(value, taken[i].GetValue())) continue;
        const std::wstring& instead = taken[i].GetValue();
        Report(section, key,
               Named(value) + " cannot be used; " + (instead.empty() ? "nothing" : Named(instead)) +
                   " is taken");
    }
}

void ProjectFile::CompareLine(const wchar_t* section, const wchar_t* key, const std::wstring& given,
                              const std::wstring& taken, const std::vector<std::wstring>& names) const {
    constexpr int kMost = 100;
    const FormatString from(given, L',', kMost), to(taken, L',', kMost);
    const int count = static_cast<int>(names.size());
    for (int i = 0; i < std::min(from.NumItems(), count); ++i) {
        const std::wstring& name = names[static_cast<std::size_t>(i)];
        if (IsColorIndex(name, from.Item(i)) || IsTurn(name, from.Item(i)) ||
            IsTaken(from.Item(i), to.Item(i)))
            continue;
        Report(section, key,
               "the item " + ToUtf8(name) + ", " + Named(from.Item(i)) + ", cannot be used; " +
                   Named(to.Item(i)) + " is taken");
    }
    if (from.NumItems() > count)
        Report(section, key,
               "there are more than the " + std::to_string(count) +
                   " items that are read; 'chartutil style line' explains them");
}

void ProjectFile::RequireFace(const wchar_t* section, const std::wstring& key, const TextInfo& style) {
    const FontInUse font = FindFont(style);
    if (font.isInstalled) return;
    const std::string face = Named(style.Font());
    if (font.family.empty())
        Report(section, key,
               "there is no text, since no font with outlines can be used instead of " + face +
                   "; install one");
    else
        Report(section, key,
               face + (IsBitmapFont(style.Font()) ? " has no outlines, so " : " is not installed, so ") +
                   ToUtf8(font.family) + " is drawn; 'chartutil fonts' lists what is there");
}

void ProjectFile::ReportUnknown() const {
    constexpr std::size_t kMost = 100;
    std::size_t count = 0;
    for (const auto& [section, key, line] : m_lines.Names()) {
        const auto known = m_known.find(section);
        const bool isSection = known != m_known.end();
        if (key.empty() ? isSection
                        : !isSection || m_taken.contains(section) || known->second.contains(key) ||
                              key.starts_with(L'$'))
            continue;
        if (++count > kMost) continue;
        if (key.empty()) {
            Names names;
            for (const auto& [name, keys] : m_known) names.insert(name);
            Report(section, key, "there is no such section in a project" + Suggestion(section, names));
        } else {
            PlotErrorReporter::Get()[section].emplace_back(FromUtf8(
                m_path.Utf8() + ':' + std::to_string(line) + ": " + InBrackets(section) + ' ' + ToUtf8(key) +
                ": there is no such key in this section" + Suggestion(key, known->second)));
        }
    }
    if (count > kMost)
        PlotErrorReporter::Get()[L"project.ini"].emplace_back(FromUtf8(
            m_path.Utf8() + ": " + std::to_string(count - kMost) + " more sections and keys are not known"));
}

void ProjectFile::Report(std::wstring_view section, std::wstring_view key, const std::string& what) const {
    PlotErrorReporter::Get()[std::wstring(section)].emplace_back(
        FromUtf8(m_lines.Place(section, key) + what));
}

UserText ProjectFile::PathOf(const std::wstring& name) const {
    return (NativePath(m_folder) / NativePath(UserText(ToUtf8(name)))).string();
}

// SPDX-License-Identifier: MIT
#include "apps/chartutil/sheet/project/ProjectFile.h"

#include "UtilityDLL/runtime/PlotErrorReporter.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/WideString.h"
#include "apps/chartutil/drawing/FontInUse.h"
#include "apps/chartutil/files/Files.h"
#include "apps/chartutil/files/SettingsFile.h"
#include "apps/chartutil/sheet/project/ProjectKeys.h"
#include "apps/chartutil/terminal/Errors.h"
#include "apps/chartutil/terminal/Numbers.h"
#include "apps/chartutil/terminal/Suggestion.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace {

UserText SettingsPath(const UserText& folder) {
    UserText path((NativePath(folder) / "project.ini").string());
    if (std::error_code none; std::filesystem::is_regular_file(NativePath(folder), none))
        throw CommandError(ExitCode::IO_ERROR, folder.Utf8() + " is a file; name the project's folder");
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

// A number as it would be written; empty for none.
std::string Written(double number) { return std::isfinite(number) ? DecimalText(number) : std::string(); }

std::string TakenInstead(const std::string& value) {
    return "; " + (value.empty() ? "nothing" : value) + " is taken";
}

std::string Suggestion(const std::wstring& name, const std::vector<std::string>& names) {
    const std::string meant = DidYouMean(ToUtf8(name), names, '\'', '\'');
    return meant.empty() ? "; remove it" : meant;
}

// What is wrong with a number, by the table.
std::string FaultIn(const wchar_t* section, const wchar_t* key, const std::wstring& value) {
    const ProjectKey* const row = FindProjectKey(section, key);
    return row ? FaultOf(*row, value) : std::string();
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
    m_taken[section];
    return m_file.HasSection(section) ? &std::as_const(m_file)[section] : nullptr;
}

const SectionKey* ProjectFile::FindKey(const wchar_t* section, const wchar_t* key) {
    const Section* const found = Find(section);
    m_taken[section][key];
    return found && found->HasKey(key) ? &(*found)[key] : nullptr;
}

void ProjectFile::ReadText(const wchar_t* section, const wchar_t* key, std::wstring& value) {
    if (const SectionKey* const given = FindKey(section, key)) value = Decoded(given->GetValue());
    m_taken[section][key] = value;
}

void ProjectFile::ReadText(const wchar_t* section, const wchar_t* key, std::string& value) {
    std::wstring text = FromUtf8(value);
    ReadText(section, key, text);
    value = ToUtf8(text);
}

bool ProjectFile::ReadNumber(const wchar_t* section, const wchar_t* key, double& value) {
    const SectionKey* const given = FindKey(section, key);
    const bool isGiven = given && !given->GetValue().empty();
    const std::string fault = isGiven ? FaultIn(section, key, given->GetValue()) : "";
    const bool isTaken = isGiven && fault.empty() && ParseNumber(ToUtf8(given->GetValue()), value);
    m_taken[section][key] = FromUtf8(Written(value));
    if (!fault.empty())
        Report(section, key, Named(given->GetValue()) + ' ' + fault + TakenInstead(Written(value)));
    return isTaken;
}

std::size_t ProjectFile::ReadName(const wchar_t* section, const wchar_t* key, std::size_t otherwise) {
    const SectionKey* const given = FindKey(section, key);
    const ProjectKey* const row = FindProjectKey(section, key);
    const std::vector<std::string> names = row ? ChoicesOf(*row) : std::vector<std::string>();
    std::size_t taken = otherwise;
    if (given && !given->GetValue().empty()) {
        std::string all;
        std::size_t found = names.size();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (icompareW(given->GetValue(), FromUtf8(names[i]))) found = i;
            all += (i == 0 ? "" : i + 1 < names.size() ? ", " : " or ") + names[i];
        }
        if (found == names.size())
            Report(section, key, Named(given->GetValue()) + " is not known; write " + all);
        else
            taken = found;
    }
    if (taken < names.size()) m_taken[section][key] = FromUtf8(names[taken]);
    return taken;
}

Section ProjectFile::ReadTexts(const wchar_t* section) {
    Section texts(section);
    if (const Section* const found = Find(section))
        for (int i = 0; i < found->NumKeys(); ++i)
            texts[Decoded((*found)[i].GetName().String())] << Decoded((*found)[i].GetValue());
    return texts;
}

// Puts those of the section's values that can be used over the values that a record has. False without the
// section.
bool ProjectFile::PutGiven(const wchar_t* section, Section& values) {
    const Section* const given = Find(section);
    if (!given) return false;
    for (const auto& [key, row] : KeysOf(section)) {
        const std::wstring newer =
            row->newer ? key.substr(0, key.size() - std::wstring_view(row->name).size()) + row->newer : L"";
        const bool isOfRecord = values.HasKey(key) || (!newer.empty() && values.HasKey(newer));
        if (!isOfRecord || !given->HasKey(key) || (*given)[key].GetValue().empty()) continue;
        const std::wstring& value = (*given)[key].GetValue();
        if (const std::string fault = FaultOf(*row, value); !fault.empty()) {
            double instead = 0;
            const std::string text = ToUtf8(values[values.HasKey(key) ? key : newer].GetValue());
            Report(section, key,
                   Named(value) + ' ' + fault +
                       TakenInstead(ParseNumber(text, instead) ? DecimalText(instead) : text));
            continue;
        }
        values[key] << value;
        if (!newer.empty() && !given->HasKey(newer)) (void)values.RemoveKey(newer);
    }
    return true;
}

void ProjectFile::CompareTaken(const wchar_t* section, const Section& given, const Section& taken) {
    for (int i = 0; i < taken.NumKeys(); ++i) {
        const std::wstring& key = taken[i].GetName().String();
        m_taken[section][key] = taken[i].GetValue();
        if (!given.HasKey(key)) continue;
        const std::wstring& value = given[key].GetValue();
        if (IsColorIndex(key, value) || IsTurn(key, value) || IsTaken(value, taken[i].GetValue())) continue;
        const std::wstring& instead = taken[i].GetValue();
        Report(section, key,
               Named(value) + " cannot be used" + TakenInstead(instead.empty() ? "" : Named(instead)));
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
    std::vector<std::string> sections;
    for (const ProjectSection& known : ProjectSections()) sections.push_back(ToUtf8(known.name));
    std::size_t count = 0;
    for (const auto& [section, key, line] : m_lines.Names()) {
        const auto known = m_taken.find(section);
        const bool isSection = known != m_taken.end();
        if (key.empty()
                ? isSection
                : !isSection || HasAnyKeys(section) || known->second.contains(key) || key.starts_with(L'$'))
            continue;
        if (++count > kMost) continue;
        if (key.empty()) {
            Report(section, key, "there is no such section in a project" + Suggestion(section, sections));
            continue;
        }
        std::vector<std::string> keys;
        for (const NamedProjectKey& each : KeysOf(section)) keys.push_back(ToUtf8(each.name));
        PlotErrorReporter::Get()[section].emplace_back(
            FromUtf8(m_path.Utf8() + ':' + std::to_string(line) + ": " + InBrackets(section) + ' ' +
                     ToUtf8(key) + ": there is no such key in this section" + Suggestion(key, keys)));
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

// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/private/ContourEditing.h"

#include "UtilityDLL/colors/DXFColorTable.h"
#include "UtilityDLL/settings/FileChecksum.h"
#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/File.h"
#include "VelmBase/FileName.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

bool IsThere(const std::wstring& path) {
    std::uint32_t modified = 0;
    return FILES::ModificationTime(path, modified);
}

unsigned int Fingerprint(const std::wstring& path) {
    return FileChecksum(path, FileChecksum::ALL_WORDS).Value();
}

// Whether the file has what saving the list would not write: other sections and keys, or comments.
bool HasMore(const std::wstring& path, const ContourDefinitionList& list) {
    constexpr const wchar_t* kKeys[] = {L"Level",    L"Color",     L"TrueColor",
                                        L"LineType", L"LineWidth", L"Annotate"};
    const IniFile file(path);
    if (file.NumSections() != list.NumContours()) return true;
    for (int i = 0; i < file.NumSections(); ++i) {
        const Section& section = file[i];
        for (int j = 0; j < section.NumKeys(); ++j) {
            const SectionKey& key = section[j];
            const bool isWritten =
                std::ranges::any_of(kKeys, [&](const wchar_t* name) { return key == SectionKey(name); });
            if (!isWritten || !key.GetComments().empty()) return true;
        }
    }
    return false;
}

} // namespace

ContourEditing::ContourEditing(std::wstring path) : m_path(std::move(path)) {
    if (m_path.empty()) return;
    const unsigned int fingerprint = Fingerprint(m_path); // before it is read: a change meanwhile is one
    const bool isLoaded = m_list.Load(m_path.c_str());
    if (isLoaded && Target() == m_path && !HasMore(m_path, m_list)) m_known = fingerprint;
    m_isUnreadable = !isLoaded && IsThere(m_path);
}

std::wstring ContourEditing::OpeningFault() const {
    return m_isUnreadable ? LoadText(TextId::CONTOURS_NOT_READ) + m_path : std::wstring();
}

std::vector<std::wstring> ContourEditing::Row(const Contour& contour) {
    const FormatString types(LoadText(TextId::CONTOURS_LINE_TYPES), L',');
    return {NumberText::FromFixed(contour.level, 2),
            LoadText(contour.annotate ? TextId::CONTOURS_YES : TextId::CONTOURS_NO),
            NumberText::FromFixed(static_cast<double>(contour.lineWidth), 1), types[contour.lineType]};
}

int ContourEditing::PositionOf(double level) const {
    const bool isThere = m_lastEdited >= 0 && m_lastEdited < m_list.NumContours();
    if (isThere && m_list[m_lastEdited].level == level) return m_lastEdited;
    const int found = m_list.Find(level);
    if (found != -1) return found;
    for (int i = 0; i < m_list.NumContours(); ++i)
        if (m_list[i].level == level) return i;
    return -1;
}

int ContourEditing::RowToEdit(const std::vector<int>& selected) {
    return selected.empty() ? -1 : selected.front();
}

std::vector<ContourEditing::Run> ContourEditing::RunsFromTheLast(const std::vector<int>& selected) {
    std::vector<Run> runs;
    for (auto row = selected.rbegin(); row != selected.rend(); ++row) {
        if (runs.empty() || *row != runs.back().first - 1) runs.push_back({*row + 1, 0});
        --runs.back().first;
        ++runs.back().count;
    }
    return runs;
}

// In a list that is not sorted, what was inserted may not be found again: then the result is -1 as well, and
// only the number of contours tells.
ContourEditing::Failure ContourEditing::Add(const Contour& contour) {
    const int before = m_list.NumContours();
    m_list.Add(contour);
    if (m_list.NumContours() == before) return TextId::CONTOUR_DUPLICATE_LEVEL;
    return std::nullopt;
}

ContourEditing::Failure ContourEditing::Edit(int position, const Contour& contour) {
    const int before = m_list.NumContours();
    m_list.Set(position, contour);
    m_lastEdited = position;
    if (m_list.NumContours() < before) return TextId::CONTOUR_NOT_MODIFIED;
    return std::nullopt;
}

ContourEditing::Failure ContourEditing::GenerateFromRange(double lowest, double highest, double interval) {
    if (!m_list.Generate(lowest, highest, interval)) return TextId::CONTOUR_NOT_GENERATED;
    return std::nullopt;
}

ContourEditing::Failure ContourEditing::GenerateFromColorTable(const std::wstring& path) {
    DXFColorTable table;
    if (!table.FileOpen(path) || !m_list.Generate(table, false)) return TextId::CONTOUR_NOT_GENERATED;
    return std::nullopt;
}

int ContourEditing::Remove(const std::vector<int>& selected) {
    for (const Run& run : RunsFromTheLast(selected)) m_list.Remove(run.first, run.count);
    if (selected.empty()) return -1;
    return std::min(selected.front(), m_list.NumContours() - 1);
}

std::wstring ContourEditing::Question() const {
    if (m_path.empty()) return LoadText(TextId::CONTOUR_SAVE_CHANGES);
    return WouldLoseAFile() ? LoadText(TextId::CONTOURS_OVERWRITE) + Target() : std::wstring();
}

bool ContourEditing::WouldLoseAFile() const {
    const std::wstring target = Target();
    return IsThere(target) && (!m_known || Fingerprint(target) != *m_known);
}

std::wstring ContourEditing::Target() const {
    if (m_path.empty()) return {};
    FileName target(m_path);
    target.SetExtension(L"cdf");
    return target.Path();
}

std::wstring ContourEditing::Save(const std::wstring& path) {
    if (path.empty()) return LoadText(TextId::CONTOURS_NO_FILE);
    if (m_list.NumContours() == 0) return LoadText(TextId::CONTOURS_NONE_TO_SAVE);
    if (!m_list.Save(path.c_str())) return LoadText(TextId::CONTOURS_NOT_SAVED) + path;
    if (path == Target()) m_known = Fingerprint(path);
    return {};
}

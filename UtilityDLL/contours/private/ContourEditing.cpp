#include "UtilityDLL/contours/private/ContourEditing.h"

#include "UtilityDLL/settings/FileChecksum.h"
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

} // namespace

ContourEditing::ContourEditing(std::wstring path) : m_path(std::move(path)) {
    if (m_path.empty()) return;
    m_targetAtFirst = Fingerprint(Target()); // before it is read: what changes meanwhile is a change
    m_isUnreadable = !m_list.Load(m_path.c_str()) && IsThere(m_path);
}

std::vector<std::wstring> ContourEditing::Row(const Contour& contour) {
    const FormatString types(LoadText(TextId::CONTOURS_LINE_TYPES), L',');
    return {NumberText::FromFixed(contour.level, 2),
            LoadText(contour.annotate ? TextId::CONTOURS_YES : TextId::CONTOURS_NO),
            NumberText::FromFixed(static_cast<double>(contour.lineWidth), 1), types[contour.lineType]};
}

int ContourEditing::Remove(const std::vector<int>& positions) {
    for (auto position = positions.rbegin(); position != positions.rend(); ++position)
        m_list.Remove(*position);
    if (positions.empty()) return -1;
    return std::min(positions.front(), m_list.NumContours() - 1);
}

std::wstring ContourEditing::Target() const {
    FileName target(m_path);
    target.SetExtension(L"cdf");
    return target.Path();
}

bool ContourEditing::OverwritesOthers() const {
    const std::wstring target = Target();
    if (!IsThere(target)) return false;
    return target != m_path || m_isUnreadable || Fingerprint(target) != m_targetAtFirst;
}

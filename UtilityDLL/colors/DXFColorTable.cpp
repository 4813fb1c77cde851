// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColorTable.h"

namespace {

// The suite's file flags for a colour table; a settings file has no use for them.
constexpr int kOpenFlags = 32;
constexpr int kSaveFlags = 4113;

} // namespace

bool DXFColorTable::FileOpen(const CString& path) {
    FileObject file;
    // A file that cannot be opened leaves nothing to read, which the table reports.
    file.Open(path.String(), kOpenFlags);
    return FileOpen(file);
}

bool DXFColorTable::FileSave(const CString& path) const {
    FileObject file;
    FileSave(file);
    return file.Save(path.String(), kSaveFlags);
}

void DXFColorTable::MakeDXFTable() {
    for (int i = 0; i < NumEntries(); ++i) SetEntryColor(i, DXFColor(EntryColor(i)));
    Unique();
}

void DXFColorTable::Unique() {
    MergeEqualColors();
    m_dxfColors.clear();
    for (int i = 0; i < NumEntries(); ++i) m_dxfColors.emplace_back(EntryColor(i));
    m_fallbackColor = DXFColor(DefaultColor());
}

DXFColor DXFColorTable::GetDXFColor(double value) const {
    const int count = NumEntries();
    const bool isBuilt = m_dxfColors.size() == static_cast<std::size_t>(count);
    if (count == 0 || !isBuilt || !(EntryValue(0) <= value)) return m_fallbackColor;
    return FindDXFColor(value, 0, count - 1);
}

DXFColor DXFColorTable::FindDXFColor(double value, int low, int high) const {
    // Halving without a branch on the comparison, which no processor could foresee: the entry sought is
    // always one of the `count` from `first` on.
    const double* const values = Values();
    auto first = static_cast<std::size_t>(low);
    for (auto count = static_cast<std::size_t>(high - low) + 1; count > 1;) {
        const std::size_t half = count / 2;
        first += half * static_cast<std::size_t>(values[first + half] <= value);
        count -= half;
    }
    return m_dxfColors[first];
}

// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "UtilityDLL/Export.h"
#include "UtilityDLL/colors/DXFColor.h"
#include "VelmBase/ColorTable.h"

#include <cstddef>
#include <vector>

/// A colour table with a DXF colour for each entry, so that a value can be turned into one: each entry opens
/// a band that reaches up to the next entry's value.
///
/// The DXF colours follow the entries only when they are built, by MakeDXFTable() or Unique(): call one of
/// them after loading or adding entries.
class UTILITYDLL_API DXFColorTable : public ColorTable {
public:
    /// Replaces the entries and the default colour by those of a "col" file; the DXF colours stay as they
    /// were. False when the file cannot be read or something in it is wrong: see ColorTable::FileOpen.
    bool FileOpen(const CString& path);
    using ColorTable::FileOpen;

    /// Writes a "col" file, whole or not at all. False when it cannot be written; a file there stays as it
    /// was.
    bool FileSave(const CString& path) const;
    using ColorTable::FileSave;

    /// Gives every entry the palette colour nearest to its own, then Unique().
    void MakeDXFTable();

    /// Keeps the first of each run of entries with the same colour, so that equal bands become one, and
    /// builds the DXF colours and the fallback colour: the one nearest to the table's default colour.
    void Unique();

    /// The DXF colour of the last entry at or below `value`. The fallback colour below the first entry, for
    /// NaN, without entries, and while the entries are more or fewer than the DXF colours built for them.
    DXFColor operator[](double value) const { return GetDXFColor(value); }

    /// The DXF colour built for the entry at `index`; an index without one is the caller's error.
    DXFColor EntryDxfColor(int index) const { return m_dxfColors[static_cast<std::size_t>(index)]; }

    /// Entries alone: neither the default colour nor the DXF colours count.
    bool operator==(const DXFColorTable& other) const { return ColorTable::operator==(other); }

protected:
    /// What operator[] gives.
    DXFColor GetDXFColor(double value) const;

    /// The same among the entries `low` to `high`, of which the first has to be at or below `value`.
    DXFColor FindDXFColor(double value, int low, int high) const;

private:
    std::vector<DXFColor> m_dxfColors;
    DXFColor m_fallbackColor;
};

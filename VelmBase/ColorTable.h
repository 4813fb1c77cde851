// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/Export.h"
#include "VelmBase/FileObject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Ascending values, each with a colour, and a default colour for what lies below them: the colours of depths
/// on a chart. Colours are colour references, of which the low 24 bits count. At first the default colour is
/// black.
///
/// A "col" file is a settings file with one section:
///
///     [ColorTable]
///     DefaultColor = 255,255,255
///     Entry(0)     = -12.5,8,48,107
///     Entry(1)     = 0,198,219,239
///
/// An entry is its value and its red, green and blue from 0 to 255. Values have as many digits as they need
/// to come back exactly; "inf", "-inf" and "nan" are values too. The number in an entry's key only tells it
/// from the others: entries count in file order, and of two keys with the same number the later one's text
/// stands in the former's place. Keys of other names are passed over.
class VELMBASE_API ColorTable {
public:
    ColorTable() = default; ///< no entries

    /// A value that is copied as a whole.
    /// @{
    ColorTable(const ColorTable&) = default;
    ColorTable(ColorTable&&) = default;
    // By a copy, so that values and colours stay together when memory runs out.
    ColorTable& operator=(const ColorTable& other) { return *this = ColorTable(other); }
    ColorTable& operator=(ColorTable&&) = default;
    /// @}

    /// How many entries there are.
    int NumEntries() const { return static_cast<int>(m_values.size()); }

    /// The value and the colour of an entry. Indices outside 0 to NumEntries() - 1 are the caller's error.
    /// @{
    double EntryValue(int index) const { return m_values[static_cast<std::size_t>(index)]; }
    unsigned long EntryColor(int index) const { return m_colors[static_cast<std::size_t>(index)]; }
    /// @}

    /// Inserts an entry in ascending order of value, behind those with the same value. NaN comes last.
    void AddEntry(double value, unsigned long color);

    /// Gives an entry another colour. Indices outside 0 to NumEntries() - 1 are the caller's error.
    void SetEntryColor(int index, unsigned long color);

    /// The colour of what lies below the first entry.
    /// @{
    unsigned long DefaultColor() const { return m_defaultColor; }
    void SetDefaultColor(unsigned long color) {
        m_defaultColor = static_cast<std::uint32_t>(color & COLOR_BITS);
    }
    /// @}

    /// Replaces the table by that of `file`. True when the file has one and all of it could be read, even if
    /// it has no entries. What is wrong or odd is told in `remarks`, one line each, at most MAX_REMARKS:
    ///   - no section "ColorTable": false, and the table is empty;
    ///   - an entry whose value is no number, or a number with more behind it than blanks: false, and the
    ///     entry is left out;
    ///   - an entry or default colour without three components that are integers from 0 to 255: false, and
    ///     the entry is left out, the default colour black;
    ///   - a value below the one before: true, and the entries are sorted;
    ///   - a value that is there twice: true, and both are kept, in file order.
    bool FileOpen(const FileObject& file, std::vector<std::wstring>* remarks = nullptr);

    /// Adds the table to `file`. False, changing nothing, when there is one already.
    bool FileSave(FileObject& file) const;

    /// How many remarks FileOpen() makes at most.
    static constexpr std::size_t MAX_REMARKS = 100;

    /// Entries alone: the default colour does not count. NaN equals nothing, itself included.
    bool operator==(const ColorTable& other) const {
        return m_values == other.m_values && m_colors == other.m_colors;
    }

protected:
    /// The values in one piece, for searching.
    const double* Values() const { return m_values.data(); }

    /// Keeps the first of each run of entries with the same colour.
    void MergeEqualColors();

private:
    /// Comes before an entry is put in: afterwards its value and colour find room, or memory ran out for
    /// both.
    void MakeRoom();
    void Sort();

    static constexpr unsigned long COLOR_BITS = 0xFFFFFF;

    std::vector<double> m_values;
    std::vector<std::uint32_t> m_colors;
    std::uint32_t m_defaultColor = 0;
};

// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/Export.h"
#include "VelmBase/ColorTable.h"
#include "VelmBase/File.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace SETTINGS {
class Writer;
}

/// The levels at which contour lines are drawn on a chart, and how each line looks.
///
/// Add() and Set() keep the levels ascending and unique; Generate() and Load() append in the order of their
/// source. Add(), Set() and Find() search for a level by halves and assume ascending ones: in a list that is
/// not, they may miss a level.
///
/// Where memory runs out, an operation fails as it does otherwise; nothing is thrown but by copying a list.
class UTILITYDLL_API ContourDefinitionList {
public:
    /// One contour. Its level identifies it within a list.
    struct ContourDefInfo {
        float lineWidth = 0.0f; ///< in the plot's unit
        int lineType = 0;       ///< 0 continuous, 1 dashed, 2 dotted; any other number is saved as continuous
        double level = 0.0;     ///< in the chart's depth unit
        std::uint32_t trueColor = 0; ///< colour reference
        bool annotate = false;       ///< whether the contour is labelled

        /// Exact. A level that is NaN equals nothing.
        bool operator==(const ContourDefInfo& other) const = default;
    };

    /// How many records there are.
    int NumContours() const { return static_cast<int>(m_contours.size()); }

    /// The record at that position, from 0. Positions outside 0 to NumContours() - 1 are the caller's error.
    const ContourDefInfo& operator[](int position) const {
        return m_contours[static_cast<std::size_t>(position)];
    }

    /// Inserts a record in order of its level, which is compared exactly. Returns its position, or -1 when
    /// the level is taken or is NaN; nothing is inserted then.
    int Add(const ContourDefInfo& info);

    /// Replaces the record at `position`; returns the new record's position. -1 when there is no such
    /// position. A record with a new level is moved to its place; when another record has that level already,
    /// the result is -1 and the record at `position` is gone.
    int Set(int position, const ContourDefInfo& info);

    /// Removes the record at that position. False when there is none.
    bool Remove(int position);

    /// Removes `count` records from that position on, in the time of one. False, and nothing is removed, when
    /// there are not so many.
    bool Remove(int first, int count);

    /// The position of the record with exactly that level, or -1.
    /// @{
    int Find(const ContourDefInfo& info) const { return Find(info.level); }
    int Find(double level) const;
    /// @}

    /// Replaces the list by the multiples of `step` from `minimum` to `maximum`, with default fields. Each
    /// level is the one before plus `step`, so that rounding decides whether a maximum that is a multiple is
    /// reached: 0 to 0.3 by 0.1 ends at 0.2. True also when there is no multiple in between.
    ///
    /// False, with an empty list, when the minimum is not below the maximum, the step is not above 0, a
    /// number is NaN or the minimum infinite, there are more than MAX_GENERATED levels, or adding the step
    /// does not change a level any more.
    bool Generate(double minimum, double maximum, double step);

    /// How many levels Generate() makes at most.
    static constexpr int MAX_GENERATED = 10000000;

    /// Replaces the list by one record for each entry of the table, in its order and without a search for
    /// equal levels. With `invert` the colour is 255 minus the colour reference, as an unsigned 32-bit
    /// subtraction: only pure reds invert cleanly. False, with an empty list, when the table has no entries.
    bool Generate(const ColorTable& table, bool invert);

    /// Writes a contour definition file ("cdf"): a settings file with a section "Contour(<position>)" for
    /// each record. False when the list is empty or the file cannot be written; a file there stays as it was.
    /// A level and a width keep six digits after the point.
    bool Save(const wchar_t* path) const;

    /// The same, and tells in `error` why it could not be done: errc::no_message for an empty list,
    /// otherwise as FILES::ReplaceContents.
    bool Save(const wchar_t* path, std::error_code& error) const;

    /// Hands what Save() would write to a sink, piece by piece; nothing of an empty list. False when the sink
    /// did not take a piece.
    bool Write(const FILES::ContentSink& sink) const;

    /// Appends the contours of a file, from "Contour(0)" up to the first number that has no section or one
    /// without keys. A colour is that of the key "TrueColor", or the palette's of "Color" where there is
    /// none; an unknown line type is continuous. Returns whether the list has any record afterwards.
    ///
    /// False, with the list as it was, when the path is null or empty or the file cannot be read: it is not
    /// there, has a header "[]" or two sections of one name.
    ///
    /// What is odd in a file that was read is added to `remarks`, one line each, with the section that it is
    /// in: texts that are no numbers or have more behind one, levels that do not ascend, colours that do not
    /// fit each other, line types and keys that are not known, keys that are missing or there twice, and
    /// sections that are not read. A file without a contour has a remark; one that cannot be read has none.
    bool Load(const wchar_t* path, std::vector<std::wstring>* remarks = nullptr);

    /// The same for the content of a file.
    bool ReadText(std::string_view content, std::vector<std::wstring>* remarks = nullptr);

    /// Exact, level by level and field by field. A level that is NaN equals nothing.
    bool operator==(const ContourDefinitionList& other) const = default;

private:
    static const wchar_t* const LINESTYLES[3];

    void Compose(SETTINGS::Writer& file) const;
    std::size_t FirstNotBelow(double level) const;

    std::vector<ContourDefInfo> m_contours;
};

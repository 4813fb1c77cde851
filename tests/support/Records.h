// SPDX-License-Identifier: MIT
#pragma once

#include "UtilityDLL/settings/IniFile.h"
#include "VelmBase/FormatString.h"
#include "VelmBase/NumberText.h"
#include "tests/support/RecordPrinters.h"
#include "tests/support/TestFiles.h"

#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// One key of a record as a row of a table, and what becomes of the field in every case.
template <typename Record> struct FieldRow {
    using Change = std::function<void(Record&)>;

    const wchar_t* key;
    const wchar_t* text; ///< what is written for the field's value
    Change value;        ///< gives the field that value
    Change initial;      ///< gives it its default
    Change wrong;        ///< what a text that is no number makes of it
    Change missing;      ///< what a missing key makes of it; nothing when the field keeps its value
};

/// A row for a field with a setter: `set(record, value)`.
template <typename Record, typename Set, typename Value>
FieldRow<Record> Field(const wchar_t* key, const wchar_t* text, Set set, Value value, Value initial,
                       Value wrong) {
    const auto to = [set](Value v) { return [=](Record& record) { std::invoke(set, record, v); }; };
    return {key, text, to(value), to(initial), to(wrong), {}};
}

/// The same for a field that becomes `missing` when its key is not there.
template <typename Record, typename Set, typename Value>
FieldRow<Record> Field(const wchar_t* key, const wchar_t* text, Set set, Value value, Value initial,
                       Value wrong, Value missing) {
    FieldRow<Record> row = Field<Record>(key, text, set, value, initial, wrong);
    row.missing = [=](Record& record) { std::invoke(set, record, missing); };
    return row;
}

/// A row for a key that is written and whose reading other rows decide.
template <typename Record> FieldRow<Record> WrittenKey(const wchar_t* key, const wchar_t* text) {
    return {key, text, {}, {}, {}, {}};
}

template <typename Record> Section Written(const Record& record) {
    Section section(L"Record");
    EXPECT_TRUE(record.Write(section));
    return section;
}

template <typename Record> Record ReadFrom(const Section& section, Record record = {}) {
    (void)record.Read(section);
    return record;
}

/// A section with these keys.
inline Section SectionOf(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> keys) {
    Section section(L"Record");
    for (const auto& [key, value] : keys) section[key] << value;
    return section;
}

/// The section after it was saved to a file and opened again.
inline Section ThroughAFile(const Section& section) {
    const TemporaryFolder folder;
    IniFile file;
    file.AddSection(section);
    EXPECT_TRUE(file.Save(folder.File(L"record.ini")));
    return std::as_const(file = IniFile(folder.File(L"record.ini")))[section.GetName().String()];
}

/// Checks the names of a record's one-line form: each item is what the key of that name holds, both as
/// numbers where they are numbers. `record` has a value of its own in every field.
template <typename Record> void ExpectItemsAreKeys(const Record& record) {
    const Section section = Written(record);
    const FormatString items(record.ToString(), L',');
    const std::vector<std::wstring> names = Record::OneLineItems();
    ASSERT_EQ(static_cast<int>(names.size()), items.NumItems());
    EXPECT_EQ(static_cast<int>(names.size()), section.NumKeys());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::wstring item = items[static_cast<int>(i)];
        const std::wstring& value = section[names[i]].GetValue();
        double expected = 0;
        double number = 0;
        if (NumberText::Extract(value, expected) && NumberText::Extract(item, number))
            EXPECT_EQ(expected, number) << ::testing::PrintToString(names[i]);
        else
            EXPECT_EQ(value, item) << ::testing::PrintToString(names[i]);
    }
}

/// Checks every key of a record: that it is written, in this order and with nothing else; that it is read
/// back, from a file too; and what a missing key, an empty value and a text that is no number do.
template <typename Record> void ExpectFields(const std::vector<FieldRow<Record>>& rows) {
    const Record initial;
    Record full;
    for (const FieldRow<Record>& row : rows)
        if (row.value) row.value(full);

    const Section written = Written(full);
    ASSERT_EQ(static_cast<int>(rows.size()), written.NumKeys());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].key, written[static_cast<int>(i)].GetName().String());
        EXPECT_EQ(rows[i].text, written[static_cast<int>(i)].GetValue());
    }
    EXPECT_EQ(full, ReadFrom<Record>(written));
    EXPECT_EQ(full, ReadFrom<Record>(ThroughAFile(written)));
    EXPECT_FALSE(full == initial);

    for (const FieldRow<Record>& row : rows) {
        if (!row.value) continue;
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.key)));
        Record other = full;
        row.initial(other);
        EXPECT_NE(other, full) << "equality overlooks the field, or the row has its default";

        Section section = written;
        section.RemoveKey(row.key);
        Record expected = full;
        (row.missing ? row.missing : row.initial)(expected);
        EXPECT_EQ(expected, ReadFrom<Record>(section)) << "key missing";
        expected = full;
        if (row.missing) row.missing(expected);
        EXPECT_EQ(expected, ReadFrom(section, full)) << "key missing, with another value before";

        section = written;
        section[row.key] << L"no number";
        expected = full;
        row.wrong(expected);
        EXPECT_EQ(expected, ReadFrom<Record>(section)) << "not a number";
    }

    Record reset = full;
    for (const FieldRow<Record>& row : rows)
        if (row.initial) row.initial(reset);
    EXPECT_EQ(reset, initial);
}

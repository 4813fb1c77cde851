// SPDX-License-Identifier: MIT
#include "UtilityDLL/colors/DXFColorTable.h"

#include "tests/support/ColorPrinters.h"
#include "tests/support/Random.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

constexpr unsigned long kRed = 0x0000FF;
constexpr unsigned long kGreen = 0x00FF00;
constexpr unsigned long kBlue = 0xFF0000;

struct Entry {
    double value;
    unsigned long color;
};

DXFColorTable Table(std::initializer_list<Entry> entries, unsigned long defaultColor = 0) {
    DXFColorTable table;
    for (const Entry& entry : entries) table.AddEntry(entry.value, entry.color);
    table.SetDefaultColor(defaultColor);
    return table;
}

// Opens the protected look-ups.
struct Opened : DXFColorTable {
    using DXFColorTable::FindDXFColor;
    using DXFColorTable::GetDXFColor;
};

} // namespace

TEST(DXFColorTable, EmptyTableAnswersIndexZero) {
    const DXFColorTable table;
    EXPECT_EQ(0, table.NumEntries());
    EXPECT_EQ(0, table[5].Index());
}

TEST(DXFColorTable, ValueBelongsToTheLastEntryAtOrBelowIt) {
    DXFColorTable table = Table({{0, kRed}, {10, kGreen}, {20, kBlue}}, 0xFFFFFF);
    table.Unique();
    struct Row {
        double value;
        int index;
    };
    for (const Row& row : {Row{5, 10}, Row{0, 10}, Row{10, 90}, Row{9.999999, 10}, Row{20, 170}, Row{25, 170},
                           Row{kInf, 170}, Row{-1, 7}, Row{-1e-300, 7}, Row{-kInf, 7}, Row{kNan, 7}})
        EXPECT_EQ(row.index, table[row.value].Index()) << row.value;
}

TEST(DXFColorTable, AnswersTheFallbackUntilDxfColoursAreBuilt) {
    DXFColorTable table = Table({{0, kRed}}, kGreen);
    EXPECT_EQ(0, table[5].Index()); // the fallback colour is built with the others
    table.Unique();
    EXPECT_EQ(10, table[5].Index());
    table.AddEntry(3, kBlue);
    EXPECT_EQ(90, table[5].Index());
    table.Unique();
    EXPECT_EQ(170, table[5].Index());
}

TEST(DXFColorTable_Unique, KeepsTheFirstOfEachRunOfEqualColours) {
    DXFColorTable table = Table({{0, kRed}, {10, kRed}, {20, kBlue}, {30, kRed}, {40, kRed}, {50, kRed}});
    table.Unique();
    EXPECT_EQ(Table({{0, kRed}, {20, kBlue}, {30, kRed}}), table);
    EXPECT_EQ(10, table.EntryDxfColor(0).Index());
    EXPECT_EQ(170, table.EntryDxfColor(1).Index());
    EXPECT_EQ(10, table.EntryDxfColor(2).Index());
}

TEST(DXFColorTable_Unique, ComparesColoursNotIndices) {
    DXFColorTable table = Table({{0, 0x0000FF}, {10, 0x0000FE}});
    table.Unique();
    EXPECT_EQ(2, table.NumEntries());
    EXPECT_EQ(table.EntryDxfColor(0), table.EntryDxfColor(1));
}

TEST(DXFColorTable_Unique, FallbackIsNearestToTheDefaultColourWhateverTheCount) {
    for (const int count : {0, 1, 2, 3}) {
        DXFColorTable table;
        for (int i = 0; i < count; ++i) table.AddEntry(i, static_cast<unsigned long>(i));
        table.SetDefaultColor(kBlue);
        table.Unique();
        EXPECT_EQ(170, table[-1].Index()) << count;
    }
}

TEST(DXFColorTable_MakeDXFTable, SnapsColoursToThePaletteAndMerges) {
    // 259, an index outside the palette, counts as 0; the second red becomes the first.
    DXFColorTable table =
        Table({{0, 0x0000FF}, {10, 0x0000FE}, {20, RGBColor(40, 30, 31)}, {30, 0x808080}}, kBlue);
    table.MakeDXFTable();
    EXPECT_EQ(Table({{0, 0x0000FF}, {20, 0x000000}, {30, 0x767676}}), table);
    // The snapped colours have indices of their own: black is 0, and 767676 is nearest to itself.
    EXPECT_EQ(10, table.EntryDxfColor(0).Index());
    EXPECT_EQ(0, table.EntryDxfColor(1).Index());
    EXPECT_EQ(251, table.EntryDxfColor(2).Index());
    EXPECT_EQ(170, table[-1].Index());
    EXPECT_EQ(kBlue, table.DefaultColor()); // the entries alone are snapped
}

TEST(DXFColorTable, DuplicateValuesGiveTheLastOfThem) {
    DXFColorTable table = Table({{0, kRed}, {10, kGreen}, {10, kBlue}, {20, kRed}});
    table.Unique();
    EXPECT_EQ(170, table[10].Index());
    EXPECT_EQ(170, table[15].Index());
}

TEST(DXFColorTable, NanEntriesAreNeverFound) {
    DXFColorTable table = Table({{kNan, kRed}}, kGreen);
    table.Unique();
    EXPECT_EQ(90, table[0].Index());
    EXPECT_EQ(90, table[kNan].Index());
    table.AddEntry(0, kBlue);
    table.Unique();
    EXPECT_EQ(170, table[kInf].Index());
    EXPECT_EQ(90, table[kNan].Index());
}

TEST(DXFColorTable, EqualityIgnoresDefaultAndDxfColours) {
    DXFColorTable a = Table({{0, kRed}, {1, kBlue}}, kGreen);
    const DXFColorTable b = Table({{0, kRed}, {1, kBlue}});
    a.Unique();
    EXPECT_EQ(a, b);
    EXPECT_FALSE(a != b);
    EXPECT_NE(a, Table({{0, kRed}}));
    EXPECT_NE(a, Table({{0, kRed}, {1, kGreen}}));
    EXPECT_NE(a, Table({{0, kRed}, {2, kBlue}}));
}

TEST(DXFColorTable, CopiesKeepBothColoursOfEveryEntry) {
    DXFColorTable table = Table({{0, kRed}, {1, kBlue}}, kGreen);
    table.Unique();
    DXFColorTable copy;
    copy = table;
    EXPECT_EQ(copy, table);
    EXPECT_EQ(10, copy[0.5].Index());
    EXPECT_EQ(90, copy[-1].Index());
    const DXFColorTable moved = std::move(copy);
    EXPECT_EQ(170, moved[1].Index());
}

TEST(DXFColorTable, SearchAgreesWithAWalkOverTheEntries) {
    Random random(11);
    for (int round = 0; round < 300; ++round) {
        Opened table;
        const int count = 1 + static_cast<int>(random() % 40);
        for (int i = 0; i < count; ++i) table.AddEntry(static_cast<int>(random() % 50), random());
        table.SetDefaultColor(random());
        table.Unique();
        for (int i = 0; i < 400; ++i) {
            const double value = static_cast<int>(random() % 110) / 2.0 - 2;
            int walked = DXFColor(table.DefaultColor()).Index();
            for (int entry = 0; entry < table.NumEntries(); ++entry)
                if (table.EntryValue(entry) <= value) walked = table.EntryDxfColor(entry).Index();
            ASSERT_EQ(walked, table[value].Index());
            ASSERT_EQ(walked, table.GetDXFColor(value).Index());
            if (!(table.EntryValue(0) <= value)) continue;
            ASSERT_EQ(walked, table.FindDXFColor(value, 0, table.NumEntries() - 1).Index());
        }
    }
}

TEST(DXFColorTable, SearchLooksAmongTheGivenEntriesOnly) {
    Opened table;
    for (int i = 0; i < 5; ++i) table.AddEntry(i, DXFColor(10 + 20 * i));
    table.Unique();
    EXPECT_EQ(table.EntryDxfColor(3), table.FindDXFColor(100, 1, 3));
    EXPECT_EQ(table.EntryDxfColor(1), table.FindDXFColor(1.5, 1, 3));
    EXPECT_EQ(table.EntryDxfColor(2), table.FindDXFColor(2, 2, 2));
}

TEST(DXFColorTable_File, ReadsBackWhatItSaved) {
    const TemporaryFolder folder;
    const DXFColorTable table = Table({{-12.5, kRed}, {1.0 / 3, kBlue}}, 0x123456);
    ASSERT_TRUE(table.FileSave(folder.File(L"depths.col").c_str()));
    EXPECT_EQ(1u, folder.NumFiles());
    DXFColorTable back = Table({{5, kGreen}}, kRed);
    back.Unique();
    ASSERT_TRUE(back.FileOpen(folder.File(L"depths.col").c_str()));
    EXPECT_EQ(table, back);
    EXPECT_EQ(0x123456ul, back.DefaultColor());
}

TEST(DXFColorTable_File, OpeningDoesNotBuildTheDxfColours) {
    const TemporaryFolder folder;
    ASSERT_TRUE(Table({{0, kRed}, {1, kBlue}}).FileSave(folder.File(L"depths.col").c_str()));
    DXFColorTable table;
    ASSERT_TRUE(table.FileOpen(folder.File(L"depths.col").c_str()));
    EXPECT_EQ(0, table[5].Index());
    table.MakeDXFTable();
    EXPECT_EQ(170, table[5].Index());
}

TEST(DXFColorTable_File, WhatCannotBeReadOrWrittenIsReported) {
    const TemporaryFolder folder;
    DXFColorTable table = Table({{0, kRed}});
    EXPECT_FALSE(table.FileOpen(folder.File(L"missing.col").c_str()));
    EXPECT_EQ(0, table.NumEntries());
    EXPECT_FALSE(table.FileOpen(folder.File(L"").c_str()));
    EXPECT_FALSE(table.FileOpen(CString()));
    EXPECT_FALSE(table.FileSave(folder.File(L"no/such/folder.col").c_str()));
    EXPECT_FALSE(table.FileSave(CString()));
    EXPECT_EQ(0u, folder.NumFiles());
}

TEST(DXFColorTable, MovesAndCopiesMadeAnewKeepTheDxfColours) {
    DXFColorTable table = Table({{0, kRed}, {5, kBlue}}, kGreen);
    table.Unique();
    const DXFColorTable copy(table);
    EXPECT_EQ(10, copy[1].Index());
    EXPECT_EQ(90, copy[-1].Index());
    DXFColorTable assigned;
    assigned = std::move(table);
    EXPECT_EQ(170, assigned[9].Index());
    EXPECT_EQ(90, assigned[-9].Index());
}

TEST(DXFColorTable_File, OpeningKeepsTheOldDxfColours) { // even where the number of entries is the same
    DXFColorTable table = Table({{0, kRed}, {5, kBlue}});
    table.Unique();
    FileObject file;
    Table({{0, kGreen}, {7, kGreen}}).FileSave(file);
    EXPECT_TRUE(table.FileOpen(file));
    EXPECT_EQ(170, table[8].Index());
}

// SPDX-License-Identifier: MIT
#include "VelmBase/ColorTable.h"

#include "tests/support/ColorPrinters.h"
#include "tests/support/Random.h"
#include "tests/support/TestFiles.h"

#include <bit>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

constexpr unsigned long kRed = 0x0000FF;
constexpr unsigned long kGreen = 0x00FF00;
constexpr unsigned long kBlue = 0xFF0000;

std::vector<double> Values(const ColorTable& table) {
    std::vector<double> values;
    for (int i = 0; i < table.NumEntries(); ++i) values.push_back(table.EntryValue(i));
    return values;
}

std::vector<unsigned long> Colors(const ColorTable& table) {
    std::vector<unsigned long> colors;
    for (int i = 0; i < table.NumEntries(); ++i) colors.push_back(table.EntryColor(i));
    return colors;
}

struct Loaded {
    bool complete;
    ColorTable table;
    std::vector<std::wstring> remarks;
};

// The table in a file with these bytes.
Loaded Load(const std::string& bytes) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"t.col"), bytes);
    FileObject file;
    file.Open(folder.File(L"t.col"), 0);
    Loaded loaded{};
    loaded.complete = loaded.table.FileOpen(file, &loaded.remarks);
    return loaded;
}

std::string All(const std::vector<std::wstring>& remarks) {
    std::string all;
    for (const std::wstring& remark : remarks) all += ToUtf8(remark) + "\n";
    return all;
}

// The table after a way through a file.
ColorTable ThroughAFile(const ColorTable& table) {
    const TemporaryFolder folder;
    FileObject saved;
    EXPECT_TRUE(table.FileSave(saved));
    EXPECT_TRUE(saved.Save(folder.File(L"t.col"), 0));
    FileObject opened;
    EXPECT_TRUE(opened.Open(folder.File(L"t.col"), 0));
    ColorTable back;
    back.AddEntry(99, kRed);
    EXPECT_TRUE(back.FileOpen(opened));
    return back;
}

} // namespace

TEST(ColorTable, IsEmptyAndBlackByDefault) {
    const ColorTable table;
    EXPECT_EQ(0, table.NumEntries());
    EXPECT_EQ(0ul, table.DefaultColor());
}

TEST(ColorTable_AddEntry, KeepsValuesAscendingAndEqualOnesInTheirOrder) {
    ColorTable table;
    table.AddEntry(10, kRed);
    table.AddEntry(kNan, 1);
    table.AddEntry(-kInf, 2);
    table.AddEntry(5, kGreen);
    table.AddEntry(10, kBlue);
    table.AddEntry(kInf, 3);
    EXPECT_THAT(Colors(table), ElementsAre(2, kGreen, kRed, kBlue, 3, 1));
    EXPECT_THAT(Values(table), ElementsAre(-kInf, 5, 10, 10, kInf, testing::NanSensitiveDoubleEq(kNan)));
}

TEST(ColorTable_FileOpen, ManyUnsortedEntriesOfOneValueKeepTheirOrder) {
    FileObject file; // long enough for a sort that is not stable to mix them
    for (int i = 0; i < 100; ++i)
        file.SetItem(L"ColorTable", L"Entry(" + std::to_wstring(i) + L")",
                     (i % 2 ? L"1," : L"2,") + std::to_wstring(i) + L",0,0", true);
    ColorTable table;
    EXPECT_TRUE(table.FileOpen(file));
    ASSERT_EQ(100, table.NumEntries());
    for (int i = 0; i < 50; ++i) {
        EXPECT_EQ(static_cast<unsigned long>(2 * i + 1), table.EntryColor(i));
        EXPECT_EQ(static_cast<unsigned long>(2 * i), table.EntryColor(50 + i));
    }
}

TEST(ColorTable_FileSave, LargeValuesKeepTheirShortestText) {
    ColorTable table;
    for (const double value : {1e14, 1e15, 1e16, 1e17, 12345678901234567.0}) table.AddEntry(value, 0);
    FileObject file;
    ASSERT_TRUE(table.FileSave(file));
    int i = 0;
    for (const wchar_t* text : {L"100000000000000", L"1e+15", L"1e+16", L"12345678901234568", L"1e+17"})
        EXPECT_EQ(text + std::wstring(L",0,0,0"),
                  *file.GetItem(L"ColorTable", L"Entry(" + std::to_wstring(i++) + L")"));
    EXPECT_EQ(table, ThroughAFile(table));
}

TEST(ColorTable, ColoursHave24Bits) {
    ColorTable table;
    table.AddEntry(1, 0xFF123456ul);
    table.SetDefaultColor(0xFFFFFFFFul);
    EXPECT_EQ(0x123456ul, table.EntryColor(0));
    EXPECT_EQ(0xFFFFFFul, table.DefaultColor());
    table.SetEntryColor(0, 0x01000002ul);
    EXPECT_EQ(2ul, table.EntryColor(0));
}

TEST(ColorTable, EqualityComparesEntriesAlone) {
    ColorTable a, b;
    a.AddEntry(1, kRed);
    b.AddEntry(1, kRed);
    b.SetDefaultColor(kBlue);
    EXPECT_EQ(a, b);
    ColorTable c = a, d = a, e = a;
    c.SetEntryColor(0, kBlue);
    d.AddEntry(2, kRed);
    EXPECT_NE(a, c);
    EXPECT_NE(a, d);
    e.AddEntry(kNan, 0);
    const ColorTable copy = e;
    EXPECT_NE(copy, e); // NaN equals nothing
}

TEST(ColorTable_FileSave, WritesTheDocumentedText) {
    ColorTable table;
    table.AddEntry(0, 0xEFDBC6);
    table.AddEntry(-12.5, 0x6B3008);
    table.SetDefaultColor(0xFFFFFF);
    FileObject file;
    ASSERT_TRUE(table.FileSave(file));
    const TemporaryFolder folder;
    ASSERT_TRUE(file.Save(folder.File(L"t.col"), 0));
    EXPECT_EQ("[ColorTable]\r\n"
              "DefaultColor = 255,255,255\r\n"
              "Entry(0)     = -12.5,8,48,107\r\n"
              "Entry(1)     = 0,198,219,239\r\n\r\n",
              ReadBytes(folder.File(L"t.col")));
}

TEST(ColorTable_FileSave, LeavesAFileAloneThatHasATable) {
    FileObject file;
    ASSERT_TRUE(ColorTable().FileSave(file));
    ColorTable table;
    table.AddEntry(1, kRed);
    EXPECT_FALSE(table.FileSave(file));
    EXPECT_EQ(nullptr, file.GetItem(L"ColorTable", L"Entry(0)"));
}

TEST(ColorTable_FileOpen, ReadsBackExactlyWhatWasSaved) {
    Random random(7);
    ColorTable table;
    table.SetDefaultColor(0x010203);
    for (const double value : {0.1, 1.0 / 3, -0.0, 5e-324, 1.7976931348623157e308, -1e-7, kInf, -kInf})
        table.AddEntry(value, static_cast<std::uint32_t>(random.Bits()));
    for (int i = 0; i < 2000; ++i) {
        const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random.Bits()));
        if (!std::isnan(value)) table.AddEntry(value, static_cast<std::uint32_t>(random.Bits()));
    }
    const ColorTable back = ThroughAFile(table);
    EXPECT_EQ(table, back);
    EXPECT_EQ(0x010203ul, back.DefaultColor());
}

TEST(ColorTable_FileOpen, ReadsBackATableWithoutEntriesAndOneWithNan) {
    ColorTable table;
    table.SetDefaultColor(kGreen);
    EXPECT_EQ(0, ThroughAFile(table).NumEntries());
    EXPECT_EQ(kGreen, ThroughAFile(table).DefaultColor());
    table.AddEntry(kNan, kRed);
    table.AddEntry(3, kBlue);
    EXPECT_THAT(Values(ThroughAFile(table)), ElementsAre(3, testing::NanSensitiveDoubleEq(kNan)));
}

TEST(ColorTable_FileOpen, FilesWithoutATableAreIncompleteAndEmpty) {
    for (const char* bytes : {"", "[Other]\r\nEntry(0)=1,2,3,4\r\n", "Entry(0)=1,2,3,4\r\n", "\x1A"}) {
        const Loaded loaded = Load(bytes);
        EXPECT_FALSE(loaded.complete);
        EXPECT_EQ(0, loaded.table.NumEntries());
        EXPECT_THAT(All(loaded.remarks), HasSubstr("no section [ColorTable]"));
    }
}

TEST(ColorTable_FileOpen, NamesMatchWithoutRegardToCaseAndOthersArePassedOver) {
    const Loaded loaded = Load("[COLORTABLE]\ndefaultcolor=1,2,3\nENTRY(x) = 4 , 5 , 6 , 7\nUnits=m\n");
    EXPECT_TRUE(loaded.complete);
    EXPECT_THAT(loaded.remarks, IsEmpty());
    EXPECT_EQ(0x030201ul, loaded.table.DefaultColor());
    EXPECT_THAT(Values(loaded.table), ElementsAre(4));
    EXPECT_THAT(Colors(loaded.table), ElementsAre(0x070605));
}

TEST(ColorTable_FileOpen, UnsortedValuesAreSortedAndTold) {
    const Loaded loaded = Load(
        "[ColorTable]\nEntry(0)=10,255,0,0\nEntry(1)=nan,1,0,0\nEntry(2)=-5,0,255,0\nEntry(3)=0,0,0,255\n");
    EXPECT_TRUE(loaded.complete);
    EXPECT_THAT(Colors(loaded.table), ElementsAre(kGreen, kBlue, kRed, 1));
    EXPECT_THAT(All(loaded.remarks), HasSubstr("Entry(2)"));
    EXPECT_THAT(All(loaded.remarks), HasSubstr("below the one before"));
}

TEST(ColorTable_FileOpen, DuplicateValuesAreKeptInFileOrderAndTold) {
    const Loaded loaded = Load(
        "[ColorTable]\nEntry(0)=10,255,0,0\nEntry(1)=5,0,0,1\nEntry(2)=10,0,255,0\nEntry(3)=10,0,0,255\n");
    EXPECT_TRUE(loaded.complete);
    EXPECT_THAT(Values(loaded.table), ElementsAre(5, 10, 10, 10));
    EXPECT_THAT(Colors(loaded.table), ElementsAre(0x010000, kRed, kGreen, kBlue));
    EXPECT_THAT(All(loaded.remarks), HasSubstr("the value 10 is there twice"));
}

TEST(ColorTable_FileOpen, OfTwoKeysWithOneNumberTheLaterTextStandsInTheFormersPlace) {
    const Loaded loaded = Load("[ColorTable]\nEntry(0)=1,255,0,0\nEntry(1)=2,0,255,0\nEntry(0)=1,0,0,255\n");
    EXPECT_TRUE(loaded.complete);
    EXPECT_THAT(Colors(loaded.table), ElementsAre(kBlue, kGreen));
}

TEST(ColorTable_FileOpen, FaultyEntriesAreLeftOutAndTold) {
    struct Row {
        const char* entry;
        const char* remark;
    };
    for (const Row& row :
         {Row{"", "\"\" is not a number"}, Row{"abc,1,2,3", "\"abc\" is not a number"},
          Row{"1e999,1,2,3", "\"1e999\" is not a number"}, Row{"7", "\"7\" is not value,red,green,blue"},
          Row{"7,1,2", "is not value,red,green,blue"}, Row{"7,1,2,x", "is not value,red,green,blue"},
          Row{"7,1,2,256", "is not value,red,green,blue"}, Row{"7,-1,2,3", "is not value,red,green,blue"},
          Row{"7,1,2,3,4", "is not value,red,green,blue"}, Row{"7,,,", "is not value,red,green,blue"}}) {
        SCOPED_TRACE(row.entry);
        const Loaded loaded = Load(std::string("[ColorTable]\nEntry(0)=1,255,0,0\nEntry(1)=") + row.entry +
                                   "\nEntry(2)=9,0,0,255\n");
        EXPECT_FALSE(loaded.complete);
        EXPECT_THAT(Values(loaded.table), ElementsAre(1, 9));
        ASSERT_EQ(1u, loaded.remarks.size());
        EXPECT_THAT(ToUtf8(loaded.remarks[0]), HasSubstr("Entry(1): "));
        EXPECT_THAT(ToUtf8(loaded.remarks[0]), HasSubstr(row.remark));
    }
}

TEST(ColorTable_FileOpen, FaultyDefaultColourIsBlackAndTold) {
    for (const char* color : {"", "1,2", "a,b,c", "1,2,3,4", "16777215"}) {
        const Loaded loaded =
            Load(std::string("[ColorTable]\nDefaultColor=") + color + "\nEntry(0)=1,2,3,4\n");
        EXPECT_FALSE(loaded.complete) << color;
        EXPECT_EQ(0ul, loaded.table.DefaultColor());
        EXPECT_EQ(1, loaded.table.NumEntries());
        EXPECT_THAT(All(loaded.remarks), HasSubstr("black is taken"));
    }
}

TEST(ColorTable_FileOpen, HostileFilesTakeNoLongTimeAndFewRemarks) {
    std::string falling = "[ColorTable]\n";
    for (int i = 0; i < 200'000; ++i)
        falling += "Entry(" + std::to_string(i) + ")=" + std::to_string(-i) + ",1,2,3\n";
    const Loaded sorted = Load(falling);
    EXPECT_TRUE(sorted.complete);
    EXPECT_EQ(200'000, sorted.table.NumEntries());
    EXPECT_EQ(-199'999.0, sorted.table.EntryValue(0));
    EXPECT_EQ(ColorTable::MAX_REMARKS, sorted.remarks.size());

    const Loaded commas = Load("[ColorTable]\nEntry(0)=" + std::string().append(10'000'000, ',') + "\n");
    EXPECT_FALSE(commas.complete);
    ASSERT_EQ(1u, commas.remarks.size());
    const Loaded longText = Load("[ColorTable]\nEntry(0)=" + std::string().append(10'000'000, 'x') + "\n");
    EXPECT_LT(longText.remarks.at(0).size(), 200u);
}

TEST(ColorTable_FileOpen, SampleTableIsCompleteAndInOrder) {
    FileObject file;
    ASSERT_TRUE(file.Open(FromUtf8(PROJECT_DATA_FOLDER "/pensacola/depths.col"), 0));
    ColorTable table;
    std::vector<std::wstring> remarks;
    EXPECT_TRUE(table.FileOpen(file, &remarks));
    EXPECT_THAT(remarks, IsEmpty());
    EXPECT_THAT(Values(table), ElementsAre(0, 2, 5, 10));
}

TEST(ColorTable_FileOpen, NumbersHaveToBeWhole) {
    const auto isComplete = [](const wchar_t* entry) {
        FileObject file;
        file.SetItem(L"ColorTable", L"Entry(0)", entry, true);
        return ColorTable().FileOpen(file);
    };
    for (const wchar_t* entry :
         {L"12abc,1,2,3", L"1.5.5,1,2,3", L"0x20,1,2,3", L"1 2,1,2,3", L"5e,1,2,3", L"++5,1,2,3", L"+,1,2,3",
          L"7,2.9,2,3", L"7,1,2 3,4", L"7,1,0x10,3", L"7,1,2,3z"})
        EXPECT_FALSE(isComplete(entry)) << ::testing::PrintToString(std::wstring(entry));
    for (const wchar_t* entry : {L" 12 , 1 , 2 , 3 ", L"1e3,1,2,3", L"+5,1,2,3", L".5,1,2,3", L"-INF,+1,2,3"})
        EXPECT_TRUE(isComplete(entry)) << ::testing::PrintToString(std::wstring(entry));
}

// SPDX-License-Identifier: MIT
#include "VelmBase/FileObject.h"

#include "tests/support/TestFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::wstring> Items(const FobjSection& section) {
    std::vector<std::wstring> items;
    int position = -1;
    std::wstring key, value;
    for (bool more = section.GetFirstMapEntry(position, key, value); more;
         more = section.GetNextMapEntry(position, key, value))
        items.push_back(key + L"=" + value);
    return items;
}

/// Every section as "[name]" and every item as "key=value".
std::vector<std::wstring> Content(const FileObject& file) {
    std::vector<std::wstring> content;
    int position = -1;
    std::wstring name;
    for (bool more = file.GetFirstSectionEntry(position, name); more;
         more = file.GetNextSectionEntry(position, name)) {
        content.push_back(L"[" + name + L"]");
        const FobjSection* section = file.GetSection(name);
        EXPECT_NE(nullptr, section);
        if (!section) continue;
        EXPECT_EQ(name, section->Name());
        for (const std::wstring& item : Items(*section)) content.push_back(item);
    }
    return content;
}

} // namespace

TEST(FobjSection, KeepsItemsInOrderAndEachKeyOnce) {
    FobjSection section(L"s");
    EXPECT_EQ(L"s", section.Name());
    EXPECT_TRUE(section.SetItem(L"b", L"1", true));
    EXPECT_TRUE(section.SetItem(L"a", L"2", true));
    EXPECT_TRUE(section.SetItem(L"B", L"3", true));
    EXPECT_TRUE(section.SetItem(L"A", L"4", false));
    EXPECT_FALSE(section.SetItem(L"c", L"5", false));
    EXPECT_THAT(Items(section), ElementsAre(L"b=3", L"a=4"));
    EXPECT_EQ(2, section.NumItems());
    ASSERT_NE(nullptr, section.GetItem(L"A"));
    EXPECT_EQ(L"4", *section.GetItem(L"A"));
    EXPECT_EQ(nullptr, section.GetItem(L"c"));
}

TEST(FobjSection, AWalkOverNothingLeavesTheTexts) {
    const FobjSection section(L"s");
    int position = 5;
    std::wstring key = L"key", value = L"value";
    EXPECT_FALSE(section.GetFirstMapEntry(position, key, value));
    EXPECT_FALSE(section.GetNextMapEntry(position, key, value));
    EXPECT_EQ(L"key", key);
    EXPECT_EQ(L"value", value);
}

TEST(FobjSection, AWalkEndsAndStaysEnded) {
    FobjSection section(L"s");
    section.SetItem(L"a", L"1", true);
    int position = -1;
    std::wstring key, value;
    EXPECT_TRUE(section.GetFirstMapEntry(position, key, value));
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(section.GetNextMapEntry(position, key, value));
    EXPECT_EQ(L"a", key);
}

TEST(FileObject, KeepsSectionsInOrderAndEachNameOnce) {
    FileObject file;
    EXPECT_EQ(0, file.NumSections());
    EXPECT_FALSE(file.SetItem(L"b", L"x", L"1", false));
    EXPECT_EQ(0, file.NumSections());
    EXPECT_TRUE(file.SetItem(L"b", L"x", L"1", true));
    EXPECT_TRUE(file.SetItem(L"a", L"y", L"2", true));
    EXPECT_TRUE(file.SetItem(L"B", L"z", L"3", true));
    EXPECT_TRUE(file.SetItem(L"B", L"Z", L"4", false));
    EXPECT_FALSE(file.SetItem(L"B", L"w", L"5", false));
    EXPECT_THAT(Content(file), ElementsAre(L"[b]", L"x=1", L"z=4", L"[a]", L"y=2"));
    EXPECT_EQ(2, file.NumSections());
    ASSERT_NE(nullptr, file.GetItem(L"B", L"X"));
    EXPECT_EQ(L"1", *file.GetItem(L"B", L"X"));
    EXPECT_EQ(nullptr, file.GetItem(L"b", L"missing"));
    EXPECT_EQ(nullptr, file.GetItem(L"missing", L"x"));
    EXPECT_EQ(nullptr, file.GetSection(L"missing"));
}

TEST(FileObject, AWalkOverNothingLeavesTheName) {
    int position = 5;
    std::wstring name = L"name";
    EXPECT_FALSE(FileObject().GetFirstSectionEntry(position, name));
    EXPECT_FALSE(FileObject().GetNextSectionEntry(position, name));
    EXPECT_EQ(L"name", name);
}

TEST(FileObject, OnDiskItIsASettingsFile) {
    const TemporaryFolder folder;
    FileObject file;
    file.SetItem(L"Grid", L"Width", L"10", true);
    file.SetItem(L"Grid", L"LineStyle", L"Solid \u00FC", true);
    file.SetItem(L"Map", L"a", L"1", true);
    EXPECT_TRUE(file.Save(folder.File(L"a.col"), 0));
    EXPECT_EQ("[Grid]\r\nWidth     = 10\r\nLineStyle = Solid \xFC\r\n\r\n[Map]\r\na = 1\r\n\r\n",
              ReadBytes(folder.File(L"a.col")));
    FileObject back;
    back.SetItem(L"gone", L"x", L"1", true);
    EXPECT_TRUE(back.Open(folder.File(L"a.col"), 0));
    EXPECT_EQ(Content(file), Content(back));
}

TEST(FileObject, OpenJoinsSectionsAndKeepsTheLastValue) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a"), "x=0\n[a]\nk=1;note\n[b]\nm=2\n[A]\nK=3\nn=4\n");
    FileObject file;
    EXPECT_TRUE(file.Open(folder.File(L"a"), 0));
    EXPECT_THAT(Content(file), ElementsAre(L"[a]", L"k=3", L"n=4", L"[b]", L"m=2"));
}

TEST(FileObject, LinesWithACommentAloneAreNoItems) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a"), ";0\n[a]\n;one\nk=1;two\n =v\n  ; three\n");
    FileObject file;
    EXPECT_TRUE(file.Open(folder.File(L"a"), 0));
    EXPECT_THAT(Content(file), ElementsAre(L"[a]", L"k=1"));
    EXPECT_EQ(nullptr, file.GetItem(L"a", L""));
}

TEST(FileObject, OpenKeepsWhatCameBeforeABadHeader) {
    const TemporaryFolder folder;
    WriteBytes(folder.File(L"a"), "[a]\nk=1\n[]\n[b]\n");
    FileObject file;
    EXPECT_FALSE(file.Open(folder.File(L"a"), 0));
    EXPECT_THAT(Content(file), ElementsAre(L"[a]", L"k=1"));
    EXPECT_FALSE(file.Open(folder.File(L"missing"), 0));
    EXPECT_THAT(Content(file), IsEmpty());
}

TEST(FileObject, OpenTellsTheLineOfABadHeader) {
    const TemporaryFolder folder;
    const std::wstring path = folder.File(L"a.col");
    FileObject file;
    std::uint32_t line = 7;
    WriteBytes(path, "[a]\nk = 1\n\n []\n[b]\n");
    EXPECT_FALSE(file.Open(path, 0, line));
    EXPECT_EQ(4u, line);
    EXPECT_FALSE(file.Open(folder.File(L"missing"), 0, line));
    EXPECT_EQ(0u, line);
    line = 7;
    WriteBytes(path, "[a]\nk = 1\n[A]\n");
    EXPECT_TRUE(file.Open(path, 0, line));
    EXPECT_EQ(0u, line);
}

TEST(FileObject, SaveRefusesWhatNoFileCanHold) {
    const TemporaryFolder folder;
    EXPECT_FALSE(FileObject().Save(folder.File(L"a"), 0));
    WriteBytes(folder.File(L"a"), "old");
    for (int place = 0; place < 3; ++place) {
        FileObject file;
        const auto text = [&](int here) { return std::wstring(here == place ? L"\u03A9" : L"x"); };
        file.SetItem(text(0), text(1), text(2), true);
        EXPECT_FALSE(file.Save(folder.File(L"a"), 0));
        EXPECT_EQ("old", ReadBytes(folder.File(L"a")));
    }
    EXPECT_EQ(1u, folder.NumFiles());
}

TEST(FileObject, ManySectionsAndItemsCostNoMoreThanTheirNumber) {
    FileObject file;
    for (int i = 0; i < 50000; ++i) {
        file.SetItem(L"one", std::to_wstring(i), L"v", true);
        file.SetItem(std::to_wstring(i), L"k", L"v", true);
    }
    EXPECT_EQ(50001, file.NumSections());
    EXPECT_EQ(50000, file.GetSection(L"one")->NumItems());
    EXPECT_NE(nullptr, file.GetItem(L"49999", L"k"));
}

TEST(FileObject, EveryOperationTakesWhatLivesInTheObject) {
    const std::wstring text = L"a text that is longer than any small buffer";
    for (const std::wstring& name : {text, std::wstring(L"s")}) { // a short text moves with its owner
        FileObject file;
        file.SetItem(name, name, name, true);
        for (int i = 0; i < 40; ++i) { // the sections and the items move as they grow
            const FobjSection& first = *file.GetSection(name);
            const std::wstring next = std::to_wstring(i);
            ASSERT_TRUE(file.SetItem(next, first.Name(), *first.GetItem(name), true));
            ASSERT_TRUE(file.SetItem(L"n" + next, next, file.GetSection(name)->Name(), true));
            ASSERT_EQ(name, *file.GetItem(next, name));
            ASSERT_EQ(name, *file.GetItem(L"n" + next, next));
            const std::wstring& value = *file.GetItem(name, name);
            ASSERT_TRUE(file.SetItem(name, next, value, true));
            ASSERT_TRUE(file.SetItem(name, *file.GetItem(name, next), *file.GetItem(name, next), true));
            ASSERT_EQ(name, *file.GetItem(name, next));
        }
    }
}

TEST(FileObject, OpenTakesItsPathFromAnItemOfItsOwn) {
    const TemporaryFolder folder;
    const std::wstring next = folder.File(L"next.ini");
    WriteBytes(next, "[n]\r\na=1\r\n");
    FileObject file;
    file.SetItem(L"P", L"Next", next, true);
    EXPECT_TRUE(file.Open(*file.GetItem(L"P", L"Next"), 0));
    EXPECT_THAT(Content(file), ElementsAre(L"[n]", L"a=1"));
}

TEST(FileObject, TextIsReadAndWrittenAsAFileIs) {
    FileObject file;
    std::uint32_t badLine = 7;
    EXPECT_TRUE(file.ReadText("[A]\nb = 1\n[a]\nB=2\nlong=3\n", badLine));
    EXPECT_EQ(0u, badLine);
    EXPECT_THAT(Content(file), ElementsAre(L"[A]", L"b=2", L"long=3"));
    std::string written;
    const auto append = [&](std::string_view piece) {
        written += piece;
        return true;
    };
    EXPECT_TRUE(file.Write(append));
    const TemporaryFolder folder;
    ASSERT_TRUE(file.Save(folder.File(L"a.ini"), 0));
    EXPECT_EQ(ReadBytes(folder.File(L"a.ini")), written);
    EXPECT_FALSE(file.Write([](std::string_view) { return false; }));
    file.SetItem(L"A", L"b", L"\u03A9", true); // no byte
    EXPECT_FALSE(file.Write(append));

    EXPECT_FALSE(file.ReadText("[a]\n[]\n", badLine));
    EXPECT_EQ(2u, badLine);
}

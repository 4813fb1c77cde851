// SPDX-License-Identifier: MIT
#include "UtilityDLL/keywords/ListKeywords.h"

#include "VelmConfigure/DataSearch.h"
#include "tests/support/TestFiles.h"

#include <chrono>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace {

using Values = std::vector<std::wstring>;

Values ValuesOf(const CListKeyword& list) {
    Values values;
    for (int i = 0; i < list.GetSize(); ++i) values.push_back(list.GetValue(i));
    return values;
}

// A set of its own for each test: the process-wide one reads its file only once.
class OwnLists : public CListKeywords {
public:
    OwnLists() = default;
    using CListKeywords::CheckInit;
};

// Lets DataSearch find the file "Keywords" with this content while it lives.
class KeywordsFile {
public:
    explicit KeywordsFile(std::string_view content) {
        Write(content);
        DataSearch::GetDataSearch().SetFolder(23, WidePath(m_folder.Path()));
    }
    ~KeywordsFile() { DataSearch::GetDataSearch().SetFolder(23, L""); }
    KeywordsFile(const KeywordsFile&) = delete;
    KeywordsFile& operator=(const KeywordsFile&) = delete;

    void Write(std::string_view content) { WriteBytes(m_folder.Path() / "Keywords", content); }

private:
    TemporaryFolder m_folder;
};

TEST(CListKeyword, KeepsEachValueOnceInOrder) {
    CListKeyword list;
    EXPECT_EQ(L"", list.GetName());
    list.SetName(L"client");
    for (const wchar_t* value : {L"b", L"a", L"b", L"B", L"", L""}) list.AddValue(value);
    EXPECT_EQ(L"client", list.GetName());
    EXPECT_EQ(4, list.GetSize());
    EXPECT_EQ((Values{L"b", L"a", L"B", L""}), ValuesOf(list));
    list.Clear();
    EXPECT_EQ(0, list.GetSize());
    EXPECT_EQ(L"client", list.GetName());
    list.AddValue(L"b");
    EXPECT_EQ(Values{L"b"}, ValuesOf(list));
}

TEST(CListKeyword, ValuesOutsideTheRangeAreEmpty) {
    CListKeyword list;
    EXPECT_EQ(L"", list.GetValue(0));
    list.AddValue(L"a");
    EXPECT_EQ(L"a", list.GetValue(0));
    EXPECT_EQ(L"", list.GetValue(-1));
    EXPECT_EQ(L"", list.GetValue(list.GetSize()));
}

TEST(CListKeyword, CopiesAreIndependent) {
    CListKeyword list;
    list.SetName(L"client");
    list.AddValue(L"a");
    CListKeyword copy(list);
    copy.AddValue(L"b");
    copy.AddValue(L"a");
    EXPECT_EQ(Values{L"a"}, ValuesOf(list));
    EXPECT_EQ((Values{L"a", L"b"}), ValuesOf(copy));
    list = copy;
    list.AddValue(L"b");
    EXPECT_EQ((Values{L"a", L"b"}), ValuesOf(list));
}

TEST(CListKeywords, ListsOfTheFile) {
    const KeywordsFile file("[project client]\r\nHarbour Board\r\nPort Authority\r\nHarbour Board\r\n\r\n"
                            "[task]\r\nSounding = ignored ;comment\r\n[empty]\r\n[TASK 2]\r\nK\xFCste\r\n");
    OwnLists lists;
    ASSERT_NE(nullptr, lists.GetListKeyword(L"project client"));
    EXPECT_EQ((Values{L"Harbour Board", L"Port Authority"}),
              ValuesOf(*lists.GetListKeyword(L"project client")));
    EXPECT_EQ(Values{L"Sounding"}, ValuesOf(*lists.GetListKeyword(L"task")));
    EXPECT_EQ(Values{}, ValuesOf(*lists.GetListKeyword(L"empty")));
    EXPECT_EQ(Values{L"K\xFCste"}, ValuesOf(*lists.GetListKeyword(L"TASK 2")));
    EXPECT_EQ(nullptr, lists.GetListKeyword(L"Task")); // letter case counts here
    EXPECT_EQ(nullptr, lists.GetListKeyword(L""));
    EXPECT_EQ(lists.GetListKeyword(L"task"), lists.GetListKeyword(1));
    EXPECT_EQ(lists.GetListKeyword(L"TASK 2"), lists.GetListKeyword(3));
    EXPECT_EQ(nullptr, lists.GetListKeyword(-1));
    EXPECT_EQ(nullptr, lists.GetListKeyword(4));
}

TEST(CListKeywords, ACommentLineIsAnEmptyChoice) {
    const KeywordsFile file("[a]\r\n;first\r\nx\r\n;second\r\n");
    OwnLists lists;
    EXPECT_EQ((Values{L"", L"x"}), ValuesOf(*lists.GetListKeyword(L"a")));
}

TEST(CListKeywords, TheFileIsReadOnceAndTheListsStay) {
    KeywordsFile file("[a]\r\nold\r\n");
    OwnLists lists;
    CListKeyword* const byPosition = lists.GetListKeyword(0);
    ASSERT_NE(nullptr, byPosition);
    file.Write("[a]\r\nnew\r\n[b]\r\n");
    lists.CheckInit();
    EXPECT_EQ(byPosition, lists.GetListKeyword(L"a"));
    EXPECT_EQ(Values{L"old"}, ValuesOf(*byPosition));
    EXPECT_EQ(nullptr, lists.GetListKeyword(L"b"));
}

TEST(CListKeywords, ABrokenFileGivesWhatCouldBeRead) {
    struct Row {
        const char* content;
        std::vector<std::wstring> names;
    };
    const Row rows[] = {
        {"", {}},
        {"no section\r\n", {}},
        {"[a]\r\nx\r\n[]\r\n[b]\r\ny\r\n", {L"a"}},             // stops at the bad header
        {"[a]\r\nx\r\n[b]\r\ny\r\n[A]\r\nz\r\n", {L"a", L"b"}}, // stops at the duplicate section
        {"[a]\r\nx\r\n[b", {L"a"}},                             // breaks off: a choice like any other line
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.content);
        const KeywordsFile file(row.content);
        OwnLists lists;
        std::vector<std::wstring> names;
        for (int i = 0; lists.GetListKeyword(i); ++i) names.push_back(lists.GetListKeyword(i)->GetName());
        EXPECT_EQ(row.names, names);
    }
}

TEST(CListKeywords, AMissingFileGivesNoListsAndIsNotLookedForAgain) {
    const TemporaryFolder folder;
    DataSearch::GetDataSearch().SetFolder(23, WidePath(folder.Path()));
    OwnLists lists;
    EXPECT_EQ(nullptr, lists.GetListKeyword(0));
    WriteBytes(folder.Path() / "Keywords", "[a]\r\nx\r\n");
    EXPECT_EQ(nullptr, lists.GetListKeyword(L"a"));
    DataSearch::GetDataSearch().SetFolder(23, L"");
}

TEST(CListKeywords, TheProcessHasOneSet) {
    const KeywordsFile file("[only]\r\nchoice\r\n");
    CListKeywords& lists = CListKeywords::Get();
    ASSERT_NE(nullptr, lists.GetListKeyword(L"only"));
    EXPECT_EQ(&lists, &CListKeywords::Get());
    EXPECT_EQ(lists.GetListKeyword(0), CListKeywords::Get().GetListKeyword(L"only"));
}

// A search through the list for each line would compare 2 * 10^10 texts.
TEST(CListKeywords, AListOf200000ChoicesIsReadInProportion) {
    std::string content = "[a]\r\n";
    for (int i = 0; i < 200000; ++i) content += "choice number " + std::to_string(i) + "\r\n";
    const KeywordsFile file(content);
    OwnLists lists;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(200000, lists.GetListKeyword(L"a")->GetSize());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(CListKeywords, TheShippedFileHasChoicesForPredefinedKeywords) {
    DataSearch::GetDataSearch().SetFolder(23, FromUtf8(PROJECT_DATA_FOLDER));
    OwnLists lists;
    for (const wchar_t* name :
         {L"project client", L"project contractor", L"coordinate system", L"project task"}) {
        ASSERT_NE(nullptr, lists.GetListKeyword(name)) << ::testing::PrintToString(name);
        EXPECT_GE(lists.GetListKeyword(name)->GetSize(), 2);
        EXPECT_EQ(-1, [&] { // no stray comment line
            for (int i = 0; i < lists.GetListKeyword(name)->GetSize(); ++i)
                if (lists.GetListKeyword(name)->GetValue(i).empty()) return i;
            return -1;
        }());
    }
    DataSearch::GetDataSearch().SetFolder(23, L"");
}

} // namespace

static_assert(std::has_virtual_destructor_v<CListKeyword> && std::has_virtual_destructor_v<CListKeywords>);

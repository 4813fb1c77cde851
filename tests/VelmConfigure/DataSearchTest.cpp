// SPDX-License-Identifier: MIT
#include "VelmConfigure/DataSearch.h"

#include "VelmBase/Environment.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

constexpr int kKeywords = DataSearch::CHOICE_LISTS;

// A category's folder for as long as a test lasts.
class CategoryFolder {
public:
    CategoryFolder(int category, const std::wstring& folder) : m_category(category) {
        DataSearch::GetDataSearch().SetFolder(category, folder);
    }
    ~CategoryFolder() { DataSearch::GetDataSearch().SetFolder(m_category, L""); }
    CategoryFolder(const CategoryFolder&) = delete;
    CategoryFolder& operator=(const CategoryFolder&) = delete;

private:
    int m_category;
};

TEST(DataSearch, TheProcessHasOne) { EXPECT_EQ(&DataSearch::GetDataSearch(), &DataSearch::GetDataSearch()); }

TEST(DataSearch, ASetFolderComesFirstAndHoldsForItsCategoryOnly) {
    const DataSearch& search = DataSearch::GetDataSearch();
    const std::wstring otherwise = search.GetFilePath(kKeywords);
    {
        const CategoryFolder folder(kKeywords, L"some folder");
        EXPECT_EQ(L"some folder", search.GetFilePath(kKeywords));
        EXPECT_EQ(otherwise, search.GetFilePath(kKeywords + 1));
        EXPECT_EQ(otherwise, search.GetFilePath(-1));
    }
    EXPECT_EQ(otherwise, search.GetFilePath(kKeywords)); // an empty folder takes the setting back
}

TEST(DataSearch, NumbersOfTheCategoriesAreTheSuites) { EXPECT_EQ(23, DataSearch::CHOICE_LISTS); }

// Run both ways: with the variable and without.
TEST(DataSearch, WithoutASetFolderTheEnvironmentDecidesAndElseTheInstallation) {
    const std::wstring folder = DataSearch::GetDataSearch().GetFilePath(kKeywords);
    if (const std::wstring variable = EnvironmentVariable(L"UTILITYDLL_DATA"); !variable.empty()) {
        EXPECT_EQ(TrimmedW(variable, L"/\\").size() + (variable[0] == L'/'), folder.size());
        EXPECT_EQ(0u, variable.find(folder));
        std::wstring name = L"README.md";
        EXPECT_TRUE(DataSearch::GetDataSearch().GetFullPath(1, name));
    } else {
        constexpr std::wstring_view kInstalled = L"/utilitydll";
        ASSERT_GT(folder.size(), kInstalled.size());
        EXPECT_EQ(kInstalled, folder.substr(folder.size() - kInstalled.size()));
    }
}

TEST(DataSearch, AFolderLosesTheSeparatorsAtItsEnd) {
    struct Row {
        const wchar_t *folder, *path, *file;
    };
    for (const Row& row : {Row{L"a/b", L"a/b", L"a/b/x"}, Row{L"a/b//", L"a/b", L"a/b/x"},
                           Row{L"a\\", L"a", L"a/x"}, Row{L"/", L"/", L"/x"}, Row{L"///", L"/", L"/x"},
                           Row{L"C:\\", L"C:\\", L"C:\\x"}, Row{L"C:/a/", L"C:/a", L"C:/a/x"}}) {
        SCOPED_TRACE(::testing::PrintToString(row.folder));
        const CategoryFolder folder(kKeywords, row.folder);
        EXPECT_EQ(row.path, DataSearch::GetDataSearch().GetFilePath(kKeywords));
        std::wstring name = L"x";
        EXPECT_FALSE(DataSearch::GetDataSearch().GetFullPath(kKeywords, name));
        EXPECT_EQ(row.file, name);
    }
}

TEST(DataSearch, TheNameBecomesTheFullPathAndTheResultTellsWhetherItIsAFile) {
    const TemporaryFolder temporary;
    const CategoryFolder folder(kKeywords, WidePath(temporary.Path()));
    std::wstring name = L"Keywords";
    EXPECT_FALSE(DataSearch::GetDataSearch().GetFullPath(kKeywords, name));
    EXPECT_EQ(WidePath(temporary.Path()) + L"/Keywords", name);
    WriteBytes(temporary.Path() / "Keywords", "[a]");
    name = L"Keywords";
    EXPECT_TRUE(DataSearch::GetDataSearch().GetFullPath(kKeywords, name));
    EXPECT_EQ("[a]", ReadBytes(NativePath(name)));
    name = L".";
    EXPECT_FALSE(DataSearch::GetDataSearch().GetFullPath(kKeywords, name)); // a folder is no file
}

} // namespace

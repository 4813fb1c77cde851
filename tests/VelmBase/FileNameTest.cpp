// SPDX-License-Identifier: MIT
#include "VelmBase/FileName.h"

#include <gtest/gtest.h>

TEST(FileName, KeepsThePathAsGiven) {
    EXPECT_EQ(L"", FileName().Path());
    EXPECT_EQ(L"a/b\\c.ini", FileName(L"a/b\\c.ini").Path());
}

TEST(FileName, TitleIsTheNameWithoutFolderAndExtension) {
    struct Row {
        const wchar_t* path;
        const wchar_t* title;
    };
    for (const Row& row : {Row{L"", L""}, Row{L"a", L"a"}, Row{L"a.ini", L"a"}, Row{L"dir/a.ini", L"a"},
                           Row{L"dir\\a.ini", L"a"}, Row{L"d.x/a", L"a"}, Row{L"d.x\\a", L"a"},
                           Row{L"c:\\d\\e/a.b.ini", L"a.b"}, Row{L"dir/", L""}, Row{L"dir/.ini", L".ini"},
                           Row{L"a.", L"a"}, Row{L"\u03A9.\u03A9", L"\u03A9"}}) {
        EXPECT_EQ(row.title, FileName(row.path).Title()) << row.path;
        EXPECT_EQ(row.title, GetTitleFromPath(row.path)) << row.path;
    }
}

TEST(FileName, SetExtensionReplacesAddsOrRemoves) {
    struct Row {
        const wchar_t* path;
        const wchar_t* extension;
        const wchar_t* result;
    };
    for (const Row& row : {Row{L"a.ini", L"cdf", L"a.cdf"}, Row{L"a.ini", L".cdf", L"a.cdf"},
                           Row{L"a", L"cdf", L"a.cdf"}, Row{L"a.ini", L"", L"a"}, Row{L"a", L"", L"a"},
                           Row{L"d.x/a", L"cdf", L"d.x/a.cdf"}, Row{L"d.x\\a", L".cdf", L"d.x\\a.cdf"},
                           Row{L"d.x/a", L"", L"d.x/a"}, Row{L"a.b.ini", L"cdf", L"a.b.cdf"}}) {
        FileName name(row.path);
        name.SetExtension(row.extension);
        EXPECT_EQ(row.result, name.Path()) << row.path << L" + " << row.extension;
    }
}

TEST(FileName, SetExtensionTakesAPieceOfItsOwnPath) {
    const std::wstring title = L"survey of the harbour"; // longer than a small buffer
    FileName name(title + L".ini");
    name.SetExtension(name.Path());
    EXPECT_EQ(title + L"." + title + L".ini", name.Path());
}

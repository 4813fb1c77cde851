// SPDX-License-Identifier: MIT
#include "Framework/Values.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

using namespace std::string_literals;

TEST(CString, HoldsWideText) {
    EXPECT_TRUE(CString().IsEmpty());
    EXPECT_EQ(0, CString().GetLength());
    const CString text(L"text \u03A9");
    EXPECT_EQ(6, text.GetLength());
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_STREQ(L"text \u03A9", text.GetString());
    EXPECT_STREQ(L"text \u03A9", static_cast<const wchar_t*>(text));
    EXPECT_EQ(L"text \u03A9", text.String());
    EXPECT_EQ(L"text \u03A9", CString(std::wstring(L"text \u03A9")).String());
}

TEST(CString, NullPointersAreEmpty) {
    EXPECT_TRUE(CString(static_cast<const wchar_t*>(nullptr)).IsEmpty());
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_EQ(CString(), static_cast<const wchar_t*>(nullptr));
}

TEST(CString, NarrowTextIsThatOfThePlatform) {
    EXPECT_EQ(L"ascii", CString("ascii").String());
    EXPECT_EQ(FromNarrow("\xC3\xA4"), CString("\xC3\xA4").String());
}

TEST(CString, EmptyAndCompare) {
    CString text(L"a");
    EXPECT_EQ(text, CString(L"a"));
    EXPECT_EQ(text, L"a");
    EXPECT_NE(text, CString(L"A"));
    EXPECT_NE(text, L"b");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
    text = L"new";
    EXPECT_EQ(L"new", text.String());
}

// Words in a row, each in memory of its own: addresses in no order that the words have.
TEST(CString, ComparesByTextWithTextOfEveryKind) {
    const std::wstring texts[] = {L"b", L"", L"a", L"ab", L"B", L"a\0b"s, L"\u03A9", L"ba", L"a"};
    for (const std::wstring& left : texts) {
        for (const std::wstring& right : texts) {
            const CString a(left), b(right);
            EXPECT_EQ(left == right, a == b);
            EXPECT_EQ(left != right, a != b);
            EXPECT_EQ(left < right, a < b);
            EXPECT_EQ(left <= right, a <= b);
            EXPECT_EQ(left > right, a > b);
            EXPECT_EQ(left >= right, a >= b);

            EXPECT_EQ(left == right, a == right);
            EXPECT_EQ(left != right, a != right);
            EXPECT_EQ(left < right, a < right);
            EXPECT_EQ(left <= right, a <= right);
            EXPECT_EQ(left > right, a > right);
            EXPECT_EQ(left >= right, a >= right);

            EXPECT_EQ(left == right, left == b);
            EXPECT_EQ(left != right, left != b);
            EXPECT_EQ(left < right, left < b);
            EXPECT_EQ(left <= right, left <= b);
            EXPECT_EQ(left > right, left > b);
            EXPECT_EQ(left >= right, left >= b);

            const wchar_t* const pointer = right.c_str(); // to the first NUL
            const std::wstring cut = pointer;
            EXPECT_EQ(left == cut, a == pointer);
            EXPECT_EQ(left != cut, a != pointer);
            EXPECT_EQ(left < cut, a < pointer);
            EXPECT_EQ(left <= cut, a <= pointer);
            EXPECT_EQ(left > cut, a > pointer);
            EXPECT_EQ(left >= cut, a >= pointer);

            EXPECT_EQ(cut == left, pointer == a);
            EXPECT_EQ(cut != left, pointer != a);
            EXPECT_EQ(cut < left, pointer < a);
            EXPECT_EQ(cut <= left, pointer <= a);
            EXPECT_EQ(cut > left, pointer > a);
            EXPECT_EQ(cut >= left, pointer >= a);
        }
    }
}

TEST(CString, NullPointerComparesAsAnEmptyText) {
    const wchar_t* const null = nullptr;
    EXPECT_EQ(CString(), null);
    EXPECT_NE(CString(L"a"), null);
    EXPECT_GE(CString(), null);
    EXPECT_GT(CString(L"a"), null);
    EXPECT_LT(null, CString(L"a"));
}

TEST(CString, IsSortedByText) {
    std::vector<CString> texts = {L"c", L"a", L"d", L"b"};
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ((std::vector<CString>{L"a", L"b", L"c", L"d"}), texts);
    EXPECT_EQ(1u, (std::set<CString>{CString(L"x"), CString(L"x")}.size()));
}

TEST(Values, PointsSizesAndRectangles) {
    EXPECT_EQ((CPoint{0, 0}), CPoint());
    EXPECT_NE((CPoint{1, 2}), (CPoint{2, 1}));
    EXPECT_EQ((CSize{0, 0}), CSize());
    EXPECT_NE((CSize{1, 2}), (CSize{2, 1}));
    const CRect rect{1, 2, 11, 22};
    EXPECT_EQ(10, rect.Width());
    EXPECT_EQ(20, rect.Height());
    EXPECT_EQ((CRect{1, 2, 11, 22}), rect);
    EXPECT_NE(CRect(), rect);
    EXPECT_EQ(-10, (CRect{11, 0, 1, 0}).Width());
}

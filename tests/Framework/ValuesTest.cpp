#include "Framework/Values.h"

#include <gtest/gtest.h>

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
    EXPECT_TRUE(CString() == static_cast<const wchar_t*>(nullptr));
}

TEST(CString, NarrowTextIsThatOfThePlatform) {
    EXPECT_EQ(L"ascii", CString("ascii").String());
    EXPECT_EQ(FromNarrow("\xC3\xA4"), CString("\xC3\xA4").String());
}

TEST(CString, EmptyAndCompare) {
    CString text(L"a");
    EXPECT_TRUE(text == CString(L"a"));
    EXPECT_TRUE(text == L"a");
    EXPECT_FALSE(text == CString(L"A"));
    EXPECT_TRUE(text != L"b");
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
    text = L"new";
    EXPECT_EQ(L"new", text.String());
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

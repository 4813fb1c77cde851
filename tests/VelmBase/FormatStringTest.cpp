// SPDX-License-Identifier: MIT
#include "VelmBase/FormatString.h"

#include "tests/support/Random.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

std::vector<std::wstring> Items(const FormatString& text) {
    std::vector<std::wstring> items;
    for (int i = 0; i < text.NumItems(); ++i) items.push_back(text[i]);
    return items;
}

std::vector<std::wstring> Split(const std::wstring& text) { return Items(FormatString(text, L',')); }

} // namespace

TEST(FormatString, SplitsAtEverySeparatorAndKeepsEmptyItems) {
    EXPECT_THAT(Split(L""), IsEmpty());
    EXPECT_THAT(Split(L"a"), ElementsAre(L"a"));
    EXPECT_THAT(Split(L"a,b"), ElementsAre(L"a", L"b"));
    EXPECT_THAT(Split(L","), ElementsAre(L"", L""));
    EXPECT_THAT(Split(L"a,"), ElementsAre(L"a", L""));
    EXPECT_THAT(Split(L",a"), ElementsAre(L"", L"a"));
    EXPECT_THAT(Split(L"a,,b"), ElementsAre(L"a", L"", L"b"));
    EXPECT_THAT(Split(L" a , b "), ElementsAre(L" a ", L" b "));
    EXPECT_THAT(Split(L"a;b"), ElementsAre(L"a;b"));
    EXPECT_THAT(Items(FormatString(std::wstring(L"a\0b", 3), L'\0')), ElementsAre(L"a", L"b"));
    EXPECT_THAT(Items(FormatString(L"a\u03A9b", L'\u03A9')), ElementsAre(L"a", L"b"));
}

TEST(FormatString, AnItemOutOfRangeIsEmpty) {
    const FormatString text(L"a,b", L',');
    for (const int index : {-1, 2, 1000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(L"", text[index]);
        EXPECT_EQ(L"", text.Item(index));
    }
    EXPECT_EQ(L"", FormatString(L',')[0]);
}

TEST(FormatString, AddItemAppends) {
    FormatString text(L',');
    EXPECT_EQ(0, text.NumItems());
    EXPECT_EQ(L"", text.Text());
    text.AddItem(L"a");
    text.AddItem(L"");
    text.AddItem(L"b");
    EXPECT_THAT(Items(text), ElementsAre(L"a", L"", L"b"));
    EXPECT_EQ(L"a,,b", text.Text());
    text.AddItem(text.Item(0));
    EXPECT_EQ(L"a,,b,a", text.Text());
}

TEST(FormatString, SetItemReplacesOrFillsUp) {
    FormatString text(L"a,b", L',');
    text.SetItem(1, L"c");
    EXPECT_EQ(L"a,c", text.Text());
    text.SetItem(4, L"e");
    EXPECT_EQ(L"a,c,,,e", text.Text());
    text.SetItem(-1, L"x");
    text.SetItem(std::numeric_limits<int>::min(), L"x");
    EXPECT_EQ(L"a,c,,,e", text.Text());
    text.SetItem(6, text.Item(0)); // the item moves while it is copied
    EXPECT_EQ(L"a,c,,,e,,a", text.Text());
}

TEST(FormatString, HasSubStringSeeksAWholeItemExactly) {
    const FormatString text(L"alpha,Beta,,gamma", L',');
    EXPECT_TRUE(text.HasSubString(L"alpha"));
    EXPECT_TRUE(text.HasSubString(L"Beta"));
    EXPECT_TRUE(text.HasSubString(L""));
    EXPECT_FALSE(text.HasSubString(L"beta"));
    EXPECT_FALSE(text.HasSubString(L"alph"));
    EXPECT_FALSE(text.HasSubString(L"alpha,Beta"));
    EXPECT_FALSE(FormatString(L"", L',').HasSubString(L""));
}

TEST(FormatString, RandomTextsSplitAsACharacterLoopAndJoinToThemselves) {
    Random random(60);
    for (int i = 0; i < 100000; ++i) {
        const std::wstring text = random.Text(L"ab,; ", 12);
        std::vector<std::wstring> expected;
        for (std::size_t k = 0; k < text.size(); ++k) {
            if (k == 0) expected.emplace_back();
            if (text[k] == L',')
                expected.emplace_back();
            else
                expected.back() += text[k];
        }
        const FormatString format(text, L',');
        ASSERT_EQ(expected, Items(format));
        ASSERT_EQ(text, format.Text());
    }
}

TEST(FormatString, ItsOwnItemsCanBeAddedAndSet) {
    const std::wstring text = L"an item that is longer than any small buffer";
    FormatString items(text, L',');
    for (int i = 0; i < 20; ++i) items.AddItem(items.Item(0)); // the items move as they grow
    items.SetItem(40, items.Item(3));
    items.SetItem(0, items.Item(0));
    for (const int i : {0, 1, 20, 40}) EXPECT_EQ(text, items.Item(i)) << i;
    EXPECT_EQ(41, items.NumItems());
}

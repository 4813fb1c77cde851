// SPDX-License-Identifier: MIT
#include "UtilityDLL/runtime/DropObject.h"

#include "tests/support/Random.h"

#include <cwchar>
#include <gtest/gtest.h>
#include <vector>

namespace {

DropObject Parsed(const std::wstring& text) {
    DropObject object(DropObject::KIND_3, L"before"); // must not shine through
    object.FromString(text);
    return object;
}

DropObject::TYPE Type(int number) { return static_cast<DropObject::TYPE>(number); }

TEST(DropObject, DefaultIsNoObject) {
    EXPECT_EQ(4, DropObject().Type());
    EXPECT_EQ(L"", DropObject().Data().String());
}

TEST(DropObject, HoldsTypeAndData) {
    const DropObject object(DropObject::KIND_2, L"abc");
    EXPECT_EQ(2, object.Type());
    EXPECT_EQ(L"abc", object.Data().String());
    DropObject copy;
    copy = object;
    const DropObject moved(std::move(copy));
    EXPECT_EQ(2, moved.Type());
    EXPECT_EQ(L"abc", moved.Data().String());
}

TEST(DropObject, OneLineForm) {
    struct Row {
        int type;
        const wchar_t *data, *text;
    };
    for (const Row& row :
         {Row{2, L"abc", L"2,abc"}, Row{1, L"a,b,", L"1,a,b,"}, Row{4, L"", L"4,"}, Row{-7, L"x", L"-7,x"},
          Row{std::numeric_limits<int>::min(), L"", L"-2147483648,"}}) {
        EXPECT_EQ(row.text, DropObject(Type(row.type), row.data).ToString().String());
    }
}

TEST(DropObject, ReadsItsOneLineForm) {
    struct Row {
        const wchar_t* text;
        int type;
        const wchar_t* data;
    };
    for (const Row& row :
         {Row{L"2,abc,def", 2, L"abc,def"}, Row{L"1,a", 1, L"a"}, Row{L"3,,", 3, L","},
          Row{L"  3, a ", 3, L" a "}, // blanks before the number are skipped, data is as it is
          Row{L"1junk,a", 1, L"a"},   // digits up to the first other character
          Row{L"+2,a", 2, L"a"}, Row{L"002,a", 2, L"a"}, Row{L"1.9,a", 1, L"a"}}) {
        const DropObject object = Parsed(row.text);
        EXPECT_EQ(row.type, object.Type()) << row.text;
        EXPECT_EQ(row.data, object.Data().String()) << row.text;
    }
    EXPECT_EQ(L"2,abc,def", Parsed(L"2,abc,def").ToString().String());
}

TEST(DropObject, AnyOtherTextLeavesNoObject) {
    for (const wchar_t* text :
         {L"", L"5,abc", L"2", L"2,", L"x,abc", L",abc", L"0,abc", L"4,abc", L"-1,abc", L"- 1,abc",
          L"99999999999,abc", L"4294967297,abc", L"18446744073709551618,abc"}) {
        const DropObject object = Parsed(text);
        EXPECT_EQ(4, object.Type()) << text;
        EXPECT_EQ(L"", object.Data().String()) << text;
    }
}

TEST(DropObject, ReadsItsOwnData) {
    DropObject object(DropObject::KIND_1, L"3,inner");
    object.FromString(object.Data());
    EXPECT_EQ(3, object.Type());
    EXPECT_EQ(L"inner", object.Data().String());
}

TEST(DropObject, DataMayHoldAnyCharacter) {
    const std::wstring data(L"a\0b\r\n\x1A\u20AC,", 8);
    const DropObject object = Parsed(DropObject(DropObject::KIND_1, data).ToString().String());
    EXPECT_EQ(1, object.Type());
    EXPECT_EQ(data, object.Data().String());
}

TEST(DropObject, ReadingAgreesWithTheRuleOnRandomTexts) {
    Random random(1);
    const std::vector<wchar_t> characters = {L'1', L'2', L'3', L'5', L'0', L',',
                                             L',', L' ', L'-', L'+', L'x', L'\t'};
    int objects = 0;
    for (int i = 0; i < kPropertyRuns; ++i) {
        std::wstring text;
        for (int n = random.Integer(0, 8); n > 0; --n) text += random.OneOf(characters);
        const long number = std::wcstol(text.c_str(), nullptr, 10);
        const std::size_t comma = text.find(L',');
        const bool isObject =
            number >= 1 && number <= 3 && comma != std::wstring::npos && comma + 1 < text.size();
        const DropObject object = Parsed(text);
        ASSERT_EQ(isObject ? number : 4, object.Type()) << text;
        ASSERT_EQ(isObject ? text.substr(comma + 1) : L"", object.Data().String()) << text;
        objects += isObject;
    }
    EXPECT_GT(objects, kPropertyRuns / 20);
}

} // namespace

// SPDX-License-Identifier: MIT
#include "VelmBase/VelmString.h"

#include "tests/support/Random.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace {

CVelmString OneItem(const std::wstring& item) {
    CVelmString text(L',');
    text.AddItem(item);
    return text;
}

template <typename T> T Read(const std::wstring& item, T start, bool good) {
    EXPECT_EQ(good, OneItem(item).GetItem(0, start)) << ::testing::PrintToString(item);
    return start;
}

template <typename T> std::wstring Written(T value) {
    CVelmString text(L',');
    text.AddItem(value);
    return text.Text();
}

} // namespace

TEST(CVelmString, SplitsAndJoinsAsFormatString) {
    CVelmString text(L"a,,b,", L',');
    EXPECT_EQ(4, text.NumItems());
    EXPECT_EQ(L"a", text.GetItem(0));
    EXPECT_EQ(L"", text.GetItem(1));
    EXPECT_EQ(L"", text.GetItem(3));
    EXPECT_EQ(L"", text.GetItem(4));
    EXPECT_EQ(L"", text.GetItem(-1));
    EXPECT_EQ(L"a,,b,", text.Text());
    EXPECT_EQ(0, CVelmString(L"", L',').NumItems());
    text.SetItem(1, L"x");
    text.SetItem(5, L"y");
    text.SetItem(-1, L"z");
    EXPECT_EQ(L"a,x,b,,,y", text.Text());
    text.AddItem(std::wstring(L"end"));
    EXPECT_EQ(L"a,x,b,,,y,end", text.Text());
}

TEST(CVelmString, ReadsNumbers) {
    EXPECT_EQ(12, Read(L"12", 7, true));
    EXPECT_EQ(-12, Read(L" -12 mm", 7, true));
    EXPECT_EQ(1, Read(L"1.9", 7, true));
    EXPECT_EQ(0, Read(L"0x10", 7, true));
    EXPECT_EQ(1.5f, Read(L"1.5", 7.0f, true));
    EXPECT_EQ(1.0f, Read(L"1,5", 7.0f, true));
    EXPECT_EQ(-0.25f, Read(L"-.25x", 7.0f, true));
    EXPECT_TRUE(Read(L"1", false, true));
    EXPECT_FALSE(Read(L"0", true, true));
    EXPECT_TRUE(Read(L"2", false, true));
    EXPECT_TRUE(Read(L"-1", false, true));
}

TEST(CVelmString, LeavesTheTargetWhenTheItemIsMissingOrNoNumber) {
    for (const wchar_t* item : {L"", L" ", L"x", L"true", L"-", L".", L"nan", L"inf"}) {
        EXPECT_EQ(7, Read(item, 7, false));
        EXPECT_EQ(7.5f, Read(item, 7.5f, false));
        EXPECT_TRUE(Read(item, true, false));
        EXPECT_FALSE(Read(item, false, false));
    }
    int number = 7;
    float real = 7.5f;
    bool flag = true;
    for (const int index : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(OneItem(L"1").GetItem(index, number));
        EXPECT_FALSE(OneItem(L"1").GetItem(index, real));
        EXPECT_FALSE(OneItem(L"0").GetItem(index, flag));
    }
    EXPECT_EQ(7, number);
    EXPECT_EQ(7.5f, real);
    EXPECT_TRUE(flag);
}

TEST(CVelmString, NumbersOutOfRangeBecomeTheNearestLimit) {
    EXPECT_EQ(std::numeric_limits<int>::max(), Read(L"99999999999", 7, true));
    EXPECT_EQ(std::numeric_limits<int>::min(), Read(L"-99999999999", 7, true));
    EXPECT_EQ(std::numeric_limits<float>::max(), Read(L"1e999", 7.0f, true));
    EXPECT_EQ(-std::numeric_limits<float>::max(), Read(L"-1e39", 7.0f, true));
    EXPECT_TRUE(Read(L"99999999999999999999999", false, true));
}

TEST(CVelmString, WritesNumbersAsAWideStreamByDefault) {
    EXPECT_EQ(L"1", Written(true));
    EXPECT_EQ(L"0", Written(false));
    EXPECT_EQ(L"-2147483648", Written(std::numeric_limits<int>::min()));
    EXPECT_EQ(L"4294967295", Written(4294967295ul));
    EXPECT_EQ(L"2.5", Written(2.5f));
    EXPECT_EQ(L"0.333333", Written(1.0f / 3));
    EXPECT_EQ(L"1e+20", Written(1e20f));
    EXPECT_EQ(L"100000", Written(100000.0f));
    EXPECT_EQ(L"1e+06", Written(1000000.0f));
    EXPECT_EQ(L"-0", Written(-0.0f));
    EXPECT_EQ(L"text", Written(L"text"));
    Random random(61);
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    for (int i = 0; i < 100000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random.Bits());
        float value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isnan(value)) value = std::fabs(value); // not every platform's streams show its sign
        stream.str(L"");
        stream << value;
        ASSERT_EQ(stream.str(), Written(value));
    }
}

namespace {

template <typename Value>
concept CanBeAdded = requires(CVelmString items, Value value) {
    items.AddItem(value);
};

} // namespace

TEST(CVelmString, APointerIsNoItem) {
    static_assert(CanBeAdded<bool> && CanBeAdded<int> && CanBeAdded<unsigned long> && CanBeAdded<float> &&
                  CanBeAdded<const wchar_t*> && CanBeAdded<wchar_t*> && CanBeAdded<std::wstring>);
    static_assert(!CanBeAdded<const char*> && !CanBeAdded<int*> && !CanBeAdded<void*>);
}

// SPDX-License-Identifier: MIT
#include "VelmBase/ErrorString.h"

#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace {

template <typename From> constexpr bool kMakesAResult = std::is_constructible_v<ErrorString, From>;
template <typename Left, typename Right> constexpr bool kCanBeShifted = requires(Left left, Right right) {
    left << right;
};

// A pointer or a number is not taken for a truth value.
static_assert(kMakesAResult<bool> && kMakesAResult<const wchar_t*> && kMakesAResult<std::wstring>);
static_assert(!kMakesAResult<const char*> && !kMakesAResult<const void*> && !kMakesAResult<int*>);
static_assert(!kMakesAResult<int> && !kMakesAResult<double> && !kMakesAResult<int ErrorString::*>);
static_assert(std::is_convertible_v<bool, ErrorString> && std::is_convertible_v<ErrorString, bool>);

// Nor is a result taken for a number.
enum Number { NUMBER };
static_assert(kCanBeShifted<ErrorString&, unsigned char> && kCanBeShifted<ErrorString&, const wchar_t*>);
static_assert(!kCanBeShifted<ErrorString&, double> && !kCanBeShifted<ErrorString&, Number>);
static_assert(!kCanBeShifted<ErrorString&, const char*>);
static_assert(!kCanBeShifted<std::ostream&, ErrorString> && !kCanBeShifted<std::wostream&, ErrorString&>);

ErrorString Succeed() { return true; }
ErrorString Fail() { return false; }
ErrorString FailWith(const wchar_t* text) { return text; }
bool Passes(const ErrorString& result) { return result; }

} // namespace

TEST(ErrorString, ComesFromABoolAndBecomesOne) {
    const bool good = Succeed();
    EXPECT_TRUE(good);
    bool bad = true;
    bad = Fail();
    EXPECT_FALSE(bad);
    EXPECT_TRUE(Passes(true));
    EXPECT_FALSE(Passes(L"text"));
    EXPECT_FALSE(Passes(nullptr));
    EXPECT_EQ(L"text", FailWith(L"text").Text());
    EXPECT_FALSE(FailWith(nullptr));
    wchar_t text[] = L"text that can be changed";
    const ErrorString error = text;
    EXPECT_FALSE(error);
    EXPECT_EQ(text, error.Text());
    EXPECT_EQ(1, Succeed() ? 1 : 2);
    EXPECT_TRUE(Succeed() && !Fail());
}

TEST(ErrorString, IsComparedAsABool) {
    EXPECT_TRUE(Succeed() == true);
    EXPECT_TRUE(false == Fail());
    EXPECT_TRUE(Fail() == FailWith(L"text"));
    EXPECT_TRUE(Succeed() != Fail());
}

TEST(ErrorString, AppendsCharactersAsTheyAre) {
    EXPECT_EQ(L"a,\u03A9|b\u00E9",
              (ErrorString(L"a") << L',' << L'\u03A9' << '|' << 'b' << static_cast<char>(0xE9)).Text());
    EXPECT_EQ(L"44,-1,1", (ErrorString(L"") << static_cast<unsigned char>(44) << L','
                                            << static_cast<signed char>(-1) << L',' << true)
                              .Text());
}

TEST(ErrorString, IsTrueWhenItHoldsNoError) {
    EXPECT_TRUE(ErrorString());
    EXPECT_TRUE(ErrorString(true));
    EXPECT_FALSE(ErrorString(false));
    EXPECT_FALSE(ErrorString(L"text"));
    EXPECT_FALSE(ErrorString(L""));
    EXPECT_FALSE(ErrorString(std::wstring(L"text")));
    EXPECT_FALSE(ErrorString(std::wstring()));
    EXPECT_FALSE(ErrorString(static_cast<const wchar_t*>(nullptr)));
}

TEST(ErrorString, CarriesItsText) {
    EXPECT_EQ(L"", ErrorString().Text());
    EXPECT_EQ(L"", ErrorString(true).Text());
    EXPECT_EQ(L"", ErrorString(false).Text());
    EXPECT_EQ(L"text", ErrorString(L"text").Text());
    EXPECT_EQ(L"text", ErrorString(std::wstring(L"text")).Text());
    EXPECT_EQ(L"", ErrorString(static_cast<const wchar_t*>(nullptr)).Text());
}

TEST(ErrorString, AppendsTextsAndIntegers) {
    ErrorString error(L"line ");
    EXPECT_EQ(&error, &(error << 12 << L", " << std::wstring(L"column ") << 7u));
    EXPECT_EQ(L"line 12, column 7", error.Text());
    EXPECT_FALSE(error);
    error << static_cast<const wchar_t*>(nullptr);
    EXPECT_EQ(L"line 12, column 7", error.Text());
}

TEST(ErrorString, IntegersOfEveryWidthAreDecimal) {
    EXPECT_EQ(L"-1|4294967295|-32768|65535|18446744073709551615|-9223372036854775808|7",
              (ErrorString(L"") << -1 << L"|" << std::numeric_limits<std::uint32_t>::max() << L"|"
                                << short{-32768} << L"|" << static_cast<unsigned short>(65535) << L"|"
                                << std::numeric_limits<std::uint64_t>::max() << L"|"
                                << std::numeric_limits<std::int64_t>::min() << L"|" << 7L)
                  .Text());
}

TEST(ErrorString, AppendingDoesNotChangeWhetherItIsAnError) {
    EXPECT_TRUE(ErrorString() << L"note");
    EXPECT_EQ(L"note", (ErrorString() << L"note").Text());
    EXPECT_FALSE(ErrorString(false) << L"why");
    EXPECT_EQ(L"why1", (ErrorString(false) << L"why" << 1).Text());
}

TEST(ErrorString, ItsOwnTextCanBeAppended) {
    ErrorString error(L"a text that is longer than any small buffer ");
    error << error.Text();
    EXPECT_EQ(L"a text that is longer than any small buffer a text that is longer than any small buffer ",
              error.Text());
}

TEST(ErrorString, CopiesAndMoves) {
    const ErrorString error(L"text");
    ErrorString copy = error;
    EXPECT_EQ(L"text", copy.Text());
    copy = ErrorString();
    EXPECT_TRUE(copy);
    EXPECT_EQ(L"", copy.Text());
    copy = error;
    const ErrorString moved = std::move(copy);
    EXPECT_FALSE(moved);
    EXPECT_EQ(L"text", moved.Text());
}

TEST(ErrorString, AppendsItsOwnText) {
    ErrorString error(L"a text that is longer than any small buffer");
    const std::wstring text = error.Text();
    error << error.Text();
    error << error.Text().c_str();
    EXPECT_EQ(text + text + text + text, error.Text());
}

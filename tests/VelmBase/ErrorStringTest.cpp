#include "VelmBase/ErrorString.h"

#include <gtest/gtest.h>
#include <limits>

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

// SPDX-License-Identifier: MIT
#include "VelmBase/NumberText.h"

#include "tests/support/NumberTexts.h"

#include <clocale>
#include <gtest/gtest.h>
#include <limits>

namespace {

template <typename T> struct Outcome {
    bool result;
    T value;
    bool operator==(const Outcome&) const = default;
};

template <typename T> Outcome<T> Extracted(const std::wstring& text, T start) {
    const bool result = NumberText::Extract(text, start);
    return {result, start};
}

/// Numbers as a host's locale may have them: groups, and another decimal sign.
class ForeignNumbers : public std::numpunct<wchar_t> {
    wchar_t do_decimal_point() const override { return L','; }
    wchar_t do_thousands_sep() const override { return L'.'; }
    std::string do_grouping() const override { return "\3"; }
    std::wstring do_truename() const override { return L"wahr"; }
    std::wstring do_falsename() const override { return L"falsch"; }
};
class ForeignNarrowNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// The locale of the process for as long as it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_before(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_before); }
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale m_before;
};

} // namespace

TEST(NumberText_Extract, LeavesTheTargetAloneOnBlankText) {
    for (const wchar_t* text : {L"", L" ", L"\t\n\v\f\r "}) {
        EXPECT_EQ((Outcome<int>{false, 7}), Extracted<int>(text, 7));
        EXPECT_EQ((Outcome<double>{false, 7.5}), Extracted<double>(text, 7.5));
        EXPECT_EQ((Outcome<bool>{false, true}), Extracted<bool>(text, true));
        EXPECT_EQ((Outcome<unsigned long>{false, 7}), Extracted<unsigned long>(text, 7));
    }
}

TEST(NumberText_Extract, GivesZeroForTextThatIsNoNumber) {
    for (const wchar_t* text :
         {L"x", L"-", L"+", L".", L"-.", L"e1", L".e1", L"nan", L"inf", L"\u0661", L"\u00A01"}) {
        EXPECT_EQ((Outcome<int>{false, 0}), Extracted<int>(text, 7)) << text;
        EXPECT_EQ((Outcome<float>{false, 0}), Extracted<float>(text, 7)) << text;
        EXPECT_EQ((Outcome<double>{false, 0}), Extracted<double>(text, 7)) << text;
        EXPECT_EQ((Outcome<bool>{false, false}), Extracted<bool>(text, true)) << text;
    }
}

TEST(NumberText_Extract, GivesTheNearestLimitOutOfRange) {
    EXPECT_EQ((Outcome<short>{false, 32767}), Extracted<short>(L"32768", 7));
    EXPECT_EQ((Outcome<short>{false, -32768}), Extracted<short>(L"-32769", 7));
    EXPECT_EQ((Outcome<unsigned short>{false, 65535}), Extracted<unsigned short>(L"65536", 7));
    EXPECT_EQ((Outcome<unsigned short>{true, 65535}), Extracted<unsigned short>(L"-1", 7));
    EXPECT_EQ((Outcome<int>{false, 2147483647}), Extracted<int>(L"2147483648", 7));
    EXPECT_EQ((Outcome<unsigned int>{false, 4294967295}), Extracted<unsigned int>(L"4294967296", 7));
    EXPECT_EQ((Outcome<long>{false, std::numeric_limits<long>::max()}),
              Extracted<long>(L"9223372036854775808", 7));
    EXPECT_EQ((Outcome<double>{false, std::numeric_limits<double>::max()}), Extracted<double>(L"1e999", 7));
    EXPECT_EQ((Outcome<double>{false, -std::numeric_limits<double>::max()}), Extracted<double>(L"-1e999", 7));
    EXPECT_EQ((Outcome<float>{false, std::numeric_limits<float>::max()}), Extracted<float>(L"1e39", 7));
    EXPECT_EQ((Outcome<bool>{false, true}), Extracted<bool>(L"2", false));
    EXPECT_EQ((Outcome<bool>{false, true}), Extracted<bool>(L"-1", false));
}

TEST(NumberText_Extract, ReadsAnUnsignedLongAs32BitsWide) {
    EXPECT_EQ((Outcome<unsigned long>{true, 4294967295}), Extracted<unsigned long>(L"4294967295", 7));
    EXPECT_EQ((Outcome<unsigned long>{false, 4294967295}), Extracted<unsigned long>(L"4294967296", 7));
    EXPECT_EQ((Outcome<unsigned long>{false, 4294967295}),
              Extracted<unsigned long>(L"18446744073709551616", 7));
    EXPECT_EQ((Outcome<unsigned long>{true, 4294967295}), Extracted<unsigned long>(L"-1", 7));
    EXPECT_EQ((Outcome<unsigned long>{true, 1}), Extracted<unsigned long>(L"-4294967295", 7));
    EXPECT_EQ((Outcome<unsigned long>{false, 4294967295}), Extracted<unsigned long>(L"-4294967296", 7));
}

TEST(NumberText_Extract, TextsThatAreNamedInTheDescriptionsOfHosts) {
    ExtractionTwin twin;
    // clang-format off
    constexpr const wchar_t* texts[] = {
        L"nan", L"NaN", L"inf", L"-inf", L"INFINITY", L"1e999", L"-1e999", L"1e-999", L"-0", L"-0.0",
        L"0x10", L"0X1p3", L"1,5", L"1.5", L"1 5", L"99999999999", L"", L" ", L"\t\n", L"true",
        L"false", L"2", L"1e", L"1e+", L"1e-", L"1e5x", L"1.e5", L".5", L"5.", L".", L"+.5", L"- 5",
        L"--5", L"+-5", L"00000000000000000000000000001",
        L"0.00000000000000000000000000000000000000000000001e47", L"2.2250738585072011e-308",
        L"4.9e-324", L"2.4e-324", L"1.7976931348623158e308", L"1.7976931348623159e308", L"3.4028235e38",
        L"3.4028236e38", L"1e-46", L"1.4e-45", L"0.7e-45", L"9007199254740993",
        L"9007199254740992.99999999999999999999999", L"16777217", L"1'000", L"1_000", L"1.000.000",
        L"1,000,000", L"\uFF11", L"\u0661", L"1\u0661", L"\u00A05", L"5\u00A0", L"1\0002", L"\0001",
        L"1e00000000000000000000000000005", L"1e99999999999999999999", L"1e-99999999999999999999",
        L"0e99999999999999999999", L"-32768", L"-32769", L"32768", L"-2147483649",
        L"-9223372036854775809", L"18446744073709551615", L"-18446744073709551615",
        L"-18446744073709551616", L"-65535", L"-65536"};
    // clang-format on
    for (const wchar_t* text : texts) EXPECT_TRUE(twin.AgreesForAllTypes(text));
}

TEST(NumberText_Extract, EveryShortTextAgreesWithTheStandardStream) {
    ExtractionTwin twin;
    const std::wstring alphabet = L"017+-.eE x,";
    std::vector<std::wstring> texts = {L""};
    for (std::size_t i = 0; texts[i].size() < 4; ++i)
        for (const wchar_t c : alphabet) texts.push_back(texts[i] + c);
    for (const std::wstring& text : texts) ASSERT_TRUE(twin.AgreesForAllTypes(text));
    EXPECT_EQ(1u + 11 + 121 + 1331 + 14641, texts.size());
}

TEST(NumberText_Extract, RandomTextsAgreeWithTheStandardStream) { ExpectExtractionAgrees(20, 200000); }

TEST(NumberText_Extract, HugeTextsCostNoMoreThanTheirLength) {
    ExtractionTwin twin;
    const std::size_t many = 10'000;
    for (const std::wstring& text :
         {std::wstring(many, L'0'), std::wstring(many, L'9'), L"0." + std::wstring(many, L'0') + L"1",
          L"0." + std::wstring(many, L'0') + L"1e" + std::to_wstring(many + 1),
          std::wstring(many, L' ') + L"5", std::wstring(many, L' '), std::wstring(many, L'x'),
          L"1e" + std::wstring(many, L'0') + L"5", L"1e" + std::wstring(many, L'9'),
          L"1." + std::wstring(many, L'3'), std::wstring(many, L'-')})
        EXPECT_TRUE(twin.AgreesForAllTypes(text)) << text.substr(0, 10);
}

TEST(NumberText_From, KnownTexts) {
    EXPECT_EQ(L"-9223372036854775808", NumberText::FromInteger(std::numeric_limits<long long>::min()));
    EXPECT_EQ(L"18446744073709551615",
              NumberText::FromInteger(std::numeric_limits<unsigned long long>::max()));
    EXPECT_EQ(L"9223372036854775808", NumberText::FromInteger(1ull << 63));
    EXPECT_EQ(L"0", NumberText::FromInteger(0ll));
    EXPECT_EQ(L"2.500000", NumberText::FromFixed(2.5));
    EXPECT_EQ(L"100000000000000000000.000000", NumberText::FromFixed(1e20));
    EXPECT_EQ(L"inf", NumberText::FromFixed(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(L"-inf", NumberText::FromFixed(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(L"nan", NumberText::FromFixed(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(L"-nan", NumberText::FromFixed(std::copysign(std::numeric_limits<double>::quiet_NaN(), -1.0)));
    EXPECT_EQ(309u + 7, NumberText::FromFixed(std::numeric_limits<double>::max()).size());
    EXPECT_EQ(L"2.5", NumberText::FromGeneral(2.5));
    EXPECT_EQ(L"1e+20", NumberText::FromGeneral(1e20));
    EXPECT_EQ(L"1e+16", NumberText::FromGeneral(1e16, 16)); // with as many digits as the exponent
    EXPECT_EQ(L"10000000000000000", NumberText::FromGeneral(1e16, 17));
    EXPECT_EQ(L"10000000000000000.000000", NumberText::FromFixed(1e16));
    EXPECT_EQ(L"0.333333", NumberText::FromGeneral(1.0 / 3));
    EXPECT_EQ(L"0.3", NumberText::FromGeneral(1.0 / 3, 0));
    EXPECT_EQ(L"0.33333333333333331", NumberText::FromGeneral(1.0 / 3, 17));
    EXPECT_EQ(L"inf", NumberText::FromGeneral(std::numeric_limits<double>::infinity()));
}

TEST(NumberText_Is, TellsANumberFromATextThatOnlyBeginsWithOne) {
    struct Row {
        const wchar_t* text;
        bool isInteger, isDecimal;
    };
    for (const Row& row :
         {Row{L"0", true, true},       Row{L" \t-12\r\n", true, true}, Row{L"+5", true, true},
          Row{L"1.5", false, true},    Row{L".5", false, true},        Row{L"5.", false, true},
          Row{L"1e5", false, true},    Row{L"1E-5 ", false, true},     Row{L"1e", false, false},
          Row{L"1e+", false, false},   Row{L"1e ", false, false},      Row{L".", false, false},
          Row{L"", false, false},      Row{L" ", false, false},        Row{L"-", false, false},
          Row{L"- 1", false, false},   Row{L"+-1", false, false},      Row{L"1 2", false, false},
          Row{L"12x", false, false},   Row{L"\v1", false, false},      Row{L"1\f", false, false},
          Row{L"0x10", false, false},  Row{L"inf", false, false},      Row{L"1,5", false, false},
          Row{L"1", true, true},       Row{L" -12\t", true, true},     Row{L"+0", true, true},
          Row{L"1.", false, true},     Row{L"1.5E-05", false, true},   Row{L".5e+1 ", false, true},
          Row{L"1.5E-", false, false}, Row{L"e5", false, false},       Row{L".e5", false, false},
          Row{L"1e5e5", false, false}, Row{L"1e5.", false, false},     Row{L"1x", false, false},
          Row{L"nan", false, false}}) {
        EXPECT_EQ(row.isInteger, NumberText::IsInteger(row.text)) << ::testing::PrintToString(row.text);
        EXPECT_EQ(row.isDecimal, NumberText::IsDecimal(row.text)) << ::testing::PrintToString(row.text);
    }
}

TEST(NumberText_From, RandomNumbersAgreeWithTheStandardStream) { ExpectWritingAgrees(21, 60000); }

TEST(NumberText_From, ManyDigitsAgreeWithTheStandardStream) {
    std::wostringstream stream;
    for (const int precision : {20, 40, 100, 400, 1000})
        for (const double value : {1.0 / 3, 1e300, 1e-300, 5e-324, 1.0, 0.0, -1e17}) {
            stream.str(L"");
            stream.precision(precision);
            stream << value;
            EXPECT_EQ(stream.str(), NumberText::FromGeneral(value, precision));
        }
}

TEST(NumberText_LeadingDecimal, ReadsDigitsPointAndExponent) {
    EXPECT_EQ(1.5, NumberText::LeadingDecimal(L"1.5"));
    EXPECT_EQ(1.0, NumberText::LeadingDecimal(L"1,5"));
    EXPECT_EQ(1.0, NumberText::LeadingDecimal(L"1e"));
    EXPECT_EQ(1.0, NumberText::LeadingDecimal(L"1e+"));
    EXPECT_EQ(100.0, NumberText::LeadingDecimal(L"1e2x"));
    EXPECT_EQ(0.5, NumberText::LeadingDecimal(L".5"));
    EXPECT_EQ(5.0, NumberText::LeadingDecimal(L"5."));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L""));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"."));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"x"));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"0x10"));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"inf"));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"nan"));
    EXPECT_EQ(std::numeric_limits<double>::infinity(), NumberText::LeadingDecimal(L"1e999"));
    EXPECT_EQ(0.0, NumberText::LeadingDecimal(L"1e-999"));
    EXPECT_EQ(1.0, NumberText::LeadingDecimal(std::wstring(L"1\0005", 3)));
    EXPECT_EQ(1.0, NumberText::LeadingDecimal(L"1\u0661"));
}

TEST(NumberText_Locale, ForeignNumbersOfTheGlobalLocaleChangeNothing) {
    const GlobalLocale foreign(
        std::locale(std::locale(std::locale::classic(), new ForeignNumbers), new ForeignNarrowNumbers));
    { // the locale does what it is here for
        std::wostringstream stream;
        stream << std::fixed << 1234.5;
        ASSERT_EQ(L"1.234,500000", stream.str());
    }
    ExpectExtractionAgrees(22, 20000);
    ExpectWritingAgrees(23, 5000);
    EXPECT_EQ(1234.5, NumberText::LeadingDecimal(L"1234.5"));
}

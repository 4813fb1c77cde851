// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/DepthLabelText.h"

#include "UtilityDLL/presentation/DepthLabelInfo.h"
#include "VelmBase/WideString.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

namespace {

DepthLabelInfo Label(int precision, bool isInverted = false, bool noZeros = false) {
    DepthLabelInfo label;
    label.SetPrecision(precision);
    label.SetSignIsInverted(isInverted);
    label.SetNoDecimalZeros(noZeros);
    return label;
}

std::wstring Text(const DepthLabelInfo& label, double value) {
    const DepthLabelText text = FormatDepth(label, value);
    return text.decimals.empty() ? text.whole : text.whole + L"." + text.decimals;
}

} // namespace

TEST(DepthLabelText, IsTheNextNumberOfItsPrecisionFromTheValueOn) {
    struct Row {
        double value;
        int precision;
        const wchar_t* text;
        const wchar_t* inverted;
    };
    for (const Row& row : {
             Row{12.34, 1, L"12.4", L"12.3"}, // downward in the water, with either sign
             Row{-12.34, 1, L"-12.3", L"-12.4"}, Row{12.3, 1, L"12.3", L"12.3"}, // exact ones stay
             Row{-12.3, 1, L"-12.3", L"-12.3"},  Row{12.34, 2, L"12.34", L"12.34"},
             Row{12.345, 2, L"12.35", L"12.34"}, Row{12.99, 1, L"13.0", L"12.9"},
             Row{99.99, 1, L"100.0", L"99.9"},   Row{12, 0, L"12", L"12"},
             Row{12.001, 0, L"13", L"12"},       Row{-12.001, 0, L"-12", L"-13"},
             Row{7, 3, L"7.000", L"7.000"},      Row{0, 2, L"0.00", L"0.00"},
             Row{-0.0, 2, L"0.00", L"0.00"},     Row{-0.001, 2, L"0.00", L"-0.01"},
             Row{0.001, 2, L"0.01", L"0.00"},    Row{-0.5, 1, L"-0.5", L"-0.5"},
             Row{-0.5, 0, L"0", L"-1"},          Row{0.5, 0, L"1", L"0"},
         }) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(row.text, Text(Label(row.precision), row.value));
        EXPECT_EQ(row.inverted, Text(Label(row.precision, true), row.value));
    }
}

TEST(DepthLabelText, DepthsOfItsPrecisionStayAsTheyAre) {
    for (const int precision : {0, 1, 2, 3, 6}) {
        Random random(50);
        for (int run = 0; run < kPropertyRuns; ++run) {
            // Whole units of the last decimal, up to the deepest sea and heights in millimetres.
            const auto units = static_cast<long long>(random.Real(-1, 1) * 12e6 * std::pow(10.0, precision));
            const std::string sign = units < 0 ? "-" : "";
            std::string digits = std::to_string(std::llabs(units));
            if (digits.size() <= static_cast<std::size_t>(precision))
                digits.insert(0, static_cast<std::size_t>(precision) + 1 - digits.size(), '0');
            if (precision > 0) digits.insert(digits.size() - static_cast<std::size_t>(precision), ".");
            const std::string text = units == 0 ? digits : sign + digits;
            ASSERT_EQ(FromUtf8(text), Text(Label(precision), atof(text.c_str())));
            ASSERT_EQ(FromUtf8(text), Text(Label(precision, true), atof(text.c_str())));
        }
    }
    EXPECT_EQ(L"64.01", Text(Label(2), 64.01));
    EXPECT_EQ(L"64.02", Text(Label(2), std::nextafter(64.01, 65.0) + 1e-9));
}

TEST(DepthLabelText, TheSignStandsWithTheWholePartAndThePointNowhere) {
    const DepthLabelText text = FormatDepth(Label(2), -0.25);
    EXPECT_EQ(L"-0", text.whole);
    EXPECT_EQ(L"25", text.decimals);
    EXPECT_EQ(L"", FormatDepth(Label(0), 12).decimals);
}

TEST(DepthLabelText, LeavesOutDecimalsThatAreAllZeros) {
    EXPECT_EQ(L"12", Text(Label(2, false, true), 12));
    EXPECT_EQ(L"-12", Text(Label(2, false, true), -12));
    EXPECT_EQ(L"13", Text(Label(1, false, true), 12.99));
    EXPECT_EQ(L"12.50", Text(Label(2, false, true), 12.5)); // all of them or none
    EXPECT_EQ(L"100", Text(Label(0, false, true), 100));
    EXPECT_EQ(L"0", Text(Label(2, false, true), -0.001));
}

TEST(DepthLabelText, HasATextForEveryNumberAndPrecision) {
    for (const bool inverted : {false, true}) {
        EXPECT_EQ(L"nan", Text(Label(2, inverted), kNaN));
        EXPECT_EQ(L"nan", Text(Label(2, inverted), -kNaN));
        EXPECT_EQ(L"inf", Text(Label(2, inverted), kInfinity));
        EXPECT_EQ(L"-inf", Text(Label(2, inverted, true), -kInfinity));
        for (const int precision : {-1, INT_MIN}) EXPECT_EQ(L"12", Text(Label(precision, inverted), 12));
        for (const int precision : {300, 301, INT_MAX})
            EXPECT_EQ(L"0.5" + std::wstring(299, L'0'), Text(Label(precision, inverted), 0.5));
        for (const double value : {1e300, -1e300, 1.7976931348623157e308, -1.7976931348623157e308, 5e-324}) {
            for (const int precision : {-1, 0, 2, 300}) {
                char expected[1024];
                std::snprintf(expected, sizeof expected, "%.*f", std::max(precision, 0), value);
                if (std::fabs(value) < 1 && precision != 300) continue; // rounded up
                EXPECT_EQ(FromUtf8(expected), Text(Label(precision, inverted), value));
            }
        }
    }
}

TEST(DepthLabelText, NeverIsMinusZero) {
    Random random(51);
    for (int run = 0; run < kPropertyRuns; ++run) {
        const int precision = static_cast<int>(random.Below(6));
        const double value = random.Real(-2, 2) * std::pow(10.0, -precision);
        const std::wstring text = Text(Label(precision, random.OnceIn(2), random.OnceIn(2)), value);
        ASSERT_TRUE(text[0] != L'-' || text.find_first_not_of(L"-0.") != std::wstring::npos)
            << ::testing::PrintToString(text);
    }
}

TEST(DepthLabelText, ReadBackLiesLessThanOneStepFromTheValue) {
    Random random(52);
    for (int run = 0; run < kPropertyRuns; ++run) {
        const int precision = static_cast<int>(random.Below(7));
        const double step = std::pow(10.0, -precision);
        const double value = random.Real(-20000, 20000);
        const double up = atof(Text(Label(precision), value)) - value;
        const double down = value - atof(Text(Label(precision, true), value));
        for (const double off : {up, down}) { // never to the other side, but for what the bias lacks
            ASSERT_GE(off, -1e-11 - step * 1e-11) << value << " in " << precision;
            ASSERT_LT(off, step + 1e-11) << value << " in " << precision;
        }
    }
}

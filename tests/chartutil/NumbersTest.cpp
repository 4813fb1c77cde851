// SPDX-License-Identifier: MIT
#include "apps/chartutil/terminal/Numbers.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

TEST(Numbers, ParseTellsTheDecimalsThatAreWritten) {
    struct Row {
        const char* text;
        double value;
        int decimals;
    };
    for (const Row& row : {Row{"12", 12, 0}, Row{" 12.50\t", 12.5, 2}, Row{"+.5", 0.5, 1}, Row{"-3.", -3, 0},
                           Row{"1.25e-3", 0.00125, 5}, Row{"1.25E1", 12.5, 1}, Row{"1.25e3", 1250, 0},
                           Row{"1e+2", 100, 0}, Row{"0e-9999999999", 0, 1000}}) {
        DecimalNumber number;
        EXPECT_TRUE(ParseNumber(row.text, number)) << row.text;
        EXPECT_EQ(row.value, number.value) << row.text;
        EXPECT_EQ(row.decimals, number.decimals) << row.text;
    }
    DecimalNumber number{7, 3};
    for (const char* text : {"", "x", "1.5x", "1e", "nan"}) EXPECT_FALSE(ParseNumber(text, number)) << text;
}

TEST(Numbers, RoundingTakesTheNoiseAway) {
    EXPECT_EQ(3.6576, RoundedToDigits(12 * 0.3048));
    EXPECT_NE(3.6576, 12 * 0.3048);
    EXPECT_EQ(0.3, RoundedToDigits(0.1 + 0.2));
    EXPECT_EQ(-1200.0, RoundedToDigits(-1234.5, 2));
    EXPECT_EQ(0.0, RoundedToDigits(0));
    constexpr double kMost = std::numeric_limits<double>::max();
    EXPECT_EQ(kMost, RoundedToDigits(kMost)); // rounded up, it would be beyond
}

TEST(Numbers, DecimalTextHasAnExponentOnlyWhereAReaderWouldWriteOne) {
    struct Row {
        double value;
        const char* text;
    };
    for (const Row& row :
         {Row{0, "0"}, Row{-0.0, "0"}, Row{0.1 + 0.2, "0.3"}, Row{1e-7, "0.0000001"}, Row{9.9e-8, "9.9e-08"},
          Row{9.9e15, "9900000000000000"}, Row{1e16, "1e+16"}, Row{1.0 / 3, "0.333333333333333"}})
        EXPECT_EQ(row.text, DecimalText(row.value));
}

TEST(Numbers, DecimalTextShowsNoMoreDigitsThanADoubleHas) {
    struct Row {
        double value;
        int decimals;
        const char* text;
    };
    for (const Row& row :
         {Row{12.5, 2, "12.50"}, Row{-1e-17, 3, "0.000"}, Row{1.0 / 3, 20, "0.333333333333333"},
          Row{123456.123456789, 12, "123456.123456789"}, Row{1e15 / 3, 9, "333333333333333"},
          Row{9999999999999998, 5, "9999999999999998"}, Row{1e16, 2, "1e+16"},
          Row{0, 20, "0.00000000000000000000"}, Row{1.5e-30, 31, "1.5e-30"}, Row{0, 300, "0"}})
        EXPECT_EQ(row.text, DecimalText(DecimalNumber{row.value, row.decimals}));
    EXPECT_EQ("0.00", DecimalText(-0.001, 2));
}

// SPDX-License-Identifier: MIT
#include "UtilityDLL/contours/private/NumberField.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr double kWidest = static_cast<double>(std::numeric_limits<float>::max());

TEST(NumberField, ReadsWhatSaysANumberWithAPoint) {
    struct Row {
        const wchar_t* text;
        double value;
    };
    for (const Row& row : {Row{L"0", 0}, Row{L"12", 12}, Row{L"2.5", 2.5}, Row{L"-3.5", -3.5}, Row{L"+7", 7},
                           Row{L".5", 0.5}, Row{L"5.", 5}, Row{L"1e3", 1000}, Row{L"1E-2", 0.01},
                           Row{L" 4 ", 4}, Row{L"\t4\n", 4}, Row{L"007", 7}, Row{L"1e-400", 0},
                           Row{L"1.7976931348623157e308", kMost}, Row{L"-1.7976931348623157e308", -kMost}}) {
        const FieldNumber number = ReadNumber(row.text);
        EXPECT_FALSE(number.fault.has_value()) << ::testing::PrintToString(row.text);
        EXPECT_EQ(row.value, number.value) << ::testing::PrintToString(row.text);
    }
}

TEST(NumberField, SaysWhatIsWrongWithAText) {
    struct Row {
        std::wstring text;
        TextId fault;
    };
    for (const Row& row : {
             Row{L"", TextId::NUMBER_MISSING},
             Row{L"  \t", TextId::NUMBER_MISSING},
             Row{L"ten", TextId::NUMBER_WRONG},
             Row{L"10 m", TextId::NUMBER_WRONG},
             Row{L"1 000", TextId::NUMBER_WRONG},
             Row{L"1.2.3", TextId::NUMBER_WRONG},
             Row{L"--1", TextId::NUMBER_WRONG},
             Row{L"-", TextId::NUMBER_WRONG},
             Row{L".", TextId::NUMBER_WRONG},
             Row{L"1e", TextId::NUMBER_WRONG},
             Row{L"nan", TextId::NUMBER_WRONG},
             Row{L"inf", TextId::NUMBER_WRONG},
             Row{L"0x10", TextId::NUMBER_WRONG},
             Row{L"\u0663", TextId::NUMBER_WRONG},  // a digit of another script
             Row{L"\u22125", TextId::NUMBER_WRONG}, // a minus that is no hyphen
             Row{L"5\u00A0", TextId::NUMBER_WRONG}, // a blank that is none to the settings store
             Row{std::wstring(L"5\0", 2), TextId::NUMBER_WRONG},
             Row{L"2,5", TextId::NUMBER_WITH_COMMA},
             Row{L"1,000.5", TextId::NUMBER_WITH_COMMA},
             Row{L",", TextId::NUMBER_WITH_COMMA},
             Row{L"1e999", TextId::NUMBER_TOO_LARGE},
             Row{L"-1e999", TextId::NUMBER_TOO_SMALL},
         })
        EXPECT_EQ(row.fault, ReadNumber(row.text).fault) << ::testing::PrintToString(row.text);
}

TEST(NumberField, ARangeThatBeginsWithZeroIsSaidInItsOwnWords) {
    EXPECT_EQ(TextId::NUMBER_NEGATIVE, ReadNumber(L"-0.1", {0, 10}).fault);
    EXPECT_EQ(TextId::NUMBER_TOO_SMALL, ReadNumber(L"1.9", {2, 10}).fault);
    EXPECT_EQ(TextId::NUMBER_TOO_LARGE, ReadNumber(L"10.1", {2, 10}).fault);
    for (const wchar_t* const text : {L"2", L"10"}) EXPECT_FALSE(ReadNumber(text, {2, 10}).fault.has_value());
}

TEST(NumberField, ALevelHasTwoDecimals) {
    struct Row {
        double level;
        const wchar_t* shown;
    };
    for (const Row& row : {Row{0, L"0.00"}, Row{10, L"10.00"}, Row{-7.5, L"-7.50"}, Row{7.129, L"7.13"},
                           Row{-0.001, L"-0.00"}, Row{1e15, L"1000000000000000.00"}})
        EXPECT_EQ(row.shown, LevelField(row.level).shown);
}

TEST(NumberField, AWidthHasTheDigitsThatItNeeds) {
    struct Row {
        float width;
        const wchar_t* shown;
    };
    for (const Row& row : {Row{0, L"0"}, Row{1, L"1"}, Row{0.1F, L"0.1"}, Row{0.25F, L"0.25"},
                           Row{12.345F, L"12.345"}, Row{1e20F, L"1e+20"}})
        EXPECT_EQ(row.shown, WidthField(row.width).shown);
}

TEST(NumberField, WhatIsLeftAsItIsKeepsItsLastDigit) {
    const NumberField level = LevelField(7.123456);
    EXPECT_EQ(7.123456, level.Read(L"7.12").value);
    EXPECT_EQ(7.12, level.Read(L"7.120").value);
    EXPECT_EQ(static_cast<double>(1.0F / 3), WidthField(1.0F / 3).Read(WidthField(1.0F / 3).shown).value);
    // Out of its range, but it was there before.
    EXPECT_EQ(-1.5, WidthField(-1.5F).Read(L"-1.5").value);
    EXPECT_EQ(TextId::NUMBER_NEGATIVE, WidthField(-1.5F).Read(L"-1.50").fault);
}

TEST(NumberField, WhatIsNoFiniteNumberHasToBeWrittenAnew) {
    for (const double level : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        const NumberField field = LevelField(level);
        EXPECT_EQ(TextId::NUMBER_WRONG, field.Read(field.shown).fault);
        EXPECT_EQ(5, field.Read(L"5").value);
    }
}

TEST(NumberField, OneThatBeginsEmptyNeedsANumber) {
    EXPECT_EQ(TextId::NUMBER_MISSING, NumberField().Read(L"").fault);
    EXPECT_EQ(0, NumberField().Read(L"0").value);
    EXPECT_FALSE(NumberField().Read(L"0").fault.has_value());
}

TEST(NumberField, WidthsAreWhatAFloatHolds) {
    const NumberField field = WidthField(0);
    EXPECT_EQ(kWidest, field.Read(L"3.4028234663852886e38").value);
    EXPECT_EQ(TextId::NUMBER_TOO_LARGE, field.Read(L"3.4028235e38").fault);
    EXPECT_EQ(TextId::NUMBER_NEGATIVE, field.Read(L"-0.1").fault);
    EXPECT_FALSE(field.Read(L"-0").fault.has_value());
}

TEST(NumberField, AnIntervalMakesNoMoreThanAMillionLevels) {
    constexpr double kHuge = std::numeric_limits<double>::max();
    struct Row {
        double lowest, highest, interval;
        bool isFault;
    };
    for (const Row& row : {Row{0, 999'999, 1, false}, Row{0, 1'000'000, 1, true}, Row{0, 10, 1e-6, true},
                           Row{-kHuge, kHuge, 1, true}, Row{-kHuge, kHuge, kHuge, false},
                           Row{0, 1, 1e-320, true}, Row{1, 2, 1e-320, true},
                           // Ranges without levels are told otherwise.
                           Row{0, 10, 0, false}, Row{0, 1e9, -1, false}, Row{1e9, 0, 1, false}})
        EXPECT_EQ(row.isFault, IntervalFault(row.lowest, row.highest, row.interval) == TextId::RANGE_TOO_FINE)
            << row.lowest << ' ' << row.highest << ' ' << row.interval;
}

TEST(NumberField, AWidthGoesByTenths) {
    struct Row {
        const wchar_t* text;
        int steps;
        const wchar_t* stepped;
    };
    for (const Row& row : {Row{L"0", 1, L"0.1"},
                           Row{L"0.1", 1, L"0.2"},
                           Row{L"0.2", 1, L"0.3"},
                           Row{L"0.9", 1, L"1"},
                           Row{L"1", -1, L"0.9"},
                           Row{L"0.1", -1, L"0"},
                           Row{L"0", -1, L"0"},
                           Row{L"0.25", 1, L"0.4"},
                           Row{L"0.24", 1, L"0.3"},
                           Row{L"0.5", 10, L"1.5"},
                           Row{L"0.5", -10, L"0"},
                           Row{L" 2 ", 1, L"2.1"},
                           Row{L"", 1, L""},
                           Row{L"thin", 1, L"thin"},
                           Row{L"0,5", 1, L"0,5"},
                           Row{L"-1", 1, L"-1"},
                           Row{L"1e999", -1, L"1e999"},
                           Row{L"3.4e38", 1, L"3.4e+38"},
                           Row{L"0", std::numeric_limits<int>::max(), L"2.14748e+08"},
                           Row{L"0", std::numeric_limits<int>::min(), L"0"}})
        EXPECT_EQ(row.stepped, StepWidth(row.text, row.steps)) << ::testing::PrintToString(row.text);
}

} // namespace

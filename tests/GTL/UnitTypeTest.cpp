// SPDX-License-Identifier: MIT
#include "UtilityDLL/GTL/UnitType.h"

#include "tests/support/Random.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <type_traits>

namespace {

static_assert(std::is_trivially_copyable_v<UnitType> && sizeof(UnitType) == 4);
static_assert(UnitType().GetType() == UnitType::MM);

constexpr std::array kUnits = {UnitType::MM, UnitType::CM, UnitType::M, UnitType::INCHES, UnitType::FEET};

UnitType::U_TYPE Number(int number) { return static_cast<UnitType::U_TYPE>(number); }

TEST(UnitType, NumbersOfTheUnits) {
    for (int i = 0; i < 5; ++i) EXPECT_EQ(i, kUnits[static_cast<std::size_t>(i)]);
}

TEST(UnitType, HoldsTheUnit) {
    UnitType unit(UnitType::FEET);
    EXPECT_EQ(UnitType::FEET, unit.GetType());
    unit.SetType(UnitType::CM);
    EXPECT_EQ(UnitType::CM, unit.GetType());
    const UnitType copy = unit;
    EXPECT_EQ(UnitType::CM, copy.GetType());
}

TEST(UnitType, Names) {
    struct Row {
        int number;
        const wchar_t* name;
    };
    for (const Row& row :
         {Row{0, L"mm"}, Row{1, L"cm"}, Row{2, L"m"}, Row{3, L"inches"}, Row{4, L"feet"}, Row{5, L"UNKNOWN"},
          Row{9, L"UNKNOWN"}, Row{-1, L"UNKNOWN"}, Row{std::numeric_limits<int>::max(), L"UNKNOWN"},
          Row{std::numeric_limits<int>::min(), L"UNKNOWN"}}) {
        EXPECT_EQ(row.name, UnitType(Number(row.number)).AsString()) << row.number;
    }
}

TEST(UnitType, FactorsAreTheStoredDoublesBitForBit) {
    constexpr double kTable[5][5] = {
        {1.0, 0.1, 0.001, 0.03937007874015748, 0.0032808398950131237},
        {10.0, 1.0, 0.01, 0.39370078740157477, 0.03280839895013123},
        {1000.0, 100.0, 1.0, 39.37007874015748, 3.2808398950131235},
        {25.4, 2.54, 0.0254, 1.0, 0.08333333333333333},
        {304.79999999999995, 30.48, 0.3048, 12.0, 1.0},
    };
    for (std::size_t from = 0; from < 5; ++from) {
        for (std::size_t to = 0; to < 5; ++to) {
            EXPECT_EQ(kTable[from][to], UnitType::Convert(kUnits[from], kUnits[to], 1.0));
            EXPECT_EQ(kTable[from][to] * 7.3, UnitType(kUnits[from]).Convert(kUnits[to], 7.3));
        }
    }
}

TEST(UnitType, FootHoldsTheProductOfItsInchesAndNotTheNearestDouble) {
    EXPECT_EQ(304.79999999999995, UnitType::Convert(UnitType::FEET, UnitType::MM, 1.0));
    EXPECT_EQ(12 * 25.4, UnitType::Convert(UnitType::FEET, UnitType::MM, 1.0));
    EXPECT_NE(304.8, UnitType::Convert(UnitType::FEET, UnitType::MM, 1.0));
    EXPECT_EQ(25.4, UnitType::Convert(UnitType::INCHES, UnitType::MM, 1.0));
}

TEST(UnitType, ConversionAgreesWithTheDefinitionOfTheUnits) {
    // Millimetres exactly, as a fraction of whole numbers.
    constexpr double kTenthsOfMillimetre[] = {10, 100, 10000, 254, 3048};
    Random random(1);
    for (int i = 0; i < kPropertyRuns; ++i) {
        const auto from = static_cast<std::size_t>(random.Integer(0, 4));
        const auto to = static_cast<std::size_t>(random.Integer(0, 4));
        const double value = random.Real(-1e6, 1e6);
        const double expected = value * kTenthsOfMillimetre[from] / kTenthsOfMillimetre[to];
        const double converted = UnitType::Convert(kUnits[from], kUnits[to], value);
        ASSERT_NEAR(expected, converted, 1e-15 * 4 * std::fabs(expected));
        ASSERT_NEAR(value, UnitType::Convert(kUnits[to], kUnits[from], converted),
                    1e-15 * 4 * std::fabs(value));
    }
}

TEST(UnitType, EqualUnitsGiveTheValueBackWhateverTheirNumber) {
    for (const int number : {0, 4, 5, 7, -1, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(1.25, UnitType::Convert(Number(number), Number(number), 1.25));
        EXPECT_EQ(1.25, UnitType(Number(number)).Convert(Number(number), 1.25));
    }
}

TEST(UnitType, UnitsOutsideTheTableNeverReadOutsideIt) {
    struct Row {
        int from, to;
        double factor;
    };
    constexpr int kMin = std::numeric_limits<int>::min();
    constexpr int kMax = std::numeric_limits<int>::max();
    for (const Row& row : {Row{0, 5, 10.0},                // entry 5: the first of the centimetres
                           Row{-1, 5, 1.0},                // entry 0
                           Row{5, -1, 1.0},                // entry 24
                           Row{1, 19, 1.0},                // entry 24
                           Row{3, -1, 3.2808398950131235}, // entry 14
                           Row{0, -1, kNaN}, Row{5, 0, kNaN}, Row{4, 5, kNaN}, Row{-1, 4, kNaN},
                           Row{9, 2, kNaN}, Row{858993460, 0, kNaN}, // times 5 it would wrap to 4 in 32 bits
                           Row{kMax, kMin, kNaN}, Row{kMin, kMax, kNaN}}) {
        SCOPED_TRACE(::testing::Message() << row.from << ' ' << row.to);
        const double converted = UnitType::Convert(Number(row.from), Number(row.to), 2.0);
        if (std::isnan(row.factor))
            EXPECT_TRUE(std::isnan(converted));
        else
            EXPECT_EQ(2.0 * row.factor, converted);
    }
}

TEST(UnitType, AwkwardValuesConvert) {
    for (const double value : kAwkwardNumbers) {
        const double converted = UnitType::Convert(UnitType::M, UnitType::CM, value);
        EXPECT_TRUE(converted == value * 100 || std::isnan(value));
    }
}

TEST(UnitCategoryNames, AreTheFixedListInItsOrder) {
    const std::vector<std::wstring_view> expected = {
        L"No Units",           L"System Units",        L"Speed Units",      L"Distance Units",
        L"Depth Units",        L"Volume Units",        L"Density Units",    L"Velocity Units",
        L"Production Units",   L"Height Units",        L"Pressure Units",   L"Power Units",
        L"Revolutions Units",  L"Weight Units",        L"Pitch Units",      L"Roll Units",
        L"Acceleration Units", L"Angular Rate Units",  L"Delivery Units",   L"Angular Units",
        L"Area Units",         L"Temperature Units",   L"Paper Units",      L"Force Units",
        L"KP Units",           L"Fuel Delivery Units", L"Fuel Volume Units"};
    const auto names = UnitCategoryNames();
    EXPECT_EQ(expected, std::vector<std::wstring_view>(names.begin(), names.end()));
}

} // namespace

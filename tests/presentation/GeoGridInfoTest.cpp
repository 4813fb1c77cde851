// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/GeoGridInfo.h"

#include "VelmBase/Math.h"
#include "tests/support/Random.h"
#include "tests/support/Records.h"

#include <cmath>
#include <gtest/gtest.h>
#include <iomanip>
#include <locale>
#include <sstream>

TEST(GeoGridInfo, Defaults) {
    const GeoGridInfo grid;
    EXPECT_EQ(0ul, grid.GridColor());
    EXPECT_EQ(0, grid.LatLonStyle());
    EXPECT_EQ(2, grid.LatLonDecimals());
    EXPECT_FALSE(grid.TrailingHemisphereIndicator());
    EXPECT_FALSE(grid.DegMinSecSymbols());
    EXPECT_EQ(1, grid.GridStyle());
    EXPECT_EQ(1.0 / 1800, grid.LatInterval());
    EXPECT_EQ(1.0 / 1800, grid.LonInterval());
}

TEST(GeoGridInfo, FieldsInASection) {
    const auto number = [](void (GeoGridInfo::*set)(int)) { return set; };
    const auto flag = [](void (GeoGridInfo::*set)(bool)) { return set; };
    const auto length = [](void (GeoGridInfo::*set)(double)) { return set; };
    const auto color = [](GeoGridInfo& grid, unsigned long value) { grid.GridColor(value); };
    const double initial = 1.0 / 1800;
    ExpectFields<GeoGridInfo>({
        Field<GeoGridInfo>(L"LonInterval", L"0.25", length(&GeoGridInfo::LonInterval), 0.25, initial, 0.0),
        Field<GeoGridInfo>(L"LatInterval", L"10", length(&GeoGridInfo::LatInterval), 10.0, initial, 0.0),
        Field<GeoGridInfo>(L"LatLonStyle", L"3", number(&GeoGridInfo::LatLonStyle), 3, 0, 0),
        Field<GeoGridInfo>(L"LatLonDecimals", L"-4", number(&GeoGridInfo::LatLonDecimals), -4, 2, 0),
        Field<GeoGridInfo>(L"TrailingHemisphereIndicator", L"1",
                           flag(&GeoGridInfo::TrailingHemisphereIndicator), true, false, false),
        Field<GeoGridInfo>(L"DegMinSecSymbols", L"1", flag(&GeoGridInfo::DegMinSecSymbols), true, false,
                           false),
        Field<GeoGridInfo>(L"GridStyle", L"7", number(&GeoGridInfo::GridStyle), 7, 1, 0),
        WrittenKey<GeoGridInfo>(L"GridColor", L"170"),
        Field<GeoGridInfo>(L"GridTrueColor", L"16711682", color, 0xFF0002ul, 0ul, 0ul, 0xFF0000ul),
    });
}

TEST(GeoGridInfo_Write, IntervalsHaveTwoDigitsMoreThanTheyNeed) {
    struct Row {
        double interval;
        int digits; // of the shortest text that reads back as it
    };
    for (const Row& row : {Row{0.25, 2}, Row{0, 1}, Row{12.5, 3}, Row{1234567, 7}, Row{1e20, 1},
                           Row{1.0 / 1800, 16}, Row{1.0 / 60, 17}}) {
        std::wostringstream stream;
        stream.imbue(std::locale::classic());
        stream << std::setprecision(row.digits + 2) << row.interval;
        GeoGridInfo grid;
        grid.LatInterval(row.interval);
        EXPECT_EQ(stream.str(), Written(grid)[L"LatInterval"].GetValue());
    }
}

TEST(GeoGridInfo, IntervalsComeBackExactly) {
    Random random(17);
    for (int i = 0; i < 100'000; ++i) {
        GeoGridInfo grid;
        grid.LatInterval(
            std::ldexp(static_cast<double>(random.Bits()), static_cast<int>(random.Bits() % 100) - 100));
        grid.LonInterval(1.0 / static_cast<double>(1 + random.Bits() % 100'000));
        const GeoGridInfo back = ReadFrom<GeoGridInfo>(Written(grid));
        ASSERT_EQ(grid.LatInterval(), back.LatInterval());
        ASSERT_EQ(grid.LonInterval(), back.LonInterval());
    }
}

TEST(GeoGridInfo, IntervalsAreAbsoluteValuesInSettersAndFiles) {
    GeoGridInfo grid;
    grid.LatInterval(-0.25);
    grid.LonInterval(-0.5);
    EXPECT_EQ(0.25, grid.LatInterval());
    EXPECT_EQ(0.5, grid.LonInterval());
    const GeoGridInfo read =
        ReadFrom<GeoGridInfo>(SectionOf({{L"LatInterval", L"-0.25"}, {L"LonInterval", L"-3"}}));
    EXPECT_EQ(0.25, read.LatInterval());
    EXPECT_EQ(3.0, read.LonInterval());
}

TEST(GeoGridInfo_Read, ColourOfTheIndexWithoutATrueColour) {
    struct Row {
        const wchar_t* index;
        unsigned long color;
    };
    for (const Row& row : {Row{L"5", 0xFF0000}, Row{L"256", 0}, Row{L"-1", 0}, Row{L"blue", 0}, Row{L"", 0}})
        EXPECT_EQ(row.color, ReadFrom<GeoGridInfo>(SectionOf({{L"GridColor", row.index}})).GridColor());
    EXPECT_EQ(
        0x0000FFul,
        ReadFrom<GeoGridInfo>(SectionOf({{L"GridColor", L"5"}, {L"GridTrueColor", L"255"}})).GridColor());
    GeoGridInfo colored;
    colored.GridColor(5);
    EXPECT_EQ(0ul, ReadFrom(Section(), colored).GridColor());
}

TEST(GeoGridInfo, EqualityIsTolerantInTheIntervalsAlone) {
    const GeoGridInfo grid;
    GeoGridInfo near;
    near.LatInterval(1.0 / 1800 + 5e-10);
    near.LonInterval(1.0 / 1800 - 5e-10);
    EXPECT_EQ(grid, near);
    near.LonInterval(1.0 / 1800 - 5e-9);
    EXPECT_NE(grid, near);
}

TEST(GeoGridInfo, ReadAndWriteAreAlwaysTrue) {
    GeoGridInfo grid;
    Section section;
    EXPECT_TRUE(grid.Read(section));
    EXPECT_TRUE(grid.Write(section));
}

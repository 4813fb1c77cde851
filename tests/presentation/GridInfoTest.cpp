// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/GridInfo.h"

#include "VelmBase/FormatString.h"
#include "tests/support/Records.h"

#include <algorithm>
#include <gtest/gtest.h>

TEST(GridInfo, Defaults) {
    const GridInfo grid;
    EXPECT_EQ(50.0, grid.XInterval());
    EXPECT_EQ(50.0, grid.YInterval());
    EXPECT_EQ(0, grid.XMinorTicks());
    EXPECT_EQ(0, grid.YMinorTicks());
    EXPECT_EQ(248u, grid.GridStyle());
    EXPECT_EQ(2.5f, grid.TickSize());
    EXPECT_EQ(1.0f, grid.MinorTickSize());
    EXPECT_EQ(L"", grid.EastingMark());
    EXPECT_EQ(L"", grid.NorthingMark());
}

TEST(GridInfo, FieldsInASection) {
    const std::wstring none, wrong = L"no number";
    ExpectFields<GridInfo>({
        Field<GridInfo>(L"XInterval", L"100.250000", &GridInfo::SetXInterval, 100.25, 50.0, 0.0),
        Field<GridInfo>(L"YInterval", L"-7.000000", &GridInfo::SetYInterval, -7.0, 50.0, 0.0),
        Field<GridInfo>(L"XMinorTicks", L"4", &GridInfo::SetXMinorTicks, 4, 0, 0),
        Field<GridInfo>(L"YMinorTicks", L"-1", &GridInfo::SetYMinorTicks, -1, 0, 0),
        Field<GridInfo>(L"GridStyle", L"POINTS,X_LINES", &GridInfo::SetGridStyle, 3u, 248u, 0u, 0u),
        Field<GridInfo>(L"TickSize", L"3.500000", &GridInfo::SetTickSize, 3.5f, 2.5f, 0.0f),
        Field<GridInfo>(L"MinorTickSize", L"0.500000", &GridInfo::SetMinorTickSize, 0.5f, 1.0f, 0.0f),
        Field<GridInfo>(L"EastingMark", L"\" E\"", &GridInfo::SetEastingMark, std::wstring(L" E"), none,
                        wrong, none),
        Field<GridInfo>(L"NorthingMark", L"\"N \"", &GridInfo::SetNorthingMark, std::wstring(L"N "), none,
                        wrong, none),
    });
}

TEST(GridInfo, StylesCombine) {
    GridInfo grid;
    grid.SetGridStyle(GridInfo::POINTS | GridInfo::X_LINES);
    EXPECT_EQ(3u, grid.GridStyle());
    grid.SetGridStyle(grid.GridStyle() & ~GridInfo::POINTS);
    EXPECT_EQ(2u, grid.GridStyle());
    GridInfo::GRIDSTYLE style = GridInfo::X_TICKS;
    style |= GridInfo::Y_TICKS;
    EXPECT_EQ(24u, style);
    style &= GridInfo::Y_TICKS | GridInfo::POINTS;
    EXPECT_EQ(GridInfo::Y_TICKS, style);
    static_assert((GridInfo::POINTS | GridInfo::LONG_NORTHTICK) == 129u);
}

TEST(GridInfo, DefaultStyleInASection) {
    EXPECT_EQ(L"X_TICKS,Y_TICKS,X_MINORTICKS,Y_MINORTICKS,LONG_NORTHTICK",
              Written(GridInfo())[L"GridStyle"].GetValue());
}

TEST(GridInfo, EverySetOfFlagsComesBackAndInAnyOrder) {
    for (std::uint32_t style = 0; style < 256; ++style) {
        GridInfo grid;
        grid.SetGridStyle(style);
        Section section = Written(grid);
        ASSERT_EQ(style, ReadFrom<GridInfo>(section).GridStyle());
        // The tokens in reverse order.
        const FormatString tokens(section[L"GridStyle"].GetValue(), L',');
        FormatString reversed(L',');
        for (int i = tokens.NumItems() - 1; i >= 0; --i) reversed.AddItem(tokens[i]);
        section[L"GridStyle"] << reversed.Text();
        ASSERT_EQ(style, ReadFrom<GridInfo>(section).GridStyle());
    }
}

TEST(GridInfo_Read, StyleTokens) {
    struct Row {
        const wchar_t* text;
        std::uint32_t style;
    };
    for (const Row& row :
         {Row{L"", 0}, Row{L"LONG_NORTHTICK", 128}, Row{L"Y_LINES,UNKNOWN,POINTS", 5},
          Row{L"POINTS,POINTS", 1}, Row{L"248", 0}, Row{L",,X_TICKS,,", 8}, Row{L"X_TICKSX", 0},
          Row{L"points", 0}, Row{L"POINTS , X_LINES", 3}, Row{L" POINTS,\tX_LINES\t,  Y_LINES ", 7},
          Row{L"X_TICKS Y_TICKS", 0}, Row{L"X_ TICKS", 0}, Row{L" , ", 0}}) {
        EXPECT_EQ(row.style, ReadFrom<GridInfo>(SectionOf({{L"GridStyle", row.text}})).GridStyle())
            << ::testing::PrintToString(std::wstring(row.text));
    }
}

TEST(GridInfo_Write, FlagsAboveTheEighthAreNotWritten) {
    GridInfo grid;
    grid.SetGridStyle(0xFFFFFF01u);
    EXPECT_EQ(L"POINTS", Written(grid)[L"GridStyle"].GetValue());
}

TEST(GridInfo, MarksKeepTheirBlanksThroughAFile) {
    for (const wchar_t* mark : {L" E", L"E ", L"  ", L"", L"m \"E\" x", L"\u00B0E"}) {
        GridInfo grid;
        grid.SetEastingMark(mark);
        EXPECT_EQ(mark, ReadFrom<GridInfo>(ThroughAFile(Written(grid))).EastingMark());
    }
}

TEST(GridInfo_Read, MarksLoseTheQuotesAtTheirEnds) {
    for (const wchar_t* text : {L"\"E\"", L"E", L"\"\"E\"\"\"", L"\"E"})
        EXPECT_EQ(L"E", ReadFrom<GridInfo>(SectionOf({{L"NorthingMark", text}})).NorthingMark());
    EXPECT_EQ(L"", ReadFrom<GridInfo>(SectionOf({{L"NorthingMark", L"\""}})).NorthingMark());
}

TEST(GridInfo, EqualityIsTolerantInTheIntervalsAlone) {
    const GridInfo grid;
    GridInfo near;
    near.SetXInterval(50.0 * (1 + 5e-10));
    near.SetYInterval(50.0 * (1 - 5e-10));
    EXPECT_EQ(grid, near);
    EXPECT_FALSE(grid != near);
    near.SetXInterval(50.0 * (1 + 5e-9));
    EXPECT_NE(grid, near);
    GridInfo size;
    size.SetTickSize(std::nextafter(2.5f, 3.0f));
    EXPECT_NE(grid, size);
}

TEST(GridInfo, ReadAndWriteAreAlwaysTrue) {
    GridInfo grid;
    Section section;
    EXPECT_TRUE(grid.Read(section));
    EXPECT_TRUE(grid.Write(section));
}

TEST(GridInfo_Read, HostileStyleTextGivesARecord) {
    Section section;
    section[L"GridStyle"] << std::wstring().append(10'000'000, L',') + L"POINTS";
    EXPECT_EQ(1u, ReadFrom<GridInfo>(section).GridStyle());
}

TEST(GridInfo, LetterCaseOfAMarkCounts) {
    GridInfo upper, lower;
    upper.SetEastingMark(L"E");
    lower.SetEastingMark(L"e");
    EXPECT_FALSE(upper == lower);
}

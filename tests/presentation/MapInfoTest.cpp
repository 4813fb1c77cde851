// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/MapInfo.h"

#include "tests/support/Records.h"

#include <gtest/gtest.h>

TEST(MapInfo, Defaults) {
    const CMapInfo info;
    EXPECT_EQ(0, info.SymbolizationType());
    EXPECT_EQ(0, info.ScaleLevel());
    EXPECT_EQ(2, info.DisplayType());
    EXPECT_TRUE(info.TextGeneric());
    EXPECT_FALSE(info.TextOther());
    EXPECT_TRUE(info.ChartContour());
    EXPECT_FALSE(info.LightsInfo());
    EXPECT_TRUE(info.AntiCluttering());
    EXPECT_TRUE(info.Boundaries());
}

TEST(MapInfo, FieldsInASection) {
    ExpectFields<CMapInfo>({
        Field<CMapInfo>(L"SymbolizationType", L"4", &CMapInfo::SetSymbolizationType, 4, 0, 0),
        Field<CMapInfo>(L"ScaleLevel", L"-2", &CMapInfo::SetScaleLevel, -2, 0, 0),
        Field<CMapInfo>(L"DisplayType", L"9", &CMapInfo::SetDisplayType, 9, 2, 0),
        Field<CMapInfo>(L"ShowTextGeneric", L"0", &CMapInfo::SetTextGeneric, false, true, false),
        Field<CMapInfo>(L"ShowTextOther", L"1", &CMapInfo::SetTextOther, true, false, false),
        Field<CMapInfo>(L"ShowChartContour", L"0", &CMapInfo::SetChartContour, false, true, false),
        Field<CMapInfo>(L"ShowLightsInfo", L"1", &CMapInfo::SetLightsInfo, true, false, false),
        Field<CMapInfo>(L"AntiCluttering", L"0", &CMapInfo::SetAntiCluttering, false, true, false),
        Field<CMapInfo>(L"ShowBoundaries", L"0", &CMapInfo::SetBoundaries, false, true, false),
    });
}

TEST(MapInfo, GettersGiveWhatSettersTook) {
    CMapInfo info;
    info.SetSymbolizationType(1);
    info.SetScaleLevel(2);
    info.SetDisplayType(3);
    info.SetTextGeneric(false);
    info.SetTextOther(true);
    info.SetChartContour(false);
    info.SetLightsInfo(true);
    info.SetAntiCluttering(false);
    info.SetBoundaries(false);
    EXPECT_EQ(1, info.SymbolizationType());
    EXPECT_EQ(2, info.ScaleLevel());
    EXPECT_EQ(3, info.DisplayType());
    EXPECT_FALSE(info.TextGeneric());
    EXPECT_TRUE(info.TextOther());
    EXPECT_FALSE(info.ChartContour());
    EXPECT_TRUE(info.LightsInfo());
    EXPECT_FALSE(info.AntiCluttering());
    EXPECT_FALSE(info.Boundaries());
}

TEST(MapInfo_Read, FlagsAreNumbers) {
    struct Row {
        const wchar_t* text;
        bool flag;
    };
    for (const Row& row : {Row{L"1", true}, Row{L"0", false}, Row{L"2", true}, Row{L"true", false}})
        EXPECT_EQ(row.flag, ReadFrom<CMapInfo>(SectionOf({{L"ShowTextGeneric", row.text}})).TextGeneric());
}

TEST(MapInfo, ReadAndWriteAreAlwaysTrue) {
    CMapInfo info;
    Section section;
    EXPECT_TRUE(info.Read(section));
    EXPECT_TRUE(info.Write(section));
}

// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/DXFInfo.h"

#include "tests/support/Random.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace {

DXFInfo Info(float width, unsigned long color, int mode) {
    DXFInfo info;
    info.SetWidth(width);
    info.SetColor(color);
    info.SetColorMode(mode);
    return info;
}

DXFInfo FromLine(const std::wstring& text) {
    DXFInfo info = Info(9, 9, 9);
    info.FromString(text);
    return info;
}

} // namespace

TEST(DXFInfo, DefaultsAreZero) {
    const DXFInfo info;
    EXPECT_EQ(0.0f, info.Width());
    EXPECT_EQ(0ul, info.Color());
    EXPECT_EQ(0, info.ColorMode());
}

TEST(DXFInfo, FieldsInASection) {
    ExpectFields<DXFInfo>({
        WrittenKey<DXFInfo>(L"DXFLineColor", L"170"),
        Field<DXFInfo>(L"DXFLineTrueColor", L"16711682", &DXFInfo::SetColor, 0xFF0002ul, 0ul, 0ul,
                       0xFF0000ul),
        Field<DXFInfo>(L"DXFLineWidth", L"0.250000", &DXFInfo::SetWidth, 0.25f, 0.0f, 0.0f),
        Field<DXFInfo>(L"DXFColorMode", L"-3", &DXFInfo::SetColorMode, -3, 0, 0),
    });
}

TEST(DXFInfo_Read, ColourOfTheIndexWithoutATrueColour) {
    struct Row {
        const wchar_t* index;
        unsigned long color;
    };
    for (const Row& row : {Row{L"1", 0x0000FF}, Row{L"255", 0xFFFFFF}, Row{L"256", 0}, Row{L"-1", 0},
                           Row{L"", 0}, Row{L"red", 0}})
        EXPECT_EQ(row.color, ReadFrom(SectionOf({{L"DXFLineColor", row.index}}), Info(1, 5, 1)).Color());
    EXPECT_EQ(0ul, ReadFrom(Section(), Info(1, 5, 1)).Color());
}

TEST(DXFInfo_Read, WidthKeepsItsSignAndTheSetterDropsIt) {
    EXPECT_EQ(-2.0f, ReadFrom<DXFInfo>(SectionOf({{L"DXFLineWidth", L"-2"}})).Width());
    EXPECT_EQ(1.0f, Info(-1, 0, 0).Width());
}

TEST(DXFInfo, ReadAndWriteAreAlwaysTrue) {
    DXFInfo info;
    Section section;
    EXPECT_TRUE(info.Read(section));
    EXPECT_TRUE(info.Write(section));
}

TEST(DXFInfo, EqualityIsExactInEveryField) {
    EXPECT_EQ(Info(1, 2, 3), Info(1, 2, 3));
    for (const DXFInfo& other : {Info(std::nextafter(1.0f, 2.0f), 2, 3), Info(1, 3, 3), Info(1, 2, 4)})
        EXPECT_NE(Info(1, 2, 3), other);
}

TEST(DXFInfo_ToString, FourItems) {
    EXPECT_EQ(L"0,0,0,0", DXFInfo().ToString());
    EXPECT_EQ(L"2.5,170,-1,16711680", Info(2.5f, 0xFF0000, -1).ToString());
}

TEST(DXFInfo_FromString, ItemsByPosition) {
    struct Row {
        const wchar_t* text;
        DXFInfo info;
    };
    for (const Row& row :
         {Row{L"", Info(0, 0, 0)}, Row{L"2,1", Info(0, 0, 0)}, Row{L"2,1,3", Info(2, 0x0000FF, 3)},
          Row{L"2,1,3,65280", Info(2, 0x00FF00, 3)}, Row{L"2,1,3,x", Info(2, 0x0000FF, 3)},
          Row{L"2,1,3,", Info(2, 0x0000FF, 3)}, Row{L"2,1,3,0", Info(2, 0, 3)},
          Row{L"2,256,3", Info(2, 0, 3)}, Row{L"2,-1,3", Info(2, 0, 3)}, Row{L"a,b,c,d", Info(0, 0, 0)},
          Row{L",,,", Info(0, 0, 0)}, Row{L"1,5,-7,6,8,9", Info(1, 6, -7)}}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(row.info, FromLine(row.text));
    }
}

TEST(DXFInfo, NamesTheItemsOfItsLine) { ExpectItemsAreKeys(Info(2, 0x0000FF, 3)); }

TEST(DXFInfo_FromString, ReadsBackWhatToStringWrote) {
    Random random(4);
    for (int i = 0; i < 100'000; ++i) {
        const DXFInfo info =
            Info(static_cast<float>(random() % 1000) / 8.0f, random() & 0xFFFFFF, static_cast<int>(random()));
        ASSERT_EQ(info, FromLine(info.ToString()));
    }
}

TEST(DXFInfo_FromString, HostileLinesGiveARecord) {
    EXPECT_EQ(DXFInfo(), FromLine(std::wstring().append(10'000'000, L',')));
    EXPECT_EQ(DXFInfo(), FromLine(std::wstring(3, L'\0') + L",,"));
    EXPECT_EQ(std::numeric_limits<float>::max(), FromLine(L"1e999,1,2").Width());
}

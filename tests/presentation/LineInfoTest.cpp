// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/LineInfo.h"

#include "tests/support/Random.h"
#include "tests/support/Records.h"

#include <gtest/gtest.h>

namespace {

LineInfo Line(float width, unsigned long color, int style, bool enable) {
    LineInfo line;
    line.SetWidth(width);
    line.SetColor(color);
    line.SetStyle(static_cast<LineInfo::LINESTYLE>(style));
    line.SetEnable(enable);
    return line;
}

LineInfo FromLine(const std::wstring& text) {
    LineInfo line = Line(9, 9, 2, false); // must not show through
    line.FromString(text);
    return line;
}

} // namespace

TEST(LineInfo, Defaults) {
    const LineInfo line;
    EXPECT_EQ(0.1f, line.Width());
    EXPECT_EQ(0ul, line.Color());
    EXPECT_EQ(LineInfo::SOLID, line.Style());
    EXPECT_TRUE(line.Enable());
}

TEST(LineInfo, FieldsInASection) {
    ExpectFields<LineInfo>({
        WrittenKey<LineInfo>(L"LineColor", L"170"),
        Field<LineInfo>(L"LineWidth", L"2.500000", &LineInfo::SetWidth, 2.5f, 0.1f, 0.0f),
        Field<LineInfo>(L"LineStyle", L"Dash dot", &LineInfo::SetStyle, LineInfo::DASH_DOT, LineInfo::SOLID,
                        LineInfo::SOLID, LineInfo::SOLID),
        // Without the true colour the palette's colour of the index stays.
        Field<LineInfo>(L"LineTrueColor", L"16711682", &LineInfo::SetColor, 0xFF0002ul, 0ul, 0ul, 0xFF0000ul),
        Field<LineInfo>(L"Enable", L"0", &LineInfo::SetEnable, false, true, false),
    });
}

TEST(LineInfo_Read, EnableKeepsItsValueWithoutItsKey) {
    const Section section = SectionOf({{L"LineWidth", L"1"}});
    EXPECT_TRUE(ReadFrom(section, Line(1, 0, 0, true)).Enable());
    EXPECT_FALSE(ReadFrom(section, Line(1, 0, 0, false)).Enable());
}

TEST(LineInfo_Read, ColourOfTheIndexWithoutATrueColour) {
    struct Row {
        const wchar_t* index;
        unsigned long color;
    };
    for (const Row& row :
         {Row{L"1", 0x0000FF}, Row{L"10", 0x0000FF}, Row{L"5", 0xFF0000}, Row{L"255", 0xFFFFFF}, Row{L"7", 0},
          Row{L"256", 0}, Row{L"-1", 0}, Row{L"99999999999", 0}, Row{L"", 0}, Row{L"red", 0}})
        EXPECT_EQ(row.color, ReadFrom<LineInfo>(SectionOf({{L"LineColor", row.index}})).Color()) << row.color;
    EXPECT_EQ(0ul, ReadFrom(Section(), Line(1, 5, 0, true)).Color());
}

TEST(LineInfo_Read, TrueColourGoesBeforeTheIndexWhereverItStands) {
    EXPECT_EQ(5ul, ReadFrom<LineInfo>(SectionOf({{L"LineTrueColor", L"5"}, {L"LineColor", L"1"}})).Color());
    EXPECT_EQ(5ul, ReadFrom<LineInfo>(SectionOf({{L"linetruecolor", L"5"}})).Color());
    EXPECT_EQ(255ul, ReadFrom<LineInfo>(SectionOf({{L"LineColor", L"1"}, {L"LineTrueColor", L""}})).Color());
}

TEST(LineInfo_Read, StyleIsANameInAnyLetterCase) {
    struct Row {
        const wchar_t* text;
        LineInfo::LINESTYLE style;
    };
    for (const Row& row :
         {Row{L"Solid Line", LineInfo::SOLID}, Row{L"DASHED", LineInfo::DASHED}, Row{L"dot", LineInfo::DOT},
          Row{L"dash DOT", LineInfo::DASH_DOT}, Row{L"2", LineInfo::SOLID}, Row{L"Dot ", LineInfo::SOLID}}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(row.style, ReadFrom(SectionOf({{L"LineStyle", row.text}}), Line(1, 0, 1, true)).Style());
        LineInfo line = Line(1, 0, 1, true);
        line.SetStyleStr(row.text);
        EXPECT_EQ(row.style, line.Style());
    }
}

TEST(LineInfo_Read, WidthKeepsItsSign) {
    EXPECT_EQ(-2.0f, ReadFrom<LineInfo>(SectionOf({{L"LineWidth", L"-2"}})).Width());
}

TEST(LineInfo, ReadAndWriteAreAlwaysTrue) {
    LineInfo line;
    EXPECT_TRUE(line.Read(Section()));
    Section section;
    EXPECT_TRUE(line.Write(section));
}

TEST(LineInfo_Write, KeysThatAreThereKeepTheirPlace) {
    Section section = SectionOf({{L"enable", L"?"}, {L"Other", L"x"}});
    Line(1, 0, 0, true).Write(section);
    EXPECT_EQ(6, section.NumKeys());
    EXPECT_EQ(L"1", section[0].GetValue());
    EXPECT_EQ(L"x", section[1].GetValue());
}

TEST(LineInfo, WidthIsStoredAsItsAbsoluteValue) { EXPECT_EQ(1.0f, Line(-1, 0, 0, true).Width()); }

TEST(LineInfo, StyleWithoutANameHasAnEmptyOne) {
    for (const int style : {-1, 4, 2147483647, -2147483647 - 1}) {
        const LineInfo line = Line(1, 0, style, true);
        EXPECT_EQ(L"", line.StyleStr());
        EXPECT_EQ(L"", Written(line)[L"LineStyle"].GetValue());
        EXPECT_EQ(L"1,0,,0,1", line.ToString());
    }
    EXPECT_EQ(L"Dashed", Line(1, 0, 1, true).StyleStr());
    EXPECT_STREQ(L"Dash dot", LineInfo::STYLEDESCRIPTIONS[3]);
}

TEST(LineInfo, EqualityIsExactInEveryField) {
    const LineInfo line = Line(1, 2, 3, true);
    EXPECT_EQ(line, Line(1, 2, 3, true));
    for (const LineInfo& other : {Line(std::nextafter(1.0f, 2.0f), 2, 3, true), Line(1, 3, 3, true),
                                  Line(1, 2, 2, true), Line(1, 2, 3, false)}) {
        EXPECT_FALSE(line == other);
        EXPECT_NE(line, other);
    }
}

TEST(LineInfo_ToString, FiveItems) {
    EXPECT_EQ(L"0.1,0,Solid Line,0,1", LineInfo().ToString());
    EXPECT_EQ(L"1.23457e+06,10,Dot,255,0", Line(1234567.0f, 0xFF, 2, false).ToString());
}

TEST(LineInfo_FromString, ItemsByPosition) {
    struct Row {
        const wchar_t* text;
        LineInfo line;
    };
    const LineInfo initial;
    for (const Row& row :
         {Row{L"", initial}, Row{L"5", initial}, Row{L"5,1", initial},
          Row{L"0.5,1,Dashed", Line(0.5f, 1, 1, true)}, // the index as it is, not red
          Row{L"0.5,1,Dashed,255,0", Line(0.5f, 0xFF, 1, false)},
          Row{L"0.5,1,dash dot,255", Line(0.5f, 255, 3, true)},
          Row{L"0.5,300,x,", Line(0.5f, 300, 0, true)}, // an index outside the palette too
          Row{L"x,y,z,w,v", initial}, Row{L",,,,", initial}, Row{L"1,2,Dot,3,0,6,7", Line(1, 3, 2, false)},
          Row{L"1,2,Dot,3,5", Line(1, 3, 2, true)}, Row{L" 2 , 3 ,Dot, 4 , 0 ", Line(2, 4, 2, false)},
          Row{L"1,-1,Dot", Line(1, 0xFFFFFFFF, 2, true)}}) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(row.line, FromLine(row.text));
    }
    EXPECT_EQ(-3.0f, FromLine(L"-3,0,Dot").Width());
}

TEST(LineInfo, NamesTheItemsOfItsLine) { ExpectItemsAreKeys(Line(0.5f, 0x0000FF, 3, false)); }

TEST(LineInfo_FromString, ReadsBackWhatToStringWrote) {
    Random random(3);
    for (int i = 0; i < 100'000; ++i) {
        const LineInfo line = Line(static_cast<float>(random() % 100'000) / 16.0f / 64.0f,
                                   random() & 0xFFFFFF, static_cast<int>(random() % 4), random() % 2 == 0);
        const LineInfo back = FromLine(line.ToString());
        // Six digits of the width come back; the rest exactly.
        ASSERT_NEAR(line.Width(), back.Width(), line.Width() * 5e-6);
        LineInfo rest = back;
        rest.SetWidth(line.Width());
        ASSERT_EQ(line, rest);
    }
}

TEST(LineInfo_FromString, HostileLinesGiveARecord) {
    EXPECT_EQ(LineInfo(), FromLine(std::wstring().append(10'000'000, L',')));
    EXPECT_EQ(LineInfo(), FromLine(std::wstring().append(10'000'000, L'x')));
    const std::wstring digits = std::wstring().append(1'000'000, L'9');
    const LineInfo huge = FromLine(digits + L"," + digits + L"," + digits);
    EXPECT_EQ(std::numeric_limits<float>::max(), huge.Width());
    EXPECT_EQ(0x7FFFFFFFul, huge.Color());
    EXPECT_EQ(Line(1, 2, 0, true), FromLine(std::wstring(L"1,2,Dot\0,3", 8)));
}

TEST(LineInfo_FromString, ColourAbove31BitsComesBackAsTheLargestInt) {
    LineInfo line, back;
    line.SetColor(0x80123456);
    back.FromString(line.ToString());
    EXPECT_EQ(0x7FFFFFFFul, back.Color());
    EXPECT_EQ(0x80123456ul, ReadFrom<LineInfo>(Written(line)).Color()); // a section keeps it
}

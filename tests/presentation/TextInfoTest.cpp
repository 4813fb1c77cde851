// SPDX-License-Identifier: MIT
#include "UtilityDLL/presentation/TextInfo.h"

#include "UtilityDLL/colors/DXFColor.h"
#include "tests/support/Random.h"
#include "tests/support/Records.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <map>

namespace {

TextInfo FromLine(const std::wstring& line) {
    TextInfo text;
    text.SetFont(L"Left over");
    text.SetSize(9);
    text.SetStyle(TextInfo::BOLD);
    text.SetAnnotation(TextInfo::ANNOTATION_3);
    text.SetRotation(Angle(9));
    text.SetJustification(TextInfo::TOP_LEFT);
    text.SetColor(9);
    text.SetRectWidth(9);
    text.SetMultiLine(true);
    text.FromString(line);
    return text;
}

TextInfo WithJustification(int justification, double rotation = 0) {
    TextInfo text;
    text.SetJustification(static_cast<TextInfo::JUSTIFICATION>(justification));
    text.SetRotation(Angle(rotation));
    return text;
}

// Opens the reading of split items.
struct Opened : TextInfo {
    using TextInfo::FromString;
};

} // namespace

TEST(TextInfo, Defaults) {
    const TextInfo text;
    EXPECT_EQ(L"Arial", text.Font());
    EXPECT_EQ(2.5f, text.Size());
    EXPECT_EQ(TextInfo::REGULAR, text.Style());
    EXPECT_EQ(0, text.Annotation());
    EXPECT_EQ(0.0, text.Rotation().Get());
    EXPECT_EQ(TextInfo::BOTTOM_LEFT, text.Justification());
    EXPECT_EQ(0ul, text.Color());
    EXPECT_EQ(0.0f, text.RectWidth());
    EXPECT_FALSE(text.MultiLine());
}

TEST(TextInfo, StylesCombine) {
    TextInfo text;
    text.SetStyle(TextInfo::BOLD | TextInfo::UNDERLINE);
    EXPECT_EQ(5, text.Style());
    text.SetStyle(text.Style() & ~TextInfo::BOLD);
    EXPECT_EQ(TextInfo::UNDERLINE, text.Style());
    TextInfo::STYLE style = TextInfo::REGULAR;
    style |= TextInfo::ITALIC;
    style |= TextInfo::BOLD;
    EXPECT_EQ(3, style);
    style &= TextInfo::ITALIC;
    EXPECT_EQ(TextInfo::ITALIC, style);
    static_assert((TextInfo::BOLD | TextInfo::ITALIC) == 3);
}

TEST(TextInfo, ColourComparesWithAnRgbColour) {
    TextInfo text;
    text.SetColor(0xFFC080);
    EXPECT_TRUE(text.Color() == RGBColor(0x80, 0xC0, 0xFF));
    EXPECT_TRUE(RGBColor(0x80, 0xC0, 0xFF) == text.Color());
    EXPECT_TRUE(text.Color() != RGBColor());
    text.SetColor(0xFF0000);
    EXPECT_TRUE(text.Color() == DXFColor(5));
}

TEST(TextInfo, NamesTheItemsOfItsLine) {
    TextInfo text;
    text.SetFont(L"Times");
    text.SetSize(3);
    text.SetStyle(TextInfo::ITALIC);
    text.SetJustification(TextInfo::TOP_LEFT);
    text.SetColor(0x0000FF);
    text.SetRotation(Angle(45));
    text.SetRectWidth(7);
    text.SetMultiLine(true);
    text.SetAnnotation(TextInfo::ANNOTATION_3);
    ExpectItemsAreKeys(text);
}

TEST(TextInfo, NumbersOfTheEnumerationsAreThoseOfFiles) {
    EXPECT_EQ(7, TextInfo::BOLD | TextInfo::ITALIC | TextInfo::UNDERLINE);
    EXPECT_EQ(6, TextInfo::TOP_LEFT);
    EXPECT_EQ(8, TextInfo::MIDDLE_CENTER);
    EXPECT_EQ(11, TextInfo::BASELINE_RIGHT);
    EXPECT_EQ(sizeof(std::int32_t), sizeof(TextInfo::STYLE));
}

TEST(TextInfo, StandsOnTheBaselineByThreeJustifications) {
    TextInfo text;
    for (const int number : {-2147483647 - 1, -1, 0, 8, 9, 10, 11, 12, 2147483647}) {
        text.SetJustification(static_cast<TextInfo::JUSTIFICATION>(number));
        EXPECT_EQ(number >= 9 && number <= 11, text.IsOnBaseline()) << number;
    }
}

TEST(TextInfo, FieldsInASection) {
    const std::wstring wrong = L"no number";
    ExpectFields<TextInfo>({
        Field<TextInfo>(L"Font", L"Courier, New", &TextInfo::SetFont, std::wstring(L"Courier, New"),
                        std::wstring(L"Arial"), wrong),
        Field<TextInfo>(L"Size", L"3.500000", &TextInfo::SetSize, 3.5f, 2.5f, 0.0f),
        Field<TextInfo>(L"Style", L"7", &TextInfo::SetStyle, TextInfo::STYLE(7), TextInfo::REGULAR,
                        TextInfo::REGULAR),
        Field<TextInfo>(L"Justification", L"11", &TextInfo::SetJustification, TextInfo::BASELINE_RIGHT,
                        TextInfo::BOTTOM_LEFT, TextInfo::BOTTOM_LEFT),
        WrittenKey<TextInfo>(L"Color", L"170"),
        Field<TextInfo>(L"Rotation", L"45.250000", &TextInfo::SetRotation, Angle(45.25), Angle(0), Angle(0)),
        Field<TextInfo>(L"RectWidth", L"80.000000", &TextInfo::SetRectWidth, 80.0f, 0.0f, 0.0f),
        Field<TextInfo>(L"MultiLine", L"1", &TextInfo::SetMultiLine, true, false, false),
        Field<TextInfo>(L"Annotation", L"3", &TextInfo::SetAnnotation, TextInfo::ANNOTATION_3,
                        TextInfo::ANNOTATION_0, TextInfo::ANNOTATION_0),
        Field<TextInfo>(L"TrueColor", L"16711682", &TextInfo::SetColor, 0xFF0002ul, 0ul, 0ul, 0xFF0000ul),
    });
}

TEST(TextInfo, PrefixedKeys) {
    TextInfo text;
    text.SetSize(7);
    text.SetColor(0x123456);
    Section section;
    EXPECT_TRUE(text.Write(L"Title", section));
    EXPECT_EQ(10, section.NumKeys());
    EXPECT_EQ(L"Title.Font", section[0].GetName().String());
    EXPECT_EQ(L"Title.TrueColor", section[9].GetName().String());
    TextInfo back;
    EXPECT_TRUE(back.Read(L"title", section));
    EXPECT_EQ(text, back);
    EXPECT_EQ(ReadFrom<TextInfo>(section), TextInfo());
}

TEST(TextInfo_Read, NumbersOutOfRangeLeaveTheirFieldAlone) {
    TextInfo before;
    before.SetStyle(TextInfo::ITALIC);
    before.SetJustification(TextInfo::TOP_CENTER);
    before.SetAnnotation(TextInfo::ANNOTATION_2);
    for (const wchar_t* number : {L"-1", L"12", L"2147483648", L"4294967295", L"99999999999"}) {
        const TextInfo read = ReadFrom(
            SectionOf({{L"Style", number}, {L"Justification", number}, {L"Annotation", number}}), before);
        EXPECT_EQ(TextInfo::ITALIC, read.Style());
        EXPECT_EQ(TextInfo::TOP_CENTER, read.Justification());
        EXPECT_EQ(TextInfo::ANNOTATION_2, read.Annotation());
    }
    EXPECT_EQ(TextInfo::ITALIC, ReadFrom(SectionOf({{L"Style", L"8"}}), before).Style());
    EXPECT_EQ(TextInfo::ANNOTATION_2, ReadFrom(SectionOf({{L"Annotation", L"4"}}), before).Annotation());
}

TEST(TextInfo_Read, RotationIsReducedToOneTurnAndSizesKeepTheirSign) {
    const TextInfo read = ReadFrom<TextInfo>(
        SectionOf({{L"Rotation", L"-90"}, {L"Size", L"-2"}, {L"RectWidth", L"-3"}, {L"Font", L""}}));
    EXPECT_EQ(270.0, read.Rotation().Get());
    EXPECT_EQ(-2.0f, read.Size());
    EXPECT_EQ(-3.0f, read.RectWidth());
    EXPECT_EQ(L"", read.Font());
}

TEST(TextInfo, SettersDropSignsAndReplaceAnEmptyFont) {
    TextInfo text;
    text.SetSize(-2);
    text.SetRectWidth(-3);
    text.SetFont(L"Times");
    text.SetFont(text.Font());
    EXPECT_EQ(2.0f, text.Size());
    EXPECT_EQ(3.0f, text.RectWidth());
    EXPECT_EQ(L"Times", text.Font());
    text.SetFont(L"");
    EXPECT_EQ(L"Arial", text.Font());
}

TEST(TextInfo, EqualityIgnoresTheFontsCaseAndIsTolerantInTheRotation) {
    TextInfo text, other;
    text.SetFont(L"ARIAL");
    text.SetRotation(Angle(90));
    other.SetRotation(Angle(90 + 1e-8));
    EXPECT_EQ(text, other);
    other.SetRotation(Angle(90 + 1e-6));
    EXPECT_NE(text, other);
    other = text;
    other.SetSize(std::nextafter(2.5f, 3.0f));
    EXPECT_NE(text, other);
}

TEST(TextInfo, OrderIsByFontThenSizeThenStyle) {
    const auto make = [](const wchar_t* font, float size, int style) {
        TextInfo text;
        text.SetFont(font);
        text.SetSize(size);
        text.SetStyle(static_cast<TextInfo::STYLE>(style));
        return text;
    };
    const TextInfo ascending[] = {make(L"arial", 2, 0), make(L"Arial", 2, 1), make(L"ARIAL", 3, 0),
                                  make(L"Times", 1, 7), make(L"times new", 0, 0)};
    for (std::size_t i = 0; i < std::size(ascending); ++i)
        for (std::size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_EQ(i < j, ascending[i] < ascending[j]) << i << ' ' << j;
}

TEST(TextInfo, StylesThatDifferInOtherFieldsAreOneKeyOfAMap) {
    TextInfo text, other;
    text.SetFont(L"ARIAL");
    other.SetColor(1);
    other.SetRotation(Angle(9));
    other.SetJustification(TextInfo::TOP_LEFT);
    EXPECT_FALSE(text < other);
    EXPECT_FALSE(other < text);
    EXPECT_FALSE(text == other);
    EXPECT_EQ(1u, (std::map<TextInfo, int>{{text, 1}, {other, 2}}).size());
}

TEST(TextInfo_ToString, TenItems) {
    EXPECT_EQ(L"Arial,2.5,0,0,0,0,0,0,0,0", TextInfo().ToString());
    TextInfo text;
    text.SetFont(L"Times");
    text.SetSize(1234567);
    text.SetStyle(TextInfo::STYLE(5));
    text.SetJustification(TextInfo::BASELINE_RIGHT);
    text.SetColor(0x0000FF);
    text.SetRotation(Angle(359.123456));
    text.SetRectWidth(0.1f);
    text.SetMultiLine(true);
    text.SetAnnotation(TextInfo::ANNOTATION_2);
    EXPECT_EQ(L"Times,1.23457e+06,5,11,10,359.123,0.1,1,2,255", text.ToString());
}

TEST(TextInfo_ToString, ValuesWithoutANameAreWrittenAsTheirNumber) {
    TextInfo text = WithJustification(-1);
    text.SetStyle(TextInfo::STYLE(99));
    text.SetAnnotation(TextInfo::ANNOTATION(2147483647));
    EXPECT_EQ(L"Arial,2.5,99,-1,0,0,0,0,2147483647,0", text.ToString());
    EXPECT_EQ(L"99", Written(text)[L"Style"].GetValue());
}

TEST(TextInfo_FromString, ItemsByPosition) {
    struct Row {
        const wchar_t* line;
        const wchar_t* result; // as ToString() has it
    };
    for (const Row& row : {
             Row{L"", L"Arial,2.5,0,0,0,0,0,0,0,0"},
             Row{L"Times", L"Times,2.5,0,0,0,0,0,0,0,0"},
             Row{L",3", L",3,0,0,0,0,0,0,0,0"}, // an empty font stays
             Row{L"Arial,-2", L"Arial,-2,0,0,0,0,0,0,0,0"},
             Row{L"Arial,2.5,0,11", L"Arial,2.5,0,0,0,0,0,0,0,0"}, // no baselines
             Row{L"Arial,2.5,0,9", L"Arial,2.5,0,0,0,0,0,0,0,0"},
             Row{L"Arial,2.5,0,8", L"Arial,2.5,0,8,0,0,0,0,0,0"},
             Row{L"Arial,2.5,8,3", L"Arial,2.5,0,3,0,0,0,0,0,0"},
             Row{L"Arial,2.5,-1,-1,0,0,0,0,-1", L"Arial,2.5,0,0,0,0,0,0,0,0"},
             Row{L"Arial,2.5,7,0,0,0,0,0,4", L"Arial,2.5,7,0,0,0,0,0,0,0"},
             Row{L"Times,3,1,2,1,450", L"Times,3,1,2,10,90,0,0,0,255"}, // index 1 is red, and so is 10
             Row{L"a,1,0,0,1,0,0,0,0,65280", L"a,1,0,0,90,0,0,0,0,65280"},
             Row{L"a,1,0,0,256,-90,-5,2,3", L"a,1,0,0,0,270,-5,1,3,0"},
             Row{L"a,1,0,0,-1,0,0,x", L"a,1,0,0,0,0,0,0,0,0"},
             Row{L"a,x,x,x,x,x,x,x,x,x", L"a,0,0,0,0,0,0,0,0,0"},
             Row{L"a,,,,,,,,,", L"a,0,0,0,0,0,0,0,0,0"},
             Row{L"a,1,0,0,1,0,0,0,0,", L"a,1,0,0,0,0,0,0,0,0"},
             Row{L"a, 1e1 ,1.9,2x", L"a,10,1,2,0,0,0,0,0,0"},
             Row{L"a,1,0,0,1,0,0,0,0,7,6,5", L"a,1,0,0,18,0,0,0,0,7"},
             // fourteen items are a depth label of old, without a true colour; thirteen and fifteen are not
             Row{L"a,1,0,0,1,0,0,0,0,7,6,5,4,3", L"a,1,0,0,10,0,0,0,0,255"},
             Row{L"a,1,0,0,1,0,0,0,0,7,6,5,4", L"a,1,0,0,18,0,0,0,0,7"},
             Row{L"a,1,0,0,1,0,0,0,0,7,6,5,4,3,2", L"a,1,0,0,18,0,0,0,0,7"},
         }) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.line)));
        EXPECT_EQ(row.result, FromLine(row.line).ToString());
    }
}

TEST(TextInfo_FromString, TellsADerivedRecordWhereToGoOn) {
    for (int count = 0; count < 30; ++count) {
        FormatString items(L',');
        for (int i = 0; i < count; ++i) items.AddItem(L"1");
        EXPECT_EQ(count == 14 ? 9 : 10, Opened().FromString(items)) << count;
    }
}

TEST(TextInfo_FromString, ReadsBackWhatToStringWroteButBaselines) {
    Random random(5);
    const auto number = [&](unsigned range) { return static_cast<int>(random() % range); };
    for (int i = 0; i < 100'000; ++i) {
        TextInfo text;
        text.SetFont(L"Font " + std::to_wstring(number(1000)));
        text.SetSize(static_cast<float>(number(4000)) / 8.0f);
        text.SetStyle(static_cast<TextInfo::STYLE>(number(8)));
        text.SetAnnotation(static_cast<TextInfo::ANNOTATION>(number(4)));
        text.SetRotation(Angle(number(2880) / 8.0));
        text.SetJustification(static_cast<TextInfo::JUSTIFICATION>(number(12)));
        text.SetColor(random() & 0xFFFFFF);
        text.SetRectWidth(static_cast<float>(number(4000)) / 8.0f);
        text.SetMultiLine(number(2) == 1);
        TextInfo expected = text;
        if (text.Justification() >= TextInfo::BASELINE_LEFT) expected.SetJustification(TextInfo::BOTTOM_LEFT);
        ASSERT_EQ(expected, FromLine(text.ToString()));
        ASSERT_EQ(text, ReadFrom<TextInfo>(Written(text)));
    }
}

TEST(TextInfo_FromString, HostileLinesGiveARecord) {
    EXPECT_EQ(L",0,0,0,0,0,0,0,0,0", FromLine(std::wstring().append(10'000'000, L',')).ToString());
    EXPECT_EQ(10'000'000u, FromLine(std::wstring().append(10'000'000, L'x')).Font().size());
    EXPECT_EQ(5u, FromLine(std::wstring(L"a\0b\0c,3", 7)).Font().size());
    const std::wstring digits = std::wstring().append(1'000'000, L'9');
    const TextInfo huge = FromLine(L"a," + digits + L"," + digits + L",0,0," + digits);
    EXPECT_TRUE(std::isinf(huge.Size()));
    EXPECT_EQ(TextInfo::REGULAR, huge.Style());
    EXPECT_TRUE(std::isnan(huge.Rotation().Get()));
    EXPECT_EQ(0.0f, FromLine(L"a,nan").Size());
    const double rotation = FromLine(L"a,1,0,0,0,1e308").Rotation().Get();
    EXPECT_TRUE(rotation >= 0 && rotation < 360);
}

TEST(TextInfo, CodesOfAJustification) {
    struct Row {
        int justification, horizontal, vertical, attachment, windows;
    };
    for (const Row& row :
         {Row{0, 0, 1, 7, 8}, Row{1, 1, 1, 8, 14}, Row{2, 2, 1, 9, 10},    // bottom
          Row{3, 2, 2, 6, 10},                                             // middle right
          Row{4, 2, 3, 3, 2}, Row{5, 1, 3, 2, 6}, Row{6, 0, 3, 1, 0},      // top
          Row{7, 0, 2, 4, 8}, Row{8, 1, 2, 5, 14},                         // middle left and centre
          Row{9, 0, 0, 7, 24}, Row{10, 1, 0, 1, 30}, Row{11, 2, 0, 1, 26}, // baseline
          Row{12, 0, 0, 1, 24}, Row{-1, 0, 0, 1, 24}, Row{2147483647, 0, 0, 1, 24}}) { // without a name
        SCOPED_TRACE(row.justification);
        const TextInfo text = WithJustification(row.justification);
        EXPECT_EQ(row.horizontal, text.AcadHJust());
        EXPECT_EQ(row.vertical, text.AcadVJust());
        EXPECT_EQ(row.attachment, text.AcadAttachmentPoint());
        EXPECT_EQ(row.windows, text.WinAlignment());
    }
}

TEST(TextInfo, JustificationOfAnAttachmentPoint) {
    const int expected[] = {0, 6, 5, 4, 7, 8, 3, 0, 1, 2, 0};
    for (int point = 0; point <= 10; ++point) {
        TextInfo text = WithJustification(11);
        text.AcadAttachmentPoint(point);
        EXPECT_EQ(expected[point], text.Justification()) << point;
    }
    for (const int point : {-1, 2147483647, -2147483647 - 1}) {
        TextInfo text = WithJustification(11);
        text.AcadAttachmentPoint(point);
        EXPECT_EQ(0, text.Justification()) << point;
    }
}

TEST(TextInfo, JustificationOfDxfCodes) {
    const std::map<int, int> expected = {{0, 9},  {1, 10}, {2, 11}, {4, 1},  {11, 1}, {12, 2},
                                         {20, 7}, {21, 8}, {22, 3}, {30, 6}, {31, 5}, {32, 4}};
    for (int horizontal = -3; horizontal <= 40; ++horizontal) {
        for (int vertical = -3; vertical <= 5; ++vertical) {
            TextInfo text = WithJustification(8);
            text.FromAcadJust(horizontal, vertical);
            const auto found = expected.find(horizontal + 10 * vertical);
            EXPECT_EQ(found != expected.end() ? found->second : 0, text.Justification())
                << horizontal << ' ' << vertical;
        }
    }
    TextInfo text = WithJustification(8);
    text.FromAcadJust(2147483647, 2147483647); // and no overflow
    EXPECT_EQ(0, text.Justification());
}

TEST(TextInfo, DxfCodesOfEveryNamedJustificationComeBack) {
    for (int justification = 0; justification < 12; ++justification) {
        TextInfo text;
        const TextInfo from = WithJustification(justification);
        text.FromAcadJust(from.AcadHJust(), from.AcadVJust());
        // The code of left and bottom, 10, is none of the known ones, and all of these give bottom left.
        EXPECT_EQ(justification, text.Justification());
    }
}

TEST(TextInfo_OptTextAngle, TurnsWhatWouldReadUpsideDown) {
    struct Row {
        double rotation, reference, result;
    };
    for (const Row& row : {Row{100, 0, 280}, Row{270, 0, 270}, Row{10, 300, 10}, Row{90, 0, 270},
                           Row{89.999, 0, 89.999}, Row{269.999, 0, 89.999}, Row{180, 0, 0}, Row{0, 0, 0},
                           Row{0, 90, 0}, Row{0, 91, 180}, Row{350, 170, 170}, Row{45, 315, 225}}) {
        SCOPED_TRACE(::testing::Message() << row.rotation << ' ' << row.reference);
        TextInfo text = WithJustification(3, row.rotation);
        text.OptTextAngle(Angle(row.reference));
        EXPECT_NEAR(row.result, text.Rotation().Get(), 1e-9);
        EXPECT_EQ(3, text.Justification());
        EXPECT_NEAR(
            row.result,
            WithJustification(3, row.rotation).OptTextAngleJust(Angle(row.reference)).Rotation().Get(), 1e-9);
    }
}

TEST(TextInfo_OptTextAngle, TextNeverReadsUpsideDownAfterwards) {
    Random random(6);
    for (int i = 0; i < 100'000; ++i) {
        const double rotation = static_cast<double>(random() % 36'000) / 100;
        const double reference = static_cast<double>(random() % 36'000) / 100;
        TextInfo text = WithJustification(0, rotation);
        text.OptTextAngle(Angle(reference));
        // Its direction in the view points right, or straight down at most.
        ASSERT_GE(std::cos((text.Rotation().Get() - reference) * 3.14159265358979 / 180), -1e-9);
        const double turn = std::fabs(text.Rotation().Get() - rotation);
        ASSERT_TRUE(turn < 1e-9 || std::fabs(turn - 180) < 1e-9);
    }
}

TEST(TextInfo_OptTextAngleJust, ReflectsTheJustificationOfATurnedCopy) {
    const int reflected[] = {4, 5, 6, 7, 0, 1, 2, 3, 8, 4, 5, 6};
    for (int justification = 0; justification < 12; ++justification) {
        const TextInfo text = WithJustification(justification, 180);
        const TextInfo turned = text.OptTextAngleJust(Angle(0));
        EXPECT_EQ(reflected[justification], turned.Justification());
        EXPECT_EQ(0.0, turned.Rotation().Get());
        EXPECT_EQ(180.0, text.Rotation().Get());
        EXPECT_EQ(justification,
                  WithJustification(justification, 20).OptTextAngleJust(Angle(0)).Justification());
    }
    for (const int justification : {12, -1, 2147483647}) {
        const TextInfo turned = WithJustification(justification, 180).OptTextAngleJust(Angle(0));
        EXPECT_EQ(justification, turned.Justification());
        EXPECT_EQ(0.0, turned.Rotation().Get());
    }
}

TEST(TextInfo_FromString, DerivedRecordParsesItsOwnItemsToo) {
    struct Longer : TextInfo { // a record of a host
        std::wstring own = L"kept";
        std::vector<std::wstring> mine;
        using TextInfo::FromString;
        int FromString(const FormatString& items) override {
            for (int i = TextInfo::FromString(items); i < items.NumItems(); ++i) mine.push_back(items[i]);
            return items.NumItems();
        }
    };
    std::wstring line = L"a,1,0,0,0,0,0,0,0,7";
    std::vector<std::wstring> expected;
    for (int i = 0; i < 15; ++i) line += L',' + expected.emplace_back(L"item " + std::to_wstring(i));
    Longer record;
    record.FromString(line);
    EXPECT_EQ(expected, record.mine);
    EXPECT_EQ(L"kept", record.own);
}

TEST(TextInfo_FromString, LineMayBeItsOwnFont) {
    TextInfo text;
    text.SetFont(L"Times,3");
    text.FromString(text.Font());
    EXPECT_EQ(L"Times", text.Font());
    EXPECT_EQ(3.0f, text.Size());
}

TEST(TextInfo, FontOrderIsThatOfSmallLetters) {
    TextInfo under, letter;
    under.SetFont(L"A_");
    letter.SetFont(L"AB");
    EXPECT_TRUE(under < letter); // '_' lies between the capitals and the small letters
    EXPECT_FALSE(letter < under);
}

TEST(TextInfo, SizesThatAreNanComeLastInTheOrder) {
    const auto sized = [](float size, TextInfo::STYLE style = TextInfo::REGULAR) {
        TextInfo text;
        text.SetSize(size);
        text.SetStyle(style);
        return text;
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(sized(1) < sized(nan));
    EXPECT_TRUE(sized(std::numeric_limits<float>::infinity()) < sized(nan));
    EXPECT_FALSE(sized(nan) < sized(1));
    EXPECT_FALSE(sized(nan) < sized(nan));
    EXPECT_TRUE(sized(nan) < sized(nan, TextInfo::BOLD));
}

TEST(TextInfo_Read, PrefixedColourWithoutItsKeysIsBlack) {
    Section section;
    TextInfo().Write(L"P", section);
    section.RemoveKey(L"P.TrueColor");
    section.RemoveKey(L"P.Color");
    TextInfo text;
    text.SetColor(77);
    text.Read(L"P", section);
    EXPECT_EQ(0ul, text.Color());
}

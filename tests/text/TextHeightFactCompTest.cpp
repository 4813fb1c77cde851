// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/TextHeightFactComp.h"

#include "Framework/device/DC.h"
#include "UtilityDLL/text/GDIScaleFactor.h"
#include "tests/support/Random.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

namespace {

TextInfo Style(const std::wstring& face, float size, TextInfo::STYLE style = TextInfo::REGULAR) {
    TextInfo info;
    info.FromString(face + L",0");
    info.FromString(face + L"," + std::to_wstring(size)); // keeps an empty face and the sign, as files do
    if (!std::signbit(size)) info.SetSize(size);          // exactly
    info.SetStyle(style);
    return info;
}

bool IsAllZero(const OUTLINETEXTMETRICW& metrics) {
    static constexpr OUTLINETEXTMETRICW none = {};
    return std::memcmp(&metrics, &none, sizeof none) == 0;
}

const std::vector<std::wstring> kFaces = {L"Liberation Sans", L"Liberation Serif", L"Liberation Mono",
                                          L"DejaVu Sans"};

OUTLINETEXTMETRICW Measured(const std::wstring& face, int height) {
    CDC dc;
    EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    EXPECT_NE(dc.SetMapMode(MM_HIMETRIC), 0);
    CFont font;
    EXPECT_TRUE(font.CreateFontW(height, 0, 0, 0, 400, 0, 0, 0, 0, 7, 16, 2, 0, face.c_str()));
    CGdiObject* const previous = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
    OUTLINETEXTMETRICW metrics = {};
    EXPECT_NE(dc.GetOutlineTextMetricsW(sizeof metrics, &metrics), 0u);
    CDC::SelectGdiObject(dc.m_hDC, previous->m_hObject);
    return metrics;
}

// What 32 bits keep of a number: the sign is that of the bit 31.
std::int64_t In32Bits(std::int64_t number) {
    const std::int64_t range = std::int64_t{1} << 32;
    const std::int64_t rest = ((number % range) + range) % range;
    return rest < range / 2 ? rest : rest - range;
}

// The rule again, by numbers that are wide enough for every product and cut to 32 bits where it says so.
double PlainFactor(float size, int height, const OUTLINETEXTMETRICW& metrics) {
    const std::int64_t hidden = std::llabs(metrics.otmDescent) +
                                std::llabs(metrics.otmTextMetrics.tmExternalLeading) +
                                std::llabs(metrics.otmTextMetrics.tmInternalLeading);
    const std::int64_t visible = height - In32Bits(hidden * height) / metrics.otmTextMetrics.tmHeight;
    return visible == 0 ? 0.0 : double{size} / (static_cast<double>(visible) / 1000.0);
}

// Numbers of the tables of the font files, read by another program: usWinAscent, usWinDescent and
// sTypoDescender of OS/2, unitsPerEm of head; the external leading from hhea (its line gap, for its ascender
// and descender are those of the cell).
TEST(TextHeightFactComp, IsWhatTheTablesOfKnownFontsGive) {
    struct Row {
        const wchar_t* face;
        int winAscent, winDescent, typoDescent, externalLeading, unitsPerEm;
    };
    for (const Row& row :
         {Row{L"Liberation Sans", 1854, 434, -431, 67, 2048},
          Row{L"Liberation Serif", 1825, 443, -442, 87, 2048},
          Row{L"Liberation Mono", 1705, 615, -386, 0, 2048}, Row{L"DejaVu Sans", 1901, 483, -492, 0, 2048}}) {
        const double cell = row.winAscent + row.winDescent;
        const double hidden = -row.typoDescent + row.externalLeading + (cell - row.unitsPerEm);
        const double expected = 1.0 / (1.0 - hidden / cell);
        constexpr float kSize = 50.0f;
        TextHeightFactComp factors;
        // Four measures round to pixels of 26.46 units where there are some.
        EXPECT_NEAR(factors(Style(row.face, kSize)), expected, expected * expected * 4 * 26.46 / 50000)
            << std::wstring(row.face);
        const OUTLINETEXTMETRICW& metrics = factors.GetMetrics(Style(row.face, kSize));
        EXPECT_NEAR(metrics.otmTextMetrics.tmHeight, 50000, 3 * 26.46);
        EXPECT_NEAR(metrics.otmDescent, row.typoDescent / cell * 50000, 2 * 26.46);
        EXPECT_EQ(metrics.otmEMSquare, 2048u);
    }
}

TEST(TextHeightFactComp, FollowsTheRuleOfThirtyTwoBitsAtEverySize) {
    TextHeightFactComp factors;
    for (const std::wstring& face : kFaces)
        for (const float size :
             {0.02f, 0.1f,  0.25f, 0.5f,   1.0f,   1.8f,    2.5f,    3.1f,     7.0f, 12.34f,    50.0f,
              75.0f, 76.0f, 77.0f, 100.0f, 150.0f, 1000.0f, 1500.0f, 12345.0f, 1e6f, 2147483.0f}) {
            SCOPED_TRACE(::testing::Message() << face << ' ' << size);
            const int height = static_cast<int>(double{size} * 1000.0);
            const OUTLINETEXTMETRICW metrics = Measured(face, height);
            const auto expected = static_cast<float>(PlainFactor(size, height, metrics));
            EXPECT_EQ(factors(Style(face, size)), expected);
            EXPECT_TRUE(std::isfinite(expected));
            EXPECT_EQ(std::memcmp(&factors.GetMetrics(Style(face, size)), &metrics, sizeof metrics), 0);
        }
}

// Where the product leaves 32 bits, which is between 76 and 100 for these fonts, the factor is no longer one
// that fits the text; hosts with such sizes are known to live with it.
TEST(TextHeightFactComp, LosesItsSenseWhereTheProductLeavesThirtyTwoBits) {
    TextHeightFactComp factors;
    for (const std::wstring& face : kFaces) {
        const float usual = factors(Style(face, 50.0f));
        EXPECT_NEAR(factors(Style(face, 70.0f)), usual, 0.01f) << face;
        EXPECT_GT(std::fabs(factors(Style(face, 100.0f)) - usual), 0.1f) << face;
    }
}

TEST(TextHeightFactComp, MeasuresNegativeSizesByTheEm) {
    TextHeightFactComp factors;
    const float factor = factors(Style(L"Liberation Sans", -20.0f));
    EXPECT_EQ(factor, static_cast<float>(PlainFactor(-20.0f, -20000, Measured(L"Liberation Sans", -20000))));
    EXPECT_NEAR(factors.GetMetrics(Style(L"Liberation Sans", -20.0f)).otmTextMetrics.tmHeight,
                20000.0 * 2288 / 2048, 3 * 26.46);
}

// A font of height 0 is one of the system's choice, so there are metrics.
TEST(TextHeightFactComp, IsZeroForSizesOfNoHeight) {
    TextHeightFactComp factors;
    for (const float size : {0.0f, 1e-6f, 0.0009f, std::numeric_limits<float>::denorm_min()}) {
        EXPECT_EQ(factors(Style(L"Liberation Sans", size)), 0.0f) << size;
        EXPECT_GT(factors.GetMetrics(Style(L"Liberation Sans", size)).otmTextMetrics.tmHeight, 0) << size;
        EXPECT_GT(factors.GetMetrics(Style(L"Liberation Sans", size)).otmSize, 0u) << size; // an entry
    }
}

TEST(TextHeightFactComp, MeasuresNothingThatDoesNotFitIntoLogicalUnits) {
    TextHeightFactComp factors;
    const TextInfo least = Style(L"a", 1.0f);
    const TextInfo greatest = Style(L"zzz", 1.0f);
    ASSERT_GT(factors(least), 0.0f);
    ASSERT_GT(factors(greatest), 0.0f);
    ASSERT_GT(factors(Style(L"Liberation Sans", 1.0f)), 0.0f);
    for (const double size :
         {kNaN, -kNaN, kInfinity, -kInfinity, 1e9, -1e9, 2147484.0, -2147484.0, 3.4e38, -3.4e38}) {
        TextInfo style;
        style.SetFont(L"Liberation Sans");
        style.SetSize(static_cast<float>(size)); // its magnitude
        EXPECT_EQ(factors(style), 0.0f) << size;
        EXPECT_TRUE(IsAllZero(factors.GetMetrics(style))) << size;
        EXPECT_EQ(factors.GetMetrics(style).otmSize, 0u) << size;
        EXPECT_EQ(factors.AddEntry(style), std::next(factors.AddEntry(greatest))) << size; // the end
    }
    for (const float size : {-1e9f, -2147484.0f, -3.4e38f}) {
        EXPECT_EQ(factors(Style(L"Liberation Sans", size)), 0.0f) << size;
        EXPECT_TRUE(IsAllZero(factors.GetMetrics(Style(L"Liberation Sans", size)))) << size;
    }
    EXPECT_EQ(std::distance(factors.AddEntry(least), factors.AddEntry(greatest)), 2); // nothing came between
}

TEST(TextHeightFactComp, SharesEntriesAmongWhatDoesNotChangeTheHeight) {
    TextHeightFactComp factors;
    const TextInfo plain = Style(L"Liberation Sans", 2.5f);
    const OUTLINETEXTMETRICW* const metrics = &factors.GetMetrics(plain);
    std::vector<TextInfo> equal(8, plain);
    equal[0].SetColor(255);
    equal[1].SetRotation(Angle(90.0));
    equal[2].SetJustification(TextInfo::BASELINE_RIGHT);
    equal[3].SetAnnotation(TextInfo::ANNOTATION_2);
    equal[4].SetRectWidth(7.0f);
    equal[5].SetMultiLine(true);
    equal[6].SetFont(L"LIBERATION sans");
    equal[7].SetFont(L"liberation Sans");
    for (std::size_t i = 0; i < equal.size(); ++i) EXPECT_EQ(&factors.GetMetrics(equal[i]), metrics) << i;
}

TEST(TextHeightFactComp, TellsStylesApartButMeasuresTheRegularFont) {
    TextHeightFactComp factors;
    const TextInfo regular = Style(L"Liberation Serif", 10.0f);
    const auto first = factors.AddEntry(regular);
    for (int flags = 1; flags < 8; ++flags) {
        const auto entry =
            factors.AddEntry(Style(L"Liberation Serif", 10.0f, static_cast<TextInfo::STYLE>(flags)));
        EXPECT_EQ(std::distance(first, entry), flags); // an entry for each, in the order of the flags
        EXPECT_EQ(entry->second.first, first->second.first);
        EXPECT_EQ(std::memcmp(&entry->second.second, &first->second.second, sizeof(OUTLINETEXTMETRICW)), 0);
    }
    EXPECT_EQ(first->second.second.otmTextMetrics.tmItalic, 0);
    EXPECT_EQ(first->second.second.otmTextMetrics.tmUnderlined, 0);
    EXPECT_EQ(first->second.second.otmTextMetrics.tmWeight, 400);
}

TEST(TextHeightFactComp, KeepsEntriesWhereTheyAre) {
    TextHeightFactComp factors;
    const TextInfo style = Style(L"Liberation Sans", 2.5f);
    const auto entry = factors.AddEntry(style);
    const OUTLINETEXTMETRICW& metrics = factors.GetMetrics(style);
    EXPECT_EQ(&metrics, &entry->second.second);
    const OUTLINETEXTMETRICW before = metrics;
    Random random(1);
    for (int i = 0; i < 2000; ++i)
        factors(Style(random.OneOf(kFaces), static_cast<float>(random.Real(0.0, 100.0))));
    EXPECT_EQ(&factors.GetMetrics(style), &metrics);
    EXPECT_EQ(std::memcmp(&metrics, &before, sizeof before), 0);
    EXPECT_EQ(factors.AddEntry(style), entry);
}

TEST(TextHeightFactComp, TakesTheKeyOfAnEntry) {
    TextHeightFactComp factors;
    const auto entry = factors.AddEntry(Style(L"Liberation Sans", 2.5f));
    EXPECT_EQ(factors.AddEntry(entry->first), entry);
    EXPECT_EQ(factors(entry->first), entry->second.first);
    EXPECT_EQ(&factors.GetMetrics(entry->first), &entry->second.second);
    EXPECT_EQ(entry->first.Font(), L"Liberation Sans");
}

TEST(TextHeightFactComp, KeepsTheFirstOfEqualStylesAsItsKey) {
    TextHeightFactComp factors;
    TextInfo red = Style(L"Liberation Sans", 2.5f);
    red.SetColor(255);
    const auto entry = factors.AddEntry(red);
    EXPECT_EQ(factors.AddEntry(Style(L"liberation sans", 2.5f)), entry);
    EXPECT_EQ(entry->first, red);
}

TEST(TextHeightFactComp, IsAValue) {
    const TextInfo style = Style(L"Liberation Sans", 2.5f);
    TextHeightFactComp factors;
    const float factor = factors(style);
    const OUTLINETEXTMETRICW* const metrics = &factors.GetMetrics(style);

    TextHeightFactComp copy(factors);
    EXPECT_NE(&copy.GetMetrics(style), metrics);
    EXPECT_EQ(copy(style), factor);

    TextHeightFactComp assigned;
    assigned(Style(L"Liberation Mono", 7.0f));
    assigned = factors;
    factors = *&factors;
    EXPECT_EQ(&factors.GetMetrics(style), metrics);
    EXPECT_EQ(assigned(style), factor);

    TextHeightFactComp moved(std::move(factors));
    EXPECT_EQ(&moved.GetMetrics(style), metrics); // the entry itself, not a copy
    EXPECT_EQ(moved(style), factor);
    factors = TextHeightFactComp(); // as after every move, what is assigned counts
    EXPECT_EQ(factors(style), factor);
}

TEST(TextHeightFactComp, IsOneForTheProcess) {
    TextHeightFactComp& factors = TextHeightFactComp::Get();
    EXPECT_EQ(&factors, &TextHeightFactComp::Get());
    const TextInfo style = Style(L"Liberation Sans", 2.5f);
    TextHeightFactComp other;
    EXPECT_EQ(factors(style), other(style));
}

TEST(TextHeightFactComp, TakesAnyName) {
    TextHeightFactComp factors;
    for (const std::wstring& face : {std::wstring(), std::wstring(10000, L'x'), std::wstring(L"No such face"),
                                     std::wstring(L"\xd800\xdfff\xffff"), std::wstring(L"@Liberation Sans"),
                                     std::wstring(L"a\0b", 3), std::wstring(L"%n%s:bold\\-=")}) {
        TextInfo style;
        style.FromString(face + L",2.5"); // keeps an empty name
        EXPECT_EQ(style.Font(), face);
        const float factor = factors(style);
        EXPECT_GE(factor, 0.0f);
        EXPECT_LT(factor, 10.0f);
        EXPECT_EQ(factors(style), factor);
    }
}

} // namespace

// SPDX-License-Identifier: MIT
// What text measures without the rounding to pixels of Windows: exactly what the font's tables say. The
// expected font units were taken from the tables of the installed fonts.

#include "Framework/device/DC.h"
#include "VelmBase/WideString.h"

#include <climits>
#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

/// A font that is selected into a context.
class Selected {
public:
    Selected(int height, const std::wstring& face, int weight = FW_NORMAL, bool isItalic = false,
             int mode = MM_HIMETRIC, int width = 0) {
        EXPECT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        m_dc.SetMapMode(mode);
        EXPECT_TRUE(m_font.CreateFontW(height, width, 0, 0, weight, isItalic, 0, 0, 0, OUT_TT_ONLY_PRECIS,
                                       CLIP_LH_ANGLES, PROOF_QUALITY, 0, face.c_str()));
        EXPECT_NE(nullptr, CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject));
    }
    OUTLINETEXTMETRICW Metrics() const {
        OUTLINETEXTMETRICW metrics = {};
        EXPECT_EQ(sizeof metrics, m_dc.GetOutlineTextMetricsW(sizeof metrics, &metrics));
        return metrics;
    }
    CSize Extent(const std::wstring& text) const { return m_dc.GetTextExtent(text); }
    int Width(const std::wstring& text) const { return Extent(text).cx; }
    std::wstring Face() const { return m_dc.GetTextFaceW().GetString(); }

private:
    CDC m_dc;
    CFont m_font; // goes first, while it is selected
};

// Negative heights are those of the em: at this one a logical unit is a font unit.
constexpr int kEm = -2048;

} // namespace

TEST(DeviceText, MeasuresAreThoseOfTheFontsTables) {
    struct Row {
        const wchar_t* face;
        int ascent, descent, external, average, widest, typoAscent, typoDescent, family;
    };
    for (const Row& row : {Row{L"Liberation Sans", 1854, 434, 67, 1208, 2567, 1491, -431, 0x27},
                           Row{L"Liberation Serif", 1825, 443, 87, 1163, 2424, 1420, -442, 0x17},
                           Row{L"Liberation Mono", 1705, 615, 0, 1229, 1297, 1255, -386, 0x36},
                           Row{L"DejaVu Sans", 1901, 483, 0, 1038, 5763, 1556, -492, 0x27}}) {
        SCOPED_TRACE(ToUtf8(row.face));
        const OUTLINETEXTMETRICW all = Selected(kEm, row.face).Metrics();
        const TEXTMETRICW& text = all.otmTextMetrics;
        EXPECT_EQ(row.ascent, text.tmAscent);
        EXPECT_EQ(row.descent, text.tmDescent);
        EXPECT_EQ(row.ascent + row.descent, text.tmHeight);
        EXPECT_EQ(row.ascent + row.descent - 2048, text.tmInternalLeading);
        EXPECT_EQ(row.external, text.tmExternalLeading);
        EXPECT_EQ(row.average, text.tmAveCharWidth);
        EXPECT_EQ(row.widest, text.tmMaxCharWidth);
        EXPECT_EQ(row.family, text.tmPitchAndFamily);
        EXPECT_EQ(row.typoAscent, all.otmAscent);
        EXPECT_EQ(row.typoDescent, all.otmDescent);
        EXPECT_EQ(2048u, all.otmEMSquare);
        EXPECT_EQ(FW_NORMAL, text.tmWeight);
        EXPECT_EQ(0, text.tmItalic);
    }
}

TEST(DeviceText, HeightIsOfTheCellWhenPositiveAndOfTheEmWhenNegative) {
    for (const int height : {1, 7, 1000, 12345, 1'000'000, INT_MAX}) {
        SCOPED_TRACE(height);
        const double scale = height / 2288.0;
        const TEXTMETRICW text = Selected(height, L"Liberation Sans").Metrics().otmTextMetrics;
        EXPECT_EQ(height, text.tmHeight);
        EXPECT_EQ(std::lround(1854 * scale), text.tmAscent);
        EXPECT_EQ(text.tmHeight, text.tmAscent + text.tmDescent);
        EXPECT_EQ(std::lround(240 * scale), text.tmInternalLeading);
        EXPECT_EQ(height, Selected(height, L"Liberation Sans").Extent(L"x").cy);
    }
    EXPECT_EQ(2288, Selected(-2048, L"Liberation Sans").Metrics().otmTextMetrics.tmHeight);
    EXPECT_EQ(INT_MAX, Selected(INT_MIN, L"Liberation Sans").Metrics().otmTextMetrics.tmHeight);
}

TEST(DeviceText, HeightOfZeroIsACellOfSixteenPixels) {
    EXPECT_EQ(423, Selected(0, L"Liberation Sans").Metrics().otmTextMetrics.tmHeight); // 16 * 2540 / 96
    EXPECT_EQ(16, Selected(0, L"Liberation Sans", FW_NORMAL, false, MM_TEXT).Extent(L"x").cy);
}

TEST(DeviceText, WidthStretchesWhatIsHorizontal) {
    const Selected wide(kEm, L"Liberation Sans", FW_NORMAL, false, MM_HIMETRIC, 2 * 1208);
    EXPECT_EQ(2 * 1208, wide.Metrics().otmTextMetrics.tmAveCharWidth);
    EXPECT_EQ(2288, wide.Metrics().otmTextMetrics.tmHeight);
    EXPECT_EQ(2 * 1139, wide.Width(L"n"));
}

TEST(DeviceText, WidthsAreTheSumOfTheAdvances) {
    const Selected font(kEm, L"Liberation Sans");
    EXPECT_EQ(1139 + 748, font.Width(L"n\n"));  // a line break is the glyph for what is missing
    EXPECT_EQ(2 * 1366, font.Width(L"AV") + 0); // A and V are not moved together
    EXPECT_EQ(font.Width(L"f") + font.Width(L"i"), font.Width(L"fi"));
    const std::wstring text = L"Sounding 12.3 \u00C4\u03A9\u0416 \u2030";
    int sum = 0;
    for (const wchar_t character : text) sum += font.Width(std::wstring(1, character));
    EXPECT_EQ(sum, font.Width(text));
    EXPECT_EQ(1'000'000 * 1139, font.Width(std::wstring(1'000'000, L'n')));
    EXPECT_EQ(INT_MAX, Selected(INT_MAX, L"Liberation Sans").Width(L"nnn"));
}

TEST(DeviceText, EmptyTextTakesNothing) {
    const Selected font(kEm, L"Liberation Sans");
    EXPECT_EQ(0, font.Extent(L"").cx);
    EXPECT_EQ(0, font.Extent(L"").cy);
}

TEST(DeviceText, PairOfSurrogatesIsTheCharacterThatItMeans) {
    const Selected font(kEm, L"DejaVu Sans");
    const std::wstring pair = {static_cast<wchar_t>(0xD835), static_cast<wchar_t>(0xDD38)}; // a double A
    EXPECT_EQ(font.Width(L"\U0001D538"), font.Width(pair));
    EXPECT_NE(2 * 1229, font.Width(pair));
    const int missing = font.Width(L"\x01");
    EXPECT_EQ(1229, missing);
    for (const int lone : {0xD835, 0xDD38, 0xDFFF, 0x110000, 0x7FFFFFFF, -1})
        EXPECT_EQ(missing, font.Width(std::wstring(1, static_cast<wchar_t>(lone)))) << lone;
    const std::wstring reversed = {pair[1], pair[0]};
    EXPECT_EQ(2 * missing, font.Width(reversed));
}

TEST(DeviceText, CharacterThatTheFaceLacksComesFromAnother) {
    // Ideographs are as wide as the em in the face that has them.
    EXPECT_EQ(2 * 2048, Selected(kEm, L"Liberation Sans").Width(L"\u6D77\u56F3"));
    EXPECT_EQ(2 * 2048 + 1139, Selected(kEm, L"Liberation Sans").Width(L"\u6D77n\u56F3"));
    // What no font has is the sign of the face itself.
    EXPECT_EQ(748, Selected(kEm, L"Liberation Sans").Width(L"\U000EFFFF"));
}

TEST(DeviceText, BoldWithoutABoldFaceAddsAPixelToEachCharacter) {
    const Selected regular(kEm, L"Droid Sans Fallback");
    for (const int mode : {MM_HIMETRIC, MM_TEXT}) {
        const double pixel = mode == MM_TEXT ? 1 : 2540.0 / 96;
        const Selected bold(kEm, L"Droid Sans Fallback", FW_BOLD, false, mode);
        EXPECT_EQ(std::lround(2048 + pixel), bold.Width(L"\u6D77"));
        EXPECT_EQ(std::lround(20 * (2048 + pixel)), bold.Width(std::wstring(20, L'\u6D77')));
        EXPECT_EQ(regular.Extent(L"x").cy, bold.Extent(L"x").cy);
        EXPECT_EQ(FW_BOLD, bold.Metrics().otmTextMetrics.tmWeight);
    }
    EXPECT_EQ(2048, Selected(kEm, L"Droid Sans Fallback", 550).Width(L"\u6D77"));
    EXPECT_EQ(2074, Selected(kEm, L"Droid Sans Fallback", 551).Width(L"\u6D77"));
    // A bold face has its own widths.
    EXPECT_EQ(1251, Selected(kEm, L"Liberation Sans", FW_BOLD).Width(L"n"));
}

TEST(DeviceText, ItalicWithoutAnItalicFaceKeepsItsWidths) {
    const Selected upright(kEm, L"Droid Sans Fallback");
    const Selected slanted(kEm, L"Droid Sans Fallback", FW_NORMAL, true);
    EXPECT_EQ(upright.Width(L"Chart \u6D77"), slanted.Width(L"Chart \u6D77"));
    EXPECT_EQ(255, slanted.Metrics().otmTextMetrics.tmItalic);
    EXPECT_EQ(0, slanted.Metrics().otmItalicAngle);
    EXPECT_EQ(-120, Selected(kEm, L"Liberation Sans", FW_NORMAL, true).Metrics().otmItalicAngle);
}

TEST(DeviceText, MissingFacesAreReplacedAndItIsTold) {
    struct Row {
        const wchar_t *asked, *found;
    };
    for (const Row& row :
         {Row{L"Arial", L"Liberation Sans"}, Row{L"Times New Roman", L"Liberation Serif"},
          Row{L"Courier New", L"Liberation Mono"}, Row{L"liberation SANS", L"Liberation Sans"},
          Row{L"Liberation Sans  ", L"Liberation Sans"}})
        EXPECT_EQ(row.found, Selected(100, row.asked).Face()) << ToUtf8(row.asked);
}

TEST(DeviceText, NamesThatNoFontCanHaveFallBack) {
    const std::wstring odd[] = {L"",
                                L"No Such Family",
                                std::wstring(10'000, L'x'),
                                std::wstring(10'000, L' '),
                                {static_cast<wchar_t>(0xD800)},
                                {static_cast<wchar_t>(0xDC80), static_cast<wchar_t>(-1)},
                                L":weight=bold:file=/dev/zero",
                                L"a,b-12",
                                L"\\\x01\x7F"};
    for (const std::wstring& name : odd) {
        const Selected font(100, name);
        EXPECT_FALSE(font.Face().empty()) << ToUtf8(name).substr(0, 40);
        EXPECT_GT(font.Width(L"x"), 0);
        EXPECT_EQ(100, font.Extent(L"x").cy);
    }
}

TEST(DeviceText, NameIsCutToWhatALogicalFontHolds) {
    const std::wstring name = L"Liberation Sans";
    EXPECT_EQ(name, Selected(100, name + std::wstring(31 - name.size(), L' ') + L"Mono").Face());
}

TEST(DeviceText, ScriptsThatJoinAreShaped) {
    const Selected font(kEm, L"DejaVu Sans");
    // Lam and alef become one letter; heh has a form for each place in a word.
    EXPECT_LT(font.Width(L"\u0644\u0627"), font.Width(L"\u0644 \u0627") - font.Width(L" "));
    EXPECT_NE(3 * font.Width(L"\u0647"), font.Width(L"\u0647\u0647\u0647"));
    // In a text of two scripts each is measured as if it were alone.
    EXPECT_EQ(font.Width(L"ab ") + font.Width(L"\u0644\u0627") + font.Width(L" 12"),
              font.Width(L"ab \u0644\u0627 12"));
}

TEST(DeviceText, MarkTakesNoRoomBesideItsLetter) {
    for (const wchar_t* const face : {L"DejaVu Sans", L"Liberation Sans"}) {
        const Selected font(kEm, face);
        EXPECT_EQ(font.Width(L"\u00E9"), font.Width(L"e\u0301")) << ToUtf8(face);
        EXPECT_EQ(font.Width(L"ab\u00E9cd"), font.Width(L"abe\u0301cd"));
        EXPECT_EQ(0, font.Width(L"\u200B")); // a break without width
    }
    // Liberation Sans has none of these marks, and nothing to show q with one.
    const Selected font(kEm, L"Liberation Sans");
    EXPECT_EQ(1139, font.Width(L"q\u0301"));
    EXPECT_EQ(4 * 1139, font.Width(L"nq\u0301\u0323nq\u0308"));
    EXPECT_EQ(1139, font.Width(L"\u00FC\u0331"));
}

TEST(DeviceText, SoftHyphenAndNoBreakSpaceHaveTheWidthOfTheirGlyphs) {
    const Selected font(kEm, L"Liberation Sans");
    EXPECT_EQ(682, font.Width(L"\u00AD"));
    EXPECT_EQ(569, font.Width(L"\u00A0"));
}

TEST(DeviceText, StockFontsHaveNoOutlines) {
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    OUTLINETEXTMETRICW metrics = {};
    EXPECT_EQ(0u, dc.GetOutlineTextMetricsW(sizeof metrics, &metrics));
    SIZE extent = {7, 8};
    EXPECT_FALSE(GetTextExtentPoint32W(dc.m_hDC, L"x", 1, &extent));
    EXPECT_EQ(7, extent.cx);
    EXPECT_EQ(L"System", std::wstring(dc.GetTextFaceW().GetString()));
}

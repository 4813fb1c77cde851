// SPDX-License-Identifier: MIT
#include "Framework/device/DC.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

// One pixel of a display of 96 an inch, in units of 0.01 mm. A display may have its size in whole
// millimetres.
constexpr double PIXEL = 2540.0 / 96;

// A font that is selected into a context of its own, whose unit is 0.01 mm.
struct Selected {
    Selected(int height, const wchar_t* face, int weight = FW_NORMAL, bool isItalic = false,
             bool isUnderlined = false, bool isStruckOut = false) {
        EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        dc.SetMapMode(MM_HIMETRIC);
        EXPECT_TRUE(font.CreateFontW(height, 0, 0, 0, weight, isItalic, isUnderlined, isStruckOut, 0,
                                     OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0, face));
        EXPECT_TRUE(CDC::SelectGdiObject(dc.m_hDC, font.m_hObject));
    }
    OUTLINETEXTMETRICW Metrics() const {
        OUTLINETEXTMETRICW metrics = {};
        EXPECT_EQ(sizeof metrics, dc.GetOutlineTextMetricsW(sizeof metrics, &metrics));
        return metrics;
    }
    int Width(const std::wstring& text) const { return dc.GetTextExtent(text).cx; }

    CFont font; // outlives the context that it is selected in
    CDC dc;
};

} // namespace

TEST(Font, IsMadeOnce) {
    CFont font;
    EXPECT_TRUE(font.CreateFontW(100, 0, 0, 0, 400, 0, 0, 0, 0, 7, 16, 2, 0, L"Liberation Sans"));
    const HGDIOBJ before = font.m_hObject;
    EXPECT_FALSE(font.CreateFontW(200, 0, 0, 0, 400, 0, 0, 0, 0, 7, 16, 2, 0, L"Liberation Serif"));
    EXPECT_EQ(before, font.m_hObject);
}

TEST(Font, APositiveHeightIsOfTheCellANegativeOneOfTheEm) {
    for (const wchar_t* const face : {L"Liberation Sans", L"Liberation Serif", L"DejaVu Sans"}) {
        const OUTLINETEXTMETRICW cell = Selected(100'000, face).Metrics();
        const OUTLINETEXTMETRICW em = Selected(-100'000, face).Metrics();
        EXPECT_NEAR(100'000, cell.otmTextMetrics.tmHeight, 3 * PIXEL);
        EXPECT_NEAR(100'000, em.otmTextMetrics.tmHeight - em.otmTextMetrics.tmInternalLeading, 3 * PIXEL);
        EXPECT_GT(em.otmTextMetrics.tmInternalLeading, 0);
        for (const TEXTMETRICW& both : {cell.otmTextMetrics, em.otmTextMetrics})
            EXPECT_NEAR(both.tmHeight, both.tmAscent + both.tmDescent, 1); // each is rounded to a unit
        EXPECT_EQ(2048u, cell.otmEMSquare);
    }
}

TEST(Font, OfHeightZeroHasACellOfSixteenPixels) {
    EXPECT_NEAR(16 * PIXEL, Selected(0, L"Liberation Sans").Metrics().otmTextMetrics.tmHeight, PIXEL);
}

TEST(Font, AFaceIsFoundWhateverItsLetterCase) {
    for (const wchar_t* const face : {L"Liberation Serif", L"liberation serif", L"LIBERATION SERIF"})
        EXPECT_EQ(CString(L"Liberation Serif"), Selected(1000, face).dc.GetTextFaceW());
}

TEST(Font, OfAMissingFaceIsAnotherAndSaysSo) {
    const std::wstring endless(10'000, L'x');
    for (const wchar_t* const face :
         {L"No Such Face", L"", static_cast<const wchar_t*>(nullptr), endless.c_str()}) {
        const Selected font(1000, face);
        EXPECT_FALSE(font.dc.GetTextFaceW().IsEmpty());
        EXPECT_FALSE(font.dc.GetTextFaceW() == face);
        EXPECT_GT(font.Width(L"abc"), 0);
    }
}

TEST(Font, OutlineMetricsFillTheBufferThatThereIs) {
    const Selected font(1000, L"Liberation Sans");
    const OUTLINETEXTMETRICW all = font.Metrics();
    EXPECT_LE(sizeof all, font.dc.GetOutlineTextMetricsW(0, nullptr));
    EXPECT_LE(sizeof all, all.otmSize);
    for (const UINT size : {0u, 1u, 4u, 100u, 231u, 232u}) {
        unsigned char bytes[sizeof all + 8];
        std::memset(bytes, 0xA5, sizeof bytes);
        EXPECT_EQ(size, font.dc.GetOutlineTextMetricsW(size, reinterpret_cast<OUTLINETEXTMETRICW*>(bytes)));
        EXPECT_EQ(0, std::memcmp(bytes, &all,
                                 std::min<std::size_t>(size, offsetof(OUTLINETEXTMETRICW, otmpFamilyName))));
        EXPECT_TRUE(std::all_of(bytes + size, std::end(bytes), [](unsigned char b) { return b == 0xA5; }));
    }
}

TEST(Font, AnEmptyTextTakesNothing) {
    EXPECT_EQ(CSize(), Selected(1000, L"Liberation Sans").dc.GetTextExtent(L""));
}

TEST(Font, ATextIsAsHighAsTheCell) {
    const Selected font(1000, L"Liberation Sans");
    const int height = font.dc.GetTextExtent(L".").cy;
    // On Windows each of the two is rounded to units on its own, and a pixel is not the same on every
    // display.
    EXPECT_NEAR(font.Metrics().otmTextMetrics.tmHeight, height, 1);
    for (const wchar_t* const text : {L"Mg", L"\n", L"\u6D77"})
        EXPECT_EQ(height, font.dc.GetTextExtent(text).cy);
}

TEST(Font, ALongerTextIsWider) {
    const Selected font(1000, L"DejaVu Sans");
    std::wstring text;
    int width = 0;
    for (const wchar_t next : std::wstring(L"Sounding 123.4 \u03A9\u0416\t.")) {
        text += next;
        EXPECT_GT(font.Width(text), width) << text.size();
        width = font.Width(text);
    }
}

TEST(Font, AdvancesOfSimpleTextAddUpWithoutKerningOrLigatures) {
    const Selected font(100'000, L"DejaVu Sans");
    for (const std::wstring text : {L"AV", L"To", L"fi", L"\u0391\u03A4", L"\u0413\u0410"}) {
        int sum = 0;
        for (const wchar_t character : text) sum += font.Width(std::wstring(1, character));
        EXPECT_NEAR(sum, font.Width(text), 2); // each is rounded to a unit
    }
}

TEST(Font, AControlCharacterIsAsWideAsTheSignForAMissingOne) {
    for (const wchar_t* const face : {L"Liberation Sans", L"DejaVu Sans"}) {
        const Selected font(100'000, face);
        const int missing = font.Width(L"\uFFFF");
        EXPECT_GT(missing, 0);
        for (const wchar_t control : {L'\n', L'\r', L'\t', L'\u0001', L'\0'})
            EXPECT_EQ(missing, font.Width(std::wstring(1, control))) << int{control};
    }
}

TEST(Font, ANullCharacterEndsNoText) {
    const Selected font(100'000, L"Liberation Sans");
    const std::wstring null(1, L'\0');
    EXPECT_NEAR(font.Width(L"a") + font.Width(null) + font.Width(L"b"), font.Width(L"a" + null + L"b"), 2);
}

TEST(Font, AMillionCharactersAreAMillionTimesAsWide) {
    const Selected font(1000, L"Liberation Sans");
    const double thousand = font.Width(std::wstring(1000, L'm'));
    EXPECT_NEAR(1000.0 * thousand, font.Width(std::wstring(1'000'000, L'm')), 1000);
}

TEST(Font, StylesOfTheFaceHaveTheirOwnWidths) {
    const int regular = Selected(100'000, L"Liberation Sans").Width(L"soundings");
    EXPECT_GT(Selected(100'000, L"Liberation Sans", FW_BOLD).Width(L"soundings"), regular + 1000);
    EXPECT_EQ(regular, Selected(100'000, L"Liberation Sans", 550).Width(L"soundings"));
    EXPECT_GT(Selected(100'000, L"Liberation Sans", 551).Width(L"soundings"), regular + 1000);
}

TEST(Font, EmboldeningAddsAPixelToEachCharacter) {
    for (const int height : {2000, 10'000, 100'000}) {
        const Selected regular(height, L"Droid Sans Fallback");
        const Selected bold(height, L"Droid Sans Fallback", FW_BOLD);
        for (const std::wstring text : {L"\u6C34", L"\u6C34\u6DF1", L"\u6C34\u6DF1\u6C34\u6DF1\u6C34"})
            EXPECT_NEAR(static_cast<double>(text.size()) * PIXEL, bold.Width(text) - regular.Width(text),
                        1.5);
        EXPECT_EQ(regular.Metrics().otmTextMetrics.tmHeight, bold.Metrics().otmTextMetrics.tmHeight);
        EXPECT_EQ(700, bold.Metrics().otmTextMetrics.tmWeight);
        EXPECT_EQ(0x20u, bold.Metrics().otmfsSelection & 0x20u);
    }
}

TEST(Font, SlantingAndLinesChangeNoWidth) {
    const Selected regular(10'000, L"Droid Sans Fallback");
    const Selected slanted(10'000, L"Droid Sans Fallback", FW_NORMAL, true);
    const Selected lined(10'000, L"Droid Sans Fallback", FW_NORMAL, false, true, true);
    const wchar_t* const text = L"\u6C34\u6DF1";
    EXPECT_EQ(regular.dc.GetTextExtent(text), slanted.dc.GetTextExtent(text));
    EXPECT_EQ(regular.dc.GetTextExtent(text), lined.dc.GetTextExtent(text));
    EXPECT_NE(0, slanted.Metrics().otmTextMetrics.tmItalic);
    EXPECT_EQ(0, regular.Metrics().otmTextMetrics.tmItalic);
    EXPECT_NE(0, lined.Metrics().otmTextMetrics.tmUnderlined);
    EXPECT_NE(0, lined.Metrics().otmTextMetrics.tmStruckOut);
}

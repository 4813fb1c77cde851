// SPDX-License-Identifier: MIT
// What a font that fails to measure costs the others: the library's calls for contexts and fonts come here,
// and go on to the system.

#include "UtilityDLL/text/private/MeasuringFont.h"
#include "tests/support/win32/Import.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <windows.h>

namespace {

int contexts = 0;
int fonts = 0;
HDC lastContext = nullptr;

HDC WINAPI CountedDC(LPCWSTR driver, LPCWSTR device, LPCWSTR output, const DEVMODEW* mode) {
    ++contexts;
    return lastContext = CreateDCW(driver, device, output, mode);
}

HFONT WINAPI CountedFont(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                         DWORD underline, DWORD strikeOut, DWORD charSet, DWORD precision, DWORD clipping,
                         DWORD quality, DWORD pitch, LPCWSTR face) {
    ++fonts;
    return CreateFontW(height, width, escapement, orientation, weight, italic, underline, strikeOut, charSet,
                       precision, clipping, quality, pitch, face);
}

/// Counts, in a thread that has measured nothing yet.
template <typename Function> void Counted(Function measure) {
    const ULONG_PTR usualDC = ReplaceImport("CreateDCW", reinterpret_cast<ULONG_PTR>(&CountedDC));
    const ULONG_PTR usualFont = ReplaceImport("CreateFontW", reinterpret_cast<ULONG_PTR>(&CountedFont));
    ASSERT_NE(0u, usualDC);
    ASSERT_NE(0u, usualFont);
    contexts = fonts = 0;
    std::thread(measure).join();
    ReplaceImport("CreateDCW", usualDC);
    ReplaceImport("CreateFontW", usualFont);
}

constexpr int kStyles = 10;

MeasuringFont Font(int style) { return {1000 + style, false, false, false, L"Liberation Sans"}; }

void MeasureAll() {
    for (int i = 0; i < kStyles; ++i) EXPECT_GT(Font(i).GetTextExtent(L"abc").cx, 0) << i;
}

} // namespace

TEST(MeasuringFont_Failure, OfAStyleCostsThatStyleAlone) {
    Counted([] {
        MeasureAll();
        EXPECT_EQ(1, contexts);
        EXPECT_EQ(kStyles, fonts);
        OUTLINETEXTMETRICW metrics = {};
        ASSERT_EQ(0u, Font(3).GetOutlineTextMetricsW(0, &metrics)); // as one without outlines
        MeasureAll();
        EXPECT_EQ(1, contexts);
        EXPECT_EQ(kStyles + 1, fonts);
    });
}

TEST(MeasuringFont_Failure, OfTheContextMakesAnother) {
    Counted([] {
        const MeasuringFont old = Font(0);
        MeasureAll();
        ASSERT_TRUE(DeleteDC(lastContext));
        EXPECT_EQ(0, Font(1).GetTextExtent(L"abc").cx);
        MeasureAll();
        EXPECT_EQ(2, contexts);
        EXPECT_EQ(2 * kStyles, fonts);
        EXPECT_EQ(0, old.GetTextExtent(L"abc").cx); // is of the first context, and leaves the second alone
        MeasureAll();
        EXPECT_EQ(2, contexts);
        EXPECT_EQ(2 * kStyles, fonts);
    });
}

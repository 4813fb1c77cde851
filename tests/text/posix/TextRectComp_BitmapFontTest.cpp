// SPDX-License-Identifier: MIT
// A font without outlines where there is no other.

#include "Framework/device/DC.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "tests/Framework/posix/DeviceTestFont.h"
#include "tests/text/posix/NothingMeasured.h"
#include "tests/text/posix/OnlyFont.h"

#include <gtest/gtest.h>

TEST(TextRectComp_BitmapFont, HasTheFactorZeroAndRectanglesWithoutSize) {
    const OnlyFont only("bitmap.bdf", BitmapFont("Test"));
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    int families = 0;
    const FONTENUMPROCW count = [](const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM counted) {
        EXPECT_EQ(std::wstring(L"Test"), font->lfFaceName);
        EXPECT_NE(0u, type & RASTER_FONTTYPE);
        ++*reinterpret_cast<int*>(counted); // NOLINT(performance-no-int-to-ptr): it is one
        return 1;
    };
    LOGFONTW all = {};
    all.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExW(dc.m_hDC, &all, count, reinterpret_cast<LPARAM>(&families), 0);
    ASSERT_EQ(1, families);

    for (const wchar_t* const face : {L"Test", L"Arial"}) {
        TextInfo style;
        style.SetFont(face);
        EXPECT_EQ(0.0f, TextHeightFactComp::Get()(style));
        EXPECT_EQ(0u, TextHeightFactComp::Get().GetMetrics(style).otmSize);
        ExpectNothingMeasured(style);
    }
}

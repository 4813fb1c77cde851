// SPDX-License-Identifier: MIT
// A host of wide text, with the header of Windows before the library's.

#define UNICODE
#define _UNICODE
#include <windows.h>

#include "Framework/device/DC.h"
#include "UtilityDLL/text/GDIMapper.h"
#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/GDISelector.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"

#include <gtest/gtest.h>

TEST(GDISelector_UnicodeHost, ObjectsOfTheSystemAndOfTheLibraryMeet) {
    CDC dc;
    dc.m_hDC = CreateDC(TEXT("DISPLAY"), nullptr, nullptr, nullptr); // the context is the library's now
    ASSERT_TRUE(dc.m_hDC);
    CFont font;
    ASSERT_TRUE(font.CreateFontW(1000, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_ONLY_PRECIS,
                                 CLIP_LH_ANGLES, PROOF_QUALITY, 0, TEXT("Liberation Serif")));
    const GDISelector selected(&dc, font);
    wchar_t face[LF_FACESIZE];
    EXPECT_GT(GetTextFace(dc.m_hDC, LF_FACESIZE, face), 0);
    EXPECT_STREQ(L"Liberation Serif", face);
    SIZE extent;
    EXPECT_TRUE(GetTextExtentPoint32(dc.m_hDC, TEXT("abc"), 3, &extent));
    EXPECT_EQ((CSize{static_cast<int>(extent.cx), static_cast<int>(extent.cy)}), dc.GetTextExtent(L"abc"));
    TEXTMETRIC metrics;
    EXPECT_TRUE(GetTextMetrics(dc.m_hDC, &metrics));
    OUTLINETEXTMETRICW outline;
    EXPECT_EQ(sizeof outline, dc.GetOutlineTextMetricsW(sizeof outline, &outline));
    EXPECT_EQ(metrics.tmHeight, outline.otmTextMetrics.tmHeight);
}

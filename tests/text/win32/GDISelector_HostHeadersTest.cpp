// SPDX-License-Identifier: MIT
// The header of Windows after the library's: it makes macros of names of the device interface.

#include "Framework/device/DC.h"
#include "UtilityDLL/text/GDIMapper.h"
#include "UtilityDLL/text/GDIScaleFactor.h"
#include "UtilityDLL/text/GDISelector.h"
#include "UtilityDLL/text/TextHeightFactComp.h"
#include "UtilityDLL/text/TextRectComp.h"

#include <windows.h>

#include <gtest/gtest.h>

#if !defined(CreateFont) || defined(UNICODE)
#error "nothing is tested: the header of Windows makes no macro for narrow text"
#endif

TEST(GDISelector_HostHeaders, ObjectsOfTheSystemAndOfTheLibraryMeet) {
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    dc.SetMapMode(MM_HIMETRIC);
    const HFONT own = CreateFont(1000, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, ANSI_CHARSET,
                                 OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0, "Liberation Serif");
    {
        const GDISelector selected(&dc, own);
        EXPECT_EQ(own, GetCurrentObject(dc.m_hDC, OBJ_FONT));
        EXPECT_EQ(CString(L"Liberation Serif"), dc.GetTextFaceW());
        char face[LF_FACESIZE];
        EXPECT_GT(GetTextFace(dc.m_hDC, LF_FACESIZE, face), 0);
        EXPECT_STREQ("Liberation Serif", face);
    }
    EXPECT_EQ(GetStockObject(SYSTEM_FONT), GetCurrentObject(dc.m_hDC, OBJ_FONT));
    EXPECT_TRUE(DeleteObject(own));
}

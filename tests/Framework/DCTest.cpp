// SPDX-License-Identifier: MIT
#include "Framework/device/DC.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

class DC : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr)); }

    CDC m_dc;
};

// Of a font that is measured in the mode that the context has. The cell is high enough for pixels not to
// count.
CSize ExtentIn(CDC& dc, int height, const wchar_t* text) {
    CFont font;
    EXPECT_TRUE(font.CreateFontW(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                                 PROOF_QUALITY, 0, L"Liberation Sans"));
    CGdiObject* const before = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
    EXPECT_TRUE(before);
    const CSize extent = dc.GetTextExtent(text);
    if (before) CDC::SelectGdiObject(dc.m_hDC, before->m_hObject);
    return extent;
}

} // namespace

TEST_F(DC, IsMadeForTheDisplayAlone) {
    for (const wchar_t* const driver : {static_cast<const wchar_t*>(nullptr), L"", L"NODRIVER"}) {
        CDC other;
        EXPECT_FALSE(other.CreateDCW(driver, nullptr, nullptr));
        EXPECT_FALSE(other.m_hDC);
    }
    CDC other;
    EXPECT_TRUE(other.CreateDCW(L"Display", L"a device, which does not count", nullptr));
}

TEST_F(DC, IsMadeOnce) {
    const HDC before = m_dc.m_hDC;
    EXPECT_FALSE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    EXPECT_EQ(before, m_dc.m_hDC);
}

TEST_F(DC, IsMadeAgainOnceItIsDeleted) {
    EXPECT_TRUE(m_dc.DeleteDC());
    EXPECT_FALSE(m_dc.m_hDC);
    EXPECT_FALSE(m_dc.DeleteDC());
    EXPECT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
}

TEST_F(DC, IsGoneWithItsObject) {
    HDC handle;
    {
        CDC other;
        ASSERT_TRUE(other.CreateDCW(L"DISPLAY", nullptr, nullptr));
        handle = other.m_hDC;
        EXPECT_EQ(MM_TEXT, ::GetMapMode(handle));
    }
    EXPECT_EQ(0, ::GetMapMode(handle));
    EXPECT_FALSE(::DeleteDC(handle));
}

TEST(NoDC, AnswersNothing) {
    CDC none;
    EXPECT_FALSE(none.DeleteDC());
    EXPECT_EQ(0, none.SetMapMode(MM_HIMETRIC));
    EXPECT_EQ(0, none.GetMapMode());
    EXPECT_EQ(CSize(), none.SetWindowExt(5, 6));
    EXPECT_EQ(CSize(), none.SetViewportExt(5, 6));
    EXPECT_EQ(0, none.GetDeviceCaps(HORZRES));
    EXPECT_FALSE(none.SelectStockObject(SYSTEM_FONT));
    EXPECT_FALSE(CDC::SelectGdiObject(nullptr, ::GetStockObject(SYSTEM_FONT)));
    OUTLINETEXTMETRICW metrics = {};
    EXPECT_EQ(0u, none.GetOutlineTextMetricsW(sizeof metrics, &metrics));
    EXPECT_EQ(CSize(), none.GetTextExtent(L"abc"));
    EXPECT_TRUE(none.GetTextFaceW().IsEmpty());
    EXPECT_FALSE(none.FillRect({0, 0, 9, 9}, CBrush(0)));
    EXPECT_FALSE(none.FrameRect({0, 0, 9, 9}, CBrush(0)));
    EXPECT_FALSE(none.TextOutW(0, 0, L"abc"));
    EXPECT_EQ(CLR_INVALID, none.SetTextColor(1));
    EXPECT_EQ(CLR_INVALID, none.SetBkColor(1));
}

TEST_F(DC, WritesBlackOnWhiteUntilItIsToldOtherwise) {
    EXPECT_EQ(0u, m_dc.SetTextColor(0x112233));
    EXPECT_EQ(0x112233u, m_dc.SetTextColor(0));
    EXPECT_EQ(0xFFFFFFu, m_dc.SetBkColor(0x445566));
    EXPECT_EQ(0x445566u, m_dc.SetBkColor(0xFFFFFF));
}

TEST_F(DC, IsAttachedUntilItIsDetached) {
    CDC other;
    EXPECT_EQ(nullptr, other.Detach());
    other.Attach(m_dc.m_hDC);
    EXPECT_EQ(MM_TEXT, other.GetMapMode());
    EXPECT_EQ(m_dc.m_hDC, other.Detach());
    EXPECT_EQ(nullptr, other.m_hDC);
    EXPECT_EQ(MM_TEXT, m_dc.GetMapMode());
}

TEST_F(DC, BeginsInPixelsAndTellsTheModeBefore) {
    EXPECT_EQ(MM_TEXT, m_dc.GetMapMode());
    EXPECT_EQ(MM_TEXT, m_dc.SetMapMode(MM_HIMETRIC));
    EXPECT_EQ(MM_HIMETRIC, m_dc.SetMapMode(MM_ISOTROPIC));
    EXPECT_EQ(MM_ISOTROPIC, m_dc.GetMapMode());
    for (const int none : {0, -1, 9}) {
        EXPECT_EQ(0, m_dc.SetMapMode(none));
        EXPECT_EQ(MM_ISOTROPIC, m_dc.GetMapMode());
    }
}

TEST_F(DC, FixedModesKeepTheirExtents) {
    EXPECT_EQ((CSize{1, 1}), m_dc.SetWindowExt(100, 200));
    EXPECT_EQ((CSize{1, 1}), m_dc.SetWindowExt(1, 1));
    EXPECT_EQ((CSize{1, 1}), m_dc.SetViewportExt(100, 200));
    EXPECT_EQ((CSize{1, 1}), m_dc.SetViewportExt(1, 1));
    m_dc.SetMapMode(MM_HIMETRIC);
    const CSize window{100 * m_dc.GetDeviceCaps(HORZSIZE), 100 * m_dc.GetDeviceCaps(VERTSIZE)};
    const CSize viewport{m_dc.GetDeviceCaps(HORZRES), -m_dc.GetDeviceCaps(VERTRES)};
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(window, m_dc.SetWindowExt(3, 4));
        EXPECT_EQ(viewport, m_dc.SetViewportExt(5, 6));
    }
}

TEST_F(DC, TheIsotropicModeTakesExtentsOtherThanZero) {
    m_dc.SetMapMode(MM_ISOTROPIC);
    m_dc.SetWindowExt(123, 456);
    EXPECT_EQ((CSize{123, 456}), m_dc.SetWindowExt(0, 5));
    EXPECT_EQ((CSize{123, 456}), m_dc.SetWindowExt(5, 0));
    EXPECT_EQ((CSize{123, 456}), m_dc.SetWindowExt(7, 8));
    EXPECT_EQ((CSize{7, 8}), m_dc.SetWindowExt(9, 9));
}

TEST_F(DC, KnowsItsSizes) {
    for (const int index : {HORZSIZE, VERTSIZE, HORZRES, VERTRES, LOGPIXELSX, LOGPIXELSY})
        EXPECT_GT(m_dc.GetDeviceCaps(index), 0) << index;
    EXPECT_EQ(0, m_dc.GetDeviceCaps(12345));
}

TEST_F(DC, AModeThatIsMadeByHandMeasuresLikeTheOneThatThereIs) {
    m_dc.SetMapMode(MM_HIMETRIC);
    const CSize expected = ExtentIn(m_dc, 100'000, L"Sounding");
    EXPECT_GT(expected.cx, 0);
    m_dc.SetMapMode(MM_ISOTROPIC);
    m_dc.SetWindowExt(m_dc.GetDeviceCaps(HORZSIZE) * 1000, m_dc.GetDeviceCaps(VERTSIZE) * 1000);
    m_dc.SetViewportExt(m_dc.GetDeviceCaps(HORZRES), -m_dc.GetDeviceCaps(VERTRES));
    const CSize tenfold = ExtentIn(m_dc, 1'000'000, L"Sounding");
    EXPECT_NEAR(10.0 * expected.cx, tenfold.cx, 0.005 * tenfold.cx);
    EXPECT_NEAR(10.0 * expected.cy, tenfold.cy, 0.005 * tenfold.cy);
}

TEST_F(DC, AStockObjectTakesTheTurnOfItsKind) {
    CGdiObject* const font = m_dc.SelectStockObject(DEFAULT_GUI_FONT);
    ASSERT_TRUE(font);
    EXPECT_EQ(::GetStockObject(SYSTEM_FONT), font->m_hObject);
    EXPECT_EQ(::GetStockObject(DEFAULT_GUI_FONT), m_dc.SelectStockObject(SYSTEM_FONT)->m_hObject);
    CGdiObject* const brush = m_dc.SelectStockObject(NULL_BRUSH);
    ASSERT_TRUE(brush);
    EXPECT_EQ(::GetStockObject(WHITE_BRUSH), brush->m_hObject);
    EXPECT_FALSE(m_dc.SelectStockObject(-1));
    EXPECT_FALSE(m_dc.SelectStockObject(9));
    EXPECT_FALSE(m_dc.SelectStockObject(1000));
    EXPECT_EQ(::GetStockObject(SYSTEM_FONT), m_dc.SelectStockObject(SYSTEM_FONT)->m_hObject);
}

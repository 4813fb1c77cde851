// SPDX-License-Identifier: MIT
#include "Framework/device/GdiObject.h"

#include "Framework/device/DC.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

class GdiObject : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        ASSERT_TRUE(Make(m_font));
    }

    static bool Make(CFont& font) {
        return font.CreateFontW(100, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                                PROOF_QUALITY, 0, L"Liberation Sans");
    }
    // Selects the object and the one from before again.
    bool IsSelectable(HGDIOBJ object) const {
        CGdiObject* const before = CDC::SelectGdiObject(m_dc.m_hDC, object);
        if (before) CDC::SelectGdiObject(m_dc.m_hDC, before->m_hObject);
        return before != nullptr;
    }

    CDC m_dc;
    CFont m_font;
};

} // namespace

TEST_F(GdiObject, OfAHandleIsTheSameEachTime) {
    EXPECT_FALSE(CGdiObject::FromHandle(nullptr));
    CGdiObject* const object = CGdiObject::FromHandle(m_font.m_hObject);
    ASSERT_TRUE(object);
    EXPECT_EQ(m_font.m_hObject, object->m_hObject);
    EXPECT_EQ(object, CGdiObject::FromHandle(m_font.m_hObject));
    CFont other;
    ASSERT_TRUE(Make(other));
    EXPECT_NE(object, CGdiObject::FromHandle(other.m_hObject));
}

TEST_F(GdiObject, OfAHandleLeavesItToItsOwner) {
    std::thread([this] { EXPECT_TRUE(CGdiObject::FromHandle(m_font.m_hObject)); }).join();
    EXPECT_TRUE(IsSelectable(m_font.m_hObject));
}

TEST_F(GdiObject, TellsWhatWasSelectedBefore) {
    const CGdiObject* const stock = CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject);
    ASSERT_TRUE(stock);
    EXPECT_EQ(::GetStockObject(SYSTEM_FONT), stock->m_hObject);
    const CGdiObject* const itself = CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject);
    ASSERT_TRUE(itself);
    EXPECT_EQ(m_font.m_hObject, itself->m_hObject);
    EXPECT_EQ(itself, CDC::SelectGdiObject(m_dc.m_hDC, stock->m_hObject));
}

TEST_F(GdiObject, IsDeletedOnce) {
    const HGDIOBJ handle = m_font.m_hObject;
    EXPECT_TRUE(m_font.DeleteObject());
    EXPECT_FALSE(m_font.m_hObject);
    EXPECT_FALSE(m_font.DeleteObject());
    EXPECT_FALSE(::DeleteObject(handle));
    EXPECT_FALSE(IsSelectable(handle));
    EXPECT_TRUE(Make(m_font));
}

TEST_F(GdiObject, DeletesWhatItOwnsWithIt) {
    HGDIOBJ handle;
    {
        CFont font;
        ASSERT_TRUE(Make(font));
        handle = font.m_hObject;
        EXPECT_TRUE(IsSelectable(handle));
    }
    EXPECT_FALSE(IsSelectable(handle));
}

TEST_F(GdiObject, ARefusedHandleLeavesTheSelectionAlone) {
    CDC other;
    ASSERT_TRUE(other.CreateDCW(L"DISPLAY", nullptr, nullptr));
    for (const HGDIOBJ none : {static_cast<HGDIOBJ>(nullptr), reinterpret_cast<HGDIOBJ>(0x1234),
                               static_cast<HGDIOBJ>(other.m_hDC)}) {
        EXPECT_FALSE(CDC::SelectGdiObject(m_dc.m_hDC, none));
        EXPECT_FALSE(CDC::SelectGdiObject(reinterpret_cast<HDC>(none == other.m_hDC ? nullptr : none),
                                          m_font.m_hObject));
    }
    EXPECT_EQ(CGdiObject::FromHandle(::GetStockObject(SYSTEM_FONT)),
              CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject));
}

TEST_F(GdiObject, ThatIsSelectedOutlivesItsDeletion) {
    const HGDIOBJ handle = m_font.m_hObject;
    CGdiObject* const stock = CDC::SelectGdiObject(m_dc.m_hDC, handle);
    ASSERT_TRUE(stock);
    const CSize extent = m_dc.GetTextExtent(L"abc");
    EXPECT_TRUE(m_font.DeleteObject());
    EXPECT_GT(extent.cx, 0);
    EXPECT_EQ(extent, m_dc.GetTextExtent(L"abc"));
    EXPECT_EQ(CString(L"Liberation Sans"), m_dc.GetTextFaceW());
    const CGdiObject* const before = CDC::SelectGdiObject(m_dc.m_hDC, stock->m_hObject);
    ASSERT_TRUE(before);
    EXPECT_EQ(handle, before->m_hObject);
    EXPECT_FALSE(IsSelectable(handle));
}

TEST_F(GdiObject, IsSelectedInTwoContextsAtOnceAndOutlivesThem) {
    {
        CDC other;
        ASSERT_TRUE(other.CreateDCW(L"DISPLAY", nullptr, nullptr));
        EXPECT_TRUE(CDC::SelectGdiObject(m_dc.m_hDC, m_font.m_hObject));
        EXPECT_TRUE(CDC::SelectGdiObject(other.m_hDC, m_font.m_hObject));
        EXPECT_EQ(m_dc.GetTextExtent(L"abc"), other.GetTextExtent(L"abc"));
    }
    EXPECT_TRUE(m_dc.DeleteDC());
    ASSERT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    EXPECT_TRUE(IsSelectable(m_font.m_hObject));
}

TEST_F(GdiObject, OfTheSystemIsNeverGone) {
    const HGDIOBJ stock = ::GetStockObject(SYSTEM_FONT);
    EXPECT_TRUE(::DeleteObject(stock));
    EXPECT_TRUE(::DeleteObject(stock));
    EXPECT_TRUE(IsSelectable(stock));
    EXPECT_EQ(stock, ::GetStockObject(SYSTEM_FONT));
}

TEST_F(GdiObject, ABrushIsMadeOnce) {
    CBrush brush(0x112233);
    const HGDIOBJ made = brush.m_hObject;
    ASSERT_TRUE(made);
    EXPECT_FALSE(brush.CreateSolidBrush(0));
    EXPECT_EQ(made, brush.m_hObject);
    EXPECT_EQ(DWORD{OBJ_BRUSH}, ::GetObjectType(made));
    EXPECT_TRUE(brush.DeleteObject());
    EXPECT_TRUE(brush.CreateSolidBrush(0));
}

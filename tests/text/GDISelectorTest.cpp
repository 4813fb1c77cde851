// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/GDISelector.h"

#include <gtest/gtest.h>
#include <memory>

namespace {

class GDISelectorTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
        m_first = Selected();
        ASSERT_NE(m_first, nullptr);
        Make(m_font, 1000);
        Make(m_other, 2000);
    }

    static void Make(CFont& font, int height) {
        ASSERT_TRUE(font.CreateFontW(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS,
                                     CLIP_LH_ANGLES, PROOF_QUALITY, 0, L"Liberation Sans"));
    }

    // The font that is selected into a context: what a selection returns, which is taken back at once.
    HGDIOBJ Selected() {
        CFont probe;
        Make(probe, 10);
        const CGdiObject* const selected = CDC::SelectGdiObject(m_dc.m_hDC, probe.m_hObject);
        if (!selected) return nullptr;
        CDC::SelectGdiObject(m_dc.m_hDC, selected->m_hObject);
        return selected->m_hObject;
    }

    CDC m_dc;
    CFont m_font;
    CFont m_other;
    HGDIOBJ m_first = nullptr; // what a new context has
};

TEST_F(GDISelectorTest, SelectsForAsLongAsItLives) {
    {
        const GDISelector selector(&m_dc, m_font);
        EXPECT_EQ(Selected(), m_font.m_hObject);
        EXPECT_GT(m_dc.GetTextExtent(L"abc").cx, 0);
    }
    EXPECT_EQ(Selected(), m_first);
}

TEST_F(GDISelectorTest, SelectsABareHandle) {
    {
        const GDISelector selector(&m_dc, static_cast<void*>(m_font.m_hObject));
        EXPECT_EQ(Selected(), m_font.m_hObject);
        EXPECT_TRUE(!selector);
    }
    EXPECT_EQ(Selected(), m_first);
    const GDISelector again(&m_dc, m_font); // it was not deleted
    EXPECT_EQ(Selected(), m_font.m_hObject);
}

TEST_F(GDISelectorTest, WhatWasSelectedBeforeMayGoMeanwhile) {
    auto before = std::make_unique<CFont>();
    Make(*before, 3000);
    CDC::SelectGdiObject(m_dc.m_hDC, before->m_hObject);
    {
        const GDISelector selector(&m_dc, m_font);
        before.reset();
        for (int i = 0; i < 3000; ++i) { // so many that the thread forgets objects that are gone
            CFont font;
            Make(font, 1000 + i);
            const GDISelector inner(&m_dc, static_cast<void*>(font.m_hObject));
        }
        EXPECT_EQ(Selected(), m_font.m_hObject);
    }
    CDC::SelectGdiObject(m_dc.m_hDC, m_first);
    EXPECT_EQ(Selected(), m_first);
}

// The reverse of what the operator says elsewhere.
TEST_F(GDISelectorTest, NegatesToTrueWhileThereIsSomethingToRestore) {
    EXPECT_TRUE(!GDISelector(&m_dc, m_font));
    EXPECT_TRUE(!GDISelector(&m_dc, m_font.m_hObject));
    EXPECT_FALSE(!GDISelector(&m_dc, NULL_BRUSH));
    CFont none;
    EXPECT_FALSE(!GDISelector(&m_dc, none));
}

TEST_F(GDISelectorTest, RestoresInTheReverseOrder) {
    {
        const GDISelector outer(&m_dc, m_font);
        {
            const GDISelector inner(&m_dc, m_other);
            EXPECT_EQ(Selected(), m_other.m_hObject);
            const GDISelector same(&m_dc, m_other);
            EXPECT_TRUE(!same);
        }
        EXPECT_EQ(Selected(), m_font.m_hObject);
    }
    EXPECT_EQ(Selected(), m_first);
}

TEST_F(GDISelectorTest, LeavesAStockObjectSelected) {
    {
        const GDISelector selector(&m_dc, m_font);
        const GDISelector stock(&m_dc, SYSTEM_FONT);
        EXPECT_FALSE(!stock);
        EXPECT_EQ(Selected(), GetStockObject(SYSTEM_FONT));
    }
    // That was what the outer one restored.
    EXPECT_EQ(Selected(), m_first);
    {
        const GDISelector stock(&m_dc, DEFAULT_GUI_FONT);
        EXPECT_EQ(Selected(), GetStockObject(DEFAULT_GUI_FONT));
    }
    EXPECT_EQ(Selected(), GetStockObject(DEFAULT_GUI_FONT));
}

TEST_F(GDISelectorTest, RestoresEachKindOfObjectByItself) {
    {
        const GDISelector font(&m_dc, m_font);
        const GDISelector brush(&m_dc, GetStockObject(NULL_BRUSH));
        EXPECT_TRUE(!brush);
        EXPECT_EQ(Selected(), m_font.m_hObject);
    }
    EXPECT_EQ(Selected(), m_first);
    const CGdiObject* const brush = m_dc.SelectStockObject(WHITE_BRUSH);
    ASSERT_NE(brush, nullptr);
    EXPECT_NE(brush->m_hObject, GetStockObject(NULL_BRUSH));
}

TEST_F(GDISelectorTest, SelectsNothingForNothing) {
    CFont none;
    CFont deleted;
    Make(deleted, 500);
    const HGDIOBJ handle = deleted.m_hObject;
    ASSERT_TRUE(deleted.DeleteObject());
    {
        const GDISelector nullHandle(&m_dc, nullptr);
        const GDISelector withoutHandle(&m_dc, none);
        const GDISelector withDeleted(&m_dc, deleted);
        const GDISelector ofDeleted(&m_dc, static_cast<void*>(handle));
        const GDISelector noStock(&m_dc, -1);
        const GDISelector noStockEither(&m_dc, 1000);
        EXPECT_FALSE(!nullHandle);
        EXPECT_FALSE(!withoutHandle);
        EXPECT_FALSE(!withDeleted);
        EXPECT_FALSE(!ofDeleted);
        EXPECT_FALSE(!noStock);
        EXPECT_EQ(Selected(), m_first);
    }
    EXPECT_EQ(Selected(), m_first);
}

TEST_F(GDISelectorTest, SelectsNothingWithoutAContext) {
    CDC none;
    CDC deleted;
    ASSERT_TRUE(deleted.CreateDCW(L"DISPLAY", nullptr, nullptr));
    ASSERT_TRUE(deleted.DeleteDC());
    for (CDC* const dc : {&none, &deleted}) {
        EXPECT_FALSE(!GDISelector(dc, m_font));
        EXPECT_FALSE(!GDISelector(dc, m_font.m_hObject));
        EXPECT_FALSE(!GDISelector(dc, SYSTEM_FONT));
    }
}

TEST_F(GDISelectorTest, RestoresNothingIntoAContextThatIsGone) {
    {
        const GDISelector selector(&m_dc, m_font);
        ASSERT_TRUE(m_dc.DeleteDC());
        EXPECT_TRUE(!selector);
    }
    ASSERT_TRUE(m_dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    const GDISelector again(&m_dc, m_font);
    EXPECT_EQ(Selected(), m_font.m_hObject);
}

TEST_F(GDISelectorTest, CannotRestoreAnObjectThatWasDeletedMeanwhile) {
    auto before = std::make_unique<CFont>();
    Make(*before, 500);
    ASSERT_NE(CDC::SelectGdiObject(m_dc.m_hDC, before->m_hObject), nullptr);
    {
        const GDISelector selector(&m_dc, m_font);
        EXPECT_TRUE(!selector);
        before.reset();
    }
    EXPECT_EQ(Selected(), m_font.m_hObject);
}

} // namespace

// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/MeasuringDevice.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>

namespace {

TEST(MeasuringDevice, HasHundredthsOfAMillimetreAtTheFixedFactor) {
    const MeasuringDevice device;
    ASSERT_NE(device.m_hDC, nullptr);
    EXPECT_EQ(device.GetMapMode(), MM_HIMETRIC);
}

TEST(MeasuringDevice, ScalesMillimetresByAnotherFactor) {
    MeasuringDevice device(250.0);
    EXPECT_EQ(device.GetMapMode(), MM_ISOTROPIC);
    const CSize window = device.SetWindowExt(1, 1);
    EXPECT_EQ(window.cx, device.GetDeviceCaps(HORZSIZE) * 250);
    EXPECT_EQ(window.cy, device.GetDeviceCaps(VERTSIZE) * 250);
}

TEST(MeasuringDevice, TakesWindowsThatDoNotFitWithoutHarm) {
    for (const double factor : {0.0, -1.0, 1e300, -1e300}) {
        const MeasuringDevice device(factor);
        EXPECT_EQ(device.GetMapMode(), MM_ISOTROPIC) << factor;
    }
}

// Both ways a font of the same logical height takes the same, up to the pixels of the display: of those, one
// is 26.46 units in the one mode and, at this factor, as many in the other.
TEST(MeasuringDevice, MeasuresTheSameAtEitherKindOfFactor) {
    const std::wstring text = L"Sounding 123.4";
    constexpr int kHeight = 40000;
    constexpr double kPixel = 26.46;
    struct Measures {
        explicit Measures(double factor, const std::wstring& text) {
            MeasuringDevice device(factor);
            CFont font;
            EXPECT_TRUE(font.CreateFontW(kHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS,
                                         CLIP_LH_ANGLES, PROOF_QUALITY, 0, L"Liberation Sans"));
            CGdiObject* const previous = CDC::SelectGdiObject(device.m_hDC, font.m_hObject);
            device.GetOutlineTextMetricsW(sizeof metrics, &metrics);
            extent = device.GetTextExtent(text);
            CDC::SelectGdiObject(device.m_hDC, previous->m_hObject);
        }
        OUTLINETEXTMETRICW metrics = {};
        CSize extent;
    };
    const Measures fixed(1000.0, text);
    const Measures scaled(100.0, text);
    EXPECT_NEAR(fixed.metrics.otmTextMetrics.tmHeight, kHeight, 3 * kPixel);
    EXPECT_NEAR(scaled.metrics.otmTextMetrics.tmHeight, fixed.metrics.otmTextMetrics.tmHeight, 3 * kPixel);
    EXPECT_NEAR(scaled.metrics.otmDescent, fixed.metrics.otmDescent, 2 * kPixel);
    EXPECT_NEAR(scaled.metrics.otmTextMetrics.tmInternalLeading,
                fixed.metrics.otmTextMetrics.tmInternalLeading, 3 * kPixel);
    EXPECT_NEAR(scaled.extent.cx, fixed.extent.cx, 0.003 * fixed.extent.cx);
    EXPECT_NEAR(scaled.extent.cy, fixed.extent.cy, 3 * kPixel);
}

TEST(CellPart, IsItsShareOfTheHeightTowardZero) {
    struct Row {
        int part, height, cellHeight, expected;
    };
    for (const Row& row : {
             Row{400, 1000, 1000, 400},
             Row{1, 999, 1000, 0},
             Row{-1, 1999, 1000, -1},
             Row{3, 7, -2, -10},
             Row{5, 5, 0, 0},                   // a cell without height
             Row{65536, 65536, 1000, 0},        // 2^32 has nothing left in 32 bits
             Row{32768, 65536, 1000, -2147483}, // 2^31 is the lowest number
             Row{65535, 65537, 1000, 0},        // 2^32 - 1 is -1
             Row{INT_MIN, 1, -1, INT_MIN},      // what does not fit wraps
             Row{INT_MAX, INT_MAX, INT_MAX, 0}, // 1 / 2147483647
             Row{INT_MIN, INT_MIN, INT_MIN, 0},
         }) {
        SCOPED_TRACE(::testing::Message() << row.part << ' ' << row.height << ' ' << row.cellHeight);
        TEXTMETRICW cell = {};
        cell.tmHeight = row.cellHeight;
        EXPECT_EQ(CellPart(row.part, row.height, cell), row.expected);
    }
}

} // namespace

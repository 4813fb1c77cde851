// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/private/MeasuringFont.h"

#include "UtilityDLL/text/private/MeasuringDevice.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Style {
    int height;
    bool isBold, isItalic, isUnderlined;
    std::wstring face;
};

const std::vector<Style> kStyles = {
    {2500, false, false, false, L"Liberation Sans"}, {2500, true, false, false, L"Liberation Sans"},
    {2500, false, true, false, L"Liberation Sans"},  {2500, false, false, true, L"Liberation Sans"},
    {2500, true, true, true, L"Liberation Sans"},    {5000, false, false, false, L"Liberation Sans"},
    {2500, false, false, false, L"Liberation Mono"}, {-2500, false, false, false, L"Liberation Sans"},
    {0, false, false, false, L"Liberation Sans"},    {2500, false, false, false, L""},
};

MeasuringFont Font(const Style& style) {
    return MeasuringFont(style.height, style.isBold, style.isItalic, style.isUnderlined, style.face);
}

CSize Extent(const Style& style, std::wstring_view text) { return Font(style).GetTextExtent(text); }

// On a context and with a font that nobody had before.
CSize FreshExtent(const Style& style, const std::wstring& text) {
    MeasuringDevice device;
    CFont font;
    font.CreateFontW(style.height, 0, 0, 0, style.isBold ? FW_BOLD : FW_NORMAL, style.isItalic,
                     style.isUnderlined, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0,
                     style.face.c_str());
    CGdiObject* const previous = CDC::SelectGdiObject(device.m_hDC, font.m_hObject);
    const CSize extent = device.GetTextExtent(text);
    CDC::SelectGdiObject(device.m_hDC, previous->m_hObject);
    return extent;
}

TEST(MeasuringFont, MeasuresAsAFreshFontDoesInWhateverOrder) {
    for (const wchar_t* const text : {L"", L"Sounding 123.4", L"WAVE", L"\x416\x3b1"})
        for (std::size_t step = 1; step <= kStyles.size(); ++step)
            for (std::size_t i = 0; i < 2 * kStyles.size(); ++i) {
                const Style& style = kStyles[i * step % kStyles.size()];
                ASSERT_EQ(Extent(style, text), FreshExtent(style, text)) << i * step % kStyles.size();
            }
}

TEST(MeasuringFont, MeasuresOnWhenVeryManyOthersWereMade) {
    const MeasuringFont first = Font(kStyles[0]);
    const CSize extent = first.GetTextExtent(L"abc");
    for (int height = 100; height < 1100; ++height)
        ASSERT_GT(MeasuringFont(height, false, false, false, L"Liberation Sans").GetTextExtent(L"a").cx, 0);
    EXPECT_EQ(first.GetTextExtent(L"abc"), extent);
    EXPECT_EQ(Extent(kStyles[0], L"abc"), extent);
    EXPECT_GT(extent.cx, 0);
}

TEST(MeasuringFont, MeasuresAPieceOfAText) {
    const std::wstring text = L"Sounding 123.4";
    const std::wstring_view piece = std::wstring_view(text).substr(2, 5);
    EXPECT_EQ(Extent(kStyles[0], piece), Extent(kStyles[0], std::wstring(piece)));
    EXPECT_LT(Extent(kStyles[0], piece).cx, Extent(kStyles[0], text).cx);
}

TEST(MeasuringFont, GivesTheOutlineMetrics) {
    OUTLINETEXTMETRICW metrics = {};
    EXPECT_GT(Font(kStyles[5]).GetOutlineTextMetricsW(sizeof metrics, &metrics), 0u);
    // Real ones round to pixels, of which one is 26.46 units.
    EXPECT_NEAR(metrics.otmTextMetrics.tmHeight, 5000, 3 * 26.46);
    EXPECT_EQ(Font(kStyles[5]).GetOutlineTextMetricsW(0, &metrics), 0u);
    EXPECT_GT(Font(kStyles[5]).GetTextExtent(L"abc").cx, 0); // a failure before does not matter
}

TEST(MeasuringFont, TakesAnyHeightAndName) {
    for (const int height : {2147483647, -2147483647 - 1, -1, 1, 0})
        for (const std::wstring& face : {std::wstring(), std::wstring(10000, L'x'), std::wstring(L"\0x", 2),
                                         std::wstring(L"No such face"), std::wstring(L"\xd800")}) {
            const MeasuringFont font(height, true, true, true, face);
            OUTLINETEXTMETRICW metrics = {};
            const UINT written = font.GetOutlineTextMetricsW(sizeof metrics, &metrics);
            const CSize extent = font.GetTextExtent(L"abc");
            if (height < -1 || height > 1) continue; // it is the system's whether there is such a font
            EXPECT_GT(written, 0u) << height;
            EXPECT_GT(extent.cx, 0) << height;
        }
}

TEST(MeasuringFont, BelongsToItsThread) {
    const CSize extent = Extent(kStyles[0], L"abc");
    std::vector<CSize> extents(4);
    std::vector<std::thread> threads;
    for (CSize& result : extents)
        threads.emplace_back([&result] {
            for (const Style& style : kStyles) Extent(style, L"Sounding 123.4");
            result = Extent(kStyles[0], L"abc");
        });
    for (std::thread& thread : threads) thread.join();
    for (const CSize& result : extents) EXPECT_EQ(result, extent);
}

// Of several at a time, so that one takes memory that another one gives back.
TEST(MeasuringFont, LetsEveryThreadThatMeasuredEnd) {
    const CSize extent = Extent(kStyles[0], L"abc");
    for (int round = 0; round < 30; ++round) {
        std::vector<CSize> extents(8);
        std::vector<std::thread> threads;
        for (CSize& result : extents)
            threads.emplace_back([&result] { result = Extent(kStyles[0], L"abc"); });
        for (std::thread& thread : threads) thread.join();
        for (const CSize& result : extents) ASSERT_EQ(result, extent) << round;
    }
}

} // namespace

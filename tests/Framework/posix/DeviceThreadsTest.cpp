// SPDX-License-Identifier: MIT
// The device interface, called by several threads at once.

#include "Framework/device/DC.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

int Width(const wchar_t* face, int height, int weight, const std::wstring& text) {
    CDC dc;
    EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    dc.SetMapMode(MM_HIMETRIC);
    CFont font;
    EXPECT_TRUE(font.CreateFontW(height, 0, 0, 0, weight, 0, 0, 0, 0, 0, 0, 0, 0, face));
    EXPECT_NE(nullptr, CDC::SelectGdiObject(dc.m_hDC, font.m_hObject));
    return dc.GetTextExtent(text).cx;
}

const wchar_t* const kFaces[] = {L"Liberation Sans", L"DejaVu Sans", L"Arial", L"No Such Family"};
const wchar_t* const kTexts[] = {L"Sounding 123.4", L"\u03A9\u0416\u0301", L"\u0633\u0644\u0627\u0645",
                                 L"\u6D77\u56F3 chart"};

std::vector<int> AllWidths() {
    std::vector<int> widths;
    for (int height = 100; height < 130; ++height)
        for (const wchar_t* const face : kFaces)
            for (const wchar_t* const text : kTexts)
                widths.push_back(Width(face, height, height % 2 == 0 ? FW_NORMAL : FW_BOLD, text));
    return widths;
}

} // namespace

TEST(DeviceThreads, AllMeasureTheSame) {
    std::vector<std::vector<int>> widths(4);
    std::vector<std::thread> threads;
    threads.reserve(widths.size());
    for (std::vector<int>& each : widths) threads.emplace_back([&each] { each = AllWidths(); });
    for (std::thread& thread : threads) thread.join();
    const std::vector<int> alone = AllWidths();
    for (const std::vector<int>& each : widths) EXPECT_EQ(alone, each);
}

TEST(DeviceThreads, HandleIsDeletedByOneOfThem) {
    for (int round = 0; round < 200; ++round) {
        const HDC dc = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        const HFONT font = CreateFontW(100, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, L"Liberation Sans");
        std::atomic<int> fonts = 0, contexts = 0;
        std::vector<std::thread> threads;
        threads.reserve(3);
        for (int i = 0; i < 3; ++i)
            threads.emplace_back([&] {
                SelectObject(dc, font);
                SIZE extent = {};
                GetTextExtentPoint32W(dc, L"text", 4, &extent);
                contexts += DeleteDC(dc);
                fonts += DeleteObject(font);
            });
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(1, contexts);
        EXPECT_GE(fonts, 1); // while it is selected, deleting it again is no failure
        EXPECT_EQ(0u, GetObjectType(font));
        EXPECT_EQ(0u, GetObjectType(dc));
    }
}

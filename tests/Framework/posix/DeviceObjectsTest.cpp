// SPDX-License-Identifier: MIT
// Handles of the device interface: numbers that are never given twice.

#include "Framework/device/DC.h"
#include "tests/support/Resources.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

HFONT MakeFont() { return CreateFontW(100, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, L"Liberation Sans"); }

} // namespace

TEST(DeviceObjects, HandleIsGivenOnce) {
    std::set<void*> handles;
    for (int i = 0; i < 10'000; ++i) {
        const HFONT font = MakeFont();
        const HDC dc = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
        EXPECT_TRUE(handles.insert(font).second);
        EXPECT_TRUE(handles.insert(dc).second);
        EXPECT_TRUE(DeleteObject(font));
        EXPECT_TRUE(DeleteDC(dc));
    }
    for (void* const handle : handles) {
        EXPECT_EQ(0u, GetObjectType(handle));
        EXPECT_FALSE(DeleteObject(handle));
        EXPECT_FALSE(DeleteDC(static_cast<HDC>(handle)));
    }
}

TEST(DeviceObjects, NumberThatIsNoHandleIsRefused) {
    const HDC dc = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    const HFONT font = MakeFont();
    for (const std::uintptr_t number :
         {std::uintptr_t{0}, std::uintptr_t{1}, std::uintptr_t{3}, std::uintptr_t{0x1000}, ~std::uintptr_t{0},
          reinterpret_cast<std::uintptr_t>(&dc), reinterpret_cast<std::uintptr_t>(font) + 3,
          reinterpret_cast<std::uintptr_t>(font) ^ (std::uintptr_t{1} << 50)}) {
        void* const handle = reinterpret_cast<void*>(number); // NOLINT(performance-no-int-to-ptr): no address
        EXPECT_EQ(0u, GetObjectType(handle)) << number;
        EXPECT_FALSE(DeleteObject(handle));
        EXPECT_EQ(nullptr, SelectObject(dc, handle));
        EXPECT_EQ(nullptr, SelectObject(static_cast<HDC>(handle), font));
    }
    EXPECT_EQ(DWORD{OBJ_FONT}, GetObjectType(font));
    EXPECT_EQ(DWORD{OBJ_DC}, GetObjectType(dc));
    EXPECT_EQ(DWORD{OBJ_PEN}, GetObjectType(GetStockObject(BLACK_PEN)));
    EXPECT_EQ(DWORD{OBJ_BRUSH}, GetObjectType(GetStockObject(NULL_BRUSH)));
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_TRUE(DeleteObject(font));
}

TEST(DeviceObjects, ThereIsAnEndToThem) {
    std::vector<HDC> contexts;
    while (const HDC dc = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr)) contexts.push_back(dc);
    EXPECT_EQ(std::size_t{1} << 20, contexts.size());
    for (const HDC dc : contexts) EXPECT_TRUE(DeleteDC(dc));
    EXPECT_TRUE(CDC().CreateDCW(L"DISPLAY", nullptr, nullptr));
}

TEST(DeviceObjects, ObjectsOfHandlesOfOthersAreForgotten) {
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    CFont kept;
    kept.CreateFontW(100, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, L"Liberation Sans");
    CGdiObject* const keptObject = CGdiObject::FromHandle(kept.m_hObject);
    std::size_t heap = 0;
    for (int i = 0; i < 50'000; ++i) {
        CFont font;
        font.CreateFontW(100, 0, 0, 0, 400, 0, 0, 0, 0, 0, 0, 0, 0, L"Liberation Sans");
        CGdiObject* const previous = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
        const CGdiObject* const again = CDC::SelectGdiObject(dc.m_hDC, previous->m_hObject);
        ASSERT_EQ(font.m_hObject, again->m_hObject);
        if (i == 5'000) heap = ResourcesInUse().heap;
    }
    EXPECT_LT(ResourcesInUse().heap, heap + 100'000);
    EXPECT_EQ(keptObject, CGdiObject::FromHandle(kept.m_hObject));
    EXPECT_EQ(kept.m_hObject, keptObject->m_hObject);
}

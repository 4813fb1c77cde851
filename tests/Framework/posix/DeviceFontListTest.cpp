// SPDX-License-Identifier: MIT
// The installed fonts, as they are enumerated.

#include "Framework/device/DC.h"
#include "VelmBase/WideString.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Enumerated {
    std::wstring family;
    int weight;
    bool isItalic;
    bool isFixed;
    DWORD type;
};

int Keep(const LOGFONTW* font, const TEXTMETRICW* metrics, DWORD type, LPARAM list) {
    EXPECT_EQ(font->lfWeight, metrics->tmWeight);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
    reinterpret_cast<std::vector<Enumerated>*>(list)->push_back(
        {font->lfFaceName, font->lfWeight, font->lfItalic != 0,
         (metrics->tmPitchAndFamily & TMPF_FIXED_PITCH) == 0, type});
    return 7;
}

std::vector<Enumerated> Enumerate(const std::wstring& family) {
    CDC dc;
    EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    LOGFONTW wanted = {};
    family.copy(wanted.lfFaceName, LF_FACESIZE - 1);
    std::vector<Enumerated> list;
    EnumFontFamiliesExW(dc.m_hDC, &wanted, Keep, reinterpret_cast<LPARAM>(&list), 0);
    return list;
}

} // namespace

TEST(DeviceFontList, EachFamilyComesOnceInTheOrderOfNames) {
    const std::vector<Enumerated> families = Enumerate(L"");
    const auto isBefore = [](const Enumerated& a, const Enumerated& b) {
        return SmallerW(a.family, b.family);
    };
    EXPECT_TRUE(std::is_sorted(families.begin(), families.end(), isBefore));
    for (const wchar_t* const name : {L"Liberation Sans", L"Liberation Mono", L"DejaVu Sans"}) {
        const auto isNamed = [&](const Enumerated& each) { return each.family == name; };
        ASSERT_EQ(1, std::count_if(families.begin(), families.end(), isNamed)) << ToUtf8(name);
        const Enumerated& family = *std::find_if(families.begin(), families.end(), isNamed);
        EXPECT_EQ(400, family.weight);
        EXPECT_FALSE(family.isItalic);
        EXPECT_EQ(family.family == L"Liberation Mono", family.isFixed);
        EXPECT_EQ(DWORD{TRUETYPE_FONTTYPE}, family.type);
    }
}

TEST(DeviceFontList, StylesOfAFamilyComeWhateverTheCaseOfItsName) {
    const std::vector<Enumerated> styles = Enumerate(L"LIBERATION SANS");
    ASSERT_EQ(4u, styles.size());
    const int weights[] = {400, 700, 400, 700};
    for (std::size_t i = 0; i < styles.size(); ++i) {
        EXPECT_EQ(L"Liberation Sans", styles[i].family);
        EXPECT_EQ(weights[i], styles[i].weight);
        EXPECT_EQ(i >= 2, styles[i].isItalic);
    }
    EXPECT_TRUE(Enumerate(L"No Such Family At All").empty());
}

TEST(DeviceFontList, CallbackEndsItAndItsLastResultIsReturned) {
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    int calls = 0;
    const FONTENUMPROCW stop = [](const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM count) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
        return ++*reinterpret_cast<int*>(count) == 2 ? 0 : 5;
    };
    EXPECT_EQ(0, EnumFontFamiliesExW(dc.m_hDC, nullptr, stop, reinterpret_cast<LPARAM>(&calls), 0));
    EXPECT_EQ(2, calls);
    std::vector<Enumerated> list;
    const auto parameter = reinterpret_cast<LPARAM>(&list);
    EXPECT_EQ(7, EnumFontFamiliesExW(dc.m_hDC, nullptr, Keep, parameter, 0));
    LOGFONTW missing = {};
    std::wstring(L"No Such Family At All").copy(missing.lfFaceName, LF_FACESIZE);
    EXPECT_EQ(1, EnumFontFamiliesExW(dc.m_hDC, &missing, Keep, parameter, 0));
}

TEST(DeviceFontList, NothingIsEnumeratedForWhatIsNoContext) {
    std::vector<Enumerated> list;
    EXPECT_EQ(0, EnumFontFamiliesExW(nullptr, nullptr, Keep, reinterpret_cast<LPARAM>(&list), 0));
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    EXPECT_EQ(0, EnumFontFamiliesExW(dc.m_hDC, nullptr, nullptr, 0, 0));
    EXPECT_TRUE(list.empty());
}

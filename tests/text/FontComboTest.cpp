// SPDX-License-Identifier: MIT
// The list as a program sees it; FontCombo_ListTest looks at what the user has.

#include "UtilityDLL/text/FontCombo.h"

#include "Framework/device/DC.h"
#include "VelmBase/WideString.h"
#include "tests/support/DialogDriver.h" // not where controls have no backend yet
#include "tests/support/EventLoop.h"
#include "tests/support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

std::vector<std::wstring> Texts(const CComboBox& box) {
    std::vector<std::wstring> texts;
    texts.reserve(static_cast<std::size_t>(box.GetCount()));
    for (int i = 0; i < box.GetCount(); ++i) texts.push_back(box.GetLBText(i).String());
    return texts;
}

// The TrueType faces as the display has them enumerated, without a control.
std::vector<std::wstring> InstalledFaces() {
    CDC dc;
    EXPECT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    LOGFONTW all = {};
    std::vector<std::wstring> faces;
    const FONTENUMPROCW keep = [](const LOGFONTW* font, const TEXTMETRICW*, DWORD type, LPARAM list) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): what the caller handed over
        if (type == 4) reinterpret_cast<std::vector<std::wstring>*>(list)->push_back(font->lfFaceName);
        return 1;
    };
    EnumFontFamiliesExW(dc.m_hDC, &all, keep, reinterpret_cast<LPARAM>(&faces), 0);
    return faces;
}

int Hand(FontCombo& combo, const std::wstring& face, unsigned long type) {
    LOGFONTW font = {};
    face.copy(font.lfFaceName, LF_FACESIZE);
    const TEXTMETRICW metrics = {};
    return FontCombo::HandleFonts(&font, &metrics, type, reinterpret_cast<std::intptr_t>(&combo));
}

} // namespace

TEST(FontCombo, OffersTheInstalledTrueTypeFaces) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    EXPECT_EQ(0, combo.GetCount());
    combo.FillCombo();
    const std::vector<std::wstring> faces = Texts(combo);
    EXPECT_EQ(InstalledFaces(), faces);
    for (const wchar_t* const face : {L"Liberation Sans", L"DejaVu Sans"})
        EXPECT_EQ(1, std::count(faces.begin(), faces.end(), face)) << ToUtf8(face);
}

TEST(FontCombo, FontsOfTheFacesAreMadeByTheirNames) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    combo.FillCombo();
    CDC dc;
    ASSERT_TRUE(dc.CreateDCW(L"DISPLAY", nullptr, nullptr));
    for (const std::wstring& face : Texts(combo)) {
        CFont font;
        font.CreateFontW(20, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES,
                         PROOF_QUALITY, 0, face.c_str());
        CGdiObject* const before = CDC::SelectGdiObject(dc.m_hDC, font.m_hObject);
        EXPECT_EQ(face, dc.GetTextFaceW().String());
        CDC::SelectGdiObject(dc.m_hDC, before->m_hObject);
    }
}

TEST(FontCombo, SecondFillingAddsEveryFaceAgain) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    combo.AddString(L"Of the host");
    std::vector<std::wstring> expected = {L"Of the host"};
    for (int i = 0; i < 2; ++i) {
        combo.FillCombo();
        for (const std::wstring& face : InstalledFaces()) expected.push_back(face);
        EXPECT_EQ(expected, Texts(combo));
    }
}

TEST(FontCombo, SortedListHasTheFacesTogether) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create(CBS_SORT));
    combo.FillCombo();
    combo.FillCombo();
    const std::vector<std::wstring> faces = Texts(combo);
    EXPECT_EQ(2 * InstalledFaces().size(), faces.size());
    for (std::size_t i = 0; i + 1 < faces.size(); i += 2) EXPECT_EQ(faces[i], faces[i + 1]);
}

TEST(FontCombo, SortedListSortsNamesAsTheyCome) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create(CBS_SORT));
    for (const wchar_t* const face : {L"Gamma", L"beta", L"Alpha", L"Delta"})
        Hand(combo, face, TRUETYPE_FONTTYPE);
    EXPECT_EQ((std::vector<std::wstring>{L"Alpha", L"beta", L"Delta", L"Gamma"}), Texts(combo));
}

// Against a list that was sorted at once.
TEST(FontCombo, SortedListSortsManyNamesInAnyOrder) {
    EventLoop loop;
    Random random(12);
    std::vector<std::wstring> faces(300);
    for (std::wstring& face : faces) face = L"face " + std::to_wstring(100 + random.Below(200));
    FontCombo combo;
    ASSERT_TRUE(combo.Create(CBS_SORT));
    for (const std::wstring& face : faces) Hand(combo, face, TRUETYPE_FONTTYPE);
    std::sort(faces.begin(), faces.end());
    EXPECT_EQ(faces, Texts(combo));
}

TEST(FontCombo, NamesStayInTheOrderOfEnumerationOtherwise) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    const std::vector<std::wstring> faces = {L"Gamma", L"@beta", L"Alpha", L"Gamma", L"", L"\u6d77\u56f3"};
    for (const std::wstring& face : faces) Hand(combo, face, TRUETYPE_FONTTYPE);
    EXPECT_EQ(faces, Texts(combo));
}

TEST(FontCombo, FillingSelectsNothing) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    combo.FillCombo();
    EXPECT_EQ(-1, combo.GetCurSel());
    combo.SetCurSel(1);
    combo.FillCombo();
    EXPECT_EQ(1, combo.GetCurSel());
}

TEST(FontCombo, OnlyTheTypeOfTrueTypeAloneIsAdded) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    for (const unsigned long type : {0UL, 1UL, 2UL, 3UL, 5UL, 6UL, 7UL, 8UL, 0x104UL, 0x80000004UL,
                                     std::numeric_limits<unsigned long>::max()}) {
        EXPECT_EQ(1, Hand(combo, L"Face", type)) << type;
        EXPECT_EQ(0, combo.GetCount()) << type;
    }
    EXPECT_EQ(1, Hand(combo, L"Face", 4));
    EXPECT_EQ((std::vector<std::wstring>{L"Face"}), Texts(combo));
}

TEST(FontCombo, NameEndsWithItsFieldWhereNothingElseEndsIt) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    const auto font = std::make_unique<LOGFONTW>(); // so that sanitizers see reads behind it
    std::fill(std::begin(font->lfFaceName), std::end(font->lfFaceName), L'W');
    EXPECT_EQ(1, FontCombo::HandleFonts(font.get(), nullptr, TRUETYPE_FONTTYPE,
                                        reinterpret_cast<std::intptr_t>(&combo)));
    EXPECT_EQ((std::vector{std::wstring(LF_FACESIZE, L'W')}), Texts(combo));
}

TEST(FontCombo, NothingIsHandledWithoutAFontOrAList) {
    EventLoop loop;
    FontCombo combo;
    ASSERT_TRUE(combo.Create());
    EXPECT_EQ(1, FontCombo::HandleFonts(nullptr, nullptr, TRUETYPE_FONTTYPE,
                                        reinterpret_cast<std::intptr_t>(&combo)));
    const LOGFONTW font = {};
    EXPECT_EQ(1, FontCombo::HandleFonts(&font, nullptr, TRUETYPE_FONTTYPE, 0));
    EXPECT_EQ(0, combo.GetCount());
}

TEST(FontCombo, NothingHappensWithoutAWindow) {
    FontCombo combo; // and without an application
    combo.FillCombo();
    EXPECT_EQ(1, Hand(combo, L"Face", TRUETYPE_FONTTYPE));
    EXPECT_EQ(0, combo.GetCount());

    EventLoop loop;
    combo.FillCombo();
    ASSERT_TRUE(combo.Create());
    EXPECT_EQ(0, combo.GetCount());
    combo.FillCombo();
    EXPECT_LT(0, combo.GetCount());
    combo.DestroyWindow();
    combo.FillCombo();
    EXPECT_EQ(0, combo.GetCount());
    ASSERT_TRUE(combo.Create());
    EXPECT_EQ(0, combo.GetCount());
}

TEST(FontCombo, HasNoHandlersOfItsOwn) {
    const FontCombo combo;
    EXPECT_EQ(combo.GetMessageMap(), FontCombo::GetThisMessageMap());
    EXPECT_EQ(0U, FontCombo::GetThisMessageMap()->entries->message);
    EXPECT_EQ(CComboBox::GetThisMessageMap(), FontCombo::GetThisMessageMap()->base());
}

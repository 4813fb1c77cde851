// SPDX-License-Identifier: MIT
#include "UtilityDLL/text/FontCombo.h"

#include "Framework/windows/ClientDC.h"

#include <algorithm>
#include <iterator>
#include <string>

FontCombo::FontCombo() = default;
FontCombo::~FontCombo() = default;

void FontCombo::FillCombo() {
    if (!NativeHandle()) return;
    const CClientDC dc(this);
    LOGFONTW all = {};
    EnumFontFamiliesExW(dc.m_hDC, &all, &HandleFonts, reinterpret_cast<LPARAM>(this), 0);
}

int FontCombo::HandleFonts(const LOGFONTW* logFont, const TEXTMETRICW*, unsigned long fontType,
                           std::intptr_t param) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): what FillCombo() handed over
    auto* const combo = reinterpret_cast<FontCombo*>(param);
    if (fontType != TRUETYPE_FONTTYPE || !logFont || !combo) return 1;
    const auto& name = logFont->lfFaceName; // one that fills the field may have no end
    combo->AddString(std::wstring(name, std::find(std::begin(name), std::end(name), L'\0')));
    return 1;
}

const AFX_MSGMAP* FontCombo::GetThisMessageMap() {
    static constexpr AFX_MSGMAP_ENTRY none = {};
    static constexpr AFX_MSGMAP map = {&CComboBox::GetThisMessageMap, &none};
    return &map;
}

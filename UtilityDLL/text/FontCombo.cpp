#include "UtilityDLL/text/FontCombo.h"

#include "Framework/windows/ClientDC.h"

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
    if (fontType == TRUETYPE_FONTTYPE) reinterpret_cast<FontCombo*>(param)->AddString(logFont->lfFaceName);
    return 1;
}

const AFX_MSGMAP* FontCombo::GetThisMessageMap() {
    static constexpr AFX_MSGMAP_ENTRY none = {};
    static constexpr AFX_MSGMAP map = {&CComboBox::GetThisMessageMap, &none};
    return &map;
}

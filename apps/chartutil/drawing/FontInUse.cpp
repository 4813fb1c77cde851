// SPDX-License-Identifier: MIT
#include "apps/chartutil/drawing/FontInUse.h"

#include "Framework/device/DC.h"
#include "UtilityDLL/text/GDISelector.h"
#include "VelmBase/WideString.h"

namespace {

struct Listed {
    bool any = false, outlines = false;
};

// A family with outlines is listed as long as the system has not seen that its file was damaged.
Listed ListedFonts(const CDC& device, const std::wstring& family) {
    LOGFONTW asked = {};
    asked.lfCharSet = DEFAULT_CHARSET;
    family.copy(asked.lfFaceName, LF_FACESIZE - 1);
    Listed listed;
    const FONTENUMPROCW look = [](const LOGFONTW*, const TEXTMETRICW*, DWORD type, LPARAM found) {
        auto& what = *reinterpret_cast<Listed*>(found); // NOLINT(performance-no-int-to-ptr): it is one
        what.any = true;
        what.outlines = what.outlines || (type & RASTER_FONTTYPE) == 0;
        return 1;
    };
    EnumFontFamiliesExW(device.m_hDC, &asked, look, reinterpret_cast<LPARAM>(&listed), 0);
    return listed;
}

} // namespace

FontInUse FindFont(const TextInfo& style) {
    // Large enough that the pixels of a display do not show in the parts of the cell.
    constexpr int kCellHeight = 50'000;
    CDC device;
    device.CreateDCW(L"DISPLAY", nullptr, nullptr);
    device.SetMapMode(MM_HIMETRIC);
    CFont font;
    font.CreateFontW(kCellHeight, 0, 0, 0, style.Style() & TextInfo::BOLD ? FW_BOLD : FW_NORMAL,
                     (style.Style() & TextInfo::ITALIC) != 0, false, false, 0, OUT_TT_ONLY_PRECIS,
                     CLIP_LH_ANGLES, PROOF_QUALITY, 0, style.Font().c_str());
    const GDISelector selected(&device, font);
    const std::wstring family = device.GetTextFaceW().String();
    OUTLINETEXTMETRICW metrics = {};
    const TEXTMETRICW& cell = metrics.otmTextMetrics;
    if (device.GetOutlineTextMetricsW(sizeof metrics, &metrics) == 0 || cell.tmHeight <= 0) {
        FontInUse none;
        if (!family.empty() && ListedFonts(device, family).outlines) none.unusable = family;
        return none;
    }
    return {family,
            {},
            icompareW(family, style.Font()),
            double(cell.tmHeight - cell.tmInternalLeading) / cell.tmHeight,
            double(cell.tmDescent) / cell.tmHeight,
            double(metrics.otmsCapEmHeight) / cell.tmHeight};
}

bool IsBitmapFont(const std::wstring& face) {
    CDC device;
    device.CreateDCW(L"DISPLAY", nullptr, nullptr);
    const Listed listed = ListedFonts(device, face);
    return !face.empty() && listed.any && !listed.outlines;
}

std::string FamilyText(const FontInUse& font, const std::string& asked) {
    if (!font.unusable.empty()) return "none, since the file of " + ToUtf8(font.unusable) + " cannot be used";
    if (font.family.empty()) return "none, since no font with outlines is installed";
    if (font.isInstalled) return ToUtf8(font.family);
    const std::string reason = asked.empty() ? "no face is named" : asked + " is not installed";
    return ToUtf8(font.family) + ", since " + reason;
}

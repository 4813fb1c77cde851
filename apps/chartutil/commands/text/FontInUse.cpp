#include "apps/chartutil/commands/text/FontInUse.h"

#include "Framework/device/DC.h"
#include "UtilityDLL/text/GDISelector.h"
#include "VelmBase/WideString.h"

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
    OUTLINETEXTMETRICW metrics = {};
    if (device.GetOutlineTextMetricsW(sizeof metrics, &metrics) == 0) return {};
    const TEXTMETRICW& cell = metrics.otmTextMetrics;
    if (cell.tmHeight <= 0) return {};
    const std::wstring family = device.GetTextFaceW().String();
    return {family, icompareW(family, style.Font()),
            double(cell.tmHeight - cell.tmInternalLeading) / cell.tmHeight,
            double(cell.tmDescent) / cell.tmHeight};
}

std::string FamilyText(const FontInUse& font, const std::string& asked) {
    if (font.family.empty()) return "none, since no font with outlines is installed";
    if (font.isInstalled) return ToUtf8(font.family);
    const std::string reason = asked.empty() ? "no face is named" : asked + " is not installed";
    return ToUtf8(font.family) + ", since " + reason;
}

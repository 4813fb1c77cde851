#include "UtilityDLL/text/private/MeasuringDevice.h"

#include "UtilityDLL/GTL/Element.h"
#include "VelmBase/Math.h"

MeasuringDevice::MeasuringDevice(double factor) {
    CreateDCW(L"DISPLAY", nullptr, nullptr);
    if (factor == 1000.0) {
        SetMapMode(MM_HIMETRIC);
    } else {
        SetMapMode(MM_ISOTROPIC);
        SetWindowExt(MATH::ToInt(GetDeviceCaps(HORZSIZE) * factor),
                     MATH::ToInt(GetDeviceCaps(VERTSIZE) * factor));
        SetViewportExt(GetDeviceCaps(HORZRES), -GetDeviceCaps(VERTRES));
    }
}

void MakeMeasuringFont(CFont& font, int height, bool isBold, bool isItalic, bool isUnderlined,
                       const std::wstring& face) {
    font.CreateFontW(height, 0, 0, 0, isBold ? FW_BOLD : FW_NORMAL, isItalic, isUnderlined, false, 0,
                     OUT_TT_ONLY_PRECIS, CLIP_LH_ANGLES, PROOF_QUALITY, 0, face.c_str());
}

int CellPart(int part, int height, const TEXTMETRICW& cell) {
    const auto cellHeight = static_cast<int>(cell.tmHeight);
    return cellHeight == 0 ? 0 : GTL::ELEMENT::Quotient(GTL::ELEMENT::Product(part, height), cellHeight);
}

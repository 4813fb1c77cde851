// SPDX-License-Identifier: MIT
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

int CellPart(int part, int height, const TEXTMETRICW& cell) {
    const auto cellHeight = static_cast<int>(cell.tmHeight);
    return cellHeight == 0 ? 0 : GTL::ELEMENT::Quotient(GTL::ELEMENT::Product(part, height), cellHeight);
}

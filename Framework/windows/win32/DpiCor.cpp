// SPDX-License-Identifier: MIT
#include "Framework/windows/DpiCor.h"

#include <windows.h>

int DpiCor(int length) {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return MulDiv(length, dpi, 96);
}

// SPDX-License-Identifier: MIT
#include "Framework/windows/ClientDC.h"

// What is measured is the same on every display that a window of this program may be on.
CClientDC::CClientDC(CWnd*) { CreateDCW(L"DISPLAY", nullptr, nullptr); }

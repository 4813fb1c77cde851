// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"

#include <commctrl.h>
#include <commdlg.h>

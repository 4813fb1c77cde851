// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/windows/private/NativeControls.h"

// See NativeToolkit.
bool AskForFileOver(HWND over, FileRequest& request);
bool AskForColorOver(HWND over, COLORREF& color, bool isFullyOpen);
int ShowMessageOver(HWND over, const std::wstring& text, const std::wstring& caption, UINT type);

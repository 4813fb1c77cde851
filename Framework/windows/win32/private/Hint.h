// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <windows.h>

/// Shows a hint under a field of a dialog until HideHint().
void ShowHintAt(HWND field, const std::wstring& text);
void HideHint(HWND field);

/// Has it stay at its field when the dialog is moved.
void MoveHints(HWND dialog);

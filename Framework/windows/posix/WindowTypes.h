// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"
#include "Framework/windows/Messages.h"

// The part of Windows' interface of windows that the framework stands on, under the names, with the values
// and the layouts that the header of Windows gives them.

using HWND = struct HWND__*; ///< a QWidget*
using ULONG_PTR = std::uintptr_t;

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_YESNO = 4;
inline constexpr UINT MB_ICONERROR = 0x10;
inline constexpr UINT MB_ICONQUESTION = 0x20;

inline constexpr UINT WM_COMMAND = 0x0111;

// What controls tell.
inline constexpr UINT BN_CLICKED = 0;
inline constexpr UINT EN_CHANGE = 0x0300;
inline constexpr UINT CBN_SELCHANGE = 1;
inline constexpr UINT NM_DBLCLK = 0U - 3;
inline constexpr UINT LVN_ITEMCHANGED = 0U - 101;
inline constexpr UINT UDN_DELTAPOS = 0U - 722;

// How a control is made.
inline constexpr DWORD CBS_SORT = 0x0100;

// How a colour dialog and a file dialog are shown.
inline constexpr DWORD CC_RGBINIT = 1;
inline constexpr DWORD CC_FULLOPEN = 2;
inline constexpr DWORD OFN_OVERWRITEPROMPT = 2;
inline constexpr DWORD OFN_HIDEREADONLY = 4;
inline constexpr DWORD OFN_FILEMUSTEXIST = 0x1000;

// What of an item is to be drawn, and how it is.
inline constexpr UINT ODT_BUTTON = 4;
inline constexpr UINT ODA_DRAWENTIRE = 1;
inline constexpr UINT ODA_SELECT = 2;
inline constexpr UINT ODA_FOCUS = 4;
inline constexpr UINT ODS_SELECTED = 1;
inline constexpr UINT ODS_DISABLED = 4;
inline constexpr UINT ODS_FOCUS = 0x10;

/// A request to draw a control.
struct tagDRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC; ///< for the time of the request
    RECT rcItem;
    ULONG_PTR itemData;
};
using DRAWITEMSTRUCT = tagDRAWITEMSTRUCT;
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;

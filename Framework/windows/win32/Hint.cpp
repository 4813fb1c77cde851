// SPDX-License-Identifier: MIT
#include "Framework/windows/win32/private/Hint.h"

#include "Framework/windows/DpiCor.h"
#include "Framework/windows/win32/private/TodaysLook.h"

namespace {

// Of the field, its hint's window; of the dialog, the field that has one.
constexpr wchar_t kHint[] = L"UtilityDLL.Hint";

constexpr int kWidestHint = 400; // in pixels of 96 to the inch

TOOLINFOW Tool(HWND field) {
    TOOLINFOW tool = {};
    tool.cbSize = TTTOOLINFOW_V2_SIZE; // which the first ones know as well
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = field;
    return tool;
}

void Place(HWND field, HWND hint) {
    RECT place = {};
    GetWindowRect(field, &place);
    SendMessageW(hint, TTM_TRACKPOSITION, 0, MAKELPARAM(place.left + DpiCor(8), place.bottom));
}

} // namespace

void ShowHintAt(HWND field, const std::wstring& text) {
    HideHint(field);
    const HWND dialog = GetAncestor(field, GA_ROOT);
    const TodaysLook look;
    const HWND hint = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                      WS_POPUP | TTS_NOPREFIX | TTS_BALLOON | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                      dialog, nullptr, ThisLibrary(), nullptr);
    if (!hint) return;
    TOOLINFOW tool = Tool(field);
    tool.lpszText = const_cast<wchar_t*>(text.c_str()); // which is copied
    SendMessageW(hint, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(hint, TTM_SETMAXTIPWIDTH, 0, DpiCor(kWidestHint));
    Place(field, hint);
    SendMessageW(hint, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
    SetPropW(field, kHint, hint);
    SetPropW(dialog, kHint, field);
}

void HideHint(HWND field) {
    if (const auto hint = static_cast<HWND>(RemovePropW(field, kHint))) DestroyWindow(hint);
    const HWND dialog = GetAncestor(field, GA_ROOT);
    if (GetPropW(dialog, kHint) == field) RemovePropW(dialog, kHint);
}

void MoveHints(HWND dialog) {
    const auto field = static_cast<HWND>(GetPropW(dialog, kHint));
    if (!field) return;
    if (const auto hint = static_cast<HWND>(GetPropW(field, kHint))) Place(field, hint);
}

// SPDX-License-Identifier: MIT
#include "Framework/device/DC.h"

#include <algorithm>
#include <climits>

CDC::~CDC() {
    if (m_hDC) DeleteDC();
}

bool CDC::CreateDCW(const wchar_t* driver, const wchar_t* device, const wchar_t* output) {
    if (m_hDC) return false;
    m_hDC = ::CreateDCW(driver, device, output, nullptr);
    return m_hDC != nullptr;
}

bool CDC::DeleteDC() {
    const HDC dc = m_hDC;
    m_hDC = nullptr;
    return dc && ::DeleteDC(dc);
}

int CDC::SetMapMode(int mode) { return ::SetMapMode(m_hDC, mode); }

int CDC::GetMapMode() const { return ::GetMapMode(m_hDC); }

CSize CDC::SetWindowExt(int x, int y) {
    SIZE old = {};
    ::SetWindowExtEx(m_hDC, x, y, &old);
    return {static_cast<int>(old.cx), static_cast<int>(old.cy)};
}

CSize CDC::SetViewportExt(int x, int y) {
    SIZE old = {};
    ::SetViewportExtEx(m_hDC, x, y, &old);
    return {static_cast<int>(old.cx), static_cast<int>(old.cy)};
}

int CDC::GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }

CGdiObject* CDC::SelectGdiObject(HDC dc, HGDIOBJ object) {
    return CGdiObject::FromHandle(::SelectObject(dc, object));
}

CGdiObject* CDC::SelectStockObject(int index) { return SelectGdiObject(m_hDC, ::GetStockObject(index)); }

bool CDC::FillRect(const RECT& rectangle, const CBrush& brush) {
    // Wine fills nothing without a context, and says that it did.
    return m_hDC && ::FillRect(m_hDC, &rectangle, static_cast<HBRUSH>(brush.m_hObject)) != 0;
}

bool CDC::FrameRect(const RECT& rectangle, const CBrush& brush) {
    return ::FrameRect(m_hDC, &rectangle, static_cast<HBRUSH>(brush.m_hObject)) != 0;
}

COLORREF CDC::SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }

COLORREF CDC::SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }

bool CDC::TextOutW(int x, int y, const std::wstring& text) {
    const auto length = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
    return ::TextOutW(m_hDC, x, y, text.c_str(), length) != 0;
}

UINT CDC::GetOutlineTextMetricsW(UINT size, OUTLINETEXTMETRICW* metrics) const {
    return ::GetOutlineTextMetricsW(m_hDC, size, metrics);
}

CSize CDC::GetTextExtent(const std::wstring& text) const {
    SIZE extent = {};
    const auto length = static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX));
    if (!::GetTextExtentPoint32W(m_hDC, text.c_str(), length, &extent)) return {};
    return {static_cast<int>(extent.cx), static_cast<int>(extent.cy)};
}

CString CDC::GetTextFaceW() const {
    wchar_t face[1024] = L"";
    return ::GetTextFaceW(m_hDC, 1024, face) > 0 ? CString(face) : CString();
}

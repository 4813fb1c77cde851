// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/WideString.h"

#include <compare>
#include <string>
#include <utility>

/// The framework's plain values, under the names by which hosts know them.

/// Wide text at dialog and file-name boundaries.
class CString {
public:
    CString() = default;
    CString(const wchar_t* text) : m_text(text ? text : L"") {}
    CString(std::wstring text) : m_text(std::move(text)) {}

    /// From narrow text of the platform; see FromNarrow.
    CString(const char* text) : m_text(text ? FromNarrow(text) : std::wstring()) {}

    const wchar_t* GetString() const { return m_text.c_str(); }
    operator const wchar_t*() const { return m_text.c_str(); }
    const std::wstring& String() const { return m_text; }

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }

    /// By text, character by character, from either side; a null pointer is an empty text. Without these, the
    /// conversion to a pointer would have the addresses compared.
    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const std::wstring& b) { return a.m_text == b; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.m_text == (b ? b : L""); }
    friend auto operator<=>(const CString& a, const CString& b) { return a.m_text <=> b.m_text; }
    friend auto operator<=>(const CString& a, const std::wstring& b) { return a.m_text <=> b; }
    friend auto operator<=>(const CString& a, const wchar_t* b) { return a.m_text <=> (b ? b : L""); }

private:
    std::wstring m_text;
};

struct CPoint {
    int x = 0;
    int y = 0;

    bool operator==(const CPoint&) const = default;
};

struct CSize {
    int cx = 0;
    int cy = 0;

    bool operator==(const CSize&) const = default;
};

/// Left and top belong to the rectangle, right and bottom lie just outside it.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool operator==(const CRect&) const = default;
};

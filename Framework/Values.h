// SPDX-License-Identifier: MIT
#pragma once

#include "VelmBase/WideString.h"

#include <compare>
#include <string>
#include <utility>

// The framework's plain values, under the names by which hosts know them.

/// Wide text at dialog and file-name boundaries; a value, which may hold any characters.
class CString {
public:
    CString() = default; ///< the empty text

    /// A copy of the text; of a null pointer, the empty one.
    /// @{
    CString(const wchar_t* text) : m_text(text ? text : L"") {}
    CString(std::wstring text) : m_text(std::move(text)) {}
    /// @}

    /// From narrow text of the platform; see FromNarrow.
    CString(const char* text) : m_text(text ? FromNarrow(text) : std::wstring()) {}

    /// The characters, with a NUL behind them; they hold until the text changes.
    /// @{
    const wchar_t* GetString() const { return m_text.c_str(); }
    operator const wchar_t*() const { return m_text.c_str(); }
    /// @}

    /// The text.
    const std::wstring& String() const { return m_text; }

    /// The number of characters, of which a `wchar_t` holds one.
    int GetLength() const { return static_cast<int>(m_text.size()); }

    /// Whether there is no character.
    bool IsEmpty() const { return m_text.empty(); }

    /// Makes the text empty.
    void Empty() { m_text.clear(); }

    /// By text, character by character, from either side; a null pointer is an empty text. Without these, the
    /// conversion to a pointer would have the addresses compared.
    /// @{
    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const std::wstring& b) { return a.m_text == b; }
    friend bool operator==(const CString& a, const wchar_t* b) { return a.m_text == (b ? b : L""); }
    friend auto operator<=>(const CString& a, const CString& b) { return a.m_text <=> b.m_text; }
    friend auto operator<=>(const CString& a, const std::wstring& b) { return a.m_text <=> b; }
    friend auto operator<=>(const CString& a, const wchar_t* b) { return a.m_text <=> (b ? b : L""); }
    /// @}

private:
    std::wstring m_text;
};

/// A point with integer coordinates: of a device, or of a context's logical units.
struct CPoint {
    int x = 0; ///< to the right
    int y = 0; ///< down on a device

    /// Exact.
    bool operator==(const CPoint&) const = default;
};

/// A width and a height in the same units.
struct CSize {
    int cx = 0; ///< the width
    int cy = 0; ///< the height

    /// Exact.
    bool operator==(const CSize&) const = default;
};

/// A rectangle of a device. Left and top belong to the rectangle, right and bottom lie just outside it.
/// Nothing is checked: one may be empty or turned inside out.
struct CRect {
    /// The sides.
    /// @{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    /// @}

    /// What is between the sides; negative in a rectangle that is turned inside out.
    /// @{
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    /// @}

    /// Exact.
    bool operator==(const CRect&) const = default;
};

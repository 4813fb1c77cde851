// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"

#include <string_view>

/// What a window's backend draws on for a request to draw. Lengths in the window's pixels, from its top left.
class PaintTarget {
public:
    /// The rectangle is not empty.
    virtual void Fill(const RECT& rectangle, COLORREF color) = 0;

    /// One line, from its top left corner on, in the window's font and on a background.
    virtual void Write(int x, int y, std::wstring_view text, COLORREF color, COLORREF background) = 0;
    virtual SIZE Extent(std::wstring_view text) const = 0;

protected:
    ~PaintTarget() = default;
};

/// A display context that draws there, until DeleteDC(). It writes and measures in the target's font,
/// whatever is selected. Null when there are a million contexts.
HDC OpenPaintTarget(PaintTarget& target);

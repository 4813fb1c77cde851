// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Values.h"
#include "Framework/device/GdiObject.h"

#include <string>
#include <utility>

/// A display context: what text is measured on, and how its logical units stand to the device's pixels. It
/// owns its handle, and is used by the thread that made it.
///
/// On Linux it needs no display. On Windows none can be made where there is none, as in some services.
class FRAMEWORK_API CDC {
public:
    CDC() = default; ///< without a context
    ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    /// For the display the driver is "DISPLAY" and the rest null. False, and nothing changes, when there is a
    /// context already or the system refuses.
    bool CreateDCW(const wchar_t* driver, const wchar_t* device, const wchar_t* output);

    /// False when there is none.
    bool DeleteDC();

    /// A mode (MM_HIMETRIC: 0.01 mm, y up). Returns the one before, 0 on failure.
    int SetMapMode(int mode);
    int GetMapMode() const; ///< the mode; 0 without a context

    /// The extents whose ratio is the scale in MM_ISOTROPIC; they return the ones before.
    /// @{
    CSize SetWindowExt(int x, int y);
    CSize SetViewportExt(int x, int y);
    /// @}

    /// HORZSIZE and VERTSIZE in millimetres, HORZRES and VERTRES in pixels, LOGPIXELSX and LOGPIXELSY in
    /// pixels an inch.
    int GetDeviceCaps(int index) const;

    /// Selects an object into a context, and returns the one of its kind that was selected before; null when
    /// the system refuses.
    static CGdiObject* SelectGdiObject(HDC dc, HGDIOBJ object);

    /// SelectGdiObject() for an object that the system has ready (SYSTEM_FONT).
    CGdiObject* SelectStockObject(int index);

    /// Draw an area, or its outermost pixels, on the context of a request to draw (CButton::DrawItem), in the
    /// pixels of its window. False on failure: on Linux also on a context that only measures. Empty
    /// rectangles fill nothing.
    /// @{
    bool FillRect(const RECT& rectangle, const CBrush& brush);
    bool FrameRect(const RECT& rectangle, const CBrush& brush);
    /// @}

    /// Black and white at first. They return the one before, CLR_INVALID when there is no context.
    /// @{
    COLORREF SetTextColor(COLORREF color);
    COLORREF SetBkColor(COLORREF color);
    /// @}

    /// Writes a line from its top left corner on, in the text colour on the background colour, and in the
    /// font of the window that asked; so does GetTextExtent() measure there. False as for FillRect().
    bool TextOutW(int x, int y, const std::wstring& text);

    /// The context of others, until Detach(), which gives it back.
    /// @{
    void Attach(HDC dc) { m_hDC = dc; }
    HDC Detach() { return std::exchange(m_hDC, nullptr); }
    /// @}

    /// The measures of the selected font. Returns the bytes that were written, 0 for a font without outlines.
    UINT GetOutlineTextMetricsW(UINT size, OUTLINETEXTMETRICW* metrics) const;

    /// What a line of text takes in the selected font, in logical units: the sum of the advances, and the
    /// height of the font's cell. (0, 0) for an empty text and on failure.
    CSize GetTextExtent(const std::wstring& text) const;

    /// The family that the selected font was found in: another than was asked for where that is not
    /// installed. Empty on failure.
    CString GetTextFaceW() const;

    HDC m_hDC = nullptr; ///< null while there is none
};

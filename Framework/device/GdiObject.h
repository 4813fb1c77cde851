// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"
#include "Framework/device/Gdi.h"

/// An object of the device interface that is selected into a display context: a font, a brush, a pen. It owns
/// its handle.
class FRAMEWORK_API CGdiObject {
public:
    CGdiObject() = default; ///< without an object
    virtual ~CGdiObject();
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    /// An object for a handle that others own: the same each time for the same handle, in one thread. It
    /// lasts as long as the thread; when the handle's owner deletes it, selecting it fails, and the object
    /// lasts until the thread has asked for some 500 more. Null for no handle.
    static CGdiObject* FromHandle(HGDIOBJ handle);

    /// Deletes what the handle stands for. False when there is none.
    bool DeleteObject();

    HGDIOBJ m_hObject = nullptr; ///< null while there is none
};

/// A font of the system, as a face, a height and a style ask for one.
class FRAMEWORK_API CFont : public CGdiObject {
public:
    /// False, and nothing changes, when there is a font already or the system has no memory. A face that is
    /// not installed is no failure: the system takes another when the font is selected (CDC::GetTextFaceW).
    ///
    /// `height` in logical units: of the cell (ascent and descent) when positive, of the em when negative, of
    /// the system's choice when 0. `weight` 400 is regular, 700 bold.
    bool CreateFontW(int height, int width, int escapement, int orientation, int weight, BYTE italic,
                     BYTE underline, BYTE strikeOut, BYTE charSet, BYTE outPrecision, BYTE clipPrecision,
                     BYTE quality, BYTE pitchAndFamily, const wchar_t* face);
};

/// What areas are filled with: one colour.
class FRAMEWORK_API CBrush : public CGdiObject {
public:
    CBrush() = default; ///< without a brush

    /// A brush of that colour; m_hObject is null when the system has no memory.
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }

    /// False, and nothing changes, when there is a brush already or the system has no memory.
    bool CreateSolidBrush(COLORREF color);
};

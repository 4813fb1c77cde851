// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/freetype/private/FontModule.h"
#include "Framework/device/freetype/private/HandleTable.h"
#include "Framework/device/private/PaintTarget.h"

#include <cstddef>
#include <memory>

/// A font as it was asked for, with what was found for it.
struct Font {
    int height = 0;
    int width = 0;
    bool isUnderlined = false;
    bool isStruckOut = false;
    std::shared_ptr<const Typeface> typeface;
};

enum class ObjectKind { BRUSH, PEN, FONT, COUNT };

/// What stands behind a HGDIOBJ.
struct DeviceObject {
    ObjectKind kind = ObjectKind::BRUSH;
    bool isDeleted = false; ///< it goes with the last of its selections
    std::size_t selections = 0;
    std::shared_ptr<const Font> font; ///< null but for fonts
    COLORREF color = 0;               ///< of a brush
};

/// What stands behind a HDC.
struct DeviceContext {
    int mode = MM_TEXT;
    SIZE windowExtent{1, 1};
    SIZE viewportExtent{1, 1};
    HGDIOBJ selected[static_cast<int>(ObjectKind::COUNT)] = {};
    std::shared_ptr<const Font> font; ///< the selected one
    PaintTarget* target = nullptr;    ///< null for a context that only measures
    COLORREF textColor = 0;
    COLORREF backgroundColor = 0xFFFFFF;
};

/// The stock object of a handle; null for another handle. These objects stay as they are.
const DeviceObject* StockObject(HGDIOBJ handle);

// All others. They are never destroyed: static objects of a host may still measure, and give back what they
// hold, at its end. Whoever needs both accesses an object within a context.
HandleTable<DeviceObject>& DeviceObjects();
HandleTable<DeviceContext>& DeviceContexts();

/// A context's logical units for a pixel in x and in y; positive.
struct PixelSize {
    double x;
    double y;
};
PixelSize SizeOfPixel(const DeviceContext& context);

/// Where the context draws; null for one that only measures, and for what is no context.
PaintTarget* TargetOf(HDC dc);

/// The font that is selected, with the size of the pixel. Null for what is no context.
std::shared_ptr<const Font> SelectedFont(HDC dc, PixelSize& pixel);

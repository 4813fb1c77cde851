// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/device/Gdi.h"

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>

inline QColor ColorOf(COLORREF color) {
    return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
            static_cast<int>(color >> 16 & 0xFF)};
}

inline COLORREF ReferenceOf(const QColor& color) {
    return static_cast<COLORREF>(color.red() | color.green() << 8 | color.blue() << 16);
}

/// A picture filled with one colour, which stays that colour where it is selected.
inline QIcon Swatch(COLORREF color, int width, int height, qreal devicePixelRatio) {
    QPixmap picture(QSize(width, height) * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(ColorOf(color));
    QIcon swatch(picture);
    swatch.addPixmap(picture, QIcon::Selected);
    return swatch;
}

// SPDX-License-Identifier: MIT
#pragma once

#include "Framework/Export.h"
#include "Framework/device/Gdi.h"

#include <unordered_map>
#include <vector>

/// Pictures of one size for the rows of a list: swatches, each filled with one colour.
class FRAMEWORK_API CImageList {
public:
    CImageList() = default; ///< no pictures, of size 0

    /// The size of a picture in pixels.
    CImageList(int width, int height) : m_width(width), m_height(height) {}

    /// The position from 0 of the swatch of that colour, which is added if it is not there yet.
    int Add(COLORREF color);

    /// The size of a picture in pixels.
    /// @{
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// @}

    /// How many pictures there are.
    int GetImageCount() const { return static_cast<int>(m_colors.size()); }

    /// Throws std::out_of_range for a position that there is not.
    COLORREF ColorAt(int position) const { return m_colors.at(static_cast<std::size_t>(position)); }

private:
    int m_width = 0;
    int m_height = 0;
    std::vector<COLORREF> m_colors;
    std::unordered_map<COLORREF, int> m_positions;
};

// SPDX-License-Identifier: MIT
#include "Framework/windows/ImageList.h"

int CImageList::Add(COLORREF color) {
    const auto [found, isNew] = m_positions.try_emplace(color, GetImageCount());
    if (isNew) m_colors.push_back(color);
    return found->second;
}
